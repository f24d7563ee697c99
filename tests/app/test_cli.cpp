#include <gtest/gtest.h>

#include <QDate>
#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include "app/cli.h"
#include "app/cli_dump.h"
#include "app/cli_run.h"
#include "store/record_layouts.h"

using korvel::app::run_cli;

namespace {

using korvel::testing::CliRun;

CliRun cli(const QStringList& args) {
    return korvel::testing::cli_run(args);
}

}  // namespace

TEST(Cli, DumpColumnsFollowTheTable) {
    const QStringList cols = korvel::app::dump_columns(korvel::store::PRSVAK);
    EXPECT_EQ(cols.first(), "PV_POS_NR");
    EXPECT_EQ(cols.at(1), "PV_VAK(0,0)");
    EXPECT_EQ(cols.at(12), "PV_VAK(0,1)");  // the first index runs fastest
    EXPECT_EQ(cols.last(), "PV_JR4(10)");
}

TEST(Cli, DemoThenDumpAndCompact) {
    QTemporaryDir tmp;
    const CliRun demo = cli({"demo", tmp.path()});
    ASSERT_EQ(demo.code, 0) << demo.err.toStdString();
    const QString year = QString::number(QDate::currentDate().year());
    const QString staff = tmp.path() + "/VESPARINE/STAFF/P" + year;

    const CliRun csv = cli({"dump", "PRSALG", "--folder", staff});
    ASSERT_EQ(csv.code, 0);
    const QStringList lines = csv.out.split('\n', Qt::SkipEmptyParts);
    EXPECT_TRUE(lines.first().startsWith("record,PA_POS_NR,PA_AKTIEF,PA_VAN,PA_NAME,"));
    EXPECT_EQ(lines.size(), 41);  // the heading and forty staff

    const CliRun json = cli({"dump", "skl", "--folder", tmp.path() + "/VESPARINE/GENERAL/G" + year,
                             "--format", "json"});
    ASSERT_EQ(json.code, 0);
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(json.out.toUtf8(), &error);
    ASSERT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    const QJsonObject school = doc.array().at(0).toObject();
    EXPECT_EQ(school.value("SD_SKOOL").toString(), QString::fromUtf8("HOëRSKOOL DUINEVELD"));
    EXPECT_EQ(school.value("SD_ST").toArray().size(), 21);

    const CliRun compact = cli({"compact", "--folder", staff});
    ASSERT_EQ(compact.code, 0) << compact.err.toStdString();
    EXPECT_TRUE(compact.out.contains("staff records before: 40"));
    EXPECT_TRUE(compact.out.contains("staff records after: 39"));  // the deleted one is gone
}

TEST(Cli, DumpNeverCreatesAndFailsClearly) {
    QTemporaryDir tmp;
    const CliRun missing = cli({"dump", "PRSALG", "--folder", tmp.path()});
    EXPECT_NE(missing.code, 0);
    EXPECT_TRUE(missing.err.contains("no such file"));
    EXPECT_TRUE(QDir(tmp.path()).isEmpty());
    EXPECT_EQ(cli({"dump", "NOPE", "--folder", tmp.path()}).code, 2);
    EXPECT_EQ(cli({"dump", "PRSALG", "--folder", tmp.path() + "/none"}).code, 1);
    EXPECT_EQ(cli({"frobnicate"}).code, 2);
}

TEST(Cli, SubjectsListTheCodesOfTheSuiteHome) {
    QTemporaryDir tmp;
    ASSERT_EQ(cli({"demo", tmp.path()}).code, 0);
    const CliRun en = cli({"subjects", "list", "--drive", "C:=" + tmp.path(), "--lang", "en"});
    ASSERT_EQ(en.code, 0) << en.err.toStdString();
    const QStringList lines = en.out.split('\n', Qt::SkipEmptyParts);
    EXPECT_EQ(lines.first(), "1010,10,Afrikaans Home Language");
    EXPECT_EQ(lines.last(), "9010,R,Children's world");
    const CliRun af = cli({"subjects", "list", "--drive", "C:=" + tmp.path(), "--lang", "af"});
    EXPECT_TRUE(af.out.startsWith("1010,10,Afrikaans Huistaal\n"));
    EXPECT_EQ(cli({"subjects", "list", "--lang", "de"}).code, 2);
}

TEST(Cli, SubjectsRebuildOnTheDemoTree) {
    QTemporaryDir tmp;
    ASSERT_EQ(cli({"demo", tmp.path()}).code, 0);
    qputenv("KORVEL_EXE", "C:\\Program Files (x86)\\KORVEL\\KORVEL.EXE");
    const QStringList drive = {"--drive", "C:=" + tmp.path()};

    const CliRun merge = cli(QStringList{"subjects", "rebuild"} + drive);
    ASSERT_EQ(merge.code, 0) << merge.err.toStdString();
    EXPECT_TRUE(merge.out.contains("grades: 11 12\n"));
    EXPECT_TRUE(merge.out.contains("records added: 1\n"));  // the post only the learners know
    const CliRun again = cli(QStringList{"subjects", "rebuild"} + drive);
    EXPECT_TRUE(again.out.contains("subjects added: 0\n"));

    const CliRun recreate = cli(QStringList{"subjects", "rebuild", "--recreate"} + drive);
    ASSERT_EQ(recreate.code, 0) << recreate.err.toStdString();
    EXPECT_TRUE(recreate.out.contains("subject records: 22\n"));  // the teachers, and no one else
    EXPECT_EQ(cli({"subjects", "rebuild", "--drive"}).code, 2);
}
