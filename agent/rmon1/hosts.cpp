// SPDX-License-Identifier: MIT
#include "agent/rmon1/hosts.h"

#include "agent/capture/family.h"
#include "agent/core/control_table.h"
#include "agent/core/bulk.h"
#include "agent/capture/counting.h"

#include <algorithm>
#include <numeric>

namespace {

/* ---- counting ------------------------------------------------------------------------ */

host_counts *learn_host(host_work &work, mac_key key, const frame &seen)
{
    const uint32_t deletes = work.learned.deletes;
    host_counts *host = learn(work.learned, key);
    if (host->serial == 0)
        host->serial = ++work.last_serial;
    if (work.learned.deletes != deletes)
        work.last_delete = seen.up_time;
    return host;
}

/** Hosts are found by good frames; of others only the sender is counted, if it is known. */
void count(void *context, const frame &seen)
{
    if (!seen.from_mac)
        return;
    auto &work = *static_cast<host_work *>(context);
    const mac_key from = mac_key_of(seen.from_mac);
    if (!is_good_length(seen.length)) {
        const uint32_t found = find_learned(work.learned, from);
        if (found == no_entry)
            return;
        host_counts &sender = work.learned.entries[found].row;
        sender.out_pkts += seen.pkts;
        sender.out_octets += seen.octets;
        sender.out_errors += seen.pkts;
        return;
    }
    host_counts &sender = *learn_host(work, from, seen);
    sender.out_pkts += seen.pkts;
    sender.out_octets += seen.octets;
    if (is_broadcast(seen.to_mac))
        sender.out_broadcast_pkts += seen.pkts;
    else if (is_group(seen.to_mac))
        sender.out_multicast_pkts += seen.pkts;

    host_counts &receiver = *learn_host(work, mac_key_of(seen.to_mac), seen);
    receiver.in_pkts += seen.pkts;
    receiver.in_octets += seen.octets;
}

/* ---- the control table ----------------------------------------------------------------- */

struct host_table_control {
    using table = host_table;
    using row = host_control;
    using request = rmonrpc_host_ctl_t;
    static constexpr auto index = &request::hostControlIndex;
    static constexpr auto status = &request::hostControlStatus;
    static constexpr row_limits limits = learning_rows;
    static constexpr std::tuple fields{
        fixed<&request::hostControlDataSource, &row::data_source>(not_negative),
        changeable<&request::hostControlOwner, &row::owner>(),
    };
    static constexpr auto start = start_work<count, host_work>;
    static constexpr auto stop = stop_counting<count, host_work>;
    static constexpr auto refresh = catch_up_row<row>;

