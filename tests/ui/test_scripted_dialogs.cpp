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
