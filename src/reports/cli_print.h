#pragma once
// `korvel-cli print`: the staff lists without a window, to a PDF file or a workbook.

#include <QStringList>
#include <QTextStream>
#include <functional>
#include <memory>
#include <optional>

#include "reports/command_line.h"
#include "reports/report_engine.h"
#include "ui/scripted_dialogs.h"

namespace korvel::shell {
class Session;
}

namespace korvel::reports {

// The command line's dialogs, which also note whether a failure or a warning was reported.
class CliDialogs : public ui::UnattendedDialogs {
  public:
    void message(const QString& text, ui::Icon icon, const QString& title) override;
    bool failed = false;  // a critical message
    bool warned = false;  // an exclamation
};

// The options every print command takes: the language, the drives and the output file.
struct CliOutputOptions {
    std::optional<bool> afrikaans;
    QStringList drives;
    QString pdf, xlsx;
    // True when the option is one of these (a fault in its value goes to `why`).
    bool read(const QString& name, const QString& value, QString* why);
    // True when exactly one of --pdf and --xlsx was given; otherwise the fault goes to `why`.
    bool one_target(QString* why) const;
};

// A print command after its arguments were read: a reason in `why` prints it with the usage and
// gives 2; otherwise the report runs, and an end of the process inside it gives its exit code.
int run_print_command(const QString& why, const char* usage, QTextStream& err,
                      const std::function<int()>& run);

// What every report printed from the command line goes through: the drives, the start-up run
// unattended, the language, the device of the target file, and the end that tells whether the
// file was written.
class CliPrintRun {
  public:
    CliPrintRun();
    ~CliPrintRun();
    // 0 when the report can go on; otherwise the exit code, the reason on err.
    int open(const CliOutputOptions& options, QTextStream& err);
    // The target chosen as the print target form would: the workbook or the PDF.
    bool choose_target(PrintJob& job) const;
    // The exit code once the report has run.
    int finish(bool printed, QTextStream& out, QTextStream& err) const;

    CliDialogs dialogs;
    shell::Session& session() { return run_->session; }
    PrintJob& job() { return *job_; }

  private:
    std::unique_ptr<UnattendedRun> run_;
    std::unique_ptr<PrintDevice> device_;
    std::unique_ptr<PrintJob> job_;
    QString target_;
    bool to_workbook_ = false;
};

// args[0] is "print". Returns the exit code: 0 done, 1 failed, 2 bad arguments. PDF output
// needs a QGuiApplication (offscreen is enough) for its fonts.
int print_report(const QStringList& args, QTextStream& out, QTextStream& err);

// The usage lines of the command, for the command line's help.
extern const char* const kPrintUsage;

}  // namespace korvel::reports
