#include "platform/process_starter.h"

#include <QProcess>

namespace korvel::platform {

ProcessStarter::~ProcessStarter() = default;

bool QtProcessStarter::start_detached(const QString& native_program, const QStringList& args) {
    if (native_program.trimmed().isEmpty()) {
        return false;
    }
    QProcess process;
    process.setProgram(native_program);
    process.setArguments(args);
    if (!working_folder_.isEmpty()) {
        process.setWorkingDirectory(working_folder_);
    }
    return process.startDetached();
}

bool RecordingProcessStarter::start_detached(const QString& native_program,
                                             const QStringList& args) {
    started_.append({native_program, args});
    return result_;
}

}  // namespace korvel::platform
