#include "store/dbf_import.h"

#include <shapefil.h>

#include <QLocale>
#include <QtEndian>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

#include "platform/codepage.h"
#include "platform/winpath.h"
#include "store/block_writer.h"
#include "store/dbf_memory.h"
#include "store/quoted_text.h"
#include "store/record_layouts.h"
#include "store/upgrades.h"

namespace korvel::store {

namespace {

// ---- code pages ----

// The upper halves of the two DOS code pages that tables of this age were written in.
constexpr char16_t kCp437[128] = {
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x00E0, 0x00E5, 0x00E7, 0x00EA, 0x00EB, 0x00E8, 0x00EF,
    0x00EE, 0x00EC, 0x00C4, 0x00C5, 0x00C9, 0x00E6, 0x00C6, 0x00F4, 0x00F6, 0x00F2, 0x00FB, 0x00F9,
    0x00FF, 0x00D6, 0x00DC, 0x00A2, 0x00A3, 0x00A5, 0x20A7, 0x0192, 0x00E1, 0x00ED, 0x00F3, 0x00FA,
    0x00F1, 0x00D1, 0x00AA, 0x00BA, 0x00BF, 0x2310, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB,
    0x2591, 0x2592, 0x2593, 0x2502, 0x2524, 0x2561, 0x2562, 0x2556, 0x2555, 0x2563, 0x2551, 0x2557,
    0x255D, 0x255C, 0x255B, 0x2510, 0x2514, 0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x255E, 0x255F,
    0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550, 0x256C, 0x2567, 0x2568, 0x2564, 0x2565, 0x2559,
    0x2558, 0x2552, 0x2553, 0x256B, 0x256A, 0x2518, 0x250C, 0x2588, 0x2584, 0x258C, 0x2590, 0x2580,
    0x03B1, 0x00DF, 0x0393, 0x03C0, 0x03A3, 0x03C3, 0x00B5, 0x03C4, 0x03A6, 0x0398, 0x03A9, 0x03B4,
    0x221E, 0x03C6, 0x03B5, 0x2229, 0x2261, 0x00B1, 0x2265, 0x2264, 0x2320, 0x2321, 0x00F7, 0x2248,
    0x00B0, 0x2219, 0x00B7, 0x221A, 0x207F, 0x00B2, 0x25A0, 0x00A0,
};
constexpr char16_t kCp850[128] = {
    0x00C7, 0x00FC, 0x00E9, 0x00E2, 0x00E4, 0x00E0, 0x00E5, 0x00E7, 0x00EA, 0x00EB, 0x00E8, 0x00EF,
    0x00EE, 0x00EC, 0x00C4, 0x00C5, 0x00C9, 0x00E6, 0x00C6, 0x00F4, 0x00F6, 0x00F2, 0x00FB, 0x00F9,
    0x00FF, 0x00D6, 0x00DC, 0x00F8, 0x00A3, 0x00D8, 0x00D7, 0x0192, 0x00E1, 0x00ED, 0x00F3, 0x00FA,
    0x00F1, 0x00D1, 0x00AA, 0x00BA, 0x00BF, 0x00AE, 0x00AC, 0x00BD, 0x00BC, 0x00A1, 0x00AB, 0x00BB,
    0x2591, 0x2592, 0x2593, 0x2502, 0x2524, 0x00C1, 0x00C2, 0x00C0, 0x00A9, 0x2563, 0x2551, 0x2557,
    0x255D, 0x00A2, 0x00A5, 0x2510, 0x2514, 0x2534, 0x252C, 0x251C, 0x2500, 0x253C, 0x00E3, 0x00C3,
    0x255A, 0x2554, 0x2569, 0x2566, 0x2560, 0x2550, 0x256C, 0x00A4, 0x00F0, 0x00D0, 0x00CA, 0x00CB,
    0x00C8, 0x0131, 0x00CD, 0x00CE, 0x00CF, 0x2518, 0x250C, 0x2588, 0x2584, 0x00A6, 0x00CC, 0x2580,
    0x00D3, 0x00DF, 0x00D4, 0x00D2, 0x00F5, 0x00D5, 0x00B5, 0x00FE, 0x00DE, 0x00DA, 0x00DB, 0x00D9,
    0x00FD, 0x00DD, 0x00AF, 0x00B4, 0x00AD, 0x00B1, 0x2017, 0x00BE, 0x00B6, 0x00A7, 0x00F7, 0x00B8,
    0x00B0, 0x00A8, 0x00B7, 0x00B9, 0x00B3, 0x00B2, 0x25A0, 0x00A0,
};

// The DOS code page a table's language driver byte names; nullptr for Windows-1252, which
// also stands for a table that names none.
const char16_t* dos_code_page(unsigned char driver) {
    switch (driver) {
        case 0x01:  // US MS-DOS
        case 0x19:  // English (Britain) OEM
        case 0x1B:  // English (US) OEM
            return kCp437;
        case 0x02:  // International MS-DOS
        case 0x10:  // German OEM
        case 0x1A:  // English (Britain) OEM, code page 850
        case 0x1D:  // French OEM
        case 0x37:  // English (US) OEM, code page 850
            return kCp850;
        default:
            return nullptr;
    }
}

QString decode(const char* bytes, int width, const char16_t* dos) {
    if (dos == nullptr) {
        return cp1252::decode(bytes, width);
    }
    QString text(width, Qt::Uninitialized);
    for (int i = 0; i < width; ++i) {
        const auto b = static_cast<unsigned char>(bytes[i]);
        text[i] = b < 0x80 ? QChar(b) : QChar(dos[b - 0x80]);
    }
    return text;
}

// ---- columns to fields ----

struct Column {
    const Field* field = nullptr;
    int slot = 0;
    int offset = 0;  // in the row; the deletion mark is byte 0
    int width = 0;
    char type = 'C';
};

// The field and slot a column's name gives: the field of that name, or an array field whose
// name, an optional "_" and a slot number make the column's name.
std::optional<std::pair<const Field*, int>> field_of(const Layout& layout, const QString& name) {
    for (const Field& f : layout.fields) {
        if (name == QLatin1String(f.name.data(), qsizetype(f.name.size()))) {
            return std::pair{&f, 0};
        }
    }
    for (const Field& f : layout.fields) {
        const QLatin1String stem(f.name.data(), qsizetype(f.name.size()));
        if (f.count < 2 || !name.startsWith(stem)) {
            continue;
        }
        QStringView rest = QStringView(name).mid(stem.size());
        if (rest.startsWith(u'_')) {
            rest = rest.mid(1);
        }
        bool number = false;
        const int slot = rest.toInt(&number);
        const bool digits =
            std::all_of(rest.begin(), rest.end(), [](QChar c) { return c.isDigit(); });
        if (number && digits && slot >= 0 && slot < f.count) {
            return std::pair{&f, slot};
        }
    }
    return std::nullopt;
}

std::vector<Column> columns_of(DBFHandle dbf, const Layout& layout) {
    std::vector<Column> columns;
    const int n = DBFGetFieldCount(dbf);
    for (int i = 0; i < n; ++i) {
        char name[XBASE_FLDNAME_LEN_READ + 1] = {};
        int width = 0;
        int decimals = 0;
        DBFGetFieldInfo(dbf, i, name, &width, &decimals);
        const char type = static_cast<char>(DBFGetNativeFieldType(dbf, i));
        const int offset = dbf->panFieldOffset[i];
        // Memo and binary columns hold a block number of another file; a column that would
        // run past the row is damage.
        if (std::strchr("MGBP", type) != nullptr || width < 1 || offset < 1 ||
            offset + width > dbf->nRecordLength) {
            continue;
        }
        const auto f = field_of(layout, QString::fromLatin1(name).trimmed().toUpper());
        if (f && (f->first->type != FieldType::Raw || f->first->width == 4)) {
            columns.push_back({f->first, f->second, offset, width, type});
        }
    }
    return columns;
}

// ---- values ----

// A number written as text, as the dBASE driver hands it over; nullopt when the text is no
// number. Blank reads as 0.
std::optional<double> number_of(const QString& text) {
    const QString t = text.trimmed();
    if (t.isEmpty()) {
        return 0.0;
    }
    bool ok = false;
    const double v = QLocale::c().toDouble(t, &ok);
    return ok && std::isfinite(v) ? std::optional(v) : std::nullopt;
}

bool logical_of(const QString& text) {
    const QString t = text.trimmed();
    return !t.isEmpty() && QStringLiteral("TtYy").contains(t.front());
}

// Sets one field from a column's cleaned text; false when the text does not fit the field.
bool assign(Record& r, const Column& c, const QString& value) {
    const Field& f = *c.field;
    switch (f.type) {
        case FieldType::Text:
            r.set_text(f, value, c.slot);
            return true;
        case FieldType::Int16: {
            if (c.type == 'L') {
                r.set_int16(f, logical_of(value) ? -1 : 0, c.slot);
                return true;
            }
            const auto v = number_of(value);
            // Whole numbers round as the conversion of the old runtime did: halves to even.
            const bool fits = v && r.set_int16(f, std::llround(std::nearbyint(*v)), c.slot);
            if (!fits) {
                r.set_int16(f, 0, c.slot);
            }
            return fits;
        }
        case FieldType::Date: {
            const QString t = value.trimmed();
            if (t.isEmpty()) {
                r.set_date_serial(f, 0, c.slot);
                return true;
            }
            QDate d = QDate::fromString(t, QStringLiteral("yyyyMMdd"));
            if (!d.isValid()) {
                d = QDate::fromString(t, Qt::ISODate);
            }
            r.set_date(f, d, c.slot);
            return d.isValid();
        }
        case FieldType::Byte: {
            const auto v = number_of(value);
            const bool fits = v && *v >= 0 && *v <= 255;
            r.set_byte(f, fits ? static_cast<std::uint8_t>(std::lround(*v)) : 0);
            return fits;
        }
        case FieldType::Raw: {
            // A 4-byte number of another system, kept as a single.
            const auto v = number_of(value);
            const float single = v ? static_cast<float>(*v) : 0.0f;
            QByteArray bytes(4, '\0');
            std::memcpy(bytes.data(), &single, 4);
            r.set_raw(f, bytes, c.slot);
            return v.has_value();
        }
    }
    return false;
}

// ---- the members ----

struct Member {
    const char* code;
    const char* table;
    const char* target;
    const Layout& fields;
};

// The class periods come in the 52-byte records of their older layout, which the upgrade of
// the code then converts. The school record has no trigger of its own among the older
// versions; it converts alike, when its record file is not there.
const Member kMembers[] = {
    {"SBP", "s_b_prs.dbf", "sbp_random.txt", SBP2018},
    {"SKL", "skl_dta.dbf", "skl_dta_random.txt", SKL},
};

constexpr std::chrono::minutes kStaleLock{15};

// The name a file stands under in folder, found without regard to case; blank when absent.
QString find_file(const platform::FileSystem& fs, const QString& folder, const QString& name) {
    for (const QString& n : fs.file_names(folder)) {
        if (n.compare(name, Qt::CaseInsensitive) == 0) {
            return n;
        }
    }
    return {};
}

// Whether tables are opened for this workstation alone: the setting of networklock.txt,
// written with the default (not alone) when it is not there.
bool opened_exclusively(const platform::FileSystem& fs, const QString& workstation_folder) {
    if (workstation_folder.isEmpty()) {
        return false;
    }
    const QString path = winpath::join(workstation_folder, QStringLiteral("networklock.txt"));
    if (const auto bytes = fs.read_all(path)) {
        quoted::Reader reader(*bytes);
        return reader.read_bool().value_or(false);
    }
    fs.write_all(path, quoted::Writer().boolean(false).end_line().bytes());
    return false;
}

}  // namespace

DbfRead read_dbf_table(const QByteArray& table, const Layout& layout,
                       const std::function<bool(const Record&)>& each) {
    DbfRead read;
    const DbfPtr dbf = open_dbf_in_memory(table);
    if (!dbf) {
        return read;
    }
    read.is_table = true;
    const char16_t* dos = dos_code_page(static_cast<unsigned char>(table[29]));
    const std::vector<Column> columns = columns_of(dbf.get(), layout);
    const int rows = DBFGetRecordCount(dbf.get());
    Record r(layout);
    for (int i = 0; i < rows; ++i) {
        const char* row = DBFReadTuple(dbf.get(), i);
        if (row == nullptr) {
            read.missing = rows - i;
            break;
        }
        if (row[0] == '*') {
            ++read.deleted;
            continue;
        }
        r.clear();
        for (const Column& c : columns) {
            if (!assign(r, c, clean_field(decode(row + c.offset, c.width, dos)))) {
                ++read.unreadable;
            }
        }
        ++read.rows;
        if (!each(r)) {
            break;
        }
    }
    return read;
}

QString import_dbf_on_open(const platform::FileSystem& fs, const QString& code_name,
                           const QString& folder, const QString& workstation_folder,
                           const ImportProgress& progress) {
    const auto member = std::find_if(std::begin(kMembers), std::end(kMembers),
                                     [&](const Member& m) { return code_name == m.code; });
    if (member == std::end(kMembers)) {
        return {};
    }
    const QString name = find_file(fs, folder, QString::fromLatin1(member->table));
    if (name.isEmpty()) {
        return {};
    }
    const QString table = winpath::join(folder, name);
    const QString save = winpath::join(folder, QStringLiteral("save"));
    const QString saved = winpath::join(save, name);
    const QString target = winpath::join(folder, QString::fromLatin1(member->target));
    if (fs.file_exists(target)) {
        // Cut after the record file took its place: the table's copy in save stands already.
        if (fs.read_all(saved) == fs.read_all(table)) {
            fs.delete_file(table);
        }
        return {};
    }
    std::unique_ptr<platform::HeldLock> lock;
    if (opened_exclusively(fs, workstation_folder) &&
        fs.take_lock(winpath::join(folder, QStringLiteral("dbf_import.lock")), kStaleLock, &lock) !=
            platform::LockOutcome::Taken) {
        return {};
    }
    const std::optional<QByteArray> bytes = fs.read_all(table);
    if (!bytes) {
        return {};
    }
    // The record file is written beside; the table keeps a copy in save before the record
    // file takes its place, and goes only after that.
    const QString converted = target + QStringLiteral(".import");
    DbfRead read;
    // The row count the header claims, for the bar only: the rows themselves say how many
    // there are.
    const int claimed =
        bytes->size() >= 8
            ? int(std::min<quint32>(qFromLittleEndian<quint32>(bytes->constData() + 4),
                                    quint32(kMaxRecords)))
            : 0;
    const std::unique_ptr<ui::Progress> bar =
        progress ? progress(claimed) : std::make_unique<ui::NoProgress>();
    const bool written =
        write_file_beside(fs, converted, member->fields.record_length, [&](BlockWriter& out) {
            bool added = true;
            read = read_dbf_table(*bytes, member->fields, [&](const Record& r) {
                added = read.rows <= kMaxRecords && out.add(r.data());
                bar->step(read.rows);
                return added;
            });
            return read.is_table && added;
        });
    if (!written || !fs.create_folder(save) || !fs.copy_file(table, saved) ||
        !fs.replace_file(converted, target)) {
        fs.delete_file(converted);
        return {};
    }
    fs.delete_file(table);
    QString words =
        QStringLiteral("%1: %2 rows into %3").arg(name).arg(read.rows).arg(member->target);
    if (read.deleted > 0) {
        words += QStringLiteral(", %1 deleted rows passed over").arg(read.deleted);
    }
    if (read.missing > 0) {
        words += QStringLiteral(", %1 rows the table claims are missing").arg(read.missing);
    }
    if (read.unreadable > 0) {
        words += QStringLiteral(", %1 cells no number or date, written as 0").arg(read.unreadable);
    }
    return words;
}

}  // namespace korvel::store
