// The one job of the process, and the door through which the floors below reach it.
#include "api/job.h"

#include <cstring>
#include <new>
#include <stdexcept>

#include "api/current_job.h"
#include "api/resource_factories.h"

namespace zorvan {
namespace {

constexpr std::size_t kLongestPath = 259;

JobContext* currentJob =
    nullptr;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables): the one there is

}  // namespace

JobContext::JobContext() : factories(BuiltInFactories()), prolog(BuiltInProlog()) {}

JobContext* CurrentJob() {
    return currentJob;
}

bool CreateJob() {
    if (currentJob != nullptr) {
        return false;
    }
    try {
        currentJob = new JobContext();
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

void DestroyJob() {
    if (currentJob == nullptr) {
        return;
    }
    currentJob->CloseFile();
    delete currentJob;
    currentJob = nullptr;
}

Status JobContext::Begin(const char* folder) {
    const Status status = filterLibrary.Load(folder == nullptr ? "" : folder);
    if (Failed(status)) {
        return Fail(status);
    }
    names.Fill();
    began_ = true;
    return Status::kOk;
}

Status JobContext::BeginFile(const char* path, ZORVAN_WriteCallback callback,
                             const ZORVAN_PasswordRecord* password) {
    if (file != nullptr) {
        return Status::kNoObject;
    }
    if (!began_) {
        return error.Code();
    }
    try {
        file = std::make_unique<FileContext>(callback, password, factories);
    } catch (const std::bad_alloc&) {
        return Status::kNoObject;
    }
    const Status opened = OpenPath(path);
    if (Failed(opened)) {
        CloseFile();
        return opened;
    }
    file->document.BuildPageList();
    return file->document.WriteHeaderAndProlog(prolog);
}

/// Running out of memory counts as one more reason why the file did not open.
Status JobContext::OpenPath(const char* path) {
    if (path == nullptr || std::strlen(path) > kLongestPath) {
        return Fail(Status::kOpenFileError);
    }
    try {
        return file->pdf.OpenPdfFile(path);
    } catch (const std::bad_alloc&) {
        return Fail(Status::kMemoryNotEnough);
    } catch (const std::length_error&) {
        return Fail(Status::kMemoryNotEnough);
    }
}

void JobContext::CloseFile() {
    allocations.Clear();  // first, so that what the file holds of it need not be freed piece by piece
    file.reset();
}

// --- the door ---

NameTable& CurrentNames() {
    return currentJob->names;
}
AllocationRegistry& CurrentAllocations() {
    return currentJob->allocations;
}
FilterLibrary& CurrentFilterLibrary() {
    return currentJob->filterLibrary;
}
CodecSlots& CurrentCodecSlots() {
    return currentJob->codecSlots;
}
PdfFile* CurrentPdfFile() {
    return currentJob->file == nullptr ? nullptr : &currentJob->file->pdf;
}
OutputSink& CurrentOutput() {
    return currentJob->file->output;
}
ResourceRegistry& CurrentRegistry() {
    return currentJob->file->registry;
}
std::uint32_t TakeGeneratedResourceNumber() {
    return currentJob->nextGeneratedNumber++;
}

void RecordError(Status code, PdfObject object, std::span<const std::uint8_t> bytes) {
    if (currentJob == nullptr) {
        return;
    }
    const FileContext* file = currentJob->file.get();
    if (file == nullptr) {
        currentJob->error.Record(code, {}, 0, bytes);
        return;
    }
    if (file->output.IsRefused()) {
        return;  // the host's own failure, which is told by its status alone
    }
    std::uint32_t offset = PayloadOf(object) == 0 ? 0 : file->pdf.Xref().Lookup(object.payload, object.type);
    offset = offset == XrefTable::kNoOffset ? 0 : offset;
    currentJob->error.Record(code, file->pdf.Bytes(), offset, bytes);
}

Status Fail(Status code, PdfObject object, std::span<const std::uint8_t> bytes) {
    RecordError(code, object, bytes);
    return code;
}

Status Fail(Status code) {
    return Fail(code, MakeNull());
}

}  // namespace zorvan
