#include "store/locks.h"

#include <QDate>
#include <algorithm>
#include <cstring>
#include <memory>

#include "platform/codepage.h"
#include "platform/winpath.h"

namespace korvel::store {

namespace {

constexpr const Field& kLockUser = LOCK["LK_GEBRUIKER"];
constexpr const Field& kLockDate = LOCK["LK_DATUM"];
constexpr const Field& kLockProgram = LOCK["LK_STELSEL"];
constexpr const Field& kLockType = LOCK["LK_SOORT"];
constexpr const Field& kLockYear = LOCK["LK_JAAR"];
constexpr const Field& kLockId = LOCK["LK_IDENTIFIKASIE"];

constexpr const Field& kAuditUser = AUDIT["AT_GEBRUIKER"];
constexpr const Field& kAuditDate = AUDIT["AT_DATUM"];
constexpr const Field& kAuditTime = AUDIT["AT_TYD"];
constexpr const Field& kAuditEvent = AUDIT["AT_GEBEURE"];
constexpr const Field& kAuditPrevious = AUDIT["AT_VORIGE"];
constexpr const Field& kAuditAdmin = AUDIT["AT_ADMIN"];
constexpr const Field& kAuditFunds = AUDIT["AT_FONDSE"];
constexpr const Field& kAuditStaff = AUDIT["AT_PERSONEEL"];

constexpr int kNoFreeSlot = 99999;

const QString kLockFileName = QStringLiteral("user_lock_record.txt");
const QString kAuditFileName = QStringLiteral("Audit_Trail.txt");

// A table file opened for the length of one call on a handle of the pool; closing the handle
// closes the file.
class TableFile {
  public:
    TableFile(Store& store, const QString& folder, const QString& name, int record_length,
              bool system_range)
        : store_(store) {
        handle_ = store_.allocate_file_handle(system_range);
        if (handle_ == 0) {
            return;
        }
        auto f = RecordFile::open(store_.fs().native(winpath::join(folder, name)), record_length,
                                  RecordFile::Access::Shared);
        if (!f) {
            store_.pool().release(handle_);
            handle_ = 0;
            return;
        }
        store_.pool().attach(handle_, std::move(f), name, folder);
    }
    ~TableFile() { close(); }
    TableFile(const TableFile&) = delete;
    TableFile& operator=(const TableFile&) = delete;

    RecordFile* file() const { return handle_ == 0 ? nullptr : store_.pool().file(handle_); }
    void close() {
        store_.pool().release(handle_);
        handle_ = 0;
    }

