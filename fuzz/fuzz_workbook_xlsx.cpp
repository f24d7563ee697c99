// Any bytes as an .xlsx workbook: read without a crash, every cell inside the sheet's limits.

#include <cstdint>
#include <cstdlib>

#include "reports/workbook_reader.h"

using namespace korvel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QHash<quint64, reports::WorkbookCell> cells;
    int rows = 0;
    QString why;
    reports::read_xlsx_bytes(
        QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)), cells, rows,
        &why);
    if (rows > reports::WorkbookReader::kMaxRows) {
        std::abort();
    }
    for (const reports::WorkbookCell& c : cells) {
        c.as_text();
    }
    return 0;
}
