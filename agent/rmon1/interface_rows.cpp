// SPDX-License-Identifier: MIT
#include "agent/rmon1/interface_rows.h"

#include "agent/capture/family.h"
#include "agent/core/reply.h"
#include "agent/core/table.h"

#include <linux/if.h>
#include <linux/if_arp.h>

namespace {

/* Numbers of the interface table's enumerations (IANAifType-MIB, RFC 2863). */
enum if_type : int32_t { if_other = 1, if_ethernet_csmacd = 6, if_software_loopback = 24, if_tunnel = 131 };
enum if_status : int32_t {
    if_up = 1,
    if_down = 2,
    if_testing = 3,
    if_dormant = 5,
    if_not_present = 6,
    if_lower_layer_down = 7,
};

/* Kinds of data source. */
enum dsrc_type : uint32_t { dsrc_other = 0, dsrc_eth = 1, dsrc_vlan = 2 };

int32_t type_of(const interface &iface)
{
    switch (iface.hardware_type) {
    case ARPHRD_ETHER:
        return if_ethernet_csmacd;
    case ARPHRD_LOOPBACK:
        return if_software_loopback;
    case ARPHRD_TUNNEL:
    case ARPHRD_TUNNEL6:
    case ARPHRD_SIT:
    case ARPHRD_IPGRE:
    case ARPHRD_IP6GRE:
        return if_tunnel;
    default:
        return if_other;
    }
}

int32_t oper_status_of(const interface &iface)
{
    switch (iface.oper_state) {
    case IF_OPER_UP:
        return if_up;
    case IF_OPER_DORMANT:
        return if_dormant;
    case IF_OPER_TESTING:
        return if_testing;
    case IF_OPER_LOWERLAYERDOWN:
        return if_lower_layer_down;
    case IF_OPER_NOTPRESENT:
        return if_not_present;
    case IF_OPER_DOWN:
        return if_down;
    default:
        // Drivers of virtual interfaces don't keep the state; the flags tell whether packets pass.
        return iface.flags & IFF_UP && iface.flags & IFF_RUNNING ? if_up : if_down;
    }
}

uint32_t source_type_of(const interface &iface)
{
    if (iface.kind == "vlan")
        return dsrc_vlan;
    return iface.hardware_type == ARPHRD_ETHER ? dsrc_eth : dsrc_other;
}

/** A Counter32: the counter modulo 2^32. */
uint32_t counter_32(uint64_t value)
{
    return static_cast<uint32_t>(value);
}

/**
 * What the kernel doesn't tell stays 0: the multicast and broadcast packets
 * among those sent (all are counted as unicast), and packets of unknown
 * protocols (which it counts among the dropped ones). Whether broadcast packets
 * are among the received multicast ones depends on the driver.
 */
void fill_counters(rmonrpc_ifentry_t &row, const kernel_counters &kernel)
{
    row.ifInOctets = counter_32(kernel.rx_bytes);
    row.ifInUcastPkts = counter_32(kernel.rx_packets - kernel.multicast);
    row.ifInNUcastPkts = counter_32(kernel.multicast);
    row.ifInDiscards = counter_32(kernel.rx_dropped + kernel.rx_missed_errors);
    row.ifInErrors = counter_32(kernel.rx_errors);
    row.ifOutOctets = counter_32(kernel.tx_bytes);
    row.ifOutUcastPkts = counter_32(kernel.tx_packets);
    row.ifOutDiscards = counter_32(kernel.tx_dropped);
    row.ifOutErrors = counter_32(kernel.tx_errors);
}

} // namespace

rmonrpc_ifentry_t ifentry_get(probe &agent, const rmonrpc_row_key2_t &key)
{
    interface_table &table = agent.interfaces;
    auto found = find_row(table.rows, key.index, key.getType);
    const interface *iface = nullptr;
    while (found != table.rows.end() && !(iface = fetch_interface(table, found->first)))
        found = key.getType == GET ? table.rows.end() : std::next(found);

    if (!iface)
        return no_such_row<rmonrpc_ifentry_t>();
    rmonrpc_ifentry_t row{};
    row.ifIndex = iface->index;
    set_text(row.ifDescr, iface->name);
    row.ifType = type_of(*iface);
    row.ifMtu = iface->mtu;
    row.ifSpeed = speed_of(*iface);
    // The loopback has no address; the kernel shows one of zeros.
    if (iface->hardware_type != ARPHRD_LOOPBACK)
        set_bytes(row.ifPhysAddress, iface->address);
    row.ifAdminStatus = iface->flags & IFF_UP ? if_up : if_down;
    row.ifOperStatus = oper_status_of(*iface);
    row.ifLastChange = iface->last_change;
    fill_counters(row, iface->counters);
    row.ifOutQLen = queue_length_of(table, *iface);
    // Slot and port, channel group and span mode are a switch's; a host has none, and they stay 0.
    row.dsrcType = source_type_of(*iface);
    row.dsrcVlan = iface->vlan;
    return row;
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

constexpr served_procedure procedures[] = {
    serve<ifentry_get>(ifentry_get_1),
};

// clang-format off
constexpr known_variable variables[] = {
    gauge<ifentry_get, one_index, &rmonrpc_ifentry_t::ifIndex>("1.3.6.1.2.1.2.2.1.1"),
    gauge<ifentry_get, one_index, &rmonrpc_ifentry_t::ifType>("1.3.6.1.2.1.2.2.1.3"),
    gauge<ifentry_get, one_index, &rmonrpc_ifentry_t::ifMtu>("1.3.6.1.2.1.2.2.1.4"),
    gauge<ifentry_get, one_index, &rmonrpc_ifentry_t::ifSpeed>("1.3.6.1.2.1.2.2.1.5"),
    gauge<ifentry_get, one_index, &rmonrpc_ifentry_t::ifAdminStatus>("1.3.6.1.2.1.2.2.1.7"),
    gauge<ifentry_get, one_index, &rmonrpc_ifentry_t::ifOperStatus>("1.3.6.1.2.1.2.2.1.8"),
    gauge<ifentry_get, one_index, &rmonrpc_ifentry_t::ifLastChange>("1.3.6.1.2.1.2.2.1.9"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifInOctets>("1.3.6.1.2.1.2.2.1.10"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifInUcastPkts>("1.3.6.1.2.1.2.2.1.11"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifInNUcastPkts>("1.3.6.1.2.1.2.2.1.12"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifInDiscards>("1.3.6.1.2.1.2.2.1.13"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifInErrors>("1.3.6.1.2.1.2.2.1.14"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifInUnknownProtos>("1.3.6.1.2.1.2.2.1.15"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifOutOctets>("1.3.6.1.2.1.2.2.1.16"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifOutUcastPkts>("1.3.6.1.2.1.2.2.1.17"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifOutNUcastPkts>("1.3.6.1.2.1.2.2.1.18"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifOutDiscards>("1.3.6.1.2.1.2.2.1.19"),
    counter<ifentry_get, one_index, &rmonrpc_ifentry_t::ifOutErrors>("1.3.6.1.2.1.2.2.1.20"),
    gauge<ifentry_get, one_index, &rmonrpc_ifentry_t::ifOutQLen>("1.3.6.1.2.1.2.2.1.21"),
};
// clang-format on

} // namespace

extern const family interface_rows_family = {
    .name = "interface_rows",
    .procedures = procedures,
    .variables = variables,
};
