// What all font classes have in common: the name under which a font is selected, and the name of its program.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "api/status.h"
#include "pdf/name_table.h"
#include "pdf/object.h"
#include "ps/resource.h"

namespace zorvan {

/// The kind word of each class.
namespace font_kind {
constexpr std::uint32_t kType1 = 1;
constexpr std::uint32_t kType3 = 4;
constexpr std::uint32_t kTrueType = 8;
constexpr std::uint32_t kType0 = 16;
constexpr std::uint32_t kCIDFontType0 = 0;  // these two are descendants
constexpr std::uint32_t kCIDFontType2 = 2;
}  // namespace font_kind

/// The longest name of a CID-keyed font or a CMap.
constexpr std::size_t kCIDNameLimit = 128;

/// What a font is built from: its key, and its dictionary.
struct FontSource {
    ResourceKey key;
    OwnedObject dictionary;
};

class FontResource : public Resource {
public:
    FontResource(FontSource source, std::uint32_t kind)
        : Resource(source.key, kind), dictionary_(std::move(source.dictionary)) {}

    void AppendUse(OutputPiece& piece) const override { AppendResourceName(piece, Key()); }

protected:
    [[nodiscard]] PdfObject Dictionary() const { return dictionary_.Get(); }
    /// The reference of the font dictionary, by which errors are found in the file.
    [[nodiscard]] PdfObject Reference() const;

    /// The font's name with its slash.
    [[nodiscard]] const std::string& Name() const { return name_; }
    [[nodiscard]] std::string_view NameWithoutSlash() const { return std::string_view(name_).substr(1); }
    void SetName(std::string_view name) { name_ = "/" + std::string(name); }
    /// Takes the name that is the value of a key of the font dictionary; an empty one when there is none.
    void SetNameFrom(std::uint32_t key, std::size_t limit = kNameTextLimit);

private:
    OwnedObject dictionary_;
    std::string name_{"/"};
};

/// Builds the class that the font dictionary's `Subtype` asks for. Null when the value is no dictionary or
/// the `Subtype` is none of Type0, Type1, MMType1, TrueType and Type3, or when a Type0 font has no
/// descendant.
std::unique_ptr<Resource> CreateFontResource(const ResourceRequest& request);

}  // namespace zorvan
