// Arbitrary bytes as a dBASE table, read into the records of the school and the class period
// layouts. Reading must end, hand on no more rows than the bytes can hold, and never count a
// row twice.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "store/dbf_import.h"
#include "store/record_layouts.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    for (const korvel::store::Layout* layout : {&korvel::store::SKL, &korvel::store::SBP2018}) {
        int seen = 0;
        const korvel::store::DbfRead read =
            korvel::store::read_dbf_table(bytes, *layout, [&](const korvel::store::Record& r) {
                seen += r.size() == layout->record_length ? 1 : 1000000;
                return true;
            });
        if (seen != read.rows || (read.rows + read.deleted) > int(size) ||
            (!read.is_table && read.rows != 0)) {
            std::abort();
        }
    }
    return 0;
}
