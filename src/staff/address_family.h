#pragma once
// sk412_prg: the addresses, telephone numbers, church, spouse, medical aid, children and e-mail
// addresses of one staff member, on two screens. It works on the master record in memory (the
// working PRSALG record at its current number), reads nothing from disk and writes only that
// record.
//
// This is the form's behaviour; the Qt form (address_family_form.h) shows the boxes and calls one
// method per event.

#include <QString>
#include <array>
#include <span>

#include "platform/dialogs.h"
#include "shell/session.h"
#include "staff/detail_common.h"
#include "store/record_layouts.h"

namespace korvel::staff {

// ---- telephone numbers: one field on disk, "(021)5551234", two boxes on screen ----

struct PhoneParts {
    QString code;
    QString number;
};
// With a ")" the part before it, without its "(", is the code and the part after it the
// number, both as they stand; without one the whole value is the number.
PhoneParts split_phone(const QString& stored);
// "(" + trimmed code + ")" + trimmed number; a blank code leaves the number as it is.
QString join_phone(const QString& code, const QString& number);

// ---- the form ----

// One value of the form: where it is shown and where it is stored.
struct AddressBox {
    int box;       // prs_data index of the value; of a telephone, the number box
    int code_box;  // the code box of a telephone, 0 for other values
    const store::Field* field;
    int slot;  // the element of an array field (the children 1 to 5)
    const char* afrikaans;
    const char* english;
    int screen;  // data_raam(0) or data_raam(1)
    int column;  // the column of the screen it stands in

    // The characters a box takes: a date box the dot form "YYYY.MM.DD", the others the field.
    int width() const;
};
// Every value of the form, in the order the boxes follow each other on the screens.
std::span<const AddressBox> address_boxes();

class AddressFamily : public ui::ChildForm {
  public:
    static constexpr int kBoxes = 48;  // prs_data(1) to prs_data(47)
    static constexpr int kScreens = 2;

    explicit AddressFamily(shell::Session& session);
    QString form_name() const override { return QStringLiteral("sk412_prg"); }
    shell::Session& session() { return session_; }

    // ---- the form's values ----
    QString caption;                         // post number, title, initials, surname
    std::array<QString, kBoxes> prs_data;    // by box number; 0 is not used
    std::array<QString, kBoxes> data_teks;   // the labels, at the box of each value
    std::array<bool, kScreens> data_raam{};  // which screen is visible
    bool closed = false;                     // the form has unloaded

    // ---- events ----
    void form_load();
    TypedKey prs_data_key_press(int index, int key_ascii);
    void screen_next_click();
    void screen_prev_click();
    void data_ok_click();
    void staff_exit_click() { closed = true; }

  private:
    HeldRecord master_;  // the person's master record, found again by key before a write
    void save_address();
    shell::Session& session_;
};

}  // namespace korvel::staff
