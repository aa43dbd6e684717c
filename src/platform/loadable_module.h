// A module loaded at run time, and its entry points by name.
#pragma once

#include <string>

namespace zorvan {

class LoadableModule {
public:
    LoadableModule() = default;
    ~LoadableModule() { Unload(); }
    LoadableModule(const LoadableModule&) = delete;
    LoadableModule& operator=(const LoadableModule&) = delete;

    [[nodiscard]] bool Load(const std::string& path);
    void Unload();

    /// The address of an entry point, or null when the module does not have it.
    [[nodiscard]] void* Find(const char* name) const;

private:
    void* handle_ = nullptr;
};

}  // namespace zorvan
