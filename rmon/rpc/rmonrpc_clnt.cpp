// SPDX-License-Identifier: MIT
#include "rmon/rpc/rmonrpc_clnt.h"

#include <cstdarg>

namespace {

/** What the RPC library hands to the encoder and the decoder. */
struct planned {
    void *record;
    const wire::layout *layout;
};

/** Of the type by which the library calls routines, one `planned *` behind the stream. */
bool_t xdr_planned(XDR *xdrs, ...)
{
    va_list arguments;
    va_start(arguments, xdrs);
    const auto *what = va_arg(arguments, planned *);
    va_end(arguments);
    return wire::xdr_layout(xdrs, what->record, *what->layout);
}

constinit reply_buffer *used_buffers = nullptr;

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

    const clnt_stat status = clnt_call(client, number, xdr_planned, &request, xdr_planned, &reply, timeout);
    if (status != RPC_SUCCESS)
        wire::release_layout(buffer.reply, *buffer.layout);
    return status == RPC_SUCCESS;
}

void release_abandoned_replies()
{
    for (reply_buffer *buffer = used_buffers; buffer; buffer = buffer->next)
        wire::release_layout(buffer->reply, *buffer->layout);
}
