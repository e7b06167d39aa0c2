// SPDX-License-Identifier: MIT
/* Address map (RFC 2021, its scalars, addressMapControlTable and addressMapTable). */

#include "rmon/answers.h"

using namespace rmon;

namespace {

using S = rmonrpc_addrmap_scalars_t;

using addrmap_scalars_row = row_shape<
    status<&S::status>,
    field<&S::addressMapInserts>,
    field<&S::addressMapDeletes>,
    field<&S::addressMapMaxDesiredEntries>>;

using C = rmonrpc_addrmap_ctl_t;

using addrmap_ctl_row = row_shape<
    status<&C::status>,
    field<&C::addressMapControlIndex>,
    field<&C::addressMapControlDataSource>,
    field<&C::addressMapControlDroppedFrames>,
    field<&C::addressMapControlOwner>,
    field<&C::addressMapControlStatus>>;

void addrmap_ctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<addrmap_ctl_row>(call, ask(call, addrmap_ctl_get_1, link, key, "addrmap_ctl_get"));
}

using E = rmonrpc_addrmap_entry_t;

using addrmap_row = row_shape<
    status<&E::status>,
    field<&E::addressMapTimeMark>,
    address_or_zero<&E::addressMapNetworkAddress>,
    field<&E::addressMapSource>,
    address_or_zero<&E::addressMapPhysicalAddress>,
    field<&E::addressMapLastChange>,
    field<&E::protocolDirLocalIndex>>;

void addrmap_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_addrmap_key_t key{};
    key.getType = getType;
    zval *from;
    address networkAddress;
    if (!take_rows_linked(
            call, getType, key.count, link, key.addressMapTimeMark, key.protocolDirLocalIndex, from,
            key.addressMapSource)
        || !convert(call, from, networkAddress))
        return;
    key.addressMapNetworkAddress = list_of(networkAddress);
    return_rows<addrmap_row>(call, ask(call, addrmap_entry_get_1, link, key, "addrmap_entry_get"), getType);
}

} // namespace

PHP_FUNCTION(rmon_addrmap_scalars_get)
{
    const script_call call{execute_data, return_value};
    link_id link;
    if (take(call, link))
        return_row<addrmap_scalars_row>(
            call, ask(call, addrmap_scalars_get_1, link, {}, "rmon_addrmap_scalars_get"));
}

PHP_FUNCTION(rmon_addrmap_scalars_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    S row{};
    if (take(call, link, row.addressMapMaxDesiredEntries))
        return_integer(call, ask(call, addrmap_scalars_set_1, link, row, "rmon_addrmap_scalars_set"));
}

PHP_FUNCTION(rmon_addrmap_ctl_get) { addrmap_ctl_get(CALL, GET); }
PHP_FUNCTION(rmon_addrmap_ctl_getnext) { addrmap_ctl_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_addrmap_ctl_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    C row{};
    if (take(
            call, link, row.addressMapControlIndex, row.addressMapControlDataSource,
            row.addressMapControlOwner, row.addressMapControlStatus))
        return_integer(call, ask(call, addrmap_ctl_set_1, link, row, "rmon_addrmap_ctl_set"));
}

PHP_FUNCTION(rmon_addrmap_entry_get) { addrmap_get(CALL, GET); }
PHP_FUNCTION(rmon_addrmap_entry_getnext) { addrmap_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_addrmap_entry_getbulk) { addrmap_get(CALL, GETBULK); }
