#include <gtest/gtest.h>

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <vector>

#include "store/record_file.h"

using korvel::store::record_count_of;
using korvel::store::RecordFile;

TEST(RecordCount, RoundsHalfToEven) {
    EXPECT_EQ(record_count_of(0, 50), 0);
    EXPECT_EQ(record_count_of(49, 50), 1);   // 0.98
    EXPECT_EQ(record_count_of(25, 50), 0);   // 0.5 -> 0
    EXPECT_EQ(record_count_of(75, 50), 2);   // 1.5 -> 2
    EXPECT_EQ(record_count_of(125, 50), 2);  // 2.5 -> 2
    EXPECT_EQ(record_count_of(124, 50), 2);  // 2.48
    EXPECT_EQ(record_count_of(126, 50), 3);  // 2.52
    EXPECT_EQ(record_count_of(qint64(40000) * 26, 26), 32767);
}

class RecordFileTest : public ::testing::Test {
  protected:
    QString path(const QString& name) const { return dir.path() + u'/' + name; }
    QTemporaryDir dir;
};

TEST_F(RecordFileTest, SharedOpenCreatesReadOnlyNever) {
    EXPECT_EQ(RecordFile::open(path("none.txt"), 26, RecordFile::Access::ReadOnly), nullptr);
    EXPECT_FALSE(QFileInfo::exists(path("none.txt")));
    auto f = RecordFile::open(path("new.txt"), 26, RecordFile::Access::Shared);
    ASSERT_NE(f, nullptr);
    EXPECT_EQ(f->count(), 0);
    EXPECT_TRUE(QFileInfo::exists(path("new.txt")));
    auto ro = RecordFile::open(path("new.txt"), 26, RecordFile::Access::ReadOnly);
    ASSERT_NE(ro, nullptr);
    char rec[26] = {};
    EXPECT_FALSE(ro->write(1, rec));
}

TEST_F(RecordFileTest, AppendsAtCountPlusOneAndReadsPastTheEndAsNul) {
    auto f = RecordFile::open(path("a.txt"), 4, RecordFile::Access::Shared);
    ASSERT_TRUE(f->write(1, "AAAA"));
    ASSERT_TRUE(f->write(f->count() + 1, "BBBB"));
    EXPECT_EQ(f->count(), 2);
    char rec[4];
    ASSERT_TRUE(f->read(2, rec));
    EXPECT_EQ(QByteArray(rec, 4), "BBBB");
    ASSERT_TRUE(f->read(9, rec));
    EXPECT_EQ(QByteArray(rec, 4), QByteArray(4, '\0'));
    EXPECT_FALSE(f->read(0, rec));
    // A write past the end leaves a gap of NULs that reads as records.
    ASSERT_TRUE(f->write(5, "EEEE"));
    EXPECT_EQ(f->count(), 5);
    ASSERT_TRUE(f->read(4, rec));
    EXPECT_EQ(QByteArray(rec, 4), QByteArray(4, '\0'));
}

TEST_F(RecordFileTest, PartialLastRecordIsReadWithNulTail) {
    QFile raw(path("odd.txt"));
    ASSERT_TRUE(raw.open(QIODevice::WriteOnly));
    raw.write("AAAABBB");  // 1.75 records: counts as 2
    raw.close();
    auto f = RecordFile::open(path("odd.txt"), 4, RecordFile::Access::ReadOnly);
    ASSERT_EQ(f->count(), 2);
    std::vector<QByteArray> seen;
    ASSERT_TRUE(f->scan(1, f->count(), [&](int, const char* r) {
        seen.emplace_back(r, 4);
        return true;
    }));
    ASSERT_EQ(seen.size(), 2u);
    EXPECT_EQ(seen[1], QByteArray("BBB\0", 4));
}

TEST_F(RecordFileTest, ScanCrossesBlocksAndStops) {
    // Records of 1000 bytes: a block holds 1048 of them, so 3000 records take three blocks.
    auto f = RecordFile::open(path("big.txt"), 1000, RecordFile::Access::Shared);
    std::vector<char> rec(1000);
    for (int n = 1; n <= 3000; ++n) {
        std::snprintf(rec.data(), rec.size(), "%06d", n);
        ASSERT_TRUE(f->write(n, rec.data()));
    }
    int visited = 0;
    bool in_order = true;
    f->scan(1, 3000, [&](int n, const char* r) {
        in_order = in_order && QByteArray(r, 6).toInt() == n;
        ++visited;
        return true;
    });
    EXPECT_TRUE(in_order);
    EXPECT_EQ(visited, 3000);
    visited = 0;
    f->scan(1, 3000, [&](int n, const char*) {
        ++visited;
        return n < 1500;
    });
    EXPECT_EQ(visited, 1500);
}
