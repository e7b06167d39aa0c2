// SPDX-License-Identifier: MIT
/*
 * VLAN and priority statistics (RFC 2613, smonVlanStatsControlTable,
 * smonVlanIdStatsTable, smonPrioStatsControlTable and smonPrioStatsTable).
 */

#include "rmon/answers.h"

using namespace rmon;

namespace {

/* ---- VLANs ---------------------------------------------------------------------- */

using C = rmonrpc_smon_vlan_ctl_t;

using vlan_ctl_row = row_shape<
    status<&C::status>,
    field<&C::smonVlanStatsControlIndex>,
    field<&C::smonVlanStatsControlDataSource>,
    field<&C::smonVlanStatsControlCreateTime>,
    field<&C::smonVlanStatsControlOwner>,
    field<&C::smonVlanStatsControlStatus>>;

void vlan_ctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<vlan_ctl_row>(call, ask(call, smon_vlan_ctl_get_1, link, key, "vlan_ctl_get"));
}

using V = rmonrpc_smon_vlan_t;

using vlan_row = row_shape<
    status<&V::status>,
    field<&V::smonVlanIdStatsId>,
    field<&V::smonVlanIdStatsTotalPkts>,
    field<&V::smonVlanIdStatsTotalOctets>,
    field<&V::smonVlanIdStatsNUcastPkts>,
    field<&V::smonVlanIdStatsNUcastOctets>,
    field<&V::smonVlanIdStatsCreateTime>,
    field<&V::smonVlanStatsControlIndex>>;

void vlan_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key3_t key{0, 0, getType};
    if (take(call, link, key.index1, key.index2))
        return_row<vlan_row>(call, ask(call, smon_vlan_get_1, link, key, "vlan_get"));
}

/* ---- priorities ------------------------------------------------------------------ */

using K = rmonrpc_smon_prio_ctl_t;

using prio_ctl_row = row_shape<
    status<&K::status>,
    field<&K::smonPrioStatsControlIndex>,
    field<&K::smonPrioStatsControlDataSource>,
    field<&K::smonPrioStatsControlCreateTime>,
    field<&K::smonPrioStatsControlOwner>,
    field<&K::smonPrioStatsControlStatus>>;

void prio_ctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<prio_ctl_row>(call, ask(call, smon_prio_ctl_get_1, link, key, "prio_ctl_get"));
}

using P = rmonrpc_smon_prio_t;

using prio_row = row_shape<
    status<&P::status>,
    field<&P::smonPrioStatsId>,
    field<&P::smonPrioStatsPkts>,
    field<&P::smonPrioStatsOctets>,
    field<&P::smonPrioStatsControlIndex>>;

void prio_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key3_t key{0, 0, getType};
    if (take(call, link, key.index1, key.index2))
        return_row<prio_row>(call, ask(call, smon_prio_get_1, link, key, "prio_get"));
}

} // namespace

PHP_FUNCTION(rmon_vlan_ctl_get) { vlan_ctl_get(CALL, GET); }
PHP_FUNCTION(rmon_vlan_ctl_getnext) { vlan_ctl_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_vlan_ctl_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    C row{};
    if (take(
            call, link, row.smonVlanStatsControlIndex, row.smonVlanStatsControlDataSource,
            row.smonVlanStatsControlOwner, row.smonVlanStatsControlStatus))
        return_integer(call, ask(call, smon_vlan_ctl_set_1, link, row, "rmon_vlan_ctl_set"));
}

PHP_FUNCTION(rmon_vlan_get) { vlan_get(CALL, GET); }
PHP_FUNCTION(rmon_vlan_getnext) { vlan_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_prio_ctl_get) { prio_ctl_get(CALL, GET); }
PHP_FUNCTION(rmon_prio_ctl_getnext) { prio_ctl_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_prio_ctl_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    K row{};
    if (take(
            call, link, row.smonPrioStatsControlIndex, row.smonPrioStatsControlDataSource,
            row.smonPrioStatsControlOwner, row.smonPrioStatsControlStatus))
        return_integer(call, ask(call, smon_prio_ctl_set_1, link, row, "rmon_prio_ctl_set"));
}

PHP_FUNCTION(rmon_prio_get) { prio_get(CALL, GET); }
PHP_FUNCTION(rmon_prio_getnext) { prio_get(CALL, GETNEXT); }
