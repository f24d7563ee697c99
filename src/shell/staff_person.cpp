#include "shell/staff_person.h"

#include <QVarLengthArray>
#include <algorithm>

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

void record_initials_into(const char* staff, QVarLengthArray<QChar, 64>& out) {
    const std::string_view bytes = store::trimmed_bytes(staff, store::PRSALG["PA_NAME"]);
    QVarLengthArray<QChar, 64> names(qsizetype(bytes.size()));
    std::transform(bytes.begin(), bytes.end(), names.begin(),
                   [](char b) { return QChar(cp1252::to_char(uchar(b))); });
    initials_into(QStringView(names.constData(), names.size()), out);
}

namespace {
QChar* put(QChar* p, std::string_view bytes) {
    for (const char b : bytes) {
        *p++ = QChar(cp1252::to_char(uchar(b)));
    }
    return p;
}
}  // namespace

QString record_initials(const char* staff) {
    QVarLengthArray<QChar, 64> out;
    record_initials_into(staff, out);
    return QString(out.constData(), out.size());
}

QString list_name(const char* staff) {
    // Put together in place and made text in one piece: every list makes one a person.
    const auto& A = store::PRSALG;
    QVarLengthArray<QChar, 64> initials;
    record_initials_into(staff, initials);
    const std::string_view surname = store::trimmed_bytes(staff, A["PA_VAN"]);
    const std::string_view title = store::trimmed_bytes(staff, A["PA_TITEL"]);
    QString out(qsizetype(surname.size() + title.size()) + initials.size() + 2, Qt::Uninitialized);
    QChar* p = put(out.data(), surname);
    *p++ = u' ';
    p = std::copy(initials.begin(), initials.end(), p);
    *p++ = u' ';
    put(p, title);
    return out;
}

QString staff_heading(const store::Record& staff) {
    const auto& A = store::PRSALG;
    return staff.text(A["PA_POS_NR"]).trimmed() + u' ' + staff.text(A["PA_TITEL"]).trimmed() +
           u' ' + initials(staff.text(A["PA_NAME"]).trimmed()) + u' ' +
           staff.text(A["PA_VAN"]).trimmed();
}

}  // namespace korvel::shell
