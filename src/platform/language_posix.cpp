// The user's language by the locale variables, in the order in which POSIX gives them force.
#include <cstdlib>
#include <string_view>

#include "platform/language.h"

namespace zorvan {

Language UserLanguage() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(variable);
        if (value != nullptr && *value != '\0') {
            return std::string_view(value).starts_with("zh_CN") ? Language::kChinese : Language::kEnglish;
        }
    }
    return Language::kEnglish;
}

}  // namespace zorvan
