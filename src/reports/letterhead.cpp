#include "reports/letterhead.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cmath>

#include "reports/grid_output.h"
#include "shell/helpers.h"
#include "store/quoted_text.h"

namespace korvel::reports {

namespace {

constexpr int kNameWidth = 29;
constexpr double kTwipsPerMillimetre = 1440.0 / 25.4;

// One value of a line as text; what is no text (a number, a boolean) as it stood.
QString value_text(const std::vector<quoted::Value>& line, size_t i) {
    return i < line.size() ? line[i].text : QString();
}

double value_number(const std::vector<quoted::Value>& line, size_t i) {
    if (i >= line.size())
        return 0;
    const quoted::Value& v = line[i];
    if (v.kind == quoted::Value::Kind::Number)
        return std::isfinite(v.number) ? v.number : 0;
    bool ok = false;
    const double n = v.text.trimmed().toDouble(&ok);
    return ok && std::isfinite(n) ? n : 0;
}

bool value_bool(const std::vector<quoted::Value>& line, size_t i) {
    if (i >= line.size())
        return false;
    const quoted::Value& v = line[i];
    if (v.kind == quoted::Value::Kind::Boolean)
        return v.boolean;
    if (v.kind == quoted::Value::Kind::Number)
        return v.number != 0;
    return v.text.trimmed().compare(QLatin1String("TRUE"), Qt::CaseInsensitive) == 0;
}

QString read_position(const QString& text) {
    const QString p = text.trimmed().toUpper();
    return p.isEmpty() ? QStringLiteral("L") : p;
}

QString read_size(const QString& text) {
    const QString s = text.trimmed().toUpper();
    if (s.isEmpty())
        return QStringLiteral("M");
    if (s == u"S")
        return QStringLiteral("K");
    if (s == u"L")
        return QStringLiteral("G");
    return s;
}

LetterheadFont read_font_line(const std::vector<quoted::Value>& line) {
    LetterheadFont f;
    f.name = value_text(line, 0).trimmed();
    const double size = value_number(line, 1);
    f.size = size >= 1 && size <= 400 ? int(size) : 10;
    f.colour = int(std::clamp(value_number(line, 2), 0.0, double(0xFFFFFF)));
    f.bold = value_bool(line, 3);
    f.italic = value_bool(line, 4);
    f.underline = value_bool(line, 5);
    return f;
}

void apply_font(PrintDevice& d, const LetterheadFont& f) {
    d.set_font_name(f.name);
    d.set_font_size(f.size);
    d.set_fore_colour(f.colour);
    d.set_font_bold(f.bold);
    d.set_font_italic(f.italic);
    d.set_font_underline(f.underline);
}

// A margin of the file as a length that leaves the page printable: never below 0, never more
// than a third of the page's side.
double fit_margin(double mm, double side_mm) {
    return std::clamp(mm, 0.0, side_mm / 3);
}

}  // namespace

QString letterhead_field(const QString& name, int frame) {
    return shell::pad_right(name, kNameWidth) + (frame == 1 ? u'1' : u'0');
}

QString letterhead_name(const QString& field) {
    const qsizetype at = field.indexOf(QLatin1String("  "));
    return (at < 0 ? field : field.left(at)).trimmed();
}

std::vector<LetterheadLayout> read_letterhead_table(const QString& native_folder) {
    std::vector<LetterheadLayout> table;
    const QString path = find_letterhead_file(native_folder, kLetterheadTable);
    if (path.isEmpty())
        return table;
    const auto bytes = quoted::read_file(path);
    if (!bytes)
        return table;
    quoted::Reader reader(*bytes);
    while (!reader.at_end()) {
        const std::vector<quoted::Value> line = reader.read_line();
        const QString field = value_text(line, 0);
        if (field.trimmed().isEmpty())
            continue;
        LetterheadLayout l;
        l.name = letterhead_name(field);
        const QString trimmed = field.trimmed();
        l.frame = trimmed.endsWith(u'1') ? 1 : 0;
        l.top = value_number(line, 1);
        l.bottom = value_number(line, 2);
        l.left = value_number(line, 3);
        l.right = value_number(line, 4);
        l.print_name = value_bool(line, 5);
        l.print_address = value_bool(line, 6);
        l.print_badge = value_bool(line, 7);
        l.position = read_position(value_text(line, 8));
        l.size = read_size(value_text(line, 9));
        table.push_back(l);
    }
    return table;
}

QByteArray letterhead_table_bytes(const std::vector<LetterheadLayout>& table) {
    quoted::Writer w;
    for (const LetterheadLayout& l : table) {
        if (l.name.trimmed().isEmpty())
            continue;
        w.text(letterhead_field(l.name, l.frame))
            .single(float(l.top))
            .single(float(l.bottom))
            .single(float(l.left))
            .single(float(l.right))
            .boolean(l.print_name)
            .boolean(l.print_address)
            .boolean(l.print_badge)
            .text(l.position)
            .text(l.size)
            .end_line();
    }
    return w.bytes();
}

bool is_safe_layout_name(const QString& name) {
    if (name.trimmed().isEmpty() || name.contains(QLatin1String("..")))
        return false;
    for (QChar c : name) {
        if (c == u'\\' || c == u'/' || c == u':' || c.unicode() < 32)
            return false;
    }
    return true;
}

QString find_letterhead_file(const QString& native_folder, const QString& file_name) {
    if (native_folder.isEmpty() || !is_safe_layout_name(file_name))
        return {};
    const QDir dir(native_folder);
    if (QFileInfo(dir.filePath(file_name)).isFile())
        return dir.filePath(file_name);
    // The suite's file names are Windows names: any case will do.
    for (const QString& entry : dir.entryList(QDir::Files | QDir::Hidden)) {
        if (entry.compare(file_name, Qt::CaseInsensitive) == 0)
            return dir.filePath(entry);
    }
    return {};
}

QString letterhead_font_file_name(const QString& name) {
    return shell::upper_name(name.trimmed()) + QStringLiteral(".TXT");
}

std::optional<std::array<LetterheadFont, 2>> read_letterhead_fonts(const QString& native_folder,
                                                                   const QString& name) {
    const QString path = find_letterhead_file(native_folder, letterhead_font_file_name(name));
    if (path.isEmpty())
        return std::nullopt;
    const auto bytes = quoted::read_file(path);
    if (!bytes)
        return std::nullopt;
    quoted::Reader reader(*bytes);
    std::array<LetterheadFont, 2> fonts;
    fonts[0] = read_font_line(reader.read_line());
    fonts[1] = read_font_line(reader.read_line());
    return fonts;
}

QByteArray letterhead_font_bytes(const std::array<LetterheadFont, 2>& fonts) {
    quoted::Writer w;
    for (const LetterheadFont& f : fonts) {
        w.text(f.name)
            .number(f.size)
            .number(f.colour)
            .boolean(f.bold)
            .boolean(f.italic)
            .boolean(f.underline)
            .end_line();
    }
    return w.bytes();
}

LetterheadFont print_font_default() {
    LetterheadFont f;
    f.name = QStringLiteral("Lucida Console");
    return f;
}

std::array<LetterheadFont, 2> form_font_defaults() {
    std::array<LetterheadFont, 2> fonts;
    fonts[0].name = fonts[1].name = QStringLiteral("ARIAL");
    fonts[0].size = 10;
    fonts[1].size = 8;
    return fonts;
}

QStringList fill_letterhead_list(const QString& native_folder) {
    QStringList list;
    for (const LetterheadLayout& l : read_letterhead_table(native_folder)) {
        const QString name = shell::upper_name(l.name).remove(u'\\');
        const QString file = name.contains(kPictureMark) ? name : name + QStringLiteral(".TXT");
        if (find_letterhead_file(native_folder, file).isEmpty())
            continue;
        if (!list.contains(name))
            list << name;
    }
    return list;
}

double millimetres_across(const PrintDevice& device, double mm) {
    return device.scale_x(mm * kTwipsPerMillimetre, ScaleMode::Twips, device.scale_mode());
}

double millimetres_down(const PrintDevice& device, double mm) {
    return device.scale_y(mm * kTwipsPerMillimetre, ScaleMode::Twips, device.scale_mode());
}

void clear_letterhead(PrintJob& job) {
    job.state.letterhead = LetterheadState{};
}

bool load_letterhead(PrintJob& job) {
    LetterheadState& s = job.state.letterhead;
    const QString selected = s.selected.trimmed();
    s = LetterheadState{};
    s.selected = selected;
    s.use_letterhead_image = selected.contains(kPictureMark, Qt::CaseInsensitive);
    if (selected.isEmpty())
        return false;
    const QString folder = job.general_year_folder;
    std::optional<LetterheadLayout> found;
    for (const LetterheadLayout& l : read_letterhead_table(folder)) {
        if (shell::upper_name(l.name).remove(u'\\').startsWith(selected) ||
            l.name.startsWith(selected)) {
            found = l;
            break;
        }
    }
    if (!found)
        return false;
    const PrintDevice& d = job.device();
    s.frame_flag = found->frame;
    s.print_name = found->print_name;
    s.print_address = found->print_address;
    s.print_badge = found->print_badge;
    s.badge_position = found->position;
    s.badge_size = found->size;
    // A4 is 210 by 297 mm; a margin that would leave no page is held in.
    s.top_margin = millimetres_down(d, fit_margin(found->top, 297));
    s.bottom_margin = millimetres_down(d, fit_margin(found->bottom, 297));
    s.left_margin = millimetres_across(d, fit_margin(found->left, 210));
    s.right_margin = millimetres_across(d, fit_margin(found->right, 210));
    if (!s.use_letterhead_image) {
        const auto fonts = read_letterhead_fonts(folder, selected);
        s.name_font = fonts ? (*fonts)[0] : print_font_default();
        s.address_font = fonts ? (*fonts)[1] : print_font_default();
    }
    s.image_in_force = s.use_letterhead_image;
    s.loaded = true;
    return true;
}

void print_letterhead(PrintJob& job, const QString& orientation, double line_factor,
                      const QImage& left_picture, const QImage& right_picture) {
    PrintDevice& d = job.device();
    const bool sheet = job.state.to_spreadsheet;
    job.print_setup(orientation, line_factor);
    d.set_font_size(10);
    load_letterhead(job);
    const LetterheadState& s = job.state.letterhead;

    if (!sheet && d.current_y() != 0)
        d.new_page();
    job.state.page_pending = false;
    d.set_current_x(s.left_margin);
    d.set_font_size(12);
    d.set_current_y(s.top_margin);
    double lowest = d.current_y();

    Sheet* ws = sheet ? &job.next_worksheet() : nullptr;
    const double width = d.scale_width();

    if (s.loaded && s.use_letterhead_image) {
        const QString path = find_letterhead_file(job.general_year_folder, kLetterheadPicture);
        const QImage image = path.isEmpty() ? QImage() : QImage(path);
        // A picture that cannot be read leaves its space free.
        if (!image.isNull()) {
            if (ws) {
                ws->add_image(0, 0, image);
            } else {
                const QSizeF size = picture_twips(image);
                const double height = d.scale_y(size.height(), ScaleMode::Twips, d.scale_mode()) *
                                      width /
                                      d.scale_x(size.width(), ScaleMode::Twips, d.scale_mode());
                d.picture(image, 0, 0, width, height);
                d.set_current_y(height);
            }
        }
    }

    if (s.loaded && s.print_badge) {
        double w = 4, h = 1, offset = 0;
        if (s.badge_size == u"S" || s.badge_size == u"K") {
            w = 5, h = 2.75, offset = 2.75;
        } else if (s.badge_size == u"M") {
            w = 7.5, h = 4, offset = 1.5;
        } else if (s.badge_size == u"L" || s.badge_size == u"G") {
            w = 10, h = 5.25, offset = 0.5;
        }
        if (!s.print_address)
            offset = 0;
        // Any position but the middle and the right stands at the left.
        double left_x = s.left_margin + 1;
        double right_x = width - s.right_margin - w;
        int left_col = 0, right_col = 23;
        if (s.badge_position == u"M") {
            left_x = (width - 4) / 2;
            left_col = 11;
        } else if (s.badge_position == u"R") {
            std::swap(left_x, right_x);
            std::swap(left_col, right_col);
        }
        const double y = d.current_y() + offset;
        for (const auto& [picture, x, col] : {std::tuple{&left_picture, left_x, left_col},
                                              std::tuple{&right_picture, right_x, right_col}}) {
            if (picture->isNull())
                continue;
            if (ws) {
                ws->add_image(0, col, *picture);
            } else {
                d.picture(*picture, x, y, w, h);
                lowest = std::max(lowest, y + h);
            }
        }
    }

    const double space = width - s.left_margin - s.right_margin;
    int sheet_row = 1;
    // A line centred in the space between the margins; the glyph before it in its own font.
    auto centred = [&](const QString& glyph, const QString& text, const LetterheadFont& font) {
        if (ws) {
            ws->put(sheet_row++, 2, text).font_size = font.size;
            return;
        }
        apply_font(d, font);
        double text_w = d.text_width(text);
        double glyph_w = 0;
        if (!glyph.isEmpty()) {
            d.set_font_name(kGlyphFont);
            glyph_w = d.text_width(glyph);
            d.set_font_name(font.name);
        }
        d.set_current_x(s.left_margin + (space - text_w - glyph_w) / 2);
        if (!glyph.isEmpty()) {
            d.set_font_name(kGlyphFont);
            d.print(glyph, true);
            d.set_font_name(font.name);
        }
        d.print(text);
    };

    if (s.loaded && s.print_name && !s.name_font.name.isEmpty()) {
        QString name = job.school.name;
        if (!job.school.designation.trimmed().isEmpty())
            name += QStringLiteral(" (") + job.school.designation + QStringLiteral(")");
        d.set_current_y(d.current_y() + 0.25);
        centred({}, name, s.name_font);
        job.reset_print_font();
        d.set_current_y(d.current_y() + 0.5);
        lowest = std::max(lowest, d.current_y());
    }
    if (s.loaded && s.print_address && !s.address_font.name.isEmpty()) {
        const ReportSchool& school = job.school;
        centred(kMailGlyph, school.address1, s.address_font);
        centred({}, school.address2, s.address_font);
        centred({}, school.address3, s.address_font);
        // Telephone and fax on one line, each behind its glyph.
        if (ws) {
            ws->put(sheet_row++, 2, school.telephone + QStringLiteral("     ") + school.fax);
        } else {
            apply_font(d, s.address_font);
            const QString tel = school.telephone + QStringLiteral("     ");
            const double text_w = d.text_width(tel) + d.text_width(school.fax);
            d.set_font_name(kGlyphFont);
            const double glyph_w = d.text_width(kTelephoneGlyph) + d.text_width(kFaxGlyph);
            d.set_current_x(s.left_margin + (space - text_w - glyph_w) / 2);
            d.print(kTelephoneGlyph, true);
            d.set_font_name(s.address_font.name);
            d.print(tel, true);
            d.set_font_name(kGlyphFont);
            d.print(kFaxGlyph, true);
            d.set_font_name(s.address_font.name);
            d.print(school.fax);
        }
        job.reset_print_font();
        LetterheadFont mail = print_font_default();
        centred({}, school.email, mail);
        lowest = std::max(lowest, d.current_y());
    }

    if (!ws && s.loaded && s.print_name && s.print_address && s.frame_flag == 1) {
        job.draw_box(s.left_margin, s.top_margin, width - s.right_margin, lowest + 0.25);
        d.set_current_y(d.current_y() + 2);
    }

    if (!ws) {
        job.state.letterhead.page_end_twips =
            d.scale_y(d.scale_height() - s.bottom_margin, d.scale_mode(), ScaleMode::Twips);
        d.set_scale_height(d.scale_height() - s.bottom_margin);
        job.state.header_bottom = d.scale_height();
        d.set_current_y(std::max(d.current_y(), lowest));
    } else {
        job.state.spreadsheet_row = std::max(job.state.spreadsheet_row, sheet_row + 2);
    }
    job.state.page_columns = int(std::nearbyint(d.scale_width()));
}

void print_measuring_frame(PrintJob& job, double top, double bottom, double left, double right) {
    // "A4" is no portrait text, so the page turns to landscape.
    job.print_setup(QStringLiteral("A4"));
    PrintDevice& d = job.device();
    const double t = millimetres_down(d, top), b = millimetres_down(d, bottom);
    const double l = millimetres_across(d, left), r = millimetres_across(d, right);
    job.draw_box(l, t, d.scale_width() - r, d.scale_height() - b, false, true);
    d.set_current_x(0);
    d.set_current_y(0);
    d.end_doc();
}

}  // namespace korvel::reports
