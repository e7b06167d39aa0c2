#include "rmon/rpc/rmonrpc_clnt.h"

#include <csignal>

namespace {

/** What the RPC library hands to the encoder and the decoder. */
struct planned {
    void *record;
    const wire::layout *layout;
};

bool_t xdr_planned(XDR *xdrs, planned *what)
{
    return wire::xdr_layout(xdrs, what->record, *what->layout);
}

constinit reply_buffer *used_buffers = nullptr;

/**
 * A write to an agent that went away raises SIGPIPE, which may end the process:
 * by the signal's default, or by a handler that falls back on it, as the
 * engine's own does. Most host programs ignore the signal; elsewhere it is kept
 * from this thread for the length of a call.
 */
struct pipe_signal {
    sigset_t mask;
    bool held;
};

pipe_signal hold_pipe_signal()
{
    pipe_signal state{};
    struct sigaction action;
    if (sigaction(SIGPIPE, nullptr, &action) != 0 || action.sa_handler == SIG_IGN)
        return state;
    sigset_t pending;
    if (sigpending(&pending) == 0 && sigismember(&pending, SIGPIPE))
        return state; // blocked and raised by someone else: theirs to take
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    state.held = pthread_sigmask(SIG_BLOCK, &pipe, &state.mask) == 0;
    return state;
}

void let_pipe_signal(const pipe_signal &state)
{
    if (!state.held)
        return;
    sigset_t pipe;
    sigemptyset(&pipe);
    sigaddset(&pipe, SIGPIPE);
    const timespec at_once{};
    while (sigtimedwait(&pipe, nullptr, &at_once) > 0)
        ;
    pthread_sigmask(SIG_SETMASK, &state.mask, nullptr);
}

} // namespace

bool call_procedure(
    CLIENT *client,
    uint32_t number,
    const void *argument,
    const wire::layout &argument_layout,
    reply_buffer &buffer,
    timeval timeout)
{
    if (!buffer.listed) {
        buffer.listed = true;
        buffer.next = used_buffers;
        used_buffers = &buffer;
    }
    wire::release_layout(buffer.reply, *buffer.layout);
    std::memset(buffer.reply, 0, buffer.layout->size);

    planned request{const_cast<void *>(argument), &argument_layout};
    planned reply{buffer.reply, buffer.layout};
    const auto routine = reinterpret_cast<xdrproc_t>(reinterpret_cast<void (*)()>(xdr_planned));

    const pipe_signal state = hold_pipe_signal();
    const clnt_stat status = clnt_call(client, number, routine, &request, routine, &reply, timeout);
    let_pipe_signal(state);

    if (status != RPC_SUCCESS)
        wire::release_layout(buffer.reply, *buffer.layout);
    return status == RPC_SUCCESS;
}

void release_abandoned_replies()
{
    for (reply_buffer *buffer = used_buffers; buffer; buffer = buffer->next)
        wire::release_layout(buffer->reply, *buffer->layout);
}
