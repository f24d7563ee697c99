#include <gtest/gtest.h>

#include "staff/register_upkeep.h"
#include "staff/staff_register.h"
#include "staff_fixture.h"

using namespace korvel::store;
using namespace korvel::staff;
using korvel::testing::add_person;
using korvel::testing::field_of_all;
using korvel::testing::StaffTree;

namespace {

class Upkeep : public ::testing::Test {
  protected:
    std::unique_ptr<StaffRegister> open_register(bool educators = true) {
        auto reg = std::make_unique<StaffRegister>(tree.session, educators);
        reg->form_load();
        return reg;
    }
    QStringList column(Code code, const Field& f) { return field_of_all(tree.session, code, f); }
    QStringList posts() { return column(Code::PRSALG, PRSALG["PA_POS_NR"]); }
    QStringList subjects() { return column(Code::PRSVAK, PRSVAK["PV_POS_NR"]); }
    StaffTree tree;
};

TEST_F(Upkeep, PostNumbersAreRepairedAndSpareNumbersGiven) {
    add_person(tree.session, {.post = ""});
    add_person(tree.session, {.post = "", .surname = "", .names = "", .title = ""});
    add_person(tree.session, {.post = "12", .klas = "PSS"});
    add_person(tree.session, {.post = "0012", .klas = "ADMIN"});
    add_person(tree.session, {.post = "12345", .klas = "PS"});
    add_person(tree.session, {.post = "0124", .klas = "PSX"});  // an educator loses the zero only
    add_person(tree.session, {.post = "123", .surname = "ALPHA"});
    add_person(tree.session, {.post = "123", .surname = "BRAVO"});            // the index blanks it
    add_person(tree.session, {.post = "123", .surname = "C", .state = "*"});  // not in the index
    open_register();
    EXPECT_EQ(posts(),
              QStringList({"991", "992", "A12", "A012", "A1234", "124", "123", "993", "123*"}));
    EXPECT_EQ(subjects(),
              QStringList({"991", "A12", "A012", "A1234", "124", "123", "993", "123*"}));
}

TEST_F(Upkeep, ThirdHolderIsDeletedAndTheCloseKeepsTheStarredSecond) {
    add_person(tree.session, {.post = "1", .surname = "ZULU"});
    auto reg = open_register();
    // Numbers that clash after the register was opened meet the repair at the next fill.
    for (const char* name : {"ALPHA", "BRAVO", "CHARLIE"}) {
        add_person(tree.session, {.post = "123", .surname = name});
    }
    for (const char* name : {"DELTA", "ECHO", "FOXTROT"}) {
        add_person(tree.session, {.post = "12345", .surname = name});
    }
    reg->fill_grid();
    EXPECT_EQ(posts(), QStringList({"1", "123", "123*", "123", "12345", "12345", "12345"}));
    EXPECT_EQ(column(Code::PRSALG, PRSALG["PA_AKTIEF"]),
              QStringList({"", "", "", "D", "", "", "D"}));
    QStringList shown;
    for (const GridRow& row : reg->prs_grid.rows) {
        shown << row.cells[kColNumber] + "/" + row.cells[kColPost];
    }
    EXPECT_EQ(shown, QStringList({"002/123", "003/123*", "005/12345", "006/12345", "001/1"}));
    EXPECT_EQ(subjects(), QStringList({"1", "123", "123*", "12345"}));

    reg->staff_exit_click();  // the five-character twin collides at close and goes
    EXPECT_EQ(posts(), QStringList({"1", "123", "123*", "12345"}));
    auto again = open_register();
    EXPECT_EQ(again->prs_grid.rows[2].cells[kColNumber], "004");  // DELTA was 005
    EXPECT_EQ(posts(), QStringList({"1", "123", "123*", "12345"}));
}

TEST_F(Upkeep, PrepareListsGivesEveryPostAnAddressRecordWithItsLevel) {
    Record& r = tree.session.working(Code::PRSALG);
    tree.session.open_file(Code::PRSALG);
    const char* years[] = {"PO_JRE_HF", "PO_JRE_A_H", "PO_JRE_SAH", "PO_JRE_DPT", nullptr};
    for (int i = 0; i < 5; ++i) {
        r.clear();
        r.set_text(PRSALG["PA_POS_NR"], QString::number(i + 1));
        r.set_text(PRSALG["PA_VAN"], "MÖLLER");
        r.set_text(PRSALG["PA_NAME"], " ANNA MARIE");
        r.set_text(PRSALG["PA_ID_NR"], QString::number(800101500900 + i));
        if (years[i] != nullptr) {
            r.set_int16(*PRSALG.find(years[i]), 2);
        }
        tree.session.append_record(Code::PRSALG);
    }
    tree.session.open_file(Code::PRSADD);
    Record& a = tree.session.working(Code::PRSADD);
    a.clear();
    tree.session.append_record(Code::PRSADD);  // a blank key is not listed
    a.set_text(PRSADD["PD_POS_NR"], "5");
    tree.session.append_record(Code::PRSADD);

    RegisterUpkeep upkeep(tree.session);
    upkeep.prepare_lists();
    EXPECT_EQ(column(Code::PRSADD, PRSADD["PD_POS_NR"]),
              QStringList({"", "5", "1", "2", "3", "4"}));
    QStringList levels;
    tree.session.scan_records(Code::PRSADD, [&](int, Record& add) {
        levels << QString::number(add.int16(PRSADD["PD_POSVLAK"])) +
                      add.text(PRSADD["PD_NOEMNAAM"]);
    });
    EXPECT_EQ(levels, QStringList({"0", "0", "4ANNA", "3ANNA", "3ANNA", "2ANNA"}));
    EXPECT_EQ(upkeep.prs_add_lys.item_data("4"), 6);
    ASSERT_EQ(upkeep.lurits_checklys.size(), 1u);  // one key, accents folded, the first ID
    EXPECT_EQ(upkeep.lurits_checklys.begin()->first, "MOLLER:ANNA MARIE");
    EXPECT_EQ(upkeep.lurits_checklys.begin()->second, "800101500900");
    EXPECT_EQ(tree.session.staff_index.size(), 5);
}

TEST_F(Upkeep, StaleDatesAreClearedFromRowOneOnward) {
    tree.session.open_file(Code::PRSALG);
    Record& r = tree.session.working(Code::PRSALG);
    r.clear();
    r.set_text(PRSALG["PA_VAN"], "SMIT");
    for (int row = 0; row < 3; ++row) {
        r.set_date_serial(PRSALG["PA_DTM"], 45000 + row, row);
        r.set_date_serial(PRSALG["PO_TOT"], 44500 + row, row);
    }
    r.set_text(PRSALG["PA_TPA"], "T", 2);
    r.set_text(PRSALG["PO_SKL"], "HOËRSKOOL", 2);
    tree.session.append_record(Code::PRSALG);
    open_register();
    tree.session.read_record(Code::PRSALG, 1);
    for (int row = 0; row < 3; ++row) {
        EXPECT_EQ(r.date_serial(PRSALG["PA_DTM"], row), row == 1 ? 0 : 45000 + row);
        EXPECT_EQ(r.date_serial(PRSALG["PO_TOT"], row), row == 1 ? 0 : 44500 + row);
    }
}

TEST_F(Upkeep, CemisNumbersAreWrittenInTheWesternCapeOnly) {
    add_person(tree.session, {.post = "1", .names = "JAN", .id = "8001015009087", .gender = "M"});
    add_person(tree.session,
               {.post = "2", .surname = "NEL", .names = "ELSA", .id = "9002020123456"});
    add_person(tree.session, {.post = "3", .id = "7003035009087"});
    add_person(tree.session, {.post = "4", .id = ""});
    tree.session.open_file(Code::PRSADD);
    Record& a = tree.session.working(Code::PRSADD);
    a.clear();
    a.set_text(PRSADD["PD_POS_NR"], "3");
    a.set_text(PRSADD["PD_CEMIS"], "123");
    tree.session.append_record(Code::PRSADD);
    const QStringList untouched = {"123", "", "", ""};
    for (const char* province : {"GP", "WC"}) {
        Record& school = tree.session.working(Code::SKL);
        school.clear();
        school.set_text(SKL["SD_PROV"], province);
        tree.session.open_file(Code::SKL, tree.session.folders.school);
        tree.session.write_record(Code::SKL, 1);
        open_register();
        EXPECT_EQ(column(Code::PRSADD, PRSADD["PD_CEMIS"]),
                  province == QStringLiteral("GP")
                      ? untouched
                      : QStringList({"123000000000", "E800101JS1000", "E900202EN2000", ""}));
    }
    Record staff(PRSALG);
    staff.set_text(PRSALG["PA_NAME"], "JAN");
    staff.set_text(PRSALG["PA_VAN"], "SMIT");
    staff.set_text(PRSALG["PA_ID_NR"], "8001015009087");
    EXPECT_EQ(complete_cemis("", "8001015009087", staff), "800101JS2000 ");
    EXPECT_EQ(complete_cemis("12", " ", staff), "12");
    EXPECT_EQ(complete_cemis("1234567890123", "8001015009087", staff), "1234567890123");
}

TEST_F(Upkeep, NulRecordsAndAPartialLastRecordAreTakenAsTheyCome) {
    add_person(tree.session, {.post = "1", .surname = "ÉTIENNE"});
    tree.session.close_file(Code::PRSALG);
    QByteArray partial(2100, ' ');  // more than half a record counts as one
    partial.replace(0, 3, "  7").replace(6, 5, "NAUDE");
    korvel::testing::write_file(tree.staff_file("prs_alg_random.txt"),
                                korvel::testing::read_file(tree.staff_file("prs_alg_random.txt")) +
                                    QByteArray(4103, '\0') + partial);
    auto reg = open_register();
    EXPECT_EQ(posts(), QStringList({"1", "991", "7"}));
    ASSERT_EQ(reg->prs_grid.rows.size(), 2u);
    EXPECT_EQ(reg->prs_grid.rows[0].cells[kColSurname], "ÉTIENNE");  // É sorts with the E's
    EXPECT_EQ(korvel::testing::read_file(tree.staff_file("prs_alg_random.txt")).size(), 3 * 4103);
}

}  // namespace
