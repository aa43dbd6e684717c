// Reads any bytes as cross-reference sections, the first of which they begin with: objects are where the
// table says, or nowhere, and never beyond the file.
#include <cstdint>
#include <string>

#include "fuzz/pdf_job.h"

using zorvan::XrefTable;
using zorvan::fuzz::Require;

namespace {

/// The bytes stand behind the header, where the reader is sent by the number at the end.
std::string FileAround(const std::uint8_t* data, std::size_t size) {
    std::string file = "%PDF-1.4\n";
    const std::size_t start = file.size();
    file.append(reinterpret_cast<const char*>(data), size);
    return file + "\nstartxref\n" + std::to_string(start) + "\n%%EOF\n";
}

/// Where the table says that an object is.
void RequireInside(const XrefTable& table, std::uint32_t number, std::uint16_t generation, std::size_t size) {
    const std::uint32_t offset = table.Lookup(number, generation);
    Require(offset == XrefTable::kNoOffset || offset < size);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::uint32_t kEnoughObjects = 2000;
    const std::string text = FileAround(data, size);
    const zorvan::fuzz::InputFile file({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    const XrefTable& table = file.File().Xref();
    for (std::uint32_t number = 0; number < kEnoughObjects; ++number) {
        RequireInside(table, number, 0, text.size());
        RequireInside(table, UINT32_MAX - number, 0, text.size());
        RequireInside(table, number, UINT16_MAX, text.size());
    }
    return 0;
}
