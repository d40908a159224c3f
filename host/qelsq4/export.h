// export.h: export of qelsq4's symbols.
#pragma once

#include <qelplat4/export.h>

#ifdef QELSQ4_BUILD
#define QELSQ4_API QEL_EXPORT
#else
#define QELSQ4_API QEL_IMPORT
#endif
