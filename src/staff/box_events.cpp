#include "staff/box_events.h"

#include <QEvent>
#include <QKeyEvent>

#include "staff/sk411_prg.h"

namespace korvel::staff {

namespace {
// Boxes this narrow (codes, dates, "JA"/"NEE") are not stretched across the form.
constexpr int kNarrowBox = 10;
}  // namespace

bool BoxEvents::eventFilter(QObject* watched, QEvent* event) {
    auto* box = qobject_cast<QLineEdit*>(watched);
    if (box == nullptr) {
        return false;
    }
    const int index = box->property("box").toInt();
    const auto call = [index](const std::function<void(int)>& f) {
        if (f) {
            f(index);
        }
        return false;
    };
    switch (event->type()) {
        case QEvent::KeyPress:
            return key(box, index, static_cast<QKeyEvent*>(event));
        case QEvent::FocusIn:
            return call(got_focus);
        case QEvent::FocusOut:
            return call(lost_focus);
        case QEvent::MouseButtonPress:
            return call(clicked);
        case QEvent::MouseButtonDblClick:
            return call(double_clicked);
        default:
            return false;
    }
}

bool BoxEvents::key(QLineEdit* box, int index, const QKeyEvent* k) {
    int typed = 0;
    if (k->key() == Qt::Key_Return || k->key() == Qt::Key_Enter) {
        typed = kEnterKey;
    } else if (k->text().size() == 1 && k->text().at(0).isPrint() &&
               !(k->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        typed = k->text().at(0).unicode();
    } else {
        return false;  // editing keys, and pasting, work as the box has them
    }
    const int passed = key_press ? key_press(index, typed) : typed;
    if (passed == 0) {
        if (moved_on) {
            moved_on();
        }
        return true;
    }
    if (passed != typed) {
        box->insert(QString(QChar(passed)));
        return true;
    }
    return false;
}

QLineEdit* make_box(QWidget* parent, int index, int width, BoxEvents* events, QString& value) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(QStringLiteral("prs_data_%1").arg(index));
    box->setProperty("box", index);
    box->setMaxLength(width);
    if (width <= kNarrowBox) {
        box->setMaximumWidth(box->fontMetrics().horizontalAdvance(QString(width + 3, u'W')));
    }
    box->installEventFilter(events);
    QObject::connect(box, &QLineEdit::textChanged, parent,
                     [&value](const QString& text) { value = text; });
    return box;
}

}  // namespace korvel::staff
