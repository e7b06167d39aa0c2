// SPDX-License-Identifier: MIT
/*
 * A control table, described once: which fields a set gives, which of them are
 * fixed while a row works, what a row does when it begins and ends to work.
 * From the description come the set, by the rules of row_status.h, the read, the
 * part of the settings file and what happens when an interface goes away.
 *
 * A description is a type with a name that no other one has:
 *
 *   table, row, request   the stored map from index to row, whose member
 *                         `status` is its state; the record of both procedures
 *   index, status         the record's fields for them
 *   limits                how many rows there may be (row_limits)
 *   fields                a std::tuple of fixed<>(), changeable<>() and
 *                         given_at_rest<>()
 *   start(agent, row)     the row becomes valid: sets it to work, or says why
 *                         not (a request_status). The row stays in its place
 *   stop(agent, row)      the row is valid no more
 *
 * and, where the table needs them:
 *
 *   invalid_request(request)          whether fields that are each in their range do not fit together
 *   assigned(row)                     the fields were taken over
 *   refresh(agent, row)               brings a row up to date before it is shown
 *   show(agent, record, index, row)   fills in what a set does not give
 */
#pragma once

#include "agent/core/row_status.h"
#include "agent/core/state.h"
#include "agent/core/storage.h"
#include "agent/core/table.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <limits>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

/* ---- fields --------------------------------------------------------------------------- */

/** Numbers that a field may have, or the octets of its text. */
struct field_range {
    int64_t min = std::numeric_limits<int64_t>::min();
    int64_t max = std::numeric_limits<int64_t>::max();
    bool zero = true; // whether 0 is one of them
};

/** Numbers from 0 on. */
inline constexpr field_range not_negative{.min = 0};

/** A table's size as it is asked for; -1 leaves it to the agent. */
inline constexpr field_range desired_size{.min = -1, .zero = false};

/** What a set of a valid row may do to a field. */
enum class when_valid {
    fixed,   // nothing: another value refuses the set
    changes, // change it
    stays,   // nothing, but it refuses nothing: the family has a meaning of its own for it
};

/** A record's field and the row's member that keeps it; a member of a member is found by a function object.
 */
template <auto Field, auto Member> struct control_field {
    when_valid rule;
    field_range range;
};

template <auto Field, auto Member> constexpr control_field<Field, Member> fixed(field_range range = {})
{
    return {when_valid::fixed, range};
}

template <auto Field, auto Member> constexpr control_field<Field, Member> changeable(field_range range = {})
{
    return {when_valid::changes, range};
}

template <auto Field, auto Member>
constexpr control_field<Field, Member> given_at_rest(field_range range = {})
{
    return {when_valid::stays, range};
}

/** One kind of field: how a request's value is judged, compared, taken over and shown. */
template <class Number, class Kept> bool in_range(const Number &value, const Kept &, const field_range &range)
{
    const int64_t highest = std::min<int64_t>(range.max, std::numeric_limits<Kept>::max());
    return value >= range.min && value <= highest && (range.zero || value != 0);
}

template <uint32_t Bound>
bool in_range(const wire::text<Bound> &text, const std::string &, const field_range &range)
{
    return is_printable(text_of(text)) && std::cmp_less_equal(text_of(text).size(), range.max);
}

inline bool in_range(const wire::byte_list &list, const std::vector<uint8_t> &, const field_range &range)
{
    return list.length <= range.max;
}

template <class Number, class Kept> bool differs(const Number &value, const Kept &kept)
{
    return static_cast<Kept>(value) != kept;
}

template <uint32_t Bound> bool differs(const wire::text<Bound> &text, const std::string &kept)
{
    return text_of(text) != kept;
}

inline bool differs(const wire::byte_list &list, const std::vector<uint8_t> &kept)
{
    return !std::ranges::equal(std::span(bytes_of(list), list.length), kept);
}

template <class Number, class Kept> void take_field(Kept &kept, const Number &value)
{
    kept = static_cast<Kept>(value);
}

template <uint32_t Bound> void take_field(std::string &kept, const wire::text<Bound> &text)
{
    kept = text_of(text);
}

inline void take_field(std::vector<uint8_t> &kept, const wire::byte_list &list)
{
    kept.assign(bytes_of(list), bytes_of(list) + list.length);
}

template <class Number, class Kept> void show_field(Number &value, const Kept &kept)
{
    value = static_cast<Number>(kept);
}

template <uint32_t Bound> void show_field(wire::text<Bound> &text, const std::string &kept)
{
    set_text(text, kept);
}

inline void show_field(wire::byte_list &list, const std::vector<uint8_t> &kept)
{
    set_bytes(list, kept);
}

/* ---- the set ---------------------------------------------------------------------------- */

template <class Table> using request_of = typename Table::request;
template <class Table> using row_of_table = typename Table::row;

