// Temporary folders and whole files.
#include "tests/cli/scratch_folder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "support/system.h"

namespace zorvan::cli {

ScratchFolder::ScratchFolder()
    : folder_(test::ShellPath(
          test::MakeFolder((std::filesystem::temp_directory_path() / "zorvan-test-").string()))) {}

ScratchFolder::~ScratchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::string ScratchFolder::Write(const std::string& name, const std::string& content) const {
    std::ofstream file(Path(name), std::ios::binary);
    file << content;
    file.close();
    if (!file) {
        throw std::runtime_error("cannot write " + Path(name));
    }
    return Path(name);
}

std::vector<std::string> ScratchFolder::Names() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string FileText(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return "(missing)";
    }
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace zorvan::cli
