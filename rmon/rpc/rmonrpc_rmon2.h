// SPDX-License-Identifier: MIT
/* Records of the RMON2 groups (RFC 2021). */
#pragma once

#include "rmon/rpc/rmonrpc.h"

/* ---- protocol directory ------------------------------------------------------ */

struct rmonrpc_pdir_key_t {
    wire::byte_list protocolDirID;
    wire::byte_list protocolDirParameters;
    int32_t getType;
    int32_t count;
};

struct rmonrpc_pdir_t {
    int32_t status;
    wire::byte_list protocolDirID;
    wire::byte_list protocolDirParameters;
    int32_t protocolDirLocalIndex;
    wire::text<255> protocolDirDescr;
    int32_t protocolDirType;
    int32_t protocolDirAddressMapConfig;
    int32_t protocolDirHostConfig;
    int32_t protocolDirMatrixConfig;
    wire::text<255> protocolDirOwner;
    int32_t protocolDirStatus;
    int32_t protocolDirArtConfig;
    int32_t is_leaf;
    int32_t is_network;
    int32_t flags; // the PDIR_FLAG_ constants
};

using rmonrpc_pdir_arr_t = wire::rows<rmonrpc_pdir_t>;

/* ---- protocol distribution --------------------------------------------------- */

struct rmonrpc_pdist_ctl_t {
    int32_t status;
    int32_t protocolDistControlIndex;
    int32_t protocolDistControlDataSource;
    uint32_t protocolDistControlDroppedFrames;
    uint32_t protocolDistControlCreateTime;
    wire::text<255> protocolDistControlOwner;
    int32_t protocolDistControlStatus;
};

struct rmonrpc_pdist_stats_t {
    int32_t status;
    int32_t protocolDistControlIndex;
    int32_t protocolDirLocalIndex;
    uint64_t protocolDistStatsPkts;
    uint64_t protocolDistStatsOctets;
    uint32_t pd_flags; // the PDIR_FLAG_ constants
};

using rmonrpc_pdist_stats_arr_t = wire::rows<rmonrpc_pdist_stats_t>;

/** Traffic of one data source that belongs to no protocol of the directory. */
struct rmonrpc_others_counters_t {
    int32_t status;
    uint64_t packets;
    uint64_t octets;
};

/* ---- address map --------------------------------------------------------------- */

struct rmonrpc_addrmap_scalars_t {
    int32_t status;
    uint32_t addressMapInserts;
    uint32_t addressMapDeletes;
    int32_t addressMapMaxDesiredEntries;
};

struct rmonrpc_addrmap_ctl_t {
    int32_t status;
    int32_t addressMapControlIndex;
    int32_t addressMapControlDataSource;
    uint32_t addressMapControlDroppedFrames;
    wire::text<255> addressMapControlOwner;
    int32_t addressMapControlStatus;
};

struct rmonrpc_addrmap_key_t {
    uint32_t addressMapTimeMark;
    int32_t protocolDirLocalIndex;
    wire::byte_list addressMapNetworkAddress;
    int32_t addressMapSource;
    int32_t getType;
    int32_t count;
};

struct rmonrpc_addrmap_entry_t {
    int32_t status;
    uint32_t addressMapTimeMark;
    int32_t protocolDirLocalIndex;
    wire::byte_list addressMapNetworkAddress;
    int32_t addressMapSource;
    wire::byte_list addressMapPhysicalAddress;
    uint32_t addressMapLastChange;
};

using rmonrpc_addrmap_arr_t = wire::rows<rmonrpc_addrmap_entry_t>;

/* ---- higher-layer hosts -------------------------------------------------------- */

struct rmonrpc_hlhost_ctl_t {
    int32_t status;
    int32_t hlHostControlIndex;
    int32_t hlHostControlDataSource;
    uint32_t hlHostControlNlDroppedFrames;
    uint32_t hlHostControlNlInserts;
    uint32_t hlHostControlNlDeletes;
    int32_t hlHostControlNlMaxDesiredEntries;
    uint32_t hlHostControlAlDroppedFrames;
    uint32_t hlHostControlAlInserts;
    uint32_t hlHostControlAlDeletes;
    int32_t hlHostControlAlMaxDesiredEntries;
    wire::text<255> hlHostControlOwner;
    int32_t hlHostControlStatus;
};

/** The table that a higher-layer read means: a key's applicationLayer. */
inline constexpr int32_t NETWORK_LAYER = 0;
inline constexpr int32_t APPLICATION_LAYER = 1;

