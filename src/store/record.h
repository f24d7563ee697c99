#pragma once
// One record of a fixed-length record file: the raw bytes of the record and typed access to
// them through the layout's field table. Reading and writing whole records is the business of
// RecordFile; a Record never touches the disk.

#include <QByteArray>
#include <QDate>
#include <QString>
#include <cstdint>
#include <optional>

#include "store/layout.h"

namespace korvel::store {

// Date values on disk: days since 1899-12-30 as a double, the time of day as the fraction,
// 0 for no date. A value that is NaN, infinite, not positive or past 9999-12-31 is no date.
std::optional<QDate> date_from_serial(double serial);
double serial_from_date(const QDate& date);  // null date -> 0

class Record {
  public:
    explicit Record(const Layout& layout);
    // A record of the layout holding a copy of record_length bytes.
    Record(const Layout& layout, const char* bytes);

    const Layout& layout() const { return *layout_; }
    int size() const { return layout_->record_length; }
    char* data() { return bytes_.data(); }
    const char* data() const { return bytes_.constData(); }
    const QByteArray& bytes() const { return bytes_; }
    void assign(const char* bytes);  // record_length bytes

    // Every text field blank, every number and date 0, every raw byte 0.
    void clear();

    // Text, cleaned: blank when the field starts with a NUL (never written), otherwise the
    // characters with trailing blanks and NULs removed. Leading blanks stay.
    QString text(const Field& f, int index = 0) const;
    // The whole width, as it stands.
    QString raw_text(const Field& f, int index = 0) const;
    // Cut to the width and blank-padded.
    void set_text(const Field& f, const QString& value, int index = 0);
    // The trimming idiom: the field is read, trimmed and written back, so it stays
    // left-justified; the trimmed text is returned.
    QString trim_text(const Field& f, int index = 0);

    std::int16_t int16(const Field& f, int index = 0) const;
    // False, and the field unchanged, when the value does not fit in a signed 16-bit integer.
    bool set_int16(const Field& f, long long value, int index = 0);

    double date_serial(const Field& f, int index = 0) const;
    std::optional<QDate> date(const Field& f, int index = 0) const;
    void set_date_serial(const Field& f, double serial, int index = 0);
    void set_date(const Field& f, const QDate& date, int index = 0);  // null date -> 0

    std::uint8_t byte(const Field& f) const;
    void set_byte(const Field& f, std::uint8_t value);

    QByteArray raw(const Field& f, int index = 0) const;
    void set_raw(const Field& f, const QByteArray& value, int index = 0);

    // Two-dimensional arrays: slot (i, j) with i running fastest.
    static int grid_index(const Field& f, int i, int j) { return i + f.dim1 * j; }

    bool operator==(const Record& other) const { return bytes_ == other.bytes_; }

  private:
    const char* at(const Field& f, int index) const;
    char* at(const Field& f, int index);

    const Layout* layout_;
    QByteArray bytes_;
};

// A text read from a record or a file, cleaned: blank for a value that starts with a NUL or is
// the time-only text of an empty date ("12:00:00 AM", "00:00:00"); otherwise the text with
// trailing blanks removed.
QString clean_field(const QString& value);

// The text up to the first blank; blank for a blank text.
QString first_word(const QString& text);

}  // namespace korvel::store
