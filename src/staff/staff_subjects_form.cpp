#include "staff/staff_subjects_form.h"

#include <QCoreApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "staff/staff_subjects.h"

namespace korvel::staff {

namespace {

void show_staff_subjects(StaffSubjects& form, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(form.form_name());
    dialog.setWindowTitle(form.caption);
    auto* heading = new QLabel(form.caption, &dialog);
    QFont big = heading->font();
    big.setBold(true);
    heading->setFont(big);
    auto* bar = new QProgressBar(&dialog);
    bar->setObjectName(QStringLiteral("progress"));
    bar->setRange(0, 1000);
    auto* exit = new QPushButton(form.admin_exit_caption, &dialog);
    exit->setObjectName(QStringLiteral("admin_exit"));
    QObject::connect(exit, &QPushButton::clicked, &dialog, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(exit);
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(heading);
    layout->addWidget(bar);
    layout->addLayout(buttons);
    dialog.resize(480, dialog.sizeHint().height());

    form.progress = [bar](int grade, int grades, int learner, int learners) {
        const int per_grade = grades > 0 ? 1000 / grades : 1000;
        const int value =
            std::min(1000, grade * per_grade + (learners > 0 ? learner * per_grade / learners : 0));
        if (value != bar->value()) {
            bar->setValue(value);
            // Paint the bar; nothing the user types reaches the form while it works.
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        }
    };
    // The rebuild runs once the form is up, and the form unloads when it is done.
    QTimer::singleShot(0, &dialog, [&] {
        form.form_load();
        dialog.accept();
    });
    dialog.exec();
    form.progress = {};
}

}  // namespace

void register_staff_subjects_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("sk4_vakke_van_admin"), [](ui::ChildForm& f, QWidget* p) {
        show_staff_subjects(static_cast<StaffSubjects&>(f), p);
    });
}

}  // namespace korvel::staff
