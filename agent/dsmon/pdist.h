// SPDX-License-Identifier: MIT
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
