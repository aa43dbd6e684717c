// A job for tests that work below the exported functions: begun, and ended whatever the test did.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "api/job.h"
#include "support/host.h"

namespace zorvan::test {

/// Needs zorvan_test_host_core: the shared library shows none of this.
class JobTest : public ::testing::Test {
protected:
    void SetUp() override {
        Pieces::Reset();
        ASSERT_TRUE(CreateJob());
        ASSERT_EQ(CurrentJob()->Begin(FilterFolder().c_str()), Status::kOk);
    }
    void TearDown() override { DestroyJob(); }

    /// Makes these bytes the current file, in place of the one before, and reads its structure. Unlike
    /// ZORVAN_OneFileBegin it builds no page list and writes nothing, and a file that does not open stays
    /// current.
    static Status Open(std::string_view bytes) { return OpenPath(TemporaryFile(bytes).Path()); }
    /// The same with a file that is there already.
    static Status OpenPath(const std::string& path) {
        JobContext& job = *CurrentJob();
        job.CloseFile();
        job.file = std::make_unique<FileContext>(Pieces::Take, nullptr, job.factories);
        return job.file->pdf.OpenPdfFile(path);
    }

    static const PdfFile& File() { return CurrentJob()->file->pdf; }
    static const ErrorRecord& Error() { return CurrentJob()->error; }
};

}  // namespace zorvan::test
