#pragma once
// The learner side names teachers by post number in five of its tables. When a post number
// changes, those cells may be carried over to the new number in every year folder. The tables
// belong to the learner programs; this system reaches them only through LearnerFiles.

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "shell/session.h"

namespace korvel::staff {

enum class LearnerTable {
    General,    // ppl_cmp: the learner's teacher, pd_v_pos
    Classes,    // kls_dta: the class teacher, kd_pos_nr
    Subjects,   // vakdta: the teacher cell of every subject of the three groups
    Behaviour,  // H_W: the three-character teacher field
    Guardians,  // v_p_dta: vd_pos
};
inline constexpr LearnerTable kLearnerTables[] = {LearnerTable::General, LearnerTable::Classes,
                                                  LearnerTable::Subjects, LearnerTable::Behaviour,
                                                  LearnerTable::Guardians};

class LearnerFiles {
  public:
    virtual ~LearnerFiles() = default;
    // Offers every post number cell of the table in a year folder (Windows form) to edit, which
    // gives the cell's new value or nullopt to keep it, and writes the changed cells back.
    // Returns the number of cells changed; a folder or table that is not there changes nothing.
    virtual int rewrite_post_cells(
        const QString& year_folder, LearnerTable table,
        const std::function<std::optional<QString>(const QString&)>& edit) = 0;
};

// The learner tables as dBASE files: <table>.dbf in the year folder, read and written through
// shapelib; the post number fields are found by name.
class DbfLearnerFiles : public LearnerFiles {
  public:
    explicit DbfLearnerFiles(shell::Session& session) : session_(session) {}
    int rewrite_post_cells(
        const QString& year_folder, LearnerTable table,
        const std::function<std::optional<QString>(const QString&)>& edit) override;

  private:
    shell::Session& session_;
};

// A stored post number names the same person as `post` when they are equal once trimmed and
// without any "*": the repair marks a second holder of a number with a "*".
bool post_number_matches(const QString& cell, const QString& post);

// The learner year folders of the menu's ledger years: "\L" + year + the last two digits of
// the ledger year, below the admin folder.
QStringList learner_year_folders(const shell::Session& session, const QStringList& years);

// Carries a changed post number over to the learner records of every year folder, after the
// user agreed. Nothing happens when `old_post` is blank. False when the user said No: the form
// then unloads.
bool replace_learner_post_number(shell::Session& session, LearnerFiles& files,
                                 const QStringList& year_folders, const QString& old_post,
                                 const QString& new_post,
                                 const std::function<void(int done, int total)>& progress = {});

}  // namespace korvel::staff
