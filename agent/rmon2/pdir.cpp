// SPDX-License-Identifier: MIT
#include "agent/rmon2/pdir.h"

#include "agent/capture/family.h"
#include "agent/core/bulk.h"
#include "agent/core/row_status.h"

namespace {

constexpr std::size_t octets_of_a_layer = 4;

/** No protocol has a longer identifier (RFC 2021: at most 128 octets). */
constexpr std::size_t max_id = 128;

std::vector<uint8_t> octets_of(const wire::byte_list &list)
{
    return {wire::bytes_of(list), wire::bytes_of(list) + list.length};
}

/** The key of a read; one that is longer than any protocol's stands behind all of them. */
protocol_key key_of(const wire::byte_list &id, const wire::byte_list &parameters)
{
    return {octets_of(id), octets_of(parameters)};
}

/* ---- reading --------------------------------------------------------------------- */

int32_t word(protocol_config config)
{
    return static_cast<int32_t>(config);
}

rmonrpc_pdir_t describe_protocol(const protocol &which)
{
    rmonrpc_pdir_t row{};
    set_bytes(row.protocolDirID, which.id);
    set_bytes(row.protocolDirParameters, which.parameters);
    row.protocolDirLocalIndex = which.local_index;
    set_text(row.protocolDirDescr, which.description);
    row.protocolDirType = type_of(which);
    row.protocolDirAddressMapConfig = word(which.address_map);
    row.protocolDirHostConfig = word(which.host);
    row.protocolDirMatrixConfig = word(which.matrix);
    set_text(row.protocolDirOwner, which.owner);
    row.protocolDirStatus =
        static_cast<int32_t>(which.active ? row_status::valid : row_status::under_creation);
    row.protocolDirArtConfig = word(which.response_time);
    row.flags = flags_of(which);
    row.is_leaf = (row.flags & leaf_protocol) != 0;
    row.is_network = (row.flags & network_protocol) != 0;
    return row;
}

/* ---- writing --------------------------------------------------------------------- */

/** Whether a config may have a value: on or off where the group can count the protocol, else not supported.
 */
bool suits(protocol_config now, int32_t wanted)
{
    if (now == protocol_config::not_supported)
        return wanted == word(protocol_config::not_supported);
    return wanted == word(protocol_config::off) || wanted == word(protocol_config::on);
}

bool suits(const protocol &which, const rmonrpc_pdir_t &request)
{
    return suits(which.address_map, request.protocolDirAddressMapConfig)
           && suits(which.host, request.protocolDirHostConfig)
           && suits(which.matrix, request.protocolDirMatrixConfig)
           && suits(which.response_time, request.protocolDirArtConfig)
           && is_printable(text_of(request.protocolDirDescr))
           && is_printable(text_of(request.protocolDirOwner));
}

void assign(protocol &which, const rmonrpc_pdir_t &request)
{
    which.description = text_of(request.protocolDirDescr);
    which.owner = text_of(request.protocolDirOwner);
    which.address_map = static_cast<protocol_config>(request.protocolDirAddressMapConfig);
    which.host = static_cast<protocol_config>(request.protocolDirHostConfig);
    which.matrix = static_cast<protocol_config>(request.protocolDirMatrixConfig);
    which.response_time = static_cast<protocol_config>(request.protocolDirArtConfig);
    which.modified = true;
}

void changed(probe &agent)
{
    agent.protocols.last_change = up_time(agent);
}

/** The protocol below the one of an identifier. Null when there is none, or the identifier is none. */
protocol *parent_of(const protocol_directory &directory, const protocol_key &key)
{
    const std::size_t layers = key.id.size() / octets_of_a_layer;
    if (key.id.size() % octets_of_a_layer != 0 || key.id.size() > max_id || layers < 2
        || key.parameters.size() != layers
        || std::ranges::count(key.parameters, 0) != std::ssize(key.parameters))
        return nullptr;
    const protocol_key below{
        {key.id.begin(), key.id.end() - octets_of_a_layer}, std::vector<uint8_t>(layers - 1)};
    const auto found = directory.by_id.find(below);
    return found == directory.by_id.end() ? nullptr : find_protocol(directory, found->second);
}

uint32_t last_number(const protocol_key &key)
{
    uint32_t number = 0;
    for (std::size_t i = key.id.size() - octets_of_a_layer; i < key.id.size(); i++)
        number = number << 8 | key.id[i];
    return number;
}

int32_t create(probe &agent, const protocol_key &key, const rmonrpc_pdir_t &request)
{
    protocol_directory &directory = agent.protocols;
    protocol *below = parent_of(directory, key);
    if (!below || directory.by_id.contains(key) || !carries(*below, last_number(key)))
        return bad_value;
    protocol *made = add_protocol(directory, below->local_index, last_number(key));
    if (!made)
        return gen_err;
    if (!suits(*made, request)) {
        take_back_protocol(directory);
        return bad_value;
    }
    assign(*made, request);
    if (!directory.removed.erase(key))
        made->flags |= extension_protocol;
    activate_protocol(directory, *made, false);
    changed(agent);
    return no_error;
}

/** The families forget what they counted of protocols that they count no more. */
void forget_uncounted(probe &agent)
{
    for (const family *one : families())
        if (one->protocols_changed)
            one->protocols_changed(agent);
}

int32_t change(probe &agent, protocol &which, const rmonrpc_pdir_t &request, bool active)
{
    if (!suits(which, request) || (!active && which.flags & base_protocol))
        return bad_value;
    assign(which, request);
    activate_protocol(agent.protocols, which, active);
    forget_uncounted(agent);
    changed(agent);
    return no_error;
}

int32_t destroy(probe &agent, const protocol &which)
{
    if (which.children > 0 || which.flags & base_protocol)
        return bad_value;
    if (!(which.flags & extension_protocol))
        agent.protocols.removed.insert({which.id, which.parameters});
    for (const family *one : families())
        if (one->protocol_gone)
            one->protocol_gone(agent, which);
    remove_protocol(agent.protocols, which.local_index);
    forget_uncounted(agent);
    changed(agent);
    return no_error;
}

} // namespace

