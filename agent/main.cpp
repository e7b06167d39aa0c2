// SPDX-License-Identifier: MIT
/* rmon-agent: starts the probe and the server, and runs them until a signal comes. */

#include "agent/capture/probe.h"
#include "agent/capture/start.h"
#include "agent/core/log.h"
#include "agent/core/memory.h"
#include "agent/nde/netflow.h"
#include "agent/options.h"
#include "agent/rmon1/capture_save.h"
#include "agent/rpc/dispatch.h"
#include "agent/rpc/server.h"
#include "agent/service/confine.h"
#include "agent/service/notify.h"
#include "agent/voice/scenario.h"
#include "agent/voice/voice.h"
#include "agent/voice/watch.h"

#include "rmon/version.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include <sys/epoll.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace {

/** All that runs, and what it was started with. */
struct running {
    std::vector<std::string> words;
    options chosen;
    probe agent;
    tcp_server server;
    int signals = -1; // where signals are heard
};

bool on_call(
    void *context,
    const uint8_t *message,
    std::size_t size,
    std::vector<uint8_t> &output,
    uint64_t &waits_for)
{
    auto &agent = *static_cast<probe *>(context);
    const bool answered = answer_call(agent, served_procedures(), message, size, output);
    waits_for = save_state(agent);
    return answered;
}

void on_settings_written(void *context, uint64_t number)
{
    release_replies(*static_cast<tcp_server *>(context), number);
}

const std::vector<network> &allowed_networks(const options &chosen)
{
    return chosen.allowed.empty() ? loopback_networks() : chosen.allowed;
}

/**
 * Takes from the configuration file what can change while the agent runs; no
 * counter and no row is touched. What is wrong with the file is told, and all
 * stays as it was.
 */
void read_configuration_again(running &all)
{
    if (all.chosen.config.empty()) {
        say(log_level::notice, "SIGHUP: the settings stay as they are");
        return;
    }
    notify_reloading();
    options now;
    if (const std::string wrong = read_options(now, all.words); !wrong.empty()) {
        say(log_level::error, "SIGHUP: the settings stay as they are: " + wrong);
    } else {
        all.chosen.allowed = now.allowed;
        allow_networks(all.server, allowed_networks(all.chosen));
        const bool is_whole = all.chosen == now;
        say(is_whole ? log_level::notice : log_level::warning,
            "SIGHUP: read " + all.chosen.config + " again"
                + (is_whole ? "" : "; what changed beside the networks of clients needs a restart"));
    }
    notify_ready();
}

void on_signal(void *context, uint32_t)
{
    auto &all = *static_cast<running *>(context);
    signalfd_siginfo caught;
    if (read(all.signals, &caught, sizeof caught) != sizeof caught)
        return;
    if (caught.ssi_signo == SIGHUP)
        read_configuration_again(all);
    else if (caught.ssi_signo != SIGUSR1)
        end_loop(all.agent.loop);
    else if (!begin_capture_files(all.agent.files, all.agent.loop))
        say(log_level::error, std::string("cannot read files: ") + std::strerror(errno));
}

/**
 * Has SIGINT and SIGTERM end the loop, SIGUSR1 begin the reading of files, and
 * SIGHUP read the configuration again: it ends nothing, as a terminal that
 * closes sends it too. False, with errno, when the kernel refuses.
 */
bool catch_signals(running &all)
{
    std::signal(SIGPIPE, SIG_IGN);
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGUSR1, SIGHUP})
        sigaddset(&signals, signal);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    all.signals = signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC); // stays open to the end
    return all.signals >= 0 && watch(all.agent.loop, all.signals, EPOLLIN, on_signal, &all);
}

/** Where the Ethernet statistics come from. */
const char *origin(const options &chosen, bool may_capture)
{
    if (!chosen.reading.files.empty())
        return "Ethernet statistics come from capture files";
    if (may_capture)
        return "Ethernet statistics come from live capture";
    return chosen.capture
               ? "no right to capture (CAP_NET_RAW): Ethernet statistics come from the kernel's counters"
               : "Ethernet statistics come from the kernel's counters";
}

