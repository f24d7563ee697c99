#pragma once
// A staff member with the master, additional and subject records of the detail forms, read into
// the working records as the entry form leaves them; another person's records stand before and
// after, so that a write at the wrong number shows. The subject code list lies in the suite home.

#include <QByteArray>

#include "staff/subject_codes.h"
#include "staff_fixture.h"
#include "store/record_layouts.h"

namespace korvel::testing {

inline const QByteArray kSubjectCsv =
    "1001,10,\"Afrikaans Huistaal\",Afrikaans Home Language\r\n"
    "2001,10,Wiskunde,Mathematics\r\n"
    "2002,12,Wiskundige Geletterdheid,Mathematical Literacy\r\n";

class DetailTree : public StaffTree {
  public:
    DetailTree() {
        session.fixed_today = QDate(2026, 3, 2);
        session.folders.suite_home = QStringLiteral("C:\\VESPARINE");
        session.fs().create_folder(session.folders.suite_home);
        add_person(session, {.post = "5", .surname = "NEL"});
        number = add_person(session, {.post = "7", .surname = "DU TOIT", .names = "ANNA"});
        session.open_file(store::Code::PRSADD);
        for (const char* post : {"5", "7"}) {
            store::Record& a = session.working(store::Code::PRSADD);
            a.clear();
            a.set_text(store::PRSADD["PD_POS_NR"], post);
            session.append_record(store::Code::PRSADD);
        }
        session.ensure_subject_record(QStringLiteral("5"));
        session.ensure_subject_record(QStringLiteral("7"));
        session.ensure_subject_record(QStringLiteral("9"));
        session.read_record(store::Code::PRSALG, number);
        session.read_record(store::Code::PRSADD, 2);
        // Another form left the subject file at somebody else's record.
        session.read_record(store::Code::PRSVAK, 3);
    }
    void write_codes(const QByteArray& csv = kSubjectCsv) {
        session.fs().write_all(staff::subject_code_file(session.folders), csv);
    }
    store::Record& master() { return session.working(store::Code::PRSALG); }
    store::Record& additional() { return session.working(store::Code::PRSADD); }
    // Record n of a staff file as it is on disk now.
    store::Record on_disk(const store::Layout& layout, int n) const {
        const QByteArray bytes = read_file(staff_file(QString::fromLatin1(layout.file_name)));
        store::Record r(layout);
        if (bytes.size() >= n * layout.record_length) {
            r.assign(bytes.constData() + static_cast<qsizetype>(n - 1) * layout.record_length);
        }
        return r;
    }
    QByteArray file_bytes(const store::Layout& layout) const {
        return read_file(staff_file(QString::fromLatin1(layout.file_name)));
    }
    int number = 0;  // the person's master record; additional record 2, subject record 2
};

}  // namespace korvel::testing
