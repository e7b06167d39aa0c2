// SPDX-License-Identifier: MIT
/* The appliance's own SNMP agent: trap destinations, communities, the value of a MIB variable. */

#include "rmon/answers.h"

using namespace rmon;

namespace {

using T = rmonrpc_snmp_trapdest_t;

using trapdest_row = row_shape<
    status<&T::status>,
    field<&T::trapDestIndex>,
    field<&T::trapDestCommunity>,
    field<&T::trapDestProtocol>,
    address_or_zero<&T::trapDestAddress>,
    field<&T::trapDestOwner>,
    field<&T::trapDestStatus>>;

void trapdest_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<trapdest_row>(call, ask(call, trapdest_get_1, link, key, "trapdest_get"));
}

using C = rmonrpc_snmp_community_t;

using community_row = row_shape<status<&C::status>, field<&C::communityString>, field<&C::privs>>;

/** Reports under the label of the response-time reports, on purpose. */
void community_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_snmp_community_key_t key{{}, getType, 0};
    if (take_rows_linked(call, getType, key.count, link, key.communityString))
        return_rows<community_row>(call, ask(call, community_get_1, link, key, "art_rpt_get"), getType);
}

void community_set(script_call call, int32_t privs)
{
    link_id link;
    C row{0, {}, privs};
    if (convert_from(call, 1, link) && connected(call, link) && convert_from(call, 2, row.communityString))
        return_integer(call, ask(call, community_set_1, link, row, "community_set"));
}

} // namespace

PHP_FUNCTION(rmon_trapdest_get) { trapdest_get(CALL, GET); }
PHP_FUNCTION(rmon_trapdest_getnext) { trapdest_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_trapdest_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    T row{};
    integer_or_address trapDestAddress;
    if (!take_linked(
            call, link, row.trapDestIndex, row.trapDestCommunity, row.trapDestProtocol, trapDestAddress,
            row.trapDestOwner, row.trapDestStatus))
        return;
    row.trapDestAddress = list_of(trapDestAddress);
    return_integer(call, ask(call, trapdest_set_1, link, row, "rmon_trapdest_set"));
}

/** Only the low half of the value is shown; no failure is reported. */
PHP_FUNCTION(rmon_get_mib_var)
{
    const script_call call{execute_data, return_value};
    link_id link;
    rmonrpc_mibvar_name name;
    if (!take(call, link, name))
        return;
    const rmonrpc_mibvar_t *reply = ask(call, mibvar_get_1, link, name, unreported);
    if (reply && reply->status == 0)
        ZVAL_LONG(return_value, static_cast<uint32_t>(reply->value));
}

PHP_FUNCTION(rmon_community_get) { community_get(CALL, GET); }
PHP_FUNCTION(rmon_community_getnext) { community_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_community_getbulk) { community_get(CALL, GETBULK); }

/** An unknown privilege is refused without a message, before the link is looked at. */
PHP_FUNCTION(rmon_community_set)
{
    const script_call call{execute_data, return_value};
    zend_long privs;
    if (!counted(call, 3) || !convert_from(call, 3, privs))
        return;
    if (privs != COMM_RO && privs != COMM_RW)
        RETURN_FALSE;
    community_set(call, static_cast<int32_t>(privs));
}

PHP_FUNCTION(rmon_community_delete)
{
    const script_call call{execute_data, return_value};
    if (counted(call, 2))
        community_set(call, 0);
}
