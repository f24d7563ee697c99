#include "platform/codepage.h"

#include <algorithm>
#include <array>
#include <vector>

namespace korvel::cp1252 {

namespace {

void decode_to(QChar* dst, const char* bytes, qsizetype size) {
    for (qsizetype i = 0; i < size; ++i) {
        dst[i] = QChar(to_char(static_cast<unsigned char>(bytes[i])));
    }
}
}  // namespace

unsigned char sort_rank(unsigned char byte) {
    static const std::array<unsigned char, 256> ranks = [] {
        std::array<unsigned char, 256> bytes{};
        for (int b = 0; b < 256; ++b)
            bytes[size_t(b)] = static_cast<unsigned char>(b);
        std::sort(bytes.begin(), bytes.end(),
                  [](unsigned char a, unsigned char b) { return to_char(a) < to_char(b); });
        std::array<unsigned char, 256> r{};
        for (int place = 0; place < 256; ++place)
            r[bytes[size_t(place)]] = static_cast<unsigned char>(place);
        return r;
    }();
    return ranks[byte];
}

unsigned char capital_rank(unsigned char byte) {
    static const std::array<unsigned char, 256> ranks = [] {
        std::array<QString, 256> capitals;
        std::vector<char16_t> order;
        for (int b = 0; b < 256; ++b) {
            capitals[size_t(b)] = QString(QChar(to_char(static_cast<unsigned char>(b)))).toUpper();
            if (capitals[size_t(b)].size() == 1)
                order.push_back(capitals[size_t(b)].front().unicode());
        }
        std::sort(order.begin(), order.end());
        order.erase(std::unique(order.begin(), order.end()), order.end());
        std::array<unsigned char, 256> r{};
        for (int b = 0; b < 256; ++b) {
            if (capitals[size_t(b)].size() == 1) {
                const auto at = std::lower_bound(order.begin(), order.end(),
                                                 capitals[size_t(b)].front().unicode());
                r[size_t(b)] = static_cast<unsigned char>(1 + (at - order.begin()));
            }
        }
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
