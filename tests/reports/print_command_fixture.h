#pragma once
// A print command of korvel-cli run in this process on one demo tree for the whole suite, and
// what another program prints about the file it wrote.

#include <gtest/gtest.h>

#include <QDate>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>

#include "shell/demo_tree.h"
#include "ui/scripted_dialogs.h"

namespace korvel::testing {

// What a program prints on its standard output; it must end well.
inline QString output_of(const QString& program, const QStringList& args) {
    QProcess p;
    p.start(program, args);
    EXPECT_TRUE(p.waitForFinished(30000));
    EXPECT_EQ(p.exitCode(), 0) << p.readAllStandardError().toStdString();
    return QString::fromUtf8(p.readAllStandardOutput());
}

using PrintCommandFunction = int (*)(const QStringList&, QTextStream&, QTextStream&);

template <PrintCommandFunction Command>
class PrintCommandOnDemo : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        dir_ = new QTemporaryDir;
        ui::UnattendedDialogs demo_answers;
        shell::write_demo_tree(dir_->path(), QDate::currentDate().year(), demo_answers);
    }
    static void TearDownTestSuite() {
        delete dir_;
        dir_ = nullptr;
    }
    // "print" + args on drive C: of the demo tree; the exit code.
    int run(QStringList args) {
        out_text.clear();
        err_text.clear();
        QTextStream out(&out_text), err(&err_text);
        args.prepend("print");
        args << "--drive"
             << "C:=" + dir_->path();
        return Command(args, out, err);
    }
    static inline QTemporaryDir* dir_ = nullptr;
    QString out_text, err_text;
    QTemporaryDir target;
};

}  // namespace korvel::testing
