// Any bytes as a record file of any layout: the count, a block scan, every field of every
// record decoded as the dump and the forms decode it, and the index built over a master file.

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdint>

#include "store/record_layouts.h"
#include "store/store.h"
#include "ui/scripted_dialogs.h"

using namespace korvel::store;

namespace {

QTemporaryDir& folder() {
    static QTemporaryDir dir;
    return dir;
}

void decode_all(const Record& r) {
    for (const Field& f : r.layout().fields) {
        for (int i = 0; i < f.count; ++i) {
            switch (f.type) {
                case FieldType::Text:
                    (void)r.text(f, i).size();
                    break;
                case FieldType::Int16:
                    (void)r.int16(f, i);
                    break;
                case FieldType::Date:
                    (void)r.date(f, i);
                    break;
                case FieldType::Byte:
                    (void)r.byte(f);
                    break;
                case FieldType::Raw:
                    (void)r.raw(f, i);
                    break;
            }
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const Layout& layout = *kAllLayouts[data[0] % std::size(kAllLayouts)];
    const QString staff = folder().path() + "/VESPARINE/STAFF/P2026";
    QDir().mkpath(staff);
    const QString path = staff + "/" + QString::fromLatin1(layout.file_name.data());
    {
        QFile f(path);
        f.open(QIODevice::WriteOnly | QIODevice::Truncate);
        f.write(reinterpret_cast<const char*>(data + 1), static_cast<qint64>(size - 1));
    }
    auto file = RecordFile::open(path, layout.record_length, RecordFile::Access::ReadOnly);
    if (file) {
        Record r(layout);
        file->scan(1, file->count(), [&](int, const char* bytes) {
            r.assign(bytes);
            decode_all(r);
            return true;
        });
    }
    if (&layout == &PRSALG) {
        korvel::ui::ScriptedDialogs dialogs;
        Store store(dialogs, korvel::platform::DriveMap::explicit_map({{"C:", folder().path()}}));
        store.folders.staff = "C:\\VESPARINE\\STAFF\\P2026";
        store.build_staff_index();
        store.compact_staff_files();
    }
    QFile::remove(path);
    return 0;
}
