#include "agent/admin/snmp_settings.h"

#include "agent/capture/family.h"
#include "agent/core/read_rows.h"

namespace {

constexpr std::size_t most_communities = 1000;

/** Octets of an address on any network. */
constexpr uint32_t longest_address = 255;

/* ---- trap destinations -------------------------------------------------------- */

bool nonsense(const rmonrpc_snmp_trapdest_t &request)
{
    return request.trapDestProtocol < 0 || request.trapDestAddress.length > longest_address
           || !is_printable(text_of(request.trapDestOwner))
           || !is_printable(text_of(request.trapDestCommunity));
}

/** Traps go on, to whatever destination the row names. */
bool changes_fixed(const trapdest_row &, const rmonrpc_snmp_trapdest_t &)
{
    return false;
}

void assign(trapdest_row &row, const rmonrpc_snmp_trapdest_t &request)
{
    row.community = text_of(request.trapDestCommunity);
    row.protocol = request.trapDestProtocol;
    const uint8_t *bytes = bytes_of(request.trapDestAddress);
    row.address.assign(bytes, bytes + request.trapDestAddress.length);
    row.owner = text_of(request.trapDestOwner);
}

/** Nowhere is no destination. */
int32_t start(probe &, trapdest_row &row)
{
    return row.address.empty() || row.community.empty() ? bad_value : no_error;
}

void stop(probe &, trapdest_row &) {}

constexpr row_rules<trapdest_row, rmonrpc_snmp_trapdest_t> rules{
    nonsense, changes_fixed, assign, start, stop};

} // namespace

void trapdest_describe(rmonrpc_snmp_trapdest_t &record, int32_t index, const trapdest_row &row)
{
    record.trapDestIndex = index;
    set_text(record.trapDestCommunity, row.community);
    record.trapDestProtocol = row.protocol;
    set_bytes(record.trapDestAddress, row.address);
    set_text(record.trapDestOwner, row.owner);
    record.trapDestStatus = static_cast<int32_t>(row.status);
}

rmonrpc_snmp_trapdest_t trapdest_get(probe &agent, const rmonrpc_row_key2_t &key)
{
    rmonrpc_snmp_trapdest_t reply{};
    const auto found = find_row(storage<trapdest_table>(agent), key.index, key.getType);
    if (found == storage<trapdest_table>(agent).end())
        reply.status = no_such_name;
    else
        trapdest_describe(reply, found->first, found->second);
    return reply;
}

int32_t trapdest_set(probe &agent, const rmonrpc_snmp_trapdest_t &request)
{
    return set_row(
        agent, storage<trapdest_table>(agent), request.trapDestIndex, request.trapDestStatus, request, rules);
}

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
    if (request.privs == 0)
        return storage<community_table>(agent).erase(name) ? no_error : no_such_name;
    if ((request.privs != COMM_RO && request.privs != COMM_RW) || name.empty() || !is_printable(name))
        return bad_value;
    if (storage<community_table>(agent).size() >= most_communities
        && !storage<community_table>(agent).contains(name))
        return gen_err;
    storage<community_table>(agent)[name] = request.privs;
    return no_error;
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

namespace {

constexpr served_procedure procedures[] = {
    serve<trapdest_get>(trapdest_get_1),
    serve_set<trapdest_set>(trapdest_set_1),
    serve<community_get>(community_get_1),
    serve_set<community_set>(community_set_1),
};

constexpr state_part kept[] = {
    keep_rows<trapdest_table, trapdest_describe, trapdest_set, &rmonrpc_snmp_trapdest_t::trapDestStatus>(
        "trapDest"),
    keep<save_communities, load_community>("communities"),
};

} // namespace

extern const family snmp_settings_family = {
    .name = "snmp_settings",
    .procedures = procedures,
    .kept = kept,
};
