#include "staff/detail_chooser_form.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "staff/detail_chooser.h"
#include "staff/form_boxes.h"
#include "staff/staff_entry.h"
#include "staff/staff_entry_form.h"
#include "store/record_layouts.h"
#include "timetable/staff_timetable_form.h"

namespace korvel::staff {

namespace {

void show_chooser(DetailChooser& chooser, QWidget* parent) {
    QDialog dialog(parent);
    dialog.setObjectName(chooser.form_name());
    dialog.setWindowTitle(chooser.caption);
    auto* layout = new QVBoxLayout(&dialog);
    auto* person = new QLabel(chooser.person, &dialog);
    layout->addWidget(person);
    for (int i = 1; i <= kStaffDetails; ++i) {
        const auto& o = chooser.pr_option[static_cast<std::size_t>(i)];
        auto* b = new QPushButton(o.caption, &dialog);
        b->setObjectName(QStringLiteral("pr_option_%1").arg(i));
        b->setToolTip(o.tool_tip);
        b->setVisible(o.visible);
        b->setEnabled(o.enabled);
        QObject::connect(b, &QPushButton::clicked, &dialog, [&chooser, &dialog, i] {
            chooser.pr_option_click(i);
            if (chooser.closed) {
                dialog.accept();
            }
        });
        layout->addWidget(b);
    }
    auto* exit = new QPushButton(QStringLiteral("X"), &dialog);
    exit->setObjectName(QStringLiteral("staff_exit"));
    QObject::connect(exit, &QPushButton::clicked, &dialog, [&] {
        chooser.staff_exit_click();
        dialog.accept();
    });
    layout->addWidget(exit);
    dialog.exec();
}

}  // namespace

void register_detail_chooser_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("staff_kies_inlees"), [](ui::ChildForm& f, QWidget* p) {
        show_chooser(static_cast<DetailChooser&>(f), p);
    });
    timetable::register_staff_timetable_form(dialogs);
}
}  // namespace korvel::staff
