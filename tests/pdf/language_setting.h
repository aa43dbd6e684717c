// The user's language for the length of a scope.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace zorvan::test {

/// Sets an environment variable, or takes it away (null), and puts back what was there.
class EnvironmentSetting {
public:
    EnvironmentSetting(const char* variable, const char* value) : variable_(variable) {
        if (const char* old = std::getenv(variable)) {
            old_ = old;
        }
        Set(value);
    }
    ~EnvironmentSetting() { Set(old_ ? old_->c_str() : nullptr); }
    EnvironmentSetting(const EnvironmentSetting&) = delete;
    EnvironmentSetting& operator=(const EnvironmentSetting&) = delete;

private:
    void Set(const char* value) const {
        if (value == nullptr) {
            unsetenv(variable_);
        } else {
            setenv(variable_, value, 1);
        }
    }

    const char* variable_;
    std::optional<std::string> old_;
};

class LanguageSetting {
public:
    explicit LanguageSetting(const char* locale) : setting_("LC_ALL", locale) {}

private:
    EnvironmentSetting setting_;
};

}  // namespace zorvan::test
