#include "agent/rmon1/events.h"

#include "agent/capture/family.h"
#include "agent/capture/counting.h"
#include "agent/core/table.h"

#include <algorithm>

namespace {

/** What an event does (eventType). */
enum event_type : int32_t {
    does_nothing = 1,
    logs = 2,
    sends_trap = 3,
    logs_and_sends_trap = 4,
};

/** Rows of one event's log; then the oldest give way. */
constexpr std::size_t most_logged = 1000;

constexpr std::size_t longest_text = 127;
constexpr std::size_t longest_logged = 255;

/** Each event may have all of a log. */
constexpr row_limits event_rows{first_control_index, last_control_index, 100};

void write_log(event_row &row, uint32_t now, std::string_view what)
{
    if (row.log.size() >= most_logged)
        row.log.pop_front();
    std::string text = row.description;
    if (!text.empty() && !what.empty())
        text += ": ";
    text += what;
    if (text.size() > longest_logged)
        text.resize(longest_logged);
    row.log.push_back({now, std::move(text)});
    row.last_index++;
}

/* ---- the control table ----------------------------------------------------------------- */

bool nonsense(const rmonrpc_event_t &request)
{
    const std::string_view description = text_of(request.eventDescription);
    const std::string_view community = text_of(request.eventCommunity);
    return request.eventType < does_nothing || request.eventType > logs_and_sends_trap
           || description.size() > longest_text || community.size() > longest_text
           || !is_printable(description) || !is_printable(community)
           || !is_printable(text_of(request.eventOwner));
}

bool changes_fixed(const event_row &, const rmonrpc_event_t &)
{
    return false;
}

void assign(event_row &row, const rmonrpc_event_t &request)
{
    row.description = text_of(request.eventDescription);
    row.type = request.eventType;
    row.community = text_of(request.eventCommunity);
    row.owner = text_of(request.eventOwner);
}

int32_t start(probe &, event_row &)
{
    return no_error;
}

void stop(probe &, event_row &row)
{
    row.log.clear();
    row.last_index = 0;
}

constexpr row_rules<event_row, rmonrpc_event_t> rules{nonsense, changes_fixed, assign, start, stop};

} // namespace

void fire_event(probe &agent, uint32_t index, std::string_view what)
{
    const auto found = storage<event_table>(agent).find(signed_index(index));
    if (found == storage<event_table>(agent).end() || found->second.status != row_status::valid)
        return;
    event_row &row = found->second;
    const uint32_t now = up_time(agent);
    row.last_time_sent = now;
    if (row.type == logs || row.type == logs_and_sends_trap)
        write_log(row, now, what);
    for (const event_listener hear : storage<event_listeners>(agent))
        hear(agent, index);
}

void event_describe(rmonrpc_event_t &record, int32_t index, const event_row &row)
{
    record.eventIndex = static_cast<uint32_t>(index);
    set_text(record.eventDescription, row.description);
    record.eventType = row.type;
    set_text(record.eventCommunity, row.community);
    set_text(record.eventOwner, row.owner);
    record.eventStatus = static_cast<int32_t>(row.status);
}

rmonrpc_event_t event_get(probe &agent, const rmonrpc_row_key2_t &key)
{
    rmonrpc_event_t reply{};
    const auto found = find_row(storage<event_table>(agent), key.index, key.getType);
    if (found == storage<event_table>(agent).end()) {
        reply.status = no_such_name;
        return reply;
    }
    event_describe(reply, found->first, found->second);
    reply.eventLastTimeSent = found->second.last_time_sent;
    return reply;
}

int32_t event_set(probe &agent, const rmonrpc_event_t &request)
{
    return set_row(
        agent, storage<event_table>(agent), signed_index(request.eventIndex), request.eventStatus, request,
        rules, event_rows);
}

rmonrpc_log_t log_get(probe &agent, const rmonrpc_row_key3_t &key)
{
    rmonrpc_log_t reply{};
    reply.status = no_such_name;
    if (key.getType != GET && key.getType != GETNEXT && key.getType != GETBULK)
        return reply;
    for (auto at = storage<event_table>(agent).lower_bound(key.index1);
         at != storage<event_table>(agent).end(); ++at) {
        const bool asked = at->first == key.index1;
        if (key.getType == GET && !asked)
            break;
        const event_row &row = at->second;
        const int64_t first = int64_t{row.last_index} - std::ssize(row.log) + 1;
        int64_t index = asked ? key.index2 : 0;
        if (key.getType != GET)
            index = std::max(index + 1, first);
        if (index >= first && index <= row.last_index) {
            const log_row &logged = row.log[static_cast<std::size_t>(index - first)];
            reply.status = no_error;
            reply.logEventIndex = static_cast<uint32_t>(at->first);
            reply.logIndex = static_cast<uint32_t>(index);
            reply.logTime = logged.time;
            set_text(reply.logDescription, logged.description);
            break;
        }
        if (key.getType == GET)
            break;
    }
    return reply;
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

constexpr served_procedure procedures[] = {
    serve<event_get>(event_get_1),
    serve_set<event_set>(event_set_1),
    serve<log_get>(log_get_1),
};

constexpr state_part kept[] = {
    keep_rows<event_table, event_describe, event_set, &rmonrpc_event_t::eventStatus>("event"),
};

// clang-format off
constexpr known_variable variables[] = {
    gauge<event_get, one_index, &rmonrpc_event_t::eventLastTimeSent>("1.3.6.1.2.1.16.9.1.1.5"),
    gauge<log_get, two_short_indexes, &rmonrpc_log_t::logTime>("1.3.6.1.2.1.16.9.2.1.3"),
};
// clang-format on

} // namespace

extern const family events_family = {
    .name = "events",
    .procedures = procedures,
    .kept = kept,
    .variables = variables,
};
