#pragma once

#include "cli/messages/Messages.h"
#include "import/log/ImportLog.h"

#include <string>

namespace cli {

/// Opens the import log of a login file, `kovra-imports.db` beside it. Throws std::runtime_error in the language of
/// `texts` where it cannot, or another import is at work with it.
importing::ImportLog OpenImportLog(const std::string& login, const ImportTexts& texts);

} // namespace cli
