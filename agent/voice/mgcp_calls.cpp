// SPDX-License-Identifier: MIT
#include "agent/voice/mgcp_calls.h"

#include "agent/voice/voice.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace {

constexpr uint16_t agent_port = 2727;

/** Octets of names that are kept: more than any row has room for is never shown. */
constexpr std::size_t max_name = 256;

/** Digits that are kept of those that were dialed. */
constexpr std::size_t max_digits = 32;

/** Microseconds in which the same command is one that was sent again. */
constexpr int64_t time_of_repeats = 60 * int64_t{1000000};

/** Microseconds after which another interface's messages count for an endpoint that the first one lost. */
constexpr int64_t lost_after = 60 * int64_t{1000000};

/** call_state of a row. */
constexpr int32_t being_set_up = 1;
constexpr int32_t connected = 2;
constexpr int32_t over = 3;
constexpr int32_t over_unanswered = 4;
constexpr int32_t end_not_seen = 5;

std::string kept(std::string_view text)
{
    return std::string(text.substr(0, max_name));
}

std::string lower(std::string_view text)
{
    std::string made = kept(text);
    std::ranges::transform(made, made.begin(), [](unsigned char c) { return std::tolower(c); });
    return made;
}

/* ---- who speaks ------------------------------------------------------------------------- */

/** The two ends of a message. */
struct mgcp_ends {
    net_address gateway;
    net_address agent;
};

/** Gateways tell of events and restarts; a connection is deleted by either. */
mgcp_ends ends_of(const voice_message &message, std::string_view verb)
{
    const bool by_gateway =
        verb == "NTFY" || verb == "RSIP" || (verb == "DLCX" && message.to_port == agent_port);
    return by_gateway ? mgcp_ends{message.from, message.to} : mgcp_ends{message.to, message.from};
}

std::string key_of_endpoint(const net_address &gateway, std::string_view name)
{
    return text_of(gateway) + " " + lower(name);
}

std::string key_of_call(const net_address &agent, std::string_view id)
{
    return text_of(agent) + " " + kept(id);
}

/** Interfaces have transactions of their own: a response counts where its command did. */
std::string
key_of_transaction(int32_t interface, const net_address &from, const net_address &to, std::string_view number)
{
    return std::to_string(interface) + " " + text_of(from) + " " + text_of(to) + " " + kept(number);
}

/** All endpoints of a gateway, or any one. */
bool is_wildcard(std::string_view endpoint)
{
    return endpoint.find_first_of("*$") != std::string_view::npos;
}

/* ---- legs -------------------------------------------------------------------------------- */

/** Where a session description wants media; unknown where there is none. */
net_endpoint place_of(const voice_message &message)
{
    if (text_of(message.beside, "sdp.media.media") != "audio")
        return {};
    return {
        address_of(message.beside, "sdp.connection_info.address"),
        static_cast<uint16_t>(number_of(message.beside, "sdp.media.port").value_or(0))};
}

/** What a session description says of the codec. */
void take_description(mgcp_leg &leg, const voice_message &message)
{
    if (const std::string_view name = text_of(message.beside, "sdp.mime.type"); !name.empty())
        leg.codec = kept(name);
    if (const auto rate = number_of(message.beside, "sdp.sample_rate"); rate && *rate > 0 && *rate <= 1000000)
        leg.clock_rate = static_cast<uint32_t>(*rate);
    constexpr std::string_view period = "ptime:";
    for (const std::string_view attribute : texts_of(message.beside, "sdp.media_attr"))
        if (attribute.starts_with(period))
            leg.period = static_cast<uint32_t>(decoded_number(attribute.substr(period.size())).value_or(0));
}

/** What a command says of a connection. */
void take_options(mgcp_leg &leg, const voice_message &message)
{
    const decoded_part &body = message.body;
    const std::string options = "mgcp.param.localconnectionoptions.";
    if (const auto period = number_of(body, options + "p"))
        leg.period = static_cast<uint32_t>(*period);
    if (const std::string_view codecs = text_of(body, options + "a"); !codecs.empty())
        leg.codec = kept(codecs.substr(0, codecs.find(';')));
    if (const std::string_view suppression = text_of(body, options + "s"); !suppression.empty())
        leg.suppresses = suppression == "on";
    if (const std::string_view mode = text_of(body, "mgcp.param.connectionmode"); !mode.empty())
        leg.speaks = mode == "sendrecv";
    if (const net_endpoint place = place_of(message); is_known(place)) {
        leg.sends = place;
        take_description(leg, message);
    }
}

