#pragma once
// A korvel-cli command run in this process: its exit code and what it printed.

#include <QStringList>
#include <QTextStream>

#include "app/cli.h"

namespace korvel::testing {

struct CliRun {
    int code;
    QString out;
    QString err;
};

inline CliRun cli_run(const QStringList& args) {
    QString out, err;
    QTextStream o(&out), e(&err);
    const int code = app::run_cli(args, o, e);
    o.flush();
    e.flush();
    return {code, out, err};
}

}  // namespace korvel::testing
