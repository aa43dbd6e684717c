// Keeps the beginning of an unfinished line from piece to piece; whole lines are not copied.
#include "cli/line_scanner.h"

#include <algorithm>

namespace zorvan::cli {

std::optional<std::string_view> LineScanner::Next(std::string_view& rest) {
    if (lineIsWhole_) {
        line_.clear();
        lineIsWhole_ = false;
    }
    const std::size_t end = rest.find('\n');
    if (end == std::string_view::npos) {
        Keep(rest);
        rest = {};
        return std::nullopt;
    }
    const std::string_view part = rest.substr(0, end);
    rest.remove_prefix(end + 1);
    if (line_.empty()) {
        return part.substr(0, kMaxLine);
    }
    Keep(part);
    lineIsWhole_ = true;
    return line_;
}

void LineScanner::Keep(std::string_view part) {
    line_.append(part.substr(0, std::min(part.size(), kMaxLine - line_.size())));
}

}  // namespace zorvan::cli
