// The job in which the reader's fuzz targets run, and any bytes as its current file.
#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "api/job.h"
#include "fuzz/memory_file.h"
#include "fuzz/require.h"

namespace zorvan::fuzz {

/// The one job, begun with the first input. Names stay until they are many: to enter them all again costs
/// more than most inputs.
inline JobContext& BegunJob() {
    constexpr std::uint32_t kManyNames = 50000;
    if (CurrentJob() == nullptr) {
        Require(CreateJob() && CurrentJob()->Begin(FILTER_FOLDER) == Status::kOk);
    }
    JobContext& job = *CurrentJob();
    if (!job.names.PlainText(kManyNames).empty()) {
        job.names = NameTable();
        job.names.Fill();
    }
    job.error = ErrorRecord();
    return job;
}

/// One input as the current file.
class InputFile {
public:
    explicit InputFile(std::span<const std::uint8_t> bytes) {
        JobContext& job = BegunJob();
        static const MemoryFile file;
        file.Write(bytes);
        job.file = std::make_unique<FileContext>(nullptr, nullptr, job.factories);
        status_ = job.file->pdf.OpenPdfFile(file.Path());
    }
    ~InputFile() { CurrentJob()->CloseFile(); }
    InputFile(const InputFile&) = delete;
    InputFile& operator=(const InputFile&) = delete;

    [[nodiscard]] Status Opened() const { return status_; }
    [[nodiscard]] const PdfFile& File() const { return CurrentJob()->file->pdf; }
    [[nodiscard]] std::size_t LiveBlocks() const { return CurrentJob()->allocations.LiveBlocks(); }

private:
    Status status_ = Status::kOk;
};

}  // namespace zorvan::fuzz
