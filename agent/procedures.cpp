#include "agent/procedures.h"

#include "agent/etherstats.h"
#include "agent/interface_rows.h"
#include "agent/probe.h"
#include "agent/system_group.h"

#include <algorithm>
#include <iterator>

namespace {

/** Does nothing, and so tells that the agent is there. */
int32_t test(probe &)
{
    return 0;
}

constexpr served_procedure procedures[] = {
    serve<test>(rmonrpc_test_1),
    serve<system_get>(system_get_1),
    serve<system_set>(system_set_1),
    serve<ifentry_get>(ifentry_get_1),
    serve<etherstats_get>(etherstats_get_1),
    serve<etherstats_set>(etherstats_set_1),
};

static_assert(std::ranges::is_sorted(procedures, std::ranges::less_equal{}, &served_procedure::number));

} // namespace

void note_change(probe &agent)
{
    agent.state.changed = true;
}

std::span<const served_procedure> served_procedures()
{
    return procedures;
}
