#pragma once
// The dialogs of the desktop program: real Qt message boxes, input boxes, the calendar form and
// the system's folder, file and font choosers.
//
// Paths: the rest of the system keeps paths in the suite's Windows form ("F:\VESPARINE\ADMIN").
// The choosers here take their start folder as a native path and return a native path (with the
// platform's own separators), or blank on cancel; turning the system's paths into native ones
// and back is left to the caller, through the drive map of the platform layer.

#include <QFont>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>
#include <optional>

#include "platform/dialogs.h"

namespace korvel::ui {

// The caption of a message box or input box whose title is blank.
inline constexpr const char* default_caption = "KORVEL";

class QtDialogs : public Dialogs {
  public:
    // Every dialog is shown over parent (may be null: centred on the screen). The parent may be
    // destroyed before this object; the dialogs then have none.
    explicit QtDialogs(QWidget* parent = nullptr) : parent_(parent) {}

    void set_parent(QWidget* parent) { parent_ = parent; }
    QWidget* parent() const { return parent_; }
    // The window a dialog or child form opens over: the modal form in front (the form that
    // asked), else the active window, else the parent.
    QWidget* opener() const;

    // A message box with one OK button and the given icon. The text is shown as plain text,
    // never as rich text.
    void message(const QString& text, Icon icon = Icon::None, const QString& title = {}) override;

    // A message box with the buttons asked for. default_answer is the button that has the focus
    // (Enter takes it); when it is not one of the buttons, the first button is the default.
    // Escape answers Cancel where there is a Cancel button, No on Yes/No and Abort on
    // Abort/Retry/Ignore.
    Answer ask(const QString& text, Buttons buttons, Icon icon, Answer default_answer,
               const QString& title = {}) override;

    // An input box with the default text selected; nullopt on Cancel, an empty text on OK with
    // nothing typed.
    std::optional<QString> input(const QString& prompt, const QString& title,
                                 const QString& default_text = {}, bool password = false) override;

    // The calendar form sk0_calendar (see calendar_form.h).
    std::optional<QDate> pick_date(const QString& caption, const QDate& start) override;

    // The platform's folder chooser, opened at the native folder start; a native path or blank.
    QString choose_folder(const QString& caption, const QString& start) override;

    // The platform's file chooser for opening or for saving; a native path or blank. See
    // qt_file_filter for the filter.
    QString choose_file(const QString& caption, const QString& start, const QString& filter,
                        bool for_saving) override;

    void beep() override;
    std::optional<FontChoice> choose_font(const FontChoice& start) override;
    // Modal child forms: each form's Qt side registers how it shows itself over its behaviour.
    using FormShower = std::function<void(ChildForm& form, QWidget* parent)>;
    void register_form(const QString& form_name, FormShower show) {
        forms_[form_name] = std::move(show);
    }
    // The child form opens over the form in front; as it closes, the focus goes back to the
    // field that opened it.
    void show_modal(ChildForm& form) override;
    // A progress dialog over the form in front, modal, shown once the job has run a second.
    std::unique_ptr<Progress> progress(const QString& caption, int total, bool can_stop) override;

  private:
    QPointer<QWidget> parent_;
    std::map<QString, FormShower> forms_;
};

// A file filter as the Qt file dialogs want it. The system writes filters either as bare
// patterns ("*.jpg", "*.jpg;*.bmp") or as description and pattern pairs separated by bars
// ("Pictures (*.jpg)|*.jpg;*.bmp|All files|*.*"). Each pair becomes "description (patterns)",
// patterns separated by blanks, and pairs are separated by ";;". Bare patterns keep their
// patterns, blank-separated. A blank filter stays blank (every file).
QString qt_file_filter(const QString& filter);

// The font as a QFont; a size of 0 or less gives 10 points, a blank family the default family.
QFont to_qfont(const FontChoice& choice);
FontChoice to_font_choice(const QFont& font);

// The platform's font dialog, opened on start; nullopt on cancel.
std::optional<FontChoice> choose_font_qt(QWidget* parent, const FontChoice& start);

}  // namespace korvel::ui
