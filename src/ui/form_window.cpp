#include "ui/form_window.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QCloseEvent>
#include <QColorDialog>
#include <QComboBox>
#include <QDialog>
#include <QFileDialog>
#include <QFontDialog>
#include <QInputDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QProgressDialog>
#include <QScreen>
#include <QScrollArea>
#include <QSettings>
#include <QVBoxLayout>
#include <QValidator>
#include <algorithm>

namespace korvel::ui {

namespace {

// The settings of this workstation: a file in the user's configuration folder on every
// platform, never the registry.
QSettings workstation_settings() {
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("VESPARINE"),
                     QStringLiteral("KORVEL"));
}

QString place_key(const QWidget& form) {
    return QStringLiteral("forms/%1/place").arg(form.objectName());
}

QRect available_for(const QWidget& form, const QWidget* opener) {
    const QScreen* screen = opener != nullptr ? opener->screen() : form.screen();
    if (screen == nullptr) {
        screen = QGuiApplication::primaryScreen();
    }
    return screen != nullptr ? screen->availableGeometry() : QRect(0, 0, 1366, 768);
}

// Letters a to z become capitals as typed; whatever else is typed stays.
class Capitals : public QValidator {
  public:
    using QValidator::QValidator;
    State validate(QString& input, int&) const override {
        for (QChar& c : input) {
            if (c >= u'a' && c <= u'z') {
                c = QChar(c.unicode() - 'a' + 'A');
            }
        }
        return Acceptable;
    }
};

class EscapeCloses : public QObject {
  public:
    explicit EscapeCloses(QWidget& form) : QObject(&form), form_(form) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* e) override {
        if (watched != &form_) {
            return false;
        }
        const bool escape =
            e->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(e)->key() == Qt::Key_Escape;
        // Only the user's close box counts: a form closing itself must not run its exit again.
        const bool close_box = e->type() == QEvent::Close && e->spontaneous();
        if (!escape && !close_box) {
            return false;
        }
        QAbstractButton* exit = exit_button(form_);
        if (exit == nullptr) {
            if (escape && qobject_cast<QDialog*>(&form_) == nullptr) {
                form_.close();
                return true;
            }
            return false;  // a dialog is rejected, a close box closes
        }
        if (exit->isEnabled()) {
            exit->click();
        }
        if (close_box && form_.isVisible()) {
            e->ignore();  // the exit's rules kept the form open
        }
        return true;
    }

  private:
    QWidget& form_;
};

class EnterMovesOn : public QObject {
  public:
    explicit EnterMovesOn(QWidget& form) : QObject(&form), form_(form) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* e) override {
        if (watched != &form_ || e->type() != QEvent::KeyPress) {
            return false;
        }
        const int key = static_cast<QKeyEvent*>(e)->key();
        if (key != Qt::Key_Return && key != Qt::Key_Enter) {
            return false;
        }
        QWidget* field = QApplication::focusWidget();
        if (field == nullptr || field->window() != &form_ ||
            !(qobject_cast<QLineEdit*>(field) || qobject_cast<QComboBox*>(field) ||
              qobject_cast<QAbstractSpinBox*>(field))) {
            return false;
        }
        // The next field that Tab would reach.
        QWidget* next = field->nextInFocusChain();
        while (next != field &&
               !((next->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && next->isVisible() &&
                 next->isEnabled() && next->window() == &form_)) {
            next = next->nextInFocusChain();
        }
        next->setFocus(Qt::TabFocusReason);
        return true;
    }

  private:
    QWidget& form_;
};

// A scroll area that asks for room to show all it holds, and settles for little.
class FittingScrollArea : public QScrollArea {
  public:
    using QScrollArea::QScrollArea;
    QSize sizeHint() const override {
        return widget() != nullptr ? widget()->sizeHint().expandedTo(widget()->minimumSizeHint())
                                   : QScrollArea::sizeHint();
    }
    QSize minimumSizeHint() const override {
        const int line = fontMetrics().height();
        return {line * 12, line * 6};
    }
};

}  // namespace

ScrollingBody scrolling_body(QWidget& form) {
    auto* outer = new QVBoxLayout(&form);
    auto* area = new FittingScrollArea(&form);
    area->setObjectName(QStringLiteral("form_body"));
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);  // Tab goes from field to field, not to the area
    auto* body = new QWidget(area);
    area->setWidget(body);
    outer->addWidget(area, 1);
    return {body, outer};
}

