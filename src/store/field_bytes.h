#pragma once
// Text fields read straight from a record's bytes through its field table, for the lists that
// read thousands of records: they compare and skip on the bytes and decode only what they show.

#include <QString>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>

#include "store/layout.h"

namespace korvel::store {

// The high bit of each byte of a word that is neither a blank nor a NUL; the byte at the
// lowest address is the word's lowest.
inline std::uint64_t unpadded_bytes(std::uint64_t word) {
    static_assert(std::endian::native == std::endian::little);
    constexpr std::uint64_t kLow7 = 0x7F7F7F7F7F7F7F7FULL;
    constexpr std::uint64_t kHigh = 0x8080808080808080ULL;
    constexpr std::uint64_t kBlanks = 0x2020202020202020ULL;
    // High bit set exactly where a byte is not zero, with no carry between bytes.
    const auto nonzero = [](std::uint64_t v) { return (((v & kLow7) + kLow7) | v) & kHigh; };
    return nonzero(word) & nonzero(word ^ kBlanks);
}

// The bytes of a text field whose characters are Record::text(f, index): the blanks and NULs at
// its end dropped, nothing when it starts with a NUL. Inline, as is the next: the lists call
// them for every field of thousands of records.
inline std::string_view text_bytes(const char* record, const Field& f, int index = 0) {
    const char* p = record + f.element_offset(index);
    if (p[0] == '\0') {
        return {};
    }
    int end = f.width;
    if (end < 8) {
        while (end > 0 && (p[end - 1] == ' ' || p[end - 1] == '\0')) {
            --end;
        }
        return {p, static_cast<std::size_t>(end)};
    }
    // Most fields are mostly padding: it is passed over eight bytes at a time, and the last
    // character is found in the word that holds it. Under eight bytes left, the field's first
    // eight are read again, those from the end on left out.
    constexpr std::uint64_t kBlanks = 0x2020202020202020ULL;
    std::uint64_t word = 0;
    for (; end >= 8; end -= 8) {
        std::memcpy(&word, p + end - 8, sizeof word);
        if (word != kBlanks && word != 0) {
            if (const std::uint64_t kept = unpadded_bytes(word); kept != 0) {
                return {p,
                        static_cast<std::size_t>(end - 8 + (63 - std::countl_zero(kept)) / 8 + 1)};
            }
        }
    }
    std::memcpy(&word, p, sizeof word);
    const std::uint64_t kept = unpadded_bytes(word) & ((std::uint64_t{1} << (8 * end)) - 1);
    return {p, kept == 0 ? 0 : static_cast<std::size_t>((63 - std::countl_zero(kept)) / 8 + 1)};
}

// Whether QString::trimmed takes the character of a byte for white space: tab to carriage
// return, the blank and the no-break space, read through the code page as text() reads it.
inline constexpr std::array<bool, 256> kWhiteBytes = [] {
    std::array<bool, 256> w{};
    for (const int b : {0x09, 0x0A, 0x0B, 0x0C, 0x0D, 0x20, 0xA0}) {
        w[static_cast<std::size_t>(b)] = true;
    }
    return w;
}();
inline bool is_white_byte(char c) {
    return kWhiteBytes[static_cast<unsigned char>(c)];
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
// The key of a post number's trimmed bytes: equal for two posts exactly when their texts in
// capitals are, as the staff index keys them (Store::index_key), without decoding them.
std::string capital_key(std::string_view trimmed);

// A hash of a short text (a post number's key, an institution), eight bytes at a time: the
// library's byte-wise hash costs more than the look-up it serves.
inline std::size_t short_text_hash(std::string_view text) {
    constexpr std::uint64_t kMix = 0xFF51AFD7ED558CCDULL;
    std::uint64_t h = 0x9E3779B97F4A7C15ULL ^ text.size();
    const char* p = text.data();
    std::size_t n = text.size();
    for (; n >= 8; n -= 8, p += 8) {
        std::uint64_t word;
        std::memcpy(&word, p, sizeof word);
        h = (h ^ word) * kMix;
        h ^= h >> 32;
    }
    std::uint64_t tail = 0;
    for (std::size_t i = 0; i < n; ++i) {
        tail |= std::uint64_t{static_cast<unsigned char>(p[i])} << (8 * i);
    }
    // Every bit of the text moves the low bits, which pick a slot.
    h = (h ^ tail) * kMix;
    h = (h ^ (h >> 33)) * 0xC4CEB9FE1A85EC53ULL;
    return static_cast<std::size_t>(h ^ (h >> 33));
}
struct ShortTextHash {
    std::size_t operator()(const std::string& text) const { return short_text_hash(text); }
};
// Those bytes as text: Record::text(f, index).trimmed() of a record's bytes.
QString trimmed_text(const char* record, const Field& f, int index = 0);
// A two-byte number as Record::int16 reads it.
inline std::int16_t int16_bytes(const char* record, const Field& f, int index = 0) {
    const auto* p = reinterpret_cast<const unsigned char*>(record + f.element_offset(index));
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(p[0] | (p[1] << 8)));
}

// Texts that repeat from record to record (an institution and its year): the last few made
// are kept by the bytes they were made from and handed out again, so a list of thousands of
// rows makes a string only where its text changes, and its cells share the rest.
template <std::size_t N = 64>
class RecentTexts {
  public:
    template <class Make>
    const QString& text(std::string_view key, Make make) {
        const std::size_t hash = short_text_hash(key);
        Slot& slot = slots_[hash % N];
        if (slot.hash != hash || slot.key != key) {
            slot.hash = hash;
            slot.key.assign(key);
            slot.text = make();
        }
        return slot.text;
    }

  private:
    struct Slot {
        std::size_t hash = 0;
        std::string key;
        QString text;
    };
    std::array<Slot, N> slots_{};
};

}  // namespace korvel::store
