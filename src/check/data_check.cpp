#include "check/data_check.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QSet>
#include <algorithm>
#include <climits>
#include <cmath>
#include <cstring>

#include "platform/codepage.h"
#include "platform/executable.h"
#include "platform/user.h"
#include "platform/winpath.h"
#include "shell/folders.h"
#include "shell/helpers.h"
#include "shell/startup.h"
#include "store/folder_switch.h"
#include "store/quoted_text.h"
#include "store/record_file.h"
#include "store/record_layouts.h"
#include "ui/scripted_dialogs.h"

#ifdef Q_OS_LINUX
#include <unistd.h>
#endif

namespace korvel::check {

using platform::FileSystem;
using store::Field;
using store::FieldType;
using store::Layout;
using winpath::join;

namespace {

// ---- the tree -------------------------------------------------------------------------------

// The last four characters of a folder replaced by the year, when they are a year.
QString with_year(const QString& folder, const QString& year) {
    bool digits = false;
    if (folder.size() >= 4) {
        folder.right(4).toInt(&digits);
    }
    return digits ? folder.left(folder.size() - 4) + year : folder;
}

bool is_year(const QString& text) {
    bool ok = false;
    const int y = text.toInt(&ok);
    return ok && text.size() == 4 && y >= 1900 && y <= 2100;
}

// ---- findings of one file -------------------------------------------------------------------

class FileFindings {
  public:
    FileFindings(std::vector<Finding>& out, QString file, bool afrikaans)
        : out_(out), file_(std::move(file)), afrikaans_(afrikaans) {}
    ~FileFindings() {
        if (dropped_ > 0) {
            out_.push_back({file_,
                            0,
                            {},
                            say("nog %1 foute in hierdie lêer word nie gelys nie",
                                "%1 more findings in this file are not listed")
                                .arg(dropped_)});
        }
    }
    // A finding's text in the language of the check.
    QString say(const char* af, const char* en) const {
        return QString::fromUtf8(afrikaans_ ? af : en);
    }
    void add(int record, const QString& field, const QString& problem) {
        if (kept_ < kFindingsPerFile) {
            // One finding a line: a line end read from a file does not break it.
            QString line = problem;
            for (QChar& c : line) {
                if (c.unicode() < 32) {
                    c = u'?';
                }
            }
            out_.push_back({file_, record, field, line});
            ++kept_;
        } else {
            ++dropped_;
        }
    }
    const QString& file() const { return file_; }

