#pragma once
// The demo data tree of `korvel-cli demo DIR`: an invented Afrikaans-medium high school in the
// Western Cape with a year of staff, attendance, subjects, salaries and governing body, written
// through the record store in the suite's folder layout, so that the program and its sibling
// systems can be tried out without a school's real data.

#include <QString>
#include <QStringList>

#include "platform/dialogs.h"

namespace korvel::shell {

struct DemoSummary {
    QString drive;                  // "C:"
    QString year;                   // the current year of the tree, four digits
    QString staff_folder_native;    // the current year's staff folder, native
    QString general_folder_native;  // the current year's general year folder, native
    int staff = 0;                  // records in the current year's master file
    int inactive = 0;               // of those, state "*"
    int deleted = 0;                // of those, state "D"
    int members = 0;                // governing body members
    QStringList files;              // native paths written, in the order written
};

// Writes the demo tree for `year` and `year - 1` on the drive "C:" mapped to native_root
// (native_root/VESPARINE/...), and in native_root/ProgramData/VESPARINE the files network.dta
// (the default folders of `year`) and language.txt (Afrikaans). The same year gives the same
// bytes on every run: no clock and no random device are read. An existing demo tree is
// overwritten cleanly: the record files are removed before they are written again.
// The dialogs answer whatever the start-up of each year asks (the caller passes unattended
// ones: nobody sits at the demo).
DemoSummary write_demo_tree(const QString& native_root, int year, ui::Dialogs& dialogs);

}  // namespace korvel::shell
