// SPDX-License-Identifier: MIT
#include "tests/fuzz/agent.h"

#include "agent/capture/start.h"
#include "agent/core/row_status.h"
#include "agent/nde/netflow.h"
#include "agent/rpc/dispatch.h"
#include "tests/fuzz/common.h"

#include <sys/mman.h>
#include <unistd.h>

namespace {

bool on_call(
    void *context, const uint8_t *message, std::size_t size, std::vector<uint8_t> &output, uint64_t &)
{
    return answer_call(*static_cast<probe *>(context), served_procedures(), message, size, output);
}

template <uint32_t Number, class Record>
void set(probe &agent, const procedure<Number, Record, int32_t> &, const Record &record)
{
    for (const served_procedure &served : served_procedures())
        if (served.number == Number) {
            int32_t error;
            served.handle(agent, &record, &error);
        }
}

/** Sets a row to work: one that is there is made anew. */
template <class Set, class Record, class Status>
void set_to_work(probe &agent, const Set &how, Record record, Status Record::*status)
{
    for (const row_status asked : {row_status::invalid, row_status::create_request, row_status::valid}) {
        record.*status = static_cast<int32_t>(asked);
        set(agent, how, record);
    }
}

template <class Record, class Set, class Status, class Index, class Source> void count_with(
    probe &agent,
    const Set &how,
    Status Record::*status,
    Index Record::*index,
    Source Record::*source,
    void (*more)(Record &) = nullptr)
{
    Record record{};
    record.*index = 1;
    record.*source = 1;
    if (more)
        more(record);
    set_to_work(agent, how, record, status);
}

int32_t max_rows;

} // namespace

