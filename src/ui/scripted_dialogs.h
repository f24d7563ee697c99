#pragma once
// Dialogs for tests: answers are queued in advance and every text shown is recorded, so a test
// can drive a form's behaviour as a user would and read back what the user would have seen.

#include <QElapsedTimer>
#include <QList>
#include <cstdio>
#include <deque>
#include <functional>
#include <map>

#include "platform/dialogs.h"

namespace korvel::ui {

struct Shown {
    enum class Kind { Message, Question, Input, Date, Folder, File, Beep, Font, Form };
    Kind kind;
    QString text;
    QString title;
    Icon icon = Icon::None;
};

class ScriptedDialogs : public Dialogs {
  public:
    // Queue answers; each kind has its own queue. An empty queue gives the default answer of a
    // question, Cancel of an input box, no date, no folder, no file.
    void answer(Answer a) { answers_.push_back(a); }
    void type(std::optional<QString> text) {
        inputs_.emplace_back(text.has_value(), text.value_or(QString()));
    }
    void pick(std::optional<QDate> date) { dates_.push_back(date); }
    void choose(QString path) { paths_.push_back(std::move(path)); }
    void pick_font(std::optional<FontChoice> font) { fonts_.push_back(std::move(font)); }
    // What the user does inside a child form of that name when it shows.
    void on_form(const QString& form_name, std::function<void(ChildForm&)> play) {
        forms_[form_name] = std::move(play);
    }
    // The user presses cancel on a progress bar once the job reaches that step (jobs that can
    // stop only).
    void stop_at_step(int step) { stop_at_step_ = step; }
    // The captions of the progress bars shown, in order (apart from the texts shown).
    const QStringList& progress_shown() const { return progress_shown_; }

    void message(const QString& text, Icon icon, const QString& title) override;
    Answer ask(const QString& text, Buttons buttons, Icon icon, Answer default_answer,
               const QString& title) override;
    std::optional<QString> input(const QString& prompt, const QString& title,
                                 const QString& default_text, bool password) override;
    std::optional<QDate> pick_date(const QString& caption, const QDate& start) override;
    QString choose_folder(const QString& caption, const QString& start) override;
    QString choose_file(const QString& caption, const QString& start, const QString& filter,
                        bool for_saving) override;
    void beep() override;
    std::optional<FontChoice> choose_font(const FontChoice& start) override;
    void show_modal(ChildForm& form) override;
    std::unique_ptr<Progress> progress(const QString& caption, int total, bool can_stop) override;

    const QList<Shown>& shown() const { return shown_; }
    // The names of the child forms shown, in order.
    QStringList forms_shown() const;
    // The texts of the message boxes and questions, in order.
    QStringList texts() const;
    // The last text shown, blank if none.
    QString last_text() const { return shown_.isEmpty() ? QString() : shown_.last().text; }
    void clear() { shown_.clear(); }

  private:
    QList<Shown> shown_;
    std::deque<Answer> answers_;
    std::deque<std::pair<bool, QString>> inputs_;  // typed (false: Cancel), text
    std::deque<std::optional<QDate>> dates_;
    std::deque<QString> paths_;
    std::deque<std::optional<FontChoice>> fonts_;
    std::map<QString, std::function<void(ChildForm&)>> forms_;
    int stop_at_step_ = -1;
    QStringList progress_shown_;
};

// Progress on a terminal: one line "caption  45%" rewritten in place, shown once the job has
// run for `delay_ms`, and ended with a line feed.
class TerminalProgress : public Progress {
  public:
    TerminalProgress(std::FILE* out, QString caption, int total, int delay_ms = 1000);
    ~TerminalProgress() override;
    bool step(int done) override;

  private:
    std::FILE* out_;
    QString caption_;
    int total_;
    int delay_ms_;
    int shown_percent_ = -1;
    QElapsedTimer clock_;
};

// Dialogs for the command line: texts go to standard error, questions take their default
// answer, input boxes and choosers are cancelled.
class UnattendedDialogs : public Dialogs {
  public:
    void message(const QString& text, Icon icon, const QString& title) override;
    Answer ask(const QString& text, Buttons buttons, Icon icon, Answer default_answer,
               const QString& title) override;
    std::optional<QString> input(const QString& prompt, const QString& title,
                                 const QString& default_text, bool password) override;
    std::optional<QDate> pick_date(const QString& caption, const QDate& start) override;
    QString choose_folder(const QString& caption, const QString& start) override;
    QString choose_file(const QString& caption, const QString& start, const QString& filter,
                        bool for_saving) override;
    void beep() override {}
    std::optional<FontChoice> choose_font(const FontChoice&) override { return std::nullopt; }
    void show_modal(ChildForm& form) override;
    // On a terminal the job's progress goes to standard error; otherwise nothing shows.
    std::unique_ptr<Progress> progress(const QString& caption, int total, bool can_stop) override;
};

}  // namespace korvel::ui
