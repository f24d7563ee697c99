#include <gtest/gtest.h>

#include "ui/scripted_dialogs.h"

using namespace korvel::ui;

TEST(ScriptedDialogs, AnswersInOrderThenTheDefault) {
    ScriptedDialogs script;
    script.answer(Answer::Yes);
    script.type(QString("abc"));
    script.type(std::nullopt);
    Dialogs& d = script;
    EXPECT_EQ(d.ask("one ?", Buttons::YesNo, Icon::Question, Answer::No), Answer::Yes);
    EXPECT_EQ(d.ask("two ?", Buttons::YesNo, Icon::Question, Answer::No), Answer::No);
    EXPECT_EQ(d.input("name", "T"), QString("abc"));
    EXPECT_EQ(d.input("name", "T"), std::nullopt);
    EXPECT_EQ(d.input("name", "T"), std::nullopt);
    d.message("done", Icon::Critical);
    EXPECT_EQ(script.texts(), QStringList({"one ?", "two ?", "done"}));
    EXPECT_EQ(script.shown().last().icon, Icon::Critical);
}

TEST(ScriptedDialogs, ChildFormsArePlayedByTheTest) {
    struct Entry : ChildForm {
        QString form_name() const override { return "sk411_inlees"; }
        bool saved = false;
    } entry;
    ScriptedDialogs script;
    script.on_form("sk411_inlees", [](ChildForm& f) { static_cast<Entry&>(f).saved = true; });
    Dialogs& d = script;
    d.show_modal(entry);
    EXPECT_TRUE(entry.saved);
    EXPECT_EQ(script.forms_shown(), QStringList({"sk411_inlees"}));
    EXPECT_EQ(d.choose_font({}), std::nullopt);
}

TEST(TerminalProgress, RewritesOneLineAsThePercentMovesAndEndsIt) {
    std::FILE* out = std::tmpfile();
    {
        TerminalProgress bar(out, "Loading", 200, 0);
        for (int done = 0; done <= 200; ++done) {
            bar.step(done);
        }
    }
    std::rewind(out);
    char buffer[4096] = {};
    const std::size_t n = std::fread(buffer, 1, sizeof buffer - 1, out);
    std::fclose(out);
    const QString text = QString::fromUtf8(buffer, static_cast<qsizetype>(n));
    EXPECT_EQ(text.count('\r'), 101);  // 0% to 100%, each once
    EXPECT_TRUE(text.endsWith("\rLoading  100%\n"));
}

TEST(TerminalProgress, AJobWithoutALengthCountsItsStepsOnOneLine) {
    std::FILE* out = std::tmpfile();
    {
        TerminalProgress bar(out, "2026 STAFF LIST\nPDF", 0, 0);
        for (int page : {1, 2, 2}) {
            bar.step(page);
        }
    }
    std::rewind(out);
    char buffer[256] = {};
    const std::size_t n = std::fread(buffer, 1, sizeof buffer - 1, out);
    std::fclose(out);
    EXPECT_EQ(QString::fromUtf8(buffer, static_cast<qsizetype>(n)),
              "\r2026 STAFF LIST PDF  1\r2026 STAFF LIST PDF  2\n");
}

TEST(TerminalProgress, AShortJobPrintsNothing) {
    std::FILE* out = std::tmpfile();
    {
        TerminalProgress bar(out, "Loading", 10, 60000);
        bar.step(5);
    }
    EXPECT_EQ(std::ftell(out), 0);
    std::fclose(out);
}
