// SPDX-License-Identifier: MIT
/*
 * The families of tables, one line each, in the order in which their settings
 * are taken back: what a row refers to stands before it.
 */
#include "agent/capture/family.h"

#include <algorithm>
#include <vector>

// clang-format off
#define FAMILIES(one) \
    one(system_group) \
    one(interface_rows) \
    one(etherstats) \
    one(history) \
    one(hosts) \
    one(hosttopn) \
    one(matrix) \
    one(events) \
    one(channels) \
    one(filters) \
    one(capture_buffers) \
    one(capture_save) \
    one(alarms) \
    one(administration) \
    one(snmp_settings) \
    one(pdir) \
    one(addrmap) \
    one(pdist) \
    one(hlhost) \
    one(hlmatrix) \
    one(dsmon_aggregation) \
    one(dsmon_stats) \
    one(dsmon_pdist) \
    one(dsmon_hosts) \
    one(dsmon_matrix) \
    one(dsmon_lock) \
    one(smon) \
    one(art) \
    one(nde) \
    one(netflow) \
    one(voice)
// clang-format on

#define DECLARE_FAMILY(name) extern const family name##_family;
#define NAME_FAMILY(name) &name##_family,

FAMILIES(DECLARE_FAMILY)

namespace {

constexpr const family *all[] = {FAMILIES(NAME_FAMILY)};

/** What all families have of something. */
template <class Part> std::vector<Part> of_all(std::span<const Part> family::*part)
{
    std::vector<Part> parts;
    for (const family *one : all)
        parts.insert(parts.end(), (one->*part).begin(), (one->*part).end());
    return parts;
}

} // namespace

std::span<const family *const> families()
{
    return all;
}

std::span<const served_procedure> served_procedures()
{
    static const std::vector<served_procedure> sorted = [] {
        std::vector<served_procedure> procedures = of_all(&family::procedures);
        std::ranges::sort(procedures, {}, &served_procedure::number);
        return procedures;
    }();
    return sorted;
}

std::span<const state_part> state_parts()
{
    static const std::vector<state_part> parts = of_all(&family::kept);
    return parts;
}

std::span<const known_variable> known_variables()
{
    static const std::vector<known_variable> variables = of_all(&family::variables);
    return variables;
}
