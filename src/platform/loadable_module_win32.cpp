// Loading modules with LoadLibrary.
#include <algorithm>

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

}  // namespace

bool LoadableModule::Load(const std::string& path) {
    // A name without a folder would be searched for in the system's folders; only the host's folder counts.
    std::string exact = path.find_first_of("/\\:") == std::string::npos ? ".\\" + path : path;
    std::replace(exact.begin(), exact.end(), '/', '\\');  // the loader knows no other separator
    const NoWindows noWindows;
    handle_ = LoadLibraryA(exact.c_str());
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
