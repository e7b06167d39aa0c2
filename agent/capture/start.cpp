// SPDX-License-Identifier: MIT
#include "agent/capture/start.h"

#include "agent/capture/family.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <span>

#include <sys/epoll.h>

namespace {

/** Calls one of the functions of each family that has it. */
template <class... Arguments>
void tell_families(void (*family::*what)(probe &, Arguments...), probe &agent, Arguments... arguments)
{
    for (const family *one : families())
        if (one->*what)
            (one->*what)(agent, arguments...);
}

void on_announcement(void *context, uint32_t)
{
    auto &agent = *static_cast<probe *>(context);
    const interface_news news = hear_interfaces(agent.interfaces, up_time(agent));
    for (const int32_t index : news.gone)
        tell_families(&family::interface_gone, agent, index);
    for (const int32_t index : news.changed) {
        source_changed(agent.sources, index);
        tell_families(&family::interface_changed, agent, index);
    }
}

void on_probe_tick(void *context)
{
    auto &agent = *static_cast<probe *>(context);
    tell_families(&family::tick, agent);
    retry_state(agent);
}

} // namespace

std::string start_probe(probe &agent, bool may_capture, const file_reading &reading)
{
    start_clock(agent);
    fill_protocols(agent.protocols);
    open_sources(agent.sources, agent.loop, agent.interfaces, agent.protocols, may_capture);
    if (!reading.files.empty()) {
        std::string wrong = open_capture_files(agent.files, reading, agent.sources, agent.interfaces);
        if (!wrong.empty())
            return wrong;
    } else if (
        !open_interfaces(agent.interfaces)
        || !watch(agent.loop, agent.interfaces.announcements, EPOLLIN, on_announcement, &agent)) {
        return std::string("cannot read the interfaces: ") + std::strerror(errno);
    }
    for (const std::string &name : agent.interfaces.measured) {
        const auto found =
            std::ranges::find(agent.interfaces.rows, name, [](const auto &row) -> const std::string & {
                return row.second.name;
            });
        if (found == agent.interfaces.rows.end())
            return "there is no interface " + name;
        if (!is_ethernet_like(found->second))
            return name + " carries no Ethernet frames";
    }
    tell_families(&family::start, agent);
    every_second(agent.loop, on_probe_tick, &agent);
    return {};
}

void stop_probe(probe &agent)
{
    const std::span<const family *const> all = families();
    for (auto one = all.rbegin(); one != all.rend(); ++one)
        if ((*one)->stop)
            (*one)->stop(agent);
    close_state(agent);
    close_capture_files(agent.files, agent.loop);
    close_sources(agent.sources);
    if (agent.interfaces.announcements >= 0)
        unwatch(agent.loop, agent.interfaces.announcements);
    close_interfaces(agent.interfaces);
}
