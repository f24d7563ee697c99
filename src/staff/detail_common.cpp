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

bool write_master_record(shell::Session& session, const store::Record& edited) {
    store::Record& working = session.working(Code::PRSALG);
    const store::Record before = working;
    working = edited;
    if (session.write_record(Code::PRSALG, session.state(Code::PRSALG).current)) {
        return true;
    }
    working = before;
    QString folder = session.folder_of(Code::PRSALG);
    if (folder.isEmpty()) {
        folder = session.folders.staff;
    }
    const QString path = folder + u'\\' + QString::fromLatin1(PRSALG.file_name);
    session.dialogs().message(
        session.tr("KAN NIE  ", "CANNOT WRITE  ") + path + session.tr("  SKRYF NIE!", "  !"),
        ui::Icon::Critical);
    return false;
}

}  // namespace korvel::staff
