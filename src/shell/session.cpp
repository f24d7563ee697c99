#include "shell/session.h"

#include "platform/user.h"
#include "shell/folders.h"

namespace korvel::shell {

Session::Session(ui::Dialogs& dialogs, platform::DriveMap drives)
    : store::Store(dialogs, std::move(drives)), user_name(platform::current_user()) {}

std::unique_ptr<Session> Session::on_drive(ui::Dialogs& dialogs, platform::DriveMap drives,
                                           const QString& drive, const QString& year) {
    auto s = std::make_unique<Session>(dialogs, std::move(drives));
    s->folders = default_folders(drive, year);
    s->ledger_year = year;
    return s;
}

void Session::reopen_steady_state() {
    store::Store::reopen_steady_state();
}

}  // namespace korvel::shell
