// SPDX-License-Identifier: MIT
/*
 * The event loop: the only place where the agent waits.
 *
 * Descriptors are watched with epoll, level-triggered. What may come a little
 * late (time-outs, another try) hangs on a tick of one second; what has a time
 * of its own (the end of an interval) is called then, to the millisecond.
 */
#pragma once

#include <compare>
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

using on_time = void (*)(void *context, void *row);

/** A call that is due at a certain time. Whoever asked for it keeps this, to cancel it. */
struct timer {
    int64_t due = 0;     // of grid_ms()
    uint64_t serial = 0; // 0: none
    auto operator<=>(const timer &) const = default;
};

struct timed_call {
    on_time call;
    void *context;
    void *row;
};

struct event_loop {
    int epoll = -1;
    uint32_t last_serial = 0;
    std::map<int, descriptor_watch> watches;
    std::vector<tick_entry> ticks;
    uint64_t last_timer = 0;
    std::map<timer, timed_call> timers; // the next one first
    bool ended = false;
};

/** Milliseconds of a clock that only goes forward. */
int64_t now_ms();

/** Milliseconds of the clock behind sysUpTime, which goes on while the machine sleeps. */
int64_t grid_ms();

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

/** Has call made once, at a time of grid_ms(), or as soon as the loop gets to it after that. */
timer call_at(event_loop &loop, int64_t due, on_time call, void *context, void *row);

/** Cancels a call; does nothing to one that was made already or never asked for. */
void take_back(event_loop &loop, timer &asked);

/**
 * The next time behind now on a grid of so many milliseconds, of which `due` is
 * a point. A late call thus does not make the next one late. Points that passed
 * by since are left out: there is no use in several calls at once.
 */
int64_t next_on_grid(int64_t due, int64_t step, int64_t now);

/** Waits and calls until end_loop(). False, with errno, when waiting fails. */
bool run_loop(event_loop &loop);
void end_loop(event_loop &loop);

/* What run_loop() does again and again. */

/** Waits for so long at most and calls what is ready. How many were; -1, with errno, when waiting fails. */
int turn_loop(event_loop &loop, int wait_ms);

/** Calls what hangs on the tick. */
void tick_loop(event_loop &loop);

/** Makes the calls that are due by a time, those that were asked for before it was called, each once. */
void make_due_calls(event_loop &loop, int64_t by);
