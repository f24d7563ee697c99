#pragma once
// The calendar form sk0_calendar: a small modal window with a month calendar, opened on a date
// under a caption. A double click on a day, Enter, or the OK button takes the date shown as
// picked and closes the form; closing it any other way (Escape, the close button) picks nothing.

#include <QDate>
#include <QDialog>
#include <optional>

class QCalendarWidget;

namespace korvel::ui {

class CalendarForm : public QDialog {
    Q_OBJECT

  public:
    // The earliest and latest dates the calendar offers.
    static QDate first_date() { return QDate(1753, 1, 1); }
    static QDate last_date() { return QDate(9999, 12, 31); }

    // start: the date selected when the form opens; an invalid date means today, a date out of
    // range the nearest one in range.
    CalendarForm(const QString& caption, const QDate& start, QWidget* parent = nullptr);

    // The date picked, or nullopt while none is (or when the form was closed without one).
    std::optional<QDate> picked() const { return picked_; }

    QCalendarWidget* calendar() const { return calendar_; }

    // Opens the form modally over parent and returns the date picked.
    static std::optional<QDate> pick(QWidget* parent, const QString& caption, const QDate& start);

    void reject() override;

  private:
    void take(const QDate& date);

    QCalendarWidget* calendar_ = nullptr;
    std::optional<QDate> picked_;
};

}  // namespace korvel::ui
