#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QProcess>
#include <QTemporaryDir>

#include "shell/folders.h"
#include "store/folder_switch.h"
#include "ui/scripted_dialogs.h"
#include "yearend/staff_export.h"
#include "yearend/workbook_rows.h"
#include "yearend/year_choice.h"
#include "yearend/year_end.h"

using namespace korvel;
using korvel::store::PRSALG;
using korvel::testing::workbook_rows;

namespace {

struct Killed {};

// Every file and folder below a root, by relative path.
QMap<QString, QByteArray> snapshot(const QString& root) {
    QMap<QString, QByteArray> tree;
    QDirIterator it(root, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        QFile f(path);
        tree[path.mid(root.size())] = it.fileInfo().isDir()
                                          ? QByteArray("<folder>")
                                          : (f.open(QIODevice::ReadOnly), f.readAll());
    }
    return tree;
}

// A staff year of 2026 on drive C: with three people, attendance, an old index file and a
// remarks subfolder; optionally a 2027 that already holds files.
struct YearTree {
    explicit YearTree(bool with_target = false)
        : session(dialogs, platform::DriveMap::explicit_map({{"C:", tmp.path()}})) {
        session.folders = shell::default_folders("C:", "2026");
        session.ledger_year = "2026";
        session.fixed_today = QDate(2026, 11, 20);
        write_year(session.folders.staff, 10);
        put("VESPARINE/STAFF/P2026/prs_afw_random.txt", "attendance 2026");
        put("VESPARINE/STAFF/P2026/PRS_ALG.NTX", "index");
        put("VESPARINE/STAFF/P2026/opmerkings/personeel_opmerkings.00001", "remark");
        if (with_target) {
            write_year("C:\\VESPARINE\\STAFF\\P2027", 20);
            put("VESPARINE/STAFF/P2027/prs_afw_random.txt", "attendance 2027");
            put("VESPARINE/STAFF/P2027/own.txt", "only in 2027");
        }
        session.close_file(store::Code::PRSALG);
    }
    void write_year(const QString& folder, int years) {
        session.open_file(store::Code::PRSALG, folder);
        store::Record& r = session.working(store::Code::PRSALG);
        for (int i = 1; i <= 3; ++i) {
            r.clear();
            r.set_text(PRSALG["PA_POS_NR"], QString("0000%1").arg(i));
            r.set_int16(PRSALG["PO_JRE_SKL"], years + i);
            r.set_int16(PRSALG["PO_JRE_OND"], i == 2 ? 0 : 4);
            r.set_text(PRSALG["PA_AKTIEF"], i == 3 ? "*" : "");
            session.append_record(store::Code::PRSALG);
        }
    }
    void put(const QString& relative, const QByteArray& bytes) {
        const QString path = tmp.path() + "/" + relative;
        QDir().mkpath(QFileInfo(path).path());
        QFile f(path);
        f.open(QIODevice::WriteOnly);
        f.write(bytes);
    }
    QString native(const QString& relative) const { return tmp.path() + "/" + relative; }
    // The years of school of each record of a year's staff file.
    std::vector<int> school_years(const QString& year) {
        std::vector<int> years;
        session.open_file(store::Code::PRSALG, "C:\\VESPARINE\\STAFF\\P" + year);
        session.scan_records(store::Code::PRSALG, [&](int, store::Record& r) {
            years.push_back(r.int16(PRSALG["PO_JRE_SKL"]));
        });
        session.close_file(store::Code::PRSALG);
        return years;
    }
    // The closing to 2027; answer: the option when the question comes (0 overwrite).
    bool close_year(int answer = 0, const QString& to = "2027") {
        yearend::YearEnd form(session);
        form.file_operation = fault;
        form.form_load();
        form.nuwe_jaar = to;
        form.evj_ok_click();
        asked = form.byvoeg_oorskryf_visible;
        if (asked) {
            form.bo_opsie = answer;
            form.bo_ok_click();
        }
        return form.completed;
    }

