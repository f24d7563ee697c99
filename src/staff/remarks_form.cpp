#include "staff/remarks_form.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextList>
#include <QVBoxLayout>

namespace korvel::staff {

using shell::Align;
using shell::Paragraph;
using shell::RichText;
using shell::TextRun;

namespace {

Qt::Alignment qt_alignment(Align align) {
    switch (align) {
        case Align::Centre:
            return Qt::AlignHCenter;
        case Align::Right:
            return Qt::AlignRight;
        case Align::Left:
            break;
    }
    return Qt::AlignLeft;
}

Align align_of(Qt::Alignment alignment) {
    if (alignment & Qt::AlignHCenter) {
        return Align::Centre;
    }
    if (alignment & Qt::AlignRight) {
        return Align::Right;
    }
    return Align::Left;
}

QTextCharFormat char_format(const TextRun& run) {
    QTextCharFormat f;
    if (!run.family.isEmpty()) {
        f.setFontFamilies(QStringList{run.family});
    }
    if (run.point_size > 0) {
        f.setFontPointSize(run.point_size);
    }
    f.setFontWeight(run.bold ? QFont::Bold : QFont::Normal);
    f.setFontItalic(run.italic);
    f.setFontUnderline(run.underline);
    return f;
}

QString family_of(const QTextCharFormat& f, const QFont& base) {
    if (f.hasProperty(QTextFormat::FontFamilies)) {
        const QStringList families = f.fontFamilies().toStringList();
        if (!families.isEmpty() && !families.first().isEmpty()) {
            return families.first();
        }
    }
    return base.family();
}

TextRun run_format(const QTextCharFormat& f, const QFont& base) {
    TextRun run;
    run.family = family_of(f, base);
    run.point_size =
        f.hasProperty(QTextFormat::FontPointSize) ? f.fontPointSize() : base.pointSizeF();
    run.bold =
        f.hasProperty(QTextFormat::FontWeight) ? f.fontWeight() >= QFont::DemiBold : base.bold();
    run.italic = f.hasProperty(QTextFormat::FontItalic) ? f.fontItalic() : base.italic();
    run.underline =
        f.hasProperty(QTextFormat::TextUnderlineStyle) || f.hasProperty(QTextFormat::FontUnderline)
            ? f.fontUnderline()
            : base.underline();
    return run;
}

ui::FontChoice font_choice_of(const QTextCharFormat& f, const QFont& base) {
    const TextRun run = run_format(f, base);
    return ui::FontChoice{run.family, run.point_size > 0 ? run.point_size : 10.0, run.bold,
                          run.italic, run.underline};
}

// The Windows-1252 picker: one cell a character; a click takes it.
std::optional<QChar> pick_from_table(QWidget* parent) {
    const QString chars = RemarksFrame::picker_characters();
    constexpr int kColumns = 16;
    QDialog dialog(parent);
    dialog.setObjectName(QStringLiteral("ascii_picker"));
    auto* table = new QTableWidget((chars.size() + kColumns - 1) / kColumns, kColumns, &dialog);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->horizontalHeader()->hide();
    table->verticalHeader()->hide();
    table->horizontalHeader()->setDefaultSectionSize(28);
    table->verticalHeader()->setDefaultSectionSize(28);
    for (int i = 0; i < chars.size(); ++i) {
        auto* item = new QTableWidgetItem(QString(chars[i]));
        item->setTextAlignment(Qt::AlignCenter);
        table->setItem(i / kColumns, i % kColumns, item);
    }
    std::optional<QChar> chosen;
    QObject::connect(table, &QTableWidget::cellClicked, &dialog, [&](int row, int column) {
        const int i = row * kColumns + column;
        if (i < chars.size()) {
            chosen = chars[i];
            dialog.accept();
        }
    });
    auto* layout = new QVBoxLayout(&dialog);
    layout->addWidget(table);
    dialog.resize(kColumns * 28 + 40, 14 * 28 + 40);
    dialog.exec();
    return chosen;
}

}  // namespace

void fill_document(QTextDocument& document, const RichText& text) {
    document.clear();
    QTextCursor cursor(&document);
    QTextList* list = nullptr;  // the list the previous bulleted paragraph is in
    bool first = true;
    for (const Paragraph& p : text.paragraphs) {
        QTextBlockFormat block;
        block.setAlignment(qt_alignment(p.align));
        if (first) {
            cursor.setBlockFormat(block);
            first = false;
        } else {
            cursor.insertBlock(block, QTextCharFormat());
        }
        if (!p.bullet) {
            list = nullptr;
        } else if (list != nullptr) {
            list->add(cursor.block());
        } else {
            list = cursor.createList(QTextListFormat::ListDisc);
        }
        for (const TextRun& run : p.runs) {
            cursor.insertText(run.text, char_format(run));
        }
    }
}

RichText rich_text_of(const QTextDocument& document) {
    RichText out;
    const QFont base = document.defaultFont();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        Paragraph p;
        p.align = align_of(block.blockFormat().alignment());
        p.bullet = block.textList() != nullptr;
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (fragment.isValid()) {
                p.append(fragment.text(), run_format(fragment.charFormat(), base));
            }
        }
        out.paragraphs.push_back(std::move(p));
    }
    return out;
}

