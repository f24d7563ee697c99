#pragma once
// korvel-cli: the program's core from a shell, without a window. Output is plain and
// machine-readable; where the program would show a message, the same words go to standard
// error, and the exit code is not 0 where the program would stop.

#include <QStringList>
#include <QTextStream>

namespace korvel::app {

// Runs one command line (without the program name). Returns the exit code.
int run_cli(const QStringList& args, QTextStream& out, QTextStream& err);

}  // namespace korvel::app
