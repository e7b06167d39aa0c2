#include "agent/capture/probe.h"

#include <cerrno>
#include <cstring>
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
    for (const int32_t index : news.gone) {
        etherstats_interface_gone(agent, index);
        history_interface_gone(agent, index);
        hosts_interface_gone(agent, index);
        matrix_interface_gone(agent, index);
        channels_interface_gone(agent, index);
        dsmon_interface_gone(agent, index);
        smon_interface_gone(agent, index);
        art_interface_gone(agent, index);
        pdist_interface_gone(agent, index);
        addrmap_interface_gone(agent, index);
        hlhost_interface_gone(agent, index);
        hlmatrix_interface_gone(agent, index);
    }
    for (const int32_t index : news.changed) {
        source_changed(agent.sources, index);
        dsmon_stats_interface_changed(agent, index);
    }
}

} // namespace

uint32_t up_time(const probe &agent)
{
    return static_cast<uint32_t>(hundredths() - agent.started);
}

bool seconds_passed(uint32_t since, uint32_t now, uint32_t seconds)
{
    constexpr uint32_t early = 5;
    return now - since + early >= seconds * 100;
}

std::string start_probe(probe &agent, bool may_capture, const file_reading &reading)
{
    agent.started = hundredths();
    fill_protocols(agent.protocols);
    open_sources(agent, may_capture);
    if (!reading.files.empty()) {
        std::string wrong = open_capture_files(agent.files, reading, agent.sources, agent.interfaces);
        if (!wrong.empty())
            return wrong;
    } else if (
        !open_interfaces(agent.interfaces)
        || !watch(agent.loop, agent.interfaces.announcements, EPOLLIN, on_announcement, &agent)) {
        return std::string("cannot read the interfaces: ") + std::strerror(errno);
    }
    start_etherstats(agent);
    start_history(agent);
    start_hosttopn(agent);
    start_alarms(agent);
    start_art(agent);
    return {};
}

void stop_probe(probe &agent)
{
    close_netflow(agent);
    close_state(agent);
    agent.etherstats.clear();
    close_capture_files(agent.files, agent.loop);
    agent.history.clear();
    agent.hosts.clear();
    agent.hosttopn.clear();
    agent.matrix.clear();
    agent.channels.clear();
    close_sources(agent.sources);
    if (agent.interfaces.announcements >= 0)
        unwatch(agent.loop, agent.interfaces.announcements);
    close_interfaces(agent.interfaces);
}
