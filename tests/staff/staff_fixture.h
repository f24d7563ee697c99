#pragma once
// A session over a temporary data tree for the staff forms: drive C: maps to a fresh temporary
// folder, the folder variables stand at the suite's defaults for 2026, the dialogs are
// scripted, and the staff, general year and workstation folders exist.

#include <QFile>
#include <QTemporaryDir>
#include <ostream>

#include "shell/session.h"
#include "store/store_fixture.h"
#include "ui/scripted_dialogs.h"

// Readable QString values in test failures.
QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& s, std::ostream* os) {
    *os << '"' << s.toStdString() << '"';
}
QT_END_NAMESPACE

namespace korvel::testing {

// Scripted dialogs that also keep the text an input box offered.
class StaffDialogs : public ui::ScriptedDialogs {
  public:
    std::optional<QString> input(const QString& prompt, const QString& title,
                                 const QString& default_text, bool password) override {
        offered = default_text;
        return ScriptedDialogs::input(prompt, title, default_text, password);
    }
    QString offered;
};

// A staff member as a test writes one.
struct Person {
    QString post;
    QString surname = QStringLiteral("SMIT");
    QString names = QStringLiteral("JAN");
    QString title = QStringLiteral("MNR");
    QString state;
    QString klas;  // "PSS", "PS" or "ADMIN" make an employee
    QString id;
    QString gender;
};

inline int add_person(store::Store& s, const Person& p) {
    using store::PRSALG;
    if (!s.is_open(store::Code::PRSALG)) {
        s.open_file(store::Code::PRSALG);
    }
    store::Record& r = s.working(store::Code::PRSALG);
    r.clear();
    r.set_text(PRSALG["PA_POS_NR"], p.post);
    r.set_text(PRSALG["PA_VAN"], p.surname);
    r.set_text(PRSALG["PA_NAME"], p.names);
    r.set_text(PRSALG["PA_TITEL"], p.title);
    r.set_text(PRSALG["PA_AKTIEF"], p.state);
    r.set_text(PRSALG["PK_KLAS_NR"], p.klas);
    r.set_text(PRSALG["PA_ID_NR"], p.id);
    r.set_text(PRSALG["PA_GESLAG"], p.gender);
    s.append_record(store::Code::PRSALG);
    return s.state(store::Code::PRSALG).current;
}

inline QByteArray read_file(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

inline void write_file(const QString& path, const QByteArray& bytes) {
    QFile f(path);
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        f.write(bytes);
    }
}

// The trimmed texts of one field over every record of a file, read afresh.
inline QStringList field_of_all(store::Store& s, store::Code code, const store::Field& f) {
    QStringList out;
    s.open_file(code);
    s.scan_records(code, [&](int, store::Record& r) { out << r.text(f).trimmed(); });
    return out;
}

class StaffTree {
  public:
    StaffTree() : session(dialogs, platform::DriveMap::explicit_map({{"C:", dir.path()}})) {
        session.folders = test_folders();
        session.ledger_year = QStringLiteral("2026");
        session.fs().create_folder(session.folders.staff);
        session.fs().create_folder(session.folders.general_year);
        session.fs().create_folder(session.folders.workstation);
    }
    QString native(const QString& folder, const QString& name) const {
        return session.fs().native(folder + u'\\' + name);
    }
    QString staff_file(const QString& name) const { return native(session.folders.staff, name); }

    QTemporaryDir dir;
    StaffDialogs dialogs;
    shell::Session session;
};

// A master record as it stands on disk now, read from the file's bytes.
inline store::Record master_on_disk(const StaffTree& tree, int number) {
    const QByteArray bytes = read_file(tree.staff_file(QStringLiteral("prs_alg_random.txt")));
    store::Record r(store::PRSALG);
    const int length = store::PRSALG.record_length;
    if (bytes.size() >= number * length) {
        r.assign(bytes.constData() + static_cast<qsizetype>(number - 1) * length);
    }
    return r;
}

}  // namespace korvel::testing
