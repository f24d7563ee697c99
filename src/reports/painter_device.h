#pragma once
// A print device that draws through QPainter on a paged device: a PDF file here, a real
// printer in the ui layer. The painter works in twips; fonts are sized in twips too, so a page
// looks the same at any resolution.

#include <QFontMetricsF>
#include <QHash>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <memory>

#include "reports/print_device.h"

namespace korvel::reports {

class PainterDevice : public DeviceBase {
  public:
    // The device is not owned; its page layout gives the printable page. dpi is its resolution.
    PainterDevice(QPagedPaintDevice& target, double dpi, QString name);
    ~PainterDevice() override;

    QString device_name() const override { return name_; }
    void set_orientation(int orientation) override;

  protected:
    double measure_twips(const QString& text) const override;
    void draw_text(const QString& text, double x, double y) override;
    void draw_line(double x1, double y1, double x2, double y2, int bgr) override;
    void draw_filled_box(double x1, double y1, double x2, double y2, int bgr) override;
    void draw_picture(const QImage& image, double x, double y, double w, double h) override;
    void begin_new_page() override;
    void finish_doc() override;
    void discard_doc() override;

    // Begins painting on the target when no page is open yet.
    bool ensure_painting();
    QPagedPaintDevice& target() { return target_; }

  private:
    QFont current_font() const;
    // The metrics of the current font, made again only when the font changes.
    const QFontMetricsF& metrics() const;
    void apply_orientation();

    QPagedPaintDevice& target_;
    double dpi_;
    QString name_;
    QPainter painter_;
    struct FontKey {
        QString name;
        double size = 0;
        bool bold = false, italic = false, underline = false, strikethrough = false;
        bool operator==(const FontKey&) const = default;
    };
    mutable FontKey metrics_key_;
    mutable std::unique_ptr<QFontMetricsF> metrics_;
    mutable QFont font_;
    // Widths measured at the current font; emptied when the font changes.
    mutable QHash<QString, double> widths_;
};

// The printable page of a paged device, portrait, in twips.
QSizeF printable_twips(const QPageLayout& layout);

// Base-from-member: the writer must exist before the painter device that draws on it.
struct PdfWriterHolder {
    explicit PdfWriterHolder(const QString& path);
    QPdfWriter writer;
};

// An A4 PDF file with a quarter inch free on every side. Nothing is left of the file when the
// document is abandoned.
class PdfDevice : private PdfWriterHolder, public PainterDevice {
  public:
    explicit PdfDevice(const QString& native_path);
    const QString& path() const { return path_; }

  protected:
    void discard_doc() override;

  private:
    QString path_;
};

}  // namespace korvel::reports
