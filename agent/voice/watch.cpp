// SPDX-License-Identifier: MIT
#include "agent/voice/watch.h"

#include "agent/capture/probe.h"
#include "agent/core/log.h"
#include "agent/voice/voice.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include <linux/if.h>
#include <linux/if_arp.h>
#include <sys/epoll.h>

namespace {

constexpr uint16_t sccp_port = 2000;
constexpr uint16_t h225_port = 1720;
constexpr uint16_t ras_port = 1719;
constexpr uint16_t mgcp_gateway_port = 2427;
constexpr uint16_t mgcp_agent_port = 2727;

/** The same, and what begins as H.245 does (RFC 1006), which has no port of its own, also over IPv6 without
 * further headers; and fragments, of which the first one alone has ports. Tagged or not. */
std::string signalling_filter()
{
    const std::string untagged =
        "(tcp port 2000 or tcp port 1720 or udp port 1719 or udp port 2427 or udp port 2727"
        " or tcp[((tcp[12:1] & 0xf0) >> 2):2] = 0x0300"
        " or (ip6[6] = 6 and ip6[(40 + ((ip6[52:1] & 0xf0) >> 2)):2] = 0x0300)"
        " or (ip proto 17 and ip[6:2] & 0x1fff != 0) or (ip6[6] = 44 and ip6[40] = 17))";
    return untagged + " or (vlan and " + untagged + ")";
}

/** Octets of the longest frame, offloads of the adapter included, and of the ring for frames that wait. */
constexpr int whole_frames = 65535 + 18;
constexpr int octets_of_ring = 4 << 20;

/** Milliseconds for which the kernel may gather frames of signalling. */
constexpr int gathering = 50;

/** Frames of signalling taken in one go. */
constexpr int frames_in_a_round = 256;

/** Hundredths of a second without signalling after which an interface's streams are followed no longer. */
constexpr uint32_t patience = 15 * 60 * 100;

/** Machines that signal by H.225, and connections of H.245. */
constexpr std::size_t max_hosts = 4096;

/* ---- which frames ------------------------------------------------------------------------- */

bool is_port(const frame &seen, uint16_t port)
{
    return seen.from_port == port || seen.to_port == port;
}

/** Keeps the two ends of a connection in mind. */
template <class Key> void note(recent_table<Key, bool> &table, const Key &key)
{
    find_or_make(table, key, max_hosts, [](bool) {});
}

std::size_t key_of_connection(const frame &seen)
{
    const std::hash<net_endpoint> hash;
    return hash({seen.from, seen.from_port}) ^ hash({seen.to, seen.to_port});
}

/** H.245 has ports that H.225 tells, too late for who reads a file: what begins as its messages do, between
 * two machines that signal by H.225, is taken for it. */
bool is_h245(voice_watch &watch, const frame &seen)
{
    constexpr uint8_t version = 3;
    if (seen.payload_length == 0 || watch.h323_hosts.entries.empty())
        return false;
    const std::size_t connection = key_of_connection(seen);
    if (find_recent(watch.h245_connections, connection))
        return true;
    if (seen.payload_length < 4 || seen.payload[0] != version || seen.payload[1] != 0
        || !find_recent(watch.h323_hosts, seen.from) || !find_recent(watch.h323_hosts, seen.to))
        return false;
    note(watch.h245_connections, connection);
    return true;
}

bool is_signalling_of_tcp(voice_watch &watch, const voice_monitors &monitors, const frame &seen)
{
    if (seen.payload_length == 0)
        return false;
    if (is_port(seen, sccp_port))
        return monitors.sccp.settings.enable;
    if (!monitors.h323.settings.enable)
        return false;
    if (!is_port(seen, h225_port))
        return is_h245(watch, seen);
    note(watch.h323_hosts, seen.from);
    note(watch.h323_hosts, seen.to);
    return true;
}

bool is_mgcp(const frame &seen)
{
    return seen.ip_protocol == ip_udp && (is_port(seen, mgcp_gateway_port) || is_port(seen, mgcp_agent_port));
}

bool is_signalling_of_udp(const voice_monitors &monitors, const frame &seen)
{
    if (is_mgcp(seen))
        return monitors.mgcp.settings.enable;
    return is_port(seen, ras_port) && monitors.h323.settings.enable;
}

bool is_signalling(voice_watch &watch, const frame &seen)
{
    const voice_monitors &monitors = storage<voice_monitors>(*watch.agent);
    if (seen.ip_protocol == ip_tcp)
        return is_signalling_of_tcp(watch, monitors, seen);
    return seen.ip_protocol == ip_udp && is_signalling_of_udp(monitors, seen);
}

void decode(void *context, const frame &seen)
{
    const auto &watched = *static_cast<const watched_interface *>(context);
    decode_signalling(watched.watch->decoder, watched.index, seen, watched.last_signalling, watched.round);
}

/** A fragment of IP behind the first one, if that was signalling. */
bool take_later_fragment(watched_interface &watched, const frame &seen, uint32_t identification)
{
    const datagram_ports *ports =
        ports_of_fragment(watched.watch->fragmented, watched.index, seen, identification);
    if (!ports)
        return false;
    frame completed = seen;
    completed.from_port = ports->from;
    completed.to_port = ports->to;
    decode(&watched, completed);
    return true;
}

/** Has a frame decoded if it is signalling. */
bool take_signalling(watched_interface &watched, const frame &seen)
{
    const std::optional<uint32_t> identification = identification_of(seen);
    if (identification && seen.later_fragment)
        return take_later_fragment(watched, seen, *identification);
    if (!is_signalling(*watched.watch, seen))
        return false;
    watched.last_signalling = up_time(*watched.watch->agent);
    if (identification)
        note_fragment(watched.watch->fragmented, watched.index, seen, *identification);
    if (!identification && is_mgcp(seen))
        visit_messages(seen, decode, &watched);
    else
        decode(&watched, seen);
    return true;
}

/** A frame of the usual capture, or of a file in its first round. */
void watch_frame_once(watched_interface &watched, const frame &seen)
{
    watched.newest = std::max(watched.newest, seen.time);
    if (watched.is_file && take_signalling(watched, seen))
        return;
    if (seen.ip_protocol == ip_udp)
        follow(watched.watch->follower, watched.index, seen);
}

/** A frame of the usual capture, or of a file, which may be read again and again. */
void watch_frame(void *row, const frame &seen)
{
    auto &watched = *static_cast<watched_interface *>(row);
    if (watched.source->later == 0) {
        watch_frame_once(watched, seen);
        return;
    }
    watched.round += std::exchange(watched.later, watched.source->later) != watched.source->later;
    frame later = seen;
    if (__builtin_add_overflow(seen.time, watched.source->later, &later.time))
        later.time = INT64_MAX;
    watch_frame_once(watched, later);
}

voice_progress progress(const voice_decoder &decoder, const watched_interface &watched, uint32_t now)
{
    if (const voice_message *next = next_undecoded(decoder, watched.index))
        return {std::min(next->time, watched.newest), next->up_time};
    return {watched.newest, now};
}

/** Looks at all calls. */
void settle_all(voice_watch &watch)
{
    voice_clock clock;
    clock.up_time = up_time(*watch.agent);
    for (const auto &[index, watched] : watch.interfaces)
        clock.interfaces[index] = progress(watch.decoder, watched, clock.up_time);
    voice_monitors &monitors = storage<voice_monitors>(*watch.agent);
    settle_calls(watch.sccp, monitors.sccp, watch.follower, clock);
    settle_calls(watch.mgcp, monitors.mgcp, watch.follower, clock);
    settle_calls(watch.h323, monitors.h323, watch.follower, clock);
}

/** A message after a long silence, as at the begin of a file's next round: calls before it are over first. */
void note_time(voice_watch &watch, const voice_message &message)
{
    const auto watched = watch.interfaces.find(message.interface);
    if (watched == watch.interfaces.end())
        return;
    const int64_t before = std::exchange(watched->second.decoded, message.time);
    if (message.time / 1000000 - before / 1000000 > seconds_of_silence)
        settle_all(watch);
}

void take_message(void *context, const voice_message &message)
{
    auto &watch = *static_cast<voice_watch *>(context);
    note_time(watch, message);
    voice_monitors &monitors = storage<voice_monitors>(*watch.agent);
    if (message.protocol == voice_protocol::sccp)
        take_message(watch.sccp, monitors.sccp, watch.follower, message);
    else if (message.protocol == voice_protocol::mgcp)
        take_message(watch.mgcp, monitors.mgcp, watch.follower, message);
    else
        take_message(watch.h323, monitors.h323, watch.follower, message);
}

/* ---- live interfaces -------------------------------------------------------------------------- */

/** Begins to follow the streams of an interface. */
void follow_streams(watched_interface &watched)
{
    probe &agent = *watched.watch->agent;
    if (watched.attached || !attach(agent, watched.index, watch_frame, &watched))
        return;
    watched.attached = true;
    watched.source = &agent.sources.rows.at(watched.index);
}

void on_signalling_frame(u_char *context, const pcap_pkthdr *header, const u_char *bytes)
{
    auto &watched = *reinterpret_cast<watched_interface *>(context);
    frame seen;
    const int64_t time = int64_t{header->ts.tv_sec} * 1000000 + header->ts.tv_usec;
    decode_frame(seen, bytes, header->caplen, header->len + fcs_octets, time);
    watched.newest = std::max(watched.newest, time);
    if (take_signalling(watched, seen))
        follow_streams(watched);
}

void close_signalling(watched_interface &watched)
{
    if (!watched.signalling)
        return;
    unwatch(watched.watch->agent->loop, pcap_get_selectable_fd(watched.signalling));
    pcap_close(watched.signalling);
    watched.signalling = nullptr;
}

void on_signalling(void *context, uint32_t)
{
    auto &watched = *static_cast<watched_interface *>(context);
    // The interface went down or away; the tick tries again if it did not.
    if (pcap_dispatch(
            watched.signalling, frames_in_a_round, on_signalling_frame, reinterpret_cast<u_char *>(&watched))
        < 0)
        close_signalling(watched);
}

bool set_filter(pcap_t *capture, bool is_loopback)
{
    // The loopback shows each frame when it is sent and when it is received.
    const std::string text = is_loopback ? "inbound and (" + signalling_filter() + ")" : signalling_filter();
    bpf_program filter{};
    if (pcap_compile(capture, &filter, text.c_str(), 1, PCAP_NETMASK_UNKNOWN) != 0)
        return false;
    const bool is_set = pcap_setfilter(capture, &filter) == 0;
    pcap_freecode(&filter);
    return is_set;
}

/** A capture of an interface's signalling; null when there can be none. */
pcap_t *open_signalling(const interface &iface)
{
    char error[PCAP_ERRBUF_SIZE] = "";
    for (const int promiscuous : {1, 0}) {
        pcap_t *capture = pcap_create(iface.name.c_str(), error);
        if (!capture)
            return nullptr;
        if (pcap_set_snaplen(capture, whole_frames) == 0 && pcap_set_promisc(capture, promiscuous) == 0
            && pcap_set_timeout(capture, gathering) == 0 && pcap_set_buffer_size(capture, octets_of_ring) == 0
            && pcap_activate(capture) >= 0 && pcap_datalink(capture) == DLT_EN10MB
            && pcap_setnonblock(capture, 1, error) == 0
            && set_filter(capture, iface.hardware_type == ARPHRD_LOOPBACK))
            return capture;
        pcap_close(capture);
    }
    return nullptr;
}

void watch_live(watched_interface &watched, const interface &iface)
{
    probe &agent = *watched.watch->agent;
    if ((iface.flags & IFF_UP) == 0) {
        close_signalling(watched);
        return;
    }
    if (watched.signalling)
        return;
    watched.signalling = open_signalling(iface);
    if (watched.signalling
        && !watch(agent.loop, pcap_get_selectable_fd(watched.signalling), EPOLLIN, on_signalling, &watched)) {
        pcap_close(watched.signalling);
        watched.signalling = nullptr;
    }
}

void leave(watched_interface &watched)
{
    close_signalling(watched);
    if (watched.attached)
        detach(*watched.watch->agent, watched.index, watch_frame, &watched);
    watched.attached = false;
}

/** Once a second: an interface that came up is watched again, one where nobody calls costs nothing. */
void look_after(watched_interface &watched)
{
    probe &agent = *watched.watch->agent;
    const auto iface = agent.interfaces.rows.find(watched.index);
    if (watched.is_file || iface == agent.interfaces.rows.end())
        return;
    watch_live(watched, iface->second);
    if (watched.attached && up_time(agent) - watched.last_signalling > patience) {
        detach(agent, watched.index, watch_frame, &watched);
        watched.attached = false;
    }
}

/** What is shown of an interface: a live one's name, a file's without the folders. */
std::string shown_name(const interface &iface)
{
    return iface.file ? iface.name.substr(iface.name.rfind('/') + 1) : iface.name;
}

bool is_any_on(const voice_monitors &monitors)
{
    return monitors.sccp.settings.enable || monitors.h323.settings.enable || monitors.mgcp.settings.enable;
}

} // namespace

