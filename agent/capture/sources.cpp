// SPDX-License-Identifier: MIT
#include "agent/capture/sources.h"

#include "agent/capture/protocols.h"
#include "agent/core/log.h"

#include <algorithm>
#include <cstdio>

#include <linux/if.h>
#include <linux/if_arp.h>
#include <linux/if_packet.h>
#include <sys/epoll.h>
#include <sys/socket.h>
#include <sys/sysinfo.h>
#include <unistd.h>

namespace {

/** Frames taken in one go, so that clients and other interfaces get their turn. */
constexpr int frames_in_a_round = 1024;

/** Frames taken in one go when the ring may be about to overflow: losses are looked at as often. */
constexpr int frames_in_a_hurry = 32;

/** Milliseconds for which frames gather in the ring once some came: to wake up for each costs more than to
 * count it. Who reads has them taken before. */
constexpr int64_t gathering_ms = 2;

/** MiB of the smallest ring, and how much of the machine's memory the rings of all interfaces may have. */
constexpr uint32_t smallest_ring = 2;
constexpr uint64_t share_of_memory = 8;

/** Octets, without check sequence, of the shortest frame that an adapter sends. */
constexpr uint32_t shortest_on_the_wire = 60;

void on_frame(u_char *context, const pcap_pkthdr *header, const u_char *bytes)
{
    auto &source = *reinterpret_cast<data_source *>(context);
    source.taken++;
    while (!source.gaps.empty() && source.gaps.front() <= source.taken) {
        source.gaps.pop_front();
        source.losses++;
    }
    const int64_t time = int64_t{header->ts.tv_sec} * 1000000 + header->ts.tv_usec;
    take_frame(source, bytes, header->caplen, header->len, time);
}

/* ---- live capture ---------------------------------------------------------------- */

/**
 * Adds the frames for which the capture had no room. They came behind all that
 * is in the ring now: a ring is full when it has to leave out a frame. So the
 * gap is in front of the next one that finds room.
 *
 * The kernel is asked itself: pcap_stats() opens files each time. It tells what
 * came since it was last asked, and counts what it dropped among it.
 */
void count_dropped(data_source &source)
{
    tpacket_stats grown{};
    socklen_t size = sizeof grown;
    if (getsockopt(pcap_fileno(source.capture), SOL_PACKET, PACKET_STATISTICS, &grown, &size) != 0)
        return;
    source.arrived += grown.tp_packets - grown.tp_drops;
    if (grown.tp_drops == 0)
        return;
    source.total.drop_events += grown.tp_drops;
    if (source.gaps.empty() || source.gaps.back() != source.arrived + 1)
        source.gaps.push_back(source.arrived + 1);
}

/** Frames for which the ring has room, about. */
uint64_t room_of(const data_source &source)
{
    constexpr uint64_t overhead = 68; // octets of a frame's place in the ring that are not the frame's
    return (uint64_t{source.ring} << 20) / (source.octets + overhead);
}

/** Whether so many frames wait that the ring may soon be full. */
bool in_a_hurry(const data_source &source)
{
    return source.arrived > source.taken && source.arrived - source.taken > room_of(source) / 2;
}

void stop_capture(data_source &source)
{
    if (!source.capture)
        return;
    count_dropped(source);
    // The next frame, of whichever capture, is behind whatever was lost up to now.
    source.losses += source.gaps.size();
    source.gaps.clear();
    take_back(*source.table->loop, source.gathered);
    unwatch(*source.table->loop, pcap_get_selectable_fd(source.capture));
    pcap_close(source.capture);
    source.capture = nullptr;
}

/** How many frames may be taken in one go. */
int most_frames(data_source &source)
{
    count_dropped(source);
    return in_a_hurry(source) ? frames_in_a_hurry : frames_in_a_round;
}

/** Takes so many frames at most. How many there were, or a code of libpcap's. */
int dispatch(data_source &source, int most)
{
    return pcap_dispatch(source.capture, most, on_frame, reinterpret_cast<u_char *>(&source));
}

/** Ends a capture whose interface went down or away. libpcap tells so once, before it shows what is still in
 * the ring. */
void finish_capture(data_source &source)
{
    const uint64_t max_frames = room_of(source);
    int frames = 1;
    for (uint64_t taken = 0; taken <= max_frames && frames > 0; taken += static_cast<uint64_t>(frames))
        frames = dispatch(source, frames_in_a_round);
    stop_capture(source);
}

/** Takes what is there, so many frames at most. How many there were; the ring is empty when there were fewer.
 */
int take_frames(data_source &source, int most)
{
    const uint64_t arrived = source.arrived;
    const int taken = dispatch(source, most);
    // The ring is empty: what was not seen of what arrived were frames that libpcap does not show.
    if (taken == 0)
        source.taken = std::max(source.taken, arrived);
    if (taken < 0)
        finish_capture(source); // the next tick tries again if the interface is there after all
    return taken;
}

/** Takes all that is there, and no more than the ring can hold: a flood goes on meanwhile. */
void take_waiting(data_source &source)
{
    const uint64_t max_frames = room_of(source);
    int frames = 1;
    for (uint64_t taken = 0; source.capture && taken <= max_frames && frames > 0;
         taken += static_cast<uint64_t>(frames))
        frames = take_frames(source, most_frames(source));
}

/** Whether the ring has room for all that may come while frames gather, at 10 Gbit/s. */
bool may_gather(const data_source &source)
{
    constexpr uint64_t frames_in_a_ms = 14881; // of 64 octets
    return room_of(source) >= gathering_ms * frames_in_a_ms;
}

/** Takes a round. Where it emptied the ring, the next one begins when frames had time to gather; where none
 * had come, with the next frame. */
void take_round(data_source &source)
{
    const int most = most_frames(source);
    const int taken = take_frames(source, most);
    if (!source.capture)
        return;
    event_loop &loop = *source.table->loop;
    const bool gathers = taken > 0 && taken < most && may_gather(source);
    rewatch(loop, pcap_get_selectable_fd(source.capture), gathers ? uint32_t{0} : uint32_t{EPOLLIN});
    take_back(loop, source.gathered);
    if (gathers)
        source.gathered = call_at(
            loop, grid_ms() + gathering_ms,
            [](void *context, void *) { take_round(*static_cast<data_source *>(context)); }, &source,
            nullptr);
}

void on_capture(void *context, uint32_t)
{
    take_round(*static_cast<data_source *>(context));
}

/** Has a capture deliver each frame at once. A code of libpcap's; negative: it can't. */
int activate(pcap_t *capture, uint32_t octets, uint32_t ring, bool promiscuous)
{
    for (const int code :
         {pcap_set_snaplen(capture, static_cast<int>(octets)), pcap_set_promisc(capture, promiscuous),
          pcap_set_immediate_mode(capture, 1), pcap_set_buffer_size(capture, static_cast<int>(ring << 20))})
        if (code != 0)
            return code;
    return pcap_activate(capture);
}

/** The loopback's capture shows a frame when it is received, and need not have it in the ring when it is
 * sent. */
void leave_out_sent(pcap_t *capture)
{
    bpf_program filter{};
    if (pcap_compile(capture, &filter, "inbound", 1, PCAP_NETMASK_UNKNOWN) != 0)
        return;
    (void)!pcap_setfilter(capture, &filter); // without it the ring only fills faster
    pcap_freecode(&filter);
}

/** A capture that delivers each frame at once, or null with its error code in code. */
pcap_t *open_capture(const std::string &name, uint32_t octets, uint32_t ring, int &code, std::string &why)
{
    char error[PCAP_ERRBUF_SIZE] = "";
    for (const bool promiscuous : {true, false}) {
        pcap_t *capture = pcap_create(name.c_str(), error);
        if (!capture) {
            code = PCAP_ERROR;
            why = error;
            return nullptr;
        }
        code = activate(capture, octets, ring, promiscuous);
        if (code >= 0 && pcap_datalink(capture) == DLT_EN10MB && pcap_setnonblock(capture, 1, error) == 0)
            return capture;
        why = code < 0 ? pcap_statustostr(code) : "no Ethernet frames";
        pcap_close(capture);
        if (code != PCAP_ERROR_PROMISC_PERM_DENIED)
            break;
    }
    return nullptr;
}

/** Octets of a frame that somebody wants to see. */
uint32_t wanted_octets(const data_source &source)
{
    uint32_t octets = usual_octets;
    for (const counter_list &list : source.counters.of)
        for (const attached_counter &counter : list)
            octets = std::max(octets, counter.octets);
    return octets;
}

/**
 * MiB for the ring of an interface. The kernel never moves them out: where
 * nothing else is asked for, all interfaces that there are can have theirs and
 * leave most of the memory to others.
 */
uint32_t ring_of_interface(const source_table &table)
{
    if (table.ring != 0)
        return table.ring;
    struct sysinfo machine;
    if (sysinfo(&machine) != 0)
        return smallest_ring;
    const uint64_t memory = uint64_t{machine.totalram} * machine.mem_unit >> 20;
    const auto interfaces = std::ranges::count_if(
        table.interfaces->rows, [](const auto &entry) { return is_ethernet_like(entry.second); });
    const uint64_t share =
        memory / share_of_memory / static_cast<uint64_t>(std::max<std::ptrdiff_t>(interfaces, 1));
    return static_cast<uint32_t>(std::clamp<uint64_t>(share, smallest_ring, usual_ring));
}

/** Starts capture on an interface that is up; where that fails for good, the kernel's counters must do. */
void start_capture(data_source &source, const interface &iface)
{
    int code = 0;
    std::string why;
    const uint32_t octets = wanted_octets(source);
    const uint32_t ring = ring_of_interface(*source.table);
    pcap_t *capture = open_capture(iface.name, octets, ring, code, why);
    if (!capture) {
        if (code == PCAP_ERROR_IFACE_NOT_UP || code == PCAP_ERROR_NO_SUCH_DEVICE)
            return; // it went down or away just now
        say(log_level::warning, "cannot capture on " + iface.name + " (" + why
                                    + "): its statistics come from the kernel's counters, "
                                      "and rows that count frames count nothing");
        source.capturing = false;
        return;
    }
    if (source.loopback)
        leave_out_sent(capture);
    source.capture = capture;
    source.octets = octets;
    source.ring = ring;
    source.arrived = source.taken = 0;
    if (!watch(*source.table->loop, pcap_get_selectable_fd(capture), EPOLLIN, on_capture, &source))
        stop_capture(source);
}

/** Starts the capture of an interface that is up and has none. */
void resume_capture(data_source &source)
{
    if (!source.capturing || source.capture)
        return;
    const auto iface = source.table->interfaces->rows.find(source.index);
    if (iface != source.table->interfaces->rows.end() && iface->second.flags & IFF_UP && !iface->second.file)
        start_capture(source, iface->second);
}

/* ---- the kernel's counters ---------------------------------------------------------- */

/** What a counter grew by; one that was set back began again at 0. */
uint64_t growth(uint64_t before, uint64_t now)
{
    return now >= before ? now - before : now;
}

/**
 * What a capture doesn't see: adapters keep damaged frames, and those for which
 * they had no room, to themselves, but count them. (What the kernel calls
 * dropped is no loss: frames of protocols that nobody on this machine speaks.)
 */
void count_errors(ether_counters &total, const kernel_counters &before, const kernel_counters &now)
{
    total.drop_events += growth(before.rx_missed_errors, now.rx_missed_errors);
    total.crc_align_errors +=
        growth(before.rx_crc_errors, now.rx_crc_errors) + growth(before.rx_frame_errors, now.rx_frame_errors);
    total.collisions += growth(before.collisions, now.collisions);
}

/**
 * Frames in both directions, as a capture sees them. What the loopback sends
 * it also receives, as the same frame; its counters leave out the frame's
 * header.
 */
void count_kernel_frames(data_source &source, const kernel_counters &before, const kernel_counters &now)
{
    constexpr uint64_t header_octets = 14;
    ether_counters &total = source.total;
    uint64_t frames = growth(before.rx_packets, now.rx_packets);
    uint64_t octets = growth(before.rx_bytes, now.rx_bytes);
    if (source.loopback) {
        octets += frames * header_octets;
    } else {
        frames += growth(before.tx_packets, now.tx_packets);
        octets += growth(before.tx_bytes, now.tx_bytes);
    }
    total.pkts += frames;
    total.octets += octets + frames * fcs_octets;
    total.multicast_pkts += growth(before.multicast, now.multicast);
}

void take_kernel_counters(data_source &source)
{
    const interface *iface = fetch_interface(*source.table->interfaces, source.index);
    if (!iface)
        return;
    const uint64_t lost_before = source.total.drop_events;
    count_errors(source.total, source.kernel, iface->counters);
    source.losses +=
        source.total.drop_events != lost_before; // in front of the next frame, as far as one knows
    if (!source.capturing)
        count_kernel_frames(source, source.kernel, iface->counters);
    source.kernel = iface->counters;
}

void on_source_tick(void *context)
{
    for (auto &[index, source] : static_cast<source_table *>(context)->rows) {
        resume_capture(source);
        // Whoever keeps frames has to hear of what the adapter lost.
        if (source.capture && !source.counters.empty())
            take_kernel_counters(source);
    }
}

bool open_source(source_table &table, int32_t index)
{
    const interface *iface = fetch_interface(*table.interfaces, index);
    if (!iface || !is_measured(*table.interfaces, *iface))
        return false;
    data_source &source = table.rows[index];
    source.table = &table;
    source.index = index;
    source.loopback = iface->hardware_type == ARPHRD_LOOPBACK;
    source.shortest = iface->adapter ? shortest_on_the_wire : 0;
    source.capturing = table.may_capture || iface->file;
    source.kernel = iface->counters;
    resume_capture(source);
    return true;
}

} // namespace