/** Whether some value of the request is one that no row may have. */
template <class Table> bool is_invalid(const request_of<Table> &request)
{
    const bool in_ranges = std::apply(
        [&]<auto... Field, auto... Member>(const control_field<Field, Member> &...field) {
            const row_of_table<Table> row;
            return (in_range(request.*Field, std::invoke(Member, row), field.range) && ...);
        },
        Table::fields);
    if constexpr (requires { Table::invalid_request(request); })
        return !in_ranges || Table::invalid_request(request);
    else
        return !in_ranges;
}

template <class Table> bool changes_fixed(const row_of_table<Table> &row, const request_of<Table> &request)
{
    return std::apply(
        [&]<auto... Field, auto... Member>(const control_field<Field, Member> &...field) {
            return (
                (field.rule == when_valid::fixed && differs(request.*Field, std::invoke(Member, row)))
                || ...);
        },
        Table::fields);
}

template <class Table> void assign(row_of_table<Table> &row, const request_of<Table> &request)
{
    const bool working = row.status == row_status::valid;
    std::apply(
        [&]<auto... Field, auto... Member>(const control_field<Field, Member> &...field) {
            ((working && field.rule == when_valid::stays
                  ? void()
                  : take_field(std::invoke(Member, row), request.*Field)),
             ...);
        },
        Table::fields);
    if constexpr (requires { Table::assigned(row); })
        Table::assigned(row);
}

template <class Table> int32_t
create_row(std::map<int32_t, row_of_table<Table>> &rows, int32_t index, const request_of<Table> &request)
{
    const row_limits &limits = Table::limits;
    if (rows.contains(index) || index < limits.first || index > limits.last || is_invalid<Table>(request))
        return bad_value;
    if (rows.size() >= limits.max)
        return gen_err;
    assign<Table>(rows[index], request);
    return no_error;
}

template <class Row>
concept has_source = requires(Row row)
{
    row.data_source;
};
template <class Row>
concept has_work = requires(Row row)
{
    row.work;
};
template <class Row>
concept has_counts = requires(Row row)
{
    row.counts;
};

/** Rows that count the frames of their data source; what they count is their own, and on the heap. */
template <class Row>
concept counts_frames = has_source<Row> &&(has_work<Row> || has_counts<Row>);

/** The table's name: that of the record which sets its rows, "host_ctl". */
template <class Request> consteval std::string_view table_name()
{
    std::string_view name = __PRETTY_FUNCTION__;
    name = name.substr(name.find("rmonrpc_") + std::string_view("rmonrpc_").size());
    return name.substr(0, name.find("_t"));
}

/** Says so where a row became valid whose data source has no frames for it (capture/probe.cpp). */
void tell_of_silence(const probe &agent, int32_t data_source, std::string_view table, int32_t index);

/** A row becomes valid, or changes while it is valid. */
template <class Table>
int32_t set_to_work(probe &agent, row_of_table<Table> &row, int32_t index, const request_of<Table> &request)
{
    if (row.status == row_status::valid) {
        if (changes_fixed<Table>(row, request))
            return bad_value;
        assign<Table>(row, request);
        return no_error;
    }
    // It starts where it stays, so that what it sets to work can point to it.
    row_of_table<Table> before = row;
    assign<Table>(row, request);
    const int32_t error = Table::start(agent, row);
    if (error != no_error) {
        row = std::move(before);
        return error;
    }
    row.status = row_status::valid;
    if constexpr (counts_frames<row_of_table<Table>>)
        tell_of_silence(agent, row.data_source, table_name<request_of<Table>>(), index);
    return no_error;
}

/** Ends the work of a row that does some. */
template <class Table> void set_to_rest(probe &agent, row_of_table<Table> &row)
{
    if (row.status == row_status::valid)
        Table::stop(agent, row);
    row.status = row_status::under_creation;
}

/** Carries out a set on the rows of a control table; the answer is a request_status. */
template <class Table> int32_t set_row(
    probe &agent,
    std::map<int32_t, row_of_table<Table>> &rows,
    int32_t index,
    const request_of<Table> &request)
{
    const auto status = static_cast<row_status>(request.*Table::status);
    if (status == row_status::create_request)
        return create_row<Table>(rows, index, request);
    if (status != row_status::valid && status != row_status::under_creation && status != row_status::invalid)
        return bad_value;
    const auto found = rows.find(index);
    if (found == rows.end())
        return no_such_name;
    row_of_table<Table> &row = found->second;
    if (status == row_status::invalid) {
        set_to_rest<Table>(agent, row);
        rows.erase(found);
        return no_error;
    }
    if (is_invalid<Table>(request))
        return bad_value;
    if (status == row_status::valid)
        return set_to_work<Table>(agent, row, index, request);
    set_to_rest<Table>(agent, row);
    assign<Table>(row, request);
    return no_error;
}

