// SPDX-License-Identifier: MIT
/*
 * What the handlers of the higher-layer hosts and the higher-layer matrix have
 * in common: the rules of their control rows, and how their rows are read.
 */
#pragma once

#include "agent/core/bulk.h"
#include "agent/capture/counting.h"
#include "agent/rmon2/hl_tables.h"
#include "agent/core/learned_sift.h"
#include "agent/capture/probe.h"
#include "agent/capture/protocols.h"

#include <array>
#include <cstddef>
#include <memory>
#include <type_traits>

/** The table that a key's applicationLayer means. */
template <class Counts> auto &layer_of(Counts &counts, int32_t application_layer)
{
    return application_layer == APPLICATION_LAYER ? counts.application : counts.network;
}

/* ---- counting --------------------------------------------------------------------------- */

/**
 * Counts a frame in each of its layers that are counted: begin(table, application) begins to look for the
 * layer's keys, count(table, keys) counts and says whether there was room. A table drops a frame once,
 * however many of its layers found none. The tables are far larger than the processor's cache, so several
 * layers are begun before the first one is counted.
 */
template <protocol_config protocol::*On, class Counts, class Begin, class Count>
void count_layers(Counts &counts, const frame &seen, Begin begin, Count count)
{
    const protocol_directory &directory = counts.agent->protocols;
    const protocol *network = find_protocol(directory, seen.network_index);
    if (!network || seen.from.length == 0)
        return;

    using table = typename Counts::table;
    struct layer {
        table *in;
        std::invoke_result_t<Begin, table &, int32_t> keys;
    };
    std::array<layer, 4> begun;
    std::size_t used = 0;
    bool network_full = false, application_full = false;
    const auto count_begun = [&] {
        for (std::size_t i = 0; i < used; i++)
            if (!count(*begun[i].in, begun[i].keys))
                (begun[i].in == &counts.network ? network_full : application_full) = true;
        used = 0;
    };
    const auto begin_layer = [&](table &in, int32_t application) {
        begun[used++] = {&in, begin(in, application)};
        if (used == begun.size())
            count_begun();
    };

    if (network->*On == protocol_config::on)
        begin_layer(counts.network, 0);
    const protocol *above = find_protocol(directory, seen.application_index);
    for (; above && above != network; above = find_protocol(directory, above->parent)) {
        if (above->*On == protocol_config::on)
            begin_layer(counts.application, above->local_index);
    }
    count_begun();
    counts.network.dropped_frames += network_full;
    counts.application.dropped_frames += application_full;
}

/* ---- the rules of the control rows ------------------------------------------------------ */

/** Rows that a table keeps: those of its counted protocols. On is what a protocol says of the group. */
template <protocol_config protocol::*On>
bool is_counted(const protocol_directory &directory, int32_t local_index)
{
    const protocol *found = find_protocol(directory, local_index);
    return found && found->active && found->*On == protocol_config::on;
}

template <protocol_config protocol::*On, class Counts>
void sift_counts(Counts &counts, uint32_t network, uint32_t application)
{
    const protocol_directory &directory = counts.agent->protocols;
    sift_learned(counts.network.rows, network, [&](const auto &key) {
        return is_counted<On>(directory, key.network);
    });
    sift_learned(counts.application.rows, application, [&](const auto &key) {
        return find_protocol(directory, key.network) && is_counted<On>(directory, key.application);
    });
}

/** The sizes may change while the row works; rows that are too many then go. */
template <protocol_config protocol::*On, class Row> void hl_resize(Row &row)
{
    const uint32_t network = granted_rows(row.desired_network);
    const uint32_t application = granted_rows(row.desired_application);
    if (row.work
        && (row.work->network.rows.max_rows != network || row.work->application.rows.max_rows != application))
        sift_counts<On>(*row.work, network, application);
}

template <count_function Count, class Row> int32_t hl_start(probe &agent, Row &row)
{
    row.work = std::make_shared<typename decltype(row.work)::element_type>();
    row.work->agent = &agent;
    row.work->network.rows.late = row.work->application.rows.late = &agent.sources.late;
    row.work->network.rows.max_rows = granted_rows(row.desired_network);
    row.work->application.rows.max_rows = granted_rows(row.desired_application);
    return start_counting(agent, row, Count);
}

/** The fields of a control record that tell of one layer's table. */
template <class Request> struct hl_layer_fields {
    uint32_t Request::*dropped_frames;
    uint32_t Request::*inserts;
    uint32_t Request::*deletes;
};

