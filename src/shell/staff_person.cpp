#include "shell/staff_person.h"

#include "shell/helpers.h"
#include "store/record_layouts.h"

namespace korvel::shell {

bool is_educator(const store::Record& staff) {
    const QString c = staff.text(store::PRSALG["PK_KLAS_NR"]).trimmed();
    return !(c == u"PSS" || c == u"PS" || c == u"ADMIN");
}

QString staff_heading(const store::Record& staff) {
    const auto& A = store::PRSALG;
    return staff.text(A["PA_POS_NR"]).trimmed() + u' ' + staff.text(A["PA_TITEL"]).trimmed() +
           u' ' + initials(staff.text(A["PA_NAME"]).trimmed()) + u' ' +
           staff.text(A["PA_VAN"]).trimmed();
}

}  // namespace korvel::shell
