// The system as Windows has it. Its C library knows descriptors, too.
#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include "cli/system.h"

namespace zorvan::cli {
namespace {

constexpr int kBinary = _O_BINARY | _O_NOINHERIT;

// An errno for any of the system's many reasons.
int LastError() {
    const auto error =
        std::error_code(static_cast<int>(GetLastError()), std::system_category()).default_error_condition();
    return error.category() == std::generic_category() ? error.value() : EIO;
}

int DescriptorOf(HANDLE file) {
    if (file == INVALID_HANDLE_VALUE) {
        errno = LastError();
        return -1;
    }
    return ::_open_osfhandle(reinterpret_cast<std::intptr_t>(file), kBinary);
}

// Others may remove the file while it is open: the handler of an interruption does.
int Create(const std::string& path, DWORD attributes) {
    return DescriptorOf(CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr, CREATE_NEW, attributes,
                                    nullptr));
}

// Why the C library's last write failed: it does not know that a pipe whose reader has gone is one.
int WriteError() {
    const unsigned long error = _doserrno;
    return error == ERROR_NO_DATA || error == ERROR_PIPE_NOT_CONNECTED ? EPIPE : errno;
}

// Asks about a file without reading or writing it: false where there is none, or `ask` says so.
template <class Ask>
bool IsTrueOf(const std::string& path, Ask ask) {
    const HANDLE file = CreateFileA(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    const bool answer = file != INVALID_HANDLE_VALUE && ask(file);
    if (file != INVALID_HANDLE_VALUE) {
        CloseHandle(file);
    }
    return answer;
}

bool Inform(const std::string& path, BY_HANDLE_FILE_INFORMATION& information) {
    return IsTrueOf(path, [&information](HANDLE file) {
        return GetFileInformationByHandle(file, &information) != FALSE;
    });
}

std::string Recoded(const std::string& text, UINT from, UINT to) {
    const auto size = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0');
    wide.resize(static_cast<std::size_t>(MultiByteToWideChar(from, 0, text.data(), size, wide.data(), size)));
    constexpr std::size_t kMostBytes = 4;
    std::string recoded(wide.size() * kMostBytes, '\0');
    recoded.resize(static_cast<std::size_t>(
        WideCharToMultiByte(to, 0, wide.data(), static_cast<int>(wide.size()), recoded.data(),
                            static_cast<int>(recoded.size()), nullptr, nullptr)));
    return recoded;
}

// Under a name that no other file has, which the system finds out.
int CreateFresh(const std::string& folder, DWORD attributes, std::string& path) {
    constexpr unsigned kTries = 1000;
    for (unsigned i = 0; i < kTries; ++i) {
        path = folder + ".zorvan-" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(i);
        const int descriptor = Create(path, attributes);
        if (descriptor >= 0 || errno != EEXIST) {
            return descriptor;
        }
    }
    return -1;
}

}  // namespace

// The file is one that nobody writes, as the library wants it, and that has a path which the library takes.
int OpenForReading(const std::string& path) {
    if (path.size() >= MAX_PATH) {
        errno = ENAMETOOLONG;
        return -1;
    }
    return DescriptorOf(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
}

int OpenWithoutWaiting(const std::string& path) {
    return OpenForReading(path);
}

int OpenExistingForWriting(const std::string& path) {
    return ::_open(path.c_str(), _O_WRONLY | kBinary);
}

int CreateBeside(const std::string& folder, std::string& path) {
    return CreateFresh(folder, FILE_ATTRIBUTE_NORMAL, path);
}

int CreateNameless(const std::string& folder) {
    std::string path;
    return CreateFresh(folder, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, path);
}

// A new file takes its folder's permissions.
int GiveUsualPermissions(int /*descriptor*/) {
    return 0;
}

int WriteAll(int descriptor, const char* bytes, std::size_t count) {
    while (count > 0) {
        constexpr std::size_t kMost = std::size_t{1} << 20U;
        const int written = ::_write(descriptor, bytes, static_cast<unsigned>(std::min(count, kMost)));
        if (written < 0) {
            return WriteError();
        }
        bytes += written;
        count -= static_cast<std::size_t>(written);
    }
    return 0;
}

std::ptrdiff_t ReadAt(int descriptor, char* bytes, std::size_t count, std::uint64_t position) {
    const __int64 before = ::_lseeki64(descriptor, 0, SEEK_CUR);
    if (before < 0 || ::_lseeki64(descriptor, static_cast<__int64>(position), SEEK_SET) < 0) {
        return -1;
    }
    const int got = ::_read(descriptor, bytes, static_cast<unsigned>(count));
    ::_lseeki64(descriptor, before, SEEK_SET);
    return got;
}

int CutAt(int descriptor, std::uint64_t position) {
    const auto offset = static_cast<__int64>(position);
    const int error = ::_chsize_s(descriptor, offset);
    return error == 0 && ::_lseeki64(descriptor, offset, SEEK_SET) != offset ? errno : error;
}

// Otherwise the C library puts line ends of its own into what is written.
void PrepareStandardStreams() {
    for (const int descriptor : {0, 1, 2}) {
        ::_setmode(descriptor, _O_BINARY);
    }
}

// The second byte of a letter can look like a separator. A drive alone stands for its current folder.
std::string FolderOf(const std::string& path) {
    std::size_t end = 0;
    for (std::size_t at = 0; at < path.size(); ++at) {
        const char letter = path[at];
        if (IsDBCSLeadByte(static_cast<BYTE>(letter)) != FALSE) {
            ++at;
        } else if (letter == '/' || letter == '\\' || letter == ':') {
            end = at + 1;
        }
    }
    return end == 0 ? R"(.\)" : path.substr(0, end);
}

std::string WithSeparator(const std::string& folder) {
    return FolderOf(folder) == folder ? folder : folder + R"(\)";
}

std::string TemporaryFolder() {
    std::array<char, MAX_PATH + 1> path{};
    const DWORD length = GetTempPathA(MAX_PATH, path.data());
    return length == 0 || length > MAX_PATH ? R"(.\)" : path.data();
}

std::string ProgramFolder() {
    std::array<char, MAX_PATH + 1> path{};
    return GetModuleFileNameA(nullptr, path.data(), MAX_PATH) == 0 ? R"(.\)" : FolderOf(path.data());
}

bool IsThere(const std::string& path) {
    return GetFileAttributesA(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool IsFolder(const std::string& path) {
    return IsThere(path) && (GetFileAttributesA(path.c_str()) & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsDevice(const std::string& path) {
    return IsTrueOf(path, [](HANDLE file) { return GetFileType(file) != FILE_TYPE_DISK; });
}

bool IsSameFile(const std::string& one, const std::string& other) {
    BY_HANDLE_FILE_INFORMATION first{};
    BY_HANDLE_FILE_INFORMATION second{};
    return Inform(one, first) && Inform(other, second) &&
           first.dwVolumeSerialNumber == second.dwVolumeSerialNumber &&
           first.nFileIndexHigh == second.nFileIndexHigh && first.nFileIndexLow == second.nFileIndexLow;
}

std::string WithLinksResolved(const std::string& path) {
    constexpr std::string_view kPrefix = R"(\\?\)";  // which makes paths of any length possible
    std::array<char, MAX_PATH + kPrefix.size() + 1> resolved{};
    const bool isKnown = IsTrueOf(path, [&resolved](HANDLE file) {
        const DWORD length =
            GetFinalPathNameByHandleA(file, resolved.data(), resolved.size() - 1, FILE_NAME_NORMALIZED);
        return length != 0 && length < resolved.size();
    });
    const std::string drivePath = isKnown ? resolved.data() + kPrefix.size() : path;
    return IsSameFile(drivePath, path) ? drivePath : path;  // a network's, or not in the ANSI code page
}

int Rename(const std::string& from, const std::string& to) {
    return MoveFileExA(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE ? 0 : LastError();
}

std::string PathAsUtf8(const std::string& path) {
    return Recoded(path, CP_ACP, CP_UTF8);
}

std::string TextAsShown(const std::string& utf8) {
    return Recoded(utf8, CP_UTF8, CP_ACP);
}

// The system opens no file by a longer path than the library does.
std::string ShortPath(const std::string& path, int /*descriptor*/, std::size_t /*longest*/) {
    return path;
}

}  // namespace zorvan::cli
