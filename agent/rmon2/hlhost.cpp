// SPDX-License-Identifier: MIT
#include "agent/rmon2/hlhost.h"

#include "agent/capture/family.h"
#include "agent/core/control_table.h"
#include "agent/rmon2/hl_control.h"

namespace {

/* ---- counting ---------------------------------------------------------------------------- */

/** The row of a host, or null when there is no room for it. */
hl_host *host_of(hl_host_counts::table &table, const tagged_key<hl_host_key> &key, const frame &seen)
{
    hl_host *host = learn_sought(table.rows, key);
    if (!host)
        return nullptr;
    if (host->in_pkts + host->out_pkts == 0)
        host->create_time = host->changed = seen.up_time;
    host->changed = later(host->changed, seen.up_time);
    return host;
}

struct both_ends {
    tagged_key<hl_host_key> from;
    tagged_key<hl_host_key> to;
};

/** Counts a frame in one table, at its sender and at its receiver. False when there was no room for both. */
bool count_in(hl_host_counts::table &table, const both_ends &ends, const frame &seen)
{
    hl_host *sender = host_of(table, ends.from, seen);
    if (sender) {
        sender->out_pkts += seen.pkts;
        sender->out_octets += seen.octets;
        if (is_group(seen.to_mac))
            sender->out_mac_nonunicast_pkts += seen.pkts;
    }
    hl_host *receiver = host_of(table, ends.to, seen);
    if (receiver) {
        receiver->in_pkts += seen.pkts;
        receiver->in_octets += seen.octets;
    }
    return sender && receiver;
}

void count(void *context, const frame &seen)
{
    auto &counts = *static_cast<hl_host_counts *>(context);
    const auto begin = [&](hl_host_counts::table &table, int32_t application) -> both_ends {
        const auto end = [&](const net_address &of) -> hl_host_key {
            return {key_address_of(of), of.length, seen.network_index, application, 0};
        };
        return {seek(table.rows, end(seen.from)), seek(table.rows, end(seen.to))};
    };
    count_layers<&protocol::host>(
        counts, seen, begin, [&](auto &table, const both_ends &ends) { return count_in(table, ends, seen); });
}

/* ---- the control table ---------------------------------------------------------------------- */

struct hl_host_kind {
    using counts = hl_host_counts;
    using table = hl_host_table;
    using row = hl_host_row;
    using request = rmonrpc_hlhost_ctl_t;
    static constexpr auto index = &request::hlHostControlIndex;
    static constexpr auto status = &request::hlHostControlStatus;
    static constexpr std::tuple fields{
        fixed<&request::hlHostControlDataSource, &row::data_source>(not_negative),
        changeable<&request::hlHostControlNlMaxDesiredEntries, &row::desired_network>({.min = -1}),
        changeable<&request::hlHostControlAlMaxDesiredEntries, &row::desired_application>({.min = -1}),
        changeable<&request::hlHostControlOwner, &row::owner>(),
    };
    static constexpr hl_layer_fields<request> network{
        &request::hlHostControlNlDroppedFrames,
        &request::hlHostControlNlInserts,
        &request::hlHostControlNlDeletes,
    };
    static constexpr hl_layer_fields<request> application{
        &request::hlHostControlAlDroppedFrames,
        &request::hlHostControlAlInserts,
        &request::hlHostControlAlDeletes,
    };
    static constexpr auto on = &protocol::host;
    static constexpr auto count = ::count;

    using asked_key = rmonrpc_hlhost_key_t;
    static constexpr auto control = &asked_key::hlHostControlIndex;

    static hl_host_key key_of(const rmonrpc_hlhost_key_t &asked)
    {
        return {
            key_address_of(asked.nlHostAddress), asked.nlHostAddress.length, asked.protocolDirLocalIndex,
            asked.applicationLayer == APPLICATION_LAYER ? asked.protocolDirLocalIndex2 : 0, 0};
    }

