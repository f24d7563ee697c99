#include <gtest/gtest.h>

#include <QDir>

#include "shell/common_dialogs.h"
#include "staff/remarks.h"
#include "staff_fixture.h"

using namespace korvel;
using korvel::staff::RemarksFrame;
using korvel::testing::read_file;
using korvel::testing::StaffTree;
using korvel::testing::write_file;
using Kind = korvel::ui::Shown::Kind;

namespace {

const QByteArray kOldRemarks =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\fnil\\fcharset0 MS Sans "
    "Serif;}}\r\n\\viewkind4\\uc1\\pard\\f0\\fs17 Het \\b uitstekend\\b0  gevaar, ook in "
    "d\\'ede sport.\\par\r\n}\r\n";

class Remarks : public ::testing::Test {
  protected:
    Remarks() { tree.session.fixed_today = QDate(2026, 3, 10); }

    QString folder() const { return tree.native(tree.session.folders.staff, "opmerkings"); }
    QString file(const QString& name) const { return folder() + u'/' + name; }

    // Plays the frame: what it opened with, and what the user does inside it.
    struct Seen {
        QString path;
        QString caption;
        QString text;
        bool visible = false;
    };
    void play(std::function<void(RemarksFrame&)> act) {
        tree.dialogs.on_form("teks_raam", [this, act](ui::ChildForm& f) {
            auto& frame = static_cast<RemarksFrame&>(f);
            seen = Seen{frame.path, frame.caption, frame.text.plain_text(), frame.visible};
            act(frame);
        });
    }
    static void type_and_save(RemarksFrame& frame, const QString& text) {
        frame.text = shell::RichText::from_plain_text(text);
        frame.teks_ok_click();
    }

