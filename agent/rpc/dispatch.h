// SPDX-License-Identifier: MIT
/*
 * One RPC message in, one out (RFC 5531): finds the procedure that a call
 * asks for, decodes its argument, has it handled and encodes the result.
 */
#pragma once

#include "agent/rpc/procedures.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

/**
 * Answers a call of the program with one of the procedures, which are sorted
 * by number. The reply, or the refusal that RPC has for the case, is appended
 * to output with its record mark.
 *
 * False when the message has no call's header: nothing can be said to its
 * sender, since even the transaction is unknown.
 */
bool answer_call(
    probe &agent,
    std::span<const served_procedure> procedures,
    const uint8_t *message,
    std::size_t size,
    std::vector<uint8_t> &output);
