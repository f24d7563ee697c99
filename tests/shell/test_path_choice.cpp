#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/drive_map.h"
#include "shell/path_choice.h"

using korvel::shell::apply_path_choice;

namespace {
QString read(const QString& path) {
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? QString::fromLatin1(f.readAll()) : QString();
}
}  // namespace

TEST(PathChoice, MapsTheDriveAndWritesTheEightLines) {
    QTemporaryDir tmp;
    const QString conf = tmp.path() + "/conf/drives.conf";
    QDir().mkpath(tmp.path() + "/conf");
    QFile old(conf);
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    old.write("F:=/somewhere/else\nG:=/kept\n");
    old.close();
    QDir().mkpath(tmp.path() + "/server");
    QDir().mkpath(tmp.path() + "/c");
    // The workstation drive C: lies in the configuration too.
    ASSERT_EQ(apply_path_choice({"C:", tmp.path() + "/c", "2026"}, conf, "C:", false), "");
    ASSERT_EQ(apply_path_choice({"f:", tmp.path() + "/server", "2026"}, conf, "C:", false), "");
    const QString lines = read(conf);
    EXPECT_TRUE(lines.contains("G:=/kept"));
    EXPECT_FALSE(lines.contains("/somewhere/else"));
    EXPECT_TRUE(lines.contains("F:=" + tmp.path() + "/server"));
    EXPECT_EQ(
        read(tmp.path() + "/c/ProgramData/VESPARINE/network.dta"),
        "F:\\VESPARINE\\ADMIN\r\nF:\\VESPARINE\\FUNDS\\2026\r\nF:\\VESPARINE\\STOCK\\V2026\r\n"
        "F:\\VESPARINE\\STAFF\\P2026\r\nF:\\VESPARINE\\HBOOKS\r\n"
        "F:\\VESPARINE\\ROSTER\\R2026\r\nF:\\VESPARINE\\MEDIA\\B2026\r\n"
        "F:\\VESPARINE\\BUDGET\\B2026\r\n");
}

TEST(PathChoice, RefusesWhatCannotBeUsed) {
    QTemporaryDir tmp;
    const QString conf = tmp.path() + "/drives.conf";
    EXPECT_EQ(apply_path_choice({"FF", tmp.path(), "2026"}, conf, "C:", false),
              "INVALID DRIVE: FF");
    EXPECT_EQ(apply_path_choice({"F:", tmp.path() + "/none", "2026"}, conf, "C:", true),
              "DIE GIDS  " + tmp.path() + "/none  BESTAAN NIE!");
    // Nothing the tool writes may climb out of its drive or add a line of its own.
    const struct {
        korvel::shell::PathChoice choice;
        QString problem;
    } refused[] = {
        {{"F:", tmp.path(), "2026/../../x"}, "INVALID YEAR: 2026/../../x"},
        {{"F:", tmp.path(), "-123"}, "INVALID YEAR: -123"},
        {{"\\\\..\\..", tmp.path(), "2026"}, "INVALID DRIVE: \\\\..\\.."},
        {{"\\\\SERVER\\SHARE\\..", tmp.path(), "2026"}, "INVALID DRIVE: \\\\SERVER\\SHARE\\.."},
        {{"F:\\..", tmp.path(), "2026"}, "INVALID DRIVE: F:\\.."},
        {{"F:", tmp.path() + "\nC:=/", "2026"},
         "THE FOLDER  " + tmp.path() + "\nC:=/  DOES NOT EXIST!"},
    };
    for (const auto& r : refused) {
        EXPECT_EQ(apply_path_choice(r.choice, conf, "C:", false), r.problem)
            << r.choice.drive.toStdString();
    }
    EXPECT_FALSE(QFile::exists(conf));
}
