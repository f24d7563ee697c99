#include "attendance/attendance_common.h"

#include <QDate>

#include "platform/codepage.h"
#include "shell/helpers.h"
#include "store/field_bytes.h"

namespace korvel::attendance {

using store::Code;

namespace {
constexpr const store::Field& kPost = store::PRSAFW["PF_POS_NR"];
constexpr const store::Field& kMarks = store::PRSAFW["PF_DAG"];
constexpr const store::Field& kReasons = store::PRSAFW["PF_REDE"];

}  // namespace

QString reason_text(int number) {
    return QString::number(number).rightJustified(2, u' ').left(2);
}

MonthLimits month_limits(int month, int year) {
    MonthLimits m;
    const QDate first(year, month, 1);
    if (!first.isValid()) {
        return m;
    }
    m.first = first.dayOfYear();
    if (month == 12) {
        m.last = QDate(year, 12, 31).dayOfYear();
        m.days = static_cast<int>(first.daysTo(QDate(year, 12, 31).addDays(1)));
    } else {
        const QDate next(year, month + 1, 1);
        m.last = next.dayOfYear() - 1;
        m.days = static_cast<int>(first.daysTo(next));
    }
    m.last = std::min(m.last, kLastSlot);
    return m;
}

int ledger_year_number(const shell::Session& session) {
    bool ok = false;
    const int year = session.ledger_year.trimmed().toInt(&ok);
    return ok && year >= 1 && year <= 9999 ? year : session.today().year();
}

void fill_reason_lists(shell::Session& session, ListBox& kode_lys, ListBox& ag_opsies) {
    kode_lys.items.clear();
    kode_lys.list_index = -1;
    kode_lys.top_index = 0;
    if (ag_opsies.items.empty()) {
        ag_opsies.items = {{session.tr("AFWESIG", "ABSENT")},
                           {session.tr("LAAT", "LATE")},
                           {session.tr("UITGETEKEN", "SIGNED OUT")},
                           {session.tr("VERLOF", "ON LEAVE")}};
    }
    ag_opsies.items.push_back({kSeparator});
    if (!session.is_open(Code::PRSSBI) && !session.open_file(Code::PRSSBI)) {
        return;
    }
    session.scan_records(Code::PRSSBI, [&](int number, store::Record& r) {
        const QString first = r.text(store::PRSSBI["SBI_TIPE"]).trimmed();
        if (first.isEmpty()) {
            return;
        }
        kode_lys.items.push_back({first, number});
        ag_opsies.items.push_back({first, number});
    });
}

AttendanceBook::AttendanceBook(shell::Session& session) : session_(session) {}

bool AttendanceBook::load() {
    records_.clear();
    first_.clear();
    first_live_.clear();
    live_made_ = false;
    store::RecordFile* f = session_.file(Code::PRSAFW);
    if (f == nullptr) {
        return false;
    }
    // The file as it stands now: another workstation may have appended since it was opened.
    const int n = std::max(f->count(), session_.count(Code::PRSAFW));
    session_.state(Code::PRSAFW).count = n;
    records_.reserve(n);
    first_.reserve(n);
    std::vector<quint64> posts;
    posts.reserve(n);
    session_.scan_bytes(Code::PRSAFW, [&](int, const char* bytes) {
        records_.emplace_back(store::PRSAFW, bytes);
        posts.push_back(post_key(store::trimmed_bytes(bytes, kPost)));
    });
    // Walked from the last record to the first, each post number's entry is written over
    // until its first record is the one that stands.
    for (int number = int(posts.size()); number >= 1; --number) {
        first_.insert(posts[size_t(number - 1)], number);
    }
    return true;
}

quint64 AttendanceBook::post_key(std::string_view bytes) {
    static_assert(kPost.width <= 7);
    if (bytes.size() > size_t(kPost.width)) {
        return kNoPost;
    }
    quint64 key = bytes.size();
    for (const char c : bytes) {
        key = key << 8 | uchar(c);
    }
    return key;
}

quint64 AttendanceBook::post_key(const QString& post) {
    const QString trimmed = post.trimmed();
    if (trimmed.size() > kPost.width) {
        return kNoPost;
    }
    char bytes[kPost.width];
    for (qsizetype i = 0; i < trimmed.size(); ++i) {
        const QChar c = trimmed.at(i);
        bytes[i] = cp1252::to_byte(c.unicode());
        if (bytes[i] == '?' && c != u'?') {
            return kNoPost;  // no byte of the code page: no stored post number reads so
        }
    }
    return post_key(std::string_view(bytes, size_t(trimmed.size())));
}

const QHash<quint64, int>& AttendanceBook::live() const {
    if (!live_made_) {
        live_made_ = true;
        first_live_.reserve(count());
        for (int number = count(); number >= 1; --number) {
            const std::string_view post = store::trimmed_bytes(record(number).data(), kPost);
            if (!post.empty() && !post.starts_with("..")) {
                first_live_.insert(post_key(post), number);
            }
        }
    }
    return first_live_;
}

int AttendanceBook::find(const QString& post) const {
    return first_.value(post_key(post), 0);
}

int AttendanceBook::find_live(const QString& post) const {
    const quint64 key = post_key(post);
    if (key == post_key(std::string_view())) {
        return 0;  // the scan passes over blank post numbers
    }
    return live().value(key, 0);
}

int AttendanceBook::ensure(const QString& post) {
    const QString text = post.trimmed();
    if (text.isEmpty()) {
        return 0;
    }
    store::Record r(store::PRSAFW);
    r.clear();
    r.set_text(kPost, text);
    // Looked up as it would be stored: a post longer than its field is kept as far as it goes.
    const std::string_view stored = store::trimmed_bytes(r.data(), kPost);
    const quint64 key = post_key(stored);
    if (const int found = first_.value(key, 0); found != 0) {
        return found;
    }
    const bool stale = stored.starts_with("..");
    for (int day = 0; day < kMarks.count; ++day) {
        r.set_text(kMarks, QStringLiteral("."), day);
        r.set_text(kReasons, QStringLiteral(".."), day);
    }
    records_.push_back(r);
    const int number = count();
    if (!write(number)) {
        records_.pop_back();
        return 0;
    }
    first_.insert(key, number);
    if (live_made_ && !stale) {
        first_live_.insert(key, number);
    }
    return number;
}

store::Record& AttendanceBook::record(int number) {
    return records_.at(static_cast<std::size_t>(number - 1));
}

const store::Record& AttendanceBook::record(int number) const {
    return records_.at(static_cast<std::size_t>(number - 1));
}

bool AttendanceBook::write(int number) {
    if (number < 1 || number > count()) {
        return false;
    }
    session_.working(Code::PRSAFW) = record(number);
    return session_.write_record(Code::PRSAFW, number);
}

void AttendanceBook::clear_stale(int reach) {
    for (int number = 1; number < reach && number <= count(); ++number) {
        store::Record& r = record(number);
        const std::string_view post = store::trimmed_bytes(r.data(), kPost);
        if (!post.empty() && post.starts_with("..")) {
            first_.remove(post_key(post));
            r.set_text(kPost, QString());
            write(number);
        }
    }
}

}  // namespace korvel::attendance
