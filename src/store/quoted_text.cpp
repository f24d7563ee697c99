#include "store/quoted_text.h"

#include <QFile>
#include <QLocale>
#include <QSaveFile>

#include <charconv>
#include <cmath>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/codepage.h"

namespace korvel::quoted {

namespace {

constexpr qsizetype kLargestFile = 16 * 1024 * 1024;

// Dates the suite's date type can hold; outside them a date is written as date 0.
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

// Blanks between values. A NUL counts as one, so a file of NULs reads as empty.
bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\0';
}

bool is_line_end(char c) {
    return c == '\r' || c == '\n';
}

bool is_delimiter(char c) {
    return c == ',' || is_line_end(c);
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view trim_blanks(std::string_view text) {
    while (!text.empty() && is_blank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && is_blank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

// A bare number as the sibling programs write it: an optional sign, digits with an optional
// point (".5" and "5." included), and an optional exponent with "E" or "D". Nothing else may
// stand in the text. Nullopt when it is no number or lies beyond a double.
std::optional<double> parse_number(std::string_view text) {
    std::string clean;
    clean.reserve(text.size());
    std::size_t i = 0;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
        if (text[i] == '-') {
            clean += '-';
        }
        ++i;
    }
    int digits = 0;
    for (; i < text.size() && is_digit(text[i]); ++i, ++digits) {
        clean += text[i];
    }
    if (i < text.size() && text[i] == '.') {
        clean += '.';
        for (++i; i < text.size() && is_digit(text[i]); ++i, ++digits) {
            clean += text[i];
        }
    }
    if (digits == 0) {
        return std::nullopt;
    }
    if (i < text.size() && (text[i] == 'E' || text[i] == 'e' || text[i] == 'D' || text[i] == 'd')) {
        clean += 'e';
        ++i;
        if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
            clean += text[i];
            ++i;
        }
        int exponent_digits = 0;
        for (; i < text.size() && is_digit(text[i]); ++i, ++exponent_digits) {
            clean += text[i];
        }
        if (exponent_digits == 0) {
            return std::nullopt;
        }
    }
    if (i != text.size()) {
        return std::nullopt;
    }
    double value = 0.0;
    const auto [end, error] = std::from_chars(clean.data(), clean.data() + clean.size(), value);
    if (error != std::errc() || end != clean.data() + clean.size() || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

std::optional<int> fixed_digits(std::string_view text, std::size_t from, std::size_t count) {
    int value = 0;
    for (std::size_t i = from; i < from + count; ++i) {
        if (!is_digit(text[i])) {
            return std::nullopt;
        }
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

// "YYYY-MM-DD" to a date; 1899-12-30, day 0 itself, is date 0 (a null QDate).
std::optional<QDate> parse_iso_date(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') {
        return std::nullopt;
    }
    const auto year = fixed_digits(text, 0, 4);
    const auto month = fixed_digits(text, 5, 2);
    const auto day = fixed_digits(text, 8, 2);
    if (!year || !month || !day || *year < kFirstYear || *year > kLastYear) {
        return std::nullopt;
    }
    const QDate date(*year, *month, *day);
    if (!date.isValid()) {
        return std::nullopt;
    }
    return date == QDate(1899, 12, 30) ? QDate() : date;
}

bool is_time(std::string_view text) {
    if (text.size() != 8 || text[2] != ':' || text[5] != ':') {
        return false;
    }
    const auto hours = fixed_digits(text, 0, 2);
    const auto minutes = fixed_digits(text, 3, 2);
    const auto seconds = fixed_digits(text, 6, 2);
    return hours && minutes && seconds && *hours < 24 && *minutes < 60 && *seconds < 60;
}

bool equals_ignoring_case(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        auto upper = [](char c) { return c >= 'a' && c <= 'z' ? char(c - 'a' + 'A') : c; };
        if (upper(a[i]) != upper(b[i])) {
            return false;
        }
    }
    return true;
}

// What stood between two "#" signs.
Value classify_hashed(std::string_view content) {
    Value value;
    value.text = cp1252::decode(content.data(), qsizetype(content.size()));
    const std::string_view word = trim_blanks(content);
    if (equals_ignoring_case(word, "TRUE") || equals_ignoring_case(word, "FALSE")) {
        value.kind = Value::Kind::Boolean;
        value.boolean = equals_ignoring_case(word, "TRUE");
    } else if (equals_ignoring_case(word, "NULL")) {
        value.kind = Value::Kind::Null;
    } else if (is_time(word)) {
        value.kind = Value::Kind::Date;  // a time alone: day 0
    } else if (const auto date = parse_iso_date(word.substr(0, 10));
               date && (word.size() == 10 || (word[10] == ' ' && is_time(word.substr(11))))) {
        value.kind = Value::Kind::Date;
        value.date = *date;
    } else {
        value.kind = Value::Kind::Invalid;
    }
    return value;
}

std::string_view view_of(const QByteArray& bytes) {
    return {bytes.constData(), std::size_t(bytes.size())};
}

}  // namespace

// --- Reader -------------------------------------------------------------------------------------

Reader::Reader(QByteArray bytes) : bytes_(std::move(bytes)) {
    if (bytes_.startsWith("\xEF\xBB\xBF")) {
        pos_ = 3;  // a byte-order mark left by a text editor
    }
}

bool Reader::at_end() const {
    if (after_comma_) {
        return false;
    }
    for (qsizetype p = pos_; p < bytes_.size(); ++p) {
        const char c = bytes_[p];
        if (!is_blank(c) && !is_line_end(c)) {
            return false;
        }
    }
    return true;
}

void Reader::skip_blanks() {
    while (pos_ < bytes_.size() && is_blank(bytes_[pos_])) {
        ++pos_;
    }
}

void Reader::skip_to_delimiter() {
    while (pos_ < bytes_.size() && !is_delimiter(bytes_[pos_])) {
        ++pos_;
    }
}

void Reader::take_delimiter() {
    skip_to_delimiter();
    if (pos_ >= bytes_.size()) {
        line_ended_ = true;
        return;
    }
    const char c = bytes_[pos_++];
    if (c == ',') {
        after_comma_ = true;
        line_ended_ = false;
        return;
    }
    if (c == '\r' && pos_ < bytes_.size() && bytes_[pos_] == '\n') {
        ++pos_;
    }
    line_ended_ = true;
}

Value Reader::read_quoted() {
    const qsizetype start = pos_ + 1;
    const qsizetype close = bytes_.indexOf('"', start);
    Value value;
    if (close < 0) {
        // The quote never closes: the rest of the data is lost in it.
        value.kind = Value::Kind::Invalid;
        value.text = cp1252::decode(bytes_.constData() + start, bytes_.size() - start);
        pos_ = bytes_.size();
        return value;
    }
    value.kind = Value::Kind::Text;
    value.text = cp1252::decode(bytes_.constData() + start, close - start);
    pos_ = close + 1;
    return value;
}

Value Reader::read_hashed() {
    const qsizetype start = pos_ + 1;
    qsizetype close = start;
    while (close < bytes_.size() && bytes_[close] != '#' && !is_delimiter(bytes_[close])) {
        ++close;
    }
    if (close >= bytes_.size() || bytes_[close] != '#') {
        Value value;
        value.kind = Value::Kind::Invalid;
        value.text = cp1252::decode(bytes_.constData() + pos_, close - pos_);
        pos_ = close;
        return value;
    }
    pos_ = close + 1;
    return classify_hashed(view_of(bytes_).substr(std::size_t(start), std::size_t(close - start)));
}

Value Reader::read_bare() {
    const qsizetype start = pos_;
    skip_to_delimiter();
    const std::string_view word =
        trim_blanks(view_of(bytes_).substr(std::size_t(start), std::size_t(pos_ - start)));
    Value value;
    value.text = cp1252::decode(word.data(), qsizetype(word.size()));
    if (word.empty()) {
        value.kind = Value::Kind::Empty;
    } else if (const auto number = parse_number(word)) {
        value.kind = Value::Kind::Number;
        value.number = *number;
    } else {
        value.kind = Value::Kind::Text;
    }
    return value;
}

std::optional<Value> Reader::next() {
    skip_blanks();
    if (!after_comma_) {
        // Line ends and blank lines before a value hold nothing.
        while (pos_ < bytes_.size() && (is_blank(bytes_[pos_]) || is_line_end(bytes_[pos_]))) {
            ++pos_;
        }
    }
    if (pos_ >= bytes_.size()) {
        line_ended_ = true;
        if (after_comma_) {
            after_comma_ = false;  // "a," at the very end: one blank field is left
            return Value{};
        }
        return std::nullopt;
    }
    after_comma_ = false;
    Value value;
    switch (bytes_[pos_]) {
        case ',':
        case '\r':
        case '\n':
            break;  // a blank field; take_delimiter takes the comma or line end
        case '"':
            value = read_quoted();
            break;
        case '#':
            value = read_hashed();
            break;
        default:
            value = read_bare();
            break;
    }
    take_delimiter();
    return value;
}

std::vector<Value> Reader::read_line() {
    std::vector<Value> values;
    while (auto value = next()) {
        values.push_back(std::move(*value));
        if (line_ended_) {
            break;
        }
    }
    return values;
}

std::optional<QString> Reader::read_string() {
    const auto value = next();
    if (!value) {
        return std::nullopt;
    }
    switch (value->kind) {
        case Value::Kind::Empty:
            return QString();
        case Value::Kind::Text:
        case Value::Kind::Number:
            return value->text;
        default:
            return std::nullopt;
    }
}

std::optional<double> Reader::read_number() {
    const auto value = next();
    if (!value) {
        return std::nullopt;
    }
    switch (value->kind) {
        case Value::Kind::Empty:
            return 0.0;
        case Value::Kind::Number:
            return value->number;
        case Value::Kind::Text: {
            const QByteArray latin = value->text.trimmed().toLatin1();
            return parse_number(view_of(latin));
        }
        default:
            return std::nullopt;
    }
}

std::optional<bool> Reader::read_bool() {
    const auto value = next();
    if (!value) {
        return std::nullopt;
    }
    switch (value->kind) {
        case Value::Kind::Empty:
            return false;
        case Value::Kind::Boolean:
            return value->boolean;
        case Value::Kind::Number:
            return value->number != 0.0;
        case Value::Kind::Text: {
            const QString word = value->text.trimmed();
            if (word.compare(u"TRUE", Qt::CaseInsensitive) == 0) {
                return true;
            }
            if (word.compare(u"FALSE", Qt::CaseInsensitive) == 0) {
                return false;
            }
            return std::nullopt;
        }
        default:
            return std::nullopt;
    }
}

std::optional<QDate> Reader::read_date() {
    const auto value = next();
    if (!value) {
        return std::nullopt;
    }
    switch (value->kind) {
        case Value::Kind::Empty:
            return QDate();
        case Value::Kind::Date:
            return value->date;
        case Value::Kind::Text: {
            const QByteArray latin = value->text.trimmed().toLatin1();
            return parse_iso_date(view_of(latin));
        }
        default:
            return std::nullopt;
    }
}

// --- Writer -------------------------------------------------------------------------------------

void Writer::separate() {
    if (line_has_value_) {
        bytes_ += ',';
    }
    line_has_value_ = true;
}

Writer& Writer::text(QStringView value) {
    separate();
    QString clean = value.toString();
    clean.replace(u'"', u'\'');
    bytes_ += '"';
    bytes_ += cp1252::encode(clean);
    bytes_ += '"';
    return *this;
}

namespace {

template <typename Float>
QByteArray shortest(Float value) {
    if (!std::isfinite(value) || value == Float(0)) {
        return QByteArrayLiteral("0");  // -0 too
    }
    char buffer[64];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value);
    if (error != std::errc()) {
        return QByteArrayLiteral("0");
    }
    QByteArray text(buffer, end - buffer);
    text.replace('e', 'E');
    return text;
}

}  // namespace

Writer& Writer::number(double value) {
    separate();
    bytes_ += shortest(value);
    return *this;
}

Writer& Writer::single(float value) {
    separate();
    bytes_ += shortest(value);
    return *this;
}

Writer& Writer::boolean(bool value) {
    separate();
    bytes_ += value ? "#TRUE#" : "#FALSE#";
    return *this;
}

Writer& Writer::date(const QDate& value) {
    separate();
    if (!value.isValid() || value == QDate(1899, 12, 30) || value.year() < kFirstYear ||
        value.year() > kLastYear) {
        bytes_ += "#00:00:00#";
    } else {
        bytes_ += '#';
        bytes_ += QLocale::c().toString(value, u"yyyy-MM-dd").toLatin1();
        bytes_ += '#';
    }
    return *this;
}

Writer& Writer::empty() {
    separate();
    return *this;
}

Writer& Writer::null() {
    separate();
    bytes_ += "#NULL#";
    return *this;
}

Writer& Writer::value(const Value& value) {
    switch (value.kind) {
        case Value::Kind::Text:
            return text(value.text);
        case Value::Kind::Number:
            return number(value.number);
        case Value::Kind::Boolean:
            return boolean(value.boolean);
        case Value::Kind::Date:
            return date(value.date);
        case Value::Kind::Null:
            return null();
        case Value::Kind::Empty:
        case Value::Kind::Invalid:
            break;
    }
    return empty();
}

Writer& Writer::end_line() {
    bytes_ += "\r\n";
    line_has_value_ = false;
    return *this;
}

// --- Files --------------------------------------------------------------------------------------

std::optional<QByteArray> read_file(const QString& native_path) {
    if (native_path.isEmpty()) {
        return std::nullopt;
    }
    QFile file(native_path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    QByteArray bytes = file.read(kLargestFile + 1);
    if (file.error() != QFileDevice::NoError || bytes.size() > kLargestFile) {
        return std::nullopt;
    }
    return bytes;
}

bool write_file(const QString& native_path, const QByteArray& bytes) {
    if (native_path.isEmpty()) {
        return false;
    }
    QSaveFile file(native_path);
    if (!file.open(QIODevice::WriteOnly)) {
        return false;
    }
    if (file.write(bytes) != bytes.size()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

}  // namespace korvel::quoted
