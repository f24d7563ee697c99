#include "shell/staff_person.h"

#include "platform/codepage.h"
#include "shell/helpers.h"
#include "store/field_bytes.h"
#include "store/record_layouts.h"

namespace korvel::shell {

bool is_educator(const store::Record& staff) {
    return is_educator(staff.data());
}

bool is_educator(const char* staff) {
    // The three classes are plain letters, the same in every code page.
    const std::string_view c = store::trimmed_bytes(staff, store::PRSALG["PK_KLAS_NR"]);
    return !(c == "PSS" || c == "PS" || c == "ADMIN");
}

QString list_name(const char* staff) {
    const auto& A = store::PRSALG;
    const QString names = initials(store::trimmed_text(staff, A["PA_NAME"]));
    const std::string_view surname = store::trimmed_bytes(staff, A["PA_VAN"]);
    const std::string_view title = store::trimmed_bytes(staff, A["PA_TITEL"]);
    QString out;
    out.reserve(qsizetype(surname.size() + title.size()) + names.size() + 2);
    cp1252::append(out, surname.data(), qsizetype(surname.size()));
    out += u' ';
    out += names;
    out += u' ';
    cp1252::append(out, title.data(), qsizetype(title.size()));
    return out;
}

QString staff_heading(const store::Record& staff) {
    const auto& A = store::PRSALG;
    return staff.text(A["PA_POS_NR"]).trimmed() + u' ' + staff.text(A["PA_TITEL"]).trimmed() +
           u' ' + initials(staff.text(A["PA_NAME"]).trimmed()) + u' ' +
           staff.text(A["PA_VAN"]).trimmed();
}

}  // namespace korvel::shell
