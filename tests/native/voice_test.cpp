// SPDX-License-Identifier: MIT
/* The decoder of voice signalling, with the real child and with ones that misbehave. */
#include "tests/native/check.h"

#include "agent/voice/decoder.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

using octets = std::vector<uint8_t>;

void put(octets &to, std::string_view text)
{
    to.insert(to.end(), text.begin(), text.end());
}

void put_u16(octets &to, uint32_t value)
{
    to.push_back(static_cast<uint8_t>(value >> 8));
    to.push_back(static_cast<uint8_t>(value));
}

void put_u32(octets &to, uint32_t value)
{
    put_u16(to, value >> 16);
    put_u16(to, value);
}

/** SCCP's byte order. */
void put_low_first(octets &to, uint32_t value)
{
    for (int shift = 0; shift < 32; shift += 8)
        to.push_back(static_cast<uint8_t>(value >> shift));
}

/** A message of SCCP: length of what follows the version, version, number, words. */
octets sccp(uint32_t number, const std::vector<uint32_t> &words)
{
    octets made;
    put_low_first(made, static_cast<uint32_t>(4 + 4 * words.size()));
    put_low_first(made, 0);
    put_low_first(made, number);
    for (const uint32_t word : words)
        put_low_first(made, word);
    return made;
}

/** An Ethernet frame of IPv4: addresses are 10.0.0.0 and the last octet. */
octets frame_of(uint8_t protocol, uint8_t from, uint8_t to, const octets &transport)
{
    octets made{2, 0, 0, 0, 0, to, 2, 0, 0, 0, 0, from, 8, 0};
    put_u16(made, 0x4500);
    put_u16(made, static_cast<uint32_t>(20 + transport.size()));
    put_u32(made, 0x00010000);
    put_u16(made, static_cast<uint32_t>(64 << 8 | protocol));
    put_u16(made, 0); // the decoder does not judge checksums
    for (const uint8_t host : {from, to})
        put_u32(made, 0x0a000000U | host);
    made.insert(made.end(), transport.begin(), transport.end());
    return made;
}

octets tcp_frame(
    uint8_t from, uint16_t from_port, uint8_t to, uint16_t to_port, uint32_t sequence, const octets &payload)
{
    octets segment;
    put_u16(segment, from_port);
    put_u16(segment, to_port);
    put_u32(segment, sequence);
    put_u32(segment, 1);
    put_u16(segment, 0x5018);
    put_u16(segment, 8192);
    put_u32(segment, 0);
    segment.insert(segment.end(), payload.begin(), payload.end());
    return frame_of(6, from, to, segment);
}

octets udp_frame(uint8_t from, uint16_t from_port, uint8_t to, uint16_t to_port, std::string_view payload)
{
    octets datagram;
    put_u16(datagram, from_port);
    put_u16(datagram, to_port);
    put_u16(datagram, static_cast<uint32_t>(8 + payload.size()));
    put_u16(datagram, 0);
    put(datagram, payload);
    return frame_of(17, from, to, datagram);
}

/** What a message said, as text: what it points to is gone after the call. */
struct heard {
    std::vector<std::string> lines;
};

std::string host(const net_address &address)
{
    return address.length == 4 ? std::to_string(address.bytes[3]) : "?";
}

void hear(void *context, const voice_message &message)
{
    std::string line = std::to_string(message.interface) + " " + std::to_string(message.time) + " "
                       + host(message.from) + ":" + std::to_string(message.from_port) + " " + host(message.to)
                       + ":" + std::to_string(message.to_port);
    if (message.protocol == voice_protocol::sccp) {
        line += " sccp " + std::to_string(number_of(message.body, "skinny.messageId").value_or(0));
        line += " call " + std::to_string(number_of(message.body, "skinny.callReference").value_or(0));
        line += " to " + host(address_of(message.body, "skinny.remoteIpAddr.ipv4"));
    } else if (message.protocol == voice_protocol::mgcp) {
        line += " mgcp " + std::string(text_of(message.body, "mgcp.req.verb"));
        line += std::to_string(number_of(message.body, "mgcp.rsp.rspcode").value_or(0));
        line += " call " + std::string(text_of(message.body, "mgcp.param.callid"));
        for (const std::string_view attribute : texts_of(message.beside, "sdp.media_attr"))
            line += " " + std::string(attribute);
    }
    static_cast<heard *>(context)->lines.push_back(line);
}

/** A decoder, the loop in which it runs, and what it said. */
struct decoding {
    event_loop loop;
    voice_launcher launcher;
    voice_decoder decoder;
    heard said;
};

