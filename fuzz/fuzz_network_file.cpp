// Any bytes as network.dta and language.txt: the whole resolution of the data tree runs over
// them, and must end, by finding the tree or by ending the process, without a crash and
// without making anything outside the drives of the tree.

#include <cstdint>

#include "jail.h"
#include "platform/process_end.h"
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
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    try {
        startup.begin();
        session.fs().write_all(startup.network_file(), bytes);
        session.fs().write_all(startup.language_file(), bytes);
        startup.read_language();
        startup.locate();
    } catch (const ProcessEnd&) {
    }
    jail.check();
    return 0;
}
