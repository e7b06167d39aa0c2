// SPDX-License-Identifier: MIT
/* The system group and the interface table (RFC 1213), with each interface's data source. */

#include "rmon/answers.h"

using namespace rmon;

namespace {

using system_row = row_shape<
    field<&rmonrpc_system_t::sysDescr>,
    field<&rmonrpc_system_t::sysUpTime>,
    field<&rmonrpc_system_t::sysContact>,
    field<&rmonrpc_system_t::sysName>,
    field<&rmonrpc_system_t::sysLocation>,
    field<&rmonrpc_system_t::sysObjectID>,
    field<&rmonrpc_system_t::sysServices>>;

using R = rmonrpc_ifentry_t;

constexpr uint32_t ethernet_source = 1;

bool is_ethernet(const R &row) { return row.dsrcType == ethernet_source; }

std::string_view source_type(int32_t type)
{
    switch (type) {
    case ethernet_source:
        return "ETH";
    case 2:
        return "VLAN";
    case 4:
        return "NETFLOW";
    case 9:
        return "FEC";
    default:
        return "OTHER";
    }
}

std::string_view span_mode(int32_t mode)
{
    switch (mode) {
    case 1:
        return "TX";
    case 2:
        return "RX";
    case 3:
        return "BOTH";
    default:
        return "NONE";
    }
}

/** A MAC address as "00:1A:2B:3C:4D:5E"; an address of any other length as "". */
void mac_address(zval *slot, const wire::byte_list &address)
{
    if (address.length == 6)
        set_hex(slot, wire::bytes_of(address), 6, "0123456789ABCDEF", ':');
    else
        ZVAL_EMPTY_STRING(slot);
}

using ifentry_row = row_shape<
    status<&R::status>,
    field<&R::ifIndex>,
    field<&R::ifDescr>,
    field<&R::ifType>,
    field<&R::ifMtu>,
    field<&R::ifSpeed>,
    converted<"ifPhysAddress", mac_address, &R::ifPhysAddress>,
    field<&R::ifAdminStatus>,
    field<&R::ifOperStatus>,
    field<&R::ifLastChange>,
    field<&R::ifInOctets>,
    field<&R::ifInUcastPkts>,
    field<&R::ifInNUcastPkts>,
    field<&R::ifInDiscards>,
    field<&R::ifInErrors>,
    field<&R::ifInUnknownProtos>,
    field<&R::ifOutOctets>,
    field<&R::ifOutUcastPkts>,
    field<&R::ifOutNUcastPkts>,
    field<&R::ifOutDiscards>,
    field<&R::ifOutErrors>,
    field<&R::ifOutQLen>,
    computed<"dsrcType", source_type, &R::dsrcType>,
    only_if<is_ethernet, field<&R::dsrcSlot>, field<&R::dsrcPort>>,
    field<&R::dsrcVlan>,
    field<&R::dsrcChGrp>,
    computed<"dsrcSpanMode", span_mode, &R::dsrcSpanMode>,
    field<&R::dsrcSpanDest>>;

void php_ifentry_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<ifentry_row>(call, ask(call, ifentry_get_1, link, key, "rmon_ifentry_get"));
}

} // namespace

PHP_FUNCTION(rmon_system_get)
{
    const script_call call{execute_data, return_value};
    link_id link;
    if (take(call, link))
        return_row<system_row>(call, ask(call, system_get_1, link, {}, "rmon_system_get"));
}

PHP_FUNCTION(rmon_system_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    rmonrpc_system_t row{};
    if (take(call, link, row.sysContact, row.sysName, row.sysLocation))
        return_integer(call, ask(call, system_set_1, link, row, "rmon_system_set"));
}

PHP_FUNCTION(rmon_ifentry_get) { php_ifentry_get(CALL, GET); }
PHP_FUNCTION(rmon_ifentry_getnext) { php_ifentry_get(CALL, GETNEXT); }
