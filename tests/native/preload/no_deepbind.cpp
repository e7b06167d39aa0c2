// SPDX-License-Identifier: MIT
// Preloaded, ahead of the sanitizers' runtime, into a PHP that is not built for them: such a PHP loads its
// extensions with RTLD_DEEPBIND, which the runtime refuses.

#include <dlfcn.h>

extern "C" void *dlopen(const char *file, int mode)
{
    using Dlopen = void *(*)(const char *, int);
    static const Dlopen next = reinterpret_cast<Dlopen>(dlsym(RTLD_NEXT, "dlopen"));
    return next(file, mode & ~RTLD_DEEPBIND);
}
