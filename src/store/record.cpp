#include "store/record.h"

#include <cmath>
#include <cstring>
#include <limits>

#include "platform/codepage.h"
#include "store/field_bytes.h"

namespace korvel::store {

namespace {

const QDate kEpoch(1899, 12, 30);
constexpr double kLastSerial = 2958465.0;  // 9999-12-31

}  // namespace

std::optional<QDate> date_from_serial(double serial) {
    if (!std::isfinite(serial) || serial < 1.0 || serial >= kLastSerial + 1.0) {
        return std::nullopt;
    }
    return kEpoch.addDays(static_cast<qint64>(std::floor(serial)));
}

double serial_from_date(const QDate& date) {
    if (!date.isValid()) {
        return 0.0;
    }
    return static_cast<double>(kEpoch.daysTo(date));
}

Record::Record(const Layout& layout) : layout_(&layout), bytes_(layout.record_length, '\0') {
    clear();
}

Record::Record(const Layout& layout, const char* bytes)
    : layout_(&layout), bytes_(bytes, layout.record_length) {}

void Record::assign(const char* bytes) {
    std::memcpy(bytes_.data(), bytes, static_cast<std::size_t>(bytes_.size()));
}

void Record::clear() {
    char* p = bytes_.data();
    for (const Field& f : layout_->fields) {
        std::memset(p + f.offset, f.type == FieldType::Text ? ' ' : 0,
                    static_cast<std::size_t>(f.size()));
    }
}

const char* Record::at(const Field& f, int index) const {
    Q_ASSERT(index >= 0 && index < f.count);
    Q_ASSERT(f.offset + f.size() <= bytes_.size());
    return bytes_.constData() + f.element_offset(index);
}

char* Record::at(const Field& f, int index) {
    Q_ASSERT(index >= 0 && index < f.count);
    Q_ASSERT(f.offset + f.size() <= bytes_.size());
    return bytes_.data() + f.element_offset(index);
}

QString Record::text(const Field& f, int index) const {
    if (at(f, index)[0] == '\0') {
        return {};
    }
    const std::string_view b = text_bytes(data(), f, index);
    return cp1252::decode(b.data(), static_cast<qsizetype>(b.size()));
}

QString Record::raw_text(const Field& f, int index) const {
    return cp1252::decode(at(f, index), f.width);
}

void Record::set_text(const Field& f, const QString& value, int index) {
    cp1252::encode_fixed(value, at(f, index), f.width);
}

QString Record::trim_text(const Field& f, int index) {
    const QString t = text(f, index).trimmed();
    set_text(f, t, index);
    return t;
}

std::int16_t Record::int16(const Field& f, int index) const {
    static_cast<void>(at(f, index));  // its checks that the field lies in the record
    return int16_bytes(data(), f, index);
}

bool Record::set_int16(const Field& f, long long value, int index) {
    if (value < std::numeric_limits<std::int16_t>::min() ||
        value > std::numeric_limits<std::int16_t>::max()) {
        return false;
    }
    const auto u = static_cast<std::uint16_t>(static_cast<std::int16_t>(value));
    char* p = at(f, index);
    p[0] = static_cast<char>(u & 0xFF);
    p[1] = static_cast<char>(u >> 8);
    return true;
}

double Record::date_serial(const Field& f, int index) const {
    const char* p = at(f, index);
    std::uint64_t bits = 0;
    for (int i = 7; i >= 0; --i) {
        bits = (bits << 8) | static_cast<unsigned char>(p[i]);
    }
    double d;
    std::memcpy(&d, &bits, sizeof d);
    return d;
}

std::optional<QDate> Record::date(const Field& f, int index) const {
    return date_from_serial(date_serial(f, index));
}

void Record::set_date_serial(const Field& f, double serial, int index) {
    std::uint64_t bits;
    std::memcpy(&bits, &serial, sizeof bits);
    char* p = at(f, index);
    for (int i = 0; i < 8; ++i) {
        p[i] = static_cast<char>((bits >> (8 * i)) & 0xFF);
    }
}

void Record::set_date(const Field& f, const QDate& date, int index) {
    set_date_serial(f, serial_from_date(date), index);
}

std::uint8_t Record::byte(const Field& f) const {
    return static_cast<std::uint8_t>(*at(f, 0));
}

void Record::set_byte(const Field& f, std::uint8_t value) {
    *at(f, 0) = static_cast<char>(value);
}

QByteArray Record::raw(const Field& f, int index) const {
    return QByteArray(at(f, index), f.width);
}

void Record::set_raw(const Field& f, const QByteArray& value, int index) {
    char* p = at(f, index);
    std::memset(p, 0, static_cast<std::size_t>(f.width));
    std::memcpy(p, value.constData(),
                static_cast<std::size_t>(std::min<qsizetype>(value.size(), f.width)));
}

QString clean_field(const QString& value) {
    const QString trimmed = value.trimmed();
    if (trimmed == u"12:00:00 AM" || trimmed == u"00:00:00") {
        return {};
    }
    if (value.isEmpty() || value.at(0).unicode() == 0) {
        return {};
    }
    qsizetype n = value.size();
    while (n > 0 && value.at(n - 1) == u' ') {
        --n;
    }
    return value.left(n);
}

QString first_word(const QString& text) {
    if (text.trimmed().isEmpty()) {
        return {};
    }
    const qsizetype blank = text.indexOf(u' ');
    return blank < 0 ? text : text.left(blank);
}

}  // namespace korvel::store
