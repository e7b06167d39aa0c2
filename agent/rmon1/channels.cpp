#include "agent/rmon1/channels.h"

#include "agent/capture/family.h"
#include "agent/capture/counting.h"
#include "agent/core/table.h"
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

constexpr std::size_t longest_description = 127;

/* ---- packets --------------------------------------------------------------------------------- */

void tell(probe &agent, channel_row &row)
{
    if (row.event == 0 || row.event_status == event_fired)
        return;
    if (row.event_status == event_ready)
        row.event_status = event_fired;
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

bool nonsense(const rmonrpc_channel_t &request)
{
    const std::string_view description = text_of(request.channelDescription);
    return request.channelIfIndex > INT32_MAX || request.channelAcceptType < accept_matched
           || request.channelAcceptType > accept_failed || request.channelDataControl < turned_on
           || request.channelDataControl > turned_off || request.channelTurnOnEventIndex > last_control_index
           || request.channelTurnOffEventIndex > last_control_index
           || request.channelEventIndex > last_control_index || request.channelEventStatus < event_ready
           || request.channelEventStatus > event_always_ready || description.size() > longest_description
           || !is_printable(description) || !is_printable(text_of(request.channelOwner));
}

bool changes_fixed(const channel_row &row, const rmonrpc_channel_t &request)
{
    return signed_index(request.channelIfIndex) != row.data_source;
}

void assign(channel_row &row, const rmonrpc_channel_t &request)
{
    row.data_source = signed_index(request.channelIfIndex);
    row.accept_type = request.channelAcceptType;
    row.data_control = request.channelDataControl;
    row.turn_on_event = request.channelTurnOnEventIndex;
    row.turn_off_event = request.channelTurnOffEventIndex;
    row.event = request.channelEventIndex;
    row.event_status = request.channelEventStatus;
    row.description = text_of(request.channelDescription);
    row.owner = text_of(request.channelOwner);
}

int32_t start(probe &agent, channel_row &row)
{
    row.work = std::make_shared<channel_work>();
    row.work->agent = &agent;
    row.work->octets = usual_octets;
    if (!attach(agent, row.data_source, count, &row)) {
        row.work.reset();
        return bad_value;
    }
    row.work->source = &agent.sources.rows.at(row.data_source);
    row.create_time = up_time(agent);
    return no_error;
}

void stop(probe &agent, channel_row &row)
{
    detach(agent, row.data_source, count, &row);
    row.work.reset();
}

constexpr row_rules<channel_row, rmonrpc_channel_t> rules{nonsense, changes_fixed, assign, start, stop};

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

void channels_interface_gone(probe &agent, int32_t index)
{
    remove_rows_on(agent, storage<channel_table>(agent), index, rules);
}

void channel_describe(rmonrpc_channel_t &record, int32_t index, const channel_row &row)
{
    record.channelIndex = static_cast<uint32_t>(index);
    record.channelIfIndex = static_cast<uint32_t>(row.data_source);
    record.channelAcceptType = row.accept_type;
    record.channelDataControl = row.data_control;
    record.channelTurnOnEventIndex = row.turn_on_event;
    record.channelTurnOffEventIndex = row.turn_off_event;
    record.channelEventIndex = row.event;
    record.channelEventStatus = row.event_status;
    set_text(record.channelDescription, row.description);
    set_text(record.channelOwner, row.owner);
    record.channelStatus = static_cast<int32_t>(row.status);
}

rmonrpc_channel_t channel_get(probe &agent, const rmonrpc_row_key2_t &key)
{
    rmonrpc_channel_t reply{};
    const auto found = find_row(storage<channel_table>(agent), key.index, key.getType);
    if (found == storage<channel_table>(agent).end()) {
        reply.status = no_such_name;
        return reply;
    }
    const channel_row &row = found->second;
    if (row.work)
        catch_up(agent, row.data_source); // may change the row's state
    channel_describe(reply, found->first, row);
    if (row.work)
        reply.channelMatches = static_cast<uint32_t>(row.work->matches);
    reply.channelCreateTime = row.create_time;
    // All that is lost counts as drop events; there are no frames that the agent chooses not to look at.
    reply.channelDroppedFrames = 0;
    return reply;
}

int32_t channel_set(probe &agent, const rmonrpc_channel_t &request)
{
    const int32_t index = signed_index(request.channelIndex);
    const int32_t error =
        set_row(agent, storage<channel_table>(agent), index, request.channelStatus, request, rules);
    if (error == no_error)
        refresh_channel(agent, index);
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
    }
}

void start_channels(probe &agent)
{
    storage<event_listeners>(agent).push_back(channels_hear_event);
}

constexpr served_procedure procedures[] = {
    serve<channel_get>(channel_get_1),
    serve_set<channel_set>(channel_set_1),
};

constexpr state_part kept[] = {
    keep_rows<channel_table, channel_describe, channel_set, &rmonrpc_channel_t::channelStatus>("channel"),
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
    .interface_gone = channels_interface_gone,
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
