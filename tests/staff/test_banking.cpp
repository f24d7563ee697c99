#include <gtest/gtest.h>

#include "staff/banking.h"
#include "staff_fixture.h"

using namespace korvel;
using namespace korvel::staff;
using korvel::testing::add_person;
using korvel::testing::StaffTree;
using store::Code;
using store::PRSALG;

namespace {

class BankingTest : public ::testing::Test {
  protected:
    void SetUp() override {
        number = add_person(tree.session, {.post = "7", .surname = "DU TOIT", .names = "ANNA"});
        add_person(tree.session, {.post = "8", .surname = "NEL"});
        tree.session.read_record(Code::PRSALG, number);
    }
    QByteArray file() const {
        return korvel::testing::read_file(tree.staff_file("prs_alg_random.txt"));
    }
    store::Record on_disk() const { return korvel::testing::master_on_disk(tree, number); }
    std::unique_ptr<BankingDetails> open_form() {
        auto form = std::make_unique<BankingDetails>(tree.session);
        form->form_load();
        return form;
    }

    StaffTree tree;
    int number = 0;
};

TEST(Amounts, MasksGroupAndShowTwoDecimals) {
    EXPECT_EQ(format_amount_mask("12346", true), "12,346.00");
    EXPECT_EQ(format_amount_mask("1,234,567.891", true), "1,234,567.89");
    EXPECT_EQ(format_amount_mask("0.5", true), "0.50");
    EXPECT_EQ(format_amount_mask("0.5", false), ".50");
    EXPECT_EQ(format_amount_mask("0", false), ".00");
    EXPECT_EQ(format_amount_mask(".00", true), "0.00");
    EXPECT_EQ(format_amount_mask("-0.25", false), "-.25");
    EXPECT_EQ(format_amount_mask("R100", true), "R100");  // no number: left as typed
    EXPECT_EQ(format_amount_mask("", false), "");
}

TEST_F(BankingTest, LoadShowsLabelsListsAndAmounts) {
    store::Record& r = tree.session.working(Code::PRSALG);
    r.set_int16(PRSALG["PB_SALARIS"], 12346);
    r.set_text(PRSALG["PB_KONTRAK"], "J");
    auto form = open_form();
    EXPECT_EQ(form->caption, "7 MNR A DU TOIT");
    EXPECT_EQ(form->prs_data[10], "12,346.00");
    EXPECT_EQ(form->prs_data[12], "0.00");
    EXPECT_EQ(form->prs_data[9], "J");
    tree.session.afrikaans = false;
    form->form_load();
    EXPECT_EQ(form->ja_nee_lys[2].rows, QStringList({"YES", "NO"}));
}

TEST_F(BankingTest, FocusReformatsAmountsAndShowsTheLists) {
    auto form = open_form();
    form->prs_data[10] = "0.5";
    form->prs_data_got_focus(10);
    EXPECT_EQ(form->prs_data[10], ".50");
    form->prs_data_lost_focus(10);
    EXPECT_EQ(form->prs_data[10], "0.50");
    form->prs_data_got_focus(9);
    EXPECT_TRUE(form->ja_nee_lys[1].visible);
    EXPECT_FALSE(form->ja_nee_lys[2].visible);
    form->prs_data_got_focus(11);
    EXPECT_FALSE(form->ja_nee_lys[1].visible);
    form->ja_nee_lys_click(2, 1);
    EXPECT_EQ(form->prs_data[11], "NEE");
    EXPECT_FALSE(form->ja_nee_lys[2].visible);
    EXPECT_EQ(form->prs_data_key_press(1, 'y').key_ascii, 'Y');
}

TEST_F(BankingTest, SaveStoresFirstLettersAndWholeRands) {
    tree.session.afrikaans = false;
    auto form = open_form();
    form->prs_data[1] = "FIRST NATIONAL BANK OF SOUTH AFRICA";
    form->prs_data[9] = "YES";  // typed by hand
    form->ja_nee_lys_click(2, 1);
    form->prs_data[10] = "12,345.67";
    form->prs_data[12] = "";
    form->data_ok_click();
    EXPECT_TRUE(form->closed);
    const store::Record r = on_disk();
    EXPECT_EQ(r.text(PRSALG["PB_BNK_NM"]), "FIRST NATIONAL BANK OF SOUTH A");
    EXPECT_EQ(r.text(PRSALG["PB_KONTRAK"]), "Y");
    EXPECT_EQ(r.text(PRSALG["PB_TAX_DED"]), "N");
    EXPECT_EQ(r.int16(PRSALG["PB_SALARIS"]), 12346);
    EXPECT_EQ(r.int16(PRSALG["PB_TAX_AMT"]), 0);
    EXPECT_EQ(r, tree.session.working(Code::PRSALG));
    form->form_load();
    EXPECT_EQ(form->prs_data[10], "12,346.00");
}

TEST_F(BankingTest, AnAmountTooLargeForTheFieldSavesNothing) {
    const QByteArray before = file();
    const store::Record in_memory = tree.session.working(Code::PRSALG);
    auto form = open_form();
    form->prs_data[1] = "ABSA";
    form->prs_data[10] = "32767.4";  // still fits
    form->prs_data[12] = "40000";
    form->data_ok_click();
    EXPECT_FALSE(form->closed);
    EXPECT_EQ(tree.dialogs.last_text(),
              "BELASTING BEDRAG : BEDRAG TE GROOT - HOOGSTENS 32767 RAND. NIE GESTOOR NIE!");
    EXPECT_EQ(file(), before);
    EXPECT_EQ(tree.session.working(Code::PRSALG), in_memory);

    tree.session.afrikaans = false;
    form->form_load();
    form->prs_data[10] = "-40,000";
    form->data_ok_click();
    EXPECT_EQ(tree.dialogs.last_text(),
              "SALARY/WAGE : AMOUNT TOO SMALL - AT LEAST -32768 RAND. NOT SAVED!");
    form->prs_data[10] = "32767.5";  // rounds to 32768
    form->data_ok_click();
    EXPECT_FALSE(form->closed);
    EXPECT_EQ(file(), before);

    form->prs_data[10] = "-32768";
    form->data_ok_click();
    EXPECT_TRUE(form->closed);
    EXPECT_EQ(on_disk().int16(PRSALG["PB_SALARIS"]), -32768);
}

TEST_F(BankingTest, BrowseModeWritesNothing) {
    const QByteArray before = file();
    tree.session.browse_mode = true;
    auto form = open_form();
    form->prs_data[10] = "100";
    form->data_ok_click();
    EXPECT_TRUE(form->closed);
    EXPECT_EQ(file(), before);
}

}  // namespace