    QTemporaryDir tmp;
    ui::ScriptedDialogs dialogs;
    shell::Session session;
    std::function<bool(int)> fault;
    bool asked = false;
};

}  // namespace

TEST(YearOfService, OnlyTheHighestLevelAndNumberedEntriesMove) {
    struct Case {
        const char* name;
        std::vector<std::pair<const char*, int>> levels;
        const char* moved;  // the level that goes up; blank: none
    };
    const Case cases[] = {
        {"only BTE", {{"PO_JRE_BTE", 5}}, ""},
        {"HF over the rest", {{"PO_JRE_HF", 1}, {"PO_JRE_DPT", 3}, {"PO_JRE_OND", 9}}, "PO_JRE_HF"},
        {"DPT over OND", {{"PO_JRE_DPT", 2}, {"PO_JRE_OND", 9}}, "PO_JRE_DPT"},
        {"OND alone", {{"PO_JRE_OND", 9}}, "PO_JRE_OND"},
    };
    for (const Case& c : cases) {
        store::Record r(PRSALG);
        r.clear();
        for (const auto& [field, value] : c.levels) {
            r.set_int16(*PRSALG.find(field), value);
        }
        store::Record before = r;
        ASSERT_FALSE(yearend::add_year_of_service(r)) << c.name;
        EXPECT_EQ(r.int16(PRSALG["PO_JRE_SKL"]), 1) << c.name;
        EXPECT_EQ(r.int16(PRSALG["PO_JRE_PRV"]), 1) << c.name;
        for (const char* level :
             {"PO_JRE_BTE", "PO_JRE_OND", "PO_JRE_DPT", "PO_JRE_A_H", "PO_JRE_SAH", "PO_JRE_HF"}) {
            const store::Field& f = *PRSALG.find(level);
            EXPECT_EQ(r.int16(f), before.int16(f) + (QString(level) == c.moved ? 1 : 0))
                << c.name << " " << level;
        }
    }
    // Subjects, activities and posts by the number their text starts with.
    store::Record r(PRSALG);
    r.clear();
    r.set_text(PRSALG["PO_VAK"], "12 WISK", 1);
    r.set_text(PRSALG["PO_VAK"], "ENGLISH", 2);
    r.set_text(PRSALG["PO_AKT"], " 3RUGBY", 5);
    r.set_text(PRSALG["PO_PLK"], "0", 1);
    r.set_int16(PRSALG["PO_OND"], 4, 2);
    ASSERT_FALSE(yearend::add_year_of_service(r));
    EXPECT_EQ(r.int16(PRSALG["PO_VJR"], 1), 1);
    EXPECT_EQ(r.int16(PRSALG["PO_VJR"], 2), 0);
    EXPECT_EQ(r.int16(PRSALG["PO_BJR"], 5), 1);
    EXPECT_EQ(r.int16(PRSALG["PO_PJR"], 1), 0);
    EXPECT_EQ(r.int16(PRSALG["PO_OND"], 2), 5);
    EXPECT_EQ(r.int16(PRSALG["PO_OND"], 1), 0);
}

TEST(YearEnd, ANewYearIsMadeWithoutAQuestion) {
    YearTree t;
    const QByteArray from_before =
        snapshot(t.native("VESPARINE/STAFF/P2026")).value("/prs_alg_random.txt");
    ASSERT_TRUE(t.close_year());
    EXPECT_FALSE(t.asked);
    EXPECT_EQ(t.school_years("2027"), (std::vector<int>{12, 13, 14}));  // inactive too
    const auto to = snapshot(t.native("VESPARINE/STAFF/P2027"));
    EXPECT_EQ(to.value("/opmerkings/personeel_opmerkings.00001"), "remark");
    EXPECT_FALSE(to.contains("/prs_afw_random.txt"));
    EXPECT_FALSE(to.contains("/PRS_ALG.NTX"));
    // The from year stays as it was, less its old index files.
    const auto from = snapshot(t.native("VESPARINE/STAFF/P2026"));
    EXPECT_EQ(from.value("/prs_alg_random.txt"), from_before);
    EXPECT_TRUE(from.contains("/prs_afw_random.txt"));
    EXPECT_FALSE(from.contains("/PRS_ALG.NTX"));
    EXPECT_EQ(t.dialogs.last_text(), "EINDE-VAN-DIE-JAAR PERSONEEL VOLTOOI ...");
    EXPECT_EQ(t.session.ledger_year, "2026");
}

