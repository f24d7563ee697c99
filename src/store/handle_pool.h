#pragma once
// The pool of file handles: 511 slots numbered from 1, each with a used flag, the file's name
// and folder. Slots 1 to 10 are never used; 11 to 100 serve files opened and closed at once and
// the system files, 101 to 511 the rest. Slots are taken lowest first. The pool owns the open
// files, so closing a handle closes its file.

#include <QString>
#include <array>
#include <memory>

#include "store/record_file.h"

namespace korvel::store {

class HandlePool {
  public:
    static constexpr int kSlots = 511;
    static constexpr int kSystemFirst = 11;
    static constexpr int kSystemLast = 100;
    static constexpr int kGeneralFirst = 101;
    static constexpr int kCloseAll = 999;  // the handle value that closes every file

    // The lowest free slot of the range (system_range: 11 to 100, else 101 to 511), marked
    // used; 0 when the range is full.
    int take(bool system_range);
    // Puts an open file in a taken slot.
    void attach(int handle, std::unique_ptr<RecordFile> file, const QString& name,
                const QString& folder);
    // Closes the file of the slot and frees it; 0 and unknown numbers do nothing.
    void release(int handle);
    void release_all();

    RecordFile* file(int handle) const;
    bool used(int handle) const;
    QString name(int handle) const;
    QString folder(int handle) const;
    int open_count() const { return open_count_; }

  private:
    struct Slot {
        bool used = false;
        QString name;
        QString folder;
        std::unique_ptr<RecordFile> file;
    };
    static bool valid(int handle) { return handle >= 1 && handle <= kSlots; }
    std::array<Slot, kSlots + 1> slots_{};  // index 0 unused
    int open_count_ = 0;
};

}  // namespace korvel::store
