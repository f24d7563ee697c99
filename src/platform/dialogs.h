#pragma once
// Every message box, question, input box and chooser of the system goes through Dialogs, so
// that behaviour runs without a display: the Qt implementation shows real dialogs, the
// scripted one answers as a test says, the unattended one serves the command line.
//
// This header uses QtCore only and sits below the store, which shows its messages through it.

#include <QDate>
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>

namespace korvel::ui {

enum class Icon { None, Information, Question, Exclamation, Critical };
enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel, RetryCancel, AbortRetryIgnore };
enum class Answer { Ok, Cancel, Yes, No, Retry, Abort, Ignore };

// A font picked in the font dialog: what the letterhead layouts keep of a font.
struct FontChoice {
    QString family;
    double point_size = 10.0;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    int colour = 0;  // 0x00BBGGRR, as the suite keeps colours
};

// The behaviour of a modal child form. The form's Qt side shows itself over it; a test plays
// the user inside it; the command line cannot show forms.
class ChildForm {
  public:
    virtual ~ChildForm() = default;
    virtual QString form_name() const = 0;
};

// The progress of a job that can take more than a second: a bar under the job's caption, with a
// cancel button where stopping the job is safe. The bar goes as the object goes.
class Progress {
  public:
    virtual ~Progress() = default;
    // The job has done `done` of its steps. False once the user asked to stop a job that can
    // stop; a job that cannot stop is never told so.
    virtual bool step(int done) = 0;
};

// A job nobody watches.
class NoProgress : public Progress {
  public:
    bool step(int) override { return true; }
};

class Dialogs {
  public:
    virtual ~Dialogs() = default;

    // A message box with one OK button.
    virtual void message(const QString& text, Icon icon = Icon::None,
                         const QString& title = {}) = 0;

    // A question; default_answer is the button that has the focus (and the unattended answer).
    virtual Answer ask(const QString& text, Buttons buttons, Icon icon, Answer default_answer,
                       const QString& title = {}) = 0;

    // An input box; nullopt on Cancel. password hides what is typed.
    virtual std::optional<QString> input(const QString& prompt, const QString& title,
                                         const QString& default_text = {},
                                         bool password = false) = 0;

    // The calendar form: a date picked, or nullopt when the form is closed without one.
    virtual std::optional<QDate> pick_date(const QString& caption, const QDate& start) = 0;

    // A folder picked in the system's folder dialog, opened at start; blank on cancel.
    virtual QString choose_folder(const QString& caption, const QString& start) = 0;

    // A file to open or to save; blank on cancel.
    virtual QString choose_file(const QString& caption, const QString& start, const QString& filter,
                                bool for_saving) = 0;

    // The system's short warning sound.
    virtual void beep() = 0;

    // The font dialog, opened on start; nullopt on cancel.
    virtual std::optional<FontChoice> choose_font(const FontChoice& start) = 0;

    // Shows a child form modally over its behaviour and returns when it closes.
    virtual void show_modal(ChildForm& form) = 0;

    // A progress bar for a job of `total` steps; can_stop offers a cancel. Nothing shows for a
    // job that is over within a second.
    virtual std::unique_ptr<Progress> progress(const QString& caption, int total, bool can_stop) {
        (void)caption;
        (void)total;
        (void)can_stop;
        return std::make_unique<NoProgress>();
    }
};

}  // namespace korvel::ui
