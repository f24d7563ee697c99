#pragma once
// sk411_inlees, the entry form of one staff member: the general particulars kept in the master
// record (PRSALG) and the additional record (PRSADD) of the same post number. The register opens
// it for a clicked row or for a new blank record, with both records read and the person locked.
// From here the user saves, makes the record inactive, deletes or re-activates it, writes
// remarks and goes on to the other detail forms through the chooser.
//
// This is the form's behaviour; the Qt form shows prs_data, the labels and the pop-up lists and
// calls one method per event.

#include <QString>
#include <QStringList>
#include <array>
#include <optional>
#include <span>

#include "platform/dialogs.h"
#include "shell/session.h"
#include "staff/detail_common.h"
#include "staff/learner_cascade.h"

namespace korvel::staff {

class StaffRegister;

inline constexpr int kEntryFields = 27;  // prs_data(0) to prs_data(26)

// The lists of the form, each serving one field (or, for the last three, a control of its own).
enum class EntryList {
    titel_lys,
    geslag_lys,
    hs_lys,
    ras_lys,
    taal_lys,
    gebrek_lys,
    ict_lys,
    reqv_lys,
    hk_lys,
    Tipe_aanstelling,
};
inline constexpr int kEntryLists = 10;

// The rows of a list in a language; hk_lys depends on the population instead.
QStringList entry_list_rows(EntryList list, bool afrikaans, bool educators);

// The birth date an identity number gives (its first six digits, YYMMDD) in the dot form, or
// blank when they are no date. Two-digit years from 30 on are of the 1900s, below 30 of the
// 2000s, as the Windows date window reads them.
QString birth_date_from_id(const QString& id);

// A typed date's text in the dot form, or blank when it is no date ("." read as "/").
QString canonical_date(const QString& text);

// The data_teks label of a field (the label index is not always the field's); -1 for none.
int entry_label_of_field(int field);

// The fields in the order Enter walks them.
std::span<const int> entry_tab_order();

// A class that begins with "ADM" is kept to the reduced set of compulsory fields; unlike the
// population test this looks at the beginning only, so "ADMX" counts as well.
bool is_admin_class(const QString& klas);

class StaffEntry : public ui::ChildForm {
  public:
    // The register that opened the form: its lists answer the duplicate test of a new record
    // and its grid shows a change of state at once.
    StaffEntry(shell::Session& session, StaffRegister& owner, bool is_new);
    QString form_name() const override { return QStringLiteral("sk411_inlees"); }
    bool is_new() const { return is_new_; }
    shell::Session& session() { return session_; }

    // ---- the form's values ----
    std::array<QString, kEntryFields> prs_data;
    std::array<QString, kEntryFields> data_teks;  // labels, by their own index
    std::array<int, kEntryFields> data_teks_colour{};
    bool placeholder_shown = false;  // field 9 holds the grey placeholder
    std::array<PopupList, kEntryLists> lists;
    bool broodwinner = false;
    QString broodwinner_caption;
    std::array<bool, 2> kies_p_t{};  // PERMANENT, TYDELIK
    std::array<QString, 2> kies_p_t_caption;
    std::array<bool, 6> kies_tipe_onderwys{};
    std::array<QString, 6> kies_tipe_onderwys_caption;
    QString caption;
    QString heading;  // post number, title, initials, surname

    struct ToolTips {
        QString data_ok, data_del, opmerkings, kopieer_na_bl;
    };
    ToolTips tool_tips;
    QString kopieer_na_bl_caption;
    // The captions of the buttons that have none of their own on the old form's pictures.
    QString data_del_caption, data_aktiveer_caption, opmerkings_caption, alg_opsies_caption;
    bool data_del_enabled = true;        // off in browse mode
    bool kopieer_na_bl_enabled = false;  // where the governing body forms are there
    bool western_cape = false;           // field 15 is the typed CEMIS number
    int focus_field = -1;                // a field the form must give the focus to, then -1
    bool closed = false;

    PopupList& list(EntryList which) { return lists[static_cast<std::size_t>(which)]; }
    const PopupList& list(EntryList which) const { return lists[static_cast<std::size_t>(which)]; }
    // The list a field shows, if any.
    static std::optional<EntryList> list_of_field(int field, bool western_cape);

    // ---- the register's part ----
    // Copies the working master and additional records into the fields.
    void select_record();

    // ---- events ----
    void form_load();      // labels, captions, tool tips and lists in the language
    void form_activate();  // placeholder, coded fields in the current language, LURITS number
    // A key typed in a field: capitals except in field 20; Enter is dropped and gives the focus
    // to the next field (focus_field).
    TypedKey prs_data_key_press(int field, int key_ascii);
    void prs_data_dbl_click(int field);  // field 9: the calendar
    void prs_data_got_focus(int field);
    void prs_data_click(int field);
    void prs_data_lost_focus(int field);
    void list_click(EntryList which, int row);
    void data_ok_click();
    void data_del_click();
    void data_aktiveer_click();
    void alg_opsies_click(int index);
    void opmerkings_click(bool right_button);
    // Kopieer_na_bl: the save, then the governing body entry filled from this person.
    void kopieer_na_bl_click();
    void staff_exit_click() { closed = true; }

    // The save of the fields, without the compulsory tests; false when it stopped.
    bool save_record();
    // The compulsory fields: every test runs and turns its label red. False when one failed.
    bool compulsory_fields_complete();

    // The learner side, reached for a changed post number; tests put fakes here.
    LearnerFiles* learner_files = nullptr;

  private:
    QString placeholder() const;
    bool educators() const;
    void clear_placeholder_if_shown();
    void set_birth_date_from_id();
    void show_coded_field(int field, EntryList which);
    void ensure_appointment_and_experience();
    void show_state_in_grid(bool inactive);

    shell::Session& session_;
    StaffRegister& owner_;
    bool is_new_;
    // The person's two records as the register read them; every write finds them again first.
    HeldRecord master_;
    HeldRecord additional_;
};

}  // namespace korvel::staff
