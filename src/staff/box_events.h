#pragma once
// The text boxes of the staff detail forms hand their keys, focus and clicks to the form's
// behaviour. Each box carries its number in the property "box".

#include <QLineEdit>
#include <QObject>
#include <functional>

class QKeyEvent;

namespace korvel::staff {

class BoxEvents : public QObject {
  public:
    explicit BoxEvents(QObject* parent) : QObject(parent) {}

    std::function<int(int box, int key)> key_press;  // the key to pass on; 0 drops it
    std::function<void()> moved_on;                  // Enter was pressed
    std::function<void(int box)> got_focus;
    std::function<void(int box)> lost_focus;
    std::function<void(int box)> clicked;
    std::function<void(int box)> double_clicked;

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool key(QLineEdit* box, int index, const QKeyEvent* k);
};

// A box of a detail form: named "prs_data_<index>", limited to width characters, narrow when
// the field is narrow, its text kept in value as it is edited.
QLineEdit* make_box(QWidget* parent, int index, int width, BoxEvents* events, QString& value);

}  // namespace korvel::staff
