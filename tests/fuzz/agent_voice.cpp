// SPDX-License-Identifier: MIT
/*
 * What strangers say to the bundled agent in telephone calls: frames for the
 * follower of streams, and what the decoder of signalling prints of frames. An input is a
 * list of steps. A message is printed from the input's bytes as the decoder
 * would, with the names of its fields, or is the bytes as they are; the
 * trackers of all protocols take it.
 */
#include "agent/voice/datagrams.h"
#include "agent/voice/h323_calls.h"
#include "agent/voice/mgcp_calls.h"
#include "agent/voice/sccp_calls.h"
#include "tests/fuzz/common.h"

#include <array>
#include <span>
#include <string>
#include <string_view>

namespace {

/** Parts and fields of what the decoder prints. */
constexpr std::string_view part_names[] = {
    "q931",
    "h225",
    "h245",
    "skinny",
    "mgcp",
    "sdp",
    "Item 0",
    "Item 1",
    "h225.callIdentifier_element",
    "h225.callSignalAddress_tree",
    "h225.sourceCallSignalAddress_tree",
    "h225.terminalAlias_tree",
    "h225.sourceAddress_tree",
    "h225.destinationAddress_tree",
    "h225.h245Address_tree",
    "h225.fastStart_tree",
    "h225.h245Control_tree",
    "h245.OpenLogicalChannel_element",
    "h245.openLogicalChannel_element",
    "h245.openLogicalChannelAck_element",
    "h245.forwardLogicalChannelParameters_element",
    "h245.reverseLogicalChannelParameters_element",
    "h245.dataType_tree",
    "h245.mediaChannel_tree",
    "h245.mediaControlChannel_tree",
};

constexpr std::string_view field_names[] = {
    "q931.call_ref",
    "q931.call_ref_flag",
    "q931.message_type",
    "q931.cause_value",
    "q931.display_information",
    "q931.calling_party_number.digits",
    "h225.RasMessage",
    "h225.requestSeqNum",
    "h225.protocolIdentifier",
    "h225.dialledDigits",
    "h225.h323_ID",
    "h225.ipV4",
    "h225.ipV4_port",
    "h225.ipV6",
    "h225.guid",
    "h225.conferenceID",
    "h225.h245Tunnelling",
    "h225.productId",
    "h225.h245Ip",
    "h225.h245IpPort",
    "h245.forwardLogicalChannelNumber",
    "h245.audioData",
    "h245.sessionID",
    "h245.ip4_network",
    "h245.tsapIdentifier",
    "h245.ip6_network",
    "skinny.messageId",
    "skinny.callReference",
    "skinny.callState",
    "skinny.callType",
    "skinny.lineInstance",
    "skinny.lineNumber",
    "skinny.lineDirNumber",
    "skinny.DeviceName",
    "skinny.callingParty",
    "skinny.calledParty",
    "skinny.ipAddr.ipv4",
    "skinny.portNumber",
    "skinny.remoteIpAddr.ipv4",
    "skinny.remotePortNumber",
    "skinny.numberPacketsLost",
    "mgcp.req.verb",
    "mgcp.req.endpoint",
    "mgcp.transid",
    "mgcp.rsp.rspcode",
    "mgcp.param.callid",
    "mgcp.param.connectionid",
    "mgcp.param.connectionmode",
    "mgcp.param.connectionparam",
    "mgcp.param.localconnectionoptions",
    "mgcp.param.observedevents",
    "sdp.connection_info.address",
    "sdp.media.media",
    "sdp.media.port",
    "sdp.media_attr",
    "sdp.mime.type",
    "sdp.sample_rate",
};

constexpr std::string_view values[] = {
    "0",
    "1",
    "2",
    "3",
    "4",
    "5",
    "0x05",
    "0x07",
    "0x5a",
    "00:01",
    "10.0.0.1",
    "10.0.0.2",
    "fd00::1",
    "1720",
    "16384",
    "4294967295",
    "18446744073709551616",
    "0a1b2c3d-4e5f-6071-8293-a4b5c6d7e8f9",
    "CRCX",
    "MDCX",
    "DLCX",
    "200",
    "aaln/1@gateway",
    "audio",
    "opus",
    "0x00000001",
    "0x00000111",
    "0x0000008f",
    "0x00000022",
    "0x0000008a",
    "0x00000023",
    "0x00000007",
    "12",
    "-1",
    "",
};

/** Takes bytes from an input until there are no more, then zeros. */
struct reader {
    std::span<const uint8_t> rest;

    uint8_t byte()
    {
        if (rest.empty())
            return 0;
        const uint8_t taken = rest[0];
        rest = rest.subspan(1);
        return taken;
    }

    uint32_t number()
    {
        const uint32_t high = byte();
        return high << 8 | byte();
    }

    std::span<const uint8_t> some(std::size_t size)
    {
        const auto taken = rest.first(std::min(size, rest.size()));
        rest = rest.subspan(taken.size());
        return taken;
    }
};

/** A text of any bytes that JSON can carry. */
std::string any_text(reader &from)
{
    static constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const uint8_t byte : from.some(from.byte()))
        text += std::string("\\u00") + digits[byte >> 4] + digits[byte & 15];
    return text;
}

void print_fields(std::string &to, reader &from, int depth)
{
    constexpr int max_depth = 8;
    std::string_view between;
    while (!from.rest.empty()) {
        const uint8_t what = from.byte();
        if (what == 255)
            return;
        to += between;
        between = ",";
        if (what % 4 == 0 && depth < max_depth) {
            to += '"';
            to += part_names[from.byte() % std::size(part_names)];
            to += "\":{";
            print_fields(to, from, depth + 1);
            to += '}';
            continue;
        }
        to += '"';
        to += field_names[from.byte() % std::size(field_names)];
        to += "\":\"";
        if (what % 4 == 3)
            to += any_text(from);
        else
            to += values[from.byte() % std::size(values)];
        to += '"';
    }
}

