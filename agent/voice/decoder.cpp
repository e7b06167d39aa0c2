// SPDX-License-Identifier: MIT
#include "agent/voice/decoder.h"

#include "agent/capture/ether_counters.h"
#include "agent/core/log.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <memory>

#include <arpa/inet.h>
#include <jansson.h>
#include <sys/epoll.h>
#include <unistd.h>

/* ---- parts ---------------------------------------------------------------------------- */

namespace {

/** Calls visit for each value of this name, this one and those below, in order, until it returns true. */
template <class Visit>
bool visit_below(const json_t *value, bool is_named, std::string_view name, const Visit &visit)
{
    // Several of one name are an array.
    if (json_is_array(value)) {
        for (std::size_t i = 0; i < json_array_size(value); i++)
            if (visit_below(json_array_get(value, i), is_named, name, visit))
                return true;
        return false;
    }
    if (is_named && visit(value))
        return true;
    if (!json_is_object(value))
        return false;
    auto *object = const_cast<json_t *>(value); // which is only read
    for (void *at = json_object_iter(object); at; at = json_object_iter_next(object, at))
        if (visit_below(json_object_iter_value(at), name == json_object_iter_key(at), name, visit))
            return true;
    return false;
}

std::string_view text_in(const json_t *value)
{
    const std::string_view whole(json_string_value(value), json_string_length(value));
    return whole.substr(0, whole.find('\0'));
}

} // namespace

std::string_view text_of(decoded_part part, std::string_view name)
{
    std::string_view found;
    visit_below(part.tree, false, name, [&](const json_t *value) {
        if (json_is_string(value))
            found = text_in(value);
        return json_is_string(value);
    });
    return found;
}

std::optional<uint64_t> decoded_number(std::string_view text)
{
    int base = 10;
    if (text.starts_with("0x")) {
        text.remove_prefix(2);
        base = 16;
    }
    uint64_t number = 0;
    const char *end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number, base);
    if (error != std::errc{} || rest != end)
        return {};
    return number;
}

std::optional<uint64_t> number_of(decoded_part part, std::string_view name)
{
    return decoded_number(text_of(part, name));
}

net_address address_of(decoded_part part, std::string_view name)
{
    const std::string text(text_of(part, name));
    uint8_t octets[16];
    if (inet_pton(AF_INET, text.c_str(), octets) == 1)
        return make_net_address(octets, 4);
    if (inet_pton(AF_INET6, text.c_str(), octets) == 1)
        return make_net_address(octets, 16);
    return {};
}

decoded_part part_of(decoded_part part, std::string_view name)
{
    decoded_part found;
    visit_below(part.tree, false, name, [&](const json_t *value) {
        if (json_is_object(value))
            found.tree = value;
        return json_is_object(value);
    });
    return found;
}

bool has(decoded_part part, std::string_view name)
{
    return visit_below(part.tree, false, name, [](const json_t *) { return true; });
}

std::vector<std::string_view> texts_of(decoded_part part, std::string_view name)
{
    std::vector<std::string_view> found;
    visit_below(part.tree, false, name, [&](const json_t *value) {
        if (json_is_string(value))
            found.push_back(text_in(value));
        return false;
    });
    return found;
}

std::vector<decoded_part> parts_of(decoded_part part, std::string_view name)
{
    std::vector<decoded_part> found;
    visit_below(part.tree, false, name, [&](const json_t *value) {
        if (json_is_object(value))
            found.push_back({value});
        return false;
    });
    return found;
}

/* ---- messages -------------------------------------------------------------------------- */

namespace {

struct forget_tree {
    void operator()(json_t *tree) const { json_decref(tree); }
};

struct message_taker {
    voice_message message;
    take_voice_message take;
    void *context;
};

void hand_over(message_taker &taker, voice_protocol protocol, decoded_part body, decoded_part beside)
{
    taker.message.protocol = protocol;
    taker.message.body = body;
    taker.message.beside = beside;
    taker.take(taker.context, taker.message);
}

/** The part that goes with the one at this place of those of another name. */
decoded_part at_place(const std::vector<decoded_part> &parts, std::size_t place)
{
    return place < parts.size() ? parts[place] : decoded_part{};
}

void take_call_signalling(message_taker &taker, decoded_part layers)
{
    const std::vector<decoded_part> headers = parts_of(layers, "q931");
    const std::vector<decoded_part> bodies = parts_of(layers, "h225");
    for (std::size_t i = 0; i < std::max(headers.size(), bodies.size()); i++) {
        const decoded_part body = at_place(bodies, i);
        const bool is_ras = has(body, "h225.RasMessage");
        hand_over(
            taker, is_ras ? voice_protocol::h225_ras : voice_protocol::h225_cs, body, at_place(headers, i));
    }
    for (const decoded_part part : parts_of(layers, "h245"))
        hand_over(taker, voice_protocol::h245, part, {});
}

} // namespace

