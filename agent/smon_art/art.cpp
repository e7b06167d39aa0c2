// SPDX-License-Identifier: MIT
#include "agent/smon_art/art.h"

#include "agent/capture/family.h"
#include "agent/core/bulk.h"
#include "agent/capture/counting.h"
#include "agent/core/octets.h"

#include <vector>

namespace {

constexpr int64_t microseconds = 1000; // of a millisecond

/* ---- counting ------------------------------------------------------------------------- */

void count_art(void *context, const frame &seen)
{
    auto &work = *static_cast<art_work *>(context);
    // The clock is asked once for the frames of one hundredth of a second.
    if (seen.time / 10000 != work.frame_time / 10000)
        work.frame_seen = now_ms();
    work.frame_time = seen.time;
    if (seen.application_index == 0)
        return;
    const protocol *spoken = find_protocol(work.agent->protocols, seen.application_index);
    if (spoken && spoken->response_time == protocol_config::on)
        measure_frame(work.meter, seen, seen.application_index);
}

/** Gives up the requests whose time is over now. The capture's clock goes on without frames. */
void give_up_late(art_work &work)
{
    expire_requests(work.meter, work.frame_time + (now_ms() - work.frame_seen) * microseconds);
}

int64_t interval_of(const art_row &row)
{
    return int64_t{row.interval} * 1000;
}

/** A report begins; connections and open requests go on. */
void begin_report(probe &agent, art_work &work)
{
    forget_all(work.meter.exchanges);
    work.began = grid_ms();
    work.start_time = up_time(agent);
}

void finish_report(probe &agent, art_work &work)
{
    give_up_late(work);
    std::swap(work.report, work.meter.exchanges);
    std::swap(work.report_order, work.order);
    work.meter.exchanges.max_rows = work.report.max_rows;
    work.reports++;
    begin_report(agent, work);
}

void on_end(void *context, void *of)
{
    auto &agent = *static_cast<probe *>(context);
    auto &row = *static_cast<art_row *>(of);
    catch_up(agent, row.data_source);
    finish_report(agent, *row.work);
    const int64_t next = next_on_grid(row.end.due, interval_of(row), row.work->began);
    row.end = call_at(agent.loop, next, on_end, &agent, &row);
}

/** The first report begins, or the one that is being made begins anew. */
void begin_reports(probe &agent, art_row &row)
{
    take_back(agent.loop, row.end);
    begin_report(agent, *row.work);
    if (row.interval > 0)
        row.end = call_at(agent.loop, row.work->began + interval_of(row), on_end, &agent, &row);
}

/* ---- control rows ----------------------------------------------------------------------- */

/** Rows of a report, if there is memory for them. */
uint32_t granted_size(const art_row &row)
{
    return row.requested < 0 ? default_learned_rows
                             : std::min(static_cast<uint32_t>(row.requested), default_learned_rows);
}

/** The upper limit of a range of response times. */
template <std::size_t Range> struct art_limit {
    auto &operator()(auto &row) const { return row.limits[Range]; }
};

struct art_control_table {
    using table = art_table;
    using row = art_row;
    using request = rmonrpc_art_ctl_t;
    static constexpr auto index = &request::artControlIndex;
    static constexpr auto status = &request::artControlStatus;
    static constexpr row_limits limits = learning_rows;
    static constexpr std::tuple fields{
        fixed<&request::artControlDataSource, &row::data_source>(not_negative),
        changeable<&request::artControlTimeRemaining, &row::interval>(not_negative),
        fixed<&request::artControlRspTime1, art_limit<0>{}>(not_negative),
        fixed<&request::artControlRspTime2, art_limit<1>{}>(not_negative),
        fixed<&request::artControlRspTime3, art_limit<2>{}>(not_negative),
        fixed<&request::artControlRspTime4, art_limit<3>{}>(not_negative),
        fixed<&request::artControlRspTime5, art_limit<4>{}>(not_negative),
        fixed<&request::artControlRspTime6, art_limit<5>{}>(not_negative),
        fixed<&request::artControlRspTimeout, &row::timeout>(not_negative),
        fixed<&request::artControlRequestedSize, &row::requested>({.min = -1}),
        changeable<&request::artControlOwner, &row::owner>(),
    };