RemarksDialog::RemarksDialog(RemarksFrame& frame, QWidget* parent)
    : QDialog(parent), frame_(frame), teks_(new QTextEdit(this)) {
    setObjectName(frame.form_name());
    setWindowTitle(frame.caption);
    teks_->setObjectName(QStringLiteral("teks"));
    teks_->setAcceptRichText(false);  // pasted text comes in plain: the file keeps only our model
    teks_->document()->setDefaultFont(
        QFont(QString::fromLatin1(shell::kRichTextFamily), int(shell::kRichTextPointSize)));

    const auto button = [this](const char* name, const QString& text, const QString& tip) {
        auto* b = new QPushButton(text, this);
        b->setObjectName(QString::fromLatin1(name));
        b->setToolTip(tip);
        b->setAutoDefault(false);
        return b;
    };
    QPushButton* bold = button("rtf_bold", QStringLiteral("B"), QStringLiteral("Vet / Bold"));
    QPushButton* italic =
        button("rtf_italics", QStringLiteral("I"), QStringLiteral("Skuins / Italic"));
    QPushButton* underline =
        button("rtf_underline", QStringLiteral("U"), QStringLiteral("Onderstreep / Underline"));
    QPushButton* font = button("rtf_font", QStringLiteral("Aa"), QStringLiteral("Font"));
    QPushButton* left = button("teks_links", QStringLiteral("|<"), QStringLiteral("Links / Left"));
    QPushButton* centre =
        button("teks_middel", QStringLiteral("><"), QStringLiteral("Middel / Centre"));
    QPushButton* right = button("teks_regs", QStringLiteral(">|"), QStringLiteral("Regs / Right"));
    QPushButton* bullet =
        button("teks_bullet", QString(QChar(0x2022)), QStringLiteral("Kolpunte / Bullets"));
    QPushButton* date = button("teks_datum", frame.date_text(), QStringLiteral("Datum / Date"));
    QPushButton* ascii = button("show_ascii_picker", QString(QChar(0x00C4)),
                                QStringLiteral("Karakters / Characters"));
    QPushButton* ok = button("teks_ok", QStringLiteral("OK"), QString());
    QPushButton* exit = button("teks_exit", QStringLiteral("X"), QString());
    QFont bold_font = bold->font();
    bold_font.setBold(true);
    bold->setFont(bold_font);

    connect(bold, &QPushButton::clicked, this, [this] { toggle_bold(); });
    connect(italic, &QPushButton::clicked, this, [this] { toggle_italic(); });
    connect(underline, &QPushButton::clicked, this, [this] { toggle_underline(); });
    connect(font, &QPushButton::clicked, this, [this] { choose_font(); });
    connect(left, &QPushButton::clicked, this, [this] { teks_->setAlignment(Qt::AlignLeft); });
    connect(centre, &QPushButton::clicked, this, [this] { teks_->setAlignment(Qt::AlignHCenter); });
    connect(right, &QPushButton::clicked, this, [this] { teks_->setAlignment(Qt::AlignRight); });
    connect(bullet, &QPushButton::clicked, this, [this] { toggle_bullet(); });
    connect(date, &QPushButton::clicked, this,
            [this] { teks_->textCursor().insertText(frame_.date_text()); });
    connect(ascii, &QPushButton::clicked, this, [this] { pick_character(); });
    connect(ok, &QPushButton::clicked, this, [this] { save(); });
    connect(exit, &QPushButton::clicked, this, [this] { reject(); });

    auto* tools = new QHBoxLayout;
    for (QPushButton* b :
         {bold, italic, underline, font, left, centre, right, bullet, date, ascii}) {
        b->setFocusPolicy(Qt::NoFocus);  // a click leaves the caret where it was in the text
        tools->addWidget(b);
    }
    // The word processor's keys for the same.
    const std::pair<QKeySequence::StandardKey, QPushButton*> keys[] = {
        {QKeySequence::Bold, bold},
        {QKeySequence::Italic, italic},
        {QKeySequence::Underline, underline}};
    for (const auto& [key, b] : keys) {
        auto* shortcut = new QShortcut(QKeySequence(key), this);
        connect(shortcut, &QShortcut::activated, b, &QPushButton::click);
    }
    tools->addStretch();
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(exit);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(tools);
    layout->addWidget(teks_, 1);
    layout->addLayout(buttons);
    resize(640, 420);

    fill_document(*teks_->document(), frame_.text);
    teks_->moveCursor(QTextCursor::End);
}

