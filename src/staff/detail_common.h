#pragma once
// What the detail forms of a staff member share: typing in their boxes, their pop-up lists, and
// writing the master record they edit.

#include <QString>
#include <QStringList>

#include "shell/session.h"
#include "store/record.h"

namespace korvel::staff {

// What a key typed in a box does: the key that goes on into the box (0: dropped), and whether
// the focus moves on to the next box.
struct TypedKey {
    int key_ascii = 0;
    bool next_box = false;
};
// Enter moves on and is dropped; with capitals, "a" to "z" become "A" to "Z" (accented letters
// stay as they are).
TypedKey typed_key(int key_ascii, bool capitals);

// Puts the edited copy of the master record in memory and writes it at the current record
// number. When the write fails the user is told, the record in memory goes back to what it was
// and false is returned.
bool write_master_record(shell::Session& session, const store::Record& edited);

// A pop-up list of a form: its rows in the current language, the selected row (-1 for none)
// and whether it stands in front of its box.
struct PopupList {
    QStringList rows;
    int list_index = -1;
    bool visible = false;
};

}  // namespace korvel::staff
