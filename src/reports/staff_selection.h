#pragma once
// The selection the staff lists, the tuition list and the qualification list share: a range
// over the list of staff, the order, the appointment kinds and the administrative staff; the
// record loop that turns it into master records; and the start and page loop of a list.
//
// Each of those forms is this selection and its own list; its Qt form binds the values below.

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <vector>

#include "reports/grid_output.h"
#include "reports/print_grid.h"
#include "reports/report_engine.h"
#include "store/record.h"
#include "store/store.h"

namespace korvel::shell {
class Session;
}

namespace korvel::reports {

class PrintTargetHost;

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

class StaffSelection {
  public:
    // The job carries the device and the print state; the host shows the print target form.
    // Without a host (the command line) `choose_target` must be set.
    StaffSelection(shell::Session& session, PrintJob& job, PrintTargetHost* host);
    virtual ~StaffSelection();
    StaffSelection(const StaffSelection&) = delete;
    StaffSelection& operator=(const StaffSelection&) = delete;

    // ---- the selection's values ----
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

    // The print target: ask_print_target with the host when not set. True to go on.
    std::function<bool(PrintJob&)> choose_target;

    // ---- events ----
    void pos_data_got_focus(int index);
    void prs_lys_click(int row);

    // The record numbers the selection takes, in list order. The master file is read once, in
    // blocks, and not again while it stands as the list read it; the records taken are kept
    // for read_selected.
    std::vector<int> selected_records();
    // The same records in the order chosen: by their list names (equal names as the list runs)
    // for the alphabetic order, else as the list runs.
    std::vector<int> ordered_records();
    // A record the last selection took, put in the working record as a read would put it (a
    // record it did not take is read from the file).
    const store::Record& read_selected(int number);
    // The bytes of such a record, without putting them in the working record.
    const char* selected_bytes(int number);
    // list_name of a record the last selection took, made when the master file was read.
    QString selected_name(int number);
    // Its post number, trimmed.
    QString selected_post(int number);
    // The name of the lists: surname, the initials and the title.
    static QString list_name(const store::Record& staff);

  protected:
    // The captions and the list: every record with a post number that is not deleted, by
    // post number.
    void load_selection();
    // Opens the staff files a list reads; the ones opened here close in close_files.
    void open_files(std::initializer_list<store::Code> codes);
    void close_files();
    // The report's name after the ledger year, and the target; false when none was chosen.
    bool start(const QString& name);
    // The loop of a grid report: header, grid, continuation, until the grid is done. The
    // columns are fitted with the padding first.
    void print_pages(PrintGrid& grid, const QString& title, const QString& subtitle = {},
                     GridPageOptions options = centred_table(), double padding = 120,
                     const QString& orientation = kPortraitText);
    static GridPageOptions centred_table();
    QString tr(const char* af, const char* en) const;

    shell::Session& s_;
    PrintJob& job_;
    PrintTargetHost* host_;

  private:
    // The master file read whole: its bytes kept for the records the selection takes.
    void read_master(const std::function<void(int, const char*)>& visit);
    // False when the master file changed since it was read, or was never read.
    bool master_unchanged() const;
    QString master_path() const;

    std::vector<int> opened_;     // codes opened by this form
    QByteArray master_;           // records 1 to master_count_, as last read
    std::vector<QString> names_;  // list_name of each record of master_, by record number
    std::vector<QString> posts_;  // and its post number, trimmed
    int master_count_ = -1;
    qint64 master_size_ = -1;
    QDateTime master_time_;
};

// The header's title of a list: the report's name without its closing " : ".
QString list_title(const QString& report_name);

// Rows of cells into the grid below its header row; a row of several lines is made taller. The
// texts are moved into the cells.
void fill_rows(PrintGrid& grid, std::vector<QStringList> rows);
// The rows from first on made taller where one of their cells holds several lines.
void fit_row_heights(PrintGrid& grid, int first);

}  // namespace korvel::reports
