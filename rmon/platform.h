// SPDX-License-Identifier: MIT
/*
 * What the module takes from where it runs: files and commands of the
 * appliance, and what differs between engines.
 */
#pragma once

#ifdef HAVE_CONFIG_H
#include "config.h"
#endif

#include "php.h"

#include <algorithm>
#include <bit>

/* ---- the engine's tables ------------------------------------------------------------ *
 *
 * Sizes of their data blocks, as constants: the engine's own are functions that
 * the compiler does not evaluate, from 8.6 on. At start-up the module looks
 * whether the engine agrees.
 */

/** Elements for which a table with room for count of them has memory. */
constexpr uint32_t table_size(uint32_t count)
{
    return std::max<uint32_t>(HT_MIN_SIZE, std::bit_ceil(count));
}

/** The hash of a table: two places for each element. */
constexpr size_t hash_bytes(uint32_t count)
{
    return 2 * sizeof(uint32_t) * table_size(count);
}

/** The whole block. */
constexpr size_t table_bytes(uint32_t count)
{
    return hash_bytes(count) + table_size(count) * sizeof(Bucket);
}

#if PHP_VERSION_ID >= 80200
/** The whole block of the smallest list, which has a hash of two places. */
inline constexpr size_t smallest_list_bytes = 2 * sizeof(uint32_t) + HT_MIN_SIZE * sizeof(zval);
#endif

/** An element of a list that holds it. */
inline zval *list_slot(zend_array *list, uint32_t i)
{
#if PHP_VERSION_ID >= 80200
    return list->arPacked + i;
#else
    return &list->arData[i].val;
#endif
}

/** Whether the engine has the same sizes. */
inline bool engine_agrees()
{
#if PHP_VERSION_ID >= 80200
    if (smallest_list_bytes != HT_PACKED_SIZE_EX(HT_MIN_SIZE, HT_MIN_MASK))
        return false;
#endif
    for (uint32_t size = HT_MIN_SIZE; size <= 1 << 16; size *= 2) {
        const uint32_t mask = HT_SIZE_TO_MASK(size);
        if (hash_bytes(size) != HT_HASH_SIZE(mask) || table_bytes(size) != HT_SIZE_EX(size, mask))
            return false;
    }
    return true;
}

/* ---- files and commands of the appliance ----------------------------------------------- *
 *
 * Their paths are fixed: nothing that a script, a request or the environment
 * says leads elsewhere. A module made for tests (configure
 * --with-rmon-test-root=DIR) has DIR in front of all of them, so that the
 * tests can put files of their own there.
 */

#ifndef RMON_TEST_ROOT
#define RMON_TEST_ROOT ""
#endif

/** Descriptions of the protocols, in the text form of RFC 2895. */
inline constexpr char protocol_description_file[] = RMON_TEST_ROOT "/usr/local/norv/etc/pdstruct.txt";

/** Identity of the appliance. */
inline constexpr char settings_file[] = RMON_TEST_ROOT "/usr/local/norv/etc/norv_settings";

/* Shell commands that write the network settings out, by the kind of appliance. */
inline constexpr char net_conf_init_command[] =
    RMON_TEST_ROOT "/usr/local/norv/bin/net_conf_init -q stop >/dev/null 2>/dev/null";
inline constexpr char vd_net_conf_command[] =
    RMON_TEST_ROOT "/usr/local/norv/bin/vd_net_conf -q write >/dev/null 2>/dev/null";
