// SPDX-License-Identifier: MIT
/* How control rows begin and end to count frames, and what else their tables share. */
#pragma once

#include "agent/capture/counting_row.h"
#include "agent/core/control_table.h"
#include "agent/core/learned_table.h"
#include "agent/capture/probe.h"

#include <cstdint>
#include <map>

/** Has frames counted for the row's work. A request_status; the row has no work on failure. */
template <class Work> int32_t
start_counting(probe &agent, counting_row<Work> &row, count_function count, counting how = counting::alike)
{
    if (!attach(agent, row.data_source, count, row.work.get(), how)) {
        row.work.reset();
        return bad_value;
    }
    row.create_time = up_time(agent);
    return no_error;
}

template <count_function Count, class Work> void stop_counting(probe &agent, counting_row<Work> &row)
{
    detach(agent, row.data_source, Count, row.work.get());
    row.work.reset();
}

/** A row begins its work: a new one, with a learned table or without. */
template <count_function Count, class Work, counting How = counting::alike, class Row = counting_row<Work>>
int32_t start_work(probe &agent, Row &row)
{
    row.work = std::make_shared<Work>();
    if constexpr (requires { row.work->learned; })
        row.work->learned.late = &agent.sources.late;
    return start_counting(agent, row, Count, How);
}

/** Takes the frames that arrived for a row up to this moment. */
template <class Row> void catch_up_row(probe &agent, const Row &row)
{
    if (row.work)
        catch_up(agent, row.data_source);
}

/* Of rows that have nothing to do when they become valid, or are valid no more. */

template <class Row> int32_t nothing_to_start(probe &, Row &)
{
    return no_error;
}

template <class Row> void nothing_to_stop(probe &, Row &) {}

/** Takes the frames that arrived on all sources up to this moment: to be called before rows are read. */
inline void catch_up_all(probe &agent)
{
    for (const auto &[index, source] : agent.sources.rows)
        catch_up(agent, index);
}

/**
 * Goes over the learned rows behind an index: those of the control row with
 * this index that stand behind the key, then all those of the later control
 * rows. learned(row) gives a control row's learned table, or null; view(row)
 * the order of it. visit(control, entry) says whether to go on.
 */
template <class Row, class Learned, class View, class Less, class Key, class Visit> void visit_after(
    std::map<int32_t, Row> &controls,
    int32_t control,
    const Key &key,
    Learned learned,
    View view,
    Less less,
    Visit visit)
{
    for (auto at = controls.lower_bound(control); at != controls.end(); ++at) {
        auto *table = learned(at->second);
        if (!table)
            continue;
        ordered_view &ordered = view(at->second);
        const auto &order = in_order(*table, ordered, less);
        const bool asked = at->first == control;
        for (std::size_t i = asked ? place_after(*table, ordered, less, key) : 0; i < order.size(); i++)
            if (!visit(at->first, table->entries[order[i]]))
                return;
    }
}
