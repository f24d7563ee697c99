// The real dialogs, driven as a user would: a timer finds the modal dialog once it is up and
// clicks, types or presses keys in it.

#include <gtest/gtest.h>

#include <QApplication>
#include <QCalendarWidget>
#include <QFontDatabase>
#include <QFontDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <functional>

#include "ui/calendar_form.h"
#include "ui/qt_dialogs.h"

namespace korvel::ui {
namespace {

// Runs an action on the next visible modal dialog of type T, inside that dialog's event loop.
// A dialog the action leaves open is closed after a while, as a failure, so a test never hangs.
template <class T>
class Driver {
  public:
    explicit Driver(std::function<void(T*)> action) : action_(std::move(action)) {
        QObject::connect(&timer_, &QTimer::timeout, [this] { poll(); });
        timer_.start(10);
    }
    bool ran() const { return ran_; }

  private:
    void poll() {
        auto* dialog = qobject_cast<T*>(QApplication::activeModalWidget());
        if (dialog == nullptr || !dialog->isVisible()) {
            return;
        }
        timer_.stop();
        ran_ = true;
        action_(dialog);
        QTimer::singleShot(5000, dialog, [dialog] {
            if (dialog->isVisible()) {
                ADD_FAILURE() << "the dialog was left open";
                static_cast<QDialog*>(dialog)->done(QDialog::Rejected);
            }
        });
    }

    std::function<void(T*)> action_;
    QTimer timer_;
    bool ran_ = false;
};

class QtDialogsTest : public ::testing::Test {
  protected:
    QtDialogs dialogs;
};

TEST_F(QtDialogsTest, MessageShowsPlainTextUnderTheDefaultCaption) {
    Driver<QMessageBox> d([&](QMessageBox* box) {
        EXPECT_EQ(box->windowTitle(), "KORVEL");
        EXPECT_EQ(box->text(), "<b>NOG</b> IETS\nTWEEDE RY");
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        EXPECT_EQ(box->icon(), QMessageBox::Warning);
        EXPECT_EQ(box->standardButtons(), QMessageBox::StandardButtons(QMessageBox::Ok));
        QTest::keyClick(box, Qt::Key_Return);
    });
    dialogs.message(QStringLiteral("<b>NOG</b> IETS\r\nTWEEDE RY"), Icon::Exclamation);
    ASSERT_TRUE(d.ran());
}

// Every set of buttons: the buttons shown, the answer of each button clicked, of Escape, and
// of Enter, which takes the default answer, or the first button when that is not one of them.
TEST_F(QtDialogsTest, QuestionsAnswerTheButtonClickedEscapeAndEnter) {
    using A = Answer;
    using B = Buttons;
    const QMap<A, QMessageBox::StandardButton> qt = {
        {A::Ok, QMessageBox::Ok},         {A::Cancel, QMessageBox::Cancel},
        {A::Yes, QMessageBox::Yes},       {A::No, QMessageBox::No},
        {A::Retry, QMessageBox::Retry},   {A::Abort, QMessageBox::Abort},
        {A::Ignore, QMessageBox::Ignore},
    };
    struct Case {
        B buttons;
        QList<A> answers;
        A on_escape, default_answer, on_enter;
    };
    const QList<Case> cases = {
        {B::Ok, {A::Ok}, A::Ok, A::Ok, A::Ok},
        {B::OkCancel, {A::Ok, A::Cancel}, A::Cancel, A::Cancel, A::Cancel},
        {B::YesNo, {A::Yes, A::No}, A::No, A::No, A::No},
        {B::YesNoCancel, {A::Yes, A::No, A::Cancel}, A::Cancel, A::No, A::No},
        {B::RetryCancel, {A::Retry, A::Cancel}, A::Cancel, A::Ok, A::Retry},
        {B::AbortRetryIgnore, {A::Abort, A::Retry, A::Ignore}, A::Abort, A::Ignore, A::Ignore},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.buttons));
        QMessageBox::StandardButtons expected_shown;
        for (Answer a : c.answers) {
            expected_shown |= qt[a];
        }
        auto ask_and = [&](const std::function<void(QMessageBox*)>& act) {
            Driver<QMessageBox> d([&](QMessageBox* box) {
                EXPECT_EQ(box->standardButtons(), expected_shown);
                act(box);
            });
            const Answer got =
                dialogs.ask(QStringLiteral("?"), c.buttons, Icon::Question, c.default_answer);
            EXPECT_TRUE(d.ran());
            return got;
        };
        for (Answer a : c.answers) {
            EXPECT_EQ(ask_and([&](QMessageBox* box) { box->button(qt[a])->click(); }), a);
        }
        EXPECT_EQ(ask_and([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Escape); }),
                  c.on_escape);
        EXPECT_EQ(ask_and([](QMessageBox* box) { QTest::keyClick(box, Qt::Key_Return); }),
                  c.on_enter);
    }
}

