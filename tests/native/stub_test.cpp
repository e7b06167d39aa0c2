// SPDX-License-Identifier: MIT
/* The client stubs, over a handle that answers from memory and notes what it was asked. */

#include "rmon/rpc/rmonrpc_clnt.h"
#include "tests/native/check.h"

namespace {

/** What a handle does with the next calls, and what it saw of the last one. */
struct memory_agent {
    CLIENT handle;
    std::vector<uint8_t> reply; // not decoded when it is empty
    clnt_stat status;
    rpcproc_t number;
    timeval timeout;
    std::vector<uint8_t> request;
};

clnt_stat answer(
    CLIENT *client,
    rpcproc_t number,
    xdrproc_t encode,
    void *argument,
    xdrproc_t decode,
    void *result,
    timeval timeout)
{
    auto *agent = reinterpret_cast<memory_agent *>(client->cl_private);
    agent->number = number;
    agent->timeout = timeout;
    agent->request.resize(1024);
    XDR stream;
    xdrmem_create(&stream, reinterpret_cast<char *>(agent->request.data()), 1024, XDR_ENCODE);
    if (!encode(&stream, argument))
        return RPC_CANTENCODEARGS;
    agent->request.resize(xdr_getpos(&stream));

    const auto size = static_cast<u_int>(agent->reply.size());
    xdrmem_create(&stream, reinterpret_cast<char *>(agent->reply.data()), size, XDR_DECODE);
    if (size && !decode(&stream, result))
        return RPC_CANTDECODERES;
    return agent->status;
}

CLIENT::clnt_ops operations{answer, nullptr, nullptr, nullptr, nullptr, nullptr};

/** An agent that answers with success. It must not be moved. */
void start(memory_agent &agent)
{
    agent = {};
    agent.status = RPC_SUCCESS;
    agent.handle.cl_ops = &operations;
    agent.handle.cl_private = &agent;
}

bool waits(const memory_agent &agent, int seconds)
{
    return agent.timeout.tv_sec == seconds && agent.timeout.tv_usec == 0;
}

std::vector<uint8_t> log_entry(uint32_t number, const std::string &description)
{
    return bytes{}.unit(0).unit(number).unit(number + 1).unit(number + 2).text(description).all;
}

void test_calls()
{
    memory_agent agent;
    start(agent);
    const rmonrpc_row_key2_t key{5, 2};
    check(etherstats_get_1(&key, &agent.handle) != nullptr, "a call");
    check(agent.number == 4 && agent.request == bytes{}.unit(5).unit(2).all, "its number and its argument");
    check(waits(agent, 25), "a call waits 25 seconds");
    check(rmonrpc_test_1(nullptr, &agent.handle) != nullptr, "a call without an argument");
    check(agent.number == 0 && agent.request.empty() && waits(agent, 25), "carries nothing");

    const rmonrpc_capture_save_key_t save{{"a"}, 1, 2, 3, -4};
    const auto request = bytes{}.text("a").unit(1).unit(2).unit(3).unit(0xfffffffc).all;
    agent.reply = bytes{}.unit(17).unit(5).all;
    const auto *standard = capture_save_file_1(&save, &agent.handle);
    check(agent.number == 50 && agent.request == request && waits(agent, 25), "the standard way to save");
    agent.reply = bytes{}.unit(18).unit(6).all;
    const auto *patient = capture_save_file_2(&save, &agent.handle);
    check(agent.number == 50 && agent.request == request && waits(agent, 60), "saving waits 60 seconds");
    check(standard->lastPktIndex == 17 && standard->totalPktsSaved == 5, "either way has a reply of its own");
    check(patient->lastPktIndex == 18 && patient->totalPktsSaved == 6, "the patient one's");
}

void test_replies()
{
    memory_agent agent;
    start(agent);
    const rmonrpc_row_key3_t key{3, 7, 1};
    agent.reply = log_entry(10, "the first");
    rmonrpc_log_t *first = log_get_1(&key, &agent.handle);
    check(
        first && first->logIndex == 11 && first->logDescription.value == std::string("the first"), "a reply");

    // Not released by the caller: the next call does it.
    agent.reply = log_entry(20, "the second");
    rmonrpc_log_t *second = log_get_1(&key, &agent.handle);
    check(
        second == first && second->logEventIndex == 20 && second->logTime == 22,
        "the next one takes its place");
    check(second->logDescription.value == std::string("the second"), "its text too");

    agent.reply.clear();
    check(log_get_1(&key, &agent.handle) == first, "a call that decodes nothing");
    check(first->logIndex == 0 && !first->logDescription.value, "has a reply of zeros");

    agent.reply = log_entry(30, "left behind");
    log_get_1(&key, &agent.handle);
    release_abandoned_replies();
    check(!first->logDescription.value, "what nobody released goes at the next request");
}

void test_failures()
{
    memory_agent agent;
    start(agent);
    const rmonrpc_row_key3_t key{3, 7, 1};
    agent.reply = log_entry(40, "decoded, and yet");
    for (const clnt_stat status : {RPC_TIMEDOUT, RPC_CANTRECV, RPC_PROCUNAVAIL, RPC_FAILED}) {
        agent.status = status;
        check(log_get_1(&key, &agent.handle) == nullptr, "a failed call has no reply");
    }
    agent.status = RPC_SUCCESS;
    agent.reply.resize(agent.reply.size() - 4);
    check(log_get_1(&key, &agent.handle) == nullptr, "nor has one whose reply ends early");
    const std::string owner(256, 'x');
    rmonrpc_host_ctl_t row{};
    row.hostControlOwner = {owner.c_str()};
    check(host_ctl_set_1(&row, &agent.handle) == nullptr, "nor one whose argument can't be sent");
    agent.reply = log_entry(50, "works");
    check(log_get_1(&key, &agent.handle) != nullptr, "the next one works");
    release_abandoned_replies();
}

} // namespace

void test_stubs()
{
    test_calls();
    test_replies();
    test_failures();
}
