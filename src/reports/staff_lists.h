#pragma once
// sk421_prg: the lists of the staff themselves. The form's selection (a range over the staff
// list, the order, the appointment kinds, the administrative staff, the birthday period and the
// sections of the staff details) picks the records; each list fills a print grid and prints it
// page by page through the page engine, or into a workbook when that is the target.
//
// The Qt form binds its controls to the values below and calls one method per event.

#include <QDate>
#include <QHash>
#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <vector>

#include "platform/dialogs.h"
#include "reports/print_grid.h"
#include "reports/report_engine.h"
#include "reports/staff_selection.h"
#include "store/record.h"

namespace korvel::shell {
class Session;
}

namespace korvel::reports {

// The options of the form, as the print menu opens it.
inline constexpr int kStaffListOption = 1;
inline constexpr int kAddressListOption = 2;
inline constexpr int kBirthdayListOption = 3;
inline constexpr int kStaffDetailsOption = 4;

// The sections of the staff details, in the order they print. The class tick (prs_kls) is kept
// with the form's values but has no rows of its own.
enum StaffSection {
    kSectionGeneral,
    kSectionAddress,
    kSectionBanking,
    kSectionQualifications,
    kSectionAppointments,
    kSectionExperience,
    kSectionClasses,
    kSectionCount
};

class StaffLists : public ui::ChildForm, public StaffSelection {
  public:
    StaffLists(shell::Session& session, PrintJob& job, int option, PrintTargetHost* host = nullptr);
    ~StaffLists() override;

    QString form_name() const override { return QStringLiteral("sk421_prg"); }

    // ---- the form's values ----
    int option = kStaffListOption;
    QString caption;               // the form's heading
    std::array<QDate, 3> jr_data;  // 1 and 2: the birthday period
    std::array<QString, 3> jr_teks;
    QString slegs_ouderdomslys_caption;
    // prs_alg, prs_adr, prs_bnk, prs_kwl, prs_aan, prs_ond, prs_kls
    std::array<bool, kSectionCount> sections{true, true, true, true, true, true, true};
    bool visible = false;

    // ---- events ----
    void form_load();
    void kr_ok_click();
    void vj_ok_click();
    void slegs_ouderdomslys_click();
    void exit_click();

    // ---- the lists; each false when the target was not chosen ----
    bool print_staff_list();
    bool print_address_list();
    bool print_birthday_list();
    bool print_age_list();
    bool print_staff_details();

    // ---- the grids, as the lists fill them ----
    PrintGrid staff_list_grid();
    PrintGrid address_list_grid();
    PrintGrid birthday_list_grid();
    PrintGrid age_list_grid();
    PrintGrid staff_details_grid(int record);

    // "45:03": whole years and months from birth to the day.
    static QString age_text(const QDate& birth, const QDate& day);
    // The birthday of the date of birth that falls in the period, or a null date.
    static QDate birthday_in(const QDate& birth, const QDate& from, const QDate& to);

  private:
    bool western_cape() const;
    void open_files();
    QString lurits_of(const QString& id);
    QString cemis_of(const QString& post);
    void load_companions();

    QHash<QString, QString> lurits_;
    QHash<QString, QString> cemis_;
    bool companions_loaded_ = false;
};

}  // namespace korvel::reports
