// SPDX-License-Identifier: MIT
#include "agent/nde/nde.h"

#include "agent/capture/family.h"
#include "agent/core/reply.h"
#include "agent/nde/netflow.h"
#include "agent/core/read_rows.h"

#include <climits>
#include <string_view>

namespace {

constexpr std::size_t max_devices = 1000;
constexpr std::size_t max_datasrcs = 10000;
constexpr std::size_t max_paths = 10000;

std::string_view text_in(const nde_text &field)
{
    const auto *text = reinterpret_cast<const char *>(field.value);
    return {text, strnlen(text, field.size)};
}

/** The field is zero before. */
void put_text(nde_text &field, std::string_view text)
{
    text.copy(reinterpret_cast<char *>(field.value), field.size);
}

rmonrpc_nde_device_t device_record(const nde_address &address, const nde_device &device)
{
    rmonrpc_nde_device_t record{};
    set_address(record.head, address);
    put_text(record.deviceName, device.name);
    put_text(record.commString, device.community);
    return record;
}

rmonrpc_nde_datasrc_t datasrc_record(const nde_datasrc_key &key, const std::string &name)
{
    rmonrpc_nde_datasrc_t record{};
    set_address(record.head, key.first);
    record.datasrcIndex = key.second;
    put_text(record.datasrcName, name);
    return record;
}

rmonrpc_nde_flow_path_t path_record(const nde_path_key &key)
{
    rmonrpc_nde_flow_path_t record{};
    nde_address address;
    std::tie(address, record.datasrcIndex, record.inputIndex, record.outputIndex) = key;
    set_address(record.head, address);
    return record;
}

/** Rows of a table from the request's index on; none where the address is not valid. */
template <class Record, class Table, class Fill> wire::rows<Record> rows_for(
    Table &table, const rmonrpc_nde_head_t &head, const typename Table::key_type &index, const Fill &fill)
{
    if (head.addressLength > head.address.size)
        return {};
    return read_rows<Record>(table, index, head.getType, head.count, fill);
}

/* What the journal gets, as the save functions write it. */

rmonrpc_nde_device_t kept_device(const nde_address &address, const nde_device &device)
{
    rmonrpc_nde_device_t record = device_record(address, device);
    record.head.operation = NDE_SET;
    return record;
}

rmonrpc_nde_flow_path_t kept_path(const nde_path_key &key)
{
    rmonrpc_nde_flow_path_t record = path_record(key);
    record.head.operation = NDE_SET;
    return record;
}

/** Removes the flow paths whose keys lie from first to last. */
void remove_paths(probe &agent, const nde_path_key &first, const nde_path_key &last)
{
    auto &paths = storage<nde_tables>(agent).paths;
    const auto begin = paths.lower_bound(first);
    const auto end = paths.upper_bound(last);
    for (auto at = begin; at != end; ++at)
        note_gone(agent, kept_path(*at));
    paths.erase(begin, end);
}

/** Removes the data sources of a device, and their flow paths. */
void remove_datasrcs(probe &agent, const nde_address &device)
{
    auto &datasrcs = storage<nde_tables>(agent).datasrcs;
    const auto begin = datasrcs.lower_bound({device, 0});
    const auto end = datasrcs.upper_bound({device, UINT32_MAX});
    for (auto at = begin; at != end; ++at)
        note_gone(agent, datasrc_record(at->first, at->second));
    datasrcs.erase(begin, end);
    remove_paths(agent, {device, 0, INT32_MIN, INT32_MIN}, {device, UINT32_MAX, INT32_MAX, INT32_MAX});
}

/** The name of a data source, which may be a new one. */
void put_datasrc(probe &agent, const nde_datasrc_key &key, std::string_view name)
{
    std::string &kept = storage<nde_tables>(agent).datasrcs[key];
    kept = name;
    note_row(agent, datasrc_record(key, kept));
}

/** The lowest index that is free on a device. */
uint32_t free_index(const nde_tables &tables, const nde_address &device)
{
    uint32_t index = 1;
    for (auto at = tables.datasrcs.lower_bound({device, 1});
         at != tables.datasrcs.end() && at->first == nde_datasrc_key{device, index}; ++at)
        index++;
    return index;
}

} // namespace

