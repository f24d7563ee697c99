#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <unordered_map>

#include "platform/codepage.h"
#include "store/field_bytes.h"
#include "store/record.h"
#include "store/record_layouts.h"
#include "store/store.h"

using namespace korvel::store;

TEST(Layouts, KnownOffsetsAndArrays) {
    EXPECT_EQ(PRSALG["PA_REQV"].offset, 187);
    EXPECT_EQ(PRSALG["PO_PJR"].element_offset(5), 4101);
    EXPECT_EQ(PRSVAK["PV_VAK"].dim1, 11);
    // First index fastest: cell (i, j) of the 11 by 6 grid.
    EXPECT_EQ(PRSVAK["PV_VAK"].element_offset(Record::grid_index(PRSVAK["PV_VAK"], 3, 2)),
              5 + 8 * (3 + 11 * 2));
    EXPECT_EQ(PRSAFW["PF_REDE"].element_offset(370), 376 + 740);
    EXPECT_EQ(layout_by_code("BHRLGM")->record_length, 1077);
    EXPECT_EQ(layout_by_code("NOPE"), nullptr);
}

TEST(Layouts, RunningFieldNumbersSkipSlotZero) {
    // 77 single fields and 24 arrays whose slots from 1 count: 247 numbers.
    int numbers = 0;
    for (const Field& f : PRSALG.fields) {
        numbers += f.count == 1 ? 1 : f.count - 1;
    }
    EXPECT_EQ(numbers, kStaffFieldNumbers);
    EXPECT_EQ(staff_field_by_number(1)->field->name, "PA_POS_NR");
    EXPECT_EQ(staff_field_by_number(51)->field->name, "PM_F_KNR");
    EXPECT_EQ(staff_field_by_number(52)->field->name, "PL_KIND");
    EXPECT_EQ(staff_field_by_number(52)->index, 1);
    EXPECT_EQ(staff_field_by_number(56)->index, 5);
    EXPECT_EQ(staff_field_by_number(57)->field->name, "PL_GDTM");
    EXPECT_EQ(staff_field_by_number(247)->field->name, "PO_PJR");
    EXPECT_EQ(staff_field_by_number(247)->index, 5);
    EXPECT_FALSE(staff_field_by_number(0));
    EXPECT_FALSE(staff_field_by_number(248));
    EXPECT_EQ(member_field_by_number(49)->field->offset, 823);
    EXPECT_FALSE(member_field_by_number(50));
}

TEST(Record, TextIsCleanedAndPadded) {
    Record r(PRSALG);
    const Field& van = PRSALG["PA_VAN"];
    EXPECT_EQ(r.raw_text(van), QString(30, u' '));
    r.set_text(van, QString::fromUtf8("Coetzée"));
    EXPECT_EQ(r.text(van), QString::fromUtf8("Coetzée"));
    EXPECT_EQ(QByteArray(r.data() + van.offset, 8), QByteArray("Coetz\xe9"
                                                               "e "));
    r.set_text(van, QString(40, u'X'));
    EXPECT_EQ(r.text(van).size(), 30);
    // A field never written starts with NUL and reads blank, whatever follows.
    std::memset(r.data() + van.offset, 0, 30);
    r.data()[van.offset + 3] = 'Z';
    EXPECT_EQ(r.text(van), "");
    // Leading blanks stay until the trimming idiom puts the field left.
    r.set_text(van, "  SMIT");
    EXPECT_EQ(r.text(van), "  SMIT");
    EXPECT_EQ(r.trim_text(van), "SMIT");
    EXPECT_EQ(r.raw_text(van).left(5), "SMIT ");
}

TEST(Record, TextDropsTheBlanksAndNulsThatPadTheField) {
    using namespace std::literals;
    Record r(PRSALG);
    const Field& van = PRSALG["PA_VAN"];
    // The padding is passed over eight bytes at a time: runs of it longer than that, inside
    // and at the end, blanks and NULs mixed within a run of eight.
    const struct {
        std::string_view bytes;
        const char* text;
    } cases[] = {
        {"AB"sv, "AB"},
        {"A         B"sv, "A         B"},
        {"ABCDEFGH \0 \0 \0 \0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0"sv, "ABCDEFGH"},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZ1234"sv, "ABCDEFGHIJKLMNOPQRSTUVWXYZ1234"},
        {" "sv, ""},
    };
    for (const auto& c : cases) {
        std::memset(r.data() + van.offset, ' ', 30);
        std::memcpy(r.data() + van.offset, c.bytes.data(), c.bytes.size());
        EXPECT_EQ(r.text(van), QString::fromLatin1(c.text)) << c.bytes;
    }
}

