#pragma once
// A print device that draws nothing and keeps every call, for tests. Text widths follow a fixed
// model (0.6 em a character in a fixed-pitch font, 0.55 em in any other), so layouts are the
// same on every machine.

#include <QStringList>
#include <vector>

#include "reports/print_device.h"

namespace korvel::reports {

struct RecordedCall {
    enum class Kind { Text, Line, Box, Picture, NewPage, EndDoc, Abandon };
    Kind kind = Kind::Text;
    int page = 1;
    QString text;
    // Twips from the top left of the printable page.
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    QString font;
    double size = 0;
    bool bold = false;
    int colour = 0;
    int width = 1;
    bool transparent = false;
    bool italic = false;
    bool underline = false;
    bool strikethrough = false;
    LineStyle style = LineStyle::Solid;
    int orientation = kPortrait;
    QImage image;  // of a picture
};

// Draws recorded calls again on another device, page by page: a report is recorded once and
// then shown in a print preview, or printed. The target's end of document is left to the caller.
void replay(const std::vector<RecordedCall>& calls, PrintDevice& target);

class RecordingDevice : public DeviceBase {
  public:
    explicit RecordingDevice(QString name = QStringLiteral("RECORDER"),
                             double portrait_width_twips = kA4PrintableWidthTwips,
                             double portrait_height_twips = kA4PrintableHeightTwips);

    QString device_name() const override { return name_; }

    const std::vector<RecordedCall>& calls() const { return calls_; }
    void clear() { calls_.clear(); }
    // Every call as one readable line, such as `p1 text "BLADSY : 1" @(240,120) Lucida Console 8`.
    QStringList lines() const;
    // The texts printed, in order; on one page only when page > 0.
    QStringList texts(int page = 0) const;
    // The first text call whose text contains the part, or nullptr.
    const RecordedCall* find_text(const QString& part) const;
    int count(RecordedCall::Kind kind) const;

  protected:
    double measure_twips(const QString& text) const override;
    void draw_text(const QString& text, double x, double y) override;
    void draw_line(double x1, double y1, double x2, double y2, int bgr) override;
    void draw_filled_box(double x1, double y1, double x2, double y2, int bgr) override;
    void draw_picture(const QImage& image, double x, double y, double w, double h) override;
    void begin_new_page() override;
    void finish_doc() override;
    void discard_doc() override;

  private:
    RecordedCall make(RecordedCall::Kind kind) const;

    QString name_;
    std::vector<RecordedCall> calls_;
};

}  // namespace korvel::reports
