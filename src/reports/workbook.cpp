#include "reports/workbook.h"

#include <xlsxwriter.h>
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QUuid>
#include <cstring>

#include "reports/print_device.h"

namespace korvel::reports {

const SheetCell* Sheet::find(int row, int col) const {
    auto it = cells.find({row, col});
    return it == cells.end() ? nullptr : &it->second;
}

SheetCell& Sheet::put(int row, int col, const QString& text) {
    SheetCell& c = at(row, col);
    c.text = text;
    c.is_number = false;
    c.font_name = font_name;
    return c;
}

void Sheet::add_image(int row, int col, const QImage& image) {
    if (image.isNull())
        return;
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (image.save(&buffer, "PNG"))
        images.push_back({row, col, png});
}

Sheet& Workbook::add_sheet() {
    Sheet s;
    s.name = QStringLiteral("Sheet%1").arg(sheets_.size() + 1);
    sheets_.push_back(std::move(s));
    return sheets_.back();
}

namespace {

lxw_color_t rgb_of(int bgr) {
    return lxw_color_t(((bgr & 0xff) << 16) | (bgr & 0xff00) | ((bgr >> 16) & 0xff));
}

// The look of a cell as bytes: font name, then its numeric settings as they lie in memory.
QByteArray format_key(const SheetCell& c) {
    struct Look {
        double size;
        int colour, align, rotation, fill;
        bool bold, italic, underline, strikethrough, top, bottom, left, right, wrap;
    } look;
    std::memset(&look, 0, sizeof look);  // padding too, as the bytes are the key
    look.size = c.font_size;
    look.colour = c.colour;
    look.align = int(c.align);
    look.rotation = c.rotation;
    look.fill = c.fill;
    look.bold = c.bold;
    look.italic = c.italic;
    look.underline = c.underline;
    look.strikethrough = c.strikethrough;
    look.top = c.border_top;
    look.bottom = c.border_bottom;
    look.left = c.border_left;
    look.right = c.border_right;
    look.wrap = c.text.contains(u'\n');
    QByteArray key = c.font_name.toUtf8();
    key.append('\0');
    key.append(c.number_format.toUtf8());
    key.append('\0');
    key.append(reinterpret_cast<const char*>(&look), sizeof look);
    return key;
}

class FormatCache {
  public:
    explicit FormatCache(lxw_workbook* book) : book_(book) {}

    lxw_format* get(const SheetCell& c) {
        const QByteArray key = format_key(c);
        auto it = formats_.find(key);
        if (it != formats_.end())
            return it->second;
        lxw_format* f = workbook_add_format(book_);
        const QByteArray name = c.font_name.toUtf8();
        format_set_font_name(f, name.constData());
        format_set_font_size(f, c.font_size);
        if (c.bold)
            format_set_bold(f);
        if (c.italic)
            format_set_italic(f);
        if (c.underline)
            format_set_underline(f, LXW_UNDERLINE_SINGLE);
        if (c.strikethrough)
            format_set_font_strikeout(f);
        if (c.colour != 0)
            format_set_font_color(f, rgb_of(c.colour));
        switch (c.align) {
            case CellAlign::Left:
                format_set_align(f, LXW_ALIGN_LEFT);
                break;
            case CellAlign::Centre:
                format_set_align(f, LXW_ALIGN_CENTER);
                break;
            case CellAlign::Right:
                format_set_align(f, LXW_ALIGN_RIGHT);
                break;
            case CellAlign::General:
                break;
        }
        if (c.rotation != 0) {
            format_set_rotation(f, int16_t(c.rotation));
            format_set_align(f, LXW_ALIGN_VERTICAL_BOTTOM);
        }
        if (!c.number_format.isEmpty()) {
            const QByteArray nf = c.number_format.toUtf8();
            format_set_num_format(f, nf.constData());
        }
        if (c.fill >= 0) {
            format_set_pattern(f, LXW_PATTERN_SOLID);
            format_set_bg_color(f, rgb_of(c.fill));
        }
        if (c.border_top)
            format_set_top(f, LXW_BORDER_THIN);
        if (c.border_bottom)
            format_set_bottom(f, LXW_BORDER_THIN);
        if (c.border_left)
            format_set_left(f, LXW_BORDER_THIN);
        if (c.border_right)
            format_set_right(f, LXW_BORDER_THIN);
        if (c.text.contains(u'\n'))
            format_set_text_wrap(f);
        formats_.emplace(key, f);
        return f;
    }