    static void show(probe &, request &reply, int32_t, const row &shown)
    {
        if (!shown.work)
            return;
        reply.hostControlTableSize = static_cast<int32_t>(shown.work->learned.entries.size());
        reply.hostControlLastDeleteTime = shown.work->last_delete;
    }
};

/* ---- the rows ---------------------------------------------------------------------------- */

/** The entries in the order in which they were found; creation_orders follows it. */
const std::vector<uint32_t> &in_creation_order(host_work &work)
{
    auto &[version, order] = work.by_creation;
    const auto &entries = work.learned.entries;
    if (version == work.learned.version)
        return order;
    fit_to(work.learned, order);
    std::iota(order.begin(), order.end(), 0);
    std::ranges::sort(order, {}, [&](uint32_t index) { return entries[index].row.serial; });
    fit_to(work.learned, work.creation_orders);
    for (std::size_t i = 0; i < order.size(); i++)
        work.creation_orders[order[i]] = static_cast<int32_t>(i + 1);
    version = work.learned.version;
    return order;
}

using host_entry = learned_entry<mac_key, host_counts>;

int32_t creation_order_of(host_work &work, const host_entry &entry)
{
    in_creation_order(work);
    return work.creation_orders[static_cast<std::size_t>(&entry - work.learned.entries.data())];
}

/** Where the record of a table has what is known of a host. */
template <class Row> struct host_fields {
    wire::byte_list Row::*address;
    int32_t Row::*creation_order;
    int32_t Row::*control;
    uint64_t Row::*in_pkts;
    uint64_t Row::*out_pkts;
    uint64_t Row::*in_octets;
    uint64_t Row::*out_octets;
    uint64_t Row::*out_errors;
    uint64_t Row::*out_broadcast_pkts;
    uint64_t Row::*out_multicast_pkts;
};

constexpr host_fields<rmonrpc_host_t> host_places{
    &rmonrpc_host_t::hostAddress,
    &rmonrpc_host_t::hostCreationOrder,
    &rmonrpc_host_t::hostIndex,
    &rmonrpc_host_t::hostInPkts,
    &rmonrpc_host_t::hostOutPkts,
    &rmonrpc_host_t::hostInOctets,
    &rmonrpc_host_t::hostOutOctets,
    &rmonrpc_host_t::hostOutErrors,
    &rmonrpc_host_t::hostOutBroadcastPkts,
    &rmonrpc_host_t::hostOutMulticastPkts,
};

constexpr host_fields<rmonrpc_hosttime_t> hosttime_places{
    &rmonrpc_hosttime_t::hostTimeAddress,
    &rmonrpc_hosttime_t::hostTimeCreationOrder,
    &rmonrpc_hosttime_t::hostTimeIndex,
    &rmonrpc_hosttime_t::hostTimeInPkts,
    &rmonrpc_hosttime_t::hostTimeOutPkts,
    &rmonrpc_hosttime_t::hostTimeInOctets,
    &rmonrpc_hosttime_t::hostTimeOutOctets,
    &rmonrpc_hosttime_t::hostTimeOutErrors,
    &rmonrpc_hosttime_t::hostTimeOutBroadcastPkts,
    &rmonrpc_hosttime_t::hostTimeOutMulticastPkts,
};

template <class Row>
Row host_row(const host_fields<Row> &fields, int32_t control, host_work &work, const host_entry &entry)
{
    Row row{};
    set_mac(row.*fields.address, entry.key);
    row.*fields.creation_order = creation_order_of(work, entry);
    row.*fields.control = control;
    row.*fields.in_pkts = entry.row.in_pkts;
    row.*fields.out_pkts = entry.row.out_pkts;
    row.*fields.in_octets = entry.row.in_octets;
    row.*fields.out_octets = entry.row.out_octets;
    row.*fields.out_errors = entry.row.out_errors;
    row.*fields.out_broadcast_pkts = entry.row.out_broadcast_pkts;
    row.*fields.out_multicast_pkts = entry.row.out_multicast_pkts;
    return row;
}

} // namespace

host_work *find_hosts(probe &agent, int32_t control)
{
    const auto found = storage<host_table>(agent).find(control);
    if (found == storage<host_table>(agent).end() || !found->second.work)
        return nullptr;
    catch_up(agent, found->second.data_source);
    return found->second.work.get();
}

rmonrpc_host_arr_t host_get(probe &agent, const rmonrpc_host_key_t &key)
{
    std::vector<rmonrpc_host_t> rows;
    const mac_key address = mac_key_of(key.hostAddress);
    if (key.getType == GET) {
        host_work *work = find_hosts(agent, key.hostIndex);
        const uint32_t found = work ? find_learned(work->learned, address) : no_entry;
        if (found != no_entry)
            rows.push_back(host_row(host_places, key.hostIndex, *work, work->learned.entries[found]));
        return reply_rows(rows);
    }
    const std::size_t wanted = rows_wanted(key.getType, key.count);
    if (wanted == 0 || (key.getType != GETNEXT && key.getType != GETBULK))
        return {};
    visit_after(
        storage<host_table>(agent), key.hostIndex, address,
        [&](host_control &row) {
            catch_up(agent, row.data_source);
            return row.work ? &row.work->learned : nullptr;
        },
        [](host_control &row) -> ordered_view & { return row.work->by_address; }, std::ranges::less{},
        [&](int32_t control, const host_entry &entry) {
            rows.push_back(
                host_row(host_places, control, *storage<host_table>(agent).at(control).work, entry));
            return rows.size() < wanted;
        });
    return reply_rows(rows);
}

