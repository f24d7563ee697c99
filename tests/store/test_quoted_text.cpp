#include "store/quoted_text.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace korvel::quoted {
namespace {

using Kind = Value::Kind;

std::vector<Value> all_values(const QByteArray& bytes) {
    Reader reader(bytes);
    std::vector<Value> values;
    while (auto value = reader.next()) {
        values.push_back(*value);
    }
    return values;
}

std::vector<Kind> kinds(const std::vector<Value>& values) {
    std::vector<Kind> out;
    for (const Value& v : values) {
        out.push_back(v.kind);
    }
    return out;
}

TEST(QuotedReader, ValuesRunOnAcrossLinesAndReadLineKeepsThemApart) {
    const QByteArray bytes = "\"A\",1\r\n\"B\",2,#FALSE#\r\n\"C\"";
    Reader by_value(bytes);
    EXPECT_EQ(by_value.read_string(), QStringLiteral("A"));
    EXPECT_EQ(by_value.read_number(), 1.0);
    EXPECT_EQ(by_value.read_string(), QStringLiteral("B"));

    Reader by_line(bytes);
    EXPECT_EQ(by_line.read_line().size(), 2u);
    EXPECT_EQ(kinds(by_line.read_line()), (std::vector{Kind::Text, Kind::Number, Kind::Boolean}));
    EXPECT_EQ(by_line.read_line().size(), 1u);
    EXPECT_TRUE(by_line.read_line().empty());
}

TEST(QuotedReader, BlankFieldsAreEmptyValues) {
    Reader reader("\"a\",,3,\r\n\"b\",\r\n,");
    EXPECT_EQ(kinds(reader.read_line()),
              (std::vector{Kind::Text, Kind::Empty, Kind::Number, Kind::Empty}));
    EXPECT_EQ(kinds(reader.read_line()), (std::vector{Kind::Text, Kind::Empty}));
    EXPECT_FALSE(reader.at_end());
    EXPECT_EQ(kinds(reader.read_line()), (std::vector{Kind::Empty, Kind::Empty}));
    EXPECT_TRUE(reader.at_end());

    // A blank field reads as the zero of every type.
    Reader typed(",,,,");
    EXPECT_EQ(typed.read_string(), QString());
    EXPECT_EQ(typed.read_number(), 0.0);
    EXPECT_EQ(typed.read_bool(), false);
    EXPECT_EQ(typed.read_date(), QDate());
    EXPECT_EQ(typed.next(), Value{});
    EXPECT_EQ(typed.next(), std::nullopt);
}

TEST(QuotedReader, AnyLineEndWorksAndBlankLinesHoldNothing) {
    for (const char* bytes : {"1,2\r\n3", "1,2\n3", "1,2\r3", "\r\n\r\n1,2\r\n\r\n\n\r3\r\n\r\n",
                              "  1 ,\t2\n\n  3  \n"}) {
        Reader reader(bytes);
        EXPECT_EQ(reader.read_line().size(), 2u) << bytes;
        EXPECT_EQ(reader.read_number(), 3.0) << bytes;
        EXPECT_TRUE(reader.at_end()) << bytes;
    }
}

TEST(QuotedReader, QuotedTextKeepsCommasBlanksAndLineEndsInWindows1252) {
    // The month calendar is one quoted string of tab-separated cells and CR-separated rows.
    const auto values = all_values("\" a, b \",\"1\t2\r\n3\t21(O)\",\"\"\r\n");
    ASSERT_EQ(values.size(), 3u);
    EXPECT_EQ(values[0].text, u" a, b ");
    EXPECT_EQ(values[1].text, u"1\t2\r\n3\t21(O)");
    EXPECT_EQ(values[2].kind, Kind::Text);
    EXPECT_EQ(values[2].text, QString());
    EXPECT_EQ(all_values("\"Caf\xE9 \x80 \x93x\x94\"").at(0).text, QStringLiteral("Café € “x”"));
}

TEST(QuotedReader, AnythingAfterAClosingQuoteIsIgnored) {
    Reader reader("\"ab\"cd,\"x\"\"y\",#TRUE# junk,5");
    EXPECT_EQ(reader.read_string(), QStringLiteral("ab"));
    EXPECT_EQ(reader.read_string(), QStringLiteral("x"));
    EXPECT_EQ(reader.read_bool(), true);
    EXPECT_EQ(reader.read_number(), 5.0);
}

TEST(QuotedReader, BareNumbersInEveryFormTheSiblingsWriteAndBareWordsThatAreNone) {
    const auto values = all_values(".5,-.5,+3,5.,1E+20,1.5e-3,2D2, 42 ,0");
    const std::vector<double> expected = {0.5, -0.5, 3, 5, 1e20, 1.5e-3, 200, 42, 0};
    ASSERT_EQ(values.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(values[i].kind, Kind::Number) << i;
        EXPECT_EQ(values[i].number, expected[i]) << i;
    }
    EXPECT_EQ(values[7].text, u"42");

    // Bare words that are no number are text.
    const auto words = all_values("12abc,1E999,inf,nan,-,.,1E,0x10,1 2,1,5");
    const std::vector<const char*> texts = {"12abc", "1E999", "inf",  "nan", "-",
                                            ".",     "1E",    "0x10", "1 2"};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(words.at(i).kind, Kind::Text) << texts[i];
        EXPECT_EQ(words.at(i).text, QString::fromLatin1(texts[i]));
    }
    EXPECT_EQ(words.at(9).kind, Kind::Number);
    EXPECT_EQ(words.at(10).kind, Kind::Number);
}

