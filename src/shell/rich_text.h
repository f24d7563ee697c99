#pragma once
// The rich text of the remarks: a small document model and its RTF codec.
//
// The files are written as a Windows RichTextBox writes them (RTF 1, Windows-1252 with \'hh
// escapes, a font table, bullets in the WordPad form), so that the files of the old program open
// here and the files written here open in a word processor. The model keeps what the remarks
// frame can show: paragraphs with an alignment and a bullet flag, made of runs of text in one
// font, size and style. Everything else in a file (colours, styles, pictures, tables) is passed
// over on reading.
//
// QtCore only: the command line reads the texts too.

#include <QByteArray>
#include <QString>
#include <vector>

namespace korvel::shell {

// What a run with a blank family or a size of 0 is written in.
inline constexpr const char* kRichTextFamily = "Arial";
inline constexpr double kRichTextPointSize = 10.0;

// A line break inside a paragraph (\line): the Unicode line separator, as QTextDocument keeps it.
inline constexpr char16_t kLineBreak = 0x2028;

enum class Align { Left, Centre, Right };

struct TextRun {
    QString text;
    QString family;         // blank: the default family
    double point_size = 0;  // 0: the default size
    bool bold = false;
    bool italic = false;
    bool underline = false;

    // True when both runs are written in the same font and style.
    bool same_format(const TextRun& other) const {
        return family == other.family && point_size == other.point_size && bold == other.bold &&
               italic == other.italic && underline == other.underline;
    }
};

struct Paragraph {
    Align align = Align::Left;
    bool bullet = false;
    std::vector<TextRun> runs;

    QString text() const;
    // Appends text in the format of like, joining it to the last run when that has the same
    // format, so that a paragraph never holds two neighbouring runs of one format.
    void append(const QString& text, const TextRun& like);
};

struct RichText {
    std::vector<Paragraph> paragraphs;

    bool empty() const { return paragraphs.empty(); }
    // The text without formatting: paragraphs and line breaks as "\n".
    QString plain_text() const;
    // One paragraph a line of text, unformatted.
    static RichText from_plain_text(const QString& text);
};

// Reads an RTF file. Bytes that do not begin with "{\rtf" are plain Windows-1252 text, one
// paragraph a line. Damaged or cut-off input keeps what was read up to the damage; the reader
// never fails.
RichText read_rtf(const QByteArray& bytes);

// Writes the text as RTF 1 in Windows-1252, characters outside it as \uN with a "?" fallback.
QByteArray write_rtf(const RichText& text);

}  // namespace korvel::shell
