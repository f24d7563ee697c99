#pragma once
// dBASE tables for the tests are written by another program (Python's dbf module, Debian's
// python3-dbf), so that the reader is not checked against its own idea of the format.

#include <gtest/gtest.h>

#include <QProcess>
#include <QString>

namespace korvel::testing {

// Runs script with the folder as its first argument. The script has `dbf` imported and
// `folder` set.
inline ::testing::AssertionResult write_dbf_tables(const QString& native_folder,
                                                   const QString& script) {
    for (const QString& python : {QStringLiteral("/usr/bin/python3"), QStringLiteral("python3")}) {
        QProcess p;
        p.start(python, {QStringLiteral("-c"),
                         QStringLiteral("import dbf, sys\nfolder = sys.argv[1]\n") + script,
                         native_folder});
        if (!p.waitForFinished(60000) || p.exitStatus() != QProcess::NormalExit) {
            continue;
        }
        const QString error = QString::fromUtf8(p.readAllStandardError());
        if (p.exitCode() == 0) {
            return ::testing::AssertionSuccess();
        }
        if (!error.contains(QStringLiteral("No module named 'dbf'"))) {
            return ::testing::AssertionFailure() << error.toStdString();
        }
    }
    return ::testing::AssertionFailure()
           << "no python3 can import dbf: install python3-dbf (scripts/install-deps.sh)";
}

}  // namespace korvel::testing
