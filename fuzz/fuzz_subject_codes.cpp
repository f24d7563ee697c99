// Arbitrary bytes through the reader of the subject code list. Reading must end; no row has a
// blank code or a quote; there are no more rows than lines; every code is found by its name
// look-up, at its first row.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "staff/subject_codes.h"

using korvel::staff::parse_subject_codes;
using korvel::staff::SubjectCode;
using korvel::staff::SubjectCodes;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    std::vector<SubjectCode> rows = parse_subject_codes(bytes);
    if (rows.size() > static_cast<std::size_t>(bytes.count('\n')) + 1) {
        std::abort();
    }
    for (const SubjectCode& r : rows) {
        if (r.code.isEmpty() || r.code.contains(u'"') || r.english.contains(u'?')) {
            std::abort();
        }
    }
    const SubjectCodes codes(rows);
    for (const SubjectCode& r : codes.rows()) {
        const SubjectCode* first = codes.find(r.code);
        if (first == nullptr || first->code != r.code || first > &r) {
            std::abort();
        }
    }
    return 0;
}