    StaffTree tree;
    Seen seen;
};

TEST_F(Remarks, LeftClickOpensThePublicTextInAFolderMadeForIt) {
    ASSERT_FALSE(QDir(folder()).exists());
    play([](RemarksFrame& frame) { type_and_save(frame, "Eerste opmerking\nTweede reël"); });
    staff::opmerkings_click(tree.session, " 12 ", false);

    EXPECT_EQ(tree.dialogs.forms_shown(), QStringList{"teks_raam"});
    EXPECT_EQ(seen.path, tree.session.folders.staff + "\\opmerkings\\personeel_opmerkings.12");
    EXPECT_EQ(seen.caption, "OPMERKINGS - 12");
    EXPECT_TRUE(seen.visible);
    EXPECT_TRUE(seen.text.isEmpty());
    EXPECT_EQ(tree.dialogs.shown().size(), 1);  // no password for the public text

    const QByteArray written = read_file(file("personeel_opmerkings.12"));
    EXPECT_TRUE(written.startsWith("{\\rtf1\\ansi\\ansicpg1252"));
    EXPECT_TRUE(written.contains("re\\'ebl"));
    EXPECT_FALSE(QFile::exists(file("privaat_opmerkings.12")));

    // Opened again, the frame shows what was saved.
    play([](RemarksFrame&) {});
    staff::opmerkings_click(tree.session, "12", false);
    EXPECT_EQ(seen.text, "Eerste opmerking\nTweede reël");
}

TEST_F(Remarks, AFileOfTheOldProgramOpensAndKeepsItsFormattingWhenSavedAgain) {
    QDir().mkpath(folder());
    write_file(file("personeel_opmerkings.7"), kOldRemarks);
    play([](RemarksFrame& frame) {
        ASSERT_EQ(frame.text.paragraphs.size(), 1u);
        frame.text.paragraphs[0].append(" Bygevoeg.", frame.text.paragraphs[0].runs.back());
        frame.teks_ok_click();
        EXPECT_FALSE(frame.visible);
    });
    staff::opmerkings_click(tree.session, "7", false);
    EXPECT_EQ(seen.text, "Het uitstekend gevaar, ook in díe sport.");

    const shell::RichText back = shell::read_rtf(read_file(file("personeel_opmerkings.7")));
    EXPECT_EQ(back.plain_text(), "Het uitstekend gevaar, ook in díe sport. Bygevoeg.");
    ASSERT_EQ(back.paragraphs[0].runs.size(), 3u);
    EXPECT_TRUE(back.paragraphs[0].runs[1].bold);
    EXPECT_EQ(back.paragraphs[0].runs[0].family, "MS Sans Serif");
    EXPECT_EQ(back.paragraphs[0].runs[0].point_size, 8.5);
}

TEST_F(Remarks, RightClickAsksThePasswordAndOpensThePrivateText) {
    QDir().mkpath(folder());
    write_file(file("privaat_opmerkings.12"), kOldRemarks);
    write_file(file("personeel_opmerkings.12"), "Publiek");
    tree.dialogs.type(QString::fromLatin1(shell::kSystemPassword));
    play([](RemarksFrame& frame) { type_and_save(frame, "Privaat"); });
    staff::opmerkings_click(tree.session, "12", true);

    ASSERT_EQ(tree.dialogs.shown().size(), 2);
    EXPECT_EQ(tree.dialogs.shown()[0].kind, Kind::Input);
    EXPECT_EQ(seen.path, tree.session.folders.staff + "\\opmerkings\\privaat_opmerkings.12");
    EXPECT_EQ(seen.caption, "PRIVAAT OPMERKINGS - 12");
    EXPECT_EQ(seen.text, "Het uitstekend gevaar, ook in díe sport.");
    EXPECT_EQ(shell::read_rtf(read_file(file("privaat_opmerkings.12"))).plain_text(), "Privaat");
    EXPECT_EQ(read_file(file("personeel_opmerkings.12")), "Publiek");
}

TEST_F(Remarks, AWrongOrBlankPasswordOpensNothing) {
    play([](RemarksFrame&) { ADD_FAILURE() << "the frame opened"; });
    tree.dialogs.type(QStringLiteral("$EKRETARI$"));
    staff::opmerkings_click(tree.session, "12", true);
    ASSERT_EQ(tree.dialogs.shown().size(), 2);
    EXPECT_EQ(tree.dialogs.shown()[1].kind, Kind::Beep);

    tree.dialogs.clear();
    tree.dialogs.type(QString());
    staff::opmerkings_click(tree.session, "12", true);
    tree.dialogs.type(std::nullopt);
    staff::opmerkings_click(tree.session, "12", true);
    EXPECT_EQ(tree.dialogs.shown().size(), 2);  // the two input boxes, no beep
    EXPECT_FALSE(QDir(folder()).exists());
}

TEST_F(Remarks, APostNumberThatCannotBeAFileNameOpensNothing) {
    play([](RemarksFrame&) { ADD_FAILURE() << "the frame opened"; });
    for (const char* post : {"..\\..", "A/1", "", "   ", "12*", "..", "C:x", "a?b"}) {
        tree.dialogs.clear();
        staff::opmerkings_click(tree.session, QString::fromLatin1(post), true);
        ASSERT_EQ(tree.dialogs.shown().size(), 1) << post;
        EXPECT_EQ(tree.dialogs.shown()[0].kind, Kind::Message) << "no password asked: " << post;
    }
    EXPECT_FALSE(QDir(folder()).exists());

    tree.dialogs.clear();
    staff::opmerkings_click(tree.session, "A/1", false);
    EXPECT_EQ(tree.dialogs.last_text(),
              "POSNOMMER A/1 KAN NIE IN 'N LêERNAAM GEBRUIK WORD NIE ...");
    tree.session.afrikaans = false;
    staff::opmerkings_click(tree.session, " 12* ", false);
    EXPECT_EQ(tree.dialogs.last_text(), "POST NUMBER 12* CANNOT BE USED IN A FILE NAME ...");
}

TEST_F(Remarks, ExitWritesNothing) {
    QDir().mkpath(folder());
    write_file(file("personeel_opmerkings.3"), kOldRemarks);
    play([](RemarksFrame& frame) {
        frame.text = shell::RichText::from_plain_text("weggegooi");
        frame.teks_exit_click();
        EXPECT_FALSE(frame.visible);
    });
    staff::opmerkings_click(tree.session, "3", false);
    staff::opmerkings_click(tree.session, "4", false);
    EXPECT_EQ(read_file(file("personeel_opmerkings.3")), kOldRemarks);
    EXPECT_FALSE(QFile::exists(file("personeel_opmerkings.4")));
}

TEST_F(Remarks, AFailedSaveSaysSoKeepsTheOldFileAndTheFrameOpen) {
    QDir().mkpath(folder());
    const QString old_file = file("personeel_opmerkings.3");
    write_file(old_file, kOldRemarks);
    play([this](RemarksFrame& frame) {
        // The drive goes away between opening and saving.
        tree.session.fs().drives().map("C:", tree.dir.filePath("weg"));
        type_and_save(frame, "nuut");
        EXPECT_TRUE(frame.visible);
    });
    staff::opmerkings_click(tree.session, "3", false);
    EXPECT_EQ(tree.dialogs.last_text(),
              "OPMERKINGS KON NIE IN C:\\VESPARINE\\STAFF\\P2026\\opmerkings\\"
              "personeel_opmerkings.3 GESTOOR WORD NIE ... DIE VORIGE TEKS BLY BEHOU.");
    EXPECT_EQ(read_file(old_file), kOldRemarks);
}

TEST_F(Remarks, TheDateButtonGivesTodayAndThePickerTheWindowsCharacters) {
    RemarksFrame frame(tree.session, "C:\\x", "");
    EXPECT_EQ(frame.date_text(), "2026.03.10");
    const QString chars = RemarksFrame::picker_characters();
    EXPECT_TRUE(chars.startsWith(" !\"#"));
    EXPECT_TRUE(chars.contains(QChar(0x20AC)));  // byte 0x80
    EXPECT_TRUE(chars.contains(u'ë'));
    EXPECT_TRUE(chars.endsWith(u'ÿ'));
    EXPECT_FALSE(chars.contains(QChar(0x7F)));
    EXPECT_FALSE(chars.contains(QChar(0x81)));  // no character of its own
}

}  // namespace