bool capture_permitted()
{
    // Protocol 0: a socket that receives nothing.
    const int socket = ::socket(AF_PACKET, SOCK_RAW | SOCK_CLOEXEC, 0);
    if (socket < 0)
        return false;
    close(socket);
    return true;
}

void open_sources(
    source_table &table,
    event_loop &loop,
    interface_table &interfaces,
    protocol_directory &protocols,
    bool may_capture)
{
    table.loop = &loop;
    table.interfaces = &interfaces;
    table.protocols = &protocols;
    table.may_capture = may_capture;
    every_second(loop, on_source_tick, &table);
}

bool use_source(source_table &table, int32_t index)
{
    if (!table.rows.contains(index) && !open_source(table, index))
        return false;
    table.rows[index].users++;
    return true;
}

void leave_source(source_table &table, int32_t index)
{
    const auto found = table.rows.find(index);
    if (found == table.rows.end() || --found->second.users > 0)
        return;
    stop_capture(found->second);
    settle_for_change(table.late);
    table.rows.erase(found);
}

void take_frame(data_source &source, const uint8_t *bytes, uint32_t captured, uint32_t length, int64_t time)
{
    length = std::max(length, source.shortest) + fcs_octets;
    count_frame(source.total, bytes, captured, length);
    if (source.counters.empty())
        return;
    source_table &table = *source.table;
    frame seen;
    decode_frame(seen, bytes, captured, length, time);
    classify(*table.protocols, seen);
    seen.up_time = frame_time(*table.agent, seen);
    table.late.frame = ++table.late.frames;
    count_frame(source.counters[counting::each], seen);
    add_up(table.late, source.index, source.counters, seen);
}

