#pragma once
// How every form behaves as a window: it opens in front of the form that opened it, centred on
// it and sized to fit the screen, and comes back where the user left it on this workstation;
// Escape and the close box act as its exit button; Enter moves on from a field; a text box
// takes no more than its field holds on disk, in capitals where the form types capitals.
//
// FormWindows applies the window rules to every form of the program as it first shows, so a
// new form has them without a line of its own; the box rules are one call per box.

#include <QLineEdit>
#include <QList>
#include <QObject>
#include <QRect>
#include <QSize>
#include <QWidget>

class QAbstractButton;
class QVBoxLayout;

namespace korvel::ui {

// A form of the system: a named top-level window or dialog, not a message box, input box,
// chooser, progress bar or one of Qt's own windows.
bool is_form(const QWidget* w);

// Where a form of size `want` opens: no larger than `available` (the screen less its panels),
// centred on `opener` (the opener's window frame; the screen's centre when empty) and moved
// inside `available`.
QRect fitted_geometry(QSize want, const QRect& opener, const QRect& available);

// Places the form before it shows: its size and place from this workstation's settings when
// it has been shown before, else its natural size centred on the opener; always inside the
// screen.
void place_form(QWidget& form, QWidget* opener);
// Keeps the form's size and place for the next time it opens.
void remember_place(const QWidget& form);

// The form's exit button: a button named "exit" or ending in "_exit"; null when it has none.
QAbstractButton* exit_button(const QWidget& form);
// Escape and the window's close box do what the exit button does, with its rules (a grid
// whose exit saves, saves); a form without one closes (a dialog is rejected).
void close_on_escape(QWidget& form);
// Enter in a text box, combo or number box moves to the next field, as Tab does.
void enter_moves_on(QWidget& form);
// The box takes at most `width` characters; with capitals, the letters a to z become capitals
// as they are typed (accented letters stay as they are).
void limit_box(QLineEdit& box, int width, bool capitals = false);

// A form of many fields lays its fields on `fields`, which stands in a scroll area at the top
// of the form's own layout `below`, where its row of buttons goes. At its natural size the form
// shows every field; on a small or scaled screen the form shrinks to fit and the fields scroll
// while the buttons stay in view.
struct ScrollingBody {
    QWidget* fields;
    QVBoxLayout* below;
};
ScrollingBody scrolling_body(QWidget& form);

// Tab walks the widgets in this order (the order they stand on the form).
void tab_in_order(const QList<QWidget*>& widgets);
// A pick list opens over its form at its field, below it (above it near the form's foot),
// never in the form's layout: nothing else on the form moves.
void pop_up_at(QWidget& list, const QWidget& field);

// Installed on the application: every form, as it first shows, is placed (place_form) and
// closes on Escape (close_on_escape); as it hides its place is kept.
class FormWindows : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace korvel::ui
