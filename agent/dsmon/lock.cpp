// SPDX-License-Identifier: MIT
/*
 * The lock of the aggregation. A family of its own: it comes back behind all that counts by the aggregation,
 * since it keeps the rest as it is.
 */
#include "agent/capture/counting.h"
#include "agent/capture/family.h"
#include "agent/dsmon/aggregation.h"

namespace {

/** TruthValue (RFC 2579). */
constexpr int32_t truth = 1, falsehood = 2;

int32_t dsmon_aggctl_locked(probe &agent)
{
    return storage<dsmon_aggregation>(agent).locked ? truth : falsehood;
}

int32_t dsmon_aggctl_set_lock(probe &agent, const int32_t &wanted)
{
    if (wanted != truth && wanted != falsehood)
        return bad_value;
    const bool lock = wanted == truth;
    dsmon_aggregation &aggregation = storage<dsmon_aggregation>(agent);
    if (lock == aggregation.locked)
        return no_error;
    catch_up_all(agent);
    aggregation.locked = lock;
    for (const lock_listener changed : aggregation.listeners)
        changed(agent, lock);
    return no_error;
}

void save_lock(probe &agent, state_writer &writer)
{
    if (storage<dsmon_aggregation>(agent).locked)
        write_record(writer, truth);
}

int32_t load_lock(probe &agent, const int32_t &locked)
{
    return dsmon_aggctl_set_lock(agent, locked);
}

constexpr served_procedure procedures[] = {
    serve<dsmon_aggctl_locked>(dsmon_aggctl_locked_1),
    serve_set<dsmon_aggctl_set_lock>(dsmon_aggctl_set_lock_1),
};

constexpr state_part kept[] = {
    keep<save_lock, load_lock>("dsmonAggControlLocked"),
};

} // namespace

extern const family dsmon_lock_family = {
    .name = "dsmon_lock",
    .procedures = procedures,
    .kept = kept,
};
