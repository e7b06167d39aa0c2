// SPDX-License-Identifier: MIT
/* What a reply of many rows takes: at most four times its bytes on the wire, in every table. */

#include "rmon/rpc/rmonrpc_clnt.h"
#include "tests/native/check.h"

#include <cstdio>
#include <fstream>

#include <malloc.h>

namespace {

/** Bytes on the wire of each reply. */
constexpr size_t reply_size = 6 << 20;

/** What the process takes meanwhile without a reply, at most. */
constexpr size_t slack = 512 << 10;

/** One of the sizes that the kernel tells of this process, in bytes. */
size_t memory(const std::string &name)
{
    std::ifstream status("/proc/self/status");
    size_t kilobytes = 0;
    for (std::string line; std::getline(status, line);)
        if (line.starts_with(name + ":"))
            std::sscanf(line.c_str() + name.size() + 1, "%zu", &kilobytes);
    return kilobytes * 1024;
}

/** A row whose texts and byte lists are of this length, and whose other fields are 0. */
bytes row_of(const wire::layout &layout, uint32_t length)
{
    bytes row;
    for (uint32_t i = 0; i < layout.count; i++) {
        const wire::step &step = layout.steps[i];
        if (step.kind == wire::kind::run)
            row.all.resize(row.all.size() + step.wire);
        const bool is_text = step.kind == wire::kind::text;
        if (!is_text && step.kind != wire::kind::bytes)
            continue;
        row.all.resize(row.all.size() - 4); // the count, which came with the run
        if (is_text)
            row.text(std::string(length, 'x'));
        else
            row.list(std::vector<uint8_t>(length, 'x'));
    }
    return row;
}

template <class Row> void test_rows(const char *name, uint32_t length)
{
    const std::string what = std::string{name} + ", texts and lists of " + std::to_string(length);
    const bytes row = row_of(wire::layout_of<Row>, length);
    const auto count = static_cast<uint32_t>(reply_size / row.all.size());
    std::vector<uint8_t> reply = bytes{}.unit(count).all;
    reply.reserve(reply.size() + count * row.all.size());
    for (uint32_t i = 0; i < count; i++)
        reply.insert(reply.end(), row.all.begin(), row.all.end());

    malloc_trim(0); // what is free is not to be there already
    std::ofstream("/proc/self/clear_refs") << 5;
    const size_t before = memory("VmRSS");
    XDR stream;
    xdrmem_create(
        &stream, reinterpret_cast<char *>(reply.data()), static_cast<u_int>(reply.size()), XDR_DECODE);
    wire::rows<Row> rows{};
    check(xdr_record(&stream, &rows) && rows.length == count, what + ": decoded");
    const size_t peak = memory("VmHWM");
    release(&rows);
    check(!rows.value && rows.length == 0, what + ": released");
#ifndef __SANITIZE_ADDRESS__ // it takes memory of its own
    const size_t taken = peak - std::min(before, peak);
    check(
        taken <= 4 * reply.size() + slack,
        what + ": " + std::to_string(taken) + " bytes for " + std::to_string(reply.size()) + " on the wire");
    check(taken > reply.size() / 8, what + ": the measure is at work");
#else
    (void)before;
    (void)peak;
#endif
}

} // namespace

void test_memory()
{
    for (const uint32_t length : {0u, 1u, 4u, 17u, 255u}) {
        test_rows<rmonrpc_sys_resolver_name>("resolvers", length);
        test_rows<rmonrpc_snmp_community_t>("communities", length);
        test_rows<rmonrpc_host_t>("hosts", length);
        test_rows<rmonrpc_hosttime_t>("host times", length);
        test_rows<rmonrpc_hosttopn_t>("host Top-N", length);
        test_rows<rmonrpc_matrix_t>("matrix", length);
        test_rows<rmonrpc_pdir_t>("protocol directory", length);
        test_rows<rmonrpc_addrmap_entry_t>("address map", length);
        test_rows<rmonrpc_hlhost_t>("higher-layer hosts", length);
        test_rows<rmonrpc_hlmatrix_t>("higher-layer matrix", length);
        test_rows<rmonrpc_nlmatrix_topn_t>("matrix Top-N", length);
        test_rows<rmonrpc_art_ctl_t>("response time control", length);
        test_rows<rmonrpc_art_rpt_t>("response time reports", length);
        test_rows<rmonrpc_art_sum_t>("response time summaries", length);
    }
    // Rows of one size.
    test_rows<rmonrpc_etherhistory_t>("history", 0);
    test_rows<rmonrpc_pdist_stats_t>("protocol distribution", 0);
    test_rows<rmonrpc_smon_vlan_t>("VLANs", 0);
    test_rows<rmonrpc_smon_prio_t>("priorities", 0);
    test_rows<rmonrpc_nde_device_t>("NDE devices", 0);
    test_rows<rmonrpc_nde_datasrc_t>("NDE data sources", 0);
    test_rows<rmonrpc_nde_flow_path_t>("NDE flow paths", 0);
    test_rows<rmonrpc_nde_learned_dev_t>("learned devices", 0);
    test_rows<rmonrpc_nde_learned_dev_intf_t>("learned interfaces", 0);
    test_rows<rmonrpc_sccp_call_row_t>("SCCP calls", 0);
    test_rows<rmonrpc_sccp_top_row_t>("SCCP top calls", 0);
    test_rows<rmonrpc_sccp_phone_row_t>("SCCP phones", 0);
    test_rows<rmonrpc_h323_call_row_t>("H.323 calls", 0);
    test_rows<rmonrpc_h323_phone_row_t>("H.323 phones", 0);
    test_rows<rmonrpc_mgcp_call_t>("MGCP calls", 0);
    test_rows<rmonrpc_mgcp_phone_t>("MGCP phones", 0);
}
