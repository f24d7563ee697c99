#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/codepage.h"
#include "platform/process_end.h"
#include "shell/helpers.h"
#include "shell/school.h"
#include "shell/startup.h"
#include "ui/scripted_dialogs.h"

using namespace korvel;
using namespace korvel::shell;

namespace {

const QString kTree =
    "F:\\VESPARINE\\ADMIN\r\nF:\\VESPARINE\\FUNDS\\2026\r\nF:\\VESPARINE\\STOCK\\V2026\r\n"
    "F:\\VESPARINE\\STAFF\\P2026\r\nF:\\VESPARINE\\HBOOKS\r\nF:\\VESPARINE\\ROSTER\\R2026\r\n"
    "F:\\VESPARINE\\MEDIA\\B2026\r\nF:\\VESPARINE\\BUDGET\\B2026\r\n";

// A machine whose C: drive is a temporary folder, with the program installed in
// C:\Program Files (x86)\KORVEL and the date fixed at 2026-11-22.
class Machine {
  public:
    explicit Machine(bool with_path_tool = false)
        : session(dialogs, platform::DriveMap::explicit_map({{"C:", c.path()}, {"F:", f.path()}})),
          startup(session) {
        session.set_starter(starter);
        session.fixed_today = QDate(2026, 11, 22);
        session.ledger_year = "2026";
        session.executable_path = "C:\\Program Files (x86)\\KORVEL\\KORVEL.EXE";
        session.fs().create_folder("C:\\Program Files (x86)\\KORVEL");
        if (with_path_tool) {
            session.fs().create_folder("C:\\Program Files (x86)\\BRANTOK");
            session.fs().write_all("C:\\Program Files (x86)\\BRANTOK\\LINDOVER.EXE", "x");
        }
        startup.derive_program_folders();
        startup.prepare_folders();
    }
    void network(const QString& lines) {
        session.fs().write_all(startup.network_file(), cp1252::encode(lines));
    }
    void school(const QString& year, const QString& name) {
        const QString folder = "F:\\VESPARINE\\GENERAL\\G" + year;
        session.fs().create_folder(folder);
        QByteArray rec(1119, ' ');
        const QByteArray n = cp1252::encode(name);
        rec.replace(0, n.size(), n);
        session.fs().write_all(folder + "\\skl_dta_random.txt", rec);
    }
    // The demo's tree with a school of 2026, resolved.
    void resolved() {
        network(kTree);
        school("2026", "SKOOL");
        startup.resolve_folders();
    }

    QTemporaryDir c, f;
    ui::ScriptedDialogs dialogs;
    platform::RecordingProcessStarter starter;
    Session session;
    Startup startup;
};

}  // namespace

TEST(ProgramFolders, DerivedFromTheExecutable) {
    Machine m;
    const store::Folders& f = m.session.folders;
    EXPECT_EQ(f.suite_home, "C:\\Program Files (x86)");
    EXPECT_EQ(f.program, "C:\\Program Files (x86)\\KORVEL");
    EXPECT_EQ(f.workstation, "C:\\ProgramData\\VESPARINE");
    EXPECT_EQ(f.workstation_program, "C:\\ProgramData\\VESPARINE\\KORVEL");
    EXPECT_TRUE(m.session.fs().folder_exists(f.workstation_program));
    EXPECT_TRUE(m.session.fs().folder_exists("C:\\VESPARINE"));
    // Outside a Program Files folder the drive's own Program Files folder is the suite home.
    m.session.fs().create_folder("C:\\Program Files");
    m.session.executable_path = "C:\\KORVEL\\BIN\\KORVEL_B.EXE";
    m.startup.derive_program_folders();
    EXPECT_EQ(m.session.folders.suite_home, "C:\\Program Files (x86)");
    EXPECT_EQ(m.session.folders.workstation_program, "C:\\ProgramData\\VESPARINE\\KORVEL-B");
}

