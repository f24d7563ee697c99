#pragma once
// The remarks of a person: two rich texts kept beside the staff files, in the folder
// "opmerkings" of the staff data folder. A left click on the remarks button opens the public
// text, a right click the private one after the system password. The text frame teks_raam
// shows and edits the text; saving writes the file whole.
//
// Nothing here knows the staff entry form: the governing body forms keep their remarks in the
// same folder and open them the same way.

#include <QString>
#include <optional>

#include "platform/dialogs.h"
#include "shell/rich_text.h"
#include "shell/session.h"

namespace korvel::staff {

// The behaviour of the text frame over one remarks file.
class RemarksFrame : public ui::ChildForm {
  public:
    RemarksFrame(shell::Session& session, QString path, QString caption);
    QString form_name() const override { return QStringLiteral("teks_raam"); }

    // ---- the frame's values ----
    QString caption;
    QString path;  // Windows form
    shell::RichText text;
    bool visible = false;

    // ---- events ----
    // Reads the file, or starts an empty text when there is none. False (after a message) when
    // a file that is there cannot be read: the frame then does not open, so that saving can
    // never put an empty text over one that only failed to load.
    bool form_load();
    // Writes the text to the file and hides the frame. When the file cannot be written the
    // message says so, the old file stays as it was and the frame stays open.
    void teks_ok_click();
    void teks_exit_click() { visible = false; }
    // rtf_font: the font dialog on the format at the caret; the font chosen, or nullopt.
    std::optional<ui::FontChoice> rtf_font_click(const ui::FontChoice& current);
    // What teks_datum inserts at the caret: today in the dot form.
    QString date_text() const;

    // The characters the picker offers: Windows-1252 from 32 to 255, without the bytes that
    // have no printable character.
    static QString picker_characters();

  private:
    shell::Session& session_;
};

// The folder of the remarks files, Windows form.
QString remarks_folder(const shell::Session& session);

// A click on the remarks button for the post number: a left click opens the public text, a
// right click the private one after the system password. A post number that cannot be part of
// a file name opens nothing and says why.
void opmerkings_click(shell::Session& session, const QString& post, bool right_button);

// Opens a person's public remarks file (left click) or, after the system password, the private
// one (right click), both named in the remarks folder; whose names the person in the caption.
// The names must be safe file names.
void open_remarks(shell::Session& session, const QString& public_name, const QString& private_name,
                  const QString& whose, bool right_button);

}  // namespace korvel::staff
