#include "shell/folders.h"

#include "platform/winpath.h"

namespace korvel::shell {

bool is_year_text(const QString& text) {
    if (text.size() != 4 || text.at(0) == u'0') {
        return false;
    }
    for (const QChar c : text) {
        if (c < u'0' || c > u'9') {
            return false;
        }
    }
    return true;
}

QString general_year_folder(const QString& admin_folder, const QString& year) {
    QString g = admin_folder;
    const qsizetype at = g.lastIndexOf(QStringLiteral("ADMIN"), -1, Qt::CaseInsensitive);
    if (at < 0) {
        return g;
    }
    g.replace(at, 5, QStringLiteral("GENERAL\\G") + year);
    return g;
}

store::Folders default_folders(const QString& drive, const QString& year) {
    store::Folders f;
    const QString root = drive + QStringLiteral("\\VESPARINE");
    f.program_drive = drive;
    f.admin = root + QStringLiteral("\\ADMIN");
    f.funds = root + QStringLiteral("\\FUNDS\\") + year;
    f.stock = root + QStringLiteral("\\STOCK\\V") + year;
    f.staff = root + QStringLiteral("\\STAFF\\P") + year;
    f.hbooks = root + QStringLiteral("\\HBOOKS");
    f.roster = root + QStringLiteral("\\ROSTER\\R") + year;
    f.media = root + QStringLiteral("\\MEDIA\\B") + year;
    f.budget = root + QStringLiteral("\\BUDGET\\B") + year;
    f.general_year = general_year_folder(f.admin, year);
    f.school = f.general_year;
    f.workstation = drive + QStringLiteral("\\ProgramData\\VESPARINE");
    f.workstation_program = f.workstation + QStringLiteral("\\KORVEL");
    return f;
}

QStringList network_lines(const store::Folders& f) {
    return {f.admin, f.funds, f.stock, f.staff, f.hbooks, f.roster, f.media, f.budget};
}

}  // namespace korvel::shell
