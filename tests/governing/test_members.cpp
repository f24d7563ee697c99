// The governing body register and entry form: the fill's duplicates, members made from staff,
// the entry form's save, the compaction on closing, and remarks kept per member.

#include <gtest/gtest.h>
#include <unistd.h>

#include <QDir>

#include "governing/member_entry.h"
#include "governing/member_register.h"
#include "staff/staff_fixture.h"
#include "store/record_layouts.h"

namespace korvel::governing {
namespace {

using store::BHRLGM;
using store::Code;
using store::PRSALG;
using store::Record;
using testing::StaffTree;

struct Member {
    QString surname;
    QString names = QStringLiteral("ANNA MARIE");
    QString title = QStringLiteral("MEV");
    QString type = QStringLiteral("4");
    QString state;
};

int add_member(shell::Session& s, const Member& m) {
    s.open_file(Code::BHRLGM);
    Record& r = s.working(Code::BHRLGM);
    r.clear();
    r.set_text(BHRLGM["BL_VAN"], m.surname);
    r.set_text(BHRLGM["BL_NAME"], m.names);
    r.set_text(BHRLGM["BL_TITEL"], m.title);
    r.set_text(BHRLGM["BL_TIPE"], m.type);
    r.set_text(BHRLGM["BL_AKTIEF"], m.state);
    s.append_record(Code::BHRLGM);
    return s.state(Code::BHRLGM).current;
}

QStringList surnames_on_disk(shell::Session& s) {
    s.close_file(Code::BHRLGM);
    return testing::field_of_all(s, Code::BHRLGM, BHRLGM["BL_VAN"]);
}

TEST(MemberRegister, SamePersonFromStaffTwiceIsMarkedDeletedOnTheNextFill) {
    StaffTree t;
    t.session.fixed_today = QDate(2026, 3, 5);
    testing::add_person(t.session, {.post = QStringLiteral("12"),
                                    .surname = QStringLiteral("DU TOIT"),
                                    .names = QStringLiteral("PIETER JAN"),
                                    .id = QStringLiteral("8001015009087"),
                                    .gender = QStringLiteral("M")});
    testing::add_person(t.session, {.post = QStringLiteral("7"), .surname = QStringLiteral("AB")});
    testing::add_person(t.session,
                        {.post = QStringLiteral("12"), .surname = QStringLiteral("TWEEDE")});
    testing::add_person(t.session, {.post = QString(), .surname = QStringLiteral("GEEN")});
    MemberRegister reg(t.session);
    reg.form_load();
    for (int round = 0; round < 2; ++round) {
        reg.create_from_staff();
        // Each post number once, blank ones left out, in post number order.
        ASSERT_EQ(reg.prs_grid.rows.size(), 2u);
        EXPECT_EQ(reg.prs_grid.rows[0].cells[kPickPost], "12");
        EXPECT_EQ(reg.prs_grid.rows[0].cells[kPickSurname], "DU TOIT");
        reg.prs_grid_check(0, true);
        reg.data_ok_click();
        EXPECT_FALSE(reg.prs_grid_enabled);
        reg.data_ok_click();  // a disabled grid adds nothing
    }
    EXPECT_EQ(t.session.count(Code::BHRLGM), 2);
    ASSERT_EQ(reg.sgb_grid.rows.size(), 1u);
    const GridRow& row = reg.sgb_grid.rows[0];
    EXPECT_EQ(row.cells[kColType], "2");
    EXPECT_EQ(row.cells[kColInitials], "P J");
    EXPECT_EQ(row.cells[kColGender], "M");

    t.session.read_record(Code::BHRLGM, 2);
    EXPECT_EQ(t.session.working(Code::BHRLGM).text(BHRLGM["BL_AKTIEF"]).trimmed(), "D");
    t.session.read_record(Code::BHRLGM, 1);
    const Record& m = t.session.working(Code::BHRLGM);
    EXPECT_EQ(m.text(BHRLGM["BL_HOEDANIG"]), "5");
    EXPECT_EQ(m.text(BHRLGM["BL_ONDERRIG"]), "3");
    EXPECT_EQ(m.text(BHRLGM["BL_POS_NR"]).trimmed(), "12");
    EXPECT_EQ(m.byte(BHRLGM["BL_SA_BURGER"]), 1);
    EXPECT_EQ(m.date(BHRLGM["BL_DTM_VERKIES"]), QDate(2026, 3, 5));
    // The birth date comes from the 13-digit ID number at the fill.
    EXPECT_EQ(m.date(BHRLGM["BL_G_DATUM"]), QDate(1980, 1, 1));
}

TEST(MemberRegister, ClosingDropsEachKindOfDeadRecord) {
    StaffTree t;
    add_member(t.session, {.surname = QStringLiteral("KEEP")});
    add_member(t.session, {.surname = QString(), .names = QString(), .title = QString()});
    add_member(t.session, {.surname = QStringLiteral("NOTYPE"), .type = QString()});
    add_member(t.session, {.surname = QStringLiteral("NULTYPE"), .type = QString(QChar(0))});
    add_member(t.session, {.surname = QStringLiteral("GONE"), .state = QStringLiteral("D")});
    add_member(t.session, {.surname = QStringLiteral("KEEP")});  // the same key again
    add_member(t.session, {.surname = QStringLiteral("RESTING"), .state = QStringLiteral("*")});
    ASSERT_EQ(close_members(t.session), store::Compaction::Done);
    EXPECT_EQ(surnames_on_disk(t.session), QStringList({"KEEP", "RESTING"}));
    const QStringList left =
        QDir(t.session.fs().native(t.session.folders.staff)).entryList({QStringLiteral("*.new")});
    EXPECT_TRUE(left.isEmpty());
}

TEST(MemberRegister, ClosingKilledAtAnyStepLeavesAWholeFile) {
    for (const int step : {1, 4, 5}) {
        StaffTree t;
        add_member(t.session, {.surname = QStringLiteral("KEEP")});
        add_member(t.session, {.surname = QStringLiteral("GONE"), .state = QStringLiteral("D")});
        EXPECT_EXIT(
            {
                t.session.compaction_step_done = [step](int done) {
                    if (done == step) {
                        ::_exit(7);
                    }
                };
                close_members(t.session);
                ::_exit(0);
            },
            ::testing::ExitedWithCode(7), "");
        const QStringList after = surnames_on_disk(t.session);
        EXPECT_TRUE(after == QStringList({"KEEP", "GONE"}) || after == QStringList({"KEEP"}))
            << "step " << step;
        // The next close clears what the killed one left.
        ASSERT_EQ(close_members(t.session), store::Compaction::Done);
        EXPECT_EQ(surnames_on_disk(t.session), QStringList({"KEEP"}));
        EXPECT_TRUE(QDir(t.session.fs().native(t.session.folders.staff))
                        .entryList({QStringLiteral("*.new")})
                        .isEmpty());
    }
}

TEST(MemberEntry, StopsAtTheFirstMissingChoiceThenAtRedLabels) {
    StaffTree t;
    t.session.afrikaans = false;
    const int number = new_member_record(t.session);
    MemberEntry e(t.session, true);
    e.select_member(number, nullptr);
    e.form_activate();
    const char* kStops[] = {"TYPE OF MEMBER MUST BE SELECTED!!",
                            "MEMBER'S LEVEL OF EDUCATION MUST BE SELECTED!!",
                            "MEMBER'S CAPACTITY ON SGB MUST BE SELECTED!!"};
    for (int i = 0; i < 3; ++i) {
        t.dialogs.clear();
        e.data_ok_click();
        EXPECT_EQ(t.dialogs.last_text(), kStops[i]);
        e.choice_click(static_cast<MemberChoice>(i), 1);
    }
    // The red labels go by label number: 8 and 10 (ID number, birth date) when both boxes are
    // blank, 11 (marital status) when box 8 is; the labels of the names (4 to 6) never.
    const struct {
        const char* id;
        std::vector<int> red;
    } kCases[] = {
        {"", {8, 10, 11}},
        {"8001015009087", {11}},
    };
    for (const auto& c : kCases) {
        e.data_teks_colour.fill(0);
        e.prs_data[5] = QString::fromLatin1(c.id);
        t.dialogs.clear();
        e.data_ok_click();
        EXPECT_EQ(t.dialogs.last_text(), "COMPULSARY FIELDS IMCOMPLETE - SEE RED TEXT...");
        for (int label = 0; label < kMemberLabels; ++label) {
            const bool red = std::find(c.red.begin(), c.red.end(), label) != c.red.end();
            EXPECT_EQ(e.data_teks_colour[static_cast<std::size_t>(label)] == staff::kColourRed, red)
                << "ID '" << c.id << "', label " << label;
        }
        EXPECT_FALSE(e.closed);
    }
}

TEST(MemberEntry, SavesGenderAsMOrFInAfrikaansAndKeepsReservedBytes) {
    StaffTree t;
    t.session.afrikaans = true;
    t.session.fixed_today = QDate(2026, 3, 5);
    t.session.user_name = QStringLiteral("sekretaris");
    const int number = new_member_record(t.session);
    Record& r = t.session.working(Code::BHRLGM);
    r.set_text(BHRLGM["BL_RES_357"], QStringLiteral("ANDER PROGRAM"));
    t.session.write_record(Code::BHRLGM, number);

    MemberEntry e(t.session, true);
    e.select_member(number, nullptr);
    e.form_activate();
    e.prs_data[1] = QStringLiteral("NEL");
    e.prs_data[2] = QStringLiteral("SUSANNA MARIA");
    e.prs_data[5] = QStringLiteral("8506150123088");
    e.prs_data[17] = QStringLiteral("082");
    e.prs_data[18] = QStringLiteral("5551234");
    e.prs_data_got_focus(8);
    e.list_click(EntryList::hs_lys, 0);
    e.prs_data_got_focus(11);
    e.list_click(EntryList::taal_lys, 1);
    e.bl_geslag = {false, true};
    for (int i = 0; i < 3; ++i) {
        e.choice_click(static_cast<MemberChoice>(i), 3 - i);
    }
    e.data_ok_click();
    ASSERT_TRUE(e.closed) << t.dialogs.last_text().toStdString();

    t.session.read_record(Code::BHRLGM, number);
    const Record& m = t.session.working(Code::BHRLGM);
    EXPECT_EQ(m.text(BHRLGM["BL_GESLAG"]), "F");
    EXPECT_EQ(m.text(BHRLGM["BL_TIPE"]), "4");
    EXPECT_EQ(m.text(BHRLGM["BL_ONDERRIG"]), "3");
    EXPECT_EQ(m.text(BHRLGM["BL_HOEDANIG"]), "2");
    EXPECT_EQ(m.text(BHRLGM["BL_HWLK_ST"]).trimmed(), "G GETROUD");
    EXPECT_EQ(m.text(BHRLGM["BL_TAAL2"]).trimmed(), "2 ENGELS");
    EXPECT_EQ(m.text(BHRLGM["BL_SEL"]).trimmed(), "0825551234");
    EXPECT_EQ(m.text(BHRLGM["BL_VRLTR"]).trimmed(), "S M");
    EXPECT_EQ(m.date(BHRLGM["BL_G_DATUM"]), QDate(1985, 6, 15));
    EXPECT_EQ(m.date(BHRLGM["BL_DTM_WYSIG"]), QDate(2026, 3, 5));
    EXPECT_EQ(m.text(BHRLGM["BL_GEBRUIKER"]).trimmed(), "sekretaris");
    EXPECT_EQ(m.text(BHRLGM["BL_RES_357"]).trimmed(), "ANDER PROGRAM");
}

TEST(MemberPhone, SplitsAfterTheThirdCharacterUnlikeTheAddressForm) {
    const MemberPhone p = split_member_phone(QStringLiteral("(021) 555 1234"));
    EXPECT_EQ(p.code, "021");
    EXPECT_EQ(p.number, "5551234");
    const MemberPhone bare = split_member_phone(QStringLiteral("0825551234"));
    EXPECT_EQ(bare.code, "082");
    EXPECT_EQ(bare.number, "5551234");
}

TEST(MemberRemarks, TwoParentsAndAStaffMemberNeverShareAFile) {
    const MemberRemarks a = member_remarks_names(QStringLiteral("O'NEIL ANNA MEV"));
    const MemberRemarks b = member_remarks_names(QStringLiteral("O NEIL ANNA MEV"));
    const MemberRemarks c = member_remarks_names(QStringLiteral("..\\..\\X / Y"));
    EXPECT_NE(a.public_name, b.public_name);
    EXPECT_NE(a.private_name, b.private_name);
    for (const QString& name : {a.public_name, a.private_name, c.public_name, c.private_name}) {
        EXPECT_FALSE(name.startsWith(QStringLiteral("personeel_opmerkings.")));
        EXPECT_FALSE(name.startsWith(QStringLiteral("privaat_opmerkings.")));
        EXPECT_FALSE(name.contains(u'\\') || name.contains(u'/') ||
                     name.contains(QStringLiteral("..")))
            << name.toStdString();
    }
}

}  // namespace
}  // namespace korvel::governing
