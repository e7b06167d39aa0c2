// SPDX-License-Identifier: MIT
/*
 * The vocabulary of the wire records, and the plan by which a record travels.
 *
 * A record is a plain struct whose members stand in wire order and are of
 * these types:
 *
 *   int32_t, uint32_t     XDR int / unsigned int (also long / unsigned long: four bytes)
 *   uint64_t              XDR unsigned hyper
 *   wire::text<N>         XDR string of at most N bytes; text<> has no bound
 *   wire::byte_list       count, then one four-byte unit per byte
 *   wire::uchars<N>       N bytes, one four-byte unit each, zero-extended
 *   wire::chars<N>        N characters, one four-byte unit each, sign-extended
 *   wire::rows<R>         count, then that many records R
 *   wire::repeated<R, N>  exactly N records R
 *   any other struct      a nested record
 *
 * From the members the compiler works out the record's layout: a list of
 * steps in which neighbouring fields of fixed size, nested records included,
 * form runs. rmonrpc_xdr.cpp carries the steps out. Bytes never travel packed
 * (XDR opaque): the agent's interface sends a unit for each.
 */
#pragma once

#include "rmon/rpc/members.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace wire {

inline constexpr uint32_t unbounded = UINT32_MAX;

/** A zero-terminated text. Owned by the reply in which it was decoded; null travels as "". */
template <uint32_t Bound = unbounded> struct text {
    const char *value;
};

/**
 * A list of bytes. Short ones (every address and most identifiers) stay
 * inside, longer ones own a block of the C heap when they were decoded and
 * borrow the caller's bytes when they were made by list_of().
 */
struct byte_list {
    static constexpr uint32_t inside = 16;
    uint32_t length;
    union {
        uint8_t small[inside];
        uint8_t *large;
    };
};

inline const uint8_t *bytes_of(const byte_list &list)
{
    return list.length <= byte_list::inside ? list.small : list.large;
}

/** Whether two lists are the same; the last byte, in which neighbours mostly differ, is looked at first. */
inline bool same_bytes(const byte_list &one, const byte_list &other)
{
    const uint32_t length = one.length;
    if (length != other.length)
        return false;
    return length == 0
           || (bytes_of(one)[length - 1] == bytes_of(other)[length - 1]
               && std::memcmp(bytes_of(one), bytes_of(other), length) == 0);
}

/** A list for a request; the bytes must outlive it. */
inline byte_list list_of(const uint8_t *bytes, uint32_t length)
{
    byte_list list{};
    list.length = length;
    if (length > byte_list::inside)
        list.large = const_cast<uint8_t *>(bytes);
    else if (length)
        std::memcpy(list.small, bytes, length);
    return list;
}

template <uint32_t N> struct uchars {
    static constexpr uint32_t size = N;
    uint8_t value[N];
};

template <uint32_t N> struct chars {
    static constexpr uint32_t size = N;
    char value[N];
};

template <uint32_t N> bool same_bytes(const uchars<N> &one, const uchars<N> &other)
{
    return std::memcmp(one.value, other.value, N) == 0;
}

template <uint32_t N> bool same_bytes(const chars<N> &one, const chars<N> &other)
{
    return std::memcmp(one.value, other.value, N) == 0;
}

/** The memory of rows that were decoded; see rmonrpc_xdr.cpp. */
struct row_block;

/**
 * A reply's rows, owned by the reply. Decoded ones lie in a block of theirs, and
 * so do their texts. Where there is none, value and each text in it is a block
 * of the C heap.
 */
template <class Row> struct rows {
    uint32_t length;
    Row *value;
    row_block *block = nullptr;
};

template <class Record, uint32_t N> struct repeated {
    static constexpr uint32_t size = N;
    Record value[N];
};

/** The record of a procedure that takes no argument. */
struct none {};

enum class kind : uint8_t {
    run,   // the next `count` steps are of fixed size; `wire` bytes, see add_open() for which
    word,  // `count` neighbouring 32-bit integers
    hyper, // `count` neighbouring 64-bit integers
    uchars,
    chars, // `count` units
    text,  // the open fields: a count, then at most `count` bytes;
    bytes, // any number of units;
    rows,  // any number of records of layout `element`
};

struct layout;

/**
 * Decodes rows from the bytes between in and end, at most so many, and moves in
 * behind them; how many there were. See straight.h.
 */
