// SPDX-License-Identifier: MIT
/*
 * Phones and calls of H.323, from messages in the form in which the decoder
 * prints them, and packets of RTP. The fields that a message does not need are left out.
 */
#include "tests/native/check.h"

#include "agent/voice/h323_calls.h"

#include <string>
#include <vector>

namespace {

using octets = std::vector<uint8_t>;

constexpr int64_t start = 1600000000000000; // microseconds
constexpr int64_t second = 1000000;

net_endpoint at(uint8_t host, uint16_t port)
{
    const uint8_t bytes[] = {10, 3, 0, host};
    return {make_net_address(bytes, 4), port};
}

const net_endpoint caller = at(1, 30000);
const net_endpoint callee = at(2, 1720);
const net_endpoint gatekeeper = at(250, 1719);

struct watched {
    h323_tracker tracker;
    h323_monitor monitor;
    rtp_follower follower;
    voice_clock clock;

    watched()
    {
        monitor.settings.enable = 1;
        clock.up_time = 100000;
    }
};

/* ---- messages ---------------------------------------------------------------------------- */

std::string field(const std::string &name, const std::string &value)
{
    return "\"" + name + "\":\"" + value + "\"";
}

std::string part(const std::string &name, const std::vector<std::string> &fields)
{
    std::string text;
    for (const std::string &one : fields)
        if (!one.empty())
            text += (text.empty() ? "" : ",") + one;
    return "\"" + name + "\":{" + text + "}";
}

void say(
    watched &here,
    const net_endpoint &from,
    const net_endpoint &to,
    int64_t time,
    const std::string &layers,
    int32_t interface = 1)
{
    voice_message frame{};
    frame.interface = interface;
    frame.time = time;
    frame.up_time = here.clock.up_time;
    frame.from = from.address;
    frame.to = to.address;
    frame.from_port = from.port;
    frame.to_port = to.port;
    const std::string text = "{" + part("layers", {layers}) + "}";
    const bool read = read_messages(
        text.data(), text.size(), frame,
        [](void *context, const voice_message &message) {
            auto &to_watch = *static_cast<watched *>(context);
            take_message(to_watch.tracker, to_watch.monitor, to_watch.follower, message);
        },
        &here);
    check(read, "a message can be read");
}

std::string ip(const std::string &name, const net_endpoint &place)
{
    return part(
        name,
        {field("h225.ipV4", text_of(place.address)), field("h225.ipV4_port", std::to_string(place.port))});
}

std::string media(const std::string &name, const net_endpoint &place)
{
    return part(
        name, {field("h245.ip4_network", text_of(place.address)),
               field("h245.tsapIdentifier", std::to_string(place.port))});
}

std::string aliases(const std::string &name, const std::string &number, const std::string &alias)
{
    return part(
        name, {part("Item 0", {field("h225.dialledDigits", number)}),
               part("Item 1", {field("h225.h323_ID", alias)})});
}

std::string ras(uint32_t kind, uint32_t number, const std::vector<std::string> &fields)
{
    std::vector<std::string> all{
        field("h225.RasMessage", std::to_string(kind)), field("h225.requestSeqNum", std::to_string(number)),
        field("h225.protocolIdentifier", "0.0.8.2250.0.5")};
    all.insert(all.end(), fields.begin(), fields.end());
    return part("h225", all);
}

const std::string identifier = "0a1b2c3d-4e5f-6071-8293-a4b5c6d7e8f9";

/** A message of call signalling: by the caller or the callee, which the flag of the reference tells. */
std::string signalling(
    const std::string &type,
    bool by_caller,
    uint32_t reference,
    const std::vector<std::string> &fields = {},
    const std::string &more = "")
{
    char digits[16];
    snprintf(digits, sizeof digits, "%02x:%02x", reference >> 8, reference & 255);
    const std::string header = part(
        "q931", {field("q931.call_ref_flag", by_caller ? "0" : "1"), field("q931.call_ref", digits),
                 field("q931.message_type", type), more});
    std::vector<std::string> body{
        part("h225.callIdentifier_element", {field("h225.guid", identifier)}),
        field("h225.productId", by_caller ? "Desk" : "Wall"),
        field("h225.versionId", by_caller ? "1.0" : "2.0")};
    body.insert(body.end(), fields.begin(), fields.end());
    return header + "," + part("h225", body);
}

std::string setup_message(uint32_t reference, const std::vector<std::string> &more = {})
{
    std::vector<std::string> fields{
        field("h225.protocolIdentifier", "0.0.8.2250.0.4"),
        aliases("h225.sourceAddress_tree", "3000", "Reception"),
        aliases("h225.destinationAddress_tree", "3001", "Workshop"),
        ip("h225.sourceCallSignalAddress_tree", at(1, 1720)),
        field("h225.conferenceID", "00112233-4455-6677-8899-aabbccddeeff"),
        field("h225.conferenceGoal", "1"),
        field("h225.callType", "2")};
    fields.insert(fields.end(), more.begin(), more.end());
    return signalling("0x05", true, reference, fields);
}

std::string
parameters(const std::string &name, const std::string &data, const std::vector<std::string> &addresses)
{
    std::vector<std::string> all{
        part("h245.dataType_tree", {field(data, "3")}), field("h245.sessionID", "1")};
    all.insert(all.end(), addresses.begin(), addresses.end());
    return part(name, all);
}

std::string
open_message(uint32_t number, const net_endpoint &reports, const std::string &data = "h245.audioData")
{
    return part(
        "h245", {part(
                    "h245.openLogicalChannel_element",
                    {field("h245.forwardLogicalChannelNumber", std::to_string(number)),
                     parameters(
                         "h245.forwardLogicalChannelParameters_element", data,
                         {media("h245.mediaControlChannel_tree", reports)})})});
}

std::string ack_message(uint32_t number, const net_endpoint &place, const net_endpoint &reports)
{
    return part(
        "h245",
        {part(
            "h245.openLogicalChannelAck_element",
            {field("h245.forwardLogicalChannelNumber", std::to_string(number)),
             media("h245.mediaChannel_tree", place), media("h245.mediaControlChannel_tree", reports)})});
}

const std::string release = field("q931.cause_value", "16");

/** Packets of 20 ms, from a time on, of which every tenth is lost: of 100 they are those that end with 5. */
void speak(watched &here, const net_endpoint &from, const net_endpoint &to, int64_t time, uint32_t ssrc)
{
    for (uint32_t i = 0; i < 100; i++) {
        if (i % 10 == 5)
            continue;
        octets bytes{0x80,
                     0,
                     0,
                     static_cast<uint8_t>(i),
                     0,
                     0,
                     static_cast<uint8_t>(i * 160 >> 8),
                     static_cast<uint8_t>(i * 160)};
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes.push_back(static_cast<uint8_t>(ssrc >> shift));
        bytes.resize(172);
        frame seen;
        seen.time = time + i * 20000;
        seen.ip_protocol = ip_udp;
        seen.from = from.address;
        seen.to = to.address;
        seen.from_port = from.port;
        seen.to_port = to.port;
        seen.payload = bytes.data();
        seen.payload_length = seen.payload_on_wire = static_cast<uint32_t>(bytes.size());
        follow(here.follower, 1, seen);
    }
}

/* ---- checks ---------------------------------------------------------------------------------- */

template <class Octets> void check_place(
    const Octets &field_octets,
    uint32_t length,
    uint32_t port,
    const net_endpoint &right,
    const std::string &what)
{
    check(length == 4 && std::memcmp(field_octets.value, right.address.bytes, 4) == 0, what + ": address");
    check(port == right.port, what + ": port");
}

/** The only call in the table. */
rmonrpc_h323_call_row_t only_call(const watched &here, const std::string &what)
{
    check(here.monitor.calls.size() == 1, what + ": one call");
    return here.monitor.calls.empty() ? rmonrpc_h323_call_row_t{} : here.monitor.calls.begin()->second;
}

void settle(watched &here, uint32_t hundredths = 0)
{
    here.clock.up_time += hundredths;
    settle_calls(here.tracker, here.monitor, here.follower, here.clock);
}

const net_endpoint caller_media = at(1, 16384);
const net_endpoint caller_reports = at(1, 16385);
const net_endpoint callee_media = at(2, 16386);
const net_endpoint callee_reports = at(2, 16387);

void test_registration()
{
    watched here;
    const net_endpoint phone = at(1, 1719);
    const auto request = [&](uint32_t number, const std::string &names) {
        say(here, phone, gatekeeper, start,
            ras(3, number, {ip("h225.callSignalAddress_tree", at(1, 1720)), names}));
    };
    request(7, aliases("h225.terminalAlias_tree", "3000", "Reception"));
    say(here, gatekeeper, phone, start, ras(5, 7, {}));
    check(here.monitor.phones.empty(), "a phone that is refused is none");
    say(here, gatekeeper, phone, start, ras(4, 8, {}));
    check(here.monitor.phones.empty(), "nor is one whose request was another one");
    say(here, gatekeeper, phone, start, ras(4, 7, {}));
    check(here.monitor.phones.size() == 1, "a phone that registered");
    request(9, "");
    say(here, gatekeeper, phone, start, ras(4, 9, {}));
    check(here.monitor.phones.size() == 1, "a phone that registered again");
    if (here.monitor.phones.empty())
        return;
    const rmonrpc_h323_common_row_t &row = here.monitor.phones.begin()->second.row.common;
    check_place(
        row.forward.q931_ipAddr, row.forward.q931_ipAddr_length, row.forward.q931_port, at(1, 1720),
        "a phone");
    check(std::string(row.forward.num.value) == "3000", "its number");
    check(std::string(row.forward.alias.value) == "Reception", "its name");
    check(row.vers == 5, "its version");
}

/** A call with a control connection of its own, from setup to release. */
void make_call(watched &here, int64_t begin, uint32_t reference)
{
    const net_endpoint control = at(2, 20000);
    const net_endpoint other_end = at(1, 30001);
    say(here, caller, callee, begin, setup_message(reference));
    say(here, callee, caller, begin + second, signalling("0x01", false, reference));
    say(here, callee, caller, begin + 2 * second,
        signalling(
            "0x07", false, reference,
            {part(
                "h225.h245Address_tree",
                {field("h225.h245Ip", "10.3.0.2"), field("h225.h245IpPort", "20000")})}));
    say(here, other_end, control, begin + 2 * second, open_message(1, caller_reports));
    say(here, other_end, control, begin + 2 * second, open_message(3, at(1, 17001), "h245.videoData"));
    say(here, control, other_end, begin + 2 * second, ack_message(1, callee_media, callee_reports));
    say(here, control, other_end, begin + 2 * second, ack_message(3, at(2, 17000), at(2, 17001)));
    say(here, control, other_end, begin + 2 * second, open_message(2, callee_reports));
    say(here, other_end, control, begin + 2 * second, ack_message(2, caller_media, caller_reports));
    speak(here, caller_media, callee_media, begin + 2 * second, 0x80000001 + reference);
    speak(here, callee_media, caller_media, begin + 2 * second, 0x90000001 + reference);
    say(here, caller, callee, begin + 5 * second, signalling("0x5a", true, reference, {}, release));
}

void check_direction(
    const rmonrpc_h323_media_t &way,
    const rmonrpc_h323_quality_t &quality,
    const net_endpoint &to,
    const net_endpoint &sender_reports,
    const net_endpoint &receiver_reports,
    const std::string &what)
{
    check_place(way.rtp_ipAddr, way.rtp_ipAddr_length, way.rtp_port, to, what + " media");
    check_place(
        way.rtcp_sr_ipAddr, way.rtcp_sr_ipAddr_length, way.rtcp_sr_port, sender_reports,
        what + " sender reports");
    check_place(
        way.rtcp_rr_ipAddr, way.rtcp_rr_ipAddr_length, way.rtcp_rr_port, receiver_reports,
        what + " receiver reports");
    check(way.codec == 3, what + " codec");
    // Of 100 packets, of which the last one came, 10 are lost: 25/256.
    check(quality.sr_pkt_sent == 100 && quality.sr_pkt_lost == 10, what + " packets");
    check(quality.sr_oct_sent == 90 * 160, what + " octets");
    check(quality.sr_fraction_lost == 25 && quality.sr_jitter == 0, what + " losses and jitter");
}

void test_call()
{
    watched here;
    make_call(here, start, 7);
    settle(here);
    check(here.monitor.sums.calls == 0, "a call is summed up when it has settled");
    rmonrpc_h323_call_row_t row = only_call(here, "a call before it has settled");
    check(row.qual.end_time == 0, "it has no end yet");
    settle(here, 200);
    check(here.monitor.sums.calls == 1 && here.tracker.calls.entries.empty(), "a call that has settled");
    check(here.follower.receivers.empty() && here.tracker.controls.entries.empty(), "nothing of it is left");

    row = only_call(here, "a call");
    const rmonrpc_h323_qual_row_t &qual = row.qual;
    check(row.common.vers == 4, "version");
    check_place(qual.f.q931_ipAddr, qual.f.q931_ipAddr_length, qual.f.q931_port, at(1, 1720), "the caller");
    check_place(
        qual.reverse.q931_ipAddr, qual.reverse.q931_ipAddr_length, qual.reverse.q931_port, callee,
        "the callee");
    check(
        std::string(qual.f.num.value) == "3000" && std::string(qual.f.alias.value) == "Reception",
        "who calls");
    check(
        std::string(qual.reverse.num.value) == "3001" && std::string(qual.reverse.alias.value) == "Workshop",
        "who is called");
    check(qual.call_state == 4 && qual.call_status == 16, "state and cause");
    check(
        qual.call_reference == 7 && qual.conference_goal == 1 && qual.call_type == 2,
        "reference, goal and type");
    const uint8_t right[] = {0x0a, 0x1b, 0x2c, 0x3d, 0x4e, 0x5f, 0x60, 0x71,
                             0x82, 0x93, 0xa4, 0xb5, 0xc6, 0xd7, 0xe8, 0xf9};
    check(std::memcmp(qual.call_id.value, right, 16) == 0, "call identifier");
    check(
        qual.conference_id.value[1] == 0x11 && qual.conference_id.value[15] == 0xff, "conference identifier");
    check(qual.faststart == 0 && qual.tunneling == 0, "neither fast start nor tunnel");
    const auto text = [](const auto &bytes) {
        return std::string(reinterpret_cast<const char *>(bytes.value));
    };
    check(
        text(qual.forward_product_id) == "Desk" && text(qual.forward_version_id) == "1.0",
        "the caller's product");
    check(
        text(qual.reverse_product_id) == "Wall" && text(qual.reverse_version_id) == "2.0",
        "the callee's product");
    check(qual.forward_session_id == 1 && qual.forward_logical_channel_num == 1, "the caller's channel");
    check(qual.reverse_session_id == 1 && qual.reverse_logical_channel_num == 2, "the callee's channel");
    check(qual.end_time == 100000 && qual.start_time == 100000 - 500, "it took 5 s");
    check_place(
        qual.reverse_media.h245_ipAddr, qual.reverse_media.h245_ipAddr_length, qual.reverse_media.h245_port,
        at(2, 20000), "where the callee waits for control");
    check_place(
        qual.forward_media.h245_ipAddr, qual.forward_media.h245_ipAddr_length, qual.forward_media.h245_port,
        at(1, 30001), "the caller's end of control");
    check_direction(
        qual.forward_media, qual.forward_quality, callee_media, callee_reports, caller_reports, "forward");
    check_direction(
        qual.reverse_media, qual.reverse_quality, caller_media, caller_reports, callee_reports, "reverse");
    check(qual.forward_quality.ssrc == 0x80000008 && qual.reverse_quality.ssrc == 0x90000008, "sources");
    check(qual.forward_num_samples == 1 && qual.reverse_num_samples == 1, "one sample each");
    check(here.monitor.phones.size() == 2, "both parties are phones");
    check(here.monitor.top_lost.size() == 1 && here.monitor.top_lost[0].score == 25, "the call is ranked");

    // The same again under the same reference, before the first one has settled.
    watched twice;
    make_call(twice, start, 7);
    make_call(twice, start + 6 * second, 7);
    settle(twice, 200);
    check(twice.monitor.calls.size() == 2 && twice.monitor.sums.calls == 2, "one call after the other");
}

void test_fast_start()
{
    watched here;
    const auto channel = [](uint32_t number, const std::string &which,
                            const std::vector<std::string> &places) {
        return part(
            "Item " + std::to_string(number),
            {part(
                "h245.OpenLogicalChannel_element",
                {field("h245.forwardLogicalChannelNumber", std::to_string(number)),
                 parameters(
                     "h245." + which + "LogicalChannelParameters_element", "h245.audioData", places)})});
    };
    const auto rtp = [](const net_endpoint &place) { return media("h245.mediaChannel_tree", place); };
    const auto rtcp = [](const net_endpoint &place) { return media("h245.mediaControlChannel_tree", place); };
    say(here, caller, callee, start,
        setup_message(
            9,
            {part(
                "h225.fastStart_tree", {channel(1, "forward", {rtcp(caller_reports)}),
                                        channel(2, "reverse", {rtp(caller_media), rtcp(caller_reports)})})}));
    check(here.follower.receivers.empty(), "what is offered is not in use yet");
    say(here, callee, caller, start + second,
        signalling(
            "0x07", false, 9,
            {part(
                "h225.fastStart_tree", {channel(1, "forward", {rtp(callee_media), rtcp(callee_reports)}),
                                        channel(2, "reverse", {rtcp(callee_reports)})})}));
    check(here.follower.receivers.size() == 2, "what is taken is in use");
    speak(here, caller_media, callee_media, start + second, 1);
    speak(here, callee_media, caller_media, start + second, 2);
    say(here, callee, caller, start + 4 * second, signalling("0x5a", false, 9, {}, release));
    settle(here, 200);
    const rmonrpc_h323_qual_row_t qual = only_call(here, "fast start").qual;
    check(qual.faststart == 1, "it says so");
    check(qual.forward_logical_channel_num == 1 && qual.reverse_logical_channel_num == 2, "its channels");
    check_direction(
        qual.forward_media, qual.forward_quality, callee_media, callee_reports, caller_reports,
        "fast forward");
    check_direction(
        qual.reverse_media, qual.reverse_quality, caller_media, caller_reports, callee_reports,
        "fast reverse");
}

void test_tunnel()
{
    // The capture began in the middle of the call: the first message is one of the callee, with two in its
    // tunnel.
    watched here;
    const auto tunnelled = [&](bool by_caller, int64_t time, const std::vector<std::string> &messages) {
        std::vector<std::string> items;
        for (const std::string &one : messages)
            items.push_back(part("Item " + std::to_string(items.size()), {one}));
        const net_endpoint &from = by_caller ? caller : callee;
        const net_endpoint &to = by_caller ? callee : caller;
        say(here, from, to, time,
            signalling(
                "0x62", by_caller, 5,
                {field("h225.h245Tunnelling", "1"), part("h225.h245Control_tree", items)}));
    };
    tunnelled(false, start, {ack_message(1, callee_media, callee_reports), open_message(2, callee_reports)});
    tunnelled(true, start + second, {ack_message(2, caller_media, caller_reports)});
    speak(here, callee_media, caller_media, start, 2);
    say(here, caller, callee, start + 4 * second, signalling("0x5a", true, 5, {}, release));
    settle(here, 200);
    const rmonrpc_h323_qual_row_t qual = only_call(here, "tunnel").qual;
    check(qual.tunneling == 1, "it says so");
    check_place(
        qual.f.q931_ipAddr, qual.f.q931_ipAddr_length, qual.f.q931_port, caller,
        "the caller is told by the flag");
    check_direction(
        qual.reverse_media, qual.reverse_quality, caller_media, caller_reports, callee_reports,
        "tunnel reverse");
    check_place(
        qual.forward_media.rtp_ipAddr, qual.forward_media.rtp_ipAddr_length, qual.forward_media.rtp_port,
        callee_media, "tunnel forward");
    check(qual.forward_num_samples == 0, "no media, no sample");
}

void test_ends()
{
    watched here;
    say(here, caller, callee, start, signalling("0x5a", true, 1, {}, release));
    settle(here, 200);
    check(here.monitor.calls.empty(), "the end of a call that is not known is none");

    // From another interface, and nothing else.
    say(here, caller, callee, start, setup_message(1));
    say(here, callee, caller, start + second, signalling("0x07", false, 1), 2);
    settle(here);
    check(
        only_call(here, "on two interfaces").qual.call_state == 1,
        "the other interface's messages don't count");
    settle(here, 29900);
    check(here.monitor.sums.calls == 0, "a call is quiet for 300 s");
    settle(here, 300);
    check(here.monitor.sums.calls == 1, "then it is over");
    check(only_call(here, "silence").qual.call_state == 5, "its end was not seen");

    // Media go on: it lasts.
    watched speaking;
    make_call(speaking, start, 1);
    speaking.tracker.calls.entries.front().second.ended = false;
    speak(speaking, caller_media, callee_media, start + 400 * second, 0x80000002);
    settle(speaking, 30000);
    check(speaking.monitor.sums.calls == 0, "a call lasts as long as there is speech");
}

void test_bounds()
{
    watched here;
    for (uint32_t i = 0; i < max_h323_calls + 100; i++) {
        const net_endpoint from = at(static_cast<uint8_t>(i), static_cast<uint16_t>(2000 + i));
        say(here, from, callee, start, setup_message(i & 0x7fff));
    }
    check(here.tracker.calls.entries.size() == max_h323_calls, "calls that run are so many at most");
    check(here.monitor.sums.calls == 100, "the oldest gave way");
    check(here.monitor.calls.size() <= max_voice_rows, "the table has its size");
    for (uint32_t i = 0; i < max_h323_requests + 100; i++)
        say(here, at(1, 1719), gatekeeper, start,
            ras(3, i,
                {ip("h225.callSignalAddress_tree", at(1, 1720)),
                 aliases("h225.terminalAlias_tree", "1", "x")}));
    check(
        here.tracker.requests.entries.size() == max_h323_requests, "requests without an answer are so many");
    check(here.tracker.phones.entries.empty(), "and make no phones");

    // A call that moves its media again and again; channels without end.
    watched moving;
    say(moving, caller, callee, start, setup_message(1));
    for (uint16_t i = 0; i < 100; i++)
        say(moving, caller, callee, start,
            signalling("0x62", true, 1) + ","
                + ack_message(i, at(1, static_cast<uint16_t>(5000 + i)), at(1, 2)) + ","
                + open_message(i, at(1, 2)).replace(0, 6, "\"h245\""));
    check(moving.follower.receivers.size() <= 2 * max_h323_places, "places are so many");
    check(
        moving.tracker.calls.entries.front().second.channels.size() <= max_h323_channels,
        "channels are so many");

    // What is no message, no number, no address.
    watched odd;
    for (const std::string &layers :
         {std::string("\"q931\":{},\"h225\":{}"), std::string("\"q931\":[],\"h225\":[]"),
          std::string("\"h225\":{\"h225.RasMessage\":\"x\"}"), std::string("\"h245\":{}"),
          part("q931", {field("q931.message_type", "0x05"), field("q931.call_ref", "zz")}) + ","
              + part("h225", {}),
          setup_message(1, {field("h225.conferenceID", "1"), ip("h225.sourceCallSignalAddress_tree", {})})})
        say(odd, caller, callee, start, layers);
    settle(odd, 200);
    check(odd.tracker.calls.entries.size() <= 2, "odd messages do no harm");
}

} // namespace

void test_h323()
{
    test_registration();
    test_call();
    test_fast_start();
    test_tunnel();
    test_ends();
    test_bounds();
}
