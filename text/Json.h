#pragma once

#include <string>
#include <string_view>
#include <type_traits>

namespace text {

/// Appends `text` as a JSON string, quotes included. Bytes that are no UTF-8 become U+FFFD.
void AppendJsonString(std::string& json, std::string_view text);

/// Writes JSON from its front to its end, and puts the commas between. What is opened is closed by who opened it.
class JsonWriter {
public:
    /// @param json what is appended to; it outlives the writer
    explicit JsonWriter(std::string& json) : json_(json) {}

    /// Begins an object, '{', or an array, '['.
    JsonWriter& Open(char bracket);
    JsonWriter& Close(char bracket);
    /// A member's name; its value follows.
    JsonWriter& Name(std::string_view name);
    JsonWriter& Text(std::string_view text);
    /// Has what follows begin a line, unless it is the first of its list.
    JsonWriter& NextLine();
    /// A number, or "true", "false" or "null".
    JsonWriter& Word(std::string_view word);

    /// A member of a text, a whole number or a Boolean.
    template <class Value> JsonWriter& Member(std::string_view name, const Value& value) {
        Name(name);
        if constexpr (std::is_same_v<Value, bool>) {
            return Word(value ? "true" : "false");
        } else if constexpr (std::is_integral_v<Value>) {
            return Word(std::to_string(value));
        } else {
            return Text(value);
        }
    }

private:
    void Separate();

    std::string& json_;
};

} // namespace text
