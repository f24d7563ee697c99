#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/codepage.h"
#include "platform/drive_map.h"
#include "platform/file_system.h"
#include "platform/winpath.h"

using korvel::platform::DriveMap;
using korvel::platform::FileSystem;
namespace winpath = korvel::winpath;

TEST(WinPath, DrivesAndParts) {
    EXPECT_EQ(winpath::drive_of("f:\\VESPARINE\\ADMIN"), "F:");
    EXPECT_EQ(winpath::drive_of("\\\\SERVER\\SHARE\\VESPARINE"), "\\\\SERVER\\SHARE");
    EXPECT_EQ(winpath::drive_of("\\\\SERVER"), "\\\\SERVER");
    EXPECT_EQ(winpath::drive_of("VESPARINE\\ADMIN"), "");
    EXPECT_EQ(winpath::join("F:\\A", "b.txt"), "F:\\A\\b.txt");
    EXPECT_EQ(winpath::join("F:\\", "b.txt"), "F:\\b.txt");
    EXPECT_EQ(winpath::parent_of("F:\\VESPARINE\\STAFF\\P2026"), "F:\\VESPARINE\\STAFF");
    EXPECT_EQ(winpath::name_of("F:\\VESPARINE\\STAFF\\P2026"), "P2026");
}

TEST(WinPath, PostNumbersAsFileNameParts) {
    EXPECT_TRUE(winpath::is_safe_file_component("A123"));
    EXPECT_TRUE(winpath::is_safe_file_component("12*3") == false);
    for (const char* bad : {"", "  ", ".", "..", "...", "..\\..", "a/b", "a\\b", "C:x", "a\nb"}) {
        EXPECT_FALSE(winpath::is_safe_file_component(QString::fromLatin1(bad))) << bad;
    }
}

TEST(DriveMap, ConfigLinesAndUnknownDrives) {
    DriveMap m = DriveMap::explicit_map({});
    const QStringList bad = m.read_config(
        "# comment\n\nF:=/srv/school\n\\\\SERVER\\SHARE=/mnt/share/\nnonsense\nQ=/x\nG:=\n"
        "\\\\..\\..=/x\n\\\\S\\..=/x\n1:=/x\n");
    EXPECT_EQ(bad,
              QStringList({"nonsense", "Q=/x", "G:=", "\\\\..\\..=/x", "\\\\S\\..=/x", "1:=/x"}));
    EXPECT_EQ(m.native_root("f:"), "/srv/school");
    EXPECT_EQ(m.native_root("\\\\server\\share"), "/mnt/share");
    EXPECT_FALSE(m.drive_exists("G:"));
    EXPECT_EQ(m.native_path("G:\\VESPARINE"), "");
    EXPECT_EQ(m.native_path("relative\\path"), "");
    EXPECT_EQ(m.native_path("F:\\VESPARINE\\ADMIN"), "/srv/school/VESPARINE/ADMIN");
    EXPECT_EQ(m.native_path("\\\\SERVER\\SHARE\\VESPARINE"), "/mnt/share/VESPARINE");
}

