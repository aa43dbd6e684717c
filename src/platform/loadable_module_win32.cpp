// Loading modules with LoadLibrary.
#include <array>

#include <windows.h>

#include "platform/loadable_module.h"

namespace zorvan {
namespace {

HMODULE ModuleOf(void* handle) {
    return static_cast<HMODULE>(handle);
}

// Keeps the system from telling the user in a window, of which the host knows nothing, that a file is no
// module.
class NoWindows {
public:
    NoWindows() { SetThreadErrorMode(SEM_FAILCRITICALERRORS, &before_); }
    ~NoWindows() { SetThreadErrorMode(before_, nullptr); }
    NoWindows(const NoWindows&) = delete;
    NoWindows& operator=(const NoWindows&) = delete;

private:
    DWORD before_ = 0;
};

// A name or a folder that is told from the current one would be searched for in the program's and the
// system's folders; only the host's folder counts.
std::string FullPath(const std::string& path) {
    std::array<char, MAX_PATH + 1> full{};
    const DWORD length = GetFullPathNameA(path.c_str(), MAX_PATH, full.data(), nullptr);
    return length == 0 || length > MAX_PATH ? path : std::string(full.data(), length);
}

}  // namespace

bool LoadableModule::Load(const std::string& path) {
    const NoWindows noWindows;
    handle_ = LoadLibraryA(FullPath(path).c_str());
    return handle_ != nullptr;
}

void LoadableModule::Unload() {
    if (handle_ != nullptr) {
        FreeLibrary(ModuleOf(handle_));
        handle_ = nullptr;
    }
}

void* LoadableModule::Find(const char* name) const {
    return handle_ == nullptr ? nullptr : reinterpret_cast<void*>(GetProcAddress(ModuleOf(handle_), name));
}

}  // namespace zorvan
