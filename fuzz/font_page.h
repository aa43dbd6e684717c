// A page whose font comes from a fuzz target's input, and what its setup becomes through the exported
// functions.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "fuzz/pdf_job.h"
#include "support/pdf_builder.h"
#include "zorvan/zorvan.h"

namespace zorvan::fuzz {

/// An input that is read from its front; what is no longer there is 0, or empty.
class InputReader {
public:
    InputReader(const std::uint8_t* data, std::size_t size)
        : rest_(reinterpret_cast<const char*>(data), size) {}

    std::uint8_t Byte() {
        const std::string_view byte = Part(1);
        return byte.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(byte[0]);
    }
    std::string_view Part(std::size_t count) {
        const std::string_view part = rest_.substr(0, count);
        rest_.remove_prefix(part.size());
        return part;
    }
    std::string_view Rest() { return Part(rest_.size()); }

private:
    std::string_view rest_;
};

/// One page with the font /F, object 10.
inline test::PdfBuilder FontPage() {
    return test::OnePage("n", "/Resources << /Font << /F 10 0 R >> >>");
}

/// What the host was given last.
inline std::string taken;

inline int ZORVAN_CALL Take(const void* piece, unsigned int count) {
    taken.append(static_cast<const char*>(piece), count);
    return 0;
}

struct PageRun {
    int status = 0;
    std::string setup;  // all that the page's setup defines; empty when the page failed
};

/// Converts the page in the running job, and sees to it that nothing of it stays there.
inline PageRun RunPage(test::PdfBuilder& pdf) {
    const JobContext& job = BegunJob();
    const std::size_t before = job.allocations.LiveBlocks();
    const std::string bytes = pdf.Bytes();
    static const MemoryFile file;
    file.Write({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    Require(ZORVAN_OneFileBegin(file.Path().c_str(), Take, nullptr) == 0);
    taken.clear();
    PageRun run{.status = ZORVAN_OutputOnePage(1), .setup = ""};
    ZORVAN_OneFileEnd();
    Require(job.allocations.LiveBlocks() == before);
    constexpr std::string_view kFirst = "PDFVars/InitAll get exec\n";
    const std::size_t begin = taken.find(kFirst) + kFirst.size();
    if (run.status == 0) {
        run.setup = taken.substr(begin, taken.rfind("%%EndPageSetup\n") - begin);
    }
    return run;
}

}  // namespace zorvan::fuzz
