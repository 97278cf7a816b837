// Compiled, never linked or run: the layout of the interface where a pointer has 32 bits.
#include "host/abi/extensionlayout.h"

static_assert(!is64Bit);
