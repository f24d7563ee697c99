#pragma once
// dBASE tables through shapelib, from bytes already in memory: a table is read from the disk
// in one piece and handed to shapelib through its file hooks, so that taking the rows apart
// costs no further reads, and a table cut short, claiming more than it holds or not a table
// at all is only ever a short buffer.

#include <shapefil.h>

#include <QByteArray>
#include <memory>

namespace korvel::store {

using DbfPtr = std::unique_ptr<DBFInfo, void (*)(DBFHandle)>;

// The table of bytes, opened for reading; null when the bytes are no table. The header's own
// sizes are checked first, so that shapelib never sizes a buffer by a header the bytes cannot
// back. bytes must outlive the handle.
DbfPtr open_dbf_in_memory(const QByteArray& bytes);

}  // namespace korvel::store
