#include "platform/codepage.h"

#include <algorithm>
#include <array>

namespace korvel::cp1252 {

namespace {

// Bytes 0x80 to 0x9F. Undefined bytes keep their own number (a C1 control character).
constexpr std::array<char16_t, 32> kHigh = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,  // 80-87
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,  // 88-8F
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,  // 90-97
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,  // 98-9F
};

char16_t byte_to_char(unsigned char b) {
    if (b >= 0x80 && b < 0xA0) {
        return kHigh[b - 0x80];
    }
    return b;
}

void decode_to(QChar* dst, const char* bytes, qsizetype size) {
    for (qsizetype i = 0; i < size; ++i) {
        dst[i] = QChar(byte_to_char(static_cast<unsigned char>(bytes[i])));
    }
}
}  // namespace

unsigned char sort_rank(unsigned char byte) {
    static const std::array<unsigned char, 256> ranks = [] {
        std::array<unsigned char, 256> bytes{};
        for (int b = 0; b < 256; ++b)
            bytes[size_t(b)] = static_cast<unsigned char>(b);
        std::sort(bytes.begin(), bytes.end(), [](unsigned char a, unsigned char b) {
            return byte_to_char(a) < byte_to_char(b);
        });
        std::array<unsigned char, 256> r{};
        for (int place = 0; place < 256; ++place)
            r[bytes[size_t(place)]] = static_cast<unsigned char>(place);
        return r;
    }();
    return ranks[byte];
}

QString decode(const char* bytes, qsizetype size) {
    QString out(size, Qt::Uninitialized);
    decode_to(out.data(), bytes, size);
    return out;
}

void append(QString& out, const char* bytes, qsizetype size) {
    const qsizetype at = out.size();
    out.resize(at + size);
    decode_to(out.data() + at, bytes, size);
}

char to_byte(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
        return static_cast<char>(c);
    }
    for (std::size_t i = 0; i < kHigh.size(); ++i) {
        if (kHigh[i] == c) {
            return static_cast<char>(0x80 + i);
        }
    }
    return '?';
}

namespace {
template <class Sink>
void encode_into(QStringView text, Sink&& sink) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            ++i;  // a character beyond the BMP is one character, and has no byte
            if (!sink('?')) {
                return;
            }
            continue;
        }
        if (!sink(to_byte(c.unicode()))) {
            return;
        }
    }
}
}  // namespace

QByteArray encode(QStringView text) {
    QByteArray out;
    out.reserve(text.size());
    encode_into(text, [&](char b) {
        out.append(b);
        return true;
    });
    return out;
}

void encode_fixed(QStringView text, char* field, qsizetype width) {
    qsizetype n = 0;
    encode_into(text, [&](char b) {
        if (n >= width) {
            return false;
        }
        field[n++] = b;
        return true;
    });
    for (; n < width; ++n) {
        field[n] = ' ';
    }
}

}  // namespace korvel::cp1252
