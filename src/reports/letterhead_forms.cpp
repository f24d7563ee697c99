// sk1_kies_briefhoofde and sk1_briefhoof: choosing and keeping the letterhead layouts.
#include "reports/letterhead_forms.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "shell/helpers.h"
#include "shell/session.h"
#include "store/quoted_text.h"

namespace korvel::reports {

namespace {

const QString kNew = QStringLiteral("NUUT/NEW");
constexpr qint64 kLargestPicture = 64 * 1024 * 1024;

QString general_folder(shell::Session& s) {
    return s.fs().native(s.folders.general_year);
}

}  // namespace

// ---- sk1_kies_briefhoofde ----

LetterheadChooser::LetterheadChooser(shell::Session& session) : s_(session) {}

void LetterheadChooser::form_load() {
    heading = s_.tr("KIES BRIEFHOOF", "SELECT LETTER HEAD");
    briefhoof_lys = fill_letterhead_list(general_folder(s_));
    closed = briefhoof_lys.isEmpty();
    selected = closed ? -1 : 0;
    if (closed)
        s_.letterhead.clear();
}

void LetterheadChooser::merk_ok_click() {
    if (selected >= 0 && selected < briefhoof_lys.size())
        s_.letterhead = briefhoof_lys.at(selected).trimmed();
    closed = true;
}

void LetterheadChooser::briefhoof_tabulering_click() {
    if (selected < 0 || selected >= briefhoof_lys.size()) {
        s_.dialogs().message(s_.tr("KIES EERS 'N BRIEFHOOF OM TE VERANDER...",
                                   "SELECT A LETTER HEAD TO CHANGE FIRST..."),
                             ui::Icon::Exclamation);
        return;
    }
    const QString name = briefhoof_lys.at(selected);
    LetterheadLayouts layouts(s_);
    layouts.form_load();
    layouts.bh_lys_dbl_click(int(layouts.bh_lys.indexOf(name)));
    s_.dialogs().show_modal(layouts);
    briefhoof_lys = fill_letterhead_list(general_folder(s_));
    selected = briefhoof_lys.isEmpty() ? -1 : std::max(0, int(briefhoof_lys.indexOf(name)));
}

// ---- sk1_briefhoof ----

LetterheadLayouts::LetterheadLayouts(shell::Session& session) : s_(session) {}

QString LetterheadLayouts::folder() const {
    return general_folder(s_);
}

void LetterheadLayouts::form_load() {
    heading = s_.tr("TABULEER BRIEFHOOF", "LETTERHEAD TABULATION");
    table_ = read_letterhead_table(folder());
    fill_list();
}

void LetterheadLayouts::fill_list() {
    bh_lys.clear();
    for (const LetterheadLayout& l : table_) {
        if (!l.name.trimmed().isEmpty() && !bh_lys.contains(l.name))
            bh_lys << l.name;
    }
    bh_lys << kNew;
}

int LetterheadLayouts::table_index(const QString& name) const {
    for (size_t i = 0; i < table_.size(); ++i) {
        if (!name.isEmpty() && table_[i].name == name)
            return int(i);
    }
    return -1;
}

void LetterheadLayouts::bh_lys_dbl_click(int row) {
    if (row < 0 || row >= bh_lys.size())
        return;
    QString name = bh_lys.at(row);
    if (name == kNew) {
        const auto answer =
            s_.dialogs().input(s_.tr("IDENTIFIKASIE (NUUT)", "IDENTIFICATION (NEW)"), heading);
        if (!answer || answer->trimmed().isEmpty())
            return;
        name = shell::upper_name(answer->trimmed()).left(29).trimmed();
        // The name becomes a file name in the general year folder.
        if (!is_safe_layout_name(name)) {
            s_.dialogs().message(s_.tr("ONGELDIGE IDENTIFIKASIE - GEEN \\ / : OF .. NIE!",
                                       "INVALID IDENTIFICATION - NO \\ / : OR .. PLEASE!"),
                                 ui::Icon::Critical);
            return;
        }
        if (!bh_lys.contains(name))
            bh_lys.insert(bh_lys.size() - 1, name);
    }
    load_entry(name);
}

void LetterheadLayouts::load_entry(const QString& name) {
    bh_data.fill(QString());
    bh_data[1] = name;
    current = int(bh_lys.indexOf(name));
    use_picture = name.contains(kPictureMark);
    fields_enabled = !use_picture;
    const int at = table_index(name);
    const LetterheadLayout l = at >= 0 ? table_[size_t(at)] : LetterheadLayout{};
    bh_opsie = l.frame == 1;
    print_name = l.print_name;
    print_address = l.print_address;
    print_badge = l.print_badge;
    position = l.position;
    size = l.size;
    const double margins[] = {l.top, l.bottom, l.left, l.right};
    for (int i = 0; i < 4; ++i)
        bh_data[size_t(4 + i)] = QString::number(margins[i]);
    const auto read =
        name.isEmpty() || use_picture ? std::nullopt : read_letterhead_fonts(folder(), name);
    fonts = read ? *read : form_font_defaults();
}

void LetterheadLayouts::bh_ok_click() {
    const QString name = bh_data[1].trimmed();
    if (name.isEmpty())
        return;
    if (!is_safe_layout_name(name)) {
        s_.dialogs().message(s_.tr("ONGELDIGE IDENTIFIKASIE - GEEN \\ / : OF .. NIE!",
                                   "INVALID IDENTIFICATION - NO \\ / : OR .. PLEASE!"),
                             ui::Icon::Critical);
        return;
    }
    LetterheadLayout l;
    l.name = name.left(29).trimmed();
    l.frame = bh_opsie ? 1 : 0;
    l.top = shell::leading_number(bh_data[4]);
    l.bottom = shell::leading_number(bh_data[5]);
    l.left = shell::leading_number(bh_data[6]);
    l.right = shell::leading_number(bh_data[7]);
    l.print_name = print_name;
    l.print_address = print_address;
    l.print_badge = print_badge;
    l.position = position.isEmpty() ? QStringLiteral("L") : position;
    l.size = size.isEmpty() ? QStringLiteral("M") : size;
    const int at = table_index(l.name);
    if (at >= 0)
        table_[size_t(at)] = l;
    else
        table_.push_back(l);

    // Each file is replaced whole, never deleted first: a kill between the two steps leaves
    // the new table beside the old fonts, each file readable.
    const QDir dir(folder());
    QString table_path = find_letterhead_file(folder(), kLetterheadTable);
    if (table_path.isEmpty())
        table_path = dir.filePath(kLetterheadTable);
    quoted::write_file(table_path, letterhead_table_bytes(table_));
    step(1);
    if (!l.name.contains(kPictureMark)) {
        const QString file = letterhead_font_file_name(l.name);
        QString font_path = find_letterhead_file(folder(), file);
        if (font_path.isEmpty())
            font_path = dir.filePath(file);
        quoted::write_file(font_path, letterhead_font_bytes(fonts));
    }
    step(2);
    table_ = read_letterhead_table(folder());
    fill_list();
    load_entry(l.name);
}

void LetterheadLayouts::bh_uitvee_click() {
    if (current < 0 || current >= bh_lys.size() || bh_lys.at(current) == kNew)
        return;
    const int at = table_index(bh_lys.at(current));
    if (at >= 0)
        table_[size_t(at)].name.clear();
    bh_lys.removeAt(current);
    current = -1;
    bh_data.fill(QString());
}

void LetterheadLayouts::bh_import_click() {
    const QString chosen =
        s_.dialogs().choose_file(s_.tr("GIDSADRES VAN BRIEFHOOF", "FOLDER ADDRESS OF LETTER HEAD"),
                                 {}, QStringLiteral("*.jpg"), false);
    if (chosen.trimmed().isEmpty())
        return;
    const QString source = QFileInfo(chosen).isFile() ? chosen : s_.fs().native(chosen);
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly) || in.size() > kLargestPicture)
        return;
    const QByteArray bytes = in.readAll();
    const QString suffix = QFileInfo(source).suffix().toLower();
    const QString target_name = QStringLiteral("skool_briefhoof.") + suffix;
    if (!is_safe_layout_name(target_name))
        return;
    const QDir dir(folder());
    // The new picture is in place before the old ones go.
    if (!quoted::write_file(dir.filePath(target_name), bytes))
        return;
    step(1);
    for (const QString& old :
         dir.entryList({QStringLiteral("skool_briefhoof.*")}, QDir::Files | QDir::Hidden)) {
        if (old != target_name &&
            old.startsWith(QStringLiteral("skool_briefhoof."), Qt::CaseInsensitive))
            QFile::remove(dir.filePath(old));
    }
    step(2);
    const QString name = shell::upper_name(target_name);
    if (!bh_lys.contains(name))
        bh_lys.insert(bh_lys.size() - 1, name);
    load_entry(name);
    bh_data[4] = QStringLiteral("50");
    bh_ok_click();
}

void LetterheadLayouts::bh_druk_click() {
    if (job == nullptr || !choose_target || !choose_target(*job))
        return;
    print_measuring_frame(*job, shell::leading_number(bh_data[4]),
                          shell::leading_number(bh_data[5]), shell::leading_number(bh_data[6]),
                          shell::leading_number(bh_data[7]));
}

void LetterheadLayouts::bh_font_click(int which) {
    if (which < 1 || which > 2)
        return;
    LetterheadFont& f = fonts[size_t(which - 1)];
    ui::FontChoice start;
    start.family = f.name;
    start.point_size = f.size;
    start.bold = f.bold;
    start.italic = f.italic;
    start.underline = f.underline;
    start.colour = f.colour;
    const auto chosen = s_.dialogs().choose_font(start);
    if (!chosen)
        return;
    f.name = chosen->family;
    f.size = int(chosen->point_size + 0.5);
    f.bold = chosen->bold;
    f.italic = chosen->italic;
    f.underline = chosen->underline;
    f.colour = chosen->colour;
}

}  // namespace korvel::reports
