#pragma once
// What every korvel-cli command shares: its options read one way (--drive and --lang, then the
// command's own) and the program's start-up run without a window.

#include <QMap>
#include <QStringList>
#include <QTextStream>
#include <optional>

#include "platform/drive_map.h"
#include "shell/session.h"
#include "shell/startup.h"
#include "ui/scripted_dialogs.h"

namespace korvel::reports {

struct CommandLine {
    platform::DriveMap drives = platform::DriveMap::from_environment();
    std::optional<bool> afrikaans;  // --lang, when given
    QMap<QString, QString> values;  // the command's own options that take a value
    QStringList flags;              // its own options that take none
    QStringList words;              // what stands without an option, in order

    // Reads args from `first` on. A fault is told on err, with the usage, and gives nullopt:
    // the command then ends with exit code 2.
    static std::optional<CommandLine> read(const QStringList& args, qsizetype first,
                                           const QStringList& with_value, const QStringList& flags,
                                           const char* usage, QTextStream& err);
    // A --drive "X:=DIR" added to the map; false after the message on err.
    bool add_drive(const QString& config, QTextStream& err);
};

// The usage told on err; the exit code of a command given wrongly.
int usage_fault(const char* usage, QTextStream& err);

// The program started as at its own start, up to the ledger year's staff files, on the command
// line's dialogs (or the caller's) and in the language asked for.
class UnattendedRun {
  public:
    explicit UnattendedRun(const platform::DriveMap& drives);
    UnattendedRun(ui::Dialogs& dialogs, const platform::DriveMap& drives);
    // False where the program would stay on its splash (the message went to standard error).
    bool start(std::optional<bool> afrikaans);

  private:
    ui::UnattendedDialogs own_dialogs_;

  public:
    shell::Session session;
    shell::Startup startup;
};

}  // namespace korvel::reports
