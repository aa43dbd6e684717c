// Interning names and giving their texts back.
#include "pdf/name_table.h"

#include <algorithm>
#include <new>

#include "platform/limits.h"

namespace zorvan {
namespace {

constexpr std::string_view kPredefined[] = {
    "",
#define ZORVAN_NAME(constant, text) text,
#include "pdf/predefined_names.inc"
#undef ZORVAN_NAME
};

constexpr std::size_t kStorageBlock = 16384;

/// True for what ends a name on a device: white space and other control characters, delimiters, and the bytes
/// that begin a binary token (PLRM 3.14.1), by which a name could go on as a program of its own.
bool EndsName(char letter) {
    constexpr std::string_view kDelimiters = "()<>[]{}/%";
    const auto byte = static_cast<std::uint8_t>(letter);
    return byte <= 0x20 || (byte >= 0x80 && byte < 0xA0) ||
           kDelimiters.find(letter) != std::string_view::npos;
}

std::string AsToken(std::string_view text) {
    std::string token(text);
    std::ranges::replace_if(token, EndsName, '$');
    return token;
}

}  // namespace

std::string EscapedText(std::string_view text) {
    std::string escaped;
    for (const char letter : text) {
        if (letter == '\\' || letter == '(' || letter == ')') {
            escaped += '\\';
        }
        escaped += letter;
    }
    return escaped;
}

void NameTable::Fill() {
    texts_.assign(std::begin(kPredefined), std::end(kPredefined));
    for (std::uint32_t identifier = 1; identifier < texts_.size(); ++identifier) {
        identifiers_.emplace(texts_[identifier], identifier);
    }
}

std::uint32_t NameTable::InternName(std::string_view text) {
    const auto known = identifiers_.find(text);
    if (known != identifiers_.end()) {
        return known->second;
    }
    if (texts_.size() >= limits::kNames) {
        throw std::bad_alloc();
    }
    const std::string_view kept = Keep(text);
    const auto identifier = static_cast<std::uint32_t>(texts_.size());
    texts_.push_back(kept);
    try {
        identifiers_.emplace(kept, identifier);
    } catch (...) {
        texts_.pop_back();
        throw;
    }
    return identifier;
}

std::string_view NameTable::Keep(std::string_view text) {
    if (freeStorage_.size() < text.size()) {
        const std::size_t size = std::max(kStorageBlock, text.size());
        storage_.push_back(std::make_unique_for_overwrite<char[]>(size));
        freeStorage_ = {storage_.back().get(), size};
    }
    std::copy(text.begin(), text.end(), freeStorage_.begin());
    const std::string_view kept(freeStorage_.data(), text.size());
    freeStorage_ = freeStorage_.subspan(text.size());
    return kept;
}

std::string_view NameTable::PlainText(std::uint32_t identifier) const {
    return identifier < texts_.size() ? texts_[identifier] : std::string_view();
}

std::string NameTable::NameText(std::uint32_t identifier, NameTextMode mode, std::size_t limit) const {
    const std::string_view text = PlainText(identifier).substr(0, limit);
    return mode == NameTextMode::kString ? EscapedText(text) : AsToken(text);
}

}  // namespace zorvan
