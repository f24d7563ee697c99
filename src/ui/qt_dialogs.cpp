#include "ui/qt_dialogs.h"

#include <QAbstractButton>
#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFontDialog>
#include <QGridLayout>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QRegularExpression>
#include <utility>

#include "ui/calendar_form.h"

namespace korvel::ui {

namespace {

QString caption_or_default(const QString& title) {
    return title.trimmed().isEmpty() ? QString::fromLatin1(default_caption) : title;
}

QMessageBox::Icon qt_icon(Icon icon) {
    switch (icon) {
        case Icon::Information:
            return QMessageBox::Information;
        case Icon::Question:
            return QMessageBox::Question;
        case Icon::Exclamation:
            return QMessageBox::Warning;
        case Icon::Critical:
            return QMessageBox::Critical;
        case Icon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

constexpr std::pair<Answer, QMessageBox::StandardButton> qt_buttons[] = {
    {Answer::Ok, QMessageBox::Ok},         {Answer::Cancel, QMessageBox::Cancel},
    {Answer::Yes, QMessageBox::Yes},       {Answer::No, QMessageBox::No},
    {Answer::Retry, QMessageBox::Retry},   {Answer::Abort, QMessageBox::Abort},
    {Answer::Ignore, QMessageBox::Ignore},
};

QMessageBox::StandardButton qt_button(Answer a) {
    for (const auto& [answer, button] : qt_buttons) {
        if (answer == a) {
            return button;
        }
    }
    return QMessageBox::NoButton;
}

std::optional<Answer> answer_of(QMessageBox::StandardButton b) {
    for (const auto& [answer, button] : qt_buttons) {
        if (button == b) {
            return answer;
        }
    }
    return std::nullopt;
}

// The answers of a set of buttons, first button first.
QList<Answer> answers_of(Buttons buttons) {
    switch (buttons) {
        case Buttons::Ok:
            return {Answer::Ok};
        case Buttons::OkCancel:
            return {Answer::Ok, Answer::Cancel};
        case Buttons::YesNo:
            return {Answer::Yes, Answer::No};
        case Buttons::YesNoCancel:
            return {Answer::Yes, Answer::No, Answer::Cancel};
        case Buttons::RetryCancel:
            return {Answer::Retry, Answer::Cancel};
        case Buttons::AbortRetryIgnore:
            return {Answer::Abort, Answer::Retry, Answer::Ignore};
    }
    return {Answer::Ok};
}

// What Escape and the close button answer: Cancel where there is one, else No, else the first.
Answer escape_answer(const QList<Answer>& answers) {
    for (Answer a : {Answer::Cancel, Answer::No}) {
        if (answers.contains(a)) {
            return a;
        }
    }
    return answers.first();
}

Answer run_box(QWidget* parent, const QString& text, Buttons buttons, Icon icon,
               Answer default_answer, const QString& title) {
    QMessageBox box(parent);
    box.setWindowTitle(caption_or_default(title));
    box.setIcon(qt_icon(icon));
    // The system's texts are shown letter for letter: a "<" must never turn them into markup.
    box.setTextFormat(Qt::PlainText);
    QString shown = text;
    shown.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    box.setText(shown);

    const QList<Answer> answers = answers_of(buttons);
    QMessageBox::StandardButtons flags;
    for (Answer a : answers) {
        flags |= qt_button(a);
    }
    box.setStandardButtons(flags);
    const Answer focus = answers.contains(default_answer) ? default_answer : answers.first();
    box.setDefaultButton(qt_button(focus));
    const Answer on_escape = escape_answer(answers);
    box.setEscapeButton(box.button(qt_button(on_escape)));

    box.exec();
    if (QAbstractButton* clicked = box.clickedButton()) {
        if (auto a = answer_of(box.standardButton(clicked))) {
            return *a;
        }
    }
    return on_escape;
}

// A filter's patterns, blank-separated: "*.jpg;*.bmp" -> "*.jpg *.bmp".
QString patterns_of(const QString& text) {
    static const QRegularExpression separators(QStringLiteral("[;\\s]+"));
    return text.split(separators, Qt::SkipEmptyParts).join(QLatin1Char(' '));
}

}  // namespace

QWidget* QtDialogs::opener() const {
    if (QWidget* modal = QApplication::activeModalWidget()) {
        return modal;
    }
    if (QWidget* active = QApplication::activeWindow()) {
        return active;
    }
    return parent_;
}

namespace {

// Gives the focus back, as a box or child form closes, to the field that had it when it opened.
class FocusReturn {
  public:
    FocusReturn() : field_(QApplication::focusWidget()) {}
    ~FocusReturn() {
        QWidget* front = QApplication::activeModalWidget();
        if (field_ && field_->isVisible() && (front == nullptr || front == field_->window())) {
            field_->setFocus(Qt::OtherFocusReason);
        }
    }
    FocusReturn(const FocusReturn&) = delete;
    FocusReturn& operator=(const FocusReturn&) = delete;

  private:
    QPointer<QWidget> field_;
};

// A job that cannot stop keeps its bar up through Escape and the close box.
class Unstoppable : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() == QEvent::Close) {
            e->ignore();
            return true;
        }
        return e->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(e)->key() == Qt::Key_Escape;
    }
};

// A job of `total` steps fills the bar; a job that cannot know its length (total 0, a print
// run counting its pages) shows a running bar with its count under the caption.
class DialogProgress : public Progress {
  public:
    DialogProgress(QWidget* parent, const QString& caption, int total, bool can_stop)
        // Without a text the dialog has no cancel button; one that cannot stop loses it below.
        : dialog_(caption, QStringLiteral("KANSELLEER / CANCEL"), 0, std::max(total, 0), parent),
          caption_(caption),
          counting_(total <= 0),
          can_stop_(can_stop) {
        dialog_.setWindowTitle(QString::fromLatin1(default_caption));
        dialog_.setWindowModality(Qt::ApplicationModal);
        dialog_.setMinimumDuration(1000);
        dialog_.setAutoReset(false);
        if (!can_stop) {
            dialog_.setCancelButton(nullptr);
            dialog_.installEventFilter(new Unstoppable(&dialog_));
        }
        dialog_.setValue(0);
        clock_.start();
    }
    bool step(int done) override {
        if (counting_) {
            // The dialog's own timing needs a share done; a count shows after the same second.
            dialog_.setLabelText(caption_ + QStringLiteral("\n") + QString::number(done));
            if (!dialog_.isVisible() && clock_.elapsed() >= dialog_.minimumDuration()) {
                dialog_.show();
            }
            if (dialog_.isVisible()) {
                QCoreApplication::processEvents();
            }
        } else {
            dialog_.setValue(std::clamp(done, 0, dialog_.maximum()));
        }
        return !(can_stop_ && dialog_.wasCanceled());
    }

