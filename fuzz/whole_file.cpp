// Converts any bytes as a file, as a host does: through the exported functions, with their own codec library.
// Every status must be one that the header knows, and what was written whole must end as such.
#include <algorithm>
#include <cstdint>
#include <string>

#include "fuzz/host.h"
#include "fuzz/memory_file.h"

using zorvan::fuzz::Require;

namespace {

/// The end of what was written.
std::string written;

int ZORVAN_CALL KeepEnd(const void* bytes, unsigned int count) {
    constexpr std::size_t kLongestEnd = 64;
    written.append(static_cast<const char*>(bytes), count);
    written.erase(0, written.size() - std::min(written.size(), kLongestEnd));
    return 0;
}

void ConvertPages() {
    constexpr int kEnoughPages = 20;
    zorvan::fuzz::RequireStatus(ZORVAN_OutputGlobalResources());
    const int pages = std::min(ZORVAN_GetTotalPages(), kEnoughPages);
    for (int page = 1; page <= pages; ++page) {
        const int status = ZORVAN_OutputOnePage(static_cast<unsigned int>(page));
        zorvan::fuzz::RequireStatus(status);
        Require(status != 0 || written.ends_with("\nshowpage\n%%PageTrailer\n%%EndPage\n"));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const zorvan::fuzz::MemoryFile file;
    file.Write({data, size});
    written.clear();
    Require(zorvan::fuzz::BeginJob() == 0);
    const int opened = ZORVAN_OneFileBegin(file.Path().c_str(), KeepEnd, nullptr);
    zorvan::fuzz::RequireStatus(opened);
    if (opened == 0) {
        ConvertPages();
    } else {
        Require(zorvan::fuzz::RequireSoundError() != 0);
    }
    ZORVAN_OneFileEnd();
    Require(opened != 0 || written.ends_with("%%Trailer\n%%EOF\n"));
    zorvan::fuzz::RequireSoundError();
    KAPRINE_End();
    return 0;
}
