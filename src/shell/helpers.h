#pragma once
// The small routines every form calls: date forms, amounts, padding, accent folding, month and
// day names in both languages, the identity number test and the user's name.
//
// None of them throws and none of them shows anything: bad input gives blank, zero, today or
// true, as each routine says, and the forms rely on that. Numbers are always read and written
// with a point for decimals and a comma for grouping, whatever the machine's regional settings.
//
// Three date forms exist: "YYYY.MM.DD" on screen and paper, "YYYY/MM/DD" for converting text to
// a date, and the date value of the record files, where 0 means no date. Here a null QDate stands
// for date 0, and 1899-12-30 (day 0 itself) counts as no date as well.

#include <QDate>
#include <QString>
#include <QStringView>
#include <QVarLengthArray>

namespace korvel::shell {

// Any date text to the dot form "YYYY.MM.DD", or blank:
//   blank, "00:00:00" and "12:00:00 AM" give blank;
//   a text with "." at characters 5 and 8 is already in the dot form and comes back untouched;
//   eight bare characters (no "." nor "/") are read as YYYYMMDD;
//   otherwise the text is split at ".", "/" or "-" (the last of these present wins), the parts
//   are padded with "0" to two places and read as YYYY/MM/DD. A text that is no real date, or a
//   time alone ("... AM"), gives blank.
QString date_to_text(const QString& value);
// A date in the dot form; no date gives blank.
QString date_to_text(const QDate& date);

// Text to a date. Blank gives a null date (date 0). "YYYY/MM/DD" is read directly; otherwise
// characters 5 and 8 must each be "." or "-" and the text is read as year, month and day.
// Text that cannot be read is quietly `today`.
QDate text_to_date(const QString& text, const QDate& today = QDate::currentDate());

// An amount with two decimals and no grouping: "1,250.5" gives "1250.50". Commas are dropped
// first; zero and anything that is no number give "0.00".
QString format_amount(const QString& value);
QString format_amount(double value);

// A whole number's text as QString::number writes it; a small one is made once and shared, as
// the lists write one for every row.
QString number_text(int value);

// The number a text starts with, as the language's Val reads it: blanks skipped (also between
// digits), an optional sign, then digits; 0 when none, 99999 at most.
int number_value(QStringView text);
inline int number_value(const QString& text) {
    return number_value(QStringView(text));
}

// The number a text starts with, as the language's Val reads it: blanks, tabs and line ends
// are passed over wherever they stand, then an optional sign, digits with at most one point,
// and an exponent after "E" or "D"; 0 when the text starts with no number.
double leading_number(const QString& text);

// What an amount box stores: the thousands separators dropped, the number it starts with,
// rounded to whole rands half to even (12345.5 gives 12346, 12344.5 gives 12344). Values far
// outside the 16-bit range are held at +-1e12, which the field refuses all the same.
long long whole_rands(const QString& text);
// The message of an amount outside the 16-bit range of a field: too large above it, too small
// below it.
QString amount_range_message(long long rands, bool afrikaans);

// Right-aligned in `width`: padded with `fill` on the left, or cut to its last `width` characters.
QString pad_left(const QString& value, int width, QChar fill = u' ');
// Left-aligned in `width`: padded with `fill` on the right, or cut to its first `width` characters.
QString pad_right(const QString& value, int width, QChar fill = u' ');

// The larger of two numeric texts; a blank first value gives 0 whatever the second. Text that is
// no number counts as 0.
double larger_number(const QString& a, const QString& b);
// The smaller of two numeric texts; text that is no number counts as 0.
double smaller_number(const QString& a, const QString& b);

// Accented letters to their plain upper-case letter, "Æ" and "æ" to "AE", "&" and "+" to "AND".
// A comma is folded to "A" as well: the routine has always done so and outside systems have seen
// it that way. Every other character is kept as it is.
QString fold_accents(const QString& text);

// The initials of a person's names: the first `keep` words whole, then the first letter of every
// further word, separated by blanks. `keep` 99 gives the first word alone. The result is trimmed
// and its first "(" removed.
QString initials(const QString& names, int keep = 0);
// The same put in a buffer, with no string of its own: the lists make them by the thousand.
void initials_into(QStringView names, QVarLengthArray<QChar, 64>& out, int keep = 0);

// Every function that picks a text takes `afrikaans` (true = Afrikaans, false = English).
// A number out of range gives blank.
QString month_name(int number, bool afrikaans);   // 1 to 12: "JANUARIE" / "JANUARY"
QString month_short(int number, bool afrikaans);  // 1 to 12: "MRT" / "MAR"
QString day_name(int weekday, bool afrikaans);    // 1 (Sunday) to 7 (Saturday)

// The outcome of an identity number test. `message` is blank when there is nothing to say; it
// can be set while `valid` is true (a month out of range is only a warning).
struct IdCheck {
    bool valid;
    QString message;
};

// The South African 13-digit identity number test. A text of fewer than 7 characters is not
// tested and passes. `gender` blank means not given; "M" is male, anything else female.
IdCheck valid_id_number(const QString& text, const QString& gender, bool afrikaans);

// The name the user logged on with; blank when it cannot be had.
QString current_user();

}  // namespace korvel::shell

namespace korvel::shell {

// School-style capitals: upper case, but a letter whose Windows-1252 code lies between 128 and
// 223 goes back to its small form, so "HOëRSKOOL" keeps its small ë; "HOERSKOOL" becomes
// "HOëRSKOOL".
QString upper_name(const QString& text);

// Each word capitalised, at blanks, "-", "_" and "\"; "Hoerskool" becomes "Hoërskool".
QString proper_name(const QString& text);

}  // namespace korvel::shell