TEST(ResolveFolders, ReadsTheEightLinesAndTheSchool) {
    Machine m;
    m.network(kTree);
    m.school("2026", QString::fromUtf8("HOëRSKOOL DUINEVELD"));
    m.startup.resolve_folders();
    const store::Folders& f = m.session.folders;
    EXPECT_EQ(f.admin, "F:\\VESPARINE\\ADMIN");
    EXPECT_EQ(f.staff, "F:\\VESPARINE\\STAFF\\P2026");
    EXPECT_EQ(f.budget, "F:\\VESPARINE\\BUDGET\\B2026");
    EXPECT_EQ(f.general_year, "F:\\VESPARINE\\GENERAL\\G2026");
    EXPECT_EQ(f.school, f.general_year);
    EXPECT_TRUE(m.dialogs.shown().isEmpty());
    ASSERT_TRUE(m.startup.splash_check_school_file());
    EXPECT_EQ(m.session.school.name, QString::fromUtf8("HOëRSKOOL DUINEVELD"));
    EXPECT_EQ(m.session.school.initials, "HD");
}

TEST(ResolveFolders, NoNetworkFileAndNoPathTool) {
    Machine m;
    EXPECT_THROW(m.startup.resolve_folders(), ProcessEnd);
    EXPECT_TRUE(m.dialogs.last_text().startsWith("LAAI EN INSTALLEER ASB DIE NUUTSTE KOPIE"));
    // The defaults for the program folder's drive were written first, eight lines.
    const QString written = cp1252::decode(*m.session.fs().read_all(m.startup.network_file()));
    EXPECT_EQ(written.split("\r\n", Qt::SkipEmptyParts).size(), 8);
    EXPECT_TRUE(written.startsWith("C:\\VESPARINE\\ADMIN\r\nC:\\VESPARINE\\FUNDS\\2026\r\n"));
}

TEST(ResolveFolders, NoNetworkFileStartsThePathTool) {
    Machine m(true);
    m.school("2026", "SKOOL");
    // The tool writes the defaults' tree on C:, which resolves.
    m.startup.resolve_folders();
    ASSERT_FALSE(m.starter.started().isEmpty());
    EXPECT_TRUE(m.starter.started().first().program.endsWith("BRANTOK/LINDOVER.EXE"));
    EXPECT_EQ(m.session.folders.admin, "C:\\VESPARINE\\ADMIN");
}

TEST(ResolveFolders, OneLevelTooDeepIsSaidInEnglish) {
    Machine m;
    m.session.afrikaans = true;
    m.network("F:\\ADMIN\r\n");
    EXPECT_THROW(m.startup.resolve_folders(), ProcessEnd);
    ASSERT_GE(m.dialogs.texts().size(), 2);
    EXPECT_TRUE(
        m.dialogs.texts().at(0).startsWith("YOUR NETWORK MAPPING IS ONE LEVEL TOO DEEP!!\n\n"));
    EXPECT_TRUE(m.dialogs.texts().at(0).endsWith("DRIVE F: / M: or Z:!!"));
}

TEST(ResolveFolders, WithoutAdminTheSuiteFolderIsMadeAndTheProcessEnds) {
    Machine m;
    m.network("F:\\VESPARINE\\STUFF\r\n");
    EXPECT_THROW(m.startup.resolve_folders(), ProcessEnd);
    EXPECT_EQ(m.dialogs.last_text(), "SKAKEL ASB TANDRIL");
    EXPECT_TRUE(m.session.fs().folder_exists("F:\\VESPARINE\\ADMIN"));
}