void prepare_watch(probe &agent)
{
    auto &watch = storage<voice_watch>(agent);
    watch.agent = &agent;
    const std::string decoder = find_decoder();
    watch.works = !decoder.empty() && open_launcher(watch.launcher, decoder);
}

void begin_watch(probe &agent)
{
    auto &watch = storage<voice_watch>(agent);
    if (!watch.agent)
        return; // it sees no frames
    if (!watch.works) {
        if (is_any_on(storage<voice_monitors>(agent)))
            say(log_level::notice, "tshark is not installed: no telephone calls are measured");
        return;
    }
    open_decoder(watch.decoder, agent.loop, watch.launcher, take_message, &watch);
    for (const auto &[index, iface] : agent.interfaces.rows)
        watch_interface(agent, index);
}

void watch_interface(probe &agent, int32_t index)
{
    auto &watch = storage<voice_watch>(agent);
    const auto iface = agent.interfaces.rows.find(index);
    if (!watch.decoder.loop || iface == agent.interfaces.rows.end() || !is_ethernet_like(iface->second)
        || !is_measured(agent.interfaces, iface->second))
        return;
    watched_interface &watched = watch.interfaces[index];
    watched.watch = &watch;
    watched.index = index;
    watched.is_file = iface->second.file;
    watch.sccp.interface_names[index] = shown_name(iface->second);
    if (watched.is_file)
        follow_streams(watched);
    else
        watch_live(watched, iface->second);
}

void leave_interface(probe &agent, int32_t index)
{
    auto &watch = storage<voice_watch>(agent);
    const auto found = watch.interfaces.find(index);
    if (found == watch.interfaces.end())
        return;
    leave(found->second);
    watch.interfaces.erase(found);
    watch.sccp.interface_names.erase(index);
}

void tick_watch(probe &agent)
{
    auto &watch = storage<voice_watch>(agent);
    if (!watch.decoder.loop)
        return;
    tick_decoder(watch.decoder);
    for (auto &[index, watched] : watch.interfaces)
        look_after(watched);
    settle_all(watch);
}

void end_watch(probe &agent)
{
    auto &watch = storage<voice_watch>(agent);
    for (auto &[index, watched] : watch.interfaces)
        leave(watched);
    watch.interfaces.clear();
    close_decoder(watch.decoder);
    close_launcher(watch.launcher);
}
