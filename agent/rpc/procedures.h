// SPDX-License-Identifier: MIT
/*
 * How a procedure is served: one line each, which pairs a line of the client's
 * stubs (number, argument record, result record) with the function that does
 * the work, and says whether it sets something.
 */
#pragma once

#include "rmon/rpc/rmonrpc_clnt.h"

#include <cstdint>
#include <new>
#include <span>
#include <type_traits>

struct probe;

/** Notes that something was set: the answer waits until the settings file has it. */
void note_change(probe &agent);

struct served_procedure {
    uint32_t number;
    /** Makes the result, in memory of the result's size, from the decoded argument. */
    void (*handle)(probe &agent, const void *argument, void *result);
    const wire::layout *argument;
    const wire::layout *result;
};

/** Calls a handler; the result is made in memory of its size. */
template <auto Handler, class Argument, class Result>
Result &call_handler(probe &agent, const void *argument, void *result)
{
    if constexpr (std::is_same_v<Argument, wire::none>) {
        static_assert(std::is_same_v<decltype(Handler), Result (*)(probe &)>);
        return *new (result) Result(Handler(agent));
    } else {
        static_assert(std::is_same_v<decltype(Handler), Result (*)(probe &, const Argument &)>);
        return *new (result) Result(Handler(agent, *static_cast<const Argument *>(argument)));
    }
}

/**
 * The line for a procedure that sets nothing. Handler takes the probe and the
 * argument (only the probe where the procedure has no argument) and returns the
 * result; the types must be those of the procedure. The result owns what its
 * texts, lists and rows point to (see reply.h); the dispatcher releases it.
 */
template <auto Handler, uint32_t Number, class Argument, class Result, timeval Timeout>
constexpr served_procedure serve(const procedure<Number, Argument, Result, Timeout> &)
{
    return {
        Number,
        [](probe &agent, const void *argument, void *result) {
            call_handler<Handler, Argument, Result>(agent, argument, result);
        },
        &wire::layout_of<Argument>, &wire::layout_of<Result>};
}

/** The line for a set, which answers with a request_status. */
template <auto Handler, uint32_t Number, class Argument, timeval Timeout>
constexpr served_procedure serve_set(const procedure<Number, Argument, int32_t, Timeout> &)
{
    return {
        Number,
        [](probe &agent, const void *argument, void *result) {
            if (call_handler<Handler, Argument, int32_t>(agent, argument, result) == 0)
                note_change(agent);
        },
        &wire::layout_of<Argument>, &wire::layout_of<int32_t>};
}

/** All that the agent serves, sorted by number. */
std::span<const served_procedure> served_procedures();
