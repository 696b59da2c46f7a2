#include "import/fields/Headings.h"

#include "ModPub/Text.h"
#include "import/cells/Characters.h"
#include "import/cells/Defuse.h"
#include "import/cells/KnownCodes.h"
#include "text/Utf16.h"

#include <algorithm>
#include <utility>

namespace importing {
namespace {

/// A heading without what does not tell it from others.
std::string Bare(std::string_view heading) {
    const std::string half = ToHalfWidth(heading);
    std::string bare;
    int open = 0;
    for (const char c : half) {
        if (c == '(') {
            ++open;
        } else if (c == ')' && open > 0) {
            --open;
        } else if (open == 0 && c != ' ' && c != '*' && c != '\t' && c != '\n' && c != '\r') {
            bare.push_back(c);
        }
    }
    return ModPub::LowerCase(bare);
}

/// Whether a line's first two headings are those of a file of refused rows: the reasons and the lines.
bool HasFront(const Line& line) {
    const auto is = [&line](std::size_t column, const Message& words) {
        const std::string_view heading = TrimBlanks(line.cells[column].text);
        return heading == words.chinese || heading == words.english;
    };
    return line.cells.size() > 1 && is(0, message::refusedReason) && is(1, message::refusedLine);
}

/// Calls `use` with every name that a field goes by.
template <class Use> void ForEachName(const Field& field, const Use& use) {
    use(field.element);
    use(field.chinese);
    use(field.english);
    std::string_view rest = field.synonyms;
    while (!rest.empty()) {
        const std::size_t bar = rest.find('|');
        use(rest.substr(0, bar));
        rest = bar == std::string_view::npos ? std::string_view() : rest.substr(bar + 1);
    }
}

const Field* FindField(const ClassFields& classFields, std::string_view heading) {
    const std::string wanted = Bare(heading);
    for (const Field& field : classFields.fields) {
        bool found = false;
        ForEachName(field, [&](std::string_view name) { found = found || Bare(name) == wanted; });
        if (found) {
            return &field;
        }
    }
    return nullptr;
}

/// The field whose name is nearest to `heading`, when that is near enough to have been meant; else nullptr.
const Field* NearestField(const ClassFields& classFields, std::string_view heading) {
    const std::string wanted = Bare(heading);
    // Half of a heading's characters may differ, and no more than three.
    constexpr std::size_t farthest = 3;
    std::size_t limit = std::min(farthest, text::Utf16Length(wanted) / 2);
    const Field* nearest = nullptr;
    for (const Field& field : classFields.fields) {
        ForEachName(field, [&](std::string_view name) {
            const std::size_t distance = EditDistance(wanted, Bare(name), limit);
            if (distance <= limit && (nearest == nullptr || distance < limit)) {
                limit = distance;
                nearest = &field;
            }
        });
    }
    return nearest;
}

/// Adds the field's Chinese and English name to what a note is about.
Note About(Message message, std::vector<std::string> arguments, const Field& field) {
    arguments.emplace_back(field.chinese);
    arguments.emplace_back(field.english);
    return {message, std::move(arguments)};
}

Note UnknownHeading(const ClassFields& classFields, std::string cell, const std::string& heading) {
    const Field* const nearest = NearestField(classFields, heading);
    return nearest == nullptr ? Note{message::headingUnknown, {std::move(cell), heading}}
                              : About(message::headingUnknownNear, {std::move(cell), heading}, *nearest);
}

void CheckMap(Columns& columns, const ClassFields& classFields, const HeadingMap& map) {
    for (const auto& [heading, name] : map) {
        if (!name.empty() && FindField(classFields, name) == nullptr) {
            columns.faults.push_back({message::mapFieldUnknown, {heading, name}});
        }
        if (std::ranges::find(columns.headings, heading) == columns.headings.end()) {
            columns.faults.push_back({message::mapHeadingMissing, {heading}});
        }
    }
}

void CheckMissing(Columns& columns, const ClassFields& classFields) {
    for (const Field& field : classFields.fields) {
        if (field.required && std::ranges::find(columns.fields, &field) == columns.fields.end()) {
            columns.faults.push_back(About(message::headingMissing, {std::string(field.element)}, field));
        }
    }
}

} // namespace

std::optional<std::size_t> Columns::Find(std::string_view element) const {
    const auto found =
        std::ranges::find_if(fields, [&](const Field* field) { return field != nullptr && field->element == element; });
    return found == fields.end() ? std::nullopt : std::optional(static_cast<std::size_t>(found - fields.begin()));
}

Columns ReadHeadings(const Line& line, const ClassFields& classFields, const HeadingMap& map) {
    Columns columns;
    columns.front = HasFront(line) ? 2 : 0;
    for (std::size_t column = 0; column < line.cells.size(); ++column) {
        std::string_view text = line.cells[column].text;
        text = columns.front == 0 ? text : Undefused(text);
        const std::string heading(TrimBlanks(text));
        columns.headings.push_back(heading);
        columns.fields.push_back(nullptr);
        const auto mapped = map.find(heading);
        const bool isMapped = mapped != map.end();
        if (column < columns.front || heading.empty() || (isMapped && mapped->second.empty())) {
            continue;
        }
        const Field* const field = FindField(classFields, isMapped ? mapped->second : heading);
        if (field == nullptr) {
            if (!isMapped) {
                columns.faults.push_back(UnknownHeading(classFields, CellName(column, line.number), heading));
            }
        } else if (std::ranges::find(columns.fields, field) != columns.fields.end()) {
            columns.faults.push_back(About(message::headingTwice, {CellName(column, line.number), heading}, *field));
        } else {
            columns.fields.back() = field;
        }
    }
    CheckMap(columns, classFields, map);
    CheckMissing(columns, classFields);
    return columns;
}

std::size_t CountHeadings(const Line& line, const ClassFields& classFields, const HeadingMap& map) {
    return static_cast<std::size_t>(std::ranges::count_if(line.cells, [&](const Cell& cell) {
        return cell.kind == Cell::Kind::text &&
               (FindField(classFields, cell.text) != nullptr || map.contains(TrimBlanks(cell.text)));
    }));
}

} // namespace importing