TEST_F(QtDialogsTest, InputReplacesTheOfferedTextHidesPasswordsAndTellsCancelFromBlank) {
    Driver<QInputDialog> typed([&](QInputDialog* dlg) {
        EXPECT_EQ(dlg->windowTitle(), "KORVEL");
        EXPECT_EQ(dlg->textEchoMode(), QLineEdit::Password);
        QTest::keyClicks(dlg->findChild<QLineEdit*>(), QStringLiteral("SMIT"));
        dlg->accept();
    });
    EXPECT_EQ(dialogs.input(QStringLiteral("STELSEL WAGWOORD"), {}, QStringLiteral("JONES"), true),
              std::optional<QString>(QStringLiteral("SMIT")));
    ASSERT_TRUE(typed.ran());

    Driver<QInputDialog> blank([&](QInputDialog* dlg) {
        EXPECT_EQ(dlg->textEchoMode(), QLineEdit::Normal);
        dlg->findChild<QLineEdit*>()->clear();
        dlg->accept();
    });
    EXPECT_EQ(dialogs.input(QStringLiteral("P"), QStringLiteral("T"), QStringLiteral("X")),
              std::optional<QString>(QString()));
    ASSERT_TRUE(blank.ran());

    Driver<QInputDialog> cancel([](QInputDialog* dlg) { dlg->reject(); });
    EXPECT_EQ(dialogs.input(QStringLiteral("P"), QStringLiteral("T"), QStringLiteral("X")),
              std::nullopt);
    ASSERT_TRUE(cancel.ran());
}

TEST_F(QtDialogsTest, CalendarStartsOnTheDateGivenOrToday) {
    EXPECT_EQ(CalendarForm({}, QDate(2024, 2, 29)).calendar()->selectedDate(), QDate(2024, 2, 29));
    EXPECT_EQ(CalendarForm({}, QDate()).calendar()->selectedDate(), QDate::currentDate());
    EXPECT_EQ(CalendarForm({}, QDate(1600, 1, 1)).calendar()->selectedDate(),
              CalendarForm::first_date());
}

TEST_F(QtDialogsTest, CalendarReturnsTheDayDoubleClickedEnteredOrConfirmedAndNothingOnClose) {
    Driver<CalendarForm> double_click([&](CalendarForm* form) {
        EXPECT_EQ(form->windowTitle(), "SYSTEM DATE");
        auto* view = form->calendar()->findChild<QTableView*>();
        const QPoint cell = view->visualRect(view->currentIndex()).center();
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, cell);
    });
    EXPECT_EQ(dialogs.pick_date(QStringLiteral("SYSTEM DATE"), QDate(2025, 3, 14)),
              QDate(2025, 3, 14));
    ASSERT_TRUE(double_click.ran());

    Driver<CalendarForm> keys([](CalendarForm* form) {
        auto* view = form->calendar()->findChild<QTableView*>();
        QTest::keyClick(view, Qt::Key_Right);  // across the month end
        QTest::keyClick(view, Qt::Key_Return);
    });
    EXPECT_EQ(dialogs.pick_date(QStringLiteral("X"), QDate(2024, 2, 29)), QDate(2024, 3, 1));
    ASSERT_TRUE(keys.ran());

    Driver<CalendarForm> ok([](CalendarForm* form) {
        form->calendar()->setSelectedDate(QDate(2026, 12, 31));
        form->findChild<QPushButton*>(QStringLiteral("ok"))->click();
    });
    EXPECT_EQ(dialogs.pick_date(QStringLiteral("X"), QDate(2026, 1, 1)), QDate(2026, 12, 31));
    ASSERT_TRUE(ok.ran());

    // Closed without picking, it gives nothing.
    Driver<CalendarForm> escape([](CalendarForm* form) {
        form->calendar()->setSelectedDate(QDate(2026, 5, 5));
        QTest::keyClick(form, Qt::Key_Escape);
    });
    EXPECT_EQ(dialogs.pick_date(QStringLiteral("X"), QDate(2026, 1, 1)), std::nullopt);
    ASSERT_TRUE(escape.ran());

    Driver<CalendarForm> close([](CalendarForm* form) { form->close(); });
    EXPECT_EQ(dialogs.pick_date(QStringLiteral("X"), QDate(2026, 1, 1)), std::nullopt);
    ASSERT_TRUE(close.ran());
}

