#include "tests/support/odbc-driver/Calls.h"

#include <map>
#include <mutex>
#include <string>

namespace odbc_driver {
namespace {

std::mutex mutex;

std::map<std::string, int>& Counts() {
    static std::map<std::string, int> counts;
    return counts;
}

} // namespace

void Note(const char* function) {
    const std::lock_guard lock(mutex);
    ++Counts()[function];
}

} // namespace odbc_driver

int KovraTestDriverCalls(const char* function) {
    const std::lock_guard lock(odbc_driver::mutex);
    return odbc_driver::Counts()[function];
}
