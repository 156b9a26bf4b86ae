#pragma once

/// What differs between compilers, in one place. Nothing here changes what the code does.

#include <cstdio>

/// ORVANE_PRINTF(text, first) marks a function as printf-like: the compiler then checks the
/// arguments against the format. Positions count from 1; `first` is 0 for a `va_list`.
#if defined(__MINGW_PRINTF_FORMAT)
#define ORVANE_PRINTF(text, first) __attribute__((format(__MINGW_PRINTF_FORMAT, text, first)))
#elif defined(__GNUC__)
#define ORVANE_PRINTF(text, first) __attribute__((format(printf, text, first)))
#else
#define ORVANE_PRINTF(text, first)
#endif
