#pragma once
// dBASE III tables as the suite's older versions kept them, written for the demo tree: a
// header with the columns, the rows in Windows-1252, the end-of-file mark.

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <vector>

namespace korvel::shell {

struct DbfColumn {
    QString name;  // at most ten characters
    char type;     // 'C' text, 'N' number, 'L' logical, 'D' date (YYYYMMDD)
    int width;
};

// The table's bytes; each row holds one text a column, written as it stands, left-justified
// for text and right-justified for numbers, cut to the column's width.
QByteArray dbf_table(const std::vector<DbfColumn>& columns, const std::vector<QStringList>& rows);

}  // namespace korvel::shell
