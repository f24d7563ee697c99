#pragma once
// Field tables of the fixed-length record files. Every record type is one table of field
// descriptors written once from the layouts; the typed accessors, the running field numbers,
// the dump of the command line and the layout tests all derive from it. check_layout() proves
// at compile time that the fields follow each other without a gap and fill the record.

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace korvel::store {

enum class FieldType : std::uint8_t {
    Text,   // width bytes of Windows-1252, left-justified, blank-padded
    Int16,  // 2 bytes little-endian, signed
    Date,   // 8 bytes little-endian IEEE double, days since 1899-12-30, 0 for none
    Byte,   // 1 byte, unsigned
    Raw,    // width bytes kept as they are (reserved or foreign fields)
};

struct Field {
    std::string_view name;
    int offset;
    FieldType type;
    int width;     // bytes of one element
    int count;     // elements; above 1 an array, lower bound 0
    int dim1 = 0;  // for a two-dimensional array, the slots of the first index (which runs fastest)

    constexpr int size() const { return width * count; }
    constexpr int element_offset(int index) const { return offset + width * index; }
};

constexpr Field text(std::string_view name, int offset, int width, int count = 1) {
    return {name, offset, FieldType::Text, width, count};
}
constexpr Field int16(std::string_view name, int offset, int count = 1) {
    return {name, offset, FieldType::Int16, 2, count};
}
constexpr Field date(std::string_view name, int offset, int count = 1) {
    return {name, offset, FieldType::Date, 8, count};
}
constexpr Field byte(std::string_view name, int offset) {
    return {name, offset, FieldType::Byte, 1, 1};
}
constexpr Field raw(std::string_view name, int offset, int width) {
    return {name, offset, FieldType::Raw, width, 1};
}
// A two-dimensional array of dim1 by dim2 slots, first index fastest.
constexpr Field grid(Field f, int dim1) {
    f.dim1 = dim1;
    return f;
}

struct Layout {
    std::string_view code;       // the short code the files are opened by
    std::string_view file_name;  // the file in its folder
    int record_length;
    std::span<const Field> fields;

    // Compile-time look-up by name: a misspelt name does not compile.
    consteval const Field& operator[](std::string_view name) const {
        for (const Field& f : fields) {
            if (f.name == name) {
                return f;
            }
        }
        throw "no field of that name in this layout";
    }
    // Run-time look-up by name; nullptr when absent.
    constexpr const Field* find(std::string_view name) const {
        for (const Field& f : fields) {
            if (f.name == name) {
                return &f;
            }
        }
        return nullptr;
    }
};

// True when the fields are in offset order, without gaps or overlaps, and end at the record
// length.
constexpr bool check_layout(const Layout& layout) {
    int next = 0;
    for (const Field& f : layout.fields) {
        if (f.offset != next || f.width <= 0 || f.count <= 0) {
            return false;
        }
        if (f.dim1 != 0 && f.count % f.dim1 != 0) {
            return false;
        }
        next += f.size();
    }
    return next == layout.record_length;
}

}  // namespace korvel::store
