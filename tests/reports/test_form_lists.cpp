// The tuition and qualification lists over staff records written here for the case.

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "platform/drive_map.h"
#include "reports/qualification_list.h"
#include "reports/recording_device.h"
#include "reports/tuition_list.h"
#include "shell/session.h"
#include "store/record_layouts.h"
#include "ui/scripted_dialogs.h"

inline void PrintTo(const QString& s, std::ostream* os) {
    *os << '"' << s.toStdString() << '"';
}

namespace korvel::reports {
namespace {

using store::Code;
using store::PRSADD;
using store::PRSALG;
using store::PRSVAK;
using namespace Qt::StringLiterals;

class FormLists : public ::testing::Test {
  protected:
    FormLists() {
        session = shell::Session::on_drive(
            dialogs, platform::DriveMap::explicit_map({{QStringLiteral("C:"), dir.path()}}),
            QStringLiteral("C:"), QStringLiteral("2026"));
        session->afrikaans = false;
        for (Code c : {Code::PRSALG, Code::PRSADD, Code::PRSVAK})
            EXPECT_TRUE(session->open_file(c));
    }
    store::Record& staff(const char* post, const char* surname, const char* state = "") {
        store::Record& r = session->working(Code::PRSALG);
        r.clear();
        r.set_text(PRSALG["PA_POS_NR"], QString::fromLatin1(post));
        r.set_text(PRSALG["PA_VAN"], QString::fromLatin1(surname));
        r.set_text(PRSALG["PA_AKTIEF"], QString::fromLatin1(state));
        return r;
    }
    void subjects(const char* post, std::vector<std::pair<const char*, const char*>> taught) {
        store::Record& r = session->working(Code::PRSVAK);
        r.clear();
        r.set_text(PRSVAK["PV_POS_NR"], QString::fromLatin1(post));
        int slot = 1;
        for (const auto& [code, grade] : taught) {
            r.set_text(PRSVAK["PV_VAK2"], QString::fromLatin1(code), slot);
            r.set_text(PRSVAK["PV_GRD2"], QString::fromLatin1(grade), slot++);
        }
        session->append_record(Code::PRSVAK);
    }
    QStringList row(const PrintGrid& grid, int r) {
        QStringList out;
        for (int c = 0; c < grid.cols(); ++c)
            out << grid.text(r, c);
        return out;
    }

