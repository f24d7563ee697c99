// The window rules every form follows, on small forms of the test's own: where a form opens,
// what Escape, the close box and Enter do, what a box takes, and that a dialog opens over the
// form that asked for it.

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include "ui/form_window.h"
#include "ui/qt_dialogs.h"

namespace korvel::ui {
namespace {

TEST(FormWindow, OpensCentredOnItsOpenerInsideTheScreen) {
    const QRect screen(0, 0, 1366, 738);
    struct Case {
        QSize want;
        QRect opener;
        QRect expected;
    } cases[] = {
        {{400, 300}, {0, 0, 1366, 738}, {483, 219, 400, 300}},      // centred on the opener
        {{2000, 900}, {0, 0, 1366, 738}, {0, 0, 1366, 738}},        // cut to the screen
        {{400, 300}, {1200, 600, 100, 100}, {966, 438, 400, 300}},  // pushed back inside
        {{400, 300}, {}, {483, 219, 400, 300}},                     // no opener: the screen
    };
    for (const Case& c : cases) {
        EXPECT_EQ(fitted_geometry(c.want, c.opener, screen), c.expected) << c.want.width();
    }
}

// A form with two boxes and an exit button that asks first, as a form whose exit saves.
struct ExitForm {
    ExitForm() {
        dialog.setObjectName(QStringLiteral("test_form"));
        auto* layout = new QVBoxLayout(&dialog);
        first = new QLineEdit(&dialog);
        second = new QLineEdit(&dialog);
        exit = new QPushButton(QStringLiteral("X"), &dialog);
        exit->setObjectName(QStringLiteral("staff_exit"));
        layout->addWidget(first);
        layout->addWidget(second);
        layout->addWidget(exit);
        QObject::connect(exit, &QPushButton::clicked, &dialog, [this] {
            ++exits;
            if (may_close) {
                dialog.accept();
            }
        });
    }
    QDialog dialog;
    QLineEdit* first;
    QLineEdit* second;
    QPushButton* exit;
    int exits = 0;
    bool may_close = true;
};

TEST(FormWindow, EscapeRunsTheExitButtonAndItsRules) {
    ExitForm form;
    form.dialog.show();
    QTest::keyClick(form.first, Qt::Key_Escape);
    EXPECT_EQ(form.exits, 1);
    EXPECT_FALSE(form.dialog.isVisible());

    // An exit whose rules keep the form open keeps it open.
    form.may_close = false;
    form.dialog.show();
    QTest::keyClick(form.second, Qt::Key_Escape);
    EXPECT_EQ(form.exits, 2);
    EXPECT_TRUE(form.dialog.isVisible());
    form.dialog.hide();
}

TEST(FormWindow, EscapeClosesAFormWithoutAnExitButton) {
    QWidget form;
    form.setObjectName(QStringLiteral("plain_form"));
    form.setWindowFlag(Qt::Window);
    auto* box = new QLineEdit(&form);
    form.show();
    QTest::keyClick(box, Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
}

TEST(FormWindow, EnterMovesToTheNextField) {
    ExitForm form;
    form.dialog.show();
    QApplication::setActiveWindow(&form.dialog);
    form.first->setFocus();
    QTest::keyClick(form.first, Qt::Key_Return);
    EXPECT_TRUE(form.second->hasFocus());
    EXPECT_EQ(form.exits, 0);
    form.dialog.hide();
}

TEST(FormWindow, ABoxTakesItsFieldsWidthInCapitals) {
    QLineEdit box;
    limit_box(box, 5, true);
    QTest::keyClicks(&box, "ab3cdE");
    EXPECT_EQ(box.text(), "AB3CD");
}

TEST(FormWindow, AFormComesBackWhereAndAtTheSizeItWasLeft) {
    const QRect left(200, 150, 520, 310);
    ExitForm form;
    form.dialog.show();
    form.dialog.setGeometry(left);
    form.dialog.hide();  // kept as it hides

    for (int time = 0; time < 2; ++time) {  // and again: it does not creep
        ExitForm again;
        again.dialog.show();
        EXPECT_EQ(again.dialog.geometry(), left);
        again.dialog.hide();
    }
}

TEST(FormWindow, AMessageOpensOverTheFormInFrontAndGivesTheFocusBack) {
    QtDialogs dialogs;
    ExitForm form;
    QWidget* parent_of_box = nullptr;
    bool focus_back = false;
    QTimer::singleShot(0, &form.dialog, [&] {
        QApplication::setActiveWindow(&form.dialog);
        form.second->setFocus();
        QTimer clerk;
        QObject::connect(&clerk, &QTimer::timeout, [&] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                parent_of_box = box->parentWidget();
                box->button(QMessageBox::Ok)->click();
            }
        });
        clerk.start(10);
        dialogs.message(QStringLiteral("?"));
        focus_back = form.dialog.focusWidget() == form.second;
        form.dialog.accept();
    });
    form.dialog.exec();
    EXPECT_EQ(parent_of_box, &form.dialog);
    EXPECT_TRUE(focus_back);
}

}  // namespace
}  // namespace korvel::ui
