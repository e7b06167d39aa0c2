// SPDX-License-Identifier: MIT
/*
 * Time and waits of the transport, for connecting (rmonrpc_connect.cpp) and
 * for calls alone. They stand in the file of the calls, each of which needs
 * them: there the compiler sees all of a call at once.
 */
#pragma once

#include <cstdint>

#include <sys/time.h>

/** Now, in milliseconds of the monotonic clock, as all deadlines are. */
int64_t milliseconds();

/**
 * The end of a wait that begins now, and is no longer than RMONRPC_TIMEOUT
 * allows. The millisecond that has begun doesn't count: no wait is shorter.
 */
int64_t deadline_in(timeval timeout);

/** Waits for what poll() waits for: 1 when it is there, 0 when the time is up, -1 on failure. */
int wait_until(int64_t deadline, int socket, short events);
