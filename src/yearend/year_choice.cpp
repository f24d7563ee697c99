#include "yearend/year_choice.h"

#include "platform/winpath.h"
#include "shell/folders.h"
#include "shell/main_menu.h"

namespace korvel::yearend {

YearChoice::YearChoice(shell::Session& session,
                       std::function<void(const QString&)> menu_year_change)
    : s_(session), menu_year_change_(std::move(menu_year_change)) {}

void YearChoice::form_load() {
    caption = s_.tr("REKORDS VAN WATTER JAAR?", "RECORDS FROM WHICH YEAR?");
    rekords_jaar_lys = shell::ledger_years(s_);
    selected = static_cast<int>(rekords_jaar_lys.indexOf(s_.ledger_year));
}

QString YearChoice::chosen_year(const QString& year) const {
    const QString y = year.trimmed();
    if (y.isEmpty() || y.toInt() == 0) {
        return QString::number(s_.today().year());
    }
    return y;
}

void YearChoice::choose(const QString& picked) {
    const QString year = chosen_year(picked);
    if (!shell::is_year_text(year)) {
        return;
    }
    // graad_jaar.txt: the first line is the learner side's and passes through as it stands.
    const QString file = winpath::join(s_.folders.admin, QStringLiteral("graad_jaar.txt"));
    const QString first = QString::fromLatin1(s_.fs().read_all(file).value_or(QByteArray()))
                              .section(u'\n', 0, 0)
                              .remove(u'\r');
    s_.fs().write_all(file,
                      (first + QStringLiteral("\r\n") + year + QStringLiteral("\r\n")).toLatin1());
    // Every year folder path ends in its year.
    for (QString* folder :
         {&s_.folders.staff, &s_.folders.roster, &s_.folders.general_year, &s_.folders.school}) {
        if (folder->size() >= 4 && shell::is_year_text(folder->right(4))) {
            *folder = folder->left(folder->size() - 4) + year;
        }
    }
    // The year's older files convert as it is chosen, the school tables of its general year
    // folder too: the menu's year change opens only the staff files, and a later start opens
    // the school of the calendar year.
    s_.upgrade_year(year);
    if (menu_year_change_) {
        menu_year_change_(year);
    }
}

void YearChoice::rekords_jaar_lys_dbl_click(int index) {
    selected = index;
    form_unload();
}

void YearChoice::form_unload() {
    if (!chosen_ && selected >= 0 && selected < rekords_jaar_lys.size()) {
        chosen_ = true;
        choose(rekords_jaar_lys.at(selected));
    }
    unloaded = true;
}

}  // namespace korvel::yearend
