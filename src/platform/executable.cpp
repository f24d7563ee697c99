#include "platform/executable.h"

#include <QCoreApplication>
#include <QProcessEnvironment>

namespace korvel::platform {

QString executable_windows_path(const DriveMap& drives) {
    const QString set =
        QProcessEnvironment::systemEnvironment().value(QStringLiteral("KORVEL_EXE"));
    if (!set.isEmpty()) {
        return set;
    }
    const QString mapped = drives.windows_path(QCoreApplication::applicationFilePath());
    if (!mapped.isEmpty()) {
        return mapped;
    }
    return QStringLiteral("C:\\Program Files (x86)\\KORVEL\\KORVEL.EXE");
}

}  // namespace korvel::platform
