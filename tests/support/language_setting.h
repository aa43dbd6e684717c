// The user's language for the length of a scope.
#pragma once

#include <memory>

namespace zorvan::test {

class LanguageSetting {
public:
    /// Takes a locale's name as POSIX has it, such as "zh_CN.UTF-8".
    explicit LanguageSetting(const char* locale);
    ~LanguageSetting();
    LanguageSetting(const LanguageSetting&) = delete;
    LanguageSetting& operator=(const LanguageSetting&) = delete;

private:
    struct Before;
    std::unique_ptr<Before> before_;
};

}  // namespace zorvan::test
