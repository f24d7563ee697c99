#include "timetable/roster_files.h"

#include "platform/process_end.h"
#include "platform/winpath.h"
#include "shell/session.h"
#include "store/quoted_text.h"

namespace korvel::timetable {

using store::Record;
using store::RecordFile;

const store::Layout& roster_layout(RosterCode code) {
    return *store::kRosterLayouts[size_t(code)];
}

namespace {

QString latin(std::string_view s) {
    return QString::fromLatin1(s.data(), qsizetype(s.size()));
}

}  // namespace

RosterFiles::RosterFiles(shell::Session& session) : s_(session) {}

RosterFiles::~RosterFiles() {
    for (int& h : handles_)
        close_roster_file(h);
}

int RosterFiles::open_roster_file(const QString& code, const QString& folder_in,
                                  const QString& name) {
    const QString folder = folder_in.isEmpty() ? s_.folders.roster : folder_in;
    const QString drive = winpath::drive_of(folder);
    if (!drive.isEmpty() && !s_.fs().drive_exists(drive)) {
        s_.dialogs().message(
            s_.tr("NETWERK AANDRYWER  ", "NETWORK DRIVE  ") + drive +
                s_.tr("  NIE BESKIKBAAR NIE ...", "  NOT AVAILABLE ...") + QStringLiteral("\n\n") +
                s_.tr("KONTAK U NETWERKADMINISTRATEUR !", "CONTACT YOUR NETWORK ADMINISTRATOR !"),
            ui::Icon::Critical);
        end_process(1);
    }
    read_key_roster(folder);
    const QString up = code.trimmed().toUpper();
    int last = 0;
    for (int c = 0; c < kRosterCodes; ++c) {
        const store::Layout& layout = *store::kRosterLayouts[c];
        if (up != u"*" && up != latin(layout.code))
            continue;
        QString file = latin(layout.file_name);
        if (RosterCode(c) == RosterCode::VAK && !name.trimmed().isEmpty()) {
            // A given name is one component of the folder, never a path.
            if (!winpath::is_safe_file_component(name.trimmed()))
                continue;
            file = name.trimmed() + QStringLiteral("_random.txt");
        }
        last = open_one(RosterCode(c), folder, file);
    }
    return last;
}

int RosterFiles::open_one(RosterCode code, const QString& folder, const QString& file_name) {
    int& h = handles_[size_t(code)];
    close_roster_file(h);
    const QString path = winpath::join(folder, file_name);
    if (!s_.fs().file_exists(path))
        return 0;
    const int handle = s_.allocate_file_handle(false);
    if (handle == 0)
        return 0;
    auto file = RecordFile::open(s_.fs().native(path), roster_layout(code).record_length,
                                 RecordFile::Access::Shared);
    if (!file) {
        s_.pool().release(handle);
        return 0;
    }
    s_.pool().attach(handle, std::move(file), file_name, folder);
    h = handle;
    return h;
}

void RosterFiles::close_roster_file(int& handle) {
    if (handle == 0)
        return;
    for (int& h : handles_)
        if (h == handle)
            h = 0;
    s_.pool().release(handle);
    handle = 0;
}

int RosterFiles::count(RosterCode code) const {
    const RecordFile* f = s_.pool().file(handle(code));
    return f ? f->count() : 0;
}

bool RosterFiles::read(RosterCode code, int number, Record& into) const {
    into.clear();
    RecordFile* f = s_.pool().file(handle(code));
    if (!f || number < 1 || number > f->count())
        return false;
    return f->read(number, into.data());
}

bool RosterFiles::write(RosterCode code, int number, const Record& from) {
    RecordFile* f = s_.pool().file(handle(code));
    if (!f || number < 1 || number > f->count() || from.size() != f->record_length())
        return false;
    return f->write(number, from.data());
}

void RosterFiles::scan(RosterCode code,
                       const std::function<bool(int, const Record&)>& visit) const {
    RecordFile* f = s_.pool().file(handle(code));
    if (!f || f->count() < 1)
        return;
    Record r(roster_layout(code));
    f->scan(1, f->count(), [&](int number, const char* bytes) {
        r.assign(bytes);
        return visit(number, r);
    });
}

int RosterFiles::find(RosterCode code, const QString& key) const {
    const QString wanted = key.trimmed().toUpper();
    if (wanted.isEmpty())
        return 0;
    const store::Field& key_field = roster_layout(code).fields[0];
    int found = 0;
    scan(code, [&](int number, const Record& r) {
        if (r.text(key_field).trimmed().toUpper() != wanted)
            return true;
        found = number;
        return false;
    });
    return found;
}

void RosterFiles::read_key_roster(const QString& folder) {
    key_roster.clear();
    const auto bytes = s_.fs().read_all(winpath::join(folder, QStringLiteral("key_roster.sve")));
    if (!bytes)
        return;
    quoted::Reader reader(*bytes);
    for (const quoted::Value& v : reader.read_line()) {
        if (v.kind == quoted::Value::Kind::Invalid) {
            key_roster.clear();
            return;
        }
        key_roster << v.text;
    }
}

}  // namespace korvel::timetable
