/* Included before all else into libraries in C that open files: on Windows they would take a name to be in the system's
   code page. */
#pragma once

#include <stdio.h>

FILE* kovra_fopen(const char* name, const char* mode);

#undef fopen
#undef fopen64
#define fopen kovra_fopen
#define fopen64 kovra_fopen
