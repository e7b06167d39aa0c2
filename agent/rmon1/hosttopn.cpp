// SPDX-License-Identifier: MIT
#include "agent/rmon1/hosttopn.h"

#include "agent/capture/family.h"
#include "agent/core/control_table.h"
#include "agent/core/bulk.h"
#include "agent/rmon1/hosts.h"

#include <algorithm>
#include <iterator>

namespace {

/** Hosts of a report. */
constexpr int32_t max_reported = 1000;

/** Seconds of an interval; so that their hundredths fit a time of the agent. */
constexpr int32_t max_duration = 365 * 24 * 3600;

int32_t granted(const topn_row &row)
{
    return std::min(row.requested, max_reported);
}

/** Seconds until the running interval ends, rounded up. */
int32_t remaining(const topn_row &row)
{
    if (!row.running)
        return 0;
    return static_cast<int32_t>(std::max<int64_t>((row.end.due - grid_ms() + 999) / 1000, 1));
}

/* ---- reports ------------------------------------------------------------------------------- */

uint64_t value_of(const topn_row &row, const host_counts &host)
{
    return host.*host_rate_bases[row.rate_base - 1];
}

/** By how much a host's value grew. One that was found in the interval began at 0. */
uint64_t rate_of(const topn_row &row, const host_counts &host)
{
    const auto base = std::ranges::lower_bound(row.base, host.serial, {}, &topn_base::serial);
    const uint64_t before = base != row.base.end() && base->serial == host.serial ? base->value : 0;
    return value_of(row, host) - before;
}

/** Makes the report of those hosts whose value grew. */
void end_interval(probe &agent, topn_row &row)
{
    if (const host_work *hosts = find_hosts(agent, row.host_index)) {
        // Serials begin anew with the table, which may not be the one that it was: then all were found since.
        if (row.of.lock().get() != hosts)
            row.base.clear();
        for (const auto &entry : hosts->learned.entries)
            if (const uint64_t rate = rate_of(row, entry.row))
                row.report.push_back({entry.key, rate});
        // Of equal ones the lower address stands first.
        const auto busier = [](const topn_host &one, const topn_host &other) {
            return one.rate != other.rate ? one.rate > other.rate : one.address < other.address;
        };
        const auto size = std::min(std::ssize(row.report), std::ptrdiff_t{granted(row)});
        std::ranges::partial_sort(row.report, row.report.begin() + size, busier);
        row.report.resize(static_cast<std::size_t>(size));
        row.report.shrink_to_fit();
    }
    row.base = {};
    row.of.reset();
    row.running = false;
}

void on_end(void *context, void *row)
{
    end_interval(*static_cast<probe *>(context), *static_cast<topn_row *>(row));
}

void forget_interval(probe &agent, topn_row &row)
{
    take_back(agent.loop, row.end);
    row.running = false;
    row.of.reset();
    row.base = {};
    row.report = {};
}

void begin_interval(probe &agent, topn_row &row)
{
    forget_interval(agent, row);
    if (row.duration == 0)
        return;
    if (const host_work *hosts = find_hosts(agent, row.host_index)) {
        row.of = storage<host_table>(agent).at(row.host_index).work;
        row.base.reserve(hosts->learned.entries.size());
        for (const auto &entry : hosts->learned.entries)
            row.base.push_back({entry.row.serial, value_of(row, entry.row)});
        std::ranges::sort(row.base, {}, &topn_base::serial);
    }
    row.running = true;
    row.start_time = up_time(agent);
    row.end = call_at(agent.loop, grid_ms() + int64_t{row.duration} * 1000, on_end, &agent, &row);
}

/* ---- the control table ----------------------------------------------------------------------- */

struct topn_control_table {
    using table = topn_table;
    using row = topn_row;
    using request = rmonrpc_hosttopn_ctl_t;
    static constexpr auto index = &request::hostTopNControlIndex;
    static constexpr auto status = &request::hostTopNStatus;
    static constexpr row_limits limits = learning_rows;
    static constexpr std::tuple fields{
        fixed<&request::hostTopNHostIndex, &row::host_index>(not_negative),
        fixed<&request::hostTopNRateBase, &row::rate_base>({1, std::ssize(host_rate_bases)}),
        // While the row works, the set begins an interval behind this; one of no time changes nothing.
        given_at_rest<&request::hostTopNTimeRemaining, &row::duration>({0, max_duration}),
        changeable<&request::hostTopNRequestedSize, &row::requested>({.min = 1}),
        changeable<&request::hostTopNOwner, &row::owner>(),
    };

    static constexpr auto stop = forget_interval;

