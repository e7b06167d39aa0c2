/*
 * Traffic of a data source by aggregation group and protocol (RFC 3287,
 * dsmonPdistStatsTable). A frame counts once, as the highest protocol that is
 * known of it.
 */
#pragma once

#include "agent/dsmon/rows.h"

#include <cstdint>
#include <map>

struct dsmon_pdist_key {
    int32_t protocol = 0; // protocolDirLocalIndex
    uint32_t group = 0;
};

struct dsmon_pdist_counts {
    dsmon_work work;
    learned_table<dsmon_pdist_key, dsmon_counters> learned;
    ordered_view order;
};

using dsmon_pdist_table = std::map<int32_t, dsmon_row<dsmon_pdist_counts>>; // by dsmonPdistCtlIndex

/** Fills in what a set gives to a control row. */
void describe_dsmon_pdist_row(
    rmonrpc_dsmon_pdctl_t &record, int32_t index, const dsmon_row<dsmon_pdist_counts> &row);

void dsmon_pdist_lock_changed(probe &agent, bool locked);
void dsmon_pdist_interface_gone(probe &agent, int32_t index);

rmonrpc_dsmon_pdctl_t dsmon_pdistctl_get(probe &agent, const rmonrpc_row_key2_t &key);
int32_t dsmon_pdistctl_set(probe &agent, const rmonrpc_dsmon_pdctl_t &request);
rmonrpc_dsmon_pdstats_t dsmon_pdstats_get(probe &agent, const rmonrpc_dsmon_pdist_key_t &key);

/** The row of this key never gives way to another one, or does again. A request_status. */
int32_t dspdist_make_persistent(probe &agent, const rmonrpc_dsmon_pdist_key_t &key);
int32_t dspdist_make_nonpersistent(probe &agent, const rmonrpc_dsmon_pdist_key_t &key);
