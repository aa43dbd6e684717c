// The job: everything that lives between KAPRINE_Begin and KAPRINE_End, and the file that is open in it.
#pragma once

#include <memory>
#include <string>

#include "api/document.h"
#include "api/error_record.h"
#include "pdf/allocation_registry.h"
#include "pdf/codec.h"
#include "pdf/name_table.h"
#include "pdf/pdf_file.h"
#include "platform/filter_library.h"
#include "ps/output.h"
#include "ps/prolog.h"
#include "ps/resource_registry.h"

namespace zorvan {

/// One open input file.
struct FileContext {
    FileContext(ZORVAN_WriteCallback callback, const ZORVAN_PasswordRecord* password,
                const ResourceFactories& factories)
        : output(callback), pdf(password), registry(factories) {}

    OutputSink output;
    PdfFile pdf;
    ResourceRegistry registry;
    Document document;
};

struct JobContext {
    /// Loads the codec library and enters the predefined names. Failures are recorded; the job stays.
    Status Begin(const char* folder);
    /// Opens a file and writes its header and prolog; see ZORVAN_OneFileBegin. A job that did not begin well
    /// opens nothing and gives its error again.
    Status BeginFile(const char* path, ZORVAN_WriteCallback callback, const ZORVAN_PasswordRecord* password);
    /// Forgets the file and everything read from it, without a trailer.
    void CloseFile();

    ErrorRecord error;
    AllocationRegistry allocations;
    NameTable names;
    FilterLibrary filterLibrary;
    CodecSlots codecSlots;
    std::uint32_t nextGeneratedNumber = 0x8FFFF;
    /// What builds the resource classes, and the prolog texts. Tests put their own in.
    ResourceFactories factories;
    const Prolog* prolog = nullptr;
    std::unique_ptr<FileContext> file;

    JobContext();

private:
    Status OpenPath(const char* path);

    bool began_ = false;
};

/// The process's job, or null.
JobContext* CurrentJob();

/// Makes a job the current one; false, and nothing done, when there is one already or no memory for it.
bool CreateJob();
void DestroyJob();

}  // namespace zorvan
