#include "reports/grid_output.h"

#include <QDir>
#include <QFileInfo>
#include <QFont>
#include <QFontMetricsF>
#include <QLocale>
#include <QPainter>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace korvel::reports {

namespace {

// Pictures made here carry 288 dots to the inch: 5 twips a dot.
constexpr double kPictureDpi = 288.0;

void set_cell_font(PrintDevice& d, const PrintGrid& grid, int r, int c) {
    const GridCell& cell = grid.cell(r, c);
    d.set_font_name(grid.font_name(r, c));
    d.set_font_size(grid.font_size(r, c));
    d.set_font_bold(cell.bold || grid.font_bold);
    d.set_font_underline(cell.underline);
    d.set_font_italic(cell.italic);
    d.set_font_strikethrough(cell.strikethrough);
    d.set_fore_colour(cell.fore_colour);
}

void plain_font(PrintDevice& d) {
    d.set_font_bold(false);
    d.set_font_underline(false);
    d.set_font_strikethrough(false);
    d.set_font_italic(false);
    d.set_font_transparent(false);
}

bool has_line_break(const QString& text) {
    return text.contains(kLineMark) || text.contains(u'\n') || text.contains(u'\r');
}

double widest_line(const PrintDevice& d, const QString& text) {
    double widest = 0;
    for (const QString& line : cell_lines(text))
        widest = std::max(widest, d.text_width(line));
    return widest;
}

// The "a¦a" mark: a small "a" in the top left corner of the cell and one in the bottom right.
void corner_letters(PrintDevice& d, double left, double top, double width, double height,
                    double pad) {
    const double size = d.font_size();
    d.set_font_size(size * 0.75);
    const QString a = QStringLiteral("a");
    d.set_current_x(left + pad);
    d.set_current_y(top);
    d.print(a, true);
    d.set_current_x(left + pad + width - d.text_width(a));
    d.set_current_y(top + height - d.text_height(a));
    d.print(a, true);
    d.set_font_size(size);
}

bool print_rows(PrintJob& job, PrintGrid& grid, GridPageOptions& o, bool blocks) {
    PrintState& st = job.state;
    if (st.to_spreadsheet) {
        grid_to_spreadsheet(job, grid);
        return true;
    }
    if (grid.own_spreadsheet_file) {
        if (choose_spreadsheet_target(job, grid)) {
            grid_to_spreadsheet(job, grid);
            job.save_spreadsheet();
            job.end_spreadsheet();
        }
        return true;
    }
    PrintDevice& d = job.device();
    const bool landscape = d.orientation() == kLandscape;
    double pad = landscape ? 60 : 15;
    if (o.tight_columns)
        pad = 2;
    if (grid.cols() > 5 && o.autofit)
        fit_grid_columns(job, grid, 0, pad, false, o.last_column);

    if (o.header_rows < 0)
        o.header_rows = grid.fixed_rows;
    const double gap = o.wide_rows ? 70 : o.narrow_rows ? 35 : 45;
    if (o.rule_every <= 0)
        o.rule_every = 1;
    if (o.key_column < 0 || grid.cols() == 1)
        o.key_column = grid.cols() == 1 ? 0 : 1;

    d.set_font_name(grid.font);
    d.set_font_size(grid.font_size_points);
    d.set_font_bold(grid.font_bold);
    d.set_scale_mode(ScaleMode::Twips);
    if (!o.title.isEmpty()) {
        d.set_font_bold(true);
        d.set_font_size(8);
        d.set_current_x(std::max(o.left, kCharWidthTwips * 2));
        d.print(o.title, true);
        d.set_font_bold(false);
        d.set_current_y(d.current_y() + kCharHeightTwips);
    }
    d.set_font_transparent(false);

    if (grid.rows() == 0) {
        d.set_scale_mode(ScaleMode::Characters);
        return true;
    }
    const bool painting = grid.redraw;
    grid.redraw = false;

    const int cols = grid.cols();
    std::vector<double> widths(static_cast<size_t>(cols), 0.0);
    for (int c = 0; c < cols; ++c)
        widths[size_t(c)] = std::max(0.0, grid.column(c).width);
    double table_width = 0;
    for (double w : widths)
        if (w > 0)
            table_width += w + 2 * pad;
    const double page_width = d.scale_width();
    // Below a letterhead the page ends above its bottom margin.
    double page_height = d.scale_height();
    if (st.letterhead.loaded && st.letterhead.page_end_twips > 0)
        page_height = std::min(page_height, st.letterhead.page_end_twips);
    if (o.centre_table)
        o.left = std::max(page_width / 2 - table_width / 2, kCharWidthTwips);
    const double left = o.left;

    std::vector<double> edges(size_t(cols) + 1);
    double edge = left;
    for (int c = 0; c < cols; ++c) {
        edges[size_t(c)] = edge;
        if (widths[size_t(c)] > 0)
            edge += widths[size_t(c)] + 2 * pad;
    }
    edges[size_t(cols)] = edge;
    const double right_limit = std::min(edge, page_width - kCharWidthTwips);

    double y = o.top_absolute != 0 ? o.top_absolute : d.current_y();
    y += o.top;
    const double table_top = y;

    const double factor = o.wide_rows ? (blocks ? 1.25 : 1.2) : o.narrow_rows ? 0.8 : 1.0;
    const double fill = o.low_fill ? 0.85 : 0.9;
    bool rows_left = false;

    for (int r = 0; r < grid.rows(); ++r) {
        const double raw_height = grid.row(r).height;
        if (raw_height == 0)
            continue;
        const bool last_row = r == grid.rows() - 1;
        double h = (raw_height < 0 ? 240.0 : raw_height) * factor;

        if (blocks && r >= o.header_rows) {
            bool page_mark = false;
            for (int c = 0; c < cols; ++c)
                page_mark = page_mark || grid.text(r, c).trimmed() == kPageMark;
            if (page_mark) {
                grid.remove_rows(o.header_rows, r);
                rows_left = grid.rows() > o.header_rows;
                break;
            }
        }

        // The rule above the row.
        if (!o.no_rules && r > 0 && r % o.rule_every == 0) {
            double from = left;
            const bool grouped = o.group_size > 0;
            if (grouped && r % o.group_size != 0 && o.group_from_col >= 0 &&
                o.group_from_col < cols)
                from = edges[size_t(o.group_from_col)];
            const bool heavy = o.heavy_group_rule && grouped && r % o.group_size == 0;
            d.set_line_width(heavy ? 3 : 1);
            d.line(from, y, right_limit, y);
        }
        y += gap;

        // Merged rows: equal neighbours print as one cell.
        std::vector<double> w = widths;
        if (grid.row(r).merge) {
            for (int c = cols - 1; c > 0; --c) {
                if (w[size_t(c)] > 0 && w[size_t(c - 1)] > 0 &&
                    grid.text(r, c) == grid.text(r, c - 1)) {
                    w[size_t(c - 1)] += w[size_t(c)] + 2 * pad;
                    w[size_t(c)] = 0;
                }
            }
        }

        const double row_top = y;
        bool turned_row = false;
        for (int c = 0; c < cols && !turned_row; ++c)
            turned_row = w[size_t(c)] > 0 && is_turned(grid.text(r, c));
        if (turned_row) {
            for (int c = 0; c < cols; ++c) {
                const QString t = without_turn_mark(grid.text(r, c)) + QStringLiteral("  ");
                set_cell_font(d, grid, r, c);
                const double tw = widest_line(d, t);
                h = std::max(h, tw * (t.size() < 30 ? 0.75 : 0.55));
            }
        }

        double x = left;
        bool text_y_set = false;
        double text_y = row_top;
        for (int c = 0; c < cols; ++c) {
            double cw = w[size_t(c)];
            if (cw <= 0)
                continue;
            const GridCell& cell = grid.cell(r, c);
            set_cell_font(d, grid, r, c);
            if (is_turned(cell.text)) {
                std::vector<QImage> pictures;
                double total = 0;
                for (const QString& line : cell_lines(without_turn_mark(cell.text))) {
                    pictures.push_back(rotate_cell_text(line, cell.back_colour,
                                                        grid.font_name(r, c), grid.font_size(r, c),
                                                        d.font_bold(), cell.italic, cell.underline,
                                                        cell.strikethrough, cell.fore_colour));
                    total += picture_twips(pictures.back()).width();
                }
                cw = std::max(cw, total);
                double px = x + pad + (cw - total) / 2;
                for (const QImage& p : pictures) {
                    QSizeF size = picture_twips(p);
                    if (size.height() > h) {
                        size.setWidth(size.width() * h / size.height());
                        size.setHeight(h);
                    }
                    d.picture(p, px, row_top + (h - size.height()) / 2, size.width(),
                              size.height());
                    px += size.width();
                }
            } else if (!cell.picture.isNull()) {
                const QSizeF size = picture_twips(cell.picture);
                const double room_w = std::max(1.0, cw);
                const double room_h = std::max(1.0, h - 2 * pad);
                const double scale = std::min({1.0, room_w / size.width(), room_h / size.height()});
                const double pw = size.width() * scale, ph = size.height() * scale;
                d.picture(cell.picture, x + pad + (cw - pw) / 2, row_top + (h - ph) / 2, pw, ph);
            } else {
                if (cell.back_colour != 0 && c >= grid.fixed_cols && !grid.column(c).flagged)
                    d.filled_box(x, row_top, x + cw + 2 * pad, row_top + h, cell.back_colour);
                d.set_font_transparent(!cell.text.isEmpty() &&
                                       (cell.back_colour != 0 || cell.fore_colour != 0));
                if (!text_y_set) {
                    text_y = row_top + (h - d.text_height(QStringLiteral("W"))) / 2;
                    text_y_set = true;
                }
                const QString& t = cell.text;
                if (t.trimmed() == kCornerMark) {
                    corner_letters(d, x, row_top, cw, h, pad);
                } else if (!t.isEmpty()) {
                    const int align = grid.alignment(r, c);
                    d.set_current_y(text_y);
                    double tx = x + pad;
                    bool printed = false;
                    if (align == kAlignCentre) {
                        tx = x + pad + (cw - d.text_width(t)) / 2;
                    } else if (align == kAlignRight) {
                        // The next cell's text may begin at its left edge plus the padding;
                        // a right-aligned text ends a blank before that, where the padding
                        // alone leaves less ("29:01" against "2 COL").
                        // A cell too narrow for the blank keeps the text in the cell.
                        const double tw = d.text_width(t);
                        const double cell_end = x + pad + cw - (pad == 60 ? 60 : 0);
                        const double next_text = x + cw + 3 * pad;
                        const double end =
                            std::min(cell_end, next_text - d.text_width(QStringLiteral(" ")));
                        tx = std::max(end - tw, std::min(cell_end - tw, x + pad));
                    } else if (align == kAlignLeftBottom) {
                        tx = x + pad;
                    } else if (has_line_break(t)) {
                        d.set_current_y(row_top);
                        print_multiline_cell(d, x + pad, t, cw);
                        printed = true;
                    } else if (d.text_width(t) > cw) {
                        tx = x + pad - pad;
                    }
                    if (!printed) {
                        d.set_current_x(std::max(tx, x));
                        d.print(clip_to_width(d, t, cw + (tx < x + pad ? pad : 0)), true);
                        if (!o.wide_rows)
                            d.set_current_y(text_y);
                    }
                }
            }
            x += cw + 2 * pad;
        }
        plain_font(d);

        y = row_top + h + (turned_row ? gap : 0);
        if (o.rule_offset != 0)
            y -= o.rule_offset + gap;
        if (raw_height < 0 && last_row)
            y += kCharHeightTwips;

        // Page fill test.
        bool full = false;
        if (o.keep_together && o.keep_rows > 0 && r % o.keep_rows == 0 &&
            y + o.keep_rows * (h + 2 * gap) > page_height * fill)
            full = true;
        if (!o.no_page_break && (r % o.rule_every == 0 || full) &&
            (full || y >= page_height * fill) && r >= o.header_rows && !last_row) {
            grid.remove_rows(o.header_rows, r);
            rows_left = true;
            break;
        }
    }

    if (!o.no_frame) {
        d.set_line_width(1);
        d.line(left, table_top, right_limit, table_top);
        d.line(right_limit, table_top, right_limit, y);
        d.line(right_limit, y, left, y);
        d.line(left, y, left, table_top);
        for (int c = std::max(0, o.group_from_col); c < cols; ++c) {
            if (!grid.column(c).flagged || widths[size_t(c)] <= 0)
                continue;
            const double l = edges[size_t(c)];
            const double r = l + widths[size_t(c)] + 2 * pad;
            if (l != left)
                d.line(l, table_top, l, y);
            d.line(r, table_top, r, y);
        }
    }
    d.set_current_x(0);
    d.set_current_y(y);

    d.set_scale_mode(ScaleMode::Characters);
    if (o.page_frame && !st.letterhead.loaded) {
        const double keep_y = d.current_y();
        job.draw_box(0.25, 0.25, st.page_columns, st.page_bottom, false, true);
        d.set_current_x(0);
        d.set_current_y(keep_y);
    }
    if (rows_left)
        st.page_pending = true;
    grid.redraw = painting;
    return !rows_left;
}

}  // namespace