void take_report(mgcp_leg &leg, const voice_message &message)
{
    const std::string parameters = "mgcp.param.connectionparam.";
    const auto field = [&](const char *name) {
        return static_cast<uint32_t>(
            std::min<uint64_t>(number_of(message.body, parameters + name).value_or(0), INT32_MAX));
    };
    if (!has(message.body, "mgcp.param.connectionparam"))
        return;
    leg.report = {true,        field("ps"), field("os"), field("pr"),
                  field("or"), field("pl"), field("ji"), field("la")};
}

/** Calls visit for the legs that a command is about: a connection, those of a call at an endpoint, or all
 * there. */
template <class Visit>
void visit_legs(mgcp_tracker &tracker, const mgcp_transaction &command, const Visit &visit)
{
    const auto visit_in = [&](mgcp_calls_of_id &call) {
        for (mgcp_leg &leg : call.legs)
            if (leg.endpoint == command.endpoint
                && (command.connection.empty() || leg.connection == command.connection))
                visit(call, leg);
    };
    if (!command.call.empty()) {
        if (mgcp_calls_of_id *call = find_recent(tracker.calls, command.call))
            visit_in(*call);
        return;
    }
    for (auto &[key, call] : tracker.calls.entries)
        visit_in(call);
}

/* ---- what telephones do -------------------------------------------------------------------- */

/** Calls visit for each of the events or signals of a list, which commas part, but for those in brackets. */
template <class Visit> void visit_events(std::string_view list, const Visit &visit)
{
    std::size_t begin = 0;
    int depth = 0;
    for (std::size_t i = 0; i <= list.size(); i++) {
        const char c = i < list.size() ? list[i] : ',';
        depth += (c == '(') - (c == ')');
        if (c != ',' || (depth > 0 && i < list.size()))
            continue;
        std::string_view event = list.substr(begin, i - begin);
        event.remove_prefix(std::min(event.find_first_not_of(' '), event.size()));
        if (!event.empty())
            visit(event);
        begin = i + 1;
    }
}

void take_events(mgcp_endpoint &endpoint, std::string_view list)
{
    visit_events(list, [&](std::string_view event) {
        const std::string name = lower(event);
        if (name == "l/hd" || name == "hd")
            endpoint.dialed.clear();
        else if (name.starts_with("d/") && endpoint.dialed.size() < max_digits)
            endpoint.dialed += event.substr(2, max_digits - endpoint.dialed.size());
    });
}

/** What a telephone is told to show of who calls: L/ci(time, number, "name"). */
void take_signals(mgcp_endpoint &endpoint, std::string_view list)
{
    visit_events(list, [&](std::string_view signal) {
        if (!lower(signal).starts_with("l/ci(") || !signal.ends_with(')'))
            return;
        signal.remove_prefix(5);
        signal.remove_suffix(1);
        std::vector<std::string> words;
        visit_events(signal, [&](std::string_view word) {
            while (word.ends_with(' ') || word.ends_with('"'))
                word.remove_suffix(1);
            while (word.starts_with('"'))
                word.remove_prefix(1);
            words.emplace_back(kept(word));
        });
        endpoint.shown_number = words.size() > 1 ? words[1] : "";
        endpoint.shown_name = words.size() > 2 ? words[2] : "";
    });
}

/* ---- rows -------------------------------------------------------------------------------------- */

mgcp_phone phone_of(const mgcp_endpoint &endpoint)
{
    mgcp_phone phone;
    phone.name =
        "\n" + text_of(endpoint.gateway) + " " + endpoint.name; // no scenario's name begins like this
    mgcp_identity &identity = phone.identity;
    put_text(identity.address, text_of(endpoint.gateway));
    put_text(identity.owner, endpoint.owner);
    put_text(identity.alias, std::string_view(endpoint.name).substr(0, endpoint.name.find('@')));
    put_text(identity.number, endpoint.number);
    put_text(identity.endpoint, endpoint.name);
    identity.call_agent_length = put_address(identity.call_agent, endpoint.agent);
    identity.gateway_length = put_address(identity.gateway, endpoint.gateway);
    return phone;
}

int32_t as_i32(uint32_t value)
{
    return static_cast<int32_t>(std::min<uint32_t>(value, INT32_MAX));
}

mgcp_endpoint *endpoint_of(mgcp_tracker &tracker, const mgcp_leg &leg)
{
    return find_recent(tracker.endpoints, leg.endpoint);
}

