// export.h: export of qelprop4's symbols.
#pragma once

#include <qelplat4/export.h>

#ifdef QELPROP4_BUILD
#define QELPROP4_API QEL_EXPORT
#else
#define QELPROP4_API QEL_IMPORT
#endif
