#pragma once
// Records written one after another from record 1, gathered into blocks, so that a file of
// thousands of records is written in few calls.

#include <vector>

#include "store/record_file.h"

namespace korvel::store {

class BlockWriter {
  public:
    explicit BlockWriter(RecordFile& file) : file_(file) {}

    // False when a block could not be written.
    bool add(const char* record) {
        block_.insert(block_.end(), record, record + file_.record_length());
        return block_.size() < size_t(kRecordsABlock * file_.record_length()) || finish();
    }
    // Writes what is gathered; false when that failed.
    bool finish() {
        const int n = int(block_.size()) / file_.record_length();
        const bool written = n == 0 || file_.write_block(first_, block_.data(), n);
        first_ += n;
        block_.clear();
        return written;
    }

  private:
    static constexpr int kRecordsABlock = 256;
    RecordFile& file_;
    std::vector<char> block_;
    int first_ = 1;
};

}  // namespace korvel::store
