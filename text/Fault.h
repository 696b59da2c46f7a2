#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace text {

/// What is said to people, in each of the program's languages (UTF-8).
struct Words {
    std::string english;
    std::string chinese;
};

/// What a file, a login or the system does not allow, said in words that a person can act on. `what()` is English.
class Fault : public std::runtime_error {
public:
    explicit Fault(Words words) : std::runtime_error(words.english), chinese_(std::move(words.chinese)) {}

    Words words() const { return {what(), chinese_}; }

private:
    std::string chinese_;
};

} // namespace text
