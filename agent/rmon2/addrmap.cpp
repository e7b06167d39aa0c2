// SPDX-License-Identifier: MIT
#include "agent/rmon2/addrmap.h"

#include "agent/capture/family.h"
#include "agent/core/control_table.h"
#include "agent/core/bulk.h"
#include "agent/capture/counting.h"
#include "agent/capture/frame.h"
#include "agent/rmon2/hl_control.h"

namespace {

/* ---- learning ------------------------------------------------------------------------------ */

/** Addresses that no host has: unspecified, broadcast and multicast ones. */
bool is_host_address(const net_address &address)
{
    static constexpr uint8_t none[16] = {};
    if (address.length == 4)
        return address.bytes[0] != 0 && address.bytes[0] < 224;
    return address.length == 16 && address.bytes[0] != 0xff && std::memcmp(address.bytes, none, 16) != 0;
}

/** True for the address of one interface: no group's, not all zero. */
bool is_physical_address(const uint8_t *mac)
{
    return !(mac[0] & 1) && mac_number(mac) != 0;
}

/** False when there was no room for the address. */
bool learn_address(
    const address_watch &watch,
    const frame &seen,
    int32_t network,
    const net_address &address,
    const uint8_t *mac)
{
    if (!is_host_address(address) || !is_physical_address(mac))
        return true;
    const protocol *found = find_protocol(watch.agent->protocols, network);
    if (!found || found->address_map != protocol_config::on)
        return true;
    auto &rows = watch.learned->rows;
    const uint32_t inserts = rows.inserts;
    mapped_address *entry =
        learn(rows, {key_address_of(address), address.length, network, watch.data_source, 0});
    if (!entry)
        return false;
    if (std::memcmp(entry->physical, mac, sizeof entry->physical) != 0) {
        // Frames with the former one don't find the address as it was.
        if (rows.inserts == inserts)
            end_epoch(rows);
        std::memcpy(entry->physical, mac, sizeof entry->physical);
        entry->changed = seen.up_time;
    }
    return true;
}

/** ARP tells of IP addresses, which stand in the map as those of ip. */
bool learn_from_arp(const address_watch &watch, const frame &seen)
{
    constexpr uint32_t sender_at = 8;
    if (seen.from.length != 4 || seen.network_length < sender_at + mac_octets)
        return true;
    return learn_address(
        watch, seen, protocol_of_type(watch.agent->protocols, ethertype_ip), seen.from,
        seen.network + sender_at);
}

/** A neighbour advertisement (RFC 4861) tells of the target's address, which needs not be the sender's. */
bool learn_from_advertisement(const address_watch &watch, const frame &seen)
{
    constexpr uint8_t advertisement = 136, target_link_layer = 2;
    constexpr uint32_t target_at = 8, options_at = 24;
    if (seen.payload_length < options_at || seen.payload[0] != advertisement)
        return true;
    const uint8_t *option = seen.payload + options_at;
    uint32_t left = seen.payload_length - options_at;
    while (left >= 8 && option[1] > 0 && option[1] * 8u <= left) {
        if (option[0] == target_link_layer && option[1] == 1) {
            const net_address target = make_net_address(seen.payload + target_at, 16);
            return learn_address(watch, seen, seen.network_index, target, option + 2);
        }
        left -= option[1] * 8u;
        option += option[1] * 8;
    }
    return true;
}

/** Learns what a frame tells. False when there was no room for all of it. */
bool learn_from(const address_watch &watch, const frame &seen)
{
    if (seen.ethertype == ethertype_arp)
        return learn_from_arp(watch, seen);
    if (seen.from.length == 0 || !seen.from_mac)
        return true;
    const bool sender = learn_address(watch, seen, seen.network_index, seen.from, seen.from_mac);
    const bool advertises = seen.ip_protocol == ip_icmp6 && seen.from.length == 16 && !seen.later_fragment;
    return (!advertises || learn_from_advertisement(watch, seen)) && sender;
}

void count(void *context, const frame &seen)
{
    auto &watch = *static_cast<address_watch *>(context);
    watch.dropped_frames += !learn_from(watch, seen);
}

/* ---- the control table ---------------------------------------------------------------------- */

struct address_watch_control_table {
    using table = address_watch_table;
    using row = address_watch_row;
    using request = rmonrpc_addrmap_ctl_t;
    static constexpr auto index = &request::addressMapControlIndex;
    static constexpr auto status = &request::addressMapControlStatus;
    static constexpr row_limits limits{};
    static constexpr std::tuple fields{
        fixed<&request::addressMapControlDataSource, &row::data_source>(not_negative),
        changeable<&request::addressMapControlOwner, &row::owner>(),
    };

