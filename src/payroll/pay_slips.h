#pragma once
// lone_kies_druk, the print chooser of the payroll, and sk4611_prg behind it: pay slips of a
// range of staff for one month, a page a person on the school's letterhead, and the salary
// summary, a row a person, for the month or from January to the month.
//
// The Qt form (pay_slips_form) binds its controls to the values below.

#include <QDate>
#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <vector>

#include "payroll/pay_records.h"
#include "platform/dialogs.h"
#include "reports/print_grid.h"
#include "reports/report_engine.h"
#include "reports/staff_range.h"

namespace korvel::reports {
class PrintTargetHost;
}

namespace korvel::payroll {

inline constexpr int kPaySlipOption = 1;
inline constexpr int kSummaryOption = 2;

// lone_kies_druk: two buttons; the one clicked is the option and its caption the heading.
class PayrollPrintChooser : public ui::ChildForm {
  public:
    using Opener = std::function<void(int option, const QString& heading)>;
    PayrollPrintChooser(bool afrikaans, Opener opener);
    QString form_name() const override { return QStringLiteral("lone_kies_druk"); }

    QString heading;
    std::array<QString, 3> pr_option;  // 1 and 2
    int option = 0;
    bool closed = false;

    void pr_option_click(int index);
    void exit_click() { closed = true; }

  private:
    Opener opener_;
};

class PaySlips : public ui::ChildForm {
  public:
    // Without a host (the command line) `choose_target` must be set.
    PaySlips(shell::Session& session, reports::PrintJob& job, int option,
             reports::PrintTargetHost* host = nullptr);
    QString form_name() const override { return QStringLiteral("sk4611_prg"); }

    // ---- the form's values ----
    int option = kPaySlipOption;
    QString caption;
    QString grid_format;
    std::vector<PayrollPerson> prs_grid;
    reports::StaffRange range;
    std::array<QString, 5> pos_teks;  // 3 From, 4 To
    std::array<QString, 4> or_data;   // 1 letterhead, 2 month, 3 print date
    std::array<QString, 4> or_teks;
    QStringList maand_lys;
    bool maand_lys_visible = false;
    // The summary: from January to the month ("TOT MAAND"), or the month alone.
    bool to_month = false;
    QString to_month_caption;
    QString kr_ok_caption;
    bool closed = false;

    std::function<bool(reports::PrintJob&)> choose_target;

    // ---- events ----
    void form_load();
    void prs_grid_click(int row) { range.grid_click(row); }
    void pos_data_key_press(int index, const QString& typed);  // 3 or 4
    void or_data_click(int index);
    void maand_lys_dbl_click(int index);  // 0 to 11
    void kr_ok_click();
    void exit_click() { closed = true; }

    // ---- the reports; false when the target was not chosen or no month is set ----
    bool print_pay_slips();
    bool print_salary_summary();

    // The slip of a person for a month, as it prints.
    reports::PrintGrid slip_grid(const PayrollPerson& person, const PayMonth& pay);
    // The summary of the range from a pay book: a row a person with records, a total row.
    reports::PrintGrid summary_grid(const PayBook& book, int first_month, int last_month);
    // The month chosen in or_data(2), 1 to 12; 0 when none matches.
    int chosen_month() const;

    // "R 12,345.00"
    static QString rand_text(long long rands);

  private:
    bool start(const QString& name);

    shell::Session& s_;
    reports::PrintJob& job_;
    reports::PrintTargetHost* host_;
};

}  // namespace korvel::payroll
