// SPDX-License-Identifier: MIT
/*
 * Traffic of each aggregation group by protocol and by host (RFC 3287,
 * dsmonPdistCtlTable, dsmonPdistStatsTable, dsmonHostCtlTable and
 * dsmonHostTable).
 */

#include "rmon/groups/dsmon/dsmon.h"

using namespace rmon;

namespace {

/* ---- protocol distribution ------------------------------------------------------ */

using C = rmonrpc_dsmon_pdctl_t;

using pdistctl_row = row_shape<
    status<&C::status>,
    field<&C::dsmonPdistCtlIndex>,
    field<&C::dsmonPdistCtlDataSource_ifIndex>,
    field<&C::dsmonPdistAggProfile>,
    field<&C::dsmonPdistDroppedFrames>,
    field<&C::dsmonPdistCtlInserts>,
    field<&C::dsmonPdistCtlDeletes>,
    field<&C::dsmonPdistCtlOwner>,
    field<&C::dsmonPdistCtlStatus>,
    field<&C::dsmonPdistCtlMaxDesiredEntries>>;

void php_dsmon_pdistctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        read_row<pdistctl_row>(call, dsmon_pdistctl_get_1, link, key);
}

void php_dsmon_pdistctl_set(script_call call)
{
    link_id link;
    C row{};
    if (take(
            call, link, row.dsmonPdistCtlIndex, row.dsmonPdistCtlDataSource_ifIndex, row.dsmonPdistAggProfile,
            row.dsmonPdistCtlOwner, row.dsmonPdistCtlStatus, row.dsmonPdistCtlMaxDesiredEntries))
        return_integer(call, ask(call, dsmon_pdistctl_set_1, link, row, unreported));
}

using P = rmonrpc_dsmon_pdstats_t;

using pdstats_row = row_shape<
    status<&P::status>,
    field<&P::dsmonPdistCtlIndex>,
    field<&P::dsmonAggGroupIndex>,
    field<&P::protocolDirLocalIndex>,
    field<&P::dsmonPdistTimeMark>,
    field<&P::dsmonPdistStatsHCPkts>,
    field<&P::dsmonPdistStatsHCOctets>>;

void php_dsmon_pdstats_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_dsmon_pdist_key_t key{};
    key.getType = getType;
    if (take(
            call, link, key.dsmonPdistCtlIndex, key.dsmonPdistTimeMark, key.dsmonAggGroupIndex,
            key.protocolDirLocalIndex))
        read_row<pdstats_row>(call, dsmon_pdstats_get_1, link, key);
}

/* ---- hosts ------------------------------------------------------------------------ */

using K = rmonrpc_dsmon_hostctl_t;

using hostctl_row = row_shape<
    status<&K::status>,
    field<&K::dsmonHostCtlIndex>,
    field<&K::dsmonHostCtlDataSource_ifIndex>,
    field<&K::dsmonHostAggProfile>,
    field<&K::dsmonHostDroppedFrames>,
    field<&K::dsmonHostCtlInserts>,
    field<&K::dsmonHostCtlDeletes>,
    field<&K::dsmonHostCtlOwner>,
    field<&K::dsmonHostCtlStatus>,
    field<&K::dsmonHostCtlMaxDesiredEntries>,
    left_out<&K::dsmonHostCtlIPv4PrefixLen, &K::dsmonHostCtlIPv6PrefixLen>>;

void php_dsmon_hostctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        read_row<hostctl_row>(call, dsmon_hostctl_get_1, link, key);
}

/** Hosts are told apart by their whole addresses: the prefix lengths are not a script's to choose. */
void php_dsmon_hostctl_set(script_call call)
{
    link_id link;
    K row{};
    row.dsmonHostCtlIPv4PrefixLen = 32;
    row.dsmonHostCtlIPv6PrefixLen = 128;
    if (take(
            call, link, row.dsmonHostCtlIndex, row.dsmonHostCtlDataSource_ifIndex, row.dsmonHostAggProfile,
            row.dsmonHostCtlOwner, row.dsmonHostCtlStatus, row.dsmonHostCtlMaxDesiredEntries))
        return_integer(call, ask(call, dsmon_hostctl_set_1, link, row, unreported));
}

using H = rmonrpc_dsmon_hoststats_t;

using hoststats_row = row_shape<
    status<&H::status>,
    field<&H::dsmonHostCtlIndex>,
    field<&H::dsmonAggGroupIndex>,
    field<&H::protocolDirLocalIndex>,
    field<&H::dsmonHostTimeMark>,
    field<&H::dsmonHostInHCPkts>,
    field<&H::dsmonHostInHCOctets>,
    field<&H::dsmonHostOutHCPkts>,
    field<&H::dsmonHostOutHCOctets>,
    counted_address<&H::dsmonHostAddress, &H::dsmonHostAddressLength>>;

void php_dsmon_hoststats_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_dsmon_host_key_t key{};
    key.getType = getType;
    zval *from;
    address host;
    if (!take(
            call, link, key.dsmonHostCtlIndex, key.dsmonHostTimeMark, key.dsmonAggGroupIndex,
            key.protocolDirLocalIndex, from)
        || !connected(call, link) || !convert(call, from, host))
        return;
    put_address(host, key.dsmonHostAddress, key.dsmonHostAddressLength);
    read_row<hoststats_row>(call, dsmon_hoststats_get_1, link, key);
}

} // namespace

PHP_FUNCTION(dsmon_pdistctl_get) { php_dsmon_pdistctl_get(CALL, GET); }
PHP_FUNCTION(dsmon_pdistctl_getnext) { php_dsmon_pdistctl_get(CALL, GETNEXT); }
PHP_FUNCTION(dsmon_pdistctl_set) { php_dsmon_pdistctl_set(CALL); }
PHP_FUNCTION(dsmon_hostctl_get) { php_dsmon_hostctl_get(CALL, GET); }
PHP_FUNCTION(dsmon_hostctl_getnext) { php_dsmon_hostctl_get(CALL, GETNEXT); }
PHP_FUNCTION(dsmon_hostctl_set) { php_dsmon_hostctl_set(CALL); }
PHP_FUNCTION(dsmon_pdstats_get) { php_dsmon_pdstats_get(CALL, GET); }
PHP_FUNCTION(dsmon_pdstats_getnext) { php_dsmon_pdstats_get(CALL, GETNEXT); }
PHP_FUNCTION(dsmon_hoststats_get) { php_dsmon_hoststats_get(CALL, GET); }
PHP_FUNCTION(dsmon_hoststats_getnext) { php_dsmon_hoststats_get(CALL, GETNEXT); }
