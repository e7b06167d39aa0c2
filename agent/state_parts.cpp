/* What survives a restart, one line each, in the order in which it is taken back. */

#include "agent/probe.h"
#include "agent/state.h"

namespace {

constexpr state_part parts[] = {
    keep<save_system_texts, load_system_texts>("system"),
    keep_rows<
        &probe::etherstats,
        etherstats_describe,
        etherstats_set,
        &rmonrpc_etherstats_t::etherStatsStatus>("etherStats"),
    keep<save_addresses, load_addresses>("addresses"),
    keep<save_host_name, load_host_name>("hostName"),
    keep<save_resolvers, load_resolvers>("resolvers"),
    keep_rows<&probe::trapdests, trapdest_describe, trapdest_set, &rmonrpc_snmp_trapdest_t::trapDestStatus>(
        "trapDest"),
    keep<save_communities, load_community>("communities"),
};

} // namespace

std::span<const state_part> state_parts()
{
    return parts;
}
