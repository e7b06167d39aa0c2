/* How control rows begin and end to count frames, and what else their tables share. */
#pragma once

#include "agent/capture/counting_row.h"
#include "agent/core/learned_table.h"
#include "agent/capture/probe.h"

#include <cstdint>
#include <map>

/** An index or a size that travels unsigned, for fields that hold less than 2^31; more becomes -1. */
inline int32_t signed_index(uint32_t value)
{
    return value > INT32_MAX ? -1 : static_cast<int32_t>(value);
}

/** Has count called with the row's work for each frame. A request_status; the row has no work on failure. */
template <class Work> int32_t start_counting(probe &agent, counting_row<Work> &row, count_function count)
{
    if (!attach(agent, row.data_source, count, row.work.get())) {
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