TEST(QuotedReader, HashedValues) {
    const auto values = all_values(
        "#FALSE#,#true#,#NULL#,#00:00:00#,#1899-12-30#,#2024-03-01 10:30:00#,#2024-02-30#,"
        "#FOO#,##,#2024-03-01 25:00:00#,#2024-3-1#");
    ASSERT_EQ(values.size(), 11u);
    EXPECT_EQ(values[0].kind, Kind::Boolean);
    EXPECT_FALSE(values[0].boolean);
    EXPECT_TRUE(values[1].boolean);
    EXPECT_EQ(values[2].kind, Kind::Null);
    // Day 0, whether written as a time alone or as the date itself, is a null date.
    for (std::size_t i : {3, 4}) {
        EXPECT_EQ(values[i].kind, Kind::Date) << i;
        EXPECT_TRUE(values[i].date.isNull()) << i;
    }
    EXPECT_EQ(values[5].date, QDate(2024, 3, 1));
    for (std::size_t i = 6; i < values.size(); ++i) {
        EXPECT_EQ(values[i].kind, Kind::Invalid) << i;
    }
    EXPECT_EQ(values[7].text, u"FOO");
}

TEST(QuotedReader, TypedReadsConvertOnlyWhatFitsAndStayInStep) {
    Reader reader("#TRUE#,\"12.5\",\"twelve\",#NULL#,1,0,\"False\",\"2024-03-01\",12,\"yes\",7");
    EXPECT_EQ(reader.read_string(), std::nullopt);  // a boolean is no text
    EXPECT_EQ(reader.read_number(), 12.5);
    EXPECT_EQ(reader.read_number(), std::nullopt);
    EXPECT_EQ(reader.read_bool(), std::nullopt);
    EXPECT_EQ(reader.read_bool(), true);
    EXPECT_EQ(reader.read_bool(), false);
    EXPECT_EQ(reader.read_bool(), false);
    EXPECT_EQ(reader.read_date(), QDate(2024, 3, 1));
    EXPECT_EQ(reader.read_date(), std::nullopt);
    EXPECT_EQ(reader.read_bool(), std::nullopt);
    EXPECT_EQ(reader.read_string(), QStringLiteral("7"));  // a number reads as it stood
}

TEST(QuotedReader, BrokenInputEndsQuietly) {
    // A quote that never closes swallows the rest.
    const auto unclosed = all_values("1,\"abc\r\n2,3");
    ASSERT_EQ(unclosed.size(), 2u);
    EXPECT_EQ(unclosed[1].kind, Kind::Invalid);
    EXPECT_EQ(unclosed[1].text, u"abc\r\n2,3");

    // A "#" that does not close on its field is invalid, and the next field reads on.
    const auto open_hash = all_values("#TRUE,5\r\n#2024-03-01\r\n6");
    EXPECT_EQ(kinds(open_hash),
              (std::vector{Kind::Invalid, Kind::Number, Kind::Invalid, Kind::Number}));

    for (const QByteArray& nothing : {QByteArray(), QByteArray("\r\n\r\n"), QByteArray(64, '\0'),
                                      QByteArray(" \t\n\r "), QByteArray("\xEF\xBB\xBF")}) {
        Reader reader(nothing);
        EXPECT_TRUE(reader.at_end());
        EXPECT_EQ(reader.next(), std::nullopt);
        EXPECT_EQ(reader.read_number(), std::nullopt);
        EXPECT_TRUE(reader.read_line().empty());
    }

    // NULs are blanks outside quotes, and a byte order mark is skipped.
    Reader reader(QByteArray("\xEF\xBB\xBF\"a\0b\",\0\0 7\0\r\n\0\0", 18));
    EXPECT_EQ(reader.read_string(), QString::fromLatin1("a\0b", 3));
    EXPECT_EQ(reader.read_number(), 7.0);
    EXPECT_TRUE(reader.at_end());
}

