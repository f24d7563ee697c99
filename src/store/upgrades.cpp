#include "store/upgrades.h"

#include <QFile>
#include <cstring>
#include <functional>
#include <vector>

#include "platform/winpath.h"
#include "store/block_writer.h"
#include "store/record_file.h"
#include "store/record_layouts.h"

namespace korvel::store {

using winpath::join;

namespace {

constexpr int kOldAddressLength = 63;
constexpr int kOldAttendanceLength = 1085;
constexpr int kTermDays = 120;

// Converts the records of a file of one length into a new file of another; the converted
// record is wholly written by the conversion.
using Convert = std::function<void(const char* old_record, Record& converted)>;

// The converted file, complete, stands under this name until it replaces the live file.
QString converted_name(const QString& live) {
    return live + QStringLiteral(".new");
}

bool write_converted(const platform::FileSystem& fs, const QString& from, int old_length,
                     const Layout& layout, const Convert& convert, const QString& to) {
    const QString part = to + QStringLiteral(".part");
    QFile::remove(fs.native(part));
    auto out = RecordFile::open(fs.native(part), layout.record_length, RecordFile::Access::Shared);
    if (!out) {
        return false;
    }
    bool written = true;
    if (fs.file_exists(from)) {
        auto in = RecordFile::open(fs.native(from), old_length, RecordFile::Access::ReadOnly);
        if (!in) {
            return false;
        }
        Record converted(layout);
        BlockWriter blocks(*out);
        written = in->scan(1, in->count(), [&](int, const char* bytes) {
            convert(bytes, converted);
            return blocks.add(converted.data());
        });
        written = written && blocks.finish();
    }
    written = written && out->sync();
    out.reset();
    return written && fs.replace_file(part, to);
}

// The upgrade of one file: converted beside, frozen copy of the old file, then the switch.
// A converted file left by a cut is put in place once its frozen copy stands.
bool upgrade_file(const platform::FileSystem& fs, const QString& folder, const QString& live_name,
                  const QString& frozen_name, int old_length, const Layout& layout,
                  const Convert& convert) {
    const QString live = join(folder, live_name);
    const QString frozen = join(folder, frozen_name);
    const QString converted = converted_name(live);
    if (fs.file_exists(converted)) {
        if (fs.file_exists(frozen)) {
            return fs.replace_file(converted, live);
        }
        fs.delete_file(converted);
    }
    if (fs.file_exists(frozen)) {
        return false;
    }
    // A file whose length fits only the new record is never read as the old one.
    const qint64 size = fs.file_size(live);
    if (size > 0 && size % layout.record_length == 0 && size % old_length != 0) {
        return false;
    }
    if (!write_converted(fs, live, old_length, layout, convert, converted)) {
        fs.delete_file(converted);
        return false;
    }
    const bool frozen_made =
        fs.file_exists(live) ? fs.copy_file(live, frozen) : fs.write_all(frozen, QByteArray());
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

}  // namespace

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
                        const QString& folder, const QString& ledger_year) {
    const int year = ledger_year.toInt();
    if (code_name == u"PRSADD") {
        if (upgrade_file(fs, folder, QStringLiteral("prs_add_random.txt"),
                         QStringLiteral("prs_add_2016_random.txt"), kOldAddressLength, PRSADD,
                         convert_address)) {
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
        } else if (upgrade_file(fs, folder, QStringLiteral("prs_afw_random.txt"),
                                QStringLiteral("prs_afw_2014_random.txt"), kOldAttendanceLength,
                                PRSAFW, convert_attendance)) {
            return QStringLiteral("prs_afw_random.txt: 1085 to 1118 bytes a record");
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

}  // namespace korvel::store
