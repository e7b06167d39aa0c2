// SPDX-License-Identifier: MIT
#include "agent/rmon1/channels.h"

#include "agent/capture/family.h"
#include "agent/core/control_table.h"
#include "agent/capture/counting.h"
#include "agent/rmon1/capture_ring.h"
#include "agent/rmon1/events.h"

#include <algorithm>

namespace {

/** Which packets it accepts (channelAcceptType): those that pass a filter, or those that pass none. */
constexpr int32_t accept_matched = 1;
constexpr int32_t accept_failed = 2;

/** channelDataControl. */
constexpr int32_t turned_on = 1;
constexpr int32_t turned_off = 2;

/** channelEventStatus: one event, which then has fired, or one for each packet. */
constexpr int32_t event_ready = 1;
constexpr int32_t event_fired = 2;
constexpr int32_t event_always_ready = 3;

constexpr std::size_t max_description = 127;

/* ---- packets --------------------------------------------------------------------------------- */

/** Notes what packets or an event changed. */
void note_channel(probe &agent, const channel_row &row);

void tell(probe &agent, channel_row &row)
{
    if (row.event == 0 || row.event_status == event_fired)
        return;
    if (row.event_status == event_ready) {
        row.event_status = event_fired;
        note_channel(agent, row);
    }
    fire_event(agent, row.event, "packet on channel " + row.description);
}

void count(void *context, const frame &seen)
{
    auto &row = *static_cast<channel_row *>(context);
    channel_work &work = *row.work;
    const bool matched = std::ranges::any_of(work.filters, [&](const filter_row &filter) {
        return filter_matches(filter, seen, work.agent->protocols);
    });
    if (matched != (row.accept_type == accept_matched))
        return;
    work.matches++;
    if (row.data_control != turned_on)
        return;
    for (const auto &buffer : work.buffers)
        capture_packet(*buffer, seen, *work.source);
    tell(*work.agent, row);
}

/* ---- the table -------------------------------------------------------------------------------- */

struct channel_control_table {
    using table = channel_table;
    using row = channel_row;
    using request = rmonrpc_channel_t;
    static constexpr auto index = &request::channelIndex;
    static constexpr auto status = &request::channelStatus;
    static constexpr row_limits limits{};
    static constexpr std::tuple fields{
        fixed<&request::channelIfIndex, &row::data_source>(),
        changeable<&request::channelAcceptType, &row::accept_type>({accept_matched, accept_failed}),
        changeable<&request::channelDataControl, &row::data_control>({turned_on, turned_off}),
        changeable<&request::channelTurnOnEventIndex, &row::turn_on_event>({0, last_control_index}),
        changeable<&request::channelTurnOffEventIndex, &row::turn_off_event>({0, last_control_index}),
        changeable<&request::channelEventIndex, &row::event>({0, last_control_index}),
        changeable<&request::channelEventStatus, &row::event_status>({event_ready, event_always_ready}),
        changeable<&request::channelDescription, &row::description>({.max = max_description}),
        changeable<&request::channelOwner, &row::owner>(),
    };
    static constexpr auto refresh = catch_up_row<row>; // frames may change the row's state

    static int32_t start(probe &agent, row &started)
    {
        started.work = std::make_shared<channel_work>();
        started.work->agent = &agent;
        started.work->octets = usual_octets;
        if (!attach(agent, started.data_source, count, &started)) {
            started.work.reset();
            return bad_value;
        }
        started.work->source = &agent.sources.rows.at(started.data_source);
        started.create_time = up_time(agent);
        return no_error;
    }

    static void stop(probe &agent, row &stopped)
    {
        detach(agent, stopped.data_source, count, &stopped);
        stopped.work.reset();
    }

    static void show(probe &, request &reply, int32_t, const row &shown)
    {
        if (shown.work)
            reply.channelMatches = static_cast<uint32_t>(shown.work->matches);
        reply.channelCreateTime = shown.create_time;
        // All that is lost counts as drop events; there are no frames that the agent chooses not to look at.
        reply.channelDroppedFrames = 0;
    }
};

void note_channel(probe &agent, const channel_row &row)
{
    if (!notes_rows(agent))
        return;
    for (const auto &[index, other] : storage<channel_table>(agent))
        if (&other == &row)
            note_control<channel_control_table>(agent, index);
}

} // namespace

void refresh_channel(probe &agent, int32_t index)
{
    const auto found = storage<channel_table>(agent).find(index);
    if (found == storage<channel_table>(agent).end() || !found->second.work)
        return;
    channel_row &row = found->second;
    channel_work &work = *row.work;
    catch_up(agent, row.data_source); // what arrived before is for what was there before
    uint32_t octets = usual_octets;
    work.filters.clear();
    for (const auto &[filter, settings] : storage<filter_table>(agent)) {
        if (settings.channel != index || settings.status != row_status::valid)
            continue;
        work.filters.push_back(settings);
        octets = std::max(octets, filter_octets(settings));
    }
    work.buffers.clear();
    for (const auto &[buffer, settings] : storage<buffer_table>(agent)) {
        if (settings.channel != index || !settings.work)
            continue;
        work.buffers.push_back(settings.work);
        octets = std::max(octets, captured_octets(settings));
    }
    if (octets == work.octets)
        return;
    want_octets(agent, row.data_source, count, &row, octets);
    work.octets = octets;
}

int32_t channel_set(probe &agent, const rmonrpc_channel_t &request)
{
    const int32_t error = set_control<channel_control_table>(agent, request);
    if (error == no_error)
        refresh_channel(agent, index_of<channel_control_table>(request));
    return error;
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

/** Turns on and off the channels that wait for an event. */
void channels_hear_event(probe &agent, uint32_t event)
{
    for (auto &[index, row] : storage<channel_table>(agent)) {
        if (row.status != row_status::valid)
            continue;
        if (row.turn_on_event == event)
            row.data_control = turned_on;
        if (row.turn_off_event == event)
            row.data_control = turned_off;
        if (row.turn_on_event == event || row.turn_off_event == event)
            note_control<channel_control_table>(agent, index);
    }
}

void start_channels(probe &agent)
{
    storage<event_listeners>(agent).push_back(channels_hear_event);
}

constexpr auto channel_get = get_control<channel_control_table>;

constexpr served_procedure procedures[] = {
    serve<channel_get>(channel_get_1),
    serve_set<channel_set>(channel_set_1),
};

constexpr state_part kept[] = {
    keep_rows<channel_control_table, channel_set>("channel"),
};

// clang-format off
constexpr known_variable variables[] = {
    counter<channel_get, one_index, &rmonrpc_channel_t::channelMatches>("1.3.6.1.2.1.16.7.2.1.9"),
    counter<channel_get, one_index, &rmonrpc_channel_t::channelDroppedFrames>("1.3.6.1.2.1.16.7.3.1.1"),
    gauge<channel_get, one_index, &rmonrpc_channel_t::channelCreateTime>("1.3.6.1.2.1.16.7.3.1.2"),
};
// clang-format on

} // namespace

extern const family channels_family = {
    .name = "channels",
    .start = start_channels,
    .interface_gone = remove_rows_on<channel_control_table>,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
