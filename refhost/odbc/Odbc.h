#pragma once

// ODBC's own headers; on Windows they take their types from Windows' own.
#ifdef _WIN32
#include "os/WindowsApi.h"
#endif

#include <sql.h>
#include <sqlext.h>
#include <sqltypes.h>
#include <sqlucode.h>
