#pragma once

#include "cli/messages/AccountTexts.h"
#include "cli/messages/DiagnosisTexts.h"
#include "cli/messages/HelpTexts.h"
#include "cli/messages/ImportTexts.h"
#include "cli/messages/Language.h"
#include "cli/messages/SummaryTexts.h"
#include "import/messages/Figures.h"

#include <string>
#include <string_view>
#include <utility>

#include <fmt/format.h>

namespace cli {

/// A noun as it stands behind a number.
struct Noun {
    Phrase one;
    Phrase many;
    /// Names one of them by its number, `{0}`.
    Phrase place;
};

/// All texts that the program has for people, in one language.
struct Messages {
    Speech say;

    Noun row = {say("{0} 行", "{0} row"), say("{0} 行", "{0} rows"), say("第 {0} 行", "row {0}")};
    Noun document = {say("{0} 张单据", "{0} document"), say("{0} 张单据", "{0} documents"),
                     say("第 {0} 张单据", "document {0}")};
    Noun entry = {say("{0} 行表体", "{0} entry"), say("{0} 行表体", "{0} entries"), say("表体第 {0} 行", "entry {0}")};
    /// Its `place` is not used: a cell has an address.
    Noun cell = {say("{0} 处", "{0} cell"), say("{0} 处", "{0} cells"), ""};
    HelpTexts help = {say};
    UsageTexts usage = {say};
    ServerTexts server = {say};
    SummaryTexts summary = {say};
    AccountTexts account = {say};
    SheetTexts sheet = {say};
    ImportTexts import = {say};
    TraceTexts trace = {say};
    DoctorTexts doctor = {say};
};

const Messages& MessagesIn(Language language) noexcept;

/// The text with its places `{0}`, `{1}` … filled.
template <class... Arguments> std::string Fill(std::string_view text, const Arguments&... arguments) {
    return fmt::format(fmt::runtime(text), arguments...);
}

using importing::Grouped;

/// A number with its noun, "1 row", "4,353 rows".
std::string Count(std::size_t number, const Noun& noun);

} // namespace cli