// Lines as network.dta, year_used.txt or the path tool could hand them on: none may lead out of
// the drive it names, whichever separator it climbs with.
TEST(DriveMap, NoPathLeavesItsDrive) {
    DriveMap m = DriveMap::below("/data");
    m.map("F:", "/srv/school");
    m.map("\\\\SERVER\\SHARE", "/mnt/share");
    const struct {
        const char* path;
        const char* native;  // blank: refused
    } cases[] = {
        {"C:\\VESPARINE/../../../x/P2026", ""},
        {"C:\\VESPARINE\\..\\..\\etc\\passwd", ""},
        {"F:/VESPARINE/../..", ""},
        {"F:\\VESPARINE\\.. \\..\\x", ""},  // Windows strips the blank: ".." climbs
        {"F:\\...\\x", ""},
        {"\\\\..\\../../x", ""},
        {"//../../x", ""},
        {"\\\\SERVER\\..\\x", ""},
        {"\\\\SERVER\\SHARE\\..\\x", ""},
        {"\\\\SERVER/SHARE/../x", ""},
        {"F:\\VESPARINE\\a\x01b", ""},
        {"F:\\VESPARINE/./ADMIN", "/srv/school/VESPARINE/ADMIN"},
        {"F:\\VESPARINE/STAFF/../ADMIN\\\\x", "/srv/school/VESPARINE/ADMIN/x"},
        {"\\\\SERVER/SHARE/VESPARINE", "/mnt/share/VESPARINE"},
        {"\\\\OTHER\\S\\X", "/data/UNC/OTHER/S/X"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(m.native_path(QString::fromLatin1(c.path)), QString::fromLatin1(c.native))
            << c.path;
    }
}

TEST(DriveMap, DefaultRootServesEveryDrive) {
    DriveMap m = DriveMap::below("/home/u/.local/share/korvel/drives");
    EXPECT_TRUE(m.drive_exists("Z:"));
    EXPECT_EQ(m.native_path("C:\\VESPARINE"), "/home/u/.local/share/korvel/drives/C/VESPARINE");
    EXPECT_EQ(m.native_path("\\\\SRV\\S\\X"), "/home/u/.local/share/korvel/drives/UNC/SRV/S/X");
}

namespace {
// An empty file at a path below the folder, its folders made.
bool make_empty_file(const QTemporaryDir& tmp, const QString& path) {
    const QString full = tmp.path() + u'/' + path;
    QFile f(full);
    return QDir().mkpath(full.left(full.lastIndexOf(u'/'))) && f.open(QIODevice::WriteOnly);
}
}  // namespace

TEST(DriveMap, FindsExistingNamesWhateverTheirCase) {
    QTemporaryDir tmp;
    ASSERT_TRUE(make_empty_file(tmp, "VESPARINE/Staff/P2026/PRS_ALG_RANDOM.TXT"));
    DriveMap m = DriveMap::explicit_map({{"F:", tmp.path()}});
    EXPECT_EQ(m.native_path("F:\\VESPARINE\\STAFF\\P2026\\prs_alg_random.txt"),
              tmp.path() + "/VESPARINE/Staff/P2026/PRS_ALG_RANDOM.TXT");
    // A name that does not exist keeps the case it was given.
    EXPECT_EQ(m.native_path("F:\\VESPARINE\\STAFF\\P2027\\New.txt"),
              tmp.path() + "/VESPARINE/Staff/P2027/New.txt");
    // Spelt as on disk, whole or but for the last name.
    EXPECT_EQ(m.native_path("F:\\VESPARINE\\Staff\\P2026\\PRS_ALG_RANDOM.TXT"),
              tmp.path() + "/VESPARINE/Staff/P2026/PRS_ALG_RANDOM.TXT");
    EXPECT_EQ(m.native_path("F:\\VESPARINE\\Staff\\P2026\\prs_alg_random.txt"),
              tmp.path() + "/VESPARINE/Staff/P2026/PRS_ALG_RANDOM.TXT");
    EXPECT_EQ(m.native_path("F:\\VESPARINE\\Staff\\P2026\\prs_alg_random.new"),
              tmp.path() + "/VESPARINE/Staff/P2026/prs_alg_random.new");
}

TEST(FileSystem, OwnNamesAreFoundInAFolderOfAnyCase) {
    QTemporaryDir tmp;
    ASSERT_TRUE(QDir(tmp.path()).mkpath("VESPARINE/Staff/~yearend.new"));
    ASSERT_TRUE(make_empty_file(tmp, "VESPARINE/Staff/~yearend.switch"));
    FileSystem fs(DriveMap::explicit_map({{"F:", tmp.path()}}));
    EXPECT_TRUE(fs.own_file_exists("F:\\VESPARINE\\STAFF\\~yearend.switch"));
    EXPECT_TRUE(fs.own_folder_exists("F:\\VESPARINE\\STAFF\\~yearend.new"));
    EXPECT_FALSE(fs.own_file_exists("F:\\VESPARINE\\STAFF\\~yearend.new"));
    EXPECT_FALSE(fs.own_folder_exists("F:\\VESPARINE\\STAFF\\P2026\\~yearend.new"));
    EXPECT_FALSE(fs.own_file_exists("G:\\VESPARINE\\~yearend.switch"));
    EXPECT_FALSE(fs.own_file_exists("F:\\VESPARINE\\..\\..\\~yearend.switch"));
}

TEST(FileSystem, CreateCopyReplace) {
    QTemporaryDir tmp;
    FileSystem fs(DriveMap::explicit_map({{"F:", tmp.path()}}));
    EXPECT_TRUE(fs.create_folder("F:\\VESPARINE\\STAFF\\P2026"));
    EXPECT_TRUE(fs.folder_exists("F:\\VESPARINE\\STAFF\\P2026"));
    EXPECT_FALSE(fs.create_folder("G:\\VESPARINE"));
    EXPECT_TRUE(fs.write_all("F:\\VESPARINE\\a.txt", "old"));
    EXPECT_TRUE(fs.write_all("F:\\VESPARINE\\a.new", "new"));
    EXPECT_TRUE(fs.replace_file("F:\\VESPARINE\\a.new", "F:\\VESPARINE\\a.txt"));
    EXPECT_FALSE(fs.file_exists("F:\\VESPARINE\\a.new"));
    EXPECT_EQ(fs.read_all("F:\\VESPARINE\\a.txt").value(), "new");
    EXPECT_TRUE(fs.copy_file("F:\\VESPARINE\\a.txt", "F:\\VESPARINE\\b.txt"));
    EXPECT_EQ(fs.file_size("F:\\VESPARINE\\b.txt"), 3);
    EXPECT_EQ(fs.file_size("F:\\VESPARINE\\none.txt"), -1);
}

TEST(Codepage, EveryByteRoundTrips) {
    QByteArray all(256, '\0');
    for (int i = 0; i < 256; ++i) {
        all[i] = static_cast<char>(i);
    }
    const QString text = korvel::cp1252::decode(all);
    ASSERT_EQ(text.size(), 256);
    EXPECT_EQ(text.at(0x80), QChar(0x20AC));  // the euro sign
    EXPECT_EQ(text.at(0xEB), QChar(0xEB));    // ë
    EXPECT_EQ(korvel::cp1252::encode(text), all);
}

// Every pair of bytes compared by sort_rank orders as their characters do (the euro sign, 0x80,
// comes after "ÿ", 0xFF).
TEST(Codepage, SortRankOrdersBytesAsTheirCharacters) {
    for (int a = 0; a < 256; ++a) {
        for (int b = 0; b < 256; ++b) {
            const char x = char(a), y = char(b);
            ASSERT_EQ(korvel::cp1252::sort_rank(uchar(a)) < korvel::cp1252::sort_rank(uchar(b)),
                      korvel::cp1252::decode(&x, 1) < korvel::cp1252::decode(&y, 1))
                << a << " " << b;
        }
    }
}

// capital_rank orders and matches bytes as their characters in capitals do; only a byte whose
// capital is two characters has none.
TEST(Codepage, CapitalRankOrdersBytesAsTheirCapitals) {
    for (int a = 0; a < 256; ++a) {
        const char x = char(a);
        const QString ca = korvel::cp1252::decode(&x, 1).toUpper();
        ASSERT_EQ(korvel::cp1252::capital_rank(uchar(a)) == 0, ca.size() != 1) << a;
        for (int b = 0; b < 256 && ca.size() == 1; ++b) {
            const char y = char(b);
            const QString cb = korvel::cp1252::decode(&y, 1).toUpper();
            if (cb.size() != 1)
                continue;
            const int ra = korvel::cp1252::capital_rank(uchar(a));
            const int rb = korvel::cp1252::capital_rank(uchar(b));
            ASSERT_EQ(ra < rb, ca < cb) << a << " " << b;
            ASSERT_EQ(ra == rb, ca == cb) << a << " " << b;
        }
    }
}

TEST(Codepage, FixedFieldsAreCutAndPadded) {
    char field[6];
    korvel::cp1252::encode_fixed(u"Hoërskool", field, 6);
    EXPECT_EQ(QByteArray(field, 6), QByteArray("Ho\xebrsk"));
    korvel::cp1252::encode_fixed(u"ab", field, 6);
    EXPECT_EQ(QByteArray(field, 6), QByteArray("ab    "));
    // A character outside the code page, even one beyond the BMP, is one "?".
    korvel::cp1252::encode_fixed(QString::fromUtf8("a\xF0\x9F\x98\x80z\xE4\xB8\xAD"), field, 6);
    EXPECT_EQ(QByteArray(field, 6), QByteArray("a?z?  "));
}

TEST(DriveMap, WindowsPathIsTheInverse) {
    DriveMap m = DriveMap::explicit_map({{"F:", "/srv/school"}});
    EXPECT_EQ(m.windows_path("/srv/school/Program Files (x86)/KORVEL/KORVEL.EXE"),
              "F:\\Program Files (x86)\\KORVEL\\KORVEL.EXE");
    EXPECT_EQ(m.windows_path("/srv/schoolyard/x"), "");
    EXPECT_EQ(m.windows_path("/elsewhere"), "");
    DriveMap d = DriveMap::below("/data");
    EXPECT_EQ(d.windows_path("/data/c/VESPARINE"), "C:\\VESPARINE");
    EXPECT_EQ(d.native_path(d.windows_path("/data/Z/a/b")), "/data/Z/a/b");
}
