// Type 1 and multiple-master fonts.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "fonts/font_encoding.h"
#include "fonts/font_resource.h"

namespace zorvan {

class Type1FontResource : public FontResource {
public:
    explicit Type1FontResource(FontSource source);

    /// Writes the program when the font carries one, and the TZ line, which copies the font under its
    /// resource name and gives the copy its encoding. A font without a program is asked of the device by its
    /// name.
    Status WriteResource() override;

private:
    enum class ProgramKind : std::uint32_t { kNone = 0, kType1 = 1, kCompact = 3 };

    /// Sets `name` to the one that the program declares.
    Status WriteProgram(std::string& name) const;
    Status WriteEncodingLine(std::string_view name) const;

    std::optional<FontEncoding> encoding_;
    ProgramKind programKind_ = ProgramKind::kNone;
    OwnedObject program_;
};

/// Written exactly like a Type 1 font, on purpose: an instance of a multiple-master font is one.
class MMType1FontResource : public Type1FontResource {
public:
    using Type1FontResource::Type1FontResource;
};

}  // namespace zorvan
