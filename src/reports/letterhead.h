#pragma once
// The school's letterheads: the layouts kept in brf_hoof.txt in the general year folder, a font
// file beside each text layout, and the scanned stationery skool_briefhoof.jpg. A report that
// prints on a letterhead loads the chosen layout into the print state and calls
// print_letterhead at the head of every page, in place of the standard page header.
//
// Nothing in these files is trusted: short lines, bad booleans, unknown positions and sizes,
// margins that do not fit the page, a picture that cannot be read, and names that would make a
// file name outside the folder all come out as a layout that prints, or as no layout.

#include <QImage>
#include <QString>
#include <QStringList>
#include <array>
#include <optional>
#include <vector>

#include "reports/report_engine.h"

namespace korvel::reports {

// One line of brf_hoof.txt. Margins are in millimetres.
struct LetterheadLayout {
    QString name;   // the identification, without its padding and digit
    int frame = 0;  // 1: a frame around the name and address
    double top = 0, bottom = 0, left = 0, right = 0;
    bool print_name = false;
    bool print_address = false;
    bool print_badge = false;
    QString position = QStringLiteral("L");
    QString size = QStringLiteral("M");
};

inline const QString kLetterheadTable = QStringLiteral("brf_hoof.txt");
inline const QString kLetterheadPicture = QStringLiteral("skool_briefhoof.jpg");
// The identification of a picture layout holds this.
inline const QString kPictureMark = QStringLiteral(".JPG");

// Field 1 of a line: the name left-justified in 29 characters (a longer one cut), then the
// frame digit.
QString letterhead_field(const QString& name, int frame);
// The name of field 1: everything up to the first double blank (the whole field when it has
// none, so a name of 28 or 29 characters keeps its digit).
QString letterhead_name(const QString& field);

// Every line of the table with a non-empty field 1, defaults applied: an empty position reads
// "L", an empty size "M", "S" reads "K" and "L" reads "G". Missing values are 0 and false.
std::vector<LetterheadLayout> read_letterhead_table(const QString& native_folder);
// The table in the quoted text form, a line for each layout with a name.
QByteArray letterhead_table_bytes(const std::vector<LetterheadLayout>& table);

// A name that may stand in a file name of the folder: not blank, no "\", "/", ":" nor "..",
// no control characters.
bool is_safe_layout_name(const QString& name);
// The file of that name in the folder, found whatever its case; blank when it is missing or
// the name is not safe.
QString find_letterhead_file(const QString& native_folder, const QString& file_name);
// The font file of a text layout: the name through upper_name with ".TXT" behind it.
QString letterhead_font_file_name(const QString& name);

// The two lines of a font file, or nullopt when it is missing or unreadable. The second line
// takes nothing from the first: a value it lacks takes the default.
std::optional<std::array<LetterheadFont, 2>> read_letterhead_fonts(const QString& native_folder,
                                                                   const QString& name);
QByteArray letterhead_font_bytes(const std::array<LetterheadFont, 2>& fonts);
// What printing takes without a font file: Lucida Console 10, colour 0, no flags.
LetterheadFont print_font_default();
// What the layout form shows without one: "ARIAL" 10 for the name, 8 for the address.
std::array<LetterheadFont, 2> form_font_defaults();

// The names of the pick list: each line's name, upper-cased with every "\" removed, whose file
// (the picture, or the font file) is in the folder, once each.
QStringList fill_letterhead_list(const QString& native_folder);

// Loads the layout of job.state.letterhead.selected from the job's general year folder: the
// first line whose trimmed field 1 begins with it. False (loaded cleared) when there is none.
bool load_letterhead(PrintJob& job);
// Clears the selection and everything loaded, so the next page has the standard header.
void clear_letterhead(PrintJob& job);

// The letterhead at the head of a page: set-up, the layout loaded, a new page when one has
// begun, the picture or the badge, name and address blocks and frame; then the body starts
// below it and the page ends earlier by the bottom margin.
void print_letterhead(PrintJob& job, const QString& orientation = kPortraitText,
                      double line_factor = 1, const QImage& left_picture = {},
                      const QImage& right_picture = {});

// The measuring page: in landscape, a box inside the four margins (millimetres), to hold
// against the stationery.
void print_measuring_frame(PrintJob& job, double top, double bottom, double left, double right);

// Millimetres in page units of the device: across with the horizontal scale, down with the
// vertical.
double millimetres_across(const PrintDevice& device, double mm);
double millimetres_down(const PrintDevice& device, double mm);

// The Unicode symbols the address block's glyphs stand for, and the font that has them.
inline const QString kGlyphFont = QStringLiteral("Symbola");
inline const QString kMailGlyph = QString::fromUtf8("\xF0\x9F\x93\xAC ");       // open mailbox
inline const QString kTelephoneGlyph = QString::fromUtf8("\xF0\x9F\x95\xBF ");  // telephone
inline const QString kFaxGlyph = QString::fromUtf8("\xE2\x9C\x86 ");            // telephone sign

}  // namespace korvel::reports
