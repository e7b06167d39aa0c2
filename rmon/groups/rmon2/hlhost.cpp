// SPDX-License-Identifier: MIT
/* Higher-layer hosts (RFC 2021, hlHostControlTable, nlHostTable and alHostTable). */

#include "rmon/answers.h"

using namespace rmon;

namespace {

using C = rmonrpc_hlhost_ctl_t;

using hlhost_ctl_row = row_shape<
    status<&C::status>,
    field<&C::hlHostControlIndex>,
    field<&C::hlHostControlDataSource>,
    field<&C::hlHostControlNlDroppedFrames>,
    field<&C::hlHostControlNlInserts>,
    field<&C::hlHostControlNlDeletes>,
    field<&C::hlHostControlNlMaxDesiredEntries>,
    field<&C::hlHostControlAlDroppedFrames>,
    field<&C::hlHostControlAlInserts>,
    field<&C::hlHostControlAlDeletes>,
    field<&C::hlHostControlAlMaxDesiredEntries>,
    field<&C::hlHostControlOwner>,
    field<&C::hlHostControlStatus>>;

void hlhost_ctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<hlhost_ctl_row>(call, ask(call, hlhost_ctl_get_1, link, key, "hlhost_ctl_get"));
}

using H = rmonrpc_hlhost_t;

using nlhost_row = row_shape<
    status<&H::status>,
    named<"nlHostTimeMark", &H::timeMark>,
    address_or_zero<&H::nlHostAddress>,
    named<"nlHostInPkts", &H::inPkts>,
    named<"nlHostOutPkts", &H::outPkts>,
    named<"nlHostInOctets", &H::inOctets>,
    named<"nlHostOutOctets", &H::outOctets>,
    named<"nlHostOutMacNonUnicastPkts", &H::outMacNonUnicastPkts>,
    named<"nlHostCreateTime", &H::createTime>,
    field<&H::hlHostControlIndex>,
    field<&H::protocolDirLocalIndex>,
    left_out<&H::protocolDirLocalIndex2>>;

/** The address keeps its network-layer name. */
using alhost_row = row_shape<
    status<&H::status>,
    named<"alHostTimeMark", &H::timeMark>,
    address_or_zero<&H::nlHostAddress>,
    named<"alHostInPkts", &H::inPkts>,
    named<"alHostOutPkts", &H::outPkts>,
    named<"alHostInOctets", &H::inOctets>,
    named<"alHostOutOctets", &H::outOctets>,
    named<"alHostCreateTime", &H::createTime>,
    field<&H::hlHostControlIndex>,
    field<&H::protocolDirLocalIndex>,
    field<&H::protocolDirLocalIndex2>,
    left_out<&H::outMacNonUnicastPkts>>;

/** Asks for hosts of one of the two tables; null when the return value is set already. */
rmonrpc_hlhost_arr_t *hlhost_get(script_call call, int32_t getType, int32_t applicationLayer)
{
    link_id link;
    rmonrpc_hlhost_key_t key{};
    key.getType = getType;
    key.applicationLayer = applicationLayer;
    zval *from;
    address nlHostAddress;
    const bool taken = applicationLayer == APPLICATION_LAYER
                           ? take_rows(
                               call, getType, key.count, link, key.hlHostControlIndex, key.timeMark,
                               key.protocolDirLocalIndex, from, key.protocolDirLocalIndex2)
                           : take_rows(
                               call, getType, key.count, link, key.hlHostControlIndex, key.timeMark,
                               key.protocolDirLocalIndex, from);
    if (!taken || !connected(call, link) || !convert(call, from, nlHostAddress))
        return nullptr;
    key.nlHostAddress = list_of(nlHostAddress);
    return ask(call, hlhost_get_1, link, key, "hlhost_get");
}

void nlhost_get(script_call call, int32_t getType)
{
    return_rows<nlhost_row>(call, hlhost_get(call, getType, NETWORK_LAYER), getType);
}

void alhost_get(script_call call, int32_t getType)
{
    return_rows<alhost_row>(call, hlhost_get(call, getType, APPLICATION_LAYER), getType);
}

} // namespace

PHP_FUNCTION(rmon_hlhost_ctl_get) { hlhost_ctl_get(CALL, GET); }
PHP_FUNCTION(rmon_hlhost_ctl_getnext) { hlhost_ctl_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_hlhost_ctl_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    C row{};
    if (take(
            call, link, row.hlHostControlIndex, row.hlHostControlDataSource,
            row.hlHostControlNlMaxDesiredEntries, row.hlHostControlAlMaxDesiredEntries,
            row.hlHostControlOwner, row.hlHostControlStatus))
        return_integer(call, ask(call, hlhost_ctl_set_1, link, row, "rmon_hlhost_ctl_set"));
}

PHP_FUNCTION(rmon_nlhost_get) { nlhost_get(CALL, GET); }
PHP_FUNCTION(rmon_nlhost_getnext) { nlhost_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_nlhost_getbulk) { nlhost_get(CALL, GETBULK); }
PHP_FUNCTION(rmon_alhost_get) { alhost_get(CALL, GET); }
PHP_FUNCTION(rmon_alhost_getnext) { alhost_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_alhost_getbulk) { alhost_get(CALL, GETBULK); }
