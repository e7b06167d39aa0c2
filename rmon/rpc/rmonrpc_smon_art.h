// SPDX-License-Identifier: MIT
/* Records of switch monitoring (RFC 2613) and of application response time. */
#pragma once

#include "rmon/rpc/rmonrpc.h"

/* ---- VLAN statistics ---------------------------------------------------------- */

struct rmonrpc_smon_vlan_ctl_t {
    int32_t status;
    int32_t smonVlanStatsControlIndex;
    uint32_t smonVlanStatsControlDataSource;
    uint32_t smonVlanStatsControlCreateTime;
    wire::text<255> smonVlanStatsControlOwner;
    int32_t smonVlanStatsControlStatus;
};

struct rmonrpc_smon_vlan_t {
    int32_t status;
    int32_t smonVlanIdStatsId;
    uint64_t smonVlanIdStatsTotalPkts;
    uint64_t smonVlanIdStatsTotalOctets;
    uint64_t smonVlanIdStatsNUcastPkts;
    uint64_t smonVlanIdStatsNUcastOctets;
    uint32_t smonVlanIdStatsCreateTime;
    int32_t smonVlanStatsControlIndex;
};

using rmonrpc_smon_vlan_arr_t = wire::rows<rmonrpc_smon_vlan_t>;

/* ---- priority statistics -------------------------------------------------------- */

struct rmonrpc_smon_prio_ctl_t {
    int32_t status;
    int32_t smonPrioStatsControlIndex;
    uint32_t smonPrioStatsControlDataSource;
    uint32_t smonPrioStatsControlCreateTime;
    wire::text<255> smonPrioStatsControlOwner;
    int32_t smonPrioStatsControlStatus;
};

struct rmonrpc_smon_prio_t {
    int32_t status;
    int32_t smonPrioStatsId;
    uint64_t smonPrioStatsPkts;
    uint64_t smonPrioStatsOctets;
    int32_t smonPrioStatsControlIndex;
};

using rmonrpc_smon_prio_arr_t = wire::rows<rmonrpc_smon_prio_t>;

/* ---- application response time -------------------------------------------------- */

struct rmonrpc_art_ctl_t {
    int32_t status;
    int32_t artControlIndex;
    int32_t artControlDataSource;
    int32_t artControlTimeRemaining;
    int32_t artControlDuration;
    int32_t artControlRspTime1;
    int32_t artControlRspTime2;
    int32_t artControlRspTime3;
    int32_t artControlRspTime4;
    int32_t artControlRspTime5;
    int32_t artControlRspTime6;
    int32_t artControlRspTimeout;
    uint32_t artControlRptStartTime;
    int32_t artControlRequestedSize;
    int32_t artControlGrantedSize;
    int32_t artControlGeneratedRpts;
    uint32_t artControlDroppedFrames;
    wire::text<255> artControlOwner;
    int32_t artControlStatus;
};

using rmonrpc_art_ctl_arr_t = wire::rows<rmonrpc_art_ctl_t>;

struct rmonrpc_art_rpt_key_t {
    int32_t artControlIndex;
    int32_t protocolDirLocalIndex;
    wire::byte_list artServerAddress;
    wire::byte_list artClientAddress;
    int32_t getType;
    int32_t count;
};

struct rmonrpc_art_rpt_t {
    int32_t status;
    wire::byte_list artServerAddress;
    wire::byte_list artClientAddress;
    int32_t artAvgRspTime;
    int32_t artMinRspTime;
    int32_t artMaxRspTime;
    uint32_t artTotalResponses;
    uint32_t artRsps1;
    uint32_t artRsps2;
    uint32_t artRsps3;
    uint32_t artRsps4;
    uint32_t artRsps5;
    uint32_t artRsps6;
    uint32_t artRsps7;
    uint64_t artClientOctets;
    uint64_t artServerOctets;
    uint32_t artRetries;
    uint32_t artTimeouts;
    int32_t artControlIndex;
    int32_t protocolDirLocalIndex;
};

using rmonrpc_art_rpt_arr_t = wire::rows<rmonrpc_art_rpt_t>;

struct rmonrpc_art_sum_key_t {
    int32_t artControlIndex;
    int32_t protocolDirLocalIndex;
    wire::byte_list artSummaryServerAddress;
    int32_t getType;
    int32_t count;
};

struct rmonrpc_art_sum_t {
    int32_t status;
    wire::byte_list artSummaryServerAddress;
    int32_t artSummaryClients;
    int32_t artSummaryAvgRspTime;
    int32_t artSummaryMinRspTime;
    int32_t artSummaryMaxRspTime;
    uint32_t artSummaryTotalResponses;
    uint32_t artSummaryRsps1;
    uint32_t artSummaryRsps2;
    uint32_t artSummaryRsps3;
    uint32_t artSummaryRsps4;
    uint32_t artSummaryRsps5;
    uint32_t artSummaryRsps6;
    uint32_t artSummaryRsps7;
    uint64_t artSummaryClientOctets;
    uint64_t artSummaryServerOctets;
    uint32_t artSummaryRetries;
    uint32_t artSummaryTimeouts;
    int32_t artControlIndex;
    int32_t protocolDirLocalIndex;
};

using rmonrpc_art_sum_arr_t = wire::rows<rmonrpc_art_sum_t>;
