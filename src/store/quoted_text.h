#pragma once
// The quoted text form of the suite's small settings files.
//
// One record a line, values separated by commas, lines ended by CR LF, the bytes in
// Windows-1252:
//
//     "SKOOL",12.5,#TRUE#,#2024-03-01#
//
// Text stands between double quotes, numbers bare with a point for decimals, booleans and dates
// between "#" signs. A blank field (",,") is an empty value. Date 0 is written "#00:00:00#".
//
// The Reader gives the values back one by one, whatever line they are on, the way the sibling
// programs read these files. It never trusts the bytes: a missing closing quote, garbage, NULs,
// lone CR or LF line ends and blank lines give an Invalid value or no value, never a crash, and
// every call moves on, so reading always ends.

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

namespace korvel::quoted {

struct Value {
    enum class Kind {
        Empty,    // a blank field: ",," or a comma at the end of a line
        Text,     // a quoted string, or a bare word that is no number
        Number,   // a bare number
        Boolean,  // #TRUE# or #FALSE#
        Date,     // #YYYY-MM-DD#, with or without a time; date 0 is a null `date`
        Null,     // #NULL#
        Invalid,  // a quote that never closes, or "#...#" that is no boolean, date or null
    };
    Kind kind = Kind::Empty;
    // The characters as they stood: the text between the quotes, the bare word or number, or
    // what stood between the "#" signs.
    QString text;
    double number = 0.0;
    bool boolean = false;
    QDate date;

    bool operator==(const Value&) const = default;
};

class Reader {
  public:
    explicit Reader(QByteArray bytes);

    // True when no value is left.
    bool at_end() const;

    // The next value; nullopt at the end of the data. Blank lines hold no value and are passed
    // over; text between a closing quote (or "#") and the next comma or line end is ignored.
    std::optional<Value> next();

    // The values up to the end of the current line (empty at the end of the data).
    std::vector<Value> read_line();

    // Typed reads. Each takes the next value whether or not it fits, so the values that follow
    // stay in step; nullopt when no value is left or the value does not fit the type.
    // A blank field reads as "", 0, false and date 0 (a null QDate).
    //
    // Text and numbers read as text, as they stood; booleans and dates do not.
    std::optional<QString> read_string();
    // Numbers; text that holds one number and nothing else.
    std::optional<double> read_number();
    // Booleans; numbers (anything but 0 is true); the text "TRUE" or "FALSE" in any case.
    std::optional<bool> read_bool();
    // Dates; text in the form YYYY-MM-DD.
    std::optional<QDate> read_date();

  private:
    void skip_blanks();
    void skip_to_delimiter();
    void take_delimiter();
    Value read_quoted();
    Value read_hashed();
    Value read_bare();

    QByteArray bytes_;
    qsizetype pos_ = 0;
    bool after_comma_ = false;  // a comma was taken, so one more value stands on this line
    bool line_ended_ = false;   // the last value ended its line (or the data)
};

// Builds the bytes of a file. Values of one line are joined by commas; end_line() ends the line
// with CR LF. Characters that Windows-1252 lacks are written as "?".
class Writer {
  public:
    // A double quote cannot stand inside a quoted string, so it is written as a single quote.
    // Line ends inside the text are kept.
    Writer& text(QStringView value);
    // The shortest form that reads back to the same double: "12.5", "-3", "1E+20". A value that
    // is not finite is written as 0.
    Writer& number(double value);
    // The same for a single-precision value, so 0.1f is written "0.1".
    Writer& single(float value);
    Writer& boolean(bool value);
    // "#YYYY-MM-DD#"; date 0 (a null date, or 1899-12-30) is "#00:00:00#".
    Writer& date(const QDate& value);
    // A blank field. A line holding nothing but one blank field is a blank line, which reads
    // back as no value at all.
    Writer& empty();
    Writer& null();
    // Any value as read; an Invalid one is written as a blank field.
    Writer& value(const Value& value);
    Writer& end_line();

    const QByteArray& bytes() const { return bytes_; }

  private:
    void separate();

    QByteArray bytes_;
    bool line_has_value_ = false;
};

// The whole file, or nullopt when it is missing, unreadable, or larger than any settings file
// can be (16 MiB).
std::optional<QByteArray> read_file(const QString& native_path);

// Writes the file whole or not at all: the bytes go to a temporary file beside it, which then
// replaces the old one, so a crash never leaves half a file. False when it cannot be written.
bool write_file(const QString& native_path, const QByteArray& bytes);

}  // namespace korvel::quoted
