#pragma once
// The desktop program's forms: the full-screen shell `startup`, the splash `staff_splash` and
// the menu `sk4_mnu`. They bind widgets to the behaviour classes of the shell and stay thin.

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QMainWindow>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QWidget>
#include <array>
#include <functional>
#include <map>

#include "shell/main_menu.h"
#include "shell/session.h"
#include "shell/startup.h"

namespace korvel::app {

// Delivers one event through deliver. A fatal end inside it (a click whose work ends the
// program, after its message) calls end with the exit code instead of unwinding further; so
// does any other exception, with exit code 1. Returns what deliver returned, else false.
bool deliver_or_end(const std::function<bool()>& deliver, const std::function<void(int)>& end);

// The desktop program's application: no exception ever leaves an event handler into Qt. A
// fatal end closes the program at once with its exit code, as the end statement does: nothing
// more runs, and the files, written through at each write, are closed by the system.
class Application : public QApplication {
  public:
    Application(int& argc, char** argv) : QApplication(argc, argv) {}
    bool notify(QObject* receiver, QEvent* event) override;
    std::function<void()> before_end;  // what must be let go first (the single-instance lock)
};

// The common header set-up of every form, in one place: a form is a top-level window named
// after its registered name, and as it shows for the first time it writes its line in the audit
// trail and fills the labels of its header strip that it has (ops_datum, ops_tyd, prg_version,
// internet_version). Installed on the application, so a new form cannot forget it. Message
// boxes, input boxes, the platform's choosers and popups are no forms.
class FormHeaders : public QObject {
  public:
    explicit FormHeaders(shell::Session& session, QObject* parent = nullptr)
        : QObject(parent), s_(session) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    shell::Session& s_;
};

// A child form of the menu, by name; the register and the forms of later work add theirs.
using FormFactory = std::function<QWidget*(shell::Session&, QWidget* parent)>;

class MenuForm : public QWidget {
    Q_OBJECT
  public:
    MenuForm(shell::Session& session, shell::Startup& startup,
             const std::map<QString, FormFactory>& forms, QWidget* parent = nullptr);
    shell::MainMenu& behaviour() { return menu_; }
    void load();
    void refresh();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void open_child_form(const QString& name);

    shell::Session& s_;
    shell::MainMenu menu_;
    const std::map<QString, FormFactory>& forms_;
    std::array<QPushButton*, 6> sk4_menu_{};
    QPushButton* sk4_exit_;
    QListWidget* rekords_jaar_lys_;
    QPushButton* dir_disp_staff_;
    QLabel* ops_datum_;
    QLabel* ops_tyd_;
    QLabel* prg_version_;
    QLabel* school_;
    QPushButton* tab_undo_;
    QPushButton* nuusbrief_;
    QPushButton* prs_export_;
    QPushButton* backup_;
    QPushButton* help_pdf_;
    QPushButton* data_check_;
    QPushButton* lurits_import_;
    QTimer timer1_;
    std::map<QString, QPointer<QWidget>> open_forms_;
};

class SplashForm : public QDialog {
    Q_OBJECT
  public:
    SplashForm(shell::Session& session, QWidget* parent = nullptr);
    // True when the language was chosen (or the timer chose it); the session's flag is set.
    bool run();

  protected:
    // A answers Afrikaans, E English, Enter the language marked.
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void choose(int index);
    void show_time_left();

    shell::Session& s_;
    QRadioButton* chk_lang_[3] = {};
    QLabel* time_left_ = nullptr;
    QTimer timer1_;
    QTimer clock_;
};

class ShellWindow : public QMainWindow {
    Q_OBJECT
  public:
    ShellWindow(shell::Session& session, shell::Startup& startup,
                const std::map<QString, FormFactory>& forms);
    // The splash, then the menu. False when the splash stays without a school.
    bool start();
    MenuForm* menu() { return menu_; }

  protected:
    void closeEvent(QCloseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    shell::Session& s_;
    shell::Startup& startup_;
    MenuForm* menu_ = nullptr;
};

}  // namespace korvel::app
