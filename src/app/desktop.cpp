#include "app/desktop.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QFont>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPalette>
#include <QStyle>
#include <QUrl>
#include <QVBoxLayout>
#include <cstdio>
#include <cstdlib>

#include "platform/process_end.h"
#include "shell/common_dialogs.h"
#include "shell/form_header.h"
#include "staff/lurits_import.h"
#include "ui/form_window.h"

namespace korvel::app {

bool deliver_or_end(const std::function<bool()>& deliver, const std::function<void(int)>& end) {
    try {
        return deliver();
    } catch (const ProcessEnd& e) {
        end(e.exit_code());  // its message has been shown
    } catch (const std::exception& e) {
        std::fprintf(stderr, "KORVEL: %s\n", e.what());
        end(1);
    }
    return false;
}

bool Application::notify(QObject* receiver, QEvent* event) {
    return deliver_or_end([&] { return QApplication::notify(receiver, event); },
                          [this](int code) {
                              if (before_end) {
                                  before_end();
                              }
                              std::fflush(nullptr);
                              std::_Exit(code);
                          });
}

bool FormHeaders::eventFilter(QObject* watched, QEvent* event) {
    static const char* const kDone = "korvel_form_header";
    if (event->type() != QEvent::Show || !watched->isWidgetType()) {
        return false;
    }
    auto* w = static_cast<QWidget*>(watched);
    if (!ui::is_form(w) || w->property(kDone).toBool()) {
        return false;
    }
    w->setProperty(kDone, true);
    const shell::HeaderStrip strip = shell::form_header_setup(s_, w->objectName());
    const std::pair<const char*, const QString*> texts[] = {
        {"ops_datum", &strip.ops_datum},
        {"ops_tyd", &strip.ops_tyd},
        {"prg_version", &strip.prg_version},
        {"internet_version", &strip.internet_version},
    };
    for (const auto& [name, text] : texts) {
        for (QLabel* l : w->findChildren<QLabel*>(QString::fromLatin1(name))) {
            l->setText(*text);
        }
    }
    return false;
}

MenuForm::MenuForm(shell::Session& session, shell::Startup& startup,
                   const std::map<QString, FormFactory>& forms, QWidget* parent)
    : QWidget(parent), s_(session), menu_(session, startup), forms_(forms) {
    setObjectName(QStringLiteral("sk4_mnu"));
    for (const auto& [name, factory] : forms_) {
        menu_.available_forms.insert(name);
    }
    menu_.open_child_form = [this](const QString& name) { open_child_form(name); };
    menu_.import_lurits = [this] { staff::import_lurits_staff(s_); };
    menu_.open_document = [](const QString& native) {
        return QDesktopServices::openUrl(QUrl::fromLocalFile(native));
    };

    auto* strip = new QHBoxLayout;
    ops_datum_ = new QLabel(this);
    ops_tyd_ = new QLabel(this);
    prg_version_ = new QLabel(this);
    school_ = new QLabel(this);
    QFont bold = font();
    bold.setBold(true);
    for (QLabel* l : {ops_datum_, ops_tyd_, prg_version_}) {
        l->setFont(bold);
    }
    QFont big = font();
    big.setPointSize(big.pointSize() + 6);
    big.setBold(true);
    school_->setFont(big);
    strip->addWidget(ops_datum_);
    strip->addSpacing(12);
    strip->addWidget(ops_tyd_);
    strip->addStretch();
    strip->addWidget(prg_version_);
    // The header strip: white bold text on the suite's dark band.
    auto* band = new QWidget(this);
    band->setObjectName(QStringLiteral("header_strip"));
    band->setAutoFillBackground(true);
    QPalette dark = band->palette();
    dark.setColor(QPalette::Window, QColor(0x1F, 0x3A, 0x5F));
    dark.setColor(QPalette::WindowText, Qt::white);
    band->setPalette(dark);
    band->setLayout(strip);
    school_->setAlignment(Qt::AlignHCenter);

    auto* entries = new QHBoxLayout;
    for (int i = 1; i <= 5; ++i) {
        auto* b = new QPushButton(this);
        b->setObjectName(QStringLiteral("sk4_menu_%1").arg(i));
        // As wide as there is room for, up to 160 pixels: on a 150% display the row of entries
        // still fits the screen.
        b->setMinimumSize(110, 90);
        b->setMaximumWidth(160);
        b->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        entries->addWidget(b);
        connect(b, &QPushButton::clicked, this, [this, i] { menu_.sk4_menu_click(i); });
        sk4_menu_[i] = b;
    }
    sk4_exit_ = new QPushButton(QStringLiteral("X"), this);
    sk4_exit_->setObjectName(QStringLiteral("sk4_exit"));
    sk4_exit_->setMinimumSize(60, 90);
    entries->addWidget(sk4_exit_);
    connect(sk4_exit_, &QPushButton::clicked, this, [this] {
        try {
            menu_.sk4_exit_click();
        } catch (const ProcessEnd& end) {
            QCoreApplication::exit(end.exit_code());
        }
    });

    rekords_jaar_lys_ = new QListWidget(this);
    rekords_jaar_lys_->setObjectName(QStringLiteral("rekords_jaar_lys"));
    rekords_jaar_lys_->setMaximumWidth(100);
    connect(rekords_jaar_lys_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        menu_.rekords_jaar_lys_click(item->text());
        refresh();
    });
    dir_disp_staff_ = new QPushButton(this);
    dir_disp_staff_->setObjectName(QStringLiteral("dir_disp_staff"));
    dir_disp_staff_->setFlat(true);
    connect(dir_disp_staff_, &QPushButton::clicked, this, [this] {
        menu_.dir_disp_staff_click();
        refresh();
    });

