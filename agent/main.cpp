/* rmon-agent: starts the probe and the server, and runs them until a signal comes. */

#include "agent/dispatch.h"
#include "agent/options.h"
#include "agent/probe.h"
#include "agent/server.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>

#include <sys/epoll.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace {

bool on_call(void *context, const uint8_t *message, std::size_t size, std::vector<uint8_t> &output)
{
    auto &agent = *static_cast<probe *>(context);
    const bool answered = answer_call(agent, served_procedures(), message, size, output);
    save_state(agent); // before the answer goes out
    return answered;
}

void on_signal(void *context, uint32_t)
{
    end_loop(*static_cast<event_loop *>(context));
}

/** Has SIGINT and SIGTERM end the loop. False, with errno, when the kernel refuses. */
bool catch_signals(event_loop &loop)
{
    std::signal(SIGPIPE, SIG_IGN);
    sigset_t ending;
    sigemptyset(&ending);
    sigaddset(&ending, SIGINT);
    sigaddset(&ending, SIGTERM);
    sigprocmask(SIG_BLOCK, &ending, nullptr);
    const int descriptor = signalfd(-1, &ending, SFD_NONBLOCK | SFD_CLOEXEC); // stays open to the end
    return descriptor >= 0 && watch(loop, descriptor, EPOLLIN, on_signal, &loop);
}

void say(const std::string &line)
{
    std::fprintf(stderr, "rmon-agent: %s\n", line.c_str());
}

/** Runs until it is told to end. An empty text, or what went wrong. */
std::string serve_until_signal(probe &agent, tcp_server &server, const options &chosen)
{
    if (!open_loop(agent.loop) || !catch_signals(agent.loop))
        return std::string("cannot wait for events: ") + std::strerror(errno);
    const std::string error = open_server(server, agent.loop, chosen.host, chosen.port, on_call, &agent);
    if (!error.empty())
        return error;
    const bool may_capture = chosen.capture && capture_permitted();
    if (may_capture)
        say("Ethernet statistics come from live capture");
    else if (chosen.capture)
        say("no right to capture (CAP_NET_RAW): Ethernet statistics come from the kernel's counters");
    else
        say("Ethernet statistics come from the kernel's counters");
    if (!start_probe(agent, may_capture))
        return std::string("cannot read the interfaces: ") + std::strerror(errno);
    if (!chosen.state.empty()) {
        const std::string wrong = open_state(agent, chosen.state);
        if (!wrong.empty())
            return wrong;
    }

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
    close_server(server);
    stop_probe(agent);
    close_loop(agent.loop);
    return error.empty() ? 0 : 1;
}
