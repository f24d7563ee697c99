#pragma once
// sk461_prg: what the school paid each of its own staff in each month of the ledger year. Every
// amount is typed in; nothing is calculated but the totals on the screen, and nothing is carried
// from month to month except what the file's record buffer carries (see data_ok_click).
//
// The Qt form (salary_capture_form) binds its controls to the values below.

#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <vector>

#include "payroll/pay_records.h"
#include "platform/dialogs.h"

namespace korvel::payroll {

class SalaryCapture : public ui::ChildForm {
  public:
    explicit SalaryCapture(shell::Session& session);
    QString form_name() const override { return QStringLiteral("sk461_prg"); }

    // ---- the form's values ----
    QString caption;
    QString grid_format;  // the heading of prs_grid
    std::vector<PayrollPerson> prs_grid;
    int current_row = -1;
    bool data_raam_visible = false;
    std::array<QString, 5> prs_data;  // occupation, post number, name, date, payment month
    std::array<QString, 5> data_teks;
    std::array<QString, 7> ink_data, ink_teks;  // 1 to 6
    std::array<QString, 4> ink_var_teks;        // 1 to 3: the free earnings lines' texts
    std::array<QString, 7> uit_data, uit_teks;
    std::array<QString, 4> uit_var_teks;
    QString ink_totaal, uit_totaal, salaris_totaal;
    QStringList maand_lys;
    bool maand_lys_visible = false;
    int month = 0;  // 1 to 12; 0: none chosen
    QString data_ok_caption, search_caption, print_caption;
    bool closed = false;

    // The print chooser of the payroll; the print button is refused in browse mode.
    std::function<void()> open_print_chooser;

    // ---- events ----
    void form_load();
    void prs_grid_dbl_click(int row);
    void maand_lys_dbl_click(int index);  // 0 January to 11 December
    // A click in an amount box or leaving it: the box shows "####0.00" and the totals follow.
    // side 1 earnings, 2 deductions; index 1 to 6.
    void amount_changed(int side, int index);
    void data_ok_click();
    void print_click();
    void staff_exit_click();

    // Amounts as the boxes show them: the number the text starts with (commas dropped), two
    // decimals, no grouping.
    static QString box_amount(const QString& text);

  private:
    void load_month();
    void totals();

    shell::Session& s_;
};

}  // namespace korvel::payroll
