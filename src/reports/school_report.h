#pragma once
// The school as the page header and footer print it, taken from the session's school globals.

#include "reports/report_engine.h"

namespace korvel::shell {
class Session;
}

namespace korvel::reports {

// Name, address lines, telephone and fax (each after its dialling code), e-mail, province
// code, the program's name and version, the operating system and the school badge.
ReportSchool report_school(const shell::Session& session);

}  // namespace korvel::reports
