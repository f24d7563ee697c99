#include "ui/scripted_dialogs.h"

#ifdef _WIN32
#include <io.h>
#define KORVEL_STDERR_IS_TERMINAL (_isatty(_fileno(stderr)) != 0)
#else
#include <unistd.h>
#define KORVEL_STDERR_IS_TERMINAL (isatty(STDERR_FILENO) != 0)
#endif

#include <algorithm>
#include <cstdio>

namespace korvel::ui {

void ScriptedDialogs::message(const QString& text, Icon icon, const QString& title) {
    shown_.append({Shown::Kind::Message, text, title, icon});
}

Answer ScriptedDialogs::ask(const QString& text, Buttons, Icon icon, Answer default_answer,
                            const QString& title) {
    shown_.append({Shown::Kind::Question, text, title, icon});
    if (answers_.empty()) {
        return default_answer;
    }
    const Answer a = answers_.front();
    answers_.pop_front();
    return a;
}

std::optional<QString> ScriptedDialogs::input(const QString& prompt, const QString& title,
                                              const QString&, bool) {
    shown_.append({Shown::Kind::Input, prompt, title, Icon::None});
    if (inputs_.empty()) {
        return std::nullopt;
    }
    const auto [typed, text] = inputs_.front();
    inputs_.pop_front();
    if (!typed) {
        return std::nullopt;
    }
    return text;
}

std::optional<QDate> ScriptedDialogs::pick_date(const QString& caption, const QDate&) {
    shown_.append({Shown::Kind::Date, caption, {}, Icon::None});
    if (dates_.empty()) {
        return std::nullopt;
    }
    auto d = dates_.front();
    dates_.pop_front();
    return d;
}

QString ScriptedDialogs::choose_folder(const QString& caption, const QString&) {
    shown_.append({Shown::Kind::Folder, caption, {}, Icon::None});
    if (paths_.empty()) {
        return {};
    }
    QString p = paths_.front();
    paths_.pop_front();
    return p;
}

QString ScriptedDialogs::choose_file(const QString& caption, const QString&, const QString&, bool) {
    shown_.append({Shown::Kind::File, caption, {}, Icon::None});
    if (paths_.empty()) {
        return {};
    }
    QString p = paths_.front();
    paths_.pop_front();
    return p;
}

void ScriptedDialogs::beep() {
    shown_.append({Shown::Kind::Beep, {}, {}, Icon::None});
}

std::optional<FontChoice> ScriptedDialogs::choose_font(const FontChoice&) {
    shown_.append({Shown::Kind::Font, {}, {}, Icon::None});
    if (fonts_.empty()) {
        return std::nullopt;
    }
    std::optional<FontChoice> f = fonts_.front();
    fonts_.pop_front();
    return f;
}

void ScriptedDialogs::show_modal(ChildForm& form) {
    shown_.append({Shown::Kind::Form, form.form_name(), {}, Icon::None});
    const auto it = forms_.find(form.form_name());
    if (it != forms_.end()) {
        it->second(form);
    }
}

QStringList ScriptedDialogs::forms_shown() const {
    QStringList out;
    for (const Shown& s : shown_) {
        if (s.kind == Shown::Kind::Form) {
            out << s.text;
        }
    }
    return out;
}

QStringList ScriptedDialogs::texts() const {
    QStringList out;
    for (const Shown& s : shown_) {
        if (s.kind == Shown::Kind::Message || s.kind == Shown::Kind::Question) {
            out << s.text;
        }
    }
    return out;
}

namespace {

class ScriptedProgress : public Progress {
  public:
    ScriptedProgress(int stop_at, bool can_stop) : stop_at_(stop_at), can_stop_(can_stop) {}
    bool step(int done) override { return !(can_stop_ && stop_at_ >= 0 && done >= stop_at_); }

  private:
    int stop_at_;
    bool can_stop_;
};

}  // namespace

std::unique_ptr<Progress> ScriptedDialogs::progress(const QString& caption, int, bool can_stop) {
    progress_shown_.append(caption);
    return std::make_unique<ScriptedProgress>(stop_at_step_, can_stop);
}

TerminalProgress::TerminalProgress(std::FILE* out, QString caption, int total, int delay_ms)
    : out_(out), caption_(std::move(caption)), total_(std::max(total, 0)), delay_ms_(delay_ms) {
    clock_.start();
}

TerminalProgress::~TerminalProgress() {
    if (shown_percent_ >= 0) {
        std::fputc('\n', out_);
        std::fflush(out_);
    }
}

bool TerminalProgress::step(int done) {
    // A job without a known length shows its count instead of a share.
    const int shown = total_ == 0 ? std::max(done, 0)
                                  : static_cast<int>(100LL * std::clamp(done, 0, total_) / total_);
    if (shown == shown_percent_ || clock_.elapsed() < delay_ms_) {
        return true;
    }
    shown_percent_ = shown;
    QString caption = caption_;
    caption.replace(u'\n', u' ');
    const QByteArray text = caption.toUtf8();
    if (total_ == 0) {
        std::fprintf(out_, "\r%s  %d", text.constData(), shown);
    } else {
        std::fprintf(out_, "\r%s  %3d%%", text.constData(), shown);
    }
    std::fflush(out_);
    return true;
}

std::unique_ptr<Progress> UnattendedDialogs::progress(const QString& caption, int total, bool) {
    if (!KORVEL_STDERR_IS_TERMINAL) {
        return std::make_unique<NoProgress>();
    }
    return std::make_unique<TerminalProgress>(stderr, caption, total);
}

namespace {
void to_stderr(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fprintf(stderr, "%s\n", bytes.constData());
}
}  // namespace

void UnattendedDialogs::message(const QString& text, Icon, const QString&) {
    to_stderr(text);
}

Answer UnattendedDialogs::ask(const QString& text, Buttons, Icon, Answer default_answer,
                              const QString&) {
    to_stderr(text);
    return default_answer;
}

std::optional<QString> UnattendedDialogs::input(const QString& prompt, const QString&,
                                                const QString&, bool) {
    to_stderr(prompt);
    return std::nullopt;
}

std::optional<QDate> UnattendedDialogs::pick_date(const QString&, const QDate&) {
    return std::nullopt;
}

QString UnattendedDialogs::choose_folder(const QString&, const QString&) {
    return {};
}

void UnattendedDialogs::show_modal(ChildForm& form) {
    to_stderr(QStringLiteral("(form %1 cannot be shown without a display)").arg(form.form_name()));
}

QString UnattendedDialogs::choose_file(const QString&, const QString&, const QString&, bool) {
    return {};
}

}  // namespace korvel::ui
