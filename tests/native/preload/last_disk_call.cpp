// SPDX-License-Identifier: MIT
// Preloaded by a test: a process that ends at once, as if it were killed, in front of that disk call whose
// number, from 1 on, stands in RMON_LAST_DISK_CALL. Counted is what changes a directory or files made in it,
// and what waits for them to be on the disk. A write counts twice: in front of it, and when half of it is
// done.

#include <cstdarg>
#include <cstdlib>

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int max_files = 1024;
bool made[max_files];

void count_call()
{
    static const long last = [] {
        const char *text = std::getenv("RMON_LAST_DISK_CALL");
        return text ? std::atol(text) : 0;
    }();
    static long calls = 0;
    if (++calls == last)
        _exit(9); // the agent may send no signals
}

template <class Function> Function next(Function, const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

int open_in(int directory, const char *name, int flags, va_list arguments, const char *function)
{
    if (!(flags & O_CREAT))
        return next(openat, function)(directory, name, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    count_call();
    const int file = next(openat, function)(directory, name, flags, mode);
    if (file >= 0 && file < max_files)
        made[file] = true;
    return file;
}

} // namespace

extern "C" {

int openat(int directory, const char *name, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const int file = open_in(directory, name, flags, arguments, "openat");
    va_end(arguments);
    return file;
}

int openat64(int directory, const char *name, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const int file = open_in(directory, name, flags, arguments, "openat64");
    va_end(arguments);
    return file;
}

int close(int file)
{
    if (file >= 0 && file < max_files)
        made[file] = false;
    return next(close, "close")(file);
}

ssize_t write(int file, const void *bytes, size_t size)
{
    const auto write_on = next(write, "write");
    if (file < 0 || file >= max_files || !made[file])
        return write_on(file, bytes, size);
    count_call();
    const ssize_t half = write_on(file, bytes, size / 2);
    count_call();
    if (half < static_cast<ssize_t>(size / 2))
        return half;
    const ssize_t rest = write_on(file, static_cast<const char *>(bytes) + half, size - half);
    return rest < 0 ? half : half + rest;
}

int fsync(int file)
{
    count_call();
    return next(fsync, "fsync")(file);
}

int fdatasync(int file)
{
    count_call();
    return next(fdatasync, "fdatasync")(file);
}

int unlinkat(int directory, const char *name, int flags) noexcept
{
    count_call();
    return next(unlinkat, "unlinkat")(directory, name, flags);
}

int renameat(int directory, const char *name, int to, const char *other) noexcept
{
    count_call();
    return next(renameat, "renameat")(directory, name, to, other);
}
}
