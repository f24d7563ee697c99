#include "platform/user.h"

#include <QProcessEnvironment>

#ifdef Q_OS_WIN
#include <windows.h>
#else
#include <pwd.h>
#include <unistd.h>
#endif

namespace korvel::platform {

QString current_user() {
#ifdef Q_OS_WIN
    wchar_t buffer[256] = {};
    DWORD size = 256;
    if (!GetUserNameW(buffer, &size)) {
        return {};
    }
    return QString::fromWCharArray(buffer);
#else
    if (const passwd* pw = getpwuid(geteuid()); pw != nullptr && pw->pw_name != nullptr) {
        return QString::fromLocal8Bit(pw->pw_name);
    }
    return QProcessEnvironment::systemEnvironment().value(QStringLiteral("USER"));
#endif
}

}  // namespace korvel::platform
