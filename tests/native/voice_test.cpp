// SPDX-License-Identifier: MIT
/* The decoder of voice signalling, with the real child and with ones that misbehave, and what is made of
 * messages. */
#include "tests/native/check.h"

#include "agent/voice/decoder.h"
#include "agent/voice/sccp_calls.h"

#include <csignal>
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
    decode_signalling(opened.decoder, 7, seen, 0);
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

/* ---- children that misbehave ---------------------------------------------------------- */

/** A program in the decoder's place, which anybody may run. */
struct stand_in {
    std::filesystem::path folder;
    std::string path;

    explicit stand_in(const std::string &script)
    {
        char name[] = "/tmp/rmon-decoder-XXXXXX";
        check(mkdtemp(name) != nullptr, "a folder for a program");
        folder = name;
        path = folder / "decoder";
        std::ofstream(path) << "#!/bin/sh\n" << script;
        const auto all = std::filesystem::perms::owner_all | std::filesystem::perms::group_read
                         | std::filesystem::perms::group_exec | std::filesystem::perms::others_read
                         | std::filesystem::perms::others_exec;
        std::filesystem::permissions(folder, all);
        std::filesystem::permissions(path, all);
    }
    stand_in(const stand_in &) = delete;
    stand_in &operator=(const stand_in &) = delete;
    ~stand_in() { std::filesystem::remove_all(folder); }
};

void decode_one(decoding &opened)
{
    decode(opened, 1000000, tcp_frame(1, 2000, 11, 50000, 1, state_of_call(100)));
}

void test_rights()
{
    // Prints who it is, and what it could do, for its first frame.
    const stand_in program(R"(printf '[\n  {"layers": {"skinny": {"skinny.messageId": "%s", ' $(id -u)
printf '"skinny.callReference": "0x%s"}}\n  }' $(sed -n 's/^CapEff:[^0-9a-f]*//p' /proc/self/status)
cat >/dev/null
)");
    decoding opened;
    open_decoding(opened, program.path);
    decode_one(opened);
    wait_until_decoded(opened);
    const std::string user = std::to_string(geteuid() == 0 ? 65534 : geteuid());
    check_lines(
        opened.said, {"7 1000000 1:2000 11:50000 sccp " + user + " call 0 to ?"},
        "the decoder is nobody's process and has no capability");
    close_decoding(opened);
}

void test_garbage()
{
    const stand_in program("printf '[\\n  {nonsense\\n  }'\ncat >/dev/null\n");
    decoding opened;
    open_decoding(opened, program.path);
    decode_one(opened);
    wait_until_decoded(opened);
    check(opened.decoder.unreadable == 1 && opened.said.lines.empty(), "what is no JSON costs its frame");
    close_decoding(opened);
}

void test_more_than_asked()
{
    const stand_in program("printf '[\\n  {\\n  },\\n  {\\n  },\\n  {\\n  }'\ncat >/dev/null\n");
    decoding opened;
    open_decoding(opened, program.path);
    decode_one(opened);
    wait_until_decoded(opened);
    check(
        wait_until(opened, [&] { return opened.decoder.pipes.input < 0; }),
        "who says more than it was asked is no longer heard");
    decode_one(opened);
    check(wait_until(opened, [&] { return opened.decoder.starts == 2; }), "another one is started");
    close_decoding(opened);
}

void test_endless()
{
    const stand_in program("exec yes '  an object without an end'\n");
    decoding opened;
    open_decoding(opened, program.path);
    decode_one(opened);
    wait_until_decoded(opened);
    check(opened.decoder.dropped == 1, "an object without an end ends the child");
    close_decoding(opened);
}

void test_deaths()
{
    for (const char *script : {"exit 1\n", "head -c 30 >/dev/null\n", "kill -9 $$\n"}) {
        const stand_in program(script);
        decoding opened;
        open_decoding(opened, program.path);
        decode_one(opened);
        wait_until_decoded(opened);
        decode_one(opened);
        wait_until_decoded(opened);
        check(
            opened.decoder.dropped == 2 && opened.decoder.starts >= 2 && opened.said.lines.empty(),
            std::string("a child that dies costs what it had: ") + script);
        close_decoding(opened);
    }
}

void test_restarts_are_rare()
{
    // It reads some of the frame first: what nobody read of it may wait for the next one.
    const stand_in program("head -c 30 >/dev/null\n");
    decoding opened;
    open_decoding(opened, program.path);
    opened.decoder.pause_of_starts = 3600000;
    decode_one(opened);
    wait_until_decoded(opened);
    for (int i = 0; i < 5; i++)
        decode_one(opened);
    for (int i = 0; i < 5; i++) {
        turn_loop(opened.loop, 1);
        tick_decoder(opened.decoder);
    }
    check(
        opened.decoder.starts == 1 && opened.decoder.waiting.size() == 5,
        "the next one is not started at once");
    close_decoding(opened);
}

