#pragma once
// sk426_prg: which subject each staff member teaches in which grade, from the subject list of
// the person's subject record, over the selection the staff lists share.

#include <QHash>
#include <QString>
#include <QStringList>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/dialogs.h"
#include "reports/staff_selection.h"
#include "store/field_bytes.h"

namespace korvel::reports {

class TuitionList : public ui::ChildForm, public StaffSelection {
  public:
    TuitionList(shell::Session& session, PrintJob& job, PrintTargetHost* host = nullptr);
    QString form_name() const override { return QStringLiteral("sk426_prg"); }

    QString caption;
    bool visible = false;

    void form_load();
    void kr_ok_click() { print_tuition_list(); }
    void exit_click();

    // False when the target was not chosen.
    bool print_tuition_list();
    PrintGrid tuition_grid();

    // The subject columns of a post, in the order of its record: "code : 10 / 11".
    QStringList subjects_of(const QString& post);

  private:
    void load_subjects();
    // Those of a post number's capital_key, as places in texts_.
    std::span<const int> subjects_of_key(const std::string& key);

    std::vector<QString> texts_;  // each column text once
    std::vector<int> columns_;    // every post's columns, places in texts_, one after another
    std::unordered_map<std::string, std::pair<int, int>, store::ShortTextHash>
        subjects_;  // by post: first, count
    bool subjects_loaded_ = false;
};

}  // namespace korvel::reports
