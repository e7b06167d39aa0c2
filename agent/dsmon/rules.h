/*
 * The row-status rules of the differentiated-services control tables, for each
 * kind of table, which says what its rows count and how they are set.
 */
#pragma once

#include "agent/capture/counting.h"
#include "agent/dsmon/rows.h"

#include <algorithm>

/**
 * What a kind of table adds to the rules stands in a type that is made for it,
 * with a name that no other kind has: compilers differ in whether they keep
 * apart what is made of objects of one name that each belong to a file.
 *
 *   counts_type, request_type
 *   settings(request)              what a set asks for, as dsmon_settings
 *   begin(agent, row, counts)      the row begins to count; all is at 0
 *   count(counts, frame, group)
 *   forget(counts)
 */
template <class Kind> using counts_of = typename Kind::counts_type;
template <class Kind> using request_of = typename Kind::request_type;
template <class Kind> using dsmon_row_of = dsmon_row<counts_of<Kind>>;

/** Each IP frame is given to the table, with the group of its DSCP. */
template <class Kind> void count_dsmon_frame(void *context, const frame &seen)
{
    if (seen.dscp < 0 || seen.dscp >= dscp_values)
        return;
    auto &counts = *static_cast<counts_of<Kind> *>(context);
    counts.work.now = frame_time(*counts.work.agent, seen);
    Kind::count(counts, seen, counts.work.group_of[static_cast<uint32_t>(seen.dscp)]);
}

/** The protocol that a frame is counted as: the highest one that is known. 0: none. */
inline int32_t highest_protocol(const frame &seen)
{
    return seen.application_index ? seen.application_index : seen.network_index;
}

/** Rows that a control row may learn. */
template <class Counts> uint32_t granted_rows(const dsmon_row<Counts> &row)
{
    return row.most < 0 ? default_learned_rows
                        : std::min(static_cast<uint32_t>(row.most), default_learned_rows);
}

/** Begins to count, if the profile is (still) there. */
template <class Kind> void begin_dsmon(probe &agent, dsmon_row_of<Kind> &row)
{
    const dscp_map *map = find_profile(agent, row.profile);
    if (!map || row.counts->work.counting)
        return;
    counts_of<Kind> &counts = *row.counts;
    counts.work.group_of = *map;
    Kind::begin(agent, row, counts);
    counts.work.counting = attach(agent, row.data_source, count_dsmon_frame<Kind>, &counts);
}

/** Ends to count. */
template <class Kind> void end_dsmon(probe &agent, dsmon_row_of<Kind> &row)
{
    if (row.counts->work.counting)
        detach(agent, row.data_source, count_dsmon_frame<Kind>, row.counts.get());
    row.counts->work.counting = false;
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

template <class Kind> bool nonsense_dsmon(const request_of<Kind> &request)
{
    const dsmon_settings wanted = Kind::settings(request);
    return wanted.data_source < 0 || wanted.profile < 0 || wanted.most < -1 || wanted.most == 0
           || wanted.ipv4_prefix < 8 || wanted.ipv4_prefix > whole_ipv4 || wanted.ipv6_prefix < 8
           || wanted.ipv6_prefix > whole_ipv6 || !is_printable(wanted.owner);
}

template <class Kind> bool dsmon_changes_fixed(const dsmon_row_of<Kind> &row, const request_of<Kind> &request)
{
    const dsmon_settings wanted = Kind::settings(request);
    return wanted.data_source != row.data_source || wanted.profile != row.profile || wanted.most != row.most
           || wanted.ipv4_prefix != row.ipv4_prefix || wanted.ipv6_prefix != row.ipv6_prefix;
}

template <class Kind> void assign_dsmon(dsmon_row_of<Kind> &row, const request_of<Kind> &request)
{
    const dsmon_settings wanted = Kind::settings(request);
    row.data_source = wanted.data_source;
    row.profile = wanted.profile;
    row.most = wanted.most;
    row.ipv4_prefix = wanted.ipv4_prefix;
    row.ipv6_prefix = wanted.ipv6_prefix;
    row.owner = wanted.owner;
}

template <class Kind> constexpr row_rules<dsmon_row_of<Kind>, request_of<Kind>> dsmon_rules{
    nonsense_dsmon<Kind>, dsmon_changes_fixed<Kind>, assign_dsmon<Kind>, start_dsmon<Kind>, stop_dsmon<Kind>};

/** The lock went on or off: the valid rows of a table begin or end to count. */
template <class Kind>
void dsmon_lock_changed(probe &agent, std::map<int32_t, dsmon_row_of<Kind>> &table, bool locked)
{
    for (auto &[index, row] : table) {
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
