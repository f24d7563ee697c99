// Arbitrary bytes as the learner tables of a grade. The input is cut in three at the first two
// bytes 0xFF 0xFE: ppl_cmp, PI3 and VAKDTA. Reading must end, and every cell of every row must
// lie inside what was read.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "staff/learner_subjects.h"

using korvel::staff::GradeSubjects;
using korvel::staff::SubjectCell;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    QByteArray parts[3];
    qsizetype from = 0;
    for (int i = 0; i < 2; ++i) {
        const qsizetype at = bytes.indexOf("\xFF\xFE", from);
        if (at < 0) {
            break;
        }
        parts[i] = bytes.mid(from, at - from);
        from = at + 2;
    }
    parts[2] = bytes.mid(from);
    const GradeSubjects g = korvel::staff::read_grade_tables(parts[0], parts[1], parts[2]);
    if (g.class_numbers.size() > static_cast<std::size_t>(parts[0].size())) {
        std::abort();  // a learner takes at least one byte
    }
    std::size_t seen = 0;
    for (int row = 0; row <= g.class_rows() + 1; ++row) {
        for (int c = -1; c <= korvel::staff::kSubjectCells; ++c) {
            const SubjectCell cell = g.cell(row, c);
            seen += cell.subject.size() + cell.teacher.size();
            for (const char ch : cell.subject) {
                seen += static_cast<unsigned char>(ch) & 1U;
            }
        }
    }
    return seen == static_cast<std::size_t>(-1) ? 1 : 0;
}
