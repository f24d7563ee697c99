#pragma once
// A temporary folder that holds the fuzzed data tree's drives and nothing else: whatever a
// target creates outside those drives shows as a new entry beside them.

#include <QDir>
#include <QStringList>
#include <QTemporaryDir>
#include <cstdlib>

namespace korvel::fuzzing {

class Jail {
  public:
    explicit Jail(const QStringList& drives) : drives_(drives) {
        for (const QString& d : drives_) {
            QDir().mkpath(path(d));
        }
    }
    QString path(const QString& drive) const { return dir_.path() + u'/' + drive; }
    // Ends the run when anything but the drives' folders stands in the jail.
    void check() const {
        const QStringList there =
            QDir(dir_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        for (const QString& name : there) {
            if (!drives_.contains(name)) {
                std::abort();
            }
        }
    }

  private:
    QTemporaryDir dir_;
    QStringList drives_;
};

}  // namespace korvel::fuzzing
