#pragma once
// The dump of a record file: every record, every field by its name in the table's order.

#include <QTextStream>

#include "store/layout.h"
#include "store/record_file.h"

namespace korvel::app {

enum class DumpFormat { Csv, Json };

// Writes every record of the file; the file is only read.
void dump_records(store::RecordFile& file, const store::Layout& layout, DumpFormat format,
                  QTextStream& out);

// The column names of a layout: single fields by name, array slots as NAME(i), the slots of a
// two-dimensional array as NAME(i,j).
QStringList dump_columns(const store::Layout& layout);

}  // namespace korvel::app
