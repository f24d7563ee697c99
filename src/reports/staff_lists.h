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
#include "store/record.h"

namespace korvel::shell {
class Session;
}

namespace korvel::reports {

class PrintTargetHost;

// The options of the form, as the print menu opens it.
inline constexpr int kStaffListOption = 1;
inline constexpr int kAddressListOption = 2;
inline constexpr int kBirthdayListOption = 3;
inline constexpr int kStaffDetailsOption = 4;

// kies_volgorde
enum class StaffOrder { Alphabetic, Numeric };
// kies_administratief: administrative staff only, included or excluded
enum class AdminChoice { Only, Included, Excluded };

// One entry of prs_lys.
struct StaffListEntry {
    QString post;    // PA_POS_NR, trimmed
    int record = 0;  // record number in the master file
    QString text;    // as the list shows it: post number and name
};

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

class StaffLists : public ui::ChildForm {
  public:
    // The job carries the device and the print state; the host shows the print target form.
    // Without a host (the command line) `choose_target` must be set.
    StaffLists(shell::Session& session, PrintJob& job, int option, PrintTargetHost* host = nullptr);
    ~StaffLists() override;

    QString form_name() const override { return QStringLiteral("sk421_prg"); }

    // ---- the form's values ----
    int option = kStaffListOption;
    QString caption;                  // the form's heading
    std::array<QString, 3> pos_data;  // 1 and 2: first and last entry of the range
    std::array<QString, 3> pos_teks;  // their labels
    int pos_focus = 1;                // the pos_data box a click in the list fills
    std::vector<StaffListEntry> prs_lys;
    StaffOrder kies_volgorde = StaffOrder::Alphabetic;
    QStringList volgorde_captions;
    // Education department, governing body, PYEI: "O", "B", "P".
    std::array<bool, 3> kies_aanstelling{true, true, true};
    QStringList aanstelling_captions;
    AdminChoice kies_administratief = AdminChoice::Included;
    QString administratief_caption;
    QStringList administratief_captions;
    std::array<QDate, 3> jr_data;  // 1 and 2: the birthday period
    std::array<QString, 3> jr_teks;
    QString slegs_ouderdomslys_caption;
    // prs_alg, prs_adr, prs_bnk, prs_kwl, prs_aan, prs_ond, prs_kls
    std::array<bool, kSectionCount> sections{true, true, true, true, true, true, true};
    bool visible = false;

    // The print target: ask_print_target with the host when not set. True to go on.
    std::function<bool(PrintJob&)> choose_target;

    // ---- events ----
    void form_load();
    void pos_data_got_focus(int index);
    void prs_lys_click(int row);
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
    // The record numbers the selection takes, in list order.
    std::vector<int> selected_records();
    PrintGrid staff_list_grid();
    PrintGrid address_list_grid();
    PrintGrid birthday_list_grid();
    PrintGrid age_list_grid();
    PrintGrid staff_details_grid(int record);

    // The name of the staff list: surname, the initials and the title.
    static QString list_name(const store::Record& staff);
    // "45:03": whole years and months from birth to the day.
    static QString age_text(const QDate& birth, const QDate& day);
    // The birthday of the date of birth that falls in the period, or a null date.
    static QDate birthday_in(const QDate& birth, const QDate& from, const QDate& to);

  private:
    QString tr(const char* af, const char* en) const;
    bool western_cape() const;
    // Opens the staff files a list reads; the ones opened here close in close_files.
    void open_files();
    void close_files();
    bool start(const QString& name);
    // The loop of a grid report: header, grid, continuation, until the grid is done.
    void print_pages(PrintGrid& grid, const QString& title, const QString& subtitle = {});
    QString lurits_of(const QString& id);
    QString cemis_of(const QString& post);
    void load_companions();

    shell::Session& s_;
    PrintJob& job_;
    PrintTargetHost* host_;
    std::vector<int> opened_;  // codes opened by this form
    QHash<QString, QString> lurits_;
    QHash<QString, QString> cemis_;
    bool companions_loaded_ = false;
};

}  // namespace korvel::reports
