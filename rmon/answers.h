// SPDX-License-Identifier: MIT
/*
 * The call itself and what a handler returns of it.
 *
 * With these, a table's worker is: take the arguments, ask, return the row.
 * All of them take a null reply, which stands for a call that failed: the
 * report has been given and the return value set.
 */
#pragma once

#include "rmon/arguments.h"
#include "rmon/rows.h"

namespace rmon {

/** In the place of a label: a failed call is FALSE without a message. */
inline constexpr const char *unreported = nullptr;

/** Warns with the RPC library's words for the client's last call, "LABEL: RPC: ...". */
void report_failure(CLIENT *client, const char *label);

/**
 * Makes the call. Null when link is not open, after the warning, and when the
 * call failed, after a warning under label (none where it is unreported); the
 * return value is FALSE then.
 */
template <class Procedure> typename Procedure::result *
ask(script_call call,
    const Procedure &procedure,
    link_id link,
    const typename Procedure::argument &request,
    const char *label)
{
    ZVAL_FALSE(call.return_value);
    CLIENT *client = client_of(link);
    if (!client)
        return nullptr;
    auto *reply = procedure(&request, client);
    if (!reply && label)
        report_failure(client, label);
    return reply;
}

/** A set procedure's answer: the agent's integer. */
inline void return_integer(script_call call, int32_t *reply)
{
    if (reply)
        ZVAL_LONG(call.return_value, *reply);
}

/** A single-row reply. */
template <class Shape, class Record> void return_row(script_call call, Record *reply)
{
    if (!reply)
        return;
    ZVAL_ARR(call.return_value, make_row<Shape>(*reply));
    release(reply);
}

/**
 * An array reply: the first row for get and getnext, all rows as a list for
 * getbulk; FALSE, without a message, when there is none.
 */
template <class Shape, class Record>
void return_rows(script_call call, wire::rows<Record> *reply, int32_t getType)
{
    if (!reply)
        return;
    if (reply->length && getType == GETBULK)
        ZVAL_ARR(call.return_value, make_rows<Shape>(*reply));
    else if (reply->length)
        ZVAL_ARR(call.return_value, make_row<Shape>(reply->value[0]));
    release(reply);
}

} // namespace rmon
