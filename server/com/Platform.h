#pragma once

// The system's headers of COM, in the only order in which they can be read.
// clang-format off
#include <windows.h>
#include <objbase.h>
#include <oleauto.h>
#include <ocidl.h>
// clang-format on