void fill(memory_file &file, std::span<const uint8_t> bytes)
{
    if (file.descriptor < 0) {
        file.descriptor = memfd_create("input", MFD_CLOEXEC);
        file.path = "/proc/self/fd/" + std::to_string(file.descriptor);
    }
    if (file.descriptor < 0 || ftruncate(file.descriptor, 0) != 0
        || pwrite(file.descriptor, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
        broken("there is memory for a file");
}

std::span<const uint8_t> empty_capture()
{
    // Magic, version 2.4, zone, accuracy, snapshot length 262144, Ethernet.
    static constexpr uint8_t bytes[] = {0xd4, 0xc3, 0xb2, 0xa1, 2, 0, 4, 0, 0, 0, 0, 0,
                                        0,    0,    0,    0,    0, 0, 4, 0, 1, 0, 0, 0};
    return bytes;
}

std::string start_agent(started_agent &started, const std::string &capture)
{
    file_reading reading;
    reading.files = {capture};
    if (!open_loop(started.agent.loop))
        broken("there is an event loop");
    const std::string wrong = start_probe(started.agent, false, reading);
    if (!wrong.empty())
        return wrong;
    if (!open_server(started.server, started.agent.loop, "127.0.0.1", 0, on_call, &started.agent).empty()
        || !open_netflow(started.agent, "127.0.0.1", 0).empty())
        broken("there are ports");
    return {};
}

/* Long as there are many groups: a set for each. */
void start_groups(probe &agent, int32_t rows)
{
    max_rows = rows;
    using host = rmonrpc_host_ctl_t;
    count_with(
        agent, host_ctl_set_1, &host::hostControlStatus, &host::hostControlIndex,
        &host::hostControlDataSource);
    using matrix = rmonrpc_matrix_ctl_t;
    count_with(
        agent, matrix_ctl_set_1, &matrix::matrixControlStatus, &matrix::matrixControlIndex,
        &matrix::matrixControlDataSource);
    using topn = rmonrpc_hosttopn_ctl_t;
    count_with<topn>(
        agent, hosttopn_ctl_set_1, &topn::hostTopNStatus, &topn::hostTopNControlIndex,
        &topn::hostTopNHostIndex, [](topn &record) {
            record.hostTopNRateBase = 1;
            record.hostTopNTimeRemaining = 1;
            record.hostTopNRequestedSize = 10;
        });
    using channel = rmonrpc_channel_t;
    count_with<channel>(
        agent, channel_set_1, &channel::channelStatus, &channel::channelIndex, &channel::channelIfIndex,
        [](channel &record) {
            record.channelAcceptType = 1;
            record.channelDataControl = 1;
            record.channelEventStatus = 3;
        });
    using filter = rmonrpc_filter_t;
    count_with(agent, filter_set_1, &filter::filterStatus, &filter::filterIndex, &filter::filterChannelIndex);
    using buffer = rmonrpc_buffer_ctl_t;
    count_with<buffer>(
        agent, buffer_ctl_set_1, &buffer::bufferControlStatus, &buffer::bufferControlIndex,
        &buffer::bufferControlChannelIndex, [](buffer &record) {
            record.bufferControlFullAction = 2;
            record.bufferControlMaxOctetsRequested = 1000;
        });
    using pdist = rmonrpc_pdist_ctl_t;
    count_with(
        agent, pdist_ctl_set_1, &pdist::protocolDistControlStatus, &pdist::protocolDistControlIndex,
        &pdist::protocolDistControlDataSource);
    using addrmap = rmonrpc_addrmap_ctl_t;
    count_with(
        agent, addrmap_ctl_set_1, &addrmap::addressMapControlStatus, &addrmap::addressMapControlIndex,
        &addrmap::addressMapControlDataSource);
    using hlhost = rmonrpc_hlhost_ctl_t;
    count_with<hlhost>(
        agent, hlhost_ctl_set_1, &hlhost::hlHostControlStatus, &hlhost::hlHostControlIndex,
        &hlhost::hlHostControlDataSource, [](hlhost &record) {
            record.hlHostControlNlMaxDesiredEntries = record.hlHostControlAlMaxDesiredEntries = max_rows;
        });
    using hlmatrix = rmonrpc_hlmatrix_ctl_t;
    count_with<hlmatrix>(
        agent, hlmatrix_ctl_set_1, &hlmatrix::hlMatrixControlStatus, &hlmatrix::hlMatrixControlIndex,
        &hlmatrix::hlMatrixControlDataSource, [](hlmatrix &record) {
            record.hlMatrixControlNlMaxDesiredEntries = record.hlMatrixControlAlMaxDesiredEntries = max_rows;
        });
    rmonrpc_dsmon_aggctl_t profile{};
    profile.dsmonAggControlIndex = 1;
    set_to_work(agent, dsmon_aggctl_set_1, profile, &rmonrpc_dsmon_aggctl_t::dsmonAggControlStatus);
    using stats = rmonrpc_dsmon_stats_ctl_t;
    count_with<stats>(
        agent, dsmon_stats_ctl_set_1, &stats::dsmonStatsControlStatus, &stats::dsmonStatsControlIndex,
        &stats::dsmonStatsControlDataSource_ifIndex,
        [](stats &record) { record.dsmonStatsControlAggProfile = 1; });
    using pdctl = rmonrpc_dsmon_pdctl_t;
    count_with<pdctl>(
        agent, dsmon_pdistctl_set_1, &pdctl::dsmonPdistCtlStatus, &pdctl::dsmonPdistCtlIndex,
        &pdctl::dsmonPdistCtlDataSource_ifIndex, [](pdctl &record) {
            record.dsmonPdistAggProfile = 1;
            record.dsmonPdistCtlMaxDesiredEntries = max_rows;
        });
    using hostctl = rmonrpc_dsmon_hostctl_t;
    count_with<hostctl>(
        agent, dsmon_hostctl_set_1, &hostctl::dsmonHostCtlStatus, &hostctl::dsmonHostCtlIndex,
        &hostctl::dsmonHostCtlDataSource_ifIndex, [](hostctl &record) {
            record.dsmonHostAggProfile = 1;
            record.dsmonHostCtlMaxDesiredEntries = max_rows;
            record.dsmonHostCtlIPv4PrefixLen = 30;
            record.dsmonHostCtlIPv6PrefixLen = 126;
        });
    using matrixctl = rmonrpc_dsmon_matrixctl_t;
    count_with<matrixctl>(
        agent, dsmon_matrixctl_set_1, &matrixctl::dsmonMatrixCtlStatus, &matrixctl::dsmonMatrixCtlIndex,
        &matrixctl::dsmonMatrixCtlDataSource_ifIndex, [](matrixctl &record) {
            record.dsmonMatrixAggProfile = 1;
            record.dsmonMatrixCtlMaxDesiredEntries = max_rows;
        });
    set(agent, dsmon_aggctl_set_lock_1, int32_t{1});
    using vlan = rmonrpc_smon_vlan_ctl_t;
    count_with(
        agent, smon_vlan_ctl_set_1, &vlan::smonVlanStatsControlStatus, &vlan::smonVlanStatsControlIndex,
        &vlan::smonVlanStatsControlDataSource);
    using prio = rmonrpc_smon_prio_ctl_t;
    count_with(
        agent, smon_prio_ctl_set_1, &prio::smonPrioStatsControlStatus, &prio::smonPrioStatsControlIndex,
        &prio::smonPrioStatsControlDataSource);
    using art = rmonrpc_art_ctl_t;
    count_with<art>(
        agent, art_ctl_set_1, &art::artControlStatus, &art::artControlIndex, &art::artControlDataSource,
        [](art &record) {
            record.artControlRspTime1 = 1;
            record.artControlRspTime2 = 2;
            record.artControlRspTime3 = 3;
            record.artControlRspTime4 = 4;
            record.artControlRspTime5 = 5;
            record.artControlRspTime6 = 6;
            record.artControlRspTimeout = 7;
            record.artControlRequestedSize = max_rows;
        });
    // Each group counts on the interface, so that a fuzzer that stays with one of them is noticed.
    if (agent.sources.rows.at(1).counters.size() < 14)
        broken("all groups count");
}

void stop_agent(started_agent &started)
{
    close_server(started.server);
    stop_probe(started.agent);
    close_loop(started.agent.loop);
}
