#include "tests/refhost/sql/CaseFile.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <fmt/format.h>

namespace test_sql {
namespace {

struct PlacesNamed {
    std::string_view words;
    std::set<Place> without;
};

/// What may stand behind a section's name.
const std::array placesNamed = {PlacesNamed{"", {}},
                                PlacesNamed{", embedded alone", {Place::embeddedThroughOdbc, Place::server}},
                                PlacesNamed{", not behind a driver", {Place::embeddedThroughOdbc}},
                                PlacesNamed{", not on a server", {Place::server}}};

class SectionReader {
public:
    std::vector<Section> Read(std::istream& file) {
        std::string line;
        while (std::getline(file, line)) {
            ++number_;
            if (line.starts_with("== ")) {
                RequireStatements();
                sections_.push_back(Begin(std::string_view(line).substr(3)));
                asked_ = false;
            } else if (line.starts_with('>')) {
                TakeAnswer(line);
            } else if (!line.empty() && !line.starts_with("--")) {
                (sections_.empty() ? beginning_ : sections_.back().asked)
                    .push_back({.line = number_, .sql = WithoutEscapes(line), .answer = {}});
                asked_ = true;
                answered_ = false;
            }
        }
        if (sections_.empty()) {
            Fail("The file has no section.");
        }
        RequireStatements();
        return std::move(sections_);
    }

private:
    [[noreturn]] void Fail(std::string_view why) const {
        throw std::runtime_error(fmt::format("line {}: {}", number_, why));
    }

    void RequireStatements() const {
        if (!sections_.empty() && sections_.back().asked.size() == beginning_.size()) {
            Fail("A section without statements ends here.");
        }
    }

    Section Begin(std::string_view heading) const {
        const std::size_t end = std::min(heading.find(','), heading.size());
        const auto* const named = std::ranges::find(placesNamed, heading.substr(end), &PlacesNamed::words);
        if (named == placesNamed.end()) {
            Fail("No such place.");
        }
        const std::string name(heading.substr(0, end));
        if (std::ranges::find(sections_, name, &Section::name) != sections_.end()) {
            Fail("Another section has this name.");
        }
        return {name, number_, named->without, beginning_, beginning_.size()};
    }

    void TakeAnswer(std::string_view line) {
        if (!asked_ || answered_) {
            Fail("An answer without a statement of its own.");
        }
        Asked& asked = (sections_.empty() ? beginning_ : sections_.back().asked).back();
        asked.batch = line.starts_with(">>");
        line.remove_prefix(asked.batch ? 2 : 1);
        // A batch may answer nothing.
        if (!line.empty() || !asked.batch) {
            if (!line.starts_with(' ') || line.size() == 1) {
                Fail("An answer stands behind a blank.");
            }
            asked.answer = WithoutEscapes(line.substr(1));
        }
        answered_ = true;
    }

    std::string WithoutEscapes(std::string_view text) const {
        constexpr std::string_view names = "nrts\\";
        constexpr std::string_view characters = "\n\r\t \\";
        std::string plain;
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] != '\\') {
                plain += text[i];
                continue;
            }
            const std::size_t escape = ++i < text.size() ? names.find(text[i]) : std::string_view::npos;
            if (escape == std::string_view::npos) {
                Fail("No such escape.");
            }
            plain += characters[escape];
        }
        return plain;
    }

    int number_ = 0;
    std::vector<Asked> beginning_;
    std::vector<Section> sections_;
    /// Whether a statement stands between here and the heading before, and an answer behind the last of these.
    bool asked_ = false;
    bool answered_ = false;
};

} // namespace

bool Section::BatchesAlone() const {
    return std::all_of(asked.begin() + static_cast<std::ptrdiff_t>(beginning), asked.end(), std::mem_fn(&Asked::batch));
}

std::vector<Section> ReadSections(std::istream& file) { return SectionReader().Read(file); }

} // namespace test_sql
