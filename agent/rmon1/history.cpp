// SPDX-License-Identifier: MIT
#include "agent/rmon1/history.h"

#include "agent/capture/family.h"
#include "agent/core/control_table.h"
#include "agent/core/bulk.h"

#include <algorithm>

namespace {

constexpr const char own_rows[] = "monitor";

/** The rows that each interface has from the start (RFC 2819). */
constexpr int32_t own_intervals[] = {30, 1800};
constexpr int32_t own_buckets = 50;

constexpr int32_t max_interval = 3600; // seconds
constexpr int32_t max_buckets_requested = 65535;
constexpr int32_t max_buckets = 3600;

/** Each may hold all of these buckets. */
constexpr row_limits history_rows{first_control_index, last_control_index, 200};

/** Buckets of a row, if there is memory for them. */
int32_t wanted_buckets(const history_row &row)
{
    return std::min(row.buckets_requested, max_buckets);
}

int32_t granted(const history_row &row)
{
    if (!row.memory)
        return wanted_buckets(row);
    const std::size_t room = memory_within_reach(*row.memory) / sizeof(history_sample);
    return static_cast<int32_t>(std::min<std::size_t>(
        std::max(room, row.samples.size()), static_cast<std::size_t>(wanted_buckets(row))));
}

/** Forgets the oldest samples while there are too many, or no memory for all of them. */
void forget_oldest(history_row &row)
{
    while (std::ssize(row.samples) > wanted_buckets(row))
        row.samples.pop_front();
    if (!row.memory)
        return;
    const auto octets = [&] { return row.samples.size() * sizeof(history_sample); };
    while (octets() > row.memory->octets && !take_memory(*row.memory, octets()))
        row.samples.pop_front();
    have_memory(*row.memory, octets());
}

/* ---- sampling ------------------------------------------------------------------------------ */

int64_t milliseconds_of(int32_t seconds)
{
    return int64_t{seconds} * 1000;
}

void begin_interval(probe &agent, history_row &row)
{
    row.before = source_counters(agent.sources, row.data_source);
    row.began = up_time(agent);
    row.began_ms = grid_ms();
}

/**
 * How busy the medium was: each packet takes its octets and as long as 20 more
 * (preamble and gap) at the interface's speed. 0 where the speed is not known.
 */
int32_t utilization(const ether_counters &counted, int64_t milliseconds, uint32_t bits_per_second)
{
    const double possible = static_cast<double>(bits_per_second) * static_cast<double>(milliseconds) / 1000;
    if (possible <= 0)
        return 0;
    const double used = static_cast<double>(counted.pkts) * 160 + static_cast<double>(counted.octets) * 8;
    return static_cast<int32_t>(std::min(used / possible * 10000, 10000.0));
}

/** Ends an interval; the next one begins at once, so that no frame is lost between them. */
void take_sample(probe &agent, history_row &row)
{
    const uint32_t began = row.began;
    const int64_t began_ms = row.began_ms;
    const ether_counters before = row.before;
    begin_interval(agent, row);
    const ether_counters counted = since(before, row.before);
    const auto iface = agent.interfaces.rows.find(row.data_source);
    const uint32_t speed = iface == agent.interfaces.rows.end() ? 0 : speed_of(iface->second);
    row.samples.push_back({began, counted, utilization(counted, row.began_ms - began_ms, speed)});
    row.last_index++;
    forget_oldest(row);
}

void on_sampling(void *context, void *of)
{
    auto &agent = *static_cast<probe *>(context);
    auto &row = *static_cast<history_row *>(of);
    take_sample(agent, row);
    const int64_t next = next_on_grid(row.sampling.due, milliseconds_of(row.interval), row.began_ms);
    row.sampling = call_at(agent.loop, next, on_sampling, &agent, &row);
}

/* ---- the control table ----------------------------------------------------------------- */

struct history_control_table {
    using table = history_table;
    using row = history_row;
    using request = rmonrpc_history_ctl_t;
    static constexpr auto index = &request::historyControlIndex;
    static constexpr auto status = &request::historyControlStatus;
    static constexpr row_limits limits = history_rows;
    static constexpr std::tuple fields{
        fixed<&request::historyControlDataSource, &row::data_source>(not_negative),
        changeable<&request::historyControlBucketsRequested, &row::buckets_requested>(
            {1, max_buckets_requested}),
        fixed<&request::historyControlInterval, &row::interval>({1, max_interval}),
        changeable<&request::historyControlOwner, &row::owner>(),
    };
    static constexpr auto assigned = forget_oldest;

    static int32_t start(probe &agent, row &started)
    {
        if (!use_source(agent.sources, started.data_source))
            return bad_value;
        started.memory = std::make_shared<memory_share>();
        begin_interval(agent, started);
        started.sampling = call_at(
            agent.loop, started.began_ms + milliseconds_of(started.interval), on_sampling, &agent, &started);
        return no_error;
    }

    static void stop(probe &agent, row &stopped)
    {
        take_back(agent.loop, stopped.sampling);
        leave_source(agent.sources, stopped.data_source);
        stopped.samples.clear();
        stopped.memory.reset();
        stopped.last_index = 0;
    }

