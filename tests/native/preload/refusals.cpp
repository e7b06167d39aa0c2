// SPDX-License-Identifier: MIT
// Preloaded by a test: a system that tells no name of its own and makes no texts of addresses.

#include <arpa/inet.h>

#include <cerrno>

#include <unistd.h>

extern "C" int gethostname(char *, size_t) noexcept
{
    errno = EPERM;
    return -1;
}

// The same as a fortified caller names it; compilers differ in which calls they make of this kind.
extern "C" int __gethostname_chk(char *name, size_t length, size_t) noexcept
{
    return gethostname(name, length);
}

extern "C" const char *inet_ntop(int, const void *, char *, socklen_t) noexcept
{
    errno = ENOSPC;
    return nullptr;
}

extern "C" const char *
__inet_ntop_chk(int family, const void *from, char *to, socklen_t length, size_t) noexcept
{
    return inet_ntop(family, from, to, length);
}
