// Looks for Filter.dll from the program's own place, so that an installation can be moved.
#include "cli/filter_folder.h"

#include <filesystem>
#include <system_error>

namespace zorvan::cli {
namespace {

std::filesystem::path ProgramFolder() {
    std::error_code unknown;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", unknown);
    return unknown ? std::filesystem::path(".") : program.parent_path();
}

std::string WithSeparator(const std::filesystem::path& folder) {
    return (folder / "").string();
}

}  // namespace

std::vector<std::string> FilterFolders(const std::optional<std::string>& given) {
    if (given) {
        return {WithSeparator(given->empty() ? "." : *given)};
    }
    const std::filesystem::path program = ProgramFolder();
    const std::filesystem::path prefix = program.parent_path();
    std::vector<std::string> folders = {WithSeparator(program), WithSeparator(prefix / "lib/zorvan")};
    // ZORVAN_LIBDIR is the installation's library folder, such as lib64 or lib/x86_64-linux-gnu.
    const std::string installed = WithSeparator(prefix / ZORVAN_LIBDIR / "zorvan");
    if (installed != folders.back()) {
        folders.push_back(installed);
    }
    return folders;
}

std::string ChooseFilterFolder(const std::vector<std::string>& folders) {
    for (const std::string& folder : folders) {
        std::error_code ignored;
        if (std::filesystem::exists(folder + "Filter.dll", ignored)) {
            return folder;
        }
    }
    return folders.front();
}

}  // namespace zorvan::cli
