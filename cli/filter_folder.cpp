// Looks for Filter.dll from the program's own place, so that an installation can be moved.
#include "cli/filter_folder.h"

#include "cli/system.h"

namespace zorvan::cli {
std::vector<std::string> FilterFolders(const std::optional<std::string>& given) {
    if (given) {
        return {WithSeparator(given->empty() ? "." : *given)};
    }
    const std::string program = ProgramFolder();
    const std::string prefix = FolderOf(program.substr(0, program.size() - 1));
    std::vector<std::string> folders = {program, prefix + "lib/zorvan/"};
    // ZORVAN_LIBDIR is the installation's library folder, such as lib64 or lib/x86_64-linux-gnu.
    const std::string installed = prefix + ZORVAN_LIBDIR "/zorvan/";
    if (installed != folders.back()) {
        folders.push_back(installed);
    }
    return folders;
}

std::string ChooseFilterFolder(const std::vector<std::string>& folders) {
    for (const std::string& folder : folders) {
        if (IsThere(folder + "Filter.dll")) {
            return folder;
        }
    }
    return folders.front();
}

}  // namespace zorvan::cli
