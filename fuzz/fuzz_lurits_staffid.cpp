// Any bytes as lurits_staffid.txt: a new year's LURITS file is seeded from it, a record a line
// that reads, without a crash and with a count that matches the file.

#include <QTemporaryDir>
#include <cstdint>
#include <cstdlib>

#include "store/store.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static QTemporaryDir dir;
    ui::ScriptedDialogs dialogs;
    store::Store s(dialogs, platform::DriveMap::explicit_map({{"C:", dir.path()}}));
    s.folders.staff = "C:\\VESPARINE\\STAFF\\P2026";
    s.ledger_year = "2026";
    s.fs().create_folder(s.folders.staff);
    const QString seeded = s.folders.staff + "\\lurits_random.txt";
    s.fs().delete_file(seeded);
    s.fs().write_all(s.folders.staff + "\\lurits_staffid.txt",
                     QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    s.open_staff_file(QStringLiteral("PRSLURITS"));
    const qint64 bytes = s.fs().file_size(seeded);
    if (bytes % store::PRSLURITS.record_length != 0 ||
        s.count(store::Code::PRSLURITS) != bytes / store::PRSLURITS.record_length) {
        std::abort();
    }
    s.close_file(store::Code::PRSLURITS);
    return 0;
}
