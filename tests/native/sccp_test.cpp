// SPDX-License-Identifier: MIT
/* Phones and calls of SCCP, from messages in the form in which the decoder prints them. */
#include "tests/native/check.h"

#include "agent/voice/sccp_calls.h"

#include <string>

namespace {

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

void test_reference_again()
{
    sccp_watching watching;
    begin_call(watching, 1);
    tell(watching, 1, 20, 11, state_message, state(2, 100));
    tell(watching, 1, 20, 12, state_message, state(2, 200));
    settle_at(watching, 30);
    tell(watching, 1, 319, 11, info_message, info(2, 100));
    check(
        watching.tracker.sessions.entries.front().second.legs.empty(),
        "what comes late is of the call before");
    tell(watching, 1, 321, 11, info_message, info(2, 100));
    tell(watching, 1, 330, 11, state_message, state(2, 100));
    settle_at(watching, 340);
    check(calls_over(watching) == 2, "a reference names another call long after the first one");
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

void test_sccp()
{
    test_running_call();
    test_reference_again();
    test_two_interfaces();
    test_call_without_an_end();
    test_other_side_elsewhere();
    test_transfer();
    test_flood();
    test_texts();
}
