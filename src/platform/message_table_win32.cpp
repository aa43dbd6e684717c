// The message texts from the module's string tables, of which the system chooses one by the user's language.
#include <algorithm>
#include <array>

#include <windows.h>

#include "platform/message_table.h"
#include "platform/own_module.h"

namespace zorvan {
namespace {

constexpr std::size_t kIdentifiers = 31;  // 0 to 30
constexpr int kLongestText = 160;         // in UTF-8, with its zero

// Held here, so that an error can be told when there is no memory left.
std::array<std::array<char, kLongestText>, kIdentifiers> texts;

}  // namespace

const char* MessageOf(unsigned identifier) {
    if (identifier >= texts.size()) {
        return "";
    }
    char* const text = texts[identifier].data();
    const wchar_t* resource = nullptr;
    // With a size of 0 the system hands out the resource itself, which has no zero at its end.
    const int length = LoadStringW(OwnModule(), identifier, reinterpret_cast<wchar_t*>(&resource), 0);
    // A text that is too long, which a host may have put there, is cut at a letter.
    constexpr int kMostBytesOfALetter = 3;
    const int taken = std::min(length, (kLongestText - 1) / kMostBytesOfALetter);
    const int written =
        WideCharToMultiByte(CP_UTF8, 0, resource, taken, text, kLongestText - 1, nullptr, nullptr);
    text[written] = '\0';
    return text;
}

}  // namespace zorvan
