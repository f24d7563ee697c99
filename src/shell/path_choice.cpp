#include "shell/path_choice.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>
#include <QSaveFile>
#include <QStandardPaths>
#include <algorithm>

#include "platform/codepage.h"
#include "platform/file_system.h"
#include "platform/winpath.h"
#include "shell/folders.h"

namespace korvel::shell {

QString drive_config_file() {
    const QString set =
        QProcessEnvironment::systemEnvironment().value(QStringLiteral("KORVEL_DRIVES"));
    if (!set.isEmpty()) {
        return set;
    }
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/korvel/drives.conf");
}

QString apply_path_choice(const PathChoice& choice, const QString& config_file,
                          const QString& workstation_drive, bool afrikaans) {
    const auto say = [afrikaans](const char* af, const char* en) {
        return QString::fromUtf8(afrikaans ? af : en);
    };
    const auto no_folder = [&](const QString& folder) {
        return say("DIE GIDS  ", "THE FOLDER  ") + folder +
               say("  BESTAAN NIE!", "  DOES NOT EXIST!");
    };
    // Every field ends up in a file that other programs read line by line: a line end or other
    // control character in one would add lines of its own.
    const auto has_control = [](const QString& text) {
        return std::any_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 32; });
    };
    // The drive must be a drive letter or a whole share root whose names are names.
    const QString drive = QString(choice.drive).replace(u'/', u'\\');
    const QString root = winpath::drive_of(drive);
    if (has_control(drive) || root.isEmpty() || root.compare(drive, Qt::CaseInsensitive) != 0) {
        return say("ONGELDIGE AANDRYWER: ", "INVALID DRIVE: ") + choice.drive;
    }
    if (!is_year_text(choice.year)) {
        return say("ONGELDIGE JAAR: ", "INVALID YEAR: ") + choice.year;
    }
    if (has_control(choice.native_folder)) {
        return no_folder(choice.native_folder);
    }
    const store::Folders tree = default_folders(drive.toUpper(), choice.year);
    // Each of the eight lines must be a folder on the chosen drive, as the drive map reads it.
    for (const QString& line : network_lines(tree)) {
        const QString clean = winpath::normalise(line);
        if (clean.compare(line, Qt::CaseInsensitive) != 0) {
            return no_folder(line);
        }
    }
    if (!choice.native_folder.isEmpty()) {
        if (!QFileInfo(choice.native_folder).isDir()) {
            return no_folder(choice.native_folder);
        }
        // The drive's line replaces any earlier line for the same drive.
        QStringList lines;
        QFile in(config_file);
        if (in.open(QIODevice::ReadOnly)) {
            const QStringList old = QString::fromUtf8(in.readAll()).split(u'\n');
            for (const QString& line : old) {
                const QString other = line.section(u'=', 0, 0).trimmed();
                if (!line.trimmed().isEmpty() && other.compare(drive, Qt::CaseInsensitive) != 0) {
                    lines << line.trimmed();
                }
            }
        }
        lines << drive.toUpper() + u'=' + QDir(choice.native_folder).absolutePath();
        QDir().mkpath(QFileInfo(config_file).absolutePath());
        QSaveFile out(config_file);
        if (!out.open(QIODevice::WriteOnly) ||
            out.write((lines.join(u'\n') + u'\n').toUtf8()) < 0 || !out.commit()) {
            return say("KAN NIE  ", "CANNOT WRITE  ") + config_file + say("  SKRYF NIE!", "  !");
        }
    }
    // The map as it now stands, to find the workstation folder and write the network file.
    QFile conf(config_file);
    platform::DriveMap map = platform::DriveMap::from_environment();
    if (conf.open(QIODevice::ReadOnly)) {
        map.read_config(QString::fromUtf8(conf.readAll()));
    }
    if (!choice.native_folder.isEmpty()) {
        map.map(drive, choice.native_folder);
    }
    const platform::FileSystem fs(map);
    const QString workstation = workstation_drive + QStringLiteral("\\ProgramData\\VESPARINE");
    QString text;
    for (const QString& line : network_lines(tree)) {
        text += line + QStringLiteral("\r\n");
    }
    if (!fs.create_folder(workstation) ||
        !fs.write_all(workstation + QStringLiteral("\\network.dta"), cp1252::encode(text))) {
        return say("KAN NIE  ", "CANNOT WRITE  ") + workstation + QStringLiteral("\\network.dta") +
               say("  SKRYF NIE!", "  !");
    }
    return {};
}

}  // namespace korvel::shell