void open_decoding(decoding &opened, const std::string &program)
{
    const bool is_open = open_loop(opened.loop) && open_launcher(opened.launcher, program);
    check(is_open, "the launcher starts");
    open_decoder(opened.decoder, opened.loop, opened.launcher, hear, &opened.said);
    opened.decoder.pause_of_starts = 0;
}

void close_decoding(decoding &opened)
{
    close_decoder(opened.decoder);
    close_launcher(opened.launcher);
    close_loop(opened.loop);
}

void decode(decoding &opened, int64_t time, const octets &bytes)
{
    frame seen;
    decode_frame(
        seen, bytes.data(), static_cast<uint32_t>(bytes.size()), static_cast<uint32_t>(bytes.size() + 4),
        time);
    decode_signalling(opened.decoder, 7, seen);
}

/** Runs the loop until it is so, for at most a minute. */
template <class Condition> bool wait_until(decoding &opened, const Condition &is_so)
{
    for (const int64_t end = now_ms() + 60000; !is_so() && now_ms() < end;) {
        turn_loop(opened.loop, 20);
        tick_decoder(opened.decoder);
    }
    return is_so();
}

void wait_until_decoded(decoding &opened)
{
    check(wait_until(opened, [&] { return !is_decoding(opened.decoder); }), "all frames are decoded in time");
}

void check_lines(const heard &said, const std::vector<std::string> &expected, const std::string &what)
{
    check(said.lines == expected, what);
    for (std::size_t i = 0; said.lines != expected && i < said.lines.size(); i++)
        std::printf("  %s\n", said.lines[i].c_str());
}

constexpr uint32_t call_state = 0x111;
constexpr uint32_t start_transmission = 0x8a;

/** The end of a call, of which only the reference matters. */
octets state_of_call(uint32_t reference)
{
    return sccp(call_state, {2, 1, reference, 0, 4, 0, 0});
}

void test_real_decoder(const std::string &program)
{
    decoding opened;
    open_decoding(opened, program);

    // Two messages in a segment, the second one's end in the next segment.
    octets first = sccp(call_state, {12, 1, 100, 0, 4, 0, 0});
    const octets second = sccp(
        start_transmission, {100, 5, 0x0c00000a, 18002, 20, 4, 104, 0, 0, 0, 101, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    const auto cut = second.begin() + 30;
    first.insert(first.end(), second.begin(), cut);
    decode(opened, 1000000, tcp_frame(1, 2000, 11, 50000, 1, first));
    decode(
        opened, 2000001,
        tcp_frame(1, 2000, 11, 50000, static_cast<uint32_t>(1 + first.size()), octets(cut, second.end())));
    decode(
        opened, 3000000,
        udp_frame(2, 2727, 20, 2427, "CRCX 1204 aaln/1@gw1 MGCP 1.0\r\nC: A3C4\r\nM: recvonly\r\n"));
    decode(
        opened, 4000000,
        udp_frame(
            20, 2427, 2, 2727,
            "200 1204 OK\r\nI: FDE2\r\n\r\nv=0\r\no=- 1 1 IN IP4 10.0.0.20\r\ns=-\r\nc=IN IP4 10.0.0.20\r\n"
            "t=0 0\r\nm=audio 3456 RTP/AVP 0\r\na=rtpmap:0 PCMU/8000\r\na=ptime:20\r\n"));
    decode(opened, 5000000, udp_frame(20, 2427, 2, 2727, "nothing of the kind"));
    decode(opened, 6000000, tcp_frame(1, 2000, 12, 50000, 1, state_of_call(200)));
    wait_until_decoded(opened);
    check_lines(
        opened.said,
        {
            "7 1000000 1:2000 11:50000 sccp 273 call 100 to ?",
            "7 2000001 1:2000 11:50000 sccp 138 call 101 to 12",
            "7 3000000 2:2727 20:2427 mgcp CRCX0 call A3C4",
            "7 4000000 20:2427 2:2727 mgcp 200 call  rtpmap:0 PCMU/8000 ptime:20",
            "7 6000000 1:2000 12:50000 sccp 273 call 200 to ?",
        },
        "messages of SCCP and MGCP");
    check(opened.decoder.starts == 1 && opened.decoder.dropped == 0, "by one child, without a loss");
    close_decoding(opened);
}

} // namespace

void test_voice()
{
    const std::string program = find_decoder();
    check(!program.empty(), "the decoder is installed");
    if (!program.empty())
        test_real_decoder(program);
}
