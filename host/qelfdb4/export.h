// export.h: export of qelfdb4's symbols.
#pragma once

#include <qelplat4/export.h>

#ifdef QELFDB4_BUILD
#define QELFDB4_API QEL_EXPORT
#else
#define QELFDB4_API QEL_IMPORT
#endif