bool is_form(const QWidget* w) {
    if (!w->isWindow() || (w->windowType() != Qt::Window && w->windowType() != Qt::Dialog)) {
        return false;
    }
    const QString name = w->objectName();
    if (name.isEmpty() || name.startsWith(QLatin1String("qt_"))) {
        return false;
    }
    return !qobject_cast<const QMessageBox*>(w) && !qobject_cast<const QInputDialog*>(w) &&
           !qobject_cast<const QFileDialog*>(w) && !qobject_cast<const QFontDialog*>(w) &&
           !qobject_cast<const QColorDialog*>(w) && !qobject_cast<const QProgressDialog*>(w);
}

QRect fitted_geometry(QSize want, const QRect& opener, const QRect& available) {
    const QSize size = want.boundedTo(available.size());
    QRect r(QPoint(0, 0), size);
    r.moveCenter(opener.isEmpty() ? available.center() : opener.center());
    r.moveLeft(std::clamp(r.left(), available.left(), available.right() - size.width() + 1));
    r.moveTop(std::clamp(r.top(), available.top(), available.bottom() - size.height() + 1));
    return r;
}

void place_form(QWidget& form, QWidget* opener) {
    if (opener != nullptr) {
        opener = opener->window();
    }
    const QRect available = available_for(form, opener);
    // The title bar and frame come on top of the client area.
    const QSize frame(0, 32);
    // The client area is kept, not the frame: a frame's place read back as a client area's
    // would walk the form down the screen by a title bar each time it opens.
    const QRect kept = workstation_settings().value(place_key(form)).toRect();
    QSize want;
    QRect around;
    if (kept.isValid()) {
        want = kept.size();
        around = QRect(kept.topLeft() - QPoint(0, frame.height()), kept.size() + frame);
    } else {
        want = form.testAttribute(Qt::WA_Resized)
                   ? form.size()
                   : form.sizeHint().expandedTo(form.minimumSizeHint());
        around = opener != nullptr ? opener->frameGeometry() : QRect();
    }
    const QRect outer = fitted_geometry(want + frame, around, available);
    form.setGeometry(QRect(outer.topLeft() + QPoint(0, frame.height()), outer.size() - frame));
}

void remember_place(const QWidget& form) {
    workstation_settings().setValue(place_key(form), form.isMaximized() || form.isFullScreen()
                                                         ? form.normalGeometry()
                                                         : form.geometry());
}

QAbstractButton* exit_button(const QWidget& form) {
    for (QAbstractButton* b : form.findChildren<QAbstractButton*>()) {
        const QString name = b->objectName();
        if (b->window() == &form &&
            (name == QLatin1String("exit") || name.endsWith(QLatin1String("_exit")))) {
            return b;
        }
    }
    return nullptr;
}

void close_on_escape(QWidget& form) {
    form.installEventFilter(new EscapeCloses(form));
}

void enter_moves_on(QWidget& form) {
    form.installEventFilter(new EnterMovesOn(form));
}

void limit_box(QLineEdit& box, int width, bool capitals) {
    box.setMaxLength(std::max(width, 1));
    if (capitals) {
        box.setValidator(new Capitals(&box));
    }
}

void tab_in_order(const QList<QWidget*>& widgets) {
    for (qsizetype i = 1; i < widgets.size(); ++i) {
        QWidget::setTabOrder(widgets[i - 1], widgets[i]);
    }
}

void pop_up_at(QWidget& list, const QWidget& field) {
    QWidget* form = field.window();
    if (list.parentWidget() != form) {
        list.setParent(form);
    }
    const QPoint below = field.mapTo(form, QPoint(0, field.height()));
    const int height = std::min(list.sizeHint().height(), std::max(form->height() / 2, 60));
    const int width = std::max(field.width(), list.sizeHint().width());
    int top = below.y();
    if (top + height > form->height()) {
        top = std::max(0, below.y() - field.height() - height);
    }
    const int left = std::clamp(below.x(), 0, std::max(0, form->width() - width));
    list.setGeometry(left, top, width, height);
    list.raise();
}

bool FormWindows::eventFilter(QObject* watched, QEvent* event) {
    static const char* const kPlaced = "korvel_form_placed";
    if ((event->type() != QEvent::Show && event->type() != QEvent::Hide) ||
        !watched->isWidgetType()) {
        return false;
    }
    auto* form = static_cast<QWidget*>(watched);
    if (!is_form(form)) {
        return false;
    }
    if (event->type() == QEvent::Hide) {
        if (form->property(kPlaced).toBool() && !event->spontaneous()) {
            remember_place(*form);
        }
        return false;
    }
    if (form->property(kPlaced).toBool()) {
        return false;
    }
    form->setProperty(kPlaced, true);
    // A maximised window (the shell, a print preview) keeps the whole screen.
    if (!(form->windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen))) {
        place_form(*form, form->parentWidget());
    }
    close_on_escape(*form);
    enter_moves_on(*form);
    return false;
}

}  // namespace korvel::ui
