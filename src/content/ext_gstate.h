// Extended graphics states: dictionaries that `gs` applies.
#pragma once

#include <vector>

#include "content/resource_uses.h"
#include "pdf/object.h"
#include "ps/used_resource.h"

namespace zorvan {

class ExtGState : public ExtGStateUse {
public:
    /// `dictionary` is the state's, and is not kept.
    ExtGState(ResourceKey key, PdfObject dictionary);

    Status RegisterUsed() override;
    /// Writes what the state names, and the state.
    Status WriteResource() override;
    void AppendUse(OutputPiece& piece) const override;
    [[nodiscard]] bool OverprintsFills() const override { return overprintsFills_; }

private:
    /// A setting that is a function, a halftone, or the device's own.
    struct Setting {
        enum class Kind { kNone, kDeviceDefault, kIdentity, kResource };
        Kind kind = Kind::kNone;
        UsedResource resource;

        [[nodiscard]] bool IsThere() const {
            return kind != Kind::kNone && (kind != Kind::kResource || resource.Get() != nullptr);
        }
    };
    static Setting SettingOf(ResourceCategory category, PdfObject value);
    [[nodiscard]] Setting SettingUnder(std::uint32_t key, std::uint32_t otherKey) const;
    void TakeOverprint();
    void TakeTransfer();

    [[nodiscard]] PdfObject Entry(std::uint32_t key) const { return DictGet(dictionary_.Get(), key); }
    void AppendSetting(OutputPiece& text, std::string_view key, const Setting& setting,
                       std::string_view deviceDefault) const;
    void AppendTransfer(OutputPiece& text) const;
    void AppendFont(OutputPiece& text) const;
    void AppendDash(OutputPiece& text) const;
    void AppendBoolean(OutputPiece& text, std::uint32_t key) const;
    void AppendInteger(OutputPiece& text, std::uint32_t key) const;
    void AppendNumber(OutputPiece& text, std::uint32_t key) const;
    void AppendIntent(OutputPiece& text) const;

    OwnedObject dictionary_;
    bool overprintsStrokes_ = false;
    bool overprintsFills_ = false;
    Setting blackGeneration_;
    Setting undercolorRemoval_;
    Setting halftone_;
    std::vector<Setting> transfer_;  // none, one, or one for each of four colours
    UsedResource font_;
};

/// The factory of the category.
std::unique_ptr<Resource> CreateExtGState(const ResourceRequest& request);

}  // namespace zorvan
