#include <gtest/gtest.h>

#include <unistd.h>
#include <QFile>
#include <QSet>

#include "store_fixture.h"

using namespace korvel::store;
using korvel::testing::add_staff;
using korvel::testing::StoreTree;

namespace {

struct Row {
    QString post, surname, state;
};

std::vector<Row> staff_rows(Store& s) {
    std::vector<Row> rows;
    s.open_file(Code::PRSALG);
    s.scan_records(Code::PRSALG, [&](int, Record& r) {
        rows.push_back({r.text(PRSALG["PA_POS_NR"]), r.text(PRSALG["PA_VAN"]).trimmed(),
                        r.text(PRSALG["PA_AKTIEF"])});
    });
    return rows;
}

QStringList keys_of(Store& s, Code code, const Field& key) {
    QStringList out;
    s.open_file(code);
    s.scan_records(code, [&](int, Record& r) { out << r.text(key); });
    return out;
}

void add_subject(Store& s, const QString& post) {
    Record& r = s.working(Code::PRSVAK);
    r.clear();
    r.set_text(PRSVAK["PV_POS_NR"], post);
    s.append_record(Code::PRSVAK);
}

// The register as the demo of a small school leaves it between two compactions.
void fill(Store& s) {
    ASSERT_TRUE(s.open_staff_file());
    add_staff(s, "123", "SMIT");
    add_staff(s, "123", "JONES");  // duplicate: kept as "123*"
    add_staff(s, "123", "BRAND");  // third holder: "123*" taken, dropped
    add_staff(s, "12345", "NEL");
    add_staff(s, "12345", "BOTHA");          // five characters: the star does not fit, dropped
    add_staff(s, "200*", "VAN WYK");         // a star left over is cleaned
    add_staff(s, "300", "DU PLESSIS", "D");  // deleted
    add_staff(s, "", "NO POST");             // no post number
    add_staff(s, "400", "", "", "", "");     // no names at all
    add_staff(s, "500", "", "", "", "DR");   // a title alone keeps a record
    add_staff(s, "600", "  MÖLLER", "*", "  ANNA MARIA");  // inactive stays, names trimmed
    for (const char* post : {"123", "300", "500", "600", "600", "999"}) {
        add_subject(s, post);
    }
    Record& n = s.working(Code::PRSNME);
    n.clear();
    n.set_text(PRSNME["PN_POS_NR"], "600");
    n.set_text(PRSNME["PN_VAK"], "WISK", 3);  // the timetable system's teaching load
    s.append_record(Code::PRSNME);
}

}  // namespace

TEST(Compaction, KeepsOneRecordPerKeyAndRebuildsNamesAndSubjects) {
    StoreTree t;
    fill(t.store);
    t.store.compact_staff_files();

    const std::vector<Row> rows = staff_rows(t.store);
    QStringList posts;
    for (const Row& r : rows) {
        posts << r.post;
    }
    EXPECT_EQ(posts, QStringList({"123", "123*", "12345", "200", "500", "600"}));
    EXPECT_EQ(rows[1].surname, "JONES");
    EXPECT_EQ(rows[5].surname, QString::fromUtf8("MÖLLER"));
    EXPECT_EQ(rows[5].state, "*");

    // The name file is the master file's mirror, record for record.
    EXPECT_EQ(keys_of(t.store, Code::PRSNME, PRSNME["PN_POS_NR"]), posts);
    t.store.read_record(Code::PRSNME, 6);
    const Record& n = t.store.working(Code::PRSNME);
    EXPECT_EQ(n.text(PRSNME["PN_NAAM"]), QString::fromUtf8("MNR ANNA MÖLLER"));
    EXPECT_EQ(n.text(PRSNME["PN_VAK"], 3), "WISK");
    t.store.read_record(Code::PRSNME, 5);
    EXPECT_EQ(t.store.working(Code::PRSNME).text(PRSNME["PN_NAAM"]), "DR");

    // Subjects: one record for each post number still there, the deleted one's gone.
    EXPECT_EQ(keys_of(t.store, Code::PRSVAK, PRSVAK["PV_POS_NR"]),
              QStringList({"123", "500", "600"}));
    EXPECT_FALSE(QFile::exists(t.staff_file("prs_alg_random.new")));
    EXPECT_FALSE(QFile::exists(t.staff_file("prs_vak_random.new")));
    EXPECT_TRUE(t.store.staff_index.isEmpty());
}

TEST(Compaction, SecondRunChangesNothing) {
    StoreTree t;
    fill(t.store);
    t.store.compact_staff_files();
    QFile alg(t.staff_file("prs_alg_random.txt"));
    ASSERT_TRUE(alg.open(QIODevice::ReadOnly));
    const QByteArray once = alg.readAll();
    alg.close();
    t.store.compact_staff_files();
    ASSERT_TRUE(alg.open(QIODevice::ReadOnly));
    EXPECT_EQ(alg.readAll(), once);
}

// The process dies at the end of each step in turn. Whatever the step, a fresh start finds
// every record that the compaction keeps, and the next compaction finishes the work.
class CompactionCrash : public ::testing::TestWithParam<int> {};

TEST_P(CompactionCrash, LosesNothing) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const int step = GetParam();
    StoreTree t;
    fill(t.store);
    const std::vector<Row> before = staff_rows(t.store);

    EXPECT_EXIT(
        {
            t.store.compaction_step_done = [step](int done) {
                if (done == step) {
                    ::_exit(7);
                }
            };
            t.store.compact_staff_files();
            ::_exit(0);
        },
        ::testing::ExitedWithCode(7), "");

    // A new session on the same tree.
    korvel::ui::ScriptedDialogs dialogs;
    Store after(dialogs, korvel::platform::DriveMap::explicit_map({{"C:", t.dir.path()}}));
    after.folders = t.store.folders;
    QSet<QString> surnames;
    for (const Row& r : staff_rows(after)) {
        surnames.insert(r.surname);
    }
    for (const char* kept : {"SMIT", "JONES", "NEL", "VAN WYK", "MÖLLER"}) {
        EXPECT_TRUE(surnames.contains(QString::fromUtf8(kept))) << kept << " after step " << step;
    }
    after.compact_staff_files();
    EXPECT_EQ(staff_rows(after).size(), 6u);
    EXPECT_EQ(keys_of(after, Code::PRSVAK, PRSVAK["PV_POS_NR"]),
              QStringList({"123", "500", "600"}));
    EXPECT_GE(before.size(), 6u);
}

INSTANTIATE_TEST_SUITE_P(EachStep, CompactionCrash, ::testing::Range(1, 7));
