// SPDX-License-Identifier: MIT
/* What the fuzzers and the program that makes their seeds have in common. */
#pragma once

#include "rmon/rpc/rmonrpc_clnt.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

/** A procedure without its types. */
struct any_procedure {
    const char *name;
    uint32_t number;
    const wire::layout *argument;
    const wire::layout *result;
};

/** Every procedure of the program. */
std::span<const any_procedure> procedures();

/** A record of any layout, zeroed, released at its end. */
struct any_record {
    const wire::layout &layout;
    void *bytes;

    explicit any_record(const wire::layout &plan);
    ~any_record();
    any_record(const any_record &) = delete;
    any_record &operator=(const any_record &) = delete;
};

/** Decodes from memory; how many bytes that took, -1 on failure. */
long decode(std::span<const uint8_t> from, any_record &to);

std::vector<uint8_t> encode(any_record &record);

/** Larger seeds slow the fuzzers down more than they help. */
inline constexpr size_t max_seed = 8192;

void write_file(const std::string &file, const std::vector<uint8_t> &bytes);

std::vector<uint8_t> units(uint8_t unit, size_t size);

/** The bytes of a record all of whose units are the same. */
std::vector<uint8_t> repeating(const wire::layout &layout, uint8_t unit);

/** As many of these bytes as a seed may have. */
std::vector<uint8_t> cut_off(std::vector<uint8_t> bytes);

std::vector<uint8_t> joined(std::vector<uint8_t> first, const std::vector<uint8_t> &second);

/**
 * The fuzzer's alarm, by which it notices inputs that take too long, breaks off
 * a connect() that has to wait; from here on it does not. For an input's start:
 * the fuzzer sets its alarm late.
 */
void go_on_after_alarms();

/** Stops the fuzzer, which keeps the input that led here. */
[[noreturn]] void broken(const char *rule);