  private:
    Store& store_;
    int handle_ = 0;
};

// The user's name as the system takes it: up to the first NUL.
QString user_name(const QString& user) {
    const qsizetype nul = user.indexOf(QChar(0));
    return nul < 0 ? user : user.left(nul);
}

// A value as it reads back trimmed from a field of the lock table: cut to the width, through
// the code page. Comparing in that form lets a name that is too long, or has a letter the code
// page lacks, still equal its own lock.
QString stored_form(const Field& f, const QString& value) {
    QByteArray bytes(f.width, ' ');
    cp1252::encode_fixed(value, bytes.data(), f.width);
    return cp1252::decode(bytes).trimmed();
}

QString cut_for_system(const Store& store, const QString& identification) {
    if (store.system_code.trimmed() != u"L") {
        return identification;
    }
    const qsizetype colon = identification.indexOf(u':');
    return colon < 0 ? identification : identification.left(colon);
}

bool general_year_exists(const Store& store) {
    return !store.folders.general_year.isEmpty() &&
           store.fs().folder_exists(store.folders.general_year);
}

// Appends one event to the audit trail of the workstation. With ring set, a log of a thousand
// records or more is deleted first and the event starts a new one.
void write_audit(Store& store, const QString& event, const QString& user, bool ring) {
    const QString folder = store.folders.workstation;
    if (folder.isEmpty() || !store.fs().folder_exists(folder)) {
        return;
    }
    Record r(AUDIT);
    auto log =
        std::make_unique<TableFile>(store, folder, kAuditFileName, AUDIT.record_length, true);
    if (log->file() == nullptr) {
        return;
    }
    int count = log->file()->count();
    if (count > 0) {
        // Nothing writes the field after the event: it goes on as the last event left it.
        Record previous(AUDIT);
        log->file()->read(count, previous.data());
        std::memcpy(r.data() + kAuditPrevious.offset, previous.data() + kAuditPrevious.offset,
                    static_cast<std::size_t>(kAuditPrevious.width));
    }
    if (ring && count >= kAuditRing) {
        log.reset();
        store.fs().delete_file(winpath::join(folder, kAuditFileName));
        log = std::make_unique<TableFile>(store, folder, kAuditFileName, AUDIT.record_length, true);
        if (log->file() == nullptr) {
            return;
        }
        count = log->file()->count();
    }
    r.set_text(kAuditUser, user_name(user));
    r.set_date(kAuditDate, QDate::currentDate());
    r.set_text(kAuditTime, audit_time_text(QTime::currentTime()));
    r.set_text(kAuditEvent, event);
    r.set_text(kAuditAdmin, store.folders.admin);
    r.set_text(kAuditFunds, store.folders.funds);
    r.set_text(kAuditStaff, store.folders.staff);
    log->file()->write(count + 1, r.data());
}

}  // namespace

QString audit_time_text(const QTime& time) {
    return time.toString(QStringLiteral("hh:mm:ss"));
}

bool lock_record(Store& store, const QString& type, QString& identification, const QString& user) {
    identification = cut_for_system(store, identification);
    if (!general_year_exists(store)) {
        return true;  // no lock table, no locking
    }
    const QString me = stored_form(kLockUser, user_name(user));
    const QString wanted_type = stored_form(kLockType, type);
    const QString wanted_id = stored_form(kLockId, identification);

    {
        TableFile table(store, store.folders.general_year, kLockFileName, LOCK.record_length,
                        false);
        RecordFile* f = table.file();
        if (f == nullptr) {
            return true;
        }
        const int count = f->count();
        int free_slot = kNoFreeSlot;
        bool conflict = false;
        Record r(LOCK);
        f->scan(1, count, [&](int number, const char* bytes) {
            r.assign(bytes);
            const QString slot_type = r.trim_text(kLockType);
            const QString slot_id = r.trim_text(kLockId);
            if (slot_type.isEmpty() && slot_id.isEmpty()) {
                free_slot = std::min(free_slot, number);
            }
            if (slot_type == wanted_type && slot_id == wanted_id &&
                r.text(kLockUser).trimmed() != me) {
                conflict = true;
                return false;
            }
            return true;
        });
        if (conflict) {
            const QString holder = r.text(kLockUser).trimmed();
            const QString program = r.text(kLockProgram).trimmed();
            const QString slot_type = r.text(kLockType);
            const QString slot_id = r.text(kLockId);
            table.close();
            const QString text =
                store.afrikaans ? QStringLiteral("REKORD : SOORT = ") + slot_type +
                                      QStringLiteral(", IDENTIFIKASIE = ") + slot_id +
                                      QStringLiteral(" IS REEDS IN GEBRUIK!\n     GEBRUIKER\t") +
                                      holder + QStringLiteral("\n     STELSEL\t") + program +
                                      QStringLiteral("\n\nPROBEER ASSEBLIEF LATER ...")
                                : QStringLiteral("RECORD : TYPE = ") + slot_type +
                                      QStringLiteral(", IDENTIFICATION = ") + slot_id +
                                      QStringLiteral(" IS CURRENTLY IN USE!\n     USER\t") +
                                      holder + QStringLiteral("\n     SYSTEM \t") + program +
                                      QStringLiteral("\n\nPLEASE TRY AGAIN LATER ...");
            store.dialogs().message(text, ui::Icon::Critical);
            return false;
        }

        const int slot = free_slot != kNoFreeSlot ? free_slot : count + 1;
        r.clear();
        r.set_text(kLockUser, user_name(user));
        r.set_date(kLockDate, QDate::currentDate());
        r.set_text(kLockProgram, store.executable_name);
        r.set_text(kLockType, type);
        bool year_ok = false;
        const int year = store.ledger_year.trimmed().toInt(&year_ok);
        r.set_int16(kLockYear, year_ok ? year : 0);
        r.set_text(kLockId, identification);
        f->write(slot, r.data());
    }
    write_audit(store, type + u'=' + identification.trimmed(), user, true);
    return true;
}

void unlock_record(Store& store, const QString& type, const QString& identification) {
    if (!general_year_exists(store)) {
        return;
    }
    const QString wanted_type = stored_form(kLockType, type);
    const QString wanted_id = stored_form(kLockId, cut_for_system(store, identification));
    TableFile table(store, store.folders.general_year, kLockFileName, LOCK.record_length, false);
    RecordFile* f = table.file();
    if (f == nullptr) {
        return;
    }
    Record r(LOCK);
    f->scan(1, f->count(), [&](int number, const char* bytes) {
        r.assign(bytes);
        if (r.text(kLockType).trimmed() != wanted_type || r.text(kLockId).trimmed() != wanted_id) {
            return true;
        }
        // The slot is free again; who held it, when and in which program stay.
        r.set_text(kLockType, QString());
        r.set_text(kLockId, QString());
        f->write(number, r.data());
        return false;
    });
}

void clear_foreign_lock(Store& store, const QString& identification, const QString& user) {
    if (identification.trimmed().isEmpty() || !store.fs().folder_exists(identification) ||
        !general_year_exists(store)) {
        return;
    }
    const QString me = stored_form(kLockUser, user_name(user));
    const QString wanted_id = stored_form(kLockId, identification);
    TableFile table(store, store.folders.general_year, kLockFileName, LOCK.record_length, false);
    RecordFile* f = table.file();
    if (f == nullptr) {
        return;
    }
    Record r(LOCK);
    f->scan(1, f->count(), [&](int number, const char* bytes) {
        r.assign(bytes);
        if (r.text(kLockType).trimmed() != u"L" || r.text(kLockId).trimmed() != wanted_id ||
            r.text(kLockUser).trimmed() == me) {
            return true;
        }
        r.clear();
        f->write(number, r.data());
        return false;
    });
}

void log_form_open(Store& store, const QString& form_name, const QString& user) {
    write_audit(store, form_name, user, false);
}

}  // namespace korvel::store
