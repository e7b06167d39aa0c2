#include "agent/rmon1/capture_buffers.h"

#include "agent/capture/counting.h"
#include "agent/capture/probe.h"
#include "agent/core/table.h"

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

/** Octets of a buffer, and how many of them each packet takes besides its own. */
constexpr int32_t most_octets = 4 * 1024 * 1024;
constexpr uint32_t overhead = 32;

constexpr uint32_t longest_packet = 65535;

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

void forget_oldest(buffer_work &work)
{
    work.used -= work.packets.front().stored + overhead;
    work.packets.pop_front();
}

void store(buffer_work &work, const uint8_t *bytes, uint32_t octets)
{
    const auto size = static_cast<uint32_t>(work.ring.size());
    const uint32_t first = std::min(octets, size - work.next);
    std::memcpy(work.ring.data() + work.next, bytes, first);
    std::memcpy(work.ring.data(), bytes + first, octets - first);
    work.next = (work.next + octets) % size;
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
    if (!agent.channels.contains(row.channel))
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
    const auto found = agent.buffers.find(buffer);
    return found == agent.buffers.end() ? 0 : found->second.channel;
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

void capture_packet(buffer_work &work, const frame &seen, const ether_counters &source)
{
    if (work.full && !work.wraps)
        return;
    const auto room = static_cast<uint32_t>(work.ring.size());
    uint32_t octets = work.slice == 0 ? seen.captured : std::min(seen.captured, work.slice);
    octets = std::min(octets, room > overhead ? room - overhead : 0);
    while (work.used + octets + overhead > room && work.wraps && !work.packets.empty()) {
        work.full = true;
        forget_oldest(work);
    }
    if (work.used + octets + overhead > room) {
        work.full = true;
        return;
    }
    // A capture file's packets are of the past: their buffer counts from the first of them.
    if (work.last_index == 0)
        work.turned_on = std::min(work.turned_on, seen.time);
    const bool lost = work.last_index != 0 && source.drop_events != work.drops;
    work.drops = source.drop_events;
    work.packets.push_back(
        {static_cast<uint32_t>(source.pkts), seen.length, octets, work.next,
         status_of(seen) | (lost ? after_drops : 0), seen.time});
    store(work, seen.bytes, octets);
    work.used += octets + overhead;
    work.last_index++;
}

uint32_t captured_octets(const buffer_row &row)
{
    return row.capture_slice == 0 ? longest_packet
                                  : std::min(static_cast<uint32_t>(row.capture_slice), longest_packet);
}

void copy_packet(
    const buffer_work &work,
    const captured_packet &packet,
    uint32_t offset,
    uint32_t octets,
    std::vector<uint8_t> &to)
{
    if (offset >= packet.stored)
        return;
    octets = std::min(octets, packet.stored - offset);
    const auto size = static_cast<uint32_t>(work.ring.size());
    const uint32_t at = (packet.at + offset) % size;
    const uint32_t first = std::min(octets, size - at);
    to.insert(to.end(), work.ring.begin() + at, work.ring.begin() + at + first);
    to.insert(to.end(), work.ring.begin(), work.ring.begin() + (octets - first));
}

buffer_work *find_buffer(probe &agent, int32_t control)
{
    const auto found = agent.buffers.find(control);
    if (found == agent.buffers.end() || !found->second.work)
        return nullptr;
    const auto channel = agent.channels.find(found->second.channel);
    if (channel != agent.channels.end() && channel->second.work)
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
    const auto found = find_row(agent.buffers, key.index, key.getType);
    if (found == agent.buffers.end()) {
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
    const int32_t error =
        set_row(agent, agent.buffers, index, request.bufferControlStatus, request, rules, buffer_rows);
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
    for (auto at = agent.buffers.lower_bound(key.index1); at != agent.buffers.end(); ++at) {
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
