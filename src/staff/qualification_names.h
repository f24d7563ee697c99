#pragma once
// The standard qualification names a staff record refers to by number, and the one way a
// qualification slot of a person reads as a name: the qualifications form and the
// qualification list show the same text for the same bytes.

#include <QChar>
#include <QString>
#include <QStringList>
#include <span>

#include "store/record.h"

namespace korvel::staff {

// The three qualification lists, in English in both languages.
enum class QualificationList { prof = 0, akad = 1, detail = 2 };
const QStringList& qualification_rows(QualificationList list);

// Each type of qualification: its letter in PK_GRDE, its list, the array of PRSADD that holds
// its list positions, its word.
struct QualificationType {
    QChar letter;
    QualificationList list;
    const store::Field* positions;
    const char* af;
    const char* en;
};
std::span<const QualificationType> qualification_types();
// The type whose letter starts the text; nullptr when none.
const QualificationType* qualification_type_of(const QString& text);
// The type of a letter; nullptr when none.
const QualificationType* qualification_type_of(QChar letter);

// The name of qualification slot `slot` (1 to 8) of the master record, with the person's
// additional record: a type letter takes the name at its list position; a longer text is a
// qualification of an older version and stands as it is; a position of 0, 65535 or past the
// list, or a blank slot, gives no name.
QString qualification_name(const store::Record& master, const store::Record& additional, int slot);
// The same on the records' bytes; additional is nullptr for a person without one, whose
// positions all read 0.
QString qualification_name(const char* master, const char* additional, int slot);

}  // namespace korvel::staff
