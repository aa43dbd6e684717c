// The small document that uses a resource of each kind.
#pragma once

#include <fstream>
#include <iterator>
#include <string>

namespace zorvan::test {

inline std::string EveryResource() {
    std::ifstream file(ZORVAN_EVERY_RESOURCE, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace zorvan::test
