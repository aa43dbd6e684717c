// The procedures of sampled functions under a real interpreter, next to the formula.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "paint/paint_page.h"
#include "prolog/prolog_job.h"

namespace zorvan::test {
namespace {

using Values = std::vector<double>;

constexpr double kClose = 1.0 / 4096;
constexpr unsigned kFirst = 10;  // the object number of the first function

/// A number with at most three decimals, which both sides read alike.
std::string Text(double number) {
    std::ostringstream text;
    text << number;
    return text.str();
}

std::string Text(const Values& numbers) {
    std::string text;
    for (const double number : numbers) {
        text += Text(number) + " ";
    }
    return text;
}

/// From one interval to another.
double Mapped(double value, double low, double high, double newLow, double newHigh) {
    return newLow + (value - low) * (newHigh - newLow) / (high - low);
}

/// A function of samples, and what the formula of PDF says of it.
struct Sampled {
    Values domain, range, encode, decode;  // the last two may be empty
    std::vector<std::uint32_t> size;
    unsigned bits = 8;
    std::vector<std::uint32_t> samples;  // all outputs of a place together, the first input varying fastest

    [[nodiscard]] std::size_t Inputs() const { return domain.size() / 2; }
    [[nodiscard]] std::size_t Outputs() const { return range.size() / 2; }
    [[nodiscard]] std::uint32_t Largest() const {
        return static_cast<std::uint32_t>((std::uint64_t{1} << bits) - 1);
    }

    [[nodiscard]] std::string Entries() const {
        std::string text = "/FunctionType 0 /Domain [" + Text(domain) + "] /Range [" + Text(range) +
                           "] /BitsPerSample " + std::to_string(bits) + " /Size [";
        for (const std::uint32_t each : size) {
            text += std::to_string(each) + " ";
        }
        text += "]";
        text += encode.empty() ? "" : " /Encode [" + Text(encode) + "]";
        text += decode.empty() ? "" : " /Decode [" + Text(decode) + "]";
        return text;
    }

    /// The samples, the high bit first, without gaps.
    [[nodiscard]] std::string Bytes() const {
        std::string bytes((samples.size() * bits + 7) / 8, '\0');
        std::size_t at = 0;
        for (const std::uint32_t sample : samples) {
            for (unsigned bit = bits; bit-- > 0; ++at) {
                const auto set = static_cast<unsigned>((sample >> bit & 1U) << (7 - at % 8));
                bytes[at / 8] = static_cast<char>(static_cast<unsigned char>(bytes[at / 8]) | set);
            }
        }
        return bytes;
    }

    /// Where an input lies in the table.
    [[nodiscard]] double Place(std::size_t input, double value) const {
        const double low = domain[2 * input];
        const double high = domain[2 * input + 1];
        const double last = size[input] - 1;
        const double from = encode.empty() ? 0 : encode[2 * input];
        const double to = encode.empty() ? last : encode[2 * input + 1];
        return std::clamp(Mapped(std::clamp(value, low, high), low, high, from, to), 0.0, last);
    }

    /// The sum over all corners of the cell around the place.
    [[nodiscard]] double Interpolated(const Values& places, std::size_t output) const {
        double sum = 0;
        for (std::size_t corner = 0; corner < std::size_t{1} << places.size(); ++corner) {
            double share = 1;
            std::size_t index = 0;
            for (std::size_t input = places.size(); input-- > 0;) {
                const double below = std::floor(places[input]);
                const bool up = (corner >> input & 1U) != 0;
                share *= up ? places[input] - below : 1 - (places[input] - below);
                const auto step = static_cast<std::size_t>(below) + (up ? 1 : 0);
                index = index * size[input] + std::min<std::size_t>(step, size[input] - 1);
            }
            sum += share * samples[index * Outputs() + output];
        }
        return sum;
    }

    [[nodiscard]] Values At(const Values& values) const {
        Values places;
        for (std::size_t input = 0; input < Inputs(); ++input) {
            places.push_back(Place(input, values[input]));
        }
        Values results;
        for (std::size_t output = 0; output < Outputs(); ++output) {
            const Values& to = decode.empty() ? range : decode;
            const double sample = Interpolated(places, output);
            const double result = Mapped(sample, 0, Largest(), to[2 * output], to[2 * output + 1]);
            results.push_back(std::clamp(result, range[2 * output], range[2 * output + 1]));
        }
        return results;
    }
};

/// Makes functions by chance, the same ones each time.
class Maker {
public:
    Sampled Make(std::size_t inputs, unsigned bits) {
        Sampled function;
        function.bits = bits;
        std::size_t count = 1;
        for (std::size_t i = 0; i < inputs; ++i) {
            function.size.push_back(Number(1, inputs < 3 ? 9 : 4));
            count *= function.size.back();
            Append(function.domain, Pick({{0, 1}, {-1, 1}, {0, 0.5}, {2, 10}, {-3.25, -1.5}}));
        }
        const std::size_t outputs = Number(1, 4);
        for (std::size_t j = 0; j < outputs; ++j) {
            Append(function.range, Pick({{0, 1}, {-1, 1}, {0.25, 0.75}, {0, 2}, {-0.5, -0.25}}));
        }
        AddEncode(function);
        AddDecode(function);
        for (std::size_t i = 0; i < count * outputs; ++i) {
            function.samples.push_back(Sample(function.Largest()));
        }
        return function;
    }