TEST(QuotedWriter, BuildsLinesWithCommasAndCrLf) {
    Writer writer;
    writer.text(u"SKOOL").single(12.5f).boolean(true).boolean(false).date(QDate(2024, 3, 1));
    writer.end_line().number(-3).empty().text(u"x").empty().end_line();
    EXPECT_EQ(writer.bytes(), "\"SKOOL\",12.5,#TRUE#,#FALSE#,#2024-03-01#\r\n-3,,\"x\",\r\n");
}

TEST(QuotedWriter, TextThatCannotStandAsItIsNumbersAndDates) {
    Writer writer;
    writer.text(u"He said \"no\"").text(u"Café €").text(u"Ω").end_line();
    EXPECT_EQ(writer.bytes(), "\"He said 'no'\",\"Caf\xE9 \x80\",\"?\"\r\n");

    Writer numbers;
    numbers.number(0.1).single(0.1f).number(1e20).number(1.5e-7).number(-0.0).number(qQNaN());
    numbers.number(qInf()).number(32767).date(QDate()).date(QDate(1899, 12, 30)).null();
    EXPECT_EQ(numbers.bytes(), "0.1,0.1,1E+20,1.5E-07,0,0,0,32767,#00:00:00#,#00:00:00#,#NULL#");
}

TEST(QuotedWriter, WhatIsWrittenReadsBack) {
    Writer writer;
    writer.text(u"1\t2\r\n3\t21(O)").text(u" , ").number(1.0 / 3).single(0.3f).number(-1e-300);
    writer.boolean(false).date(QDate(2016, 2, 29)).date(QDate()).empty().null().end_line();
    writer.text(QString()).end_line();
    Reader reader(writer.bytes());
    EXPECT_EQ(reader.read_string(), QStringLiteral("1\t2\r\n3\t21(O)"));
    EXPECT_EQ(reader.read_string(), QStringLiteral(" , "));
    EXPECT_EQ(reader.read_number(), 1.0 / 3);
    EXPECT_EQ(reader.read_number(), 0.3);  // a single is written in its own short form
    EXPECT_EQ(reader.read_number(), -1e-300);
    EXPECT_EQ(reader.read_bool(), false);
    EXPECT_EQ(reader.read_date(), QDate(2016, 2, 29));
    EXPECT_EQ(reader.read_date(), QDate());
    EXPECT_EQ(reader.next(), Value{});
    EXPECT_EQ(reader.next()->kind, Kind::Null);
    EXPECT_EQ(reader.read_string(), QString());
    EXPECT_TRUE(reader.at_end());
}

TEST(QuotedFiles, WriteWholeReadBackAndReportFailures) {
    QTemporaryDir dir;
    ASSERT_TRUE(dir.isValid());
    const QString path = dir.filePath(QStringLiteral("kleur_drukker.txt"));
    EXPECT_EQ(read_file(path), std::nullopt);

    ASSERT_TRUE(write_file(path, Writer().boolean(true).end_line().bytes()));
    EXPECT_EQ(read_file(path), QByteArray("#TRUE#\r\n"));
    ASSERT_TRUE(write_file(path, QByteArray()));
    EXPECT_EQ(read_file(path), QByteArray());
    // Nothing is left beside the file.
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);

    // Failures are reported, not thrown.
    EXPECT_FALSE(write_file(dir.filePath(QStringLiteral("missing/x.txt")), "1"));
    EXPECT_FALSE(write_file(dir.path(), "1"));
    EXPECT_EQ(read_file(dir.path()), std::nullopt);
    EXPECT_EQ(read_file(QString()), std::nullopt);
}

}  // namespace
}  // namespace korvel::quoted
