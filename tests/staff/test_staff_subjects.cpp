// The staff subjects rebuilt from the learner records: the rebuild over a fake learner side,
// the dBASE reader over tables written by another program (python3-dbf), and the register's
// button.

#include <gtest/gtest.h>

#include <QDir>
#include <QProcess>
#include <algorithm>
#include <map>

#include "staff/learner_subjects.h"
#include "staff/staff_register.h"
#include "staff/staff_subjects.h"
#include "staff_fixture.h"

using namespace korvel;
using namespace korvel::staff;
using korvel::store::Code;
using korvel::store::PRSVAK;

namespace {

class FakeLearners : public LearnerSubjects {
  public:
    std::optional<GradeSubjects> read_grade(const QString& folder) override {
        folders_read << folder;
        const auto it = grades.find(folder);
        if (it == grades.end()) {
            return std::nullopt;
        }
        return it->second;
    }
    std::map<QString, GradeSubjects> grades;
    QStringList folders_read;
};

const QString kGrade12 = QStringLiteral("C:\\VESPARINE\\ADMIN\\L1226");
const QString kGrade11 = QStringLiteral("C:\\VESPARINE\\ADMIN\\L1126");

class SubjectsTree : public korvel::testing::StaffTree {
  public:
    SubjectsTree() {
        // The school's grades: blank slots and a text that cannot name a folder are passed by.
        store::Record skl(store::SKL);
        skl.clear();
        const char* grades[] = {"", "12", "..\\", "11", "12"};
        for (int i = 0; i < 5; ++i) {
            skl.set_text(store::SKL["SD_ST"], QString::fromLatin1(grades[i]), i);
        }
        session.fs().write_all(session.folders.school + QStringLiteral("\\skl_dta_random.txt"),
                               skl.bytes());
        for (const char* post : {"001", "002", "003"}) {
            korvel::testing::add_person(session, {post});
            session.ensure_subject_record(post);
        }
    }

    // Grade 12: PI3 with a subject without a number; two classes, the second past the
    // learners' reach; class numbers 0 and 9 name no row.
    void grade12() {
        GradeSubjects g;
        g.subjects = {{"WISK", 1301}, {"AFR HT", 1101}, {"KUNS", 0}, {"FIS", 123456789}};
        g.class_numbers = {1, 1, 0, 9};
        g.add_row({{"WISK", "001"},
                   {"AFR HT", "002"},
                   {"KUNS", "003"},      // no number: not a subject
                   {"GESK", "003"},      // not in the grade's table
                   {"WISK", "*"},        // no teacher yet
                   {"AFR HT", ""},       // none at all
                   {"WISK", "1234567"},  // longer than a post number
                   {"FIS", "..\\x"},     // data, never a path
                   {"wisk", "002"},      // codes are exact
                   {"WISK", "099"}});    // a post only the learner side knows
        g.add_row({{"WISK", "003"}});
        learners.grades[kGrade12] = g;
    }

    QStringList taught(const QString& post) {
        const int n = session.find_by_key(Code::PRSVAK, PRSVAK["PV_POS_NR"], post);
        QStringList out;
        if (n == 0) {
            return {"absent"};
        }
        session.read_record(Code::PRSVAK, n);
        for (int slot = 1; slot <= 10; ++slot) {
            const QString code = session.working(Code::PRSVAK).text(PRSVAK["PV_VAK2"], slot);
            if (!code.trimmed().isEmpty()) {
                out << code.trimmed() + u'/' +
                           session.working(Code::PRSVAK).text(PRSVAK["PV_GRD2"], slot).trimmed();
            }
        }
        return out;
    }

    StaffSubjects::Outcome rebuild(ui::Answer answer) {
        dialogs.answer(answer);
        StaffSubjects form(session, learners);
        form.form_load();
        return form.outcome;
    }

    QByteArray subject_file() {
        return korvel::testing::read_file(staff_file("prs_vak_random.txt"));
    }

