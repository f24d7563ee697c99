#include "reports/print_menu_form.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDateEdit>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "platform/winpath.h"
#include "reports/print_menu.h"
#include "reports/print_target_host.h"
#include "reports/school_report.h"
#include "reports/selection_lists_form.h"
#include "reports/staff_lists.h"

namespace korvel::reports {

namespace {

void show_print_menu_form(PrintMenu& menu, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(menu.form_name());
    dialog.setWindowTitle(menu.heading);
    auto* layout = new QVBoxLayout(&dialog);
    auto* heading = new QLabel(menu.heading, &dialog);
    QFont big = heading->font();
    big.setBold(true);
    big.setPointSize(big.pointSize() + 3);
    heading->setFont(big);
    layout->addWidget(heading, 0, Qt::AlignHCenter);
    std::array<QPushButton*, reports::kPrintMenuButtons + 1> buttons{};
    auto* groups = new QGridLayout;
    std::array<QVBoxLayout*, reports::kPrintMenuGroups> boxes{};
    for (int g = 0; g < reports::kPrintMenuGroups; ++g) {
        auto* box = new QGroupBox(menu.group_captions[static_cast<std::size_t>(g)], &dialog);
        boxes[static_cast<std::size_t>(g)] = new QVBoxLayout(box);
        groups->addWidget(box, g / 3, g % 3);
    }
    const auto refresh = [&] {
        for (int i = 1; i <= reports::kPrintMenuButtons; ++i) {
            buttons[static_cast<std::size_t>(i)]->setEnabled(
                menu.pr_option[static_cast<std::size_t>(i)].enabled);
        }
    };
    for (int i = 1; i <= reports::kPrintMenuButtons; ++i) {
        const PrintMenuButton& b = menu.pr_option[static_cast<std::size_t>(i)];
        auto* button = new QPushButton(b.caption, &dialog);
        button->setObjectName(QStringLiteral("pr_option_%1").arg(i));
        boxes[static_cast<std::size_t>(b.group)]->addWidget(button);
        QObject::connect(button, &QPushButton::clicked, &dialog, [&, i] {
            menu.pr_option_click(i);
            refresh();
        });
        buttons[static_cast<std::size_t>(i)] = button;
    }
    layout->addLayout(groups);
    auto* exit = new QPushButton(QStringLiteral("X"), &dialog);
    QObject::connect(exit, &QPushButton::clicked, &dialog, [&] {
        menu.exit_click();
        dialog.accept();
    });
    layout->addWidget(exit, 0, Qt::AlignRight);
    refresh();
    dialog.exec();
}

}  // namespace

void register_print_menu_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("staff_kies_druk"), [](ui::ChildForm& f, QWidget* p) {
        show_print_menu_form(static_cast<PrintMenu&>(f), p);
    });
    register_selection_lists_forms(dialogs);
}
void show_print_menu(shell::Session& session, QWidget* parent) {
    QtPrintTargetHost host(parent);
    PrintJob job(host.job_device(), session.dialogs(), reports::report_school(session),
                 session.afrikaans);
    job.general_year_folder = session.fs().native(session.folders.general_year);
    PrintMenu menu(session.afrikaans);
    register_staff_lists(menu, session, job, &host);
    register_attendance_reports(menu, session, job, &host);
    menu.form_load();
    session.dialogs().show_modal(menu);
}

}  // namespace korvel::reports
