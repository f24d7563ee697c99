// Any bytes as a remarks file: reading must end without a crash, and what was read must write
// and read again to the same text.

#include <cstdint>
#include <cstdlib>

#include "shell/rich_text.h"

using namespace korvel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const shell::RichText first = shell::read_rtf(bytes);
    const shell::RichText second = shell::read_rtf(shell::write_rtf(first));
    if (second.plain_text() != first.plain_text()) {
        std::abort();
    }
    return 0;
}
