// SPDX-License-Identifier: MIT
#include "agent/service/notify.h"

#include "agent/core/log.h"

#include <cstring>

#include <systemd/sd-daemon.h>

namespace {

void on_watchdog_tick(void *)
{
    sd_notify(0, "WATCHDOG=1");
}

} // namespace

void start_watchdog(event_loop &loop)
{
    uint64_t microseconds = 0;
    // The tick of a second is far more often than the manager asks for.
    if (sd_watchdog_enabled(0, &microseconds) > 0)
        every_second(loop, on_watchdog_tick, nullptr);
}

void notify_ready()
{
    if (const int error = sd_notify(0, "READY=1"); error < 0)
        say(log_level::warning,
            std::string("cannot tell the service manager anything: ") + std::strerror(-error));
}

void notify_reloading()
{
    sd_notify(0, "RELOADING=1");
}

void notify_stopping()
{
    sd_notify(0, "STOPPING=1");
}