  private:
    QProgressDialog dialog_;
    QString caption_;
    QElapsedTimer clock_;
    bool counting_;
    bool can_stop_;
};

}  // namespace

std::unique_ptr<Progress> QtDialogs::progress(const QString& caption, int total, bool can_stop) {
    return std::make_unique<DialogProgress>(opener(), caption, total, can_stop);
}

void QtDialogs::message(const QString& text, Icon icon, const QString& title) {
    const FocusReturn back;
    run_box(opener(), text, Buttons::Ok, icon, Answer::Ok, title);
}

Answer QtDialogs::ask(const QString& text, Buttons buttons, Icon icon, Answer default_answer,
                      const QString& title) {
    const FocusReturn back;
    return run_box(opener(), text, buttons, icon, default_answer, title);
}

std::optional<QString> QtDialogs::input(const QString& prompt, const QString& title,
                                        const QString& default_text, bool password) {
    const FocusReturn back;
    QInputDialog dlg(opener());
    dlg.setInputMode(QInputDialog::TextInput);
    dlg.setWindowTitle(caption_or_default(title));
    dlg.setLabelText(prompt);
    dlg.setTextEchoMode(password ? QLineEdit::Password : QLineEdit::Normal);
    // The line edit gets the focus as the box opens, which selects the offered text: typing
    // replaces it, as in the platform's own input box.
    dlg.setTextValue(default_text);
    if (dlg.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    return dlg.textValue();
}

std::optional<QDate> QtDialogs::pick_date(const QString& caption, const QDate& start) {
    const FocusReturn back;
    return CalendarForm::pick(opener(), caption, start);
}

QString QtDialogs::choose_folder(const QString& caption, const QString& start) {
    const QString dir =
        QFileDialog::getExistingDirectory(opener(), caption, start, QFileDialog::ShowDirsOnly);
    return dir.isEmpty() ? QString() : QDir::toNativeSeparators(dir);
}

QString QtDialogs::choose_file(const QString& caption, const QString& start, const QString& filter,
                               bool for_saving) {
    const QString qt_filter = qt_file_filter(filter);
    const QString file = for_saving
                             ? QFileDialog::getSaveFileName(opener(), caption, start, qt_filter)
                             : QFileDialog::getOpenFileName(opener(), caption, start, qt_filter);
    return file.isEmpty() ? QString() : QDir::toNativeSeparators(file);
}

void QtDialogs::beep() {
    QApplication::beep();
}

QString qt_file_filter(const QString& filter) {
    const QString f = filter.trimmed();
    if (f.isEmpty()) {
        return {};
    }
    if (!f.contains(QLatin1Char('|'))) {
        return patterns_of(f);
    }
    // A description that ends in its own pattern list, "Pictures (*.jpg)", loses that list: the
    // dialog reads the patterns from the last brackets, and those are the pair's patterns.
    static const QRegularExpression own_patterns(QStringLiteral("\\s*\\([^()]*[*?][^()]*\\)$"));
    const QStringList parts = f.split(QLatin1Char('|'));
    QStringList out;
    for (qsizetype i = 0; i < parts.size(); i += 2) {
        if (i + 1 >= parts.size()) {
            // A trailing piece without its pair: take it as patterns.
            const QString p = patterns_of(parts[i]);
            if (!p.isEmpty()) {
                out << p;
            }
            break;
        }
        QString description = parts[i].trimmed();
        description.remove(own_patterns);
        QString p = patterns_of(parts[i + 1]);
        if (p.isEmpty()) {
            p = QStringLiteral("*");
        }
        out << (description.isEmpty() ? p : description + QStringLiteral(" (") + p + u')');
    }
    return out.join(QStringLiteral(";;"));
}

QFont to_qfont(const FontChoice& choice) {
    QFont font;
    if (!choice.family.trimmed().isEmpty()) {
        font.setFamily(choice.family.trimmed());
    }
    font.setPointSizeF(choice.point_size > 0 ? choice.point_size : 10.0);
    font.setBold(choice.bold);
    font.setItalic(choice.italic);
    font.setUnderline(choice.underline);
    return font;
}

FontChoice to_font_choice(const QFont& font) {
    FontChoice c;
    c.family = font.family();
    c.point_size = font.pointSizeF() > 0 ? font.pointSizeF() : 10.0;
    c.bold = font.bold();
    c.italic = font.italic();
    c.underline = font.underline();
    return c;
}

std::optional<FontChoice> choose_font_qt(QWidget* parent, const FontChoice& start) {
    QFontDialog dlg(to_qfont(start), parent);
    dlg.setOption(QFontDialog::DontUseNativeDialog);
    // The font dialog has no colour of its own: a button beside it picks one.
    int colour = start.colour;
    if (auto* grid = qobject_cast<QGridLayout*>(dlg.layout())) {
        auto* button = new QPushButton(QStringLiteral("KLEUR / COLOUR ..."), &dlg);
        button->setObjectName(QStringLiteral("font_colour"));
        grid->addWidget(button, grid->rowCount(), 0);
        QObject::connect(button, &QPushButton::clicked, &dlg, [&] {
            const QColor picked = QColorDialog::getColor(
                QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF), &dlg);
            if (picked.isValid()) {
                colour = picked.red() | (picked.green() << 8) | (picked.blue() << 16);
            }
        });
    }
    if (dlg.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    FontChoice chosen = to_font_choice(dlg.selectedFont());
    chosen.colour = colour;
    return chosen;
}

std::optional<FontChoice> QtDialogs::choose_font(const FontChoice& start) {
    return choose_font_qt(parent_, start);
}

void QtDialogs::show_modal(ChildForm& form) {
    const auto it = forms_.find(form.form_name());
    if (it != forms_.end()) {
        const FocusReturn back;
        it->second(form, opener());
    }
}

}  // namespace korvel::ui