void test_silence()
{
    const stand_in program("exec sleep 1000\n");
    decoding opened;
    open_decoding(opened, program.path);
    opened.decoder.max_silence = 50;
    decode_one(opened);
    wait_until_decoded(opened);
    check(opened.decoder.dropped == 1, "a child that says nothing is ended");
    decode_one(opened);
    check(wait_until(opened, [&] { return opened.decoder.starts == 2; }), "and another one is started");
    close_decoding(opened);
}

void test_nothing_there()
{
    decoding opened;
    open_decoding(opened, "/nonexistent/decoder");
    decode_one(opened);
    wait_until_decoded(opened);
    check(opened.decoder.dropped == 1, "a program that went away costs the frames");
    close_decoding(opened);
}

void test_full_queue()
{
    const stand_in program("exec sleep 1000\n");
    decoding opened;
    open_decoding(opened, program.path);
    const octets large = tcp_frame(1, 2000, 11, 50000, 1, octets(60000));
    for (int i = 0; i < 1500; i++)
        decode(opened, i, large);
    check(
        opened.decoder.waiting_octets <= std::size_t{64} << 20 && opened.decoder.dropped > 300,
        "what finds no room is dropped");
    close_decoding(opened);
}

/** A terminal that closes sends it to all of the agent's processes. */
void test_hangup()
{
    const stand_in program("head -c 30 >/dev/null\n");
    decoding opened;
    open_decoding(opened, program.path);
    decode_one(opened);
    wait_until_decoded(opened);
    const uint64_t before = opened.decoder.starts;
    kill(opened.launcher.process, SIGHUP);
    decode_one(opened);
    wait_until_decoded(opened);
    check(opened.decoder.starts > before, "the launcher outlives a hangup, as the agent does");
    close_decoding(opened);
}

/** The launcher's socket has the number of a standard descriptor then. */
void test_closed_descriptors()
{
    std::fflush(stdout);
    int kept[3];
    for (int standard = STDIN_FILENO; standard <= STDERR_FILENO; standard++)
        kept[standard] = dup(standard);
    for (int standard = STDIN_FILENO; standard <= STDERR_FILENO; standard++)
        close(standard);
    const stand_in program("head -c 30 >/dev/null\n");
    decoding opened;
    open_decoding(opened, program.path);
    decode_one(opened);
    wait_until_decoded(opened);
    const uint64_t starts = opened.decoder.starts;
    close_decoding(opened);
    for (int standard = STDIN_FILENO; standard <= STDERR_FILENO; standard++) {
        dup2(kept[standard], standard);
        close(kept[standard]);
    }
    check(starts > 0, "a child starts without standard descriptors");
}

void test_lost_launcher()
{
    const stand_in program("exec sleep 1000\n");
    decoding opened;
    open_decoding(opened, program.path);
    kill(opened.launcher.process, SIGKILL);
    decode_one(opened);
    wait_until_decoded(opened);
    decode_one(opened);
    check(opened.decoder.dropped == 2 && !is_decoding(opened.decoder), "without a launcher nothing waits");
    close_decoding(opened);
}

/* ---- calls of SCCP --------------------------------------------------------------------------- */

/** Messages as the decoder prints them, taken in without one. */
struct sccp_watching {
    sccp_tracker tracker;
    sccp_monitor monitor;
    rtp_follower follower;
    voice_clock clock;
};

void take_sccp(void *context, const voice_message &message)
{
    auto &watching = *static_cast<sccp_watching *>(context);
    take_message(watching.tracker, watching.monitor, watching.follower, message);
}

net_address address(uint8_t host)
{
    const uint8_t octets_of_it[4] = {10, 0, 0, host};
    return make_net_address(octets_of_it, 4);
}

