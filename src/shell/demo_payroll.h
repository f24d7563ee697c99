#pragma once
// The demo tree's payroll extras: free earnings and deduction lines on the month records, a
// month whose deductions pass the earnings, and the school's letterheads, one a text layout and
// one the scanned stationery.

#include <QStringList>

namespace korvel::shell {

class Session;

// Works on the open PRSLNE of the session and writes into its general year folder; the files
// written are added to `files`.
void write_demo_payroll(Session& session, QStringList& files);

}  // namespace korvel::shell