TEST(Record, TrimmedBytesDecodeAsTheTrimmedText) {
    using namespace std::literals;
    for (int b = 0; b < 256; ++b)
        EXPECT_EQ(is_white_byte(char(b)), QChar(korvel::cp1252::to_char(uchar(b))).isSpace()) << b;
    Record r(PRSALG);
    const Field& van = PRSALG["PA_VAN"];
    // Blanks, tabs and no-break spaces at either end; NULs inside or after them; a leading NUL;
    // the ellipsis byte, which is no space in this code page.
    for (std::string_view bytes :
         {"  SMIT \t"sv,
          "\xa0"
          "DU\0PLOOY\xa0 \0"sv,
          "AB\0\t"sv, "\0ZZ"sv, "\t \xa0"sv, "\x85X\x85"sv, "VAN DER MERWE"sv}) {
        std::memset(r.data() + van.offset, ' ', 30);
        std::memcpy(r.data() + van.offset, bytes.data(), bytes.size());
        const std::string_view b = trimmed_bytes(r.data(), van);
        EXPECT_EQ(korvel::cp1252::decode(b.data(), qsizetype(b.size())), r.text(van).trimmed())
            << bytes;
    }
    // Fields of every width the lists read, their last character at each place, behind it a
    // mix of blanks and NULs, before it a character or padding: the end is found in whichever
    // eight-byte word holds it.
    for (const Field* field : {&PRSALG["PA_GESLAG"], &PRSALG["PA_POS_NR"], &PRSALG["PA_ID_NR"],
                               &PRSALG["PA_VAN"], &PRSALG["PK_GRDE"]}) {
        const Field& f = *field;
        const std::string name(f.name);
        const int at = f.count > 2 ? 2 : 0;
        for (int last = -1; last < f.width; ++last) {  // -1: padding only
            for (const char c : {'X', '\x80', '\xa0', '\t', '\xff'}) {
                for (const char before : {'A', ' ', '\0'}) {
                    char* p = r.data() + f.element_offset(at);
                    for (int i = 0; i < f.width; ++i)
                        p[i] = i < last ? (i == 0 ? 'S' : before) : (i % 3 == 1 ? '\0' : ' ');
                    if (last >= 0)
                        p[last] = c;
                    // Worked out on the characters: the padding dropped one at a time.
                    QString expected = r.raw_text(f, at);
                    while (expected.endsWith(u' ') || expected.endsWith(QChar(0)))
                        expected.chop(1);
                    const std::string_view b = text_bytes(r.data(), f, at);
                    EXPECT_EQ(korvel::cp1252::decode(b.data(), qsizetype(b.size())), expected)
                        << name << " " << last << " " << int(c) << " " << int(before);
                    const std::string_view t = trimmed_bytes(r.data(), f, at);
                    EXPECT_EQ(korvel::cp1252::decode(t.data(), qsizetype(t.size())),
                              expected.trimmed())
                        << name << " " << last << " " << int(c) << " " << int(before);
                }
            }
        }
    }
}

// Two posts have one capital_key exactly when the staff index takes them for one: over every
// text of one and two bytes, and the sharp s that is two capitals.
TEST(Record, CapitalKeyMatchesTheIndexKey) {
    std::vector<std::string> texts = {"\xdf\xdf\xdf", "SSSSSS", "sSs\xdfS", "12A", "12a"};
    for (int a = 0; a < 256; ++a) {
        texts.emplace_back(1, char(a));
        for (int b = 0; b < 256; ++b)
            texts.push_back({char(a), char(b)});
    }
    std::unordered_map<std::string, QString> index_of_key;
    QHash<QString, std::string> key_of_index;
    for (std::string t : texts) {
        // Keys are made of trimmed bytes.
        while (!t.empty() && is_white_byte(t.back()))
            t.pop_back();
        while (!t.empty() && is_white_byte(t.front()))
            t.erase(0, 1);
        const std::string key = capital_key(t);
        const QString index =
            Store::index_key(korvel::cp1252::decode(t.data(), qsizetype(t.size())));
        const auto [at, added] = index_of_key.emplace(key, index);
        ASSERT_EQ(at->second, index) << t;
        ASSERT_EQ(key_of_index.value(index, key), key) << t;
        key_of_index.insert(index, key);
    }
}