/** What a call tells of the numbers of its two ends. */
void learn_numbers(mgcp_endpoint &caller, mgcp_endpoint &callee)
{
    const auto learn = [](std::string &known, const std::string &told) {
        if (!told.empty())
            known = told;
    };
    learn(caller.number, callee.shown_number);
    learn(caller.owner, callee.shown_name);
    learn(callee.number, caller.dialed);
}

void put_first_leg(rmonrpc_mgcp_media_session_t &media, const mgcp_leg &leg, const leg_report &figures)
{
    put_text(media.conns_id_1, leg.connection);
    media.rtp_port_1 = leg.receives.port;
    media.pkt_sent_1 = as_i32(figures.packets_sent);
    media.oct_sent_1 = as_i32(figures.octets_sent);
    media.pkt_recv_1 = as_i32(figures.packets_received);
    media.oct_recv_1 = as_i32(figures.octets_received);
    media.pkt_loss_1 = as_i32(figures.lost);
    media.jitter_1 = as_i32(figures.jitter);
    media.latency_1 = as_i32(figures.latency);
}

void put_second_leg(rmonrpc_mgcp_media_session_t &media, uint16_t port, const leg_report &figures)
{
    media.rtp_port_2 = port;
    media.pkt_sent_2 = as_i32(figures.packets_sent);
    media.oct_sent_2 = as_i32(figures.octets_sent);
    media.pkt_recv_2 = as_i32(figures.packets_received);
    media.oct_recv_2 = as_i32(figures.octets_received);
    media.pkt_loss_2 = as_i32(figures.lost);
    media.jitter_2 = as_i32(figures.jitter);
    media.latency_2 = as_i32(figures.latency);
}

/** The second side of a call that has one leg: what was measured of it. */
void put_elsewhere(mgcp_call &call, const mgcp_leg &leg, const leg_media &media)
{
    rmonrpc_mgcp_media_session_t &session = call.record.media.value[0];
    put_text(call.callee.identity.address, text_of(leg.sends.address));
    put_second_leg(session, leg.sends.port, report_of({}, media.sent, media.received));
    call.callee_samples = 0;
}

/** The call of a leg and perhaps another one, as it is now. */
mgcp_call call_of(
    mgcp_tracker &tracker,
    const rtp_follower &follower,
    const mgcp_calls_of_id &of,
    const mgcp_leg &one,
    const mgcp_leg *other)
{
    mgcp_call call;
    mgcp_endpoint *caller = endpoint_of(tracker, one);
    mgcp_endpoint *callee = other ? endpoint_of(tracker, *other) : nullptr;
    if (caller && callee)
        learn_numbers(*caller, *callee);
    if (caller)
        call.caller = phone_of(*caller);
    if (callee)
        call.callee = phone_of(*callee);

    rmonrpc_mgcp_media_session_t &media = call.record.media.value[0];
    put_text(call.record.call_id_1, of.id);
    put_text(media.audio_codec, one.codec);
    media.sampling_period = as_i32(one.period);
    media.silence_sup = one.suppresses;
    const leg_media first = media_of(one, follower);
    put_first_leg(media, one, report_of(one.report, first.received, first.sent));
    call.samples = samples_of(one, first);
    if (!other) {
        put_elsewhere(call, one, first);
        return call;
    }
    put_text(call.record.call_id_2, of.id);
    put_text(media.conns_id_2, other->connection);
    const leg_media second = media_of(*other, follower);
    put_second_leg(media, other->receives.port, report_of(other->report, second.received, second.sent));
    call.callee_samples = samples_of(*other, second);
    return call;
}

/* ---- messages ------------------------------------------------------------------------------------- */

/** The endpoint that a command names; null when it is another interface's. */
mgcp_endpoint *heard_endpoint(
    mgcp_tracker &tracker, const voice_message &message, const mgcp_ends &ends, std::string_view name)
{
    const auto nothing = [](const mgcp_endpoint &) {};
    mgcp_endpoint &endpoint =
        find_or_make(tracker.endpoints, key_of_endpoint(ends.gateway, name), max_mgcp_endpoints, nothing);
    if (endpoint.interface < 0 || message.time - endpoint.last > lost_after)
        endpoint.interface = message.interface;
    if (endpoint.interface != message.interface)
        return nullptr;
    endpoint.name = kept(name);
    endpoint.gateway = ends.gateway;
    endpoint.agent = ends.agent;
    endpoint.last = message.time;
    return &endpoint;
}

/** Ends what a command or its response deletes, at the command's time. */
void delete_legs(mgcp_tracker &tracker, const mgcp_transaction &command, const voice_message &message)
{
    visit_legs(tracker, command, [&](mgcp_calls_of_id &, mgcp_leg &leg) {
        end_leg(leg, command.time, message.up_time);
        take_report(leg, message);
    });
}

