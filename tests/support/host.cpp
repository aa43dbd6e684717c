// Driving the library.
#include "support/host.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <numeric>

#include <unistd.h>

#include "support/pdf_builder.h"
#include "zorvan/zorvan.h"

namespace zorvan::test {
namespace {

struct State {
    std::vector<std::string> taken;
    std::uint64_t calls = 0;
    std::uint64_t afterRefusal = 0;
    bool refusedBefore = false;
    std::uint64_t refuseAt = 0;  // 0: never
    int refuseWith = 0;
    bool fromThenOn = false;
};

State state;

}  // namespace

ErrorInfo GetErrorInfo() {
    const char* message = "";
    unsigned int offset = 0;
    const unsigned char* excerpt = nullptr;
    unsigned int length = 0;
    ErrorInfo info;
    info.code = KAPRINE_GetErrInfo(&message, &offset, &excerpt, &length);
    info.message = message;
    info.offset = offset;
    info.excerpt.assign(reinterpret_cast<const char*>(excerpt), length);
    return info;
}

TemporaryFile::TemporaryFile(std::string_view bytes) {
    path_ = (std::filesystem::temp_directory_path() / "zorvan-test-XXXXXX").string();
    const int descriptor = mkstemp(path_.data());
    close(descriptor);
    std::ofstream(path_, std::ios::binary) << bytes;
}

TemporaryFile::~TemporaryFile() {
    std::error_code isMapped;  // which Windows does not take away; it is the system's to clean up then
    std::filesystem::remove(path_, isMapped);
}

std::string FilterFolder() {
    return ZORVAN_FILTER_FOLDER "/";
}

void Pieces::Reset() {
    state = State();
}

void Pieces::Refuse(std::uint64_t call, int status, bool fromThenOn) {
    state.refuseAt = call;
    state.refuseWith = status;
    state.fromThenOn = fromThenOn;
}

int ZORVAN_CALL Pieces::Take(const void* bytes, unsigned int count) {
    ++state.calls;
    state.afterRefusal += state.refusedBefore ? 1U : 0U;
    if (state.calls == state.refuseAt ||
        (state.fromThenOn && state.refuseAt != 0 && state.calls > state.refuseAt)) {
        state.refusedBefore = true;
        return state.refuseWith;
    }
    state.taken.emplace_back(static_cast<const char*>(bytes), count);
    return 0;
}

const std::vector<std::string>& Pieces::Taken() {
    return state.taken;
}

std::string Pieces::Joined() {
    return std::accumulate(state.taken.begin(), state.taken.end(), std::string());
}

std::uint64_t Pieces::Calls() {
    return state.calls;
}

std::uint64_t Pieces::CallsAfterRefusal() {
    return state.afterRefusal;
}

void Pieces::ResetRefusal() {
    state.refusedBefore = false;
}

Conversion Convert(std::string_view pdfBytes) {
    const TemporaryFile file(pdfBytes);
    Pieces::Reset();
    Conversion conversion;
    conversion.begin = KAPRINE_Begin(FilterFolder().c_str());
    conversion.fileBegin = ZORVAN_OneFileBegin(file.Path().c_str(), Pieces::Take, nullptr);
    conversion.global = ZORVAN_OutputGlobalResources();
    for (int page = 1; page <= ZORVAN_GetTotalPages(); ++page) {
        conversion.pages.push_back(ZORVAN_OutputOnePage(static_cast<unsigned>(page)));
    }
    ZORVAN_OneFileEnd();
    conversion.error = GetErrorInfo();
    KAPRINE_End();
    conversion.output = Pieces::Joined();
    return conversion;
}

std::string ContentOf(std::string_view output, unsigned page) {
    const std::string number = std::to_string(page);
    const std::size_t start = output.find("\n%%Page: " + number + " " + number + "\n");
    const std::size_t clip = output.find(" RC\n", start);
    const std::size_t end = output.find("PDFVars/TermAll get exec end end\nuserdict /pgsave", clip);
    if (start == std::string_view::npos || clip == std::string_view::npos) {
        return "(no such page)";
    }
    return std::string(output.substr(clip + 4, end == std::string_view::npos ? end : end - clip - 4));
}

std::string Translate(std::string_view content, std::string_view pageEntries) {
    return ContentOf(Convert(OnePage(content, pageEntries).Bytes()).output);
}

}  // namespace zorvan::test