TEST(YearEnd, OverwriteReplacesTheTargetAndLosesItsAttendance) {
    YearTree t(true);
    ASSERT_TRUE(t.close_year(0));
    EXPECT_TRUE(t.asked);
    EXPECT_EQ(t.school_years("2027"), (std::vector<int>{12, 13, 14}));
    const auto to = snapshot(t.native("VESPARINE/STAFF/P2027"));
    EXPECT_FALSE(to.contains("/prs_afw_random.txt"));
    EXPECT_EQ(to.value("/own.txt"), "only in 2027");
    EXPECT_EQ(to.value("/opmerkings/personeel_opmerkings.00001"), "remark");
}

TEST(YearEnd, AppendTwiceAddsTwoYearsAndCopiesNothing) {
    YearTree t(true);
    ASSERT_TRUE(t.close_year(1));
    ASSERT_TRUE(t.close_year(1));
    EXPECT_EQ(t.school_years("2027"), (std::vector<int>{23, 24, 25}));
    const auto to = snapshot(t.native("VESPARINE/STAFF/P2027"));
    EXPECT_EQ(to.value("/prs_afw_random.txt"), "attendance 2027");
    EXPECT_FALSE(to.contains("/opmerkings"));
    EXPECT_FALSE(snapshot(t.native("VESPARINE/STAFF")).contains("/~yearend.new"));
}

TEST(YearEnd, EveryOccurrenceOfTheYearInThePathIsReplaced) {
    YearTree t;
    t.session.folders.staff = "C:\\DATA2026\\P2026";
    t.write_year(t.session.folders.staff, 10);
    t.session.close_file(store::Code::PRSALG);
    ASSERT_TRUE(t.close_year());
    EXPECT_TRUE(QFile::exists(t.native("DATA2027/P2027/prs_alg_random.txt")));
}

TEST(YearEnd, BadYearsAndTargetsChangeNothing) {
    for (const char* to : {"", "20 25", "99999", "2026", "..\\..", "2O27"}) {
        YearTree t(true);
        const auto before = snapshot(t.tmp.path());
        EXPECT_FALSE(t.close_year(0, to)) << to;
        EXPECT_EQ(t.dialogs.texts().size(), 1) << to;
        EXPECT_EQ(snapshot(t.tmp.path()), before) << to;
    }
    YearTree t;
    t.put("VESPARINE/STAFF/P2027", "a file");
    const auto before = snapshot(t.tmp.path());
    EXPECT_FALSE(t.close_year());
    EXPECT_TRUE(t.dialogs.last_text().contains("IS 'N LêER"))
        << t.dialogs.last_text().toStdString();
    EXPECT_EQ(snapshot(t.tmp.path()), before);
}

TEST(YearEnd, ACounterAtItsLimitStopsBeforeAnythingChanges) {
    YearTree t(true);
    t.session.open_file(store::Code::PRSALG, t.session.folders.staff);
    t.session.read_record(store::Code::PRSALG, 2);
    t.session.working(store::Code::PRSALG).set_int16(PRSALG["PO_OND"], 32767, 3);
    t.session.write_record(store::Code::PRSALG, 2);
    t.session.close_file(store::Code::PRSALG);
    const auto before = snapshot(t.tmp.path());
    EXPECT_FALSE(t.close_year(0));
    EXPECT_TRUE(t.dialogs.last_text().contains("PO_OND(3)")) << t.dialogs.last_text().toStdString();
    EXPECT_TRUE(t.dialogs.last_text().contains("00002"));
    EXPECT_EQ(snapshot(t.tmp.path()), before);
}

