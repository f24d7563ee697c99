#include "check/data_repair.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMap>

#include "platform/winpath.h"
#include "shell/session.h"
#include "staff/register_upkeep.h"
#include "staff/staff_register.h"
#include "store/folder_switch.h"
#include "store/locks.h"
#include "store/record_layouts.h"

namespace korvel::check {

using winpath::join;

namespace {

// Copies a folder and what lies below it; symbolic links are not followed.
bool copy_folder(const QString& from, const QString& to) {
    if (!QDir().mkpath(to)) {
        return false;
    }
    const QFileInfoList entries =
        QDir(from).entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden);
    for (const QFileInfo& e : entries) {
        if (e.isSymLink()) {
            continue;
        }
        const QString target = to + u'/' + e.fileName();
        if (e.isDir() ? !copy_folder(e.filePath(), target) : !QFile::copy(e.filePath(), target)) {
            return false;
        }
    }
    return true;
}

// What a folder's files hold, by name, to tell afterwards what changed.
struct FileState {
    qint64 size;
    QByteArray digest;
};
QMap<QString, FileState> snapshot(const QString& native_folder) {
    QMap<QString, FileState> out;
    for (const QFileInfo& e : QDir(native_folder).entryInfoList(QDir::Files)) {
        if (e.isSymLink()) {
            continue;
        }
        QFile f(e.filePath());
        QCryptographicHash hash(QCryptographicHash::Sha1);
        if (f.open(QIODevice::ReadOnly)) {
            hash.addData(&f);
        }
        out.insert(e.fileName(), {e.size(), hash.result()});
    }
    return out;
}

QString record_length_note(const QString& name, qint64 before, qint64 after) {
    for (const store::Layout* l : store::kAllLayouts) {
        if (name.compare(QLatin1String(l->file_name.data(), qsizetype(l->file_name.size())),
                         Qt::CaseInsensitive) == 0) {
            return QStringLiteral(" (%1 records before, %2 after)")
                .arg(before / l->record_length)
                .arg(after / l->record_length);
        }
    }
    return {};
}

void report_changes(const QString& folder, const QMap<QString, FileState>& before,
                    const QMap<QString, FileState>& after, QStringList& changes) {
    for (auto it = after.begin(); it != after.end(); ++it) {
        const auto was = before.constFind(it.key());
        const QString path = join(folder, it.key());
        if (was == before.constEnd()) {
            changes << path + QStringLiteral(": made") + record_length_note(it.key(), 0, it->size);
        } else if (was->digest != it->digest) {
            changes << path + QStringLiteral(": changed") +
                           record_length_note(it.key(), was->size, it->size);
        }
    }
    for (auto it = before.begin(); it != before.end(); ++it) {
        if (!after.contains(it.key())) {
            changes << join(folder, it.key()) + QStringLiteral(": removed");
        }
    }
}

}  // namespace

QString backup_folder_name(const QString& folder, const QDateTime& when) {
    return folder + when.toString(QStringLiteral(" (yyyy-MM-dd hh.mm.ss)"));
}

RepairResult repair_tree(const CheckTree& tree, ui::Dialogs& dialogs) {
    RepairResult result;
    shell::Session session(dialogs, tree.drives);
    session.folders = tree.folders;
    session.ledger_year = tree.year;
    session.afrikaans = false;
    session.user_name = tree.user;
    platform::FileSystem& fs = session.fs();

    // The leftovers of an interrupted replace are a live compaction's own files while another
    // workstation compacts: the repair waits its turn rather than pull them from under it.
    std::unique_ptr<platform::HeldLock> compacting;
    QString why;
    if (session.lock_folder(tree.folders.staff, &compacting, &why) != store::Compaction::Done) {
        result.error =
            why.isEmpty()
                ? QStringLiteral("cannot lock %1: nothing was changed").arg(tree.folders.staff)
                : why + QStringLiteral(": nothing was changed");
        return result;
    }
    const std::vector<StaleLock> locks = stale_locks(tree);
    const QStringList leftovers = leftover_files(tree);
    const QStringList year_end = year_end_leftovers(tree);

    // 1. A dated copy of each year folder the repair writes in, before anything is changed.
    QStringList folders{tree.folders.staff};
    if (!locks.empty()) {
        folders << tree.folders.general_year;
    }
    const QDateTime now = QDateTime::currentDateTime();
    QMap<QString, QMap<QString, FileState>> before;
    for (const QString& folder : folders) {
        const QString backup = backup_folder_name(folder, now);
        const QString from = fs.native(folder);
        const QString to = fs.native(backup);
        if (from.isEmpty() || to.isEmpty() || QFileInfo::exists(to) || !copy_folder(from, to)) {
            result.error =
                QStringLiteral("cannot copy %1 to %2: nothing was changed").arg(folder, backup);
            return result;
        }
        result.backups << backup;
        before.insert(folder, snapshot(from));
    }

    // 2. An interrupted year-end finished or undone, as opening the year does; then leftovers
    // of an interrupted replace, as the next compaction removes them.
    if (!year_end.isEmpty()) {
        store::settle_folder_switch(fs, tree.folders.staff);
        result.changes << QStringLiteral("%1: the interrupted year-end settled")
                              .arg(winpath::parent_of(tree.folders.staff));
    }
    // A leftover that is a folder stays for a person.
    for (const QString& path : leftovers) {
        if (fs.file_exists(path)) {
            fs.delete_file(path);
        }
    }

    compacting.reset();  // the register's closing below compacts under the same lock

    // 3. Stale locks, freed by name as closing a row frees them.
    for (const StaleLock& lock : locks) {
        store::unlock_record(session, lock.type, lock.identification);
        result.changes << join(tree.folders.general_year, QStringLiteral("user_lock_record.txt")) +
                              QStringLiteral(": freed the lock %1=%2 of record %3")
                                  .arg(lock.type, lock.identification)
                                  .arg(lock.record);
    }

    // 4. The register opened on both populations repairs post numbers and makes the address and
    // subject records; closing it compacts the staff files.
    {
        staff::StaffRegister educators(session, true);
        if (educators.form_load()) {
            staff::StaffRegister employees(session, false);
            employees.form_load();
            employees.staff_exit_click();
        }
    }

    // 5. Companion records of the post numbers as compaction left them: the address records as
    // the register's next opening makes them, attendance and subject records as the forms make
    // them on demand.
    if (session.open_file(store::Code::PRSALG) && session.count(store::Code::PRSALG) > 0) {
        staff::RegisterUpkeep(session).prepare_lists();
        QStringList posts, active;
        constexpr const store::Field& kPost = store::PRSALG["PA_POS_NR"];
        constexpr const store::Field& kState = store::PRSALG["PA_AKTIEF"];
        session.scan_records(store::Code::PRSALG, [&](int, store::Record& r) {
            posts << r.text(kPost).trimmed();
            if (r.text(kState).trimmed().isEmpty()) {
                active << posts.last();
            }
        });
        for (const QString& post : posts) {
            session.ensure_subject_record(post);
        }
        // Attendance is captured for active staff only.
        for (const QString& post : active) {
            session.ensure_attendance_record(post);
        }
    }
    for (const store::Code code : store::kStaffCodes) {
        session.close_file(code);
    }

    for (const QString& folder : folders) {
        report_changes(folder, before.value(folder), snapshot(fs.native(folder)), result.changes);
    }
    result.done = true;
    return result;
}

}  // namespace korvel::check
