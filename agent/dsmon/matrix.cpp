// SPDX-License-Identifier: MIT
#include "agent/dsmon/matrix.h"

#include "agent/capture/family.h"
#include "agent/dsmon/learned.h"

namespace {

using matrix_row = dsmon_row<dsmon_matrix_counts>;

int compare_senders(const dsmon_matrix_key &one, const dsmon_matrix_key &other)
{
    return compare_addresses(one.from, one.from_length, other.from, other.from_length);
}

int compare_receivers(const dsmon_matrix_key &one, const dsmon_matrix_key &other)
{
    return compare_addresses(one.to, one.to_length, other.to, other.to_length);
}

using address_order = int (*)(const dsmon_matrix_key &, const dsmon_matrix_key &);

template <address_order First, address_order Second>
bool matrix_less(const dsmon_matrix_key &one, const dsmon_matrix_key &other)
{
    if (one.group != other.group)
        return one.group < other.group;
    if (one.network != other.network)
        return one.network < other.network;
    if (const int first = First(one, other))
        return first < 0;
    if (const int second = Second(one, other))
        return second < 0;
    return one.application < other.application;
}

constexpr auto &sender_less = matrix_less<compare_senders, compare_receivers>;
constexpr auto &receiver_less = matrix_less<compare_receivers, compare_senders>;

void count_matrix(dsmon_matrix_counts &counts, const frame &seen, uint8_t group)
{
    if (seen.network_index == 0 || seen.from.length == 0 || seen.to.length == 0)
        return;
    dsmon_matrix_key key;
    std::memcpy(key.from, seen.from.bytes, std::min<uint32_t>(seen.from.length, max_address));
    std::memcpy(key.to, seen.to.bytes, std::min<uint32_t>(seen.to.length, max_address));
    key.from_length = seen.from.length;
    key.to_length = seen.to.length;
    key.group = group;
    key.network = seen.network_index;
    key.application = highest_protocol(seen);
    count_learned(counts.work, counts.learned, key, seen);
}

struct dsmon_matrix_kind {
    using counts = dsmon_matrix_counts;
    using table = dsmon_matrix_table;
    using row = dsmon_row<dsmon_matrix_counts>;
    using request = rmonrpc_dsmon_matrixctl_t;
    static constexpr auto index = &request::dsmonMatrixCtlIndex;
    static constexpr auto status = &request::dsmonMatrixCtlStatus;
    static constexpr std::tuple fields{
        fixed<&request::dsmonMatrixCtlDataSource_ifIndex, &row::data_source>(not_negative),
        fixed<&request::dsmonMatrixAggProfile, &row::profile>(not_negative),
        fixed<&request::dsmonMatrixCtlMaxDesiredEntries, &row::desired>(desired_size),
        changeable<&request::dsmonMatrixCtlOwner, &row::owner>(),
    };
    static constexpr auto begin = begin_learned<dsmon_matrix_counts>;
    static constexpr auto count = count_matrix;
    static constexpr auto forget = forget_learned<dsmon_matrix_counts>;
    static constexpr learned_fields<request> learned{
        &request::dsmonMatrixDroppedFrames,
        &request::dsmonMatrixCtlInserts,
        &request::dsmonMatrixCtlDeletes,
    };

    using asked_key = rmonrpc_dsmon_matrix_key_t;
    static constexpr auto control = &asked_key::dsmonMatrixCtlIndex;
    static constexpr auto time_mark = &asked_key::dsmonMatrixTimeMark;

