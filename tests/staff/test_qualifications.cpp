#include <gtest/gtest.h>

#include "detail_fixture.h"
#include "staff/qualifications.h"

using namespace korvel;
using namespace korvel::staff;
using korvel::testing::DetailTree;
using store::PRSADD;
using store::PRSALG;
using store::PRSVAK;

namespace {

class QualificationsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        tree.write_codes();
        struct Row {
            const char* grde;
            const store::Field* positions;
            int position;
        };
        const Row rows[] = {
            {"P", &PRSADD["PD_KW_PROF"], 5},  {"A", &PRSADD["PD_KW_AKAD"], 5},
            {"HONNEURS BA", nullptr, 0},      {"D", &PRSADD["PD_KW_DETAIL"], 999},
            {"P", &PRSADD["PD_KW_PROF"], -1}, {"X", &PRSADD["PD_KW_PROF"], 1},
            {"A", &PRSADD["PD_KW_AKAD"], 0},  {"BA", nullptr, 0},
        };
        for (int i = 1; i <= kQualificationRows; ++i) {
            const Row& r = rows[i - 1];
            tree.master().set_text(PRSALG["PK_GRDE"], r.grde, i);
            tree.master().set_text(PRSALG["PK_WAAR"], "UNISA", i);
            tree.master().set_int16(PRSALG["PK_JAAR"], 1990 + i, i);
            if (r.positions != nullptr) {
                tree.additional().set_int16(*r.positions, r.position, i);
            }
        }
    }
    QByteArray subject_bytes() const { return tree.file_bytes(PRSVAK).mid(PRSVAK.record_length); }
    DetailTree tree;
};

TEST_F(QualificationsTest, LoadShowsKnownPositionsOldTextAsAcademicAndTheRestEmpty) {
    tree.session.afrikaans = false;
    Qualifications q(tree.session);
    q.form_load();
    const QStringList names = {
        "Bachelor of Education", "Bachelor of Education", "HONNEURS BA", "", "", "", "", "BA"};
    const QStringList types = {"PROFESSIONAL", "ACADEMIC", "ACADEMIC", "DETAIL",
                               "PROFESSIONAL", "",         "ACADEMIC", "ACADEMIC"};
    for (int row = 1; row <= kQualificationRows; ++row) {
        EXPECT_EQ(q.kwl_grid[0].cell(row, 0), names[row - 1]) << row;
        EXPECT_EQ(q.kwl_grid[0].cell(row, 3), types[row - 1]) << row;
        EXPECT_EQ(q.kwl_grid[0].cell(row, 1), row == 6 ? "" : "UNISA") << row;
    }
    EXPECT_EQ(q.jaar_lys.rows.front(), "1950");
    EXPECT_EQ(q.jaar_lys.rows.back(), "2026");
}

TEST_F(QualificationsTest, SaveStoresPositionsAndMarksBlankNames) {
    Qualifications q(tree.session);
    q.form_load();
    // Row 4, a detail qualification, has no subjects.
    q.kwl_grid_click(0, 4);
    EXPECT_FALSE(q.box5_visible);
    q.kw_opsie_click(1);
    EXPECT_TRUE(q.box5_visible);
    q.kw_opsie_click(3);
    EXPECT_FALSE(q.box5_visible);
    q.kwalifikasie_lys_dbl_click(QualificationList::detail, 26);  // "Other"
    q.prs_data[3] = "19A5";
    q.data_ok_click();
    q.grid_ok_click();
    EXPECT_TRUE(q.closed);

    const store::Record m = tree.on_disk(PRSALG, tree.number);
    const store::Record a = tree.on_disk(PRSADD, 2);
    EXPECT_EQ(a.int16(PRSADD["PD_KW_PROF"], 1), 5);  // the same name, its own list's position
    EXPECT_EQ(a.int16(PRSADD["PD_KW_AKAD"], 2), 5);
    EXPECT_EQ(m.text(PRSALG["PK_GRDE"], 3), "A");  // old text not in the list is lost
    EXPECT_EQ(a.int16(PRSADD["PD_KW_AKAD"], 3), 0);
    EXPECT_EQ(a.int16(PRSADD["PD_KW_AKAD"], 8), 1);  // unless it names a row
    EXPECT_EQ(a.int16(PRSADD["PD_KW_DETAIL"], 4), 27);
    EXPECT_EQ(m.int16(PRSALG["PK_JAAR"], 4), 19);
    EXPECT_EQ(m.text(PRSALG["PK_GRDE"], 6), "");
    // A blank name keeps 65535: FF FF on disk, an empty cell on the next load.
    const QByteArray bytes = tree.file_bytes(PRSADD).mid(PRSADD.record_length);
    const int at = PRSADD["PD_KW_PROF"].element_offset(5);
    EXPECT_EQ(bytes.mid(at, 2), QByteArray("\xff\xff"));
    EXPECT_TRUE(tree.dialogs.shown().isEmpty());
    Qualifications again(tree.session);
    again.form_load();
    EXPECT_EQ(again.kwl_grid[0].cell(5, 0), "");
}

