#pragma once
// Reading a workbook a user hands the program: the first worksheet of an Excel workbook, cell by
// cell. Old workbooks (.xls) are read through FreeXL, new ones (.xlsx) by unzipping them and
// reading their XML. Which one a file is comes from its first bytes, not its name, so an .xlsx
// named .xls still opens. Nothing in the file is trusted: sizes are capped, and a file that is
// no workbook, is cut short or is encrypted opens with a reason instead.

#include <QByteArray>
#include <QHash>
#include <QString>
#include <memory>

namespace korvel::reports {

struct WorkbookCell {
    enum class Kind { Empty, Text, Number, Date };
    Kind kind = Kind::Empty;
    QString text;       // Text
    double number = 0;  // Number; for a Date the day serial (days since 1899-12-30)

    // The cell as text: a number as its digits, with no exponent and no ".0", so that a
    // 13-digit identity number survives; a date as its serial.
    QString as_text() const;
};

class WorkbookReader {
  public:
    // The largest part of a workbook that is read; past it the workbook is refused.
    static constexpr qint64 kMaxPartBytes = 64LL * 1024 * 1024;
    static constexpr int kMaxRows = 65536;
    static constexpr int kMaxColumns = 256;

    virtual ~WorkbookReader() = default;
    // Opens the workbook and selects its first worksheet. False, with why set, when it cannot.
    virtual bool open(const QString& native_path, QString* why) = 0;
    // Row and column from 1; an empty cell outside the sheet.
    WorkbookCell cell(int row, int column) const { return cells_.value(key(row, column)); }
    int rows() const { return rows_; }
    virtual void close() { cells_.clear(); }

  protected:
    static quint64 key(int row, int column) {
        return (static_cast<quint64>(row) << 16) | static_cast<quint64>(column);
    }
    void put(int row, int column, WorkbookCell c);
    QHash<quint64, WorkbookCell> cells_;
    int rows_ = 0;
};

// A reader for the workbook in the file, by its first bytes; nullptr, with why set, when the
// file is no workbook of either kind.
std::unique_ptr<WorkbookReader> open_workbook(const QString& native_path, QString* why);

// The .xlsx reader over bytes in memory (for the fuzz target and the file reader alike).
bool read_xlsx_bytes(const QByteArray& bytes, QHash<quint64, WorkbookCell>& cells, int& rows,
                     QString* why);

}  // namespace korvel::reports