bool read_messages(
    const char *text, std::size_t size, const voice_message &frame, take_voice_message take, void *context)
{
    json_error_t error;
    const std::unique_ptr<json_t, forget_tree> tree(json_loadb(text, size, JSON_ALLOW_NUL, &error));
    if (!tree)
        return false;
    const decoded_part layers = part_of({tree.get()}, "layers");
    message_taker taker{frame, take, context};
    for (const decoded_part part : parts_of(layers, "skinny"))
        hand_over(taker, voice_protocol::sccp, part, {});
    const std::vector<decoded_part> descriptions = parts_of(layers, "sdp");
    const std::vector<decoded_part> of_gateways = parts_of(layers, "mgcp");
    for (std::size_t i = 0; i < of_gateways.size(); i++)
        hand_over(taker, voice_protocol::mgcp, of_gateways[i], at_place(descriptions, i));
    take_call_signalling(taker, layers);
    return true;
}

/* ---- the child ----------------------------------------------------------------------------- */

namespace {

/** What waits: thousands of calls of a file that is read in a second, of which the child takes 15,000 frames
 * a second.
 */
constexpr std::size_t max_waiting = 262144;
constexpr std::size_t max_waiting_octets = std::size_t{64} << 20;

/** Octets of what is printed for one frame. */
constexpr std::size_t max_object = std::size_t{4} << 20;

/** Octets that are read at once, and how often before others get their turn. */
constexpr std::size_t read_at_once = std::size_t{64} << 10;
constexpr int reads_in_a_round = 8;

/** Milliseconds between two lines about what was lost, at least. */
constexpr int64_t pause_of_lines = 60000;

/** An object's end: objects stand at the second column of an array, and line ends inside texts are escaped.
 */
constexpr std::string_view end_of_object = "\n  }";

constexpr uint32_t octets_of_record_header = 16;

void put_u32(std::vector<uint8_t> &to, uint32_t value)
{
    uint8_t octets[4];
    std::memcpy(octets, &value, sizeof octets); // a pcap file is of the writer's byte order
    to.insert(to.end(), octets, octets + 4);
}

/** The beginning of a pcap file of Ethernet frames. */
std::vector<uint8_t> file_header()
{
    constexpr uint16_t version[2] = {2, 4};
    uint32_t versions;
    std::memcpy(&versions, version, sizeof versions);
    std::vector<uint8_t> header;
    for (const uint32_t word : {0xa1b2c3d4U, versions, 0U, 0U, 0xffffU, 1U})
        put_u32(header, word);
    return header;
}

void add_to_u32(uint8_t *at, uint32_t by)
{
    const uint32_t value = read_u32(at) + by;
    for (int i = 0; i < 4; i++)
        at[i] = static_cast<uint8_t>(value >> (24 - 8 * i));
}

/** The child would take what a connection says in a file's next round for what was said already: its sequence
 * numbers go on. */
void move_sequence(std::vector<uint8_t> &record, const frame &seen, uint32_t round)
{
    constexpr uint32_t step = 1 << 28;
    if (round == 0 || seen.ip_protocol != ip_tcp || !seen.has_tcp_header)
        return;
    uint8_t *header = record.data() + octets_of_record_header + (seen.transport - seen.bytes);
    add_to_u32(header + 4, round * step);
    add_to_u32(header + 8, round * step);
}

std::vector<uint8_t> record_of(const frame &seen, uint32_t round)
{
    constexpr int64_t million = 1000000;
    std::vector<uint8_t> record;
    record.reserve(octets_of_record_header + seen.captured);
    put_u32(record, static_cast<uint32_t>(seen.time / million));
    put_u32(record, static_cast<uint32_t>(seen.time % million));
    put_u32(record, seen.captured);
    put_u32(record, std::max(seen.captured, seen.length - fcs_octets));
    record.insert(record.end(), seen.bytes, seen.bytes + seen.captured);
    move_sequence(record, seen, round);
    return record;
}

void tell(const char *what)
{
    say(log_level::warning, std::string("voice signalling: ") + what);
}

/** Ends what was between the agent and a child, which is killed when the next one is asked for. */
void stop_child(voice_decoder &decoder)
{
    if (decoder.pipes.input < 0)
        return;
    for (const int end : {decoder.pipes.input, decoder.pipes.output}) {
        unwatch(*decoder.loop, end);
        close(end);
    }
    decoder.pipes = {};
    // A frame that was written in part is gone; the next child begins with a whole one.
    if (decoder.written > 0) {
        decoder.waiting_octets -= decoder.waiting.front().record.size();
        decoder.waiting.pop_front();
        decoder.dropped++;
    }
    decoder.written = 0;
    decoder.dropped += decoder.sent.size();
    decoder.sent.clear();
    decoder.output.clear();
    decoder.searched = 0;
}

/** Takes what the child printed for the frame that it has had for longest. False when it has none. */
bool take_object(voice_decoder &decoder, std::string_view object)
{
    if (decoder.sent.empty())
        return false;
    const voice_message origin = decoder.sent.front().origin;
    decoder.sent.pop_front();
    object.remove_prefix(std::min(object.find('{'), object.size())); // what stands between objects
    const auto take = [](void *context, const voice_message &message) {
        auto &to = *static_cast<voice_decoder *>(context);
        to.messages++;
        to.take(to.context, message);
    };
    if (!read_messages(object.data(), object.size(), origin, take, &decoder))
        decoder.unreadable++;
    return true;
}

/** Takes all objects that are complete. False when the child prints what it was not asked for. */
bool take_objects(voice_decoder &decoder)
{
    std::size_t begin = 0;
    const std::string_view output = decoder.output;
    for (;;) {
        const std::size_t end = output.find(end_of_object, std::max(begin, decoder.searched));
        if (end == std::string_view::npos)
            break;
        const std::size_t behind = end + end_of_object.size();
        if (!take_object(decoder, output.substr(begin, behind - begin)))
            return false;
        begin = behind;
    }
    decoder.output.erase(0, begin);
    decoder.searched = decoder.output.size() - std::min(decoder.output.size(), end_of_object.size() - 1);
    return decoder.output.size() <= max_object;
}

/** Reads what the child printed. False when it is at an end, or not what it should be. */
bool read_output(voice_decoder &decoder)
{
    char some[read_at_once];
    for (int i = 0; i < reads_in_a_round; i++) {
        const ssize_t size = read(decoder.pipes.output, some, sizeof some);
        if (size < 0)
            return errno == EAGAIN || errno == EINTR;
        if (size == 0)
            return false;
        decoder.last_sign = now_ms();
        decoder.output.append(some, static_cast<std::size_t>(size));
        if (!take_objects(decoder))
            return false;
    }
    return true;
}

void on_output(void *context, uint32_t)
{
    auto &decoder = *static_cast<voice_decoder *>(context);
    if (!read_output(decoder))
        stop_child(decoder);
}

/** Writes what the child takes now. */
void feed_child(voice_decoder &decoder)
{
    if (decoder.sent.empty())
        decoder.last_sign = now_ms();
    while (!decoder.waiting.empty()) {
        std::vector<uint8_t> &record = decoder.waiting.front().record;
        const ssize_t size =
            write(decoder.pipes.input, record.data() + decoder.written, record.size() - decoder.written);
        if (size < 0)
            break; // full; or the child is gone, of which its output tells
        decoder.written += static_cast<std::size_t>(size);
        if (decoder.written < record.size())
            break;
        decoder.written = 0;
        decoder.waiting_octets -= record.size();
        std::vector<uint8_t>().swap(record);
        decoder.sent.push_back(std::move(decoder.waiting.front()));
        decoder.waiting.pop_front();
    }
    rewatch(*decoder.loop, decoder.pipes.input, decoder.waiting.empty() ? 0U : EPOLLOUT);
}

void on_room(void *context, uint32_t events)
{
    auto &decoder = *static_cast<voice_decoder *>(context);
    if ((events & (EPOLLERR | EPOLLHUP)) == 0) {
        feed_child(decoder);
        return;
    }
    // It reads no more. What it printed up to then still counts.
    read_output(decoder);
    stop_child(decoder);
}

void begin_feeding(voice_decoder &decoder, const decoder_pipes &pipes)
{
    decoder.pipes = pipes;
    decoder.starts++;
    const std::vector<uint8_t> header = file_header();
    (void)!write(pipes.input, header.data(), header.size()); // into an empty pipe, which has room
    if (watch(*decoder.loop, pipes.output, EPOLLIN, on_output, &decoder)
        && watch(*decoder.loop, pipes.input, EPOLLOUT, on_room, &decoder))
        feed_child(decoder);
    else
        stop_child(decoder);
}

/** There will be no child any more. */
void lose_launcher(voice_decoder &decoder)
{
    if (!decoder.launcher)
        return;
    unwatch(*decoder.loop, decoder.launcher->socket);
    decoder.launcher = nullptr;
    decoder.dropped += decoder.waiting.size();
    decoder.waiting.clear();
    decoder.waiting_octets = 0;
    tell("what starts the decoder is gone, no calls are measured from now on");
}

void on_answer(void *context, uint32_t)
{
    auto &decoder = *static_cast<voice_decoder *>(context);
    bool gone = false;
    const decoder_pipes pipes = take_decoder(*decoder.launcher, gone);
    if (gone) {
        lose_launcher(decoder);
        return;
    }
    decoder.asked = false;
    if (pipes.input >= 0)
        begin_feeding(decoder, pipes);
}

/** Has a child started, unless there is one or one was started just now. */
void start_child(voice_decoder &decoder)
{
    const bool is_due = decoder.last_start == 0 || now_ms() - decoder.last_start >= decoder.pause_of_starts;
    if (!decoder.launcher || decoder.asked || decoder.pipes.input >= 0 || !is_due)
        return;
    decoder.last_start = now_ms();
    decoder.asked = ask_for_decoder(*decoder.launcher);
}

/** A line about what was lost since the last one. */
void tell_lost(voice_decoder &decoder)
{
    const uint64_t lost = decoder.dropped + decoder.unreadable;
    if (lost == decoder.told || (decoder.told > 0 && now_ms() - decoder.last_told < pause_of_lines))
        return;
    tell(("frames that were not decoded: " + std::to_string(lost - decoder.told)).c_str());
    decoder.told = lost;
    decoder.last_told = now_ms();
}

} // namespace

