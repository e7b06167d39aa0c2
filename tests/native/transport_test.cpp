// SPDX-License-Identifier: MIT
/*
 * Calls on a connection whose other end is the test: what each reply comes to,
 * held against the words of the RPC library's own client.
 */

#include "rmon/rpc/rmonrpc_clnt.h"
#include "rmon/rpc/rmonrpc_transport.h"
#include "tests/native/check.h"

#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <ctime>
#include <thread>
#include <utility>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

/** Of the first call on a line, and of the second. */
constexpr uint32_t first_xid = 0x01000000, second_xid = first_xid - 1;
constexpr timeval moment{0, 20000};
constexpr timeval long_enough{10, 0};

/** A client and the other end of its connection. */
struct line {
    CLIENT *client;
    int agent;
};

/** The library's own client, or ours over it. */
line make_line(bool ours)
{
    int ends[2];
    check(socketpair(AF_UNIX, SOCK_STREAM, 0, ends) == 0, "there are sockets");
    sockaddr_in nobody{};
    nobody.sin_family = AF_INET;
    const netbuf address{sizeof nobody, sizeof nobody, &nobody};
    CLIENT *client = ours ? client_over(ends[0], RMONRPC_PROGRAM, RMONRPC_VERSION)
                          : clnt_vc_create(ends[0], &address, RMONRPC_PROGRAM, RMONRPC_VERSION, 0, 0);
    // Both count down; the library does it in network order.
    uint32_t xid = ours ? first_xid : ntohl(htonl(first_xid) + 1) - 1;
    check(clnt_control(client, CLSET_XID, reinterpret_cast<char *>(&xid)), "transaction ids can be set");
    char yes = 1;
    clnt_control(client, CLSET_FD_CLOSE, &yes);
    return {client, ends[1]};
}

void end(line &of)
{
    clnt_destroy(of.client);
    if (of.agent >= 0)
        close(of.agent);
}

int socket_of(const line &of)
{
    int socket = -1;
    clnt_control(of.client, CLGET_FD, reinterpret_cast<char *>(&socket));
    return socket;
}

void say(const line &to, const bytes &what)
{
    check(
        send(to.agent, what.all.data(), what.all.size(), MSG_NOSIGNAL)
            == static_cast<ssize_t>(what.all.size()),
        "the reply is sent");
}

bytes record(const bytes &message)
{
    return bytes{}.unit(static_cast<uint32_t>(message.all.size()) | 0x80000000u).add(message);
}

bytes accepted(uint32_t xid, uint32_t status)
{
    return bytes{}.unit(xid).unit(1).unit(0).unit(0).unit(0).unit(status);
}

/** Another call on line, whose result is a number. */
clnt_stat call(const line &on, int32_t &result, timeval patience = long_enough)
{
    return clnt_call(
        on.client, 5, reinterpret_cast<xdrproc_t>(reinterpret_cast<void (*)()>(xdr_void)), nullptr,
        reinterpret_cast<xdrproc_t>(reinterpret_cast<void (*)()>(xdr_int)), &result, patience);
}

/* ---- the library's words ------------------------------------------------------- */

struct failure {
    const char *what;
    bytes said;
    bool hangs_up;
    bool times_out = false;
};

std::string words(const failure &each, bool ours, timeval patience)
{
    line on = make_line(ours);
    say(on, each.said);
    if (each.hangs_up) {
        close(on.agent);
        on.agent = -1;
    }
    int32_t result = 0;
    check(call(on, result, patience) != RPC_SUCCESS, std::string{each.what} + " is no success");
    const std::string text = clnt_sperror(on.client, "label");
    end(on);
    return text;
}

void test_words()
{
    const uint32_t xid = first_xid;
    std::vector<failure> failures{
        {"nothing", {}, false, true},
        {"a lost connection", {}, true},
        {"half a mark", bytes{{0x80, 0}}, true},
        {"half a header", bytes{}.unit(0x8000001c).unit(xid).unit(1), true},
        {"half a result", bytes{}.unit(0x8000001c).add(accepted(xid, 0)), true},
        {"no result", record(accepted(xid, 0)), false},
        {"a result in an empty fragment", bytes{}.unit(24).add(accepted(xid, 0)).unit(0x80000000), true},
        {"other RPC versions", record(bytes{}.unit(xid).unit(1).unit(1).unit(0).unit(3).unit(4)), false},
        {"a call", record(bytes{}.unit(xid).unit(0).unit(2).unit(RMONRPC_PROGRAM).unit(1).unit(5)), false,
         true},
        {"a reply to another call", record(accepted(xid - 1, 0).unit(7)), false, true},
    };
    for (uint32_t status = 1; status < 8; status++)
        failures.push_back({"a status", record(accepted(xid, status).unit(2).unit(3)), false});
    for (uint32_t why = 0; why < 16; why++)
        failures.push_back(
            {"an authentication error", record(bytes{}.unit(xid).unit(1).unit(1).unit(1).unit(why)), false});
    for (const uint32_t status : {8u, 0x7fffffffu, 0x80000000u, 0xffffffffu})
        failures.push_back({"an unknown status", record(accepted(xid, status)), false});
    for (const failure &each : failures) {
        const timeval patience = each.times_out ? moment : long_enough;
        const std::string library = words(each, false, patience), ours = words(each, true, patience);
        check((ours == "label: RPC: Timed out") == each.times_out, std::string{each.what} + ": " + ours);
        check(
            library == ours, std::string{each.what} + ": \"" + ours + "\", the library: \"" + library + '"');
    }
}