void settle_all(probe &agent)
{
    settle_for_change(source_table_of(agent).late);
}

bool attach(probe &agent, int32_t index, count_function count, void *row, counting how)
{
    source_table &table = source_table_of(agent);
    table.agent = &agent;
    if (!use_source(table, index))
        return false;
    data_source &source = table.rows[index];
    take_waiting(source); // what arrived before is not for this row
    settle_for_change(table.late);
    source.counters[how].push_back({count, row, usual_octets});
    return true;
}

void want_octets(probe &agent, int32_t index, count_function count, const void *row, uint32_t octets)
{
    const auto found = source_table_of(agent).rows.find(index);
    if (found == source_table_of(agent).rows.end())
        return;
    data_source &source = found->second;
    for (counter_list &list : source.counters.of)
        for (attached_counter &counter : list)
            if (counter.count == count && counter.row == row)
                counter.octets = octets;
    // More than is wanted does no harm, and costs less than a new capture.
    if (!source.capture || source.octets >= wanted_octets(source))
        return;
    take_waiting(source);
    stop_capture(source);
    resume_capture(source);
}

void detach(probe &agent, int32_t index, count_function count, const void *row)
{
    const auto found = source_table_of(agent).rows.find(index);
    if (found == source_table_of(agent).rows.end())
        return;
    settle_for_change(source_table_of(agent).late);
    const auto is_it = [&](const attached_counter &one) { return one.count == count && one.row == row; };
    std::size_t ended = 0;
    for (counter_list &list : found->second.counters.of)
        ended += std::erase_if(list, is_it);
    if (ended > 0)
        leave_source(source_table_of(agent), index);
}

void catch_up(probe &agent, int32_t index)
{
    source_table &table = source_table_of(agent);
    const auto found = table.rows.find(index);
    if (found == table.rows.end())
        return;
    take_waiting(found->second);
    settle(table.late);
}

const ether_counters &source_counters(source_table &table, int32_t index)
{
    static const ether_counters none{};
    const auto found = table.rows.find(index);
    if (found == table.rows.end())
        return none;
    data_source &source = found->second;
    take_waiting(source);
    if (source.capture)
        count_dropped(source);
    take_kernel_counters(source);
    return source.total;
}

void source_changed(source_table &table, int32_t index)
{
    const auto found = table.rows.find(index);
    const auto iface = table.interfaces->rows.find(index);
    if (found == table.rows.end() || iface == table.interfaces->rows.end())
        return;
    if (iface->second.flags & IFF_UP) {
        resume_capture(found->second);
    } else {
        take_waiting(found->second);
        stop_capture(found->second);
    }
}

void close_sources(source_table &table)
{
    settle_for_change(table.late);
    for (auto &[index, source] : table.rows)
        stop_capture(source);
    table.rows.clear();
}