    FakeLearners learners;
};

TEST(StaffSubjects, MergeAddsEachCodeOncePerPost) {
    SubjectsTree t;
    t.grade12();
    const StaffSubjects::Outcome first = t.rebuild(ui::Answer::No);
    EXPECT_EQ(t.dialogs.texts().first(),
              QString::fromUtf8("Wil u alle PERSONEEL VAKREKORDS heeltemal herskep?"));
    EXPECT_EQ(first.grades_read, QStringList({"12"}));
    EXPECT_EQ(t.learners.folders_read, QStringList({kGrade12, kGrade11}));  // in the school's order
    EXPECT_TRUE(t.session.fs().folder_exists(kGrade11));  // made, though it holds nothing
    EXPECT_EQ(first.learners, 4);

    EXPECT_EQ(t.taught("001"), QStringList({"1301/12"}));
    EXPECT_EQ(t.taught("002"), QStringList({"1101/12"}));
    EXPECT_EQ(t.taught("003"), QStringList());  // its class has no learner
    EXPECT_EQ(t.taught("099"), QStringList({"1301/12"}));
    EXPECT_EQ(t.taught("..\\x"), QStringList({"12345678/12"}));  // the number cut to the field
    EXPECT_EQ(t.taught("12345"), QStringList({"absent"}));
    EXPECT_EQ(t.taught("*"), QStringList({"absent"}));
    for (const QString& name :  // no file named after a teacher cell
         QDir(t.session.fs().native(t.session.folders.staff)).entryList(QDir::Files)) {
        EXPECT_TRUE(name.endsWith(".txt")) << name.toStdString();
    }

    // No a second time, and with grade 11 teaching the same codes, adds nothing.
    const QByteArray after_first = t.subject_file();
    t.learners.grades[kGrade11] = t.learners.grades[kGrade12];
    const StaffSubjects::Outcome second = t.rebuild(ui::Answer::No);
    EXPECT_EQ(second.subjects_added, 0);
    EXPECT_EQ(second.records_written, 0);
    EXPECT_EQ(t.subject_file(), after_first);

    // A post number that only the learner records know goes at the next compaction.
    t.session.compact_staff_files();
    EXPECT_EQ(t.taught("099"), QStringList({"absent"}));
    EXPECT_EQ(t.taught("001"), QStringList({"1301/12"}));

    // A grade whose subject rows are missing has learners but no cells.
    GradeSubjects no_rows;
    no_rows.subjects = {{"WISK", 1301}};
    no_rows.class_numbers = {1};
    t.learners.grades = {{kGrade11, no_rows}};
    EXPECT_EQ(t.rebuild(ui::Answer::No).subjects_added, 0);
}

TEST(StaffSubjects, MergeKeepsWhatIsThereAndAFullListLosesTheCode) {
    SubjectsTree t;
    t.grade12();
    t.session.open_file(Code::PRSVAK);
    const auto fill = [&](const QString& post, int filled) {
        const int n = t.session.find_by_key(Code::PRSVAK, PRSVAK["PV_POS_NR"], post);
        t.session.read_record(Code::PRSVAK, n);
        store::Record& r = t.session.working(Code::PRSVAK);
        for (int slot = 1; slot <= filled; ++slot) {
            r.set_text(PRSVAK["PV_VAK2"], QString::number(2000 + slot), slot);
            r.set_int16(PRSVAK["PV_JR4"], 7, slot);
        }
        r.set_text(PRSVAK["PV_VAK"], QStringLiteral("QUAL"), 3);
        t.session.write_record(Code::PRSVAK, n);
    };
    fill("001", 10);
    fill("002", 2);
    const QByteArray before = t.subject_file();
    t.rebuild(ui::Answer::No);
    EXPECT_EQ(t.taught("001").size(), 10);
    EXPECT_FALSE(t.taught("001").contains("1301/12"));
    EXPECT_EQ(t.taught("002"), QStringList({"2001/", "2002/", "1101/12"}));  // the first blank
    // Record 1 (post 001) is byte for byte as it was.
    EXPECT_EQ(t.subject_file().left(PRSVAK.record_length), before.left(PRSVAK.record_length));
}

TEST(StaffSubjects, ACodeOtherwisePaddedIsThere) {
    // Another program may pad a code with NULs or put a blank before it.
    SubjectsTree t;
    t.grade12();
    t.session.open_file(Code::PRSVAK);
    const auto store = [&](const QString& post, const char(&field)[9]) {
        const int n = t.session.find_by_key(Code::PRSVAK, PRSVAK["PV_POS_NR"], post);
        t.session.read_record(Code::PRSVAK, n);
        std::memcpy(t.session.working(Code::PRSVAK).data() + PRSVAK["PV_VAK2"].element_offset(1),
                    field, 8);
        t.session.write_record(Code::PRSVAK, n);
    };
    store("001", " 1301   ");
    store("002", "1101\0\0\0\0");
    const QByteArray before = t.subject_file();
    t.rebuild(ui::Answer::No);
    EXPECT_EQ(t.subject_file().left(2 * PRSVAK.record_length),
              before.left(2 * PRSVAK.record_length));
}

// add_staff_subject as it reads: for every learner and every cell, the post's record found by a
// scan of the file, read, walked and written.
void add_cell_by_cell(store::Store& s, const GradeSubjects& g, const QString& grade) {
    const store::Field& post_field = PRSVAK["PV_POS_NR"];
    for (const int row : g.class_numbers) {
        for (int c = 0; c < kSubjectCells; ++c) {
            const SubjectCell cell = g.cell(row, c);
            const QString post = QString::fromLatin1(cell.teacher.data(), cell.teacher.size());
            const auto subject =
                std::find_if(g.subjects.begin(), g.subjects.end(),
                             [&](const auto& p) { return p.first == cell.subject; });
            if (cell.subject.empty() || post.isEmpty() || post.count('*') == post.size() ||
                post.size() > 5 || subject == g.subjects.end() || subject->second == 0) {
                continue;
            }
            const QString code = QString::number(subject->second);
            int number = 0;
            s.scan_records(Code::PRSVAK, [&](int n, store::Record& r) {
                if (number == 0 && r.text(post_field).trimmed().toUpper() == post.toUpper()) {
                    number = n;
                }
            });
            store::Record& r = s.working(Code::PRSVAK);
            if (number == 0) {
                r.clear();
                r.set_text(post_field, post);
                r.set_text(PRSVAK["PV_VAK2"], code, 1);
                r.set_text(PRSVAK["PV_GRD2"], grade, 1);
                s.append_record(Code::PRSVAK);
                continue;
            }
            s.read_record(Code::PRSVAK, number);
            int blank = 0;
            bool there = false;
            for (int slot = 1; slot <= 10 && !there; ++slot) {
                const QString stored = r.text(PRSVAK["PV_VAK2"], slot).trimmed();
                there = stored == code;
                blank = blank == 0 && stored.isEmpty() ? slot : blank;
            }
            if (!there && blank != 0) {
                r.set_text(PRSVAK["PV_VAK2"], code, blank);
                r.set_text(PRSVAK["PV_GRD2"], grade, blank);
                s.write_record(Code::PRSVAK, number);
            }
        }
    }
}

TEST(StaffSubjects, SameBytesAsAddingCellByCell) {
    // Few teachers and subjects, so that rows repeat, lists fill and posts differ in case only;
    // codes and post numbers that fill their fields and differ in the last character; and two
    // grades of many codes each, each grade its own, over lists that do not fill.
    QStringList many_teachers;
    for (int i = 1; i <= 60; ++i) {
        many_teachers << QStringLiteral("T%1").arg(i);
    }
    struct Case {
        const char* subject;
        QStringList teachers;
        unsigned rows;
        int subjects;
        int grades;
    };
    for (const Case& k :
         {Case{"S", {"001", "002", "a01", "A01", "050", "*", "003"}, 8, 14, 1},
          Case{"SUBJECT", {"00001", "00002", "00003", "A0001", "a0001", "0000*", "*"}, 24, 14, 1},
          Case{"S", many_teachers, 4, 50, 2}}) {
        unsigned seed = 7;
        const auto next = [&seed](unsigned n) {
            seed = seed * 1103515245U + 12345U;
            return (seed >> 16) % n;
        };
        SubjectsTree fast, slow;
        slow.session.open_file(Code::PRSVAK);
        for (int grade = 0; grade < k.grades; ++grade) {
            GradeSubjects g;
            for (int i = 0; i < k.subjects; ++i) {
                g.subjects.emplace_back(k.subject + std::to_string(i),
                                        i == 3 ? 0 : 500 + 100 * grade + i);
            }
            for (unsigned row = 0; row < k.rows; ++row) {
                std::vector<std::pair<QString, QString>> cells;
                for (int c = 0; c < kSubjectCells; ++c) {
                    cells.emplace_back(
                        QLatin1String(k.subject) +
                            QString::number(next(static_cast<unsigned>(k.subjects) + 2)),
                        k.teachers.at(next(static_cast<unsigned>(k.teachers.size()))));
                }
                g.add_row(row % 3 == 2 ? std::vector<std::pair<QString, QString>>() : cells);
            }
            for (int i = 0; i < 40; ++i) {
                g.class_numbers.push_back(static_cast<int>(next(k.rows + 2)));
            }
            fast.learners.grades[grade == 0 ? kGrade12 : kGrade11] = g;
            add_cell_by_cell(slow.session, g, grade == 0 ? "12" : "11");
        }
        fast.rebuild(ui::Answer::No);
        EXPECT_EQ(fast.subject_file(), slow.subject_file()) << k.subject;
        EXPECT_GT(fast.session.count(Code::PRSVAK), 3);
    }
}

TEST(StaffSubjects, RecreateLosesEveryOldRowAndReplacesTheFileWhole) {
    SubjectsTree t;
    t.grade12();
    t.rebuild(ui::Answer::Yes);
    // Only what the learner records gave: 003 teaches nothing and has no record any more.
    EXPECT_EQ(t.taught("001"), QStringList({"1301/12"}));
    EXPECT_EQ(t.taught("003"), QStringList({"absent"}));
    EXPECT_EQ(t.session.count(Code::PRSVAK), 4);  // 001, 002, ..\x, 099
    EXPECT_FALSE(QFile::exists(t.staff_file("prs_vak_random.new")));

    // When the new file cannot be written the old one stands.
    const QByteArray before = t.subject_file();
    QDir().mkpath(t.staff_file("prs_vak_random.new"));
    t.learners.grades.clear();
    t.rebuild(ui::Answer::Yes);
    EXPECT_EQ(t.subject_file(), before);
}

TEST(StaffSubjects, RegisterButtonClosesTheSubjectFileWhileTheFormRuns) {
    SubjectsTree t;
    StaffRegister reg(t.session, true);
    t.session.open_file(Code::PRSVAK);
    bool open_during = true;
    t.dialogs.on_form("sk4_vakke_van_admin", [&](ui::ChildForm& form) {
        open_during = t.session.is_open(Code::PRSVAK);
        static_cast<StaffSubjects&>(form).form_load();
    });
    reg.laai_vakke_van_admin_click();
    EXPECT_FALSE(open_during);
    EXPECT_TRUE(t.session.is_open(Code::PRSVAK));
    EXPECT_EQ(t.dialogs.forms_shown(), QStringList({"sk4_vakke_van_admin"}));
}

// ---- the dBASE reader ----

// A Python with the dbf module, or blank.
QString python_with_dbf() {
    for (const QString& python : {QStringLiteral("/usr/bin/python3"), QStringLiteral("python3")}) {
        QProcess p;
        p.start(python, {"-c", "import dbf"});
        if (p.waitForFinished(30000) && p.exitStatus() == QProcess::NormalExit &&
            p.exitCode() == 0) {
            return python;
        }
    }
    return {};
}

// The learner programs' tables: a learner who left, a deleted learner, a class past the
// subject rows, numbers held in a character field, a deleted subject row, a teacher field
// wider than a post number, and fields this system does not read.
const char* const kWriteTables = R"(
import dbf, sys
folder = sys.argv[1]
def table(name, fields, rows, deleted=()):
    t = dbf.Table(folder + '/' + name, fields, codepage='cp1252')
    t.open(dbf.READ_WRITE)
    for r in rows:
        t.append(r)
    for i in deleted:
        dbf.delete(t[i])
    t.close()
table('ppl_cmp', 'PD_NAAM C(20); PD_AKTIEF C(1); PD_T_NR N(4,0)',
      [('A', ' ', 1), ('B', '*', 2), ('C', ' ', 2), ('D', ' ', 3), ('E', ' ', 7)], deleted=[3])
table('PI3', 'PI_KODE C(8); PI_NR C(6)',
      [('WISK', '1301'), ('', '55'), ('AFR HT', ' 1101'), ('BAD', 'A12')])
table('vakdta', 'V1_VAK01 C(8); V1_POS01 C(5); V1_VAK02 C(8); V1_POS02 C(5); VD_KLAS N(3,0); '
      'V3_VAK10 C(8); V3_POS10 C(7)',
      [('WISK', '001', 'AFR HT', '..\\x', 12, 'WISK', '1234567'), ('WISK', '002', '', '', 0, '', '')],
      deleted=[1])
)";