bool print_grid_pages(PrintJob& job, PrintGrid& grid, GridPageOptions& options) {
    return print_rows(job, grid, options, false);
}

bool print_grid_pages(PrintJob& job, PrintGrid& grid, GridPageOptions&& options) {
    return print_rows(job, grid, options, false);
}

bool print_grid_blocks(PrintJob& job, PrintGrid& grid, GridPageOptions& options,
                       const QString& columns) {
    if (columns.trimmed().isEmpty())
        return print_rows(job, grid, options, true);
    // Only the listed columns print; the others are hidden for the call.
    std::vector<double> saved(size_t(grid.cols()));
    std::vector<bool> keep(size_t(grid.cols()), false);
    for (const QString& part : columns.split(u':')) {
        bool ok = false;
        const int c = part.trimmed().toInt(&ok);
        if (ok && c >= 0 && c < grid.cols())
            keep[size_t(c)] = true;
    }
    for (int c = 0; c < grid.cols(); ++c) {
        saved[size_t(c)] = grid.column(c).width;
        if (!keep[size_t(c)])
            grid.column(c).width = 0;
    }
    const bool done = print_rows(job, grid, options, true);
    for (int c = 0; c < grid.cols(); ++c)
        grid.column(c).width = saved[size_t(c)];
    return done;
}

