#include "tests/support/ScenarioFolder.h"

#include "tests/support/Paths.h"

#include <algorithm>
#include <cctype>

namespace test {

namespace fs = std::filesystem;

std::vector<fs::path> ScenarioFolders() {
    std::vector<fs::path> folders;
    const fs::path root = SourceFolder() / "tests" / "scenarios";
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root)) {
        if (entry.path().filename() == "request.xml") {
            folders.push_back(entry.path().parent_path());
        }
    }
    std::ranges::sort(folders);
    return folders;
}

std::string ScenarioName(const testing::TestParamInfo<fs::path>& info) {
    std::string name = info.param.parent_path().filename().string() + "_" + info.param.filename().string();
    std::ranges::replace_if(
        name, [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; }, '_');
    return name;
}

fs::path LoginFile(const fs::path& folder) {
    fs::path own = folder / "login.xml";
    return fs::exists(own) ? own : folder.parent_path().parent_path() / "login.xml";
}

fs::path ExpectedFile(const fs::path& folder, const std::string& extension, Documents documents) {
    fs::path other = folder / ("expected.windows" + extension);
    return documents == Documents::msxml && fs::exists(other) ? other : folder / ("expected" + extension);
}

bool ExpectsEmptyResult(const fs::path& folder, Documents documents) {
    return ReadText(ExpectedFile(folder, ".xml", documents)).find_first_not_of(" \r\n\t") == std::string::npos;
}

} // namespace test