    auto* tools = new QHBoxLayout;
    tab_undo_ = new QPushButton(QStringLiteral("↺"), this);
    nuusbrief_ = new QPushButton(QStringLiteral("✉"), this);
    prs_export_ = new QPushButton(QStringLiteral("⇪"), this);
    backup_ = new QPushButton(QStringLiteral("⛁"), this);
    help_pdf_ = new QPushButton(QStringLiteral("?"), this);
    data_check_ = new QPushButton(QStringLiteral("✓"), this);
    data_check_->setObjectName(QStringLiteral("data_check"));
    data_check_->setEnabled(menu_.available_forms.contains(QStringLiteral("data_check")));
    prs_export_->setEnabled(menu_.available_forms.contains(QStringLiteral("sk4_export")));
    lurits_import_ = new QPushButton(QStringLiteral("L"), this);
    lurits_import_->setObjectName(QStringLiteral("lurits_import"));
    for (QPushButton* b :
         {tab_undo_, nuusbrief_, prs_export_, backup_, help_pdf_, data_check_, lurits_import_}) {
        tools->addWidget(b);
    }
    tools->addStretch();
    tools->addWidget(dir_disp_staff_);
    connect(tab_undo_, &QPushButton::clicked, this, [this] { menu_.tab_undo_click(); });
    connect(nuusbrief_, &QPushButton::clicked, this, [this] { menu_.nuusbrief_click(); });
    connect(backup_, &QPushButton::clicked, this, [this] { menu_.backup_click(); });
    connect(help_pdf_, &QPushButton::clicked, this, [this] { menu_.help_pdf_click(); });
    connect(data_check_, &QPushButton::clicked, this, [this] { menu_.data_check_click(); });
    connect(prs_export_, &QPushButton::clicked, this,
            [this] { open_child_form(QStringLiteral("sk4_export")); });
    connect(lurits_import_, &QPushButton::clicked, this, [this] { menu_.lurits_import_click(); });

    // The tool buttons show the desktop's icons beside their tooltips; where the theme has
    // none, the style's own.
    const std::pair<QPushButton*, std::pair<const char*, QStyle::StandardPixmap>> icons[] = {
        {tab_undo_, {"edit-undo", QStyle::SP_BrowserReload}},
        {nuusbrief_, {"mail-message", QStyle::SP_FileDialogInfoView}},
        {prs_export_, {"document-export", QStyle::SP_DialogSaveButton}},
        {backup_, {"drive-harddisk", QStyle::SP_DriveHDIcon}},
        {help_pdf_, {"help-contents", QStyle::SP_MessageBoxQuestion}},
        {data_check_, {"dialog-ok-apply", QStyle::SP_DialogApplyButton}},
        {lurits_import_, {"x-office-spreadsheet", QStyle::SP_FileDialogDetailedView}},
    };
    for (const auto& [b, icon] : icons) {
        b->setIcon(
            QIcon::fromTheme(QString::fromLatin1(icon.first), style()->standardIcon(icon.second)));
        b->setIconSize(QSize(24, 24));
        b->setText(QString());
        b->setMinimumSize(40, 36);
    }