void take_command(
    mgcp_tracker &tracker, rtp_follower &follower, const voice_message &message, std::string_view verb)
{
    const decoded_part &body = message.body;
    const std::string_view name = text_of(body, "mgcp.req.endpoint");
    const mgcp_ends ends = ends_of(message, verb);
    const std::string key =
        key_of_transaction(message.interface, message.from, message.to, text_of(body, "mgcp.transid"));
    if (const mgcp_transaction *known = find_recent(tracker.transactions, key);
        known && known->verb == verb && message.time - known->time < time_of_repeats)
        return;
    mgcp_endpoint *endpoint = nullptr;
    if (!is_wildcard(name)) {
        endpoint = heard_endpoint(tracker, message, ends, name);
        if (!endpoint)
            return;
        take_events(*endpoint, text_of(body, "mgcp.param.observedevents"));
        take_signals(*endpoint, text_of(body, "mgcp.param.signalreq"));
    }

    mgcp_transaction &command =
        find_or_make(tracker.transactions, key, max_mgcp_transactions, [](const mgcp_transaction &) {});
    command = {};
    command.time = message.time;
    command.verb = verb;
    command.endpoint = key_of_endpoint(ends.gateway, name);
    if (const std::string_view id = text_of(body, "mgcp.param.callid"); !id.empty())
        command.call = key_of_call(ends.agent, id);
    command.connection = text_of(body, "mgcp.param.connectionid");
    take_options(command.leg, message);
    command.leg.interface = message.interface;
    command.leg.start = message.time;
    if (verb == "MDCX") {
        visit_legs(tracker, command, [&](mgcp_calls_of_id &call, mgcp_leg &leg) {
            take_options(leg, message);
            announce_place(leg, follower, leg.sends, leg.start);
            leg.last = message.time;
            leg.last_up_time = message.up_time;
            call.was_connected |= leg.speaks && call.legs.size() == 1;
        });
    } else if (verb == "DLCX" && message.to_port == agent_port) {
        delete_legs(tracker, command, message); // the gateway has done so already
    }
}

/** A connection was made. */
void make_leg(
    mgcp_tracker &tracker,
    rtp_follower &follower,
    const mgcp_transaction &command,
    const voice_message &message)
{
    const std::string connection = kept(text_of(message.body, "mgcp.param.connectionid"));
    if (connection.empty() || command.call.empty())
        return;
    mgcp_calls_of_id &call =
        find_or_make(tracker.calls, command.call, max_mgcp_calls, [&](mgcp_calls_of_id &dropped) {
            for (mgcp_leg &leg : dropped.legs)
                forget_places(leg, follower);
        });
    call.id = command.call.substr(command.call.find(' ') + 1);
    if (call.legs.size() >= max_mgcp_legs || std::ranges::any_of(call.legs, [&](const mgcp_leg &leg) {
            return leg.endpoint == command.endpoint && leg.connection == connection;
        }))
        return;
    mgcp_leg &leg = call.legs.emplace_back(command.leg);
    leg.endpoint = command.endpoint;
    if (const std::string_view name = text_of(message.body, "mgcp.param.specificendpointid"); !name.empty()) {
        const mgcp_ends ends{message.from, message.to};
        leg.endpoint = key_of_endpoint(ends.gateway, name);
        if (!heard_endpoint(tracker, message, ends, name)) {
            call.legs.pop_back();
            return;
        }
    }
    leg.connection = connection;
    leg.receives = place_of(message);
    take_description(leg, message);
    leg.last = message.time;
    leg.last_up_time = message.up_time;
    announce_place(leg, follower, leg.receives, leg.start);
    announce_place(leg, follower, leg.sends, leg.start);
}

void take_response(
    mgcp_tracker &tracker,
    mgcp_monitor &monitor,
    rtp_follower &follower,
    const voice_message &message,
    uint64_t code)
{
    mgcp_transaction *command = find_recent(
        tracker.transactions,
        key_of_transaction(
            message.interface, message.to, message.from, text_of(message.body, "mgcp.transid")));
    if (!command || command->answered || code < 200)
        return; // or one that says that another one comes
    command->answered = true;
    if (code >= 300)
        return;
    if (command->verb == "CRCX") {
        make_leg(tracker, follower, *command, message);
    } else if (command->verb == "MDCX") {
        visit_legs(tracker, *command, [&](mgcp_calls_of_id &, mgcp_leg &leg) {
            if (const net_endpoint place = place_of(message); is_known(place)) {
                leg.receives = place;
                announce_place(leg, follower, place, command->time);
            }
        });
    } else if (command->verb == "DLCX") {
        delete_legs(tracker, *command, message);
    }
    if (command->verb == "CRCX" || command->verb == "RSIP")
        if (const mgcp_endpoint *endpoint = find_recent(tracker.endpoints, command->endpoint))
            see_phone(monitor, phone_of(*endpoint));
}

