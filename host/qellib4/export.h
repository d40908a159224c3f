// export.h: export of qellib4's symbols.
#pragma once

#include <qelplat4/export.h>

#ifdef QELLIB4_BUILD
#define QELLIB4_API QEL_EXPORT
#else
#define QELLIB4_API QEL_IMPORT
#endif
