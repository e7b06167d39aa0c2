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
};

} // namespace

std::span<const state_part> state_parts()
{
    return parts;
}
