#pragma once
// Starting a sibling program of the suite (the path tool, a viewer) without waiting for it.

#include <QList>
#include <QString>
#include <QStringList>

namespace korvel::platform {

class ProcessStarter {
  public:
    virtual ~ProcessStarter();
    // Starts native_program (a native path) with args and returns at once; true when it
    // started. The program runs on after this process ends.
    virtual bool start_detached(const QString& native_program, const QStringList& args) = 0;
};

class QtProcessStarter : public ProcessStarter {
  public:
    // working_folder: native folder the program starts in; blank means this process's current
    // folder.
    explicit QtProcessStarter(QString working_folder = {})
        : working_folder_(std::move(working_folder)) {}
    bool start_detached(const QString& native_program, const QStringList& args) override;

  private:
    QString working_folder_;
};

// For tests: keeps every start asked for and answers with a set result (true unless told).
class RecordingProcessStarter : public ProcessStarter {
  public:
    struct Start {
        QString program;
        QStringList args;
        bool operator==(const Start&) const = default;
    };

    explicit RecordingProcessStarter(bool result = true) : result_(result) {}
    void set_result(bool result) { result_ = result; }

    bool start_detached(const QString& native_program, const QStringList& args) override;

    // Every call, also those answered false, in order.
    const QList<Start>& started() const { return started_; }
    void clear() { started_.clear(); }

  private:
    bool result_;
    QList<Start> started_;
};

}  // namespace korvel::platform