using straight_decoder = uint32_t (*)(void *rows, uint32_t most, const uint8_t *&in, const uint8_t *end);

struct step {
    wire::kind kind;
    uint32_t offset; // of the field in the record
    uint32_t count;
    uint32_t wire;
    const layout *element;
    straight_decoder straight; // of the elements, null where they have none
};

struct layout {
    const step *steps;
    uint32_t count;
    uint32_t size;  // of the record in memory
    uint32_t wire;  // bytes on the wire of a record of fixed size, 0 for others
    uint32_t least; // bytes on the wire of a record all of whose open fields are empty
    bool owns;      // a decoded record may own heap blocks
};

/** Holds the layout of a record; defined below, needed above by records with rows. */
template <class Record> struct layout_holder;

/* ---- how a layout is worked out ---------------------------------------- */

/** A longer run is split, so that one read's worth of it fits a small buffer on the stack. */
inline constexpr uint32_t max_run = 4096;

struct draft {
    static constexpr uint32_t room = 1024;
    std::array<step, room> steps{};
    uint32_t count = 0;
    uint32_t run = room; // index of the open run, room when there is none
};

constexpr uint32_t unit_size(kind k)
{
    return k == kind::hyper ? 8 : 4;
}

constexpr void add_to_run(draft &plan, uint32_t wire)
{
    if (plan.run == draft::room || plan.steps[plan.run].wire + wire > max_run) {
        plan.run = plan.count++;
        plan.steps[plan.run] = {kind::run, 0, 0, 0, nullptr, nullptr};
    }
    plan.steps[plan.run].wire += wire;
}

constexpr void add_fixed(draft &plan, kind k, uint32_t offset, uint32_t count)
{
    // A vector longer than a run goes on in the next one.
    for (constexpr uint32_t max_units = max_run / 4; count > max_units;
         offset += max_units, count -= max_units)
        add_fixed(plan, k, offset, max_units);

    add_to_run(plan, unit_size(k) * count);

    step &last = plan.steps[plan.count - 1];
    const bool scalar = k == kind::word || k == kind::hyper;
    if (scalar && last.kind == k && last.offset + last.count * unit_size(k) == offset) {
        last.count += count;
        return;
    }
    plan.steps[plan.count++] = {k, offset, count, 0, nullptr, nullptr};
    plan.steps[plan.run].count++;
}

/*
 * The count of an open field is read with the fixed fields that stand before
 * it: one request for space and one pass serve them all, and what is left to
 * be read is the field's own content. So the count adds its four bytes to the
 * run, the run ends there, and the next fixed field begins another one:
 *
 *     struct some_row {               steps of its layout
 *         int32_t status;             run, 2 steps, 16 bytes: status, counter, the count of owner
 *         uint64_t counter;             word   status
 *         wire::text<255> owner;        hyper  counter
 *         int32_t row_status;         text   owner: as many bytes as the count says, and padding
 *         wire::byte_list address;    run, 1 step, 8 bytes: row_status, the count of address
 *     };                                word   row_status
 *                                     bytes  address
 *
 * An open field with none of fixed size before it has a run of its count alone:
 * 0 steps, 4 bytes.
 */
constexpr void add_open(
    draft &plan,
    kind k,
    uint32_t offset,
    uint32_t count,
    const layout *element = nullptr,
    straight_decoder straight = nullptr)
{
    add_to_run(plan, unit_size(kind::word));
    plan.run = draft::room;
    plan.steps[plan.count++] = {k, offset, count, 0, element, straight};
}

/** How a field of type Field is added; the general case is a nested record. */
template <class Field> struct field_plan;

template <class... Member>
constexpr void add_members(draft &plan, const uint32_t *offset, uint32_t base, type_list<Member...>)
{
    (field_plan<Member>::add(plan, base + *offset++), ...);
}

template <class Field> struct field_plan {
    static_assert(std::is_aggregate_v<Field> && std::is_standard_layout_v<Field>);
    static_assert(
        std::is_empty_v<Field> || aligned(member_offsets<Field>.back(), alignof(Field)) == sizeof(Field),
        "the record has padding that the rule of the ABI does not give");

    // cppcheck-suppress duplInheritedMember ; the specializations below are others
    static constexpr void add(draft &plan, uint32_t offset)
    {
        add_members(plan, member_offsets<Field>.data(), offset, member_types<Field>{});
    }
};

