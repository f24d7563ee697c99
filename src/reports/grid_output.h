#pragma once
// A print grid on the page, row by row until the page is full, or into worksheet cells.

#include <QImage>
#include <QString>

#include "reports/print_device.h"
#include "reports/print_grid.h"
#include "reports/report_engine.h"

namespace korvel::reports {

// The arguments of print_grid_pages beyond the grid. Sizes are in twips. The call may update
// them (defaults filled in, `left` replaced for a centred table), as a caller passing the same
// options from page to page expects.
struct GridPageOptions {
    double left = 0;             // left edge of the table
    double top = 0;              // added to y before the first row
    QString title;               // bold at 8 points above the table
    bool wide_rows = false;      // row heights x 1.2 (1.25 in block grids), row gap 70
    int header_rows = -1;        // rows kept and repeated on every page; -1: the grid's fixed rows
    bool centre_table = false;   // centred on the page; `left` is replaced
    bool no_rules = false;       // no horizontal rules between rows
    int rule_every = 1;          // rule and page-break test at every n-th row; 0 counts as 1
    int group_size = -1;         // rows per group; -1: no groups
    int group_from_col = -1;     // rules within a group start at this column
    int keep_rows = 9999;        // rows that stay together at a page end (with keep_together)
    bool tight_columns = false;  // cell padding 2
    bool no_frame = false;       // no table frame and no vertical rules
    bool narrow_rows = false;    // row heights x 0.8, row gap 35
    double top_absolute = 0;     // when not 0, y is set to this before the first row
    int key_column = -1;         // the column whose text makes a row an entry; -1: 1 (0 alone)
    bool no_page_break = false;  // never stop for a full page
    double rule_offset = 0;      // moves the bottom line of the table up
    bool keep_together = false;  // test keep_rows rows ahead at every keep_rows-th row
    bool heavy_group_rule = false;
    int last_column = -1;     // columns past it are not used to fit the page; -1: all
    bool page_frame = false;  // redraw the page frame after the table
    bool low_fill = false;    // the page is full at 85 per cent of its height, not 90
    bool autofit = true;      // fit the columns first when the grid has more than 5
};

// Prints rows until the page is full. True when the grid is done; false when a page ended with
// rows left: the printed rows (below the header rows) are then gone from the grid and
// page_pending is set. In spreadsheet output the grid goes to the current worksheet and the
// result is always true.
bool print_grid_pages(PrintJob& job, PrintGrid& grid, GridPageOptions& options);
bool print_grid_pages(PrintJob& job, PrintGrid& grid, GridPageOptions&& options = {});

// The sibling for pay slips and mark sheets: row heights x 1.25 with wide_rows, and a cell
// whose whole trimmed text is "<PAGE>" ends the page at that row. `columns` lists the columns
// to print, numbers from 0 separated by ":"; empty prints them all.
bool print_grid_blocks(PrintJob& job, PrintGrid& grid, GridPageOptions& options,
                       const QString& columns = {});

// Column widths from the texts, at the grid's fonts, plus padding on both sides. With
// fill_page the table is stretched to the page width. A grid fitted once (tag "autofit") is
// left alone. min_height, when above 0, is the least row height.
void fit_grid_columns(PrintJob& job, PrintGrid& grid, double min_height, double padding,
                      bool fill_page = false, int last_column = -1);

// The text drawn turned through 90 degrees, reading bottom to top, on the background colour
// (white for 0), at the cell's font. The picture carries its resolution, so picture_twips
// gives its size on the page.
QImage rotate_cell_text(const QString& text, int back_colour, const QString& font_name,
                        double size_points, bool bold = false, bool italic = false,
                        bool underline = false, bool strikethrough = false, int fore_colour = 0);
QSizeF picture_twips(const QImage& image);

// The text cut from the right, a character at a time, until it fits the width (current scale).
QString clip_to_width(const PrintDevice& device, const QString& text, double width);

// The lines of a cell ("~NL~" first, then line breaks) one below the other from the current y,
// each clipped to the width and set one blank in from x. Y returns to the start unless keep_y.
void print_multiline_cell(PrintDevice& device, double x, const QString& text, double width,
                          bool keep_y = false);

// 1 "A", 26 "Z", 27 "AA"; blank below 1.
QString column_letters(int n);

// A whole grid report after its target was chosen: page by page the header, the grid, and on
// every page that goes on the continuation mark and a new page. The caller then sets y past
// the table, prints what follows it, and calls finish_report. Returns the pages begun.
int print_grid_report(PrintJob& job, PrintGrid& grid, const QString& title,
                      const QString& subtitle = {}, const QString& orientation = kPortraitText,
                      GridPageOptions options = {});

// The grid into the current worksheet from spreadsheet_row (at least row 6).
void grid_to_spreadsheet(PrintJob& job, PrintGrid& grid);
// Folder and name for a grid written to a workbook of its own; false when cancelled.
bool choose_spreadsheet_target(PrintJob& job, const PrintGrid& grid);

}  // namespace korvel::reports
