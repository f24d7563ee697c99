#include <QCoreApplication>
#include <QGuiApplication>
#include <QTextStream>
#include <cstdio>
#include <cstring>
#include <memory>

#include "app/cli.h"

int main(int argc, char** argv) {
    // Printing to PDF lays text out with the fonts of the GUI library; it needs no display.
    const bool printing = argc > 1 && std::strcmp(argv[1], "print") == 0;
    if (printing && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    std::unique_ptr<QCoreApplication> application =
        printing ? std::make_unique<QGuiApplication>(argc, argv)
                 : std::make_unique<QCoreApplication>(argc, argv);
    QCoreApplication& app = *application;
    app.setApplicationName(QStringLiteral("korvel-cli"));
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