  private:
    std::vector<Finding>& out_;
    QString file_;
    bool afrikaans_;
    int kept_ = 0;
    long long dropped_ = 0;
};

QString field_name(const Field& f, int index) {
    const QString name = QString::fromLatin1(f.name.data(), qsizetype(f.name.size()));
    return f.count > 1 ? name + u'(' + QString::number(index) + u')' : name;
}

// ---- the value rules ------------------------------------------------------------------------

// Whole numbers whose meaning bounds them; a value outside cannot be shown or saved by the form
// that owns the field. Amounts are whole rands and never negative: a negative one is an amount
// above 32767 that wrapped.
struct NumberRule {
    std::string_view field;
    int low;
    int high;
    bool zero_allowed;  // 0 stands for "none" outside the range
    const char* what;
    const char* what_af;
};
constexpr NumberRule kNumberRules[] = {
    {"PK_JAAR", 1900, 2100, true, "a year", "'n jaar"},
    {"PO_JRE_SKL", 0, 99, true, "years", "jare"},
    {"PO_JRE_PRV", 0, 99, true, "years", "jare"},
    {"PO_JRE_BTE", 0, 99, true, "years", "jare"},
    {"PO_JRE_OND", 0, 99, true, "years", "jare"},
    {"PO_JRE_DPT", 0, 99, true, "years", "jare"},
    {"PO_JRE_A_H", 0, 99, true, "years", "jare"},
    {"PO_JRE_SAH", 0, 99, true, "years", "jare"},
    {"PO_JRE_HF", 0, 99, true, "years", "jare"},
    {"PO_OND", 0, 99, true, "years", "jare"},
    {"PO_VJR", 0, 99, true, "years", "jare"},
    {"PO_BJR", 0, 99, true, "years", "jare"},
    {"PO_PJR", 0, 99, true, "years", "jare"},
    {"PD_POSVLAK", 1, 4, true, "a post level", "'n posvlak"},
    {"PL_MAAND", 1, 12, false, "a month", "'n maand"},
    {"PB_SALARIS", 0, 32767, true, "an amount", "'n bedrag"},
    {"PB_TAX_AMT", 0, 32767, true, "an amount", "'n bedrag"},
    {"PL_SALARIS", 0, 32767, true, "an amount", "'n bedrag"},
    {"PL_OORTYD", 0, 32767, true, "an amount", "'n bedrag"},
    {"PL_BONUS", 0, 32767, true, "an amount", "'n bedrag"},
    {"PL_I_BDRG", 0, 32767, true, "an amount", "'n bedrag"},
    {"PL_PENS", 0, 32767, true, "an amount", "'n bedrag"},
    {"PL_WVF", 0, 32767, true, "an amount", "'n bedrag"},
    {"PL_TAX", 0, 32767, true, "an amount", "'n bedrag"},
    {"pl_u_bdrg", 0, 32767, true, "an amount", "'n bedrag"},
    {"LK_JAAR", 1900, 2100, true, "a year", "'n jaar"},
    {"BL_LID_AKTIEF", -1, 1, true, "a yes or no", "'n ja of nee"},
    {"BL_SA_BURGER", 0, 1, true, "a yes or no", "'n ja of nee"},
};

const NumberRule* number_rule(const Field& f) {
    for (const NumberRule& r : kNumberRules) {
        if (r.field == f.name) {
            return &r;
        }
    }
    return nullptr;
}

// Reserved fields are blank or 0, as a sibling program may leave them: no rule applies.
bool is_reserved(const Field& f) {
    return f.name.find("_RES") != std::string_view::npos || f.type == FieldType::Raw;
}

// 1900-01-01 and 2100-12-31 as days since 1899-12-30.
constexpr double kFirstSerial = 2;
constexpr double kLastSerial = 73415;

// What the field rules look at in a record of a layout, worked out once, not once a record:
// the runs of adjacent text fields (one look for a NUL covers a run) and the fields whose
// values are judged one by one.
struct FieldPlan {
    struct TextRun {
        int offset;
        int size;
        std::size_t first, last;  // the run's fields, an index range of the layout's fields
    };
    std::vector<TextRun> text_runs;
    std::vector<std::pair<std::size_t, const NumberRule*>> valued;  // dates and ruled numbers
};

const FieldPlan& plan_of(const Layout& layout) {
    static QHash<const Layout*, FieldPlan> cache;
    auto it = cache.find(&layout);
    if (it != cache.end()) {
        return *it;
    }
    FieldPlan plan;
    for (std::size_t n = 0; n < layout.fields.size(); ++n) {
        const Field& f = layout.fields[n];
        if (is_reserved(f)) {
            continue;
        }
        if (f.type == FieldType::Text) {
            FieldPlan::TextRun* run = plan.text_runs.empty() ? nullptr : &plan.text_runs.back();
            if (run && run->last + 1 == n && run->offset + run->size == f.offset) {
                run->size += f.size();
                run->last = n;
            } else {
                plan.text_runs.push_back({f.offset, f.size(), n, n});
            }
        } else if (f.type == FieldType::Date) {
            plan.valued.emplace_back(n, nullptr);
        } else if (const NumberRule* rule = number_rule(f)) {
            plan.valued.emplace_back(n, rule);
        }
    }
    return *cache.insert(&layout, std::move(plan));
}

// The rules of one field's elements over a record's bytes.
void check_field(const Field& f, const NumberRule* rule, const char* bytes, int number,
                 FileFindings& out) {
    for (int i = 0; i < f.count; ++i) {
        const char* p = bytes + f.element_offset(i);
        switch (f.type) {
            case FieldType::Text:
                // A field that starts with a NUL was never written and reads blank; a NUL after
                // text stays in the value the sibling programs read.
                if (p[0] != '\0' && std::memchr(p, '\0', std::size_t(f.width)) != nullptr) {
                    out.add(number, field_name(f, i),
                            out.say("'n NUL-greep in die teks", "a NUL byte in the text"));
                }
                break;
            case FieldType::Date: {
                double d = 0;
                std::memcpy(&d, p, sizeof d);
                if (d == 0) {
                    break;
                }
                if (!std::isfinite(d)) {
                    out.add(number, field_name(f, i),
                            out.say("'n datum wat geen getal is nie", "a date that is no number"));
                } else if (d < kFirstSerial || d > kLastSerial) {
                    out.add(
                        number, field_name(f, i),
                        out.say("'n datum buite 1900-2100 (%1)", "a date outside 1900-2100 (%1)")
                            .arg(d));
                } else if (d != std::floor(d)) {
                    out.add(number, field_name(f, i),
                            out.say("'n datum wat nie 'n hele dag is nie (%1)",
                                    "a date that is not a whole day (%1)")
                                .arg(d));
                }
                break;
            }
            case FieldType::Int16:
            case FieldType::Byte: {
                if (rule == nullptr) {
                    break;
                }
                std::int16_t v = 0;
                if (f.type == FieldType::Byte) {
                    v = static_cast<unsigned char>(p[0]);
                } else {
                    std::memcpy(&v, p,
                                sizeof v);  // little-endian on every machine we build for
                }
                if ((v == 0 && rule->zero_allowed) || (v >= rule->low && v <= rule->high)) {
                    break;
                }
                out.add(number, field_name(f, i),
                        out.say("%1 is nie %2 nie (%3 tot %4)", "%1 is not %2 (%3 to %4)")
                            .arg(v)
                            .arg(out.say(rule->what_af, rule->what))
                            .arg(rule->low)
                            .arg(rule->high));
                break;
            }
            case FieldType::Raw:
                break;
        }
    }
}

// The field rules over one record's bytes. Text without a NUL anywhere in a run of text fields
// (the usual case) needs no look at its fields.
void check_fields(const Layout& layout, const char* bytes, int number, FileFindings& out) {
    const FieldPlan& plan = plan_of(layout);
    for (const FieldPlan::TextRun& run : plan.text_runs) {
        if (std::memchr(bytes + run.offset, '\0', std::size_t(run.size)) != nullptr) {
            for (std::size_t n = run.first; n <= run.last; ++n) {
                check_field(layout.fields[n], nullptr, bytes, number, out);
            }
        }
    }
    for (const auto& [n, rule] : plan.valued) {
        check_field(layout.fields[n], rule, bytes, number, out);
    }
}

// The characters a file name cannot hold on the suite's systems. A post number names the
// remarks files of its person; a trailing "*" is the mark of a kept duplicate and is allowed.
bool bad_in_file_name(const QString& post) {
    const QString body = post.endsWith(u'*') ? post.chopped(1) : post;
    for (const QChar c : body) {
        if (c.unicode() < 32 || QStringView(u"\\/:*?\"<>|").contains(c)) {
            return true;
        }
    }
    return false;
}

// A text field of raw record bytes as the program reads it: blank when never written,
// otherwise trimmed.
QString text_at(const char* bytes, const Field& f) {
    const char* p = bytes + f.offset;
    if (p[0] == '\0') {
        return {};
    }
    return cp1252::decode(p, f.width).trimmed();
}

// Why a lock slot is stale, blank when it is free or in force: taken more than a day ago, or
// held under this workstation's user by a program that does not run here.
QString why_stale(const CheckTree& t, const char* b) {
    constexpr const Field& kUser = store::LOCK["LK_GEBRUIKER"];
    constexpr const Field& kDate = store::LOCK["LK_DATUM"];
    constexpr const Field& kProgram = store::LOCK["LK_STELSEL"];
    constexpr const Field& kType = store::LOCK["LK_SOORT"];
    constexpr const Field& kId = store::LOCK["LK_IDENTIFIKASIE"];
    const QString type = text_at(b, kType);
    const QString id = text_at(b, kId);
    if (type.isEmpty() && id.isEmpty()) {
        return {};
    }
    const QString user = text_at(b, kUser);
    const QString program = text_at(b, kProgram);
    double serial = 0;
    std::memcpy(&serial, b + kDate.offset, sizeof serial);
    const std::optional<QDate> taken = store::date_from_serial(serial);
    const auto say = [&t](const char* af, const char* en) {
        return QString::fromUtf8(t.afrikaans ? af : en);
    };
    const QString what =
        say("slot %1=%2 van %3 (%4)", "lock %1=%2 of %3 (%4)").arg(type, id, user, program);
    if (!taken || taken->daysTo(t.today) > kStaleLockDays) {
        return what +
               say(" geneem %1, meer as 'n dag gelede", " taken %1, more than a day ago")
                   .arg(taken ? shell::date_to_text(*taken) : say("op geen datum", "on no date"));
    }
    if (user.toUpper() == t.user && t.program_running &&
        t.program_running(program) == std::optional<bool>(false)) {
        return what + say(": %1 loop nie op hierdie werkstasie nie",
                          ": %1 does not run on this workstation")
                          .arg(program);
    }
    return {};
}

// True when a text field of raw record bytes reads blank, without decoding it.
bool blank_at(const char* bytes, const Field& f) {
    const char* p = bytes + f.offset;
    if (p[0] == '\0') {
        return true;
    }
    for (int i = 0; i < f.width; ++i) {
        if (p[i] != ' ' && p[i] != '\0') {
            return false;
        }
    }
    return true;
}

// ---- the check ------------------------------------------------------------------------------

class Checker {
  public:
    Checker(const CheckTree& tree, ui::Progress* progress)
        : t_(tree), fs_(tree.drives), progress_(progress) {}

