// SPDX-License-Identifier: MIT
#include "agent/core/loop.h"

#include <algorithm>
#include <cerrno>
#include <ctime>

#include <sys/epoll.h>
#include <unistd.h>

namespace {

constexpr int64_t tick_ms = 1000;

int64_t milliseconds(clockid_t clock)
{
    timespec now;
    clock_gettime(clock, &now);
    return int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1000000;
}

epoll_event event_for(int descriptor, const descriptor_watch &watch)
{
    epoll_event event{};
    event.events = watch.events;
    event.data.u64 = uint64_t{watch.serial} << 32 | static_cast<uint32_t>(descriptor);
    return event;
}

void call_ready(event_loop &loop, const epoll_event &event)
{
    const auto found = loop.watches.find(static_cast<int>(event.data.u64 & UINT32_MAX));
    // An earlier call of the same round may have closed it, and another may have opened its number again.
    if (found == loop.watches.end() || found->second.serial != event.data.u64 >> 32)
        return;
    found->second.ready(found->second.context, event.events);
}

/** Milliseconds until the tick or the next call; 0 when it is time for one. */
int time_to_wait(const event_loop &loop, int64_t next_tick)
{
    int64_t wait = next_tick - now_ms();
    if (!loop.timers.empty())
        wait = std::min(wait, loop.timers.begin()->first.due - grid_ms());
    return static_cast<int>(std::max<int64_t>(wait, 0));
}

} // namespace

int64_t now_ms()
{
    return milliseconds(CLOCK_MONOTONIC);
}

int64_t grid_ms()
{
    return milliseconds(CLOCK_BOOTTIME);
}

bool open_loop(event_loop &loop)
{
    loop.epoll = epoll_create1(EPOLL_CLOEXEC);
    return loop.epoll >= 0;
}

void close_loop(event_loop &loop)
{
    if (loop.epoll >= 0)
        close(loop.epoll);
    loop.epoll = -1;
    loop.watches.clear();
    loop.ticks.clear();
    loop.timers.clear();
}

bool watch(event_loop &loop, int descriptor, uint32_t events, on_ready ready, void *context)
{
    const descriptor_watch added{events, ++loop.last_serial, ready, context};
    epoll_event event = event_for(descriptor, added);
    if (epoll_ctl(loop.epoll, EPOLL_CTL_ADD, descriptor, &event) != 0)
        return false;
    loop.watches[descriptor] = added;
    return true;
}

void rewatch(event_loop &loop, int descriptor, uint32_t events)
{
    const auto found = loop.watches.find(descriptor);
    if (found == loop.watches.end() || found->second.events == events)
        return;
    found->second.events = events;
    epoll_event event = event_for(descriptor, found->second);
    epoll_ctl(loop.epoll, EPOLL_CTL_MOD, descriptor, &event);
}

void unwatch(event_loop &loop, int descriptor)
{
    if (loop.watches.erase(descriptor))
        epoll_ctl(loop.epoll, EPOLL_CTL_DEL, descriptor, nullptr);
}

void every_second(event_loop &loop, on_tick tick, void *context)
{
    loop.ticks.push_back({tick, context});
}

timer call_at(event_loop &loop, int64_t due, on_time call, void *context, void *row)
{
    const timer asked{due, ++loop.last_timer};
    loop.timers[asked] = {call, context, row};
    return asked;
}

void take_back(event_loop &loop, timer &asked)
{
    loop.timers.erase(asked);
    asked = {};
}

int64_t next_on_grid(int64_t due, int64_t step, int64_t now)
{
    return now < due ? due : now + step - (now - due) % step;
}

int turn_loop(event_loop &loop, int wait_ms)
{
    epoll_event events[64];
    const int count = epoll_wait(loop.epoll, events, 64, wait_ms);
    for (int i = 0; i < count && !loop.ended; i++)
        call_ready(loop, events[i]);
    return count;
}

void tick_loop(event_loop &loop)
{
    for (const tick_entry &entry : loop.ticks)
        entry.tick(entry.context);
}

void make_due_calls(event_loop &loop, int64_t by)
{
    // A call may ask for others, and cancel others.
    const uint64_t last = loop.last_timer;
    timer made{};
    for (auto next = loop.timers.begin(); next != loop.timers.end() && next->first.due <= by;
         next = loop.timers.upper_bound(made)) {
        made = next->first;
        if (made.serial > last)
            continue;
        const timed_call due = next->second;
        loop.timers.erase(next);
        due.call(due.context, due.row);
    }
}

bool run_loop(event_loop &loop)
{
    int64_t next_tick = now_ms() + tick_ms;
    while (!loop.ended) {
        // What is due by now is done behind what is ready by now: what arrived before an interval ended
        // belongs to it, also when the process was stopped for a while.
        const int64_t by = grid_ms();
        if (turn_loop(loop, time_to_wait(loop, next_tick)) < 0) {
            if (errno != EINTR)
                return false;
            continue;
        }
        if (!loop.ended)
            make_due_calls(loop, by);

        const int64_t now = now_ms();
        if (now < next_tick)
            continue;
        next_tick += tick_ms;
        if (next_tick <= now) // the machine slept, or a round took long: ticks are not caught up on
            next_tick = now + tick_ms;
        tick_loop(loop);
    }
    return true;
}

void end_loop(event_loop &loop)
{
    loop.ended = true;
}
