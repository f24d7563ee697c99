#include "reports/print_device.h"

#include <algorithm>

namespace korvel::reports {

QColor colour_from_bgr(int bgr) {
    return QColor(bgr & 0xff, (bgr >> 8) & 0xff, (bgr >> 16) & 0xff);
}

int bgr_from_rgb(int red, int green, int blue) {
    return (red & 0xff) | ((green & 0xff) << 8) | ((blue & 0xff) << 16);
}

QString substitute_font(const QString& name) {
    const QString key = name.trimmed().toUpper();
    if (key == u"LUCIDA CONSOLE" || key == u"COURIER NEW" || key == u"COURIER")
        return QStringLiteral("Liberation Mono");
    if (key == u"ARIAL" || key == u"MS SANS SERIF" || key == u"TAHOMA" || key.isEmpty())
        return QStringLiteral("Liberation Sans");
    if (key == u"TIMES NEW ROMAN")
        return QStringLiteral("Liberation Serif");
    return name;
}

bool is_fixed_pitch_font(const QString& name) {
    return substitute_font(name) == u"Liberation Mono";
}

DeviceBase::DeviceBase(double portrait_width_twips, double portrait_height_twips)
    : portrait_width_(portrait_width_twips), portrait_height_(portrait_height_twips) {}

double DeviceBase::page_width_twips() const {
    return orientation_ == kLandscape ? portrait_height_ : portrait_width_;
}

double DeviceBase::page_height_twips() const {
    return orientation_ == kLandscape ? portrait_width_ : portrait_height_;
}

double DeviceBase::unit_for(ScaleMode mode, bool across) const {
    switch (mode) {
        case ScaleMode::Twips:
            return 1.0;
        case ScaleMode::Characters:
            return across ? kCharWidthTwips : kCharHeightTwips;
        case ScaleMode::User:
            break;
    }
    return across ? unit_x_ : unit_y_;
}

void DeviceBase::set_scale_mode(ScaleMode mode) {
    mode_ = mode;
    if (mode == ScaleMode::User)
        return;
    unit_x_ = unit_for(mode, true);
    unit_y_ = unit_for(mode, false);
}

void DeviceBase::set_scale_width(double units) {
    if (units <= 0)
        return;
    mode_ = ScaleMode::User;
    unit_x_ = page_width_twips() / units;
}

void DeviceBase::set_scale_height(double units) {
    if (units <= 0)
        return;
    mode_ = ScaleMode::User;
    unit_y_ = page_height_twips() / units;
}

double DeviceBase::scale_x(double value, ScaleMode from, ScaleMode to) const {
    return value * unit_for(from, true) / unit_for(to, true);
}

double DeviceBase::scale_y(double value, ScaleMode from, ScaleMode to) const {
    return value * unit_for(from, false) / unit_for(to, false);
}

void DeviceBase::set_font_size(double points) {
    font_size_ = std::clamp(points, 1.0, 400.0);
}

void DeviceBase::set_orientation(int orientation) {
    orientation_ = orientation == kLandscape ? kLandscape : kPortrait;
}

double DeviceBase::text_width(const QString& text) const {
    return measure_twips(text) / unit_x_;
}

double DeviceBase::text_height(const QString& text) const {
    const qsizetype lines = std::max<qsizetype>(1, text.count(u'\n') + 1);
    return line_height_twips() * double(lines) / unit_y_;
}

void DeviceBase::print(const QString& text, bool stay_on_line) {
    open_doc();
    if (!text.isEmpty())
        draw_text(text, x_, y_);
    if (stay_on_line) {
        x_ += measure_twips(text);
    } else {
        x_ = 0;
        y_ += line_height_twips();
    }
}

void DeviceBase::line(double x1, double y1, double x2, double y2, int bgr) {
    open_doc();
    draw_line(x1 * unit_x_, y1 * unit_y_, x2 * unit_x_, y2 * unit_y_,
              bgr >= 0 ? bgr : fore_colour_);
    x_ = x2 * unit_x_;
    y_ = y2 * unit_y_;
}

void DeviceBase::filled_box(double x1, double y1, double x2, double y2, int bgr) {
    open_doc();
    draw_filled_box(x1 * unit_x_, y1 * unit_y_, x2 * unit_x_, y2 * unit_y_, bgr);
    x_ = x2 * unit_x_;
    y_ = y2 * unit_y_;
}

void DeviceBase::picture(const QImage& image, double x, double y, double width, double height) {
    if (image.isNull() || width <= 0 || height <= 0)
        return;
    open_doc();
    draw_picture(image, x * unit_x_, y * unit_y_, width * unit_x_, height * unit_y_);
}

void DeviceBase::open_doc() {
    if (doc_open_)
        return;
    if (ended_)
        page_ = 1;
    doc_open_ = true;
    ended_ = false;
}

void DeviceBase::new_page() {
    open_doc();
    begin_new_page();
    ++page_;
    x_ = 0;
    y_ = 0;
}

void DeviceBase::end_doc() {
    x_ = 0;
    y_ = 0;
    if (!doc_open_)
        return;
    finish_doc();
    ++page_;
    doc_open_ = false;
    ended_ = true;
    x_ = 0;
    y_ = 0;
}

void DeviceBase::abandon() {
    discard_doc();
    page_ = 1;
    doc_open_ = false;
    ended_ = false;
    x_ = 0;
    y_ = 0;
}

}  // namespace korvel::reports