/* ---- devices ------------------------------------------------------------------------ */

rmonrpc_nde_device_arr_t nde_device_get(probe &agent, const rmonrpc_nde_device_t &request)
{
    const nde_address index = address_of(request.head).value_or(nde_address{});
    return rows_for<rmonrpc_nde_device_t>(
        storage<nde_tables>(agent).devices, request.head, index, [&](const auto &entry) {
            rmonrpc_nde_device_t row = device_record(entry.first, entry.second);
            row.flag = storage<netflow_learning>(agent).devices.contains(entry.first); // packets came from it
            return row;
        });
}

int32_t nde_device_set(probe &agent, const rmonrpc_nde_device_t &request)
{
    nde_tables &tables = storage<nde_tables>(agent);
    const auto address = address_of(request.head);
    if (!address || (address->length != 4 && address->length != 16))
        return bad_value;

    if (request.head.operation == NDE_DELETE) {
        if (!tables.devices.erase(*address))
            return no_such_name;
        note_gone(agent, kept_device(*address, {}));
        remove_datasrcs(agent, *address);
        return no_error;
    }

    const std::string_view name = text_in(request.deviceName);
    const std::string_view community = text_in(request.commString);
    if (request.head.operation != NDE_SET || !is_printable(name) || !is_printable(community))
        return bad_value;
    if (tables.devices.size() >= max_devices && !tables.devices.contains(*address))
        return gen_err;
    nde_device &device = tables.devices[*address];
    device = {std::string(name), std::string(community)};
    note_row(agent, kept_device(*address, device));
    return no_error;
}

void save_nde_devices(probe &agent, state_writer &writer)
{
    for (const auto &[address, device] : storage<nde_tables>(agent).devices)
        write_record(writer, kept_device(address, device));
}

/* ---- data sources ---------------------------------------------------------------------- */

rmonrpc_nde_datasrc_arr_t nde_datasrc_get(probe &agent, const rmonrpc_nde_datasrc_t &request)
{
    const nde_address address = address_of(request.head).value_or(nde_address{});
    return rows_for<rmonrpc_nde_datasrc_t>(
        storage<nde_tables>(agent).datasrcs, request.head, {address, request.datasrcIndex},
        [&](const auto &entry) {
            rmonrpc_nde_datasrc_t row = datasrc_record(entry.first, entry.second);
            put_text(row.deviceName, storage<nde_tables>(agent).devices[entry.first.first].name);
            return row;
        });
}

int32_t nde_datasrc_set(probe &agent, const rmonrpc_nde_datasrc_t &request)
{
    nde_tables &tables = storage<nde_tables>(agent);
    const auto address = address_of(request.head);
    if (!address)
        return bad_value;
    const nde_datasrc_key key{*address, request.datasrcIndex};
    const bool there = tables.datasrcs.contains(key);

    if (request.head.operation == NDE_DELETE) {
        if (!there)
            return no_such_name;
        tables.datasrcs.erase(key);
        note_gone(agent, datasrc_record(key, {}));
        remove_paths(
            agent, {key.first, key.second, INT32_MIN, INT32_MIN},
            {key.first, key.second, INT32_MAX, INT32_MAX});
        return no_error;
    }

    const std::string_view name = text_in(request.datasrcName);
    if (request.head.operation != NDE_SET || !is_printable(name))
        return bad_value;
    if (request.datasrcIndex != 0) {
        if (!there)
            return no_such_name;
        put_datasrc(agent, key, name);
        return no_error;
    }
    if (!tables.devices.contains(*address))
        return no_such_name;
    if (tables.datasrcs.size() >= max_datasrcs)
        return gen_err;
    put_datasrc(agent, {*address, free_index(tables, *address)}, name);
    return no_error;
}

