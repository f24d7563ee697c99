#pragma once
// sk416_prg: a staff member's post level, years of experience and four small lists (other
// schools, subjects taught, extra-mural and extra-curricular activities). It opens from the
// chooser of the entry form for educators and from the entry form's save while no years are
// given. It writes the additional record, the master record and the person's subject record.
//
// This is the form's behaviour; the Qt form (experience_form.h) shows the boxes, the four grids
// and their edit frames and calls one method per event.

#include <QString>
#include <array>

#include "platform/dialogs.h"
#include "shell/session.h"
#include "staff/detail_common.h"
#include "staff/detail_grid.h"
#include "staff/subject_codes.h"
#include "staff/subject_record.h"

namespace korvel::staff {

enum ExperienceGrid {
    kSchoolsGrid = 0,
    kSubjectsGrid = 1,
    kExtraMuralGrid = 2,
    kExtraCurricularGrid = 3
};
inline constexpr int kExperienceGrids = 4;
inline constexpr int kYearBoxes = 9;          // jre_data(0) to (8)
inline constexpr int kSubjectRowsShown = 10;  // vak_grid rows loaded
inline constexpr int kSubjectRowsStored = 8;  // vak_grid rows saved

// One grid with its edit frame: skl_grid with skole_data, vak_grid with vak_data, b_m_grid with
// b_m_data, b_o_grid with b_o_data.
struct ExperienceFrame {
    DetailGrid grid;
    QString caption;              // the frame's caption
    std::array<QString, 5> data;  // the frame's boxes, from 1
    std::array<QString, 5> labels;
    bool visible = false;
    QString tool_tip;  // of its kwl_ button
};

class Experience : public ui::ChildForm {
  public:
    explicit Experience(shell::Session& session);
    QString form_name() const override { return QStringLiteral("sk416_prg"); }
    shell::Session& session() { return session_; }
    const SubjectCodes& subject_codes() const { return codes_; }

    // ---- the form's values ----
    QString caption;  // post number, title, initials, surname
    std::array<QString, kYearBoxes> jre_data;
    std::array<QString, kYearBoxes> jare_teks;
    bool jre_tab_stops = true;  // off while an edit frame is open
    PopupList posvlak_lys;      // filled in Afrikaans only
    std::array<ExperienceFrame, kExperienceGrids> frames;
    QString vak_name;   // the name of the subject in the frame, kept apart from its code
    int focus_box = 0;  // a box of the open frame the form must give the focus to, then 0
    bool loaded = false;
    bool closed = false;

    ExperienceFrame& frame(ExperienceGrid g) { return frames[static_cast<std::size_t>(g)]; }

    // ---- events ----
    void form_load();
    void jre_data_dbl_click(int index);
    void posvlak_lys_click(int row);
    void grid_click(ExperienceGrid g, int row);
    void frame_data_click(ExperienceGrid g, int box);  // skole_data 2 and 3: the calendar
    void vak_data_dbl_click(int box);                  // box 1: the subject list
    TypedKey data_key_press(int key_ascii);
    void frame_ok_click(
        ExperienceGrid g);        // skole_data_ok, vakke_data_ok, b_m_data_ok, b_o_data_ok
    void kwl_vakke_mouse_down();  // erase all subjects taught
    void jre_ok_click();
    void staff_exit_click() { closed = true; }

  private:
    HeldRecord master_;  // the person's master record, found again by key before a write
    HeldRecord additional_;
    void fill_subjects_grid();

    shell::Session& session_;
    SubjectCodes codes_;
    SubjectRecord subjects_;
};

}  // namespace korvel::staff
