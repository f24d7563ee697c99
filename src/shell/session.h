#pragma once
// The one object that holds everything the program keeps process-wide: the record store's
// state (folders, ledger year, language, handles, working records, counts, the staff index)
// and, above it, the state of the shell and the forms. It is passed, never global, so a test
// builds its own over a temporary data tree.

#include "store/store.h"

namespace korvel::shell {

class Session : public store::Store {
  public:
    Session(ui::Dialogs& dialogs, platform::DriveMap drives);

    // A session on the suite's default tree of a drive for a ledger year: every folder
    // variable at its default (see default_folders).
    static std::unique_ptr<Session> on_drive(ui::Dialogs& dialogs, platform::DriveMap drives,
                                             const QString& drive, const QString& year);
};

}  // namespace korvel::shell
