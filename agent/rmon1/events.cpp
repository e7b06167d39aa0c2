// SPDX-License-Identifier: MIT
#include "agent/rmon1/events.h"

#include "agent/capture/family.h"
#include "agent/core/control_table.h"
#include "agent/capture/counting.h"

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
constexpr std::size_t max_logged = 1000;

constexpr std::size_t max_text = 127;
constexpr std::size_t max_logged_text = 255;

/** Each event may have all of a log. */
constexpr row_limits event_rows{first_control_index, last_control_index, 100};

void write_log(event_row &row, uint32_t now, std::string_view what)
{
    if (row.log.size() >= max_logged)
        row.log.pop_front();
    std::string text = row.description;
    if (!text.empty() && !what.empty())
        text += ": ";
    text += what;
    if (text.size() > max_logged_text)
        text.resize(max_logged_text);
    row.log.push_back({now, std::move(text)});
    row.last_index++;
}

/* ---- the control table ----------------------------------------------------------------- */

struct event_control_table {
    using table = event_table;
    using row = event_row;
    using request = rmonrpc_event_t;
    static constexpr auto index = &request::eventIndex;
    static constexpr auto status = &request::eventStatus;
    static constexpr row_limits limits = event_rows;
    static constexpr std::tuple fields{
        changeable<&request::eventDescription, &row::description>({.max = max_text}),
        changeable<&request::eventType, &row::type>({does_nothing, logs_and_sends_trap}),
        changeable<&request::eventCommunity, &row::community>({.max = max_text}),
        changeable<&request::eventOwner, &row::owner>(),
    };
    static constexpr auto start = nothing_to_start<row>;

    static void stop(probe &, row &stopped)
    {
        stopped.log.clear();
        stopped.last_index = 0;
    }

    static void show(probe &, request &reply, int32_t, const row &shown)
    {
        reply.eventLastTimeSent = shown.last_time_sent;
    }
};

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

rmonrpc_log_t log_get(probe &agent, const rmonrpc_row_key3_t &key)
{
    const auto none = no_such_row<rmonrpc_log_t>();
    if (key.getType != GET && key.getType != GETNEXT && key.getType != GETBULK)
        return none;
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
            rmonrpc_log_t reply{};
            reply.logEventIndex = static_cast<uint32_t>(at->first);
            reply.logIndex = static_cast<uint32_t>(index);
            reply.logTime = logged.time;
            set_text(reply.logDescription, logged.description);
            return reply;
        }
        if (key.getType == GET)
            break;
    }
    return none;
}

/* ---- the family --------------------------------------------------------------------- */

namespace {

constexpr auto event_get = get_control<event_control_table>;

constexpr served_procedure procedures[] = {
    serve<event_get>(event_get_1),
    serve_set<set_control<event_control_table>>(event_set_1),
    serve<log_get>(log_get_1),
};

constexpr state_part kept[] = {
    keep_rows<event_control_table>("event"),
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
