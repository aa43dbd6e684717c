// Mapping files with a section object.
#include <windows.h>

#include "platform/mapped_file.h"

namespace zorvan {
namespace {

class Handle {
public:
    explicit Handle(HANDLE handle) : handle_(handle) {}
    ~Handle() {
        if (IsValid()) {
            CloseHandle(handle_);
        }
    }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

    // The system has two values for none.
    [[nodiscard]] bool IsValid() const { return handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE; }
    [[nodiscard]] HANDLE Get() const { return handle_; }

private:
    HANDLE handle_;
};

}  // namespace

bool MappedFile::Map(const std::string& path) {
    const Handle file(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsValid() || GetFileType(file.Get()) != FILE_TYPE_DISK) {
        return false;
    }
    DWORD sizeAbove = 0;
    const DWORD size = GetFileSize(file.Get(), &sizeAbove);
    if (sizeAbove != 0 || (size == INVALID_FILE_SIZE && GetLastError() != NO_ERROR)) {
        return false;
    }
    if (size == 0) {
        return true;  // the system refuses to map nothing, and there is nothing to see anyway
    }
    const Handle mapping(CreateFileMappingA(file.Get(), nullptr, PAGE_READONLY, 0, 0, nullptr));
    if (!mapping.IsValid()) {
        return false;
    }
    view_ = static_cast<const std::uint8_t*>(MapViewOfFile(mapping.Get(), FILE_MAP_READ, 0, 0, 0));
    size_ = view_ == nullptr ? 0 : size;
    return view_ != nullptr;
}

// The system takes pages of a read-only view back by itself when memory becomes scarce.
void MappedFile::LetGo(std::span<const std::uint8_t> /*part*/) const {}

void MappedFile::Unmap() {
    if (view_ != nullptr) {
        UnmapViewOfFile(view_);
    }
    view_ = nullptr;
    size_ = 0;
}

}  // namespace zorvan
