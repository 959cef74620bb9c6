#pragma once

// The system's own header, without its small words for large things.
#define WIN32_LEAN_AND_MEAN
#ifndef NOMINMAX // the compiler's library may have said so already
#define NOMINMAX
#endif
#include <windows.h>
