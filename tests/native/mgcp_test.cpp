// SPDX-License-Identifier: MIT
/* Phones and calls of MGCP, from commands and responses in the form in which the decoder prints them. */
#include "tests/native/check.h"

#include "agent/voice/mgcp_calls.h"
#include "agent/voice/monitor.h"

#include <string>
#include <utility>
#include <vector>

namespace {

struct watching {
    mgcp_tracker tracker;
    mgcp_monitor monitor;
    rtp_follower follower;
    voice_clock clock;
    int32_t interface = 1; // that sees what comes next
    int64_t second = 10;
};

/** Hosts: the call agent, and gateways. */
constexpr uint8_t agent = 1;
constexpr uint8_t near_gateway = 11;
constexpr uint8_t far_gateway = 12;

net_address address(uint8_t host)
{
    const uint8_t octets[4] = {10, 4, 0, host};
    return make_net_address(octets, 4);
}

using fields = std::vector<std::pair<std::string, std::string>>;

std::string object(const std::string &protocol, const fields &of)
{
    std::string text;
    for (const auto &[name, value] : of)
        text += (text.empty() ? "\"" : ", \"") + protocol + "." + name + "\": \"" + value + "\"";
    return "\"" + protocol + "\": {" + text + "}";
}

void take(void *context, const voice_message &message)
{
    auto &here = *static_cast<watching *>(context);
    take_message(here.tracker, here.monitor, here.follower, message);
}

void say(watching &here, uint8_t from, uint8_t to, const fields &message, const fields &session)
{
    voice_message origin{};
    origin.interface = here.interface;
    origin.time = here.second * 1000000;
    origin.up_time = static_cast<uint32_t>(here.second * 100);
    origin.from = address(from);
    origin.to = address(to);
    origin.from_port = from == agent ? 2727 : 2427;
    origin.to_port = to == agent ? 2727 : 2427;
    const std::string text = "{\"layers\": {" + object("mgcp", message)
                             + (session.empty() ? "" : ", " + object("sdp", session)) + "}}";
    check(read_messages(text.data(), text.size(), origin, take, &here), "JSON: " + text);
}

fields command(const std::string &verb, int number, const std::string &endpoint, const fields &more)
{
    fields all{{"req.verb", verb}, {"transid", std::to_string(number)}, {"req.endpoint", endpoint}};
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

fields response(int number, const fields &more = {})
{
    fields all{{"rsp.rspcode", "200"}, {"transid", std::to_string(number)}};
    all.insert(all.end(), more.begin(), more.end());
    return all;
}

fields session(uint8_t host, int port)
{
    return {
        {"media.media", "audio"},
        {"media.port", std::to_string(port)},
        {"connection_info.address", "10.4.0." + std::to_string(host)},
        {"mime.type", "PCMU"},
        {"media_attr", "ptime:30"}};
}

std::string line_of(uint8_t gateway)
{
    return "aaln/1@gw" + std::to_string(gateway);
}

/** The agent makes a connection at a gateway; numbers of transactions are the gateway's and the connection's.
 */
void connect(watching &here, uint8_t gateway, const std::string &call, int connection, uint8_t remote = 0)
{
    const int number = 100 * gateway + connection;
    say(here, agent, gateway,
        command(
            "CRCX", number, line_of(gateway), {{"param.callid", call}, {"param.connectionmode", "sendrecv"}}),
        remote ? session(remote, 5000 + remote) : fields{});
    say(here, gateway, agent, response(number, {{"param.connectionid", std::to_string(connection)}}),
        session(gateway, 5000 + gateway));
}

/** It modifies the connection: its media go to the other gateway. */
void send_to(watching &here, uint8_t gateway, const std::string &call, int connection, uint8_t remote)
{
    const int number = 100 * gateway + 50 + connection;
    say(here, agent, gateway,
        command(
            "MDCX", number, line_of(gateway),
            {{"param.callid", call},
             {"param.connectionid", std::to_string(connection)},
             {"param.connectionmode", "sendrecv"}}),
        session(remote, 5000 + remote));
    say(here, gateway, agent, response(number), {});
}

fields told(int sent, int lost)
{
    return {
        {"param.connectionparam", ""},
        {"param.connectionparam.ps", std::to_string(sent)},
        {"param.connectionparam.pl", std::to_string(lost)},
        {"param.connectionparam.ji", "4"},
        {"param.connectionparam.la", "30"}};
}

void disconnect(
    watching &here, uint8_t gateway, const std::string &call, int connection, const fields &counted = {})
{
    const int number = 100 * gateway + 70 + connection;
    say(here, agent, gateway,
        command(
            "DLCX", number, line_of(gateway),
            {{"param.callid", call}, {"param.connectionid", std::to_string(connection)}}),
        {});
    say(here, gateway, agent, response(number, counted), {});
}

void settle_at(watching &here, int64_t second)
{
    here.second = second;
    here.clock.up_time = static_cast<uint32_t>(second * 100);
    for (const int32_t interface : {1, 2})
        here.clock.interfaces[interface] = {second * 1000000, here.clock.up_time};
    settle_calls(here.tracker, here.monitor, here.follower, here.clock);
}

/** A call between the two gateways, which began and was connected at this second. */
void begin_call(watching &here, const std::string &call)
{
    connect(here, near_gateway, call, 1);
    connect(here, far_gateway, call, 2, near_gateway);
    send_to(here, near_gateway, call, 1, far_gateway);
}

uint32_t calls_over(const watching &here)
{
    return here.monitor.sums.calls;
}

rmonrpc_mgcp_call_t first_row(const watching &here)
{
    return here.monitor.calls.empty() ? rmonrpc_mgcp_call_t{} : here.monitor.calls.begin()->second;
}

/* ---- calls --------------------------------------------------------------------------------- */

void test_call()
{
    watching here;
    begin_call(here, "C1");
    settle_at(here, 12);
    check(here.monitor.calls.size() == 1 && calls_over(here) == 0, "a call that runs has a row");
    check(first_row(here).call_state == 2 && first_row(here).end_time == 0, "which says so");
    here.second = 20;
    disconnect(here, near_gateway, "C1", 1, told(500, 3));
    disconnect(here, far_gateway, "C1", 2, told(480, 7));
    settle_at(here, 21);
    check(calls_over(here) == 0, "what comes late still counts");
    settle_at(here, 22);
    check(calls_over(here) == 1 && here.monitor.calls.size() == 1, "a call that is over keeps its row");
    const rmonrpc_mgcp_call_t row = first_row(here);
    const rmonrpc_mgcp_media_session_t &media = row.media.value[0];
    check(row.call_state == 3 && row.start_time == 1000 && row.end_time == 2000, "and has its times");
    check(
        std::string(media.caller_ip_addr.value) == "10.4.0.11"
            && std::string(row.callee_endpoint_id.value) == "aaln/1@gw12",
        "its parties");
    check(
        media.rtp_port_1 == 5011 && media.rtp_port_2 == 5012 && media.sampling_period == 30
            && std::string(media.audio_codec.value) == "PCMU",
        "its media");
    check(
        media.pkt_sent_1 == 500 && media.pkt_loss_1 == 3 && media.pkt_loss_2 == 7 && media.jitter_2 == 4
            && media.latency_1 == 30,
        "and what the gateways counted");
    check(here.monitor.phones.size() == 2, "both are phones");
}

void test_parties()
{
    watching here;
    const auto notify = [&](int number, const char *events) {
        say(here, near_gateway, agent,
            command("NTFY", number, line_of(near_gateway), {{"param.observedevents", events}}), {});
    };
    notify(1, "L/hd");
    notify(2, "D/2, D/0,D/0,D/2");
    say(here, agent, far_gateway,
        command(
            "RQNT", 3, line_of(far_gateway),
            {{"param.signalreq", R"(L/rg, L/ci(11/22/10/00, 2001, \"Alice, of sales\"))"}}),
        {});
    begin_call(here, "C1");
    settle_at(here, 12);
    const rmonrpc_mgcp_call_t row = first_row(here);
    check(std::string(row.callee_phone_num.value) == "2002", "who was dialed is the called one");
    check(std::string(row.caller_phone_num.value) == "2001", "whose number was shown is the caller");
}

void test_repeated()
{
    watching here;
    for (int i = 0; i < 3; i++)
        connect(here, near_gateway, "C1", 1);
    check(
        here.tracker.calls.entries.front().second.legs.size() == 1,
        "a command that is sent again makes no leg");
    say(here, agent, far_gateway, command("CRCX", 9, line_of(far_gateway), {{"param.callid", "C2"}}), {});
    say(here, far_gateway, agent, {{"rsp.rspcode", "500"}, {"transid", "9"}}, {});
    say(here, far_gateway, agent, response(77, {{"param.connectionid", "5"}}), {});
    check(here.tracker.calls.entries.size() == 1, "nor does a refusal, or a response to nothing");
}

void test_ends()
{
    watching here;
    begin_call(here, "C1");
    settle_at(here, 300);
    check(calls_over(here) == 0, "a call of which nothing is heard goes on for a while");
    settle_at(here, 311);
    settle_at(here, 313);
    check(calls_over(here) == 1 && first_row(here).call_state == 5, "and is over then, without an end");

    connect(here, near_gateway, "C2", 3);
    say(here, near_gateway, agent,
        command("DLCX", 8, line_of(near_gateway), {{"param.callid", "C2"}, {"param.connectionid", "3"}}), {});
    settle_at(here, 320);
    settle_at(here, 330);
    check(calls_over(here) == 2, "a gateway deletes a connection by itself");

    here.interface = 1;
    begin_call(here, "C3");
    say(here, agent, near_gateway, command("DLCX", 9, "*", {}), {});
    check(calls_over(here) == 2, "a name with a wildcard is no endpoint");
}

void test_two_interfaces()
{
    watching here;
    for (const int32_t interface : {1, 2}) {
        here.interface = interface;
        begin_call(here, "C1");
    }
    here.second = 20;
    for (const int32_t interface : {1, 2}) {
        here.interface = interface;
        disconnect(here, near_gateway, "C1", 1);
        disconnect(here, far_gateway, "C1", 2);
    }
    settle_at(here, 30);
    check(
        calls_over(here) == 1 && here.monitor.calls.size() == 1,
        "a call that two interfaces see counts once");
}

void test_third_leg()
{
    watching here;
    begin_call(here, "C1");
    connect(here, 13, "C1", 4, near_gateway);
    here.second = 20;
    disconnect(here, 13, "C1", 4);
    settle_at(here, 23);
    check(calls_over(here) == 1, "a further connection of a call is one by itself");
    disconnect(here, near_gateway, "C1", 1);
    settle_at(here, 40);
    check(calls_over(here) == 2, "a leg that waited for the other one's end is over");
    check(here.tracker.calls.entries.front().second.legs.size() == 1, "and the other one goes on");
}

/* ---- strangers --------------------------------------------------------------------------------- */

void test_flood()
{
    watching here;
    here.monitor.settings.num_phone_tbl_row = 10;
    for (int i = 0; i < 3 * static_cast<int>(max_mgcp_transactions); i++) {
        const std::string name = "aaln/" + std::to_string(i) + "@forged";
        say(here, agent, near_gateway, command("CRCX", i, name, {{"param.callid", name}}), {});
        say(here, near_gateway, agent, response(i, {{"param.connectionid", "1"}}), session(9, 9));
    }
    check(
        here.tracker.endpoints.entries.size() == max_mgcp_endpoints
            && here.tracker.calls.entries.size() == max_mgcp_calls
            && here.tracker.transactions.entries.size() == max_mgcp_transactions
            && here.follower.receivers.size() == 1 && here.monitor.phones.size() <= 10,
        "forged calls grow nothing");
    for (int i = 0; i < 100; i++)
        connect(here, far_gateway, "C1", i % 40);
    const auto &legs = here.tracker.calls.entries.back().second.legs;
    check(legs.size() == max_mgcp_legs, "nor do connections of one call");
    settle_at(here, 11);
}

void test_texts()
{
    watching here;
    const std::string endless(5000, 'x');
    say(here, agent, near_gateway,
        command(endless, 1, endless, {{"param.callid", endless}, {"param.signalreq", "L/ci((((," + endless}}),
        {});
    say(here, near_gateway, agent,
        command(
            "NTFY", 2, line_of(near_gateway),
            {{"param.observedevents", "D/" + endless + ",,),D/,D/5,L/hu,(((("}}),
        {});
    say(here, agent, near_gateway,
        command(
            "CRCX", 3, line_of(near_gateway),
            {{"param.callid", endless}, {"param.localconnectionoptions.p", "99999999999999999999"}}),
        {{"media.media", "audio"}, {"media.port", "-1"}, {"connection_info.address", endless}});
    say(here, near_gateway, agent, response(3, {{"param.connectionid", endless}}), {});
    settle_at(here, 12);
    const rmonrpc_mgcp_call_t row = first_row(here);
    check(
        std::string(row.call_id_1.value) == endless.substr(0, 32) && row.media.value[0].sampling_period == 0,
        "names and numbers of any length are taken");
}

} // namespace

void test_mgcp()
{
    test_call();
    test_parties();
    test_repeated();
    test_ends();
    test_two_interfaces();
    test_third_leg();
    test_flood();
    test_texts();
}
