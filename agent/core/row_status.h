/*
 * The row-status rules of RFC 2819 (EntryStatus), by which the rows of all
 * control tables are made, changed and removed.
 *
 * What a set asks for, by the status that it carries:
 *
 *   createRequest   makes a new row, which is under creation from then on; a row
 *                   that is there already refuses it
 *   underCreation   changes a row; a valid one stops its work
 *   valid           changes a row and sets it to work; a row that works already
 *                   goes on, and refuses changes of the fields that are fixed
 *                   while it is valid
 *   invalid         removes a row
 *
 * All but createRequest need the row to exist. A set that is refused changes
 * nothing.
 */
#pragma once

#include "agent/core/reply.h"

#include <cstddef>
#include <map>
#include <string_view>
#include <utility>

struct probe;

enum class row_status : int32_t {
    valid = 1,
    create_request = 2,
    under_creation = 3,
    invalid = 4,
};

/** Indexes of control rows (RFC 2819: 1..65535). */
inline constexpr int32_t first_control_index = 1;
inline constexpr int32_t last_control_index = 65535;

/** Rows of one control table. */
inline constexpr std::size_t most_control_rows = 1000;

/** What bounds the rows of a table. */
struct row_limits {
    int32_t first = first_control_index;
    int32_t last = last_control_index;
    std::size_t most = most_control_rows;
};

/** Rows that learn may hold much each, so that there are fewer of them. */
inline constexpr row_limits learning_rows{first_control_index, last_control_index, 100};

/** What a control table adds to the rules. Row has a member `row_status status`. */
template <class Row, class Request> struct row_rules {
    /** Whether some value of the request is one that no row may have. */
    bool (*nonsense)(const Request &request);
    /** Whether the request changes a field that is fixed while the row is valid. */
    bool (*changes_fixed)(const Row &row, const Request &request);
    /** Takes over the fields that a set may give. */
    void (*assign)(Row &row, const Request &request);
    /** The row becomes valid: sets it to work, or says why not (a request_status). The row stays in its
     * place. */
    int32_t (*start)(probe &agent, Row &row);
    /** The row is valid no more. */
    void (*stop)(probe &agent, Row &row);
};

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

/** Says so where a row became valid whose data source has no frames for it (capture/sources.cpp). */
void tell_of_silence(const probe &agent, int32_t data_source, std::string_view table, int32_t index);

/** Carries out a set on a control table; the answer is a request_status. */
template <class Row, class Request> int32_t set_row(
    probe &agent,
    std::map<int32_t, Row> &table,
    int32_t index,
    int32_t wanted,
    const Request &request,
    const row_rules<Row, Request> &rules,
    const row_limits &limits = {})
{
    const auto found = table.find(index);
    const auto status = static_cast<row_status>(wanted);

    if (status == row_status::create_request) {
        if (found != table.end() || index < limits.first || index > limits.last || rules.nonsense(request))
            return bad_value;
        if (table.size() >= limits.most)
            return gen_err;
        Row &row = table[index];
        row.status = row_status::under_creation;
        rules.assign(row, request);
        return no_error;
    }

    if (status != row_status::valid && status != row_status::under_creation && status != row_status::invalid)
        return bad_value;
    if (found == table.end())
        return no_such_name;
    Row &row = found->second;
    const bool was_valid = row.status == row_status::valid;

    if (status == row_status::invalid) {
        if (was_valid)
            rules.stop(agent, row);
        table.erase(found);
        return no_error;
    }

    if (rules.nonsense(request))
        return bad_value;
    if (status == row_status::under_creation) {
        if (was_valid)
            rules.stop(agent, row);
        row.status = row_status::under_creation;
        rules.assign(row, request);
        return no_error;
    }

    if (was_valid) {
        if (rules.changes_fixed(row, request))
            return bad_value;
        rules.assign(row, request);
        return no_error;
    }
    // It starts where it stays, so that what it sets to work can point to it.
    Row before = row;
    rules.assign(row, request);
    const int32_t error = rules.start(agent, row);
    if (error != no_error) {
        row = std::move(before);
        return error;
    }
    row.status = row_status::valid;
    if constexpr (counts_frames<Row>)
        tell_of_silence(agent, row.data_source, table_name<Request>(), index);
    return no_error;
}

/** Removes the working rows of an interface that went away; Row has a member `int32_t data_source`. */
template <class Row, class Request> void remove_rows_on(
    probe &agent, std::map<int32_t, Row> &table, int32_t index, const row_rules<Row, Request> &rules)
{
    for (auto next = table.begin(); next != table.end();) {
        const auto found = next++;
        if (found->second.status != row_status::valid || found->second.data_source != index)
            continue;
        rules.stop(agent, found->second);
        table.erase(found);
    }
}
