// SPDX-License-Identifier: MIT
/*
 * What the service manager hears of the agent: that it is ready, that it reads its configuration again, that
 * it ends, and, while the loop turns, that it lives. Nothing is said, and nothing is missing, where no
 * manager started it; one line tells where it can't be reached.
 */
#pragma once

#include "agent/core/loop.h"

/** From now on the loop tells the manager that it turns, if the manager wants to know (WatchdogSec). */
void start_watchdog(event_loop &loop);

void notify_ready();
void notify_reloading();
void notify_stopping();
