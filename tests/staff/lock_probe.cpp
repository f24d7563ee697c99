// A second workstation for the lock tests: one process that takes or frees a record lock on a
// data tree and says what happened.
//
//   lock_probe <tree dir> <user> lock|unlock <type> <identification>
//
// Prints "LOCKED", "REFUSED" or "UNLOCKED" on the first line, then the message the user saw.
// Exit code 0 for LOCKED and UNLOCKED, 1 for REFUSED, 2 for bad arguments.

#include <QCoreApplication>
#include <QTextStream>

#include "shell/session.h"
#include "store/locks.h"
#include "store/store_fixture.h"
#include "ui/scripted_dialogs.h"

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    QTextStream out(stdout);
    if (args.size() != 6) {
        out << "usage: lock_probe <tree dir> <user> lock|unlock <type> <identification>\n";
        return 2;
    }
    korvel::ui::ScriptedDialogs dialogs;
    korvel::shell::Session session(dialogs,
                                   korvel::platform::DriveMap::explicit_map({{"C:", args[1]}}));
    session.folders = korvel::testing::test_folders();
    session.ledger_year = QStringLiteral("2026");
    session.afrikaans = false;
    const QString user = args[2];
    const QString action = args[3];
    QString id = args[5];
    if (action == u"lock") {
        const bool ok = korvel::store::lock_record(session, args[4], id, user);
        out << (ok ? "LOCKED" : "REFUSED") << '\n' << dialogs.last_text() << '\n';
        return ok ? 0 : 1;
    }
    if (action == u"unlock") {
        korvel::store::unlock_record(session, args[4], id);
        out << "UNLOCKED\n";
        return 0;
    }
    out << "unknown action\n";
    return 2;
}
