// SPDX-License-Identifier: MIT
/*
 * How the rows of the differentiated-services control tables work, for each kind
 * of table, which says what its rows count and how they are set.
 */
#pragma once

#include "agent/capture/counting.h"
#include "agent/dsmon/rows.h"

/**
 * What a kind of table adds to the rules stands in a type that is made for it,
 * with a name that no other kind has: compilers differ in whether they keep
 * apart what is made of objects of one name that each belong to a file.
 *
 *   counts, table, request, index, status, limits, fields, show    as of a control table (control_table.h)
 *   begin(agent, row, counts)      the row begins to count; all is at 0
 *   count(counts, frame, group)
 *   forget(counts)
 */
template <class Kind> using counts_of = typename Kind::counts;
template <class Kind> using dsmon_row_of = dsmon_row<counts_of<Kind>>;

/** Each IP frame is given to the table, with the group of its DSCP. */
template <class Kind> void count_dsmon_frame(void *context, const frame &seen)
{
    if (seen.dscp < 0 || seen.dscp >= dscp_values)
        return;
    auto &counts = *static_cast<counts_of<Kind> *>(context);
    Kind::count(counts, seen, counts.work.group_of[static_cast<uint32_t>(seen.dscp)]);
}

/** The protocol that a frame is counted as: the highest one that is known. 0: none. */
inline int32_t highest_protocol(const frame &seen)
{
    return seen.application_index ? seen.application_index : seen.network_index;
}

/** Begins to count, if the profile is (still) there. */
template <class Kind> void begin_dsmon(probe &agent, dsmon_row_of<Kind> &row)
{
    const dscp_map *map = find_profile(agent, row.profile);
    if (!map || row.counts->work.attached)
        return;
    counts_of<Kind> &counts = *row.counts;
    counts.work.group_of = *map;
    if constexpr (requires { counts.learned; })
        counts.learned.late = &agent.sources.late;
    Kind::begin(agent, row, counts);
    counts.work.attached =
        attach(agent, row.data_source, count_dsmon_frame<Kind>, &counts, counting::alike_with_tags);
}

/** Ends to count. */
template <class Kind> void end_dsmon(probe &agent, dsmon_row_of<Kind> &row)
{
    if (row.counts->work.attached)
        detach(agent, row.data_source, count_dsmon_frame<Kind>, row.counts.get());
    row.counts->work.attached = false;
}

template <class Kind> int32_t start_dsmon(probe &agent, dsmon_row_of<Kind> &row)
{
    // The source stays in use while the lock is off, so that it is there when the lock goes on.
    if (!find_profile(agent, row.profile) || !use_source(agent.sources, row.data_source))
        return bad_value;
    row.counts = std::make_shared<counts_of<Kind>>();
    row.counts->work.agent = &agent;
    if (storage<dsmon_aggregation>(agent).locked)
        begin_dsmon<Kind>(agent, row);
    return no_error;
}

template <class Kind> void stop_dsmon(probe &agent, dsmon_row_of<Kind> &row)
{
    end_dsmon<Kind>(agent, row);
    row.counts.reset();
    leave_source(agent.sources, row.data_source);
}

/** The description of a kind's control table (core/control_table.h). */
template <class Kind> struct dsmon_control : Kind {
    using row = dsmon_row_of<Kind>;
    static constexpr auto start = start_dsmon<Kind>;
    static constexpr auto stop = stop_dsmon<Kind>;

    static void refresh(probe &agent, const row &) { catch_up_all(agent); }
};

/** The lock went on or off: the valid rows of a table begin or end to count. */
template <class Kind> void dsmon_lock_changed(probe &agent, bool locked)
{
    for (auto &[index, row] : storage<typename Kind::table>(agent)) {
        if (row.status != row_status::valid)
            continue;
        if (locked) {
            begin_dsmon<Kind>(agent, row);
            continue;
        }
        end_dsmon<Kind>(agent, row);
        Kind::forget(*row.counts);
    }
}

/** At the agent's start: the table hears of the lock. */
template <class Kind> void follow_lock(probe &agent)
{
    storage<dsmon_aggregation>(agent).listeners.push_back(dsmon_lock_changed<Kind>);
}