    // The entries stand as a block under the header, the year list beside them.
    auto* body = new QHBoxLayout;
    body->addStretch();
    body->addLayout(entries);
    body->addSpacing(24);
    body->addWidget(rekords_jaar_lys_);
    body->addStretch();
    rekords_jaar_lys_->setMaximumHeight(sk4_menu_[1]->minimumHeight() * 2);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(band);
    layout->addWidget(school_);
    layout->addSpacing(24);
    layout->addLayout(body);
    layout->addStretch(1);
    layout->addLayout(tools);

    timer1_.setInterval(1000);
    connect(&timer1_, &QTimer::timeout, this, [this] {
        menu_.timer1_tick();
        ops_tyd_->setText(menu_.header.ops_tyd);
    });
    setFocusPolicy(Qt::StrongFocus);
}

void MenuForm::load() {
    menu_.form_load();
    refresh();
    timer1_.start();
    setFocus();
}

void MenuForm::refresh() {
    menu_.set_captions();
    for (int i = 1; i <= 5; ++i) {
        sk4_menu_[i]->setText(menu_.sk4_menu[i].caption);
        sk4_menu_[i]->setToolTip(menu_.sk4_menu[i].tooltip);
        sk4_menu_[i]->setEnabled(menu_.sk4_menu[i].enabled);
    }
    sk4_exit_->setToolTip(menu_.sk4_exit_tooltip);
    backup_->setToolTip(menu_.backup_tooltip);
    tab_undo_->setToolTip(menu_.tab_undo_tooltip);
    nuusbrief_->setToolTip(menu_.nuusbrief_tooltip);
    data_check_->setToolTip(menu_.data_check_tooltip);
    lurits_import_->setToolTip(menu_.lurits_import_tooltip);
    help_pdf_->setToolTip(s_.afrikaans ? QStringLiteral("HANDLEIDING") : QStringLiteral("MANUAL"));
    dir_disp_staff_->setToolTip(menu_.dir_disp_staff_tooltip);
    dir_disp_staff_->setText(menu_.dir_disp_staff);
    ops_datum_->setText(menu_.header.ops_datum);
    ops_tyd_->setText(menu_.header.ops_tyd);
    prg_version_->setText(menu_.header.prg_version);
    school_->setText(menu_.school_name);
    rekords_jaar_lys_->clear();
    rekords_jaar_lys_->addItems(menu_.rekords_jaar_lys);
    const auto found = rekords_jaar_lys_->findItems(menu_.year_label, Qt::MatchExactly);
    if (!found.isEmpty()) {
        rekords_jaar_lys_->setCurrentItem(found.first());
    }
    if (window() != nullptr) {
        window()->setWindowTitle(menu_.caption);
    }
}

void MenuForm::keyPressEvent(QKeyEvent* event) {
    try {
        if (event->key() == Qt::Key_Escape) {
            menu_.key_press(QStringLiteral("Escape"));
        } else {
            menu_.key_press(event->text());
        }
    } catch (const ProcessEnd& end) {
        QCoreApplication::exit(end.exit_code());
    }
}

void MenuForm::open_child_form(const QString& name) {
    const auto factory = forms_.find(name);
    if (factory == forms_.end()) {
        return;
    }
    // A second click restarts the form.
    if (auto it = open_forms_.find(name); it != open_forms_.end() && it->second) {
        it->second->close();
        it->second->deleteLater();
    }
    QWidget* form = factory->second(s_, this);
    if (form == nullptr) {
        return;
    }
    form->setAttribute(Qt::WA_DeleteOnClose);
    form->setWindowFlag(Qt::Window);
    open_forms_[name] = form;
    form->show();
}

