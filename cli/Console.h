#pragma once

#include "cli/messages/Messages.h"

#include <string_view>

namespace cli {

/// What the program says to people: on standard error, in their language and in their terminal's encoding.
class Console {
public:
    /// The tone of a line, which a terminal shows as colour.
    enum class Tone { plain, good, bad, caution };

    explicit Console(Language language);

    Language language() const noexcept { return language_; }
    const Messages& messages() const noexcept { return messages_; }
    /// Whether lines go to a person's terminal.
    bool IsTerminal() const noexcept { return terminal_; }

    /// Writes one line (UTF-8, without line feed; control characters show as escapes). `lead` comes before it in the
    /// tone's colour.
    void Say(std::string_view line) { Say(Tone::plain, {}, line); }
    void Say(Tone tone, std::string_view lead, std::string_view line);

    /// Shows `line` in place of the line shown before; on a terminal that takes escape sequences alone.
    void ShowProgress(std::string_view line);
    /// Takes the line of progress away again.
    void ClearProgress();

private:
    Language language_;
    const Messages& messages_;
    bool terminal_;
    bool escapes_;
    bool coloured_;
    bool progressShown_ = false;
};

} // namespace cli
