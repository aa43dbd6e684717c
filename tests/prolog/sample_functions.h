// Functions of PDF made by chance, each with its values worked out here.
#pragma once

#include <cstddef>
#include <functional>
#include <random>
#include <string>
#include <vector>

namespace zorvan::test {

using Values = std::vector<double>;

/// A function: its dictionary as PostScript text, and what it is to give.
struct SampleFunction {
    std::string text;
    std::size_t inputs = 1;
    std::size_t outputs = 1;
    Values domain;
    Values bounds;  ///< inputs at which it changes from one part to another
    std::function<Values(const Values&)> at;
};

/// Makes functions, the same ones for the same seed.
class FunctionMaker {
public:
    explicit FunctionMaker(unsigned seed) : random_(seed) {}

    SampleFunction Exponential(std::size_t outputs);
    SampleFunction Sampled(std::size_t inputs, std::size_t outputs, int bits);
    /// Parts of any type, down to this depth.
    SampleFunction Stitched(std::size_t outputs, int depth);
    SampleFunction Any();

    /// Where to try a function: the ends of its domain, places beyond them, its bounds, and others.
    std::vector<Values> Places(const SampleFunction& function);

    std::size_t Number(std::size_t low, std::size_t high);
    /// A multiple of 1/64.
    double Real(double low, double high);

private:
    /// Two numbers, now and then the same one twice.
    Values Pair(double low, double high);
    Values Pairs(std::size_t count, double low, double high);
    SampleFunction Part(std::size_t outputs, int depth);

    std::mt19937 random_;
};

/// "[1 0.5 ]"
std::string ArrayText(const Values& values);

}  // namespace zorvan::test
