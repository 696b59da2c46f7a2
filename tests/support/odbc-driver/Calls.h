#pragma once

namespace odbc_driver {

/// Takes note of a call of one of the driver's functions.
void Note(const char* function);

} // namespace odbc_driver

extern "C" {

/// How often a function of the driver was called since it was loaded; for the tests, which find it by its name.
int KovraTestDriverCalls(const char* function);
}