rmonrpc_hosttime_arr_t hosttime_get(probe &agent, const rmonrpc_row_key4_t &key)
{
    if (key.getType != GET && key.getType != GETNEXT && key.getType != GETBULK)
        return {};
    std::vector<rmonrpc_hosttime_t> rows;
    const std::size_t wanted = rows_wanted(key.getType, key.count);
    for (auto at = storage<host_table>(agent).lower_bound(key.index1); at != storage<host_table>(agent).end();
         ++at) {
        const bool asked = at->first == key.index1;
        if (key.getType == GET && !asked)
            break;
        host_work *work = find_hosts(agent, at->first);
        if (!work)
            continue;
        // The row of creation order n stands at n - 1.
        const auto &order = in_creation_order(*work);
        int64_t i = asked ? std::max(key.index2, 0) : 0;
        if (key.getType == GET && --i < 0)
            break;
        for (; i < std::ssize(order) && rows.size() < wanted; i++)
            rows.push_back(host_row(
                hosttime_places, at->first, *work,
                work->learned.entries[order[static_cast<std::size_t>(i)]]));
        if (key.getType == GET || rows.size() >= wanted)
            break;
    }
    return reply_rows(rows);
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

rmonrpc_host_key_t host_index(instance_reader &from)
{
    rmonrpc_host_key_t key{};
    key.hostIndex = take_index(from);
    take_octets(from, key.hostAddress);
    key.getType = GET;
    return key;
}

constexpr auto host_ctl_get = get_control<host_table_control>;

constexpr served_procedure procedures[] = {
    serve<host_ctl_get>(host_ctl_get_1),
    serve_set<set_control<host_table_control>>(host_ctl_set_1),
    serve<host_get>(host_get_1),
    serve<hosttime_get>(hosttime_get_1),
};

constexpr state_part kept[] = {
    keep_rows<host_table_control>("host"),
};

// clang-format off
constexpr known_variable variables[] = {
    gauge<host_ctl_get, one_index, &rmonrpc_host_ctl_t::hostControlTableSize>("1.3.6.1.2.1.16.4.1.1.3"),
    gauge<host_ctl_get, one_index, &rmonrpc_host_ctl_t::hostControlLastDeleteTime>("1.3.6.1.2.1.16.4.1.1.4"),
    gauge<host_get, host_index, &rmonrpc_host_t::hostCreationOrder>("1.3.6.1.2.1.16.4.2.1.2"),
    counter<host_get, host_index, &rmonrpc_host_t::hostInPkts>("1.3.6.1.2.1.16.4.2.1.4"),
    counter<host_get, host_index, &rmonrpc_host_t::hostOutPkts>("1.3.6.1.2.1.16.4.2.1.5"),
    counter<host_get, host_index, &rmonrpc_host_t::hostInOctets>("1.3.6.1.2.1.16.4.2.1.6"),
    counter<host_get, host_index, &rmonrpc_host_t::hostOutOctets>("1.3.6.1.2.1.16.4.2.1.7"),
    counter<host_get, host_index, &rmonrpc_host_t::hostOutErrors>("1.3.6.1.2.1.16.4.2.1.8"),
    counter<host_get, host_index, &rmonrpc_host_t::hostOutBroadcastPkts>("1.3.6.1.2.1.16.4.2.1.9"),
    counter<host_get, host_index, &rmonrpc_host_t::hostOutMulticastPkts>("1.3.6.1.2.1.16.4.2.1.10"),
    counter<hosttime_get, two_indexes, &rmonrpc_hosttime_t::hostTimeInPkts>("1.3.6.1.2.1.16.4.3.1.4"),
    counter<hosttime_get, two_indexes, &rmonrpc_hosttime_t::hostTimeOutPkts>("1.3.6.1.2.1.16.4.3.1.5"),
    counter<hosttime_get, two_indexes, &rmonrpc_hosttime_t::hostTimeInOctets>("1.3.6.1.2.1.16.4.3.1.6"),
    counter<hosttime_get, two_indexes, &rmonrpc_hosttime_t::hostTimeOutOctets>("1.3.6.1.2.1.16.4.3.1.7"),
    counter<hosttime_get, two_indexes, &rmonrpc_hosttime_t::hostTimeOutErrors>("1.3.6.1.2.1.16.4.3.1.8"),
    counter<hosttime_get, two_indexes, &rmonrpc_hosttime_t::hostTimeOutBroadcastPkts>("1.3.6.1.2.1.16.4.3.1.9"),
    counter<hosttime_get, two_indexes, &rmonrpc_hosttime_t::hostTimeOutMulticastPkts>("1.3.6.1.2.1.16.4.3.1.10"),
};
// clang-format on

} // namespace

extern const family hosts_family = {
    .name = "hosts",
    .interface_gone = remove_rows_on<host_table_control>,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