/** Finds the interfaces, takes back what was set, and begins to measure. An empty text, or what went
 * wrong. */
std::string start_measuring(probe &agent, const options &chosen, bool may_capture)
{
    std::string wrong;
    if (!chosen.captures.empty())
        wrong = open_captures(agent, chosen.captures);
    if (!wrong.empty())
        return wrong;
    agent.sources.ring = chosen.ring;
    agent.interfaces.measured = chosen.interfaces;
    wrong = start_probe(agent, may_capture, chosen.reading);
    if (!wrong.empty())
        return wrong;
    say(log_level::notice, origin(chosen, may_capture));
    if (chosen.netflow)
        wrong = open_netflow(agent, chosen.host, *chosen.netflow);
    if (wrong.empty() && !chosen.state.empty())
        wrong = open_state(agent, chosen.state);
    if (!wrong.empty())
        return wrong;
    play_scenario(agent);
    begin_watch(agent);
    if (!chosen.reading.held && !begin_capture_files(agent.files, agent.loop))
        return std::string("cannot read files: ") + std::strerror(errno);
    return {};
}

/** Runs until it is told to end. An empty text, or what went wrong. */
std::string serve_until_signal(running &all)
{
    probe &agent = all.agent;
    const options &chosen = all.chosen;
    std::string wrong;
    if (!chosen.voice.empty())
        wrong = read_scenario(storage<voice_monitors>(agent).scenario, chosen.voice);
    if (!wrong.empty())
        return wrong;
    learned_memory.limit = chosen.memory ? std::min<uint64_t>(chosen.memory, SIZE_MAX / 2) : usual_memory();
    const bool may_capture = chosen.capture && capture_permitted();
    // The decoder's process begins before there is anything that it could inherit. A scenario is played in
    // the place of what is seen.
    if (chosen.voice.empty() && (may_capture || !chosen.reading.files.empty()))
        prepare_watch(agent);
    if (!open_loop(agent.loop) || !catch_signals(all))
        return std::string("cannot wait for events: ") + std::strerror(errno);
    wrong = open_server(all.server, agent.loop, chosen.host, chosen.port, on_call, &agent);
    if (!wrong.empty())
        return wrong;
    allow_networks(all.server, allowed_networks(chosen));
    agent.state.tell = on_settings_written;
    agent.state.context = &all.server;
    wrong = start_measuring(agent, chosen, may_capture);
    if (wrong.empty())
        wrong = confine({chosen.user, may_capture && chosen.reading.files.empty()});
    if (!wrong.empty())
        return wrong;

    std::printf("rmon-agent: listening on %s\n", all.server.address.c_str());
    std::fflush(stdout);
    start_watchdog(agent.loop);
    notify_ready();
    const bool ended_well = run_loop(agent.loop);
    const int error = errno;
    notify_stopping();
    return ended_well ? "" : std::string("cannot wait for events: ") + std::strerror(error);
}

} // namespace

int main(int count, char **words)
{
    running all;
    all.words.assign(words + std::min(count, 1), words + count);
    const std::string mistake = read_options(all.chosen, all.words);
    if (!mistake.empty()) {
        say(log_level::error, mistake + " (--help lists the options)");
        return 2;
    }
    if (all.chosen.help || all.chosen.version) {
        const std::string text = all.chosen.help ? usage() : "rmon-agent " RMON_VERSION "\n";
        std::fputs(text.c_str(), stdout);
        return 0;
    }

    const std::string error = serve_until_signal(all);
    if (!error.empty())
        say(log_level::error, error);
    finish_state(all.agent); // and its clients hear of it
    close_server(all.server);
    stop_probe(all.agent);
    close_loop(all.agent.loop);
    return error.empty() ? 0 : 1;
}
