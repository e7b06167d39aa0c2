#include "agent/probe.h"

#include <ctime>

#include <sys/epoll.h>

namespace {

/** Hundredths of a second, the time that the machine slept included. */
int64_t hundredths()
{
    timespec now;
    clock_gettime(CLOCK_BOOTTIME, &now);
    return int64_t{now.tv_sec} * 100 + now.tv_nsec / 10000000;
}

void on_announcement(void *context, uint32_t)
{
    auto &agent = *static_cast<probe *>(context);
    const interface_news news = hear_interfaces(agent.interfaces, up_time(agent));
    for (const int32_t index : news.gone)
        etherstats_interface_gone(agent, index);
    for (const int32_t index : news.changed)
        source_changed(agent.sources, index);
}

} // namespace

uint32_t up_time(const probe &agent)
{
    return static_cast<uint32_t>(hundredths() - agent.started);
}

bool start_probe(probe &agent, bool may_capture)
{
    agent.started = hundredths();
    if (!open_interfaces(agent.interfaces)
        || !watch(agent.loop, agent.interfaces.announcements, EPOLLIN, on_announcement, &agent))
        return false;
    fill_protocols(agent.protocols);
    open_sources(agent, may_capture);
    start_etherstats(agent);
    return true;
}

void stop_probe(probe &agent)
{
    close_state(agent);
    agent.etherstats.clear();
    close_sources(agent.sources);
    if (agent.interfaces.announcements >= 0)
        unwatch(agent.loop, agent.interfaces.announcements);
    close_interfaces(agent.interfaces);
}