// For every N the N-th file operation fails or the process ends there; once what was cut
// short is settled, the tree is byte for byte the one before or the one after.
TEST(YearEnd, ACrashAtAnyFileOperationLeavesTheTreeWhollyOldOrNew) {
    for (const int answer : {0, 1}) {
        YearTree done(true);
        const auto old_tree = snapshot(done.tmp.path());
        int operations = 0;
        done.fault = [&](int n) { return operations = n, true; };
        ASSERT_TRUE(done.close_year(answer));
        const auto new_tree = snapshot(done.tmp.path());
        ASSERT_NE(old_tree, new_tree);
        for (const bool kill : {false, true}) {
            int old_seen = 0, new_seen = 0;
            for (int n = 1; n <= operations; ++n) {
                YearTree t(true);
                t.fault = [&](int at) {
                    if (at == n && kill) {
                        throw Killed{};
                    }
                    return at != n;
                };
                try {
                    t.close_year(answer);
                } catch (const Killed&) {
                }
                store::settle_folder_switch(t.session.fs(), "C:\\VESPARINE\\STAFF\\P2027");
                const auto tree = snapshot(t.tmp.path());
                EXPECT_TRUE(tree == old_tree || tree == new_tree)
                    << (answer ? "append" : "overwrite") << (kill ? " killed" : " failed")
                    << " at operation " << n;
                old_seen += tree == old_tree;
                new_seen += tree == new_tree;
            }
            // The switch is one step: cut before it the year stays old, after it new.
            EXPECT_GT(old_seen, 2);
            EXPECT_GT(new_seen, 0);
        }
    }
}

TEST(YearEnd, AnotherWorkstationOpeningTheYearLeavesALiveClosingAlone) {
    YearTree t(true);
    const QString target = "C:\\VESPARINE\\STAFF\\P2027";
    bool staging_kept = true;
    t.fault = [&](int n) {
        if (n == 4) {  // the new folder is being filled: another workstation opens the year
            store::settle_folder_switch(t.session.fs(), target);
            staging_kept = QFileInfo::exists(t.native("VESPARINE/STAFF/~yearend.new"));
        }
        return true;
    };
    ASSERT_TRUE(t.close_year(0));
    EXPECT_TRUE(staging_kept);
    EXPECT_EQ(t.school_years("2027"), (std::vector<int>{12, 13, 14}));
    // Once the closing has let go, what a crash leaves is settled again.
    t.put("VESPARINE/STAFF/~yearend.new/prs_alg_random.txt", "half");
    store::settle_folder_switch(t.session.fs(), target);
    EXPECT_FALSE(QFileInfo::exists(t.native("VESPARINE/STAFF/~yearend.new")));
}

TEST(YearChoice, WritesTheGradeYearFileMovesTheFoldersAndHandsOnToTheMenu) {
    YearTree t;
    QStringList changes;
    t.put("VESPARINE/ADMIN/graad_jaar.txt", "GR12\r\n2026\r\n");
    QDir().mkpath(t.native("VESPARINE/STAFF/P2025"));
    yearend::YearChoice choice(t.session, [&](const QString& y) { changes << y; });
    choice.form_load();
    EXPECT_EQ(choice.rekords_jaar_lys, QStringList({"2025", "2026", "2027"}));
    EXPECT_EQ(choice.selected, 1);
    choice.rekords_jaar_lys_dbl_click(0);
    EXPECT_EQ(changes, QStringList({"2025"}));
    EXPECT_EQ(t.session.folders.staff, "C:\\VESPARINE\\STAFF\\P2025");
    EXPECT_EQ(t.session.folders.roster, "C:\\VESPARINE\\ROSTER\\R2025");
    EXPECT_EQ(*t.session.fs().read_all("C:\\VESPARINE\\ADMIN\\graad_jaar.txt"), "GR12\r\n2025\r\n");
    // A missing file gets a blank first line; no year or 0 is the calendar year.
    QFile::remove(t.native("VESPARINE/ADMIN/graad_jaar.txt"));
    choice.choose("0");
    EXPECT_EQ(*t.session.fs().read_all("C:\\VESPARINE\\ADMIN\\graad_jaar.txt"), "\r\n2026\r\n");
    EXPECT_EQ(changes.last(), "2026");
}

