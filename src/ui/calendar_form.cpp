#include "ui/calendar_form.h"

#include <QCalendarWidget>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

namespace korvel::ui {

CalendarForm::CalendarForm(const QString& caption, const QDate& start, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("sk0_calendar"));
    setWindowTitle(caption);
    setModal(true);

    calendar_ = new QCalendarWidget(this);
    calendar_->setObjectName(QStringLiteral("calendar"));
    calendar_->setDateRange(first_date(), last_date());
    calendar_->setGridVisible(true);
    QDate shown = start.isValid() ? start : QDate::currentDate();
    shown = std::clamp(shown, first_date(), last_date());
    calendar_->setSelectedDate(shown);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("ok"));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(calendar_);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    // activated comes from a double click on a day and from Enter in the calendar.
    connect(calendar_, &QCalendarWidget::activated, this, [this](QDate d) { take(d); });
    connect(buttons, &QDialogButtonBox::accepted, this,
            [this] { take(calendar_->selectedDate()); });

    calendar_->setFocus();
}

void CalendarForm::take(const QDate& date) {
    if (!date.isValid()) {
        return;
    }
    picked_ = date;
    accept();
}

void CalendarForm::reject() {
    picked_.reset();
    QDialog::reject();
}

std::optional<QDate> CalendarForm::pick(QWidget* parent, const QString& caption,
                                        const QDate& start) {
    CalendarForm form(caption, start, parent);
    form.exec();
    return form.picked();
}

}  // namespace korvel::ui
