// Loading modules with dlopen.
#include <dlfcn.h>

#include "platform/loadable_module.h"

namespace zorvan {

bool LoadableModule::Load(const std::string& path) {
    // A name without a slash would be searched for in the system's folders; only the host's folder counts.
    const std::string exact = path.find('/') == std::string::npos ? "./" + path : path;
    handle_ = dlopen(exact.c_str(), RTLD_NOW | RTLD_LOCAL);
    return handle_ != nullptr;
}

void LoadableModule::Unload() {
    if (handle_ != nullptr) {
        dlclose(handle_);
        handle_ = nullptr;
    }
}

void* LoadableModule::Find(const char* name) const {
    return handle_ == nullptr ? nullptr : dlsym(handle_, name);
}

}  // namespace zorvan
