#include "shell/dbf_table_writer.h"

#include "platform/codepage.h"

namespace korvel::shell {

namespace {

void put16(QByteArray& b, int at, int value) {
    b[at] = char(value & 0xFF);
    b[at + 1] = char((value >> 8) & 0xFF);
}

}  // namespace

QByteArray dbf_table(const std::vector<DbfColumn>& columns, const std::vector<QStringList>& rows) {
    constexpr int kHeader = 32;
    int row_length = 1;  // the deletion mark
    for (const DbfColumn& c : columns) {
        row_length += c.width;
    }
    QByteArray b(kHeader, '\0');
    b[0] = char(0x03);  // dBASE III without memo
    b[1] = char(114);   // last written 2014-11-28
    b[2] = char(11);
    b[3] = char(28);
    const auto count = static_cast<quint32>(rows.size());
    for (int i = 0; i < 4; ++i) {
        b[4 + i] = char((count >> (8 * i)) & 0xFF);
    }
    put16(b, 8, kHeader + kHeader * int(columns.size()) + 1);
    put16(b, 10, row_length);
    b[29] = char(0x03);  // Windows ANSI
    for (const DbfColumn& c : columns) {
        QByteArray d(kHeader, '\0');
        const QByteArray name = c.name.toLatin1().left(10);
        d.replace(0, name.size(), name);
        d[11] = c.type;
        d[16] = char(c.width);
        b += d;
    }
    b += char(0x0D);
    for (const QStringList& row : rows) {
        b += ' ';
        for (std::size_t i = 0; i < columns.size(); ++i) {
            const DbfColumn& c = columns[i];
            QByteArray cell =
                cp1252::encode(i < std::size_t(row.size()) ? row[qsizetype(i)] : QString())
                    .left(c.width);
            const QByteArray pad(c.width - cell.size(), ' ');
            b += c.type == 'N' ? pad + cell : cell + pad;
        }
    }
    b += char(0x1A);
    return b;
}

}  // namespace korvel::shell
