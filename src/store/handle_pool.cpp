#include "store/handle_pool.h"

namespace korvel::store {

int HandlePool::take(bool system_range) {
    const int first = system_range ? kSystemFirst : kGeneralFirst;
    const int last = system_range ? kSystemLast : kSlots;
    for (int h = first; h <= last; ++h) {
        if (!slots_[h].used) {
            slots_[h].used = true;
            ++open_count_;
            return h;
        }
    }
    return 0;
}

void HandlePool::attach(int handle, std::unique_ptr<RecordFile> file, const QString& name,
                        const QString& folder) {
    if (!valid(handle)) {
        return;
    }
    Slot& s = slots_[handle];
    s.file = std::move(file);
    s.name = name;
    s.folder = folder;
}

void HandlePool::release(int handle) {
    if (!valid(handle) || !slots_[handle].used) {
        return;
    }
    slots_[handle] = Slot{};
    if (open_count_ > 0) {
        --open_count_;
    }
}

void HandlePool::release_all() {
    for (Slot& s : slots_) {
        s = Slot{};
    }
    open_count_ = 0;
}

RecordFile* HandlePool::file(int handle) const {
    return valid(handle) ? slots_[handle].file.get() : nullptr;
}

bool HandlePool::used(int handle) const {
    return valid(handle) && slots_[handle].used;
}

QString HandlePool::name(int handle) const {
    return valid(handle) ? slots_[handle].name : QString();
}

QString HandlePool::folder(int handle) const {
    return valid(handle) ? slots_[handle].folder : QString();
}

}  // namespace korvel::store
