// The category table and the resource names.
#include "ps/resource.h"

#include <algorithm>

#include "pdf/name_table.h"

namespace zorvan {

const std::array<CategoryRow, kCategoryCount> kCategoryRows = {{
#define ZORVAN_CATEGORY(constant, code, key, error, promotion) \
    {ResourceCategory::constant, names::key, Status::error, Promotion::promotion},
#include "ps/resource_categories.inc"
#undef ZORVAN_CATEGORY
}};

std::size_t ListOf(ResourceCategory category) {
    const auto row = std::ranges::find_if(kCategoryRows,
                                          [category](const auto& each) { return each.category == category; });
    return static_cast<std::size_t>(row - kCategoryRows.begin());
}

void AppendResourceName(OutputPiece& piece, ResourceKey key) {
    piece.Append("/N").AppendInteger(static_cast<std::int32_t>(key.number));
    if (key.generation != 0) {
        piece.Append("-").AppendUnsigned(key.generation);
    }
}

}  // namespace zorvan
