#pragma once
// Text fields read straight from a record's bytes through its field table, for the lists that
// read thousands of records: they compare and skip on the bytes and decode only what they show.

#include <QString>
#include <string_view>

#include "store/layout.h"

namespace korvel::store {

// The bytes of a text field whose characters are Record::text(f, index).trimmed().
std::string_view trimmed_bytes(const char* record, const Field& f, int index = 0);
// Those bytes as text: Record::text(f, index).trimmed() of a record's bytes.
QString trimmed_text(const char* record, const Field& f, int index = 0);

}  // namespace korvel::store
