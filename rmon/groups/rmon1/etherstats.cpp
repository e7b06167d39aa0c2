// SPDX-License-Identifier: MIT
/* Ethernet statistics (RFC 2819, etherStatsTable). */

#include "rmon/answers.h"

using namespace rmon;

namespace {

using R = rmonrpc_etherstats_t;

using etherstats_row = row_shape<
    status<&R::status>,
    field<&R::etherStatsIndex>,
    field<&R::etherStatsDataSource>,
    field<&R::etherStatsDropEvents>,
    field<&R::etherStatsOctets>,
    field<&R::etherStatsPkts>,
    field<&R::etherStatsBroadcastPkts>,
    field<&R::etherStatsMulticastPkts>,
    field<&R::etherStatsCRCAlignErrors>,
    field<&R::etherStatsUndersizePkts>,
    field<&R::etherStatsOversizePkts>,
    field<&R::etherStatsFragments>,
    field<&R::etherStatsJabbers>,
    field<&R::etherStatsCollisions>,
    field<&R::etherStatsPkts64Octets>,
    field<&R::etherStatsPkts65to127Octets>,
    field<&R::etherStatsPkts128to255Octets>,
    field<&R::etherStatsPkts256to511Octets>,
    field<&R::etherStatsPkts512to1023Octets>,
    field<&R::etherStatsPkts1024to1518Octets>,
    field<&R::etherStatsOwner>,
    field<&R::etherStatsStatus>,
    field<&R::etherStatsDroppedFrames>,
    field<&R::etherStatsCreateTime>>;

/** Reports under the interface table's label, on purpose. */
void php_etherstats_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<etherstats_row>(call, ask(call, etherstats_get_1, link, key, "rmon_ifentry_get"));
}

} // namespace

PHP_FUNCTION(rmon_etherstats_get) { php_etherstats_get(CALL, GET); }
PHP_FUNCTION(rmon_etherstats_getnext) { php_etherstats_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_etherstats_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    R row{};
    if (take(
            call, link, row.etherStatsIndex, row.etherStatsDataSource, row.etherStatsOwner,
            row.etherStatsStatus))
        return_integer(call, ask(call, etherstats_set_1, link, row, "rmon_etherstats_set"));
}
