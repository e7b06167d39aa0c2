#include "agent/core/loop.h"

#include <cerrno>
#include <ctime>

#include <sys/epoll.h>
#include <unistd.h>

namespace {

constexpr int64_t tick_ms = 1000;

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

} // namespace

int64_t now_ms()
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1000000;
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

bool run_loop(event_loop &loop)
{
    int64_t next_tick = now_ms() + tick_ms;
    while (!loop.ended) {
        const int64_t wait = next_tick - now_ms();
        if (turn_loop(loop, wait > 0 ? static_cast<int>(wait) : 0) < 0 && errno != EINTR)
            return false;

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
