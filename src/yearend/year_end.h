#pragma once
// evj_personeel: the year-end closing of the staff records. The from year's staff folder goes
// across to the next year's folder (OVERWRITE) or the target keeps its files (APPEND), and
// every staff record of the target gains a year of service. The new target is built beside its
// place and switched in at once, so a crash leaves the tree wholly old or wholly new.

#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "shell/session.h"
#include "store/record.h"

namespace korvel::yearend {

// Where a roll stopped: a counter already at 32767.
struct RollStop {
    QString post;
    QString field;
};

// Adds a year of service to one staff record; the record is unchanged when a counter would
// pass 32767, and the stop names it.
std::optional<RollStop> add_year_of_service(store::Record& record);

class YearEnd {
  public:
    explicit YearEnd(shell::Session& session);

    // ---- the form's values ----
    QString caption;
    QString old_dta_caption, old_dta;  // "VAN JAAR" and the from year
    QString new_dta_caption;           // "NA JAAR"
    QString nuwe_jaar;                 // the to year
    QString folder_display;            // the from year's staff folder
    QString rekords_jaar_caption;
    bool byvoeg_oorskryf_visible = false;
    QString bo_teks;
    QStringList bo_opsie_captions;  // OVERWRITE, APPEND
    int bo_opsie = 0;               // 0: OVERWRITE, 1: APPEND
    bool unloaded = false;
    bool completed = false;  // the year was closed

    // The menu's year change, handed to rekords_van_jaar.
    std::function<void(const QString&)> menu_year_change;
    // Every file operation of the closing; for tests that fail or end the process at one.
    std::function<bool(int)> file_operation;

    // ---- events ----
    void form_load();
    void rekords_jaar_click();
    void evj_ok_click();
    void bo_ok_click();
    void staff_exit_click() { unloaded = true; }

    // The target folder of the to year; blank before evj_ok.
    const QString& target() const { return target_; }

  private:
    void refresh();
    bool valid_to_year();
    void fail(const QString& what);

    shell::Session& s_;
    QString from_year_;
    QString target_;
};

}  // namespace korvel::yearend