/** All that is watched. */
struct watched {
    rtp_follower follower;
    sccp_monitor sccp;
    mgcp_monitor mgcp;
    h323_monitor h323;
    sccp_tracker sccp_calls;
    mgcp_tracker mgcp_calls;
    h323_tracker h323_calls;
    fragmented_datagrams fragmented;
    voice_clock clock;
    int64_t time = 1600000000000000;
};

void take_message(void *context, const voice_message &message)
{
    auto &here = *static_cast<watched *>(context);
    if (message.protocol == voice_protocol::sccp)
        take_message(here.sccp_calls, here.sccp, here.follower, message);
    else if (message.protocol == voice_protocol::mgcp)
        take_message(here.mgcp_calls, here.mgcp, here.follower, message);
    else
        take_message(here.h323_calls, here.h323, here.follower, message);
}

net_address any_address(uint8_t from)
{
    const uint8_t bytes[16] = {10, 0, 0, static_cast<uint8_t>(from & 3)};
    return make_net_address(bytes, from & 4 ? 16 : 4);
}

uint16_t any_port(uint8_t from)
{
    constexpr uint16_t ports[] = {2000, 1720, 1719, 2427, 2727, 30000, 16384, 16385};
    return ports[from % std::size(ports)];
}

void take_object(watched &here, reader &from, bool as_it_is)
{
    voice_message origin{};
    origin.interface = 1 + (from.byte() & 1);
    origin.time = here.time;
    origin.up_time = here.clock.up_time;
    origin.from = any_address(from.byte());
    origin.to = any_address(from.byte());
    origin.from_port = any_port(from.byte());
    origin.to_port = any_port(from.byte());
    reader own{from.some(from.number())};
    std::string text;
    if (as_it_is) {
        text.assign(own.rest.begin(), own.rest.end());
    } else {
        text = "{\"layers\":{";
        print_fields(text, own, 0);
        text += "}}";
    }
    read_messages(text.data(), text.size(), origin, take_message, &here);
}

void check_message(void *, const frame &message)
{
    if (message.ip_protocol != ip_udp || message.payload_length > message.payload_on_wire)
        broken("a message has a datagram of its own");
}

void take_frame(watched &here, reader &from)
{
    const int32_t interface = 1 + (from.byte() & 1);
    const uint32_t behind = from.byte(); // octets that were not captured
    const auto bytes = from.some(from.byte());
    // In a block of its own, so that the sanitizers see what is read behind it.
    const std::vector<uint8_t> captured(bytes.begin(), bytes.end());
    frame seen;
    const auto size = static_cast<uint32_t>(captured.size());
    decode_frame(seen, captured.data(), size, size + behind, here.time);
    follow(here.follower, interface, seen);
    // As signalling, before it is decoded.
    const std::optional<uint32_t> identification = identification_of(seen);
    if (identification && seen.later_fragment)
        ports_of_fragment(here.fragmented, interface, seen, *identification);
    else if (identification)
        note_fragment(here.fragmented, interface, seen, *identification);
    else if (seen.ip_protocol == ip_udp)
        visit_messages(seen, check_message, nullptr);
}

void check_figures(void *, const rtp_figures &stream)
{
    if (stream.packets < 2 || stream.duplicates + stream.reordered > stream.packets)
        broken("a stream has two packets, and no more copies than packets");
    if (stream.lost != static_cast<int64_t>(stream.expected - stream.packets))
        broken("what is lost is what was expected and did not come");
    // Sums are rounded.
    if (!(stream.jitter >= 0) || stream.jitter > stream.max_jitter
        || stream.mean_jitter > stream.max_jitter * 1.000001)
        broken("no jitter is above the greatest");
}

void settle(watched &here)
{
    for (const int32_t interface : {1, 2})
        here.clock.interfaces[interface] = {here.time, here.clock.up_time};
    settle_calls(here.sccp_calls, here.sccp, here.follower, here.clock);
    settle_calls(here.mgcp_calls, here.mgcp, here.follower, here.clock);
    settle_calls(here.h323_calls, here.h323, here.follower, here.clock);
}

void take_step(watched &here, reader &from)
{
    switch (from.byte() % 8) {
    case 0:
    case 1:
        take_object(here, from, false);
        break;
    case 2:
        take_object(here, from, true);
        break;
    case 3:
    case 4:
        take_frame(here, from);
        break;
    case 5: // time passes
        here.time += from.number() * 1000;
        here.clock.up_time += from.number();
        break;
    case 6:
        settle(here);
        break;
    default: {
        const net_address to = any_address(from.byte());
        const uint16_t port = any_port(from.byte());
        streams_to(here.follower, 1, to, port, INT64_MIN, INT64_MAX, check_figures, nullptr);
    }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    watched here;
    here.clock.up_time = 100000;
    for (voice_config_params_t *settings : {&here.sccp.settings, &here.mgcp.settings, &here.h323.settings})
        settings->enable = 1;
    reader from{{data, size}};
    while (!from.rest.empty())
        take_step(here, from);
    // All calls end, and what they announced is forgotten.
    here.clock.up_time += 100 * (seconds_of_silence + 1);
    here.time += (seconds_of_silence + 1) * int64_t{1000000};
    settle(here);
    here.clock.up_time += 100 * (seconds_of_silence + 1);
    here.time += (seconds_of_silence + 1) * int64_t{1000000};
    settle(here);
    settle(here);
    if (!here.h323_calls.calls.entries.empty())
        broken("calls of H.323 end");
    return 0;
}
