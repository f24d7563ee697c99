#include "staff/subject_record.h"

#include "platform/winpath.h"

namespace korvel::staff {

using store::Code;
using store::PRSVAK;

SubjectRecord load_subject_record(shell::Session& session, const QString& post) {
    SubjectRecord out;
    const QString key = post.trimmed();
    if (key.isEmpty()) {
        return out;
    }
    session.ensure_subject_record(key);
    out.number = session.find_by_key(Code::PRSVAK, PRSVAK["PV_POS_NR"], key);
    if (out.number != 0) {
        out.record = session.working(Code::PRSVAK);
    }
    return out;
}

bool write_subject_record(shell::Session& session, const SubjectRecord& subjects) {
    if (subjects.number == 0) {
        return false;
    }
    session.working(Code::PRSVAK) = subjects.record;
    if (session.write_record(Code::PRSVAK, subjects.number)) {
        return true;
    }
    const QString path =
        winpath::join(session.folder_of(Code::PRSVAK), QString::fromLatin1(PRSVAK.file_name));
    session.dialogs().message(
        session.tr("KAN NIE  ", "CANNOT WRITE  ") + path + session.tr("  SKRYF NIE!", "  !"),
        ui::Icon::Critical);
    return false;
}

}  // namespace korvel::staff
