// A small state machine over the lines of the page setup.
#include "cli/page_box_finder.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace zorvan::cli {
namespace {

// The numbers of a line "<before>n n n<after>"; null when the line is no such line.
template <std::size_t N>
std::optional<std::array<double, N>> ReadNumbers(std::string_view line, std::string_view before,
                                                 std::string_view after) {
    if (!line.starts_with(before)) {
        return std::nullopt;
    }
    line.remove_prefix(before.size());
    std::array<double, N> numbers{};
    for (std::size_t i = 0; i < N; ++i) {
        if (i > 0) {
            if (!line.starts_with(' ')) {
                return std::nullopt;
            }
            line.remove_prefix(1);
        }
        const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), numbers[i]);
        if (error != std::errc()) {
            return std::nullopt;
        }
        line.remove_prefix(static_cast<std::size_t>(end - line.data()));
    }
    return line == after ? std::optional(numbers) : std::nullopt;
}

}  // namespace

void PageBoxFinder::Take(std::string_view piece) {
    std::string_view rest = piece;
    while (!Found() && !rest.empty()) {
        const std::size_t before = rest.size();
        const std::optional<std::string_view> line = lines_.Next(rest);
        offset_ += before - rest.size();
        if (line) {
            TakeLine(*line);
        }
    }
}

void PageBoxFinder::TakeLine(std::string_view line) {
    switch (state_) {
        case State::kBeforeSetup:
            if (line == "%%BeginPageSetup") {
                setupOffset_ = offset_;
                state_ = State::kInSetup;
            }
            return;
        case State::kInSetup:
            if (line == "PDFVars begin PDF begin PDFVars/InitAll get exec") {
                state_ = State::kAtRotation;
            }
            return;
        case State::kAtRotation:
            return TakeRotation(line);
        case State::kInResources:
            return LookForSetupEnd(line);
        case State::kAtClip:
            return TakeClip(line);
        case State::kFound:
            return;
    }
}

void PageBoxFinder::TakeRotation(std::string_view line) {
    state_ = State::kInResources;
    if (const auto matrix = ReadNumbers<6>(line, "[", "] concat")) {
        matrix_ = *matrix;
        return;
    }
    LookForSetupEnd(line);
}

void PageBoxFinder::LookForSetupEnd(std::string_view line) {
    if (line == "%%EndPageSetup") {
        state_ = State::kAtClip;
    }
}

// Binary resource data can hold a line "%%EndPageSetup" by accident: only the one before the clip counts.
void PageBoxFinder::TakeClip(std::string_view line) {
    if (const auto clip = ReadNumbers<4>(line, "", " RC")) {
        clip_ = *clip;
        state_ = State::kFound;
        return;
    }
    state_ = State::kInResources;
    LookForSetupEnd(line);
}

std::optional<Box> PageBoxFinder::VisibleBox() const {
    if (!Found()) {
        return std::nullopt;
    }
    const auto [a, b, c, d, e, f] = matrix_;
    const auto [left, bottom, width, height] = clip_;
    const double right = left + width;
    const double top = bottom + height;
    const double xs[] = {a * left + c * bottom + e, a * right + c * top + e};
    const double ys[] = {b * left + d * bottom + f, b * right + d * top + f};
    if (!std::isfinite(xs[0]) || !std::isfinite(xs[1]) || !std::isfinite(ys[0]) || !std::isfinite(ys[1])) {
        return std::nullopt;
    }
    // Boxes are written as the PDF gives them, corners in any order.
    return Box{std::min(xs[0], xs[1]), std::min(ys[0], ys[1]), std::max(xs[0], xs[1]),
               std::max(ys[0], ys[1])};
}

}  // namespace zorvan::cli
