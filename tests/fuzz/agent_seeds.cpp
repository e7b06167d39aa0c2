// SPDX-License-Identifier: MIT
/*
 * Writes inputs for the fuzzers of the bundled agent to begin with: calls of
 * each procedure, frames, NetFlow packets, and the files that it reads.
 *
 * usage: fuzz-agent-seeds DIR-FOR-CALLS DIR-FOR-FILES DIR-FOR-VOICE SCENARIO
 */
#include "agent/core/settings_file.h"
#include "agent/core/state.h"
#include "agent/rpc/procedures.h"
#include "tests/fuzz/agent.h"
#include "tests/fuzz/common.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using bytes = std::vector<uint8_t>;

/** Bytes from a text of hexadecimal digits; blanks are for the reader. */
bytes hex(std::string_view text)
{
    bytes made;
    std::string digits;
    for (const char c : text)
        if (c != ' ')
            digits += c;
    for (size_t i = 0; i + 1 < digits.size(); i += 2)
        made.push_back(static_cast<uint8_t>(std::strtoul(digits.substr(i, 2).c_str(), nullptr, 16)));
    return made;
}

void little(bytes &to, uint64_t value, int octets)
{
    for (int i = 0; i < octets; i++)
        to.push_back(static_cast<uint8_t>(value >> 8 * i));
}

/** A step of agent_calls.cpp. */
bytes step(uint8_t what, uint8_t number, const bytes &given)
{
    return joined(
        {what, number, static_cast<uint8_t>(given.size() >> 8), static_cast<uint8_t>(given.size())}, given);
}

const std::string macs = "020000000002 020000000001 ";
const std::string ip4 = "4500 0040 0000 0000 4006 0000 0a000001 0a000002 ";
const std::string ip6 =
    "60000000 0030 11 40 fd000000000000000000000000000001 fd000000000000000000000000000002 ";

/** A list, however long: a line or two for each frame. */
std::vector<bytes> frames()
{
    std::vector<bytes> all;
    for (const std::string &frame : {
             // A connection: opened, asked, answered, closed.
             macs + "0800 " + ip4 + "9c40 0050 00000001 00000000 5002 2000 0000 0000",
             macs + "0800 " + ip4 + "9c40 0050 00000002 00000001 5018 2000 0000 0000 474554",
             macs
                 + "0800 4500 0040 0000 0000 4006 0000 0a000002 0a000001 0050 9c40 00000001 00000005 5018 "
                   "2000 0000 0000 4f4b",
             // A name asked for and told.
             macs
                 + "0800 4500 0040 0000 0000 4011 0000 0a000001 0a000002 9c40 0035 002c 0000 1234 0100 0001 "
                   "0000",
             macs
                 + "0800 4500 0040 0000 0000 4011 0000 0a000002 0a000001 0035 9c40 002c 0000 1234 8180 0001 "
                   "0001",
             // Options, a later fragment, SCTP, a tag in a tag.
             macs + "0800 46b8 0030 0000 20ff 4011 0000 0a000001 0a000003 01010101 0035 0035 0010 0000",
             macs + "0800 4500 0030 0000 0001 4084 0000 0a000001 0a000003 13c4 13c4 00000001 00000000 00",
             macs + "88a8 2005 8100 6007 0800 " + ip4 + "0016 9c40",
             // Extension headers: options, routing, fragment, authentication.
             macs + "86dd " + ip6 + "0035 9c40 0030 0000 1234 8180",
             macs
                 + "86dd 6b800000 0030 00 40 fd000000000000000000000000000001 "
                   "ff020000000000000000000000000001 "
                   "2b00 0104 00000000 2c00 0400 00000000 3300 0008 00000001 1100 0000 00000000 0000 0000 "
                   "13c4 13c4 0010",
             // A neighbour's advertisement.
             macs
                 + "86dd 60000000 0020 3a ff fd000000000000000000000000000001 "
                   "ff020000000000000000000000000001 "
                   "8800 0000 20000000 fd000000000000000000000000000001 0201 020000000001",
             std::string("ffffffffffff 020000000001 0806 0001 0800 0604 0001 020000000001 0a000001 "
                         "000000000000 0a000002"),
             macs + "0026 424203 00000000",
             macs + "0040 aaaa03 000000 0800 " + ip4,
             macs + "9000 0000",
         })
        all.push_back(hex(frame));
    return all;
}

