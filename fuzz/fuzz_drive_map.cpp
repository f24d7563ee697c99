// Any bytes as the drives configuration followed by Windows-form paths (after a blank line):
// every path the map turns into a native one must lie below the native folder of the drive it
// names, however it is spelt.

#include <QString>
#include <QStringList>
#include <cstdint>
#include <cstdlib>

#include "platform/drive_map.h"
#include "platform/winpath.h"

using korvel::platform::DriveMap;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const qsizetype split = text.indexOf(QStringLiteral("\n\n"));
    const QString config = split < 0 ? QString() : text.left(split);
    const QString paths = split < 0 ? text : text.mid(split + 2);

    // The configuration is read as given; its folders are then moved below a root that does not
    // exist, so that no path is looked up on this machine's disk.
    DriveMap read = DriveMap::explicit_map({});
    read.read_config(config);
    DriveMap m = DriveMap::below(QStringLiteral("/nonexistent-korvel/default"));
    int n = 0;
    const auto drives = read.drives();
    for (auto it = drives.begin(); it != drives.end(); ++it) {
        m.map(it.key(), QStringLiteral("/nonexistent-korvel/%1").arg(n++));
    }

    for (const QString& path : paths.split(u'\n')) {
        const QString native = m.native_path(path);
        if (native.isEmpty()) {
            continue;
        }
        const QString root =
            m.native_root(korvel::winpath::drive_of(korvel::winpath::normalise(path)));
        if (root.isEmpty() || (native != root && !native.startsWith(root + u'/'))) {
            std::abort();
        }
        for (const QString& part : native.mid(root.size()).split(u'/')) {
            if (part == u"..") {
                std::abort();
            }
        }
    }
    return 0;
}
