#pragma once
// rekords_van_jaar: which year's folders the program works in. The choice is written to
// graad_jaar.txt for the learner side, every year folder path takes the year, and the menu's
// year change does the rest.

#include <QString>
#include <QStringList>
#include <functional>

#include "platform/dialogs.h"
#include "shell/session.h"

namespace korvel::yearend {

class YearChoice : public ui::ChildForm {
  public:
    // menu_year_change: the menu's own year change (year_used.txt, the staff folder, the staff
    // files reopened).
    YearChoice(shell::Session& session, std::function<void(const QString&)> menu_year_change);
    QString form_name() const override { return QStringLiteral("rekords_van_jaar"); }

    // ---- the form's values ----
    QString caption;
    QStringList rekords_jaar_lys;  // years with folders, rising, and the next year
    int selected = -1;             // index in the list; -1: none
    bool unloaded = false;

    // ---- events ----
    void form_load();
    void rekords_jaar_lys_dbl_click(int index);
    void form_unload();

    // The year a choice comes to: a year of 0 or none is the calendar year.
    QString chosen_year(const QString& year) const;
    void choose(const QString& year);

  private:
    shell::Session& s_;
    std::function<void(const QString&)> menu_year_change_;
    bool chosen_ = false;
};

}  // namespace korvel::yearend
