// The seeds of the fuzz targets, and every beginning of each.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace zorvan::test {

/// Calls `use` with each beginning of each seed of the target, the empty and the whole one included. Returns
/// how many seeds there were.
template <class Use>
int ForEachPrefix(const std::string& target, Use use) {
    int seeds = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ZORVAN_SEEDS "/" + target)) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string seed{std::istreambuf_iterator<char>(file), {}};
        for (std::size_t length = 0; length <= seed.size(); ++length) {
            use(std::string_view(seed).substr(0, length));
        }
        ++seeds;
    }
    return seeds;
}

}  // namespace zorvan::test
