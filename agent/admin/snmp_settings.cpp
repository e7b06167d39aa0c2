// SPDX-License-Identifier: MIT
#include "agent/admin/snmp_settings.h"

#include "agent/capture/counting.h"
#include "agent/capture/family.h"
#include "agent/core/control_table.h"
#include "agent/core/read_rows.h"

namespace {

constexpr std::size_t max_communities = 1000;

/** Octets of an address on any network. */
constexpr uint32_t max_address_octets = 255;

/* ---- trap destinations -------------------------------------------------------- */

struct trapdest_control_table {
    using table = trapdest_table;
    using row = trapdest_row;
    using request = rmonrpc_snmp_trapdest_t;
    static constexpr auto index = &request::trapDestIndex;
    static constexpr auto status = &request::trapDestStatus;
    static constexpr row_limits limits{};
    static constexpr std::tuple fields{
        changeable<&request::trapDestCommunity, &row::community>(),
        changeable<&request::trapDestProtocol, &row::protocol>(not_negative),
        changeable<&request::trapDestAddress, &row::address>({.max = max_address_octets}),
        changeable<&request::trapDestOwner, &row::owner>(),
    };
    static constexpr auto stop = nothing_to_stop<row>;

    /** Traps without an address or a community go nowhere. */
    static int32_t start(probe &, row &started)
    {
        return started.address.empty() || started.community.empty() ? bad_value : no_error;
    }
};

/* ---- communities ---------------------------------------------------------------- */

rmonrpc_snmp_community_arr_t community_get(probe &agent, const rmonrpc_snmp_community_key_t &key)
{
    const std::string index(text_of(key.communityString));
    return read_rows<rmonrpc_snmp_community_t>(
        storage<community_table>(agent), index, key.getType, key.count, [](const auto &entry) {
            rmonrpc_snmp_community_t row{};
            set_text(row.communityString, entry.first);
            row.privs = entry.second;
            return row;
        });
}

int32_t community_set(probe &agent, const rmonrpc_snmp_community_t &request)
{
    const std::string name(text_of(request.communityString));
    if (request.privs == 0) {
        if (!storage<community_table>(agent).erase(name))
            return no_such_name;
        note_gone(agent, request);
        return no_error;
    }
    if ((request.privs != COMM_RO && request.privs != COMM_RW) || name.empty() || !is_printable(name))
        return bad_value;
    if (storage<community_table>(agent).size() >= max_communities
        && !storage<community_table>(agent).contains(name))
        return gen_err;
    storage<community_table>(agent)[name] = request.privs;
    note_row(agent, rmonrpc_snmp_community_t{no_error, request.communityString, request.privs});
    return no_error;
}

std::string community_key(const rmonrpc_snmp_community_t &kept)
{
    return std::string(text_of(kept.communityString));
}

void save_communities(probe &agent, state_writer &writer)
{
    for (const auto &[name, privs] : storage<community_table>(agent))
        write_record(writer, rmonrpc_snmp_community_t{no_error, {name.c_str()}, privs});
}

int32_t load_community(probe &agent, const rmonrpc_snmp_community_t &kept)
{
    return community_set(agent, kept);
}

/* ---- the family --------------------------------------------------------------------- */

constexpr auto trapdest_get = get_control<trapdest_control_table>;

constexpr served_procedure procedures[] = {
    serve<trapdest_get>(trapdest_get_1),
    serve_set<set_control<trapdest_control_table>>(trapdest_set_1),
    serve<community_get>(community_get_1),
    serve_set<community_set>(community_set_1),
};

constexpr state_part kept[] = {
    keep_rows<trapdest_control_table>("trapDest"),
    keep_each<save_communities, load_community, community_key>("communities"),
};

} // namespace

extern const family snmp_settings_family = {
    .name = "snmp_settings",
    .procedures = procedures,
    .kept = kept,
};
