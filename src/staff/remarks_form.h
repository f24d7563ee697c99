#pragma once
// The Qt side of the text frame teks_raam: a text editor with the formatting buttons over the
// RemarksFrame behaviour, and the conversion between the remarks' rich text and a
// QTextDocument.

#include <QDialog>
#include <QTextDocument>
#include <QTextEdit>

#include "shell/rich_text.h"
#include "staff/remarks.h"
#include "ui/qt_dialogs.h"

namespace korvel::staff {

// Fills the document with the text; runs without a family or size take the document's font.
void fill_document(QTextDocument& document, const shell::RichText& text);
// The document as rich text, every run with its font written out.
shell::RichText rich_text_of(const QTextDocument& document);

class RemarksDialog : public QDialog {
  public:
    explicit RemarksDialog(RemarksFrame& frame, QWidget* parent = nullptr);
    QTextEdit* editor() const { return teks_; }

    // Closing the window is teks_exit: nothing is saved.
    void reject() override;

  private:
    void toggle_bold();
    void toggle_italic();
    void toggle_underline();
    void choose_font();
    void toggle_bullet();
    void pick_character();
    void save();

    RemarksFrame& frame_;
    QTextEdit* teks_;
};

// Registers teks_raam with the Qt dialogs.
void register_remarks_form(ui::QtDialogs& dialogs);

}  // namespace korvel::staff
