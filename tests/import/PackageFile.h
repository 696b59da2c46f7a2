#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace test {

/// A workbook written part by part, so that a test says every byte that matters.
class PackageFile {
public:
    /// A package whose workbook has one sheet "Sheet1", `sheet` being what stands inside its `worksheet` element, and
    /// shared strings and cell formats as given (each what stands inside `sst` and `styleSheet`).
    static PackageFile OfSheet(const std::string& sheet, const std::string& strings = "",
                               const std::string& styles = "");

    /// All parts of the workbook at `path`.
    static PackageFile Read(const std::filesystem::path& path);

    /// A part that is there.
    const std::string& Part(const std::string& name) const { return parts_.at(name); }
    /// Adds or replaces a part.
    void Set(const std::string& name, std::string content) { parts_[name] = std::move(content); }
    void Remove(const std::string& name) { parts_.erase(name); }

    /// Writes the archive.
    void Write(const std::filesystem::path& path) const;

private:
    std::map<std::string, std::string> parts_;
};

/// A folder of the test's own, removed with it.
class TestFolder {
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    /// The path of a file in it.
    std::string File(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

} // namespace test
