// SPDX-License-Identifier: MIT
/*
 * How a table's numbers become MIB variables: one line each, which names the
 * variable, the read of its table, the key of an instance and the record's
 * field.
 */
#pragma once

#include "agent/core/reply.h"
#include "rmon/rpc/rmonrpc.h"
#include "rmon/rpc/rmonrpc_xdr.h"

#include <array>
#include <cstdint>
#include <span>
#include <type_traits>

struct probe;

/** The numbers of an instance. */
using variable_instance = std::span<const uint32_t>;

struct known_variable {
    const char *name;
    const char *identifier; // null where no MIB has it
    bool counter;           // it only grows; others rise and fall
    /** Reads an instance; false when there is none. */
    bool (*read)(probe &agent, variable_instance instance, uint64_t &value);
};

/** All that the agent knows. */
std::span<const known_variable> known_variables();

/* ---- instances -------------------------------------------------------------------------- */

/** The numbers of an instance, taken one after the other. */
struct instance_reader {
    variable_instance rest;
    bool good = true; // as far as it was taken
};

inline uint32_t take_number(instance_reader &from, uint32_t max)
{
    if (from.rest.empty() || from.rest[0] > max) {
        from.good = false;
        return 0;
    }
    const uint32_t number = from.rest[0];
    from.rest = from.rest.subspan(1);
    return number;
}

inline int32_t take_index(instance_reader &from)
{
    return static_cast<int32_t>(take_number(from, INT32_MAX));
}

inline uint32_t take_time(instance_reader &from)
{
    return take_number(from, UINT32_MAX);
}

/** Octets of an address: their number, then each. Addresses have fewer than most names have numbers. */
inline void take_octets(instance_reader &from, wire::byte_list &list)
{
    std::array<uint8_t, 20> octets;
    const uint32_t size = take_number(from, octets.size());
    for (uint32_t i = 0; i < size; i++)
        octets[i] = static_cast<uint8_t>(take_number(from, UINT8_MAX));
    set_bytes(list, std::span(octets).first(size));
}

/* Each makes the key of a read of an instance, in the order of the MIB's index. */

inline rmonrpc_row_key2_t one_index(instance_reader &from)
{
    return {take_index(from), GET};
}

inline rmonrpc_row_key4_t two_indexes(instance_reader &from)
{
    const int32_t first = take_index(from);
    return {first, take_index(from), GET, 1};
}

inline rmonrpc_row_key3_t two_short_indexes(instance_reader &from)
{
    const int32_t first = take_index(from);
    return {first, take_index(from), GET};
}

/** The addresses of a pair, the one by which the view is ordered first. */
template <int32_t Direction, class Key> void take_pair(instance_reader &from, Key &key)
{
    take_octets(from, Direction == MATRIX_SD ? key.sourceAddress : key.destAddress);
    take_octets(from, Direction == MATRIX_SD ? key.destAddress : key.sourceAddress);
    key.direction = Direction;
}

/* ---- columns ---------------------------------------------------------------------------- */

/** The row of a reply; null when it has none. */
template <class Row> const Row *row_of(const Row &reply)
{
    return reply.status == no_error ? &reply : nullptr;
}

template <class Row> const Row *row_of(const wire::rows<Row> &reply)
{
    return reply.length > 0 ? reply.value : nullptr;
}

/** A record's field as a number. An INTEGER is taken as its 32 bits, so that a negative one stays one in
 * them. */
template <class Number> uint64_t number_of(Number value)
{
    return std::make_unsigned_t<Number>(value);
}

/** The field's name, which most variables share with it. */
template <auto Field> inline constexpr const char *name_of = wire::member_name<Field>.data();

/** A column of a table: Get is the table's read, Index makes its key, Field is the record's field. */
template <auto Get, auto Index, auto Field>
constexpr known_variable column(const char *identifier, const char *name, bool counter)
{
    return {name, identifier, counter, [](probe &agent, variable_instance instance, uint64_t &value) {
                instance_reader from{instance};
                auto key = Index(from);
                bool there = false;
                if (from.good && from.rest.empty()) {
                    auto reply = Get(agent, key);
                    if (const auto *row = row_of(reply)) {
                        value = number_of(row->*Field);
                        there = true;
                    }
                    release(&reply);
                }
                release(&key);
                return there;
            }};
}

template <auto Get, auto Index, auto Field>
constexpr known_variable counter(const char *identifier, const char *name = name_of<Field>)
{
    return column<Get, Index, Field>(identifier, name, true);
}

template <auto Get, auto Index, auto Field>
constexpr known_variable gauge(const char *identifier, const char *name = name_of<Field>)
{
    return column<Get, Index, Field>(identifier, name, false);
}

/** Whether an instance is that of a variable with one only. */
inline bool is_scalar(variable_instance instance)
{
    return instance.size() == 1 && instance[0] == 0;
}

template <auto Get, auto Field, bool Counter> constexpr known_variable scalar(const char *identifier)
{
    return {
        name_of<Field>, identifier, Counter, [](probe &agent, variable_instance instance, uint64_t &value) {
            auto group = Get(agent);
            value = number_of(group.*Field);
            release(&group);
            return is_scalar(instance);
        }};
}

/** A number that is read as such. */
template <auto Get> constexpr known_variable plain_scalar(const char *identifier, const char *name)
{
    return {name, identifier, false, [](probe &agent, variable_instance instance, uint64_t &value) {
                value = number_of(Get(agent));
                return is_scalar(instance);
            }};
}