/** Answers of a kind that the protocol doesn't know end the call; the library waits on for another one. */
void test_unknown_answers()
{
    for (const uint32_t kind : {2u, 3u, 0x7fffffffu, 0x80000000u, 0xffffffffu}) {
        const auto number = std::to_string(static_cast<int32_t>(kind));
        const bytes denial = record(bytes{}.unit(first_xid).unit(1).unit(1).unit(kind).unit(3));
        const bytes answer = record(bytes{}.unit(first_xid).unit(1).unit(kind).unit(0).unit(0).unit(0));
        for (const auto &[what, said] : {std::pair{"denied by ", denial}, {"answered by ", answer}}) {
            const std::string text = words({what, said, false}, true, long_enough);
            check(text == "label: RPC: Failed (unspecified error)", what + number + ": " + text);
        }
        // The next call is none the worse for it; one to another call is none.
        line on = make_line(true);
        int32_t result = 0;
        say(on, bytes{}.add(denial).add(record(accepted(second_xid, 0).unit(8))));
        check(call(on, result) == RPC_FAILED, "a denial");
        check(call(on, result) == RPC_SUCCESS && result == 8, "the call after a denial");
        say(on, record(bytes{}.unit(first_xid).unit(1).unit(1).unit(kind).unit(3)));
        check(call(on, result, moment) == RPC_TIMEDOUT, "a denial of another call");
        end(on);
    }
    // A denial that ends before its kind is no answer.
    const failure half{"half a denial", record(bytes{}.unit(first_xid).unit(1).unit(1)), false, true};
    check(words(half, true, moment) == "label: RPC: Timed out", "half a denial");
}

/* ---- what is no reply --------------------------------------------------------------- */

/** They are none of the reply's bytes, wherever they stand, and make no reply alone. */
void test_empty_fragments()
{
    const bytes reply = accepted(first_xid, 0).unit(7);
    for (size_t at = 0; at <= reply.all.size(); at++) {
        line on = make_line(true);
        const auto middle = reply.all.begin() + static_cast<long>(at);
        say(on, bytes{}
                    .unit(0)
                    .unit(0x80000000)
                    .unit(static_cast<uint32_t>(at))
                    .add(bytes{{reply.all.begin(), middle}})
                    .unit(0)
                    .unit(0)
                    .unit(static_cast<uint32_t>(reply.all.size() - at))
                    .add(bytes{{middle, reply.all.end()}})
                    .unit(0x80000000));
        int32_t result = 0;
        const std::string what = "empty fragments before byte " + std::to_string(at);
        check(call(on, result) == RPC_SUCCESS && result == 7, what);
        check(call(on, result, moment) == RPC_TIMEDOUT, "no reply behind " + what);
        say(on, record(accepted(second_xid - 1, 0).unit(8)));
        check(call(on, result) == RPC_SUCCESS && result == 8, "the reply after " + what);
        end(on);
    }
}

/**
 * The call that a reply belongs to has given up before all of it arrived, or before any of it did, whether
 * the rest comes late or never: of a reply that was begun only the end can't be missing.
 */
void test_late_replies()
{
    const bytes first = record(accepted(first_xid, 0).unit(1));
    bool rest = false; // of a reply of which nothing came in time
    for (size_t early = 0; early <= first.all.size(); early += rest ? 1 : 0, rest = true) {
        line on = make_line(true);
        const auto middle = first.all.begin() + static_cast<long>(early);
        say(on, bytes{{first.all.begin(), middle}});
        int32_t result = 0;
        const bool whole = early == first.all.size();
        const clnt_stat status = call(on, result, whole ? long_enough : moment);
        check(status == (whole ? RPC_SUCCESS : RPC_TIMEDOUT), std::to_string(early) + " bytes in time");
        if (early > 0 || rest)
            say(on, bytes{{middle, first.all.end()}});
        say(on, record(accepted(second_xid, 0).unit(2)));
        check(call(on, result) == RPC_SUCCESS && result == 2, "the rest of a reply comes late");
        end(on);
    }
}

