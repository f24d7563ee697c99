#pragma once
// sk413_prg: the bank account and pay particulars of one staff member, on the master record in
// memory (the working PRSALG record at its current number). It writes only that record.
//
// This is the form's behaviour; the Qt form (banking_form.h) shows the boxes and the two
// yes/no lists and calls one method per event.

#include <QString>
#include <QStringList>
#include <array>
#include <span>

#include "staff/address_family.h"
#include "staff/detail_common.h"

namespace korvel::staff {

// ---- amounts: 16-bit whole rands on disk, rands and cents with grouping on screen ----

// A box's amount with thousands grouping and two decimals, always with a comma and a point:
// with leading_zero 0.5 shows "0.50" (the mask "###,###,##0.00"), without it ".50" (the mask
// "###,###,###.00"). A text that is no number (letters, blank) comes back as it stands.
QString format_amount_mask(const QString& text, bool leading_zero);

// ---- the form ----

struct BankBox {
    int box;  // prs_data index
    const store::Field* field;
    const char* afrikaans;
    const char* english;

    // The characters the box takes: an amount its mask, a yes/no box the longest row ("NEE",
    // "YES"), the others the field.
    int width() const;
};
// Every value of the form, boxes 1 to 14 in order.
std::span<const BankBox> bank_boxes();

class BankingDetails : public ui::ChildForm {
  public:
    static constexpr int kBoxes = 15;  // prs_data(1) to prs_data(14)

    explicit BankingDetails(shell::Session& session);
    QString form_name() const override { return QStringLiteral("sk413_prg"); }
    shell::Session& session() { return session_; }

    // ---- the form's values ----
    QString caption;  // post number, title, initials, surname
    std::array<QString, kBoxes> prs_data;
    std::array<QString, kBoxes> data_teks;
    std::array<PopupList, 3> ja_nee_lys;  // 1 serves box 9, 2 serves box 11; 0 is not used
    bool closed = false;                  // the form has unloaded

    // ---- events ----
    void form_load();
    void prs_data_got_focus(int index);
    void prs_data_lost_focus(int index);
    TypedKey prs_data_key_press(int index, int key_ascii);
    void ja_nee_lys_click(int list, int row);
    void data_ok_click();
    void staff_exit_click() { closed = true; }

  private:
    HeldRecord master_;  // the person's master record, found again by key before a write
    shell::Session& session_;
};

}  // namespace korvel::staff
