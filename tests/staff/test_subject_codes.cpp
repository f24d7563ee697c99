#include <gtest/gtest.h>

#include "detail_fixture.h"
#include "staff/subject_codes.h"

using namespace korvel;
using namespace korvel::staff;
using korvel::testing::DetailTree;

namespace {

TEST(SubjectCodes, FileLinesAsTheSuiteWritesThem) {
    struct Case {
        const char* what;
        QByteArray bytes;
        QStringList codes;  // code|grade|af|en per row
    };
    const Case cases[] = {
        {"LF and CRLF", "1,R,A,B\n2,1,C,D\r\n3,2,E,F", {"1|R|A|B", "2|1|C|D", "3|2|E|F"}},
        {"quotes dropped, ? is '",
         "\"7\",\"12\",\"Kuns?te\",\"Arts\"?\r\n",
         {"7|12|Kuns'te|Arts'"}},
        {"short line", "8,9\r\n", {"8|9||"}},
        {"stops at a blank column 0", "1,R,A,B\r\n\r\n2,1,C,D\r\n", {"1|R|A|B"}},
        {"stops at blanks in column 0", "1,R,A,B\r\n  ,1,C,D\r\n", {"1|R|A|B"}},
        {"names keep blanks, cp1252",
         "12345678901, 10 , Afr Huistaal ,Sep\xeat\r\n",
         {QString::fromUtf8("12345678901|10| Afr Huistaal |Sepêt")}},
        {"empty file", "", {}},
    };
    for (const Case& c : cases) {
        QStringList got;
        for (const SubjectCode& s : parse_subject_codes(c.bytes)) {
            got << s.code + u'|' + s.grade + u'|' + s.afrikaans + u'|' + s.english;
        }
        EXPECT_EQ(got, c.codes) << c.what;
    }
}

TEST(SubjectCodes, NamesByCodeFirstRowWinsMissingFileIsEmpty) {
    DetailTree tree;
    EXPECT_TRUE(SubjectCodes::load(tree.session).rows().empty());
    EXPECT_TRUE(tree.dialogs.shown().isEmpty());
    tree.write_codes(korvel::testing::kSubjectCsv + "2001,11,Tweede,Second\r\n");
    const SubjectCodes codes = SubjectCodes::load(tree.session);
    EXPECT_EQ(codes.subject_name("2001", true), "Wiskunde");
    EXPECT_EQ(codes.subject_name(" 2001 ", false), "Mathematics");
    EXPECT_EQ(codes.subject_name("9999", true), "");
}

TEST(SubjectCodes, ChooserSortsSelectsTheCallersCodeAndCloses) {
    DetailTree tree;
    tree.session.afrikaans = false;
    tree.write_codes();
    const SubjectCodes codes = SubjectCodes::load(tree.session);
    SubjectChooser c(tree.session, codes, "2001");
    c.form_load();
    EXPECT_EQ(c.caption, "STAFF LURITS SUBJECT CODES");
    QStringList names;
    for (const auto& r : c.lurits_vaklys.rows) {
        names << r.cells[kSubjectName];
    }
    EXPECT_EQ(names,
              QStringList({"Afrikaans Home Language", "Mathematical Literacy", "Mathematics"}));
    ASSERT_TRUE(c.chosen());
    EXPECT_EQ(c.chosen()->code, "2001");
    // A header sorts; the same header again turns the order; the selection stays on its row.
    c.lurits_vaklys_column_click(kSubjectCode);
    c.lurits_vaklys_column_click(kSubjectCode);
    EXPECT_EQ(c.lurits_vaklys.rows.front().cells[kSubjectCode], "2002");
    EXPECT_EQ(c.chosen()->code, "2001");
    EXPECT_FALSE(c.closed);
    c.lurits_vaklys_click(0);
    EXPECT_TRUE(c.closed);
    EXPECT_EQ(c.chosen()->code, "2002");
    EXPECT_EQ(c.chosen()->name, "Mathematical Literacy");
}

}  // namespace
