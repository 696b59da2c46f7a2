#include "cli/Console.h"

#include "cli/DisplayWidth.h"
#include "cli/Platform.h"
#include "text/Utf8.h"

#include <algorithm>
#include <cstdlib>
#include <string>

namespace cli {
namespace {

/// Whether the user asks for none.
bool RefusesColour() {
    const char* const noColour = std::getenv("NO_COLOR");
    return noColour != nullptr && *noColour != '\0';
}

std::string_view Colour(Console::Tone tone) {
    switch (tone) {
    case Console::Tone::good:
        return "\x1B[32m";
    case Console::Tone::bad:
        return "\x1B[31m";
    case Console::Tone::caution:
        return "\x1B[33m";
    case Console::Tone::plain:
        break;
    }
    return {};
}

/// The line with names of files as people read them: they stand in it in quotes and as the system has them, which is
/// the locale's encoding where it is no UTF-8.
std::string WithReadableNames(std::string_view line) {
    if (text::IsUtf8(line)) {
        return std::string(line);
    }
    std::string readable;
    for (std::size_t begin = 0; begin <= line.size();) {
        const std::size_t end = std::min(line.find('\'', begin), line.size());
        const std::string_view piece = line.substr(begin, end - begin);
        readable.append(text::IsUtf8(piece) ? std::string(piece) : platform::FromLocale(piece));
        readable.append(line.substr(end, 1));
        begin = end + 1;
    }
    return readable;
}

void Write(std::string_view text) { platform::WriteText(platform::Stream::error, text); }

} // namespace

Console::Console(Language language)
    : language_(language), messages_(MessagesIn(language)), terminal_(platform::IsTerminal(platform::Stream::error)),
      escapes_(platform::TakesEscapes(platform::Stream::error)), coloured_(escapes_ && !RefusesColour()) {}

void Console::Say(Tone tone, std::string_view lead, std::string_view line) {
    ClearProgress();
    std::string text;
    const bool coloured = coloured_ && tone != Tone::plain;
    text.append(coloured ? Colour(tone) : "").append(Printable(lead)).append(coloured ? "\x1B[0m" : "");
    text.append(Printable(WithReadableNames(line))).push_back('\n');
    Write(text);
}

void Console::ShowProgress(std::string_view line) {
    if (!escapes_) {
        return;
    }
    // A line that wrapped would stay behind.
    if (DisplayWidth(line) < platform::TerminalWidth(platform::Stream::error)) {
        Write(std::string("\r").append(line).append("\x1B[K"));
        progressShown_ = true;
    }
}

void Console::ClearProgress() {
    if (progressShown_) {
        Write("\r\x1B[K");
        progressShown_ = false;
    }
}

} // namespace cli