SplashForm::SplashForm(shell::Session& session, QWidget* parent) : QDialog(parent), s_(session) {
    setObjectName(QStringLiteral("staff_splash"));
    setWindowTitle(QStringLiteral("KORVEL"));
    auto* layout = new QVBoxLayout(this);
    auto* product = new QLabel(QStringLiteral("KORVEL"), this);
    product->setObjectName(QStringLiteral("lblProductName"));
    QFont big = product->font();
    big.setPointSize(big.pointSize() + 14);
    big.setBold(true);
    product->setFont(big);
    auto* version = new QLabel(s_.program_version, this);
    version->setObjectName(QStringLiteral("lblVersion"));
    auto* school = new QLabel(s_.school.name, this);
    layout->addWidget(product, 0, Qt::AlignHCenter);
    layout->addWidget(version, 0, Qt::AlignHCenter);
    layout->addWidget(school, 0, Qt::AlignHCenter);
    chk_lang_[1] = new QRadioButton(QStringLiteral("AFRIKAANS"), this);
    chk_lang_[2] = new QRadioButton(QStringLiteral("ENGLISH"), this);
    chk_lang_[1]->setObjectName(QStringLiteral("chk_lang_1"));
    chk_lang_[2]->setObjectName(QStringLiteral("chk_lang_2"));
    (s_.afrikaans ? chk_lang_[1] : chk_lang_[2])->setChecked(true);
    chk_lang_[1]->setToolTip(QStringLiteral("A"));
    chk_lang_[2]->setToolTip(QStringLiteral("E"));
    auto* langs = new QHBoxLayout;
    for (int i = 1; i <= 2; ++i) {
        langs->addWidget(chk_lang_[i]);
        connect(chk_lang_[i], &QRadioButton::clicked, this, [this, i] { choose(i); });
    }
    layout->addLayout(langs);
    time_left_ = new QLabel(this);
    time_left_->setObjectName(QStringLiteral("time_left"));
    layout->addWidget(time_left_, 0, Qt::AlignHCenter);
    // The timer keeps the language marked: the one of the last run, read from language.txt.
    timer1_.setSingleShot(true);
    timer1_.setInterval(3000);
    connect(&timer1_, &QTimer::timeout, this,
            [this] { choose(chk_lang_[1]->isChecked() ? 1 : 2); });
    clock_.setInterval(250);
    connect(&clock_, &QTimer::timeout, this, [this] { show_time_left(); });
}

void SplashForm::choose(int index) {
    timer1_.stop();
    clock_.stop();
    s_.afrikaans = index == 1;
    accept();
}

void SplashForm::show_time_left() {
    const int seconds = (timer1_.remainingTime() + 999) / 1000;
    time_left_->setText(QStringLiteral("%1 ... %2")
                            .arg(chk_lang_[1]->isChecked() ? QStringLiteral("AFRIKAANS")
                                                           : QStringLiteral("ENGLISH"))
                            .arg(std::max(seconds, 0)));
}

void SplashForm::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_A:
            choose(1);
            return;
        case Qt::Key_E:
            choose(2);
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            choose(chk_lang_[1]->isChecked() ? 1 : 2);
            return;
        default:
            QDialog::keyPressEvent(event);
    }
}

bool SplashForm::run() {
    timer1_.start();
    clock_.start();
    show_time_left();
    return exec() == QDialog::Accepted;
}

ShellWindow::ShellWindow(shell::Session& session, shell::Startup& startup,
                         const std::map<QString, FormFactory>& forms)
    : s_(session), startup_(startup) {
    setObjectName(QStringLiteral("startup"));
    setWindowTitle(QStringLiteral("KORVEL - VESPARINE"));
    menu_ = new MenuForm(session, startup, forms, this);
    setCentralWidget(menu_);
    menu_->hide();
}

bool ShellWindow::start() {
    startup_.read_language();
    if (!startup_.splash_check_school_file()) {
        return false;
    }
    SplashForm splash(s_, this);
    splash.run();
    menu_->show();
    menu_->load();
    return true;
}

void ShellWindow::closeEvent(QCloseEvent* event) {
    // The shell does not close: the splash shows again. The program ends from the menu.
    event->ignore();
    SplashForm splash(s_, this);
    splash.run();
    menu_->refresh();
}

void ShellWindow::contextMenuEvent(QContextMenuEvent*) {
    shell::set_system_date(s_);
}

}  // namespace korvel::app
