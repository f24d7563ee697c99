#pragma once
// The dBASE tables the school files grew from are converted into record files when their code
// is opened and the record file is not there yet. One routine serves every table: the columns
// are matched by name to the fields of the target's field table, so a table converts whatever
// the order of its columns. The record file is written beside and put in place whole; only
// then is the table moved to the folder's "save", from where undoing the conversion brings it
// back for the next open to convert again.

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>

#include "platform/dialogs.h"
#include "platform/file_system.h"
#include "store/record.h"

namespace korvel::store {

// What reading a table came to.
struct DbfRead {
    bool is_table = false;  // false: the bytes are no dBASE table at all
    int rows = 0;           // rows handed on
    int deleted = 0;        // rows marked deleted, passed over
    int missing = 0;        // rows the header claims that the file does not hold
    int unreadable = 0;     // cells that should hold a number or date and do not
};

// Reads the rows of a table into records of layout, one after the other, until each returns
// false. Columns are matched by name without regard to case; an array field takes the columns
// named by its name, an optional "_" and the slot number. Text is read in the table's code
// page (Windows-1252 when the table names none) and passed through clean_field; numbers and
// dates are read from their text, logical columns as true (-1) or false (0). Memo columns and
// columns no field takes are passed over.
DbfRead read_dbf_table(const QByteArray& table, const Layout& layout,
                       const std::function<bool(const Record&)>& each);

// The bar a conversion of so many rows shows its progress on; empty when nobody watches.
using ImportProgress = std::function<std::unique_ptr<ui::Progress>(int rows)>;

// The table of a code's file in folder converted, when the file is not there and the table
// is. networklock.txt in workstation_folder says whether the conversion keeps other
// workstations out of the folder meanwhile. Returns what converted, in words (blank when
// nothing did).
QString import_dbf_on_open(const platform::FileSystem& fs, const QString& code_name,
                           const QString& folder, const QString& workstation_folder,
                           const ImportProgress& progress = {});

}  // namespace korvel::store
