#include "store/dbf_memory.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace korvel::store {

namespace {

struct MemoryFile {
    const QByteArray* bytes;
    SAOffset pos;
};

thread_local const QByteArray* t_table = nullptr;

SAFile memory_open(const char* filename, const char* access) {
    const std::size_t n = std::strlen(filename);
    // Only the table: the code page file shapelib also asks for is not there.
    const bool table = n >= 4 && std::strcmp(filename + n - 4, ".dbf") == 0;
    if (t_table == nullptr || !table || std::strpbrk(access, "w+a") != nullptr) {
        return nullptr;
    }
    return reinterpret_cast<SAFile>(new MemoryFile{t_table, 0});
}

SAOffset memory_read(void* p, SAOffset size, SAOffset nmemb, SAFile file) {
    auto* f = reinterpret_cast<MemoryFile*>(file);
    const auto total = static_cast<SAOffset>(f->bytes->size());
    if (size == 0 || f->pos >= total) {
        return 0;
    }
    const SAOffset n = std::min(nmemb, (total - f->pos) / size);
    std::memcpy(p, f->bytes->constData() + f->pos, n * size);
    f->pos += n * size;
    return n;
}

SAOffset memory_write(void*, SAOffset, SAOffset, SAFile) {
    return 0;
}

SAOffset memory_seek(SAFile file, SAOffset offset, int whence) {
    auto* f = reinterpret_cast<MemoryFile*>(file);
    const auto total = static_cast<SAOffset>(f->bytes->size());
    switch (whence) {
        case SEEK_SET:
            f->pos = offset;
            return 0;
        case SEEK_CUR:
            f->pos += offset;
            return 0;
        case SEEK_END:
            f->pos = total + offset;
            return 0;
        default:
            return static_cast<SAOffset>(-1);
    }
}

SAOffset memory_tell(SAFile file) {
    return reinterpret_cast<MemoryFile*>(file)->pos;
}

int memory_flush(SAFile) {
    return 0;
}

int memory_close(SAFile file) {
    delete reinterpret_cast<MemoryFile*>(file);
    return 0;
}

int memory_remove(const char*) {
    return -1;
}

void memory_error(const char*) {
    // A damaged table reads as far as it goes; the reader tells what it could not read.
}

double memory_atof(const char* text) {
    return std::strtod(text, nullptr);
}

}  // namespace

DbfPtr open_dbf_in_memory(const QByteArray& bytes) {
    constexpr int kHeader = 32;
    if (bytes.size() < kHeader + 1) {
        return {nullptr, DBFClose};
    }
    const auto u16 = [&](int at) {
        return int(static_cast<unsigned char>(bytes[at])) |
               int(static_cast<unsigned char>(bytes[at + 1])) << 8;
    };
    const int header_length = u16(8);
    const int row_length = u16(10);
    if (header_length < kHeader + 1 || header_length > bytes.size() || row_length < 1) {
        return {nullptr, DBFClose};
    }
    SAHooks hooks{};
    hooks.FOpen = memory_open;
    hooks.FRead = memory_read;
    hooks.FWrite = memory_write;
    hooks.FSeek = memory_seek;
    hooks.FTell = memory_tell;
    hooks.FFlush = memory_flush;
    hooks.FClose = memory_close;
    hooks.Remove = memory_remove;
    hooks.Error = memory_error;
    hooks.Atof = memory_atof;
    t_table = &bytes;
    DbfPtr dbf(DBFOpenLL("table.dbf", "rb", &hooks), DBFClose);
    t_table = nullptr;
    return dbf;
}

}  // namespace korvel::store
