#include "reports/painter_device.h"

#include <QFile>
#include <QFontMetricsF>
#include <QPageLayout>
#include <QPageSize>
#include <cmath>

namespace korvel::reports {

QSizeF printable_twips(const QPageLayout& layout) {
    QPageLayout portrait = layout;
    portrait.setOrientation(QPageLayout::Portrait);
    const QRectF rect = portrait.paintRect(QPageLayout::Point);
    return {rect.width() * 20.0, rect.height() * 20.0};
}

PainterDevice::PainterDevice(QPagedPaintDevice& target, double dpi, QString name)
    : DeviceBase(printable_twips(target.pageLayout()).width(),
                 printable_twips(target.pageLayout()).height()),
      target_(target),
      dpi_(dpi > 0 ? dpi : 1440.0),
      name_(std::move(name)) {
    DeviceBase::set_orientation(
        target.pageLayout().orientation() == QPageLayout::Landscape ? kLandscape : kPortrait);
}

PainterDevice::~PainterDevice() {
    if (painter_.isActive())
        painter_.end();
}

void PainterDevice::set_orientation(int orientation) {
    DeviceBase::set_orientation(orientation);
    // While a page is open the new orientation waits for the next page.
    if (!painter_.isActive())
        apply_orientation();
}

void PainterDevice::apply_orientation() {
    target_.setPageOrientation(orientation() == kLandscape ? QPageLayout::Landscape
                                                           : QPageLayout::Portrait);
}

bool PainterDevice::ensure_painting() {
    if (painter_.isActive())
        return true;
    apply_orientation();
    if (!painter_.begin(&target_))
        return false;
    painter_.setRenderHint(QPainter::Antialiasing, true);
    painter_.setRenderHint(QPainter::TextAntialiasing, true);
    painter_.scale(dpi_ / 1440.0, dpi_ / 1440.0);
    return true;
}

QFont PainterDevice::current_font() const {
    QFont font(substitute_font(font_name()));
    font.setPixelSize(std::max(1, int(std::lround(font_size() * 20.0))));
    font.setBold(font_bold());
    font.setItalic(font_italic());
    font.setUnderline(font_underline());
    font.setStrikeOut(font_strikethrough());
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setKerning(false);
    return font;
}

const QFontMetricsF& PainterDevice::metrics() const {
    const FontKey key{font_name(),   font_size(),      font_bold(),
                      font_italic(), font_underline(), font_strikethrough()};
    if (!metrics_ || key != metrics_key_) {
        font_ = current_font();
        metrics_ = std::make_unique<QFontMetricsF>(font_);
        metrics_key_ = key;
        widths_.clear();
    }
    return *metrics_;
}

double PainterDevice::measure_twips(const QString& text) const {
    if (text.isEmpty())
        return 0.0;
    const QFontMetricsF& m = metrics();
    auto it = widths_.constFind(text);
    if (it != widths_.constEnd())
        return *it;
    if (widths_.size() > 20000)
        widths_.clear();
    const double width = m.horizontalAdvance(text);
    widths_.insert(text, width);
    return width;
}

void PainterDevice::draw_text(const QString& text, double x, double y) {
    if (!ensure_painting())
        return;
    const QFontMetricsF& m = metrics();
    const double height = line_height_twips();
    // The text stands in the middle of its line.
    const double baseline = y + (height - m.height()) / 2.0 + m.ascent();
    if (!font_transparent())
        painter_.fillRect(QRectF(x, y, measure_twips(text), height), Qt::white);
    painter_.setFont(font_);
    painter_.setPen(colour_from_bgr(fore_colour()));
    painter_.drawText(QPointF(x, baseline), text);
}

void PainterDevice::draw_line(double x1, double y1, double x2, double y2, int bgr) {
    if (!ensure_painting())
        return;
    QPen pen(colour_from_bgr(bgr));
    pen.setWidthF(line_width() * 5.0);
    pen.setStyle(line_style() == LineStyle::Dot ? Qt::DotLine : Qt::SolidLine);
    pen.setCapStyle(Qt::FlatCap);
    painter_.setPen(pen);
    painter_.drawLine(QPointF(x1, y1), QPointF(x2, y2));
}

void PainterDevice::draw_filled_box(double x1, double y1, double x2, double y2, int bgr) {
    if (!ensure_painting())
        return;
    painter_.fillRect(QRectF(QPointF(x1, y1), QPointF(x2, y2)).normalized(), colour_from_bgr(bgr));
}

void PainterDevice::draw_picture(const QImage& image, double x, double y, double w, double h) {
    if (!ensure_painting())
        return;
    painter_.drawImage(QRectF(x, y, w, h), image);
}

void PainterDevice::begin_new_page() {
    if (!ensure_painting())
        return;
    apply_orientation();
    target_.newPage();
}

void PainterDevice::finish_doc() {
    if (painter_.isActive())
        painter_.end();
}

void PainterDevice::discard_doc() {
    if (painter_.isActive())
        painter_.end();
}

PdfWriterHolder::PdfWriterHolder(const QString& path) : writer(path) {
    writer.setResolution(1440);
    writer.setCreator(QStringLiteral("KORVEL"));
    writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                     QMarginsF(18, 18, 18, 18), QPageLayout::Point));
}

PdfDevice::PdfDevice(const QString& native_path)
    : PdfWriterHolder(native_path),
      PainterDevice(writer, 1440.0, QStringLiteral("PDF")),
      path_(native_path) {}

void PdfDevice::discard_doc() {
    PainterDevice::discard_doc();
    QFile::remove(path_);
}

}  // namespace korvel::reports
