#include "agent/variables.h"

#include "agent/etherstats.h"
#include "agent/interface_rows.h"
#include "agent/probe.h"

#include "rmon/rpc/rmonrpc_xdr.h"

#include <charconv>

namespace {

struct variable {
    const char *name;
    const char *identifier;
    /** Reads the instance of this index; false when there is none. */
    bool (*read)(probe &agent, int32_t index, uint64_t &value);
};

/** A column of a table with one index; Get is the table's read, Field the record's field. */
template <auto Get, auto Field> constexpr variable column(const char *name, const char *identifier)
{
    return {name, identifier, [](probe &agent, int32_t index, uint64_t &value) {
                auto row = Get(agent, rmonrpc_row_key2_t{index, GET});
                const bool there = row.status == 0;
                // An INTEGER is taken as its 32 bits, so that a negative one stays one in them.
                value = std::make_unsigned_t<std::remove_cvref_t<decltype(row.*Field)>>(row.*Field);
                release(&row);
                return there;
            }};
}

/** A variable with one instance, 0. */
template <auto Get, auto Field> constexpr variable scalar(const char *name, const char *identifier)
{
    return {name, identifier, [](probe &agent, int32_t index, uint64_t &value) {
                auto group = Get(agent);
                value = std::make_unsigned_t<std::remove_cvref_t<decltype(group.*Field)>>(group.*Field);
                release(&group);
                return index == 0;
            }};
}

using ifs = rmonrpc_ifentry_t;
using ether = rmonrpc_etherstats_t;

// clang-format off
constexpr variable variables[] = {
    scalar<system_get, &rmonrpc_system_t::sysUpTime>("sysUpTime", "1.3.6.1.2.1.1.3"),
    scalar<system_get, &rmonrpc_system_t::sysServices>("sysServices", "1.3.6.1.2.1.1.7"),
    column<ifentry_get, &ifs::ifIndex>("ifIndex", "1.3.6.1.2.1.2.2.1.1"),
    column<ifentry_get, &ifs::ifType>("ifType", "1.3.6.1.2.1.2.2.1.3"),
    column<ifentry_get, &ifs::ifMtu>("ifMtu", "1.3.6.1.2.1.2.2.1.4"),
    column<ifentry_get, &ifs::ifSpeed>("ifSpeed", "1.3.6.1.2.1.2.2.1.5"),
    column<ifentry_get, &ifs::ifAdminStatus>("ifAdminStatus", "1.3.6.1.2.1.2.2.1.7"),
    column<ifentry_get, &ifs::ifOperStatus>("ifOperStatus", "1.3.6.1.2.1.2.2.1.8"),
    column<ifentry_get, &ifs::ifLastChange>("ifLastChange", "1.3.6.1.2.1.2.2.1.9"),
    column<ifentry_get, &ifs::ifInOctets>("ifInOctets", "1.3.6.1.2.1.2.2.1.10"),
    column<ifentry_get, &ifs::ifInUcastPkts>("ifInUcastPkts", "1.3.6.1.2.1.2.2.1.11"),
    column<ifentry_get, &ifs::ifInNUcastPkts>("ifInNUcastPkts", "1.3.6.1.2.1.2.2.1.12"),
    column<ifentry_get, &ifs::ifInDiscards>("ifInDiscards", "1.3.6.1.2.1.2.2.1.13"),
    column<ifentry_get, &ifs::ifInErrors>("ifInErrors", "1.3.6.1.2.1.2.2.1.14"),
    column<ifentry_get, &ifs::ifInUnknownProtos>("ifInUnknownProtos", "1.3.6.1.2.1.2.2.1.15"),
    column<ifentry_get, &ifs::ifOutOctets>("ifOutOctets", "1.3.6.1.2.1.2.2.1.16"),
    column<ifentry_get, &ifs::ifOutUcastPkts>("ifOutUcastPkts", "1.3.6.1.2.1.2.2.1.17"),
    column<ifentry_get, &ifs::ifOutNUcastPkts>("ifOutNUcastPkts", "1.3.6.1.2.1.2.2.1.18"),
    column<ifentry_get, &ifs::ifOutDiscards>("ifOutDiscards", "1.3.6.1.2.1.2.2.1.19"),
    column<ifentry_get, &ifs::ifOutErrors>("ifOutErrors", "1.3.6.1.2.1.2.2.1.20"),
    column<ifentry_get, &ifs::ifOutQLen>("ifOutQLen", "1.3.6.1.2.1.2.2.1.21"),
    column<etherstats_get, &ether::etherStatsIndex>("etherStatsIndex", "1.3.6.1.2.1.16.1.1.1.1"),
    column<etherstats_get, &ether::etherStatsDropEvents>("etherStatsDropEvents", "1.3.6.1.2.1.16.1.1.1.3"),
    column<etherstats_get, &ether::etherStatsOctets>("etherStatsOctets", "1.3.6.1.2.1.16.1.1.1.4"),
    column<etherstats_get, &ether::etherStatsPkts>("etherStatsPkts", "1.3.6.1.2.1.16.1.1.1.5"),
    column<etherstats_get, &ether::etherStatsBroadcastPkts>("etherStatsBroadcastPkts", "1.3.6.1.2.1.16.1.1.1.6"),
    column<etherstats_get, &ether::etherStatsMulticastPkts>("etherStatsMulticastPkts", "1.3.6.1.2.1.16.1.1.1.7"),
    column<etherstats_get, &ether::etherStatsCRCAlignErrors>("etherStatsCRCAlignErrors", "1.3.6.1.2.1.16.1.1.1.8"),
    column<etherstats_get, &ether::etherStatsUndersizePkts>("etherStatsUndersizePkts", "1.3.6.1.2.1.16.1.1.1.9"),
    column<etherstats_get, &ether::etherStatsOversizePkts>("etherStatsOversizePkts", "1.3.6.1.2.1.16.1.1.1.10"),
    column<etherstats_get, &ether::etherStatsFragments>("etherStatsFragments", "1.3.6.1.2.1.16.1.1.1.11"),
    column<etherstats_get, &ether::etherStatsJabbers>("etherStatsJabbers", "1.3.6.1.2.1.16.1.1.1.12"),
    column<etherstats_get, &ether::etherStatsCollisions>("etherStatsCollisions", "1.3.6.1.2.1.16.1.1.1.13"),
    column<etherstats_get, &ether::etherStatsPkts64Octets>("etherStatsPkts64Octets", "1.3.6.1.2.1.16.1.1.1.14"),
    column<etherstats_get, &ether::etherStatsPkts65to127Octets>("etherStatsPkts65to127Octets", "1.3.6.1.2.1.16.1.1.1.15"),
    column<etherstats_get, &ether::etherStatsPkts128to255Octets>("etherStatsPkts128to255Octets", "1.3.6.1.2.1.16.1.1.1.16"),
    column<etherstats_get, &ether::etherStatsPkts256to511Octets>("etherStatsPkts256to511Octets", "1.3.6.1.2.1.16.1.1.1.17"),
    column<etherstats_get, &ether::etherStatsPkts512to1023Octets>("etherStatsPkts512to1023Octets", "1.3.6.1.2.1.16.1.1.1.18"),
    column<etherstats_get, &ether::etherStatsPkts1024to1518Octets>("etherStatsPkts1024to1518Octets", "1.3.6.1.2.1.16.1.1.1.19"),
};
// clang-format on

bool read_index(std::string_view text, int32_t &index)
{
    const char *end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, index);
    return !text.empty() && text[0] != '-' && error == std::errc{} && rest == end;
}

} // namespace

bool variable_value(probe &agent, std::string_view name, uint64_t &value)
{
    const bool dotted = name.starts_with('.');
    if (dotted)
        name.remove_prefix(1);
    const std::size_t last = name.rfind('.');
    int32_t index = 0;
    if (last == name.npos || !read_index(name.substr(last + 1), index))
        return false;
    const std::string_view column = name.substr(0, last);
    for (const variable &one : variables)
        if ((!dotted && column == one.name) || column == one.identifier)
            return one.read(agent, index, value);
    return false;
}
