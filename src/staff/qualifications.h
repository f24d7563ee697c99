#pragma once
// sk414_prg: up to eight qualifications of an educator and, for each professional or academic
// one, up to five subjects studied. It works on the master, additional and subject records of
// the person; the subjects are written when their grid is confirmed, the qualifications when
// the form is.
//
// This is the form's behaviour; the Qt form (qualifications_form.h) shows both grids, the two
// edit frames and the lists and calls one method per event.

#include <QString>
#include <QStringList>
#include <array>

#include "platform/dialogs.h"
#include "shell/session.h"
#include "staff/detail_common.h"
#include "staff/detail_grid.h"
#include "staff/qualification_names.h"
#include "staff/subject_codes.h"
#include "staff/subject_record.h"

namespace korvel::staff {

inline constexpr int kQualificationRows = 8;  // kwl_grid(0) rows 1 to 8
inline constexpr int kStudiedSubjects = 5;    // kwl_grid(1) rows 1 to 5

// The years of the year list.
QStringList year_rows(const QDate& today);  // 1950 to this year

class Qualifications : public ui::ChildForm {
  public:
    explicit Qualifications(shell::Session& session);
    QString form_name() const override { return QStringLiteral("sk414_prg"); }
    shell::Session& session() { return session_; }
    const SubjectCodes& subject_codes() const { return codes_; }

    // ---- the form's values ----
    QString caption;                     // post number, title, initials, surname
    std::array<DetailGrid, 2> kwl_grid;  // 0 the qualifications, 1 the subjects of one
    bool subjects_visible = false;       // kwl_grid(1) shows
    std::array<QString, 6> data_teks;    // the six labels
    std::array<QString, 4> kw_opsie;     // captions, 1 to 3
    std::array<QString, 4> vak_soort;    // captions, 1 to 3
    int vak_soort_chosen = 0;            // the option set, 0 for none
    std::array<QString, 6> prs_data;     // boxes 0 to 5 of data_raam
    bool box4_visible = false;           // the free-text name
    bool box5_visible = true;            // the subjects
    std::array<QString, 5> vak_dta;      // boxes 1 to 4 of vak_raam
    bool data_raam_visible = false;
    bool vak_raam_visible = false;
    std::array<PopupList, 3> kwalifikasie_lys;  // by QualificationList
    PopupList jaar_lys;
    bool loaded = false;
    bool closed = false;

    PopupList& list(QualificationList l) { return kwalifikasie_lys[static_cast<std::size_t>(l)]; }

    // ---- events ----
    void form_load();
    void kwl_grid_click(int grid, int row);
    void kw_opsie_click(int index);
    void kwalifikasie_lys_dbl_click(QualificationList l, int row);
    void kwalifikasie_lys_lost_focus(QualificationList l);
    void prs_data_dbl_click(int box);  // 3: jaar_lys, 5: the subjects
    void jaar_lys_click(int row);
    void data_ok_click();
    void vak_dta_dbl_click(int box);  // 1: the subject list
    void vak_soort_click(int index);
    void vak_ok_click();
    void grid_ok_click();
    void staff_exit_click() { closed = true; }

    void load_qualifications();
    void load_subjects();

  private:
    HeldRecord held_master_;  // where master_ and additional_ were read, found again by key
    HeldRecord held_additional_;
    void show_subject_list(int row);
    bool store_subjects();
    void store_qualifications();

    shell::Session& session_;
    SubjectCodes codes_;
    SubjectRecord subjects_;
    store::Record master_;      // the master record as this form edits it
    store::Record additional_;  // the additional record likewise
};

}  // namespace korvel::staff