int print_grid_report(PrintJob& job, PrintGrid& grid, const QString& title, const QString& subtitle,
                      const QString& orientation, GridPageOptions options) {
    int pages = 0;
    // A page holds at least one row, so the loop ends; the bound guards a grid that never
    // shrinks.
    const int most = grid.rows() + 2;
    while (pages < most) {
        job.state.page_pending = true;
        QString t = title, s = subtitle;
        job.print_page_header(t, s, orientation);
        ++pages;
        if (print_grid_pages(job, grid, options))
            break;
        job.print_continuation_mark();
        job.device().new_page();
    }
    return pages;
}

void fit_grid_columns(PrintJob& job, PrintGrid& grid, double min_height, double padding,
                      bool fill_page, int last_column) {
    if (grid.tag == u"autofit")
        return;
    PrintDevice& d = job.device();
    const bool painting = grid.redraw;
    grid.redraw = false;
    const ScaleMode mode = d.scale_mode();
    const QString font = d.font_name();
    const double size = d.font_size();
    const bool bold = d.font_bold();
    const double keep_x = d.current_x(), keep_y = d.current_y();
    const int last = last_column < 0 ? grid.cols() : std::min(last_column, grid.cols());

    int visible = 0;
    double sum = 0;
    for (int c = 0; c < last; ++c) {
        if (grid.column(c).width > 0) {
            ++visible;
            sum += grid.column(c).width;
        }
    }
    d.set_scale_mode(ScaleMode::Twips);
    double limit = 0;
    if (fill_page && visible > 0) {
        limit = d.scale_width() * 0.95 / visible;
        padding *= 1.5;
    }
    for (int c = 0; c < last; ++c) {
        if (grid.column(c).width <= 0)
            continue;  // hidden columns stay hidden
        double need = 0;
        for (int r = 0; r < grid.rows(); ++r) {
            if (grid.row(r).height == 0)
                continue;
            const QString& t = grid.text(r, c);
            set_cell_font(d, grid, r, c);
            double width = 0;
            if (is_turned(t)) {
                width = double(cell_lines(without_turn_mark(t)).size()) *
                        d.text_width(QStringLiteral("W")) * 1.5;
            } else {
                width = widest_line(d, t);
            }
            if (grid.row(r).merge) {
                // Equal neighbours share the width.
                int span = 1;
                for (int k = c - 1; k >= 0 && grid.text(r, k) == t && grid.column(k).width > 0; --k)
                    ++span;
                for (int k = c + 1; k < last && grid.text(r, k) == t && grid.column(k).width > 0;
                     ++k)
                    ++span;
                width /= span;
            }
            need = std::max(need, width + 2 * padding);
        }
        if (limit > 0)
            need = std::min(need, limit);
        grid.column(c).width = need;
    }
    if (fill_page) {
        double total = 0;
        for (int c = 0; c < last; ++c)
            total += grid.column(c).width;
        const double target = d.scale_width() - 2 * padding;
        if (total > 0)
            for (int c = 0; c < last; ++c)
                grid.column(c).width *= target / total;
    }
    if (min_height > 0)
        for (int r = 0; r < grid.rows(); ++r)
            if (grid.row(r).height > 0)
                grid.row(r).height = std::max(grid.row(r).height, min_height);

    d.set_scale_mode(mode);
    d.set_font_name(font);
    d.set_font_size(size);
    d.set_font_bold(bold);
    d.set_current_x(keep_x);
    d.set_current_y(keep_y);
    grid.tag = QStringLiteral("autofit");
    grid.redraw = painting;
}

