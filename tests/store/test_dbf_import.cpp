#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <cstring>

#include "python_dbf.h"
#include "store/dbf_import.h"
#include "store_fixture.h"

using namespace korvel;
using korvel::store::Code;
using korvel::store::SBP;
using korvel::store::SKL;

namespace {

const char* const kTableWriter = R"(
def table(name, columns, rows, deleted=(), codepage='cp1252'):
    t = dbf.Table(folder + '/' + name, columns, codepage=codepage, dbf_type='db3')
    t.open(dbf.READ_WRITE)
    for r in rows:
        t.append(r)
    for i in deleted:
        dbf.delete(t[i])
    t.close()
)";

struct DbfTree : korvel::testing::StoreTree {
    QString school() const { return store.folders.school; }
    QString native(const QString& name) const { return store.fs().native(school() + u'\\' + name); }
    ::testing::AssertionResult tables(const char* script) {
        QDir().mkpath(native(""));
        return korvel::testing::write_dbf_tables(
            native(""), QString::fromUtf8(kTableWriter) + QString::fromUtf8(script));
    }
    QByteArray bytes(const QString& name) const {
        QFile f(native(name));
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<none>");
    }
};

// The school table in a DOS code page, its columns in another order and case than the
// record's, a memo column, an array by stem and slot, logicals true and unknown, letters in
// a number and a number too big for its field.
const char* const kSchoolTable = R"(
table('SKL_DTA', 'sd_skool C(50); NOTA M; SD_ST_3 C(3); SD_OUDSTES L; SD_TME_OUT C(6); '
      'SD_T_NR N(8,2); SD_AKA_MAX N(6,0); sd_kring C(25); SD_S_T_MAX N(4,0)',
      [('OU SKOOL', '', '', False, '', 0, 0, '', 0),
       ('HOëRSKOOL ëLAND', 'memo', 'GR8', True, '12', 1234.5, 40, 'PRETORIA', 7),
       ('TWEEDE', '', '', None, '12a', 2, 99999, '', 0)],
      deleted=[0], codepage='cp850')
)";

}  // namespace

TEST(DbfImport, SchoolTableConvertsByColumnNamesAndMovesToSave) {
    DbfTree t;
    ASSERT_TRUE(t.tables(kSchoolTable));
    t.store.fs().create_folder(t.store.folders.workstation);
    ASSERT_TRUE(t.store.open_suite_file("SKL"));
    ASSERT_EQ(t.store.count(Code::SKL), 2);
    store::Record& r = t.store.working(Code::SKL);
    t.store.read_record(Code::SKL, 1);
    EXPECT_EQ(r.text(SKL["SD_SKOOL"]), QString::fromUtf8("HOëRSKOOL ëLAND"));
    EXPECT_EQ(r.text(SKL["SD_KRING"]), "PRETORIA");
    EXPECT_EQ(r.text(SKL["SD_ST"], 3), "GR8");
    EXPECT_EQ(r.int16(SKL["SD_OUDSTES"]), -1);
    EXPECT_EQ(r.int16(SKL["SD_TME_OUT"]), 12);
    EXPECT_EQ(r.int16(SKL["SD_AKA_MAX"]), 40);
    EXPECT_EQ(r.int16(SKL["SD_S_T_MAX"]), 7);
    float single = 0;
    std::memcpy(&single, r.raw(SKL["SD_T_NR"]).constData(), 4);
    EXPECT_EQ(single, 1234.5f);
    t.store.read_record(Code::SKL, 2);
    EXPECT_EQ(r.int16(SKL["SD_OUDSTES"]), 0);  // "?"
    EXPECT_EQ(r.int16(SKL["SD_TME_OUT"]), 0);  // letters in the number
    EXPECT_EQ(r.int16(SKL["SD_AKA_MAX"]), 0);  // past a 16-bit number

    const QByteArray file = t.bytes("skl_dta_random.txt");
    EXPECT_EQ(t.bytes("SKL_DTA.dbf"), "<none>");
    EXPECT_NE(t.bytes("save\\SKL_DTA.dbf"), "<none>");
    EXPECT_EQ(QFile(t.store.fs().native(t.store.folders.workstation + "\\networklock.txt")).size(),
              9);  // #FALSE# and the line end
    t.store.open_suite_file("SKL");
    EXPECT_EQ(t.bytes("skl_dta_random.txt"), file);
    EXPECT_EQ(t.dialogs.progress_shown().size(), 1);  // the conversion, not the second open
}

