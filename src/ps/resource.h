// What every PostScript resource made from a PDF object has in common, and its name.
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "api/status.h"
#include "pdf/object.h"
#include "ps/output.h"

namespace zorvan {

enum class ResourceCategory : std::uint32_t {
#define ZORVAN_CATEGORY(constant, code, key, error, promotion) constant = (code),
#include "ps/resource_categories.inc"
#undef ZORVAN_CATEGORY
};

enum class Promotion {
    kNever,
    kAtOnce,                       // from the first registration
    kOnSecondPage,                 // when the page count exceeds 1
    kOnSecondPageUnlessPageLocal,  // the same, but for resources that stay with their page
};

/// A category's row of the table.
struct CategoryRow {
    ResourceCategory category;
    std::uint32_t key;  // its name in a Resources dictionary, 0 when it is never named there
    Status error;       // for an object that is no usable resource of this category
    Promotion promotion;
};

constexpr std::size_t kCategoryCount = 10;
extern const std::array<CategoryRow, kCategoryCount> kCategoryRows;

/// The place of a category in the table and among the registry's lists.
std::size_t ListOf(ResourceCategory category);

/// Under what a resource is registered: the reference of its object, or, for a direct object, a generated
/// number.
struct ResourceKey {
    std::uint32_t number = 0;
    std::uint16_t generation = 0;

    bool operator==(const ResourceKey&) const = default;
};

/// The PostScript name: "/N%d", or "/N%d-%d" for a generation other than 0.
void AppendResourceName(OutputPiece& piece, ResourceKey key);

class Resource {
public:
    Resource(ResourceKey key, std::uint32_t kind)
        : number_(key.number), generation_(key.generation), kind_(kind) {}
    virtual ~Resource() = default;
    Resource(const Resource&) = delete;
    Resource& operator=(const Resource&) = delete;

    /// Writes the definition, and before it the definitions of what it names (by asking the registry).
    virtual Status WriteResource() = 0;
    /// Appends the text that stands for the resource where it is used.
    virtual void AppendUse(OutputPiece& piece) const = 0;
    /// Registers what the resource itself names. Called when it is registered first, and again for each later
    /// page, so that nothing is missing on the second page that uses it.
    virtual Status RegisterUsed() { return Status::kOk; }
    /// Called before a page is written on which this resource may be drawn: lets the images that are drawn
    /// through it know. Only their data is looked for this way: it goes out where it is drawn, and nowhere
    /// else.
    virtual void MarkDrawn() {}
    /// True for a resource that belongs to its page however often it is used (Type 3 fonts).
    [[nodiscard]] virtual bool IsPageLocal() const { return false; }

    [[nodiscard]] ResourceKey Key() const { return {number_, static_cast<std::uint16_t>(generation_)}; }
    [[nodiscard]] std::uint32_t Kind() const { return kind_; }

private:
    std::uint32_t number_;
    std::uint32_t generation_;
    std::uint32_t kind_;
};

/// What a factory gets: the key, the value (a reference, or the direct object, lent), and, for functions, how
/// the function is used.
struct ResourceRequest {
    ResourceKey key;
    PdfObject value;
    std::uint32_t use = 0;
};

/// Builds the resource of one category; null when the object is none.
using ResourceFactory = std::unique_ptr<Resource> (*)(const ResourceRequest& request);

/// One factory a category, in the order of the table; null where the library does not build the category
/// (yet): its resources are then nowhere registered, written or missed.
using ResourceFactories = std::array<ResourceFactory, kCategoryCount>;

}  // namespace zorvan