void save_nde_datasrcs(probe &agent, state_writer &writer)
{
    for (const auto &[key, name] : storage<nde_tables>(agent).datasrcs)
        write_record(writer, datasrc_record(key, name));
}

int32_t load_nde_datasrc(probe &agent, const rmonrpc_nde_datasrc_t &kept)
{
    const auto address = address_of(kept.head);
    nde_tables &tables = storage<nde_tables>(agent);
    if (!address || !tables.devices.contains(*address) || tables.datasrcs.size() >= max_datasrcs)
        return bad_value;
    tables.datasrcs[{*address, kept.datasrcIndex}] = text_in(kept.datasrcName);
    return no_error;
}

/* ---- flow paths --------------------------------------------------------------------------- */

rmonrpc_nde_flow_path_arr_t nde_flow_path_get(probe &agent, const rmonrpc_nde_flow_path_t &request)
{
    const nde_address address = address_of(request.head).value_or(nde_address{});
    return rows_for<rmonrpc_nde_flow_path_t>(
        storage<nde_tables>(agent).paths, request.head,
        {address, request.datasrcIndex, request.inputIndex, request.outputIndex}, [&](const auto &entry) {
            rmonrpc_nde_flow_path_t row = path_record(entry);
            put_text(row.deviceName, storage<nde_tables>(agent).devices[std::get<0>(entry)].name);
            return row;
        });
}

int32_t nde_flow_path_set(probe &agent, const rmonrpc_nde_flow_path_t &request)
{
    nde_tables &tables = storage<nde_tables>(agent);
    const auto address = address_of(request.head);
    if (!address)
        return bad_value;
    const nde_path_key key{*address, request.datasrcIndex, request.inputIndex, request.outputIndex};

    if (request.head.operation == NDE_DELETE) {
        if (!tables.paths.erase(key))
            return no_such_name;
        note_gone(agent, kept_path(key));
        return no_error;
    }
    if (request.head.operation != NDE_SET || request.inputIndex < 0 || request.outputIndex < 0)
        return bad_value;
    if (!tables.datasrcs.contains({*address, request.datasrcIndex}))
        return no_such_name;
    if (tables.paths.size() >= max_paths && !tables.paths.contains(key))
        return gen_err;
    tables.paths.insert(key);
    note_row(agent, kept_path(key));
    return no_error;
}

void save_nde_paths(probe &agent, state_writer &writer)
{
    for (const nde_path_key &key : storage<nde_tables>(agent).paths)
        write_record(writer, kept_path(key));
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

std::string text_of_address(const rmonrpc_nde_head_t &head)
{
    return {
        reinterpret_cast<const char *>(head.address.value), std::min(head.addressLength, head.address.size)};
}

std::string device_key(const rmonrpc_nde_device_t &kept)
{
    return text_of_address(kept.head);
}

std::string datasrc_key(const rmonrpc_nde_datasrc_t &kept)
{
    return key_of_numbers(kept.datasrcIndex) + text_of_address(kept.head);
}

std::string path_key(const rmonrpc_nde_flow_path_t &kept)
{
    return key_of_numbers(kept.datasrcIndex, kept.inputIndex, kept.outputIndex) + text_of_address(kept.head);
}

constexpr served_procedure procedures[] = {
    serve<nde_device_get>(nde_device_get_1),       serve_set<nde_device_set>(nde_device_set_1),
    serve<nde_datasrc_get>(nde_datasrc_get_1),     serve_set<nde_datasrc_set>(nde_datasrc_set_1),
    serve<nde_flow_path_get>(nde_flow_path_get_1), serve_set<nde_flow_path_set>(nde_flow_path_set_1),
};

constexpr state_part kept[] = {
    keep_each<save_nde_devices, nde_device_set, device_key>("ndeDevice"),
    keep_each<save_nde_datasrcs, load_nde_datasrc, datasrc_key>("ndeDatasrc"),
    keep_each<save_nde_paths, nde_flow_path_set, path_key>("ndeFlowPath"),
};

} // namespace

extern const family nde_family = {
    .name = "nde",
    .procedures = procedures,
    .kept = kept,
};
