#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "store/upgrades.h"
#include "store_fixture.h"

using namespace korvel;
using korvel::store::Code;
using korvel::store::PRSAFW;

namespace {

struct UpgradeTree : korvel::testing::StoreTree {
    UpgradeTree() { QDir().mkpath(staff_file("")); }
    void put(const QString& name, const QByteArray& bytes) {
        QFile f(staff_file(name));
        f.open(QIODevice::WriteOnly);
        f.write(bytes);
    }
    QByteArray get(const QString& name) {
        QFile f(staff_file(name));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<none>");
    }
    void date(const QString& name, const QDateTime& when) {
        QFile f(staff_file(name));
        f.open(QIODevice::ReadWrite);
        f.setFileTime(when, QFileDevice::FileModificationTime);
    }
};

}  // namespace

TEST(Upgrades, AddressFileGrowsOnceAndKeepsItsFirst63Bytes) {
    UpgradeTree t;
    QByteArray old;
    for (int i = 1; i <= 2; ++i) {
        old += QByteArray("0000") + char('0' + i) + QByteArray(57, 'x') + char('0' + i);
    }
    t.put("prs_add_random.txt", old);
    ASSERT_TRUE(t.store.open_file(Code::PRSADD));
    EXPECT_EQ(t.store.count(Code::PRSADD), 2);
    EXPECT_EQ(t.get("prs_add_2016_random.txt"), old);
    const QByteArray now = t.get("prs_add_random.txt");
    ASSERT_EQ(now.size(), 2 * 195);
    EXPECT_EQ(now.mid(195, 63), old.mid(63, 63));  // the teaching level at byte 63 too
    t.store.open_file(Code::PRSADD);
    EXPECT_EQ(t.get("prs_add_random.txt"), now);
}

TEST(Upgrades, EmptyAndMissingFilesAndAConversionLeftHalfDone) {
    {  // an empty file: an empty frozen copy and an empty file
        UpgradeTree t;
        t.put("prs_add_random.txt", "");
        t.store.open_file(Code::PRSADD);
        EXPECT_EQ(t.get("prs_add_2016_random.txt"), "");
        EXPECT_EQ(t.get("prs_add_random.txt"), "");
    }
    {  // a frozen copy without its live file: an empty file, no upgrade
        UpgradeTree t;
        t.put("prs_add_2016_random.txt", QByteArray(63, 'a'));
        t.store.open_file(Code::PRSADD);
        EXPECT_EQ(t.get("prs_add_random.txt"), "");
    }
    {  // cut after the frozen copy: the converted file waiting beside goes in at the next open
        UpgradeTree t;
        t.put("prs_add_random.txt", QByteArray(63, 'o'));
        t.put("prs_add_2016_random.txt", QByteArray(63, 'o'));
        t.put("prs_add_random.txt.new", QByteArray(195, 'n'));
        t.store.open_file(Code::PRSADD);
        EXPECT_EQ(t.get("prs_add_random.txt"), QByteArray(195, 'n'));
        EXPECT_EQ(t.get("prs_add_random.txt.new"), "<none>");
    }
    {  // a file whose length only the new record fits is left alone
        UpgradeTree t;
        t.put("prs_add_random.txt", QByteArray(195 * 2, 'n'));
        t.store.open_file(Code::PRSADD);
        EXPECT_EQ(t.get("prs_add_random.txt"), QByteArray(195 * 2, 'n'));
    }
}

TEST(Upgrades, AttendanceOf2015ConvertsOnceByTerms) {
    UpgradeTree t;
    t.store.ledger_year = "2015";
    QByteArray old = "00007";
    for (int g = 0; g < 3; ++g) {
        old += QByteArray(120, char('a' + g));
    }
    for (int g = 0; g < 3; ++g) {
        old += QByteArray(240, char('A' + g));
    }
    old[5 + 119] = 'z';            // last day of term 1
    old[5 + 360 + 240 + 0] = '0';  // first reason of term 2
    old[5 + 360 + 240 + 1] = '7';
    t.put("prs_afw_random.txt", old);
    ASSERT_TRUE(t.store.open_file(Code::PRSAFW));
    store::Record& r = t.store.working(Code::PRSAFW);
    t.store.read_record(Code::PRSAFW, 1);
    EXPECT_EQ(r.text(PRSAFW["PF_POS_NR"]), "00007");
    EXPECT_EQ(r.text(PRSAFW["PF_DAG"], 120), "z");
    EXPECT_EQ(r.text(PRSAFW["PF_DAG"], 121), "b");
    EXPECT_EQ(r.text(PRSAFW["PF_REDE"], 121), "07");
    EXPECT_EQ(r.text(PRSAFW["PF_REDE"], 360), "CC");
    // Slots outside the three terms stand as in a new record.
    for (const int slot : {0, 361, 370}) {
        EXPECT_EQ(r.text(PRSAFW["PF_DAG"], slot), ".");
        EXPECT_EQ(r.text(PRSAFW["PF_REDE"], slot), "..");
    }
    const QByteArray converted = t.get("prs_afw_random.txt");
    t.store.open_file(Code::PRSAFW);
    EXPECT_EQ(t.get("prs_afw_random.txt"), converted);
    EXPECT_EQ(t.get("prs_afw_2014_random.txt"), old);
}

TEST(Upgrades, AttendanceConvertedInErrorComesBackInItsYear) {
    UpgradeTree t;
    t.put("prs_afw_random.txt", QByteArray(1118, 'n'));
    t.put("prs_afw_2014_random.txt", QByteArray(1118, 'o'));
    t.date("prs_afw_2014_random.txt", QDateTime(QDate(2025, 6, 1), QTime(8, 0)));
    t.store.open_file(Code::PRSAFW);  // frozen in another year: stays
    EXPECT_EQ(t.get("prs_afw_random.txt"), QByteArray(1118, 'n'));
    t.date("prs_afw_2014_random.txt", QDateTime(QDate(2026, 2, 1), QTime(8, 0)));
    t.store.open_file(Code::PRSAFW);
    EXPECT_EQ(t.get("prs_afw_random.txt"), QByteArray(1118, 'o'));
    EXPECT_EQ(t.get("prs_afw_2014_random.txt"), "<none>");
}

TEST(Upgrades, SubjectFilesWrittenBeforeTheCutOffAreDropped) {
    struct Case {
        QDateTime written;
        bool dropped;
    };
    const Case cases[] = {
        {QDateTime(QDate(2017, 4, 17), QTime(23, 59)), true},
        {QDateTime(QDate(1970, 1, 1), QTime(0, 0), Qt::UTC), true},
        {QDateTime(QDate(2017, 4, 18), QTime(0, 1)), false},
    };
    for (const Case& c : cases) {
        UpgradeTree t;
        t.put("prs_vak_random.txt", QByteArray(1160, 's'));
        t.date("prs_vak_random.txt", c.written);
        t.store.open_file(Code::PRSVAK);
        EXPECT_EQ(t.get("prs_vak_random.txt").size(), c.dropped ? 0 : 1160)
            << c.written.toString().toStdString();
    }
}
