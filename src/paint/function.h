// Functions: each is defined once for the file, as a function dictionary or as a procedure, and fetched by
// name.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "content/resource_uses.h"
#include "pdf/object.h"
#include "ps/output.h"

namespace zorvan {

class FunctionResource : public FunctionUse {
public:
    /// `kind` is the function's type. `value` is the function, resolved, and is not kept.
    FunctionResource(ResourceKey key, std::uint32_t kind, FunctionForm form, PdfObject value)
        : FunctionUse(key, kind), form_(form), value_(CloneObject(value)) {}

    /// Writes what the function names, and the function under its name.
    Status WriteResource() override;
    void AppendUse(OutputPiece& piece) const override;
    Status WriteUsed() override { return Status::kOk; }

protected:
    [[nodiscard]] FunctionForm Form() const { return form_; }
    [[nodiscard]] PdfObject Value() const { return value_.Get(); }
    [[nodiscard]] PdfObject Reference() const { return MakeReference(Key().number, Key().generation); }
    [[nodiscard]] PdfObject Entry(std::uint32_t key) const;

    /// Each appends "/Key [", the numbers of an array, and `end`, a line feed at its end. The first one
    /// records and returns kInvalidDataType for what is no array.
    Status AppendRequired(OutputPiece& text, std::uint32_t key, std::string_view end) const;
    /// Nothing for what is null.
    Status AppendIfPresent(OutputPiece& text, std::uint32_t key, std::string_view end) const;
    /// Nothing for what is no array.
    void AppendIfArray(OutputPiece& text, std::uint32_t key, std::string_view end) const;

private:
    /// "/FunctionDictionary" or "/Function".
    [[nodiscard]] std::string_view Category() const;

    FunctionForm form_;
    OwnedObject value_;
};

/// `value` may be a reference. Null when it is no function, or when it lies deeper in others than the limit.
std::unique_ptr<FunctionResource> CreateFunction(PdfObject value, ResourceKey key, FunctionForm form,
                                                 std::uint32_t depth = 0);

/// The factory of the category; the request's `use` is a FunctionForm.
std::unique_ptr<Resource> CreateFunctionResource(const ResourceRequest& request);

}  // namespace zorvan
