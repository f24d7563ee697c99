#pragma once
// sk411_bl_inlees, the entry form of one governing body member. The register opens it for a
// clicked row or a new blank record; the staff entry form opens it filled from a staff member
// (copy_to_governing_body). From here the user saves, makes the member inactive, deletes or
// re-activates the record, and writes remarks.
//
// This is the form's behaviour; the Qt form shows prs_data, the labels, the three choice lists,
// the gender options, the check boxes and the pop-up lists, and calls one method per event.

#include <QString>
#include <array>
#include <optional>

#include "platform/dialogs.h"
#include "shell/session.h"
#include "staff/detail_common.h"
#include "staff/staff_entry.h"
#include "staff/staff_register.h"

namespace korvel::governing {

using staff::EntryList;
using staff::PopupList;

inline constexpr int kMemberBoxes = 25;   // prs_data(1) to prs_data(24); 0 unused
inline constexpr int kMemberLabels = 31;  // data_teks(0) to data_teks(30)

// Labels that belong to no box.
enum MemberLabel {
    kLabelType = 0,
    kLabelGender = 1,
    kLabelCitizen = 2,
    kLabelEducation = 28,
    kLabelActive = 29,
    kLabelCapacity = 30,
};
// The label of a box: three further on, the boxes' labels following the type, gender and
// citizen labels. The second box of a telephone number has none (-1).
int member_label_of_box(int box);

// A telephone number of a member split into its code and number: brackets and blanks go, the
// first three characters are the code and the rest the number. (The staff address form splits
// at the closing bracket instead.)
struct MemberPhone {
    QString code;
    QString number;
};
MemberPhone split_member_phone(const QString& text);

// How many characters box `box` takes: the width of the field it is kept in, so that a box
// never holds more than the record keeps (a date ten; the cell number's code three, its number
// the rest of the cell field).
int member_box_width(int box);

// The rows of the three choice lists in a language.
enum class MemberChoice { tipe_kieslys, onderrig_kieslys, hoedanigheid_kieslys };
QStringList member_choice_rows(MemberChoice list, bool afrikaans);

// A blank member record written after what the file holds; its number, 0 when it failed.
int new_member_record(shell::Session& session);

// The names of a member's two remarks files. A member may have no post number, so they are
// named by the member's key with every character but letters and digits made "_", and a short
// fingerprint of the exact key, so that two keys that look alike once made safe keep apart;
// their prefixes are not those of staff remarks.
struct MemberRemarks {
    QString public_name;
    QString private_name;
};
MemberRemarks member_remarks_names(const QString& key);

// The copy of the staff member in the working master and additional records to the governing
// body: a new member record, and the entry form shown filled from the staff record.
void copy_to_governing_body(shell::Session& session);

class MemberEntry : public ui::ChildForm {
  public:
    MemberEntry(shell::Session& session, bool is_new);
    QString form_name() const override { return QStringLiteral("sk411_bl_inlees"); }
    bool is_new() const { return is_new_; }
    int record_number() const { return number_; }
    QString tr(const char* afrikaans, const char* english) const {
        return session_.tr(afrikaans, english);
    }

    // ---- the form's values ----
    std::array<QString, kMemberBoxes> prs_data;
    std::array<QString, kMemberLabels> data_teks;
    std::array<int, kMemberLabels> data_teks_colour{};
    std::array<PopupList, staff::kEntryLists> lists;  // the pop-ups the staff entry fills
    int list_box = 0;                                 // the box the shown pop-up writes to
    std::array<PopupList, 3> choices;                 // tipe, onderrig, hoedanigheid
    std::array<bool, 2> bl_geslag{};                  // MALE, FEMALE
    std::array<QString, 2> bl_geslag_caption;
    bool sa_burger = false;
    bool bl_aktief = false;
    QString prs_posnommer;  // the staff post number of a member made from staff
    bool placeholder_shown = false;
    QString caption;
    bool data_del_enabled = true;
    int focus_box = -1;  // a box the form must give the focus to, then -1
    bool closed = false;

    PopupList& list(EntryList which) { return lists[static_cast<std::size_t>(which)]; }
    PopupList& choice(MemberChoice which) { return choices[static_cast<std::size_t>(which)]; }
    // The pop-up a box shows, if any.
    static std::optional<EntryList> list_of_box(int box);

    // Reads member record number into the boxes; grid is the register's, to show a change of
    // state at once (nullptr: none).
    void select_member(int number, staff::RegisterGrid* grid);
    // Fills the boxes from the staff member in the working records.
    void fill_from_staff();

    // ---- events ----
    void form_load();
    void form_activate();
    staff::TypedKey prs_data_key_press(int box, int key_ascii);
    void prs_data_got_focus(int box);
    void prs_data_lost_focus(int box);
    void prs_data_dbl_click(int box);  // 7 and 24: the calendar
    void list_click(EntryList which, int row);
    void choice_click(MemberChoice which, int row) { choice(which).list_index = row; }
    void data_ok_click();
    void data_del_click();
    void data_aktiveer_click();
    void opmerkings_click(bool right_button);
    void staff_exit_click() { closed = true; }

  private:
    QString placeholder() const;
    bool read_record();  // the member's record afresh into the working record
    void show_state(const QString& state);

    shell::Session& session_;
    bool is_new_;
    int number_ = 0;
    staff::RegisterGrid* grid_ = nullptr;
};

}  // namespace korvel::governing