/** A message of the manager to a phone, at a second; fields without their protocol's name. */
void tell(
    sccp_watching &watching,
    int32_t interface,
    int64_t second,
    uint8_t phone,
    int kind,
    const std::string &fields)
{
    voice_message origin{};
    origin.interface = interface;
    origin.time = second * 1000000;
    origin.up_time = static_cast<uint32_t>(second * 100);
    origin.from = address(1);
    origin.from_port = 2000;
    origin.to = address(phone);
    origin.to_port = 50000;
    std::string text = R"({"layers": {"skinny": {"skinny.messageId": ")" + std::to_string(kind) + "\"";
    std::size_t begin = 0;
    while (begin < fields.size()) { // name=value,
        const std::size_t equals = fields.find('=', begin);
        const std::size_t end = fields.find(',', equals);
        text += ", \"skinny." + fields.substr(begin, equals - begin) + "\": \""
                + fields.substr(equals + 1, end - equals - 1) + "\"";
        begin = end == std::string::npos ? fields.size() : end + 1;
    }
    text += "}}}";
    check(read_messages(text.data(), text.size(), origin, take_sccp, &watching), "JSON: " + text);
}

void settle_at(sccp_watching &watching, int64_t second)
{
    watching.clock.up_time = static_cast<uint32_t>(second * 100);
    for (const int32_t interface : {1, 2})
        watching.clock.interfaces[interface] = {second * 1000000, watching.clock.up_time};
    settle_calls(watching.tracker, watching.monitor, watching.follower, watching.clock);
}

constexpr int state_message = 0x111;
constexpr int info_message = 0x8f;
constexpr int place_message = 0x22;
constexpr int send_message = 0x8a;

std::string state(int value, int reference)
{
    return "callState=" + std::to_string(value)
           + ",lineInstance=1,callReference=" + std::to_string(reference);
}

std::string info(int direction, int reference)
{
    return "callingParty=2001,callingPartyName=Alice,calledParty=2002,calledPartyName=Bob,callReference="
           + std::to_string(reference) + ",callType=" + std::to_string(direction);
}

std::string sends_to(int host, int port, int reference)
{
    return "remoteIpAddr.ipv4=10.0.0." + std::to_string(host) + ",remotePortNumber=" + std::to_string(port)
           + ",callReference=" + std::to_string(reference);
}

/** Phones 11 and 12 speak from second 10 on, on an interface. */
void begin_call(sccp_watching &watching, int32_t interface)
{
    tell(watching, interface, 10, 11, info_message, info(2, 100));
    tell(watching, interface, 10, 12, info_message, info(1, 200));
    tell(watching, interface, 11, 11, send_message, sends_to(12, 18002, 100));
    tell(watching, interface, 11, 12, send_message, sends_to(11, 18000, 200));
}

std::size_t calls_over(const sccp_watching &watching)
{
    return watching.monitor.sums.calls;
}

void test_running_call()
{
    sccp_watching watching;
    begin_call(watching, 1);
    settle_at(watching, 12);
    check(watching.monitor.calls.size() == 1 && calls_over(watching) == 0, "a call that runs has a row");
    check(watching.monitor.calls.begin()->second.qual.call_status == 2, "that says that it was answered");
    check(
        watching.monitor.calls.begin()->second.qual.end_time == 0
            && watching.monitor.calls.begin()->second.callee_qual.end_time == 0,
        "and no end");
    tell(watching, 1, 20, 11, state_message, state(2, 100));
    tell(watching, 1, 20, 12, state_message, state(2, 200));
    settle_at(watching, 21);
    check(calls_over(watching) == 0, "what comes late still counts");
    settle_at(watching, 22);
    check(
        watching.monitor.calls.size() == 1 && calls_over(watching) == 1, "a call that is over keeps its row");
    const rmonrpc_sccp_call_row_t &row = watching.monitor.calls.begin()->second;
    check(row.qual.start_time == 1000 && row.qual.end_time == 2000, "and has its times");
    check(
        std::string(row.common.phone_num.value) == "2001"
            && std::string(row.callee_common.phone_owner.value) == "Bob",
        "and its parties");
    tell(watching, 1, 23, 11, info_message, info(2, 100));
    settle_at(watching, 30);
    check(calls_over(watching) == 1, "what comes behind the end begins no call");
}

void test_two_interfaces()
{
    sccp_watching watching;
    for (const int32_t interface : {1, 2})
        begin_call(watching, interface);
    for (const int32_t interface : {1, 2})
        for (const auto &[phone, reference] : {std::pair{11, 100}, std::pair{12, 200}})
            tell(watching, interface, 20, static_cast<uint8_t>(phone), state_message, state(2, reference));
    settle_at(watching, 30);
    check(
        calls_over(watching) == 1 && watching.monitor.calls.size() == 1,
        "a call that two interfaces see counts once");
}

void test_call_without_an_end()
{
    sccp_watching watching;
    begin_call(watching, 1);
    settle_at(watching, 300);
    check(calls_over(watching) == 0, "a call of which nothing is heard goes on for a while");
    settle_at(watching, 320);
    settle_at(watching, 330);
    check(calls_over(watching) == 1, "and is over then");
    check(watching.monitor.calls.begin()->second.qual.call_status == 3, "which its row says");
}

