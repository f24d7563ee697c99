// The path tool: the user picks the drive that holds the suite's data tree (a letter mapped to
// a folder of this machine, or a server share) and the tool writes network.dta.

#include <QApplication>
#include <QComboBox>
#include <QDate>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include "shell/path_choice.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QDialog dialog;
    dialog.setWindowTitle(QStringLiteral("VESPARINE - DATAGIDS / DATA FOLDER"));
    auto* form = new QFormLayout(&dialog);
    auto* drive = new QComboBox(&dialog);
    drive->setEditable(true);
    for (char c = 'C'; c <= 'Z'; ++c) {
        drive->addItem(QStringLiteral("%1:").arg(QChar(c)));
    }
    drive->setCurrentText(QStringLiteral("C:"));
    drive->setToolTip(QStringLiteral("F: ... or \\\\SERVER\\SHARE"));
    auto* folder = new QLineEdit(&dialog);
    auto* browse = new QPushButton(QStringLiteral("..."), &dialog);
    auto* folder_row = new QHBoxLayout;
    folder_row->addWidget(folder);
    folder_row->addWidget(browse);
    QObject::connect(browse, &QPushButton::clicked, &dialog, [&] {
        const QString picked = QFileDialog::getExistingDirectory(&dialog, {}, folder->text());
        if (!picked.isEmpty()) {
            folder->setText(picked);
        }
    });
    auto* year = new QLineEdit(QString::number(QDate::currentDate().year()), &dialog);
    form->addRow(new QLabel(QStringLiteral("AANDRYWER / DRIVE"), &dialog), drive);
    form->addRow(new QLabel(QStringLiteral("GIDS / FOLDER"), &dialog), folder_row);
    form->addRow(new QLabel(QStringLiteral("JAAR / YEAR"), &dialog), year);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
    form->addRow(buttons);
    QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, [&] {
        const QString problem = korvel::shell::apply_path_choice(
            {drive->currentText().trimmed(), folder->text().trimmed(), year->text().trimmed()},
            korvel::shell::drive_config_file(), QStringLiteral("C:"), false);
        if (!problem.isEmpty()) {
            QMessageBox::critical(&dialog, QStringLiteral("VESPARINE"), problem);
            return;
        }
        dialog.accept();
    });
    return dialog.exec() == QDialog::Accepted ? 0 : 1;
}