    static rmonrpc_hlhost_t
    answer(int32_t control_index, uint32_t time_mark, const hl_host_key &key, const hl_host &host)
    {
        rmonrpc_hlhost_t row{};
        row.timeMark = time_mark;
        set_bytes(row.nlHostAddress, {key.address.bytes, key.length});
        row.inPkts = host.in_pkts;
        row.outPkts = host.out_pkts;
        row.inOctets = host.in_octets;
        row.outOctets = host.out_octets;
        row.outMacNonUnicastPkts = key.application == 0 ? host.out_mac_nonunicast_pkts : 0;
        row.createTime = host.create_time;
        row.hlHostControlIndex = control_index;
        row.protocolDirLocalIndex = key.network;
        row.protocolDirLocalIndex2 = key.application;
        return row;
    }
};

using hl_host_control = hl_control<hl_host_kind>;

/* ---- the rows ------------------------------------------------------------------------------- */

/** The order of both tables' indexes. */
bool before(const hl_host_key &a, const hl_host_key &b)
{
    if (a.network != b.network)
        return a.network < b.network;
    if (a.length != b.length)
        return a.length < b.length;
    const int order = compare_addresses(a.address, b.address);
    return order != 0 ? order < 0 : a.application < b.application;
}

rmonrpc_hlhost_arr_t hlhost_get(probe &agent, const rmonrpc_hlhost_key_t &asked)
{
    const auto view = [](hl_host_counts::table &table) -> ordered_view & { return table.view; };
    return hl_read<hl_host_kind>(agent, asked, view, before);
}

/* ---- the family --------------------------------------------------------------------- */

rmonrpc_hlhost_key_t nl_host_index(instance_reader &from)
{
    rmonrpc_hlhost_key_t key{};
    key.hlHostControlIndex = take_index(from);
    key.timeMark = take_time(from);
    key.protocolDirLocalIndex = take_index(from);
    take_octets(from, key.nlHostAddress);
    key.getType = GET;
    return key;
}

rmonrpc_hlhost_key_t al_host_index(instance_reader &from)
{
    rmonrpc_hlhost_key_t key = nl_host_index(from);
    key.protocolDirLocalIndex2 = take_index(from);
    key.applicationLayer = APPLICATION_LAYER;
    return key;
}

constexpr auto hlhost_ctl_get = get_control<hl_host_control>;

constexpr served_procedure procedures[] = {
    serve<hlhost_ctl_get>(hlhost_ctl_get_1),
    serve_set<set_control<hl_host_control>>(hlhost_ctl_set_1),
    serve<hlhost_get>(hlhost_get_1),
    serve_set<hl_keep<hl_host_kind, true>>(nlhost_make_persistent_1),
    serve_set<hl_keep<hl_host_kind, false>>(nlhost_make_nonpersistent_1),
};

constexpr state_part kept[] = {
    keep_rows<hl_host_control>("hlHost"),
};

// clang-format off
constexpr known_variable variables[] = {
    counter<hlhost_ctl_get, one_index, &rmonrpc_hlhost_ctl_t::hlHostControlNlDroppedFrames>("1.3.6.1.2.1.16.14.1.1.3"),
    counter<hlhost_ctl_get, one_index, &rmonrpc_hlhost_ctl_t::hlHostControlNlInserts>("1.3.6.1.2.1.16.14.1.1.4"),
    counter<hlhost_ctl_get, one_index, &rmonrpc_hlhost_ctl_t::hlHostControlNlDeletes>("1.3.6.1.2.1.16.14.1.1.5"),
    gauge<hlhost_ctl_get, one_index, &rmonrpc_hlhost_ctl_t::hlHostControlNlMaxDesiredEntries>("1.3.6.1.2.1.16.14.1.1.6"),
    counter<hlhost_ctl_get, one_index, &rmonrpc_hlhost_ctl_t::hlHostControlAlDroppedFrames>("1.3.6.1.2.1.16.14.1.1.7"),
    counter<hlhost_ctl_get, one_index, &rmonrpc_hlhost_ctl_t::hlHostControlAlInserts>("1.3.6.1.2.1.16.14.1.1.8"),
    counter<hlhost_ctl_get, one_index, &rmonrpc_hlhost_ctl_t::hlHostControlAlDeletes>("1.3.6.1.2.1.16.14.1.1.9"),
    gauge<hlhost_ctl_get, one_index, &rmonrpc_hlhost_ctl_t::hlHostControlAlMaxDesiredEntries>("1.3.6.1.2.1.16.14.1.1.10"),
    counter<hlhost_get, nl_host_index, &rmonrpc_hlhost_t::inPkts>("1.3.6.1.2.1.16.14.2.1.3", "nlHostInPkts"),
    counter<hlhost_get, nl_host_index, &rmonrpc_hlhost_t::outPkts>("1.3.6.1.2.1.16.14.2.1.4", "nlHostOutPkts"),
    counter<hlhost_get, nl_host_index, &rmonrpc_hlhost_t::inOctets>("1.3.6.1.2.1.16.14.2.1.5", "nlHostInOctets"),
    counter<hlhost_get, nl_host_index, &rmonrpc_hlhost_t::outOctets>("1.3.6.1.2.1.16.14.2.1.6", "nlHostOutOctets"),
    counter<hlhost_get, nl_host_index, &rmonrpc_hlhost_t::outMacNonUnicastPkts>("1.3.6.1.2.1.16.14.2.1.7", "nlHostOutMacNonUnicastPkts"),
    gauge<hlhost_get, nl_host_index, &rmonrpc_hlhost_t::createTime>("1.3.6.1.2.1.16.14.2.1.8", "nlHostCreateTime"),
    counter<hlhost_get, al_host_index, &rmonrpc_hlhost_t::inPkts>("1.3.6.1.2.1.16.16.1.1.2", "alHostInPkts"),
    counter<hlhost_get, al_host_index, &rmonrpc_hlhost_t::outPkts>("1.3.6.1.2.1.16.16.1.1.3", "alHostOutPkts"),
    counter<hlhost_get, al_host_index, &rmonrpc_hlhost_t::inOctets>("1.3.6.1.2.1.16.16.1.1.4", "alHostInOctets"),
    counter<hlhost_get, al_host_index, &rmonrpc_hlhost_t::outOctets>("1.3.6.1.2.1.16.16.1.1.5", "alHostOutOctets"),
    gauge<hlhost_get, al_host_index, &rmonrpc_hlhost_t::createTime>("1.3.6.1.2.1.16.16.1.1.6", "alHostCreateTime"),
};
// clang-format on

} // namespace

extern const family hlhost_family = {
    .name = "hlhost",
    .interface_gone = remove_rows_on<hl_host_control>,
    .protocols_changed = hl_sift<hl_host_kind>,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