    /** The limits must rise, and leave time for each range up to the timeout. */
    static int32_t start(probe &agent, row &started)
    {
        if (started.requested == 0 || started.timeout <= started.limits.back()
            || std::ranges::adjacent_find(started.limits, std::ranges::greater_equal{})
                   != started.limits.end())
            return bad_value;
        started.work = std::make_shared<art_work>();
        started.work->agent = &agent;
        for (std::size_t i = 0; i < started.limits.size(); i++)
            started.work->meter.limits[i] = started.limits[i] * microseconds;
        started.work->meter.timeout = started.timeout * microseconds;
        started.work->meter.exchanges.max_rows = started.work->report.max_rows = granted_size(started);
        if (!attach(agent, started.data_source, count_art, started.work.get())) {
            started.work.reset();
            return bad_value;
        }
        begin_reports(agent, started);
        return no_error;
    }

    static void stop(probe &agent, row &stopped)
    {
        take_back(agent.loop, stopped.end);
        detach(agent, stopped.data_source, count_art, stopped.work.get());
        stopped.work.reset();
    }

    static void show(probe &, request &reply, int32_t, const row &shown)
    {
        if (!shown.work)
            return;
        const auto passed =
            static_cast<int32_t>(std::min<int64_t>((grid_ms() - shown.work->began) / 1000, INT32_MAX));
        reply.artControlTimeRemaining = std::max(shown.interval - passed, 0);
        reply.artControlDuration = shown.interval > 0 ? shown.interval : passed;
        reply.artControlRptStartTime = shown.work->start_time;
        reply.artControlGrantedSize = static_cast<int32_t>(rows_within_reach(shown.work->meter.exchanges));
        reply.artControlGeneratedRpts = shown.work->reports;
    }
};

/* ---- reading reports ---------------------------------------------------------------------- */

using exchange_entry = learned_entry<exchange_key, exchange_counters>;

int compare_servers(const exchange_key &one, const exchange_key &other)
{
    if (one.protocol != other.protocol)
        return one.protocol < other.protocol ? -1 : 1;
    if (one.server_length != other.server_length)
        return one.server_length < other.server_length ? -1 : 1;
    return std::memcmp(one.server, other.server, sizeof one.server);
}

bool exchange_less(const exchange_key &one, const exchange_key &other)
{
    if (const int servers = compare_servers(one, other))
        return servers < 0;
    if (one.client_length != other.client_length)
        return one.client_length < other.client_length;
    return std::memcmp(one.client, other.client, sizeof one.client) < 0;
}

/** The report of a control row that can be read; null when it has none. */
exchange_table *readable(art_row &row)
{
    if (!row.work)
        return nullptr;
    return row.interval > 0 ? &row.work->report : &row.work->meter.exchanges;
}

/** Takes what arrived into the reports that can be read while they grow. */
void bring_up_to_date(probe &agent)
{
    catch_up_all(agent);
    for (auto &[index, row] : storage<art_table>(agent))
        if (row.work && row.interval == 0)
            give_up_late(*row.work);
}

template <class Visit>
void visit_exchanges(probe &agent, int32_t control, const exchange_key &key, Visit visit)
{
    visit_after(
        storage<art_table>(agent), control, key, readable,
        [](art_row &row) -> ordered_view & {
            return row.interval > 0 ? row.work->report_order : row.work->order;
        },
        exchange_less, visit);
}

/** A request's address; octets that no frame can have keep their place in the order by the length. */
uint8_t take_octets(uint8_t (&octets)[16], const wire::byte_list &from)
{
    std::memcpy(octets, bytes_of(from), std::min<std::size_t>(from.length, sizeof octets));
    return static_cast<uint8_t>(std::min<uint32_t>(from.length, UINT8_MAX));
}

exchange_key key_of(int32_t protocol, const wire::byte_list &server)
{
    exchange_key key;
    key.server_length = take_octets(key.server, server);
    key.protocol = protocol;
    return key;
}

/** In milliseconds, rounded. */
int32_t milliseconds(int64_t time)
{
    return static_cast<int32_t>(std::min<int64_t>((time + microseconds / 2) / microseconds, INT32_MAX));
}

int32_t average(const exchange_counters &counters)
{
    return counters.responses ? milliseconds(static_cast<int64_t>(counters.sum / counters.responses)) : 0;
}

void add(exchange_counters &to, const exchange_counters &from)
{
    if (from.responses) {
        to.min_time = to.responses ? std::min(to.min_time, from.min_time) : from.min_time;
        to.max_time = std::max(to.max_time, from.max_time);
    }
    to.responses += from.responses;
    to.retries += from.retries;
    to.timeouts += from.timeouts;
    for (uint32_t i = 0; i < response_ranges; i++)
        to.in_range[i] += from.in_range[i];
    to.sum += from.sum;
    to.client_octets += from.client_octets;
    to.server_octets += from.server_octets;
}

/** Where a row of a reply has its figures. */
template <class Row> struct response_fields {
    int32_t Row::*average_time;
    int32_t Row::*min_time;
    int32_t Row::*max_time;
    uint32_t Row::*responses;
    std::array<uint32_t Row::*, response_ranges> in_range;
    uint64_t Row::*client_octets;
    uint64_t Row::*server_octets;
    uint32_t Row::*retries;
    uint32_t Row::*timeouts;
};

constexpr response_fields<rmonrpc_art_rpt_t> report_fields{
    &rmonrpc_art_rpt_t::artAvgRspTime,
    &rmonrpc_art_rpt_t::artMinRspTime,
    &rmonrpc_art_rpt_t::artMaxRspTime,
    &rmonrpc_art_rpt_t::artTotalResponses,
    {&rmonrpc_art_rpt_t::artRsps1, &rmonrpc_art_rpt_t::artRsps2, &rmonrpc_art_rpt_t::artRsps3,
     &rmonrpc_art_rpt_t::artRsps4, &rmonrpc_art_rpt_t::artRsps5, &rmonrpc_art_rpt_t::artRsps6,
     &rmonrpc_art_rpt_t::artRsps7},
    &rmonrpc_art_rpt_t::artClientOctets,
    &rmonrpc_art_rpt_t::artServerOctets,
    &rmonrpc_art_rpt_t::artRetries,
    &rmonrpc_art_rpt_t::artTimeouts,
};

constexpr response_fields<rmonrpc_art_sum_t> summary_fields{
    &rmonrpc_art_sum_t::artSummaryAvgRspTime,
    &rmonrpc_art_sum_t::artSummaryMinRspTime,
    &rmonrpc_art_sum_t::artSummaryMaxRspTime,
    &rmonrpc_art_sum_t::artSummaryTotalResponses,
    {&rmonrpc_art_sum_t::artSummaryRsps1, &rmonrpc_art_sum_t::artSummaryRsps2,
     &rmonrpc_art_sum_t::artSummaryRsps3, &rmonrpc_art_sum_t::artSummaryRsps4,
     &rmonrpc_art_sum_t::artSummaryRsps5, &rmonrpc_art_sum_t::artSummaryRsps6,
     &rmonrpc_art_sum_t::artSummaryRsps7},
    &rmonrpc_art_sum_t::artSummaryClientOctets,
    &rmonrpc_art_sum_t::artSummaryServerOctets,
    &rmonrpc_art_sum_t::artSummaryRetries,
    &rmonrpc_art_sum_t::artSummaryTimeouts,
};

template <class Row>
void fill_figures(Row &row, const response_fields<Row> &fields, const exchange_counters &counters)
{
    row.*fields.average_time = average(counters);
    row.*fields.min_time = milliseconds(counters.min_time);
    row.*fields.max_time = milliseconds(counters.max_time);
    row.*fields.responses = counters.responses;
    for (uint32_t i = 0; i < response_ranges; i++)
        row.*fields.in_range[i] = counters.in_range[i];
    row.*fields.client_octets = counters.client_octets;
    row.*fields.server_octets = counters.server_octets;
    row.*fields.retries = counters.retries;
    row.*fields.timeouts = counters.timeouts;
}

rmonrpc_art_rpt_t report_row(int32_t control, const exchange_entry &entry)
{
    rmonrpc_art_rpt_t row{};
    set_bytes(row.artServerAddress, {entry.key.server, entry.key.server_length});
    set_bytes(row.artClientAddress, {entry.key.client, entry.key.client_length});
    fill_figures(row, report_fields, entry.row);
    row.artControlIndex = control;
    row.protocolDirLocalIndex = entry.key.protocol;
    return row;
}

/** What is summed up of one server's exchanges by one protocol. */
struct server_sum {
    int32_t control;
    exchange_key key; // of any of them
    int32_t clients;
    exchange_counters counters;
};

rmonrpc_art_sum_t summary_row(const server_sum &sum)
{
    rmonrpc_art_sum_t row{};
    set_bytes(row.artSummaryServerAddress, {sum.key.server, sum.key.server_length});
    row.artSummaryClients = sum.clients;
    fill_figures(row, summary_fields, sum.counters);
    row.artControlIndex = sum.control;
    row.protocolDirLocalIndex = sum.key.protocol;
    return row;
}

bool is_read(int32_t getType)
{
    return getType == GET || getType == GETNEXT || getType == GETBULK;
}

int32_t art_ctl_set(probe &agent, const rmonrpc_art_ctl_t &request)
{
    const auto found = storage<art_table>(agent).find(request.artControlIndex);
    const bool worked = found != storage<art_table>(agent).end() && found->second.work;
    const int32_t error = set_control<art_control_table>(agent, request);
    // Setting the interval of a row that works begins its report anew.
    if (error == no_error && worked && request.artControlStatus == static_cast<int32_t>(row_status::valid))
        begin_reports(agent, found->second);
    return error;
}

rmonrpc_art_rpt_arr_t art_rpt_get(probe &agent, const rmonrpc_art_rpt_key_t &request)
{
    bring_up_to_date(agent);
    exchange_key key = key_of(request.protocolDirLocalIndex, request.artServerAddress);
    key.client_length = take_octets(key.client, request.artClientAddress);

    std::vector<rmonrpc_art_rpt_t> rows;
    const std::size_t wanted = rows_wanted(request.getType, request.count);
    if (request.getType == GET) {
        const auto control = storage<art_table>(agent).find(request.artControlIndex);
        exchange_table *report =
            control != storage<art_table>(agent).end() ? readable(control->second) : nullptr;
        const uint32_t index = report ? find_learned(*report, key) : no_entry;
        if (index != no_entry)
            rows.push_back(report_row(control->first, report->entries[index]));
    } else if (is_read(request.getType) && wanted > 0) {
        visit_exchanges(agent, request.artControlIndex, key, [&](int32_t control, const auto &entry) {
            rows.push_back(report_row(control, entry));
            return rows.size() < wanted;
        });
    }
    return reply_rows(rows);
}

rmonrpc_art_sum_arr_t art_sum_get(probe &agent, const rmonrpc_art_sum_key_t &request)
{
    bring_up_to_date(agent);
    const bool exact = request.getType == GET;
    const std::size_t wanted = rows_wanted(request.getType, request.count);
    const exchange_key asked = key_of(request.protocolDirLocalIndex, request.artSummaryServerAddress);
    // A server's exchanges stand together. To begin with them, the client is before all clients; to begin
    // behind them, it is behind all.
    exchange_key from = asked;
    from.client_length = exact ? 0 : UINT8_MAX;

    std::vector<server_sum> sums;
    if (is_read(request.getType) && wanted > 0)
        visit_exchanges(agent, request.artControlIndex, from, [&](int32_t control, const auto &entry) {
            if (exact && (control != request.artControlIndex || compare_servers(entry.key, asked) != 0))
                return false;
            const bool goes_on = !sums.empty() && sums.back().control == control
                                 && compare_servers(sums.back().key, entry.key) == 0;
            if (!goes_on && sums.size() == wanted)
                return false;
            if (!goes_on)
                sums.push_back({control, entry.key, 0, {}});
            sums.back().clients++;
            add(sums.back().counters, entry.row);
            return true;
        });

    std::vector<rmonrpc_art_sum_t> rows;
    rows.reserve(sums.size());
    for (const server_sum &sum : sums)
        rows.push_back(summary_row(sum));
    return reply_rows(rows);
}

constexpr auto art_ctl_get = get_control<art_control_table>;

/* ---- the family --------------------------------------------------------------------- */

rmonrpc_art_rpt_key_t art_report_index(instance_reader &from)
{
    rmonrpc_art_rpt_key_t key{};
    key.artControlIndex = take_index(from);
    key.protocolDirLocalIndex = take_index(from);
    take_octets(from, key.artServerAddress);
    take_octets(from, key.artClientAddress);
    key.getType = GET;
    return key;
}

rmonrpc_art_sum_key_t art_summary_index(instance_reader &from)
{
    rmonrpc_art_sum_key_t key{};
    key.artControlIndex = take_index(from);
    key.protocolDirLocalIndex = take_index(from);
    take_octets(from, key.artSummaryServerAddress);
    key.getType = GET;
    return key;
}

constexpr served_procedure procedures[] = {
    serve<art_ctl_get>(art_ctl_get_1),
    serve_set<art_ctl_set>(art_ctl_set_1),
    serve<art_rpt_get>(art_rpt_get_1),
    serve<art_sum_get>(art_sum_get_1),
};

constexpr state_part kept[] = {
    keep_rows<art_control_table, art_ctl_set>("artControl"),
};

// clang-format off
constexpr known_variable variables[] = {
    gauge<art_ctl_get, one_index, &rmonrpc_art_ctl_t::artControlTimeRemaining>(nullptr),
    gauge<art_ctl_get, one_index, &rmonrpc_art_ctl_t::artControlDuration>(nullptr),
    gauge<art_ctl_get, one_index, &rmonrpc_art_ctl_t::artControlRptStartTime>(nullptr),
    gauge<art_ctl_get, one_index, &rmonrpc_art_ctl_t::artControlGrantedSize>(nullptr),
    counter<art_ctl_get, one_index, &rmonrpc_art_ctl_t::artControlGeneratedRpts>(nullptr),
    counter<art_ctl_get, one_index, &rmonrpc_art_ctl_t::artControlDroppedFrames>(nullptr),
    gauge<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artAvgRspTime>(nullptr),
    gauge<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artMinRspTime>(nullptr),
    gauge<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artMaxRspTime>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artTotalResponses>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artRsps1>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artRsps2>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artRsps3>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artRsps4>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artRsps5>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artRsps6>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artRsps7>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artClientOctets>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artServerOctets>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artRetries>(nullptr),
    counter<art_rpt_get, art_report_index, &rmonrpc_art_rpt_t::artTimeouts>(nullptr),
    gauge<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryClients>(nullptr),
    gauge<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryAvgRspTime>(nullptr),
    gauge<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryMinRspTime>(nullptr),
    gauge<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryMaxRspTime>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryTotalResponses>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryRsps1>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryRsps2>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryRsps3>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryRsps4>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryRsps5>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryRsps6>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryRsps7>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryClientOctets>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryServerOctets>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryRetries>(nullptr),
    counter<art_sum_get, art_summary_index, &rmonrpc_art_sum_t::artSummaryTimeouts>(nullptr),
};
// clang-format on

} // namespace

extern const family art_family = {
    .name = "art",
    .interface_gone = remove_rows_on<art_control_table>,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