TEST(StaffExport, ActiveStaffSortedTextIntactAndTheTildeShift) {
    YearTree t;
    t.session.open_file(store::Code::PRSALG, t.session.folders.staff);
    const char* names[] = {"", "VISSER", "ABRAHAMS", "COETZEE"};
    for (int i = 1; i <= 3; ++i) {
        t.session.read_record(store::Code::PRSALG, i);
        store::Record& r = t.session.working(store::Code::PRSALG);
        r.set_text(PRSALG["PA_VAN"], names[i]);
        r.set_text(PRSALG["PA_ID_NR"], QString("800101500908%1").arg(i));
        r.set_date(PRSALG["PA_G_DATUM"], QDate(1980, 1, i));
        r.set_text(PRSALG["PA_N_VAN"], i == 2 ? "DU~TOIT" : "");
        r.set_text(PRSALG["PA_PERSAL"], "0012345");
        t.session.write_record(store::Code::PRSALG, i);
    }
    t.session.open_file(store::Code::PRSLURITS, t.session.folders.staff);
    store::Record& lurits = t.session.working(store::Code::PRSLURITS);
    lurits.clear();
    lurits.set_text(store::PRSLURITS["LU_ID_NR"], "8001015009081");
    lurits.set_text(store::PRSLURITS["LU_NR"], "123456789");
    t.session.append_record(store::Code::PRSLURITS);
    t.session.close_file(store::Code::PRSLURITS);

    const QString file = t.tmp.filePath("staff.xlsx");
    t.put("staff.xlsx", "an older export");
    t.dialogs.choose(file);
    yearend::StaffExport form(t.session);
    form.form_load();
    ASSERT_TRUE(form.uitvoer_velde_visible);
    ASSERT_EQ(form.personeel_lys.size(), 2u);        // the inactive third is left out
    EXPECT_EQ(form.personeel_lys[0].post, "00002");  // ABRAHAMS before VISSER
    for (const int field : {0, 5, 6, 8, 9, 52}) {
        form.uitvoer_velde_click(field);
    }
    form.uitvoer_velde_ok_click();
    EXPECT_EQ(t.dialogs.last_text(), "UITVOER VOLTOOI ....");
    EXPECT_EQ(workbook_rows(file).join('\n').toStdString(),
              "POSNOMMER|NOOIENSVAN|PERSAL NOMMER|ID-NOMMER|GEBOORTEDATUM|LURITS_NR\n"
              // "DU~TOIT" takes two columns and moves the rest one along
              "00002|DU|TOIT|-|8001015009082|-\n"
              "00001|-|0012345|8001015009081|1980.01.01|123456789");
    EXPECT_TRUE(form.unloaded);
}

TEST(StaffExport, AnotherYearIsTheFormsOnlyAndALockedFileIsAMessage) {
    YearTree t(true);
    t.dialogs.choose(t.tmp.filePath("staff.xlsx"));
    {
        yearend::StaffExport form(t.session);
        form.form_load();
        form.rekords_jaar_lys_dbl_click(int(form.rekords_jaar_lys.indexOf("2027")));
        EXPECT_EQ(t.session.folder_of(store::Code::PRSALG), "C:\\VESPARINE\\STAFF\\P2027");
        // What cannot be replaced stands in the file's place.
        form.target_file = t.tmp.filePath("locked.xlsx");
        t.put("locked.xlsx/inside", "");
        form.uitvoer_velde_alt_down(0);
        form.uitvoer_velde_click(0);
        form.uitvoer_velde_ok_click();
        EXPECT_TRUE(t.dialogs.last_text().contains("locked.xlsx"));
        EXPECT_FALSE(form.unloaded);
    }
    EXPECT_EQ(t.session.folder_of(store::Code::PRSALG), "C:\\VESPARINE\\STAFF\\P2026");
}
