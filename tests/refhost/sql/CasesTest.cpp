// The language of the account database: the tests that the files of the folder `cases` hold, as "CaseFile.h" tells.

#include "tests/refhost/sql/CaseFile.h"
#include "tests/refhost/sql/Places.h"
#include "tests/support/Paths.h"

#include <cstddef>
#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <utility>

namespace test_sql {
namespace {

class SectionAt : public testing::Test {
public:
    SectionAt(std::string file, Section section, Place place)
        : file_(std::move(file)), section_(std::move(section)), place_(place), database_(place) {}

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

/// What stands for cases that could not be read.
class Unreadable : public testing::Test {
public:
    Unreadable(std::string file, std::string why) : file_(std::move(file)), why_(std::move(why)) {}

private:
    void TestBody() override { ADD_FAILURE_AT(file_.c_str(), 1) << why_; }

    std::string file_;
    std::string why_;
};

void RegisterUnreadable(const std::filesystem::path& path, const std::string& why) {
    testing::RegisterTest(path.stem().string().c_str(), "CanBeRead", nullptr, nullptr, path.string().c_str(), 1,
                          [=]() -> Unreadable* { return new Unreadable(path.string(), why); });
}

void Register(const std::filesystem::path& path) {
    std::ifstream file(path);
    for (const Section& section : ReadSections(file)) {
        for (const Place place : Places()) {
            if (section.without.contains(place) || (place == Place::embeddedThroughOdbc && section.BatchesAlone())) {
                continue;
            }
            testing::RegisterTest(path.stem().string().c_str(), (section.name + "/" + NameOf(place)).c_str(), nullptr,
                                  nullptr, path.string().c_str(), section.line,
                                  [=]() -> SectionAt* { return new SectionAt(path.string(), section, place); });
        }
    }
}

const bool registered = [] {
    const std::filesystem::path folder = test::SourceFolder() / "tests/refhost/sql/cases";
    std::size_t files = 0;
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(folder, none)) {
        if (entry.path().extension() == ".txt") {
            ++files;
            try {
                Register(entry.path());
            } catch (const std::exception& unreadable) {
                RegisterUnreadable(entry.path(), unreadable.what());
            }
        }
    }
    if (files == 0) {
        RegisterUnreadable(folder, "There are no files of cases.");
    }
    return true;
}();

} // namespace
} // namespace test_sql
