#pragma once
// sk4_vakke_van_admin: the subjects each teacher teaches, rebuilt in prs_vak_random.txt from
// what the learner records say: for every grade of the school, every subject cell of the
// classes of its active learners names a subject and the post number of its teacher.
//
// The subject file is read once and kept in memory while the grades are walked; every record
// that changed is written once at the end. Recreating builds the new file beside the old one
// and puts it in its place in one step, so a rebuild cut short leaves the old file whole.

#include <QString>
#include <QStringList>
#include <functional>

#include "platform/dialogs.h"
#include "shell/session.h"
#include "staff/learner_subjects.h"

namespace korvel::staff {

class StaffSubjects : public ui::ChildForm {
  public:
    StaffSubjects(shell::Session& session, LearnerSubjects& learners);
    QString form_name() const override { return QStringLiteral("sk4_vakke_van_admin"); }
    shell::Session& session() { return session_; }

    QString caption;
    QString admin_exit_caption;

    // The progress display: grades done of all grades, learners done of the grade's learners.
    std::function<void(int grade, int grades, int learner, int learners)> progress;

    // What the last rebuild did, for the command line.
    struct Outcome {
        bool recreated = false;
        QStringList grades_read;  // the grades whose learner records were there
        int learners = 0;         // active learners counted
        int subjects_added = 0;   // codes put into a record
        int records_added = 0;    // records of post numbers the subject file did not have
        int records_written = 0;  // records written, added ones included
    };
    Outcome outcome;

    // The form's load: the whole rebuild; then the form unloads.
    void form_load() { recreate_staff_subjects(); }
    // Asks whether to recreate or to merge, then walks every grade of the school.
    void recreate_staff_subjects();

    // The grades of the school, in the order of the school record: its non-blank grade texts
    // that can name a folder (letters and digits, at most three), each once.
    static QStringList school_grades(shell::Session& session);

  private:
    shell::Session& session_;
    LearnerSubjects& learners_;
};

}  // namespace korvel::staff
