#include "platform/winpath.h"

#include <QRegularExpression>
#include <QStringList>

namespace korvel::winpath {

QString join(const QString& folder, const QString& name) {
    if (folder.endsWith(u'\\')) {
        return folder + name;
    }
    return folder + u'\\' + name;
}

namespace {

bool is_separator(QChar c) {
    return c == u'\\' || c == u'/';
}

qsizetype next_separator(const QString& path, qsizetype from) {
    for (qsizetype i = from; i < path.size(); ++i) {
        if (is_separator(path.at(i))) {
            return i;
        }
    }
    return -1;
}

// A component that is dots and blanks only: "." and ".." climb or stay, and Windows strips
// trailing dots and blanks, so "... " or ". ." would climb too.
bool dots_only(const QString& part) {
    for (const QChar c : part) {
        if (c != u'.' && c != u' ') {
            return false;
        }
    }
    return true;
}

// A server or share name of a UNC root.
bool is_root_name(const QString& name) {
    if (name.isEmpty() || dots_only(name)) {
        return false;
    }
    for (const QChar c : name) {
        if (c.unicode() < 32 || c == u':' || c == u'*' || c == u'?' || c == u'"' || c == u'<' ||
            c == u'>' || c == u'|') {
            return false;
        }
    }
    return true;
}

}  // namespace

QString drive_of(const QString& path) {
    if (path.size() >= 2 && is_separator(path.at(0)) && is_separator(path.at(1))) {
        // \\SERVER\SHARE is the root of a UNC path.
        const qsizetype server_end = next_separator(path, 2);
        const QString server = path.mid(2, server_end < 0 ? -1 : server_end - 2);
        if (!is_root_name(server)) {
            return {};
        }
        if (server_end < 0) {
            return path;
        }
        const qsizetype share_end = next_separator(path, server_end + 1);
        const QString share =
            path.mid(server_end + 1, share_end < 0 ? -1 : share_end - server_end - 1);
        if (!is_root_name(share)) {
            return share.isEmpty() && share_end < 0 ? path.left(server_end) : QString();
        }
        return share_end < 0 ? path : path.left(share_end);
    }
    const QChar letter = path.size() >= 2 ? path.at(0).toUpper() : QChar();
    if (path.size() >= 2 && path.at(1) == u':' && letter >= u'A' && letter <= u'Z') {
        return path.left(2).toUpper();
    }
    return {};
}

QString normalise(const QString& path) {
    const QString drive = drive_of(path);
    if (drive.isEmpty()) {
        return {};
    }
    QStringList kept;
    const QString rest = path.mid(drive.size());
    qsizetype start = 0;
    while (start <= rest.size()) {
        qsizetype end = next_separator(rest, start);
        if (end < 0) {
            end = rest.size();
        }
        const QString part = rest.mid(start, end - start);
        start = end + 1;
        if (part.isEmpty() || part == u".") {
            continue;
        }
        if (part == u"..") {
            if (kept.isEmpty()) {
                return {};  // above the drive or share root
            }
            kept.removeLast();
            continue;
        }
        if (dots_only(part)) {
            return {};
        }
        for (const QChar c : part) {
            if (c.unicode() < 32) {
                return {};
            }
        }
        kept << part;
    }
    QString root = drive;
    root.replace(u'/', u'\\');
    return root + u'\\' + kept.join(u'\\');
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
