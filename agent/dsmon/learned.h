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
    counts.learned.max_rows = granted_rows(row);
}

template <class Counts> void forget_learned(Counts &counts)
{
    forget_all(counts.learned);
}

/** The row of this key, which changes now; null and a dropped frame when there is no room. */
template <class Key, class Row>
Row *learn_changed(dsmon_work &work, learned_table<Key, Row> &table, const tagged_key<Key> &key)
{
    Row *row = learn_sought(table, key);
    if (row)
        row->changed = work.now;
    else
        work.dropped++;
    return row;
}

/** Counts a frame in the row of this key. */
template <class Key> void
count_learned(dsmon_work &work, learned_table<Key, dsmon_counters> &table, const Key &key, uint32_t octets)
{
    if (dsmon_counters *row = learn_changed(work, table, seek(table, key))) {
        row->pkts++;
        row->octets += octets;
    }
}

/** What a read of learned rows asks for. */
template <class Key> struct learned_read {
    int32_t control; // index of the control row
    Key key;
    int32_t getType;
    uint32_t time_mark; // rows that did not change since then are passed over
};

/** Calls found(control, entry) with the row that a read asks for, if there is one. */
template <class Counts, class Key, class Less, class Found> void find_counted(
    std::map<int32_t, dsmon_row<Counts>> &controls,
    const learned_read<Key> &read,
    ordered_view Counts::*order,
    Less less,
    Found found)
{
    if (read.getType == GET) {
        const auto control = controls.find(read.control);
        if (control == controls.end() || !control->second.counts)
            return;
        auto &learned = control->second.counts->learned;
        const uint32_t index = find_learned(learned, read.key);
        if (index != no_entry && learned.entries[index].row.changed >= read.time_mark)
            found(control->first, learned.entries[index]);
    } else if (read.getType == GETNEXT || read.getType == GETBULK) {
        visit_after(
            controls, read.control, read.key,
            [](auto &row) { return row.counts ? &row.counts->learned : nullptr; },
            [&](auto &row) -> ordered_view & { return (*row.counts).*order; }, less,
            [&](int32_t control, const auto &entry) {
                if (entry.row.changed < read.time_mark)
                    return true;
                found(control, entry);
                return false;
            });
    }
}

/** Has a row never give way, or give way again. At most half of a table is kept. A request_status. */
template <class Counts, class Key> int32_t
keep_counted(std::map<int32_t, dsmon_row<Counts>> &controls, int32_t control, const Key &key, bool keep)
{
    const auto found = controls.find(control);
    if (found == controls.end() || !found->second.counts)
        return no_such_name;
    auto &learned = found->second.counts->learned;
    const uint32_t index = find_learned(learned, key);
    if (index == no_entry)
        return no_such_name;
    if (keep && !learned.entries[index].kept && learned.kept >= learned.max_rows / 2)
        return gen_err;
    keep_learned(learned, index, keep);
    return no_error;
}
