// SPDX-License-Identifier: MIT
#include "agent/dsmon/aggregation.h"

#include "agent/capture/family.h"
#include "agent/capture/counting.h"
#include "agent/core/table.h"

const dscp_map *find_profile(const probe &agent, int32_t index)
{
    const auto &profiles = storage<dsmon_aggregation>(agent).profiles;
    const auto found = profiles.find(index);
    return found != profiles.end() && found->second.status == row_status::valid ? &found->second.group_of
                                                                                : nullptr;
}

namespace {

/* The lock keeps profiles as they are; without it anything may change. */

struct profile_control_table {
    using row = aggregation_profile;
    using request = rmonrpc_dsmon_aggctl_t;
    static constexpr auto index = &request::dsmonAggControlIndex;
    static constexpr auto status = &request::dsmonAggControlStatus;
    static constexpr row_limits limits{};
    static constexpr std::tuple fields{
        changeable<&request::dsmonAggControlDescr, &row::description>(),
        changeable<&request::dsmonAggControlOwner, &row::owner>(),
    };
    static constexpr auto start = nothing_to_start<row>;
    static constexpr auto stop = nothing_to_stop<row>;
};

/** Its rows are found by profile, then by group. */
struct group_control_table {
    using row = aggregation_group;
    using request = rmonrpc_dsmon_agggrp_t;
    static constexpr auto index = &request::dsmonAggGroupIndex;
    static constexpr auto status = &request::dsmonAggGroupStatus;
    static constexpr row_limits limits{0, aggregation_groups - 1, aggregation_groups};
    static constexpr std::tuple fields{
        changeable<&request::dsmonAggGroupDescr, &row::description>(),
    };
    static constexpr auto start = nothing_to_start<row>;
    static constexpr auto stop = nothing_to_stop<row>;
};

rmonrpc_dsmon_aggctl_t profile_reply(int32_t index, const aggregation_profile &row)
{
    rmonrpc_dsmon_aggctl_t reply{};
    describe_row<profile_control_table>(reply, index, row);
    return reply;
}

rmonrpc_dsmon_agggrp_t group_reply(int32_t profile, int32_t group, const aggregation_group &row)
{
    rmonrpc_dsmon_agggrp_t reply{};
    reply.dsmonAggControlIndex = static_cast<uint32_t>(profile);
    describe_row<group_control_table>(reply, group, row);
    return reply;
}

rmonrpc_dsmon_aggprof_t dscp_reply(int32_t profile, int32_t dscp, const aggregation_profile &row)
{
    rmonrpc_dsmon_aggprof_t reply{};
    reply.dsmonAggControlIndex = static_cast<uint32_t>(profile);
    reply.dsmonAggGroupIndex = row.group_of[static_cast<uint32_t>(dscp)];
    reply.dscp = static_cast<uint32_t>(dscp);
    return reply;
}

/** Notes how a profile is now; one that is gone took its groups and DSCPs along. */
void note_profile(probe &agent, int32_t index, const aggregation_profile &before)
{
    const auto &profiles = storage<dsmon_aggregation>(agent).profiles;
    if (const auto found = profiles.find(index); found != profiles.end())
        return note_made_row(agent, profile_reply(index, found->second));
    rmonrpc_dsmon_aggctl_t profile{};
    profile.dsmonAggControlIndex = static_cast<uint32_t>(index);
    note_gone(agent, profile);
    for (const auto &[number, row] : before.groups) {
        rmonrpc_dsmon_agggrp_t group{};
        group.dsmonAggControlIndex = profile.dsmonAggControlIndex;
        group.dsmonAggGroupIndex = static_cast<uint32_t>(number);
        note_gone(agent, group);
    }
    for (int32_t dscp = 0; dscp < dscp_values; dscp++)
        note_gone(agent, dscp_reply(index, dscp, before));
}

rmonrpc_dsmon_aggctl_t dsmon_aggctl_get(probe &agent, const rmonrpc_row_key2_t &key)
{
    const auto found = find_row(storage<dsmon_aggregation>(agent).profiles, key.index, key.getType);
    if (found == storage<dsmon_aggregation>(agent).profiles.end())
        return no_such_row<rmonrpc_dsmon_aggctl_t>();
    return profile_reply(found->first, found->second);
}

int32_t dsmon_aggctl_set(probe &agent, const rmonrpc_dsmon_aggctl_t &request)
{
    if (storage<dsmon_aggregation>(agent).locked)
        return gen_err;
    auto &profiles = storage<dsmon_aggregation>(agent).profiles;
    const int32_t index = index_of<profile_control_table>(request);
    const auto found = profiles.find(index);
    const aggregation_profile before = found == profiles.end() ? aggregation_profile{} : found->second;
    const int32_t error = set_row<profile_control_table>(agent, profiles, index, request);
    if (error == no_error)
        note_profile(agent, index, before);
    return error;
}

/** The profile of which a set changes a part; null, with a request_status, when none may be changed. */
aggregation_profile *profile_to_change(probe &agent, uint32_t index, int32_t &error)
{
    dsmon_aggregation &aggregation = storage<dsmon_aggregation>(agent);
    const auto found = aggregation.profiles.find(signed_index(index));
    error = aggregation.locked ? gen_err : found == aggregation.profiles.end() ? no_such_name : no_error;
    return error == no_error ? &found->second : nullptr;
}

rmonrpc_dsmon_agggrp_t dsmon_agggrp_get(probe &agent, const rmonrpc_row_key3_t &key)
{
    auto &profiles = storage<dsmon_aggregation>(agent).profiles;
    for (auto profile = profiles.lower_bound(key.index1); profile != profiles.end(); ++profile) {
        // A later profile's groups are all behind the index.
        const bool asked = profile->first == key.index1;
        auto &groups = profile->second.groups;
        if (!asked && key.getType == GET)
            break;
        const auto group = find_row(groups, asked ? key.index2 : -1, key.getType);
        if (group != groups.end())
            return group_reply(profile->first, group->first, group->second);
    }
    return no_such_row<rmonrpc_dsmon_agggrp_t>();
}

int32_t dsmon_agggrp_set(probe &agent, const rmonrpc_dsmon_agggrp_t &request)
{
    int32_t error = no_error;
    aggregation_profile *profile = profile_to_change(agent, request.dsmonAggControlIndex, error);
    if (!profile)
        return error;
    const int32_t index = index_of<group_control_table>(request);
    error = set_row<group_control_table>(agent, profile->groups, index, request);
    if (error != no_error)
        return error;
    if (const auto group = profile->groups.find(index); group != profile->groups.end())
        note_made_row(agent, group_reply(signed_index(request.dsmonAggControlIndex), index, group->second));
    else
        note_gone(agent, request);
    return no_error;
}

rmonrpc_dsmon_aggprof_t dsmon_aggprofile_get(probe &agent, const rmonrpc_row_key3_t &key)
{
    const auto &profiles = storage<dsmon_aggregation>(agent).profiles;
    if (key.getType == GET) {
        const auto profile = profiles.find(key.index1);
        if (profile != profiles.end() && key.index2 >= 0 && key.index2 < dscp_values)
            return dscp_reply(profile->first, key.index2, profile->second);
    } else if (key.getType == GETNEXT || key.getType == GETBULK) {
        auto profile = profiles.lower_bound(key.index1);
        int32_t dscp = 0;
        if (profile != profiles.end() && profile->first == key.index1 && key.index2 >= 0) {
            if (key.index2 < dscp_values - 1)
                dscp = key.index2 + 1;
            else
                ++profile;
        }
        if (profile != profiles.end())
            return dscp_reply(profile->first, dscp, profile->second);
    }
    return no_such_row<rmonrpc_dsmon_aggprof_t>();
}

int32_t dsmon_aggprofile_set(probe &agent, const rmonrpc_dsmon_aggprof_t &request)
{
    int32_t error = no_error;
    aggregation_profile *profile = profile_to_change(agent, request.dsmonAggControlIndex, error);
    if (!profile)
        return error;
    if (request.dscp >= dscp_values || request.dsmonAggGroupIndex >= aggregation_groups)
        return bad_value;
    profile->group_of[request.dscp] = static_cast<uint8_t>(request.dsmonAggGroupIndex);
    // Group 0 has all that is in no other one.
    if (request.dsmonAggGroupIndex == 0)
        note_gone(agent, request);
    else
        note_row(
            agent,
            dscp_reply(
                signed_index(request.dsmonAggControlIndex), static_cast<int32_t>(request.dscp), *profile));
    return no_error;
}

void save_profiles(probe &agent, state_writer &writer)
{
    for (const auto &[index, row] : storage<dsmon_aggregation>(agent).profiles)
        write_made_record(writer, profile_reply(index, row));
}

int32_t load_profile(probe &agent, const rmonrpc_dsmon_aggctl_t &record)
{
    return restore_row(agent, record, &rmonrpc_dsmon_aggctl_t::dsmonAggControlStatus, dsmon_aggctl_set);
}

void save_groups(probe &agent, state_writer &writer)
{
    for (const auto &[index, profile] : storage<dsmon_aggregation>(agent).profiles)
        for (const auto &[group, row] : profile.groups)
            write_made_record(writer, group_reply(index, group, row));
}

int32_t load_group(probe &agent, const rmonrpc_dsmon_agggrp_t &record)
{
    return restore_row(agent, record, &rmonrpc_dsmon_agggrp_t::dsmonAggGroupStatus, dsmon_agggrp_set);
}

void save_dscp_maps(probe &agent, state_writer &writer)
{
    for (const auto &[index, profile] : storage<dsmon_aggregation>(agent).profiles)
        for (int32_t dscp = 0; dscp < dscp_values; dscp++)
            if (profile.group_of[static_cast<uint32_t>(dscp)] != 0)
                write_record(writer, dscp_reply(index, dscp, profile));
}

int32_t load_dscp(probe &agent, const rmonrpc_dsmon_aggprof_t &record)
{
    return dsmon_aggprofile_set(agent, record);
}

std::string profile_key(const rmonrpc_dsmon_aggctl_t &kept)
{
    return key_of_numbers(kept.dsmonAggControlIndex);
}

std::string group_key(const rmonrpc_dsmon_agggrp_t &kept)
{
    return key_of_numbers(kept.dsmonAggControlIndex, kept.dsmonAggGroupIndex);
}

std::string dscp_key(const rmonrpc_dsmon_aggprof_t &kept)
{
    return key_of_numbers(kept.dsmonAggControlIndex, kept.dscp);
}

/* ---- the family --------------------------------------------------------------------- */

constexpr served_procedure procedures[] = {
    serve<dsmon_aggctl_get>(dsmon_aggctl_get_1),
    serve<dsmon_agggrp_get>(dsmon_agggrp_get_1),
    serve<dsmon_aggprofile_get>(dsmon_aggprofile_get_1),
    serve_set<dsmon_aggctl_set>(dsmon_aggctl_set_1),
    serve_set<dsmon_agggrp_set>(dsmon_agggrp_set_1),
    serve_set<dsmon_aggprofile_set>(dsmon_aggprofile_set_1),
};

constexpr state_part kept[] = {
    keep_each<save_profiles, load_profile, profile_key>("dsmonAggControl"),
    keep_each<save_groups, load_group, group_key>("dsmonAggGroup"),
    keep_each<save_dscp_maps, load_dscp, dscp_key>("dsmonAggProfile"),
};

} // namespace

extern const family dsmon_aggregation_family = {
    .name = "dsmon_aggregation",
    .procedures = procedures,
    .kept = kept,
};
