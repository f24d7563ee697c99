#pragma once
// The timetable system's files in the roster folder, opened by code through the session's
// handle pool. This system never creates a file or folder there: a file that is missing is an
// empty file, and writing to it does nothing. A drive that is not there ends the run.

#include <QString>
#include <QStringList>
#include <array>
#include <functional>
#include <vector>

#include "store/record.h"
#include "store/roster_layouts.h"

namespace korvel::shell {
class Session;
}

namespace korvel::timetable {

enum class RosterCode { SKL, PRS, VAK, POS, LRDR, KLS };
inline constexpr int kRosterCodes = 6;

const store::Layout& roster_layout(RosterCode code);

class RosterFiles {
  public:
    explicit RosterFiles(shell::Session& session);
    ~RosterFiles();  // closes what is still open
    RosterFiles(const RosterFiles&) = delete;
    RosterFiles& operator=(const RosterFiles&) = delete;

    // Opens the file of the code ("*": every one) in the folder (blank: the roster folder). For
    // the subject periods a name gives the file name + "_random.txt" instead of its own. The
    // handle of the code, 0 when its file is missing (it then counts no records) or the name
    // would lead out of the folder.
    int open_roster_file(const QString& code = QStringLiteral("*"), const QString& folder = {},
                         const QString& name = {});
    // Closes the file of the handle and sets the caller's handle to 0.
    void close_roster_file(int& handle);

    int handle(RosterCode code) const { return handles_[size_t(code)]; }
    // Records in the file now: its length over the record length.
    int count(RosterCode code) const;
    // Record number (from 1) into the record; false, and the record blank, when it is not there.
    bool read(RosterCode code, int number, store::Record& into) const;
    bool write(RosterCode code, int number, const store::Record& from);
    // Every record in turn, read in blocks; visit returns false to stop.
    void scan(RosterCode code, const std::function<bool(int, const store::Record&)>& visit) const;
    // The first record whose trimmed key (its first field) equals key, without regard to case;
    // 0 when none.
    int find(RosterCode code, const QString& key) const;

    // The values of key_roster.sve, read when the folder is opened; a file that is not quoted
    // text leaves it empty. Nothing here uses them.
    QStringList key_roster;

  private:
    int open_one(RosterCode code, const QString& folder, const QString& file_name);
    void read_key_roster(const QString& folder);

    shell::Session& s_;
    std::array<int, kRosterCodes> handles_{};
};

}  // namespace korvel::timetable
