// SPDX-License-Identifier: MIT
/*
 * What the differentiated-services tables with learned rows share: their counts
 * have members `work`, `learned` (whose rows have a member `changed`) and one
 * or two orders.
 */
#pragma once

#include "agent/dsmon/rules.h"

#include <algorithm>

template <class Counts> void begin_learned(probe &, const dsmon_row<Counts> &row, Counts &counts)
{
    counts.learned.max_rows = granted_rows(row.desired);
}

template <class Counts> void forget_learned(Counts &counts)
{
    forget_all(counts.learned);
}

/** The row of this key, which changes now; null and a dropped frame when there is no room. */
template <class Key, class Row> Row *
learn_changed(dsmon_work &work, learned_table<Key, Row> &table, const tagged_key<Key> &key, const frame &seen)
{
    const uint32_t inserts = table.inserts;
    Row *row = learn_sought(table, key);
    if (row)
        row->changed = table.inserts != inserts ? seen.up_time : later(row->changed, seen.up_time);
    else
        work.dropped += static_cast<uint32_t>(seen.pkts);
    return row;
}

/** Counts a frame in the row of this key. */
template <class Key> void
count_learned(dsmon_work &work, learned_table<Key, dsmon_counters> &table, const Key &key, const frame &seen)
{
    if (dsmon_counters *row = learn_changed(work, table, seek(table, key), seen)) {
        row->pkts += seen.pkts;
        row->octets += seen.octets;
    }
}

/** The fields of a control record that tell of the learned rows. */
template <class Request> struct learned_fields {
    uint32_t Request::*dropped_frames;
    uint32_t Request::*inserts;
    uint32_t Request::*deletes;
};

/**
 * The description of the control table of a kind with learned rows: of what
 * rules.h asks for, limits and show stand here. The kind also has:
 *
 *   learned               the record's learned_fields
 *   asked_key, control    the record of a read, and its field for the control row's index
 *   time_mark             the record's field for the time mark: older rows are passed over
 *   key_of(asked)         the key of the row that is asked for
 */
template <class Kind> struct dsmon_learned_control : dsmon_control<Kind> {
    static constexpr row_limits limits = learning_rows;

    static void show(probe &, typename Kind::request &reply, int32_t, const dsmon_row_of<Kind> &shown)
    {
        if (!shown.counts)
            return;
        reply.*Kind::learned.dropped_frames = shown.counts->work.dropped;
        reply.*Kind::learned.inserts = shown.counts->learned.inserts;
        reply.*Kind::learned.deletes = shown.counts->learned.deletes;
    }
};

/** The index of a control row and one of its learned rows; no entry: there is none. */
template <class Entry> struct found_row {
    int32_t control = 0;
    const Entry *entry = nullptr;
};

/** The row that a read asks for, in one of the orders of the rows. */
template <class Kind, class Less> auto find_counted(
    probe &agent, const typename Kind::asked_key &asked, ordered_view counts_of<Kind>::*order, Less less)
{
    using learned_rows = decltype(counts_of<Kind>::learned);
    found_row<typename decltype(learned_rows::entries)::value_type> found;
    catch_up_all(agent);
    auto &controls = storage<typename Kind::table>(agent);
    const int32_t asked_control = asked.*Kind::control;
    const auto key = Kind::key_of(asked);
    if (asked.getType == GET) {
        const auto control = controls.find(asked_control);
        if (control == controls.end() || !control->second.counts)
            return found;
        auto &learned = control->second.counts->learned;
        const uint32_t index = find_learned(learned, key);
        if (index != no_entry && learned.entries[index].row.changed >= asked.*Kind::time_mark)
            found = {control->first, &learned.entries[index]};
    } else if (asked.getType == GETNEXT || asked.getType == GETBULK) {
        visit_after(
            controls, asked_control, key,
            [](auto &row) { return row.counts ? &row.counts->learned : nullptr; },
            [&](auto &row) -> ordered_view & { return (*row.counts).*order; }, less,
            [&](int32_t control, const auto &entry) {
                if (entry.row.changed < asked.*Kind::time_mark)
                    return true;
                found = {control, &entry};
                return false;
            });
    }
    return found;
}

/**
 * Has the row that is asked for never give way, or give way again. At most half
 * of a table is kept. A request_status.
 */
template <class Kind, bool Keep> int32_t keep_counted(probe &agent, const typename Kind::asked_key &asked)
{
    auto &controls = storage<typename Kind::table>(agent);
    const auto found = controls.find(asked.*Kind::control);
    if (found == controls.end() || !found->second.counts)
        return no_such_name;
    auto &learned = found->second.counts->learned;
    const uint32_t index = find_learned(learned, Kind::key_of(asked));
    if (index == no_entry)
        return no_such_name;
    if (Keep && !learned.entries[index].kept && learned.kept >= rows_within_reach(learned) / 2)
        return gen_err;
    keep_learned(learned, index, Keep);
    return no_error;
}