    std::vector<Finding> run();

  private:
    // The native path of a file that may be read, or blank after a finding: a link out of the
    // tree is reported and never followed.
    QString readable(const QString& path, FileFindings& out) const;
    bool inside_tree(const QString& native) const;

    // Reads a record file, checks every record and calls each with the bytes of every record
    // the program would count. False when the file is not there.
    bool check_record_file(const QString& folder, const Layout& layout,
                           const std::function<void(int, const char*)>& each = {});
    void check_staff_files();
    void check_companion(const Layout& layout, const Field& key, bool active_only);
    void check_locks();
    void check_leftovers();
    void check_settings();
    void check_calendars();
    void check_remarks();

    const CheckTree& t_;
    FileSystem fs_;
    ui::Progress* progress_;
    std::vector<Finding> out_;

    // Of the master file: every post number it holds (upper case), and the records that closing
    // the register keeps, with their post numbers as the field holds them.
    QSet<QString> all_posts_;
    struct Kept {
        int record;
        QString post;
        QString key;  // upper case
        bool active;
    };
    std::vector<Kept> kept_;
};

bool Checker::inside_tree(const QString& native) const {
    QStringList roots = t_.drives.drives().values();
    if (!t_.drives.default_root().isEmpty()) {
        roots << t_.drives.default_root();
    }
    for (const QString& r : roots) {
        const QString root = QFileInfo(r).canonicalFilePath();
        if (!root.isEmpty() && (native == root || native.startsWith(root + u'/'))) {
            return true;
        }
    }
    return false;
}

QString Checker::readable(const QString& path, FileFindings& out) const {
    const QString native = fs_.native(path);
    const QFileInfo info(native);
    if (native.isEmpty() || !info.exists()) {
        return {};
    }
    if (info.isSymLink()) {
        const QString target = info.canonicalFilePath();
        if (target.isEmpty() || !inside_tree(target)) {
            out.add(0, {},
                    out.say("'n simboliese skakel na %1, buite die databoom: nie gelees nie",
                            "a symbolic link to %1, outside the data tree: not read")
                        .arg(info.symLinkTarget()));
            return {};
        }
    }
    if (!info.isFile()) {
        out.add(0, {}, out.say("geen lêer nie", "not a file"));
        return {};
    }
    return native;
}

bool Checker::check_record_file(const QString& folder, const Layout& layout,
                                const std::function<void(int, const char*)>& each) {
    const QString path = join(
        folder, QString::fromLatin1(layout.file_name.data(), qsizetype(layout.file_name.size())));
    FileFindings out(out_, path, t_.afrikaans);
    const QString native = readable(path, out);
    if (native.isEmpty()) {
        return false;
    }
    QString error;
    auto file = store::RecordFile::open(native, layout.record_length,
                                        store::RecordFile::Access::ReadOnly, &error);
    if (!file) {
        out.add(0, {}, out.say("kan nie gelees word nie: %1", "cannot be read: %1").arg(error));
        return true;
    }
    const qint64 size = file->byte_size();
    const qint64 whole = size / layout.record_length;
    if (const qint64 left = size % layout.record_length; left != 0) {
        out.add(
            int(std::min<qint64>(whole + 1, INT_MAX)), {},
            out.say("%1 grepe is nie 'n heel getal rekords van %2 grepe nie: %3 grepe bly oor",
                    "%1 bytes are not a whole number of records of %2 bytes: %3 bytes left over")
                .arg(size)
                .arg(layout.record_length)
                .arg(left));
    }
    if (whole > store::kMaxRecords) {
        out.add(0, {},
                out.say("%1 rekords: die program tel net die eerste %2",
                        "%1 records: the program counts only the first %2")
                    .arg(whole)
                    .arg(store::kMaxRecords));
    }
    // The program counts a last part of a record as a record when it rounds up to one (half to
    // even), and reads its missing bytes as NULs: its keys count, its fields are not judged.
    const qint64 counted = qint64(std::nearbyint(double(size) / layout.record_length));
    // Records past the count the program works with are never seen by it: not read here either.
    const int last = int(std::min<qint64>(std::max(whole, counted), store::kMaxRecords));
    int seen = 0;
    const bool read = file->scan(1, last, [&](int number, const char* bytes) {
        seen = number;
        if (number <= whole) {
            check_fields(layout, bytes, number, out);
        }
        if (each) {
            each(number, bytes);
        }
        return true;
    });
    // A file cut short while it was read reads as NULs past its new end; say so.
    if (!read || file->byte_size() < size) {
        out.add(seen, {},
                out.say("die lêer het verander of verdwyn terwyl dit gelees is",
                        "the file changed or vanished while it was read"));
    }
    return true;
}

void Checker::check_staff_files() {
    constexpr const Field& kPost = store::PRSALG["PA_POS_NR"];
    constexpr const Field& kState = store::PRSALG["PA_AKTIEF"];
    constexpr const Field& kSurname = store::PRSALG["PA_VAN"];
    constexpr const Field& kNames = store::PRSALG["PA_NAME"];
    constexpr const Field& kTitle = store::PRSALG["PA_TITEL"];
    const QString staff = t_.folders.staff;
    const QString alg = join(staff, QStringLiteral("prs_alg_random.txt"));

    // The post numbers of the master file, judged after the file's own findings.
    struct Post {
        int record;
        QString post;
        QString state;
        bool named;
        bool surname;
    };
    std::vector<Post> posts;
    check_record_file(staff, store::PRSALG, [&](int number, const char* bytes) {
        const bool surname = !blank_at(bytes, kSurname);
        posts.push_back({number, text_at(bytes, kPost), text_at(bytes, kState),
                         surname || !blank_at(bytes, kNames) || !blank_at(bytes, kTitle), surname});
    });
    {
        FileFindings out(out_, alg, t_.afrikaans);
        QHash<QString, int> active;
        active.reserve(qsizetype(posts.size()));
        all_posts_.reserve(qsizetype(posts.size()));
        for (const Post& p : posts) {
            if (!p.post.isEmpty()) {
                all_posts_.insert(p.post.toUpper());
            }
            if (!p.named || p.state == u"D") {
                continue;  // closing the register drops it
            }
            if (p.post.isEmpty()) {
                out.add(p.record, QStringLiteral("PA_POS_NR"),
                        out.say("'n blanko posnommer", "a blank post number"));
                continue;
            }
            kept_.push_back({p.record, p.post, p.post.toUpper(), p.state.isEmpty()});
            if (bad_in_file_name(p.post)) {
                out.add(
                    p.record, QStringLiteral("PA_POS_NR"),
                    out.say("posnommer \"%1\" bevat 'n karakter wat geen lêernaam mag bevat nie",
                            "post number \"%1\" holds a character no file name may hold")
                        .arg(p.post));
            }
            // Duplicates among the active records: the index keeps the first.
            if (p.state.isEmpty() && p.surname) {
                const auto it = active.constFind(p.post.toUpper());
                if (it == active.constEnd()) {
                    active.insert(p.post.toUpper(), p.record);
                } else {
                    out.add(p.record, QStringLiteral("PA_POS_NR"),
                            out.say("posnommer %1 word ook deur aktiewe rekord %2 gehou",
                                    "post number %1 is held by active record %2 as well")
                                .arg(p.post)
                                .arg(it.value()));
                }
            }
        }
    }
    // Every record the register shows has its address and subject records; attendance is
    // captured, and its record made, for active staff only.
    check_companion(store::PRSADD, store::PRSADD["PD_POS_NR"], false);
    check_companion(store::PRSVAK, store::PRSVAK["PV_POS_NR"], false);
    check_companion(store::PRSAFW, store::PRSAFW["PF_POS_NR"], true);
    for (const Layout* l :
         {&store::PRSNME, &store::PRSLNE, &store::PRSSBI, &store::BHRLGM, &store::PRSLURITS}) {
        check_record_file(staff, *l);
    }
}

void Checker::check_companion(const Layout& layout, const Field& key, bool active_only) {
    const QString file =
        QString::fromLatin1(layout.file_name.data(), qsizetype(layout.file_name.size()));
    const QString path = join(t_.folders.staff, file);
    QHash<QString, int> first;
    first.reserve(qsizetype(all_posts_.size()));
    std::vector<std::pair<int, QString>> orphans;
    {
        FileFindings out(out_, path, t_.afrikaans);
        const bool present =
            check_record_file(t_.folders.staff, layout, [&](int number, const char* bytes) {
                const QString k = text_at(bytes, key);
                if (k.isEmpty()) {
                    out.add(
                        number, field_name(key, 0),
                        out.say("'n rekord sonder 'n posnommer", "a record without a post number"));
                    return;
                }
                const auto it = first.constFind(k.toUpper());
                if (it != first.constEnd()) {
                    out.add(number, field_name(key, 0),
                            out.say("'n tweede rekord van posnommer %1 (die eerste is rekord %2)",
                                    "a second record of post number %1 (the first is record %2)")
                                .arg(k)
                                .arg(it.value()));
                    return;
                }
                first.insert(k.toUpper(), number);
                if (!all_posts_.contains(k.toUpper())) {
                    orphans.emplace_back(number, k);
                }
            });
        for (const auto& [number, k] : orphans) {
            out.add(number, field_name(key, 0),
                    out.say("geen personeelrekord het posnommer %1 nie",
                            "no staff record has post number %1")
                        .arg(k));
        }
        // A closed year starts without attendance: its file is made afresh when next opened.
        if (!present && (kept_.empty() || &layout == &store::PRSAFW)) {
            return;
        }
    }
    FileFindings out(out_, join(t_.folders.staff, QStringLiteral("prs_alg_random.txt")),
                     t_.afrikaans);
    for (const Kept& k : kept_) {
        if ((k.active || !active_only) && !first.contains(k.key)) {
            out.add(k.record, QStringLiteral("PA_POS_NR"),
                    out.say("posnommer %1 het geen rekord in %2 nie",
                            "post number %1 has no record in %2")
                        .arg(k.post, file));
        }
    }
}

void Checker::check_locks() {
    const QString path = join(t_.folders.general_year, QStringLiteral("user_lock_record.txt"));
    QSet<int> freeable;
    for (const StaleLock& s : stale_locks(t_)) {
        freeable.insert(s.record);
    }
    FileFindings out(out_, path, t_.afrikaans);
    check_record_file(t_.folders.general_year, store::LOCK, [&](int number, const char* b) {
        const QString why = why_stale(t_, b);
        if (why.isEmpty()) {
            return;
        }
        out.add(number, {}, why);
        if (!freeable.contains(number)) {
            out.add(number, {},
                    out.say("'n vroeër gleuf hou dieselfde slot: maak dit met die hand vry",
                            "an earlier slot holds the same lock: free it by hand"));
        }
    });
}

void Checker::check_leftovers() {
    for (const QString& path : leftover_files(t_)) {
        FileFindings out(out_, path, t_.afrikaans);
        out.add(0, {},
                out.say("agtergelaat deur 'n onderbroke vervanging",
                        "left behind by an interrupted replace"));
    }
    for (const QString& path : year_end_leftovers(t_)) {
        FileFindings out(out_, path, t_.afrikaans);
        out.add(0, {},
                out.say("agtergelaat deur 'n onderbroke jaareinde: die volgende opening van die "
                        "jaar voltooi of herstel dit",
                        "left behind by an interrupted year-end: the next opening of the year "
                        "finishes or undoes it"));
    }
}

// The settings files of the quoted text form: where each lies and how many values a line holds
// (0: any number).
struct SettingsFile {
    QString store::Folders::*folder;
    const char* name;
    int values_per_line;
};
const SettingsFile kSettingsFiles[] = {
    {&store::Folders::program, "year_used.txt", 1},
    {&store::Folders::workstation, "language.txt", 1},
    {&store::Folders::workstation, "excel_uitvoer_gids", 1},
    {&store::Folders::workstation, "html_uitvoer_gids", 1},
    {&store::Folders::general_year, "kleur_drukker.txt", 1},
    {&store::Folders::general_year, "brf_hoof.txt", 10},
    {&store::Folders::staff, "sb_opmerkings.txt", 0},
    {&store::Folders::staff, "lurits_staffid.txt", 4},
};

// Checks one quoted text file line by line.
void check_quoted(const QString& native, int values_per_line, bool one_text, FileFindings& out) {
    const std::optional<QByteArray> bytes = quoted::read_file(native);
    if (!bytes) {
        out.add(0, {},
                out.say("kan nie gelees word nie, of groter as wat 'n instellingslêer kan wees",
                        "cannot be read, or larger than a settings file can be"));
        return;
    }
    quoted::Reader reader(*bytes);
    int line = 0;
    int values = 0;
    while (!reader.at_end() && line < bytes->size() + 1) {
        const std::vector<quoted::Value> v = reader.read_line();
        ++line;
        values += int(v.size());
        for (std::size_t i = 0; i < v.size(); ++i) {
            if (v[i].kind == quoted::Value::Kind::Invalid) {
                out.add(line, out.say("waarde %1", "value %1").arg(i + 1),
                        out.say("is onleesbaar: %1", "does not parse: %1").arg(v[i].text.left(40)));
            } else if (one_text && v[i].kind != quoted::Value::Kind::Text) {
                out.add(
                    line, out.say("waarde %1", "value %1").arg(i + 1),
                    out.say("is nie 'n teks tussen aanhalingstekens nie", "is not a quoted text"));
            }
        }
        if (values_per_line > 0 && !v.empty() && int(v.size()) != values_per_line) {
            out.add(line, {},
                    out.say("%1 waardes waar 'n reël %2 hou", "%1 values where a line holds %2")
                        .arg(v.size())
                        .arg(values_per_line));
        }
    }
    if (one_text && values != 1) {
        out.add(0, {},
                out.say("%1 waardes waar die lêer een hou", "%1 values where the file holds one")
                    .arg(values));
    }
}

void Checker::check_settings() {
    for (const SettingsFile& s : kSettingsFiles) {
        const QString folder = t_.folders.*(s.folder);
        if (folder.isEmpty()) {
            continue;
        }
        const QString path = join(folder, QString::fromLatin1(s.name));
        FileFindings out(out_, path, t_.afrikaans);
        const QString native = readable(path, out);
        if (!native.isEmpty()) {
            check_quoted(native, s.values_per_line, false, out);
        }
    }
}

void Checker::check_calendars() {
    // The calendars of the year lie in the workstation's program folder.
    QString folder = t_.folders.workstation_program;
    if (folder.isEmpty() || !fs_.folder_exists(folder)) {
        folder = t_.folders.workstation;
    }
    QSet<QString> months;
    for (int m = 1; m <= 12; ++m) {
        months << shell::month_name(m, true).trimmed() << shell::month_name(m, false).trimmed();
    }
    const QString prefix = QStringLiteral("maand_kalender_");
    for (const QString& name : fs_.file_names(folder)) {
        if (!name.startsWith(prefix, Qt::CaseInsensitive) || !name.endsWith(u'.' + t_.year)) {
            continue;
        }
        const QString path = join(folder, name);
        FileFindings out(out_, path, t_.afrikaans);
        const QString month = name.mid(prefix.size()).chopped(t_.year.size() + 1);
        if (!months.contains(month.toUpper())) {
            out.add(0, {}, out.say("\"%1\" is geen maand nie", "\"%1\" is no month").arg(month));
        }
        const QString native = readable(path, out);
        if (!native.isEmpty()) {
            check_quoted(native, 0, true, out);
        }
    }
}

void Checker::check_remarks() {
    const QString folder = join(t_.folders.staff, QStringLiteral("opmerkings"));
    for (const QString& name : fs_.file_names(folder)) {
        const QString path = join(folder, name);
        const qsizetype dot = name.indexOf(u'.');
        const QString kind = name.left(dot).toLower();
        if (dot < 0 || (kind != u"personeel_opmerkings" && kind != u"privaat_opmerkings")) {
            continue;
        }
        FileFindings out(out_, path, t_.afrikaans);
        const QString post = name.mid(dot + 1);
        if (!all_posts_.contains(post.trimmed().toUpper())) {
            out.add(0, {},
                    out.say("geen personeelrekord het posnommer %1 nie",
                            "no staff record has post number %1")
                        .arg(post));
        }
        const QString native = readable(path, out);
        if (native.isEmpty()) {
            continue;
        }
        QFile f(native);
        if (!f.open(QIODevice::ReadOnly)) {
            out.add(
                0, {},
                out.say("kan nie gelees word nie: %1", "cannot be read: %1").arg(f.errorString()));
        } else if (f.size() > 0 && !f.read(5).startsWith("{\\rtf")) {
            out.add(0, {}, out.say("geen ryk teks nie", "not rich text"));
        }
    }
}

std::vector<Finding> Checker::run() {
    int stage = 0;
    const auto next_stage = [&] {
        if (progress_ != nullptr) {
            progress_->step(++stage);
        }
    };
    check_staff_files();
    next_stage();
    for (const Layout* l : {&store::SKL, &store::SKLADD, &store::SKLHB, &store::SKLEPOS,
                            &store::SBP, &store::SBP2018}) {
        const bool present = check_record_file(t_.folders.general_year, *l);
        if (!present && l == &store::SKL) {
            FileFindings out(out_,
                             join(t_.folders.general_year, QStringLiteral("skl_dta_random.txt")),
                             t_.afrikaans);
            out.add(0, {}, out.say("die skoollêer ontbreek", "the school file is missing"));
        }
    }
    next_stage();
    check_locks();
    check_record_file(t_.folders.workstation, store::AUDIT);
    next_stage();
    check_leftovers();
    check_settings();
    next_stage();
    check_calendars();
    check_remarks();
    next_stage();
    return std::move(out_);
}

}  // namespace

// ---- the tree -----------------------------------------------------------------------------------

std::optional<CheckTree> locate_tree(const platform::DriveMap& drives, const QString& year,
                                     QString* error) {
    ui::UnattendedDialogs quiet;
    shell::Session session(quiet, drives);
    session.executable_path = platform::executable_windows_path(drives);
    shell::Startup(session).derive_program_folders();  // reads folder names only

    CheckTree tree{drives,
                   session.folders,
                   {},
                   platform::current_user().trimmed().toUpper(),
                   QDate::currentDate(),
                   program_running_here};
    store::Folders& f = tree.folders;
    const FileSystem& fs = session.fs();

    tree.year = year;
    if (tree.year.isEmpty()) {
        const QString used =
            cp1252::decode(fs.read_all(join(f.program, QStringLiteral("year_used.txt")))
                               .value_or(QByteArray()))
                .section(u'\n', 0, 0)
                .trimmed();
        tree.year = is_year(used) ? used : QString::number(tree.today.year());
    }
    if (!is_year(tree.year)) {
        *error = QStringLiteral("not a year: ") + tree.year;
        return std::nullopt;
    }

    // network.dta: admin and staff on its first and fourth lines; a line with control
    // characters is no path.
    QStringList lines =
        cp1252::decode(
            fs.read_all(join(f.workstation, QStringLiteral("network.dta"))).value_or(QByteArray()))
            .replace(QStringLiteral("\r\n"), QStringLiteral("\n"))
            .split(u'\n');
    while (lines.size() < 8) {
        lines << QString();
    }
    for (QString& l : lines) {
        l = l.trimmed();
        for (const QChar c : l) {
            if (c.unicode() < 32) {
                l.clear();
                break;
            }
        }
    }
    const QString drive = winpath::drive_of(f.program).isEmpty() ? QStringLiteral("C:")
                                                                 : winpath::drive_of(f.program);
    const store::Folders d = shell::default_folders(drive, tree.year);
    if (lines.at(0).isEmpty()) {
        f.admin = d.admin;
        f.staff = d.staff;
    } else {
        f.admin = lines.at(0);
        const qsizetype at = f.admin.indexOf(QStringLiteral("\\VESPARINE"), 0, Qt::CaseInsensitive);
        const QString program_drive = at >= 0 ? f.admin.left(at) : drive;
        if (f.admin.indexOf(QStringLiteral("\\VESPARINE\\ADMIN"), 0, Qt::CaseInsensitive) < 0) {
            f.admin = program_drive + QStringLiteral("\\VESPARINE\\ADMIN");
        }
        f.staff = lines.at(3).isEmpty()
                      ? program_drive + QStringLiteral("\\VESPARINE\\STAFF\\P") + tree.year
                      : with_year(lines.at(3), tree.year);
    }
    f.general_year = shell::general_year_folder(f.admin, tree.year);
    // A year closed into has no school record of its own yet: the program works on the latest
    // earlier year's, ten years back at most and never before 2013.
    const QString school_file = QStringLiteral("skl_dta_random.txt");
    for (int y = tree.year.toInt() - 1; y >= std::max(tree.year.toInt() - 10, 2013) &&
                                        !fs.file_exists(join(f.general_year, school_file));
         --y) {
        const QString earlier = shell::general_year_folder(f.admin, QString::number(y));
        if (fs.folder_exists(earlier)) {
            f.general_year = earlier;
        }
    }
    f.school = f.general_year;
    if (!fs.folder_exists(f.staff)) {
        *error = QStringLiteral("THE FOLDER  ") + f.staff + QStringLiteral("  DOES NOT EXIST!");
        return std::nullopt;
    }
    return tree;
}

std::optional<bool> program_running_here(const QString& program) {
#ifdef Q_OS_LINUX
    const QString wanted = program.trimmed().toLower();
    if (wanted.isEmpty()) {
        return false;
    }
    const uint me = uint(getuid());
    for (const QString& pid : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
        if (pid.isEmpty() || !pid.at(0).isDigit() ||
            QFileInfo(QStringLiteral("/proc/") + pid).ownerId() != me) {
            continue;
        }
        QFile comm(QStringLiteral("/proc/") + pid + QStringLiteral("/comm"));
        if (comm.open(QIODevice::ReadOnly) &&
            QString::fromLocal8Bit(comm.readAll()).trimmed().toLower() == wanted.left(15)) {
            return true;
        }
    }
    return false;
#else
    Q_UNUSED(program);
    return std::nullopt;
#endif
}

std::vector<Finding> check_tree(const CheckTree& tree, ui::Progress* progress) {
    return Checker(tree, progress).run();
}

std::vector<StaleLock> stale_locks(const CheckTree& tree) {
    std::vector<StaleLock> out;
    const FileSystem fs(tree.drives);
    const QString native =
        fs.native(join(tree.folders.general_year, QStringLiteral("user_lock_record.txt")));
    if (native.isEmpty() || QFileInfo(native).isSymLink()) {
        return out;
    }
    auto file = store::RecordFile::open(native, store::LOCK.record_length,
                                        store::RecordFile::Access::ReadOnly);
    if (!file) {
        return out;
    }
    constexpr const Field& kType = store::LOCK["LK_SOORT"];
    constexpr const Field& kId = store::LOCK["LK_IDENTIFIKASIE"];
    QSet<QString> seen;
    file->scan(1, file->count(), [&](int number, const char* b) {
        const QString key = text_at(b, kType) + u'\x1f' + text_at(b, kId);
        const bool first = !seen.contains(key);
        seen.insert(key);
        if (first && !why_stale(tree, b).isEmpty()) {
            out.push_back({number, text_at(b, kType), text_at(b, kId)});
        }
        return true;
    });
    return out;
}

QStringList leftover_files(const CheckTree& tree) {
    QStringList out;
    const FileSystem fs(tree.drives);
    for (const QString& folder : {tree.folders.staff, tree.folders.general_year}) {
        const QString native = fs.native(folder);
        if (native.isEmpty()) {
            continue;
        }
        for (const QString& name : QDir(native).entryList(QDir::Files | QDir::Dirs |
                                                          QDir::NoDotAndDotDot | QDir::System)) {
            if (name.endsWith(QStringLiteral(".new"), Qt::CaseInsensitive)) {
                out << join(folder, name);
            }
        }
    }
    return out;
}

QStringList year_end_leftovers(const CheckTree& tree) {
    QStringList out;
    const FileSystem fs(tree.drives);
    const store::SwitchPaths beside = store::switch_paths(tree.folders.staff);
    // A closing at work keeps its new folder and journal there until it switches.
    if (store::switch_at_work(fs, tree.folders.staff)) {
        return out;
    }
    for (const QString& path : {beside.staging, beside.retired, beside.journal}) {
        if (fs.file_exists(path) || fs.folder_exists(path)) {
            out << path;
        }
    }
    return out;
}

}  // namespace korvel::check
