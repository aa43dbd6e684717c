// The message texts, built in.
#include <algorithm>
#include <iterator>

#include "platform/language.h"
#include "platform/message_table.h"

namespace zorvan {
namespace {

struct Message {
    unsigned identifier;
    const char* english;
    const char* chinese;
};

constexpr Message kMessages[] = {
#define ZORVAN_OTHER_CODES(messageId, english, chinese) {messageId, english, chinese},
#define ZORVAN_ERROR(code, name, messageId, english, chinese) {messageId, english, chinese},
#include "api/error_table.inc"
#undef ZORVAN_ERROR
#undef ZORVAN_OTHER_CODES
};

}  // namespace

const char* MessageOf(unsigned identifier) {
    const auto* const message = std::ranges::find(kMessages, identifier, &Message::identifier);
    if (message == std::end(kMessages)) {
        return "";
    }
    return UserLanguage() == Language::kChinese ? message->chinese : message->english;
}

}  // namespace zorvan
