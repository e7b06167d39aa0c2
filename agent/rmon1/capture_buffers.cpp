// SPDX-License-Identifier: MIT
#include "agent/rmon1/capture_buffers.h"

#include "agent/capture/family.h"
#include "agent/core/control_table.h"
#include "agent/capture/counting.h"
#include "agent/rmon1/channels.h"

#include <algorithm>
#include <cstring>
#include <ctime>

namespace {

/** What becomes of a full buffer (bufferControlFullAction). */
constexpr int32_t lock_when_full = 1;
constexpr int32_t wrap_when_full = 2;

/** bufferControlFullStatus. */
constexpr int32_t space_available = 1;
constexpr int32_t is_full = 2;

/** Octets of a buffer. */
constexpr int32_t max_octets = 4 * 1024 * 1024;

/** Each may have all of these octets. */
constexpr row_limits buffer_rows{first_control_index, last_control_index, 16};

/** Octets of a buffer, if there is memory for them. */
int32_t wanted_octets(const buffer_row &row)
{
    return row.octets_requested < 0 ? max_octets : std::min(row.octets_requested, max_octets);
}

/**
 * Has a buffer's memory taken, as much as there is of what is wanted. Besides the octets of the packets there
 * is what is noted of each, which is as much again where packets are short.
 */
void take_ring(buffer_work &work, int32_t wanted)
{
    const std::size_t room = memory_within_reach(work.memory) / 2;
    const std::size_t octets = std::min(room, static_cast<std::size_t>(wanted));
    have_memory(work.memory, 2 * octets);
    work.ring.resize(octets);
}

int64_t microseconds_now()
{
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    return int64_t{now.tv_sec} * 1000000 + now.tv_nsec / 1000;
}

/* ---- the control table --------------------------------------------------------------------------- */

struct buffer_control_table {
    using table = buffer_table;
    using row = buffer_row;
    using request = rmonrpc_buffer_ctl_t;
    static constexpr auto index = &request::bufferControlIndex;
    static constexpr auto status = &request::bufferControlStatus;
    static constexpr row_limits limits = buffer_rows;
    static constexpr std::tuple fields{
        fixed<&request::bufferControlChannelIndex, &row::channel>({0, last_control_index}),
        fixed<&request::bufferControlFullAction, &row::full_action>({lock_when_full, wrap_when_full}),
        fixed<&request::bufferControlCaptureSliceSize, &row::capture_slice>(not_negative),
        changeable<&request::bufferControlDownloadSliceSize, &row::download_slice>(not_negative),
        changeable<&request::bufferControlDownloadOffset, &row::download_offset>(not_negative),
        fixed<&request::bufferControlMaxOctetsRequested, &row::octets_requested>(desired_size),
        changeable<&request::bufferControlOwner, &row::owner>(),
    };

    static int32_t start(probe &agent, row &started)
    {
        if (!storage<channel_table>(agent).contains(started.channel))
            return bad_value;
        started.work = std::make_shared<buffer_work>();
        take_ring(*started.work, wanted_octets(started));
        started.work->wraps = started.full_action == wrap_when_full;
        started.work->slice = static_cast<uint32_t>(started.capture_slice);
        started.work->turned_on = microseconds_now();
        started.turn_on_time = up_time(agent);
        return no_error;
    }

    static void stop(probe &, row &stopped) { stopped.work.reset(); }

    static void show(probe &agent, request &reply, int32_t control, const row &shown)
    {
        reply.bufferControlFullStatus = space_available;
        reply.bufferControlMaxOctetsGranted = wanted_octets(shown);
        reply.bufferControlTurnOnTime = shown.turn_on_time;
        if (const buffer_work *work = find_buffer(agent, control)) {
            reply.bufferControlMaxOctetsGranted = static_cast<int32_t>(work->ring.size());
            reply.bufferControlFullStatus = work->full ? is_full : space_available;
            reply.bufferControlCapturedPackets = static_cast<uint32_t>(work->packets.size());
        }
    }
};

/** The channel of a buffer, 0 when there is no such buffer. */
int32_t channel_of(const probe &agent, int32_t buffer)
{
    const auto found = storage<buffer_table>(agent).find(buffer);
    return found == storage<buffer_table>(agent).end() ? 0 : found->second.channel;
}

/* ---- the packets ------------------------------------------------------------------------------------ */

uint32_t first_index(const buffer_work &work)
{
    return work.last_index - static_cast<uint32_t>(work.packets.size()) + 1;
}

rmonrpc_capturebuf_t
packet_reply(int32_t control, const buffer_row &row, uint32_t index, const captured_packet &packet)
{
    const buffer_work &work = *row.work;
    rmonrpc_capturebuf_t reply{};
    reply.captureBufferControlIndex = static_cast<uint32_t>(control);
    reply.captureBufferIndex = index;
    reply.captureBufferPacketID = packet.id;
    std::vector<uint8_t> bytes;
    const auto slice = row.download_slice == 0 ? UINT32_MAX : static_cast<uint32_t>(row.download_slice);
    copy_packet(work, packet, static_cast<uint32_t>(row.download_offset), slice, bytes);
    set_bytes(reply.captureBufferPacketData, bytes);
    reply.captureBufferPacketLength = packet.length;
    reply.captureBufferPacketStatus = packet.status;
    const int64_t passed = std::max<int64_t>(packet.time - work.turned_on, 0);
    reply.captureBufferPacketTime = static_cast<uint32_t>(passed / 1000);
    reply.captureBufferPacketHighCapacityTime = static_cast<uint32_t>(passed % 1000 * 1000);
    return reply;
}

} // namespace

