#include "reports/report_engine.h"

#include <QDir>
#include <QFileInfo>
#include <cmath>

#include "reports/recording_device.h"
#include "shell/helpers.h"
#include "store/quoted_text.h"

using korvel::shell::date_to_text;

namespace korvel::reports {

namespace {

const QString kPageFont = QStringLiteral("Lucida Console");
const QString kFooterFont = QStringLiteral("ARIAL");

// Rounds as the suite's integer conversion does: halves to the even neighbour.
int to_whole(double v) {
    return int(std::nearbyint(v));
}

// Where a stopped print run draws until its report ends: nowhere, and nothing is delivered.
class StoppedDevice : public RecordingDevice {
  public:
    bool delivered() const override { return false; }

  protected:
    void draw_text(const QString&, double, double) override {}
    void draw_line(double, double, double, double, int) override {}
    void draw_filled_box(double, double, double, double, int) override {}
    void draw_picture(const QImage&, double, double, double, double) override {}
    void begin_new_page() override {}
    void finish_doc() override {}
    void discard_doc() override {}
};

}  // namespace

QString pad_centre(const QString& value, int width, QChar fill) {
    if (width <= 0)
        return {};
    if (value.size() >= width)
        return value.left(width);
    const qsizetype left = (width - value.size()) / 2;
    return QString(left, fill) + value + QString(width - value.size() - left, fill);
}

bool read_colour_printing(const QString& native_folder, bool fallback) {
    if (native_folder.isEmpty())
        return fallback;
    const auto bytes = quoted::read_file(QDir(native_folder).filePath("kleur_drukker.txt"));
    if (!bytes)
        return false;
    quoted::Reader reader(*bytes);
    const auto flag = reader.read_bool();
    return flag.value_or(fallback);
}

bool write_colour_printing(const QString& native_folder, bool colour) {
    if (native_folder.isEmpty() || !QFileInfo(native_folder).isDir())
        return false;
    quoted::Writer w;
    w.boolean(colour).end_line();
    return quoted::write_file(QDir(native_folder).filePath("kleur_drukker.txt"), w.bytes());
}

PrintJob::PrintJob(PrintDevice& device, ui::Dialogs& dialogs, ReportSchool school_, bool afrikaans_)
    : school(std::move(school_)), afrikaans(afrikaans_), device_(&device), dialogs_(&dialogs) {}

void PrintJob::count_page() {
    if (stopped())
        return;
    PrintDevice& d = device();
    if (!pages_) {
        const QString heading = state.report_name.isEmpty()
                                    ? text(QStringLiteral(" BESIG MET DRUKWERK ... "),
                                           QStringLiteral(" BUSY WITH PRINTING ... "))
                                    : state.report_name;
        pages_ =
            dialogs().progress(heading.trimmed() + QStringLiteral("\n") + d.device_name(), 0, true);
    }
    if (pages_->step(d.page()))
        return;
    pages_.reset();
    d.abandon();
    stopped_device_ = std::make_unique<StoppedDevice>();
    stopped_device_->set_scale_mode(d.scale_mode());
    stopped_device_->set_current_x(d.current_x());
    stopped_device_->set_current_y(d.current_y());
    device_before_stop_ = &d;
    device_ = stopped_device_.get();
}

void PrintJob::end_run() {
    pages_.reset();
    if (stopped()) {
        device_ = device_before_stop_;
        stopped_device_.reset();
    }
}

QString PrintJob::maker_line() const {
    return text(QStringLiteral(" - Skooladministrasie deur VESPARINE"),
                QStringLiteral(" - School administration by VESPARINE"));
}

void PrintJob::print_setup(const QString& orientation_in, double line_factor) {
    if (state.to_spreadsheet)
        return;
    PrintDevice& d = device();
    const QString orientation = orientation_in.isEmpty() ? kPortraitText : orientation_in;
    if (line_factor == 0)
        line_factor = 1;
    d.set_scale_mode(ScaleMode::Characters);
    if (line_factor != 1)
        d.set_scale_height(d.scale_height() * line_factor);
    // Anything but the portrait text, "A4" among them, is landscape.
    landscape_ = orientation != kPortraitText;
    if (!landscape_) {
        if (state.page_pending)
            d.set_orientation(kPortrait);
        state.base_font_size = 10;
    } else {
        if (state.page_pending)
            d.set_orientation(kLandscape);
        state.base_font_size = 8;
    }
    // A setting file that cannot be read leaves the flag as read.
    state.colour_printing = read_colour_printing(general_year_folder, state.colour_printing);
    d.set_font_name(kPageFont);
    d.set_font_size(state.base_font_size);
    state.page_columns = to_whole(d.scale_width());
    const double height = d.scale_height();
    state.header_bottom = landscape_ ? height / 12 + 1 : height / 12 - 0.5;
    state.page_bottom = height - 1.25;
    d.set_line_width(2);
    d.set_font_underline(false);
    d.set_font_bold(false);
    d.set_font_italic(false);
    reset_print_font();
}

void PrintJob::reset_print_font() {
    if (state.to_spreadsheet)
        return;
    PrintDevice& d = device();
    d.set_font_name(kPageFont);
    d.set_font_size(10);
    d.set_fore_colour(0);
    d.set_font_bold(false);
    d.set_font_italic(false);
    d.set_font_underline(false);
    d.set_font_transparent(false);
}

Sheet& PrintJob::next_worksheet() {
    // Every header starts a worksheet of its own.
    if (!workbook_)
        workbook_ = std::make_unique<Workbook>();
    state.spreadsheet_sheet += 1;
    while (state.spreadsheet_sheet > workbook_->sheet_count())
        workbook_->add_sheet();
    Sheet& ws = workbook_->sheet(state.spreadsheet_sheet);
    ws.font_name = QStringLiteral("ARIAL");
    return ws;
}

void PrintJob::print_page_header(const QString& title, const QString& subtitle,
                                 const QString& orientation, bool bold_title, bool no_header,
                                 double line_factor) {
    QString t = title;
    QString s = subtitle;
    print_page_header(t, s, orientation, bold_title, no_header, line_factor);
}

void PrintJob::print_page_header(QString& title, QString& subtitle, const QString& orientation_in,
                                 bool bold_title, bool no_header, double line_factor) {
    const QString orientation = orientation_in.isEmpty() ? kPortraitText : orientation_in;
    if (line_factor == 0)
        line_factor = 1;
    print_setup(orientation, line_factor);
    const bool sheet = state.to_spreadsheet;
    PrintDevice& d = device();

    const QDateTime moment = now();
    const QString date_text = date_to_text(moment.date());
    const QString time_text = moment.time().toString(QStringLiteral("HH:mm:ss")).trimmed();

    if (sheet) {
        Sheet& ws = next_worksheet();
        state.page_pending = false;
        const QString page_text = text(QStringLiteral("BLADSY : "), QStringLiteral("PAGE : ")) +
                                  QString::number(state.spreadsheet_sheet);
        if (!no_header) {
            ws.put(0, 0, date_text);
            ws.put(0, 4, school.program_name);
            ws.put(1, 0, time_text);
            QString name = school.name;
            if (!school.designation.trimmed().isEmpty())
                name += QStringLiteral(" (") + school.designation + QStringLiteral(")");
            ws.put(1, 2, name);
            ws.put(1, 4, school.operating_system);
            ws.put(2, 0, page_text);
            ws.put(2, 4, school.version);
            if (!subtitle.isEmpty()) {
                title += QStringLiteral(" [") + subtitle + QStringLiteral("]");
                subtitle.clear();
            }
            SheetCell& t = ws.put(2, 2, title);
            t.bold = bold_title;
            t.font_size = bold_title ? 12 : 10;
            state.spreadsheet_row = 6;
        }
        return;
    }

    d.set_font_size(10);
    const double width = d.scale_width();
    const double height = d.scale_height();
    state.page_columns = to_whole(width - 0.25);
    state.page_bottom = height - (landscape_ ? 0.5 : 0.7);
    state.header_bottom = landscape_ ? height / 12 + 1 : height / 12 - 0.5;
    state.header_lines = to_whole(state.header_bottom);

    // The page-break test: a header called in the middle of a page prints nothing, so a
    // report may call it after every block and it takes effect near the bottom of the page.
    const double y_now = d.current_y();
    if (y_now >= height - 5 || y_now == 0 || state.page_pending) {
        if (y_now > 0 || !state.page_pending)
            d.new_page();
        state.page_pending = false;

        if (!no_header) {
            if (!state.letterhead.loaded) {
                draw_box(0.25, 0.25, state.page_columns, state.page_bottom, false, true);
                draw_rule(0.25, state.header_bottom, state.page_columns, state.header_bottom, false,
                          false, true);
            } else {
                draw_box(0.25, 0.25, state.page_columns, state.header_bottom, false, true);
            }
            d.set_current_x(0);
            d.set_current_y(landscape_ ? 0.75 : 0.5);

            const QString page_text = text(QStringLiteral("BLADSY : "), QStringLiteral("PAGE : ")) +
                                      QString::number(d.page());
            QString school_line = school.name;
            if (!school.designation.trimmed().isEmpty())
                school_line += QStringLiteral(" (") + school.designation + QStringLiteral(")");

            auto left_part = [&](const QString& s) {
                d.set_font_size(8);
                d.set_current_x(3);
                d.print(s, true);
            };
            auto middle_part = [&](const QString& s, double size, bool bold) {
                d.set_font_size(size);
                d.set_font_bold(bold);
                d.set_current_x((width - d.text_width(s)) / 2);
                d.print(s, true);
                d.set_font_bold(false);
            };
            auto right_part = [&](const QString& s) {
                d.set_font_size(8);
                d.set_current_x(width - 2 - d.text_width(s));
                d.print(s, false);
            };

            // Line 1: the middle part is never given a value.
            left_part(date_text);
            middle_part(QString(), 10, false);
            right_part(school.program_name);
            left_part(time_text);
            middle_part(school_line, 10, false);
            right_part(school.operating_system);

            if (landscape_ && !subtitle.isEmpty()) {
                title += QStringLiteral(" [") + subtitle + QStringLiteral("]");
                subtitle.clear();
            }
            left_part(page_text);
            middle_part(title, bold_title ? 12 : 10, bold_title);
            right_part(school.version);
            d.set_font_bold(false);
            d.set_font_size(state.base_font_size);

            if (!subtitle.isEmpty()) {
                d.set_current_y(d.current_y() + 0.5);
                middle_part(subtitle, 10, bold_title);
                d.set_font_size(state.base_font_size);
                d.set_current_x(0);
                d.set_current_y(d.current_y() + 1);
            }
            d.set_current_x(0);
            d.set_current_y(6);
        }

        // The badge and the emblem; they leave y where it is.
        const double keep_x = d.current_x();
        const double keep_y = d.current_y();
        if (!school.badge.isNull() && !state.no_header_pictures) {
            double w = landscape_ ? 3.5 : 4;
            double h = landscape_ ? 1.5 : 2;
            const double pw = school.badge.width();
            const double ph = school.badge.height();
            if (pw > ph)
                w = std::floor(w * (pw / ph));
            else if (ph > pw)
                h = std::floor(h * (ph / pw));
            d.picture(school.badge, 1, landscape_ ? 3 : 2.75, w, h);
        }
        if (!school.emblem.isNull() && !state.no_header_pictures) {
            d.picture(school.emblem, width - 6, landscape_ ? 3 : 2.75, landscape_ ? 3.5 : 4,
                      landscape_ ? 1.5 : 1);
        }
        d.set_current_x(keep_x);
        d.set_current_y(keep_y);
        count_page();
    }
    state.page_columns = to_whole(width);
    state.continuation_columns = state.page_columns;
}

double PrintJob::clip_limit() const {
    return state.letterhead.right_margin > 0
               ? device_->scale_width() - state.letterhead.right_margin - 0.5
               : state.page_columns - 0.5;
}

void PrintJob::clip_right(double& x2) const {
    const double limit = clip_limit();
    if (x2 > limit)
        x2 = limit;
}

void PrintJob::draw_box(double x1, double y1, double x2, double y2, bool shadowed, bool no_clip) {
    if (state.to_spreadsheet)
        return;
    if (!no_clip)
        clip_right(x2);
    PrintDevice& d = device();
    d.line(x1, y1, x2, y1);
    d.line(x2, y1, x2, y2);
    d.line(x2, y2, x1, y2);
    d.line(x1, y2, x1, y1);
    if (shadowed) {
        const double l = x1 - 0.5, t = y1 - 0.25, r = x2 + 0.25, b = y2 + 0.25;
        d.line(l, t, r, t);
        d.line(r, t, r, b);
        d.line(r, b, l, b);
        d.line(l, b, l, t);
    }
}

void PrintJob::draw_rule(double x1, double y1, double x2, double y2, bool heavy, bool dotted,
                         bool no_clip) {
    if (state.to_spreadsheet)
        return;
    if (!no_clip)
        clip_right(x2);
    PrintDevice& d = device();
    const int width = d.line_width();
    const LineStyle style = d.line_style();
    d.set_line_width(heavy ? 3 : 1);
    d.set_line_style(dotted ? LineStyle::Dot : LineStyle::Solid);
    d.line(x1, y1, x2, y2);
    d.set_line_width(width);
    d.set_line_style(style);
}

void PrintJob::print_continuation_mark() {
    if (state.to_spreadsheet)
        return;
    PrintDevice& d = device();
    d.set_scale_mode(ScaleMode::Characters);
    d.set_font_name(kPageFont);
    d.set_font_size(state.base_font_size);
    d.set_current_x(state.continuation_columns - 8);
    d.set_current_y(state.page_bottom - 1);
    d.print(QString::number(d.page() + 1) + QStringLiteral(".../"), true);
}

void PrintJob::finish_report(bool with_footer, bool with_maker_line) {
    if (state.to_spreadsheet) {
        if (save_spreadsheet()) {
            dialogs().message(
                text(
                    QStringLiteral("UITVOER VAN ") + state.spreadsheet_file +
                        QStringLiteral(" NA ") + spreadsheet_path() + QStringLiteral(" VOLTOOI !!"),
                    QStringLiteral("EXPORT OF ") + state.spreadsheet_file + QStringLiteral(" TO ") +
                        spreadsheet_path() + QStringLiteral(" COMPLETE !!")),
                ui::Icon::Information);
        }
        end_spreadsheet();
        return;
    }
    PrintDevice& d = device();
    d.set_font_name(kFooterFont);
    d.set_font_size(10);
    d.set_font_bold(false);
    d.set_font_italic(false);
    d.set_font_underline(false);
    d.set_fore_colour(0);

    // A page on which only the header stands carries no footer.
    const double body_y = d.current_y();
    if (body_y != 5 || state.letterhead.image_in_force) {
        // The footer ends half a line above the bottom of the frame and the maker's line stands
        // on it: a text over the frame would blot its line out.
        d.set_scale_mode(ScaleMode::Characters);
        d.set_font_size(8);
        const double footer_y = state.page_bottom - 0.5 - d.text_height(QStringLiteral("W"));
        if (with_footer) {
            d.set_current_x(2);
            d.set_current_y(footer_y);
            d.print(state.report_name, true);
            const QString right =
                QStringLiteral("VESPARINE (") + school.operating_system + QStringLiteral(")");
            d.set_current_x(state.page_columns - 1 - d.text_width(right));
            d.print(right, true);
        }
        if (with_maker_line) {
            const double limit = d.scale_height() - 1.25;
            if (body_y + 2 <= limit) {
                d.set_font_size(6);
                d.set_current_x(2);
                d.set_current_y(footer_y - d.text_height(QStringLiteral("W")));
                d.print(school.program_name + QStringLiteral(" ") + school.version +
                            QStringLiteral(" VESPARINE (") + school.operating_system +
                            QStringLiteral(")") + maker_line(),
                        true);
            }
        }
    }
    if (stopped()) {
        end_run();
        return;  // the user stopped the run: nothing was printed, and nothing more is said
    }
    // The counter goes before the document ends: the preview comes up in front.
    end_run();
    d.end_doc();
    const int pages = d.page() - 1;
    if (!d.delivered()) {
        return;  // a preview closed without printing: nothing was printed, and nothing is said
    }
    dialogs().message(text(QStringLiteral("DRUKWERK VOLTOOI (%1 bladsye)").arg(pages),
                           QStringLiteral("PRINTING COMPLETE (%1 pages)").arg(pages)),
                      ui::Icon::Information);
}

void PrintJob::print_page_footer(double line_y, bool new_page, bool with_maker_line) {
    if (state.to_spreadsheet)
        return;
    PrintDevice& d = device();
    d.set_scale_mode(ScaleMode::Characters);
    const double line = line_y == 0 ? d.scale_height() - 1.25 : line_y;
    if (!state.letterhead.image_in_force && with_maker_line && d.current_y() + 2 <= line) {
        d.set_current_x(2);
        d.set_current_y(line + 0.5);
        d.set_font_size(6);
        d.print(school.program_name + QStringLiteral(" ") + school.version + maker_line(), true);
    }
    if (new_page) {
        d.new_page();
        d.set_current_y(0);
        count_page();
    }
}

void PrintJob::begin_spreadsheet(const QString& native_folder, const QString& file) {
    state.to_spreadsheet = true;
    state.spreadsheet_folder = native_folder;
    state.spreadsheet_file = file;
    state.spreadsheet_sheet = 0;
    state.spreadsheet_row = 0;
    workbook_ = std::make_unique<Workbook>();
}

QString PrintJob::spreadsheet_path() const {
    return QDir(state.spreadsheet_folder)
        .filePath(state.spreadsheet_file + QStringLiteral(".xlsx"));
}

bool PrintJob::save_spreadsheet() {
    if (!workbook_)
        workbook_ = std::make_unique<Workbook>();
    const QString path = spreadsheet_path();
    QString why;
    if (workbook_->save(path, &why))
        return true;
    const QString native = QDir::toNativeSeparators(path);
    dialogs().message(text(QStringLiteral("DIE WERKBOEK KAN NIE GESKRYF WORD NIE : ") + native +
                               QStringLiteral("\n(") + why + QStringLiteral(")"),
                           QStringLiteral("THE WORKBOOK CANNOT BE WRITTEN : ") + native +
                               QStringLiteral("\n(") + why + QStringLiteral(")")),
                      ui::Icon::Critical);
    return false;
}

void PrintJob::end_spreadsheet() {
    state.to_spreadsheet = false;
    state.spreadsheet_sheet = 0;
    state.spreadsheet_row = 0;
    workbook_.reset();
}

}  // namespace korvel::reports