TEST(DbfImport, ClassPeriodsConvertThroughTheirOlderLayoutOnce) {
    DbfTree t;
    ASSERT_TRUE(t.tables(R"(
table('s_b_prs', 'SP_GRAAD C(3); SP_KLAS C(3); SP_ONNIE C(30); SP_WEEK N(4,0); '
      'SP_SEL0 N(4,0); SP_SEL1 N(4,0); SP_SEL5 N(4,0)',
      [('8', 'A', 'SMIT', 1, 1, 2, 6), ('8', 'A', 'SMIT', 2, 7, 8, 12),
       ('9', 'B', 'JONES', 53, 3, 4, 5), ('8', 'A', 'WEG', 3, 9, 9, 9)], deleted=[3])
)"));
    ASSERT_TRUE(t.store.open_suite_file("SBP"));
    ASSERT_EQ(t.store.count(Code::SBP), 2);
    EXPECT_EQ(t.bytes("sbp2018_random.txt").size(), 3 * 52);  // the older layout, frozen
    store::Record& r = t.store.working(Code::SBP);
    t.store.read_record(Code::SBP, 1);
    EXPECT_EQ(r.text(SBP["SP_ONNIE"]), "SMIT");
    const int first[] = {1, 2, 0, 0, 0, 6, 7, 8, 0, 0, 0, 12, 0};
    for (int i = 0; i < 13; ++i) {
        EXPECT_EQ(r.int16(SBP["SP_SEL"], i), first[i]) << i;
    }
    t.store.read_record(Code::SBP, 2);
    EXPECT_EQ(r.int16(SBP["SP_SEL"], 312), 3);
    EXPECT_EQ(r.int16(SBP["SP_SEL"], 317), 5);
    const QByteArray converted = t.bytes("sbp_random.txt");
    t.store.open_suite_file("SBP");
    EXPECT_EQ(t.bytes("sbp_random.txt"), converted);
}

TEST(DbfImport, DamagedTablesReadWhatTheyHold) {
    DbfTree t;
    ASSERT_TRUE(t.tables(R"(
table('rows', 'SD_SKOOL C(20)', [('EEN',), ('TWEE',), ('DRIE',)])
)"));
    const QByteArray whole = t.bytes("rows.dbf");
    const int header = int(uchar(whole[8])) | int(uchar(whole[9])) << 8;
    QByteArray claims_more = whole;
    claims_more[4] = char(9);
    struct Case {
        const char* what;
        QByteArray bytes;
        bool table;
        int rows, missing;
    };
    const Case cases[] = {
        {"whole", whole, true, 3, 0},
        {"cut in the last row", whole.left(header + 2 * 21 + 5), true, 2, 1},
        {"claims nine rows", claims_more, true, 3, 6},
        {"header only", whole.left(header), true, 0, 3},
        {"cut in the header", whole.left(40), false, 0, 0},
        {"empty", QByteArray(), false, 0, 0},
        {"text", QByteArray(600, 'x'), false, 0, 0},
    };
    for (const Case& c : cases) {
        QStringList names;
        const store::DbfRead read =
            store::read_dbf_table(c.bytes, SKL, [&](const store::Record& r) {
                names << r.text(SKL["SD_SKOOL"]);
                return true;
            });
        EXPECT_EQ(read.is_table, c.table) << c.what;
        EXPECT_EQ(read.rows, c.rows) << c.what;
        EXPECT_EQ(names.size(), c.rows) << c.what;
        EXPECT_EQ(read.missing, c.missing) << c.what;
    }
}

TEST(DbfImport, ATableThatCannotBeReadStaysAndACutImportIsFinished) {
    {
        DbfTree t;
        QDir().mkpath(t.native(""));
        QFile f(t.native("skl_dta.dbf"));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write("not a table");
        f.close();
        t.store.open_suite_file("SKL");
        EXPECT_EQ(t.bytes("skl_dta.dbf"), "not a table");
        EXPECT_EQ(t.bytes("save\\skl_dta.dbf"), "<none>");
    }
    {  // cut after the record file took its place: the table, saved already, goes
        DbfTree t;
        ASSERT_TRUE(t.tables(kSchoolTable));
        QDir().mkpath(t.native("save"));
        QFile::copy(t.native("SKL_DTA.dbf"), t.native("save/SKL_DTA.dbf"));
        QFile f(t.native("skl_dta_random.txt"));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.close();
        t.store.open_suite_file("SKL");
        EXPECT_EQ(t.bytes("SKL_DTA.dbf"), "<none>");
        EXPECT_EQ(t.bytes("skl_dta_random.txt"), "");
    }
}
