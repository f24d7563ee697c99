#pragma once
// Text on disk is Windows-1252, whatever the machine's locale. The conversion uses a fixed
// table, and all 256 byte values round-trip: the five bytes that Windows-1252 leaves undefined
// (0x81, 0x8D, 0x8F, 0x90, 0x9D) map to the C1 control characters of the same number, as
// Windows itself maps them.

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <array>

namespace korvel::cp1252 {

// Bytes 0x80 to 0x9F. Undefined bytes keep their own number (a C1 control character).
inline constexpr std::array<char16_t, 32> kHigh = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80-87
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88-8F
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90-97
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98-9F
};

// The character of one byte. Inline: a list decodes thousands of fields.
inline char16_t to_char(unsigned char b) {
    return b >= 0x80 && b < 0xA0 ? kHigh[b - 0x80] : char16_t(b);
}

// The characters of the bytes, one character a byte.
QString decode(const char* bytes, qsizetype size);
// The characters of the bytes put at the end of out, without a string of their own between.
void append(QString& out, const char* bytes, qsizetype size);
inline QString decode(const QByteArray& bytes) {
    return decode(bytes.constData(), bytes.size());
}

// The byte's place among all 256 ordered by their characters: texts whose bytes are compared
// by it order as the decoded texts do, so a sort can key on the bytes without decoding them.
unsigned char sort_rank(unsigned char byte);
// The same for the byte's character in capitals, from 1, a letter ranking as its capital: texts
// compared by it order as their capitals do. 0 when the capital is more than one character
// ("ß" is "SS"), which no rank can place.
unsigned char capital_rank(unsigned char byte);

// One byte a character; a character outside Windows-1252 becomes "?".
QByteArray encode(QStringView text);

// Writes text into a fixed field of width bytes: left-justified, cut to width, blank-padded.
void encode_fixed(QStringView text, char* field, qsizetype width);

// The byte of one character, or '?' when it has none.
char to_byte(char32_t c);

}  // namespace korvel::cp1252
