#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QUrl>

#include "shell/rich_text.h"

using namespace korvel::shell;

QT_BEGIN_NAMESPACE
inline void PrintTo(const QString& s, std::ostream* os) {
    *os << '"' << s.toStdString() << '"';
}
QT_END_NAMESPACE

namespace {

TextRun run(const QString& text, bool bold = false, bool italic = false, bool underline = false,
            const QString& family = QStringLiteral("Arial"), double size = 10) {
    TextRun r;
    r.text = text;
    r.family = family;
    r.point_size = size;
    r.bold = bold;
    r.italic = italic;
    r.underline = underline;
    return r;
}

Paragraph paragraph(std::vector<TextRun> runs, Align align = Align::Left, bool bullet = false) {
    Paragraph p;
    p.align = align;
    p.bullet = bullet;
    p.runs = std::move(runs);
    return p;
}

// A paragraph's alignment, bullet and runs as "C* text[Family 12 biu]|...", for comparing in one
// line what a reader made of a file.
QString describe(const Paragraph& p) {
    QString out = p.align == Align::Centre ? "C" : p.align == Align::Right ? "R" : "L";
    out += p.bullet ? "* " : " ";
    QStringList runs;
    for (const TextRun& r : p.runs) {
        runs << QStringLiteral("%1[%2 %3 %4%5%6]")
                    .arg(r.text, r.family)
                    .arg(r.point_size)
                    .arg(r.bold ? "b" : "", r.italic ? "i" : "", r.underline ? "u" : "");
    }
    return out + runs.join(u'|');
}

void expect_same(const RichText& a, const RichText& b) {
    ASSERT_EQ(a.paragraphs.size(), b.paragraphs.size());
    for (std::size_t i = 0; i < a.paragraphs.size(); ++i) {
        const Paragraph& p = a.paragraphs[i];
        const Paragraph& q = b.paragraphs[i];
        EXPECT_EQ(p.align, q.align) << "paragraph " << i;
        EXPECT_EQ(p.bullet, q.bullet) << "paragraph " << i;
        ASSERT_EQ(p.runs.size(), q.runs.size()) << "paragraph " << i;
        for (std::size_t j = 0; j < p.runs.size(); ++j) {
            EXPECT_EQ(p.runs[j].text, q.runs[j].text);
            EXPECT_TRUE(p.runs[j].same_format(q.runs[j])) << "paragraph " << i << " run " << j;
        }
    }
}

// As a RichTextBox writes it: MS Sans Serif 8.5, WordPad bullets kept on until \pard, the
// Symbol font for the bullet's own text, a NUL after the last brace.
const QByteArray kRichTextBox =
    "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\fnil\\fcharset0 MS Sans "
    "Serif;}{\\f1\\fnil\\fcharset2 Symbol;}{\\f2\\fswiss\\fcharset0 Arial;}}\r\n"
    "\\viewkind4\\uc1\\pard\\f0\\fs17 Mnr. Smit se \\b kwalifikasies\\b0  is twee\\'eb en "
    "\\'ea-vormig.\\par\r\n"
    "\\pard{\\pntext\\f1\\'B7\\tab}{\\*\\pn\\pnlvlblt\\pnf1\\pnindent0{\\pntxtb\\'B7}}"
    "\\fi-200\\li200 Eerste\\par\r\n"
    "{\\pntext\\f1\\'B7\\tab}Tweede\\par\r\n"
    "\\pard\\qc\\i Middel\\i0\\par\r\n"
    "\\pard\\qr\\ul Regs\\ulnone\\par\r\n"
    "\\pard\\f2\\fs24 Koste\\tab\\'80 5\\line R\\u8364?10\\par\r\n"
    "}\r\n";

TEST(RichText, ReadsWhatARichTextBoxWrites) {
    const RichText t = read_rtf(kRichTextBox + QByteArray(1, '\0'));
    ASSERT_EQ(t.paragraphs.size(), 6u);
    EXPECT_EQ(t.plain_text(),
              QStringLiteral("Mnr. Smit se kwalifikasies is tweeë en ê-vormig.\nEerste\nTweede\n"
                             "Middel\nRegs\nKoste\t€ 5\nR€10"));

    // The bullet stays on the following paragraph until \pard; its own text is not read.
    const QStringList expected = {
        "L Mnr. Smit se [MS Sans Serif 8.5 ]|kwalifikasies[MS Sans Serif 8.5 b]|"
        " is tweeë en ê-vormig.[MS Sans Serif 8.5 ]",
        "L* Eerste[MS Sans Serif 8.5 ]",
        "L* Tweede[MS Sans Serif 8.5 ]",
        "C Middel[MS Sans Serif 8.5 i]",
        "R Regs[MS Sans Serif 8.5 u]",
        "L Koste\t€ 5\u2028R€10[Arial 12 ]"};  // \line: a line separator in the run
    for (qsizetype i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(describe(t.paragraphs[i]), expected[i]) << i;
    }
}

TEST(RichText, ReadsUnicodeEscapesWithTheirFallbacksPassedOver) {
    // \uc2 passes over two fallback characters, \'hh counting as one; a group ends the count.
    const RichText t = read_rtf(
        "{\\rtf1\\ansi\\uc2\\u8364\\'80\\'80x \\uc0\\u937 y {\\uc1\\u-3913?}z\\~\\{\\}\\\\"
        "\\ldblquote q\\rdblquote\\par}");
    EXPECT_EQ(t.plain_text(), QString::fromUtf16(u"€x Ωy \uF0B7z\u00A0{}\\\u201Cq\u201D"));
}

TEST(RichText, PassesOverDestinationsTablesAndBinaryData) {
    // The shape a word processor writes: style sheet, list tables, document information,
    // generator, page styles, a font with an alternative, list text before the paragraph.
    const QByteArray rtf =
        "{\\rtf1\\ansi\\deff3\\adeflang1025\r\n"
        "{\\fonttbl{\\f0\\froman\\fprq2\\fcharset0 Times New Roman;}"
        "{\\f3\\froman\\fprq2\\fcharset0 Liberation Serif{\\*\\falt Times New Roman};}}\r\n"
        "{\\colortbl;\\red0\\green0\\blue0;}\r\n"
        "{\\stylesheet{\\s0\\snext0 Normal;}{\\*\\cs15\\snext15 Bullets;}}"
        "{\\*\\listtable{\\list{\\listlevel{\\leveltext \\'01\\u8226 ?;}}\\listid1}}"
        "{\\listoverridetable{\\listoverride\\listid1\\ls1}}"
        "{\\*\\generator LibreOffice}{\\info{\\title Titel}{\\author Ek}}"
        "{\\*\\pgdsctbl{\\pgdsc0 Default Page Style;}}\r\n"
        "{\\header\\pard Kop\\par}"
        "\\pard\\plain \\ql{\\loch Voor}{\\*\\bkmkstart b}{\\pict\\pngblip 89504e47}"
        "\\bin4 }}}}{\\b agter}\\par\r\n"
        "\\pard\\plain {\\listtext\\pard\\plain \\u8226\\'95\\tab}\\ilvl0\\ls1 \\qc item\\par }";
    const RichText t = read_rtf(rtf);
    ASSERT_EQ(t.paragraphs.size(), 2u);
    EXPECT_EQ(describe(t.paragraphs[0]),
              "L Voor[Liberation Serif 12 ]|agter[Liberation Serif 12 b]");
    EXPECT_TRUE(describe(t.paragraphs[1]).startsWith("C* item["))
        << describe(t.paragraphs[1]).toStdString();
}

TEST(RichText, WritesWhatItReadsBack) {
    RichText t;
    t.paragraphs.push_back(
        paragraph({run("Opmerkings van "), run("mnr. Möller", true), run(" oor ", false, true),
                   run("ê, ë", false, false, true), run(" en {\\} ", true, true, true)}));
    t.paragraphs.push_back(
        paragraph({run("Gesentreer", false, false, false, QStringLiteral("Times New Roman"), 14)},
                  Align::Centre));
    t.paragraphs.push_back(paragraph({run("Eerste punt")}, Align::Left, true));
    t.paragraphs.push_back(paragraph({run("Tweede punt", true)}, Align::Right, true));
    t.paragraphs.push_back(paragraph({}));
    t.paragraphs.push_back(
        paragraph({run(QString::fromUtf16(u"Ω \U0001F600 € \u2028tweede reël\tná tab"), false,
                       false, false, QStringLiteral("Courier New"), 8.5)}));
    const QByteArray rtf = write_rtf(t);

    EXPECT_TRUE(rtf.startsWith("{\\rtf1\\ansi\\ansicpg1252\\deff0"));
    EXPECT_TRUE(rtf.contains("\\'ea, \\'eb"));
    EXPECT_TRUE(rtf.contains("\\u937?"));
    EXPECT_TRUE(rtf.contains("\\'80"));
    EXPECT_TRUE(rtf.contains(" en \\{\\\\\\} "));
    EXPECT_TRUE(rtf.contains("{\\*\\pn\\pnlvlblt"));
    for (const char c : rtf) {
        EXPECT_GT(static_cast<unsigned char>(c), 0);
        ASSERT_LT(static_cast<unsigned char>(c), 128) << "the file is plain ASCII";
    }
    expect_same(read_rtf(rtf), t);
}

TEST(RichText, RunsWithoutAFontTakeTheDefaultAndAnEmptyTextStaysEmpty) {
    EXPECT_TRUE(read_rtf(write_rtf(RichText{})).empty());
    const RichText plain = RichText::from_plain_text(QStringLiteral("a\nb"));
    const RichText t = read_rtf(write_rtf(plain));
    ASSERT_EQ(t.paragraphs.size(), 2u);
    EXPECT_EQ(t.paragraphs[1].runs[0].family, kRichTextFamily);
    EXPECT_EQ(t.paragraphs[1].runs[0].point_size, kRichTextPointSize);
}

TEST(RichText, BytesThatAreNotRtfAreWindows1252LinesOfText) {
    const RichText t = read_rtf("Eerste re\xebl\r\nTweede\nDerde \x80\r\n");
    ASSERT_EQ(t.paragraphs.size(), 3u);
    EXPECT_EQ(t.plain_text(), QStringLiteral("Eerste reël\nTweede\nDerde €"));
    EXPECT_TRUE(read_rtf(QByteArray()).empty());
    EXPECT_EQ(read_rtf("{\\rt").plain_text(), "{\\rt");
}

TEST(RichText, ACutOffFileKeepsTheTextUpToTheCut) {
    const QString whole = read_rtf(kRichTextBox).plain_text();
    for (qsizetype cut = 5; cut < kRichTextBox.size(); ++cut) {
        const QString part = read_rtf(kRichTextBox.left(cut)).plain_text();
        ASSERT_TRUE(whole.startsWith(part)) << "cut at " << cut << ": " << part.toStdString();
    }
    // Cut just before the closing brace: everything is there.
    EXPECT_EQ(read_rtf(kRichTextBox.left(kRichTextBox.lastIndexOf('}'))).plain_text(), whole);
}

TEST(RichText, DeepNestingAndGarbageEnd) {
    const int depth = 200000;
    const QByteArray deep =
        "{\\rtf1 " + QByteArray(depth, '{') + "\\b x" + QByteArray(depth, '}') + "y}";
    const RichText t = read_rtf(deep);
    EXPECT_EQ(t.plain_text(), "xy");
    // Unbalanced braces, a lone backslash, a word without end, a number without end.
    for (const QByteArray& bad :
         {QByteArray("{\\rtf1 a}}}}b"), QByteArray("{\\rtf1 a\\"), QByteArray("{\\rtf1 a\\'"),
          QByteArray("{\\rtf1 a\\'4"), QByteArray("{\\rtf1 a\\bin999999999999 xyz"),
          QByteArray("{\\rtf1 a\\fs99999999999999999999 b"), QByteArray("{\\rtf1 a\\u-")}) {
        EXPECT_TRUE(read_rtf(bad).plain_text().startsWith('a')) << bad.constData();
    }
}

// ---- a word processor opens what we write, and we open what it writes ----

class WordProcessor : public ::testing::Test {
  protected:
    void SetUp() override {
        soffice = QStandardPaths::findExecutable(QStringLiteral("soffice"));
        ASSERT_FALSE(soffice.isEmpty())
            << "LibreOffice (soffice, package libreoffice-writer-nogui) is not installed; "
               "scripts/install-deps.sh installs it";
        ASSERT_TRUE(dir.isValid());
    }
    // Converts the file in the temporary folder; the converted file's bytes.
    QByteArray convert(const QString& name, const QByteArray& bytes, const QString& to,
                       const QStringList& extra = {}) {
        QFile in(dir.filePath(name));
        EXPECT_TRUE(in.open(QIODevice::WriteOnly));
        in.write(bytes);
        in.close();
        QProcess p;
        p.setProcessChannelMode(QProcess::MergedChannels);
        p.start(
            soffice,
            QStringList{QStringLiteral("-env:UserInstallation=") +
                            QUrl::fromLocalFile(dir.filePath(QStringLiteral("profile"))).toString(),
                        QStringLiteral("--headless")} +
                extra +
                QStringList{QStringLiteral("--convert-to"), to, QStringLiteral("--outdir"),
                            dir.filePath(QStringLiteral("out")), in.fileName()});
        EXPECT_TRUE(p.waitForFinished(180000)) << "soffice did not finish";
        const QString out_name =
            dir.filePath(QStringLiteral("out/") + QFileInfo(name).completeBaseName() + u'.' + to);
        QFile out(out_name);
        EXPECT_TRUE(out.open(QIODevice::ReadOnly)) << p.readAll().toStdString();
        return out.readAll();
    }
    QString soffice;
    QTemporaryDir dir;
};

TEST_F(WordProcessor, OpensOurFileWithItsTextBoldRunsAndBullets) {
    RichText t;
    t.paragraphs.push_back(paragraph({run("Die "), run("vet", true), run(" w\u00EBreld \u20AC")}));
    t.paragraphs.push_back(paragraph({run("kolpunt")}, Align::Left, true));
    t.paragraphs.push_back(paragraph({run("gesentreer")}, Align::Centre));
    const QString html =
        QString::fromUtf8(convert(QStringLiteral("ons.rtf"), write_rtf(t), QStringLiteral("html")));
    // Tags and line breaks aside, the text reads as written.
    QString text = html;
    text.remove(QRegularExpression(QStringLiteral("<[^>]*>"))).replace(u'\n', u' ');
    text = text.simplified();
    EXPECT_TRUE(text.contains(QStringLiteral("Die vet wëreld €"))) << text.toStdString();
    EXPECT_TRUE(html.contains(QRegularExpression(QStringLiteral("<b>\\s*vet\\s*</b>"))))
        << html.toStdString();
    EXPECT_TRUE(html.contains(QRegularExpression(QStringLiteral("<li>.*kolpunt"),
                                                 QRegularExpression::DotMatchesEverythingOption)))
        << html.toStdString();
    EXPECT_TRUE(
        html.contains(QRegularExpression(QStringLiteral("align=\"center\"[^>]*>.*gesentreer"),
                                         QRegularExpression::DotMatchesEverythingOption)));
}

TEST_F(WordProcessor, WeOpenItsFileWithItsTextAndBoldRuns) {
    const QByteArray html =
        "<html><body><p>Een <b>vet</b> w&euml;reld &#8364; &#937;</p>"
        "<p align=\"center\">tweede</p></body></html>";
    const QByteArray rtf = convert(QStringLiteral("hulle.html"), html, QStringLiteral("rtf"),
                                   {QStringLiteral("--infilter=HTML (StarWriter)")});
    ASSERT_TRUE(rtf.startsWith("{\\rtf1"));
    const RichText t = read_rtf(rtf);
    ASSERT_GE(t.paragraphs.size(), 2u);
    EXPECT_EQ(t.paragraphs[0].text(), QString::fromUtf16(u"Een vet wëreld € Ω"));
    bool bold_vet = false;
    for (const TextRun& r : t.paragraphs[0].runs) {
        EXPECT_EQ(r.bold, r.text == "vet") << r.text.toStdString();
        bold_vet = bold_vet || (r.bold && r.text == "vet");
    }
    EXPECT_TRUE(bold_vet);
    EXPECT_EQ(t.paragraphs[1].text(), "tweede");
    EXPECT_EQ(t.paragraphs[1].align, Align::Centre);
}

}  // namespace
