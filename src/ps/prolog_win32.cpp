// The prolog texts from the module's resources.
#include <array>

#include "platform/own_module.h"
#include "ps/prolog.h"

namespace zorvan {
namespace {

using Resources = std::array<PrologResource, kPrologResourceCount>;

Resources FindResources() {
    Resources resources{};
    unsigned identifier = 7003;
    for (PrologResource& resource : resources) {
        const std::span<const std::uint8_t> bytes = OwnResource(identifier, "PSPROLOG");
        resource = {identifier, bytes.data(), static_cast<std::uint32_t>(bytes.size())};
        identifier += identifier == 7010 ? 2 : 1;
    }
    return resources;
}

}  // namespace

const Prolog* BuiltInProlog() {
    static const Resources resources = FindResources();
    static const Prolog prolog{resources};
    return OwnModule() == nullptr ? nullptr : &prolog;
}

}  // namespace zorvan