TEST(QtFileFilter, TurnsTheSystemsFiltersIntoQtFilters) {
    EXPECT_EQ(qt_file_filter(QString()), QString());
    EXPECT_EQ(qt_file_filter(QStringLiteral(" *.jpg;*.bmp ")), "*.jpg *.bmp");
    EXPECT_EQ(qt_file_filter(QStringLiteral("Pictures (*.jpg;*.bmp)|*.jpg;*.bmp|All files|*.*")),
              "Pictures (*.jpg *.bmp);;All files (*.*)");
    // Brackets that hold no pattern belong to the description.
    EXPECT_EQ(qt_file_filter(QStringLiteral("Workbook (Excel 97)|*.xls")),
              "Workbook (Excel 97) (*.xls)");
    EXPECT_EQ(qt_file_filter(QStringLiteral("|*.txt|Nothing|")), "*.txt;;Nothing (*)");
}

TEST_F(QtDialogsTest, FontChooserKeepsTheFontAcceptedWithItsEffects) {
    QString family;
    for (const char* f : {"DejaVu Sans", "Liberation Sans", "Arial"}) {
        if (QFontDatabase::styles(QString::fromLatin1(f)).contains(QStringLiteral("Bold Italic"))) {
            family = QString::fromLatin1(f);
            break;
        }
    }
    if (family.isEmpty()) {
        GTEST_SKIP() << "no font with a bold italic face";
    }
    const FontChoice start{family, 12.0, true, true, true};
    Driver<QFontDialog> accept([](QFontDialog* dlg) { dlg->accept(); });
    const auto chosen = choose_font_qt(nullptr, start);
    ASSERT_TRUE(accept.ran());
    ASSERT_TRUE(chosen.has_value());
    EXPECT_EQ(chosen->family, family);
    EXPECT_DOUBLE_EQ(chosen->point_size, 12.0);
    EXPECT_TRUE(chosen->bold && chosen->italic && chosen->underline);

    Driver<QFontDialog> cancel([](QFontDialog* dlg) { dlg->reject(); });
    EXPECT_EQ(choose_font_qt(nullptr, start), std::nullopt);
    ASSERT_TRUE(cancel.ran());
}

TEST(QtDialogsProgress, CancelStopsAJobThatCanStopAndNoOther) {
    for (const bool can_stop : {true, false}) {
        QtDialogs dialogs;
        const std::unique_ptr<Progress> bar = dialogs.progress("2026 STAFF LIST", 0, can_stop);
        QProgressDialog* shown = nullptr;
        for (QWidget* w : QApplication::topLevelWidgets()) {
            if (auto* p = qobject_cast<QProgressDialog*>(w)) {
                shown = p;
            }
        }
        ASSERT_NE(shown, nullptr);
        auto* cancel = shown->findChild<QPushButton*>();
        ASSERT_EQ(cancel != nullptr, can_stop);
        if (cancel != nullptr) {
            cancel->click();
        }
        EXPECT_EQ(bar->step(1), !can_stop) << can_stop;
    }
}

}  // namespace
}  // namespace korvel::ui
