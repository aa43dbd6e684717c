// The library's own prolog texts, by number.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "ps/prolog_data.h"

namespace zorvan {

/// The stored texts. A job without one cannot write a document.
class Prolog {
public:
    explicit Prolog(std::span<const PrologResource> resources) : resources_(resources) {}

    /// The bytes as stored; empty for a text that cannot be located, which is no error of its own.
    [[nodiscard]] std::string_view Text(unsigned identifier) const;

private:
    std::span<const PrologResource> resources_;
};

/// The texts that the library carries; null when its module cannot be found.
const Prolog* BuiltInProlog();

}  // namespace zorvan
