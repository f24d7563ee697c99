#include "store/field_bytes.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "platform/codepage.h"

namespace korvel::store {

bool decodes_to_white(unsigned char b) {
    return QChar(cp1252::to_char(b)).isSpace();
}

QString trimmed_text(const char* record, const Field& f, int index) {
    const std::string_view b = trimmed_bytes(record, f, index);
    if (b.size() == 1) {
        // A one-letter field (a gender, a flag) shares its text: the lists read thousands.
        static const std::array<QString, 256> letters = [] {
            std::array<QString, 256> out;
            for (int c = 0; c < 256; ++c) {
                const char byte = char(c);
                out[size_t(c)] = cp1252::decode(&byte, 1);
            }
            return out;
        }();
        return letters[uchar(b[0])];
    }
    return cp1252::decode(b.data(), static_cast<qsizetype>(b.size()));
}

}  // namespace korvel::store
