#pragma once

// Windows' own header, before all those that take their types from it.
#include <windows.h>
