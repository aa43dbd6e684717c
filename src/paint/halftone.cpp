// Writing halftones.
#include "paint/halftone.h"

#include <span>

#include "api/current_job.h"
#include "content/resource_uses.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "ps/device_parameters.h"

namespace zorvan {
namespace {

constexpr std::size_t kHalftoneName = 127;
constexpr std::size_t kSpotFunctionName = 128;

/// A screen by its frequency, angle and spot function.
class ScreenHalftone : public HalftoneResource {
public:
    ScreenHalftone(ResourceKey key, std::uint32_t kind, PdfObject dictionary)
        : HalftoneResource(key, kind, dictionary),
          spotFunction_(ReferencedFunction(names::kSpotFunction)),
          transfer_(ReferencedFunction(names::kTransferFunction)) {}

    Status RegisterUsed() override {
        spotFunction_.Register();
        transfer_.Register();
        return Status::kOk;
    }

protected:
    Status WriteUsed() override {
        RETURN_IF_FAILED(spotFunction_.EmitIfNeeded());
        return transfer_.EmitIfNeeded();
    }

    void AppendEntries(OutputPiece& text) const override {
        AppendNumber(text, "/Frequency ", names::kFrequency);
        AppendNumber(text, "/Angle ", names::kAngle);
        const Resolved spotFunction(Entry(names::kSpotFunction));
        if (Is(spotFunction.Get(), ObjectType::kName)) {
            text.Append("/SpotFunction /")
                .Append(CurrentNames().NameText(NameOf(spotFunction.Get()), NameTextMode::kToken,
                                                kSpotFunctionName))
                .Append(" /Function findRes\n");
        } else {
            AppendFunction(text, "/SpotFunction ", spotFunction_);
        }
        AppendFunction(text, "/TransferFunction ", transfer_);
    }

private:
    void AppendNumber(OutputPiece& text, std::string_view key, std::uint32_t name) const {
        const Resolved value(Entry(name));
        if (!IsNull(value.Get())) {
            text.Append(key).AppendOperand(value.Get()).Append("\n");
        }
    }

    UsedResource spotFunction_;
    UsedResource transfer_;
};

/// A halftone for each colour.
class HalftoneSet : public HalftoneResource {
public:
    HalftoneSet(ResourceKey key, std::uint32_t kind, PdfObject dictionary)
        : HalftoneResource(key, kind, dictionary) {
        for (std::uint32_t i = 0; i < DictSlotCount(dictionary); ++i) {
            const DictionarySlot slot = DictSlot(dictionary, i);
            if (slot.key != 0 && IsReference(slot.value) && !IsOwnEntry(slot.key)) {
                parts_.push_back({slot.key, {ResourceCategory::kHalftone, slot.value}});
            }
        }
    }

    Status RegisterUsed() override {
        for (Part& part : parts_) {
            part.halftone.Register();
        }
        return Status::kOk;
    }

protected:
    Status WriteUsed() override {
        for (const Part& part : parts_) {
            RETURN_IF_FAILED(part.halftone.EmitIfNeeded());
        }
        return Status::kOk;
    }

    void AppendEntries(OutputPiece& text) const override {
        for (const Part& part : parts_) {
            if (part.halftone.Get() != nullptr) {
                text.Append("(")
                    .Append(CurrentNames().NameText(part.colorant, NameTextMode::kString))
                    .Append(") ");
                part.halftone.AppendUse(text);
                text.Append("\n");
            }
        }
    }

private:
    struct Part {
        std::uint32_t colorant;
        UsedResource halftone;
    };

    static bool IsOwnEntry(std::uint32_t key) {
        return key == names::kType || key == names::kHalftoneType || key == names::kHalftoneName;
    }

