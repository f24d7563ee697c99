#pragma once
// A store over a temporary data tree: drive C: maps to a fresh temporary folder, the folder
// variables stand at the suite's defaults for 2026, and the dialogs are scripted.

#include <QFile>
#include <QTemporaryDir>
#include <memory>

#include "store/store.h"
#include "ui/scripted_dialogs.h"

namespace korvel::testing {

inline store::Folders test_folders(const QString& year = QStringLiteral("2026")) {
    store::Folders f;
    f.admin = QStringLiteral("C:\\VESPARINE\\ADMIN");
    f.staff = QStringLiteral("C:\\VESPARINE\\STAFF\\P") + year;
    f.roster = QStringLiteral("C:\\VESPARINE\\ROSTER\\R") + year;
    f.general_year = QStringLiteral("C:\\VESPARINE\\GENERAL\\G") + year;
    f.school = f.general_year;
    f.workstation = QStringLiteral("C:\\ProgramData\\VESPARINE");
    return f;
}

class StoreTree {
  public:
    StoreTree() : store(dialogs, platform::DriveMap::explicit_map({{"C:", dir.path()}})) {
        store.folders = test_folders();
        store.ledger_year = QStringLiteral("2026");
    }
    // The native path of a file in the staff folder.
    QString staff_file(const QString& name) const {
        return store.fs().native(store.folders.staff + u'\\' + name);
    }
    // The bytes of a file in the staff folder; empty when it cannot be read.
    QByteArray staff_bytes(const QString& name) const {
        QFile f(staff_file(name));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    QTemporaryDir dir;
    ui::ScriptedDialogs dialogs;
    store::Store store;
};

// Writes a staff record to the working record and appends it.
inline void add_staff(store::Store& s, const QString& post, const QString& surname,
                      const QString& state = {}, const QString& names = QStringLiteral("JAN"),
                      const QString& title = QStringLiteral("MNR")) {
    using store::PRSALG;
    store::Record& r = s.working(store::Code::PRSALG);
    r.clear();
    r.set_text(PRSALG["PA_POS_NR"], post);
    r.set_text(PRSALG["PA_VAN"], surname);
    r.set_text(PRSALG["PA_NAME"], names);
    r.set_text(PRSALG["PA_TITEL"], title);
    r.set_text(PRSALG["PA_AKTIEF"], state);
    s.append_record(store::Code::PRSALG);
}

}  // namespace korvel::testing
