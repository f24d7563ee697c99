// Any bytes as the lock table user_lock_record.txt, the audit trail Audit_Trail.txt and the
// lock file of the staff folder's compaction: taking, freeing and clearing record locks, the
// audit lines they write, and taking the compaction lock must all end without a crash.

#include <QTemporaryDir>
#include <chrono>
#include <cstdint>

#include "store/locks.h"
#include "store/store.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static QTemporaryDir dir;
    if (size < 2) {
        return 0;
    }
    // The first two bytes cut the rest into the three files.
    const QByteArray rest(reinterpret_cast<const char*>(data + 2),
                          static_cast<qsizetype>(size - 2));
    const qsizetype a = std::min<qsizetype>(data[0] * 8, rest.size());
    const qsizetype b = std::min<qsizetype>(a + data[1] * 8, rest.size());

    ui::ScriptedDialogs dialogs;
    store::Store s(dialogs, platform::DriveMap::explicit_map({{"C:", dir.path()}}));
    s.folders.general_year = "C:\\VESPARINE\\GENERAL\\G2026";
    s.folders.workstation = "C:\\ProgramData\\VESPARINE";
    s.folders.staff = "C:\\VESPARINE\\STAFF\\P2026";
    s.ledger_year = "2026";
    for (const QString& f : {s.folders.general_year, s.folders.workstation, s.folders.staff}) {
        s.fs().create_folder(f);
    }
    s.fs().write_all(s.folders.general_year + "\\user_lock_record.txt", rest.left(a));
    s.fs().write_all(s.folders.workstation + "\\Audit_Trail.txt", rest.mid(a, b - a));
    const QString lock_file = s.folders.staff + "\\prs_compact.lock";
    s.fs().write_all(lock_file, rest.mid(b));

    QString id = QStringLiteral("12345");
    store::lock_record(s, QStringLiteral("P"), id, QStringLiteral("FUZZ"));
    store::log_form_open(s, QStringLiteral("sk411_prg"), QStringLiteral("FUZZ"));
    store::unlock_record(s, QStringLiteral("P"), id);
    store::clear_foreign_lock(s, s.folders.staff, QStringLiteral("FUZZ"));

    std::unique_ptr<platform::HeldLock> held;
    s.fs().take_lock(lock_file, std::chrono::minutes(15), &held);
    held.reset();
    s.fs().delete_file(lock_file);
    return 0;
}
