// Sets a variable for the length of a block.
#pragma once

#include <utility>

namespace zorvan {

template <class Value>
class ScopedValue {
public:
    ScopedValue(Value& variable, Value value)
        : variable_(variable), before_(std::exchange(variable, value)) {}
    ~ScopedValue() { variable_ = before_; }
    ScopedValue(const ScopedValue&) = delete;
    ScopedValue& operator=(const ScopedValue&) = delete;

private:
    Value& variable_;
    Value before_;
};

}  // namespace zorvan
