// The emitters of colour spaces and colours. Device spaces go out as DefaultGray, DefaultRGB and DefaultCMYK,
// which a page may redefine, and never by their device names.
#include <algorithm>

#include "content/device_space.h"
#include "content/interpreter.h"
#include "pdf/name_table.h"

namespace zorvan {
Status ContentInterpreter::SetFillGray(const OperatorRow& row) {
    colorStates_.Top().fill = {family::kGray, 1};
    return WriteNumbers(row);
}

Status ContentInterpreter::SetStrokeGray(const OperatorRow& row) {
    colorStates_.Top().stroke = {family::kGray, 1};
    return WriteNumbers(row);
}

Status ContentInterpreter::SetFillRgb(const OperatorRow& row) {
    colorStates_.Top().fill = {family::kRgb, 3};
    return WriteNumbers(row);
}

Status ContentInterpreter::SetStrokeRgb(const OperatorRow& row) {
    colorStates_.Top().stroke = {family::kRgb, 3};
    return WriteNumbers(row);
}

Status ContentInterpreter::SetFillCmyk(const OperatorRow& row) {
    colorStates_.Top().fill = {family::kCmyk, 4};
    return WriteNumbers(row);
}

Status ContentInterpreter::SetStrokeCmyk(const OperatorRow& row) {
    colorStates_.Top().stroke = {family::kCmyk, 4};
    return WriteNumbers(row);
}

Status ContentInterpreter::SetFillSpace(const OperatorRow& row) {
    return SetSpace(row, colorStates_.Top().fill);
}

Status ContentInterpreter::SetStrokeSpace(const OperatorRow& row) {
    return SetSpace(row, colorStates_.Top().stroke);
}

Status ContentInterpreter::SetSpace(const OperatorRow& row, SpaceState& state) {
    const OwnedObject operand = operands_.Pop();
    const std::uint32_t name = NameOf(operand.Get());
    OutputPiece& line = Line();
    if (const DeviceSpace* device = FindDeviceSpace(name)) {
        state = {device->family, device->components};
        return line.Append(device->text).Append(row.text).Write();
    }
    if (name == names::kPattern) {
        state = {family::kPattern, 0};
        return line.Append("/Pattern").Append(row.text).Write();
    }
    state = {};
    if (const auto* space = FindResource<ColorSpaceUse>(ResourceCategory::kColorSpace, name)) {
        state = {space->Family(), space->Components()};
        space->AppendUse(line);
    }
    return line.Append(row.text).Write();
}

Status ContentInterpreter::SetFillColor(const OperatorRow& row) {
    return SetColor(row, colorStates_.Top().fill);
}

Status ContentInterpreter::SetStrokeColor(const OperatorRow& row) {
    return SetColor(row, colorStates_.Top().stroke);
}

Status ContentInterpreter::SetColor(const OperatorRow& row, const SpaceState& state) {
    if (state.components == 0) {
        return Status::kOk;  // the operands stay on the stack
    }
    return WriteComponents(row, state.components, "");
}

Status ContentInterpreter::SetFillColorOrPattern(const OperatorRow& row) {
    return SetColorOrPattern(row, colorStates_.Top().fill);
}

Status ContentInterpreter::SetStrokeColorOrPattern(const OperatorRow& row) {
    return SetColorOrPattern(row, colorStates_.Top().stroke);
}

Status ContentInterpreter::SetColorOrPattern(const OperatorRow& row, const SpaceState& state) {
    std::uint32_t components = state.components;
    OutputPiece use;
    if (Is(operands_.Top(1)[0], ObjectType::kName)) {
        const OwnedObject name = operands_.Pop();
        if (!AppendNamedColor(NameOf(name.Get()), use, components)) {
            operands_.Drop(std::min(components, operands_.Count()));
            return Status::kOk;
        }
    }
    return WriteComponents(row, components, use.View());
}

/// The use of the pattern, or else the colour space, of that name, and how many numbers it takes. False for a
/// pattern that cannot be used where it is named.
bool ContentInterpreter::AppendNamedColor(std::uint32_t name, OutputPiece& use, std::uint32_t& components) {
    if (auto* pattern = FindResource<PatternUse>(ResourceCategory::kPattern, name)) {
        components = pattern->TakesColor() ? components : 0;
        pattern->AppendUse(use);
        return pattern->CanBeUsedHere();
    }
    if (const auto* space = FindResource<ColorSpaceUse>(ResourceCategory::kColorSpace, name)) {
        space->AppendUse(use);
        components = space->Components();
    }
    return true;
}

Status ContentInterpreter::WriteComponents(const OperatorRow& row, std::uint32_t components,
                                           std::string_view use) {
    if (operands_.Count() < components) {
        return Status::kOperatorNotEnough;
    }
    OutputPiece& line = Line();
    AppendOperands(operands_.Top(components));
    operands_.Drop(components);
    return line.Append(use).Append(row.text).Write();
}

}  // namespace zorvan
