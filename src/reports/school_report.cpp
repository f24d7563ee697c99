#include "reports/school_report.h"

#include <QFileInfo>

#include "shell/session.h"

namespace korvel::reports {

namespace {

// "022 713 2450": the dialling code, when there is one, before the number.
QString with_code(const QString& code, const QString& number) {
    const QString c = code.trimmed();
    const QString n = number.trimmed();
    if (c.isEmpty() || n.isEmpty())
        return n;
    return c + u' ' + n;
}

}  // namespace

ReportSchool report_school(const shell::Session& session) {
    const shell::SchoolGlobals& g = session.school;
    ReportSchool s;
    s.name = g.name;
    s.address1 = g.address1;
    s.address2 = g.address2;
    s.address3 = g.address3;
    if (!g.postal_code.trimmed().isEmpty()) {
        // The postal code follows the last address line that has text.
        QString* last = !s.address3.isEmpty()   ? &s.address3
                        : !s.address2.isEmpty() ? &s.address2
                                                : &s.address1;
        *last = last->isEmpty() ? g.postal_code.trimmed() : *last + u' ' + g.postal_code.trimmed();
    }
    s.telephone = with_code(g.telephone_code, g.telephone);
    s.fax = with_code(g.fax_code, g.fax);
    s.email = g.email;
    s.province_code = g.province_code;
    if (!session.executable_name.trimmed().isEmpty())
        s.program_name = session.executable_name.trimmed();
    s.version = session.program_version;
    s.operating_system = session.windows_product_name;
    if (!session.badge_file.trimmed().isEmpty()) {
        const QString native = session.fs().native(session.badge_file);
        if (!native.isEmpty() && QFileInfo(native).isFile())
            s.badge = QImage(native);
    }
    if (!session.province_badge_file.trimmed().isEmpty()) {
        const QString native = session.fs().native(session.province_badge_file);
        if (!native.isEmpty() && QFileInfo(native).isFile())
            s.emblem = QImage(native);
    }
    return s;
}

}  // namespace korvel::reports
