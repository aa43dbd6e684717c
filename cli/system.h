// What the program asks of the system beside the C++ library: file descriptors and paths.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace zorvan::cli {

// What opens gives a descriptor, or -1 and errno. Nothing that is opened reaches a process that is started
// later.
int OpenForReading(const std::string& path);
int OpenWithoutWaiting(const std::string& path);  // for reading; of a FIFO the other end need not be open
int OpenExistingForWriting(const std::string& path);
// Folders are told with the separator at their end, so that a name put behind one is in it. Creates a file of
// its own in a folder, for the owner alone; `path` becomes its path.
int CreateBeside(const std::string& folder, std::string& path);
// Creates a file that is gone once it is closed.
int CreateNameless(const std::string& folder);
// Gives a file that was created for the owner alone the permissions of any new file. The result is 0 or an
// errno.
int GiveUsualPermissions(int descriptor);

// Writes all `count` bytes, waiting where the descriptor is a non-blocking one. The result is 0 or an errno.
int WriteAll(int descriptor, const char* bytes, std::size_t count);
// Reads at a place of the file: the number of bytes, 0 at its end, or -1 and errno.
std::ptrdiff_t ReadAt(int descriptor, char* bytes, std::size_t count, std::uint64_t position);
// Cuts the file at this place and goes on writing there. The result is 0 or an errno.
int CutAt(int descriptor, std::uint64_t position);

// Makes standard input and output carry bytes as they are, and no descriptor of ours get the number of a
// closed one.
void PrepareStandardStreams();

// Paths are bytes as the system's own calls take them, whatever the C++ library thinks of their letters.
std::string FolderOf(const std::string& path);
std::string TemporaryFolder();
std::string ProgramFolder();  // where the running program stands
std::string WithSeparator(const std::string& folder);
bool IsThere(const std::string& path);
bool IsFolder(const std::string& path);
bool IsDevice(const std::string& path);                             // or a pipe: there, but no file
bool IsSameFile(const std::string& one, const std::string& other);  // whether both names lead to one
std::string WithLinksResolved(const std::string& path);             // of a file that is there
// Gives a file another name, which may be an earlier file's. The result is 0 or an errno.
int Rename(const std::string& from, const std::string& to);

// A path as UTF-8, and a text in UTF-8 as messages show it beside paths: other than they are where paths are
// in a code page.
std::string PathAsUtf8(const std::string& path);
std::string TextAsShown(const std::string& utf8);

// A path by which the library, which takes `longest` bytes, opens the same file as `descriptor`: `path`
// itself where it is short enough, or a shorter one that is valid as long as the descriptor, where the system
// has such.
std::string ShortPath(const std::string& path, int descriptor, std::size_t longest);

}  // namespace zorvan::cli
