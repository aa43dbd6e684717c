// The fakes: one class template over what the interpreter asks of each category.
#include "ps/fake_resources.h"

#include <array>
#include <string>
#include <string_view>

#include "api/current_job.h"
#include "content/interpreter.h"
#include "content/resource_uses.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "ps/resource_registry.h"
#include "ps/resource_scope.h"

namespace zorvan::test {
namespace {

constexpr std::array<std::string_view, kCategoryCount> kCategoryNames = {
    "Font",    "ColorSpace", "ExtGState", "XObject", "Pattern",
    "Shading", "Function",   "Encoding",  "CMap",    "Halftone"};

/// Where the text of a use looks the resource up.
std::string_view FoundIn(ResourceCategory category) {
    return category == ResourceCategory::kPattern ? "MadePattern" : kCategoryNames[ListOf(category)];
}

PdfObject Entry(PdfObject dictionary, std::string_view key) {
    return DictGet(Is(dictionary, ObjectType::kStream) ? StreamDictionary(dictionary) : dictionary,
                   CurrentNames().InternName(key));
}

/// A resource that is used without a name.
struct Used {
    ResourceCategory category;
    ResourceKey key;
    OwnedObject value;
};

template <class Use>
class Fake : public Use {
public:
    Fake(const ResourceRequest& request, ResourceCategory category, PdfObject object)
        : Use(request.key, static_cast<std::uint32_t>(category)),
          category_(category),
          object_(CloneObject(object)),
          scope_(Resolved(Entry(object, "Resources")).Get()) {
        for (const ResourceCategory each : {ResourceCategory::kFunction, ResourceCategory::kEncoding,
                                            ResourceCategory::kCMap, ResourceCategory::kHalftone}) {
            AddUsed(each);
        }
    }

    Status RegisterUsed() override {
        scope_.Register();
        for (const Used& each : used_) {
            const ResourceRequest request{.key = each.key, .value = each.value.Get()};
            RETURN_IF_FAILED(CurrentRegistry().Register(each.category, request));
        }
        return Status::kOk;
    }

    Status WriteResource() override {
        for (const CategoryRow& row : kCategoryRows) {
            for (const ScopeEntry& each : scope_.Entries(row.category)) {
                RETURN_IF_FAILED(CurrentRegistry().EmitIfNeeded(row.category, each.key));
            }
        }
        for (const Used& each : used_) {
            RETURN_IF_FAILED(CurrentRegistry().EmitIfNeeded(each.category, each.key));
        }
        OutputPiece piece;
        piece.Append("%define ").Append(kCategoryNames[ListOf(category_)]).Append(" ");
        AppendResourceName(piece, this->Key());
        return piece.Append("\n").Write();
    }

    void AppendUse(OutputPiece& piece) const override {
        const auto text = StringBytes(Get("Text"));
        if (!text.empty()) {
            piece.Append({reinterpret_cast<const char*>(text.data()), text.size()});
            return;
        }
        AppendResourceName(piece, this->Key());
        piece.Append(" /").Append(FoundIn(category_)).Append(" findRes ");
    }

    [[nodiscard]] bool IsPageLocal() const override {
        return NameOf(Get("Subtype")) == CurrentNames().InternName("Type3");
    }

protected:
    [[nodiscard]] PdfObject Get(std::string_view key) const { return Entry(object_.Get(), key); }
    [[nodiscard]] const ResourceScope* Scope() const { return &scope_; }
    [[nodiscard]] ResourceCategory Category() const { return category_; }

private:
    void AddUsed(ResourceCategory category) {
        const PdfObject value = Get("Used" + std::string(kCategoryNames[ListOf(category)]));
        if (IsReference(value)) {
            used_.push_back({category, {value.payload, value.type}, OwnedObject(value)});
        } else if (!IsNull(value)) {
            used_.push_back({category, {TakeGeneratedResourceNumber(), 0}, OwnedObject(CloneObject(value))});
        }
    }

    ResourceCategory category_;
    OwnedObject object_;
    ResourceScope scope_;
    std::vector<Used> used_;
};

class FakeColorSpace : public Fake<ColorSpaceUse> {
public:
    using Fake::Fake;
    [[nodiscard]] std::uint32_t Family() const override { return PayloadOf(Get("Family")); }
    [[nodiscard]] std::uint32_t Components() const override { return PayloadOf(Get("N")); }
};

class FakeExtGState : public Fake<ExtGStateUse> {
public:
    using Fake::Fake;
    [[nodiscard]] bool OverprintsFills() const override { return BooleanOf(Get("op")); }
};

class FakePattern : public Fake<PatternUse> {
public:
    using Fake::Fake;
    [[nodiscard]] bool IsColoredTiling() const override { return PayloadOf(Get("PaintType")) == 1; }
};

class FakePainted : public Fake<PaintedUse> {
public:
    using Fake::Fake;
    Status Paint(ContentKind kind) override {
        OutputPiece piece;
        piece.Append("%paint ").Append(kCategoryNames[ListOf(Category())]).Append(" ");
        AppendResourceName(piece, Key());
        piece.Append(" in ").AppendUnsigned(static_cast<std::uint32_t>(kind)).Append("\n");
        RETURN_IF_FAILED(piece.Write());
        return ContentInterpreter(Scope(), Get("Contents"), ContentKind::kForm).Run();
    }
};

using FakePlain = Fake<Resource>;

template <class Class, ResourceCategory category>
std::unique_ptr<Resource> Make(const ResourceRequest& request) {
    const Resolved object(request.value);
    const bool isObject = Is(object.Get(), ObjectType::kDictionary) || Is(object.Get(), ObjectType::kStream);
    if (!isObject || BooleanOf(Entry(object.Get(), "Broken"))) {
        return nullptr;
    }
    return std::make_unique<Class>(request, category, object.Get());
}

}  // namespace

ResourceFactories FakeFactories() {
    using enum ResourceCategory;
    return {Make<FakePlain, kFont>,      Make<FakeColorSpace, kColorSpace>, Make<FakeExtGState, kExtGState>,
            Make<FakePainted, kXObject>, Make<FakePattern, kPattern>,       Make<FakePainted, kShading>,
            Make<FakePlain, kFunction>,  Make<FakePlain, kEncoding>,        Make<FakePlain, kCMap>,
            Make<FakePlain, kHalftone>};
}

}  // namespace zorvan::test
