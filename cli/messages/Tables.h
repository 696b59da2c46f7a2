#pragma once

#include "cli/messages/Messages.h"

namespace cli {

extern const Messages englishMessages;
extern const Messages chineseMessages;

} // namespace cli