QSizeF picture_twips(const QImage& image) {
    const double dpm_x = image.dotsPerMeterX() > 0 ? image.dotsPerMeterX() : 96 / 0.0254;
    const double dpm_y = image.dotsPerMeterY() > 0 ? image.dotsPerMeterY() : 96 / 0.0254;
    return {image.width() / dpm_x / 0.0254 * 1440.0, image.height() / dpm_y / 0.0254 * 1440.0};
}

QImage rotate_cell_text(const QString& text, int back_colour, const QString& font_name,
                        double size_points, bool bold, bool italic, bool underline,
                        bool strikethrough, int fore_colour) {
    QFont font(substitute_font(font_name));
    font.setPixelSize(std::max(1, int(std::lround(size_points * kPictureDpi / 72.0))));
    font.setBold(bold);
    font.setItalic(italic);
    font.setUnderline(underline);
    font.setStrikeOut(strikethrough);
    const QFontMetricsF metrics(font);
    const int along = std::max(1, int(std::ceil(metrics.horizontalAdvance(text))));
    const int across = std::max(1, int(std::ceil(metrics.height())));
    QImage image(across, along, QImage::Format_RGB32);
    const int dpm = int(std::lround(kPictureDpi / 0.0254));
    image.setDotsPerMeterX(dpm);
    image.setDotsPerMeterY(dpm);
    image.fill(back_colour != 0 ? colour_from_bgr(back_colour) : QColor(Qt::white));
    QPainter p(&image);
    p.setRenderHint(QPainter::TextAntialiasing, true);
    p.setFont(font);
    p.setPen(colour_from_bgr(fore_colour));
    // Bottom to top: the baseline runs up the picture.
    p.translate(metrics.ascent(), along);
    p.rotate(-90);
    p.drawText(QPointF(0, 0), text);
    p.end();
    return image;
}

