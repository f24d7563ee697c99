#include "platform/windows_settings.h"

#include <QSysInfo>

#ifdef Q_OS_WIN
#include <windows.h>

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QStandardPaths>
#endif

namespace korvel::platform {

#ifdef Q_OS_WIN

namespace {

// Sets one locale value of the user when it differs; true when it was set.
bool set_locale_value(LCTYPE type, const wchar_t* wanted) {
    wchar_t current[16] = {};
    if (GetLocaleInfoW(LOCALE_USER_DEFAULT, type, current, 16) > 0 &&
        wcscmp(current, wanted) == 0) {
        return false;
    }
    return SetLocaleInfoW(LOCALE_USER_DEFAULT, type, wanted) != 0;
}

}  // namespace

bool force_number_format() {
    bool changed = false;
    changed |= set_locale_value(LOCALE_SDECIMAL, L".");
    changed |= set_locale_value(LOCALE_STHOUSAND, L",");
    changed |= set_locale_value(LOCALE_SMONDECIMALSEP, L".");
    changed |= set_locale_value(LOCALE_SMONTHOUSANDSEP, L",");
    if (changed) {
        SendMessageTimeoutW(HWND_BROADCAST, WM_SETTINGCHANGE, 0, 0, SMTO_ABORTIFHUNG, 1000,
                            nullptr);
    }
    return changed;
}

void show_hidden_folders() {
    QSettings advanced(
        QStringLiteral("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\"
                       "Explorer\\Advanced"),
        QSettings::NativeFormat);
    for (const char* name : {"Hidden", "ShowSuperHidden"}) {
        if (advanced.value(QLatin1String(name)).toInt() == 2) {
            advanced.setValue(QLatin1String(name), 1);
        }
    }
}

void remove_desktop_shortcuts(const QStringList& names) {
    const QString desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    for (const QString& name : names) {
        QFile::remove(QDir(desktop).filePath(name + QStringLiteral(".lnk")));
    }
}

QString windows_product_name() {
    QSettings version(
        QStringLiteral("HKEY_LOCAL_MACHINE\\Software\\Microsoft\\Windows NT\\CurrentVersion"),
        QSettings::NativeFormat);
    const QString name = version.value(QStringLiteral("ProductName")).toString();
    return name.isEmpty() ? QSysInfo::prettyProductName() : name;
}

#else

bool force_number_format() {
    return false;
}
void show_hidden_folders() {}
void remove_desktop_shortcuts(const QStringList&) {}
QString windows_product_name() {
    // No registry here: the system's own name stands in, so that the page footer reads
    // "VESPARINE (Linux)" and never "VESPARINE ()".
    const QString kernel = QSysInfo::kernelType();
    if (kernel == u"linux")
        return QStringLiteral("Linux");
    if (kernel == u"darwin")
        return QStringLiteral("macOS");
    const QString name = QSysInfo::prettyProductName();
    return name.isEmpty() ? kernel : name;
}

#endif

}  // namespace korvel::platform
