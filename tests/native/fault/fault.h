// SPDX-License-Identifier: MIT
#pragma once

#include <climits>
#include <cstdlib>
#include <cstring>

// Mistakes made on purpose: a sanitizer build that lets one pass is no sanitizer build.
// False when the kind has no such name.
[[gnu::noinline]] inline bool commit_fault(const char *kind)
{
    if (std::strcmp(kind, "none") == 0) {
        return true;
    }
    if (std::strcmp(kind, "leak") == 0) {
        for (int i = 0; i < 10; i++) {
            char *volatile lost = static_cast<char *>(std::malloc(100));
            lost[0] = 1;
        }
        return true;
    }
    if (std::strcmp(kind, "heap") == 0) {
        const volatile std::size_t size = 13;
        volatile char *block = static_cast<char *>(std::malloc(size));
        block[size] = 1;
        std::free(const_cast<char *>(block));
        return true;
    }
    if (std::strcmp(kind, "signed") == 0) {
        volatile int number = INT_MAX;
        number = number + 1;
        return true;
    }
    return false;
}
