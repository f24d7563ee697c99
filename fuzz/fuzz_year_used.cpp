// Any bytes as year_used.txt: the ledger year that start-up settles on is a year, and no
// folder made on the way lies outside the data tree's drives.

#include <cstdint>
#include <cstdlib>

#include "jail.h"
#include "platform/codepage.h"
#include "platform/process_end.h"
#include "shell/folders.h"
#include "shell/startup.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const fuzzing::Jail jail({QStringLiteral("c"), QStringLiteral("f")});
    ui::ScriptedDialogs dialogs;
    platform::RecordingProcessStarter starter;
    shell::Session session(dialogs, platform::DriveMap::explicit_map(
                                        {{"C:", jail.path("c")}, {"F:", jail.path("f")}}));
    session.set_starter(starter);
    session.fixed_today = QDate(2026, 11, 22);
    session.executable_path = "C:\\Program Files (x86)\\KORVEL\\KORVEL.EXE";
    shell::Startup startup(session);
    try {
        startup.begin();
        session.fs().write_all(
            startup.network_file(),
            cp1252::encode(shell::network_lines(shell::default_folders("F:", "2026"))
                               .join(QStringLiteral("\r\n"))));
        session.fs().create_folder("F:\\VESPARINE\\GENERAL\\G2026");
        startup.locate();
        session.fs().write_all(
            startup.year_used_file(),
            QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
        startup.settle_ledger_year();
    } catch (const ProcessEnd&) {
    }
    if (!shell::is_year_text(session.ledger_year)) {
        std::abort();
    }
    jail.check();
    return 0;
}
