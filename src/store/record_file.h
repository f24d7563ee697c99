#pragma once
// A file of fixed-length records: no header, records numbered from 1, opened shared so that
// other workstations and the suite's other programs can use it at the same time.
//
// Reads and writes go straight to the operating system (no buffer of our own), so what one
// workstation writes another reads at once. Scans read in large blocks, never one call per
// record.

#include <QFile>
#include <QString>
#include <functional>
#include <memory>
#include <vector>

namespace korvel::store {

inline constexpr int kMaxRecords = 32767;  // record numbers and counts are 16-bit

// The records a file holds: its length over the record length, rounded half to even as a
// float-to-integer conversion does, so a last partial record may count.
qint64 records_in_file(qint64 file_size, int record_length);

// The record count the forms work with: records_in_file, at most kMaxRecords. A writer that
// rebuilds a whole file from this count would drop what lies past it, so such writers refuse a
// file for which past_record_limit holds.
int record_count_of(qint64 file_size, int record_length);
inline bool past_record_limit(qint64 file_size, int record_length) {
    return records_in_file(file_size, record_length) > kMaxRecords;
}

class RecordFile {
  public:
    enum class Access {
        Shared,    // read and write; a file that does not exist is created empty
        ReadOnly,  // never creates or changes anything
    };

    // Opens the file at native_path; nullptr with error set when it cannot be opened.
    static std::unique_ptr<RecordFile> open(const QString& native_path, int record_length,
                                            Access access, QString* error = nullptr);

    int record_length() const { return record_length_; }
    QString native_path() const { return file_.fileName(); }
    bool writable() const { return access_ == Access::Shared; }

    // The length of the file now; another workstation may have appended since the open.
    qint64 byte_size() const;
    int count() const { return record_count_of(byte_size(), record_length_); }

    // Reads record number (from 1) into buffer; bytes past the end of the file read as NUL.
    // False for a number below 1 or a failed read.
    bool read(int number, char* buffer);
    // Writes record number; a number past the end extends the file (the gap reads as NULs).
    bool write(int number, const char* buffer);

    // Writes n records one after the other from record number first.
    bool write_block(int first, const char* records, int n);
    // Reads n records from record number first into records; bytes past the end of the file
    // read as NUL. False for a failed read.
    bool read_block(int first, char* records, int n);

    // Calls visit(number, bytes) for each record from first to last, reading blocks of many
    // records at a time, until visit returns false. Bytes past the end of the file read as
    // NUL. visit may write records through this file. Returns false when a read failed.
    bool scan(int first, int last, const std::function<bool(int, const char*)>& visit);

    // Pushes what was written to the disk (used before a file replaces another).
    bool sync();

    // Sets the length of the file to count records.
    bool truncate(int count);

  private:
    RecordFile(const QString& native_path, int record_length, Access access);

    QFile file_;
    int record_length_;
    Access access_;
};

}  // namespace korvel::store