QString clip_to_width(const PrintDevice& device, const QString& text, double width) {
    QString out = text;
    while (!out.isEmpty() && device.text_width(out) > width)
        out.chop(1);
    return out;
}

void print_multiline_cell(PrintDevice& device, double x, const QString& text, double width,
                          bool keep_y) {
    const double start_y = device.current_y();
    const double blank = device.text_width(QStringLiteral(" "));
    for (const QString& line : cell_lines(text)) {
        device.set_current_x(x + blank);
        device.print(clip_to_width(device, line, width), false);
    }
    if (!keep_y)
        device.set_current_y(start_y);
}

QString column_letters(int n) {
    QString out;
    while (n > 0) {
        const int rest = (n - 1) % 26;
        out.prepend(QChar(u'A' + rest));
        n = (n - 1) / 26;
    }
    return out;
}

namespace {

// A canonical number that a worksheet would take as one: no leading zeros, no sign but minus,
// at most 15 significant characters.
bool plain_number(const QString& t, double* value) {
    static const QRegularExpression shape(QStringLiteral("^-?(0|[1-9][0-9]{0,14})(\\.[0-9]+)?$"));
    if (!shape.match(t).hasMatch())
        return false;
    bool ok = false;
    *value = QLocale::c().toDouble(t, &ok);
    return ok;
}

CellAlign sheet_align(int code) {
    switch (code) {
        case kAlignCentre:
            return CellAlign::Centre;
        case kAlignRight:
            return CellAlign::Right;
        default:
            return CellAlign::Left;
    }
}

}  // namespace