template <class Table> int32_t index_of(const request_of<Table> &request)
{
    return signed_index(request.*Table::index);
}

template <class Table> typename Table::table &rows_of(probe &agent)
{
    return storage<typename Table::table>(agent);
}

/** What a set gives, with the index and the row's state. */
template <class Table>
void describe_row(request_of<Table> &record, int32_t index, const row_of_table<Table> &row)
{
    show_field(record.*Table::index, index);
    record.*Table::status = static_cast<int32_t>(row.status);
    std::apply(
        [&]<auto... Field, auto... Member>(const control_field<Field, Member> &...) {
            (show_field(record.*Field, std::invoke(Member, row)), ...);
        },
        Table::fields);
}

/** Notes for the journal how a row is now, or that it is gone. What changes one otherwise than by a set says
 * so. */
template <class Table> void note_control(probe &agent, int32_t index)
{
    if (!notes_rows(agent))
        return;
    auto &rows = rows_of<Table>(agent);
    const auto found = rows.find(index);
    request_of<Table> record{};
    show_field(record.*Table::index, index);
    if (found == rows.end())
        return note_gone(agent, record);
    describe_row<Table>(record, index, found->second);
    note_made_row(agent, record);
}

/** The set of a control table. */
template <class Table> int32_t set_control(probe &agent, const request_of<Table> &request)
{
    const int32_t index = index_of<Table>(request);
    const int32_t error = set_row<Table>(agent, rows_of<Table>(agent), index, request);
    if (error == no_error)
        note_control<Table>(agent, index);
    return error;
}

/* ---- the read --------------------------------------------------------------------------- */

/** The read of a control table. */
template <class Table> request_of<Table> get_control(probe &agent, const rmonrpc_row_key2_t &key)
{
    auto &rows = rows_of<Table>(agent);
    const auto found = find_row(rows, key.index, key.getType);
    if (found == rows.end())
        return no_such_row<request_of<Table>>();
    if constexpr (requires { Table::refresh(agent, found->second); })
        Table::refresh(agent, found->second);
    request_of<Table> reply{};
    describe_row<Table>(reply, found->first, found->second);
    if constexpr (requires { Table::show(agent, reply, found->first, found->second); })
        Table::show(agent, reply, found->first, found->second);
    return reply;
}

/* ---- interfaces ----------------------------------------------------------------------------- */

/** Removes the working rows of an interface that went away; a row has a member `data_source`. */
template <class Table> void remove_rows_on(probe &agent, int32_t index)
{
    auto &rows = rows_of<Table>(agent);
    for (auto next = rows.begin(); next != rows.end();) {
        const auto found = next++;
        if (found->second.status != row_status::valid || found->second.data_source != index)
            continue;
        const int32_t gone = found->first;
        set_to_rest<Table>(agent, found->second);
        rows.erase(found);
        note_control<Table>(agent, gone);
    }
}

/* ---- settings --------------------------------------------------------------------------------- */

/**
 * Makes a row again as it was when it was kept; one that can't work now stays
 * under creation. A request_status: not 0 when there is no row.
 */
template <class Record> int32_t
restore_row(probe &agent, Record record, int32_t Record::*status, int32_t (*set)(probe &, const Record &))
{
    const int32_t was = record.*status;
    record.*status = static_cast<int32_t>(row_status::create_request);
    const int32_t made = set(agent, record);
    if (made == no_error && was == static_cast<int32_t>(row_status::valid)) {
        record.*status = was;
        set(agent, record);
    }
    return made;
}

/** Its part of the settings file. Set is the table's set, where that does more than set_control(). */
template <class Table, auto Set = set_control<Table>> constexpr state_part keep_rows(const char *name)
{
    using Record = request_of<Table>;
    constexpr const wire::layout *layout = &wire::layout_of<Record>;
    return {
        name,
        layout,
        [](probe &agent, state_writer &writer) {
            for (const auto &[index, row] : rows_of<Table>(agent)) {
                Record record{};
                describe_row<Table>(record, index, row);
                write_made_record(writer, record);
            }
        },
        [](probe &agent) {
            auto &rows = rows_of<Table>(agent);
            while (!rows.empty()) {
                Record record{};
                describe_row<Table>(record, rows.begin()->first, rows.begin()->second);
                record.*Table::status = static_cast<int32_t>(row_status::invalid);
                const std::size_t before = rows.size();
                Set(agent, record);
                release_written(&record, *layout);
                if (rows.size() == before)
                    return; // a row that stands fast
            }
        },
        [](probe &agent, const void *from) {
            return restore_row(agent, *static_cast<const Record *>(from), Table::status, Set) == no_error;
        },
        [](const void *record) {
            return key_of_numbers(index_of<Table>(*static_cast<const Record *>(record)));
        }};
}
