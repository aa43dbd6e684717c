// Breaks the text of the ASCII encoders into lines.
#include "filter/line_sink.h"

#include <algorithm>
#include <cstdint>

namespace zorvan::filter {

void LineSink::Put(std::string_view text) {
    // Inside a line, the usual case, nothing needs looking at.
    if (column_ > 0 && column_ + text.size() <= kLineLength) {
        column_ += text.size();
        for (const char character : text) {
            sink_.Put(static_cast<std::uint8_t>(character));
        }
        return;
    }
    std::for_each(text.begin(), text.end(), [this](char character) { PutCharacter(character); });
}

void LineSink::PutWhole(std::string_view text) {
    if (column_ + text.size() > kLineLength) {
        column_ = kLineLength;
    }
    Put(text);
}

void LineSink::PutCharacter(char character) {
    if (column_ == kLineLength) {
        sink_.Put('\n');
        column_ = 0;
    }
    if (column_ == 0 && character == '%') {
        sink_.Put(' ');
        ++column_;
    }
    sink_.Put(static_cast<std::uint8_t>(character));
    ++column_;
}

}  // namespace zorvan::filter
