#pragma once

// A file system without extended attributes. For one source of a program: what it defines stands before the
// functions of the C library.

#include <cerrno>

#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

/// True for as long as the file system is to have none.
inline bool refuseAttributes = false;

extern "C" int setxattr(const char *path, const char *name, const void *value, size_t size,
                        int flags) noexcept
{
    if (refuseAttributes) {
        errno = ENOTSUP;
        return -1;
    }
    return int(syscall(SYS_setxattr, path, name, value, size, flags));
}

extern "C" ssize_t getxattr(const char *path, const char *name, void *value, size_t size) noexcept
{
    if (refuseAttributes) {
        errno = ENOTSUP;
        return -1;
    }
    return ssize_t(syscall(SYS_getxattr, path, name, value, size));
}
