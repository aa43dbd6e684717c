// Cuts a stream that arrives in pieces of any size into its lines.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zorvan::cli {

class LineScanner {
public:
    // Takes bytes off the front of `rest`, up to and including the next line feed, and gives the line without
    // it; null when `rest` is used up before a line ends. The text is valid until the next call and as long
    // as the bytes of `rest`. Lines, which may be binary data, are cut to kMaxLine bytes.
    std::optional<std::string_view> Next(std::string_view& rest);

    // Longer than any line that is looked for.
    static constexpr std::size_t kMaxLine = 512;

private:
    void Keep(std::string_view part);

    std::string line_;
    bool lineIsWhole_ = false;
};

}  // namespace zorvan::cli