void test_other_side_elsewhere()
{
    sccp_watching watching;
    tell(watching, 1, 10, 12, info_message, info(1, 200));
    tell(watching, 1, 11, 12, place_message, "ipAddr.ipv4=10.0.0.12,portNumber=18002,callReference=200");
    tell(watching, 1, 11, 12, send_message, sends_to(99, 30000, 200));
    tell(watching, 1, 20, 12, state_message, state(2, 200));
    settle_at(watching, 30);
    check(calls_over(watching) == 1 && watching.monitor.phones.size() == 1, "who is elsewhere is no phone");
    const rmonrpc_sccp_call_row_t &row = watching.monitor.calls.begin()->second;
    check(
        row.common.phone_ipAddr.value[3] == 99 && std::string(row.common.phone_num.value) == "2001"
            && row.callee_common.phone_ipAddr.value[3] == 12,
        "but is the call's party");
}

void test_transfer()
{
    sccp_watching watching;
    begin_call(watching, 1);
    settle_at(watching, 12);
    // The caller leaves, and the called phone goes on with another one.
    tell(watching, 1, 20, 11, state_message, state(2, 100));
    tell(watching, 1, 20, 12, send_message, sends_to(13, 18004, 200));
    tell(watching, 1, 20, 13, info_message, info(2, 300));
    tell(watching, 1, 20, 13, place_message, "ipAddr.ipv4=10.0.0.13,portNumber=18004,callReference=300");
    settle_at(watching, 30);
    settle_at(watching, 31);
    check(
        calls_over(watching) == 1 && watching.monitor.calls.size() == 2, "each leg of a transfer is a call");
    tell(watching, 1, 40, 12, state_message, state(2, 200));
    tell(watching, 1, 40, 13, state_message, state(2, 300));
    settle_at(watching, 50);
    check(calls_over(watching) == 2 && watching.monitor.calls.size() == 2, "and ends by itself");
}

void test_flood()
{
    sccp_watching watching;
    for (uint32_t i = 0; i < 3 * max_sccp_phones; i++) {
        voice_message origin{};
        origin.interface = 1;
        origin.from = address(1);
        origin.from_port = 2000;
        origin.to = address(7);
        origin.to_port = static_cast<uint16_t>(10000 + i);
        const std::string text =
            R"({"layers": {"skinny": {"skinny.messageId": "138", "skinny.callReference": ")"
            + std::to_string(i + 1)
            + R"(", "skinny.remoteIpAddr.ipv4": "10.0.0.9", "skinny.remotePortNumber": "9"}}})";
        read_messages(text.data(), text.size(), origin, take_sccp, &watching);
    }
    check(
        watching.tracker.sessions.entries.size() == max_sccp_phones
            && watching.follower.receivers.size() <= 1,
        "forged phones grow nothing");
    tell(watching, 1, 10, 11, state_message, std::string("callState=99999999999999999999,callReference=1"));
    tell(watching, 1, 10, 11, info_message, "callingParty=" + std::string(5000, 'x') + ",callReference=1");
    settle_at(watching, 11);
    check(calls_over(watching) == 0, "numbers and names of any length are taken");
}

void test_texts()
{
    char field[8];
    put_text(field, sizeof field, "abc\tdef\x1b[0m");
    check(std::string(field) == "abc?def", "what a terminal obeys is not shown");
    put_text(field, sizeof field, "abcde\xc3\xa4\xc3\xb6");
    check(std::string(field) == "abcde\xc3\xa4", "a text is cut between characters");
    put_text(field, sizeof field, "abcdef\xc3\xa4");
    check(std::string(field) == "abcdef", "and not inside one");
}

} // namespace

void test_voice()
{
    std::signal(SIGPIPE, SIG_IGN); // as the agent does: children die
    const std::string program = find_decoder();
    check(!program.empty(), "the decoder is installed");
    if (!program.empty())
        test_real_decoder(program);
    test_rights();
    test_garbage();
    test_more_than_asked();
    test_endless();
    test_deaths();
    test_restarts_are_rare();
    test_silence();
    test_nothing_there();
    test_full_queue();
    test_hangup();
    test_closed_descriptors();
    test_lost_launcher();
    test_running_call();
    test_two_interfaces();
    test_call_without_an_end();
    test_other_side_elsewhere();
    test_transfer();
    test_flood();
    test_texts();
}
