#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>
#include <QDir>
#include <QFile>
#include <QSet>
#include <thread>

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

// What a compaction may leave in the staff folder only while it runs.
QStringList leftovers(const StoreTree& t) {
    const QString staff = t.store.fs().native(t.store.folders.staff);
    return QDir(staff).entryList({"*.new", "*.lock", "*.rmlock"},
                                 QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot);
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
    EXPECT_EQ(leftovers(t), QStringList());
    EXPECT_TRUE(t.store.staff_index.isEmpty());

    // A second run changes nothing.
    const QByteArray once = t.staff_bytes("prs_alg_random.txt");
    t.store.compact_staff_files();
    EXPECT_EQ(t.staff_bytes("prs_alg_random.txt"), once);
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
    // The dead process's lock is taken over and its ".new" files cleared away.
    EXPECT_EQ(after.compact_staff_files(), Compaction::Done);
    EXPECT_EQ(leftovers(t), QStringList());
    EXPECT_EQ(staff_rows(after).size(), 6u);
    EXPECT_EQ(keys_of(after, Code::PRSVAK, PRSVAK["PV_POS_NR"]),
              QStringList({"123", "500", "600"}));
    EXPECT_GE(before.size(), 6u);
}

INSTANTIATE_TEST_SUITE_P(EachStep, CompactionCrash, ::testing::Range(1, 7));

// Two processes close the register on one staff folder at the same moment, many times over,
// one of them now and then slowed down in the middle of its writing. Whoever wins, the master
// file ends with every record a compaction keeps, and the loser skips without touching it.
TEST(CompactionRace, TwoProcessesNeverLoseARecord) {
    constexpr int kTrials = 30;
    int skipped = 0;
    for (int trial = 0; trial < kTrials; ++trial) {
        StoreTree t;
        ASSERT_TRUE(t.store.open_staff_file());
        for (int i = 0; i < 400; ++i) {
            add_staff(t.store, QString::number(1000 + i), QStringLiteral("S%1").arg(i),
                      i % 10 == 0 ? QStringLiteral("D") : QString());
        }
        t.store.close_file(Code::PRSALG);
        pid_t children[2];
        for (int c = 0; c < 2; ++c) {
            children[c] = ::fork();
            if (children[c] == 0) {
                korvel::ui::ScriptedDialogs dialogs;
                Store s(dialogs, korvel::platform::DriveMap::explicit_map({{"C:", t.dir.path()}}));
                s.folders = t.store.folders;
                if (trial % 2 == 1 && c == 0) {
                    s.compaction_step_done = [](int step) {
                        if (step == 3) {
                            std::this_thread::sleep_for(std::chrono::milliseconds(30));
                        }
                    };
                }
                const Compaction done = s.compact_staff_files();
                ::_exit(done == Compaction::Done ? 0 : done == Compaction::Skipped ? 3 : 1);
            }
        }
        int outcomes[2];
        for (int c = 0; c < 2; ++c) {
            int status = 0;
            ::waitpid(children[c], &status, 0);
            outcomes[c] = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        }
        ASSERT_TRUE((outcomes[0] == 0 || outcomes[0] == 3) &&
                    (outcomes[1] == 0 || outcomes[1] == 3))
            << "trial " << trial;
        EXPECT_TRUE(outcomes[0] == 0 || outcomes[1] == 0) << "trial " << trial;
        skipped += (outcomes[0] == 3) + (outcomes[1] == 3);
        EXPECT_EQ(QFile(t.staff_file("prs_alg_random.txt")).size(), 360 * PRSALG.record_length)
            << "trial " << trial;
        EXPECT_EQ(QFile(t.staff_file("prs_nme_random.txt")).size(), 360 * PRSNME.record_length)
            << "trial " << trial;
        EXPECT_EQ(leftovers(t), QStringList()) << "trial " << trial;
    }
    EXPECT_GT(skipped, 0);  // the slowed trials at least met the lock
}

// Where a compaction cannot do its work whole it says so, and every file stays as it was.
TEST(Compaction, StopsWithAMessageAndChangesNothing) {
    const struct {
        const char* what;
        std::function<void(StoreTree&)> arrange;
        QString message;  // %1: the staff folder
    } cases[] = {
        // The count is capped at 32,767: the rest would not be read, and so not written.
        {"40,000 staff records",
         [](StoreTree& t) {
             QFile(t.staff_file("prs_alg_random.txt")).resize(qint64(40000) * PRSALG.record_length);
         },
         "FILE  %1\\prs_alg_random.txt  HAS MORE THAN 32767 RECORDS ... REQUEST DENIED!"},
        {"40,000 subject records",
         [](StoreTree& t) {
             QFile(t.staff_file("prs_vak_random.txt")).resize(qint64(40000) * PRSVAK.record_length);
         },
         "FILE  %1\\prs_vak_random.txt  HAS MORE THAN 32767 RECORDS ... REQUEST DENIED!"},
        {"a folder where a leftover new file would be",
         [](StoreTree& t) { QDir().mkpath(t.staff_file("prs_alg_random.new")); },
         "CANNOT REMOVE  %1\\prs_alg_random.new  !"},
        {"a new file cut short under the writer",
         [](StoreTree& t) {
             t.store.compaction_step_done = [&t](int step) {
                 if (step != 4) {
                     return;
                 }
                 const QString staff = t.store.fs().native(t.store.folders.staff);
                 for (const QString& n : QDir(staff).entryList({"prs_alg_random*.new"})) {
                     QFile f(staff + "/" + n);
                     f.resize(f.size() - PRSALG.record_length);
                 }
             };
         },
         "CANNOT WRITE  %1\\prs_alg_random.%2.new  !"},
    };
    for (const auto& c : cases) {
        StoreTree t;
        t.store.afrikaans = false;
        fill(t.store);
        c.arrange(t);
        const QByteArray master = t.staff_bytes("prs_alg_random.txt");
        const QByteArray subjects = t.staff_bytes("prs_vak_random.txt");
        EXPECT_EQ(t.store.compact_staff_files(), Compaction::Stopped) << c.what;
        const QString said = t.dialogs.last_text();
        const QString expected = c.message.arg(t.store.folders.staff);
        if (expected.contains("%2")) {
            EXPECT_TRUE(said.startsWith(expected.section("%2", 0, 0)) &&
                        said.endsWith(expected.section("%2", 1)))
                << c.what << ": " << said.toStdString();
        } else {
            EXPECT_EQ(said, expected) << c.what;
        }
        EXPECT_EQ(t.staff_bytes("prs_alg_random.txt"), master) << c.what;
        EXPECT_EQ(t.staff_bytes("prs_vak_random.txt"), subjects) << c.what;
    }
}

// The subject file's own rebuild refuses such a file too.
TEST(Compaction, SubjectRebuildRefusesAFilePastTheLimit) {
    StoreTree t;
    t.store.afrikaans = false;
    ASSERT_TRUE(t.store.open_staff_file());
    t.store.close_file(Code::PRSVAK);
    QFile(t.staff_file("prs_vak_random.txt")).resize(qint64(40000) * PRSVAK.record_length);
    t.store.rebuild_subject_file();
    EXPECT_TRUE(t.dialogs.last_text().endsWith("HAS MORE THAN 32767 RECORDS ... REQUEST DENIED!"));
    EXPECT_EQ(QFile(t.staff_file("prs_vak_random.txt")).size(),
              qint64(40000) * PRSVAK.record_length);
}
