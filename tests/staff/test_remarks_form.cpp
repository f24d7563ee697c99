#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QPushButton>
#include <QTest>
#include <QTextBlock>
#include <QTimer>

#include "staff/remarks_form.h"
#include "staff_fixture.h"

using namespace korvel;
using korvel::staff::RemarksDialog;
using korvel::staff::RemarksFrame;

namespace {

void click(QWidget* form, const char* name) {
    auto* b = form->findChild<QPushButton*>(QString::fromLatin1(name));
    ASSERT_NE(b, nullptr) << name;
    b->click();
}

// Selects the first place the text stands in the editor.
void select(QTextEdit* edit, const QString& text) {
    const QTextCursor found = edit->document()->find(text);
    ASSERT_FALSE(found.isNull()) << text.toStdString();
    edit->setTextCursor(found);
}

TEST(RemarksForm, BoldOnASelectionIsSavedAsBold) {
    QTemporaryDir tmp;
    ui::QtDialogs dialogs;
    staff::register_remarks_form(dialogs);
    shell::Session session(dialogs, platform::DriveMap::explicit_map({{"C:", tmp.path()}}));
    session.folders = korvel::testing::test_folders();
    const QString folder = session.fs().native(session.folders.staff + "\\opmerkings");
    QDir().mkpath(folder);
    korvel::testing::write_file(folder + "/personeel_opmerkings.12", "Hallo wereld\r\n");

    bool shown = false;
    QTimer::singleShot(50, [&] {
        QWidget* form = QApplication::activeModalWidget();
        ASSERT_NE(form, nullptr);
        shown = form->objectName() == "teks_raam";
        auto* edit = form->findChild<QTextEdit*>("teks");
        ASSERT_NE(edit, nullptr);
        select(edit, "wereld");
        click(form, "rtf_bold");
        click(form, "teks_ok");
        EXPECT_FALSE(form->isVisible());
    });
    staff::opmerkings_click(session, "12", false);
    ASSERT_TRUE(shown);

    const QByteArray written = korvel::testing::read_file(folder + "/personeel_opmerkings.12");
    EXPECT_TRUE(written.contains("\\b wereld")) << written.constData();
    const shell::RichText t = shell::read_rtf(written);
    ASSERT_EQ(t.paragraphs.size(), 1u);
    ASSERT_EQ(t.paragraphs[0].runs.size(), 2u);
    EXPECT_EQ(t.paragraphs[0].runs[0].text, "Hallo ");
    EXPECT_FALSE(t.paragraphs[0].runs[0].bold);
    EXPECT_TRUE(t.paragraphs[0].runs[1].bold);
}

class RemarksDialogTest : public ::testing::Test {
  protected:
    RemarksDialogTest() {
        tree.session.fixed_today = QDate(2026, 3, 10);
        tree.session.fs().create_folder(tree.session.folders.staff + "\\opmerkings");
    }
    QString path() const { return tree.session.folders.staff + "\\opmerkings\\rem.1"; }
    QByteArray written() const {
        return korvel::testing::read_file(tree.session.fs().native(path()));
    }

