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

/** Stops the fuzzer, which keeps the input that led here. */
[[noreturn]] void broken(const char *rule);
