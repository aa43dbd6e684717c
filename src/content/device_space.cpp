// The table of device spaces.
#include "content/device_space.h"

#include <algorithm>
#include <array>

#include "content/color_state.h"
#include "pdf/name_table.h"

namespace zorvan {
namespace {

constexpr std::array<DeviceSpace, 3> kDeviceSpaces = {{
    {names::kDeviceGray, names::kG, "DefaultGray", family::kGray, 1},
    {names::kDeviceRGB, names::kRGB, "DefaultRGB", family::kRgb, 3},
    {names::kDeviceCMYK, names::kCMYK, "DefaultCMYK", family::kCmyk, 4},
}};

template <class Test>
const DeviceSpace* FindIf(const Test& test) {
    const auto* const found = std::ranges::find_if(kDeviceSpaces, test);
    return found == kDeviceSpaces.end() ? nullptr : found;
}

}  // namespace

const DeviceSpace* FindDeviceSpace(std::uint32_t name) {
    return FindIf([name](const DeviceSpace& each) { return each.name == name; });
}

const DeviceSpace* FindInlineDeviceSpace(std::uint32_t name) {
    return FindIf([name](const DeviceSpace& each) { return each.name == name || each.abbreviation == name; });
}

const DeviceSpace* DeviceSpaceOf(std::int32_t components) {
    return FindIf([components](const DeviceSpace& each) {
        return each.components == static_cast<std::uint32_t>(components);
    });
}

}  // namespace zorvan
