/* Records of the system group, the interface table and the RMON groups (RFC 1213, RFC 2819). */
#pragma once

#include "rmon/rpc/rmonrpc.h"

/* ---- system group and interface table ------------------------------------ */

struct rmonrpc_system_t {
    wire::text<255> sysDescr;
    uint32_t sysUpTime;
    wire::text<255> sysContact;
    wire::text<255> sysName;
    wire::text<255> sysLocation;
    wire::text<255> sysObjectID;
    int32_t sysServices;
};

struct rmonrpc_ifentry_t {
    int32_t status;
    int32_t ifIndex;
    wire::text<255> ifDescr;
    int32_t ifType;
    int32_t ifMtu;
    uint32_t ifSpeed;
    wire::byte_list ifPhysAddress;
    int32_t ifAdminStatus;
    int32_t ifOperStatus;
    uint32_t ifLastChange;
    uint32_t ifInOctets;
    uint32_t ifInUcastPkts;
    uint32_t ifInNUcastPkts;
    uint32_t ifInDiscards;
    uint32_t ifInErrors;
    uint32_t ifInUnknownProtos;
    uint32_t ifOutOctets;
    uint32_t ifOutUcastPkts;
    uint32_t ifOutNUcastPkts;
    uint32_t ifOutDiscards;
    uint32_t ifOutErrors;
    uint32_t ifOutQLen;
    uint32_t dsrcType;
    uint32_t dsrcSlot;
    uint32_t dsrcPort;
    uint32_t dsrcVlan;
    int32_t dsrcChGrp;
    int32_t dsrcSpanMode;
    int32_t dsrcSpanDest;
};

/* ---- Ethernet statistics --------------------------------------------------- */

struct rmonrpc_etherstats_t {
    int32_t status;
    int32_t etherStatsIndex;
    int32_t etherStatsDataSource;
    uint64_t etherStatsDropEvents;
    uint64_t etherStatsOctets;
    uint64_t etherStatsPkts;
    uint64_t etherStatsBroadcastPkts;
    uint64_t etherStatsMulticastPkts;
    uint64_t etherStatsCRCAlignErrors;
    uint64_t etherStatsUndersizePkts;
    uint64_t etherStatsOversizePkts;
    uint64_t etherStatsFragments;
    uint64_t etherStatsJabbers;
    uint64_t etherStatsCollisions;
    uint64_t etherStatsPkts64Octets;
    uint64_t etherStatsPkts65to127Octets;
    uint64_t etherStatsPkts128to255Octets;
    uint64_t etherStatsPkts256to511Octets;
    uint64_t etherStatsPkts512to1023Octets;
    uint64_t etherStatsPkts1024to1518Octets;
    wire::text<255> etherStatsOwner;
    int32_t etherStatsStatus;
    uint64_t etherStatsDroppedFrames;
    uint32_t etherStatsCreateTime;
};

/* ---- hosts ------------------------------------------------------------------- */

struct rmonrpc_host_ctl_t {
    int32_t status;
    int32_t hostControlIndex;
    int32_t hostControlDataSource;
    int32_t hostControlTableSize;
    uint32_t hostControlLastDeleteTime;
    wire::text<255> hostControlOwner;
    int32_t hostControlStatus;
};

/** The count stands before the getType here, unlike in rmonrpc_row_key4_t. */
struct rmonrpc_host_key_t {
    int32_t hostIndex;
    wire::byte_list hostAddress;
    int32_t count;
    int32_t getType;
};

struct rmonrpc_host_t {
    int32_t status;
    wire::byte_list hostAddress;
    int32_t hostCreationOrder;
    int32_t hostIndex;
    uint64_t hostInPkts;
    uint64_t hostOutPkts;
    uint64_t hostInOctets;
    uint64_t hostOutOctets;
    uint64_t hostOutErrors;
    uint64_t hostOutBroadcastPkts;
    uint64_t hostOutMulticastPkts;
};

using rmonrpc_host_arr_t = wire::rows<rmonrpc_host_t>;

struct rmonrpc_hosttime_t {
    int32_t status;
    wire::byte_list hostTimeAddress;
    int32_t hostTimeCreationOrder;
    int32_t hostTimeIndex;
    uint64_t hostTimeInPkts;
    uint64_t hostTimeOutPkts;
    uint64_t hostTimeInOctets;
    uint64_t hostTimeOutOctets;
    uint64_t hostTimeOutErrors;
    uint64_t hostTimeOutBroadcastPkts;
    uint64_t hostTimeOutMulticastPkts;
};

using rmonrpc_hosttime_arr_t = wire::rows<rmonrpc_hosttime_t>;