struct rmonrpc_hlhost_key_t {
    int32_t hlHostControlIndex;
    uint32_t timeMark;
    int32_t protocolDirLocalIndex;  // of the network-layer protocol
    int32_t protocolDirLocalIndex2; // of the application-layer protocol, 0 for the network-layer table
    wire::byte_list nlHostAddress;
    int32_t getType;
    int32_t applicationLayer;
    int32_t count;
};

struct rmonrpc_hlhost_t {
    int32_t status;
    uint32_t timeMark;
    wire::byte_list nlHostAddress;
    uint64_t inPkts;
    uint64_t outPkts;
    uint64_t inOctets;
    uint64_t outOctets;
    uint64_t outMacNonUnicastPkts;
    uint32_t createTime;
    int32_t hlHostControlIndex;
    int32_t protocolDirLocalIndex;
    int32_t protocolDirLocalIndex2;
};

using rmonrpc_hlhost_arr_t = wire::rows<rmonrpc_hlhost_t>;

/* ---- higher-layer matrix ------------------------------------------------------- */

struct rmonrpc_hlmatrix_ctl_t {
    int32_t status;
    int32_t hlMatrixControlIndex;
    int32_t hlMatrixControlDataSource;
    uint32_t hlMatrixControlNlDroppedFrames;
    uint32_t hlMatrixControlNlInserts;
    uint32_t hlMatrixControlNlDeletes;
    int32_t hlMatrixControlNlMaxDesiredEntries;
    uint32_t hlMatrixControlAlDroppedFrames;
    uint32_t hlMatrixControlAlInserts;
    uint32_t hlMatrixControlAlDeletes;
    int32_t hlMatrixControlAlMaxDesiredEntries;
    wire::text<255> hlMatrixControlOwner;
    int32_t hlMatrixControlStatus;
};

struct rmonrpc_hlmatrix_key_t {
    int32_t hlMatrixControlIndex;
    uint32_t timeMark;
    int32_t protocolDirLocalIndex;  // of the network-layer protocol
    int32_t protocolDirLocalIndex2; // of the application-layer protocol, 0 for the network-layer views
    wire::byte_list sourceAddress;
    wire::byte_list destAddress;
    int32_t getType;
    int32_t applicationLayer;
    int32_t direction;
    int32_t count;
};

struct rmonrpc_hlmatrix_t {
    int32_t status;
    uint32_t timeMark;
    wire::byte_list sourceAddress;
    wire::byte_list destAddress;
    uint64_t pkts;
    uint64_t octets;
    uint32_t createTime;
    int32_t hlMatrixControlIndex;
    int32_t protocolDirLocalIndex;
    int32_t protocolDirLocalIndex2;
};

using rmonrpc_hlmatrix_arr_t = wire::rows<rmonrpc_hlmatrix_t>;

/* The matrix's Top-N reports: defined with the others, carried by no procedure. */

struct rmonrpc_nlmatrix_topn_ctl_t {
    int32_t status;
    int32_t nlMatrixTopNControlIndex;
    int32_t nlMatrixTopNControlMatrixIndex;
    int32_t nlMatrixTopNControlRateBase;
    int32_t nlMatrixTopNControlTimeRemaining;
    uint32_t nlMatrixTopNControlGeneratedReports;
    int32_t nlMatrixTopNControlDuration;
    int32_t nlMatrixTopNControlRequestedSize;
    int32_t nlMatrixTopNControlGrantedSize;
    uint32_t nlMatrixTopNControlStartTime;
    wire::text<255> nlMatrixTopNControlOwner;
    int32_t nlMatrixTopNControlStatus;
};

struct rmonrpc_nlmatrix_topn_t {
    int32_t status;
    int32_t nlMatrixTopNControlIndex;
    int32_t nlMatrixTopNIndex;
    int32_t nlMatrixTopNProtocolDirLocalIndex;
    wire::byte_list nlMatrixTopNSourceAddress;
    wire::byte_list nlMatrixTopNDestAddress;
    uint32_t nlMatrixTopNPktRate;
    uint32_t nlMatrixTopNReversePktRate;
    uint32_t nlMatrixTopNOctetRate;
    uint32_t nlMatrixTopNReverseOctetRate;
};

using rmonrpc_nlmatrix_topn_arr_t = wire::rows<rmonrpc_nlmatrix_topn_t>;