bytes capture()
{
    bytes file(empty_capture().begin(), empty_capture().end());
    uint32_t time = 1;
    for (const bytes &frame : frames()) {
        for (const size_t value : {size_t{time++}, size_t{1000}, frame.size(), frame.size() + 20})
            little(file, value, 4);
        file = joined(file, frame);
    }
    return file;
}

void block(bytes &file, uint32_t type, const bytes &body)
{
    little(file, type, 4);
    const size_t length = 12 + (body.size() + 3) / 4 * 4;
    little(file, length, 4);
    file = joined(file, body);
    file.resize(file.size() + (-body.size() & 3));
    little(file, length, 4);
}

bytes new_capture()
{
    bytes file;
    block(file, 0x0a0d0d0a, hex("4d3c2b1a 0100 0000 ffffffffffffffff"));
    block(file, 1, hex("0100 0000 00000400 0900 0100 03 000000 0e00 0800 0500000000000000 00000000"));
    uint64_t time = 1;
    for (const bytes &frame : frames()) {
        bytes body(4);
        little(body, time >> 32, 4);
        little(body, time++ & UINT32_MAX, 4);
        little(body, frame.size(), 4);
        little(body, frame.size(), 4);
        block(file, 6, joined(body, frame));
    }
    return file;
}

/** What an agent with all groups at work keeps. */
std::string settings()
{
    memory_file capture;
    fill(capture, empty_capture());
    const std::string directory =
        std::filesystem::temp_directory_path() / ("rmon-seeds-" + std::to_string(rand()));
    started_agent started;
    if (!start_agent(started, capture.path).empty() || !open_state(started.agent, directory).empty())
        broken("the agent starts");
    start_groups(started.agent, 100);
    started.agent.state.changed = true;
    finish_state(started.agent);
    stop_agent(started);
    std::filesystem::remove_all(directory);
    return started.agent.state.written;
}

bytes bytes_of(std::string_view text)
{
    return {text.begin(), text.end()};
}

/** The lines between the first one and the last one, without check values. */
std::vector<std::string> unchecked_lines(const std::string &settings)
{
    constexpr size_t check = sizeof " 01234567" - 1;
    std::vector<std::string> lines;
    std::istringstream from(settings);
    for (std::string line; std::getline(from, line);)
        lines.push_back(line.substr(0, line.size() - check));
    return {lines.begin() + 1, lines.end() - 1};
}

/** Has the records that the journal may take away. */
bool has_keys(std::string_view name)
{
    return std::ranges::any_of(
        state_parts(), [&](const state_part &part) { return part.key && part.name == name; });
}

/** Settings, then everything written again, then what can go away taken away: as agent_files.cpp reads it. */
std::string with_journal(const std::vector<std::string> &lines)
{
    std::string text;
    for (int block = 0; block < 2; block++) {
        for (const std::string &line : lines)
            text += line + '\n';
        text += '\n';
    }
    for (const std::string &line : lines)
        if (const size_t space = line.find(' '); space != line.npos && has_keys(line.substr(0, space)))
            text += gone_mark + line + '\n';
    return text;
}

/** In the form without check values. */
std::string old_settings(const std::vector<std::string> &lines)
{
    std::string text = "rmon-agent settings 1\n";
    for (const std::string &line : lines)
        text += line + '\n';
    return text + "end\n";
}

void write_calls(const std::string &directory)
{
    const auto served = served_procedures();
    for (size_t i = 0; i < served.size(); i++)
        for (const uint8_t unit : {0, 1, 2})
            write_file(
                directory + "/" + std::to_string(served[i].number) + "-" + std::to_string(unit),
                step(
                    unit == 2 ? 7 : 0, static_cast<uint8_t>(i),
                    cut_off(repeating(*served[i].argument, unit))));
    bytes all;
    size_t number = 0;
    for (const bytes &frame : frames()) {
        write_file(directory + "/frame-" + std::to_string(number++), step(3, 1, frame));
        all = joined(all, step(4, 1, frame));
    }
    write_file(directory + "/frames", joined(all, step(11, 0, {})));
    const bytes version_5 =
        joined(hex("0005 0001 00000000 00000000 00000000 00000000 00000000"), bytes(48, 2));
    const bytes version_9 = hex("0009 0002 00000000 00000000 00000001 00000000 "
                                "0000 0010 0100 0002 000a 0002 000e 0004 0100 000c 0001 00000002 0000");
    write_file(directory + "/netflow", joined(step(5, 0, version_5), step(5, 0, version_9)));
    const bytes call = hex(
        "80000028 00000007 00000000 00000002 0001869f 00000001 00000001 00000000 00000000 00000000 00000000");
    write_file(directory + "/client", joined(joined(step(6, 1, call), step(9, 1, {})), step(10, 1, {})));
    write_file(directory + "/deaf", joined(step(248, 1, {}), step(9, 0, {})));
}

