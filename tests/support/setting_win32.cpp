// The environment, and the thread's language.
#include <cstdlib>
#include <string_view>
#include <utility>

#include <windows.h>

#include "support/environment_setting.h"
#include "support/language_setting.h"

namespace zorvan::test {
namespace {

LCID LocaleOf(std::string_view name) {
    constexpr std::pair<std::string_view, LANGID> kLanguages[] = {
        {"zh_CN", MAKELANGID(LANG_CHINESE, SUBLANG_CHINESE_SIMPLIFIED)},
        {"zh_TW", MAKELANGID(LANG_CHINESE, SUBLANG_CHINESE_TRADITIONAL)},
        {"de_DE", MAKELANGID(LANG_GERMAN, SUBLANG_GERMAN)}};
    for (const auto& [begin, language] : kLanguages) {
        if (name.starts_with(begin)) {
            return MAKELCID(language, SORT_DEFAULT);
        }
    }
    return MAKELCID(MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US), SORT_DEFAULT);
}

// Windows goes by the one when it looks for resources, Wine by the other.
void SetLanguage(LCID locale) {
    SetThreadUILanguage(LANGIDFROMLCID(locale));
    SetThreadLocale(locale);
}

}  // namespace

EnvironmentSetting::EnvironmentSetting(const char* variable, const char* value) : variable_(variable) {
    if (const char* old = std::getenv(variable)) {
        old_ = old;
    }
    _putenv_s(variable, value == nullptr ? "" : value);
}

EnvironmentSetting::~EnvironmentSetting() {
    _putenv_s(variable_.c_str(), old_ ? old_->c_str() : "");
}

struct LanguageSetting::Before {
    LCID locale;
};

LanguageSetting::LanguageSetting(const char* locale) : before_(new Before{GetThreadLocale()}) {
    SetLanguage(LocaleOf(locale));
}

LanguageSetting::~LanguageSetting() {
    SetLanguage(before_->locale);
}

}  // namespace zorvan::test
