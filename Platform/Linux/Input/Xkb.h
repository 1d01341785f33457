#pragma once

// The keyboard extension's C header, one of whose members is called `explicit`. Compilers that warn
// of a keyword's new meaning keep quiet about headers of the system.
#pragma GCC system_header
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
