#include <gtest/gtest.h>

#include "staff/address_family.h"
#include "staff_fixture.h"

using namespace korvel;
using namespace korvel::staff;
using korvel::testing::add_person;
using korvel::testing::StaffTree;
using store::Code;
using store::PRSALG;

namespace {

class AddressFamilyTest : public ::testing::Test {
  protected:
    void SetUp() override {
        add_person(tree.session, {.post = "6", .surname = "BOTHA"});
        number =
            add_person(tree.session,
                       {.post = "7", .surname = "DU TOIT", .names = "ANNA MARIE", .title = "MEV"});
    }
    // Sets fields of the person in memory and on disk, as the entry form leaves them.
    template <typename Edit>
    void store_person(Edit edit) {
        edit(tree.session.working(Code::PRSALG));
        tree.session.write_record(Code::PRSALG, number);
    }
    QByteArray file() const {
        return korvel::testing::read_file(tree.staff_file("prs_alg_random.txt"));
    }
    // The person's record as it stands on disk.
    store::Record on_disk(int record) const {
        return korvel::testing::master_on_disk(tree, record);
    }
    std::unique_ptr<AddressFamily> open_form() {
        auto form = std::make_unique<AddressFamily>(tree.session);
        form->form_load();
        return form;
    }

    StaffTree tree;
    int number = 0;
};

TEST(Phones, SplitAndJoin) {
    const auto split = [](const char* text) {
        const auto parts = split_phone(QString::fromLatin1(text));
        return parts.code + u'|' + parts.number;
    };
    EXPECT_EQ(split("(021)5551234"), "021|5551234");
    EXPECT_EQ(split("021) 555"), "021| 555");  // a missing "(" does not matter
    EXPECT_EQ(split("0215551234"), "|0215551234");
    EXPECT_EQ(split("(021)"), "021|");
    EXPECT_EQ(join_phone(" 021 ", " 555 1234 "), "(021)555 1234");
    EXPECT_EQ(join_phone("  ", " 555 "), " 555 ");  // a blank code leaves the number alone
}

TEST_F(AddressFamilyTest, LoadShowsTrimmedFieldsSplitPhonesAndDotDates) {
    store_person([](store::Record& r) {
        r.set_text(PRSALG["PA_P_ADR1"], "  POSBUS 12");
        r.set_text(PRSALG["PA_T_HUIS"], "(021)5551234");
        r.set_text(PRSALG["PA_T_SEL"], "0821234567");
        r.set_text(PRSALG["PM_F_KNR"], "(012) 34");
        r.set_text(PRSALG["PL_KIND"], "PIET", 1);
        r.set_date(PRSALG["PL_GDTM"], QDate(2010, 5, 4), 1);
        r.set_text(PRSALG["PL_KIND"], "SARA", 2);
    });
    auto form = open_form();
    EXPECT_EQ(form->caption, "7 MEV A M DU TOIT");
    // Address, home phone split in two, a cell number without a code, the father's work
    // number, the first child with its date and the second's empty date.
    QStringList boxes;
    for (const int box : {1, 16, 9, 17, 11, 34, 35, 36, 37, 39}) {
        boxes << form->prs_data[box];
    }
    EXPECT_EQ(boxes.join(u'|'), "POSBUS 12|021|5551234||0821234567|012| 34|PIET|2010.05.04|");
}

TEST_F(AddressFamilyTest, TypingCapitalsExceptEmailAndEnterMovesOn) {
    auto form = open_form();
    EXPECT_EQ(form->prs_data_key_press(1, 'a').key_ascii, 'A');
    EXPECT_EQ(form->prs_data_key_press(14, 'z').key_ascii, 'Z');
    EXPECT_EQ(form->prs_data_key_press(1, 0xEB).key_ascii, 0xEB);  // ë stays small
    EXPECT_EQ(form->prs_data_key_press(46, 'j').key_ascii, 'j');
    EXPECT_EQ(form->prs_data_key_press(47, 'j').key_ascii, 'j');
    const TypedKey enter = form->prs_data_key_press(5, 13);
    EXPECT_EQ(enter.key_ascii, 0);
    EXPECT_TRUE(enter.next_box);
    form->screen_next_click();
    EXPECT_FALSE(form->data_raam[0]);
    EXPECT_TRUE(form->data_raam[1]);
    form->screen_prev_click();
    EXPECT_TRUE(form->data_raam[0]);
}

TEST_F(AddressFamilyTest, SaveJoinsPhonesCutsToWidthAndWritesOnlyThisRecord) {
    store_person([](store::Record& r) { r.set_text(PRSALG["PA_T_HUIS"], "(021)5551234"); });
    const QByteArray first = file().left(PRSALG.record_length);
    auto form = open_form();
    form->prs_data[17] = "082";
    form->prs_data[11] = "1234567890";  // 15 characters with the code: cut at 12
    form->prs_data[21] = " 044 ";
    form->prs_data[22] = " 873 1234";
    form->prs_data[1] = QString(40, u'X');  // pasted, longer than the field
    form->prs_data[46] = "anna@skool.co.za";
    form->prs_data[14] = "NGK";
    form->prs_data[44] = "KLEINSTE";
    form->data_ok_click();
    EXPECT_TRUE(form->closed);
    EXPECT_TRUE(tree.dialogs.texts().isEmpty());

    const store::Record r = on_disk(number);
    EXPECT_EQ(r.text(PRSALG["PA_T_HUIS"]), "(021)5551234");  // split and joined again
    EXPECT_EQ(r.text(PRSALG["PA_T_SEL"]), "(082)1234567");
    EXPECT_EQ(r.text(PRSALG["PA_MV_HTL"]), "(044)873 1234");
    EXPECT_EQ(r.text(PRSALG["PA_P_ADR1"]), QString(25, u'X'));
    EXPECT_EQ(r.text(PRSALG["PA_EPOS"]), "anna@skool.co.za");
    EXPECT_EQ(r.text(PRSALG["PA_KERK"]), "NGK");
    EXPECT_EQ(r.text(PRSALG["PL_KIND"], 5), "KLEINSTE");
    EXPECT_EQ(r.text(PRSALG["PA_VAN"]), "DU TOIT");  // fields of other forms stay
    EXPECT_EQ(r, tree.session.working(Code::PRSALG));
    EXPECT_EQ(file().left(PRSALG.record_length), first);
}

TEST_F(AddressFamilyTest, ChildDatesAreStoredCanonicalOrEmpty) {
    store_person([](store::Record& r) {
        for (int child = 1; child <= 5; ++child) {
            r.set_date(PRSALG["PL_GDTM"], QDate(2000, 1, child), child);
        }
    });
    auto form = open_form();
    form->prs_data[37] = "2016.2.3";
    form->prs_data[39] = "20160204";
    form->prs_data[41] = "2016.13.01";
    form->prs_data[43] = "31.02";
    form->prs_data[45] = "";
    form->data_ok_click();
    EXPECT_EQ(form->prs_data[37], "2016.02.03");  // the box is rewritten too
    EXPECT_EQ(form->prs_data[41], "");
    const store::Record r = on_disk(number);
    const store::Field& dates = PRSALG["PL_GDTM"];
    EXPECT_EQ(r.date(dates, 1), QDate(2016, 2, 3));
    EXPECT_EQ(r.date(dates, 2), QDate(2016, 2, 4));
    for (int child = 3; child <= 5; ++child) {
        EXPECT_EQ(r.date_serial(dates, child), 0.0) << child;
    }

    // Six bare digits, as the label's JJMMDD invites, are no date rather than one in 1603.
    form = open_form();
    form->prs_data[37] = "160301";
    form->data_ok_click();
    EXPECT_EQ(on_disk(number).date_serial(dates, 1), 0.0);
}

TEST_F(AddressFamilyTest, BrowseModeAndExitWriteNothing) {
    const QByteArray before = file();
    auto form = open_form();
    form->prs_data[1] = "NUWE ADRES";
    form->staff_exit_click();
    EXPECT_TRUE(form->closed);
    tree.session.browse_mode = true;
    form = open_form();
    form->prs_data[1] = "NUWE ADRES";
    form->data_ok_click();
    EXPECT_TRUE(form->closed);
    EXPECT_EQ(file(), before);
    EXPECT_EQ(tree.session.working(Code::PRSALG).text(PRSALG["PA_P_ADR1"]), "");
}

TEST_F(AddressFamilyTest, AFailedWriteIsToldAndKeepsTheFormAndTheRecordInMemory) {
    const store::Record before = tree.session.working(Code::PRSALG);
    tree.session.close_file(Code::PRSALG);
    auto form = open_form();
    form->prs_data[1] = "NUWE ADRES";
    form->data_ok_click();
    EXPECT_FALSE(form->closed);
    EXPECT_TRUE(tree.dialogs.last_text().startsWith("KAN NIE  "))
        << tree.dialogs.last_text().toStdString();
    EXPECT_EQ(tree.session.working(Code::PRSALG), before);
}

}  // namespace
