#include "agent/rmon1/capture_buffers.h"

#include "agent/capture/family.h"
#include "agent/capture/counting.h"
#include "agent/core/table.h"
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
constexpr int32_t most_octets = 4 * 1024 * 1024;

/** Each may have all of these octets. */
constexpr row_limits buffer_rows{first_control_index, last_control_index, 16};

int32_t granted(const buffer_row &row)
{
    return row.octets_requested < 0 ? most_octets : std::min(row.octets_requested, most_octets);
}

int64_t microseconds_now()
{
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    return int64_t{now.tv_sec} * 1000000 + now.tv_nsec / 1000;
}

/* ---- the control table --------------------------------------------------------------------------- */

bool nonsense(const rmonrpc_buffer_ctl_t &request)
{
    return request.bufferControlChannelIndex > last_control_index
           || request.bufferControlFullAction < lock_when_full
           || request.bufferControlFullAction > wrap_when_full || request.bufferControlCaptureSliceSize < 0
           || request.bufferControlDownloadSliceSize < 0 || request.bufferControlDownloadOffset < 0
           || request.bufferControlMaxOctetsRequested < -1 || request.bufferControlMaxOctetsRequested == 0
           || !is_printable(text_of(request.bufferControlOwner));
}

bool changes_fixed(const buffer_row &row, const rmonrpc_buffer_ctl_t &request)
{
    return signed_index(request.bufferControlChannelIndex) != row.channel
           || request.bufferControlFullAction != row.full_action
           || request.bufferControlCaptureSliceSize != row.capture_slice
           || request.bufferControlMaxOctetsRequested != row.octets_requested;
}

void assign(buffer_row &row, const rmonrpc_buffer_ctl_t &request)
{
    row.channel = signed_index(request.bufferControlChannelIndex);
    row.full_action = request.bufferControlFullAction;
    row.capture_slice = request.bufferControlCaptureSliceSize;
    row.download_slice = request.bufferControlDownloadSliceSize;
    row.download_offset = request.bufferControlDownloadOffset;
    row.octets_requested = request.bufferControlMaxOctetsRequested;
    row.owner = text_of(request.bufferControlOwner);
}

int32_t start(probe &agent, buffer_row &row)
{
    if (!storage<channel_table>(agent).contains(row.channel))
        return bad_value;
    row.work = std::make_shared<buffer_work>();
    row.work->ring.resize(static_cast<std::size_t>(granted(row)));
    row.work->wraps = row.full_action == wrap_when_full;
    row.work->slice = static_cast<uint32_t>(row.capture_slice);
    row.work->turned_on = microseconds_now();
    row.turn_on_time = up_time(agent);
    return no_error;
}

void stop(probe &, buffer_row &row)
{
    row.work.reset();
}

constexpr row_rules<buffer_row, rmonrpc_buffer_ctl_t> rules{nonsense, changes_fixed, assign, start, stop};

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

void buffer_ctl_describe(rmonrpc_buffer_ctl_t &record, int32_t index, const buffer_row &row)
{
    record.bufferControlIndex = static_cast<uint32_t>(index);
    record.bufferControlChannelIndex = static_cast<uint32_t>(row.channel);
    record.bufferControlFullAction = row.full_action;
    record.bufferControlCaptureSliceSize = row.capture_slice;
    record.bufferControlDownloadSliceSize = row.download_slice;
    record.bufferControlDownloadOffset = row.download_offset;
    record.bufferControlMaxOctetsRequested = row.octets_requested;
    set_text(record.bufferControlOwner, row.owner);
    record.bufferControlStatus = static_cast<int32_t>(row.status);
}

rmonrpc_buffer_ctl_t buffer_ctl_get(probe &agent, const rmonrpc_row_key2_t &key)
{
    rmonrpc_buffer_ctl_t reply{};
    const auto found = find_row(storage<buffer_table>(agent), key.index, key.getType);
    if (found == storage<buffer_table>(agent).end()) {
        reply.status = no_such_name;
        return reply;
    }
    const buffer_row &row = found->second;
    buffer_ctl_describe(reply, found->first, row);
    reply.bufferControlFullStatus = space_available;
    reply.bufferControlMaxOctetsGranted = granted(row);
    reply.bufferControlTurnOnTime = row.turn_on_time;
    if (const buffer_work *work = find_buffer(agent, found->first)) {
        reply.bufferControlFullStatus = work->full ? is_full : space_available;
        reply.bufferControlCapturedPackets = static_cast<uint32_t>(work->packets.size());
    }
    return reply;
}

int32_t buffer_ctl_set(probe &agent, const rmonrpc_buffer_ctl_t &request)
{
    const int32_t index = signed_index(request.bufferControlIndex);
    const int32_t before = channel_of(agent, index);
    find_buffer(agent, index); // what arrived before belongs to the buffer as it was
    const int32_t error = set_row(
        agent, storage<buffer_table>(agent), index, request.bufferControlStatus, request, rules, buffer_rows);
    if (error != no_error)
        return error;
    refresh_channel(agent, before);
    refresh_channel(agent, channel_of(agent, index));
    return no_error;
}

rmonrpc_capturebuf_t capture_buf_get(probe &agent, const rmonrpc_row_key3_t &key)
{
    rmonrpc_capturebuf_t none{};
    none.status = no_such_name;
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

constexpr served_procedure procedures[] = {
    serve<buffer_ctl_get>(buffer_ctl_get_1),
    serve_set<buffer_ctl_set>(buffer_ctl_set_1),
    serve<capture_buf_get>(capture_buf_get_1),
};

constexpr state_part kept[] = {
    keep_rows<buffer_table, buffer_ctl_describe, buffer_ctl_set, &rmonrpc_buffer_ctl_t::bufferControlStatus>(
        "buffer"),
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
