// An environment variable for the length of a scope.
#pragma once

#include <optional>
#include <string>

namespace zorvan::test {

/// Sets an environment variable, or takes it away (null), and puts back what was there.
class EnvironmentSetting {
public:
    EnvironmentSetting(const char* variable, const char* value);
    ~EnvironmentSetting();
    EnvironmentSetting(const EnvironmentSetting&) = delete;
    EnvironmentSetting& operator=(const EnvironmentSetting&) = delete;

private:
    std::string variable_;
    std::optional<std::string> old_;
};

}  // namespace zorvan::test
