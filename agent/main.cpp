// SPDX-License-Identifier: MIT
/* rmon-agent: starts the probe and the server, and runs them until a signal comes. */

#include "agent/rmon1/capture_save.h"
#include "agent/rpc/dispatch.h"
#include "agent/nde/netflow.h"
#include "agent/options.h"
#include "agent/capture/probe.h"
#include "agent/capture/start.h"
#include "agent/rpc/server.h"
#include "agent/voice/scenario.h"
#include "agent/voice/voice.h"
#include "agent/voice/watch.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include <sys/epoll.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace {

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

void say(const std::string &line)
{
    std::fprintf(stderr, "rmon-agent: %s\n", line.c_str());
}

/** The signals that the agent hears, and where it hears them. */
struct hearing {
    probe *agent;
    int descriptor;
};

void on_signal(void *context, uint32_t)
{
    const auto &heard = *static_cast<hearing *>(context);
    probe &agent = *heard.agent;
    signalfd_siginfo caught;
    if (read(heard.descriptor, &caught, sizeof caught) != sizeof caught)
        return;
    if (caught.ssi_signo == SIGHUP)
        say("SIGHUP: the settings stay as they are");
    else if (caught.ssi_signo != SIGUSR1)
        end_loop(agent.loop);
    else if (!begin_capture_files(agent.files, agent.loop))
        say(std::string("cannot read files: ") + std::strerror(errno));
}

/**
 * Has SIGINT and SIGTERM end the loop, and SIGUSR1 begin the reading of files. SIGHUP ends nothing: it is
 * what a terminal that closes sends, and people who mean that settings are to be read again. False, with
 * errno, when the kernel refuses.
 */
bool catch_signals(hearing &heard)
{
    std::signal(SIGPIPE, SIG_IGN);
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGINT, SIGTERM, SIGUSR1, SIGHUP})
        sigaddset(&signals, signal);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    heard.descriptor = signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC); // stays open to the end
    return heard.descriptor >= 0 && watch(heard.agent->loop, heard.descriptor, EPOLLIN, on_signal, &heard);
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

/** Begins to measure. An empty text, or what went wrong. */
std::string start_measuring(probe &agent, const options &chosen, bool may_capture)
{
    agent.sources.ring = chosen.ring;
    agent.interfaces.measured = chosen.interfaces;
    std::string wrong = start_probe(agent, may_capture, chosen.reading);
    if (wrong.empty())
        say(origin(chosen, may_capture));
    return wrong;
}

/** Runs until it is told to end. An empty text, or what went wrong. */
std::string serve_until_signal(probe &agent, tcp_server &server, const options &chosen)
{
    std::string wrong;
    if (!chosen.voice.empty())
        wrong = read_scenario(storage<voice_monitors>(agent).scenario, chosen.voice);
    if (!wrong.empty())
        return wrong;
    const bool may_capture = chosen.capture && capture_permitted();
    // A scenario is played in the place of what is seen.
    if (chosen.voice.empty() && (may_capture || !chosen.reading.files.empty()))
        prepare_watch(agent);
    hearing heard{&agent, -1};
    if (!open_loop(agent.loop) || !catch_signals(heard))
        return std::string("cannot wait for events: ") + std::strerror(errno);

    wrong = open_server(server, agent.loop, chosen.host, chosen.port, on_call, &agent);
    if (wrong.empty() && !chosen.captures.empty())
        wrong = open_captures(agent, chosen.captures);
    if (wrong.empty())
        wrong = start_measuring(agent, chosen, may_capture);
    if (wrong.empty() && chosen.netflow)
        wrong = open_netflow(agent, chosen.host, *chosen.netflow);
    if (wrong.empty() && !chosen.state.empty())
        wrong = open_state(agent, chosen.state);
    agent.state.tell = on_settings_written;
    agent.state.context = &server;
    if (!wrong.empty())
        return wrong;

    play_scenario(agent);
    begin_watch(agent);
    if (!chosen.reading.held && !begin_capture_files(agent.files, agent.loop))
        return std::string("cannot read files: ") + std::strerror(errno);

    std::printf("rmon-agent: listening on %s\n", server.address.c_str());
    std::fflush(stdout);
    if (!run_loop(agent.loop))
        return std::string("cannot wait for events: ") + std::strerror(errno);
    return {};
}

} // namespace

int main(int count, char **words)
{
    options chosen;
    const std::string mistake = read_options(chosen, count, words);
    if (!mistake.empty()) {
        say(mistake + " (--help lists the options)");
        return 2;
    }
    if (chosen.help) {
        std::fputs(usage, stdout);
        return 0;
    }

    probe agent;
    tcp_server server;
    const std::string error = serve_until_signal(agent, server, chosen);
    if (!error.empty())
        say(error);
    finish_state(agent); // and its clients hear of it
    close_server(server);
    stop_probe(agent);
    close_loop(agent.loop);
    return error.empty() ? 0 : 1;
}