rmonrpc_pdir_arr_t pdir_get(probe &agent, const rmonrpc_pdir_key_t &key)
{
    const protocol_directory &directory = agent.protocols;
    auto at = find_row(directory.by_id, key_of(key.protocolDirID, key.protocolDirParameters), key.getType);
    std::vector<rmonrpc_pdir_t> rows;
    const std::size_t wanted = rows_wanted(key.getType, key.count);
    for (; at != directory.by_id.end() && rows.size() < wanted; at++)
        rows.push_back(describe_protocol(*find_protocol(directory, at->second)));
    return {reply_rows(rows)};
}

rmonrpc_pdir_t pdir_byidx_get(probe &agent, const rmonrpc_row_key2_t &key)
{
    const protocol_directory &directory = agent.protocols;
    if (key.getType == GET) {
        const protocol *found = find_protocol(directory, key.index);
        return found ? describe_protocol(*found) : no_such_row<rmonrpc_pdir_t>();
    }
    if (key.getType != GETNEXT && key.getType != GETBULK)
        return no_such_row<rmonrpc_pdir_t>();
    const int32_t end = local_index_end(directory);
    for (int32_t i = key.index < first_local_index ? first_local_index : key.index + (key.index < end);
         i < end; i++) {
        if (const protocol *found = find_protocol(directory, i))
            return describe_protocol(*found);
    }
    return no_such_row<rmonrpc_pdir_t>();
}

rmonrpc_pdir_t pdir_getnext_modified(probe &agent, const rmonrpc_pdir_key_t &key)
{
    const protocol_directory &directory = agent.protocols;
    auto at = directory.by_id.upper_bound(key_of(key.protocolDirID, key.protocolDirParameters));
    for (; at != directory.by_id.end(); at++) {
        const protocol &which = *find_protocol(directory, at->second);
        if (which.modified)
            return describe_protocol(which);
    }
    return no_such_row<rmonrpc_pdir_t>();
}

int32_t pdir_set(probe &agent, const rmonrpc_pdir_t &request)
{
    settle_all(agent); // frames that were taken are of the protocols that there were
    const protocol_key key = key_of(request.protocolDirID, request.protocolDirParameters);
    const auto status = static_cast<row_status>(request.protocolDirStatus);
    if (status == row_status::create_request)
        return create(agent, key, request);
    if (status != row_status::valid && status != row_status::under_creation && status != row_status::invalid)
        return bad_value;
    const auto found = agent.protocols.by_id.find(key);
    if (found == agent.protocols.by_id.end())
        return no_such_name;
    protocol &which = *find_protocol(agent.protocols, found->second);
    if (status == row_status::invalid)
        return destroy(agent, which);
    return change(agent, which, request, status == row_status::valid);
}

int32_t pdir_lastchange_get(probe &agent)
{
    return static_cast<int32_t>(agent.protocols.last_change);
}

int32_t pdir_destroy_all_autolearned(probe &)
{
    return no_error;
}

void save_protocols(probe &agent, state_writer &writer)
{
    constexpr const wire::layout *layout = &wire::layout_of<rmonrpc_pdir_t>;
    // Before a layer goes, those above it have to, and their identifiers are longer.
    const auto &removed = agent.protocols.removed;
    for (auto at = removed.rbegin(); at != removed.rend(); ++at) {
        const protocol_key &key = *at;
        rmonrpc_pdir_t record{};
        set_bytes(record.protocolDirID, key.id);
        set_bytes(record.protocolDirParameters, key.parameters);
        record.protocolDirStatus = static_cast<int32_t>(row_status::invalid);
        write_record(writer, record);
        release_written(&record, *layout);
    }
    // In the order of the local indexes: a layer stands before those above it.
    for (const auto &which : agent.protocols.rows) {
        if (!which || !which->modified)
            continue;
        rmonrpc_pdir_t record = describe_protocol(*which);
        write_record(writer, record);
        release_written(&record, *layout);
    }
}

int32_t load_protocol(probe &agent, const rmonrpc_pdir_t &record)
{
    const protocol_key key = key_of(record.protocolDirID, record.protocolDirParameters);
    const bool is_there = agent.protocols.by_id.contains(key);
    if (record.protocolDirStatus == static_cast<int32_t>(row_status::invalid) && !is_there)
        return no_error;
    const int32_t made = is_there ? no_error : create(agent, key, record);
    return made == no_error ? pdir_set(agent, record) : made;
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

constexpr served_procedure procedures[] = {
    serve<pdir_get>(pdir_get_1),
    serve<pdir_byidx_get>(pdir_byidx_get_1),
    serve<pdir_getnext_modified>(pdir_getnext_modified_1),
    serve_set<pdir_set>(pdir_set_1),
    serve<pdir_lastchange_get>(pdir_lastchange_get_1),
    serve_set<pdir_destroy_all_autolearned>(pdir_destroy_all_autolearned_1),
};

constexpr state_part kept[] = {
    keep<save_protocols, load_protocol>("protocols"),
};

// clang-format off
constexpr known_variable variables[] = {
    plain_scalar<pdir_lastchange_get>("1.3.6.1.2.1.16.11.1", "protocolDirLastChange"),
};
// clang-format on

} // namespace

extern const family pdir_family = {
    .name = "pdir",
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
