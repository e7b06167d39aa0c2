// SPDX-License-Identifier: MIT
/*
 * Aggregation profiles (RFC 3287, dsmonAggControlTable, dsmonAggGroupTable and
 * dsmonAggProfileTable) and the lock that keeps them from being changed.
 */

#include "rmon/groups/dsmon/dsmon.h"

using namespace rmon;

namespace {

using C = rmonrpc_dsmon_aggctl_t;

using aggctl_row = row_shape<
    status<&C::status>,
    field<&C::dsmonAggControlIndex>,
    field<&C::dsmonAggControlDescr>,
    field<&C::dsmonAggControlOwner>,
    field<&C::dsmonAggControlStatus>>;

void php_dsmon_aggctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        read_row<aggctl_row>(call, dsmon_aggctl_get_1, link, key);
}

/** Takes the owner before the description, unlike the record. */
void php_dsmon_aggctl_set(script_call call)
{
    link_id link;
    C row{};
    if (take(
            call, link, row.dsmonAggControlIndex, row.dsmonAggControlOwner, row.dsmonAggControlDescr,
            row.dsmonAggControlStatus))
        return_integer(call, ask(call, dsmon_aggctl_set_1, link, row, unreported));
}

using G = rmonrpc_dsmon_agggrp_t;

using aggrp_row = row_shape<
    status<&G::status>,
    field<&G::dsmonAggControlIndex>,
    field<&G::dsmonAggGroupIndex>,
    field<&G::dsmonAggGroupDescr>,
    left_out<&G::dsmonAggGroupStatus>>;

void php_dsmon_aggrp_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key3_t key{0, 0, getType};
    if (take(call, link, key.index1, key.index2))
        read_row<aggrp_row>(call, dsmon_agggrp_get_1, link, key);
}

void php_dsmon_aggrp_set(script_call call)
{
    link_id link;
    G row{};
    if (take(
            call, link, row.dsmonAggControlIndex, row.dsmonAggGroupIndex, row.dsmonAggGroupDescr,
            row.dsmonAggGroupStatus))
        return_integer(call, ask(call, dsmon_agggrp_set_1, link, row, unreported));
}

/** DSCP values, each of which a profile maps to a group. */
constexpr int32_t dscp_values = 64;

/** One call for each DSCP value, whatever became of the others; what isn't answered is left out. */
void php_dsmon_aggprofs_get(script_call call)
{
    link_id link;
    int32_t ctlIndex;
    if (!take(call, link, ctlIndex))
        return;
    CLIENT *client = client_of(link);
    if (!client) {
        ZVAL_FALSE(call.return_value);
        return;
    }
    zend_array *groups = new_list(dscp_values);
    ZVAL_ARR(call.return_value, groups);
    for (int32_t dscp = 0; dscp < dscp_values; dscp++) {
        const rmonrpc_row_key3_t key{ctlIndex, dscp, GET};
        const rmonrpc_dsmon_aggprof_t *reply = dsmon_aggprofile_get_1(&key, client);
        if (!reply || reply->status != 0)
            continue;
        zval group;
        set(&group, reply->dsmonAggGroupIndex);
        zend_hash_index_add_new(groups, static_cast<zend_ulong>(dscp), &group);
    }
}

/** Takes the DSCP value before the group, unlike the record. */
void php_dsmon_aggprof_set(script_call call)
{
    link_id link;
    rmonrpc_dsmon_aggprof_t row{};
    if (take(call, link, row.dsmonAggControlIndex, row.dscp, row.dsmonAggGroupIndex))
        return_integer(call, ask(call, dsmon_aggprofile_set_1, link, row, unreported));
}

void aggctl_locked(script_call call)
{
    link_id link;
    if (take(call, link))
        return_integer(call, ask(call, dsmon_aggctl_locked_1, link, {}, unreported));
}

void php_dsmon_aggctl_set_lock(script_call call)
{
    link_id link;
    int32_t lock;
    if (take(call, link, lock))
        return_integer(call, ask(call, dsmon_aggctl_set_lock_1, link, lock, unreported));
}

} // namespace

PHP_FUNCTION(dsmon_aggctl_get) { php_dsmon_aggctl_get(CALL, GET); }
PHP_FUNCTION(dsmon_aggctl_getnext) { php_dsmon_aggctl_get(CALL, GETNEXT); }
PHP_FUNCTION(dsmon_aggctl_set) { php_dsmon_aggctl_set(CALL); }
PHP_FUNCTION(dsmon_aggrp_get) { php_dsmon_aggrp_get(CALL, GET); }
PHP_FUNCTION(dsmon_aggrp_getnext) { php_dsmon_aggrp_get(CALL, GETNEXT); }
PHP_FUNCTION(dsmon_aggrp_set) { php_dsmon_aggrp_set(CALL); }
PHP_FUNCTION(dsmon_aggprofs_get) { php_dsmon_aggprofs_get(CALL); }
PHP_FUNCTION(dsmon_aggprof_set) { php_dsmon_aggprof_set(CALL); }
PHP_FUNCTION(dsmon_aggctl_locked) { aggctl_locked(CALL); }
PHP_FUNCTION(dsmon_aggctl_set_lock) { php_dsmon_aggctl_set_lock(CALL); }