// Keys that share a slot, or differ only in a trailing NUL, still get their own text, however
// often they come back; a key asked again at once is not made again.
TEST(Record, RecentTextsHandEachKeyItsOwnText) {
    RecentTexts<4> texts;
    int made = 0;
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 40; ++i) {
            const std::string key = std::to_string(i % 20) + std::string(size_t(i / 20), '\0');
            for (int again = 0; again < 2; ++again) {
                const QString& text = texts.text(key, [&] {
                    ++made;
                    return QString::number(i);
                });
                ASSERT_EQ(text, QString::number(i)) << i;
            }
        }
    }
    EXPECT_EQ(made, 3 * 40);
}

TEST(Record, Int16OverflowLeavesTheFieldAlone) {
    Record r(PRSALG);
    const Field& salary = PRSALG["PB_SALARIS"];
    EXPECT_TRUE(r.set_int16(salary, -2));
    EXPECT_EQ(QByteArray(r.data() + salary.offset, 2), QByteArray("\xfe\xff", 2));
    EXPECT_TRUE(r.set_int16(salary, 32767));
    EXPECT_FALSE(r.set_int16(salary, 40000));
    EXPECT_FALSE(r.set_int16(salary, -32769));
    EXPECT_EQ(r.int16(salary), 32767);
}

TEST(Record, DatesOnDisk) {
    Record r(PRSALG);
    const Field& birth = PRSALG["PA_G_DATUM"];
    r.set_date(birth, QDate(2016, 2, 29));
    EXPECT_EQ(r.date_serial(birth), 42429.0);
    EXPECT_EQ(r.date(birth), QDate(2016, 2, 29));
    r.set_date_serial(birth, 42429.75);  // a time of day does not move the date
    EXPECT_EQ(r.date(birth), QDate(2016, 2, 29));
    for (double bad : {0.0, -5.0, std::nan(""), std::numeric_limits<double>::infinity(), 1e300}) {
        r.set_date_serial(birth, bad);
        EXPECT_FALSE(r.date(birth).has_value()) << bad;
    }
    r.set_date(birth, QDate());
    EXPECT_EQ(r.date_serial(birth), 0.0);
}

TEST(Record, ClearBlanksTextAndZeroesTheRest) {
    Record r(BHRLGM);
    std::memset(r.data(), 0x55, static_cast<std::size_t>(r.size()));
    r.clear();
    EXPECT_EQ(r.text(BHRLGM["BL_VAN"]), "");
    EXPECT_EQ(r.raw_text(BHRLGM["BL_VAN"]), QString(30, u' '));
    EXPECT_EQ(r.raw(BHRLGM["BL_RES_815"]), QByteArray(4, '\0'));
    EXPECT_EQ(r.byte(BHRLGM["BL_SA_BURGER"]), 0);
    EXPECT_EQ(r.date_serial(BHRLGM["BL_G_DATUM"]), 0.0);
}

TEST(CleanField, NullsTimesAndBlanks) {
    EXPECT_EQ(clean_field(QString(QChar(0)) + "ABC"), "");
    EXPECT_EQ(clean_field("12:00:00 AM"), "");
    EXPECT_EQ(clean_field(" 00:00:00 "), "");
    EXPECT_EQ(clean_field("  "), "");
    EXPECT_EQ(clean_field(" AB  "), " AB");
    EXPECT_EQ(first_word("JAN PIET"), "JAN");
    EXPECT_EQ(first_word("JAN"), "JAN");
    EXPECT_EQ(first_word("   "), "");
}