    QTemporaryDir dir;
    ui::ScriptedDialogs dialogs;
    std::unique_ptr<shell::Session> session;
    RecordingDevice device;
    PrintJob job{device, dialogs};
};

TEST_F(FormLists, TuitionJoinsTheGradesOfASubjectAndIsAsWideAsTheWidestRow) {
    staff("P1", "ADAMS");
    session->append_record(Code::PRSALG);
    staff("P2", "BOTHA");
    session->append_record(Code::PRSALG);
    staff("P3", "CELE", "*");
    session->append_record(Code::PRSALG);
    subjects("P1", {{"WISK", "10"}, {"", "9"}, {"FISI", "12"}, {"WISK", "11"}});
    subjects("P2", {{"ENG", "8"}});
    subjects("P2", {{"AFR", "9"}, {"GES", "9"}, {"LO", "9"}});  // a second record: not read
    subjects("P3", {{"AFR", "9"}, {"GES", "9"}, {"LO", "9"}});

    TuitionList list(*session, job);
    list.form_load();
    const PrintGrid grid = list.tuition_grid();
    ASSERT_EQ(grid.rows(), 3);  // P3 is inactive
    EXPECT_EQ(row(grid, 0),
              QStringList({"PST", "STAFF MEMBER", "ID NUMBER", "SBJ/GRD", "SBJ/GRD"}));
    EXPECT_EQ(row(grid, 1), QStringList({"P1", "ADAMS  ", "", "WISK : 10 / 11", "FISI : 12"}));
    EXPECT_EQ(row(grid, 2), QStringList({"P2", "BOTHA  ", "", "ENG : 8", ""}));
}

// The list runs as the post numbers' capitals sort, equal ones as they stand in the file; a
// sharp s sorts as its two capitals. A subject record is found in either case.
TEST_F(FormLists, TheListRunsByPostNumberInCapitalsAndFindsSubjectsInEitherCase) {
    const auto posts_of = [&] {
        TuitionList list(*session, job);
        list.form_load();
        QStringList out;
        for (const StaffListEntry& e : list.prs_lys)
            out << e.post;
        return out;
    };
    // Written in Latin-1, which is the code page here: "\351" is "é", "\311" "É", "\337" "ß".
    for (const char* post : {"b2", "B1", "a9", "10", "9", "\3511", "\3110", "A9"}) {
        staff(post, "X");
        session->append_record(Code::PRSALG);
    }
    EXPECT_EQ(posts_of(),
              QStringList({"10", "9", "a9", "A9", "B1", "b2", u"\u00c90"_s, u"\u00e91"_s}));
    for (const char* post : {"ST", "\337", "sr"}) {
        staff(post, "X");
        session->append_record(Code::PRSALG);
    }
    EXPECT_EQ(posts_of(), QStringList({"10", "9", "a9", "A9", "B1", "b2", "sr", u"\u00df"_s, "ST",
                                       u"\u00c90"_s, u"\u00e91"_s}));

    subjects("b1", {{"WISK", "10"}});
    subjects("ss", {{"ENG", "8"}});
    TuitionList list(*session, job);
    list.form_load();
    const PrintGrid grid = list.tuition_grid();
    QHash<QString, QString> first_subject;
    for (int r = 1; r < grid.rows(); ++r)
        first_subject.insert(grid.text(r, 0), grid.cols() > 3 ? grid.text(r, 3) : QString());
    EXPECT_EQ(first_subject.value("B1"), "WISK : 10");
    EXPECT_EQ(first_subject.value(u"\u00df"_s), "ENG : 8");
    EXPECT_EQ(first_subject.value("b2"), "");
}

TEST_F(FormLists, QualificationsReadAsTheFormReadsThemAndTheTicksLimitTheRows) {
    store::Record& r = staff("P1", "ADAMS");
    const auto slot = [&](int i, const char* grde, const char* where, int year) {
        r.set_text(PRSALG["PK_GRDE"], QString::fromLatin1(grde), i);
        r.set_text(PRSALG["PK_WAAR"], QString::fromLatin1(where), i);
        r.set_int16(PRSALG["PK_JAAR"], year, i);
    };
    slot(1, "P", "UNISA", 1999);
    slot(2, "BA HONS (OUD)", "US", 0);  // free text of an older version
    slot(4, "D", "UCT", 2001);
    slot(5, "A", "UWC", 2003);
    session->append_record(Code::PRSALG);
    staff("P2", "BOTHA");
    session->append_record(Code::PRSALG);
    store::Record& add = session->working(Code::PRSADD);
    add.clear();
    add.set_text(PRSADD["PD_POS_NR"], QStringLiteral("P1"));
    add.set_int16(PRSADD["PD_KW_PROF"], 5, 1);      // Bachelor of Education
    add.set_int16(PRSADD["PD_KW_DETAIL"], 999, 4);  // past the list
    add.set_int16(PRSADD["PD_KW_AKAD"], -1, 5);     // 65535: no position
    session->append_record(Code::PRSADD);

    StaffQualificationList list(*session, job);
    list.form_load();
    const PrintGrid grid = list.qualification_grid();
    ASSERT_EQ(grid.rows(), 7);
    EXPECT_EQ(row(grid, 0), QStringList({"PST", "NAME", "ID NUMBER / QUALIFICATION",
                                         "GENDER / INSTITUTION (YEAR)"}));
    EXPECT_EQ(row(grid, 1), QStringList({"P1", "ADAMS  ", "", ""}));
    EXPECT_EQ(row(grid, 2), QStringList({"", "", "Bachelor of Education", "UNISA (1999)"}));
    EXPECT_EQ(row(grid, 3), QStringList({"", "", "BA HONS (OUD)", "US"}));
    EXPECT_EQ(row(grid, 4), QStringList({"", "", "", "UCT (2001)"}));
    EXPECT_EQ(row(grid, 5), QStringList({"", "", "", "UWC (2003)"}));
    EXPECT_EQ(row(grid, 6), QStringList({"P2", "BOTHA  ", "", ""}));  // none of their own

    list.kwalifikasie_lys[1] = false;  // academic: the free text and the "A" row go
    const PrintGrid professional = list.qualification_grid();
    ASSERT_EQ(professional.rows(), 5);
    EXPECT_EQ(professional.text(3, 3), "UCT (2001)");
}

// Rows grow to their tallest cell; a text shared by many cells is looked at once and stands
// for each of them.
TEST(FormListRows, GrowToTheirTallestCell) {
    PrintGrid grid(5, 3);
    const QString two = QStringLiteral("EEN~NL~TWEE");
    const QString one = QStringLiteral("EEN");
    for (int r = 1; r < 5; ++r)
        grid.set_text(r, 1, r % 2 == 1 ? two : one);
    grid.set_text(4, 2, QStringLiteral("A\r\nB\nC"));
    fit_row_heights(grid, 1);
    EXPECT_EQ(grid.row(0).height, 240);  // above the first row asked for
    EXPECT_EQ(grid.row(1).height, 440);
    EXPECT_EQ(grid.row(2).height, 240);
    EXPECT_EQ(grid.row(3).height, 440);
    EXPECT_EQ(grid.row(4).height, 640);
}

}  // namespace
}  // namespace korvel::reports
