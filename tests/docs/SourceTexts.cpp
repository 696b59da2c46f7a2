#include "tests/docs/SourceTexts.h"

#include "text/Utf8.h"

#include <algorithm>
#include <cctype>

namespace test {
namespace {

/// Reads a literal whose opening quote was passed; leaves `at` behind the closing one.
std::string ReadLiteral(std::string_view source, std::size_t& at) {
    std::string text;
    while (at < source.size() && source[at] != '"') {
        if (source[at] == '\\') {
            text.push_back(source[at++]);
        }
        text.push_back(source[at++]);
    }
    ++at;
    return text;
}

} // namespace

std::vector<std::string> ChineseLiterals(std::string_view source) {
    std::vector<std::string> literals;
    std::string pending;
    const auto finish = [&] {
        if (!text::IsAscii(pending)) {
            literals.push_back(pending);
        }
        pending.clear();
    };
    for (std::size_t at = 0; at < source.size();) {
        const char c = source[at];
        if (source.substr(at, 2) == "//") {
            at = std::min(source.find('\n', at), source.size());
        } else if (c == '\'' && at + 2 < source.size()) {
            // A character literal; '"' must not open a text.
            at = source[at + 1] == '\\' ? at + 4 : at + 3;
            finish();
        } else if (c == '"') {
            pending += ReadLiteral(source, ++at);
        } else {
            // Blanks between two literals join them; everything else ends one.
            if (std::isspace(static_cast<unsigned char>(c)) == 0) {
                finish();
            }
            ++at;
        }
    }
    finish();
    return literals;
}

std::vector<std::filesystem::path> Sources(const std::filesystem::path& folder) {
    std::vector<std::filesystem::path> sources;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp") {
            sources.push_back(entry.path());
        }
    }
    std::ranges::sort(sources);
    return sources;
}

} // namespace test
