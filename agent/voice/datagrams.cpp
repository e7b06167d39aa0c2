// SPDX-License-Identifier: MIT
#include "agent/voice/datagrams.h"

#include "agent/capture/ether_counters.h"

#include <span>
#include <string_view>
#include <vector>

namespace {

using octets = std::vector<uint8_t>;

/* ---- several messages --------------------------------------------------------------------- */

/** The messages of a text, without the lines that part them. */
std::vector<std::string_view> messages_in(std::string_view text)
{
    std::vector<std::string_view> found;
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size() && found.size() + 1 < max_mgcp_messages;) {
        const std::size_t end = std::min(text.find('\n', at), text.size());
        const std::string_view line = text.substr(at, end - at);
        if (line == "." || line == ".\r") {
            if (at > begin)
                found.push_back(text.substr(begin, at - begin));
            begin = end + 1;
        }
        at = end + 1;
    }
    if (begin < text.size())
        found.push_back(text.substr(begin));
    return found;
}

void write_u16(uint8_t *at, std::size_t value)
{
    at[0] = static_cast<uint8_t>(value >> 8);
    at[1] = static_cast<uint8_t>(value);
}

/** The frame with another payload; lengths in its headers are that of the new one. */
octets with_payload(const frame &datagram, std::string_view payload)
{
    octets made(datagram.bytes, datagram.payload);
    made.insert(made.end(), payload.begin(), payload.end());
    uint8_t *network = made.data() + (datagram.network - datagram.bytes);
    uint8_t *transport = made.data() + (datagram.transport - datagram.bytes);
    const auto length = static_cast<std::size_t>(made.data() + made.size() - network);
    if (datagram.from.length == 4)
        write_u16(network + 2, length);
    else
        write_u16(network + 4, length - 40);
    write_u16(transport + 4, static_cast<std::size_t>(made.data() + made.size() - transport));
    return made;
}

/* ---- fragments ------------------------------------------------------------------------------- */

constexpr uint8_t fragment_header = 44;

/** Where the fragment header of a packet of IPv6 is; null when it has none that was captured. */
const uint8_t *find_fragment_header(const frame &seen)
{
    constexpr int max_headers = 4;
    const std::span<const uint8_t> packet(seen.network, seen.network_length);
    uint8_t next = packet[6];
    std::size_t at = 40;
    for (int i = 0; i < max_headers && at + 8 <= packet.size(); i++) {
        if (next == fragment_header)
            return packet.data() + at;
        const bool goes_on = next == 0 || next == 43 || next == 60; // options and routing
        if (!goes_on)
            return nullptr;
        next = packet[at];
        at += (packet[at + 1] + std::size_t{1}) * 8;
    }
    return nullptr;
}

} // namespace

void visit_messages(const frame &datagram, void (*visit)(void *context, const frame &message), void *context)
{
    const std::string_view text(reinterpret_cast<const char *>(datagram.payload), datagram.payload_length);
    const std::vector<std::string_view> messages = messages_in(text);
    if (messages.size() < 2) {
        visit(context, datagram);
        return;
    }
    for (const std::string_view message : messages) {
        const octets bytes = with_payload(datagram, message);
        const auto size = static_cast<uint32_t>(bytes.size());
        frame one;
        decode_frame(one, bytes.data(), size, size + fcs_octets, datagram.time);
        visit(context, one);
    }
}

std::optional<uint32_t> identification_of(const frame &seen)
{
    if (seen.ip_protocol != ip_udp)
        return {};
    if (seen.from.length == 4) {
        const bool is_fragment = (read_u16(seen.network + 6) & 0x3fff) != 0; // more follow, or an offset
        return is_fragment ? std::optional<uint32_t>(read_u16(seen.network + 4)) : std::nullopt;
    }
    const uint8_t *header = find_fragment_header(seen);
    return header ? std::optional(read_u32(header + 4)) : std::nullopt;
}

void note_fragment(
    fragmented_datagrams &table, int32_t interface, const frame &first, uint32_t identification)
{
    const datagram_key key{first.from, first.to, identification, interface};
    find_or_make(table, key, max_fragmented, [](const datagram_ports &) {}) = {
        first.from_port, first.to_port, first.time};
}

const datagram_ports *
ports_of_fragment(fragmented_datagrams &table, int32_t interface, const frame &later, uint32_t identification)
{
    const datagram_ports *ports = find_recent(table, {later.from, later.to, identification, interface});
    return ports && later.time - ports->time <= patience_for_fragments ? ports : nullptr;
}
