// Functions of PDF by the formulas of the PDF Reference, in double precision.
#include "prolog/sample_functions.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>

namespace zorvan::test {
namespace {

double Clip(double value, const Values& pairs, std::size_t index) {
    return std::min(std::max(value, pairs[2 * index]), pairs[2 * index + 1]);
}

double Line(double x, double low, double high, double from, double to) {
    return low == high ? from : from + (x - low) * (to - from) / (high - low);
}

double LineOf(double x, const Values& domain, const Values& encode, std::size_t index) {
    return Line(x, domain[2 * index], domain[2 * index + 1], encode[2 * index], encode[2 * index + 1]);
}

Values ClipAll(Values values, const Values& range) {
    for (std::size_t index = 0; index < values.size() && !range.empty(); ++index) {
        values[index] = Clip(values[index], range, index);
    }
    return values;
}

/// The samples of a function, packed as they are stored.
struct Samples {
    std::vector<std::size_t> size;
    std::size_t outputs = 0;
    int bits = 8;
    std::vector<std::uint32_t> values;

    [[nodiscard]] std::string Packed() const {
        std::string bytes;
        std::uint64_t held = 0;
        int count = 0;
        for (const std::uint32_t value : values) {
            held = (held << static_cast<unsigned>(bits)) | value;
            for (count += bits; count >= 8; count -= 8) {
                bytes += static_cast<char>(held >> static_cast<unsigned>(count - 8));
            }
        }
        return count == 0 ? bytes : bytes + static_cast<char>(held << static_cast<unsigned>(8 - count));
    }