buffer_work *find_buffer(probe &agent, int32_t control)
{
    const auto found = storage<buffer_table>(agent).find(control);
    if (found == storage<buffer_table>(agent).end() || !found->second.work)
        return nullptr;
    const auto channel = storage<channel_table>(agent).find(found->second.channel);
    if (channel != storage<channel_table>(agent).end() && channel->second.work)
        catch_up(agent, channel->second.data_source);
    return found->second.work.get();
}

int32_t buffer_ctl_set(probe &agent, const rmonrpc_buffer_ctl_t &request)
{
    const int32_t index = signed_index(request.bufferControlIndex);
    const int32_t before = channel_of(agent, index);
    find_buffer(agent, index); // what arrived before belongs to the buffer as it was
    const int32_t error = set_control<buffer_control_table>(agent, request);
    if (error != no_error)
        return error;
    refresh_channel(agent, before);
    refresh_channel(agent, channel_of(agent, index));
    return no_error;
}

rmonrpc_capturebuf_t capture_buf_get(probe &agent, const rmonrpc_row_key3_t &key)
{
    const auto none = no_such_row<rmonrpc_capturebuf_t>();
    if (key.getType != GET && key.getType != GETNEXT && key.getType != GETBULK)
        return none;
    for (auto at = storage<buffer_table>(agent).lower_bound(key.index1);
         at != storage<buffer_table>(agent).end(); ++at) {
        const bool asked = at->first == key.index1;
        if (key.getType == GET && !asked)
            break;
        const buffer_work *work = find_buffer(agent, at->first);
        if (work && !work->packets.empty()) {
            const int64_t first = first_index(*work);
            // Indexes that are unsigned travel signed in a key.
            int64_t index = asked ? static_cast<uint32_t>(key.index2) : 0;
            if (key.getType != GET)
                index = std::max(index + 1, first);
            if (index >= first && index <= work->last_index)
                return packet_reply(
                    at->first, at->second, static_cast<uint32_t>(index),
                    work->packets[static_cast<std::size_t>(index - first)]);
        }
        if (key.getType == GET)
            break;
    }
    return none;
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

constexpr auto buffer_ctl_get = get_control<buffer_control_table>;

constexpr served_procedure procedures[] = {
    serve<buffer_ctl_get>(buffer_ctl_get_1),
    serve_set<buffer_ctl_set>(buffer_ctl_set_1),
    serve<capture_buf_get>(capture_buf_get_1),
};

constexpr state_part kept[] = {
    keep_rows<buffer_control_table, buffer_ctl_set>("buffer"),
};

// clang-format off
constexpr known_variable variables[] = {
    gauge<buffer_ctl_get, one_index, &rmonrpc_buffer_ctl_t::bufferControlFullStatus>("1.3.6.1.2.1.16.8.1.1.3"),
    gauge<buffer_ctl_get, one_index, &rmonrpc_buffer_ctl_t::bufferControlMaxOctetsGranted>("1.3.6.1.2.1.16.8.1.1.9"),
    gauge<buffer_ctl_get, one_index, &rmonrpc_buffer_ctl_t::bufferControlCapturedPackets>("1.3.6.1.2.1.16.8.1.1.10"),
    gauge<buffer_ctl_get, one_index, &rmonrpc_buffer_ctl_t::bufferControlTurnOnTime>("1.3.6.1.2.1.16.8.1.1.11"),
    gauge<capture_buf_get, two_short_indexes, &rmonrpc_capturebuf_t::captureBufferPacketID>("1.3.6.1.2.1.16.8.2.1.3"),
    gauge<capture_buf_get, two_short_indexes, &rmonrpc_capturebuf_t::captureBufferPacketLength>("1.3.6.1.2.1.16.8.2.1.5"),
    gauge<capture_buf_get, two_short_indexes, &rmonrpc_capturebuf_t::captureBufferPacketTime>("1.3.6.1.2.1.16.8.2.1.6"),
    gauge<capture_buf_get, two_short_indexes, &rmonrpc_capturebuf_t::captureBufferPacketStatus>("1.3.6.1.2.1.16.8.2.1.7"),
    gauge<capture_buf_get, two_short_indexes, &rmonrpc_capturebuf_t::captureBufferPacketHighCapacityTime>("1.3.6.1.2.1.16.8.3.1.1"),
};
// clang-format on

} // namespace

extern const family capture_buffers_family = {
    .name = "capture_buffers",
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
