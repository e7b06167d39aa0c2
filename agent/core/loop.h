/*
 * The event loop: the only place where the agent waits.
 *
 * Descriptors are watched with epoll, level-triggered; whatever is done by the
 * clock (time-outs now, sampling intervals) hangs on a tick of one second.
 */
#pragma once

#include <cstdint>
#include <map>
#include <vector>

/** Called with the EPOLL* events that are there. It may unwatch any descriptor, its own included. */
using on_ready = void (*)(void *context, uint32_t events);

using on_tick = void (*)(void *context);

struct descriptor_watch {
    uint32_t events;
    uint32_t serial; // tells a descriptor from an earlier one of the same number
    on_ready ready;
    void *context;
};

struct tick_entry {
    on_tick tick;
    void *context;
};

struct event_loop {
    int epoll = -1;
    uint32_t last_serial = 0;
    std::map<int, descriptor_watch> watches;
    std::vector<tick_entry> ticks;
    bool ended = false;
};

/** Milliseconds of a clock that only goes forward. */
int64_t now_ms();

/** False, with errno, when the kernel refuses. */
bool open_loop(event_loop &loop);
void close_loop(event_loop &loop);

/** Calls ready whenever one of events (EPOLLIN, EPOLLOUT; errors always count) is there. */
bool watch(event_loop &loop, int descriptor, uint32_t events, on_ready ready, void *context);

/** Changes what an already watched descriptor is watched for. */
void rewatch(event_loop &loop, int descriptor, uint32_t events);

/** To be called before the descriptor is closed. */
void unwatch(event_loop &loop, int descriptor);

/** Calls tick about once a second, for as long as the loop runs. */
void every_second(event_loop &loop, on_tick tick, void *context);

/** Waits and calls until end_loop(). False, with errno, when waiting fails. */
bool run_loop(event_loop &loop);
void end_loop(event_loop &loop);

/* What run_loop() does again and again. */

/** Waits for so long at most and calls what is ready. How many were; -1, with errno, when waiting fails. */
int turn_loop(event_loop &loop, int wait_ms);

/** Calls what hangs on the tick. */
void tick_loop(event_loop &loop);
