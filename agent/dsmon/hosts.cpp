// SPDX-License-Identifier: MIT
#include "agent/dsmon/hosts.h"

#include "agent/capture/family.h"
#include "agent/dsmon/learned.h"

namespace {

using host_row = dsmon_row<dsmon_host_counts>;

bool host_less(const dsmon_host_key &one, const dsmon_host_key &other)
{
    if (one.group != other.group)
        return one.group < other.group;
    if (one.protocol != other.protocol)
        return one.protocol < other.protocol;
    return compare_addresses(one.address, one.length, other.address, other.length) < 0;
}

void begin_hosts(probe &, const host_row &row, dsmon_host_counts &counts)
{
    counts.learned.max_rows = granted_rows(row.desired);
    counts.ipv4_prefix = row.ipv4_prefix;
    counts.ipv6_prefix = row.ipv6_prefix;
}

/** Only the first bits of an address stay, the others become 0. */
void mask(uint8_t (&address)[max_address], int32_t bits)
{
    auto octet = static_cast<uint32_t>(bits / 8);
    if (octet < max_address && bits % 8)
        address[octet++] &= static_cast<uint8_t>(0xff00 >> bits % 8);
    for (; octet < max_address; octet++)
        address[octet] = 0;
}

dsmon_host_key
host_of(const dsmon_host_counts &counts, const net_address &address, uint8_t group, int32_t protocol)
{
    dsmon_host_key key{.length = address.length, .group = group, .protocol = protocol};
    std::memcpy(key.address, address.bytes, std::min<uint32_t>(address.length, max_address));
    const bool ipv4 = address.length == whole_ipv4 / 8;
    const int32_t prefix = ipv4 ? counts.ipv4_prefix : counts.ipv6_prefix;
    if (prefix < (ipv4 ? whole_ipv4 : whole_ipv6))
        mask(key.address, prefix);
    return key;
}

void count_hosts(dsmon_host_counts &counts, const frame &seen, uint8_t group)
{
    if (seen.network_index == 0 || seen.from.length == 0 || seen.to.length == 0)
        return;
    const auto sender = seek(counts.learned, host_of(counts, seen.from, group, seen.network_index));
    const auto receiver = seek(counts.learned, host_of(counts, seen.to, group, seen.network_index));
    if (dsmon_host_counters *row = learn_changed(counts.work, counts.learned, sender, seen)) {
        row->out_pkts += seen.pkts;
        row->out_octets += seen.octets;
    }
    if (dsmon_host_counters *row = learn_changed(counts.work, counts.learned, receiver, seen)) {
        row->in_pkts += seen.pkts;
        row->in_octets += seen.octets;
    }
}

struct dsmon_host_kind {
    using counts = dsmon_host_counts;
    using table = dsmon_host_table;
    using row = dsmon_row<dsmon_host_counts>;
    using request = rmonrpc_dsmon_hostctl_t;
    static constexpr auto index = &request::dsmonHostCtlIndex;
    static constexpr auto status = &request::dsmonHostCtlStatus;
    static constexpr std::tuple fields{
        fixed<&request::dsmonHostCtlDataSource_ifIndex, &row::data_source>(not_negative),
        fixed<&request::dsmonHostAggProfile, &row::profile>(not_negative),
        fixed<&request::dsmonHostCtlMaxDesiredEntries, &row::desired>(desired_size),
        fixed<&request::dsmonHostCtlIPv4PrefixLen, &row::ipv4_prefix>({min_prefix, whole_ipv4}),
        fixed<&request::dsmonHostCtlIPv6PrefixLen, &row::ipv6_prefix>({min_prefix, whole_ipv6}),
        changeable<&request::dsmonHostCtlOwner, &row::owner>(),
    };
    static constexpr auto begin = begin_hosts;
    static constexpr auto count = count_hosts;
    static constexpr auto forget = forget_learned<dsmon_host_counts>;
    static constexpr learned_fields<request> learned{
        &request::dsmonHostDroppedFrames,
        &request::dsmonHostCtlInserts,
        &request::dsmonHostCtlDeletes,
    };

    using asked_key = rmonrpc_dsmon_host_key_t;
    static constexpr auto control = &asked_key::dsmonHostCtlIndex;
    static constexpr auto time_mark = &asked_key::dsmonHostTimeMark;

