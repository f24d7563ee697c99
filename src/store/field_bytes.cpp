#include "store/field_bytes.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "platform/codepage.h"

namespace korvel::store {

std::string capital_key(std::string_view trimmed) {
    // Each byte's capital as bytes of the code page, one or two: "ß" is "SS". A capital the
    // code page has not (the micro sign's, the f with hook's) is that byte's alone, so the byte
    // stands for it.
    struct Capital {
        char bytes[2];
        unsigned char size;
    };
    static const std::array<Capital, 256> capitals = [] {
        std::array<Capital, 256> out{};
        for (int b = 0; b < 256; ++b) {
            const char byte = char(b);
            const QString capital = cp1252::decode(&byte, 1).toUpper();
            const QByteArray bytes = cp1252::encode(capital);
            Capital& c = out[size_t(b)];
            if (cp1252::decode(bytes) == capital && bytes.size() <= 2) {
                c.size = static_cast<unsigned char>(bytes.size());
                std::copy(bytes.begin(), bytes.end(), c.bytes);
            } else {
                c = {{byte, 0}, 1};
            }
        }
        return out;
    }();
    std::string key(2 * trimmed.size(), '\0');
    char* p = key.data();
    for (const char b : trimmed) {
        const Capital& c = capitals[uchar(b)];
        p[0] = c.bytes[0];
        p[1] = c.bytes[1];
        p += c.size;
    }
    key.resize(size_t(p - key.data()));
    return key;
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
