// export.h: how symbols leave a library, and the calling convention of callbacks, on each platform.
#pragma once

#ifdef _WIN32
#define QEL_EXPORT __declspec(dllexport)
#ifndef QEL_IMPORT // the libraries' own build leaves the import to the linker
#define QEL_IMPORT __declspec(dllimport)
#endif
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
