#pragma once
// The common set-up every form runs as it loads: the texts of its header strip, and its line in
// the workstation's audit trail. The desktop program runs it for every form as the form first
// shows (app::FormHeaders); the menu, which is no window of its own, runs it at its load.

#include <QString>

#include "shell/session.h"

namespace korvel::shell {

struct HeaderStrip {
    QString ops_datum;         // today in dot form
    QString ops_tyd;           // the time of day
    QString prg_version;       // the system's name and the program version
    QString internet_version;  // the program version and the maker's address
};

HeaderStrip form_header_setup(Session& session, const QString& form_name);

}  // namespace korvel::shell
