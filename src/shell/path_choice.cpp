#include "shell/path_choice.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcessEnvironment>
#include <QSaveFile>
#include <QStandardPaths>

#include "platform/codepage.h"
#include "platform/file_system.h"
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
    platform::DriveMap probe = platform::DriveMap::explicit_map({});
    if (!probe
             .read_config(
                 choice.drive + u'=' +
                 (choice.native_folder.isEmpty() ? QStringLiteral("x") : choice.native_folder))
             .isEmpty()) {
        return say("ONGELDIGE AANDRYWER: ", "INVALID DRIVE: ") + choice.drive;
    }
    if (!choice.native_folder.isEmpty()) {
        if (!QFileInfo(choice.native_folder).isDir()) {
            return say("DIE GIDS  ", "THE FOLDER  ") + choice.native_folder +
                   say("  BESTAAN NIE!", "  DOES NOT EXIST!");
        }
        // The drive's line replaces any earlier line for the same drive.
        QStringList lines;
        QFile in(config_file);
        if (in.open(QIODevice::ReadOnly)) {
            const QStringList old = QString::fromUtf8(in.readAll()).split(u'\n');
            for (const QString& line : old) {
                const QString drive = line.section(u'=', 0, 0).trimmed();
                if (!line.trimmed().isEmpty() &&
                    drive.compare(choice.drive, Qt::CaseInsensitive) != 0) {
                    lines << line.trimmed();
                }
            }
        }
        lines << choice.drive.toUpper() + u'=' + QDir(choice.native_folder).absolutePath();
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
        map.map(choice.drive, choice.native_folder);
    }
    const platform::FileSystem fs(map);
    const store::Folders tree = default_folders(choice.drive.toUpper(), choice.year);
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
