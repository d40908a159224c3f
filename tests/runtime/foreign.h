// foreign.h: a library of somebody else's, which brings the C++ runtime that its compiler gave it.
#pragma once

#include <qelplat4/export.h>

#ifdef FOREIGN_BUILD
#define FOREIGN_API QEL_EXPORT
#else
#define FOREIGN_API QEL_IMPORT
#endif

namespace foreign {

/// Throws a number inside the library and gives what arrives where it is caught, in the library as well.
FOREIGN_API int ThrownAndCaught(int number);

/// Calls the host back; what the host throws passes through.
FOREIGN_API void CallBack(void (*host)());

} // namespace foreign
