#pragma once
// A session over a temporary data tree for the attendance forms, with helpers that put days
// into attendance records and read them back from the bytes on disk.

#include <QDate>

#include "attendance/attendance_register.h"
#include "attendance/reason_codes.h"
#include "staff/staff_fixture.h"

namespace korvel::testing {

inline constexpr int kAfwLength = 1118;

class AttendanceTree : public StaffTree {
  public:
    explicit AttendanceTree(const QString& year = QStringLiteral("2026")) {
        session.ledger_year = year;
        session.folders.workstation_program =
            session.folders.workstation + QStringLiteral("\\KORVEL");
        session.fs().create_folder(session.folders.workstation_program);
        session.fixed_today = QDate(year.toInt(), 3, 10);
    }

    QString afw_path() const { return staff_file(QStringLiteral("prs_afw_random.txt")); }
    QString calendar_path(const QString& name) const {
        return native(session.folders.workstation_program, name);
    }

    // The bytes of the first record of a post number on disk; empty when none.
    QByteArray afw(const QString& post) const {
        const QByteArray bytes = read_file(afw_path());
        for (qsizetype at = 0; at + kAfwLength <= bytes.size(); at += kAfwLength) {
            if (QString::fromLatin1(bytes.mid(at, 5)).trimmed() == post) {
                return bytes.mid(at, kAfwLength);
            }
        }
        return {};
    }
    QByteArray mark(const QString& post, int slot) const { return afw(post).mid(5 + slot, 1); }
    QByteArray reason(const QString& post, int slot) const {
        return afw(post).mid(376 + 2 * slot, 2);
    }

    // Puts a mark and a reason (as stored) into a day of a post number's record.
    void set_day(const QString& post, int slot, const QString& mark, const QString& reason) {
        const auto& W = store::PRSAFW;
        session.open_staff_file(QStringLiteral("PRSAFW"));
        session.ensure_attendance_record(post);
        const int number = session.find_by_key(store::Code::PRSAFW, W["PF_POS_NR"], post);
        store::Record& r = session.working(store::Code::PRSAFW);
        r.set_text(W["PF_DAG"], mark, slot);
        r.set_text(W["PF_REDE"], reason, slot);
        session.write_record(store::Code::PRSAFW, number);
    }

    // The eleven reasons written as the demo tree writes them.
    void write_reasons(int n = 11) {
        session.open_staff_file(QStringLiteral("PRSSBI"));
        for (int i = 0; i < n; ++i) {
            store::Record& r = session.working(store::Code::PRSSBI);
            r.clear();
            r.set_text(store::PRSSBI["SBI_TIPE"],
                       QString::fromLatin1(attendance::kDefaultReasons[i % 11]));
            r.set_text(store::PRSSBI["SBI_BESK"],
                       QString::fromLatin1(attendance::kDefaultReasons[i % 11]));
            session.append_record(store::Code::PRSSBI);
        }
    }
};

// A register of the group opened on a month, the form loaded first.
inline std::unique_ptr<attendance::AttendanceRegister> open_month(shell::Session& s, int month,
                                                                  bool educators = true) {
    auto reg = std::make_unique<attendance::AttendanceRegister>(s, educators);
    reg->form_load();
    reg->maand_lys.list_index = month - 1;
    reg->maand_lys_dbl_click();
    return reg;
}

// The afw_grid row of a post number; -1 when none.
inline int row_of(const attendance::AttendanceRegister& reg, const QString& post) {
    for (int r = attendance::kFirstStaffRow; r < reg.afw_grid.rows(); ++r) {
        if (reg.afw_grid.text(r, attendance::kColPost) == post) {
            return r;
        }
    }
    return -1;
}

inline int col_of_day(int day) {
    return day + 2;
}

}  // namespace korvel::testing