template <kind Kind, uint32_t Count> struct fixed_plan {
    static constexpr void add(draft &plan, uint32_t offset) { add_fixed(plan, Kind, offset, Count); }
};

template <> struct field_plan<int32_t> : fixed_plan<kind::word, 1> {
};
template <> struct field_plan<uint32_t> : fixed_plan<kind::word, 1> {
};
template <> struct field_plan<uint64_t> : fixed_plan<kind::hyper, 1> {
};
template <uint32_t N> struct field_plan<uchars<N>> : fixed_plan<kind::uchars, N> {
};
template <uint32_t N> struct field_plan<chars<N>> : fixed_plan<kind::chars, N> {
};

template <uint32_t Bound> struct field_plan<text<Bound>> {
    static constexpr void add(draft &plan, uint32_t offset) { add_open(plan, kind::text, offset, Bound); }
};

template <> struct field_plan<byte_list> {
    static constexpr void add(draft &plan, uint32_t offset)
    {
        add_open(plan, kind::bytes, offset, unbounded);
    }
};

/** Bytes that an open field brings in one piece before more memory is asked for. */
inline constexpr uint32_t first_piece = 4096;

/**
 * A reply takes at most four times its bytes on the wire, whatever it holds: a
 * row at most three times what its fields of fixed size and its counts take, a
 * text in it no more than its own bytes.
 */
template <class Row> consteval bool is_compact()
{
    const layout &row = layout_holder<Row>::value;
    for (uint32_t i = 0; i < row.count; i++)
        if (row.steps[i].kind == kind::text && row.steps[i].count > first_piece)
            return false;
    return row.size <= 3 * row.least;
}

template <class Row>
uint32_t decode_straight(void *rows, uint32_t most, const uint8_t *&in, const uint8_t *end);

/**
 * A row is unrolled when one read brings several of them, as it does of all but
 * the widest, and when nothing in it has a memory of its own.
 */
template <class Row> consteval straight_decoder straight_decoder_of()
{
    constexpr uint32_t widest = 16384;
    const layout &row = layout_holder<Row>::value;
    for (uint32_t i = 0; i < row.count; i++)
        if (row.steps[i].kind == kind::text || row.steps[i].kind == kind::rows)
            return nullptr;
    return row.least > widest ? nullptr : decode_straight<Row>;
}

template <class Row> struct field_plan<rows<Row>> {
    static constexpr void add(draft &plan, uint32_t offset)
    {
        static_assert(is_compact<Row>());
        add_open(plan, kind::rows, offset, unbounded, &layout_holder<Row>::value, straight_decoder_of<Row>());
    }
};

template <class Record, uint32_t N> struct field_plan<repeated<Record, N>> {
    static constexpr void add(draft &plan, uint32_t offset)
    {
        for (uint32_t i = 0; i < N; i++)
            field_plan<Record>::add(plan, offset + i * static_cast<uint32_t>(sizeof(Record)));
    }
};

template <class Record> consteval draft draft_of()
{
    draft plan;
    field_plan<Record>::add(plan, 0);
    return plan;
}

template <class Record> inline constexpr auto steps_of = [] {
    constexpr draft plan = draft_of<Record>();
    std::array<step, plan.count> steps{};
    for (uint32_t i = 0; i < plan.count; i++)
        steps[i] = plan.steps[i];
    return steps;
}();

constexpr layout layout_from(const step *steps, std::size_t count, std::size_t size)
{
    layout made{steps, static_cast<uint32_t>(count), static_cast<uint32_t>(size), 0, 0, false};
    for (std::size_t i = 0; i < count; i++) {
        made.least += steps[i].wire;
        made.owns |= steps[i].kind >= kind::text;
    }
    made.wire = made.owns ? 0 : made.least;
    return made;
}

template <class Record> struct layout_holder {
    static constexpr layout value =
        layout_from(steps_of<Record>.data(), steps_of<Record>.size(), sizeof(Record));
};

/** The layout by which records of this type travel. */
template <class Record> inline constexpr const layout &layout_of = layout_holder<Record>::value;

/** Bytes on the wire of a record whose size is fixed. */
template <class Record> inline constexpr uint32_t wire_size = layout_of<Record>.wire;

} // namespace wire