    /// The value at a place between samples, by interpolation along one input after the other.
    [[nodiscard]] double At(const Values& place, std::size_t output, std::size_t input, std::size_t index,
                            std::size_t stride) const {
        if (input == size.size()) {
            return values[index * outputs + output];
        }
        const double last = static_cast<double>(size[input]) - 1;
        const double e = std::min(std::max(place[input], 0.0), last);
        const double low = std::floor(e);
        const auto step = [&](double where) {
            return At(place, output, input + 1, index + static_cast<std::size_t>(where) * stride,
                      stride * size[input]);
        };
        return low == e ? step(low) : step(low) * (low + 1 - e) + step(low + 1) * (e - low);
    }
};

std::string Hex(const std::string& bytes) {
    constexpr std::string_view kDigits = "0123456789abcdef";
    std::string text;
    for (const char each : bytes) {
        const auto byte = static_cast<unsigned char>(each);
        text += {kDigits[byte >> 4U], kDigits[byte & 15U]};
        text += text.size() % 200 == 0 ? "\n" : "";
    }
    return "<" + text + ">";
}

/// The data as one string, or as a document holds it when it is too long for one.
std::string DataText(const std::string& bytes, std::size_t longest) {
    if (bytes.size() < longest) {
        return Hex(bytes) + "\n";
    }
    std::string text = "{{";
    for (std::size_t at = 0; at < bytes.size(); at += longest) {
        text += Hex(bytes.substr(at, longest));
    }
    return text + "\n} _i get /_i _i 1 add 81 mod def}\n/_i 0\nID \n";
}

}  // namespace

std::string ArrayText(const Values& values) {
    std::ostringstream text;
    text.precision(9);
    text << "[";
    for (const double value : values) {
        text << value << ' ';
    }
    text << "]";
    return text.str();
}

std::size_t FunctionMaker::Number(std::size_t low, std::size_t high) {
    return low + random_() % (high - low + 1);
}

double FunctionMaker::Real(double low, double high) {
    return low + static_cast<double>(Number(0, static_cast<std::size_t>((high - low) * 64))) / 64;
}

Values FunctionMaker::Pair(double low, double high) {
    const double first = Real(low, high);
    const double second = Number(0, 7) == 0 ? first : Real(low, high);
    return {std::min(first, second), std::max(first, second)};
}

Values FunctionMaker::Pairs(std::size_t count, double low, double high) {
    Values pairs;
    while (pairs.size() < 2 * count) {
        const Values pair = Pair(low, high);
        pairs.insert(pairs.end(), pair.begin(), pair.end());
    }
    return pairs;
}

SampleFunction FunctionMaker::Exponential(std::size_t outputs) {
    constexpr std::array kExponents{0.0, 0.5, 1.0, 1.0, 1.5, 2.0, 3.0, 8.0};
    const double exponent = kExponents.at(Number(0, kExponents.size() - 1));
    const Values domain = Number(0, 1) == 0 ? Values{0, 1} : Pair(0, 1.5);
    Values from(outputs);
    Values to(outputs);
    std::ranges::generate(from, [this] { return Real(-1, 1); });
    std::ranges::generate(to, [this] { return Real(-1, 1); });
    const Values range = Number(0, 2) == 0 ? Pairs(outputs, -1, 1) : Values{};
    std::ostringstream text;
    text << "<</FunctionType 2\n/Domain " << ArrayText(domain) << "\n/C0 " << ArrayText(from) << "\n/C1 "
         << ArrayText(to) << "\n/N " << exponent << "\n"
         << (range.empty() ? "" : "/Range " + ArrayText(range) + "\n") << ">>\n";
    const auto at = [=](const Values& inputs) {
        const double power = std::pow(Clip(inputs[0], domain, 0), exponent);
        Values values(outputs);
        for (std::size_t index = 0; index < outputs; ++index) {
            values[index] = from[index] + power * (to[index] - from[index]);
        }
        return ClipAll(values, range);
    };
    return {text.str(), 1, outputs, domain, {}, at};
}

SampleFunction FunctionMaker::Sampled(std::size_t inputs, std::size_t outputs, int bits) {
    const Values domain = Number(0, 1) == 0 ? Pairs(inputs, 0, 1) : Pairs(inputs, -2, 3);
    const Values range = Pairs(outputs, -1, 1);
    Samples samples{{}, outputs, bits, {}};
    std::size_t count = outputs;
    Values encode;
    Values sizes;
    for (std::size_t input = 0; input < inputs; ++input) {
        samples.size.push_back(Number(1, inputs == 1 ? 40 : 5));
        sizes.push_back(static_cast<double>(samples.size.back()));
        encode.insert(encode.end(), {0, sizes.back() - 1});
        count *= samples.size.back();
    }
    const auto largest = static_cast<std::uint32_t>((std::uint64_t{1} << static_cast<unsigned>(bits)) - 1);
    while (samples.values.size() < count) {
        samples.values.push_back(static_cast<std::uint32_t>(random_()) & largest);
    }
    std::ostringstream text;
    text << "<</FunctionType 0\n/Domain " << ArrayText(domain) << "\n/Range " << ArrayText(range)
         << "\n/Size " << ArrayText(sizes) << "\n/BitsPerSample " << bits << "\n/Order 1\n";
    if (Number(0, 2) == 0) {
        for (double& value : encode) {
            value = Real(-1, 6);
        }
        text << "/Encode " << ArrayText(encode) << "\n";
    }
    const Values decode = Number(0, 2) == 0 ? Pairs(outputs, -2, 2) : range;
    if (decode != range) {
        text << "/Decode " << ArrayText(decode) << "\n";
    }
    text << "/DataSource " << DataText(samples.Packed(), Number(0, 1) == 0 ? 50 : 100000) << ">>\n";
    const auto at = [=](const Values& place) {
        Values encoded(inputs);
        for (std::size_t input = 0; input < inputs; ++input) {
            encoded[input] = LineOf(Clip(place[input], domain, input), domain, encode, input);
        }
        Values values(outputs);
        for (std::size_t output = 0; output < outputs; ++output) {
            values[output] = Line(samples.At(encoded, output, 0, 0, 1), 0, largest, decode[2 * output],
                                  decode[2 * output + 1]);
        }
        return ClipAll(values, range);
    };
    return {text.str(), inputs, outputs, domain, {}, at};
}

SampleFunction FunctionMaker::Part(std::size_t outputs, int depth) {
    constexpr std::array kBits{1, 2, 4, 8, 12, 16, 24, 32};
    switch (Number(0, depth > 0 ? 2 : 1)) {
        case 0:
            return Exponential(outputs);
        case 1:
            return Sampled(1, outputs, kBits.at(Number(0, kBits.size() - 1)));
        default:
            return Stitched(outputs, depth - 1);
    }
}

SampleFunction FunctionMaker::Stitched(std::size_t outputs, int depth) {
    const Values domain = Number(0, 1) == 0 ? Values{0, 1} : Pair(-1, 2);
    const std::size_t count = Number(1, 6);
    std::vector<SampleFunction> parts;
    Values bounds;
    Values encode;
    std::string functions;
    for (std::size_t part = 0; part < count; ++part) {
        parts.push_back(Part(outputs, depth));
        functions += parts.back().text + " ";
        encode.insert(encode.end(), {Real(-0.5, 1.5), Real(-0.5, 1.5)});
        if (part > 0) {
            bounds.push_back(Clip(Real(-1, 2), domain, 0));
        }
    }
    std::ranges::sort(bounds);
    const Values range = Number(0, 3) == 0 ? Pairs(outputs, -1, 1) : Values{};
    std::ostringstream text;
    text << "<</FunctionType 3\n/Domain " << ArrayText(domain) << "\n"
         << (range.empty() ? "" : "/Range " + ArrayText(range) + "\n") << "/Functions [" << functions
         << "]\n/Bounds " << ArrayText(bounds) << "\n/Encode " << ArrayText(encode) << "\n>>\n";
    const auto at = [=](const Values& inputs) {
        const double x = Clip(inputs[0], domain, 0);
        const auto part = static_cast<std::size_t>(std::ranges::upper_bound(bounds, x) - bounds.begin());
        const double low = part == 0 ? domain[0] : bounds[part - 1];
        const double high = part == bounds.size() ? domain[1] : bounds[part];
        return ClipAll(parts[part].at({Line(x, low, high, encode[2 * part], encode[2 * part + 1])}), range);
    };
    return {text.str(), 1, outputs, domain, bounds, at};
}

SampleFunction FunctionMaker::Any() {
    constexpr std::array kBits{1, 2, 4, 8, 12, 16, 24, 32};
    const std::size_t outputs = Number(1, 4);
    switch (Number(0, 3)) {
        case 0:
            return Exponential(outputs);
        case 1:
            return Stitched(outputs, 2);
        default:
            return Sampled(Number(1, 4), outputs, kBits.at(Number(0, kBits.size() - 1)));
    }
}

std::vector<Values> FunctionMaker::Places(const SampleFunction& function) {
    std::vector<Values> places;
    for (int count = 0; count < 6; ++count) {
        Values place;
        for (std::size_t input = 0; input < function.inputs; ++input) {
            const double low = function.domain[2 * input];
            const double high = function.domain[2 * input + 1];
            const double inside = low + (high - low) * static_cast<double>(Number(1, 996)) / 997;
            place.push_back(std::array{low, high, low - 1, high + 1, inside, inside}.at(Number(0, 5)));
        }
        places.push_back(place);
    }
    for (const double bound : function.bounds) {
        places.push_back({bound});
    }
    return places;
}

}  // namespace zorvan::test