void grid_to_spreadsheet(PrintJob& job, PrintGrid& grid) {
    PrintState& st = job.state;
    if (!job.workbook())
        job.begin_spreadsheet(st.spreadsheet_folder, st.spreadsheet_file);
    Workbook& book = *job.workbook();
    st.spreadsheet_sheet = std::max(1, st.spreadsheet_sheet);
    while (book.sheet_count() < st.spreadsheet_sheet)
        book.add_sheet();
    Sheet& ws = book.sheet(st.spreadsheet_sheet);
    ws.font_name = grid.font;
    st.spreadsheet_row = std::max(6, st.spreadsheet_row);

    const int first = st.spreadsheet_row - 1;  // from 0
    int out_r = first;
    int out_cols = 0;
    int fixed_out_first = -1, fixed_out_last = -1;
    for (int r = 0; r < grid.rows(); ++r) {
        if (grid.row(r).height == 0)
            continue;
        const bool merged = grid.row(r).merge;
        int k = 0;
        double turned_height = 0;
        int lines = 1;
        std::vector<std::pair<int, QString>> written;  // sheet column, text
        for (int c = 0; c < grid.cols(); ++c) {
            if (grid.column(c).width <= 0)
                continue;
            const GridCell& gc = grid.cell(r, c);
            if (!merged)
                ws.column_widths[k] = grid.column(c).width / kCharWidthTwips;
            SheetCell& out = ws.at(out_r, k);
            out = SheetCell{};
            out.font_name = grid.font_name(r, c);
            out.font_size = std::max(grid.font_size(r, c), 8.0);
            out.bold = gc.bold || grid.font_bold;
            out.italic = gc.italic;
            out.underline = gc.underline;
            out.strikethrough = gc.strikethrough;
            out.colour = gc.fore_colour;
            QString t = gc.text;
            if (is_turned(t)) {
                t = without_turn_mark(t);
                out.align = CellAlign::Centre;
                out.rotation = 90;
                turned_height = std::max(turned_height, t.size() * out.font_size * 0.65 + 8);
            } else {
                out.align = sheet_align(grid.alignment(r, c));
            }
            t.replace(kLineMark, QStringLiteral("\n"));
            t.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
            lines = std::max(lines, int(t.count(u'\n')) + 1);
            double number = 0;
            if (t.startsWith(u'\'')) {
                t.remove(0, 1);
                out.number_format = QStringLiteral("0000000000000");
                out.text = t;
            } else if (plain_number(t, &number)) {
                if (number > 9999999999.0) {
                    // Identity numbers stay text, all thirteen digits.
                    out.number_format = QStringLiteral("0000000000000");
                    out.text = t;
                } else {
                    out.is_number = true;
                    out.number = number;
                    out.text = t;
                }
            } else if (t.size() == 13 && t.front() == u'0' &&
                       std::all_of(t.begin(), t.end(), [](QChar ch) { return ch.isDigit(); })) {
                out.number_format = QStringLiteral("0000000000000");
                out.text = t;
            } else {
                out.text = t;
            }
            if (!gc.picture.isNull())
                ws.add_image(out_r, k, gc.picture);
            if (gc.back_colour != 0 && (r < grid.fixed_rows || c < grid.fixed_cols))
                out.fill = bgr_from_rgb(247, 247, 247);
            written.emplace_back(k, gc.text);
            ++k;
        }
        out_cols = std::max(out_cols, k);
        if (merged) {
            size_t i = 0;
            while (i < written.size()) {
                size_t j = i;
                while (j + 1 < written.size() && written[j + 1].second == written[i].second)
                    ++j;
                if (j > i && !written[i].second.isEmpty())
                    ws.merges.push_back({out_r, written[i].first, out_r, written[j].first});
                i = j + 1;
            }
        }
        if (turned_height > 0)
            ws.row_heights[out_r] = turned_height;
        else if (lines > 1)
            ws.row_heights[out_r] = lines * 13.0;
        if (r < grid.fixed_rows) {
            if (fixed_out_first < 0)
                fixed_out_first = out_r;
            fixed_out_last = out_r;
        }
        ++out_r;
    }

    // Borders on the table; the header rows grey, without lines between them.
    for (int r = first; r < out_r; ++r) {
        const bool fixed = r >= fixed_out_first && r <= fixed_out_last && fixed_out_first >= 0;
        for (int k = 0; k < out_cols; ++k) {
            SheetCell& cell = ws.at(r, k);
            cell.border_left = true;
            cell.border_right = true;
            cell.border_top = !fixed || r == fixed_out_first;
            cell.border_bottom = !fixed || r == fixed_out_last;
            if (fixed)
                cell.fill = bgr_from_rgb(247, 247, 247);
        }
    }
    st.spreadsheet_row = out_r + 2;
}

bool choose_spreadsheet_target(PrintJob& job, const PrintGrid& grid) {
    QString name = grid.proposed_file_name;
    name.remove(u'/');
    const QString start = QDir(job.state.spreadsheet_folder).filePath(name + ".xlsx");
    const QString chosen =
        job.dialogs().choose_file(job.text(QStringLiteral("EXCEL UITVOER LEêRNAAM"),
                                           QStringLiteral("EXCEL EXPORT FILE NAME")),
                                  start, QStringLiteral("*.xlsx"), true);
    if (chosen.isEmpty())
        return false;
    const QFileInfo info(chosen);
    QString file = info.fileName();
    if (file.endsWith(QStringLiteral(".xlsx"), Qt::CaseInsensitive))
        file.chop(5);
    job.begin_spreadsheet(info.absolutePath(), file);
    return true;
}

}  // namespace korvel::reports
