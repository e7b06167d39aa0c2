// SPDX-License-Identifier: MIT
/* Records of the differentiated-services monitoring groups (RFC 3287). */
#pragma once

#include "rmon/rpc/rmonrpc.h"

/* ---- aggregation ------------------------------------------------------------ */

struct rmonrpc_dsmon_aggctl_t {
    int32_t status;
    uint32_t dsmonAggControlIndex;
    wire::text<64> dsmonAggControlDescr;
    wire::text<255> dsmonAggControlOwner;
    int32_t dsmonAggControlStatus;
};

struct rmonrpc_dsmon_agggrp_t {
    int32_t status;
    uint32_t dsmonAggControlIndex;
    uint32_t dsmonAggGroupIndex;
    wire::text<64> dsmonAggGroupDescr;
    int32_t dsmonAggGroupStatus;
};

struct rmonrpc_dsmon_aggprof_t {
    int32_t status;
    uint32_t dsmonAggControlIndex;
    uint32_t dsmonAggGroupIndex;
    uint32_t dscp;
};

/* ---- statistics --------------------------------------------------------------- */

struct rmonrpc_dsmon_stats_ctl_t {
    int32_t status;
    uint32_t dsmonStatsControlIndex;
    uint32_t dsmonStatsControlAggProfile;
    uint32_t dsmonStatsControlDroppedFrames;
    int32_t dsmonStatsControlStatus;
    wire::text<255> dsmonStatsControlOwner;
    int32_t dsmonStatsControlDataSource_ifIndex;
};

struct rmonrpc_dsmon_stats_t {
    int32_t status;
    uint32_t dsmonAggGroupIndex;
    uint32_t dsmonStatsControlIndex;
    uint64_t dsmonStatsInHCPkts;
    uint64_t dsmonStatsInHCOctets;
    uint64_t dsmonStatsOutHCPkts;
    uint64_t dsmonStatsOutHCOctets;
};

/* ---- protocol distribution ---------------------------------------------------- */

struct rmonrpc_dsmon_pdctl_t {
    int32_t status;
    int32_t dsmonPdistCtlIndex;
    uint32_t dsmonPdistAggProfile;
    int32_t dsmonPdistCtlMaxDesiredEntries;
    uint32_t dsmonPdistDroppedFrames;
    wire::text<255> dsmonPdistCtlOwner;
    uint32_t dsmonPdistCtlDataSource_ifIndex;
    uint32_t dsmonPdistCtlInserts;
    uint32_t dsmonPdistCtlDeletes;
    int32_t dsmonPdistCtlStatus;
};

struct rmonrpc_dsmon_pdist_key_t {
    int32_t dsmonPdistCtlIndex;
    uint32_t dsmonPdistTimeMark;
    uint32_t dsmonAggGroupIndex;
    int32_t protocolDirLocalIndex;
    int32_t getType;
};

struct rmonrpc_dsmon_pdstats_t {
    int32_t status;
    uint32_t dsmonPdistCtlIndex;
    uint32_t dsmonPdistTimeMark;
    uint32_t dsmonAggGroupIndex;
    int32_t protocolDirLocalIndex;
    uint64_t dsmonPdistStatsHCPkts;
    uint64_t dsmonPdistStatsHCOctets;
};

/* ---- addresses ------------------------------------------------------------------ */

/** A host address of any family. How many of its bytes are in use stands in a field of its own. */
using rmonrpc_dsmon_address_t = wire::uchars<20>;

/* ---- hosts ---------------------------------------------------------------------- */

struct rmonrpc_dsmon_hostctl_t {
    int32_t status;
    int32_t dsmonHostCtlIndex;
    uint32_t dsmonHostCtlDataSource_ifIndex;
    uint32_t dsmonHostAggProfile;
    int32_t dsmonHostCtlMaxDesiredEntries;
    int32_t dsmonHostCtlIPv4PrefixLen;
    int32_t dsmonHostCtlIPv6PrefixLen;
    uint32_t dsmonHostDroppedFrames;
    uint32_t dsmonHostCtlInserts;
    uint32_t dsmonHostCtlDeletes;
    wire::text<255> dsmonHostCtlOwner;
    int32_t dsmonHostCtlStatus;
};

struct rmonrpc_dsmon_host_key_t {
    int32_t dsmonHostCtlIndex;
    uint32_t dsmonHostTimeMark;
    uint32_t dsmonAggGroupIndex;
    int32_t protocolDirLocalIndex;
    rmonrpc_dsmon_address_t dsmonHostAddress;
    int32_t dsmonHostAddressLength;
    int32_t getType;
};

struct rmonrpc_dsmon_hoststats_t {
    int32_t status;
    int32_t dsmonHostCtlIndex;
    uint32_t dsmonHostTimeMark;
    uint32_t dsmonAggGroupIndex;
    int32_t protocolDirLocalIndex;
    rmonrpc_dsmon_address_t dsmonHostAddress;
    int32_t dsmonHostAddressLength;
    uint64_t dsmonHostInHCPkts;
    uint64_t dsmonHostInHCOctets;
    uint64_t dsmonHostOutHCPkts;
    uint64_t dsmonHostOutHCOctets;
};

/* ---- matrix --------------------------------------------------------------------- */

struct rmonrpc_dsmon_matrixctl_t {
    int32_t status;
    int32_t dsmonMatrixCtlIndex;
    uint32_t dsmonMatrixCtlDataSource_ifIndex;
    uint32_t dsmonMatrixAggProfile;
    int32_t dsmonMatrixCtlMaxDesiredEntries;
    uint32_t dsmonMatrixDroppedFrames;
    uint32_t dsmonMatrixCtlInserts;
    uint32_t dsmonMatrixCtlDeletes;
    wire::text<255> dsmonMatrixCtlOwner;
    int32_t dsmonMatrixCtlStatus;
};

struct rmonrpc_dsmon_matrix_key_t {
    int32_t dsmonMatrixCtlIndex;
    uint32_t dsmonMatrixTimeMark;
    uint32_t dsmonAggGroupIndex;
    int32_t dsmonMatrixNLIndex;
    rmonrpc_dsmon_address_t dsmonMatrixSourceAddress;
    rmonrpc_dsmon_address_t dsmonMatrixDestAddress;
    int32_t dsmonMatrixALIndex;
    int32_t dsmonMatrixSourceAddressLength;
    int32_t dsmonMatrixDestAddressLength;
    int32_t getType;
};

struct rmonrpc_dsmon_matrixstats_t {
    int32_t status;
    int32_t dsmonMatrixCtlIndex;
    uint32_t dsmonMatrixTimeMark;
    uint32_t dsmonAggGroupIndex;
    int32_t dsmonMatrixNLIndex;
    rmonrpc_dsmon_address_t dsmonMatrixSourceAddress;
    rmonrpc_dsmon_address_t dsmonMatrixDestAddress;
    int32_t dsmonMatrixALIndex;
    int32_t dsmonMatrixSourceAddressLength;
    int32_t dsmonMatrixDestAddressLength;
    uint64_t hcPkts;
    uint64_t hcOctets;
};
