#pragma once
// The cells of the first sheet of a workbook, read by openpyxl: one line a row, the cells
// joined by "|" (an empty cell as "-").

#include <QProcess>
#include <QStringList>

namespace korvel::testing {

inline QStringList workbook_rows(const QString& path) {
    QProcess python;  // the system's, which has openpyxl
    python.start(
        "/usr/bin/python3",
        {"-c",
         "import sys, openpyxl\n"
         "for row in openpyxl.load_workbook(sys.argv[1]).active.iter_rows(values_only=True):\n"
         "    print('|'.join('-' if v is None else str(v) for v in row))\n",
         path});
    python.waitForFinished(60000);
    return QString::fromUtf8(python.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
}

}  // namespace korvel::testing
