#pragma once
// The school record of the ledger year and what the program keeps of it.

#include <QStringList>

#include "shell/session.h"

namespace korvel::shell {

// The nine items of the province list: the code in the first two characters, the name from the
// sixth.
QStringList province_list();

// Opens the school file in the school folder, reads record 1 and fills the school globals.
// Returns false, changing nothing, when the file cannot be opened.
bool load_school_record(Session& session);

// An old province digit in the record's old province text sets the two-letter code, and the
// record is written back; then the code is looked up in the province list.
void fix_province(Session& session);

// The initials of a school name: the first letter of each word, at most five, upper case.
QString school_initials(const QString& name);

// The school badge: SKOOLWAPEN.JPG or .BMP of the general year folder; else the admin folder's
// BMP_SKN1.BMP copied in as SKOOLWAPEN.BMP; else last year's SKOOLWAPEN.JPG copied in. The
// provincial badge is <province code>_OD with either ending. Sets the session's badge files.
void find_school_pictures(Session& session);

}  // namespace korvel::shell
