// One function or halftone by itself: what its registration and its definition come to.
#pragma once

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "api/current_job.h"
#include "content/resource_uses.h"
#include "pdf/object.h"
#include "ps/resource_registry.h"
#include "support/job_fixture.h"
#include "support/pdf_builder.h"

namespace zorvan::test {

constexpr FunctionForm kDictionary = FunctionForm::kDictionary;
constexpr FunctionForm kProcedure = FunctionForm::kProcedure;

/// A job whose current file is the test's own: object 10 and from there on.
class PaintTest : public JobTest {
protected:
    static PdfBuilder File() { return PdfBuilder().Object(1, "<< >>"); }
    /// A file with one more object, number 10.
    static PdfBuilder File(std::string_view object) { return File().Object(10, object); }

    /// Begins a job of its own for the file, so that numbers and errors begin anew, too.
    void Prepare(PdfBuilder pdf) {
        DestroyJob();
        JobTest::SetUp();
        ASSERT_EQ(Open(pdf.Bytes()), Status::kOk);
        CurrentRegistry().SetCurrentPage(1);
        Pieces::Reset();
    }

    static Status Register(ResourceCategory category, std::uint32_t use = 0, std::uint32_t number = 10,
                           std::uint16_t generation = 0) {
        return CurrentRegistry().Register(
            category, {.key = {number, generation}, .value = MakeReference(number, generation), .use = use});
    }
    static Status RegisterFunction(FunctionForm form, std::uint32_t number = 10) {
        return Register(ResourceCategory::kFunction, static_cast<std::uint32_t>(form), number);
    }

    /// What the setup defines for object 10, a function; all must go well.
    std::string Function(FunctionForm form, PdfBuilder pdf) {
        Prepare(std::move(pdf));
        EXPECT_EQ(RegisterFunction(form), Status::kOk);
        EXPECT_EQ(CurrentRegistry().EmitGlobal(), Status::kOk);
        EXPECT_EQ(Error().Code(), Status::kOk);
        return Pieces::Joined();
    }
    std::string Function(FunctionForm form, std::string_view dictionary) {
        return Function(form, File(dictionary));
    }

    /// The status of writing object 10, a function that can be built.
    Status StatusOf(FunctionForm form, PdfBuilder pdf) {
        Prepare(std::move(pdf));
        EXPECT_EQ(RegisterFunction(form), Status::kOk);
        return CurrentRegistry().EmitGlobal();
    }
};

}  // namespace zorvan::test