    static dsmon_host_key key_of(const rmonrpc_dsmon_host_key_t &from)
    {
        dsmon_host_key key;
        key.length = take_octets(key.address, from.dsmonHostAddress, from.dsmonHostAddressLength);
        key.group = group_in_key(from.dsmonAggGroupIndex);
        key.protocol = from.protocolDirLocalIndex;
        return key;
    }
};

using dsmon_host_control = dsmon_learned_control<dsmon_host_kind>;

rmonrpc_dsmon_hoststats_t dsmon_hoststats_get(probe &agent, const rmonrpc_dsmon_host_key_t &asked)
{
    const auto [control, entry] =
        find_counted<dsmon_host_kind>(agent, asked, &dsmon_host_counts::order, host_less);
    if (!entry)
        return no_such_row<rmonrpc_dsmon_hoststats_t>();
    rmonrpc_dsmon_hoststats_t reply{};
    reply.dsmonHostCtlIndex = control;
    reply.dsmonHostTimeMark = asked.dsmonHostTimeMark;
    reply.dsmonAggGroupIndex = entry->key.group;
    reply.protocolDirLocalIndex = entry->key.protocol;
    reply.dsmonHostAddressLength = give_octets(reply.dsmonHostAddress, entry->key.address, entry->key.length);
    reply.dsmonHostInHCPkts = entry->row.in_pkts;
    reply.dsmonHostInHCOctets = entry->row.in_octets;
    reply.dsmonHostOutHCPkts = entry->row.out_pkts;
    reply.dsmonHostOutHCOctets = entry->row.out_octets;
    return reply;
}

/* ---- the family --------------------------------------------------------------------- */

rmonrpc_dsmon_host_key_t dsmon_host_index(instance_reader &from)
{
    rmonrpc_dsmon_host_key_t key{};
    key.dsmonHostCtlIndex = take_index(from);
    key.dsmonHostTimeMark = take_time(from);
    key.dsmonAggGroupIndex = take_number(from, UINT32_MAX);
    key.protocolDirLocalIndex = take_index(from);
    key.dsmonHostAddressLength = take_octets(from, key.dsmonHostAddress);
    key.getType = GET;
    return key;
}

constexpr auto dsmon_hostctl_get = get_control<dsmon_host_control>;

constexpr served_procedure procedures[] = {
    serve<dsmon_hostctl_get>(dsmon_hostctl_get_1),
    serve_set<set_control<dsmon_host_control>>(dsmon_hostctl_set_1),
    serve<dsmon_hoststats_get>(dsmon_hoststats_get_1),
    serve_set<keep_counted<dsmon_host_kind, true>>(dshost_make_persistent_1),
    serve_set<keep_counted<dsmon_host_kind, false>>(dshost_make_nonpersistent_1),
};

constexpr state_part kept[] = {
    keep_rows<dsmon_host_control>("dsmonHostCtl"),
};

// clang-format off
constexpr known_variable variables[] = {
    counter<dsmon_hostctl_get, one_index, &rmonrpc_dsmon_hostctl_t::dsmonHostDroppedFrames>("1.3.6.1.2.1.16.26.1.4.1.1.7", "dsmonHostCtlDroppedFrames"),
    counter<dsmon_hostctl_get, one_index, &rmonrpc_dsmon_hostctl_t::dsmonHostCtlInserts>("1.3.6.1.2.1.16.26.1.4.1.1.8"),
    counter<dsmon_hostctl_get, one_index, &rmonrpc_dsmon_hostctl_t::dsmonHostCtlDeletes>("1.3.6.1.2.1.16.26.1.4.1.1.9"),
    counter<dsmon_hoststats_get, dsmon_host_index, &rmonrpc_dsmon_hoststats_t::dsmonHostInHCPkts>("1.3.6.1.2.1.16.26.1.4.2.1.7"),
    counter<dsmon_hoststats_get, dsmon_host_index, &rmonrpc_dsmon_hoststats_t::dsmonHostInHCOctets>("1.3.6.1.2.1.16.26.1.4.2.1.8"),
    counter<dsmon_hoststats_get, dsmon_host_index, &rmonrpc_dsmon_hoststats_t::dsmonHostOutHCPkts>("1.3.6.1.2.1.16.26.1.4.2.1.13"),
    counter<dsmon_hoststats_get, dsmon_host_index, &rmonrpc_dsmon_hoststats_t::dsmonHostOutHCOctets>("1.3.6.1.2.1.16.26.1.4.2.1.14"),
};
// clang-format on

} // namespace

extern const family dsmon_hosts_family = {
    .name = "dsmon_hosts",
    .start = follow_lock<dsmon_host_kind>,
    .interface_gone = remove_rows_on<dsmon_host_control>,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
