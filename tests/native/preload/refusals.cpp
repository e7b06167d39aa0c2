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

extern "C" const char *inet_ntop(int, const void *, char *, socklen_t) noexcept
{
    errno = ENOSPC;
    return nullptr;
}
