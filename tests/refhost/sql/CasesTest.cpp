// The language of the account database. Each file of the folder `cases` is a suite of tests, and each of its sections a
// test at each place, on an empty database:
//
//     == NAME      A section; behind the name may stand ", embedded alone", ", not behind a driver" or ", not on a
//                  server".
//     -- TEXT      A remark.
//     STATEMENT
//     > ANSWER     What the statement must answer, as `Answer` shows it; without this line nothing.
//     BATCH
//     >> ANSWER    What the batch must answer, as `Batch` shows it; left out behind a driver of the embedded database,
//                  which takes a statement at a time.
//
// Statements in front of the first section begin each of them. In a text, \n, \r, \t and \\ are the characters that
// they they are in C++.

#include "tests/refhost/sql/Places.h"
#include "tests/support/Paths.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>

namespace test_sql {
namespace {

/// A statement or batch of a section, with its place in the file.
struct Asked {
    int line;
    std::string sql;
    std::string answer;
    bool batch = false;
};

struct Section {
    std::string name;
    int line = 0;
    std::vector<Place> places;
    std::vector<Asked> asked;
    /// How many of these begin every section of the file.
    std::ptrdiff_t beginning = 0;
};

std::string WithoutEscapes(std::string_view text) {
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        constexpr std::string_view escapes = "nrts\\";
        const std::size_t escape = text[i] == '\\' ? escapes.find(text.at(i + 1)) : std::string_view::npos;
        if (escape != std::string_view::npos) {
            ++i;
        }
        plain += escape != std::string_view::npos ? "\n\r\t \\"[escape] : text[i];
    }
    return plain;
}

/// The places that the rest of a section's heading names.
std::vector<Place> PlacesNamed(const std::string& rest) {
    static const std::map<std::string, std::set<Place>> without = {
        {"", {}},
        {", embedded alone", {Place::embeddedThroughOdbc, Place::server}},
        {", not behind a driver", {Place::embeddedThroughOdbc}},
        {", not on a server", {Place::server}}};
    std::vector<Place> places = Places();
    std::erase_if(places, [&](Place place) { return without.at(rest).contains(place); });
    return places;
}

/// The sections of a file, each with what begins them all.
std::vector<Section> SectionsOf(const std::filesystem::path& file) {
    std::ifstream stream(file);
    std::vector<Section> sections(1);
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        if (line.empty() || line.starts_with("--")) {
            continue;
        }
        if (line.starts_with("== ")) {
            const std::size_t end = std::min(line.find(','), line.size());
            sections.push_back({line.substr(3, end - 3), number, PlacesNamed(line.substr(end)), sections.front().asked,
                                std::ssize(sections.front().asked)});
        } else if (line.starts_with('>')) {
            Asked& last = sections.back().asked.back();
            last.batch = line.starts_with(">>");
            last.answer = WithoutEscapes(line.substr(std::min(line.size(), last.batch ? std::size_t{3} : 2)));
        } else {
            sections.back().asked.push_back({number, WithoutEscapes(line), ""});
        }
    }
    sections.erase(sections.begin());
    if (sections.empty()) {
        throw std::runtime_error("no cases in " + file.string());
    }
    return sections;
}

class SectionAt : public testing::Test {
public:
    SectionAt(const std::string& file, const Section& section, Place place)
        : file_(file), section_(section), place_(place), database_(place) {}

private:
    void TestBody() override {
        for (const Asked& each : section_.asked) {
            const testing::ScopedTrace trace(file_.c_str(), each.line, "");
            const Case asked{each.sql, each.answer};
            if (!each.batch) {
                database_.Check(asked);
            } else if (place_ != Place::embeddedThroughOdbc) {
                database_.CheckBatch(asked);
            }
        }
    }

    std::string file_;
    Section section_;
    Place place_;
    DatabaseAt database_;
};

void Register(const std::filesystem::path& file) {
    for (const Section& section : SectionsOf(file)) {
        const bool batchesAlone =
            std::all_of(section.asked.begin() + section.beginning, section.asked.end(), std::mem_fn(&Asked::batch));
        for (const Place place : section.places) {
            if (batchesAlone && place == Place::embeddedThroughOdbc) {
                continue;
            }
            testing::RegisterTest(file.stem().string().c_str(), (section.name + "/" + NameOf(place)).c_str(), nullptr,
                                  nullptr, file.string().c_str(), section.line,
                                  [=]() -> SectionAt* { return new SectionAt(file.string(), section, place); });
        }
    }
}

const bool registered = [] {
    for (const auto& entry : std::filesystem::directory_iterator(test::SourceFolder() / "tests/refhost/sql/cases")) {
        Register(entry.path());
    }
    return true;
}();

} // namespace
} // namespace test_sql
