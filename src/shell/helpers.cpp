#include "shell/helpers.h"

#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "platform/codepage.h"
#include "platform/user.h"

namespace korvel::shell {

namespace {

bool is_space(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

// Half to even, as the language's conversion to a whole number rounds.
double round_half_even(double value) {
    if (std::fabs(value - std::trunc(value)) == 0.5) {
        return 2.0 * std::round(value / 2.0);
    }
    return std::round(value);
}

// A run of ASCII digits as a number; nullopt when the text is empty, holds anything else, or is
// too long to be a part of a date.
std::optional<int> digits_value(QStringView text) {
    if (text.isEmpty() || text.size() > 4) {
        return std::nullopt;
    }
    int value = 0;
    for (QChar c : text) {
        if (c < u'0' || c > u'9') {
            return std::nullopt;
        }
        value = value * 10 + (c.unicode() - u'0');
    }
    return value;
}

// Years the date type of the suite can hold.
constexpr int kFirstYear = 100;
constexpr int kLastYear = 9999;

// Year, month and day as they stand in "YYYY/MM/DD": four digits, two, two, and a real date.
QDate strict_date(QStringView year, QStringView month, QStringView day) {
    if (year.size() != 4 || month.size() != 2 || day.size() != 2) {
        return {};
    }
    const auto y = digits_value(year);
    const auto m = digits_value(month);
    const auto d = digits_value(day);
    if (!y || !m || !d || *y < kFirstYear || *y > kLastYear) {
        return {};
    }
    return QDate(*y, *m, *d);  // invalid when the day does not exist in that month
}

bool is_day_zero(const QDate& date) {
    return date.isNull() || !date.isValid() || date == QDate(1899, 12, 30);
}

// A text as a number with a point for decimals; anything unreadable is 0.
double number_of(const QString& text) {
    bool ok = false;
    const double value = QLocale::c().toDouble(text.trimmed(), &ok);
    return ok && std::isfinite(value) ? value : 0.0;
}

// The digit a character stands for; anything that is no digit counts as 0.
int digit_at(const QString& text, qsizetype position) {
    const QChar c = text.at(position - 1);
    return c >= u'0' && c <= u'9' ? c.unicode() - u'0' : 0;
}

}  // namespace

QString date_to_text(const QString& value) {
    const QString trimmed = value.trimmed();
    if (trimmed.isEmpty() || trimmed == u"00:00:00" || trimmed == u"12:00:00 AM") {
        return {};
    }
    if (value.size() >= 8 && value.at(4) == u'.' && value.at(7) == u'.') {
        return value;
    }
    QString text = trimmed;
    if (!text.contains(u'.') && !text.contains(u'/')) {
        text = text.left(4) + u'.' + text.mid(4, 2) + u'.' + text.right(2);
    }
    // The last separator present wins, so "2016.02-29" is split at the "-".
    QChar separator = u'.';
    for (QChar candidate : {QChar(u'.'), QChar(u'/'), QChar(u'-')}) {
        if (text.contains(candidate)) {
            separator = candidate;
        }
    }
    QStringList parts = text.split(separator);
    if (parts.size() != 3) {
        return {};
    }
    for (QString& part : parts) {
        if (part.size() < 2) {
            part = QString(2 - part.size(), u'0') + part;
        }
    }
    // A time alone ("10:30:00 AM") or anything else that is no date fails here.
    return date_to_text(strict_date(parts[0], parts[1], parts[2]));
}

QString date_to_text(const QDate& date) {
    if (is_day_zero(date)) {
        return {};
    }
    return QLocale::c().toString(date, u"yyyy.MM.dd");
}

QDate text_to_date(const QString& text, const QDate& today) {
    const QString t = text.trimmed();
    if (t.isEmpty()) {
        return {};
    }
    if (t.size() >= 8 && t.at(4) == u'/' && t.at(7) == u'/') {
        const QDate date = t.size() == 10
                               ? strict_date(QStringView(t).left(4), QStringView(t).mid(5, 2),
                                             QStringView(t).mid(8, 2))
                               : QDate();
        return date.isValid() ? date : today;
    }
    auto is_separator = [](QChar c) { return c == u'.' || c == u'-'; };
    if (t.size() < 8 || !is_separator(t.at(4)) || !is_separator(t.at(7))) {
        return today;
    }
    const auto month = digits_value(QStringView(t).mid(5, 2));
    const auto day = digits_value(QStringView(t).mid(8, 2));
    if (!month || *month < 1 || *month > 12 || !day || *day < 1 || *day > 31) {
        return today;
    }
    const auto year = digits_value(QStringView(t).left(4));
    if (!year || *year < kFirstYear || *year > kLastYear) {
        return today;
    }
    const QDate date(*year, *month, *day);
    return date.isValid() ? date : today;
}

QString format_amount(const QString& value) {
    QString text = value;
    text.remove(u',');
    return format_amount(number_of(text));
}

QString format_amount(double value) {
    if (!std::isfinite(value) || value == 0.0) {
        return QStringLiteral("0.00");
    }
    QString text = QLocale::c().toString(value, 'f', 2);
    if (text == u"-0.00") {
        text = QStringLiteral("0.00");
    }
    return text;
}

double leading_number(const QString& text) {
    QString compact;
    for (QChar c : text) {
        if (!is_space(c)) {
            compact += c;
        }
    }
    // The longest start of the text that is a number, rebuilt in the C form.
    QString number;
    qsizetype i = 0;
    const auto digits = [&] {
        const qsizetype from = i;
        while (i < compact.size() && compact[i].isDigit() && compact[i].unicode() < 128) {
            number += compact[i++];
        }
        return i > from;
    };
    if (i < compact.size() && (compact[i] == u'+' || compact[i] == u'-')) {
        number += compact[i++];
    }
    bool any = digits();
    if (i < compact.size() && compact[i] == u'.') {
        number += compact[i++];
        any = digits() || any;
    }
    if (!any) {
        return 0.0;
    }
    const QChar e = i < compact.size() ? compact[i].toUpper() : QChar();
    if (e == u'E' || e == u'D') {
        const QString mantissa = number;
        const qsizetype at = i++;
        number += u'e';
        if (i < compact.size() && (compact[i] == u'+' || compact[i] == u'-')) {
            number += compact[i++];
        }
        if (!digits()) {
            number = mantissa;
            i = at;
        }
    }
    bool ok = false;
    const double value = QLocale::c().toDouble(number, &ok);
    if (ok) {
        return value;
    }
    // Only an exponent too large for a double fails here.
    return number.startsWith(u'-') ? -HUGE_VAL : HUGE_VAL;
}

long long whole_rands(const QString& text) {
    const double rands = round_half_even(leading_number(QString(text).remove(u',')));
    constexpr double kHold = 1e12;
    return static_cast<long long>(std::clamp(rands, -kHold, kHold));
}

QString amount_range_message(long long rands, bool afrikaans) {
    if (rands > 0)
        return afrikaans
                   ? QStringLiteral("BEDRAG TE GROOT - HOOGSTENS 32767 RAND. NIE GESTOOR NIE!")
                   : QStringLiteral("AMOUNT TOO LARGE - AT MOST 32767 RAND. NOT SAVED!");
    return afrikaans ? QStringLiteral("BEDRAG TE KLEIN - MINSTENS -32768 RAND. NIE GESTOOR NIE!")
                     : QStringLiteral("AMOUNT TOO SMALL - AT LEAST -32768 RAND. NOT SAVED!");
}

QString pad_left(const QString& value, int width, QChar fill) {
    if (width <= 0) {
        return {};
    }
    if (value.size() >= width) {
        return value.right(width);
    }
    return QString(width - value.size(), fill) + value;
}

QString pad_right(const QString& value, int width, QChar fill) {
    if (width <= 0) {
        return {};
    }
    if (value.size() >= width) {
        return value.left(width);
    }
    return value + QString(width - value.size(), fill);
}

double larger_number(const QString& a, const QString& b) {
    if (a.trimmed().isEmpty()) {
        return 0.0;
    }
    return std::max(number_of(a), number_of(b));
}

double smaller_number(const QString& a, const QString& b) {
    return std::min(number_of(a), number_of(b));
}

QString fold_accents(const QString& text) {
    struct Fold {
        QStringView set;
        QStringView result;
    };
    // The sets are tested in this order with a plain "contains", commas and all: a comma in the
    // input therefore matches the first set and becomes "A".
    static constexpr std::array<Fold, 9> kFolds = {{
        {u"À,Á,Â,Ã,Ä,Å,à,á,â,ã,ä,å", u"A"},
        {u"È,É,Ê,Ë,è,é,ê,ë", u"E"},
        {u"Ì,Í,Î,Ï,ì,í,î,ï", u"I"},
        {u"Ò,Ó,Ô,ò,ó,ô,õ,ö,ð,Õ,Ö", u"O"},
        {u"Ù,Ú,Û,Ü,ù,ú,û,ü", u"U"},
        {u"ý,ÿ,Ý", u"Y"},
        {u"Ñ,ñ", u"N"},
        {u"Æ,æ", u"AE"},
        {u"&,+", u"AND"},
    }};
    QString out;
    out.reserve(text.size());
    for (QChar c : text) {
        const auto fold = std::find_if(kFolds.begin(), kFolds.end(),
                                       [c](const Fold& f) { return f.set.contains(c); });
        if (fold != kFolds.end()) {
            out += fold->result;
        } else {
            out += c;
        }
    }
    return out;
}

QString initials(const QString& names, int keep) {
    QVarLengthArray<QChar, 64> out;
    initials_into(names, out, keep);
    return QString(out.constData(), out.size());
}

void initials_into(QStringView names, QVarLengthArray<QChar, 64>& out, int keep) {
    // Runs of blanks count as one: a double blank between names adds no empty word. The words
    // are walked in place.
    out.clear();
    qsizetype i = 0;
    for (qsizetype at = 0; at < names.size();) {
        if (names[at] == u' ') {
            ++at;
            continue;
        }
        qsizetype end = at;
        while (end < names.size() && names[end] != u' ') {
            ++end;
        }
        const QStringView word = names.sliced(at, end - at);
        at = end;
        // Each word is put after a blank; the blank before the first would be trimmed away,
        // so it is left out.
        if (!out.isEmpty()) {
            out.append(u' ');
        }
        if (keep == 99) {
            out.append(word.data(), word.size());
            break;
        }
        if (i++ < keep) {
            out.append(word.data(), word.size());
        } else {
            out.append(word.front());
        }
    }
    // Trimmed as a string is, then without its first "(".
    qsizetype end = out.size();
    while (end > 0 && out[end - 1].isSpace()) {
        --end;
    }
    qsizetype start = 0;
    while (start < end && out[start].isSpace()) {
        ++start;
    }
    out.resize(end);
    if (start > 0) {
        out.remove(0, start);
    }
    for (qsizetype at = 0; at < out.size(); ++at) {
        if (out[at] == u'(') {
            out.remove(at);
            break;
        }
    }
}

QString month_name(int number, bool afrikaans) {
    static constexpr std::array<QStringView, 12> kAfrikaans = {
        u"JANUARIE", u"FEBRUARIE", u"MAART",     u"APRIL",   u"MEI",      u"JUNIE",
        u"JULIE",    u"AUGUSTUS",  u"SEPTEMBER", u"OKTOBER", u"NOVEMBER", u"DESEMBER"};
    static constexpr std::array<QStringView, 12> kEnglish = {
        u"JANUARY", u"FEBRUARY", u"MARCH",     u"APRIL",   u"MAY",      u"JUNE",
        u"JULY",    u"AUGUST",   u"SEPTEMBER", u"OCTOBER", u"NOVEMBER", u"DECEMBER"};
    if (number < 1 || number > 12) {
        return {};
    }
    return (afrikaans ? kAfrikaans : kEnglish)[number - 1].toString();
}

QString month_short(int number, bool afrikaans) {
    static constexpr std::array<QStringView, 12> kAfrikaans = {u"JAN", u"FEB", u"MRT", u"APR",
                                                               u"MEI", u"JUN", u"JUL", u"AUG",
                                                               u"SEP", u"OKT", u"NOV", u"DES"};
    static constexpr std::array<QStringView, 12> kEnglish = {u"JAN", u"FEB", u"MAR", u"APR",
                                                             u"MAY", u"JUN", u"JUL", u"AUG",
                                                             u"SEP", u"OCT", u"NOV", u"DEC"};
    if (number < 1 || number > 12) {
        return {};
    }
    return (afrikaans ? kAfrikaans : kEnglish)[number - 1].toString();
}

QString day_name(int weekday, bool afrikaans) {
    static constexpr std::array<QStringView, 7> kAfrikaans = {
        u"SONDAG", u"MAANDAG", u"DINSDAG", u"WOENSDAG", u"DONDERDAG", u"VRYDAG", u"SATERDAG"};
    static constexpr std::array<QStringView, 7> kEnglish = {
        u"SUNDAY", u"MONDAY", u"TUESDAY", u"WEDNESDAY", u"THURSDAY", u"FRIDAY", u"SATURDAY"};
    if (weekday < 1 || weekday > 7) {
        return {};
    }
    return (afrikaans ? kAfrikaans : kEnglish)[weekday - 1].toString();
}

IdCheck valid_id_number(const QString& text, const QString& gender, bool afrikaans) {
    auto say = [afrikaans](const QString& af, const QString& en) { return afrikaans ? af : en; };
    const QString id = text.trimmed();
    if (id.size() < 7) {
        return {true, {}};
    }
    const QString not_13 =
        say(QStringLiteral("Nie 13 karakters nie"), QStringLiteral("Not 13 characters"));
    if (id.size() != 13) {
        return {false, not_13};
    }
    IdCheck check{true, {}};

    // A month out of range leaves the length message behind as a warning, and the test goes on.
    const int month = digit_at(id, 3) * 10 + digit_at(id, 4);
    if (month < 1 || month > 12) {
        check.message = not_13;
    }

    const QString sex = gender.trimmed().toUpper();
    if (!sex.isEmpty()) {
        if (sex == u"M") {
            if (digit_at(id, 7) < 5) {
                return {false, say(QStringLiteral("MANLIK - karakter 7 kleiner as 5"),
                                   QStringLiteral("MALE - character 7 less than 5"))};
            }
        } else if (digit_at(id, 7) > 4) {
            return {false, say(QStringLiteral("VROULIK - karakter 7 groter as 4"),
                               QStringLiteral("FEMALE - character 7 more than 4"))};
        }
    }

    if (digit_at(id, 11) > 1) {
        return {false, say(QStringLiteral("Karakter 11 groter as 1"),
                           QStringLiteral("Character 11 more than 1"))};
    }

    int odd_sum = 0;
    for (int position = 1; position <= 11; position += 2) {
        odd_sum += digit_at(id, position);
    }
    int even_number = 0;
    for (int position = 2; position <= 12; position += 2) {
        even_number = even_number * 10 + digit_at(id, position);
    }
    int even_sum = 0;
    for (int doubled = even_number * 2; doubled > 0; doubled /= 10) {
        even_sum += doubled % 10;
    }
    const int remainder = (odd_sum + even_sum) % 10;
    const int expected = remainder == 0 ? 0 : 10 - remainder;
    if (id.at(12) == QChar(u'0' + expected)) {
        return check;
    }
    const QString digit = QString::number(expected);
    return {false, say(QStringLiteral("Karakter 13 moet ") + digit + QStringLiteral(" wees!"),
                       QStringLiteral("Character 13 must be ") + digit + u'!')};
}

QString current_user() {
    return platform::current_user();
}

}  // namespace korvel::shell

namespace korvel::shell {

QString upper_name(const QString& text) {
    QString out;
    out.reserve(text.size());
    for (const QChar c : text) {
        const QChar up = c.toUpper();  // one character for one, so "ß" stays
        const auto code = static_cast<unsigned char>(cp1252::to_byte(up.unicode()));
        out += (code > 127 && code < 224 && up != u'?') ? up.toLower() : up;
    }
    out.replace(QStringLiteral("HOERSKOOL"), QString::fromUtf8("HOëRSKOOL"));
    return out;
}

QString proper_name(const QString& text) {
    QString out = text.toLower().trimmed();
    for (const QChar separator : {QChar(u' '), QChar(u'-'), QChar(u'_'), QChar(u'\\')}) {
        bool start = true;
        for (QChar& c : out) {
            if (c == separator) {
                start = true;
            } else if (start) {
                c = c.toUpper();
                start = false;
            }
        }
    }
    out.replace(QStringLiteral("Hoerskool"), QString::fromUtf8("Hoërskool"));
    return out;
}

QString number_text(int value) {
    // Row numbers and counts are mostly small: those texts are made once and shared.
    static const std::array<QString, 1024> small = [] {
        std::array<QString, 1024> out;
        for (int n = 0; n < int(out.size()); ++n)
            out[size_t(n)] = QString::number(n);
        return out;
    }();
    if (value >= 0 && value < int(small.size()))
        return small[size_t(value)];
    return QString::number(value);
}

int number_value(QStringView text) {
    int i = 0;
    const int n = static_cast<int>(text.size());
    auto skip_blanks = [&] {
        while (i < n && (text[i] == u' ' || text[i] == u'\t')) {
            ++i;
        }
    };
    skip_blanks();
    bool negative = false;
    if (i < n && (text[i] == u'-' || text[i] == u'+')) {
        negative = text[i] == u'-';
        ++i;
    }
    long long value = 0;
    for (; i < n; ++i) {
        const QChar c = text[i];
        if (c == u' ' || c == u'\t') {
            continue;
        }
        if (c < u'0' || c > u'9') {
            break;
        }
        value = value * 10 + (c.unicode() - u'0');
        if (value > 99999) {
            value = 99999;
        }
    }
    return static_cast<int>(negative ? -value : value);
}

}  // namespace korvel::shell
