#include "cli/OpenImportLog.h"

#include "os/Files.h"

#include <stdexcept>

namespace cli {

importing::ImportLog OpenImportLog(const std::string& login, const ImportTexts& texts) {
    const std::string path = os::NameOf(os::PathOf(login).parent_path() / "kovra-imports.db");
    try {
        return importing::ImportLog(path);
    } catch (const importing::LogBusy&) {
        throw std::runtime_error(Fill(texts.logBusy, path));
    } catch (const importing::sqlite::Error& error) {
        throw std::runtime_error(path + ": " + error.what());
    }
}

} // namespace cli