/* ---- waiting -------------------------------------------------------------------------- */

int64_t microseconds_since(const timespec &start)
{
    timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return (now.tv_sec - start.tv_sec) * 1000000 + (now.tv_nsec - start.tv_nsec) / 1000;
}

/** A receive waits by itself at first, for a while that has nothing to do with the call's. */
void test_patience()
{
    for (const timeval patience : {moment, timeval{0, 300000}, timeval{0, 900000}}) {
        line on = make_line(true);
        int32_t result = 0;
        timespec start;
        clock_gettime(CLOCK_MONOTONIC, &start);
        const std::string what = "a call of " + std::to_string(patience.tv_usec) + " us";
        check(call(on, result, patience) == RPC_TIMEDOUT, what + " in vain");
        check(microseconds_since(start) >= patience.tv_usec - 1000, what + " waits so long");
        end(on);
    }
}

/** The call's time is up, though there is always something to read: one fragment of 2 GB that is no reply. */
void test_time_is_up_amid_bytes()
{
    line on = make_line(true);
    say(on, bytes{}.unit(0x7fffffff).add(accepted(second_xid, 0)));
    std::thread agent([&] {
        const std::vector<char> units(1 << 16);
        while (send(on.agent, units.data(), units.size(), MSG_NOSIGNAL) > 0) {
        }
    });
    int32_t result = 0;
    check(call(on, result, timeval{0, 600000}) == RPC_TIMEDOUT, "a record without end is not waited for");
    clnt_destroy(on.client);
    agent.join();
    close(on.agent);
}

int answered_by_signal = -1;
std::vector<uint8_t> said_by_signal;

void say_by_signal(int)
{
    if (write(answered_by_signal, said_by_signal.data(), said_by_signal.size()) < 0)
        abort();
}

/** A signal that arrives while a call waits is none of the call's business; here its handler lets the agent
 * answer. */
void test_signals()
{
    struct sigaction action {
    }, before;
    action.sa_handler = say_by_signal; // without SA_RESTART: the system call ends with EINTR
    sigaction(SIGALRM, &action, &before);
    said_by_signal = record(accepted(first_xid, 0).unit(7)).all;
    for (const timeval patience : {long_enough, timeval{0, 450000}}) { // which waits in recv() and in poll()
        line on = make_line(true);
        answered_by_signal = on.agent;
        const itimerval soon{{0, 0}, {0, 20000}};
        setitimer(ITIMER_REAL, &soon, nullptr);
        int32_t result = 0;
        check(call(on, result, patience) == RPC_SUCCESS && result == 7, "a signal amid a call");
        end(on);
    }
    sigaction(SIGALRM, &before, nullptr);
}

/* ---- an agent that does not read, and one that does not end ---------------------------- */

/** As the library calls it, with one pointer behind the stream. */
bool_t xdr_megabytes(XDR *stream, ...)
{
    static char text[8 << 20];
    return XDR_PUTBYTES(stream, text, sizeof text);
}

void test_deaf_agent()
{
    line on = make_line(true);
    int32_t result = 0;
    const auto decode = reinterpret_cast<xdrproc_t>(reinterpret_cast<void (*)()>(xdr_int));
    check(
        clnt_call(on.client, 5, xdr_megabytes, nullptr, decode, &result, moment) == RPC_TIMEDOUT,
        "nobody takes a long call");
    check(call(on, result) == RPC_CANTSEND, "half a call is the connection's last");
    end(on);
}

struct any_length {
    wire::byte_list list;
};

bool_t xdr_any_length(XDR *stream, ...)
{
    va_list arguments;
    va_start(arguments, stream);
    auto *list = va_arg(arguments, any_length *);
    va_end(arguments);
    return xdr_record(stream, list);
}

/** One fragment of 2 GB, so a mark says, is all the same reply: its count promises 4 GB, and bytes come for
 * ever. */
void test_endless_result()
{
    line on = make_line(true);
    say(on, bytes{}.unit(0x7fffffff).add(accepted(first_xid, 0)).unit(0xffffffff));
    size_t said = 0;
    std::thread agent([&] {
        const std::vector<char> units(1 << 20);
        for (ssize_t sent; (sent = send(on.agent, units.data(), units.size(), MSG_NOSIGNAL)) > 0;)
            said += static_cast<size_t>(sent);
    });
    any_length result{};
    const auto nothing = reinterpret_cast<xdrproc_t>(reinterpret_cast<void (*)()>(xdr_void));
    check(
        clnt_call(on.client, 5, nothing, nullptr, xdr_any_length, &result, long_enough) == RPC_CANTDECODERES,
        "a result without end can't be decoded");
    check(result.list.length == 0, "and leaves nothing");
    clnt_destroy(on.client);
    agent.join();
    check(said > 256 << 20 && said < 264 << 20, "the call took " + std::to_string(said) + " bytes");
    close(on.agent);
}

