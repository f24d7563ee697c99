#include "store/field_bytes.h"

#include <array>

#include "platform/codepage.h"

namespace korvel::store {

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
    const char* p = record + f.element_offset(index);
    if (p[0] == '\0') {
        return {};
    }
    int end = f.width;
    while (end > 0 && (p[end - 1] == ' ' || p[end - 1] == '\0')) {
        --end;
    }
    while (end > 0 && is_white(p[end - 1])) {
        --end;
    }
    int start = 0;
    while (start < end && is_white(p[start])) {
        ++start;
    }
    return {p + start, static_cast<std::size_t>(end - start)};
}

QString trimmed_text(const char* record, const Field& f, int index) {
    const std::string_view b = trimmed_bytes(record, f, index);
    return cp1252::decode(b.data(), static_cast<qsizetype>(b.size()));
}

}  // namespace korvel::store
