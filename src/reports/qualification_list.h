#pragma once
// sk427_prg: the qualifications of the staff, a block per person, over the selection the staff
// lists share. The names come from the standard lists the records refer to, read as the
// qualifications form reads them.

#include <QByteArray>
#include <QHash>
#include <QString>
#include <array>
#include <string>
#include <unordered_map>

#include "platform/dialogs.h"
#include "reports/staff_selection.h"
#include "store/field_bytes.h"

namespace korvel::reports {

class StaffQualificationList : public ui::ChildForm, public StaffSelection {
  public:
    StaffQualificationList(shell::Session& session, PrintJob& job, PrintTargetHost* host = nullptr);
    QString form_name() const override { return QStringLiteral("sk427_prg"); }

    QString caption;
    // kwalifikasie_lys_prof, _akad, _detail: each lets the rows of its type through. An older
    // qualification kept as free text counts as academic, as the qualifications form shows it.
    std::array<bool, 3> kwalifikasie_lys{true, true, true};
    std::array<QString, 3> kwalifikasie_lys_captions;
    bool visible = false;

    void form_load();
    void kr_ok_click() { print_qualification_list(); }
    void exit_click();

    bool print_qualification_list();
    PrintGrid qualification_grid();

  private:
    void load_additional();

    // The PRSADD record of a post number's capital_key; nullptr when it has none.
    const char* additional_of(const std::string& key) const;

    QByteArray additional_records_;  // the PRSADD records, one after the other
    // The first record of a post number, by its capital_key: its place.
    std::unordered_map<std::string, qsizetype, store::ShortTextHash> additional_;
    bool additional_loaded_ = false;
};

}  // namespace korvel::reports