/** A step of agent_voice.cpp: what the decoder printed for a frame between two ends, of its addresses and
 * ports. */
bytes printed(const bytes &ends, const std::string &text)
{
    const auto size = static_cast<uint16_t>(text.size());
    return joined(
        joined({2, 0}, ends),
        joined({static_cast<uint8_t>(size >> 8), static_cast<uint8_t>(size)}, {text.begin(), text.end()}));
}

/** Of call signalling: its header and its body. */
std::string signalled(const std::string &header, const std::string &body)
{
    return R"({"layers":{"q931":{"q931.call_ref":"00:01",)" + header + R"(},"h225":{)" + body + "}}}";
}

void write_voice(const std::string &directory)
{
    bytes stream;
    for (const uint8_t number : {1, 2, 3}) {
        bytes packet =
            hex(macs
                + "0800 4500 0028 0000 0000 4011 0000 0a000001 0a000002 4000 4000 0014 0000 "
                  "8000 0000 00000000 00000007");
        packet[45] = number;
        packet[49] = static_cast<uint8_t>(number * 160);
        stream = joined(stream, joined({3, 0, 0, static_cast<uint8_t>(packet.size())}, packet));
    }
    // Who asks for the streams to 10.0.0.2, port 16384.
    write_file(directory + "/stream", joined(stream, {7, 2, 6}));

    const bytes by_caller = {1, 2, 5, 1};
    const bytes by_callee = {2, 1, 1, 5};
    bytes call = printed(
        by_caller, signalled(
                       R"("q931.call_ref_flag":"0","q931.message_type":"0x05")",
                       R"("h225.sourceAddress_tree":{"h225.dialledDigits":"1","h225.h323_ID":"x"})"));
    call = joined(
        call, printed(
                  by_callee,
                  signalled(
                      R"("q931.call_ref_flag":"1","q931.message_type":"0x07")",
                      R"("h225.h245Address_tree":{"h225.h245Ip":"10.0.0.2","h225.h245IpPort":"30000"})")));
    call = joined(
        call,
        printed(
            {2, 1, 5, 6},
            R"({"layers":{"h245":{"h245.openLogicalChannelAck_element":{"h245.forwardLogicalChannelNumber":"1",)"
            R"("h245.mediaChannel_tree":{"h245.ip4_network":"10.0.0.2","h245.tsapIdentifier":"16384"}}}}})"));
    call = joined(joined(call, stream), {6});
    call = joined(
        call,
        printed(
            by_caller, signalled(
                           R"("q931.call_ref_flag":"0","q931.message_type":"0x5a","q931.cause_value":"16")",
                           R"("h225.guid":"0a1b2c3d-4e5f-6071-8293-a4b5c6d7e8f9")")));
    write_file(directory + "/h323", joined(call, {6}));
    write_file(
        directory + "/sccp",
        printed(
            {1, 2, 0, 6},
            R"({"layers":{"skinny":[{"skinny.messageId":"0x00000111","skinny.callState":"3","skinny.callReference":"1"},)"
            R"({"skinny.messageId":"0x0000008a","skinny.callReference":"1","skinny.remotePortNumber":"16384"}]}})"));
    write_file(
        directory + "/mgcp",
        printed(
            {1, 2, 4, 3},
            R"({"layers":{"mgcp":{"mgcp.req.verb":"CRCX","mgcp.transid":"1","mgcp.req.endpoint":"a@b",)"
            R"("mgcp.param.callid":"1"},"sdp":{"sdp.media.port":"16384"}}})"));
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 5)
        return 1;
    write_calls(argv[1]);
    const std::string directory = argv[2];
    write_file(directory + "/capture", joined({0}, capture()));
    write_file(directory + "/new-capture", joined({0}, new_capture()));
    write_voice(argv[3]);
    std::ifstream scenario(argv[4], std::ios::binary);
    write_file(directory + "/scenario", joined({1}, {std::istreambuf_iterator<char>(scenario), {}}));
    const std::string kept = settings();
    const std::vector<std::string> lines = unchecked_lines(kept);
    write_file(directory + "/settings", joined({2}, bytes_of(kept)));
    write_file(directory + "/old-settings", joined({2}, bytes_of(old_settings(lines))));
    write_file(directory + "/journal", joined({3, 0}, bytes_of(with_journal(lines))));
    return 0;
}