TEST(ResolveFolders, UnmappedStaffDriveAndShortOrGarbledFiles) {
    Machine m;
    m.session.afrikaans = false;
    m.network("F:\\VESPARINE\\ADMIN\r\n\r\n\r\nQ:\\VESPARINE\\STAFF\\P2026\r\n");
    EXPECT_THROW(m.startup.resolve_folders(), ProcessEnd);
    EXPECT_TRUE(
        m.dialogs.texts().contains("NETWORK DRIVE  Q:  FOR 'STAFF' NOT AVAILABLE ...\n\nCONTACT "
                                   "YOUR NETWORK ADMINISTRATOR !"));

    // Fewer than eight lines: the staff folder takes its default on the admin folder's drive.
    Machine short_file;
    short_file.network("F:\\VESPARINE\\ADMIN");
    short_file.startup.resolve_folders();
    EXPECT_EQ(short_file.session.folders.staff, "F:\\VESPARINE\\STAFF\\P2026");

    // Garbage: a first line of control bytes is no path, so the defaults are written.
    Machine garbage;
    garbage.session.fs().write_all(garbage.startup.network_file(), QByteArray("\x01\x02\0\xff", 4));
    EXPECT_THROW(garbage.startup.resolve_folders(), ProcessEnd);
    EXPECT_TRUE(garbage.dialogs.last_text().startsWith("LAAI EN INSTALLEER"));
}

TEST(ResolveFolders, RoundsAreCountedPerResolution) {
    // Folder changes on the menu resolve again and again; none of them ends the program.
    Machine m(true);
    m.network(kTree);
    m.school("2026", "SKOOL");
    for (int change = 0; change < 60; ++change) {
        ASSERT_NO_THROW(m.startup.resolve_folders()) << change;
    }
    // A tree that never resolves still ends, the path tool offered at each round.
    m.network("F:\\ADMIN\r\n");
    m.starter.clear();
    EXPECT_THROW(m.startup.resolve_folders(), ProcessEnd);
    EXPECT_EQ(m.starter.started().size(), 50);
}

TEST(ResolveFolders, AnOldYearIsLeftAlone) {
    Machine m;
    m.session.ledger_year = "2023";
    m.session.folders.staff = "X";
    m.startup.resolve_folders();
    EXPECT_EQ(m.session.folders.staff, "X");
    EXPECT_TRUE(m.dialogs.shown().isEmpty());
}

TEST(ResolveFolders, BlankSchoolFallsBackToAnEarlierYear) {
    Machine m;
    m.network(kTree);
    m.school("2026", "");
    m.school("2024", "SKOOL");
    m.session.fs().create_folder("F:\\VESPARINE\\GENERAL\\G2012");
    m.startup.resolve_folders();
    EXPECT_EQ(m.session.folders.general_year, "F:\\VESPARINE\\GENERAL\\G2024");
    EXPECT_EQ(m.session.ledger_year, "2024");

    // Never before 2013, never more than ten years back.
    Machine far;
    far.network(kTree);
    far.school("2026", "");
    far.session.fs().create_folder("F:\\VESPARINE\\GENERAL\\G2012");
    far.startup.resolve_folders();
    EXPECT_EQ(far.session.folders.general_year, "F:\\VESPARINE\\GENERAL\\G2026");
    EXPECT_EQ(far.session.ledger_year, "2016");
}

TEST(Language, ReadWriteAndUnreadableFiles) {
    Machine m;
    m.session.afrikaans = false;
    m.startup.write_language();
    EXPECT_EQ(*m.session.fs().read_all(m.startup.language_file()), "#FALSE#\r\n");
    m.session.afrikaans = true;
    m.startup.read_language();
    EXPECT_FALSE(m.session.afrikaans);
    for (const QByteArray& bad : {QByteArray(), QByteArray("garbage"), QByteArray("\"x\"")}) {
        m.session.fs().write_all(m.startup.language_file(), bad);
        m.session.afrikaans = true;
        m.startup.read_language();
        EXPECT_TRUE(m.session.afrikaans) << bad.constData();
    }
}

