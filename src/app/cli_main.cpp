#include <QCoreApplication>
#include <QTextStream>
#include <cstdio>

#include "app/cli.h"

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("korvel-cli"));
    QTextStream out(stdout);
    QTextStream err(stderr);
    out.setEncoding(QStringConverter::Utf8);
    err.setEncoding(QStringConverter::Utf8);
    QStringList args = QCoreApplication::arguments();
    args.removeFirst();
    const int code = korvel::app::run_cli(args, out, err);
    out.flush();
    err.flush();
    return code;
}
