// The nine prolog resources as they are stored, byte for byte.
#pragma once

#include <cstddef>
#include <cstdint>

namespace zorvan {

/// One resource of type "PSPROLOG". Its lines end in CR LF; the first one is its DSC title, except in 7009,
/// which has none.
struct PrologResource {
    unsigned id;
    const unsigned char* bytes;
    std::uint32_t size;
};

inline constexpr std::size_t kPrologResourceCount = 9;

/// In the order of their identifiers: 7003 to 7010, then 7012. (The document writes 7012 between 7007 and
/// 7008.)
extern const PrologResource kPrologResources[kPrologResourceCount];

}  // namespace zorvan
