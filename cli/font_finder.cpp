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

bool IsKeyedByNumber(FontKind kind) {
    return kind == FontKind::kCIDCompact || kind == FontKind::kCIDTrueType;
}

// The two names of a line "/resource (font-T0) .. TZzero", null when the line is no such line.
std::optional<std::array<std::string_view, 2>> ReadCompositeUse(std::string_view line) {
    constexpr std::string_view kSuffix = "-T0";
    const auto operands = Between(line, "/", " TZzero");
    if (!operands) {
        return std::nullopt;
    }
    // Neither name holds a blank or a bracket.
    const std::size_t resourceEnd = operands->find(" (");
    const std::size_t fontEnd = operands->find(") ");
    if (resourceEnd == std::string_view::npos || fontEnd == std::string_view::npos || fontEnd < resourceEnd) {
        return std::nullopt;
    }
    const std::string_view font = operands->substr(resourceEnd + 2, fontEnd - resourceEnd - 2);
    if (!font.ends_with(kSuffix)) {
        return std::nullopt;
    }
    return std::array{operands->substr(0, resourceEnd), font.substr(0, font.size() - kSuffix.size())};
}

}  // namespace

void FontFinder::Restart(State state) {
    state_ = state;
    lines_ = LineScanner();
    program_.reset();
    block_ = Block::kNone;
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
    if (block_ != Block::kCMap && BeginsCompactData(line)) {
        return;
    }
    if (block_ != Block::kNone) {
        return TakeBlockLine(line);
    }
    if (BeginsBlock(line)) {
        return;
    }
    if (line == "%%EndPageSetup") {
        state_ = State::kAtClip;
    } else if (line == "%%EndSetup") {
        state_ = State::kDone;
    } else if (!TakeCompositeUse(line)) {
        TakeUse(line);
    }
}

// The lines of a program or of a CMap mean nothing, whatever they look like.
void FontFinder::TakeBlockLine(std::string_view line) {
    if (line == "%%EndResource") {
        block_ = Block::kNone;
    } else if (block_ == Block::kFont && line == "/FontType 3 def") {
        program_->kind = FontKind::kType3;
    }
}

bool FontFinder::BeginsBlock(std::string_view line) {
    constexpr std::string_view kFont = "%%BeginResource: font ";
    constexpr std::string_view kCIDFont = "%%BeginResource: CIDFont ";
    if (line.starts_with(kFont)) {
        BeginProgram(line.substr(kFont.size()));
    } else if (line.starts_with(kCIDFont)) {
        program_ = Program{std::string(line.substr(kCIDFont.size())), FontKind::kCIDTrueType};
    } else if (line.starts_with("%%BeginResource: CMap ")) {
        block_ = Block::kCMap;
    } else {
        return false;
    }
    return true;
}

// The names of all kinds but TrueType have their slash here. A TrueType font's block has no end; it is made
// of lines that the library composes, so that none of them can look like a use.
void FontFinder::BeginProgram(std::string_view title) {
    if (title.starts_with('/')) {
        block_ = Block::kFont;
        program_ = Program{std::string(title.substr(1)), FontKind::kType1};
    } else {
        program_ = Program{std::string(title), FontKind::kTrueType};
    }
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
    if (block_ == Block::kFont) {
        program_->kind = FontKind::kCompact;
    } else {
        program_ = Program{"", FontKind::kCIDCompact};  // its name stands with its use
    }
    return true;
}

bool FontFinder::TakeCompositeUse(std::string_view line) {
    const auto names = ReadCompositeUse(line);
    if (!names) {
        return false;
    }
    const auto& [resource, font] = *names;
    const bool isEmbedded = program_ && IsKeyedByNumber(program_->kind);
    Add({"/" + std::string(resource), std::string(font), isEmbedded ? program_->kind : FontKind::kOfDevice});
    program_.reset();
    return true;
}

void FontFinder::TakeUse(std::string_view line) {
    const auto names = ReadUse(line);
    if (!names) {
        return;
    }
    const auto& [first, second] = *names;
    if (!program_ || IsKeyedByNumber(program_->kind)) {
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
