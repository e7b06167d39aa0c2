/*
 * The procedures that the agent serves: one line each, which pairs a line of
 * the client's stubs (number, argument record, result record) with the function
 * that does the work.
 */
#pragma once

#include "rmon/rpc/rmonrpc_clnt.h"

#include <cstdint>
#include <new>
#include <span>
#include <type_traits>

struct probe;

/** Notes that something was set. */
void note_change(probe &agent);

struct served_procedure {
    uint32_t number;
    /** Makes the result, in memory of the result's size, from the decoded argument. */
    void (*handle)(probe &agent, const void *argument, void *result);
    const wire::layout *argument;
    const wire::layout *result;
};

/**
 * The line for one procedure. Handler takes the probe and the argument (only
 * the probe where the procedure has no argument) and returns the result; the
 * types must be those of the procedure. The result owns what its texts, lists
 * and rows point to (see reply.h); the dispatcher releases it.
 */
template <auto Handler, uint32_t Number, class Argument, class Result, timeval Timeout>
constexpr served_procedure serve(const procedure<Number, Argument, Result, Timeout> &)
{
    return {
        Number,
        [](probe &agent, const void *argument, void *result) {
            Result *made;
            if constexpr (std::is_same_v<Argument, wire::none>) {
                static_assert(std::is_same_v<decltype(Handler), Result (*)(probe &)>);
                made = new (result) Result(Handler(agent));
            } else {
                static_assert(std::is_same_v<decltype(Handler), Result (*)(probe &, const Argument &)>);
                made = new (result) Result(Handler(agent, *static_cast<const Argument *>(argument)));
            }
            // All that sets answer with a status alone; 0 when they did it.
            if constexpr (std::is_same_v<Result, int32_t> && Number != 0)
                if (*made == 0)
                    note_change(agent);
        },
        &wire::layout_of<Argument>, &wire::layout_of<Result>};
}

/** Sorted by number. */
std::span<const served_procedure> served_procedures();