    static int32_t start(probe &agent, row &started)
    {
        if (!find_hosts(agent, started.host_index))
            return bad_value;
        begin_interval(agent, started);
        return no_error;
    }

    static void show(probe &, request &reply, int32_t, const row &shown)
    {
        if (shown.status == row_status::valid)
            reply.hostTopNTimeRemaining = remaining(shown);
        reply.hostTopNDuration = shown.duration;
        reply.hostTopNGrantedSize = granted(shown);
        reply.hostTopNStartTime = shown.start_time;
    }
};

rmonrpc_hosttopn_t host_reply(int32_t report, int32_t rank, const topn_host &host)
{
    rmonrpc_hosttopn_t reply{};
    reply.hostTopNReport = report;
    reply.hostTopNIndex = rank;
    set_mac(reply.hostTopNAddress, host.address);
    reply.hostTopNRate = host.rate;
    return reply;
}

int32_t hosttopn_ctl_set(probe &agent, const rmonrpc_hosttopn_ctl_t &request)
{
    const auto before = storage<topn_table>(agent).find(request.hostTopNControlIndex);
    const bool worked =
        before != storage<topn_table>(agent).end() && before->second.status == row_status::valid;
    const int32_t error = set_control<topn_control_table>(agent, request);
    const auto row = storage<topn_table>(agent).find(request.hostTopNControlIndex);
    if (error != no_error || row == storage<topn_table>(agent).end()
        || row->second.status != row_status::valid)
        return error;
    if (!worked)
        tell_of_silence(
            agent, storage<host_table>(agent).at(row->second.host_index).data_source,
            table_name<rmonrpc_hosttopn_ctl_t>(), row->first);
    if (!worked || request.hostTopNTimeRemaining == 0)
        return error;
    row->second.duration = request.hostTopNTimeRemaining;
    note_control<topn_control_table>(agent, row->first);
    begin_interval(agent, row->second);
    return error;
}

rmonrpc_hosttopn_arr_t hosttopn_get(probe &agent, const rmonrpc_row_key4_t &key)
{
    if (key.getType != GET && key.getType != GETNEXT && key.getType != GETBULK)
        return {};
    std::vector<rmonrpc_hosttopn_t> rows;
    const std::size_t wanted = rows_wanted(key.getType, key.count);
    for (auto at = storage<topn_table>(agent).lower_bound(key.index1); at != storage<topn_table>(agent).end();
         ++at) {
        const bool asked = at->first == key.index1;
        if (key.getType == GET && !asked)
            break;
        // Rank n stands at n - 1.
        const auto &report = at->second.report;
        int64_t i = asked ? std::max(key.index2, 0) : 0;
        if (key.getType == GET && --i < 0)
            break;
        for (; i < std::ssize(report) && rows.size() < wanted; i++)
            rows.push_back(
                host_reply(at->first, static_cast<int32_t>(i + 1), report[static_cast<std::size_t>(i)]));
        if (key.getType == GET || rows.size() >= wanted)
            break;
    }
    return reply_rows(rows);
}

/* ---- the family --------------------------------------------------------------------- */

constexpr auto hosttopn_ctl_get = get_control<topn_control_table>;

constexpr served_procedure procedures[] = {
    serve<hosttopn_ctl_get>(hosttopn_ctl_get_1),
    serve_set<hosttopn_ctl_set>(hosttopn_ctl_set_1),
    serve<hosttopn_get>(hosttopn_get_1),
};

constexpr state_part kept[] = {
    keep_rows<topn_control_table, hosttopn_ctl_set>("hostTopN"),
};

// clang-format off
constexpr known_variable variables[] = {
    gauge<hosttopn_ctl_get, one_index, &rmonrpc_hosttopn_ctl_t::hostTopNTimeRemaining>("1.3.6.1.2.1.16.5.1.1.4"),
    gauge<hosttopn_ctl_get, one_index, &rmonrpc_hosttopn_ctl_t::hostTopNDuration>("1.3.6.1.2.1.16.5.1.1.5"),
    gauge<hosttopn_ctl_get, one_index, &rmonrpc_hosttopn_ctl_t::hostTopNGrantedSize>("1.3.6.1.2.1.16.5.1.1.7"),
    gauge<hosttopn_ctl_get, one_index, &rmonrpc_hosttopn_ctl_t::hostTopNStartTime>("1.3.6.1.2.1.16.5.1.1.8"),
    gauge<hosttopn_get, two_indexes, &rmonrpc_hosttopn_t::hostTopNRate>("1.3.6.1.2.1.16.5.2.1.4"),
};
// clang-format on

} // namespace

extern const family hosttopn_family = {
    .name = "hosttopn",
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
