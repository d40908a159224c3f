// files.h: whole-file operations and the millisecond clock under their usual names.
#pragma once

#include <qelplat4/types.h>

#ifndef _WIN32

/// Copies a whole file with its permissions.
/// @param failIfExists  non-zero: an existing target is left alone and the call fails
/// @return non-zero on success; on failure no part of the copy is left behind
QELPLAT4_API BOOL CopyFileW(LPCWSTR existing, LPCWSTR target, BOOL failIfExists);

/// Renames a file; fails when the target exists. Falls back to copy and delete across file systems.
/// @return non-zero on success
QELPLAT4_API BOOL MoveFileW(LPCWSTR existing, LPCWSTR target);

/// Deletes one file.
/// @return zero when it could not be deleted or does not exist
QELPLAT4_API BOOL DeleteFileW(LPCWSTR path);

/// Milliseconds of a clock that never runs backwards; wraps around after 49.7 days.
QELPLAT4_API DWORD GetTickCount();

#endif