    static dsmon_matrix_key key_of(const rmonrpc_dsmon_matrix_key_t &from)
    {
        dsmon_matrix_key key;
        key.from_length =
            take_octets(key.from, from.dsmonMatrixSourceAddress, from.dsmonMatrixSourceAddressLength);
        key.to_length = take_octets(key.to, from.dsmonMatrixDestAddress, from.dsmonMatrixDestAddressLength);
        key.group = group_in_key(from.dsmonAggGroupIndex);
        key.network = from.dsmonMatrixNLIndex;
        key.application = from.dsmonMatrixALIndex;
        return key;
    }
};

using dsmon_matrix_control = dsmon_learned_control<dsmon_matrix_kind>;

rmonrpc_dsmon_matrixstats_t read_matrix(
    probe &agent,
    const rmonrpc_dsmon_matrix_key_t &asked,
    ordered_view dsmon_matrix_counts::*order,
    bool (&less)(const dsmon_matrix_key &, const dsmon_matrix_key &))
{
    const auto [control, entry] = find_counted<dsmon_matrix_kind>(agent, asked, order, less);
    if (!entry)
        return no_such_row<rmonrpc_dsmon_matrixstats_t>();
    rmonrpc_dsmon_matrixstats_t reply{};
    reply.dsmonMatrixCtlIndex = control;
    reply.dsmonMatrixTimeMark = asked.dsmonMatrixTimeMark;
    reply.dsmonAggGroupIndex = entry->key.group;
    reply.dsmonMatrixNLIndex = entry->key.network;
    reply.dsmonMatrixSourceAddressLength =
        give_octets(reply.dsmonMatrixSourceAddress, entry->key.from, entry->key.from_length);
    reply.dsmonMatrixDestAddressLength =
        give_octets(reply.dsmonMatrixDestAddress, entry->key.to, entry->key.to_length);
    reply.dsmonMatrixALIndex = entry->key.application;
    reply.hcPkts = entry->row.pkts;
    reply.hcOctets = entry->row.octets;
    return reply;
}

rmonrpc_dsmon_matrixstats_t dsmon_matrixsdstats_get(probe &agent, const rmonrpc_dsmon_matrix_key_t &asked)
{
    return read_matrix(agent, asked, &dsmon_matrix_counts::by_sender, sender_less);
}

rmonrpc_dsmon_matrixstats_t dsmon_matrixdsstats_get(probe &agent, const rmonrpc_dsmon_matrix_key_t &asked)
{
    return read_matrix(agent, asked, &dsmon_matrix_counts::by_receiver, receiver_less);
}

/* ---- the family --------------------------------------------------------------------- */

template <int32_t Direction> rmonrpc_dsmon_matrix_key_t dsmon_matrix_index(instance_reader &from)
{
    rmonrpc_dsmon_matrix_key_t key{};
    const auto take_sender = [&] {
        key.dsmonMatrixSourceAddressLength = take_octets(from, key.dsmonMatrixSourceAddress);
    };
    key.dsmonMatrixCtlIndex = take_index(from);
    key.dsmonMatrixTimeMark = take_time(from);
    key.dsmonAggGroupIndex = take_number(from, UINT32_MAX);
    key.dsmonMatrixNLIndex = take_index(from);
    if (Direction == MATRIX_SD)
        take_sender();
    key.dsmonMatrixDestAddressLength = take_octets(from, key.dsmonMatrixDestAddress);
    if (Direction == MATRIX_DS)
        take_sender();
    key.dsmonMatrixALIndex = take_index(from);
    key.getType = GET;
    return key;
}

constexpr auto dsmon_matrixctl_get = get_control<dsmon_matrix_control>;

constexpr served_procedure procedures[] = {
    serve<dsmon_matrixctl_get>(dsmon_matrixctl_get_1),
    serve_set<set_control<dsmon_matrix_control>>(dsmon_matrixctl_set_1),
    serve<dsmon_matrixsdstats_get>(dsmon_matrixsdstats_get_1),
    serve<dsmon_matrixdsstats_get>(dsmon_matrixdsstats_get_1),
    serve_set<keep_counted<dsmon_matrix_kind, true>>(dsmatrix_make_persistent_1),
    serve_set<keep_counted<dsmon_matrix_kind, false>>(dsmatrix_make_nonpersistent_1),
};

constexpr state_part kept[] = {
    keep_rows<dsmon_matrix_control>("dsmonMatrixCtl"),
};

// clang-format off
constexpr known_variable variables[] = {
    counter<dsmon_matrixctl_get, one_index, &rmonrpc_dsmon_matrixctl_t::dsmonMatrixDroppedFrames>("1.3.6.1.2.1.16.26.1.6.1.1.5", "dsmonMatrixCtlDroppedFrames"),
    counter<dsmon_matrixctl_get, one_index, &rmonrpc_dsmon_matrixctl_t::dsmonMatrixCtlInserts>("1.3.6.1.2.1.16.26.1.6.1.1.6"),
    counter<dsmon_matrixctl_get, one_index, &rmonrpc_dsmon_matrixctl_t::dsmonMatrixCtlDeletes>("1.3.6.1.2.1.16.26.1.6.1.1.7"),
    counter<dsmon_matrixsdstats_get, dsmon_matrix_index<MATRIX_SD>, &rmonrpc_dsmon_matrixstats_t::hcPkts>("1.3.6.1.2.1.16.26.1.6.2.1.8", "dsmonMatrixSDHCPkts"),
    counter<dsmon_matrixsdstats_get, dsmon_matrix_index<MATRIX_SD>, &rmonrpc_dsmon_matrixstats_t::hcOctets>("1.3.6.1.2.1.16.26.1.6.2.1.11", "dsmonMatrixSDHCOctets"),
    counter<dsmon_matrixdsstats_get, dsmon_matrix_index<MATRIX_DS>, &rmonrpc_dsmon_matrixstats_t::hcPkts>("1.3.6.1.2.1.16.26.1.6.3.1.3", "dsmonMatrixDSHCPkts"),
    counter<dsmon_matrixdsstats_get, dsmon_matrix_index<MATRIX_DS>, &rmonrpc_dsmon_matrixstats_t::hcOctets>("1.3.6.1.2.1.16.26.1.6.3.1.6", "dsmonMatrixDSHCOctets"),
};
// clang-format on

} // namespace

extern const family dsmon_matrix_family = {
    .name = "dsmon_matrix",
    .start = follow_lock<dsmon_matrix_kind>,
    .interface_gone = remove_rows_on<dsmon_matrix_control>,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
