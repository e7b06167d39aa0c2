// SPDX-License-Identifier: MIT
/* The families of the agent: what they declare fits together, and fits the client's stubs. */
#include "tests/native/check.h"

#include "agent/capture/family.h"
#include "agent/rpc/dispatch.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace {

struct stub_number {
    uint32_t value;

    template <class Stub> constexpr stub_number(const Stub &) : value(Stub::number) {}
};

constexpr stub_number stubs[] = {
#include "procedures.inc"
};

/** A procedure may have several stubs, which differ in how long they wait. */
bool is_stub(uint32_t number)
{
    return std::ranges::find(stubs, number, &stub_number::value) != std::end(stubs);
}

void test_procedures()
{
    const auto served = served_procedures();
    check(std::size(stubs) > 150, "the stubs are there");
    for (const stub_number &stub : stubs)
        check(
            std::ranges::count(served, stub.value, &served_procedure::number) == 1,
            "procedure " + std::to_string(stub.value) + " is served once");
    check(std::ranges::all_of(served, is_stub, &served_procedure::number), "nothing else is served");
    check(std::ranges::is_sorted(served, {}, &served_procedure::number), "procedures are sorted by number");
}

/** What the agent answers to a call without an argument: RFC 5531's accept_stat. */
uint32_t answer_to(probe &agent, uint32_t number)
{
    bytes call;
    for (const uint32_t unit : {7u, 0u, 2u, 99999u, 1u, number, 0u, 0u, 0u, 0u})
        call.unit(unit);
    std::vector<uint8_t> reply;
    if (!answer_call(agent, served_procedures(), call.all.data(), call.all.size(), reply)
        || reply.size() < 28)
        return UINT32_MAX;
    // Record mark, transaction, reply, accepted, verifier of two units.
    return uint32_t{reply[24]} << 24 | uint32_t{reply[25]} << 16 | uint32_t{reply[26]} << 8 | reply[27];
}

void test_other_numbers()
{
    constexpr uint32_t proc_unavail = 3;
    probe agent;
    for (uint32_t number = 0; number < 260; number++)
        if (!is_stub(number))
            check(
                answer_to(agent, number) == proc_unavail,
                "procedure " + std::to_string(number) + " is not available");
    check(answer_to(agent, 0) == 0, "procedure 0 answers");
}

void test_names()
{
    std::set<std::string> names, parts, variables;
    for (const family *one : families()) {
        check(names.insert(one->name).second, std::string("one family is ") + one->name);
        for (const state_part &part : one->kept)
            check(parts.insert(part.name).second, std::string("one part of the settings is ") + part.name);
        for (const known_variable &variable : one->variables) {
            check(variables.insert(variable.name).second, std::string("one variable is ") + variable.name);
            if (variable.identifier)
                check(
                    variables.insert(variable.identifier).second,
                    std::string("one variable is ") + variable.identifier);
        }
    }
    check(state_parts().size() == parts.size(), "all parts of the settings are kept");
    for (const state_part &part : state_parts())
        check(
            !part.key
                || std::ranges::count_if(
                       state_parts(), [&](const state_part &other) { return other.record == part.record; })
                       == 1,
            std::string("the record tells the part ") + part.name);
    check(known_variables().size() > 200, "the variables are known");
}

/** The settings are taken back in this order: what a row refers to stands before it. */
void test_order()
{
    const auto place = [](std::string_view name) {
        const auto parts = state_parts();
        const auto found = std::ranges::find(
            parts, name, [](const state_part &part) { return std::string_view(part.name); });
        check(found != parts.end(), std::string(name) + " is kept");
        return found - parts.begin();
    };
    check(place("host") < place("hostTopN"), "hosts stand before reports of them");
    check(place("event") < place("alarm"), "events stand before alarms");
    check(place("channel") < place("filter"), "channels stand before filters");
    check(place("channel") < place("buffer"), "channels stand before capture buffers");
    check(place("protocols") < place("hlHost"), "protocols stand before what counts them");
    check(place("dsmonAggProfile") < place("dsmonStatsControl"), "profiles stand before what counts by them");
    check(place("dsmonMatrixCtl") < place("dsmonAggControlLocked"), "the lock stands behind what it locks");
    check(place("ndeDevice") < place("ndeDatasrc"), "devices stand before their sources");
}

} // namespace

void test_families()
{
    test_procedures();
    test_other_numbers();
    test_names();
    test_order();
}