    korvel::testing::StaffTree tree;
};

TEST_F(RemarksDialogTest, TheDocumentShowsTheFileAsItIs) {
    RemarksFrame frame(tree.session, path(), "OPMERKINGS - 1");
    frame.text = shell::read_rtf(
        "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\fnil MS Sans Serif;}{\\f1\\fnil Courier New;}}"
        "\\pard\\f0\\fs17 Een \\b vet\\b0  \\i skuins\\i0  \\ul onder\\ulnone\\line reel\\par"
        "\\pard{\\*\\pn\\pnlvlblt}\\qr\\f1\\fs28 punt\\par punt twee\\par"
        "\\pard\\qc\\par\\pard slot\\par}");
    RemarksDialog dialog(frame);
    const shell::RichText shown = staff::rich_text_of(*dialog.editor()->document());
    ASSERT_EQ(shown.paragraphs.size(), frame.text.paragraphs.size());
    for (std::size_t i = 0; i < shown.paragraphs.size(); ++i) {
        const shell::Paragraph& a = shown.paragraphs[i];
        const shell::Paragraph& b = frame.text.paragraphs[i];
        EXPECT_EQ(a.align, b.align) << i;
        EXPECT_EQ(a.bullet, b.bullet) << i;
        ASSERT_EQ(a.runs.size(), b.runs.size()) << i;
        for (std::size_t j = 0; j < a.runs.size(); ++j) {
            EXPECT_EQ(a.runs[j].text, b.runs[j].text);
            EXPECT_TRUE(a.runs[j].same_format(b.runs[j])) << i << " " << j;
        }
    }
    // Two bulleted paragraphs in a row are one list.
    const QTextBlock second = dialog.editor()->document()->findBlockByNumber(1);
    EXPECT_EQ(second.textList(), second.next().textList());
}

TEST_F(RemarksDialogTest, ButtonsFormatTheSelectionAndInsertAtTheCaret) {
    RemarksFrame frame(tree.session, path(), "OPMERKINGS - 1");
    frame.text = shell::RichText::from_plain_text("eerste\ntweede\nderde");
    RemarksDialog dialog(frame);
    QTextEdit* edit = dialog.editor();

    select(edit, "eerste");
    click(&dialog, "teks_middel");
    click(&dialog, "rtf_italics");
    click(&dialog, "rtf_underline");
    tree.dialogs.pick_font(ui::FontChoice{"Courier New", 14, true, false, false});
    select(edit, "tweede");
    click(&dialog, "rtf_font");
    click(&dialog, "teks_regs");
    select(edit, "derde");
    click(&dialog, "teks_bullet");
    edit->moveCursor(QTextCursor::End);
    click(&dialog, "teks_datum");
    click(&dialog, "teks_ok");
    EXPECT_FALSE(frame.visible);

    const shell::RichText t = shell::read_rtf(written());
    ASSERT_EQ(t.paragraphs.size(), 3u);
    EXPECT_EQ(t.plain_text(), "eerste\ntweede\nderde2026.03.10");
    const shell::TextRun& first = t.paragraphs[0].runs.at(0);
    EXPECT_EQ(t.paragraphs[0].align, shell::Align::Centre);
    EXPECT_TRUE(first.italic && first.underline && !first.bold);
    const shell::TextRun& second = t.paragraphs[1].runs.at(0);
    EXPECT_EQ(t.paragraphs[1].align, shell::Align::Right);
    EXPECT_EQ(second.family, "Courier New");
    EXPECT_EQ(second.point_size, 14);
    EXPECT_TRUE(second.bold);
    EXPECT_TRUE(t.paragraphs[2].bullet);
    EXPECT_FALSE(t.paragraphs[1].bullet);

    // The bullet button takes the bullet off again.
    RemarksFrame again(tree.session, path(), "");
    ASSERT_TRUE(again.form_load());
    RemarksDialog dialog2(again);
    select(dialog2.editor(), "derde");
    click(&dialog2, "teks_bullet");
    click(&dialog2, "teks_ok");
    EXPECT_FALSE(shell::read_rtf(written()).paragraphs.at(2).bullet);
}

TEST_F(RemarksDialogTest, CtrlBMakesBoldAndAToolClickKeepsTheCaretInTheText) {
    RemarksFrame frame(tree.session, path(), "OPMERKINGS - 1");
    frame.text = shell::RichText::from_plain_text("eerste");
    RemarksDialog dialog(frame);
    dialog.show();
    QApplication::setActiveWindow(&dialog);
    QTextEdit* edit = dialog.editor();
    edit->setFocus();
    select(edit, "eerste");
    QTest::keyClick(edit, Qt::Key_B, Qt::ControlModifier);
    QTest::mouseClick(dialog.findChild<QPushButton*>("teks_middel"), Qt::LeftButton);
    EXPECT_TRUE(edit->hasFocus());
    click(&dialog, "teks_ok");
    const shell::RichText t = shell::read_rtf(written());
    EXPECT_TRUE(t.paragraphs.at(0).runs.at(0).bold);
}

TEST_F(RemarksDialogTest, ExitAndClosingSaveNothing) {
    RemarksFrame frame(tree.session, path(), "");
    ASSERT_TRUE(frame.form_load());
    RemarksDialog dialog(frame);
    dialog.editor()->setPlainText("nie gestoor");
    click(&dialog, "teks_exit");
    EXPECT_FALSE(frame.visible);
    RemarksDialog closed(frame);
    closed.editor()->setPlainText("ook nie");
    closed.reject();
    EXPECT_FALSE(QFile::exists(tree.session.fs().native(path())));
}

}  // namespace
