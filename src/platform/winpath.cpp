#include "platform/winpath.h"

#include <QRegularExpression>

namespace korvel::winpath {

QString join(const QString& folder, const QString& name) {
    if (folder.endsWith(u'\\')) {
        return folder + name;
    }
    return folder + u'\\' + name;
}

QString drive_of(const QString& path) {
    if (path.startsWith(QStringLiteral("\\\\"))) {
        // \\SERVER\SHARE is the root of a UNC path.
        const qsizetype server_end = path.indexOf(u'\\', 2);
        if (server_end < 0) {
            return path;
        }
        const qsizetype share_end = path.indexOf(u'\\', server_end + 1);
        return share_end < 0 ? path : path.left(share_end);
    }
    if (path.size() >= 2 && path.at(1) == u':' && path.at(0).isLetter()) {
        return path.left(2).toUpper();
    }
    return {};
}

QString parent_of(const QString& path) {
    const qsizetype last = path.lastIndexOf(u'\\');
    return last < 0 ? QString() : path.left(last);
}

QString name_of(const QString& path) {
    const qsizetype last = path.lastIndexOf(u'\\');
    return last < 0 ? path : path.mid(last + 1);
}

bool is_safe_file_component(const QString& name) {
    if (name.trimmed().isEmpty() || name == u"." || name == u"..") {
        return false;
    }
    for (const QChar c : name) {
        if (c == u'\\' || c == u'/' || c == u':' || c.unicode() < 32 || c == u'*' || c == u'?' ||
            c == u'"' || c == u'<' || c == u'>' || c == u'|') {
            return false;
        }
    }
    // A name of dots only ("...") is refused by Windows and means nothing useful elsewhere.
    return name.contains(QRegularExpression(QStringLiteral("[^.\\s]")));
}

}  // namespace korvel::winpath
