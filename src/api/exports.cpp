// The eight exported functions: the host's side of the job. No exception leaves them.
#include <new>
#include <stdexcept>

#include "api/error_record.h"
#include "api/job.h"
#include "pdf/object.h"
#include "ps/document_structure.h"
#include "zorvan/zorvan.h"

namespace zorvan {
namespace {

/// Runs an operation of the job. Running out of memory is recorded like any other failure.
template <class Operation>
int Guarded(Operation operation) {
    try {
        return ToNumber(operation());
    } catch (const std::bad_alloc&) {
        return ToNumber(Fail(Status::kMemoryNotEnough));
    } catch (const std::length_error&) {
        return ToNumber(Fail(Status::kMemoryNotEnough));  // a container was asked for more than there can be
    }
}

/// Runs an operation on the open file; without one there is nothing to do.
template <class Operation>
int GuardedOnFile(Operation operation) {
    JobContext* job = CurrentJob();
    if (job == nullptr || job->file == nullptr) {
        return 0;
    }
    job->file->output.BeginCall();
    job->file->pdf.RenewBudget();
    return Guarded([&] { return operation(*job->file); });
}

template <class Word>
void Store(Word* output, Word value) {
    if (output != nullptr) {
        *output = value;
    }
}

}  // namespace
}  // namespace zorvan

using zorvan::CurrentJob;
using zorvan::FileContext;
using zorvan::Guarded;
using zorvan::GuardedOnFile;
using zorvan::JobContext;
using zorvan::Status;
using zorvan::ToNumber;

int ZORVAN_CALL KAPRINE_Begin(const char* folder) {
    if (!zorvan::CreateJob()) {
        return ToNumber(Status::kNoObject);
    }
    return Guarded([folder] { return CurrentJob()->Begin(folder); });
}

void ZORVAN_CALL KAPRINE_End(void) {
    zorvan::DestroyJob();
}

int ZORVAN_CALL KAPRINE_GetErrInfo(const char** message, unsigned int* offset, const unsigned char** excerpt,
                                   unsigned int* excerptLength) {
    const JobContext* job = CurrentJob();
    if (job == nullptr) {
        return 0;
    }
    zorvan::Store(message, job->error.Message());
    zorvan::Store(offset, job->error.Offset());
    zorvan::Store(excerpt, job->error.Excerpt().data());
    zorvan::Store(excerptLength, static_cast<unsigned int>(job->error.Excerpt().size()));
    return ToNumber(job->error.Code());
}

int ZORVAN_CALL ZORVAN_OneFileBegin(const char* path, ZORVAN_WriteCallback callback,
                                    const ZORVAN_PasswordRecord* password) {
    JobContext* job = CurrentJob();
    if (job == nullptr) {
        return ToNumber(Status::kNoObject);
    }
    return Guarded([&] { return job->BeginFile(path, callback, password); });
}

int ZORVAN_CALL ZORVAN_GetTotalPages(void) {
    const JobContext* job = CurrentJob();
    return job == nullptr || job->file == nullptr ? 0 : static_cast<int>(job->file->document.PageCount());
}

int ZORVAN_CALL ZORVAN_OutputGlobalResources(void) {
    return GuardedOnFile([](FileContext&) { return zorvan::WriteGlobalResources(); });
}

int ZORVAN_CALL ZORVAN_OutputOnePage(unsigned int page) {
    return GuardedOnFile([page](FileContext& file) { return file.document.WritePage(page); });
}

void ZORVAN_CALL ZORVAN_OneFileEnd(void) {
    // The trailer is written whatever happened before; its status is nobody's any more.
    static_cast<void>(GuardedOnFile([](FileContext&) { return zorvan::WriteDocumentTrailer(); }));
    if (CurrentJob() != nullptr) {
        CurrentJob()->CloseFile();
    }
}
