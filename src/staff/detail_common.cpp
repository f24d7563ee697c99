#include "staff/detail_common.h"

#include "staff/staff_register.h"
#include "store/record_layouts.h"

namespace korvel::staff {

using store::Code;
using store::PRSALG;

TypedKey typed_key(int key_ascii, bool capitals) {
    if (key_ascii == kEnterKey) {
        return {0, true};
    }
    if (capitals && key_ascii >= 'a' && key_ascii <= 'z') {
        return {key_ascii - ('a' - 'A'), false};
    }
    return {key_ascii, false};
}

namespace {

const store::Field& key_field(store::Code code) {
    return code == Code::PRSADD ? store::PRSADD["PD_POS_NR"] : PRSALG["PA_POS_NR"];
}

}  // namespace

HeldRecord hold_working_record(shell::Session& session, store::Code code) {
    return {code, session.state(code).current,
            session.working(code).text(key_field(code)).trimmed()};
}

bool read_held_record(shell::Session& session, HeldRecord& held) {
    if (!session.is_open(held.code)) {
        return false;
    }
    if (held.number >= 1 && held.number <= session.count(held.code) &&
        session.read_record(held.code, held.number) &&
        session.working(held.code).text(key_field(held.code)).trimmed() == held.post) {
        return true;
    }
    if (held.post.isEmpty()) {
        return false;
    }
    const int found = session.find_by_key(held.code, key_field(held.code), held.post);
    if (found == 0) {
        return false;
    }
    held.number = found;
    return true;
}

void cannot_write_message(shell::Session& session, store::Code code) {
    QString folder = session.folder_of(code);
    if (folder.isEmpty()) {
        folder = session.folders.staff;
    }
    const QString path = folder + u'\\' + QString::fromLatin1(store::layout_of(code).file_name);
    session.dialogs().message(
        session.tr("KAN NIE  ", "CANNOT WRITE  ") + path + session.tr("  SKRYF NIE!", "  !"),
        ui::Icon::Critical);
}

std::optional<store::Record> read_held_for_edit(shell::Session& session, HeldRecord& held) {
    if (!read_held_record(session, held)) {
        cannot_write_message(session, held.code);
        return std::nullopt;
    }
    return session.working(held.code);
}

bool write_held_record(shell::Session& session, const store::Record& edited, HeldRecord& held) {
    if (!read_held_record(session, held)) {
        cannot_write_message(session, held.code);
        return false;
    }
    store::Record& working = session.working(held.code);
    const store::Record before = working;
    working = edited;
    if (!session.write_record(held.code, held.number)) {
        working = before;
        cannot_write_message(session, held.code);
        return false;
    }
    held = hold_working_record(session, held.code);
    return true;
}

}  // namespace korvel::staff
