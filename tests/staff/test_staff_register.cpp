#include <gtest/gtest.h>

#include <QFile>

#include "staff/staff_entry.h"
#include "staff/staff_register.h"
#include "staff_fixture.h"
#include "store/locks.h"

using namespace korvel::store;
using namespace korvel::staff;
using korvel::testing::add_person;
using korvel::testing::field_of_all;
using korvel::testing::StaffTree;

namespace {

class Register : public ::testing::Test {
  protected:
    void SetUp() override {
        // Three educators, two employees; one inactive, one deleted, one with a title only, one
        // with nothing but a post number.
        add_person(tree.session,
                   {.post = "10", .surname = "VAN WYK", .names = "PIETER", .id = "8001015009087"});
        add_person(tree.session,
                   {.post = "11", .surname = "ÉTIENNE", .names = "RENÉ", .state = "*"});
        add_person(tree.session,
                   {.post = "A1", .surname = "MOKOENA", .names = "THABO", .klas = "PSS"});
        add_person(tree.session, {.post = "12", .surname = "", .names = "", .title = "DR"});
        add_person(tree.session, {.post = "13", .surname = "", .names = "", .title = ""});
        add_person(tree.session,
                   {.post = "A2", .surname = "ADAMS", .names = "ZELDA", .klas = "ADMIN"});
        add_person(tree.session, {.post = "14", .surname = "BOTHA", .state = "D"});
    }
    std::unique_ptr<StaffRegister> open_register(bool educators = true) {
        auto reg = std::make_unique<StaffRegister>(tree.session, educators);
        reg->user = "ANNA";
        reg->form_load();
        return reg;
    }
    static QStringList column(const StaffRegister& reg, int c) {
        QStringList out;
        for (const GridRow& row : reg.prs_grid.rows) {
            out << row.cells[static_cast<std::size_t>(c)];
        }
        return out;
    }
    StaffTree tree;
};

TEST_F(Register, ShowsEachPopulationAndTheBrowseProgramEverybody) {
    auto reg = open_register(true);
    EXPECT_EQ(column(*reg, kColPost), QStringList({"12", "11", "10"}));
    EXPECT_EQ(column(*reg, kColNumber), QStringList({"004", "002", "001"}));
    EXPECT_EQ(reg->staff_ops_caption, "ONDERWYSERS");
    EXPECT_EQ(reg->personeel_tipe_caption, "KLIK HIER VIR WERKNEMERS");
    for (const GridRow& row : reg->prs_grid.rows) {  // the inactive row: sub-items 1 to 4 red
        for (int c = 0; c < kGridColumns; ++c) {
            EXPECT_EQ(row.red[c], row.cells[kColPost] == "11" && c >= 1 && c <= 4);
        }
    }
    tree.session.afrikaans = false;
    reg->personeel_tipe_click();
    EXPECT_EQ(column(*reg, kColSurname), QStringList({"ADAMS", "MOKOENA"}));
    EXPECT_EQ(reg->staff_ops_caption, "EMPLOYEES");
    EXPECT_EQ(reg->personeel_tipe_caption, "CLICK HERE FOR EDUCATORS");
    EXPECT_EQ(reg->prs_grid.columns[kColLurits].heading, "LURITS NO");

    tree.session.executable_name = "PENDARIC";
    EXPECT_EQ(open_register(false)->prs_grid.rows.size(), 5u);
}

TEST_F(Register, HeaderClicksToggleTheOrderStartingOnSurname) {
    auto reg = open_register();
    reg->prs_grid_column_click(kColSurname);
    EXPECT_EQ(column(*reg, kColSurname), QStringList({"VAN WYK", "ÉTIENNE", ""}));
    reg->prs_grid_column_click(kColPost);
    EXPECT_EQ(column(*reg, kColPost), QStringList({"10", "11", "12"}));
    reg->prs_grid_column_click(kColPost);
    EXPECT_EQ(column(*reg, kColPost), QStringList({"12", "11", "10"}));
    reg->fill_grid();  // a fill starts on surname again
    EXPECT_EQ(reg->prs_grid.sort_column, kColSurname);
    EXPECT_TRUE(reg->prs_grid.ascending);
}

TEST_F(Register, SearchFindsPartOfSurnameOrNamesAndRemembersTheText) {
    auto reg = open_register();
    tree.dialogs.type(QStringLiteral("rené"));
    reg->task_options_click(4);
    EXPECT_EQ(reg->prs_grid.selected, 1);
    EXPECT_EQ(tree.dialogs.last_text(), "SOEK : VAN/NAME (of GEDEELTE)");
    tree.dialogs.type(QStringLiteral("wyk"));
    reg->search_grid();
    EXPECT_EQ(tree.dialogs.offered, "rené");
    EXPECT_EQ(reg->prs_grid.selected, 2);
    reg->search_grid();  // Cancel, a blank answer, no match: the selection stays
    tree.dialogs.type(QStringLiteral("   "));
    reg->search_grid();
    tree.dialogs.type(QStringLiteral("NOBODY"));
    reg->search_grid();
    EXPECT_EQ(reg->prs_grid.selected, 2);
}

TEST_F(Register, SelectingARowLocksItWhileTheEntryFormIsOpen) {
    auto reg = open_register();
    tree.session.afrikaans = false;
    int opened = 0;
    tree.dialogs.on_form("sk411_inlees", [&](korvel::ui::ChildForm&) {
        ++opened;
        EXPECT_EQ(tree.session.working(Code::PRSALG).text(PRSALG["PA_VAN"]), "VAN WYK");
        EXPECT_EQ(tree.session.working(Code::PRSADD).text(PRSADD["PD_POS_NR"]), "10");
        QString id = "8001015009087";
        EXPECT_FALSE(lock_record(tree.session, "STAFF", id, "BEN"));
    });
    reg->prs_grid_click(2);
    EXPECT_EQ(opened, 1);
    EXPECT_EQ(reg->selected_post, "10");
    QString id = "8001015009087";
    EXPECT_TRUE(lock_record(tree.session, "STAFF", id, "BEN"));  // released

    reg->prs_grid.selected = 2;  // now BEN holds it, and Enter opens nothing
    reg->prs_grid_key_down(kEnterKey);
    EXPECT_EQ(opened, 1);
    EXPECT_TRUE(tree.dialogs.last_text().contains("     USER\tBEN\n"));
}

TEST_F(Register, NewRecordIsEnteredUnderTheFlagAndRefusedInBrowseMode) {
    auto reg = open_register();
    const int staff = tree.session.count(Code::PRSALG);
    const int add = tree.session.count(Code::PRSADD);
    bool flag_seen = false;
    tree.dialogs.on_form("sk411_inlees", [&](korvel::ui::ChildForm& form) {
        flag_seen = reg->new_record && static_cast<StaffEntry&>(form).is_new();
    });
    reg->task_options_click(1);
    EXPECT_TRUE(flag_seen);
    EXPECT_FALSE(reg->new_record);
    EXPECT_EQ(tree.session.count(Code::PRSALG), staff + 1);
    EXPECT_EQ(tree.session.count(Code::PRSADD), add + 1);
    EXPECT_EQ(field_of_all(tree.session, Code::PRSALG, PRSALG["PA_POS_NR"]).last(), "991");

    tree.session.browse_mode = true;
    auto browse = open_register();
    int prints = 0;
    browse->show_print_chooser = [&] { ++prints; };
    browse->task_options_click(5);
    browse->task_options_click(1);
    EXPECT_EQ(tree.dialogs.last_text(), "NIE BESKIKBAAR IN KYKPROGRAM NIE ...");
    EXPECT_EQ(prints, 0);
    EXPECT_EQ(tree.session.count(Code::PRSALG), staff + 1);
}

TEST_F(Register, NoMasterFileSaysSo) {
    tree.session.folders.staff = "C:\\VESPARINE\\STAFF\\P2027";
    auto reg = open_register();
    EXPECT_TRUE(reg->closed);
    EXPECT_EQ(tree.dialogs.last_text(), "GEEN PERSONEELBESONDERHEDE - SIEN KORVEL");
    EXPECT_FALSE(QFile::exists(tree.staff_file("prs_alg_random.txt")));
}

TEST_F(Register, TheLuritsColumnTakesTheFirstRecordOfAnIdFromAnOddFile) {
    QByteArray lurits = QByteArray(26, '\0');  // a NUL record matches nobody, not a blank ID
    for (const char* number : {"111111111", "222222222"}) {
        QByteArray rec = QByteArray("8001015009087") + number;
        lurits += rec + QByteArray(4, '\0');
    }
    lurits += "8001015";  // a partial record too short to count
    korvel::testing::write_file(tree.staff_file("lurits_random.txt"), lurits);
    auto reg = open_register();
    EXPECT_EQ(column(*reg, kColLurits), QStringList({"", "", "111111111"}));
    EXPECT_EQ(korvel::testing::read_file(tree.staff_file("lurits_random.txt")), lurits);
}

TEST_F(Register, SharedFillFiltersByStateWithoutRepairing) {
    add_person(tree.session, {.post = "", .surname = "NO POST"});
    add_person(tree.session, {.post = "015", .surname = "ZERO"});
    RegisterGrid grid;
    HiddenList posts, names;
    const std::pair<const char*, std::size_t> filters[] = {{"*", 7}, {"", 7}, {"A", 6}, {"?", 1}};
    for (const auto& [filter, rows] : filters) {
        fill_staff_lists(tree.session, grid, posts, names, filter);
        EXPECT_EQ(grid.rows.size(), rows) << filter;
    }
    EXPECT_EQ(grid.rows[0].cells[kColPost], "11");
    EXPECT_TRUE(grid.rows[0].red[kColState]);
    EXPECT_FALSE(grid.rows[0].red[kColSurname]);
    EXPECT_EQ(names.item_data("MNR RENÉ ÉTIENNE"), 2);
    fill_staff_lists(tree.session, grid, posts, names);
    EXPECT_TRUE(posts.contains("015"));
    EXPECT_TRUE(names.contains("DR"));
}

}  // namespace
