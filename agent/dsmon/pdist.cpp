// SPDX-License-Identifier: MIT
#include "agent/dsmon/pdist.h"

#include "agent/capture/family.h"
#include "agent/dsmon/learned.h"

#include <tuple>

namespace {

using pdist_row = dsmon_row<dsmon_pdist_counts>;

bool pdist_less(const dsmon_pdist_key &one, const dsmon_pdist_key &other)
{
    return std::tie(one.group, one.protocol) < std::tie(other.group, other.protocol);
}

void count_pdist(dsmon_pdist_counts &counts, const frame &seen, uint8_t group)
{
    const int32_t protocol = highest_protocol(seen);
    if (protocol == 0)
        return;
    count_learned(counts.work, counts.learned, {protocol, group}, seen);
}

struct dsmon_pdist_kind {
    using counts = dsmon_pdist_counts;
    using table = dsmon_pdist_table;
    using row = dsmon_row<dsmon_pdist_counts>;
    using request = rmonrpc_dsmon_pdctl_t;
    static constexpr auto index = &request::dsmonPdistCtlIndex;
    static constexpr auto status = &request::dsmonPdistCtlStatus;
    static constexpr std::tuple fields{
        fixed<&request::dsmonPdistCtlDataSource_ifIndex, &row::data_source>(not_negative),
        fixed<&request::dsmonPdistAggProfile, &row::profile>(not_negative),
        fixed<&request::dsmonPdistCtlMaxDesiredEntries, &row::desired>(desired_size),
        changeable<&request::dsmonPdistCtlOwner, &row::owner>(),
    };
    static constexpr auto begin = begin_learned<dsmon_pdist_counts>;
    static constexpr auto count = count_pdist;
    static constexpr auto forget = forget_learned<dsmon_pdist_counts>;
    static constexpr learned_fields<request> learned{
        &request::dsmonPdistDroppedFrames,
        &request::dsmonPdistCtlInserts,
        &request::dsmonPdistCtlDeletes,
    };

    using asked_key = rmonrpc_dsmon_pdist_key_t;
    static constexpr auto control = &asked_key::dsmonPdistCtlIndex;
    static constexpr auto time_mark = &asked_key::dsmonPdistTimeMark;

    static dsmon_pdist_key key_of(const rmonrpc_dsmon_pdist_key_t &key)
    {
        return {key.protocolDirLocalIndex, key.dsmonAggGroupIndex};
    }
};

using dsmon_pdist_control = dsmon_learned_control<dsmon_pdist_kind>;

rmonrpc_dsmon_pdstats_t dsmon_pdstats_get(probe &agent, const rmonrpc_dsmon_pdist_key_t &asked)
{
    const auto [control, entry] =
        find_counted<dsmon_pdist_kind>(agent, asked, &dsmon_pdist_counts::order, pdist_less);
    if (!entry)
        return no_such_row<rmonrpc_dsmon_pdstats_t>();
    rmonrpc_dsmon_pdstats_t reply{};
    reply.dsmonPdistCtlIndex = static_cast<uint32_t>(control);
    reply.dsmonPdistTimeMark = asked.dsmonPdistTimeMark;
    reply.dsmonAggGroupIndex = entry->key.group;
    reply.protocolDirLocalIndex = entry->key.protocol;
    reply.dsmonPdistStatsHCPkts = entry->row.pkts;
    reply.dsmonPdistStatsHCOctets = entry->row.octets;
    return reply;
}

/* ---- the family --------------------------------------------------------------------- */

rmonrpc_dsmon_pdist_key_t dsmon_pdist_index(instance_reader &from)
{
    rmonrpc_dsmon_pdist_key_t key{};
    key.dsmonPdistCtlIndex = take_index(from);
    key.dsmonPdistTimeMark = take_time(from);
    key.dsmonAggGroupIndex = take_number(from, UINT32_MAX);
    key.protocolDirLocalIndex = take_index(from);
    key.getType = GET;
    return key;
}

constexpr auto dsmon_pdistctl_get = get_control<dsmon_pdist_control>;

constexpr served_procedure procedures[] = {
    serve<dsmon_pdistctl_get>(dsmon_pdistctl_get_1),
    serve_set<set_control<dsmon_pdist_control>>(dsmon_pdistctl_set_1),
    serve<dsmon_pdstats_get>(dsmon_pdstats_get_1),
    serve_set<keep_counted<dsmon_pdist_kind, true>>(dspdist_make_persistent_1),
    serve_set<keep_counted<dsmon_pdist_kind, false>>(dspdist_make_nonpersistent_1),
};

constexpr state_part kept[] = {
    keep_rows<dsmon_pdist_control>("dsmonPdistCtl"),
};

// clang-format off
constexpr known_variable variables[] = {
    counter<dsmon_pdistctl_get, one_index, &rmonrpc_dsmon_pdctl_t::dsmonPdistDroppedFrames>("1.3.6.1.2.1.16.26.1.3.1.1.5", "dsmonPdistCtlDroppedFrames"),
    counter<dsmon_pdistctl_get, one_index, &rmonrpc_dsmon_pdctl_t::dsmonPdistCtlInserts>("1.3.6.1.2.1.16.26.1.3.1.1.6"),
    counter<dsmon_pdistctl_get, one_index, &rmonrpc_dsmon_pdctl_t::dsmonPdistCtlDeletes>("1.3.6.1.2.1.16.26.1.3.1.1.7"),
    counter<dsmon_pdstats_get, dsmon_pdist_index, &rmonrpc_dsmon_pdstats_t::dsmonPdistStatsHCPkts>("1.3.6.1.2.1.16.26.1.3.2.1.6"),
    counter<dsmon_pdstats_get, dsmon_pdist_index, &rmonrpc_dsmon_pdstats_t::dsmonPdistStatsHCOctets>("1.3.6.1.2.1.16.26.1.3.2.1.7"),
};
// clang-format on

} // namespace

extern const family dsmon_pdist_family = {
    .name = "dsmon_pdist",
    .start = follow_lock<dsmon_pdist_kind>,
    .interface_gone = remove_rows_on<dsmon_pdist_control>,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