/* ---- the end ------------------------------------------------------------------------------------------ */

struct settling {
    mgcp_tracker &tracker;
    mgcp_monitor &monitor;
    rtp_follower &follower;
    const voice_clock &clock;
};

/** The first legs of a call are over, or another one is. Row: of the call table, 0 when it has none. */
void hand_over(
    const settling &with,
    mgcp_calls_of_id &of,
    mgcp_leg &one,
    mgcp_leg *other,
    bool was_connected,
    uint32_t row)
{
    mgcp_call call = call_of(with.tracker, with.follower, of, one, other);
    const bool is_silent = one.silent || (other && other->silent);
    call.record.call_state = is_silent ? end_not_seen : was_connected ? over : over_unanswered;
    const mgcp_leg &last = other && other->end > one.end ? *other : one;
    call.times.took = hundredths_between(one.start, last.end);
    call.index = row;
    see_call(with.monitor, call, last.end_up_time);
    forget_places(one, with.follower);
    if (other)
        forget_places(*other, with.follower);
}

void show(const settling &with, mgcp_calls_of_id &of, const mgcp_leg &one, const mgcp_leg *other)
{
    mgcp_call call = call_of(with.tracker, with.follower, of, one, other);
    call.record.call_state = of.was_connected ? connected : being_set_up;
    const int64_t until = std::max(newest_frame(with.clock, one.interface), one.last);
    call.times.took = hundredths_between(one.start, until);
    call.index = of.row;
    show_call(with.monitor, call, with.clock.up_time);
    of.row = call.index;
}

/** Looks at the legs of a call. */
void settle(const settling &with, mgcp_calls_of_id &of)
{
    for (mgcp_leg &leg : of.legs)
        end_if_silent(leg, with.follower, with.clock);
    for (std::size_t i = of.legs.size(); i-- > 2;)
        if (has_settled(of.legs[i], with.clock, seconds_to_settle)) {
            hand_over(with, of, of.legs[i], nullptr, of.legs[i].speaks, 0);
            of.legs.erase(of.legs.begin() + static_cast<std::ptrdiff_t>(i));
        }
    if (of.legs.empty())
        return;
    mgcp_leg &one = of.legs[0];
    mgcp_leg *other = of.legs.size() > 1 ? &of.legs[1] : nullptr;
    of.was_connected |= one.speaks && (!other || other->speaks);
    const uint32_t wait = seconds_to_settle + seconds_for_other_side;
    const bool both = has_settled(one, with.clock, seconds_to_settle)
                      && (!other || has_settled(*other, with.clock, seconds_to_settle));
    if (both) {
        hand_over(with, of, one, other, of.was_connected, of.row);
        of.legs.erase(of.legs.begin(), of.legs.begin() + (other ? 2 : 1));
    } else if (has_settled(one, with.clock, wait)) {
        hand_over(with, of, one, nullptr, of.was_connected, of.row);
        of.legs.erase(of.legs.begin());
    } else if (other && has_settled(*other, with.clock, wait)) {
        hand_over(with, of, *other, nullptr, of.was_connected, 0);
        of.legs.erase(of.legs.begin() + 1);
        return;
    } else {
        show(with, of, one, other);
        return;
    }
    of.row = 0;
    of.was_connected = false;
}

} // namespace

void take_message(
    mgcp_tracker &tracker, mgcp_monitor &monitor, rtp_follower &follower, const voice_message &message)
{
    const std::string_view verb = text_of(message.body, "mgcp.req.verb");
    if (!verb.empty())
        take_command(tracker, follower, message, verb);
    else if (const auto code = number_of(message.body, "mgcp.rsp.rspcode"))
        take_response(tracker, monitor, follower, message, *code);
}

void settle_calls(
    mgcp_tracker &tracker, mgcp_monitor &monitor, rtp_follower &follower, const voice_clock &clock)
{
    const settling with{tracker, monitor, follower, clock};
    std::vector<std::string> done;
    for (auto &[key, call] : tracker.calls.entries) {
        settle(with, call);
        if (call.legs.empty())
            done.push_back(key);
    }
    for (const std::string &key : done)
        forget_recent(tracker.calls, key);
}
