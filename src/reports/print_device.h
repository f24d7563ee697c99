#pragma once
// The print device: the operations the page engine asks of a printer, in the terms the pages
// were laid out in. Positions and sizes are in the current scale: character cells (120 twips
// across, 240 down), twips, or a user scale set through scale width or height.
//
// Colours are kept as the suite keeps them, one integer 0x00BBGGRR (red in the low byte).
//
// Backends: RecordingDevice keeps every call for tests; PainterDevice draws through QPainter
// (PDF here, a real printer in the ui layer).

#include <QColor>
#include <QImage>
#include <QString>

namespace korvel::reports {

enum class ScaleMode { User = 0, Twips = 1, Characters = 4 };

// 1 portrait, 2 landscape, as the printer object numbers them.
inline constexpr int kPortrait = 1;
inline constexpr int kLandscape = 2;

// Twips of one character cell.
inline constexpr double kCharWidthTwips = 120.0;
inline constexpr double kCharHeightTwips = 240.0;

// The printable part of an A4 sheet, portrait, with a quarter inch kept free on every side.
inline constexpr double kA4PrintableWidthTwips = 11906.0 - 720.0;
inline constexpr double kA4PrintableHeightTwips = 16838.0 - 720.0;

// Line styles: solid and dotted.
enum class LineStyle { Solid = 0, Dot = 2 };

QColor colour_from_bgr(int bgr);
int bgr_from_rgb(int red, int green, int blue);

class PrintDevice {
  public:
    virtual ~PrintDevice() = default;

    // Scale. Setting a mode resets the user scale; setting scale width or height switches to
    // the user scale, with that many units across or down the printable page.
    virtual ScaleMode scale_mode() const = 0;
    virtual void set_scale_mode(ScaleMode mode) = 0;
    virtual double scale_width() const = 0;
    virtual double scale_height() const = 0;
    virtual void set_scale_width(double units) = 0;
    virtual void set_scale_height(double units) = 0;
    // A horizontal (or vertical) length converted from one scale to another.
    virtual double scale_x(double value, ScaleMode from, ScaleMode to) const = 0;
    virtual double scale_y(double value, ScaleMode from, ScaleMode to) const = 0;

    virtual double current_x() const = 0;
    virtual double current_y() const = 0;
    virtual void set_current_x(double x) = 0;
    virtual void set_current_y(double y) = 0;

    // Font and pen.
    virtual QString font_name() const = 0;
    virtual void set_font_name(const QString& name) = 0;
    virtual double font_size() const = 0;
    virtual void set_font_size(double points) = 0;
    virtual bool font_bold() const = 0;
    virtual void set_font_bold(bool on) = 0;
    virtual bool font_italic() const = 0;
    virtual void set_font_italic(bool on) = 0;
    virtual bool font_underline() const = 0;
    virtual void set_font_underline(bool on) = 0;
    virtual bool font_strikethrough() const = 0;
    virtual void set_font_strikethrough(bool on) = 0;
    virtual bool font_transparent() const = 0;
    virtual void set_font_transparent(bool on) = 0;
    virtual int fore_colour() const = 0;
    virtual void set_fore_colour(int bgr) = 0;
    virtual int line_width() const = 0;
    virtual void set_line_width(int width) = 0;
    virtual LineStyle line_style() const = 0;
    virtual void set_line_style(LineStyle style) = 0;

    // Orientation, page and device.
    virtual int orientation() const = 0;
    virtual void set_orientation(int orientation) = 0;
    // The page number, from 1; ending a document leaves it one past the last page.
    virtual int page() const = 0;
    virtual QString device_name() const = 0;
    // 1 black and white, 2 colour.
    virtual int colour_mode() const = 0;

    // Text measures in the current scale, at the current font.
    virtual double text_width(const QString& text) const = 0;
    virtual double text_height(const QString& text = QStringLiteral("W")) const = 0;

    // Writes at the current position. stay_on_line keeps y and moves x past the text; otherwise
    // x returns to 0 and y moves down by one line of the font.
    virtual void print(const QString& text, bool stay_on_line = false) = 0;
    // A line, in the fore colour (or the colour given, when >= 0).
    virtual void line(double x1, double y1, double x2, double y2, int bgr = -1) = 0;
    // A box filled with the colour.
    virtual void filled_box(double x1, double y1, double x2, double y2, int bgr) = 0;
    // The picture scaled into the rectangle.
    virtual void picture(const QImage& image, double x, double y, double width, double height) = 0;

    virtual void new_page() = 0;
    virtual void end_doc() = 0;
    virtual void abandon() = 0;
    // After end_doc: whether the pages went to a printer or a file. A print preview closed
    // without printing delivered nothing.
    virtual bool delivered() const { return true; }
};

// The state every device keeps alike: scale, position, font and pen, page counter. Positions are
// held in twips from the top left of the printable page; a backend measures and draws.
class DeviceBase : public PrintDevice {
  public:
    // The printable page of a portrait sheet, in twips.
    DeviceBase(double portrait_width_twips, double portrait_height_twips);