TEST_F(QualificationsTest, AYearTooLargeStopsTheSave) {
    const QByteArray before = tree.file_bytes(PRSALG) + tree.file_bytes(PRSADD);
    Qualifications q(tree.session);
    q.form_load();
    q.kwl_grid[0].cell(2, 2) = "40000";
    q.grid_ok_click();
    EXPECT_FALSE(q.closed);
    EXPECT_EQ(tree.dialogs.last_text(),
              "JAAR : GETAL TE GROOT - HOOGSTENS 32767. NIE GESTOOR NIE!");
    EXPECT_EQ(tree.file_bytes(PRSALG) + tree.file_bytes(PRSADD), before);
}

TEST_F(QualificationsTest, SubjectsGoByQualificationThenSubjectAndTheTypeByQualification) {
    Qualifications q(tree.session);
    q.form_load();
    q.kwl_grid_click(0, 2);
    EXPECT_TRUE(q.box5_visible);
    q.prs_data_dbl_click(5);
    ASSERT_TRUE(q.subjects_visible);
    const auto enter = [&q](int row, const char* code, int type, const char* grade) {
        q.kwl_grid_click(1, row);
        EXPECT_TRUE(q.vak_raam_visible);
        q.vak_dta[1] = code;
        q.vak_soort_click(type);
        q.vak_dta[2] = grade;
        q.vak_dta[3] = "4";
        q.vak_dta[4] = "7";
        q.vak_ok_click();
    };
    enter(1, "2001", 1, "12");
    enter(2, "2002", 2, "12");
    enter(5, "1001", 3, "10");
    EXPECT_EQ(q.kwl_grid[1].cell(1, 0), "2001 Wiskunde");
    q.grid_ok_click();  // the subjects only
    EXPECT_FALSE(q.closed);
    EXPECT_FALSE(q.subjects_visible);
    EXPECT_EQ(q.prs_data[5], "2001, 2002, 1001");

    // Qualification 2, subject 1 is slot 2 + 11 * 1 of the 11-by-6 grids; subject 5 is 2 + 55.
    const QByteArray v = subject_bytes();
    EXPECT_EQ(v.mid(PRSVAK["PV_VAK"].element_offset(2 + 11 * 1), 8), "2001    ");
    EXPECT_EQ(v.mid(PRSVAK["PV_VAK"].element_offset(2 + 11 * 5), 8), "1001    ");
    EXPECT_EQ(v.mid(PRSVAK["PV_GRD"].element_offset(2 + 11 * 5), 3), "10 ");
    EXPECT_EQ(v.mid(PRSVAK["PV_JR2"].element_offset(2 + 11 * 1), 2), QByteArray("\x07\x00", 2));
    EXPECT_EQ(tree.file_bytes(PRSVAK).left(PRSVAK.record_length).mid(5, 8), "        ");

    q.grid_ok_click();  // the qualifications, with the subject type
    EXPECT_TRUE(q.closed);
    const store::Record m = tree.on_disk(PRSALG, tree.number);
    EXPECT_EQ(m.text(PRSALG["PK_SHA_T"], 2), "3");  // the last subject's, at the qualification
    EXPECT_EQ(m.text(PRSALG["PK_SHA_T"], 1), "");

    // On the next load the type shows against the subject line of the qualification's number.
    Qualifications again(tree.session);
    again.form_load();
    again.kwl_grid_click(0, 2);
    EXPECT_EQ(again.prs_data[5], "2001, 2002, 1001");
    again.prs_data_dbl_click(5);
    EXPECT_EQ(again.kwl_grid[1].cell(1, 1), "0");
    EXPECT_EQ(again.kwl_grid[1].cell(2, 1), "3");
    EXPECT_EQ(again.kwl_grid[1].cell(5, 1), "0");
}

}  // namespace
