// A small state machine over the lines of the setup sections; binary programs are counted, not read.
#include "cli/font_finder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace zorvan::cli {
namespace {

template <typename Number>
std::optional<Number> ReadNumber(std::string_view text) {
    Number number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isWhole = error == std::errc() && end == text.data() + text.size();
    return isWhole ? std::optional(number) : std::nullopt;
}

// What stands between the two, null when the line is no such line.
std::optional<std::string_view> Between(std::string_view line, std::string_view before,
                                        std::string_view after) {
    if (line.size() < before.size() + after.size() || !line.starts_with(before) || !line.ends_with(after)) {
        return std::nullopt;
    }
    return line.substr(before.size(), line.size() - before.size() - after.size());
}

// The two names of a line "[/first /second selector TZ", null when the line is no such line. The bracket
// is missing behind a list of differences.
std::optional<std::array<std::string_view, 2>> ReadUse(std::string_view line) {
    const auto operands = Between(line, line.starts_with('[') ? "[/" : "/", " TZ");
    if (!operands) {
        return std::nullopt;
    }
    // Names hold no blanks: the library writes "$" for one.
    const std::size_t firstEnd = operands->find(' ');
    const std::size_t secondEnd = operands->rfind(' ');
    if (firstEnd == secondEnd) {
        return std::nullopt;
    }
    const std::string_view second = operands->substr(firstEnd + 1, secondEnd - firstEnd - 1);
    const std::string_view selector = operands->substr(secondEnd + 1);
    if (!second.starts_with('/') || second.find(' ') != std::string_view::npos ||
        !ReadNumber<int>(selector)) {
        return std::nullopt;
    }
    return std::array{operands->substr(0, firstEnd), second.substr(1)};
}

}  // namespace

void FontFinder::Restart(State state) {
    state_ = state;
    lines_ = LineScanner();
    program_.reset();
    isInProgram_ = false;
    announced_.reset();
    compactLeft_ = 0;
}

void FontFinder::BeginPage() {
    Restart(State::kBeforeSetup);
    fontsBeforePage_ = fonts_.size();
}

void FontFinder::DropPage() {
    for (; fonts_.size() > fontsBeforePage_; fonts_.pop_back()) {
        known_.erase(fonts_.back());
    }
    Restart(State::kDone);
}

void FontFinder::Take(std::string_view piece) {
    std::string_view rest = piece;
    while (state_ != State::kDone && !rest.empty()) {
        if (compactLeft_ > 0) {
            const auto passed = static_cast<std::size_t>(std::min<std::uint64_t>(compactLeft_, rest.size()));
            rest.remove_prefix(passed);
            compactLeft_ -= passed;
        } else if (const std::optional<std::string_view> line = lines_.Next(rest)) {
            TakeLine(*line);
        }
    }
}

void FontFinder::TakeLine(std::string_view line) {
    switch (state_) {
        case State::kBeforeSetup:
            if (line == "%%BeginPageSetup" ||
                line == "PDFVars/DocInitAll get exec PDFVars/InitAll get exec") {
                state_ = State::kInSetup;
            }
            return;
        case State::kInSetup:
            return TakeSetupLine(line);
        case State::kAtClip:
            return TakeClip(line);
        case State::kDone:
            return;
    }
}

// Binary resource data can hold a line "%%EndPageSetup" by accident: only the one before the clip counts.
void FontFinder::TakeClip(std::string_view line) {
    if (line.ends_with(" RC")) {
        state_ = State::kDone;
        return;
    }
    state_ = State::kInSetup;
    TakeSetupLine(line);
}

void FontFinder::TakeSetupLine(std::string_view line) {
    if (BeginsCompactData(line)) {
        return;
    }
    if (isInProgram_) {
        return TakeProgramLine(line);
    }
    constexpr std::string_view kTitle = "%%BeginResource: font ";
    if (line.starts_with(kTitle)) {
        BeginProgram(line.substr(kTitle.size()));
    } else if (line == "%%EndPageSetup") {
        state_ = State::kAtClip;
    } else if (line == "%%EndSetup") {
        state_ = State::kDone;
    } else {
        TakeUse(line);
    }
}

// A program's own lines mean nothing, whatever they look like.
void FontFinder::TakeProgramLine(std::string_view line) {
    if (line == "%%EndResource") {
        isInProgram_ = false;
    } else if (line == "/FontType 3 def") {
        program_->kind = FontKind::kType3;
    }
}

// The names of all kinds but TrueType have their slash here. A TrueType font's block has no end; it is made
// of lines that the library composes, so that none of them can look like a use.
void FontFinder::BeginProgram(std::string_view title) {
    isInProgram_ = title.starts_with('/');
    program_ = isInProgram_ ? Program{std::string(title.substr(1)), FontKind::kType1}
                            : Program{std::string(title), FontKind::kTrueType};
}

// True for the line before a compact program's bytes, which follows the one that announces their number.
bool FontFinder::BeginsCompactData(std::string_view line) {
    const auto announced = std::exchange(announced_, std::nullopt);
    if (const auto count = Between(line, "%%BeingData:", " Binary Bytes")) {
        announced_ = ReadNumber<std::uint64_t>(*count);
    }
    const auto count = Between(line, "/TestCFF ", " StartData");
    if (!count || !announced || ReadNumber<std::uint64_t>(*count) != announced) {
        return false;
    }
    compactLeft_ = *announced;
    if (isInProgram_) {
        program_->kind = FontKind::kCompact;
    }
    return true;
}

void FontFinder::TakeUse(std::string_view line) {
    const auto names = ReadUse(line);
    if (!names) {
        return;
    }
    const auto& [first, second] = *names;
    if (!program_) {
        Add({"/" + std::string(first), std::string(second), FontKind::kOfDevice});
    } else {
        // A compact font is used under the name that its program declares; the PDF's stands in the title.
        const std::string_view resource = program_->kind == FontKind::kType3 ? second : first;
        Add({"/" + std::string(resource), program_->name, program_->kind});
    }
    program_.reset();
}

void FontFinder::Add(FontInfo font) {
    if (known_.insert(font).second) {
        fonts_.push_back(std::move(font));
    }
}

}  // namespace zorvan::cli
