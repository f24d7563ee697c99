#pragma once
// What the detail forms of a staff member share: typing in their boxes, their pop-up lists, and
// writing the master record they edit.

#include <QString>
#include <QStringList>
#include <optional>

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

// Where a record a form read for editing stands: its file, its number and the post number it
// was read under. The working record is shared by every open form, and a child form (the
// attendance register's month scan, for one) may leave another person in it; a form that writes
// a record it read earlier reads it again by this key first.
struct HeldRecord {
    store::Code code = store::Code::PRSALG;
    int number = 0;
    QString post;
};
// The key of the record now in the working record of a file (PRSALG or PRSADD).
HeldRecord hold_working_record(shell::Session& session, store::Code code);
// Reads the held record again into the working record: at its number while that record still
// holds the post number, otherwise the first record that does (a blank post number is only
// looked for at its number). False when no record holds it any more.
bool read_held_record(shell::Session& session, HeldRecord& held);

// The held record read again, for a form to take its edit from. nullopt, the user told, when no
// record holds its key any more.
std::optional<store::Record> read_held_for_edit(shell::Session& session, HeldRecord& held);
// Writes the edited copy of a held record over that record, found again by its key, and lets the
// key follow a changed post number. When the write fails the user is told, the record in memory
// goes back to what it was and false is returned.
bool write_held_record(shell::Session& session, const store::Record& edited, HeldRecord& held);
// The message of a record file that cannot be written: "KAN NIE  <path>  SKRYF NIE!".
void cannot_write_message(shell::Session& session, store::Code code);

// A pop-up list of a form: its rows in the current language, the selected row (-1 for none)
// and whether it stands in front of its box.
struct PopupList {
    QStringList rows;
    int list_index = -1;
    bool visible = false;
};

}  // namespace korvel::staff
