#pragma once
// Text fields read straight from a record's bytes through its field table, for the lists that
// read thousands of records: they compare and skip on the bytes and decode only what they show.

#include <QString>
#include <cstdint>
#include <string_view>

#include "store/layout.h"

namespace korvel::store {

// The bytes of a text field whose characters are Record::text(f, index): the blanks and NULs at
// its end dropped, nothing when it starts with a NUL.
std::string_view text_bytes(const char* record, const Field& f, int index = 0);
// The bytes of a text field whose characters are Record::text(f, index).trimmed().
std::string_view trimmed_bytes(const char* record, const Field& f, int index = 0);
// Those bytes as text: Record::text(f, index).trimmed() of a record's bytes.
QString trimmed_text(const char* record, const Field& f, int index = 0);
// A two-byte number as Record::int16 reads it.
inline std::int16_t int16_bytes(const char* record, const Field& f, int index = 0) {
    const auto* p = reinterpret_cast<const unsigned char*>(record + f.element_offset(index));
    return static_cast<std::int16_t>(static_cast<std::uint16_t>(p[0] | (p[1] << 8)));
}

}  // namespace korvel::store
