// The year-end commands of korvel-cli on the demo tree, as a shell script would run them.

#include <gtest/gtest.h>

#include <QDate>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "app/cli.h"
#include "app/cli_run.h"

using korvel::app::run_cli;

namespace {

struct Demo {
    Demo() {
        QString out, err;
        QTextStream o(&out), e(&err);
        demo_made = run_cli({"demo", tmp.path()}, o, e) == 0;
    }
    korvel::testing::CliRun cli(QStringList args) {
        args << "--drive"
             << "C:=" + tmp.path();
        return korvel::testing::cli_run(args);
    }
    QString native(const QString& relative) const { return tmp.path() + "/" + relative; }

    QTemporaryDir tmp;
    bool demo_made = false;
    const QString year = QString::number(QDate::currentDate().year());
    const QString next = QString::number(QDate::currentDate().year() + 1);
};

}  // namespace

TEST(CliYearEnd, ANewYearWithoutQuestionThenTheQuestionUntilAnOptionIsGiven) {
    Demo d;
    ASSERT_TRUE(d.demo_made);
    const auto first = d.cli({"year-end", "--from", d.year, "--to", d.next});
    ASSERT_EQ(first.code, 0) << first.err.toStdString();
    EXPECT_TRUE(QFileInfo::exists(d.native("VESPARINE/STAFF/P" + d.next + "/prs_alg_random.txt")));

    const auto asked = d.cli({"year-end", "--from", d.year, "--to", d.next});
    EXPECT_NE(asked.code, 0);
    EXPECT_TRUE(asked.err.contains("Wil u die inligting oorskryf of byvoeg ?"))
        << asked.err.toStdString();
    EXPECT_TRUE(asked.out.isEmpty());
    EXPECT_EQ(d.cli({"year-end", "--from", d.year, "--to", d.next, "--append"}).code, 0);
}

TEST(CliYearEnd, ChoosingTheLegacyYearConvertsItsFilesAndExportRefusesUnknownFields) {
    Demo d;
    ASSERT_TRUE(d.demo_made);
    const QString legacy = "2014";  // the demo's legacy year
    const auto used = d.cli({"use-year", legacy});
    ASSERT_EQ(used.code, 0) << used.err.toStdString();
    EXPECT_TRUE(used.out.contains("ledger year: " + legacy));
    // The staff files convert as the year is chosen.
    EXPECT_TRUE(
        QFileInfo::exists(d.native("VESPARINE/STAFF/P" + legacy + "/prs_afw_2014_random.txt")));
    // So do the school tables of its general year folder, which no later start opens.
    const QString general = "VESPARINE/GENERAL/G" + legacy + "/";
    EXPECT_TRUE(QFileInfo::exists(d.native(general + "skl_dta_random.txt")));
    EXPECT_TRUE(QFileInfo::exists(d.native(general + "save/s_b_prs.dbf")));
    EXPECT_FALSE(QFileInfo::exists(d.native(general + "skl_dta.dbf")));
    d.cli({"use-year", d.year});

    const QString book = d.native("staff.xlsx");
    const auto exported = d.cli({"export", "--year", d.year, "--fields", "all", "--xlsx", book});
    ASSERT_EQ(exported.code, 0) << exported.err.toStdString();
    EXPECT_GT(QFileInfo(book).size(), 0);
    EXPECT_EQ(d.cli({"export", "--year", d.year, "--fields", "NO_SUCH", "--xlsx", book}).code, 2);
}

TEST(CliYearEnd, UpgradeConvertsTheLegacyYearOnce) {
    Demo d;
    ASSERT_TRUE(d.demo_made);
    const auto upgraded = d.cli({"upgrade"});
    ASSERT_EQ(upgraded.code, 0) << upgraded.err.toStdString();
    for (const char* line :
         {"prs_add_random.txt: 63 to 195", "prs_afw_random.txt: 1085 to 1118",
          "prs_vak_random.txt: dropped", "skl_dta.dbf: 1 rows into skl_dta_random.txt",
          "s_b_prs.dbf: 20 rows into sbp_random.txt", "sbp_random.txt: 52 to 672"}) {
        EXPECT_TRUE(upgraded.out.contains(line)) << line << "\n" << upgraded.out.toStdString();
    }
    EXPECT_FALSE(upgraded.out.contains("P" + d.year));
    const auto again = d.cli({"upgrade"});
    EXPECT_EQ(again.code, 0);
    EXPECT_TRUE(again.out.isEmpty()) << again.out.toStdString();
}
