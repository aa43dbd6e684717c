// Finding a prolog text.
#include "ps/prolog.h"

#include <algorithm>

namespace zorvan {

std::string_view Prolog::Text(unsigned identifier) const {
    const auto found =
        std::ranges::find_if(resources_, [identifier](const auto& each) { return each.id == identifier; });
    if (found == resources_.end() || found->size == 0) {
        return "";  // and not a null pointer, which no host expects
    }
    return {reinterpret_cast<const char*>(found->bytes), found->size};
}

}  // namespace zorvan
