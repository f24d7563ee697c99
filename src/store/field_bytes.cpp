#include "store/field_bytes.h"

#include <array>
#include <cstdint>
#include <cstring>

#include "platform/codepage.h"

namespace korvel::store {

std::string_view text_bytes(const char* record, const Field& f, int index) {
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

std::string_view trimmed_bytes(const char* record, const Field& f, int index) {
    // The bytes whose character QString::trimmed takes for white space (tab to carriage
    // return, the blank, the no-break space), found through the same code page as text().
    static const std::array<bool, 256> white = [] {
        std::array<bool, 256> w{};
        for (int b = 0; b < 256; ++b) {
            const char c = static_cast<char>(b);
            w[static_cast<std::size_t>(b)] = cp1252::decode(&c, 1).at(0).isSpace();
        }
        return w;
    }();
    const auto is_white = [](char c) { return white[static_cast<unsigned char>(c)]; };
    const std::string_view text = text_bytes(record, f, index);
    const char* p = text.data();
    auto end = text.size();
    while (end > 0 && is_white(p[end - 1])) {
        --end;
    }
    std::size_t start = 0;
    while (start < end && is_white(p[start])) {
        ++start;
    }
    return text.substr(start, end - start);
}

QString trimmed_text(const char* record, const Field& f, int index) {
    const std::string_view b = trimmed_bytes(record, f, index);
    return cp1252::decode(b.data(), static_cast<qsizetype>(b.size()));
}

}  // namespace korvel::store
