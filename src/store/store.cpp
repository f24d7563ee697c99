#include "store/store.h"

#include <span>
#include <utility>

#include "platform/process_end.h"
#include "platform/winpath.h"
#include "store/folder_switch.h"
#include "store/upgrades.h"

namespace korvel::store {

namespace {

template <std::size_t... I>
std::array<FileState, kCodeCount> make_states(std::index_sequence<I...>) {
    return {FileState(layout_of(static_cast<Code>(I)))...};
}

}  // namespace

const Layout& layout_of(Code code) {
    switch (code) {
        case Code::PRSALG:
            return PRSALG;
        case Code::PRSADD:
            return PRSADD;
        case Code::PRSVAK:
            return PRSVAK;
        case Code::PRSNME:
            return PRSNME;
        case Code::BHRLGM:
            return BHRLGM;
        case Code::PRSAFW:
            return PRSAFW;
        case Code::PRSLNE:
            return PRSLNE;
        case Code::PRSSBI:
            return PRSSBI;
        case Code::PRSLURITS:
            return PRSLURITS;
        case Code::SKL:
            return SKL;
        case Code::SKLADD:
            return SKLADD;
        case Code::SKLHB:
            return SKLHB;
        case Code::SKLEPOS:
            return SKLEPOS;
        case Code::SBP:
            return SBP;
        case Code::SBP2018:
            return SBP2018;
    }
    return PRSALG;
}

std::optional<Code> code_from_text(const QString& code) {
    const QString up = code.trimmed().toUpper();
    for (int i = 0; i < kCodeCount; ++i) {
        const Code c = static_cast<Code>(i);
        if (up == QLatin1String(layout_of(c).code.data(), layout_of(c).code.size())) {
            return c;
        }
    }
    return std::nullopt;
}

bool is_staff_code(Code code) {
    return static_cast<int>(code) <= static_cast<int>(Code::PRSLURITS);
}

Store::Store(ui::Dialogs& dialogs, platform::DriveMap drives)
    : dialogs_(&dialogs),
      fs_(std::move(drives)),
      files_(make_states(std::make_index_sequence<kCodeCount>{})) {}

Store::~Store() = default;

QString Store::tr(const char* afrikaans_text, const char* english_text) const {
    return QString::fromUtf8(afrikaans ? afrikaans_text : english_text);
}

int Store::allocate_file_handle(bool system_range) {
    const int handle = pool_.take(system_range);
    if (handle == 0) {
        dialogs().message(QStringLiteral("System error!\nAll available File Handles are used!\n"
                                         "System will now terminate... Please reload."),
                          ui::Icon::Critical);
        int all = HandlePool::kCloseAll;
        close_file_handle(all);
    }
    return handle;
}

void Store::close_file_handle(int& handle) {
    if (handle == 0) {
        return;
    }
    if (handle == HandlePool::kCloseAll) {
        pool_.release_all();
        for (FileState& s : files_) {
            s.handle = 0;
        }
        reopen_steady_state();
        return;
    }
    pool_.release(handle);
    for (FileState& s : files_) {
        if (s.handle == handle) {
            s.handle = 0;
        }
    }
    handle = 0;
}

void Store::reopen_steady_state() {
    if (fs_.folder_exists(folders.school)) {
        open_file(Code::SKL, folders.school);
    }
}

QString Store::folder_of(Code code) const {
    const int h = state(code).handle;
    return h == 0 ? QString() : pool_.folder(h);
}

bool Store::open_staff_file(const QString& code, const QString& folder, bool flag) {
    const QString dir = folder.isEmpty() ? folders.staff : folder;
    const QString up = code.trimmed().toUpper();

    // The guard for the suite's other programs that open the staff files: they only learn
    // whether the master file is there. This program's own codes have no underscore.
    const bool sibling =
        executable_name.compare(QStringLiteral("KORVEL"), Qt::CaseInsensitive) != 0;
    if (sibling && dir.compare(folders.roster, Qt::CaseInsensitive) != 0 &&
        up.startsWith(QStringLiteral("PRS_")) && !flag) {
        if (!fs_.file_exists(winpath::join(dir, QStringLiteral("prs_alg_random.txt")))) {
            dialogs().message(
                tr("DIE PERSONEEL DATABASIS SE LEêRSTRUKTURE HET VERANDER!\n\n"
                   "LAAI ASSEBLIEF DIE NUUTSE WEERGAWE VAN KORVEL EN\n"
                   "MAAK DIE PERSONEEL DATABASIS OOP BY 'KORVEL | ALGEMENE BESONDERHEDE'\n"
                   "OM DIE LEêRAANPASSINGS TE FINALISEER ...",
                   "THE FILE STRUCTURES OF THE STAFF DATA BASE HAVE CHANGED!\n\n"
                   "PLEASE LOAD THE LATEST COPY OF KORVEL AND OPEN\n"
                   "THE STAFF DATA BASE USING 'KORVEL | GENERAL DETAILS'\n"
                   "TO PERFORM THE STRUCTURE CHANGES ..."),
                ui::Icon::Critical);
        }
        return false;
    }

    if (!fs_.folder_exists(dir)) {
        fs_.create_folder(dir);
    }
    if (up.isEmpty() || up == u"*") {
        bool all = true;
        for (Code c : kStaffCodes) {
            all = open_code(c, dir) && all;
        }
        return all;
    }
    const std::optional<Code> c = code_from_text(up);
    if (!c || !is_staff_code(*c)) {
        return false;
    }
    return open_code(*c, dir);
}

QString Store::resolve_drive(const QString& folder) const {
    if (winpath::drive_of(folder).isEmpty()) {
        QString rest = folder;
        if (!rest.startsWith(u'\\')) {
            rest.prepend(u'\\');
        }
        return QStringLiteral("C:") + rest;
    }
    return folder;
}

bool Store::open_suite_file(const QString& code, const QString& folder, bool) {
    const std::optional<Code> c = code_from_text(code);
    if (!c || is_staff_code(*c)) {
        return false;
    }
    const QString dir = resolve_drive(folder.isEmpty() ? folders.school : folder);
    if (!fs_.folder_exists(dir)) {
        const QString drive = winpath::drive_of(dir);
        if (!fs_.drive_exists(drive)) {
            dialogs().message(tr("NETWERK AANDRYWER  ", "NETWORK DRIVE  ") + drive +
                                  tr("  NIE BESKIKBAAR NIE ...\n\nKONTAK U NETWERKADMINISTRATEUR !",
                                     "  NOT AVAILABLE ...\n\nCONTACT YOUR NETWORK ADMINISTRATOR !"),
                              ui::Icon::Critical);
            end_process(1);
        }
        dialogs().message(
            tr("DIE GIDS  ", "THE FOLDER  ") + dir + tr("  BESTAAN NIE!", "  DOES NOT EXIST!"),
            ui::Icon::Critical);
        return false;
    }
    return open_code(*c, dir);
}

bool Store::open_file(Code code, const QString& folder) {
    QString dir = folder;
    if (dir.isEmpty()) {
        dir = is_staff_code(code) ? folders.staff : folders.school;
    }
    if (is_staff_code(code) && !fs_.folder_exists(dir)) {
        fs_.create_folder(dir);
    }
    return open_code(code, dir);
}

QString Store::upgrade_folder(Code code, const QString& folder, const QString& year) {
    const Layout& layout = layout_of(code);
    return upgrade_on_open(fs_, QString::fromLatin1(layout.code.data(), layout.code.size()), folder,
                           year, folders.workstation, [this](int rows) {
                               return dialogs().progress(
                                   tr("DBF-TABEL WORD OMGESKAKEL ...", "CONVERTING DBF TABLE ..."),
                                   rows, false);
                           });
}

QString Store::upgrade_year(const QString& year) {
    QString done;
    const auto upgrade = [&](const QString& year_folder, std::span<const Code> codes) {
        if (year_folder.size() < 4) {
            return;
        }
        const QString folder = year_folder.left(year_folder.size() - 4) + year;
        if (!fs_.folder_exists(folder)) {
            return;
        }
        for (const Code code : codes) {
            for (const QString& line :
                 upgrade_folder(code, folder, year).split(u'\n', Qt::SkipEmptyParts)) {
                done += folder + QStringLiteral(": ") + line + u'\n';
            }
        }
    };
    upgrade(folders.staff, kStaffCodes);
    upgrade(folders.general_year, kSuiteCodes);
    return done;
}

bool Store::open_code(Code code, const QString& folder) {
    // A year-end cut short is finished or undone before its folders are used, and dBASE
    // tables and older layouts convert before they are read.
    FileState& s = state(code);
    if (s.handle != 0) {
        close_file_handle(s.handle);
    }
    settle_folder_switch(fs_, folder);
    upgrade_folder(code, folder, ledger_year);
    const Layout& layout = layout_of(code);
    const int handle = allocate_file_handle(false);
    if (handle == 0) {
        return false;
    }
    const QString name = QString::fromLatin1(layout.file_name.data(), layout.file_name.size());
    const QString path = winpath::join(folder, name);
    QString error;
    auto file = RecordFile::open(fs_.native(path), layout.record_length, RecordFile::Access::Shared,
                                 &error);
    if (!file) {
        pool_.release(handle);
        dialogs().message(tr("KAN NIE  ", "CANNOT OPEN  ") + path + tr("  OOPMAAK NIE!", "  !"),
                          ui::Icon::Critical);
        return false;
    }
    // A file opened again keeps its current record number: a form that reopens a file it
    // shares with the form below it must not move that form off its record.
    s.count = file->count();
    pool_.attach(handle, std::move(file), name, folder);
    s.handle = handle;
    if (code == Code::PRSLURITS && s.count == 0) {
        seed_lurits_file(folder);
    }
    return true;
}

void Store::close_file(Code code) {
    close_file_handle(state(code).handle);
}

bool Store::read_record(Code code, int number) {
    FileState& s = state(code);
    RecordFile* f = pool_.file(s.handle);
    if (f == nullptr) {
        return false;
    }
    s.current = number;
    if (number < 1) {
        s.working.clear();
        return false;
    }
    return f->read(number, s.working.data());
}

bool Store::write_record(Code code, int number) {
    FileState& s = state(code);
    RecordFile* f = pool_.file(s.handle);
    if (f == nullptr || number < 1 || number > kMaxRecords) {
        return false;
    }
    if (!f->write(number, s.working.data())) {
        return false;
    }
    s.current = number;
    if (number > s.count) {
        s.count = number;
    }
    return true;
}

bool Store::append_record(Code code) {
    return write_record(code, state(code).count + 1);
}

void Store::scan_records(Code code, const std::function<void(int, Record&)>& visit) {
    FileState& s = state(code);
    scan_bytes(code, [&](int number, const char* bytes) {
        s.working.assign(bytes);
        s.current = number;
        visit(number, s.working);
    });
}

void Store::scan_bytes(Code code, const std::function<void(int, const char*)>& visit) {
    FileState& s = state(code);
    RecordFile* f = pool_.file(s.handle);
    if (f == nullptr || s.count < 1) {
        return;
    }
    f->scan(1, s.count, [&](int number, const char* bytes) {
        visit(number, bytes);
        return true;
    });
}

int Store::find_by_key(Code code, const Field& key_field, const QString& key) {
    FileState& s = state(code);
    RecordFile* f = pool_.file(s.handle);
    if (f == nullptr || s.count < 1) {
        return 0;
    }
    const QString wanted = key.trimmed();
    int found = 0;
    Record probe(layout_of(code));
    f->scan(1, s.count, [&](int number, const char* bytes) {
        probe.assign(bytes);
        if (probe.text(key_field).trimmed() == wanted) {
            found = number;
            return false;
        }
        return true;
    });
    if (found != 0) {
        read_record(code, found);
    }
    return found;
}

}  // namespace korvel::store
