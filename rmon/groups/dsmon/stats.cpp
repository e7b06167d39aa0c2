// SPDX-License-Identifier: MIT
/* Traffic of each aggregation group (RFC 3287, dsmonStatsControlTable and dsmonStatsTable). */

#include "rmon/groups/dsmon/dsmon.h"

using namespace rmon;

namespace {

using C = rmonrpc_dsmon_stats_ctl_t;

using statsctl_row = row_shape<
    status<&C::status>,
    field<&C::dsmonStatsControlIndex>,
    field<&C::dsmonStatsControlDataSource_ifIndex>,
    field<&C::dsmonStatsControlAggProfile>,
    field<&C::dsmonStatsControlDroppedFrames>,
    field<&C::dsmonStatsControlOwner>,
    field<&C::dsmonStatsControlStatus>>;

void php_dsmon_statsctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        read_row<statsctl_row>(call, dsmon_stats_ctl_get_1, link, key);
}

void php_dsmon_statsctl_set(script_call call)
{
    link_id link;
    C row{};
    if (take(
            call, link, row.dsmonStatsControlIndex, row.dsmonStatsControlDataSource_ifIndex,
            row.dsmonStatsControlAggProfile, row.dsmonStatsControlOwner, row.dsmonStatsControlStatus))
        return_integer(call, ask(call, dsmon_stats_ctl_set_1, link, row, unreported));
}

using S = rmonrpc_dsmon_stats_t;

using stats_row = row_shape<
    status<&S::status>,
    field<&S::dsmonStatsControlIndex>,
    field<&S::dsmonAggGroupIndex>,
    field<&S::dsmonStatsInHCPkts>,
    field<&S::dsmonStatsInHCOctets>,
    field<&S::dsmonStatsOutHCPkts>,
    field<&S::dsmonStatsOutHCOctets>>;

void php_dsmon_stats_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key3_t key{0, 0, getType};
    if (take(call, link, key.index1, key.index2))
        read_row<stats_row>(call, dsmon_stats_get_1, link, key);
}

} // namespace

PHP_FUNCTION(dsmon_stats_get) { php_dsmon_stats_get(CALL, GET); }
PHP_FUNCTION(dsmon_stats_getnext) { php_dsmon_stats_get(CALL, GETNEXT); }
PHP_FUNCTION(dsmon_statsctl_get) { php_dsmon_statsctl_get(CALL, GET); }
PHP_FUNCTION(dsmon_statsctl_getnext) { php_dsmon_statsctl_get(CALL, GETNEXT); }
PHP_FUNCTION(dsmon_statsctl_set) { php_dsmon_statsctl_set(CALL); }