TEST(LearnerSubjectsReader, ReadsTheLearnerProgramsTables) {
    const QString python = python_with_dbf();
    if (python.isEmpty()) {
        GTEST_SKIP() << "python3 with the dbf module missing (python3-dbf)";
    }
    korvel::testing::StaffTree t;
    const QString folder = QStringLiteral("C:\\VESPARINE\\ADMIN\\L1226");
    t.session.fs().create_folder(folder);
    QProcess p;
    p.start(python, {"-c", kWriteTables, t.session.fs().native(folder)});
    ASSERT_TRUE(p.waitForFinished(60000));
    ASSERT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();

    DbfLearnerSubjects reader(t.session);
    const std::optional<GradeSubjects> g = reader.read_grade(folder);
    ASSERT_TRUE(g.has_value());
    EXPECT_EQ(g->class_numbers, (std::vector<int>{1, 2, 7}));
    EXPECT_EQ(g->subjects, (std::vector<std::pair<std::string, int>>{
                               {"WISK", 1301}, {"AFR HT", 1101}, {"BAD", 0}}));
    ASSERT_EQ(g->class_rows(), 2);
    const auto cell = [&](int row, int index) {
        const SubjectCell c = g->cell(row, index);
        return std::string(c.subject) + '|' + std::string(c.teacher);
    };
    EXPECT_EQ(cell(1, 0), "WISK|001");
    EXPECT_EQ(cell(1, 1), "AFR HT|..\\x");
    EXPECT_EQ(cell(1, 2), "|");  // no such field
    EXPECT_EQ(cell(1, 49), "WISK|1234567");
    EXPECT_EQ(cell(2, 0), "|");  // a deleted row
    EXPECT_EQ(cell(3, 0), "|");  // past the table

    // A truncated table reads as far as it goes; what is not a table reads as none.
    const QByteArray vakdta =
        korvel::testing::read_file(t.session.fs().native(folder + QStringLiteral("\\vakdta.dbf")));
    EXPECT_EQ(read_grade_tables({}, {}, vakdta.left(vakdta.size() - 20)).class_rows(), 1);
    const GradeSubjects junk = read_grade_tables(QByteArray(300, '\x03'), "not a table", {});
    EXPECT_TRUE(junk.class_numbers.empty());
    EXPECT_TRUE(junk.subjects.empty());

    // A grade without ppl_cmp is passed over.
    EXPECT_FALSE(reader.read_grade(QStringLiteral("C:\\VESPARINE\\ADMIN\\L1126")).has_value());
}

}  // namespace
