// SPDX-License-Identifier: MIT
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

/* ---- history ----------------------------------------------------------------- */

struct rmonrpc_history_ctl_t {
    int32_t status;
    int32_t historyControlIndex;
    int32_t historyControlDataSource;
    int32_t historyControlBucketsRequested;
    int32_t historyControlBucketsGranted;
    int32_t historyControlInterval;
    wire::text<255> historyControlOwner;
    int32_t historyControlStatus;
};

struct rmonrpc_etherhistory_t {
    int32_t status;
    int32_t etherHistoryIndex;
    int32_t etherHistorySampleIndex;
    uint32_t etherHistoryIntervalStart;
    uint64_t etherHistoryDropEvents;
    uint64_t etherHistoryOctets;
    uint64_t etherHistoryPkts;
    uint64_t etherHistoryBroadcastPkts;
    uint64_t etherHistoryMulticastPkts;
    uint64_t etherHistoryCRCAlignErrors;
    uint64_t etherHistoryUndersizePkts;
    uint64_t etherHistoryOversizePkts;
    uint64_t etherHistoryFragments;
    uint64_t etherHistoryJabbers;
    uint64_t etherHistoryCollisions;
    int32_t etherHistoryUtilization;
};

using rmonrpc_etherhistory_arr_t = wire::rows<rmonrpc_etherhistory_t>;

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

/* ---- host Top-N -------------------------------------------------------------- */

struct rmonrpc_hosttopn_ctl_t {
    int32_t status;
    int32_t hostTopNControlIndex;
    int32_t hostTopNHostIndex;
    int32_t hostTopNRateBase;
    int32_t hostTopNTimeRemaining;
    int32_t hostTopNDuration;
    int32_t hostTopNRequestedSize;
    int32_t hostTopNGrantedSize;
    uint32_t hostTopNStartTime;
    wire::text<255> hostTopNOwner;
    int32_t hostTopNStatus;
};

struct rmonrpc_hosttopn_t {
    int32_t status;
    int32_t hostTopNReport;
    int32_t hostTopNIndex;
    wire::byte_list hostTopNAddress;
    uint64_t hostTopNRate;
};

using rmonrpc_hosttopn_arr_t = wire::rows<rmonrpc_hosttopn_t>;

/* ---- matrix -------------------------------------------------------------------- */

struct rmonrpc_matrix_ctl_t {
    int32_t status;
    int32_t matrixControlIndex;
    int32_t matrixControlDataSource;
    int32_t matrixControlTableSize;
    uint32_t matrixControlLastDeleteTime;
    wire::text<255> matrixControlOwner;
    int32_t matrixControlStatus;
};

/** The count stands before the getType here, unlike in rmonrpc_row_key4_t. */
struct rmonrpc_matrix_key_t {
    int32_t index;
    wire::byte_list sourceAddress;
    wire::byte_list destAddress;
    int32_t count;
    int32_t getType;
    int32_t direction;
};

struct rmonrpc_matrix_t {
    int32_t status;
    wire::byte_list sourceAddress;
    wire::byte_list destAddress;
    int32_t index;
    uint64_t pkts;
    uint64_t octets;
    uint64_t errors;
};

using rmonrpc_matrix_arr_t = wire::rows<rmonrpc_matrix_t>;

/* ---- alarms, events and log ---------------------------------------------------- */

struct rmonrpc_alarm_t {
    int32_t status;
    uint32_t alarmIndex;
    uint32_t alarmInterval;
    wire::text<> alarmVariable;
    int32_t alarmSampleType;
    uint32_t alarmValue;
    int32_t alarmStartupAlarm;
    uint32_t alarmRisingThreshold;
    uint32_t alarmFallingThreshold;
    uint32_t alarmRisingEventIndex;
    uint32_t alarmFallingEventIndex;
    wire::text<255> alarmOwner;
    int32_t alarmStatus;
};

struct rmonrpc_event_t {
    int32_t status;
    uint32_t eventIndex;
    wire::text<255> eventDescription;
    int32_t eventType;
    wire::text<255> eventCommunity;
    uint32_t eventLastTimeSent;
    wire::text<255> eventOwner;
    int32_t eventStatus;
};

struct rmonrpc_log_t {
    int32_t status;
    uint32_t logEventIndex;
    uint32_t logIndex;
    uint32_t logTime;
    wire::text<255> logDescription;
};

/* ---- filters and channels ------------------------------------------------------- */

struct rmonrpc_filter_t {
    int32_t status;
    uint32_t filterIndex;
    uint32_t filterChannelIndex;
    uint32_t filterPktDataOffset;
    wire::byte_list filterPktData;
    wire::byte_list filterPktDataMask;
    wire::byte_list filterPktDataNotMask;
    uint32_t filterPktStatus;
    uint32_t filterPktStatusMask;
    uint32_t filterPktStatusNotMask;
    wire::text<255> filterOwner;
    int32_t filterStatus;
    uint32_t filterProtocolDirDataLocalIndex;
    uint32_t filterProtocolDirLocalIndex;
};

struct rmonrpc_channel_t {
    int32_t status;
    uint32_t channelIndex;
    uint32_t channelIfIndex;
    int32_t channelAcceptType;
    int32_t channelDataControl;
    uint32_t channelTurnOnEventIndex;
    uint32_t channelTurnOffEventIndex;
    uint32_t channelEventIndex;
    int32_t channelEventStatus;
    uint32_t channelMatches;
    wire::text<> channelDescription;
    wire::text<255> channelOwner;
    int32_t channelStatus;
    uint32_t channelCreateTime;
    uint32_t channelDroppedFrames;
};

/* ---- packet capture -------------------------------------------------------------- */

struct rmonrpc_buffer_ctl_t {
    int32_t status;
    uint32_t bufferControlIndex;
    uint32_t bufferControlChannelIndex;
    int32_t bufferControlFullStatus;
    int32_t bufferControlFullAction;
    int32_t bufferControlCaptureSliceSize;
    int32_t bufferControlDownloadSliceSize;
    int32_t bufferControlDownloadOffset;
    int32_t bufferControlMaxOctetsRequested;
    int32_t bufferControlMaxOctetsGranted;
    uint32_t bufferControlCapturedPackets;
    uint32_t bufferControlTurnOnTime;
    wire::text<255> bufferControlOwner;
    int32_t bufferControlStatus;
};

struct rmonrpc_capturebuf_t {
    int32_t status;
    uint32_t captureBufferControlIndex;
    uint32_t captureBufferIndex;
    uint32_t captureBufferPacketID;
    wire::byte_list captureBufferPacketData;
    uint32_t captureBufferPacketLength;
    uint32_t captureBufferPacketTime;
    uint32_t captureBufferPacketStatus;
    uint32_t captureBufferPacketHighCapacityTime;
};

/** What the three values and the option select is the agent's to say. */
struct rmonrpc_capture_save_key_t {
    wire::text<255> fileName;
    uint32_t saveValue1;
    uint32_t saveValue2;
    uint32_t saveValue3;
    int32_t saveOption;
};

struct rmonrpc_capture_save_result_t {
    uint32_t lastPktIndex;
    uint32_t totalPktsSaved;
};
