#pragma once
// Text fields read straight from a record's bytes through its field table, for the lists that
// read thousands of records: they compare and skip on the bytes and decode only what they show.

#include <QString>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "store/layout.h"

namespace korvel::store {

// The bytes of a text field whose characters are Record::text(f, index): the blanks and NULs at
// its end dropped, nothing when it starts with a NUL. Inline, as is the next: the lists call
// them for every field of thousands of records.
inline std::string_view text_bytes(const char* record, const Field& f, int index = 0) {
    const char* p = record + f.element_offset(index);
    if (p[0] == '\0') {
        return {};
    }
    int end = f.width;
    // Most fields are mostly padding: it is passed over eight bytes at a time.
    constexpr std::uint64_t kBlanks = 0x2020202020202020ULL;
    while (end >= 8) {
        std::uint64_t word = 0;
        std::memcpy(&word, p + end - 8, sizeof word);
        if (word != kBlanks && word != 0) {
            break;
        }
        end -= 8;
    }
    while (end > 0 && (p[end - 1] == ' ' || p[end - 1] == '\0')) {
        --end;
    }
    return {p, static_cast<std::size_t>(end)};
}

// Whether QString::trimmed takes the character of a byte for white space (tab to carriage
// return, the blank, the no-break space), found through the same code page as text().
bool decodes_to_white(unsigned char b);
inline bool is_white_byte(char c) {
    static const std::array<bool, 256> white = [] {
        std::array<bool, 256> w{};
        for (int b = 0; b < 256; ++b) {
            w[static_cast<std::size_t>(b)] = decodes_to_white(static_cast<unsigned char>(b));
        }
        return w;
    }();
    return white[static_cast<unsigned char>(c)];
}

// The bytes of a text field whose characters are Record::text(f, index).trimmed().
inline std::string_view trimmed_bytes(const char* record, const Field& f, int index = 0) {
    const std::string_view text = text_bytes(record, f, index);
    const char* p = text.data();
    auto end = text.size();
    while (end > 0 && is_white_byte(p[end - 1])) {
        --end;
    }
    std::size_t start = 0;
    while (start < end && is_white_byte(p[start])) {
        ++start;
    }
    return text.substr(start, end - start);
}
// Those bytes as text: Record::text(f, index).trimmed() of a record's bytes.
QString trimmed_text(const char* record, const Field& f, int index = 0);
// A two-byte number as Record::int16 reads it.
inline std::int16_t int16_bytes(const char* record, const Field& f, int index = 0) {
    const auto* p = reinterpret_cast<const unsigned char*>(record + f.element_offset(index));
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(p[0] | (p[1] << 8)));
}

}  // namespace korvel::store
