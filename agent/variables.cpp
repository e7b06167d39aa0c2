#include "agent/variables.h"

#include "agent/etherstats.h"
#include "agent/interface_rows.h"
#include "agent/probe.h"

#include "rmon/rpc/rmonrpc_xdr.h"

#include <array>
#include <charconv>
#include <span>

namespace {

/** The numbers of an instance. */
using instance = std::span<const uint32_t>;

struct variable {
    const char *name;
    const char *identifier;
    bool counter;
    /** Reads an instance; false when there is none. */
    bool (*read)(probe &agent, instance index, uint64_t &value);
};

/** The index of a row, of those that are one number. */
bool row_index(instance index, int32_t &row)
{
    if (index.size() != 1 || index[0] > INT32_MAX)
        return false;
    row = static_cast<int32_t>(index[0]);
    return true;
}

/** A record's field as a number. An INTEGER is taken as its 32 bits, so that a negative one stays one in
 * them. */
template <class Number> uint64_t number_of(Number value)
{
    return std::make_unsigned_t<Number>(value);
}

/** A column of a table with one index; Get is the table's read, Field the record's field. */
template <auto Get, auto Field, bool Counter>
constexpr variable column(const char *name, const char *identifier)
{
    return {name, identifier, Counter, [](probe &agent, instance index, uint64_t &value) {
                int32_t which = 0;
                if (!row_index(index, which))
                    return false;
                auto row = Get(agent, rmonrpc_row_key2_t{which, GET});
                const bool there = row.status == 0;
                value = number_of(row.*Field);
                release(&row);
                return there;
            }};
}

template <auto Get, auto Field> constexpr variable counter(const char *name, const char *identifier)
{
    return column<Get, Field, true>(name, identifier);
}

template <auto Get, auto Field> constexpr variable gauge(const char *name, const char *identifier)
{
    return column<Get, Field, false>(name, identifier);
}

/** A variable with one instance, 0. */
template <auto Get, auto Field> constexpr variable scalar(const char *name, const char *identifier)
{
    return {name, identifier, false, [](probe &agent, instance index, uint64_t &value) {
                auto group = Get(agent);
                value = number_of(group.*Field);
                release(&group);
                return index.size() == 1 && index[0] == 0;
            }};
}

/** A MAC address within an instance: its length and its octets, each a number. */
constexpr std::size_t mac_numbers = 1 + mac_octets;

bool mac_index(instance part, mac_key &address)
{
    if (part[0] != mac_octets)
        return false;
    uint8_t mac[mac_octets];
    for (uint32_t i = 0; i < mac_octets; i++) {
        if (part[1 + i] > UINT8_MAX)
            return false;
        mac[i] = static_cast<uint8_t>(part[1 + i]);
    }
    address = mac_key_of(mac);
    return true;
}

/** A count of a host. */
template <auto Field> constexpr variable host_count(const char *name, const char *identifier)
{
    return {name, identifier, true, [](probe &agent, instance index, uint64_t &value) {
                int32_t control = 0;
                mac_key address;
                if (index.size() != 1 + mac_numbers || !row_index(index.first(1), control)
                    || !mac_index(index.subspan(1), address))
                    return false;
                host_work *hosts = find_hosts(agent, control);
                const uint32_t found = hosts ? find_learned(hosts->learned, address) : no_entry;
                if (found == no_entry)
                    return false;
                value = hosts->learned.entries[found].row.*Field;
                return true;
            }};
}

/** A count of a conversation, from its source to its destination. */
template <auto Field> constexpr variable conversation_count(const char *name, const char *identifier)
{
    return {name, identifier, true, [](probe &agent, instance index, uint64_t &value) {
                int32_t control = 0;
                matrix_key key;
                if (index.size() != 1 + 2 * mac_numbers || !row_index(index.first(1), control)
                    || !mac_index(index.subspan(1, mac_numbers), key.source)
                    || !mac_index(index.subspan(1 + mac_numbers), key.destination))
                    return false;
                const matrix_counts *found = find_conversation(agent, control, key);
                if (found)
                    value = found->*Field;
                return found != nullptr;
            }};
}

using ifs = rmonrpc_ifentry_t;
using ether = rmonrpc_etherstats_t;

// clang-format off
constexpr variable variables[] = {
    scalar<system_get, &rmonrpc_system_t::sysUpTime>("sysUpTime", "1.3.6.1.2.1.1.3"),
    scalar<system_get, &rmonrpc_system_t::sysServices>("sysServices", "1.3.6.1.2.1.1.7"),
    gauge<ifentry_get, &ifs::ifIndex>("ifIndex", "1.3.6.1.2.1.2.2.1.1"),
    gauge<ifentry_get, &ifs::ifType>("ifType", "1.3.6.1.2.1.2.2.1.3"),
    gauge<ifentry_get, &ifs::ifMtu>("ifMtu", "1.3.6.1.2.1.2.2.1.4"),
    gauge<ifentry_get, &ifs::ifSpeed>("ifSpeed", "1.3.6.1.2.1.2.2.1.5"),
    gauge<ifentry_get, &ifs::ifAdminStatus>("ifAdminStatus", "1.3.6.1.2.1.2.2.1.7"),
    gauge<ifentry_get, &ifs::ifOperStatus>("ifOperStatus", "1.3.6.1.2.1.2.2.1.8"),
    gauge<ifentry_get, &ifs::ifLastChange>("ifLastChange", "1.3.6.1.2.1.2.2.1.9"),
    counter<ifentry_get, &ifs::ifInOctets>("ifInOctets", "1.3.6.1.2.1.2.2.1.10"),
    counter<ifentry_get, &ifs::ifInUcastPkts>("ifInUcastPkts", "1.3.6.1.2.1.2.2.1.11"),
    counter<ifentry_get, &ifs::ifInNUcastPkts>("ifInNUcastPkts", "1.3.6.1.2.1.2.2.1.12"),
    counter<ifentry_get, &ifs::ifInDiscards>("ifInDiscards", "1.3.6.1.2.1.2.2.1.13"),
    counter<ifentry_get, &ifs::ifInErrors>("ifInErrors", "1.3.6.1.2.1.2.2.1.14"),
    counter<ifentry_get, &ifs::ifInUnknownProtos>("ifInUnknownProtos", "1.3.6.1.2.1.2.2.1.15"),
    counter<ifentry_get, &ifs::ifOutOctets>("ifOutOctets", "1.3.6.1.2.1.2.2.1.16"),
    counter<ifentry_get, &ifs::ifOutUcastPkts>("ifOutUcastPkts", "1.3.6.1.2.1.2.2.1.17"),
    counter<ifentry_get, &ifs::ifOutNUcastPkts>("ifOutNUcastPkts", "1.3.6.1.2.1.2.2.1.18"),
    counter<ifentry_get, &ifs::ifOutDiscards>("ifOutDiscards", "1.3.6.1.2.1.2.2.1.19"),
    counter<ifentry_get, &ifs::ifOutErrors>("ifOutErrors", "1.3.6.1.2.1.2.2.1.20"),
    gauge<ifentry_get, &ifs::ifOutQLen>("ifOutQLen", "1.3.6.1.2.1.2.2.1.21"),
    gauge<etherstats_get, &ether::etherStatsIndex>("etherStatsIndex", "1.3.6.1.2.1.16.1.1.1.1"),
    counter<etherstats_get, &ether::etherStatsDropEvents>("etherStatsDropEvents", "1.3.6.1.2.1.16.1.1.1.3"),
    counter<etherstats_get, &ether::etherStatsOctets>("etherStatsOctets", "1.3.6.1.2.1.16.1.1.1.4"),
    counter<etherstats_get, &ether::etherStatsPkts>("etherStatsPkts", "1.3.6.1.2.1.16.1.1.1.5"),
    counter<etherstats_get, &ether::etherStatsBroadcastPkts>("etherStatsBroadcastPkts", "1.3.6.1.2.1.16.1.1.1.6"),
    counter<etherstats_get, &ether::etherStatsMulticastPkts>("etherStatsMulticastPkts", "1.3.6.1.2.1.16.1.1.1.7"),
    counter<etherstats_get, &ether::etherStatsCRCAlignErrors>("etherStatsCRCAlignErrors", "1.3.6.1.2.1.16.1.1.1.8"),
    counter<etherstats_get, &ether::etherStatsUndersizePkts>("etherStatsUndersizePkts", "1.3.6.1.2.1.16.1.1.1.9"),
    counter<etherstats_get, &ether::etherStatsOversizePkts>("etherStatsOversizePkts", "1.3.6.1.2.1.16.1.1.1.10"),
    counter<etherstats_get, &ether::etherStatsFragments>("etherStatsFragments", "1.3.6.1.2.1.16.1.1.1.11"),
    counter<etherstats_get, &ether::etherStatsJabbers>("etherStatsJabbers", "1.3.6.1.2.1.16.1.1.1.12"),
    counter<etherstats_get, &ether::etherStatsCollisions>("etherStatsCollisions", "1.3.6.1.2.1.16.1.1.1.13"),
    counter<etherstats_get, &ether::etherStatsPkts64Octets>("etherStatsPkts64Octets", "1.3.6.1.2.1.16.1.1.1.14"),
    counter<etherstats_get, &ether::etherStatsPkts65to127Octets>("etherStatsPkts65to127Octets", "1.3.6.1.2.1.16.1.1.1.15"),
    counter<etherstats_get, &ether::etherStatsPkts128to255Octets>("etherStatsPkts128to255Octets", "1.3.6.1.2.1.16.1.1.1.16"),
    counter<etherstats_get, &ether::etherStatsPkts256to511Octets>("etherStatsPkts256to511Octets", "1.3.6.1.2.1.16.1.1.1.17"),
    counter<etherstats_get, &ether::etherStatsPkts512to1023Octets>("etherStatsPkts512to1023Octets", "1.3.6.1.2.1.16.1.1.1.18"),
    counter<etherstats_get, &ether::etherStatsPkts1024to1518Octets>("etherStatsPkts1024to1518Octets", "1.3.6.1.2.1.16.1.1.1.19"),
    host_count<&host_counts::in_pkts>("hostInPkts", "1.3.6.1.2.1.16.4.2.1.4"),
    host_count<&host_counts::out_pkts>("hostOutPkts", "1.3.6.1.2.1.16.4.2.1.5"),
    host_count<&host_counts::in_octets>("hostInOctets", "1.3.6.1.2.1.16.4.2.1.6"),
    host_count<&host_counts::out_octets>("hostOutOctets", "1.3.6.1.2.1.16.4.2.1.7"),
    host_count<&host_counts::out_errors>("hostOutErrors", "1.3.6.1.2.1.16.4.2.1.8"),
    host_count<&host_counts::out_broadcast_pkts>("hostOutBroadcastPkts", "1.3.6.1.2.1.16.4.2.1.9"),
    host_count<&host_counts::out_multicast_pkts>("hostOutMulticastPkts", "1.3.6.1.2.1.16.4.2.1.10"),
    conversation_count<&matrix_counts::pkts>("matrixSDPkts", "1.3.6.1.2.1.16.6.2.1.4"),
    conversation_count<&matrix_counts::octets>("matrixSDOctets", "1.3.6.1.2.1.16.6.2.1.5"),
    conversation_count<&matrix_counts::errors>("matrixSDErrors", "1.3.6.1.2.1.16.6.2.1.6"),
    counter<channel_get, &rmonrpc_channel_t::channelMatches>("channelMatches", "1.3.6.1.2.1.16.7.2.1.9"),
    gauge<buffer_ctl_get, &rmonrpc_buffer_ctl_t::bufferControlCapturedPackets>("bufferControlCapturedPackets", "1.3.6.1.2.1.16.8.1.1.11"),
};
// clang-format on

/** Numbers of an instance: more than any has. */
constexpr std::size_t most_numbers = 32;

/** Numbers with a dot before each; none when the text is something else. */
instance numbers_of(std::string_view text, std::array<uint32_t, most_numbers> &numbers)
{
    std::size_t count = 0;
    const char *at = text.data();
    const char *const end = at + text.size();
    while (at != end && *at == '.' && count < most_numbers) {
        const auto [rest, error] = std::from_chars(at + 1, end, numbers[count++]);
        if (error != std::errc{})
            return {};
        at = rest;
    }
    return at == end ? instance(numbers).first(count) : instance();
}

} // namespace

std::optional<variable_reading> read_variable(probe &agent, std::string_view name)
{
    const bool dotted = name.starts_with('.');
    if (dotted)
        name.remove_prefix(1);
    for (const variable &one : variables) {
        for (const std::string_view known : {one.name, one.identifier}) {
            if (!name.starts_with(known) || (dotted && known == one.name))
                continue;
            std::array<uint32_t, most_numbers> numbers{};
            const instance index = numbers_of(name.substr(known.size()), numbers);
            uint64_t value = 0;
            if (!index.empty())
                return one.read(agent, index, value) ? std::optional(variable_reading{value, one.counter})
                                                     : std::nullopt;
        }
    }
    return {};
}
