// export.h: how symbols leave a library, and the calling convention of callbacks, on each platform.
#pragma once

#if defined(_WIN32) && !defined(QEL_STATIC)
#define QEL_EXPORT __declspec(dllexport)
#define QEL_IMPORT __declspec(dllimport)
#elif defined(_WIN32)
#define QEL_EXPORT
#define QEL_IMPORT
#else
#define QEL_EXPORT __attribute__((visibility("default")))
#define QEL_IMPORT __attribute__((visibility("default")))
#endif

#ifdef _WIN32
#define QEL_STDCALL __stdcall
#else
#define QEL_STDCALL
#endif

#ifdef QELPLAT4_BUILD
#define QELPLAT4_API QEL_EXPORT
#else
#define QELPLAT4_API QEL_IMPORT
#endif
