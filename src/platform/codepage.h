#pragma once
// Text on disk is Windows-1252, whatever the machine's locale. The conversion uses a fixed
// table, and all 256 byte values round-trip: the five bytes that Windows-1252 leaves undefined
// (0x81, 0x8D, 0x8F, 0x90, 0x9D) map to the C1 control characters of the same number, as
// Windows itself maps them.

#include <QByteArray>
#include <QString>
#include <QStringView>

namespace korvel::cp1252 {

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

// One byte a character; a character outside Windows-1252 becomes "?".
QByteArray encode(QStringView text);

// Writes text into a fixed field of width bytes: left-justified, cut to width, blank-padded.
void encode_fixed(QStringView text, char* field, qsizetype width);

// The byte of one character, or '?' when it has none.
char to_byte(char32_t c);

}  // namespace korvel::cp1252