void open_decoder(
    voice_decoder &decoder,
    event_loop &loop,
    voice_launcher &launcher,
    take_voice_message take,
    void *context)
{
    decoder.loop = &loop;
    decoder.take = take;
    decoder.context = context;
    if (watch(loop, launcher.socket, EPOLLIN, on_answer, &decoder))
        decoder.launcher = &launcher;
}

void decode_signalling(
    voice_decoder &decoder, int32_t interface, const frame &seen, uint32_t up_time, uint32_t round)
{
    const std::size_t octets = octets_of_record_header + seen.captured;
    if (!decoder.launcher || decoder.waiting.size() >= max_waiting
        || decoder.waiting_octets + octets > max_waiting_octets) {
        decoder.dropped++;
        return;
    }
    voice_message origin{};
    origin.interface = interface;
    origin.time = seen.time;
    origin.up_time = up_time;
    origin.from = seen.from;
    origin.to = seen.to;
    origin.from_port = seen.from_port;
    origin.to_port = seen.to_port;
    decoder.waiting.push_back({origin, record_of(seen, round)});
    decoder.waiting_octets += octets;
    if (decoder.pipes.input < 0)
        start_child(decoder);
    else if (decoder.waiting.size() == 1)
        feed_child(decoder);
}

void tick_decoder(voice_decoder &decoder)
{
    if (decoder.pipes.input >= 0 && is_decoding(decoder)
        && now_ms() - decoder.last_sign > decoder.max_silence)
        stop_child(decoder);
    if (!decoder.waiting.empty())
        start_child(decoder);
    tell_lost(decoder);
}

bool is_decoding(const voice_decoder &decoder)
{
    return !decoder.waiting.empty() || !decoder.sent.empty();
}

const voice_message *next_undecoded(const voice_decoder &decoder, int32_t interface)
{
    for (const auto *frames : {&decoder.sent, &decoder.waiting})
        for (const signalling_frame &one : *frames)
            if (one.origin.interface == interface)
                return &one.origin;
    return nullptr;
}

void close_decoder(voice_decoder &decoder)
{
    if (!decoder.loop)
        return;
    stop_child(decoder);
    if (decoder.launcher)
        unwatch(*decoder.loop, decoder.launcher->socket);
    decoder.launcher = nullptr;
}
