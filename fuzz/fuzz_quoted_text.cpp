// Arbitrary bytes through the quoted text reader. Reading must end, every value must be
// readable with every typed read, and whatever was read must survive being written and read
// again.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "store/quoted_text.h"

using korvel::quoted::Reader;
using korvel::quoted::Value;
using korvel::quoted::Writer;

namespace {

// Each value takes at least one byte, bar a blank field after a closing comma.
void check_count(std::size_t count, std::size_t size) {
    if (count > size + 1) {
        std::abort();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));

    // Value by value, and the writer's view of what was read.
    std::vector<Value> values;
    Writer writer;
    Reader reader(bytes);
    while (auto value = reader.next()) {
        values.push_back(*value);
        check_count(values.size(), size);
        (void)value->text.size();
        writer.value(*value);
    }
    if (!reader.at_end() || reader.next() || reader.read_string()) {
        std::abort();
    }

    // Every typed read, in turn, over the same bytes: the same number of values is taken.
    Reader typed(bytes);
    std::size_t count = 0;
    for (;; ++count) {
        check_count(count, size);
        const bool more = !typed.at_end();
        bool took = false;
        switch (count % 6) {
            case 0:
                took = typed.read_string().has_value() || more;
                break;
            case 1:
                took = typed.read_number().has_value() || more;
                break;
            case 2:
                took = typed.read_bool().has_value() || more;
                break;
            case 3:
                took = typed.read_date().has_value() || more;
                break;
            case 4:
                took = !typed.read_line().empty();
                break;
            default:
                took = typed.next().has_value();
                break;
        }
        if (!took) {
            break;
        }
    }

    // What the writer made of the values reads back as the same values, bar Invalid ones
    // (written as blank fields) and double quotes in text (written as single quotes).
    Reader again(writer.bytes());
    for (const Value& value : values) {
        const auto back = again.next();
        if (!back) {
            // Only trailing blank fields written on a line of their own can vanish.
            if (value.kind != Value::Kind::Empty && value.kind != Value::Kind::Invalid) {
                std::abort();
            }
            continue;
        }
        if (value.kind == Value::Kind::Number && back->number != value.number) {
            std::abort();
        }
        if (value.kind == Value::Kind::Boolean && back->boolean != value.boolean) {
            std::abort();
        }
        if (value.kind == Value::Kind::Date && back->date != value.date) {
            std::abort();
        }
        if (value.kind == Value::Kind::Text &&
            back->text != QString(value.text).replace(u'"', u'\'')) {
            std::abort();
        }
    }
    return 0;
}
