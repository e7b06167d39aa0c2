// SPDX-License-Identifier: MIT
/* The decoder of voice signalling, with the real child and with ones that misbehave. */
#include "tests/native/check.h"
#include "tests/native/voice_frames.h"

#include "agent/voice/decoder.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

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

void decode(decoding &opened, int64_t time, const octets &bytes, uint32_t round = 0)
{
    frame seen;
    decode_frame(
        seen, bytes.data(), static_cast<uint32_t>(bytes.size()), static_cast<uint32_t>(bytes.size() + 4),
        time);
    decode_signalling(opened.decoder, 7, seen, 0, round);
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

/** A file that is read again says the same again, with the same numbers of its connections. */
void test_rounds(const std::string &program)
{
    decoding opened;
    open_decoding(opened, program);
    for (const uint32_t round : {0, 1, 2, 20}) {
        decode(opened, 1000000 + round, tcp_frame(1, 2000, 11, 50000, 1, state_of_call(100)), round);
        decode(opened, 2000000 + round, tcp_frame(1, 2000, 11, 50000, 41, state_of_call(101)), round);
    }
    wait_until_decoded(opened);
    std::vector<std::string> expected;
    for (const int round : {0, 1, 2, 20})
        for (const int which : {0, 1})
            expected.push_back(
                "7 " + std::to_string((which + 1) * 1000000 + round) + " 1:2000 11:50000 sccp 273 call "
                + std::to_string(100 + which) + " to ?");
    check_lines(opened.said, expected, "what is said in each round");
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

} // namespace

void test_decoder()
{
    std::signal(SIGPIPE, SIG_IGN); // as the agent does: children die
    const std::string program = find_decoder();
    check(!program.empty(), "the decoder is installed");
    if (!program.empty()) {
        test_real_decoder(program);
        test_rounds(program);
    }
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
}
