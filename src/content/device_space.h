// The three device spaces. They go out under names of their own, never by their device names, so that a page
// can put another space in their place.
#pragma once

#include <cstdint>
#include <string_view>

namespace zorvan {

/// A device space by its name in the file, and as it stands in the output.
struct DeviceSpace {
    std::uint32_t name;
    std::uint32_t abbreviation;  // in inline images
    std::string_view text;
    std::uint32_t family;
    std::uint32_t components;
};

/// Null for any other name.
const DeviceSpace* FindDeviceSpace(std::uint32_t name);
/// The same, for inline images, which may abbreviate it.
const DeviceSpace* FindInlineDeviceSpace(std::uint32_t name);
/// The space of so many components, or null.
const DeviceSpace* DeviceSpaceOf(std::int32_t components);

}  // namespace zorvan
