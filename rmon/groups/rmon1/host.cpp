// SPDX-License-Identifier: MIT
/* Hosts (RFC 2819, hostControlTable, hostTable and hostTimeTable). */

#include "rmon/answers.h"

using namespace rmon;

namespace {

using C = rmonrpc_host_ctl_t;

using host_ctl_row = row_shape<
    status<&C::status>,
    field<&C::hostControlIndex>,
    field<&C::hostControlDataSource>,
    field<&C::hostControlTableSize>,
    field<&C::hostControlLastDeleteTime>,
    field<&C::hostControlOwner>,
    field<&C::hostControlStatus>>;

void host_ctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<host_ctl_row>(call, ask(call, host_ctl_get_1, link, key, "host_ctl_get"));
}

using H = rmonrpc_host_t;

using host_row = row_shape<
    status<&H::status>,
    address_or_zero<&H::hostAddress>,
    field<&H::hostCreationOrder>,
    field<&H::hostIndex>,
    field<&H::hostInPkts>,
    field<&H::hostOutPkts>,
    field<&H::hostInOctets>,
    field<&H::hostOutOctets>,
    field<&H::hostOutErrors>,
    field<&H::hostOutBroadcastPkts>,
    field<&H::hostOutMulticastPkts>>;

/** Reports under the interface table's label, on purpose. */
void host_get(script_call call, int32_t getType)
{
    link_id link;
    int32_t hostIndex, count;
    zval *from;
    integer_or_address hostAddress;
    if (!take_rows(call, getType, count, link, hostIndex, from) || !connected(call, link)
        || !convert(call, from, hostAddress))
        return;
    const rmonrpc_host_key_t key{hostIndex, list_of(hostAddress), count, getType};
    return_rows<host_row>(call, ask(call, host_get_1, link, key, "rmon_ifentry_get"), getType);
}

using T = rmonrpc_hosttime_t;

/** Shows an empty address as an empty array, where the host table shows 0. */
using hosttime_row = row_shape<
    status<&T::status>,
    field<&T::hostTimeAddress>,
    field<&T::hostTimeCreationOrder>,
    field<&T::hostTimeIndex>,
    field<&T::hostTimeInPkts>,
    field<&T::hostTimeOutPkts>,
    field<&T::hostTimeInOctets>,
    field<&T::hostTimeOutOctets>,
    field<&T::hostTimeOutErrors>,
    field<&T::hostTimeOutBroadcastPkts>,
    field<&T::hostTimeOutMulticastPkts>>;

void hosttime_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key4_t key{0, 0, getType, 0};
    if (take_rows(call, getType, key.count, link, key.index1, key.index2))
        return_rows<hosttime_row>(
            call, ask(call, hosttime_get_1, link, key, "rmon_hosttime_getbulk"), getType);
}

} // namespace

PHP_FUNCTION(rmon_host_ctl_get) { host_ctl_get(CALL, GET); }
PHP_FUNCTION(rmon_host_ctl_getnext) { host_ctl_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_host_ctl_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    C row{};
    if (take(
            call, link, row.hostControlIndex, row.hostControlDataSource, row.hostControlOwner,
            row.hostControlStatus))
        return_integer(call, ask(call, host_ctl_set_1, link, row, "rmon_host_ctl_set"));
}

PHP_FUNCTION(rmon_host_get) { host_get(CALL, GET); }
PHP_FUNCTION(rmon_host_getnext) { host_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_host_getbulk) { host_get(CALL, GETBULK); }
PHP_FUNCTION(rmon_hosttime_get) { hosttime_get(CALL, GET); }
PHP_FUNCTION(rmon_hosttime_getnext) { hosttime_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_hosttime_getbulk) { hosttime_get(CALL, GETBULK); }
