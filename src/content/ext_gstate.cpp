// Writing extended graphics states. What cannot be built is left out with its key: half a pair would end the
// job on the device.
#include "content/ext_gstate.h"

#include <algorithm>

#include "api/current_job.h"
#include "pdf/name_table.h"
#include "pdf/object_parser.h"
#include "ps/device_parameters.h"
#include "ps/number_array.h"

namespace zorvan {
namespace {

constexpr std::uint32_t kColors = 4;  // that a device may transfer apart

bool Flag(PdfObject value) {
    return BooleanOf(Resolved(value).Get());
}

std::string_view Word(bool value) {
    return value ? "true\n" : "false\n";
}

}  // namespace

ExtGState::ExtGState(ResourceKey key, PdfObject dictionary)
    : ExtGStateUse(key, 0),
      dictionary_(CloneObject(dictionary)),
      blackGeneration_(SettingUnder(names::kBG2, names::kBG)),
      undercolorRemoval_(SettingUnder(names::kUCR2, names::kUCR)),
      halftone_(SettingOf(ResourceCategory::kHalftone, Entry(names::kHT))) {
    TakeOverprint();
    TakeTransfer();
    const Resolved font(Entry(names::kFont));
    font_ = {ResourceCategory::kFont, ArrayGet(font.Get(), 0)};
}

/// Multiplying is approximated by overprinting.
void ExtGState::TakeOverprint() {
    NameTable& table = CurrentNames();
    const Resolved blendMode(Entry(table.InternName("BM")));
    const bool multiplies = NameOf(blendMode.Get()) == table.InternName("Multiply");
    overprintsStrokes_ = multiplies || Flag(Entry(names::kOP));
    overprintsFills_ = multiplies || Flag(Entry(names::kLowerOp));
}

ExtGState::Setting ExtGState::SettingOf(ResourceCategory category, PdfObject value) {
    const Resolved resolved(value);
    Setting setting;
    switch (NameOf(resolved.Get())) {
        case names::kDefault:
            setting.kind = Setting::Kind::kDeviceDefault;
            break;
        case names::kIdentity:
            setting.kind = Setting::Kind::kIdentity;
            break;
        default:
            if (HasBlock(resolved.Get())) {
                setting.kind = Setting::Kind::kResource;
                setting.resource = {category, value, static_cast<std::uint32_t>(FunctionForm::kProcedure)};
            }
    }
    return setting;
}

/// A function, or the device's own: the first of two keys wins. The other one knows no default.
ExtGState::Setting ExtGState::SettingUnder(std::uint32_t key, std::uint32_t otherKey) const {
    Setting setting = SettingOf(ResourceCategory::kFunction, Entry(key));
    if (setting.kind == Setting::Kind::kNone) {
        setting = SettingOf(ResourceCategory::kFunction, Entry(otherKey));
        if (setting.kind == Setting::Kind::kDeviceDefault) {
            setting.kind = Setting::Kind::kNone;
        }
    }
    if (setting.kind == Setting::Kind::kIdentity) {
        setting.kind = Setting::Kind::kNone;
    }
    return setting;
}

/// As above; four functions may stand in an array.
void ExtGState::TakeTransfer() {
    const bool second = !IsNull(Resolved(Entry(names::kTR2)).Get());
    const PdfObject value = Entry(second ? names::kTR2 : names::kTR);
    const Resolved array(value);
    if (!Is(array.Get(), ObjectType::kArray)) {
        transfer_.push_back(SettingOf(ResourceCategory::kFunction, value));
    } else if (ArrayCount(array.Get()) >= kColors) {
        for (std::uint32_t i = 0; i < kColors; ++i) {
            transfer_.push_back(SettingOf(ResourceCategory::kFunction, ArrayGet(array.Get(), i)));
        }
    }
    const auto isDefault = [](const Setting& each) { return each.kind == Setting::Kind::kDeviceDefault; };
    if (!second && std::ranges::any_of(transfer_, isDefault)) {
        transfer_.clear();
    }
}

Status ExtGState::RegisterUsed() {
    blackGeneration_.resource.Register();
    undercolorRemoval_.resource.Register();
    halftone_.resource.Register();
    for (Setting& each : transfer_) {
        each.resource.Register();
    }
    font_.Register();
    return Status::kOk;
}

Status ExtGState::WriteResource() {
    RETURN_IF_FAILED(blackGeneration_.resource.EmitIfNeeded());
    RETURN_IF_FAILED(undercolorRemoval_.resource.EmitIfNeeded());
    for (const Setting& each : transfer_) {
        RETURN_IF_FAILED(each.resource.EmitIfNeeded());
    }
    RETURN_IF_FAILED(halftone_.resource.EmitIfNeeded());
    RETURN_IF_FAILED(font_.EmitIfNeeded());
    OutputPiece text;
    AppendResourceName(text, Key());
    text.Append(" <<\n");
    AppendBoolean(text, names::kSA);
    text.Append("/OP ").Append(Word(overprintsStrokes_)).Append("/op ").Append(Word(overprintsFills_));
    AppendInteger(text, names::kOPM);
    AppendSetting(text, "/BG ", blackGeneration_, "/_defaultblackgeneration");
    AppendSetting(text, "/UCR ", undercolorRemoval_, "/_defaultundercolorremoval");
    AppendTransfer(text);
    AppendSetting(text, "/HT ", halftone_, "/_defaulthalftone");
    AppendNumber(text, names::kSM);
    AppendFont(text);
    AppendNumber(text, names::kLW);
    AppendInteger(text, names::kLC);
    AppendInteger(text, names::kLJ);
    AppendNumber(text, names::kML);
    AppendDash(text);
    AppendNumber(text, names::kFL);
    AppendIntent(text);
    return text.Append(">> /ExtGState defineRes pop\n").Write();
}

void ExtGState::AppendUse(OutputPiece& piece) const {
    AppendResourceName(piece, Key());
    piece.Append(" /ExtGState findRes ");
}

void ExtGState::AppendSetting(OutputPiece& text, std::string_view key, const Setting& setting,
                              std::string_view deviceDefault) const {
    if (!setting.IsThere()) {
        return;
    }
    text.Append(key);
    if (setting.kind == Setting::Kind::kResource) {
        setting.resource.AppendUse(text);
    } else {
        text.Append(deviceDefault).Append(" load");
    }
    text.Append("\n");
}

void ExtGState::AppendTransfer(OutputPiece& text) const {
    if (transfer_.empty() || !std::ranges::all_of(transfer_, &Setting::IsThere)) {
        return;
    }
    if (transfer_.size() == 1 && transfer_.front().kind == Setting::Kind::kDeviceDefault) {
        text.Append("/TR /_defaulttransfer load\n");
        return;
    }
    text.Append(transfer_.size() == 1 ? "/TR " : "/TR [");
    for (const Setting& each : transfer_) {
        switch (each.kind) {
            case Setting::Kind::kIdentity:
                text.Append("{} ");
                break;
            case Setting::Kind::kDeviceDefault:
                text.Append("/_defaulttransfer load ");
                break;
            default:
                each.resource.AppendUse(text);
                text.Append(" ");
        }
    }
    text.Append(transfer_.size() == 1 ? "\n" : "]\n");
}

void ExtGState::AppendFont(OutputPiece& text) const {
    if (font_.Get() == nullptr) {
        return;
    }
    const Resolved font(Entry(names::kFont));
    const Resolved size(ArrayGet(font.Get(), 1));
    font_.AppendUse(text.Append("/Font ["));
    // The blank keeps name and number apart.
    text.Append(" ").AppendOperand(size.Get()).Append("]\n");
}

void ExtGState::AppendDash(OutputPiece& text) const {
    const Resolved dash(Entry(names::kD));
    if (!Is(dash.Get(), ObjectType::kArray)) {
        return;
    }
    AppendNumbers(text.Append("/D [ ["), ArrayGet(dash.Get(), 0));
    text.Append("] ").AppendOperand(Resolved(ArrayGet(dash.Get(), 1)).Get()).Append(" ]\n");
}

void ExtGState::AppendBoolean(OutputPiece& text, std::uint32_t key) const {
    if (!IsNull(Resolved(Entry(key)).Get())) {
        AppendKey(text, key).Append(Word(Flag(Entry(key))));
    }
}

void ExtGState::AppendInteger(OutputPiece& text, std::uint32_t key) const {
    const Resolved value(Entry(key));
    if (!IsNull(value.Get())) {
        AppendKey(text, key).AppendInteger(IntegerOf(value.Get())).Append("\n");
    }
}

void ExtGState::AppendNumber(OutputPiece& text, std::uint32_t key) const {
    const Resolved value(Entry(key));
    if (!IsNull(value.Get())) {
        AppendKey(text, key).AppendOperand(value.Get()).Append("\n");
    }
}

void ExtGState::AppendIntent(OutputPiece& text) const {
    const Resolved intent(Entry(names::kRI));
    if (Is(intent.Get(), ObjectType::kName)) {
        text.Append("/RI /")
            .Append(CurrentNames().NameText(NameOf(intent.Get()), NameTextMode::kToken))
            .Append("\n");
    }
}

std::unique_ptr<Resource> CreateExtGState(const ResourceRequest& request) {
    const Resolved dictionary(request.value);
    if (!Is(dictionary.Get(), ObjectType::kDictionary)) {
        return nullptr;
    }
    return std::make_unique<ExtGState>(request.key, dictionary.Get());
}

}  // namespace zorvan