template <class Request, class Table>
void show_layer(Request &reply, const hl_layer_fields<Request> &fields, const Table &table)
{
    reply.*fields.dropped_frames = table.dropped_frames;
    reply.*fields.inserts = table.rows.inserts;
    reply.*fields.deletes = table.rows.deletes;
}

/**
 * The description of the control table of a kind (core/control_table.h). The
 * kind says what differs, in a type with a name that no other one has:
 *
 *   counts, table, row, request, index, status, fields   as of a control table
 *   network, application     the record's fields that tell of each layer's table
 *   on                       what a protocol says of the group
 *   count                    counts a frame
 *   asked_key, control       the record of a read, and its field for the control row's index
 *   key_of(asked)            the key of the row that is asked for
 *   answer(control, time_mark, key, row)   the row of a reply
 */
template <class Kind> struct hl_control : Kind {
    using row = typename Kind::row;
    static constexpr row_limits limits = learning_rows;
    static constexpr auto assigned = hl_resize<Kind::on, row>;
    static constexpr auto start = hl_start<Kind::count, row>;
    static constexpr auto stop = stop_counting<Kind::count, typename Kind::counts>;
    static constexpr auto refresh = catch_up_row<row>;

    static void show(probe &, typename Kind::request &reply, int32_t, const row &shown)
    {
        if (!shown.work)
            return;
        show_layer(reply, Kind::network, shown.work->network);
        show_layer(reply, Kind::application, shown.work->application);
    }
};

/** Removes what the protocols, as they are now, count no more. */
template <class Kind> void hl_sift(probe &agent)
{
    for (auto &[index, row] : storage<typename Kind::table>(agent))
        if (row.work)
            sift_counts<Kind::on>(
                *row.work, row.work->network.rows.max_rows, row.work->application.rows.max_rows);
}

/** The row that is asked for never gives way to another one, or does again. A request_status. */
template <class Kind, bool Keep> int32_t hl_keep(probe &agent, const typename Kind::asked_key &asked)
{
    auto &controls = storage<typename Kind::table>(agent);
    const auto found = controls.find(asked.*Kind::control);
    if (found == controls.end() || !found->second.work)
        return no_such_name;
    auto &rows = layer_of(*found->second.work, asked.applicationLayer).rows;
    const uint32_t place = find_learned(rows, Kind::key_of(asked));
    if (place == no_entry)
        return no_such_name;
    keep_learned(rows, place, Keep);
    return no_error;
}

/* ---- reading ------------------------------------------------------------------------------ */

/**
 * The rows that are asked for, in the order of less, which view(table) has. A
 * row's last change must not lie before the time mark.
 */
template <class Kind, class View, class Less>
auto hl_read(probe &agent, const typename Kind::asked_key &asked, View view, Less less)
{
    catch_up_all(agent);
    auto &controls = storage<typename Kind::table>(agent);
    const int32_t control = asked.*Kind::control;
    const auto key = Kind::key_of(asked);
    const std::size_t wanted = rows_wanted(asked.getType, asked.count);
    std::vector<decltype(Kind::answer(control, asked.timeMark, key, {}))> rows;
    const auto append = [&](int32_t at, const auto &entry) {
        if (entry.row.changed < asked.timeMark)
            return true;
        if (rows.size() < wanted)
            rows.push_back(Kind::answer(at, asked.timeMark, entry.key, entry.row));
        return rows.size() < wanted;
    };
    if (asked.getType == GET) {
        const auto found = controls.find(control);
        if (found == controls.end() || !found->second.work)
            return reply_rows(rows);
        auto &learned = layer_of(*found->second.work, asked.applicationLayer).rows;
        const uint32_t index = find_learned(learned, key);
        if (index != no_entry)
            append(control, learned.entries[index]);
    } else if (asked.getType == GETNEXT || asked.getType == GETBULK) {
        using row = typename Kind::row;
        using learned = decltype(Kind::counts::network.rows);
        visit_after(
            controls, control, key,
            [&](row &at) -> learned * {
                return at.work ? &layer_of(*at.work, asked.applicationLayer).rows : nullptr;
            },
            [&](row &at) -> ordered_view & { return view(layer_of(*at.work, asked.applicationLayer)); }, less,
            append);
    }
    return reply_rows(rows);
}
