// Mapping files with mmap.
#include <functional>
#include <limits>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/mapped_file.h"

namespace zorvan {
namespace {

class Descriptor {
public:
    explicit Descriptor(const std::string& path)
        : number_(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    ~Descriptor() {
        if (number_ >= 0) {
            close(number_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int Number() const { return number_; }

private:
    int number_;
};

}  // namespace

bool MappedFile::Map(const std::string& path) {
    const Descriptor file(path);
    struct stat info {};
    if (file.Number() < 0 || fstat(file.Number(), &info) != 0 || !S_ISREG(info.st_mode)) {
        return false;
    }
    if (info.st_size > std::numeric_limits<std::uint32_t>::max()) {
        return false;
    }
    size_ = static_cast<std::uint32_t>(info.st_size);
    if (size_ == 0) {
        return true;  // mmap refuses a length of 0, and there is nothing to see anyway
    }
    void* view = mmap(nullptr, size_, PROT_READ, MAP_PRIVATE, file.Number(), 0);
    if (view == MAP_FAILED) {
        size_ = 0;
        return false;
    }
    view_ = static_cast<const std::uint8_t*>(view);
    return true;
}

void MappedFile::LetGo(std::span<const std::uint8_t> part) const {
    const bool inside = std::less_equal<>()(view_, part.data()) &&
                        std::less_equal<>()(part.data() + part.size(), view_ + size_);
    if (!inside) {
        return;  // a decrypted copy, for instance
    }
    static const auto kPage = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    // Whole pages only; the view itself begins with one.
    const auto begin = (static_cast<std::size_t>(part.data() - view_) + kPage - 1) / kPage * kPage;
    const auto end = static_cast<std::size_t>(part.data() + part.size() - view_) / kPage * kPage;
    if (begin < end) {
        void* pages =
            const_cast<std::uint8_t*>(view_ + begin);  // NOLINT(cppcoreguidelines-pro-type-const-cast)
        static_cast<void>(madvise(pages, end - begin, MADV_DONTNEED));  // a hint
    }
}

void MappedFile::Unmap() {
    if (view_ != nullptr) {
        munmap(const_cast<std::uint8_t*>(view_), size_);  // NOLINT(cppcoreguidelines-pro-type-const-cast)
    }
    view_ = nullptr;
    size_ = 0;
}

}  // namespace zorvan
