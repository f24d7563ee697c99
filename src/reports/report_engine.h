#pragma once
// The page engine: page set-up, the standard page header with the school's name, badge, date,
// time and page number, the page frame, rules, the footer and the end of a report. The same calls
// serve a workbook: when the output goes to a spreadsheet, a page header starts a new worksheet
// and no printer is touched.
//
// A PrintJob holds the print state of one report; the caller (later the Session) owns it.

#include <QDateTime>
#include <QImage>
#include <QString>
#include <functional>
#include <memory>

#include "platform/dialogs.h"
#include "reports/print_device.h"
#include "reports/workbook.h"

namespace korvel::reports {

// What the header and footer print of the school and the program; the caller fills it.
struct ReportSchool {
    QString name;
    QString designation;  // empty for most schools
    QString address1, address2, address3;
    QString telephone, fax, email;
    QString province_code;
    QString program_name = QStringLiteral("KORVEL");  // the executable's name
    QString version;                                  // major.minor.revision
    QString operating_system;
    QImage badge;   // null: none
    QImage emblem;  // the department emblem of the province; null: none
};

// One font line of a letterhead's font file: the school name or the address block.
struct LetterheadFont {
    QString name;  // empty: the block is not printed
    int size = 10;
    int colour = 0;  // 0x00BBGGRR
    bool bold = false;
    bool italic = false;
    bool underline = false;
};

// The letterhead in force, as load_letterhead sets it from the layout chosen.
struct LetterheadState {
    QString selected;                   // the identification chosen; blank: none
    bool use_letterhead_image = false;  // the identification names a picture (".JPG")
    int frame_flag = 0;                 // the digit at the end of the identification
    bool print_name = false;
    bool print_address = false;
    bool print_badge = false;
    QString badge_position = QStringLiteral("L");  // "L", "M" or "R"
    QString badge_size = QStringLiteral("M");      // "K", "M" or "G" (or "S", "L")
    // Margins in page units, converted by the device from millimetres.
    double top_margin = 0;
    double bottom_margin = 0;
    double left_margin = 0;
    double right_margin = 0;  // characters; 0 when none is set
    LetterheadFont name_font;
    LetterheadFont address_font;
    // The foot of the page above the bottom margin, in twips from the top; 0: the page's own.
    // Kept in twips because the grid printer changes the scale and so loses the shortened
    // scale height the letterhead leaves behind.
    double page_end_twips = 0;
    bool loaded = false;          // a letterhead takes the place of the frame
    bool image_in_force = false;  // a letterhead image is printed on the page
};

struct PrintState {
    bool page_pending = false;
    int base_font_size = 10;
    int page_columns = 0;
    int continuation_columns = 0;  // the copy of page_columns kept for the continuation mark
    double page_bottom = 0;
    double header_bottom = 0;
    int header_lines = 0;
    QString report_name;
    bool colour_printing = false;
    bool to_spreadsheet = false;
    bool to_html = false;
    QString spreadsheet_folder;  // native path
    QString spreadsheet_file;    // without ".xlsx"
    int spreadsheet_sheet = 0;
    int spreadsheet_row = 0;  // from 1, as the worksheet counts rows
    bool no_header_pictures = false;
    LetterheadState letterhead;
};

inline const QString kPortraitText = QStringLiteral("A4_portrait");
inline const QString kLandscapeText = QStringLiteral("A4_landscape");

class PrintJob {
  public:
    PrintJob(PrintDevice& device, ui::Dialogs& dialogs, ReportSchool school = {},
             bool afrikaans = true);

    PrintState state;
    ReportSchool school;
    bool afrikaans = true;
    // Native path of the general year folder, where kleur_drukker.txt lives; empty: none.
    QString general_year_folder;
    // The clock of the header; the machine's when not set.
    std::function<QDateTime()> clock;

    PrintDevice& device() { return *device_; }
    void set_device(PrintDevice& device) { device_ = &device; }
    ui::Dialogs& dialogs() { return *dialogs_; }
    // The workbook of spreadsheet output; created by begin_spreadsheet.
    Workbook* workbook() { return workbook_.get(); }

    // Afrikaans or English text, as the language in use asks.
    QString text(const QString& af, const QString& en) const { return afrikaans ? af : en; }

    void print_setup(const QString& orientation = kPortraitText, double line_factor = 1);
    void reset_print_font();
    // title and subtitle may be altered.
    void print_page_header(QString& title, QString& subtitle,
                           const QString& orientation = kPortraitText, bool bold_title = false,
                           bool no_header = false, double line_factor = 1);
    void print_page_header(const QString& title, const QString& subtitle = {},
                           const QString& orientation = kPortraitText, bool bold_title = false,
                           bool no_header = false, double line_factor = 1);
    void draw_box(double x1, double y1, double x2, double y2, bool shadowed = false,
                  bool no_clip = false);
    void draw_rule(double x1, double y1, double x2, double y2, bool heavy = false,
                   bool dotted = false, bool no_clip = false);
    // The right edge draw_box and draw_rule clip to.
    double clip_limit() const;
    void finish_report(bool with_footer = true, bool with_maker_line = true);
    void print_page_footer(double line_y = 0, bool new_page = false, bool with_maker_line = true);
    // The next page number followed by ".../" at column page_columns - 8 of the last line.
    void print_continuation_mark();

    // Spreadsheet output to folder/file.xlsx from here on: an empty workbook, sheet and row 0.
    void begin_spreadsheet(const QString& native_folder, const QString& file);
    // Writes the workbook (replacing a file of that name). A folder that cannot be written
    // gives a message and false; nothing is left half-written.
    bool save_spreadsheet();
    QString spreadsheet_path() const;
    // The report's spreadsheet state released: back to paper.
    void end_spreadsheet();

    // The next worksheet of spreadsheet output, in ARIAL: a page header's, or a letterhead's.
    Sheet& next_worksheet();

    // The maker's line at the foot of a page.
    QString maker_line() const;

    // The run's page counter is a progress bar through the dialogs that counts the pages as
    // they start, with a cancel. A stopped run abandons what it printed and goes on to the
    // report's end on a device that keeps nothing.
    bool stopped() const { return stopped_device_ != nullptr; }
    // The counter gone and, after a stop, the job's own device back: the run is over.
    void end_run();

  private:
    // A page has started: the counter shows it, and a cancel stops the run here.
    void count_page();
    double round_half(double v) const;
    void clip_right(double& x2) const;
    QDateTime now() const { return clock ? clock() : QDateTime::currentDateTime(); }

    PrintDevice* device_;
    ui::Dialogs* dialogs_;
    std::unique_ptr<Workbook> workbook_;
    bool landscape_ = false;
    std::unique_ptr<ui::Progress> pages_;
    std::unique_ptr<PrintDevice> stopped_device_;
    PrintDevice* device_before_stop_ = nullptr;
};

// The value centred in the width, filled on both sides; a longer value is cut to the width.
QString pad_centre(const QString& value, int width, QChar fill = u' ');

// The colour flag of kleur_drukker.txt in the folder: false when the file is missing or holds
// no flag. Written in the quoted text form.
bool read_colour_printing(const QString& native_folder, bool fallback = false);
bool write_colour_printing(const QString& native_folder, bool colour);

}  // namespace korvel::reports