void RemarksDialog::reject() {
    frame_.teks_exit_click();
    QDialog::reject();
}

void RemarksDialog::toggle_bold() {
    QTextCharFormat f;
    f.setFontWeight(teks_->fontWeight() >= QFont::DemiBold ? QFont::Normal : QFont::Bold);
    teks_->mergeCurrentCharFormat(f);
}

void RemarksDialog::toggle_italic() {
    QTextCharFormat f;
    f.setFontItalic(!teks_->fontItalic());
    teks_->mergeCurrentCharFormat(f);
}

void RemarksDialog::toggle_underline() {
    QTextCharFormat f;
    f.setFontUnderline(!teks_->fontUnderline());
    teks_->mergeCurrentCharFormat(f);
}

void RemarksDialog::choose_font() {
    const std::optional<ui::FontChoice> chosen = frame_.rtf_font_click(
        font_choice_of(teks_->currentCharFormat(), teks_->document()->defaultFont()));
    if (!chosen) {
        return;
    }
    QTextCharFormat f;
    if (!chosen->family.isEmpty()) {
        f.setFontFamilies(QStringList{chosen->family});
    }
    if (chosen->point_size > 0) {
        f.setFontPointSize(chosen->point_size);
    }
    f.setFontWeight(chosen->bold ? QFont::Bold : QFont::Normal);
    f.setFontItalic(chosen->italic);
    f.setFontUnderline(chosen->underline);
    teks_->mergeCurrentCharFormat(f);
}

void RemarksDialog::toggle_bullet() {
    // Every paragraph the selection touches takes the bullet, or loses it when the first one
    // already has it.
    QTextCursor cursor = teks_->textCursor();
    QTextDocument* doc = teks_->document();
    const QTextBlock first = doc->findBlock(cursor.selectionStart());
    const QTextBlock last = doc->findBlock(cursor.selectionEnd());
    const bool remove = first.textList() != nullptr;
    QTextList* list = nullptr;
    cursor.beginEditBlock();
    for (QTextBlock block = first; block.isValid(); block = block.next()) {
        QTextCursor at(block);
        if (remove) {
            if (QTextList* l = block.textList()) {
                l->remove(block);
                QTextBlockFormat f = block.blockFormat();
                f.setIndent(0);
                at.setBlockFormat(f);
            }
        } else if (block.textList() == nullptr) {
            if (list != nullptr) {
                list->add(block);
            } else {
                list = at.createList(QTextListFormat::ListDisc);
            }
        }
        if (block == last) {
            break;
        }
    }
    cursor.endEditBlock();
}

void RemarksDialog::pick_character() {
    if (const std::optional<QChar> c = pick_from_table(this)) {
        teks_->textCursor().insertText(QString(*c));
    }
}

void RemarksDialog::save() {
    frame_.text = rich_text_of(*teks_->document());
    frame_.teks_ok_click();
    if (!frame_.visible) {
        accept();
    }
}

void register_remarks_form(ui::QtDialogs& dialogs) {
    dialogs.register_form(QStringLiteral("teks_raam"), [](ui::ChildForm& f, QWidget* parent) {
        RemarksDialog dialog(static_cast<RemarksFrame&>(f), parent);
        dialog.exec();
    });
}

}  // namespace korvel::staff
