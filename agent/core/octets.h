// SPDX-License-Identifier: MIT
/*
 * The order of octet strings in an index: the shorter one first, since a MIB
 * index begins with the length, then octet by octet.
 */
#pragma once

#include <cstdint>
#include <cstring>
#include <span>

/** Below 0 when a stands before b, 0 when they are the same, above 0 when it stands behind. */
inline int compare_octets(std::span<const uint8_t> a, std::span<const uint8_t> b)
{
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    return a.empty() ? 0 : std::memcmp(a.data(), b.data(), a.size());
}