/* ---- connecting ------------------------------------------------------------------------- */

/** A socket bound to a loopback port that was free, and its address. */
int bound_socket(sockaddr_in &address)
{
    address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    const int made = socket(AF_INET, SOCK_STREAM, 0);
    check(
        bind(made, reinterpret_cast<sockaddr *>(&address), size) == 0
            && getsockname(made, reinterpret_cast<sockaddr *>(&address), &size) == 0,
        "there is a free port");
    return made;
}

CLIENT *connect_to(const sockaddr_in &address, timeval patience)
{
    return connect_client(address, RMONRPC_PROGRAM, RMONRPC_VERSION, patience);
}

void test_connect()
{
    sockaddr_in address;
    const int listener = bound_socket(address);
    check(!connect_to(address, long_enough), "nobody listens");
    check(
        std::string{clnt_spcreateerror("agent")} == "agent: RPC: Remote system error - Connection refused",
        clnt_spcreateerror("agent"));

    check(listen(listener, 5) == 0, "somebody listens");
    CLIENT *client = connect_to(address, long_enough);
    sockaddr_in peer{};
    socklen_t size = sizeof peer;
    line on{client, accept(listener, reinterpret_cast<sockaddr *>(&peer), &size)};
    check(client && on.agent >= 0, "and takes the connection");
    check(ntohs(peer.sin_port) >= 1024, "from a port that is not reserved, whoever asks");
    uint32_t xid = first_xid;
    clnt_control(client, CLSET_XID, reinterpret_cast<char *>(&xid));
    say(on, record(accepted(first_xid, 0).unit(7)));
    int32_t result = 0;
    check(call(on, result) == RPC_SUCCESS && result == 7, "a call on it");
    end(on);
    close(listener);
}

/** An agent whose queue of connections is full lets nobody in, and tells nobody. */
void test_connect_in_vain()
{
    sockaddr_in address;
    const int listener = bound_socket(address);
    listen(listener, 0);
    std::vector<int> waiting;
    for (int i = 0; i < 8; i++) {
        waiting.push_back(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0));
        connect(waiting.back(), reinterpret_cast<const sockaddr *>(&address), sizeof address);
    }
    check(!connect_to(address, moment), "nobody answers");
    check(
        std::string{clnt_spcreateerror("agent")} == "agent: RPC: Remote system error - Connection timed out",
        clnt_spcreateerror("agent"));
    for (const int each : waiting)
        close(each);
    close(listener);
}

/* ---- a fork -------------------------------------------------------------------------------- */

/** What a child does on its parent's handles, which must not reach their agents. */
void test_left_links()
{
    line first = make_line(true), second = make_line(true);
    const int theirs[] = {dup(socket_of(first)), dup(socket_of(second))}; // as a parent has its own
    check(of_this_process(first.client) && of_this_process(second.client), "they are of this process");
    leave_links_to_parent();
    check(!of_this_process(first.client) && !of_this_process(second.client), "they were the parent's");
    int32_t result = 0;
    check(call(first, result) == RPC_CANTSEND, "no call on them");
    check(
        std::string{clnt_sperror(first.client, "label")}
            == "label: RPC: Unable to send; errno = Transport endpoint is not connected",
        clnt_sperror(first.client, "label"));
    line own = make_line(true);
    say(own, record(accepted(first_xid, 0).unit(9)));
    check(call(own, result) == RPC_SUCCESS && result == 9, "a new one is of this process");
    leave_links_to_parent();
    char byte;
    for (line *each : {&first, &second}) {
        const int agent = std::exchange(each->agent, -1);
        end(*each);
        check(recv(agent, &byte, 1, MSG_DONTWAIT) == -1 && errno == EAGAIN, "the agent hears nothing of it");
        close(agent);
    }
    end(own);
    for (const int each : theirs)
        close(each);
}

} // namespace

void test_transport()
{
    // The library's own client does not keep it away.
    signal(SIGPIPE, SIG_IGN);
    test_words();
    signal(SIGPIPE, SIG_DFL);
    test_unknown_answers();
    test_empty_fragments();
    test_late_replies();
    test_patience();
    test_time_is_up_amid_bytes();
    test_signals();
    test_deaf_agent();
    test_endless_result();
    test_connect();
    test_connect_in_vain();
    test_left_links();
}
