// Parses an object out of any bytes, copies it and frees it: nothing may be left over, and reading every
// value out of it must be safe.
#include <algorithm>
#include <cstdint>
#include <vector>

#include "fuzz/pdf_job.h"
#include "pdf/object_parser.h"

using namespace zorvan;  // NOLINT(google-build-using-namespace): a program of one function

namespace {

/// Walks two values side by side, without recursion.
void RequireSame(PdfObject one, PdfObject other) {
    std::vector<std::pair<PdfObject, PdfObject>> pending = {{one, other}};
    while (!pending.empty()) {
        const auto [left, right] = pending.back();
        pending.pop_back();
        fuzz::Require(left.type == right.type && left.tag == right.tag &&
                      PayloadOf(left) == PayloadOf(right));
        const auto leftText = StringBytes(left);
        const auto rightText = StringBytes(right);
        fuzz::Require(std::equal(leftText.begin(), leftText.end(), rightText.begin(), rightText.end()));
        fuzz::Require(ArrayCount(left) == ArrayCount(right) && DictSlotCount(left) == DictSlotCount(right));
        for (std::uint32_t i = 0; i < ArrayCount(left); ++i) {
            pending.emplace_back(ArrayGet(left, i), ArrayGet(right, i));
        }
        for (std::uint32_t i = 0; i < DictSlotCount(left); ++i) {
            fuzz::Require(DictSlot(left, i).key == DictSlot(right, i).key);
            pending.emplace_back(DictSlot(left, i).value, DictSlot(right, i).value);
        }
        if (Is(left, ObjectType::kStream)) {
            pending.emplace_back(StreamDictionary(left), StreamDictionary(right));
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const fuzz::InputFile file({data, size});
    const std::size_t before = file.LiveBlocks();
    {
        const OwnedObject object(ParseObjectAt(file.File(), 0));
        const OwnedObject copy(CloneObject(object.Get()));
        RequireSame(object.Get(), copy.Get());
    }
    fuzz::Require(file.LiveBlocks() == before);
    return 0;
}
