// SPDX-License-Identifier: MIT
#include "agent/rmon1/capture_ring.h"

#include "agent/capture/sources.h"
#include "agent/rmon1/filter_match.h"

#include <algorithm>
#include <cstring>

namespace {

/** Octets that each packet takes besides its own. */
constexpr uint32_t overhead = 32;

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

} // namespace

void capture_packet(buffer_work &work, const frame &seen, const data_source &source)
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
    const bool lost = work.last_index != 0 && source.losses != work.losses;
    work.losses = source.losses;
    work.packets.push_back(
        {static_cast<uint32_t>(source.total.pkts), seen.length, octets, work.next,
         status_of(seen) | (lost ? after_drops : 0), seen.time});
    store(work, seen.bytes, octets);
    work.used += octets + overhead;
    work.last_index++;
}

uint32_t captured_octets(const buffer_row &row)
{
    return row.capture_slice == 0 ? max_packet_octets
                                  : std::min(static_cast<uint32_t>(row.capture_slice), max_packet_octets);
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