    static void show(probe &, request &reply, int32_t, const row &shown)
    {
        reply.historyControlBucketsGranted = granted(shown);
    }
};

/* ---- the rows ---------------------------------------------------------------------------------- */

int32_t first_index(const history_row &row)
{
    return row.last_index - static_cast<int32_t>(row.samples.size()) + 1;
}

rmonrpc_etherhistory_t sample_reply(int32_t control, int32_t index, const history_sample &sample)
{
    rmonrpc_etherhistory_t reply{};
    reply.etherHistoryIndex = control;
    reply.etherHistorySampleIndex = index;
    reply.etherHistoryIntervalStart = sample.start;
    reply.etherHistoryDropEvents = sample.counted.drop_events;
    reply.etherHistoryOctets = sample.counted.octets;
    reply.etherHistoryPkts = sample.counted.pkts;
    reply.etherHistoryBroadcastPkts = sample.counted.broadcast_pkts;
    reply.etherHistoryMulticastPkts = sample.counted.multicast_pkts;
    reply.etherHistoryCRCAlignErrors = sample.counted.crc_align_errors;
    reply.etherHistoryUndersizePkts = sample.counted.undersize_pkts;
    reply.etherHistoryOversizePkts = sample.counted.oversize_pkts;
    reply.etherHistoryFragments = sample.counted.fragments;
    reply.etherHistoryJabbers = sample.counted.jabbers;
    reply.etherHistoryCollisions = sample.counted.collisions;
    reply.etherHistoryUtilization = sample.utilization;
    return reply;
}

/** Appends a row's samples from an index on, until there are as many as wanted. */
void append_samples(
    int32_t control,
    const history_row &row,
    int32_t from,
    std::size_t wanted,
    std::vector<rmonrpc_etherhistory_t> &to)
{
    const int32_t first = first_index(row);
    for (int32_t i = std::max(from, first); i <= row.last_index && to.size() < wanted; i++)
        to.push_back(sample_reply(control, i, row.samples[static_cast<std::size_t>(i - first)]));
}

void start_history(probe &agent)
{
    int32_t next = first_control_index;
    for (const auto &[index, iface] : agent.interfaces.rows) {
        for (const int32_t interval : own_intervals) {
            if (!is_measured(agent.interfaces, iface)
                || storage<history_table>(agent).size() >= history_rows.max)
                continue;
            history_row &row = storage<history_table>(agent)[next]; // it starts where it stays
            row.data_source = index;
            row.buckets_requested = own_buckets;
            row.interval = interval;
            row.owner = own_rows;
            if (history_control_table::start(agent, row) == no_error) {
                row.status = row_status::valid;
                next++;
            } else {
                storage<history_table>(agent).erase(next);
            }
        }
    }
}

rmonrpc_etherhistory_arr_t etherhistory_get(probe &agent, const rmonrpc_row_key4_t &key)
{
    std::vector<rmonrpc_etherhistory_t> rows;
    if (key.getType == GET) {
        const auto found = storage<history_table>(agent).find(key.index1);
        if (found != storage<history_table>(agent).end() && key.index2 >= first_index(found->second))
            append_samples(key.index1, found->second, key.index2, 1, rows);
    } else if (key.getType == GETNEXT || key.getType == GETBULK) {
        const std::size_t wanted = rows_wanted(key.getType, key.count);
        for (auto at = storage<history_table>(agent).lower_bound(key.index1);
             at != storage<history_table>(agent).end(); ++at) {
            const int32_t after = at->first == key.index1 ? key.index2 : 0;
            if (after < INT32_MAX)
                append_samples(at->first, at->second, after + 1, wanted, rows);
        }
    }
    return reply_rows(rows);
}

/* ---- the family --------------------------------------------------------------------- */

constexpr auto history_ctl_get = get_control<history_control_table>;

constexpr served_procedure procedures[] = {
    serve<history_ctl_get>(history_ctl_get_1),
    serve_set<set_control<history_control_table>>(history_ctl_set_1),
    serve<etherhistory_get>(etherhistory_get_1),
};

constexpr state_part kept[] = {
    keep_rows<history_control_table>("history"),
};

// clang-format off
constexpr known_variable variables[] = {
    gauge<history_ctl_get, one_index, &rmonrpc_history_ctl_t::historyControlBucketsGranted>("1.3.6.1.2.1.16.2.1.1.4"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryIntervalStart>("1.3.6.1.2.1.16.2.2.1.3"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryDropEvents>("1.3.6.1.2.1.16.2.2.1.4"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryOctets>("1.3.6.1.2.1.16.2.2.1.5"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryPkts>("1.3.6.1.2.1.16.2.2.1.6"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryBroadcastPkts>("1.3.6.1.2.1.16.2.2.1.7"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryMulticastPkts>("1.3.6.1.2.1.16.2.2.1.8"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryCRCAlignErrors>("1.3.6.1.2.1.16.2.2.1.9"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryUndersizePkts>("1.3.6.1.2.1.16.2.2.1.10"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryOversizePkts>("1.3.6.1.2.1.16.2.2.1.11"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryFragments>("1.3.6.1.2.1.16.2.2.1.12"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryJabbers>("1.3.6.1.2.1.16.2.2.1.13"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryCollisions>("1.3.6.1.2.1.16.2.2.1.14"),
    gauge<etherhistory_get, two_indexes, &rmonrpc_etherhistory_t::etherHistoryUtilization>("1.3.6.1.2.1.16.2.2.1.15"),
};
// clang-format on

} // namespace

extern const family history_family = {
    .name = "history",
    .start = start_history,
    .interface_gone = remove_rows_on<history_control_table>,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
