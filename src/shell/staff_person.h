#pragma once
// What every staff form asks of a master record: is the person an educator, and the heading
// that names the person at the top of a detail form.

#include <QString>
#include <QVarLengthArray>

#include "store/record.h"

namespace korvel::shell {

// The population test: employees are the classes "PSS", "PS" and "ADMIN" (the trimmed class,
// whole words); everybody else, a blank class and "ADMX" included, is an educator.
bool is_educator(const store::Record& staff);
// The same test on a master record's bytes.
bool is_educator(const char* staff);

// The name the lists show, from a master record's bytes: surname, initials and title, each
// trimmed, separated by single blanks. Only these three fields are decoded.
QString list_name(const char* staff);

// initials() of a master record's names, from its bytes; or put in a buffer.
QString record_initials(const char* staff);
void record_initials_into(const char* staff, QVarLengthArray<QChar, 64>& out);

// Post number, title, initials and surname, each trimmed, separated by single blanks.
QString staff_heading(const store::Record& staff);

}  // namespace korvel::shell
