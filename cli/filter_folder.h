// Where the codec library Filter.dll is.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zorvan::cli {

// The folders that are searched, in order, each with its trailing separator: `given` alone (--filter-dir) or,
// without it, the program's own folder and the installation's library folders.
std::vector<std::string> FilterFolders(const std::optional<std::string>& given);

// The first of `folders` that holds Filter.dll; the first of all when none does, so that the library tells
// what is wrong with it.
std::string ChooseFilterFolder(const std::vector<std::string>& folders);

}  // namespace zorvan::cli
