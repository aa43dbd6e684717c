// The little graphics state that the interpreter keeps: which colour spaces are current, so that operands can
// be counted.
#pragma once

#include <cstdint>
#include <new>
#include <vector>

#include "platform/limits.h"

namespace zorvan {

/// Colour space families by their codes.
namespace family {
constexpr std::uint32_t kGray = 1;
constexpr std::uint32_t kRgb = 2;
constexpr std::uint32_t kCmyk = 4;
constexpr std::uint32_t kCalGray = 16;
constexpr std::uint32_t kCalRgb = 32;
constexpr std::uint32_t kLab = 64;
constexpr std::uint32_t kIccBased = 128;
constexpr std::uint32_t kIndexed = 256;
constexpr std::uint32_t kPattern = 512;
constexpr std::uint32_t kSeparation = 1024;
constexpr std::uint32_t kDeviceN = 2048;
}  // namespace family

struct SpaceState {
    std::uint32_t family = family::kGray;
    std::uint32_t components = 1;
};

struct ColorState {
    SpaceState fill;
    SpaceState stroke;
};

class ColorStateStack {
public:
    ColorStateStack() { states_.reserve(kFirstCapacity); }

    ColorState& Top() { return states_.back(); }
    /// Throws std::bad_alloc beyond the limit.
    void Push() {
        if (states_.size() >= limits::kSavedColorStates) {
            throw std::bad_alloc();
        }
        states_.push_back(ColorState(states_.back()));
    }
    /// Pops one record, but never the last one.
    void Pop() {
        if (states_.size() > 1) {
            states_.pop_back();
        }
    }

private:
    static constexpr std::size_t kFirstCapacity = 4;

    std::vector<ColorState> states_{1};
};

}  // namespace zorvan
