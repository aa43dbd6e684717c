// The environment, and the language that follows it.
#include <cstdlib>

#include "support/environment_setting.h"
#include "support/language_setting.h"

namespace zorvan::test {
namespace {

void Set(const std::string& variable, const char* value) {
    if (value == nullptr) {
        unsetenv(variable.c_str());
    } else {
        setenv(variable.c_str(), value, 1);
    }
}

}  // namespace

EnvironmentSetting::EnvironmentSetting(const char* variable, const char* value) : variable_(variable) {
    if (const char* old = std::getenv(variable)) {
        old_ = old;
    }
    Set(variable_, value);
}

EnvironmentSetting::~EnvironmentSetting() {
    Set(variable_, old_ ? old_->c_str() : nullptr);
}

struct LanguageSetting::Before {
    EnvironmentSetting setting;
};

LanguageSetting::LanguageSetting(const char* locale) : before_(new Before{{"LC_ALL", locale}}) {}

LanguageSetting::~LanguageSetting() = default;

}  // namespace zorvan::test
