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
    row.work->network.rows.max_rows = granted_rows(row.desired_network);
    row.work->application.rows.max_rows = granted_rows(row.desired_application);
    return start_counting(agent, row, Count);
}

template <count_function Count, class Row> void hl_stop(probe &agent, Row &row)
{
    stop_counting<Count>(agent, row);
}

/** Removes what the protocols, as they are now, count no more. */
template <protocol_config protocol::*On, class Counts>
void hl_sift(std::map<int32_t, hl_row<Counts>> &controls)
{
    for (auto &[index, row] : controls)
        if (row.work)
            sift_counts<On>(*row.work, row.work->network.rows.max_rows, row.work->application.rows.max_rows);
}

/** The row of this key never gives way to another one, or does again. A request_status. */
template <class Counts, class Key> int32_t hl_keep(
    std::map<int32_t, hl_row<Counts>> &controls,
    int32_t index,
    int32_t application_layer,
    const Key &key,
    bool keep)
{
    const auto found = controls.find(index);
    if (found == controls.end() || !found->second.work)
        return no_such_name;
    auto &rows = layer_of(*found->second.work, application_layer).rows;
    const uint32_t place = find_learned(rows, key);
    if (place == no_entry)
        return no_such_name;
    keep_learned(rows, place, keep);
    return no_error;
}

/* ---- reading ------------------------------------------------------------------------------ */

/** Has the rows' answers appended for a read; a row's last change must not lie before the time mark. */
template <class Row, class Key, class View, class Less, class Append> void read_learned(
    std::map<int32_t, Row> &controls,
    int32_t control,
    const Key &key,
    int32_t layer,
    int32_t getType,
    uint32_t time_mark,
    View view,
    Less less,
    Append append)
{
    if (getType == GET) {
        const auto found = controls.find(control);
        if (found == controls.end() || !found->second.work)
            return;
        auto &rows = layer_of(*found->second.work, layer).rows;
        const uint32_t index = find_learned(rows, key);
        if (index != no_entry && rows.entries[index].row.changed >= time_mark)
            append(control, rows.entries[index]);
        return;
    }
    if (getType != GETNEXT && getType != GETBULK)
        return;
    using learned = decltype(controls.begin()->second.work->network.rows);
    visit_after(
        controls, control, key,
        [&](Row &row) -> learned * { return row.work ? &layer_of(*row.work, layer).rows : nullptr; },
        [&](Row &row) -> ordered_view & { return view(layer_of(*row.work, layer)); }, less,
        [&](int32_t at, auto &entry) { return entry.row.changed < time_mark || append(at, entry); });
}
