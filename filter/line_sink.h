// Text output of the two ASCII encoders: characters in lines that DSC readers can bear.
#ifndef FILTER_LINE_SINK_H
#define FILTER_LINE_SINK_H

#include <cstddef>
#include <string_view>

#include "filter/byte_sink.h"

namespace zorvan::filter {

// Lines end in LF and hold at most 72 characters: well below DSC's 255, whatever stands before the first.
// '%' is a digit of ASCII85, so a line could begin with "%%" or "%!" and be taken for a comment. Such a
// line begins with a space instead, which no decoder minds.
class LineSink {
public:
    explicit LineSink(ByteSink& sink) : sink_(sink) {}

    // Lines break anywhere in `text`.
    void Put(std::string_view text);
    // The same, but all of `text`, which is shorter than a line, stands in one line.
    void PutWhole(std::string_view text);
    // The next character stands at the beginning of a piece of its own.
    void Restart() { column_ = 0; }

private:
    static constexpr std::size_t kLineLength = 72;

    void PutCharacter(char character);

    ByteSink& sink_;
    std::size_t column_ = 0;
};

}  // namespace zorvan::filter

#endif