TEST(LedgerYear, YearUsedMovesTheStaffFolderOnlyBackwards) {
    Machine m;
    m.resolved();
    m.session.fs().write_all(m.startup.year_used_file(), "2025\r\n");
    m.session.fs().create_folder(m.session.folders.staff);
    m.session.fs().write_all(m.session.folders.staff + "\\old.NTX", "x");
    const QString kept = m.session.fs().native(m.session.folders.staff + "\\kept.SVE");
    m.session.fs().write_all(m.session.folders.staff + "\\kept.SVE", "x");
    QFile::setPermissions(kept, QFileDevice::ReadOwner | QFileDevice::ReadUser);
    EXPECT_EQ(m.startup.settle_ledger_year(), "F:\\VESPARINE\\STAFF\\P2025");
    EXPECT_EQ(m.session.ledger_year, "2025");
    EXPECT_EQ(m.session.folders.roster, "F:\\VESPARINE\\ROSTER\\R2025");
    EXPECT_FALSE(m.session.fs().file_exists("F:\\VESPARINE\\STAFF\\P2026\\old.NTX"));
    EXPECT_TRUE(QFile::exists(kept));  // read-only leftovers stay
    EXPECT_TRUE(m.session.is_open(store::Code::PRSALG));
    // A line that is no year means the calendar year.
    for (const char* no_year : {"garbage", "-123", "0000", "+202", "20/.."}) {
        m.session.fs().write_all(m.startup.year_used_file(), no_year);
        EXPECT_EQ(m.startup.settle_ledger_year(), "F:\\VESPARINE\\STAFF\\P2026") << no_year;
    }
}

TEST(School, ProvinceFixUpAndEmptyRecord) {
    Machine m;
    m.resolved();
    const QString skl_file = "F:\\VESPARINE\\GENERAL\\G2026\\skl_dta_random.txt";
    QByteArray rec = *m.session.fs().read_all(skl_file);
    rec.replace(538, 1, "5");  // the old province text: 5 is KwaZulu-Natal
    m.session.fs().write_all(skl_file, rec);
    m.session.open_suite_file("SKL", m.session.folders.school);
    fix_province(m.session);
    EXPECT_EQ(m.session.school.province_code, "KN");
    EXPECT_EQ(m.session.school.province_name, "KWA-ZULU NATAL");
    EXPECT_EQ(m.session.school.province_index, 5);
    EXPECT_EQ(m.session.fs().read_all(skl_file)->mid(239, 2), "KN");
    // The school boolean: false stays, a value that is no boolean (blanks) is written as true.
    const struct {
        const char *stored, *written, *flag;  // two bytes each
    } booleans[] = {{"\0\0", "\0\0", "A"}, {"  ", "\xff\xff", "D"}};
    for (const auto& b : booleans) {
        QByteArray skl = rec;
        skl.replace(455, 2, QByteArray(b.stored, 2));
        m.session.fs().write_all(skl_file, skl);
        m.session.open_suite_file("SKL", m.session.folders.school);
        ASSERT_TRUE(load_school_record(m.session));
        EXPECT_EQ(m.session.school.school_flag, b.flag);
        EXPECT_EQ(m.session.fs().read_all(skl_file)->mid(455, 2), QByteArray(b.written, 2));
    }
    // A school file of length 0: nothing to read, nothing crashes, the flag counts as true.
    m.session.fs().write_all(skl_file, "");
    EXPECT_TRUE(load_school_record(m.session));
    EXPECT_EQ(m.session.school.name, "");
    EXPECT_EQ(m.session.school.school_flag, "D");
}

TEST(Names, UpperAndProper) {
    EXPECT_EQ(upper_name(QString::fromUtf8("hoërskool duineveld")),
              QString::fromUtf8("HOëRSKOOL DUINEVELD"));
    EXPECT_EQ(upper_name("Hoerskool Paarl"), QString::fromUtf8("HOëRSKOOL PAARL"));
    EXPECT_EQ(upper_name(QString::fromUtf8("straße")), QString::fromUtf8("STRAßE"));
    EXPECT_EQ(proper_name("  F:\\VESPARINE\\STAFF  "), "F:\\Vesparine\\Staff");
    EXPECT_EQ(proper_name("hoerskool jan-van_riebeeck"),
              QString::fromUtf8("Hoërskool Jan-Van_Riebeeck"));
}
