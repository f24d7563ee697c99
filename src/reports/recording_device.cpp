#include "reports/recording_device.h"

namespace korvel::reports {

RecordingDevice::RecordingDevice(QString name, double portrait_width_twips,
                                 double portrait_height_twips)
    : DeviceBase(portrait_width_twips, portrait_height_twips), name_(std::move(name)) {}

double RecordingDevice::measure_twips(const QString& text) const {
    double em = font_size() * 20.0;
    double per_char = is_fixed_pitch_font(font_name()) ? 0.6 : 0.55;
    return double(text.size()) * em * per_char;
}

RecordedCall RecordingDevice::make(RecordedCall::Kind kind) const {
    RecordedCall c;
    c.kind = kind;
    c.page = page();
    c.font = font_name();
    c.size = font_size();
    c.bold = font_bold();
    c.colour = fore_colour();
    c.width = line_width();
    c.transparent = font_transparent();
    c.italic = font_italic();
    c.underline = font_underline();
    c.strikethrough = font_strikethrough();
    c.style = line_style();
    c.orientation = orientation();
    return c;
}

void RecordingDevice::draw_text(const QString& text, double x, double y) {
    RecordedCall c = make(RecordedCall::Kind::Text);
    c.text = text;
    c.x1 = x;
    c.y1 = y;
    c.x2 = x + measure_twips(text);
    c.y2 = y + line_height_twips();
    calls_.push_back(c);
}

void RecordingDevice::draw_line(double x1, double y1, double x2, double y2, int bgr) {
    RecordedCall c = make(RecordedCall::Kind::Line);
    c.x1 = x1;
    c.y1 = y1;
    c.x2 = x2;
    c.y2 = y2;
    c.colour = bgr;
    calls_.push_back(c);
}

void RecordingDevice::draw_filled_box(double x1, double y1, double x2, double y2, int bgr) {
    RecordedCall c = make(RecordedCall::Kind::Box);
    c.x1 = x1;
    c.y1 = y1;
    c.x2 = x2;
    c.y2 = y2;
    c.colour = bgr;
    calls_.push_back(c);
}

void RecordingDevice::draw_picture(const QImage& image, double x, double y, double w, double h) {
    RecordedCall c = make(RecordedCall::Kind::Picture);
    c.text = QStringLiteral("%1x%2").arg(image.width()).arg(image.height());
    c.image = image;
    c.x1 = x;
    c.y1 = y;
    c.x2 = x + w;
    c.y2 = y + h;
    calls_.push_back(c);
}

void RecordingDevice::begin_new_page() {
    calls_.push_back(make(RecordedCall::Kind::NewPage));
}

void RecordingDevice::finish_doc() {
    calls_.push_back(make(RecordedCall::Kind::EndDoc));
}

void RecordingDevice::discard_doc() {
    calls_.push_back(make(RecordedCall::Kind::Abandon));
}

void replay(const std::vector<RecordedCall>& calls, PrintDevice& target) {
    target.set_scale_mode(ScaleMode::Twips);
    bool first = true;
    for (const RecordedCall& c : calls) {
        if (first) {
            target.set_orientation(c.orientation);
            first = false;
        }
        target.set_fore_colour(c.colour);
        target.set_line_width(c.width);
        target.set_line_style(c.style);
        switch (c.kind) {
            case RecordedCall::Kind::Text:
                target.set_font_name(c.font);
                target.set_font_size(c.size);
                target.set_font_bold(c.bold);
                target.set_font_italic(c.italic);
                target.set_font_underline(c.underline);
                target.set_font_strikethrough(c.strikethrough);
                target.set_font_transparent(c.transparent);
                target.set_current_x(c.x1);
                target.set_current_y(c.y1);
                target.print(c.text, true);
                break;
            case RecordedCall::Kind::Line:
                target.line(c.x1, c.y1, c.x2, c.y2, c.colour);
                break;
            case RecordedCall::Kind::Box:
                target.filled_box(c.x1, c.y1, c.x2, c.y2, c.colour);
                break;
            case RecordedCall::Kind::Picture:
                target.picture(c.image, c.x1, c.y1, c.x2 - c.x1, c.y2 - c.y1);
                break;
            case RecordedCall::Kind::NewPage:
                // The orientation of the page that follows.
                for (auto it = &c + 1; it < calls.data() + calls.size(); ++it) {
                    if (it->page != c.page) {
                        target.set_orientation(it->orientation);
                        break;
                    }
                }
                target.new_page();
                target.set_scale_mode(ScaleMode::Twips);
                break;
            case RecordedCall::Kind::EndDoc:
            case RecordedCall::Kind::Abandon:
                break;
        }
    }
}

QStringList RecordingDevice::lines() const {
    QStringList out;
    for (const RecordedCall& c : calls_) {
        const QString p = QStringLiteral("p%1 ").arg(c.page);
        switch (c.kind) {
            case RecordedCall::Kind::Text:
                out << p + QStringLiteral("text \"%1\" @(%2,%3) %4 %5%6")
                               .arg(c.text)
                               .arg(c.x1)
                               .arg(c.y1)
                               .arg(c.font)
                               .arg(c.size)
                               .arg(c.bold ? QStringLiteral(" bold") : QString());
                break;
            case RecordedCall::Kind::Line:
                out << p + QStringLiteral("line (%1,%2)-(%3,%4) w%5")
                               .arg(c.x1)
                               .arg(c.y1)
                               .arg(c.x2)
                               .arg(c.y2)
                               .arg(c.width);
                break;
            case RecordedCall::Kind::Box:
                out << p + QStringLiteral("box (%1,%2)-(%3,%4) colour %5")
                               .arg(c.x1)
                               .arg(c.y1)
                               .arg(c.x2)
                               .arg(c.y2)
                               .arg(c.colour);
                break;
            case RecordedCall::Kind::Picture:
                out << p + QStringLiteral("picture %1 (%2,%3)-(%4,%5)")
                               .arg(c.text)
                               .arg(c.x1)
                               .arg(c.y1)
                               .arg(c.x2)
                               .arg(c.y2);
                break;
            case RecordedCall::Kind::NewPage:
                out << p + QStringLiteral("new page");
                break;
            case RecordedCall::Kind::EndDoc:
                out << p + QStringLiteral("end doc");
                break;
            case RecordedCall::Kind::Abandon:
                out << p + QStringLiteral("abandon");
                break;
        }
    }
    return out;
}

QStringList RecordingDevice::texts(int page) const {
    QStringList out;
    for (const RecordedCall& c : calls_)
        if (c.kind == RecordedCall::Kind::Text && (page <= 0 || c.page == page))
            out << c.text;
    return out;
}

const RecordedCall* RecordingDevice::find_text(const QString& part) const {
    for (const RecordedCall& c : calls_)
        if (c.kind == RecordedCall::Kind::Text && c.text.contains(part))
            return &c;
    return nullptr;
}

int RecordingDevice::count(RecordedCall::Kind kind) const {
    int n = 0;
    for (const RecordedCall& c : calls_)
        n += c.kind == kind ? 1 : 0;
    return n;
}

}  // namespace korvel::reports