    /// Both ends of the domain, beyond them, and places in between.
    std::vector<Values> Places(const Sampled& function) {
        std::vector<Values> places(8);
        for (std::size_t place = 0; place < places.size(); ++place) {
            for (std::size_t i = 0; i < function.Inputs(); ++i) {
                const double low = function.domain[2 * i];
                const double high = function.domain[2 * i + 1];
                const double share[] = {0, 1, -0.5, 1.5};
                const double at = place < 4 ? share[place] : Number(0, 1000) / 1000.0;
                places[place].push_back(std::round((low + at * (high - low)) * 1000) / 1000);
            }
        }
        return places;
    }

private:
    std::uint32_t Number(std::uint32_t low, std::uint32_t high) {
        return low + static_cast<std::uint32_t>(random_() % (std::uint64_t{high} - low + 1));
    }
    Values Pick(const std::vector<Values>& values) {
        return values[Number(0, static_cast<std::uint32_t>(values.size() - 1))];
    }
    static void Append(Values& values, const Values& more) {
        values.insert(values.end(), more.begin(), more.end());
    }

    /// None, the usual one, backwards, a part, from between samples, and beyond both ends.
    void AddEncode(Sampled& function) {
        const std::uint32_t kind = Number(0, 5);
        for (std::size_t i = 0; kind > 0 && i < function.Inputs(); ++i) {
            const double last = function.size[i] - 1;
            const std::vector<Values> kinds = {
                {0, last}, {last, 0}, {0, last / 2}, {0.25, std::max(0.25, last - 0.5)}, {-1, last + 2}};
            Append(function.encode, kinds[kind - 1]);
        }
    }

    /// None, that of the range, backwards, and wider than the range on both sides.
    void AddDecode(Sampled& function) {
        const std::uint32_t kind = Number(0, 3);
        for (std::size_t j = 0; kind > 0 && j < function.Outputs(); ++j) {
            const double low = function.range[2 * j];
            const double high = function.range[2 * j + 1];
            const std::vector<Values> kinds = {{low, high}, {high, low}, {low - 0.5, high + 1}};
            Append(function.decode, kinds[kind - 1]);
        }
    }

    /// Often the largest and the smallest.
    std::uint32_t Sample(std::uint32_t largest) {
        const std::uint32_t kind = Number(0, 7);
        return kind == 0 ? 0 : kind == 1 ? largest : Number(0, largest);
    }

    std::mt19937 random_{20240607};
};

class SampledProcedure : public PaintTest {
protected:
    /// Defines the functions, as a document's setup does.
    std::string Definitions(const std::vector<Sampled>& functions) {
        PdfBuilder pdf = File();
        for (std::size_t i = 0; i < functions.size(); ++i) {
            pdf.Stream(NumberOf(i), functions[i].Bytes(), functions[i].Entries());
        }
        Prepare(std::move(pdf));
        for (std::size_t i = 0; i < functions.size(); ++i) {
            EXPECT_EQ(RegisterFunction(kProcedure, NumberOf(i)), Status::kOk);
        }
        EXPECT_EQ(CurrentRegistry().EmitGlobal(), Status::kOk);
        return Pieces::Joined();
    }

    static unsigned NumberOf(std::size_t index) { return kFirst + static_cast<unsigned>(index); }

    /// What the interpreter finds, place by place.
    Values Evaluated(const std::vector<Sampled>& functions, const std::vector<std::vector<Values>>& places) {
        std::string content;
        for (std::size_t i = 0; i < functions.size(); ++i) {
            content += "/Each /N" + std::to_string(NumberOf(i)) + " /Function findRes def\n";
            for (const Values& place : places[i]) {
                content += "[ " + Text(place) + "Each ] {=} forall\n";
            }
        }
        const Outcome outcome =
            PrologJob().Setup(Definitions(functions)).Page(content + "count = countdictstack =").Run();
        EXPECT_EQ(outcome.status, 0) << outcome.text;
        Values values;
        std::istringstream text(outcome.text);
        for (double value = 0; text >> value;) {
            values.push_back(value);
        }
        return values;
    }