    std::vector<Part> parts_;
};

/// A threshold array, defined by its sizes only.
class ThresholdHalftone : public HalftoneResource {
public:
    ThresholdHalftone(ResourceKey key, std::uint32_t kind, PdfObject dictionary,
                      std::span<const std::uint32_t> sizes)
        : HalftoneResource(key, kind, dictionary),
          sizes_(sizes),
          transfer_(ReferencedFunction(names::kTransferFunction)) {}

    Status RegisterUsed() override {
        transfer_.Register();
        return Status::kOk;
    }

protected:
    Status WriteUsed() override { return transfer_.EmitIfNeeded(); }

    void AppendEntries(OutputPiece& text) const override {
        for (const std::uint32_t key : sizes_) {
            const Resolved size(Entry(key));
            if (!IsNull(size.Get())) {
                AppendKey(text, key).AppendInteger(IntegerOf(size.Get())).Append("\n");
            }
        }
        AppendFunction(text, "/TransferFunction ", transfer_);
    }

private:
    std::span<const std::uint32_t> sizes_;
    UsedResource transfer_;
};

constexpr std::uint32_t kCellSizes[] = {names::kWidth, names::kHeight};
constexpr std::uint32_t kSquareSizes[] = {names::kXsquare, names::kYsquare};
constexpr std::uint32_t kTwoCellSizes[] = {names::kWidth, names::kHeight, names::kWidth2, names::kHeight2};

}  // namespace

HalftoneResource::HalftoneResource(ResourceKey key, std::uint32_t kind, PdfObject dictionary)
    : Resource(key, kind), dictionary_(CloneObject(dictionary)) {}

UsedResource HalftoneResource::ReferencedFunction(std::uint32_t key) const {
    const PdfObject value = Entry(key);
    if (!IsReference(value) || !HasBlock(Resolved(value).Get())) {
        return {};
    }
    return {ResourceCategory::kFunction, value, static_cast<std::uint32_t>(FunctionForm::kProcedure)};
}

void HalftoneResource::AppendFunction(OutputPiece& text, std::string_view key, const UsedResource& function) {
    if (function.Get() != nullptr) {
        function.AppendUse(text.Append(key));
        text.Append("\n");
    }
}

Status HalftoneResource::WriteResource() {
    RETURN_IF_FAILED(WriteUsed());
    OutputPiece text;
    AppendResourceName(text, Key());
    text.Append(" <</HalftoneType ").AppendUnsigned(Kind()).Append("\n");
    AppendName(text);
    AppendEntries(text);
    return text.Append(">> /Halftone defineRes pop\n").Write();
}

void HalftoneResource::AppendName(OutputPiece& text) const {
    const Resolved name(Entry(names::kHalftoneName));
    if (Is(name.Get(), ObjectType::kString)) {
        const std::string bytes = TextOfString(name.Get());
        AppendStringText(text.Append("/HalftoneName "), std::string_view(bytes).substr(0, kHalftoneName));
        text.Append("\n");
    }
}

void HalftoneResource::AppendUse(OutputPiece& piece) const {
    AppendResourceName(piece, Key());
    piece.Append(" /Halftone findRes ");
}

std::unique_ptr<Resource> CreateHalftoneResource(const ResourceRequest& request) {
    const Resolved value(request.value);
    const PdfObject dictionary = DictionaryOf(value.Get());
    const Resolved type(DictGet(dictionary, names::kHalftoneType));
    switch (const auto kind = static_cast<std::uint32_t>(IntegerOf(type.Get())); kind) {
        case 1:
            return std::make_unique<ScreenHalftone>(request.key, kind, dictionary);
        case 5:
            return std::make_unique<HalftoneSet>(request.key, kind, dictionary);
        case 6:
            return std::make_unique<ThresholdHalftone>(request.key, kind, dictionary, kCellSizes);
        case 10:
            return std::make_unique<ThresholdHalftone>(request.key, kind, dictionary, kSquareSizes);
        case 16:
            return std::make_unique<ThresholdHalftone>(request.key, kind, dictionary, kTwoCellSizes);
        default:
            return nullptr;
    }
}

}  // namespace zorvan
