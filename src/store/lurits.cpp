// Seeding of the LURITS file of a new year: a copy of last year's file when there is one,
// otherwise the identity and LURITS numbers of lurits_staffid.txt, when that is there.

#include "platform/winpath.h"
#include "store/quoted_text.h"
#include "store/store.h"

namespace korvel::store {

void Store::seed_lurits_file(const QString& folder) {
    FileState& s = state(Code::PRSLURITS);
    const QString this_year = winpath::join(folder, QStringLiteral("lurits_random.txt"));
    bool first_try = true;
    while (s.count == 0) {
        bool ok_year = false;
        const int year = ledger_year.toInt(&ok_year);
        QString last_year_folder = folder;
        if (ok_year && !ledger_year.isEmpty()) {
            last_year_folder.replace(ledger_year, QString::number(year - 1));
        }
        const QString last_year =
            winpath::join(last_year_folder, QStringLiteral("lurits_random.txt"));
        if (first_try && ok_year && last_year_folder != folder && fs_.file_exists(last_year)) {
            first_try = false;
            close_file(Code::PRSLURITS);
            fs_.copy_file(last_year, this_year);
            // Opened again as at any open; an empty file of last year comes back here once more
            // and goes on to the identity file.
            const int handle = allocate_file_handle(false);
            auto file = RecordFile::open(fs_.native(this_year), PRSLURITS.record_length,
                                         RecordFile::Access::Shared);
            if (handle == 0 || !file) {
                pool_.release(handle);
                return;
            }
            s.count = file->count();
            pool_.attach(handle, std::move(file), QStringLiteral("lurits_random.txt"), folder);
            s.handle = handle;
            continue;
        }
        const std::optional<QByteArray> text =
            fs_.read_all(winpath::join(folder, QStringLiteral("lurits_staffid.txt")));
        if (!text) {
            return;
        }
        quoted::Reader reader(*text);
        Record& r = s.working;
        while (!reader.at_end()) {
            const std::optional<QString> id = reader.read_string();
            const std::optional<QString> number = reader.read_string();
            const std::optional<double> value1 = reader.read_number();
            const std::optional<double> value2 = reader.read_number();
            if (!id) {
                break;
            }
            r.clear();
            r.set_text(PRSLURITS["LU_ID_NR"], *id);
            r.set_text(PRSLURITS["LU_NR"], number.value_or(QString()));
            r.set_int16(PRSLURITS["LU_VAL1"], static_cast<long long>(value1.value_or(0)));
            r.set_int16(PRSLURITS["LU_VAL2"], static_cast<long long>(value2.value_or(0)));
            if (!append_record(Code::PRSLURITS)) {
                break;
            }
        }
        if (RecordFile* f = file(Code::PRSLURITS)) {
            s.count = f->count();
        }
        return;
    }
}

}  // namespace korvel::store
