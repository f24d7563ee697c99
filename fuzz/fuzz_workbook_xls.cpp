// Any bytes as an .xls workbook (or, by its first bytes, an .xlsx one): opened through the
// reader the import uses, without a crash.

#include <QFile>
#include <QTemporaryDir>
#include <cstdint>
#include <cstdlib>

#include "reports/workbook_reader.h"

using namespace korvel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("sheet.xls"));
    {
        QFile f(path);
        if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
            return 0;
        }
        f.write(reinterpret_cast<const char*>(data), static_cast<qint64>(size));
    }
    QString why;
    if (const std::unique_ptr<reports::WorkbookReader> r = reports::open_workbook(path, &why)) {
        if (r->rows() > reports::WorkbookReader::kMaxRows) {
            std::abort();
        }
        for (int row = 1; row <= 20; ++row) {
            for (int column = 1; column <= 18; ++column) {
                r->cell(row, column).as_text();
            }
        }
        r->close();
    } else if (why.isEmpty()) {
        std::abort();  // a refusal always says why
    }
    return 0;
}