  private:
    lxw_workbook* book_;
    std::map<QByteArray, lxw_format*> formats_;
};

bool inside_merge(const Sheet& s, int row, int col) {
    for (const SheetMerge& m : s.merges)
        if (row >= m.first_row && row <= m.last_row && col >= m.first_col && col <= m.last_col)
            return true;
    return false;
}

bool write_book(const std::vector<Sheet>& sheets, const QByteArray& path, QString* error) {
    lxw_workbook* book = workbook_new(path.constData());
    if (!book) {
        if (error)
            *error = QStringLiteral("cannot create the file");
        return false;
    }
    FormatCache formats(book);
    std::vector<Sheet> all = sheets;
    if (all.empty()) {
        Sheet s;
        s.name = QStringLiteral("Sheet1");
        all.push_back(s);
    }
    for (const Sheet& s : all) {
        const QByteArray name = s.name.left(31).toUtf8();
        lxw_worksheet* ws = workbook_add_worksheet(book, name.constData());
        if (!ws)
            continue;
        for (const auto& [col, width] : s.column_widths)
            worksheet_set_column(ws, lxw_col_t(col), lxw_col_t(col), width, nullptr);
        for (const auto& [row, height] : s.row_heights)
            worksheet_set_row(ws, lxw_row_t(row), height, nullptr);
        for (const auto& [pos, c] : s.cells) {
            if (inside_merge(s, pos.first, pos.second))
                continue;
            lxw_format* f = formats.get(c);
            const auto r = lxw_row_t(pos.first);
            const auto k = lxw_col_t(pos.second);
            if (c.is_number) {
                worksheet_write_number(ws, r, k, c.number, f);
            } else if (c.text.isEmpty()) {
                worksheet_write_blank(ws, r, k, f);
            } else {
                const QByteArray text = c.text.toUtf8();
                worksheet_write_string(ws, r, k, text.constData(), f);
            }
        }
        for (const SheetImage& image : s.images) {
            lxw_image_options options{};
            options.object_position = LXW_OBJECT_MOVE_AND_SIZE;
            worksheet_insert_image_buffer_opt(
                ws, lxw_row_t(image.row), lxw_col_t(image.col),
                reinterpret_cast<const unsigned char*>(image.png.constData()),
                size_t(image.png.size()), &options);
        }
        for (const SheetMerge& m : s.merges) {
            const SheetCell* first = s.find(m.first_row, m.first_col);
            SheetCell base = first ? *first : SheetCell{};
            base.align = CellAlign::Centre;
            const QByteArray text = base.text.toUtf8();
            worksheet_merge_range(ws, lxw_row_t(m.first_row), lxw_col_t(m.first_col),
                                  lxw_row_t(m.last_row), lxw_col_t(m.last_col), text.constData(),
                                  formats.get(base));
        }
    }
    const lxw_error result = workbook_close(book);
    if (result != LXW_NO_ERROR) {
        if (error)
            *error = QString::fromUtf8(lxw_strerror(result));
        return false;
    }
    return true;
}

}  // namespace

bool Workbook::save(const QString& native_path, QString* error) const {
    const QFileInfo target(native_path);
    const QDir folder = target.absoluteDir();
    if (!folder.exists()) {
        if (error)
            *error = QStringLiteral("folder missing");
        return false;
    }
    const QString temp = folder.filePath(QStringLiteral(".%1.%2.part")
                                             .arg(target.fileName())
                                             .arg(QUuid::createUuid().toString(QUuid::Id128)));
    if (!write_book(sheets_, QFile::encodeName(temp), error)) {
        QFile::remove(temp);
        return false;
    }
    if (QFile::exists(native_path) && !QFile::remove(native_path)) {
        QFile::remove(temp);
        if (error)
            *error = QStringLiteral("the old file cannot be replaced");
        return false;
    }
    if (!QFile::rename(temp, native_path)) {
        QFile::remove(temp);
        if (error)
            *error = QStringLiteral("cannot rename the new file");
        return false;
    }
    return true;
}

}  // namespace korvel::reports