    ScaleMode scale_mode() const override { return mode_; }
    void set_scale_mode(ScaleMode mode) override;
    double scale_width() const override { return page_width_twips() / unit_x_; }
    double scale_height() const override { return page_height_twips() / unit_y_; }
    void set_scale_width(double units) override;
    void set_scale_height(double units) override;
    double scale_x(double value, ScaleMode from, ScaleMode to) const override;
    double scale_y(double value, ScaleMode from, ScaleMode to) const override;

    double current_x() const override { return x_ / unit_x_; }
    double current_y() const override { return y_ / unit_y_; }
    void set_current_x(double x) override { x_ = x * unit_x_; }
    void set_current_y(double y) override { y_ = y * unit_y_; }

    QString font_name() const override { return font_name_; }
    void set_font_name(const QString& name) override { font_name_ = name; }
    double font_size() const override { return font_size_; }
    void set_font_size(double points) override;
    bool font_bold() const override { return bold_; }
    void set_font_bold(bool on) override { bold_ = on; }
    bool font_italic() const override { return italic_; }
    void set_font_italic(bool on) override { italic_ = on; }
    bool font_underline() const override { return underline_; }
    void set_font_underline(bool on) override { underline_ = on; }
    bool font_strikethrough() const override { return strikethrough_; }
    void set_font_strikethrough(bool on) override { strikethrough_ = on; }
    bool font_transparent() const override { return transparent_; }
    void set_font_transparent(bool on) override { transparent_ = on; }
    int fore_colour() const override { return fore_colour_; }
    void set_fore_colour(int bgr) override { fore_colour_ = bgr; }
    int line_width() const override { return line_width_; }
    void set_line_width(int width) override { line_width_ = width < 1 ? 1 : width; }
    LineStyle line_style() const override { return line_style_; }
    void set_line_style(LineStyle style) override { line_style_ = style; }

    int orientation() const override { return orientation_; }
    void set_orientation(int orientation) override;
    int page() const override { return page_; }
    int colour_mode() const override { return colour_mode_; }
    void set_colour_mode(int mode) { colour_mode_ = mode; }

    double text_width(const QString& text) const override;
    double text_height(const QString& text = QStringLiteral("W")) const override;

    void print(const QString& text, bool stay_on_line = false) override;
    void line(double x1, double y1, double x2, double y2, int bgr = -1) override;
    void filled_box(double x1, double y1, double x2, double y2, int bgr) override;
    void picture(const QImage& image, double x, double y, double width, double height) override;
    void new_page() override;
    void end_doc() override;
    void abandon() override;

    double page_width_twips() const;
    double page_height_twips() const;
    // One line of the current font, in twips: 1.2 times its size, so 10 points is one line.
    double line_height_twips() const { return font_size_ * 24.0; }

  protected:
    // Backends: the width of a text at the current font in twips, and the drawing itself, all
    // in twips from the top left of the printable page.
    virtual double measure_twips(const QString& text) const = 0;
    virtual void draw_text(const QString& text, double x, double y) = 0;
    virtual void draw_line(double x1, double y1, double x2, double y2, int bgr) = 0;
    virtual void draw_filled_box(double x1, double y1, double x2, double y2, int bgr) = 0;
    virtual void draw_picture(const QImage& image, double x, double y, double w, double h) = 0;
    virtual void begin_new_page() = 0;
    virtual void finish_doc() = 0;
    virtual void discard_doc() = 0;

    bool doc_open() const { return doc_open_; }
    double unit_x() const { return unit_x_; }
    double unit_y() const { return unit_y_; }

  private:
    double unit_for(ScaleMode mode, bool across) const;
    // Something is about to be drawn: a document begins when none is open.
    void open_doc();

    double portrait_width_;
    double portrait_height_;
    ScaleMode mode_ = ScaleMode::Twips;
    double unit_x_ = 1.0;
    double unit_y_ = 1.0;
    double x_ = 0.0;
    double y_ = 0.0;
    QString font_name_ = QStringLiteral("Lucida Console");
    double font_size_ = 10.0;
    bool bold_ = false;
    bool italic_ = false;
    bool underline_ = false;
    bool strikethrough_ = false;
    bool transparent_ = true;
    int fore_colour_ = 0;
    int line_width_ = 1;
    LineStyle line_style_ = LineStyle::Solid;
    int orientation_ = kPortrait;
    int page_ = 1;
    int colour_mode_ = 2;
    bool doc_open_ = false;
    bool ended_ = false;
};

// Font names as the pages name them, mapped to the fonts that stand in for them: Lucida Console
// to Liberation Mono (the same 0.6 em advance), Arial to Liberation Sans.
QString substitute_font(const QString& name);
// True for a font of one advance for every character.
bool is_fixed_pitch_font(const QString& name);

}  // namespace korvel::reports