    static int32_t start(probe &agent, row &started)
    {
        started.work = std::make_shared<address_watch>(
            address_watch{&agent, &storage<address_map>(agent), started.data_source, 0});
        started.work->learned->rows.late = &agent.sources.late;
        return start_counting(agent, started, count);
    }

    /** What the row learned is forgotten, unless another one looks at the same interface. */
    static void stop(probe &agent, row &stopped)
    {
        stop_counting<count>(agent, stopped);
        for (const auto &[number, other] : storage<address_watch_table>(agent))
            if (other.work && other.data_source == stopped.data_source)
                return;
        auto &learned = storage<address_map>(agent).rows;
        sift_learned(learned, learned.max_rows, [&](const mapped_key &key) {
            return key.data_source != stopped.data_source;
        });
    }

    static constexpr auto refresh = catch_up_row<row>;

    static void show(probe &, request &reply, int32_t, const row &shown)
    {
        if (shown.work)
            reply.addressMapControlDroppedFrames = shown.work->dropped_frames;
    }
};

/* ---- the rows --------------------------------------------------------------------------------- */

bool before(const mapped_key &a, const mapped_key &b)
{
    if (a.network != b.network)
        return a.network < b.network;
    if (a.length != b.length)
        return a.length < b.length;
    const int order = compare_addresses(a.address, b.address);
    return order != 0 ? order < 0 : a.data_source < b.data_source;
}

rmonrpc_addrmap_entry_t answer(uint32_t time_mark, const mapped_key &key, const mapped_address &mapped)
{
    rmonrpc_addrmap_entry_t row{};
    row.addressMapTimeMark = time_mark;
    row.protocolDirLocalIndex = key.network;
    set_bytes(row.addressMapNetworkAddress, {key.address.bytes, key.length});
    row.addressMapSource = key.data_source;
    set_bytes(row.addressMapPhysicalAddress, mapped.physical);
    row.addressMapLastChange = mapped.changed;
    return row;
}

void addrmap_protocols_changed(probe &agent)
{
    sift_learned(
        storage<address_map>(agent).rows, storage<address_map>(agent).rows.max_rows,
        [&](const mapped_key &key) {
            return is_counted<&protocol::address_map>(agent.protocols, key.network);
        });
}

rmonrpc_addrmap_scalars_t addrmap_scalars_get(probe &agent)
{
    catch_up_all(agent);
    rmonrpc_addrmap_scalars_t reply{};
    reply.addressMapInserts = storage<address_map>(agent).rows.inserts;
    reply.addressMapDeletes = storage<address_map>(agent).rows.deletes;
    reply.addressMapMaxDesiredEntries = storage<address_map>(agent).max_desired;
    return reply;
}

int32_t addrmap_scalars_set(probe &agent, const rmonrpc_addrmap_scalars_t &request)
{
    if (request.addressMapMaxDesiredEntries < -1)
        return bad_value;
    storage<address_map>(agent).max_desired = request.addressMapMaxDesiredEntries;
    sift_learned(
        storage<address_map>(agent).rows, granted_rows(storage<address_map>(agent).max_desired),
        [](const mapped_key &) { return true; });
    return no_error;
}

void save_address_map(probe &agent, state_writer &writer)
{
    rmonrpc_addrmap_scalars_t record{};
    record.addressMapMaxDesiredEntries = storage<address_map>(agent).max_desired;
    write_record(writer, record);
}

int32_t load_address_map(probe &agent, const rmonrpc_addrmap_scalars_t &record)
{
    return addrmap_scalars_set(agent, record);
}

rmonrpc_addrmap_arr_t addrmap_entry_get(probe &agent, const rmonrpc_addrmap_key_t &asked)
{
    catch_up_all(agent);
    auto &table = storage<address_map>(agent).rows;
    const mapped_key key{
        key_address_of(asked.addressMapNetworkAddress), asked.addressMapNetworkAddress.length,
        asked.protocolDirLocalIndex, asked.addressMapSource, 0};
    std::vector<rmonrpc_addrmap_entry_t> rows;
    const std::size_t wanted = rows_wanted(asked.getType, asked.count);
    const auto take = [&](const auto &entry) {
        if (entry.row.changed >= asked.addressMapTimeMark)
            rows.push_back(answer(asked.addressMapTimeMark, entry.key, entry.row));
    };
    if (asked.getType == GET) {
        const uint32_t index = find_learned(table, key);
        if (index != no_entry)
            take(table.entries[index]);
    } else if (asked.getType == GETNEXT || asked.getType == GETBULK) {
        const auto &order = in_order(table, storage<address_map>(agent).view, before);
        for (std::size_t i = place_after(table, storage<address_map>(agent).view, before, key);
             i < order.size() && rows.size() < wanted; i++)
            take(table.entries[order[i]]);
    }
    return reply_rows(rows);
}

/* ---- the family --------------------------------------------------------------------- */

constexpr auto addrmap_ctl_get = get_control<address_watch_control_table>;

constexpr served_procedure procedures[] = {
    serve<addrmap_scalars_get>(addrmap_scalars_get_1),
    serve_set<addrmap_scalars_set>(addrmap_scalars_set_1),
    serve<addrmap_ctl_get>(addrmap_ctl_get_1),
    serve_set<set_control<address_watch_control_table>>(addrmap_ctl_set_1),
    serve<addrmap_entry_get>(addrmap_entry_get_1),
};

constexpr state_part kept[] = {
    keep<save_address_map, load_address_map>("addressMap"),
    keep_rows<address_watch_control_table>("addressMapControl"),
};

/** A data source is ifIndex's own identifier and its instance; in front stands how many numbers that are. */
int32_t take_data_source(instance_reader &from)
{
    static constexpr uint32_t if_index[] = {11, 1, 3, 6, 1, 2, 1, 2, 2, 1, 1};
    for (const uint32_t number : if_index)
        if (take_number(from, number) != number)
            from.good = false;
    return take_index(from);
}

rmonrpc_addrmap_key_t address_map_index(instance_reader &from)
{
    rmonrpc_addrmap_key_t key{};
    key.addressMapTimeMark = take_time(from);
    key.protocolDirLocalIndex = take_index(from);
    take_octets(from, key.addressMapNetworkAddress);
    key.addressMapSource = take_data_source(from);
    key.getType = GET;
    key.count = 1;
    return key;
}

// clang-format off
constexpr known_variable variables[] = {
    scalar<addrmap_scalars_get, &rmonrpc_addrmap_scalars_t::addressMapInserts, true>("1.3.6.1.2.1.16.13.1"),
    scalar<addrmap_scalars_get, &rmonrpc_addrmap_scalars_t::addressMapDeletes, true>("1.3.6.1.2.1.16.13.2"),
    scalar<addrmap_scalars_get, &rmonrpc_addrmap_scalars_t::addressMapMaxDesiredEntries, false>("1.3.6.1.2.1.16.13.3"),
    counter<addrmap_ctl_get, one_index, &rmonrpc_addrmap_ctl_t::addressMapControlDroppedFrames>("1.3.6.1.2.1.16.13.4.1.3"),
    gauge<addrmap_entry_get, address_map_index, &rmonrpc_addrmap_entry_t::addressMapLastChange>("1.3.6.1.2.1.16.13.5.1.5"),
};
// clang-format on

} // namespace

extern const family addrmap_family = {
    .name = "addrmap",
    .interface_gone = remove_rows_on<address_watch_control_table>,
    .protocols_changed = addrmap_protocols_changed,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