    void Compare(const std::vector<Sampled>& functions) {
        Maker maker;
        std::vector<std::vector<Values>> places;
        Values expected;
        std::vector<std::string> sources;
        for (const Sampled& function : functions) {
            places.push_back(maker.Places(function));
            for (const Values& place : places.back()) {
                for (const double value : function.At(place)) {
                    expected.push_back(value);
                    sources.push_back(function.Entries() + " at " + Text(place));
                }
            }
        }
        const Values values = Evaluated(functions, places);
        // Behind the values: nothing is left on the operand stack, and a page has eight dictionaries.
        ASSERT_EQ(values.size(), expected.size() + 2);
        for (std::size_t i = 0; i < expected.size(); ++i) {
            ASSERT_NEAR(values[i], expected[i], kClose) << sources[i];
        }
        EXPECT_EQ(values[expected.size()], 0);
        EXPECT_EQ(values.back(), 8);
    }
};

TEST_F(SampledProcedure, AgreesWithTheFormulaForEveryNumberOfInputsAndBits) {
    Maker maker;
    std::vector<Sampled> functions;
    for (const unsigned bits : {1U, 2U, 4U, 8U, 12U, 16U, 24U, 32U}) {
        for (std::size_t inputs = 1; inputs <= 4; ++inputs) {
            for (int count = 0; count < 8; ++count) {
                functions.push_back(maker.Make(inputs, bits));
            }
        }
    }
    Compare(functions);
}

TEST_F(SampledProcedure, AgreesWithTheFormulaForAKnownRamp) {
    Sampled ramp;
    ramp.domain = {0, 1};
    ramp.range = {0, 1};
    ramp.size = {3};
    ramp.samples = {0, 255, 51};
    EXPECT_THAT(ramp.At({0.25}), ::testing::ElementsAre(0.5));
    EXPECT_THAT(ramp.At({0.75}), ::testing::ElementsAre(::testing::DoubleNear(0.6, 1e-9)));
    EXPECT_THAT(Evaluated({ramp}, {{{0}, {0.25}, {0.5}, {0.75}, {1}}}),
                ::testing::Pointwise(::testing::DoubleNear(kClose), Values{0, 0.5, 1, 0.6, 0.2, 0, 8}));
}

// The table of a whole string, read at its very end.
TEST_F(SampledProcedure, ReadsTheLastSampleOfTheLongestTable) {
    std::vector<Sampled> functions;
    for (const unsigned bits : {1U, 8U, 12U, 32U}) {
        Sampled function;
        function.domain = {0, 1};
        function.range = {0, 1};
        function.bits = bits;
        function.size = {65535U * 8U / bits};
        function.samples.assign(function.size[0], 0);
        function.samples.back() = function.Largest();
        functions.push_back(function);
    }
    Compare(functions);
}

TEST_F(SampledProcedure, ConvertsFourInksIntoThree) {
    Sampled function;
    function.domain = {0, 1, 0, 1, 0, 1, 0, 1};
    function.range = {0, 1, 0, 1, 0, 1};
    function.size = {3, 4, 2, 5};
    for (std::uint32_t i = 0; i < 3 * 4 * 2 * 5 * 3; ++i) {
        function.samples.push_back(i * 83 % 256);
    }
    Compare({function});
}

TEST_F(SampledProcedure, StopsAtTheFirstPieceThatTheHostRefuses) {
    Maker maker;
    const Sampled function = maker.Make(2, 8);
    std::uint64_t refused = 0;
    for (Status status{7}; ToNumber(status) == 7; ++refused) {
        Prepare(File().Stream(kFirst, function.Bytes(), function.Entries()));
        EXPECT_EQ(RegisterFunction(kProcedure), Status::kOk);
        Pieces::Refuse(1 + refused, 7, false);
        status = CurrentRegistry().EmitGlobal();
        EXPECT_EQ(Pieces::CallsAfterRefusal(), 0U) << refused;
        EXPECT_EQ(Error().Code(), Status::kOk) << refused;
    }
    EXPECT_GT(refused, 3U);
}

// An interval without length, or backwards, has a value all the same.
TEST_F(SampledProcedure, SurvivesASenselessDomain) {
    std::vector<Sampled> functions;
    for (const Values& domain : {Values{0.5, 0.5}, Values{1, 0}, Values{0, 0.000001}}) {
        Sampled function;
        function.domain = domain;
        function.range = {0, 1};
        function.size = {2};
        function.samples = {0, 255};
        functions.push_back(function);
    }
    const std::vector<std::vector<Values>> places(functions.size(), {{-5}, {0.5}, {5}});
    EXPECT_EQ(Evaluated(functions, places).size(), 3 * functions.size() + 2);
}

}  // namespace
}  // namespace zorvan::test
