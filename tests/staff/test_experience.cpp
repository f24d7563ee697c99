#include <gtest/gtest.h>

#include "detail_fixture.h"
#include "staff/experience.h"

using namespace korvel;
using namespace korvel::staff;
using korvel::testing::DetailTree;
using store::PRSADD;
using store::PRSALG;
using store::PRSVAK;
using ui::Answer;

namespace {

class ExperienceTest : public ::testing::Test {
  protected:
    void SetUp() override {
        tree.write_codes();
        // Ten subjects taught stand in the person's subject record.
        tree.session.read_record(store::Code::PRSVAK, 2);
        store::Record& v = tree.session.working(store::Code::PRSVAK);
        for (int i = 1; i <= 10; ++i) {
            v.set_text(PRSVAK["PV_VAK2"], i == 1 ? "1001" : QString::number(3000 + i), i);
            v.set_text(PRSVAK["PV_GRD2"], "10", i);
            v.set_int16(PRSVAK["PV_JR4"], i, i);
        }
        tree.session.write_record(store::Code::PRSVAK, 2);
        tree.session.read_record(store::Code::PRSVAK, 3);
    }
    store::Record subjects() const { return tree.on_disk(PRSVAK, 2); }
    DetailTree tree;
};

TEST_F(ExperienceTest, SavesYearsListsAndSubjectsAtThePersonsOwnRecord) {
    Experience e(tree.session);
    e.form_load();
    EXPECT_EQ(e.frame(kSubjectsGrid).grid.cell(1, 0), "1001:Afrikaans Huistaal");
    EXPECT_EQ(e.frame(kSubjectsGrid).grid.cell(10, 0), "3010:");
    e.jre_data[0] = "2";
    e.jre_data[1] = "19A5";  // the number the text starts with
    e.jre_data[4] = "12";
    // Row 2 edited: the subject list gives the code, the name is kept apart.
    e.grid_click(kSubjectsGrid, 2);
    EXPECT_FALSE(e.jre_tab_stops);
    tree.dialogs.on_form("Personeel_vakke", [](ui::ChildForm& f) {
        auto& c = static_cast<SubjectChooser&>(f);
        c.form_load();
        c.lurits_vaklys_click(2);  // by name: Afrikaans, Wiskunde, Wiskundige
    });
    e.vak_data_dbl_click(1);
    EXPECT_EQ(e.frame(kSubjectsGrid).data[1], "2002");
    e.frame_ok_click(kSubjectsGrid);
    EXPECT_EQ(e.frame(kSubjectsGrid).grid.cell(2, 0), "2002 Wiskundige Geletterdheid");
    e.frame(kSubjectsGrid).grid.cell(3, 0).clear();   // a row without a code is cleared
    e.frame(kSubjectsGrid).grid.cell(9, 0) = "9999";  // rows 9 and 10 are shown, not stored
    e.grid_click(kSchoolsGrid, 1);
    e.frame(kSchoolsGrid).data = {"", "OU SKOOL", "2001.01.01", "2004/12/31", "4"};
    e.frame_ok_click(kSchoolsGrid);
    e.jre_ok_click();
    EXPECT_TRUE(e.closed);

    EXPECT_EQ(tree.on_disk(PRSADD, 2).int16(PRSADD["PD_POSVLAK"]), 2);
    const store::Record m = tree.on_disk(PRSALG, tree.number);
    EXPECT_EQ(m.int16(PRSALG["PO_JRE_SKL"]), 19);
    EXPECT_EQ(m.int16(PRSALG["PO_JRE_OND"]), 12);
    EXPECT_EQ(m.text(PRSALG["PO_SKL"], 1), "OU SKOOL");
    EXPECT_EQ(m.date(PRSALG["PO_TOT"], 1), QDate(2004, 12, 31));
    const store::Record v = subjects();
    // An unedited row keeps the colon and a piece of the name, cut at the first blank.
    EXPECT_EQ(v.raw_text(PRSVAK["PV_VAK2"], 1), "1001:Afr");
    EXPECT_EQ(v.text(PRSVAK["PV_VAK2"], 2), "2002");
    EXPECT_EQ(v.text(PRSVAK["PV_VAK2"], 3), "");
    EXPECT_EQ(v.int16(PRSVAK["PV_JR4"], 3), 0);
    EXPECT_EQ(v.text(PRSVAK["PV_VAK2"], 9), "3009");
    EXPECT_EQ(v.text(PRSVAK["PV_VAK2"], 10), "3010");
    // Nobody else's subject record was touched.
    EXPECT_EQ(tree.on_disk(PRSVAK, 3).text(PRSVAK["PV_POS_NR"]), "9");
    EXPECT_EQ(tree.on_disk(PRSVAK, 3).text(PRSVAK["PV_VAK2"], 1), "");
}

TEST_F(ExperienceTest, AYearTooLargeIsRefusedAndNothingWritten) {
    const QByteArray before =
        tree.file_bytes(PRSALG) + tree.file_bytes(PRSADD) + tree.file_bytes(PRSVAK);
    Experience e(tree.session);
    e.form_load();
    e.jre_data[0] = "3";
    e.jre_data[8] = "40000";
    e.jre_ok_click();
    EXPECT_FALSE(e.closed);
    EXPECT_EQ(tree.dialogs.last_text(),
              "AS HOOF : GETAL TE GROOT - HOOGSTENS 32767. NIE GESTOOR NIE!");
    EXPECT_EQ(tree.file_bytes(PRSALG) + tree.file_bytes(PRSADD) + tree.file_bytes(PRSVAK), before);
}

TEST_F(ExperienceTest, PostLevelListInAfrikaansOnly) {
    for (const bool af : {true, false}) {
        tree.session.afrikaans = af;
        Experience e(tree.session);
        e.form_load();
        e.jre_data_dbl_click(0);
        EXPECT_TRUE(e.posvlak_lys.visible);
        EXPECT_EQ(e.posvlak_lys.rows.size(), af ? 4 : 0);
        e.posvlak_lys_click(1);
        EXPECT_EQ(e.jre_data[0], af ? "3" : "0");
    }
}

TEST_F(ExperienceTest, EraseAllSubjectsAsksForABackupThenToBeSure) {
    Experience e(tree.session);
    e.form_load();
    tree.dialogs.answer(Answer::Yes);  // a backup first: nothing happens
    e.kwl_vakke_mouse_down();
    EXPECT_EQ(subjects().text(PRSVAK["PV_VAK2"], 1), "1001");
    tree.dialogs.answer(Answer::No);
    tree.dialogs.answer(Answer::Yes);
    e.kwl_vakke_mouse_down();
    EXPECT_EQ(tree.dialogs.last_text(),
              "WIL U DEFNITIEF ALLE VAKBESONDERHEDE VIR 7 MNR A DU TOIT UITVEE?");
    for (int i = 1; i <= 10; ++i) {
        EXPECT_EQ(subjects().text(PRSVAK["PV_VAK2"], i), "") << i;
        EXPECT_EQ(subjects().int16(PRSVAK["PV_JR4"], i), 0) << i;
    }
    EXPECT_EQ(e.frame(kSubjectsGrid).grid.cell(1, 0), "");
}

}  // namespace
