#include "store/upgrades.h"

#include <QFile>
#include <QHash>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <functional>
#include <system_error>
#include <vector>

#include "platform/winpath.h"
#include "store/block_writer.h"
#include "store/dbf_import.h"
#include "store/record_file.h"
#include "store/record_layouts.h"

namespace korvel::store {

using winpath::join;

namespace {

constexpr int kOldAddressLength = 63;
constexpr int kOldAttendanceLength = 1085;
constexpr int kTermDays = 120;
constexpr int kWeeks = 53;  // six cells a week fill the class record

// Writes the records of the converted file, given the old file (nullptr when there is none).
using Produce = std::function<bool(RecordFile* old_file, BlockWriter& out)>;

// One record of the new layout for each old record, wholly written by the conversion.
using Convert = std::function<void(const char* old_record, Record& converted)>;

Produce each_record(const Layout& layout, Convert convert) {
    return [&layout, convert = std::move(convert)](RecordFile* in, BlockWriter& out) {
        if (in == nullptr) {
            return true;
        }
        Record converted(layout);
        return in->scan(1, in->count(), [&](int, const char* bytes) {
            convert(bytes, converted);
            return out.add(converted.data());
        });
    };
}

// The converted file, complete, stands under this name until it replaces the live file.
QString converted_name(const QString& live) {
    return live + QStringLiteral(".new");
}

// The frozen copy of the live file: a second name for its bytes where the file system allows
// one, so that nothing is read or written again, else a copy. Either way the folder is pushed
// to the disk when the converted file takes the live name, before the old bytes lose it.
bool freeze(const platform::FileSystem& fs, const QString& live, const QString& frozen) {
    const QString from = fs.native(live);
    const QString to = fs.native(frozen);
    if (from.isEmpty() || to.isEmpty()) {
        return false;
    }
    QFile::remove(to);
    std::error_code error;
    std::filesystem::create_hard_link(from.toStdString(), to.toStdString(), error);
    return !error || fs.copy_file(live, frozen);
}

struct Upgrade {
    QString live_name;
    QString frozen_name;
    int old_length;
    const Layout& layout;
    Produce produce;
    // Whether the old layout is told by the file's length alone; a frozen copy that stands
    // empty then does not count as the mark of an upgrade that ran.
    bool by_length = false;
};

// The upgrade of one file: converted beside, frozen copy of the old file, then the switch.
// A converted file left by a cut is put in place once its frozen copy stands.
bool upgrade_file(const platform::FileSystem& fs, const QString& folder, const Upgrade& u) {
    const QString live = join(folder, u.live_name);
    const QString frozen = join(folder, u.frozen_name);
    const QString converted = converted_name(live);
    if (fs.file_exists(converted)) {
        if (fs.file_exists(frozen)) {
            return fs.replace_file(converted, live);
        }
        fs.delete_file(converted);
    }
    const qint64 size = fs.file_size(live);
    const int new_length = u.layout.record_length;
    if (u.by_length) {
        // Only a file that holds old records and cannot hold new ones; a frozen copy with
        // records in it is never overwritten.
        if (size <= 0 || size % u.old_length != 0 || size % new_length == 0 ||
            fs.file_size(frozen) > 0) {
            return false;
        }
    } else if (fs.file_exists(frozen)) {
        return false;
    }
    // A file whose length fits only the new record is never read as the old one.
    if (size > 0 && size % new_length == 0 && size % u.old_length != 0) {
        return false;
    }
    if (!write_file_beside(fs, converted, new_length, [&](BlockWriter& out) {
            if (!fs.file_exists(live)) {
                return u.produce(nullptr, out);
            }
            auto in = RecordFile::open(fs.native(live), u.old_length, RecordFile::Access::ReadOnly);
            return in != nullptr && u.produce(in.get(), out);
        })) {
        fs.delete_file(converted);
        return false;
    }
    const bool frozen_made =
        fs.file_exists(live) ? freeze(fs, live, frozen) : fs.write_all(frozen, QByteArray());
    if (!frozen_made) {
        fs.delete_file(converted);
        return false;
    }
    return fs.replace_file(converted, live);
}

void convert_address(const char* old_record, Record& r) {
    // The first 63 bytes keep their places, the teaching level at byte 63 included.
    r.clear();
    std::memcpy(r.data(), old_record, kOldAddressLength);
}

void convert_attendance(const char* old_record, Record& r) {
    static const Record blank = [] {
        Record b(PRSAFW);
        new_attendance_record(b, QString());
        return b;
    }();
    constexpr int kMarks = PRSAFW["PF_DAG"].offset;
    constexpr int kReasons = PRSAFW["PF_REDE"].offset;
    char* out = r.data();
    std::memcpy(out, blank.data(), size_t(PRSAFW.record_length));
    std::memcpy(out, old_record, 5);
    // Three terms of 120 days: marks first, then two characters of reason a day.
    for (int g = 0; g < 3; ++g) {
        for (int p = 1; p <= kTermDays; ++p) {
            const int slot = g * kTermDays + p;
            out[kMarks + slot] = old_record[5 + g * kTermDays + p - 1];
            std::memcpy(out + kReasons + 2 * slot,
                        old_record + 5 + 3 * kTermDays + g * 2 * kTermDays + 2 * p - 2, 2);
        }
    }
}

// The week of an old class record: a whole number 1 to 53, held as a 4-byte integer or as a
// 4-byte single; 0 when it is neither.
int week_of(const char* bytes) {
    std::int32_t whole;
    std::memcpy(&whole, bytes, 4);
    if (whole >= 1 && whole <= kWeeks) {
        return whole;
    }
    float single;
    std::memcpy(&single, bytes, 4);
    if (single >= 1.0f && single <= float(kWeeks) && single == std::floor(single)) {
        return int(single);
    }
    return 0;
}

// The old file holds a record a grade, class and week; the new one a record a grade and
// class, in the order the classes first appear, with six cells a week.
bool gather_weeks(RecordFile* in, BlockWriter& out) {
    if (in == nullptr) {
        return true;
    }
    static constexpr const Field& kOldCells = SBP2018["SP_SEL"];
    static constexpr const Field& kCells = SBP["SP_SEL"];
    std::vector<Record> classes;
    QHash<QString, qsizetype> found;
    Record old(SBP2018);
    const bool read = in->scan(1, in->count(), [&](int, const char* bytes) {
        old.assign(bytes);
        const QString key = old.text(SBP2018["SP_GRAAD"]) + u'~' + old.text(SBP2018["SP_KLAS"]);
        auto at = found.find(key);
        if (at == found.end()) {
            Record& r = classes.emplace_back(SBP);
            r.clear();
            for (const char* name : {"SP_GRAAD", "SP_KLAS", "SP_ONNIE"}) {
                r.set_raw(*SBP.find(name), old.raw(*SBP2018.find(name)));
            }
            at = found.insert(key, classes.size() - 1);
        }
        const int week = week_of(old.raw(SBP2018["SP_WEEK"]).constData());
        if (week > 0) {
            for (int i = 0; i < kOldCells.count; ++i) {
                classes[*at].set_int16(kCells, old.int16(kOldCells, i),
                                       (week - 1) * kOldCells.count + i);
            }
        }
        return true;
    });
    return read && std::all_of(classes.begin(), classes.end(),
                               [&](const Record& r) { return out.add(r.data()); });
}

QString upgrade_layout(const platform::FileSystem& fs, const QString& code_name,
                       const QString& folder, const QString& ledger_year);

}  // namespace

bool write_file_beside(const platform::FileSystem& fs, const QString& to, int record_length,
                       const std::function<bool(BlockWriter&)>& produce) {
    const QString part = to + QStringLiteral(".part");
    QFile::remove(fs.native(part));
    auto out = RecordFile::open(fs.native(part), record_length, RecordFile::Access::Shared);
    if (!out) {
        return false;
    }
    bool written;
    {
        BlockWriter blocks(*out);
        written = produce(blocks) && blocks.finish();
    }
    written = written && out->sync();
    out.reset();
    if (!written) {
        QFile::remove(fs.native(part));
        return false;
    }
    return fs.replace_file(part, to);
}

void new_attendance_record(Record& r, const QString& post) {
    static constexpr const Field& kMarks = PRSAFW["PF_DAG"];
    r.clear();
    r.set_text(PRSAFW["PF_POS_NR"], post);
    for (int day = 0; day < kMarks.count; ++day) {
        r.set_text(kMarks, QStringLiteral("."), day);
        r.set_text(PRSAFW["PF_REDE"], QStringLiteral(".."), day);
    }
}

QString upgrade_on_open(const platform::FileSystem& fs, const QString& code_name,
                        const QString& folder, const QString& ledger_year,
                        const QString& workstation_folder, const ImportProgress& progress) {
    const QString imported =
        import_dbf_on_open(fs, code_name, folder, workstation_folder, progress);
    const QString upgraded = upgrade_layout(fs, code_name, folder, ledger_year);
    return imported.isEmpty() || upgraded.isEmpty() ? imported + upgraded
                                                    : imported + u'\n' + upgraded;
}

namespace {

QString upgrade_layout(const platform::FileSystem& fs, const QString& code_name,
                       const QString& folder, const QString& ledger_year) {
    const int year = ledger_year.toInt();
    if (code_name == u"PRSADD") {
        if (upgrade_file(
                fs, folder,
                {QStringLiteral("prs_add_random.txt"), QStringLiteral("prs_add_2016_random.txt"),
                 kOldAddressLength, PRSADD, each_record(PRSADD, convert_address)})) {
            return QStringLiteral("prs_add_random.txt: 63 to 195 bytes a record");
        }
    } else if (code_name == u"PRSAFW") {
        const QString live = join(folder, QStringLiteral("prs_afw_random.txt"));
        const QString frozen = join(folder, QStringLiteral("prs_afw_2014_random.txt"));
        if (year >= 2016) {
            // A file an earlier version converted in error comes back: its frozen copy was
            // made in this very year.
            const auto made = fs.last_modified(frozen);
            if (made && made->date().year() == year && fs.replace_file(frozen, live)) {
                return QStringLiteral("prs_afw_random.txt: put back from prs_afw_2014_random.txt");
            }
        } else if (upgrade_file(fs, folder,
                                {QStringLiteral("prs_afw_random.txt"),
                                 QStringLiteral("prs_afw_2014_random.txt"), kOldAttendanceLength,
                                 PRSAFW, each_record(PRSAFW, convert_attendance)})) {
            return QStringLiteral("prs_afw_random.txt: 1085 to 1118 bytes a record");
        }
    } else if (code_name == u"SBP") {
        // The old file is told by its length only: the frozen copy's name is also the file of
        // the code SBP2018, which opening that code makes empty.
        if (upgrade_file(fs, folder,
                         {QStringLiteral("sbp_random.txt"), QStringLiteral("sbp2018_random.txt"),
                          SBP2018.record_length, SBP, gather_weeks, true})) {
            return QStringLiteral("sbp_random.txt: 52 to 672 bytes a record, one a class");
        }
    } else if (code_name == u"PRSVAK") {
        // Compared as dates, whatever the machine's short date format.
        const QString live = join(folder, QStringLiteral("prs_vak_random.txt"));
        const auto written = fs.last_modified(live);
        if (written && written->date() < kSubjectFileCutOff && fs.delete_file(live)) {
            return QStringLiteral("prs_vak_random.txt: dropped, last written ") +
                   written->date().toString(Qt::ISODate);
        }
    }
    return {};
}

}  // namespace

}  // namespace korvel::store
