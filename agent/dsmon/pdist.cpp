#include "agent/dsmon/pdist.h"

#include "agent/capture/family.h"
#include "agent/dsmon/learned.h"
#include "agent/core/table.h"

#include <tuple>

namespace {

using pdist_row = dsmon_row<dsmon_pdist_counts>;

bool pdist_less(const dsmon_pdist_key &one, const dsmon_pdist_key &other)
{
    return std::tie(one.group, one.protocol) < std::tie(other.group, other.protocol);
}

dsmon_settings settings_of(const rmonrpc_dsmon_pdctl_t &request)
{
    return {
        .data_source = signed_index(request.dsmonPdistCtlDataSource_ifIndex),
        .profile = signed_index(request.dsmonPdistAggProfile),
        .most = request.dsmonPdistCtlMaxDesiredEntries,
        .ipv4_prefix = whole_ipv4,
        .ipv6_prefix = whole_ipv6,
        .owner = text_of(request.dsmonPdistCtlOwner),
    };
}

void count_pdist(dsmon_pdist_counts &counts, const frame &seen, uint8_t group)
{
    const int32_t protocol = highest_protocol(seen);
    if (protocol == 0)
        return;
    count_learned(counts.work, counts.learned, {protocol, group}, seen.length);
}

struct dsmon_pdist_kind {
    using counts_type = dsmon_pdist_counts;
    using request_type = rmonrpc_dsmon_pdctl_t;
    static constexpr auto settings = settings_of;
    static constexpr auto begin = begin_learned<dsmon_pdist_counts>;
    static constexpr auto count = count_pdist;
    static constexpr auto forget = forget_learned<dsmon_pdist_counts>;
};

constexpr auto &rules = dsmon_rules<dsmon_pdist_kind>;

dsmon_pdist_key key_of(const rmonrpc_dsmon_pdist_key_t &key)
{
    return {key.protocolDirLocalIndex, key.dsmonAggGroupIndex};
}

} // namespace

void dsmon_pdist_lock_changed(probe &agent, bool locked)
{
    dsmon_lock_changed<dsmon_pdist_kind>(agent, storage<dsmon_pdist_table>(agent), locked);
}

void dsmon_pdist_interface_gone(probe &agent, int32_t index)
{
    remove_rows_on(agent, storage<dsmon_pdist_table>(agent), index, rules);
}

void describe_dsmon_pdist_row(rmonrpc_dsmon_pdctl_t &record, int32_t index, const pdist_row &row)
{
    record.dsmonPdistCtlIndex = index;
    record.dsmonPdistAggProfile = static_cast<uint32_t>(row.profile);
    record.dsmonPdistCtlMaxDesiredEntries = row.most;
    set_text(record.dsmonPdistCtlOwner, row.owner);
    record.dsmonPdistCtlDataSource_ifIndex = static_cast<uint32_t>(row.data_source);
}

rmonrpc_dsmon_pdctl_t dsmon_pdistctl_get(probe &agent, const rmonrpc_row_key2_t &key)
{
    catch_up_all(agent);
    rmonrpc_dsmon_pdctl_t reply{};
    const auto found = find_row(storage<dsmon_pdist_table>(agent), key.index, key.getType);
    if (found == storage<dsmon_pdist_table>(agent).end()) {
        reply.status = no_such_name;
        return reply;
    }
    describe_dsmon_pdist_row(reply, found->first, found->second);
    if (const auto &counts = found->second.counts) {
        reply.dsmonPdistDroppedFrames = counts->work.dropped;
        reply.dsmonPdistCtlInserts = counts->learned.inserts;
        reply.dsmonPdistCtlDeletes = counts->learned.deletes;
    }
    reply.dsmonPdistCtlStatus = static_cast<int32_t>(found->second.status);
    return reply;
}

int32_t dsmon_pdistctl_set(probe &agent, const rmonrpc_dsmon_pdctl_t &request)
{
    return set_row(
        agent, storage<dsmon_pdist_table>(agent), request.dsmonPdistCtlIndex, request.dsmonPdistCtlStatus,
        request, rules, learning_rows);
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

namespace {

void start_dsmon_pdist(probe &agent)
{
    storage<dsmon_aggregation>(agent).listeners.push_back(dsmon_pdist_lock_changed);
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

constexpr served_procedure procedures[] = {
    serve<dsmon_pdistctl_get>(dsmon_pdistctl_get_1),
    serve_set<dsmon_pdistctl_set>(dsmon_pdistctl_set_1),
    serve<dsmon_pdstats_get>(dsmon_pdstats_get_1),
    serve_set<dspdist_make_persistent>(dspdist_make_persistent_1),
    serve_set<dspdist_make_nonpersistent>(dspdist_make_nonpersistent_1),
};

constexpr state_part kept[] = {
    keep_rows<
        dsmon_pdist_table,
        describe_dsmon_pdist_row,
        dsmon_pdistctl_set,
        &rmonrpc_dsmon_pdctl_t::dsmonPdistCtlStatus>("dsmonPdistCtl"),
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
    .interface_gone = dsmon_pdist_interface_gone,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
