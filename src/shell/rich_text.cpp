#include "shell/rich_text.h"

#include <QByteArrayView>
#include <QHash>
#include <QStringList>
#include <algorithm>
#include <cmath>
#include <map>

#include "platform/codepage.h"

namespace korvel::shell {

QString Paragraph::text() const {
    QString out;
    for (const TextRun& run : runs) {
        out += run.text;
    }
    return out;
}

void Paragraph::append(const QString& text, const TextRun& like) {
    if (text.isEmpty()) {
        return;
    }
    if (!runs.empty() && runs.back().same_format(like)) {
        runs.back().text += text;
        return;
    }
    TextRun run = like;
    run.text = text;
    runs.push_back(std::move(run));
}

QString RichText::plain_text() const {
    QString out;
    for (std::size_t i = 0; i < paragraphs.size(); ++i) {
        if (i > 0) {
            out += u'\n';
        }
        out += paragraphs[i].text();
    }
    out.replace(QChar(kLineBreak), u'\n');
    return out;
}

RichText RichText::from_plain_text(const QString& text) {
    RichText out;
    if (text.isEmpty()) {
        return out;
    }
    QString lines_text = text;
    lines_text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    lines_text.replace(u'\r', u'\n');
    QStringList lines = lines_text.split(u'\n');
    if (lines.size() > 1 && lines.last().isEmpty()) {
        lines.removeLast();  // the line end of the last line opens no paragraph
    }
    for (QString& line : lines) {
        line.removeIf([](QChar c) { return c.unicode() < 0x20 && c != u'\t'; });
        Paragraph p;
        p.append(line, TextRun{});
        out.paragraphs.push_back(std::move(p));
    }
    return out;
}

namespace {

// ---------------------------------------------------------------------------------------------
// Reading

// Groups nested deeper than this are read as part of the group at the limit: no file the
// remarks frame writes comes near it, and damaged input cannot grow the state stack.
constexpr std::size_t kMaxDepth = 64;
// RTF's default size when a file names none: 12 points.
constexpr int kDefaultHalfPoints = 24;

enum class Dest {
    Text,       // the document's text
    Skip,       // a destination passed over whole
    FontTable,  // \fonttbl: numbers and names of the fonts
    Bullet,     // {\*\pn ...}: the WordPad bullet of the paragraph
};

// Everything RTF keeps per group.
struct GroupState {
    Dest dest = Dest::Text;
    int font = -1;  // -1: the document's default font (\deff)
    int half_points = kDefaultHalfPoints;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    Align align = Align::Left;
    bool bullet = false;
    int uc = 1;                 // the number of fallback characters after \uN
    bool ignorable = false;     // \* seen: the next word names a destination we may skip
    bool bullet_level = false;  // \pnlvlblt seen inside a {\*\pn} group
};

// Destinations that hold no text of the document (or none this model can keep).
bool is_skipped_destination(QByteArrayView word) {
    static const char* const kSkipped[] = {
        "annotation",   "atnauthor",  "atnid",
        "author",       "background", "bkmkend",
        "bkmkstart",    "buptim",     "category",
        "colortbl",     "comment",    "company",
        "creatim",      "datastore",  "doccomm",
        "filetbl",      "fldinst",    "footer",
        "footerf",      "footerl",    "footerr",
        "footnote",     "ftncn",      "ftnsep",
        "ftnsepc",      "aftncn",     "aftnsep",
        "aftnsepc",     "generator",  "header",
        "headerf",      "headerl",    "headerr",
        "info",         "keywords",   "latentstyles",
        "levelnumbers", "leveltext",  "listoverridetable",
        "listtable",    "listtext",   "manager",
        "nonshppict",   "object",     "objdata",
        "operator",     "pgdsctbl",   "pict",
        "pntext",       "pntxta",     "pntxtb",
        "printim",      "revtbl",     "revtim",
        "rsidtbl",      "rxe",        "shp",
        "shpinst",      "shppict",    "stylesheet",
        "subject",      "tc",         "themedata",
        "title",        "txe",        "userprops",
        "xe",           "xmlnstbl",   "colorschememapping",
        "mmathPr",      "hlinkbase",
    };
    return std::any_of(std::begin(kSkipped), std::end(kSkipped),
                       [&](const char* w) { return word == QByteArrayView(w); });
}

// Underline words other than \ul itself: every kind of line counts as underlined.
bool is_underline_kind(QByteArrayView word) {
    static const char* const kKinds[] = {
        "uld",  "uldash", "uldashd",  "uldashdd",  "uldb",       "ulhwave", "ulldash",
        "ulth", "ulthd",  "ulthdash", "ulthldash", "ululdbwave", "ulw",     "ulwave"};
    return std::any_of(std::begin(kKinds), std::end(kKinds),
                       [&](const char* w) { return word == QByteArrayView(w); });
}

bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool is_digit(char c) {
    return c >= '0' && c <= '9';
}
int hex_value(char c) {
    if (is_digit(c)) {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

// One pass over the bytes; every step consumes at least one byte, so the reader always ends.
class RtfReader {
  public:
    explicit RtfReader(const QByteArray& bytes) : data_(bytes) {}

    RichText read(qsizetype pos) {
        const qsizetype n = data_.size();
        while (pos < n && !done_) {
            const char c = data_[pos];
            if (c == '{') {
                ++pos;
                open_group();
            } else if (c == '}') {
                ++pos;
                close_group();
            } else if (c == '\\') {
                pos = control(pos + 1);
            } else {
                ++pos;
                if (c != '\r' && c != '\n') {
                    byte(static_cast<unsigned char>(c));
                }
            }
        }
        // A cut-off file keeps the paragraph it was in.
        if (!paragraph_.runs.empty()) {
            end_paragraph();
        }
        return std::move(out_);
    }

  private:
    GroupState& top() { return stack_.empty() ? outside_ : stack_.back(); }

    void open_group() {
        fallback_ = 0;
        if (stack_.size() >= kMaxDepth) {
            ++overflow_;
            return;
        }
        GroupState inner = top();
        inner.ignorable = false;
        inner.bullet_level = false;
        stack_.push_back(inner);
    }

    void close_group() {
        fallback_ = 0;
        if (overflow_ > 0) {
            --overflow_;
            return;
        }
        if (stack_.empty()) {
            done_ = true;
            return;
        }
        if (stack_.size() == 1 && !paragraph_.runs.empty()) {
            end_paragraph();  // text after the last \par, in the document's own formatting
        }
        const GroupState closed = stack_.back();
        stack_.pop_back();
        if (closed.dest == Dest::FontTable && !font_name_.isEmpty()) {
            end_font_name();
        }
        if (stack_.empty()) {
            done_ = true;  // the document's own group has ended
            return;
        }
        if (closed.dest == Dest::Bullet && closed.bullet_level) {
            GroupState& outer = top();
            if (outer.dest == Dest::Bullet) {
                outer.bullet_level = true;
            } else {
                outer.bullet = true;
            }
        }
    }

    // After the backslash at pos; returns the position after the control word or symbol.
    qsizetype control(qsizetype pos) {
        const qsizetype n = data_.size();
        if (pos >= n) {
            return n;
        }
        const char c = data_[pos];
        if (!is_letter(c)) {
            ++pos;
            if (c == '\'') {
                const int high = pos < n ? hex_value(data_[pos]) : -1;
                const int low = pos + 1 < n ? hex_value(data_[pos + 1]) : -1;
                if (high >= 0 && low >= 0) {
                    byte(static_cast<unsigned char>(high * 16 + low));
                    return pos + 2;
                }
                return pos + (high >= 0 ? 1 : 0);  // a half escape, as at a cut, gives nothing
            }
            symbol(c);
            return pos;
        }
        const qsizetype start = pos;
        while (pos < n && is_letter(data_[pos])) {
            ++pos;
        }
        const QByteArrayView word(data_.constData() + start, pos - start);
        bool negative = false;
        if (pos < n && data_[pos] == '-' && (pos + 1 == n || is_digit(data_[pos + 1]))) {
            negative = true;
            ++pos;
        }
        bool has_param = false;
        qint64 value = 0;
        while (pos < n && is_digit(data_[pos])) {
            has_param = true;
            value = std::min<qint64>(value * 10 + (data_[pos] - '0'), 1'000'000'000);
            ++pos;
        }
        if (pos >= n) {
            return n;  // a word at the very end may have been cut off: it does nothing
        }
        if (data_[pos] == ' ') {
            ++pos;  // the delimiter belongs to the word
        }
        const int param = static_cast<int>(negative ? -value : value);
        if (word == QByteArrayView("bin")) {
            // Binary data: its bytes are passed over unread, whatever they hold.
            return pos + std::min<qint64>(std::max(param, 0), n - pos);
        }
        if (fallback_ > 0) {
            --fallback_;
            return pos;
        }
        control_word(word, has_param, param);
        return pos;
    }

    void symbol(char c) {
        if (fallback_ > 0) {
            --fallback_;
            return;
        }
        switch (c) {
            case '\\':
            case '{':
            case '}':
                put(QChar(c));
                break;
            case '~':
                put(QChar(0x00A0));
                break;
            case '_':
                put(QChar(u'-'));
                break;
            case '*':
                top().ignorable = true;
                break;
            case '\r':
            case '\n':
                if (top().dest == Dest::Text) {
                    end_paragraph();
                }
                break;
            default:
                break;  // \- (optional hyphen), \| \: and the unknown
        }
    }

    // A byte of text, from the file or from \'hh.
    void byte(unsigned char b) {
        if (fallback_ > 0) {
            --fallback_;
            return;
        }
        const char raw = static_cast<char>(b);
        put(cp1252::decode(&raw, 1).at(0));
    }

    void control_word(QByteArrayView word, bool has_param, int param) {
        GroupState& s = top();
        const auto is = [&](const char* w) { return word == QByteArrayView(w); };
        if (s.ignorable) {
            s.ignorable = false;
            if (s.dest == Dest::Text && is("pn")) {
                s.dest = Dest::Bullet;
            } else {
                s.dest = Dest::Skip;
            }
            return;
        }
        if (s.dest == Dest::Skip) {
            return;
        }
        if (s.dest == Dest::Bullet) {
            if (is("pnlvlblt")) {
                s.bullet_level = true;
            }
            return;
        }
        if (is("fonttbl")) {
            s.dest = Dest::FontTable;
            return;
        }
        if (is_skipped_destination(word)) {
            s.dest = Dest::Skip;
            return;
        }
        if (is("u")) {
            put(QChar(static_cast<char16_t>(param & 0xFFFF)));
            fallback_ = s.uc;
            return;
        }
        if (s.dest == Dest::FontTable) {
            if (is("f")) {
                font_number_ = param;
                font_name_.clear();
            }
            return;
        }
        const bool on = !has_param || param != 0;
        if (is("par") || is("sect") || is("page") || is("row")) {
            end_paragraph();
        } else if (is("line")) {
            put(QChar(kLineBreak));
        } else if (is("tab") || is("cell")) {
            put(QChar(u'\t'));
        } else if (is("emdash")) {
            put(QChar(0x2014));
        } else if (is("endash")) {
            put(QChar(0x2013));
        } else if (is("bullet")) {
            put(QChar(0x2022));
        } else if (is("lquote")) {
            put(QChar(0x2018));
        } else if (is("rquote")) {
            put(QChar(0x2019));
        } else if (is("ldblquote")) {
            put(QChar(0x201C));
        } else if (is("rdblquote")) {
            put(QChar(0x201D));
        } else if (is("emspace") || is("enspace") || is("qmspace")) {
            put(QChar(u' '));
        } else if (is("b")) {
            s.bold = on;
        } else if (is("i")) {
            s.italic = on;
        } else if (is("ul")) {
            s.underline = on;
        } else if (is("ulnone")) {
            s.underline = false;
        } else if (is_underline_kind(word)) {
            s.underline = on;
        } else if (is("plain")) {
            s.font = -1;
            s.half_points = kDefaultHalfPoints;
            s.bold = s.italic = s.underline = false;
        } else if (is("pard")) {
            s.align = Align::Left;
            s.bullet = false;
        } else if (is("ql") || is("qj")) {
            s.align = Align::Left;
        } else if (is("qc")) {
            s.align = Align::Centre;
        } else if (is("qr")) {
            s.align = Align::Right;
        } else if (is("f")) {
            s.font = has_param ? param : -1;
        } else if (is("fs")) {
            if (param > 0) {
                s.half_points = std::min(param, 3276);
            }
        } else if (is("deff")) {
            default_font_ = param;
        } else if (is("uc")) {
            s.uc = std::clamp(param, 0, 16);
        } else if (is("ls")) {
            s.bullet = param > 0;  // a list of the newer form: shown as bullets
        }
    }

    // A character for the current destination.
    void put(QChar c) {
        GroupState& s = top();
        if (s.dest == Dest::FontTable) {
            if (c == u';') {
                end_font_name();
            } else if (font_name_.size() < 256) {
                font_name_ += c;
            }
            return;
        }
        if (s.dest != Dest::Text || (c.unicode() < 0x20 && c != u'\t')) {
            return;  // control characters (from \uN) have no place in the text
        }
        TextRun like;
        const auto font = fonts_.find(s.font >= 0 ? s.font : default_font_);
        if (font != fonts_.end()) {
            like.family = font->second;
        }
        like.point_size = s.half_points / 2.0;
        like.bold = s.bold;
        like.italic = s.italic;
        like.underline = s.underline;
        paragraph_.append(QString(c), like);
    }

    void end_font_name() {
        const QString name = font_name_.trimmed();
        if (!name.isEmpty()) {
            fonts_[font_number_] = name;
        }
        font_name_.clear();
    }

    void end_paragraph() {
        const GroupState& s = top();
        paragraph_.align = s.align;
        paragraph_.bullet = s.bullet;
        out_.paragraphs.push_back(std::move(paragraph_));
        paragraph_ = Paragraph{};
    }

    const QByteArray& data_;
    std::vector<GroupState> stack_;
    GroupState outside_;  // the state when no group is open (never written to the text)
    std::size_t overflow_ = 0;
    bool done_ = false;
    int fallback_ = 0;  // fallback characters of \uN still to pass over
    std::map<int, QString> fonts_;
    int default_font_ = 0;
    int font_number_ = 0;
    QString font_name_;
    Paragraph paragraph_;
    RichText out_;
};

// ---------------------------------------------------------------------------------------------
// Writing

// Text escaped for RTF in Windows-1252.
void write_escaped(QByteArray& out, QStringView text) {
    static const char kHex[] = "0123456789abcdef";
    for (const QChar ch : text) {
        const char16_t c = ch.unicode();
        if (c == u'\\' || c == u'{' || c == u'}') {
            out += '\\';
            out += static_cast<char>(c);
        } else if (c == u'\t') {
            out += "\\tab ";
        } else if (c == kLineBreak || c == u'\n') {
            out += "\\line ";
        } else if (c < 0x20) {
            // Control characters have no place in the text.
        } else if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (const char b = cp1252::to_byte(c); b != '?') {
            const auto v = static_cast<unsigned char>(b);
            out += "\\'";
            out += kHex[v >> 4];
            out += kHex[v & 15];
        } else {
            out += "\\u";
            out += QByteArray::number(static_cast<qint16>(c));
            out += '?';
        }
    }
}

class RtfWriter {
  public:
    QByteArray write(const RichText& text) {
        font_index(QString::fromLatin1(kRichTextFamily));
        bool bullets = false;
        for (const Paragraph& p : text.paragraphs) {
            bullets = bullets || p.bullet;
            for (const TextRun& run : p.runs) {
                font_index(run.family);
            }
        }
        const int symbol = static_cast<int>(fonts_.size());

        QByteArray out = "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl";
        for (std::size_t i = 0; i < fonts_.size(); ++i) {
            out += "{\\f" + QByteArray::number(static_cast<int>(i)) + "\\fnil\\fcharset0 ";
            write_escaped(out, QString(fonts_[i]).remove(u';'));
            out += ";}";
        }
        if (bullets) {
            out += "{\\f" + QByteArray::number(symbol) + "\\fnil\\fcharset2 Symbol;}";
        }
        out += "}\r\n\\viewkind4\\uc1";
        for (const Paragraph& p : text.paragraphs) {
            word(out, "\\pard");
            if (p.align == Align::Centre) {
                word(out, "\\qc");
            } else if (p.align == Align::Right) {
                word(out, "\\qr");
            }
            if (p.bullet) {
                // The bullet as WordPad writes it: the older \pn form, which every word
                // processor reads, with the bullet's own text for readers that know no lists.
                const QByteArray f = QByteArray::number(symbol);
                out += "{\\pntext\\f" + f + "\\'B7\\tab}{\\*\\pn\\pnlvlblt\\pnf" + f +
                       "\\pnindent0{\\pntxtb\\'B7}}";
                word(out, "\\fi-360\\li360");
            }
            for (const TextRun& run : p.runs) {
                if (run.text.isEmpty()) {
                    continue;
                }
                format(out, run);
                if (pending_word_) {
                    out += ' ';
                    pending_word_ = false;
                }
                write_escaped(out, run.text);
            }
            word(out, "\\par");
            out += "\r\n";
            pending_word_ = false;
        }
        out += "}\r\n";
        return out;
    }

  private:
    int font_index(const QString& family) {
        const QString name = family.trimmed().isEmpty() ? fonts_.front() : family.trimmed();
        const auto it = numbers_.constFind(name);
        if (it != numbers_.cend()) {
            return *it;
        }
        const int number = static_cast<int>(fonts_.size());
        fonts_.push_back(name);
        numbers_.insert(name, number);
        return number;
    }

    void word(QByteArray& out, const char* w) {
        out += w;
        pending_word_ = true;
    }

    // The words that change the written format to the run's.
    void format(QByteArray& out, const TextRun& run) {
        const int font = font_index(run.family);
        const int half_points = static_cast<int>(std::lround(
            std::clamp(run.point_size > 0 ? run.point_size : kRichTextPointSize, 1.0, 1638.0) * 2));
        if (font != font_) {
            out += "\\f" + QByteArray::number(font);
            font_ = font;
            pending_word_ = true;
        }
        if (half_points != half_points_) {
            out += "\\fs" + QByteArray::number(half_points);
            half_points_ = half_points;
            pending_word_ = true;
        }
        const auto flag = [&](bool want, bool& have, const char* on, const char* off) {
            if (want != have) {
                word(out, want ? on : off);
                have = want;
            }
        };
        flag(run.bold, bold_, "\\b", "\\b0");
        flag(run.italic, italic_, "\\i", "\\i0");
        flag(run.underline, underline_, "\\ul", "\\ulnone");
    }

    std::vector<QString> fonts_;  // by number; font 0 is the default
    QHash<QString, int> numbers_;
    bool pending_word_ = false;  // a control word was written last and wants its delimiter
    int font_ = -1;
    int half_points_ = -1;
    bool bold_ = false;
    bool italic_ = false;
    bool underline_ = false;
};

}  // namespace

RichText read_rtf(const QByteArray& bytes) {
    qsizetype start = 0;
    while (start < bytes.size() && (bytes[start] == ' ' || bytes[start] == '\t' ||
                                    bytes[start] == '\r' || bytes[start] == '\n')) {
        ++start;
    }
    if (!QByteArrayView(bytes).sliced(start).startsWith("{\\rtf")) {
        return RichText::from_plain_text(cp1252::decode(bytes));
    }
    return RtfReader(bytes).read(start);
}

QByteArray write_rtf(const RichText& text) {
    return RtfWriter().write(text);
}

}  // namespace korvel::shell
