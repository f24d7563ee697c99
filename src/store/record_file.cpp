#include "store/record_file.h"

#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace korvel::store {

namespace {
constexpr qint64 kBlockBytes = 256 * 1024;  // small enough to stay in the cache while it is read
}  // namespace

qint64 records_in_file(qint64 file_size, int record_length) {
    if (file_size <= 0 || record_length <= 0) {
        return 0;
    }
    const double exact = static_cast<double>(file_size) / record_length;
    return static_cast<qint64>(std::nearbyint(exact));  // the default mode rounds half to even
}

int record_count_of(qint64 file_size, int record_length) {
    return static_cast<int>(
        std::min<qint64>(records_in_file(file_size, record_length), kMaxRecords));
}

RecordFile::RecordFile(const QString& native_path, int record_length, Access access)
    : file_(native_path), record_length_(record_length), access_(access) {}

std::unique_ptr<RecordFile> RecordFile::open(const QString& native_path, int record_length,
                                             Access access, QString* error) {
    std::unique_ptr<RecordFile> f(new RecordFile(native_path, record_length, access));
    if (native_path.isEmpty() || record_length <= 0) {
        if (error) {
            *error = QStringLiteral("no file name");
        }
        return nullptr;
    }
    QIODevice::OpenMode mode = QIODevice::Unbuffered;
    if (access == Access::ReadOnly) {
        if (!QFileInfo(native_path).isFile()) {
            if (error) {
                *error = QStringLiteral("%1: no such file").arg(native_path);
            }
            return nullptr;
        }
        mode |= QIODevice::ReadOnly;
    } else {
        mode |= QIODevice::ReadWrite;
    }
    if (!f->file_.open(mode)) {
        if (error) {
            *error = QStringLiteral("%1: %2").arg(native_path, f->file_.errorString());
        }
        return nullptr;
    }
    return f;
}

qint64 RecordFile::byte_size() const {
    // QFile::size() of an open file asks the operating system each time.
    return file_.size();
}

bool RecordFile::read(int number, char* buffer) {
    if (number < 1) {
        return false;
    }
    const qint64 pos = static_cast<qint64>(number - 1) * record_length_;
    std::memset(buffer, 0, static_cast<std::size_t>(record_length_));
    if (!file_.seek(pos)) {
        return false;
    }
    const qint64 got = file_.read(buffer, record_length_);
    return got >= 0;
}

bool RecordFile::write(int number, const char* buffer) {
    if (number < 1 || access_ != Access::Shared) {
        return false;
    }
    const qint64 pos = static_cast<qint64>(number - 1) * record_length_;
    if (!file_.seek(pos)) {
        return false;
    }
    return file_.write(buffer, record_length_) == record_length_;
}

bool RecordFile::write_block(int first, const char* records, int n) {
    if (first < 1 || n < 0 || access_ != Access::Shared) {
        return false;
    }
    if (!file_.seek(static_cast<qint64>(first - 1) * record_length_)) {
        return false;
    }
    const qint64 bytes = static_cast<qint64>(n) * record_length_;
    return file_.write(records, bytes) == bytes;
}

bool RecordFile::scan(int first, int last, const std::function<bool(int, const char*)>& visit) {
    if (first < 1) {
        first = 1;
    }
    if (last < first) {
        return true;
    }
    const int per_block = static_cast<int>(
        std::min<qint64>(last - first + 1, std::max<qint64>(1, kBlockBytes / record_length_)));
    // Not cleared: every byte a visit sees is read or set to NUL first.
    const std::unique_ptr<char[]> block(
        new char[static_cast<std::size_t>(per_block) * record_length_]);
    for (int start = first; start <= last; start += per_block) {
        const int n = std::min(per_block, last - start + 1);
        if (!read_block(start, block.get(), n)) {
            return false;
        }
        for (int i = 0; i < n; ++i) {
            if (!visit(start + i, block.get() + static_cast<std::size_t>(i) * record_length_)) {
                return true;
            }
        }
    }
    return true;
}

bool RecordFile::read_block(int first, char* records, int n) {
    if (first < 1 || n < 0) {
        return false;
    }
    const qint64 want = static_cast<qint64>(n) * record_length_;
    if (!file_.seek(static_cast<qint64>(first - 1) * record_length_)) {
        return false;
    }
    qint64 have = 0;
    while (have < want) {
        const qint64 got = file_.read(records + have, want - have);
        if (got < 0) {
            return false;
        }
        if (got == 0) {
            break;
        }
        have += got;
    }
    // Past the end of the file records read as NUL.
    std::memset(records + have, 0, static_cast<std::size_t>(want - have));
    return true;
}

bool RecordFile::sync() {
    if (!file_.flush()) {
        return false;
    }
#ifdef Q_OS_WIN
    return _commit(file_.handle()) == 0;
#else
    return ::fsync(file_.handle()) == 0;
#endif
}

bool RecordFile::truncate(int count) {
    return file_.resize(static_cast<qint64>(count) * record_length_);
}

}  // namespace korvel::store
