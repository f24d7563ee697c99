#pragma once
// Dialogs for tests: answers are queued in advance and every text shown is recorded, so a test
// can drive a form's behaviour as a user would and read back what the user would have seen.

#include <QList>
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
};

}  // namespace korvel::ui
