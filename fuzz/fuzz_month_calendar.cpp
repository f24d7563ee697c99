// Any bytes as a month calendar maand_kalender_<month>.<year>: the month is laid out from it,
// its holiday letters taken, and written back, without a crash.

#include <QTemporaryDir>
#include <cstdint>

#include "attendance/month_calendar.h"
#include "shell/session.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static QTemporaryDir dir;
    if (size < 1) {
        return 0;
    }
    ui::ScriptedDialogs dialogs;
    shell::Session session(dialogs, platform::DriveMap::explicit_map({{"C:", dir.path()}}));
    session.ledger_year = "2026";
    session.folders.workstation = "C:\\ProgramData\\VESPARINE";
    session.folders.workstation_program = "C:\\ProgramData\\VESPARINE\\KORVEL";
    session.fs().create_folder(session.folders.workstation_program);
    attendance::MonthCalendar calendar(session);
    const int month = 1 + data[0] % 12;
    session.afrikaans = (data[0] & 0x80) != 0;
    const QString path = calendar.file_path(month, session.afrikaans);
    session.fs().write_all(path, QByteArray(reinterpret_cast<const char*>(data + 1),
                                            static_cast<qsizetype>(size - 1)));
    calendar.load(month);
    calendar.mk_save_click();
    calendar.load(month);
    session.fs().delete_file(path);
    return 0;
}
