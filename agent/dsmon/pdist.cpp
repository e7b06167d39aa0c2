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
    count_learned(counts.work, counts.learned, {protocol, group}, seen.length);
}

struct dsmon_pdist_kind {
    using counts = dsmon_pdist_counts;
    using table = dsmon_pdist_table;
    using row = dsmon_row<dsmon_pdist_counts>;
    using request = rmonrpc_dsmon_pdctl_t;
    static constexpr auto index = &request::dsmonPdistCtlIndex;
    static constexpr auto status = &request::dsmonPdistCtlStatus;
    static constexpr row_limits limits = learning_rows;
    static constexpr std::tuple fields{
        fixed<&request::dsmonPdistCtlDataSource_ifIndex, &row::data_source>(not_negative),
        fixed<&request::dsmonPdistAggProfile, &row::profile>(not_negative),
        fixed<&request::dsmonPdistCtlMaxDesiredEntries, &row::desired>(desired_size),
        changeable<&request::dsmonPdistCtlOwner, &row::owner>(),
    };
    static constexpr auto begin = begin_learned<dsmon_pdist_counts>;
    static constexpr auto count = count_pdist;
    static constexpr auto forget = forget_learned<dsmon_pdist_counts>;

    static void show(probe &, request &reply, int32_t, const row &shown)
    {
        if (!shown.counts)
            return;
        reply.dsmonPdistDroppedFrames = shown.counts->work.dropped;
        reply.dsmonPdistCtlInserts = shown.counts->learned.inserts;
        reply.dsmonPdistCtlDeletes = shown.counts->learned.deletes;
    }
};

using dsmon_pdist_control = dsmon_control<dsmon_pdist_kind>;

dsmon_pdist_key key_of(const rmonrpc_dsmon_pdist_key_t &key)
{
    return {key.protocolDirLocalIndex, key.dsmonAggGroupIndex};
}

rmonrpc_dsmon_pdstats_t dsmon_pdstats_get(probe &agent, const rmonrpc_dsmon_pdist_key_t &key)
{
    catch_up_all(agent);
    rmonrpc_dsmon_pdstats_t reply{};
    reply.status = no_such_name;
    const learned_read<dsmon_pdist_key> read{
        key.dsmonPdistCtlIndex, key_of(key), key.getType, key.dsmonPdistTimeMark};
    find_counted(
        storage<dsmon_pdist_table>(agent), read, &dsmon_pdist_counts::order, pdist_less,
        [&](int32_t control, const auto &entry) {
            reply.status = no_error;
            reply.dsmonPdistCtlIndex = static_cast<uint32_t>(control);
            reply.dsmonPdistTimeMark = key.dsmonPdistTimeMark;
            reply.dsmonAggGroupIndex = entry.key.group;
            reply.protocolDirLocalIndex = entry.key.protocol;
            reply.dsmonPdistStatsHCPkts = entry.row.pkts;
            reply.dsmonPdistStatsHCOctets = entry.row.octets;
        });
    return reply;
}

int32_t dspdist_make_persistent(probe &agent, const rmonrpc_dsmon_pdist_key_t &key)
{
    return keep_counted(storage<dsmon_pdist_table>(agent), key.dsmonPdistCtlIndex, key_of(key), true);
}

int32_t dspdist_make_nonpersistent(probe &agent, const rmonrpc_dsmon_pdist_key_t &key)
{
    return keep_counted(storage<dsmon_pdist_table>(agent), key.dsmonPdistCtlIndex, key_of(key), false);
}

/* ---- the family --------------------------------------------------------------------- */

void start_dsmon_pdist(probe &agent)
{
    storage<dsmon_aggregation>(agent).listeners.push_back(dsmon_lock_changed<dsmon_pdist_kind>);
}

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
    serve_set<dspdist_make_persistent>(dspdist_make_persistent_1),
    serve_set<dspdist_make_nonpersistent>(dspdist_make_nonpersistent_1),
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
    .start = start_dsmon_pdist,
    .interface_gone = remove_rows_on<dsmon_pdist_control>,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
