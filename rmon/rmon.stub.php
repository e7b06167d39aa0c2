<?php

/** @generate-function-entries */

// SPDX-License-Identifier: MIT

/*
 * What the functions have in common. Reports are warnings. Another number of arguments than a function takes
 * is NULL, after "Wrong parameter count for NAME()". Arguments are converted as casts convert them, and of
 * integers the low 32 bits are sent. $connid is a link or its number; what is neither is FALSE, after "... is
 * not a RMON/RPC conn id!". Behind "LABEL: RPC:" stand the RPC library's words for what became of the call.
 *
 * An address whose elements are converted is taken by reference where it is a variable, an element or a property
 * (as array_multisort() takes its arrays), by value elsewhere. What can't be written to, a readonly property for
 * one, is to be copied to a variable first.
 *
 * A row's shape is written once, with the function that reads one row. Functions whose pages refer to that one,
 * "See NAME().", have a copy of it, which script/arginfo renews.
 *
 * What the agent answers, a set's result and a row's status, are numbers of SNMP's error-status: 0 noError, done;
 * 2 noSuchName, there is no such row; 3 badValue, a value outside its range or one that the row's state rules out;
 * 5 genErr, the table is full or locked.
 *
 * The row status of every control table is an EntryStatus (RFC 2819), also where the table's own MIB has a
 * RowStatus: the agent has one set of rules for all of its tables. createRequest makes a row, which is under
 * creation; valid sets it to work, underCreation stops it, invalid removes it.
 */

/* ---- constants -------------------------------------------------------------------------- */

/**
 * The rights of an SNMP community: it may read. For rmon_community_set(), and privs of its rows.
 *
 * @var int
 */
const COMM_RO = 1;

/**
 * The rights of an SNMP community: it may read and set.
 *
 * @var int
 */
const COMM_RW = 2;

/**
 * The family of IPv4 addresses, for rmon_inet_pton() and rmon_inet_ntop(). The engine's sockets extension
 * has the same constant.
 *
 * @var int
 */
const AF_INET = 2;

/**
 * The family of IPv6 addresses, for rmon_inet_pton() and rmon_inet_ntop().
 *
 * @var int
 */
const AF_INET6 = 10;

/**
 * A bit of flags in the rows of the protocol directory, and of pd_flags in those of the protocol
 * distribution, like all that begin so: a protocol of the network layer.
 *
 * @var int
 */
const PDIR_FLAG_NETWORK = 1;

/**
 * A bit of flags: the protocol is IP.
 *
 * @var int
 */
const PDIR_FLAG_IP = 2;

/**
 * A bit of flags: the directory knows no protocol that this one carries.
 *
 * @var int
 */
const PDIR_FLAG_LEAF = 4;

/**
 * A bit of flags: the protocol was added to the directory by a set.
 *
 * @var int
 */
const PDIR_FLAG_EXTENSION = 8;

/**
 * A bit of flags: IP carries the protocol, directly or through others.
 *
 * @var int
 */
const PDIR_FLAG_IP_DESC = 16;

/**
 * A bit of flags: the agent learned the protocol from the traffic.
 *
 * @var int
 */
const PDIR_FLAG_AUTO_LEARN = 32;

/**
 * A bit of flags: a base layer, such as ether2, which no other protocol carries.
 *
 * @var int
 */
const PDIR_FLAG_BASE_PROTO = 64;

/**
 * A bit of flags: the row stands for all traffic whose protocol is in no other row.
 *
 * @var int
 */
const PDIR_FLAG_OTHER_PROTO = 128;

/**
 * A kind of appliance, as norv_target_id() tells it; like all that begin so.
 *
 * @var int
 */
const NORV_TARGET_ORN_AP = 1;

/**
 * A kind of appliance. Its network settings are written out by the command net_conf_init.
 *
 * @var int
 */
const NORV_TARGET_NORV2_AP = 3;

/**
 * A kind of appliance. Its network settings are written out by the command net_conf_init.
 *
 * @var int
 */
const NORV_TARGET_NORV1_AP = 4;

/**
 * A kind of appliance. Its network settings are written out by no command.
 *
 * @var int
 */
const NORV_TARGET_DESK = 5;

/**
 * A kind of appliance. Its network settings are written out by no command.
 *
 * @var int
 */
const NORV_TARGET_TAMBO = 6;

/**
 * A kind of appliance. Its network settings are written out by the command vd_net_conf.
 *
 * @var int
 */
const NORV_TARGET_VELDRIN = 7;

/* ---- connections ------------------------------------------------------------------------ */

/**
 * Opens a link to the agent on a host, over TCP. It lives until it is closed,
 * at the latest until the request ends. A second call with the same host text
 * in one request returns the same link, whatever rmon.default_port is by then. One whose agent is gone stays
 * dead until it was closed as often as it was opened, and once more.
 *
 * @param string $host name or dotted IPv4 address; the port is rmon.default_port
 * @return resource|false|null the link; FALSE after a warning ("RMON/RPC unable to resolv host ...",
 *     "RMON: RPC connection failed!", "RMON:Too many open connections (...)")
 */
function rmon_connect($host) {}

/**
 * Opens a link that stays open when the request ends and is found again, by its
 * host text, by later requests of this process. A link found is tested with one
 * call; when its agent is gone, "PHP/RMON link lost (...)" is reported and the
 * link is made anew. With rmon.allow_persistent off this is rmon_connect().
 *
 * @param string $host name or dotted IPv4 address; the port is rmon.default_port
 * @return resource|false|null the link; FALSE on failure (warnings "RMON/RPC unable to resolv host ...",
 *     "RMON: Too many open links (...)", "RMON: Too many open persistent links (...)")
 */
function rmon_pconnect($host) {}

/**
 * Gives a link back. Each connect call that returned the link counts, and so
 * does the module's own reference to a new link, which is given back first: a
 * link connected once is closed by the second rmon_close().
 *
 * @param resource $link the link; without it, the one opened last in this request
 * @return true|null NULL after a warning when this is no open link
 */
function rmon_close($link = UNKNOWN) {}

/* ---- system group and interface table --------------------------------------------------- */

/**
 * The probe's system group (RFC 1213, system).
 *
 * @param resource|int $connid
 * @return array{
 *     sysDescr: string,
 *     sysUpTime: int,
 *     sysContact: string,
 *     sysName: string,
 *     sysLocation: string,
 *     sysObjectID: string,
 *     sysServices: int
 * }|false|null sysUpTime in hundredths of a second; FALSE after the warning "rmon_system_get: RPC: ..."
 */
function rmon_system_get($connid) {}

/**
 * Sets the three texts of the system group that an operator may set (RFC 1213, system).
 *
 * @param resource|int $connid
 * @param string $sysContact at most 255 bytes, like the others
 * @param string $sysName
 * @param string $sysLocation
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_system_set: RPC: ..."
 */
function rmon_system_set($connid, $sysContact, $sysName, $sysLocation) {}

/**
 * One row of the interface table (RFC 1213, ifTable), with the interface's data source.
 *
 * @param resource|int $connid
 * @param int $ifIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     ifIndex: int,
 *     ifDescr: string,
 *     ifType: int,
 *     ifMtu: int,
 *     ifSpeed: int,
 *     ifPhysAddress: string,
 *     ifAdminStatus: int,
 *     ifOperStatus: int,
 *     ifLastChange: int,
 *     ifInOctets: int,
 *     ifInUcastPkts: int,
 *     ifInNUcastPkts: int,
 *     ifInDiscards: int,
 *     ifInErrors: int,
 *     ifInUnknownProtos: int,
 *     ifOutOctets: int,
 *     ifOutUcastPkts: int,
 *     ifOutNUcastPkts: int,
 *     ifOutDiscards: int,
 *     ifOutErrors: int,
 *     ifOutQLen: int,
 *     dsrcType: string,
 *     dsrcSlot?: int,
 *     dsrcPort?: int,
 *     dsrcVlan: int,
 *     dsrcChGrp: int,
 *     dsrcSpanMode: string,
 *     dsrcSpanDest: int
 * }|false|null 0 and status: the agent's result code. ifSpeed in bits per second, ifLastChange in
 *     hundredths of a second, ifPhysAddress as "00:1A:2B:3C:4D:5E" ("" unless it has 6 bytes); dsrcType
 *     "ETH", "VLAN", "NETFLOW", "FEC" or "OTHER", dsrcSlot and dsrcPort for "ETH" only; dsrcSpanMode
 *     "TX", "RX", "BOTH" or "NONE". FALSE after the warning "rmon_ifentry_get: RPC: ..."
 */
function rmon_ifentry_get($connid, $ifIndex) {}

/**
 * The first row of the interface table behind an index (0: the first of all). See rmon_ifentry_get().
 *
 * @param resource|int $connid
 * @param int $ifIndex
 * @return array{0: int, status: int, ifIndex: int, ifDescr: string, ifType: int, ifMtu: int,
 *     ifSpeed: int, ifPhysAddress: string, ifAdminStatus: int, ifOperStatus: int, ifLastChange: int,
 *     ifInOctets: int, ifInUcastPkts: int, ifInNUcastPkts: int, ifInDiscards: int, ifInErrors: int,
 *     ifInUnknownProtos: int, ifOutOctets: int, ifOutUcastPkts: int, ifOutNUcastPkts: int,
 *     ifOutDiscards: int, ifOutErrors: int, ifOutQLen: int, dsrcType: string, dsrcSlot?: int, dsrcPort?: int,
 *     dsrcVlan: int, dsrcChGrp: int, dsrcSpanMode: string, dsrcSpanDest: int}|false|null
 */
function rmon_ifentry_getnext($connid, $ifIndex) {}

/* ---- Ethernet statistics ---------------------------------------------------------------- */

/**
 * One row of the Ethernet statistics (RFC 2819, etherStatsTable), with 64-bit counters.
 *
 * @param resource|int $connid
 * @param int $etherStatsIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     etherStatsIndex: int,
 *     etherStatsDataSource: int,
 *     etherStatsDropEvents: float,
 *     etherStatsOctets: float,
 *     etherStatsPkts: float,
 *     etherStatsBroadcastPkts: float,
 *     etherStatsMulticastPkts: float,
 *     etherStatsCRCAlignErrors: float,
 *     etherStatsUndersizePkts: float,
 *     etherStatsOversizePkts: float,
 *     etherStatsFragments: float,
 *     etherStatsJabbers: float,
 *     etherStatsCollisions: float,
 *     etherStatsPkts64Octets: float,
 *     etherStatsPkts65to127Octets: float,
 *     etherStatsPkts128to255Octets: float,
 *     etherStatsPkts256to511Octets: float,
 *     etherStatsPkts512to1023Octets: float,
 *     etherStatsPkts1024to1518Octets: float,
 *     etherStatsOwner: string,
 *     etherStatsStatus: int,
 *     etherStatsDroppedFrames: float,
 *     etherStatsCreateTime: int
 * }|false|null 0 and status: the agent's result code. etherStatsDataSource is an interface index,
 *     etherStatsStatus an EntryStatus (1 valid, 2 createRequest, 3 underCreation, 4 invalid),
 *     etherStatsCreateTime in hundredths of a second. FALSE after the warning "rmon_ifentry_get: RPC: ..."
 */
function rmon_etherstats_get($connid, $etherStatsIndex) {}

/**
 * The first row of the Ethernet statistics behind an index (0: the first of all). See rmon_etherstats_get().
 *
 * @param resource|int $connid
 * @param int $etherStatsIndex
 * @return array{0: int, status: int, etherStatsIndex: int, etherStatsDataSource: int,
 *     etherStatsDropEvents: float, etherStatsOctets: float, etherStatsPkts: float,
 *     etherStatsBroadcastPkts: float, etherStatsMulticastPkts: float, etherStatsCRCAlignErrors: float,
 *     etherStatsUndersizePkts: float, etherStatsOversizePkts: float, etherStatsFragments: float,
 *     etherStatsJabbers: float, etherStatsCollisions: float, etherStatsPkts64Octets: float,
 *     etherStatsPkts65to127Octets: float, etherStatsPkts128to255Octets: float,
 *     etherStatsPkts256to511Octets: float, etherStatsPkts512to1023Octets: float,
 *     etherStatsPkts1024to1518Octets: float, etherStatsOwner: string, etherStatsStatus: int,
 *     etherStatsDroppedFrames: float, etherStatsCreateTime: int}|false|null
 */
function rmon_etherstats_getnext($connid, $etherStatsIndex) {}

/**
 * Creates or changes a row of the Ethernet statistics (RFC 2819, etherStatsTable).
 *
 * @param resource|int $connid
 * @param int $etherStatsIndex
 * @param int $etherStatsDataSource an interface index
 * @param string $etherStatsOwner at most 255 bytes
 * @param int $etherStatsStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_etherstats_set: RPC: ..."
 */
function rmon_etherstats_set($connid, $etherStatsIndex, $etherStatsDataSource, $etherStatsOwner, $etherStatsStatus) {}

/* ---- history ------------------------------------------------------------------------- */

/**
 * One row of the history control table (RFC 2819, historyControlTable).
 *
 * @param resource|int $connid
 * @param int $historyControlIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     historyControlIndex: int,
 *     historyControlDataSource: int,
 *     historyControlBucketsRequested: int,
 *     historyControlBucketsGranted: int,
 *     historyControlInterval: int,
 *     historyControlOwner: string,
 *     historyControlStatus: int
 * }|false|null 0 and status: the agent's result code. historyControlDataSource is an interface index,
 *     historyControlInterval in seconds, historyControlStatus an EntryStatus. FALSE after the warning
 *     "rmon_ifentry_get: RPC: ..."
 */
function rmon_history_ctl_get($connid, $historyControlIndex) {}

/**
 * The first row of the history control table behind an index (0: the first of all). See
 * rmon_history_ctl_get().
 *
 * @param resource|int $connid
 * @param int $historyControlIndex
 * @return array{0: int, status: int, historyControlIndex: int, historyControlDataSource: int,
 *     historyControlBucketsRequested: int, historyControlBucketsGranted: int, historyControlInterval: int,
 *     historyControlOwner: string, historyControlStatus: int}|false|null
 */
function rmon_history_ctl_getnext($connid, $historyControlIndex) {}

/**
 * Creates or changes a row of the history control table (RFC 2819, historyControlTable).
 *
 * @param resource|int $connid
 * @param int $historyControlIndex
 * @param int $historyControlDataSource an interface index
 * @param int $historyControlBucketsRequested
 * @param int $historyControlInterval in seconds
 * @param string $historyControlOwner at most 255 bytes
 * @param int $historyControlStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_histroy_ctl_set: RPC: ...", spelled so
 */
function rmon_history_ctl_set($connid, $historyControlIndex, $historyControlDataSource, $historyControlBucketsRequested, $historyControlInterval, $historyControlOwner, $historyControlStatus) {}

/**
 * One sample of the Ethernet history (RFC 2819, etherHistoryTable), with 64-bit counters.
 *
 * @param resource|int $connid
 * @param int $etherHistoryIndex the control row
 * @param int $etherHistorySampleIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     etherHistoryIndex: int,
 *     etherHistorySampleIndex: int,
 *     etherHistoryIntervalStart: int,
 *     etherHistoryDropEvents: float,
 *     etherHistoryOctets: float,
 *     etherHistoryPkts: float,
 *     etherHistoryBroadcastPkts: float,
 *     etherHistoryMulticastPkts: float,
 *     etherHistoryCRCAlignErrors: float,
 *     etherHistoryUndersizePkts: float,
 *     etherHistoryOversizePkts: float,
 *     etherHistoryJabbers: float,
 *     etherHistoryFragments: float,
 *     etherHistoryCollisions: float,
 *     etherHistoryUtilization: int
 * }|false|null 0 and status: the agent's result code. etherHistoryIntervalStart in hundredths of a second,
 *     etherHistoryUtilization in hundredths of a percent. FALSE without a message when the agent has no
 *     such row, after the warning "rmon_etherhistory_getbulk: RPC: ..." when the call failed
 */
function rmon_etherhistory_get($connid, $etherHistoryIndex, $etherHistorySampleIndex) {}

/**
 * The first sample behind a sample index (0: the first of all). See rmon_etherhistory_get().
 *
 * @param resource|int $connid
 * @param int $etherHistoryIndex
 * @param int $etherHistorySampleIndex
 * @return array{0: int, status: int, etherHistoryIndex: int, etherHistorySampleIndex: int,
 *     etherHistoryIntervalStart: int, etherHistoryDropEvents: float, etherHistoryOctets: float,
 *     etherHistoryPkts: float, etherHistoryBroadcastPkts: float, etherHistoryMulticastPkts: float,
 *     etherHistoryCRCAlignErrors: float, etherHistoryUndersizePkts: float, etherHistoryOversizePkts: float,
 *     etherHistoryJabbers: float, etherHistoryFragments: float, etherHistoryCollisions: float,
 *     etherHistoryUtilization: int}|false|null
 */
function rmon_etherhistory_getnext($connid, $etherHistoryIndex, $etherHistorySampleIndex) {}

/**
 * Several samples behind a sample index. See rmon_etherhistory_get().
 *
 * @param resource|int $connid
 * @param int $etherHistoryIndex
 * @param int $etherHistorySampleIndex
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, etherHistoryIndex: int, etherHistorySampleIndex: int,
 *     etherHistoryIntervalStart: int, etherHistoryDropEvents: float, etherHistoryOctets: float,
 *     etherHistoryPkts: float, etherHistoryBroadcastPkts: float, etherHistoryMulticastPkts: float,
 *     etherHistoryCRCAlignErrors: float, etherHistoryUndersizePkts: float, etherHistoryOversizePkts: float,
 *     etherHistoryJabbers: float, etherHistoryFragments: float, etherHistoryCollisions: float,
 *     etherHistoryUtilization: int}>|false|null the rows; FALSE without a message when there is none
 */
function rmon_etherhistory_getbulk($connid, $etherHistoryIndex, $etherHistorySampleIndex, $count) {}

/* ---- hosts --------------------------------------------------------------------------- */

/**
 * One row of the hosts' control table (RFC 2819, hostControlTable).
 *
 * @param resource|int $connid
 * @param int $hostControlIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     hostControlIndex: int,
 *     hostControlDataSource: int,
 *     hostControlTableSize: int,
 *     hostControlLastDeleteTime: int,
 *     hostControlOwner: string,
 *     hostControlStatus: int
 * }|false|null 0 and status: the agent's result code. hostControlDataSource is an interface index,
 *     hostControlLastDeleteTime in hundredths of a second, hostControlStatus an EntryStatus. FALSE
 *     after the warning "host_ctl_get: RPC: ..."
 */
function rmon_host_ctl_get($connid, $hostControlIndex) {}

/**
 * The first row of the hosts' control table behind an index (0: the first of all). See rmon_host_ctl_get().
 *
 * @param resource|int $connid
 * @param int $hostControlIndex
 * @return array{0: int, status: int, hostControlIndex: int, hostControlDataSource: int,
 *     hostControlTableSize: int, hostControlLastDeleteTime: int, hostControlOwner: string,
 *     hostControlStatus: int}|false|null
 */
function rmon_host_ctl_getnext($connid, $hostControlIndex) {}

/**
 * Creates or changes a row of the hosts' control table (RFC 2819, hostControlTable).
 *
 * @param resource|int $connid
 * @param int $hostControlIndex
 * @param int $hostControlDataSource an interface index
 * @param string $hostControlOwner at most 255 bytes
 * @param int $hostControlStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_host_ctl_set: RPC: ..."
 */
function rmon_host_ctl_set($connid, $hostControlIndex, $hostControlDataSource, $hostControlOwner, $hostControlStatus) {}

/**
 * One host, by its address (RFC 2819, hostTable), with 64-bit counters.
 *
 * @param resource|int $connid
 * @param int $hostIndex the control row
 * @param array $hostAddress one integer for each byte, at most 255 ("too many (...) elements in addr!" and
 *     FALSE); other elements are converted to integers in the caller's array. Anything but an array is an
 *     empty address.
 * @prefer-ref $hostAddress
 * @return array{
 *     0: int,
 *     status: int,
 *     hostAddress: list<int>|int,
 *     hostCreationOrder: int,
 *     hostIndex: int,
 *     hostInPkts: float,
 *     hostOutPkts: float,
 *     hostInOctets: float,
 *     hostOutOctets: float,
 *     hostOutErrors: float,
 *     hostOutBroadcastPkts: float,
 *     hostOutMulticastPkts: float
 * }|false|null 0 and status: the agent's result code; an empty hostAddress is the integer 0. FALSE without
 *     a message when the agent has no such row, after the warning "rmon_ifentry_get: RPC: ..." when the
 *     call failed
 */
function rmon_host_get($connid, $hostIndex, $hostAddress) {}

/**
 * The first host behind an address (an empty one: the first of all). See rmon_host_get().
 *
 * @param resource|int $connid
 * @param int $hostIndex
 * @param array $hostAddress
 * @prefer-ref $hostAddress
 * @return array{0: int, status: int, hostAddress: list<int>|int, hostCreationOrder: int, hostIndex: int,
 *     hostInPkts: float, hostOutPkts: float, hostInOctets: float, hostOutOctets: float, hostOutErrors: float,
 *     hostOutBroadcastPkts: float, hostOutMulticastPkts: float}|false|null
 */
function rmon_host_getnext($connid, $hostIndex, $hostAddress) {}

/**
 * Several hosts behind an address, in the order of their addresses. See rmon_host_get().
 *
 * @param resource|int $connid
 * @param int $hostIndex
 * @param array $hostAddress
 * @prefer-ref $hostAddress
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, hostAddress: list<int>|int, hostCreationOrder: int,
 *     hostIndex: int, hostInPkts: float, hostOutPkts: float, hostInOctets: float, hostOutOctets: float,
 *     hostOutErrors: float, hostOutBroadcastPkts: float, hostOutMulticastPkts: float}>|false|null the rows;
 *     FALSE without a message when there is none
 */
function rmon_host_getbulk($connid, $hostIndex, $hostAddress, $count) {}

/**
 * One host, by the order in which the agent saw it first (RFC 2819, hostTimeTable), with 64-bit counters.
 *
 * @param resource|int $connid
 * @param int $hostTimeIndex the control row
 * @param int $hostTimeCreationOrder
 * @return array{
 *     0: int,
 *     status: int,
 *     hostTimeAddress: list<int>,
 *     hostTimeCreationOrder: int,
 *     hostTimeIndex: int,
 *     hostTimeInPkts: float,
 *     hostTimeOutPkts: float,
 *     hostTimeInOctets: float,
 *     hostTimeOutOctets: float,
 *     hostTimeOutErrors: float,
 *     hostTimeOutBroadcastPkts: float,
 *     hostTimeOutMulticastPkts: float
 * }|false|null 0 and status: the agent's result code; an empty hostTimeAddress is an empty array. FALSE
 *     without a message when the agent has no such row, after the warning "rmon_hosttime_getbulk: RPC: ..."
 *     when the call failed
 */
function rmon_hosttime_get($connid, $hostTimeIndex, $hostTimeCreationOrder) {}

/**
 * The first host behind a creation order (0: the first of all). See rmon_hosttime_get().
 *
 * @param resource|int $connid
 * @param int $hostTimeIndex
 * @param int $hostTimeCreationOrder
 * @return array{0: int, status: int, hostTimeAddress: list<int>, hostTimeCreationOrder: int,
 *     hostTimeIndex: int, hostTimeInPkts: float, hostTimeOutPkts: float, hostTimeInOctets: float,
 *     hostTimeOutOctets: float, hostTimeOutErrors: float, hostTimeOutBroadcastPkts: float,
 *     hostTimeOutMulticastPkts: float}|false|null
 */
function rmon_hosttime_getnext($connid, $hostTimeIndex, $hostTimeCreationOrder) {}

/**
 * Several hosts behind a creation order. See rmon_hosttime_get().
 *
 * @param resource|int $connid
 * @param int $hostTimeIndex
 * @param int $hostTimeCreationOrder
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, hostTimeAddress: list<int>, hostTimeCreationOrder: int,
 *     hostTimeIndex: int, hostTimeInPkts: float, hostTimeOutPkts: float, hostTimeInOctets: float,
 *     hostTimeOutOctets: float, hostTimeOutErrors: float, hostTimeOutBroadcastPkts: float,
 *     hostTimeOutMulticastPkts: float}>|false|null the rows; FALSE without a message when there is none
 */
function rmon_hosttime_getbulk($connid, $hostTimeIndex, $hostTimeCreationOrder, $count) {}

/* ---- host Top-N ---------------------------------------------------------------------- */

/**
 * One row of the Top-N control table (RFC 2819, hostTopNControlTable).
 *
 * @param resource|int $connid
 * @param int $hostTopNControlIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     hostTopNControlIndex: int,
 *     hostTopNHostIndex: int,
 *     hostTopNRateBase: int,
 *     hostTopNTimeRemaining: int,
 *     hostTopNDuration: int,
 *     hostTopNRequestedSize: int,
 *     hostTopNGrantedSize: int,
 *     hostTopNStartTime: int,
 *     hostTopNOwner: string,
 *     hostTopNStatus: int
 * }|false|null 0 and status: the agent's result code. hostTopNHostIndex is a row of the hosts' control
 *     table, hostTopNTimeRemaining and hostTopNDuration in seconds, hostTopNStartTime in hundredths of a
 *     second, hostTopNStatus an EntryStatus. FALSE after the warning "hosttopn_ctl_get: RPC: ..."
 */
function rmon_hosttopn_ctl_get($connid, $hostTopNControlIndex) {}

/**
 * The first row of the Top-N control table behind an index (0: the first of all). See
 * rmon_hosttopn_ctl_get().
 *
 * @param resource|int $connid
 * @param int $hostTopNControlIndex
 * @return array{0: int, status: int, hostTopNControlIndex: int, hostTopNHostIndex: int,
 *     hostTopNRateBase: int, hostTopNTimeRemaining: int, hostTopNDuration: int, hostTopNRequestedSize: int,
 *     hostTopNGrantedSize: int, hostTopNStartTime: int, hostTopNOwner: string,
 *     hostTopNStatus: int}|false|null
 */
function rmon_hosttopn_ctl_getnext($connid, $hostTopNControlIndex) {}

/**
 * Creates or changes a row of the Top-N control table (RFC 2819, hostTopNControlTable).
 *
 * @param resource|int $connid
 * @param int $hostTopNControlIndex
 * @param int $hostTopNHostIndex a row of the hosts' control table
 * @param int $hostTopNRateBase 1 InPkts, 2 OutPkts, 3 InOctets, 4 OutOctets, 5 OutErrors, 6 OutBroadcastPkts,
 *     7 OutMulticastPkts
 * @param int $hostTopNTimeRemaining in seconds
 * @param int $hostTopNRequestedSize rows wanted in the report
 * @param string $hostTopNOwner at most 255 bytes
 * @param int $hostTopNStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_hosttopn_ctl_set: RPC: ..."
 */
function rmon_hosttopn_ctl_set($connid, $hostTopNControlIndex, $hostTopNHostIndex, $hostTopNRateBase, $hostTopNTimeRemaining, $hostTopNRequestedSize, $hostTopNOwner, $hostTopNStatus) {}

/**
 * One place of a Top-N report (RFC 2819, hostTopNTable), with a 64-bit rate.
 *
 * @param resource|int $connid
 * @param int $hostTopNReport the control row
 * @param int $hostTopNIndex the rank
 * @return array{
 *     0: int,
 *     status: int,
 *     hostTopNReport: int,
 *     hostTopNIndex: int,
 *     hostTopNAddress: list<int>,
 *     hostTopNRate: float
 * }|false|null 0 and status: the agent's result code. hostTopNAddress has one integer for each byte,
 *     hostTopNRate is how much the statistic grew during the report. FALSE without a message when the agent
 *     has no such row, after the warning "rmon_hosttopn_getbulk: RPC: ..." when the call failed
 */
function rmon_hosttopn_get($connid, $hostTopNReport, $hostTopNIndex) {}

/**
 * The first place of a Top-N report behind a rank (0: the first of all). See rmon_hosttopn_get().
 *
 * @param resource|int $connid
 * @param int $hostTopNReport
 * @param int $hostTopNIndex
 * @return array{0: int, status: int, hostTopNReport: int, hostTopNIndex: int, hostTopNAddress: list<int>,
 *     hostTopNRate: float}|false|null
 */
function rmon_hosttopn_getnext($connid, $hostTopNReport, $hostTopNIndex) {}

/**
 * Several places of a Top-N report behind a rank. See rmon_hosttopn_get().
 *
 * @param resource|int $connid
 * @param int $hostTopNReport
 * @param int $hostTopNIndex
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, hostTopNReport: int, hostTopNIndex: int,
 *     hostTopNAddress: list<int>, hostTopNRate: float}>|false|null the rows; FALSE without a message when
 *     there is none
 */
function rmon_hosttopn_getbulk($connid, $hostTopNReport, $hostTopNIndex, $count) {}

/* ---- matrix -------------------------------------------------------------------------- */

/**
 * One row of the matrix control table (RFC 2819, matrixControlTable).
 *
 * @param resource|int $connid
 * @param int $matrixControlIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     matrixControlIndex: int,
 *     matrixControlDataSource: int,
 *     matrixControlTableSize: int,
 *     matrixControlLastDeleteTime: int,
 *     matrixControlOwner: string,
 *     matrixControlStatus: int
 * }|false|null 0 and status: the agent's result code. matrixControlDataSource is an interface index,
 *     matrixControlLastDeleteTime in hundredths of a second, matrixControlStatus an EntryStatus. FALSE
 *     after the warning "matrix_ctl_get: RPC: ..."
 */
function rmon_matrix_ctl_get($connid, $matrixControlIndex) {}

/**
 * The first row of the matrix control table behind an index (0: the first of all). See rmon_matrix_ctl_get().
 *
 * @param resource|int $connid
 * @param int $matrixControlIndex
 * @return array{0: int, status: int, matrixControlIndex: int, matrixControlDataSource: int,
 *     matrixControlTableSize: int, matrixControlLastDeleteTime: int, matrixControlOwner: string,
 *     matrixControlStatus: int}|false|null
 */
function rmon_matrix_ctl_getnext($connid, $matrixControlIndex) {}

/**
 * Creates or changes a row of the matrix control table (RFC 2819, matrixControlTable).
 *
 * @param resource|int $connid
 * @param int $matrixControlIndex
 * @param int $matrixControlDataSource an interface index
 * @param string $matrixControlOwner at most 255 bytes
 * @param int $matrixControlStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_matrix_ctl_set: RPC: ..."
 */
function rmon_matrix_ctl_set($connid, $matrixControlIndex, $matrixControlDataSource, $matrixControlOwner, $matrixControlStatus) {}

/**
 * One conversation, by its addresses, in the view by source (RFC 2819, matrixSDTable), with
 * 64-bit counters.
 *
 * @param resource|int $connid
 * @param int $matrixSDIndex the control row
 * @param array $matrixSDSourceAddress one integer for each byte, at most 255 ("too many (...) elements in
 *     addr!" and FALSE); other elements are converted to integers in the caller's array. Anything but an
 *     array is an empty address.
 * @prefer-ref $matrixSDSourceAddress
 * @param array $matrixSDDestAddress likewise
 * @prefer-ref $matrixSDDestAddress
 * @return array{
 *     0: int,
 *     status: int,
 *     matrixSDSourceAddress: list<int>|int,
 *     matrixSDDestAddress: list<int>|int,
 *     matrixSDIndex: int,
 *     matrixSDPkts: float,
 *     matrixSDOctets: float,
 *     matrixSDErrors: float
 * }|false|null 0 and status: the agent's result code; an empty address is the integer 0. FALSE without a
 *     message when the agent has no such row, after the warning "matrix_getbulk: RPC: ..." when the call
 *     failed
 */
function rmon_matrix_sd_get($connid, $matrixSDIndex, $matrixSDSourceAddress, $matrixSDDestAddress) {}

/**
 * The first conversation behind a pair of addresses (empty ones: the first of all). See rmon_matrix_sd_get().
 *
 * @param resource|int $connid
 * @param int $matrixSDIndex
 * @param array $matrixSDSourceAddress
 * @prefer-ref $matrixSDSourceAddress
 * @param array $matrixSDDestAddress
 * @prefer-ref $matrixSDDestAddress
 * @return array{0: int, status: int, matrixSDSourceAddress: list<int>|int,
 *     matrixSDDestAddress: list<int>|int, matrixSDIndex: int, matrixSDPkts: float, matrixSDOctets: float,
 *     matrixSDErrors: float}|false|null
 */
function rmon_matrix_sd_getnext($connid, $matrixSDIndex, $matrixSDSourceAddress, $matrixSDDestAddress) {}

/**
 * Several conversations behind a pair of addresses. See rmon_matrix_sd_get().
 *
 * @param resource|int $connid
 * @param int $matrixSDIndex
 * @param array $matrixSDSourceAddress
 * @prefer-ref $matrixSDSourceAddress
 * @param array $matrixSDDestAddress
 * @prefer-ref $matrixSDDestAddress
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, matrixSDSourceAddress: list<int>|int,
 *     matrixSDDestAddress: list<int>|int, matrixSDIndex: int, matrixSDPkts: float, matrixSDOctets: float,
 *     matrixSDErrors: float}>|false|null the rows; FALSE without a message when there is none
 */
function rmon_matrix_sd_getbulk($connid, $matrixSDIndex, $matrixSDSourceAddress, $matrixSDDestAddress, $count) {}

/**
 * One conversation, by its addresses, in the view by destination (RFC 2819, matrixDSTable), with
 * 64-bit counters.
 *
 * @param resource|int $connid
 * @param int $matrixDSIndex the control row
 * @param array $matrixDSSourceAddress as in rmon_matrix_sd_get()
 * @prefer-ref $matrixDSSourceAddress
 * @param array $matrixDSDestAddress likewise
 * @prefer-ref $matrixDSDestAddress
 * @return array{
 *     0: int,
 *     status: int,
 *     matrixDSSourceAddress: list<int>|int,
 *     matrixDSDestAddress: list<int>|int,
 *     matrixDSIndex: int,
 *     matrixDSPkts: float,
 *     matrixDSOctets: float,
 *     matrixDSErrors: float
 * }|false|null 0 and status: the agent's result code; an empty address is the integer 0. FALSE without a
 *     message when the agent has no such row, after the warning "matrix_getbulk: RPC: ..." when the call
 *     failed
 */
function rmon_matrix_ds_get($connid, $matrixDSIndex, $matrixDSSourceAddress, $matrixDSDestAddress) {}

/**
 * The first conversation behind a pair of addresses (empty ones: the first of all). See rmon_matrix_ds_get().
 *
 * @param resource|int $connid
 * @param int $matrixDSIndex
 * @param array $matrixDSSourceAddress
 * @prefer-ref $matrixDSSourceAddress
 * @param array $matrixDSDestAddress
 * @prefer-ref $matrixDSDestAddress
 * @return array{0: int, status: int, matrixDSSourceAddress: list<int>|int,
 *     matrixDSDestAddress: list<int>|int, matrixDSIndex: int, matrixDSPkts: float, matrixDSOctets: float,
 *     matrixDSErrors: float}|false|null
 */
function rmon_matrix_ds_getnext($connid, $matrixDSIndex, $matrixDSSourceAddress, $matrixDSDestAddress) {}

/**
 * Several conversations behind a pair of addresses. See rmon_matrix_ds_get().
 *
 * @param resource|int $connid
 * @param int $matrixDSIndex
 * @param array $matrixDSSourceAddress
 * @prefer-ref $matrixDSSourceAddress
 * @param array $matrixDSDestAddress
 * @prefer-ref $matrixDSDestAddress
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, matrixDSSourceAddress: list<int>|int,
 *     matrixDSDestAddress: list<int>|int, matrixDSIndex: int, matrixDSPkts: float, matrixDSOctets: float,
 *     matrixDSErrors: float}>|false|null the rows; FALSE without a message when there is none
 */
function rmon_matrix_ds_getbulk($connid, $matrixDSIndex, $matrixDSSourceAddress, $matrixDSDestAddress, $count) {}

/* ---- protocol directory -------------------------------------------------------------- */

/**
 * When the protocol directory changed last (RFC 2021, protocolDirLastChange).
 *
 * @param resource|int $connid
 * @return int|false|null in hundredths of a second; FALSE without a message when the call failed
 */
function rmon_pdir_lastchange_get($connid) {}

/**
 * One protocol, by its identifier and parameters (RFC 2021, protocolDirTable).
 *
 * @param resource|int $connid
 * @param array $protocolDirID one integer for each byte, at most 255 ("too many (...) elements in addr!" and
 *     FALSE); an element that is no integer is refused ("addr element not a LONG (...)!" with the number of
 *     its type, and FALSE). Anything but an array is an empty identifier.
 * @param array $protocolDirParameters likewise
 * @return array{
 *     0: int,
 *     status: int,
 *     protocolDirID: list<int>,
 *     protocolDirParameters: list<int>,
 *     protocolDirLocalIndex: int,
 *     protocolDirDescr: string,
 *     protocolDirType: int,
 *     protocolDirAddressMapConfig: int,
 *     protocolDirHostConfig: int,
 *     protocolDirMatrixConfig: int,
 *     protocolDirOwner: string,
 *     protocolDirStatus: int,
 *     protocolDirArtConfig: int,
 *     is_leaf: int,
 *     is_network: int,
 *     flags: int
 * }|false|null 0 and status: the agent's result code. protocolDirLocalIndex names the protocol in all other
 *     tables; protocolDirType is a set of 1 (extensible) and 2 (addressRecognitionCapable); the four Config
 *     fields are 1 notSupported, 2 supportedOff or 3 supportedOn; protocolDirStatus is an EntryStatus,
 *     flags a set of the PDIR_FLAG_ constants; is_leaf and is_network are not 0
 *     for a protocol that carries none of the directory and for one of the network layer. FALSE without a
 *     message when the agent has no such row, after the warning "addrmap_entry_get: RPC: ..." when the call
 *     failed
 */
function rmon_pdir_get($connid, $protocolDirID, $protocolDirParameters) {}

/**
 * The first protocol behind an identifier and parameters (empty ones: the first of all). See rmon_pdir_get().
 *
 * @param resource|int $connid
 * @param array $protocolDirID
 * @param array $protocolDirParameters
 * @return array{0: int, status: int, protocolDirID: list<int>, protocolDirParameters: list<int>,
 *     protocolDirLocalIndex: int, protocolDirDescr: string, protocolDirType: int,
 *     protocolDirAddressMapConfig: int, protocolDirHostConfig: int, protocolDirMatrixConfig: int,
 *     protocolDirOwner: string, protocolDirStatus: int, protocolDirArtConfig: int, is_leaf: int,
 *     is_network: int, flags: int}|false|null
 */
function rmon_pdir_getnext($connid, $protocolDirID, $protocolDirParameters) {}

/**
 * Several protocols behind an identifier and parameters. See rmon_pdir_get().
 *
 * @param resource|int $connid
 * @param array $protocolDirID
 * @param array $protocolDirParameters
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, protocolDirID: list<int>, protocolDirParameters: list<int>,
 *     protocolDirLocalIndex: int, protocolDirDescr: string, protocolDirType: int,
 *     protocolDirAddressMapConfig: int, protocolDirHostConfig: int, protocolDirMatrixConfig: int,
 *     protocolDirOwner: string, protocolDirStatus: int, protocolDirArtConfig: int, is_leaf: int,
 *     is_network: int, flags: int}>|false|null the rows; FALSE without a message when there is none
 */
function rmon_pdir_getbulk($connid, $protocolDirID, $protocolDirParameters, $count) {}

/**
 * Creates or changes a row of the protocol directory (RFC 2021, protocolDirTable). An identifier that is
 * refused is reported before a link that is not open.
 *
 * @param resource|int $connid
 * @param array $protocolDirID as in rmon_pdir_get()
 * @param array $protocolDirParameters
 * @param string $protocolDirDescr at most 255 bytes
 * @param int $protocolDirAddressMapConfig 2 supportedOff or 3 supportedOn, like the next three
 * @param int $protocolDirHostConfig
 * @param int $protocolDirMatrixConfig
 * @param int $protocolDirArtConfig
 * @param string $protocolDirOwner at most 255 bytes
 * @param int $protocolDirStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_pdir_set: RPC: ..."
 */
function rmon_pdir_set($connid, $protocolDirID, $protocolDirParameters, $protocolDirDescr, $protocolDirAddressMapConfig, $protocolDirHostConfig, $protocolDirMatrixConfig, $protocolDirArtConfig, $protocolDirOwner, $protocolDirStatus) {}

/**
 * One protocol, by its local index (RFC 2021, protocolDirTable). The row has no protocolDirType,
 * protocolDirOwner and protocolDirStatus.
 *
 * @param resource|int $connid
 * @param int $protocolDirLocalIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     protocolDirID: list<int>,
 *     protocolDirParameters: list<int>,
 *     protocolDirLocalIndex: int,
 *     protocolDirDescr: string,
 *     protocolDirAddressMapConfig: int,
 *     protocolDirHostConfig: int,
 *     protocolDirMatrixConfig: int,
 *     protocolDirArtConfig: int,
 *     is_leaf: int,
 *     is_network: int,
 *     flags: int
 * }|false|null as in rmon_pdir_get(); FALSE without a message when the call failed
 */
function rmon_pdir_byidx_get($connid, $protocolDirLocalIndex) {}

/**
 * The first protocol behind a local index (0: the first of all). See rmon_pdir_byidx_get().
 *
 * @param resource|int $connid
 * @param int $protocolDirLocalIndex
 * @return array{0: int, status: int, protocolDirID: list<int>, protocolDirParameters: list<int>,
 *     protocolDirLocalIndex: int, protocolDirDescr: string, protocolDirAddressMapConfig: int,
 *     protocolDirHostConfig: int, protocolDirMatrixConfig: int, protocolDirArtConfig: int, is_leaf: int,
 *     is_network: int, flags: int}|false|null
 */
function rmon_pdir_byidx_getnext($connid, $protocolDirLocalIndex) {}

/* ---- protocol distribution ----------------------------------------------------------- */

/**
 * One row of the protocol distribution's control table (RFC 2021, protocolDistControlTable).
 *
 * @param resource|int $connid
 * @param int $protocolDistControlIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     protocolDistControlIndex: int,
 *     protocolDistControlDataSource: int,
 *     protocolDistControlDroppedFrames: int,
 *     protocolDistControlCreateTime: int,
 *     protocolDistControlOwner: string,
 *     protocolDistControlStatus: int
 * }|false|null 0 and status: the agent's result code. protocolDistControlDataSource is an interface index,
 *     protocolDistControlCreateTime in hundredths of a second, protocolDistControlStatus an EntryStatus. A
 *     reply without an owner shows "" after the user notice "owner ptr is NULL!". FALSE after the warning
 *     "rmon_pdist_ctl_get: RPC: ..."
 */
function rmon_pdist_ctl_get($connid, $protocolDistControlIndex) {}

/**
 * The first row of the protocol distribution's control table behind an index (0: the first of all). See
 * rmon_pdist_ctl_get().
 *
 * @param resource|int $connid
 * @param int $protocolDistControlIndex
 * @return array{0: int, status: int, protocolDistControlIndex: int, protocolDistControlDataSource: int,
 *     protocolDistControlDroppedFrames: int, protocolDistControlCreateTime: int,
 *     protocolDistControlOwner: string, protocolDistControlStatus: int}|false|null
 */
function rmon_pdist_ctl_getnext($connid, $protocolDistControlIndex) {}

/**
 * Creates or changes a row of the protocol distribution's control table (RFC 2021, protocolDistControlTable).
 *
 * @param resource|int $connid
 * @param int $protocolDistControlIndex
 * @param int $protocolDistControlDataSource an interface index
 * @param string $protocolDistControlOwner at most 255 bytes
 * @param int $protocolDistControlStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_pdist_ctl_set: RPC: ..."
 */
function rmon_pdist_ctl_set($connid, $protocolDistControlIndex, $protocolDistControlDataSource, $protocolDistControlOwner, $protocolDistControlStatus) {}

/**
 * The traffic of one protocol on one data source (RFC 2021, protocolDistStatsTable), with 64-bit counters.
 *
 * @param resource|int $connid
 * @param int $protocolDistControlIndex the control row
 * @param int $protocolDirLocalIndex the protocol
 * @return array{
 *     0: int,
 *     status: int,
 *     1: int,
 *     pd_flags: int,
 *     protocolDistControlIndex: int,
 *     protocolDirLocalIndex: int,
 *     protocolDistStatsPkts: float,
 *     protocolDistStatsOctets: float
 * }|false|null 0 and status: the agent's result code; 1: protocolDistControlIndex once more; pd_flags a set
 *     of the PDIR_FLAG_ constants. FALSE without a message when the agent has no such row, after the warning
 *     "rmon_pdist_ctl_get: RPC: ..." when the call failed
 */
function rmon_pdist_stats_get($connid, $protocolDistControlIndex, $protocolDirLocalIndex) {}

/**
 * The traffic of the first protocol behind a local index (0: the first of all). See rmon_pdist_stats_get().
 *
 * @param resource|int $connid
 * @param int $protocolDistControlIndex
 * @param int $protocolDirLocalIndex
 * @return array{0: int, status: int, 1: int, pd_flags: int, protocolDistControlIndex: int,
 *     protocolDirLocalIndex: int, protocolDistStatsPkts: float, protocolDistStatsOctets: float}|false|null
 */
function rmon_pdist_stats_getnext($connid, $protocolDistControlIndex, $protocolDirLocalIndex) {}

/**
 * The traffic of several protocols behind a local index. See rmon_pdist_stats_get().
 *
 * @param resource|int $connid
 * @param int $protocolDistControlIndex
 * @param int $protocolDirLocalIndex
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, 1: int, pd_flags: int, protocolDistControlIndex: int,
 *     protocolDirLocalIndex: int, protocolDistStatsPkts: float, protocolDistStatsOctets: float}>|false|null
 *     the rows; FALSE without a message when there is none
 */
function rmon_pdist_stats_getbulk($connid, $protocolDistControlIndex, $protocolDirLocalIndex, $count) {}

/**
 * The traffic on one data source that belongs to no protocol of the directory. An extension of this agent.
 *
 * @param resource|int $connid
 * @param int $protocolDistControlIndex the control row
 * @return array{
 *     0: int,
 *     status: int,
 *     packets: float,
 *     octets: float
 * }|false|null 0 and status: always 0; FALSE after the warning "rmon_pdist_stats_getothers: RPC: ..." when
 *     the call failed or the agent's result code is another
 */
function rmon_pdist_stats_getothers($connid, $protocolDistControlIndex) {}

/* ---- address map --------------------------------------------------------------------- */

/**
 * The scalars of the address map (RFC 2021, addressMapInserts and its neighbours).
 *
 * @param resource|int $connid
 * @return array{
 *     0: int,
 *     status: int,
 *     addressMapInserts: int,
 *     addressMapDeletes: int,
 *     addressMapMaxDesiredEntries: int
 * }|false|null 0 and status: the agent's result code. addressMapMaxDesiredEntries in rows (-1: as many as
 *     the agent can keep). FALSE after the warning "rmon_addrmap_scalars_get: RPC: ..."
 */
function rmon_addrmap_scalars_get($connid) {}

/**
 * Sets the largest size of the address map (RFC 2021, addressMapMaxDesiredEntries).
 *
 * @param resource|int $connid
 * @param int $addressMapMaxDesiredEntries rows (-1: as many as the agent can keep)
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_addrmap_scalars_set: RPC: ..."
 */
function rmon_addrmap_scalars_set($connid, $addressMapMaxDesiredEntries) {}

/**
 * One row of the address map's control table (RFC 2021, addressMapControlTable).
 *
 * @param resource|int $connid
 * @param int $addressMapControlIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     addressMapControlIndex: int,
 *     addressMapControlDataSource: int,
 *     addressMapControlDroppedFrames: int,
 *     addressMapControlOwner: string,
 *     addressMapControlStatus: int
 * }|false|null 0 and status: the agent's result code. addressMapControlDataSource is an interface index,
 *     addressMapControlStatus an EntryStatus. FALSE after the warning "addrmap_ctl_get: RPC: ..."
 */
function rmon_addrmap_ctl_get($connid, $addressMapControlIndex) {}

/**
 * The first row of the address map's control table behind an index (0: the first of all). See
 * rmon_addrmap_ctl_get().
 *
 * @param resource|int $connid
 * @param int $addressMapControlIndex
 * @return array{0: int, status: int, addressMapControlIndex: int, addressMapControlDataSource: int,
 *     addressMapControlDroppedFrames: int, addressMapControlOwner: string,
 *     addressMapControlStatus: int}|false|null
 */
function rmon_addrmap_ctl_getnext($connid, $addressMapControlIndex) {}

/**
 * Creates or changes a row of the address map's control table (RFC 2021, addressMapControlTable).
 *
 * @param resource|int $connid
 * @param int $addressMapControlIndex
 * @param int $addressMapControlDataSource an interface index
 * @param string $addressMapControlOwner at most 255 bytes
 * @param int $addressMapControlStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_addrmap_ctl_set: RPC: ..."
 */
function rmon_addrmap_ctl_set($connid, $addressMapControlIndex, $addressMapControlDataSource, $addressMapControlOwner, $addressMapControlStatus) {}

/**
 * The MAC address that a network address was last seen with (RFC 2021, addressMapTable).
 *
 * @param resource|int $connid
 * @param int $addressMapTimeMark only rows that changed since, in hundredths of a second (0: all)
 * @param int $protocolDirLocalIndex the network-layer protocol
 * @param array $addressMapNetworkAddress one integer for each byte, at most 255 ("too many (...) elements in
 *     addr!" and FALSE); other elements are converted to integers in the caller's array. Anything but an
 *     array is an empty address.
 * @prefer-ref $addressMapNetworkAddress
 * @param int $addressMapSource the interface that the address was seen on
 * @return array{
 *     0: int,
 *     status: int,
 *     addressMapTimeMark: int,
 *     addressMapNetworkAddress: list<int>|int,
 *     addressMapSource: int,
 *     addressMapPhysicalAddress: list<int>|int,
 *     addressMapLastChange: int,
 *     protocolDirLocalIndex: int
 * }|false|null 0 and status: the agent's result code; an empty address is the integer 0; addressMapTimeMark
 *     and addressMapLastChange in hundredths of a second. FALSE without a message when the agent has no such
 *     row, after the warning "addrmap_entry_get: RPC: ..." when the call failed
 */
function rmon_addrmap_entry_get($connid, $addressMapTimeMark, $protocolDirLocalIndex, $addressMapNetworkAddress, $addressMapSource) {}

/**
 * The first row of the address map behind an address and an interface (an empty one and 0: the first of all).
 * See rmon_addrmap_entry_get().
 *
 * @param resource|int $connid
 * @param int $addressMapTimeMark
 * @param int $protocolDirLocalIndex
 * @param array $addressMapNetworkAddress
 * @prefer-ref $addressMapNetworkAddress
 * @param int $addressMapSource
 * @return array{0: int, status: int, addressMapTimeMark: int, addressMapNetworkAddress: list<int>|int,
 *     addressMapSource: int, addressMapPhysicalAddress: list<int>|int, addressMapLastChange: int,
 *     protocolDirLocalIndex: int}|false|null
 */
function rmon_addrmap_entry_getnext($connid, $addressMapTimeMark, $protocolDirLocalIndex, $addressMapNetworkAddress, $addressMapSource) {}

/**
 * Several rows of the address map behind an address and an interface. See rmon_addrmap_entry_get().
 *
 * @param resource|int $connid
 * @param int $addressMapTimeMark
 * @param int $protocolDirLocalIndex
 * @param array $addressMapNetworkAddress
 * @prefer-ref $addressMapNetworkAddress
 * @param int $addressMapSource
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, addressMapTimeMark: int,
 *     addressMapNetworkAddress: list<int>|int, addressMapSource: int,
 *     addressMapPhysicalAddress: list<int>|int, addressMapLastChange: int,
 *     protocolDirLocalIndex: int}>|false|null the rows; FALSE without a message when there is none
 */
function rmon_addrmap_entry_getbulk($connid, $addressMapTimeMark, $protocolDirLocalIndex, $addressMapNetworkAddress, $addressMapSource, $count) {}

/* ---- higher-layer hosts -------------------------------------------------------------- */

/**
 * One row of the higher-layer hosts' control table (RFC 2021, hlHostControlTable).
 *
 * @param resource|int $connid
 * @param int $hlHostControlIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     hlHostControlIndex: int,
 *     hlHostControlDataSource: int,
 *     hlHostControlNlDroppedFrames: int,
 *     hlHostControlNlInserts: int,
 *     hlHostControlNlDeletes: int,
 *     hlHostControlNlMaxDesiredEntries: int,
 *     hlHostControlAlDroppedFrames: int,
 *     hlHostControlAlInserts: int,
 *     hlHostControlAlDeletes: int,
 *     hlHostControlAlMaxDesiredEntries: int,
 *     hlHostControlOwner: string,
 *     hlHostControlStatus: int
 * }|false|null 0 and status: the agent's result code. hlHostControlDataSource is an interface index; the
 *     largest table sizes are rows (-1: as many as the agent can keep); hlHostControlStatus an EntryStatus.
 *     FALSE after the warning "hlhost_ctl_get: RPC: ..."
 */
function rmon_hlhost_ctl_get($connid, $hlHostControlIndex) {}

/**
 * The first row of the higher-layer hosts' control table behind an index (0: the first of all). See
 * rmon_hlhost_ctl_get().
 *
 * @param resource|int $connid
 * @param int $hlHostControlIndex
 * @return array{0: int, status: int, hlHostControlIndex: int, hlHostControlDataSource: int,
 *     hlHostControlNlDroppedFrames: int, hlHostControlNlInserts: int, hlHostControlNlDeletes: int,
 *     hlHostControlNlMaxDesiredEntries: int, hlHostControlAlDroppedFrames: int, hlHostControlAlInserts: int,
 *     hlHostControlAlDeletes: int, hlHostControlAlMaxDesiredEntries: int, hlHostControlOwner: string,
 *     hlHostControlStatus: int}|false|null
 */
function rmon_hlhost_ctl_getnext($connid, $hlHostControlIndex) {}

/**
 * Creates or changes a row of the higher-layer hosts' control table (RFC 2021, hlHostControlTable).
 *
 * @param resource|int $connid
 * @param int $hlHostControlIndex
 * @param int $hlHostControlDataSource an interface index
 * @param int $hlHostControlNlMaxDesiredEntries rows of the network-layer table (-1: as many as can be kept)
 * @param int $hlHostControlAlMaxDesiredEntries rows of the application-layer table
 * @param string $hlHostControlOwner at most 255 bytes
 * @param int $hlHostControlStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_hlhost_ctl_set: RPC: ..."
 */
function rmon_hlhost_ctl_set($connid, $hlHostControlIndex, $hlHostControlDataSource, $hlHostControlNlMaxDesiredEntries, $hlHostControlAlMaxDesiredEntries, $hlHostControlOwner, $hlHostControlStatus) {}

/**
 * One host of a network-layer protocol, by its address (RFC 2021, nlHostTable), with 64-bit counters.
 *
 * @param resource|int $connid
 * @param int $hlHostControlIndex the control row
 * @param int $nlHostTimeMark only rows that changed since, in hundredths of a second (0: all)
 * @param int $protocolDirLocalIndex the network-layer protocol
 * @param array $nlHostAddress one integer for each byte, at most 255 ("too many (...) elements in addr!" and
 *     FALSE); other elements are converted to integers in the caller's array. Anything but an array is an
 *     empty address.
 * @prefer-ref $nlHostAddress
 * @return array{
 *     0: int,
 *     status: int,
 *     nlHostTimeMark: int,
 *     nlHostAddress: list<int>|int,
 *     nlHostInPkts: float,
 *     nlHostOutPkts: float,
 *     nlHostInOctets: float,
 *     nlHostOutOctets: float,
 *     nlHostOutMacNonUnicastPkts: float,
 *     nlHostCreateTime: int,
 *     hlHostControlIndex: int,
 *     protocolDirLocalIndex: int
 * }|false|null 0 and status: the agent's result code; an empty nlHostAddress is the integer 0;
 *     nlHostTimeMark and nlHostCreateTime in hundredths of a second. FALSE without a message when the agent
 *     has no such row, after the warning "hlhost_get: RPC: ..." when the call failed
 */
function rmon_nlhost_get($connid, $hlHostControlIndex, $nlHostTimeMark, $protocolDirLocalIndex, $nlHostAddress) {}

/**
 * The first host of a network-layer protocol behind an address (an empty one: the first of all). See
 * rmon_nlhost_get().
 *
 * @param resource|int $connid
 * @param int $hlHostControlIndex
 * @param int $nlHostTimeMark
 * @param int $protocolDirLocalIndex
 * @param array $nlHostAddress
 * @prefer-ref $nlHostAddress
 * @return array{0: int, status: int, nlHostTimeMark: int, nlHostAddress: list<int>|int,
 *     nlHostInPkts: float, nlHostOutPkts: float, nlHostInOctets: float, nlHostOutOctets: float,
 *     nlHostOutMacNonUnicastPkts: float, nlHostCreateTime: int, hlHostControlIndex: int,
 *     protocolDirLocalIndex: int}|false|null
 */
function rmon_nlhost_getnext($connid, $hlHostControlIndex, $nlHostTimeMark, $protocolDirLocalIndex, $nlHostAddress) {}

/**
 * Several hosts behind an address. See rmon_nlhost_get().
 *
 * @param resource|int $connid
 * @param int $hlHostControlIndex
 * @param int $nlHostTimeMark
 * @param int $protocolDirLocalIndex
 * @param array $nlHostAddress
 * @prefer-ref $nlHostAddress
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, nlHostTimeMark: int, nlHostAddress: list<int>|int,
 *     nlHostInPkts: float, nlHostOutPkts: float, nlHostInOctets: float, nlHostOutOctets: float,
 *     nlHostOutMacNonUnicastPkts: float, nlHostCreateTime: int, hlHostControlIndex: int,
 *     protocolDirLocalIndex: int}>|false|null the rows; FALSE without a message when there is none
 */
function rmon_nlhost_getbulk($connid, $hlHostControlIndex, $nlHostTimeMark, $protocolDirLocalIndex, $nlHostAddress, $count) {}

/**
 * One host of an application-layer protocol, by its address (RFC 2021, alHostTable), with 64-bit counters.
 *
 * @param resource|int $connid
 * @param int $hlHostControlIndex the control row
 * @param int $alHostTimeMark only rows that changed since, in hundredths of a second (0: all)
 * @param int $protocolDirLocalIndex the network-layer protocol that the address belongs to
 * @param array $nlHostAddress as in rmon_nlhost_get()
 * @prefer-ref $nlHostAddress
 * @param int $protocolDirLocalIndex2 the application-layer protocol
 * @return array{
 *     0: int,
 *     status: int,
 *     alHostTimeMark: int,
 *     nlHostAddress: list<int>|int,
 *     alHostInPkts: float,
 *     alHostOutPkts: float,
 *     alHostInOctets: float,
 *     alHostOutOctets: float,
 *     alHostCreateTime: int,
 *     hlHostControlIndex: int,
 *     protocolDirLocalIndex: int,
 *     protocolDirLocalIndex2: int
 * }|false|null 0 and status: the agent's result code; an empty nlHostAddress is the integer 0;
 *     alHostTimeMark and alHostCreateTime in hundredths of a second. FALSE without a message when the agent
 *     has no such row, after the warning "hlhost_get: RPC: ..." when the call failed
 */
function rmon_alhost_get($connid, $hlHostControlIndex, $alHostTimeMark, $protocolDirLocalIndex, $nlHostAddress, $protocolDirLocalIndex2) {}

/**
 * The first host of an application-layer protocol behind an address and that protocol. See rmon_alhost_get().
 *
 * @param resource|int $connid
 * @param int $hlHostControlIndex
 * @param int $alHostTimeMark
 * @param int $protocolDirLocalIndex
 * @param array $nlHostAddress
 * @prefer-ref $nlHostAddress
 * @param int $protocolDirLocalIndex2
 * @return array{0: int, status: int, alHostTimeMark: int, nlHostAddress: list<int>|int,
 *     alHostInPkts: float, alHostOutPkts: float, alHostInOctets: float, alHostOutOctets: float,
 *     alHostCreateTime: int, hlHostControlIndex: int, protocolDirLocalIndex: int,
 *     protocolDirLocalIndex2: int}|false|null
 */
function rmon_alhost_getnext($connid, $hlHostControlIndex, $alHostTimeMark, $protocolDirLocalIndex, $nlHostAddress, $protocolDirLocalIndex2) {}

/**
 * Several hosts behind an address and an application-layer protocol. See rmon_alhost_get().
 *
 * @param resource|int $connid
 * @param int $hlHostControlIndex
 * @param int $alHostTimeMark
 * @param int $protocolDirLocalIndex
 * @param array $nlHostAddress
 * @prefer-ref $nlHostAddress
 * @param int $protocolDirLocalIndex2
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, alHostTimeMark: int, nlHostAddress: list<int>|int,
 *     alHostInPkts: float, alHostOutPkts: float, alHostInOctets: float, alHostOutOctets: float,
 *     alHostCreateTime: int, hlHostControlIndex: int, protocolDirLocalIndex: int,
 *     protocolDirLocalIndex2: int}>|false|null the rows; FALSE without a message when there is none
 */
function rmon_alhost_getbulk($connid, $hlHostControlIndex, $alHostTimeMark, $protocolDirLocalIndex, $nlHostAddress, $protocolDirLocalIndex2, $count) {}

/* ---- higher-layer matrix ------------------------------------------------------------- */

/**
 * One row of the higher-layer matrix's control table (RFC 2021, hlMatrixControlTable).
 *
 * @param resource|int $connid
 * @param int $hlMatrixControlIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     hlMatrixControlIndex: int,
 *     hlMatrixControlDataSource: int,
 *     hlMatrixControlNlDroppedFrames: int,
 *     hlMatrixControlNlInserts: int,
 *     hlMatrixControlNlDeletes: int,
 *     hlMatrixControlNlMaxDesiredEntries: int,
 *     hlMatrixControlAlDroppedFrames: int,
 *     hlMatrixControlAlInserts: int,
 *     hlMatrixControlAlDeletes: int,
 *     hlMatrixControlAlMaxDesiredEntries: int,
 *     hlMatrixControlOwner: string,
 *     hlMatrixControlStatus: int
 * }|false|null 0 and status: the agent's result code. hlMatrixControlDataSource is an interface index; the
 *     largest table sizes are rows (-1: as many as the agent can keep); hlMatrixControlStatus an
 *     EntryStatus. FALSE after the warning "hlmatrix_ctl_get: RPC: ..."
 */
function rmon_hlmatrix_ctl_get($connid, $hlMatrixControlIndex) {}

/**
 * The first row of the higher-layer matrix's control table behind an index (0: the first of all). See
 * rmon_hlmatrix_ctl_get().
 *
 * @param resource|int $connid
 * @param int $hlMatrixControlIndex
 * @return array{0: int, status: int, hlMatrixControlIndex: int, hlMatrixControlDataSource: int,
 *     hlMatrixControlNlDroppedFrames: int, hlMatrixControlNlInserts: int, hlMatrixControlNlDeletes: int,
 *     hlMatrixControlNlMaxDesiredEntries: int, hlMatrixControlAlDroppedFrames: int,
 *     hlMatrixControlAlInserts: int, hlMatrixControlAlDeletes: int, hlMatrixControlAlMaxDesiredEntries: int,
 *     hlMatrixControlOwner: string, hlMatrixControlStatus: int}|false|null
 */
function rmon_hlmatrix_ctl_getnext($connid, $hlMatrixControlIndex) {}

/**
 * Creates or changes a row of the higher-layer matrix's control table (RFC 2021, hlMatrixControlTable).
 *
 * @param resource|int $connid
 * @param int $hlMatrixControlIndex
 * @param int $hlMatrixControlDataSource an interface index
 * @param int $hlMatrixControlNlMaxDesiredEntries rows of the network-layer matrix (-1: all that fit)
 * @param int $hlMatrixControlAlMaxDesiredEntries rows of the application-layer matrix
 * @param string $hlMatrixControlOwner at most 255 bytes
 * @param int $hlMatrixControlStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_hlmatrix_ctl_set: RPC: ..."
 */
function rmon_hlmatrix_ctl_set($connid, $hlMatrixControlIndex, $hlMatrixControlDataSource, $hlMatrixControlNlMaxDesiredEntries, $hlMatrixControlAlMaxDesiredEntries, $hlMatrixControlOwner, $hlMatrixControlStatus) {}

/**
 * The traffic of a network-layer protocol from one host to another, with 64-bit counters; in this table
 * pairs are ordered by source, then destination (RFC 2021, nlMatrixSDTable).
 *
 * @param resource|int $connid
 * @param int $hlMatrixControlIndex the control row
 * @param int $nlMatrixSDTimeMark only rows that changed since, in hundredths of a second (0: all)
 * @param int $protocolDirLocalIndex the network-layer protocol
 * @param array $sourceAddress one integer for each byte, at most 255 ("too many (...) elements in addr!" and
 *     FALSE); other elements are converted to integers in the caller's array. Anything but an array is an
 *     empty address.
 * @prefer-ref $sourceAddress
 * @param array $destAddress likewise
 * @prefer-ref $destAddress
 * @return array{
 *     0: int,
 *     status: int,
 *     nlMatrixSDTimeMark: int,
 *     nlMatrixSDSourceAddress: list<int>|int,
 *     nlMatrixSDDestAddress: list<int>|int,
 *     nlMatrixSDPkts: float,
 *     nlMatrixSDOctets: float,
 *     nlMatrixSDCreateTime: float,
 *     hlMatrixControlIndex: int,
 *     protocolDirLocalIndex: int
 * }|false|null 0 and status: the agent's result code; an empty address is the integer 0;
 *     nlMatrixSDTimeMark and nlMatrixSDCreateTime in hundredths of a second. FALSE without a message when
 *     the agent has no such row, after the warning "nlmatrix_get: RPC: ..." when the call failed
 */
function rmon_nlmatrix_sd_get($connid, $hlMatrixControlIndex, $nlMatrixSDTimeMark, $protocolDirLocalIndex, $sourceAddress, $destAddress) {}

/**
 * The first pair behind a pair of addresses (empty ones: the first of all). See
 * rmon_nlmatrix_sd_get().
 *
 * @param resource|int $connid
 * @param int $hlMatrixControlIndex
 * @param int $nlMatrixSDTimeMark
 * @param int $protocolDirLocalIndex
 * @param array $sourceAddress
 * @prefer-ref $sourceAddress
 * @param array $destAddress
 * @prefer-ref $destAddress
 * @return array{0: int, status: int, nlMatrixSDTimeMark: int, nlMatrixSDSourceAddress: list<int>|int,
 *     nlMatrixSDDestAddress: list<int>|int, nlMatrixSDPkts: float, nlMatrixSDOctets: float,
 *     nlMatrixSDCreateTime: float, hlMatrixControlIndex: int, protocolDirLocalIndex: int}|false|null
 */
function rmon_nlmatrix_sd_getnext($connid, $hlMatrixControlIndex, $nlMatrixSDTimeMark, $protocolDirLocalIndex, $sourceAddress, $destAddress) {}

/**
 * Several pairs behind a pair of addresses. See rmon_nlmatrix_sd_get().
 *
 * @param resource|int $connid
 * @param int $hlMatrixControlIndex
 * @param int $nlMatrixSDTimeMark
 * @param int $protocolDirLocalIndex
 * @param array $sourceAddress
 * @prefer-ref $sourceAddress
 * @param array $destAddress
 * @prefer-ref $destAddress
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, nlMatrixSDTimeMark: int,
 *     nlMatrixSDSourceAddress: list<int>|int, nlMatrixSDDestAddress: list<int>|int, nlMatrixSDPkts: float,
 *     nlMatrixSDOctets: float, nlMatrixSDCreateTime: float, hlMatrixControlIndex: int,
 *     protocolDirLocalIndex: int}>|false|null the rows; FALSE without a message when there is none
 */
function rmon_nlmatrix_sd_getbulk($connid, $hlMatrixControlIndex, $nlMatrixSDTimeMark, $protocolDirLocalIndex, $sourceAddress, $destAddress, $count) {}

/**
 * The traffic of a network-layer protocol from one host to another, with 64-bit counters; in this table
 * pairs are ordered by destination, then source (RFC 2021, nlMatrixDSTable).
 *
 * @param resource|int $connid
 * @param int $hlMatrixControlIndex the control row
 * @param int $nlMatrixDSTimeMark only rows that changed since, in hundredths of a second (0: all)
 * @param int $protocolDirLocalIndex the network-layer protocol
 * @param array $sourceAddress as in rmon_nlmatrix_sd_get()
 * @prefer-ref $sourceAddress
 * @param array $destAddress
 * @prefer-ref $destAddress
 * @return array{
 *     0: int,
 *     status: int,
 *     nlMatrixDSTimeMark: int,
 *     nlMatrixDSSourceAddress: list<int>|int,
 *     nlMatrixDSDestAddress: list<int>|int,
 *     nlMatrixDSPkts: float,
 *     nlMatrixDSOctets: float,
 *     nlMatrixDSCreateTime: float,
 *     hlMatrixControlIndex: int,
 *     protocolDirLocalIndex: int
 * }|false|null 0 and status: the agent's result code; an empty address is the integer 0;
 *     nlMatrixDSTimeMark and nlMatrixDSCreateTime in hundredths of a second. FALSE without a message when
 *     the agent has no such row, after the warning "nlmatrix_get: RPC: ..." when the call failed
 */
function rmon_nlmatrix_ds_get($connid, $hlMatrixControlIndex, $nlMatrixDSTimeMark, $protocolDirLocalIndex, $sourceAddress, $destAddress) {}

/**
 * The first pair behind a pair of addresses (empty ones: the first of all). See
 * rmon_nlmatrix_ds_get().
 *
 * @param resource|int $connid
 * @param int $hlMatrixControlIndex
 * @param int $nlMatrixDSTimeMark
 * @param int $protocolDirLocalIndex
 * @param array $sourceAddress
 * @prefer-ref $sourceAddress
 * @param array $destAddress
 * @prefer-ref $destAddress
 * @return array{0: int, status: int, nlMatrixDSTimeMark: int, nlMatrixDSSourceAddress: list<int>|int,
 *     nlMatrixDSDestAddress: list<int>|int, nlMatrixDSPkts: float, nlMatrixDSOctets: float,
 *     nlMatrixDSCreateTime: float, hlMatrixControlIndex: int, protocolDirLocalIndex: int}|false|null
 */
function rmon_nlmatrix_ds_getnext($connid, $hlMatrixControlIndex, $nlMatrixDSTimeMark, $protocolDirLocalIndex, $sourceAddress, $destAddress) {}

/**
 * Several pairs behind a pair of addresses. See rmon_nlmatrix_ds_get().
 *
 * @param resource|int $connid
 * @param int $hlMatrixControlIndex
 * @param int $nlMatrixDSTimeMark
 * @param int $protocolDirLocalIndex
 * @param array $sourceAddress
 * @prefer-ref $sourceAddress
 * @param array $destAddress
 * @prefer-ref $destAddress
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, nlMatrixDSTimeMark: int,
 *     nlMatrixDSSourceAddress: list<int>|int, nlMatrixDSDestAddress: list<int>|int, nlMatrixDSPkts: float,
 *     nlMatrixDSOctets: float, nlMatrixDSCreateTime: float, hlMatrixControlIndex: int,
 *     protocolDirLocalIndex: int}>|false|null the rows; FALSE without a message when there is none
 */
function rmon_nlmatrix_ds_getbulk($connid, $hlMatrixControlIndex, $nlMatrixDSTimeMark, $protocolDirLocalIndex, $sourceAddress, $destAddress, $count) {}

/**
 * The traffic of an application-layer protocol from one host to another, with 64-bit counters; in this table
 * pairs are ordered by source, then destination (RFC 2021, alMatrixSDTable).
 *
 * @param resource|int $connid
 * @param int $hlMatrixControlIndex the control row
 * @param int $alMatrixSDTimeMark only rows that changed since, in hundredths of a second (0: all)
 * @param int $protocolDirLocalIndex the network-layer protocol that the addresses belong to
 * @param array $sourceAddress as in rmon_nlmatrix_sd_get()
 * @prefer-ref $sourceAddress
 * @param array $destAddress
 * @prefer-ref $destAddress
 * @param int $protocolDirLocalIndex2 the application-layer protocol
 * @return array{
 *     0: int,
 *     status: int,
 *     alMatrixSDTimeMark: int,
 *     nlMatrixSDSourceAddress: list<int>|int,
 *     nlMatrixSDDestAddress: list<int>|int,
 *     alMatrixSDPkts: float,
 *     alMatrixSDOctets: float,
 *     alMatrixSDCreateTime: float,
 *     hlMatrixControlIndex: int,
 *     protocolDirLocalIndex: int,
 *     protocolDirLocalIndex2: int
 * }|false|null 0 and status: the agent's result code; an empty address is the integer 0;
 *     alMatrixSDTimeMark and alMatrixSDCreateTime in hundredths of a second. FALSE without a message when
 *     the agent has no such row, after the warning "nlmatrix_get: RPC: ..." when the call failed
 */
function rmon_almatrix_sd_get($connid, $hlMatrixControlIndex, $alMatrixSDTimeMark, $protocolDirLocalIndex, $sourceAddress, $destAddress, $protocolDirLocalIndex2) {}

/**
 * The first pair behind a pair of addresses and that protocol. See
 * rmon_almatrix_sd_get().
 *
 * @param resource|int $connid
 * @param int $hlMatrixControlIndex
 * @param int $alMatrixSDTimeMark
 * @param int $protocolDirLocalIndex
 * @param array $sourceAddress
 * @prefer-ref $sourceAddress
 * @param array $destAddress
 * @prefer-ref $destAddress
 * @param int $protocolDirLocalIndex2
 * @return array{0: int, status: int, alMatrixSDTimeMark: int, nlMatrixSDSourceAddress: list<int>|int,
 *     nlMatrixSDDestAddress: list<int>|int, alMatrixSDPkts: float, alMatrixSDOctets: float,
 *     alMatrixSDCreateTime: float, hlMatrixControlIndex: int, protocolDirLocalIndex: int,
 *     protocolDirLocalIndex2: int}|false|null
 */
function rmon_almatrix_sd_getnext($connid, $hlMatrixControlIndex, $alMatrixSDTimeMark, $protocolDirLocalIndex, $sourceAddress, $destAddress, $protocolDirLocalIndex2) {}

/**
 * Several pairs behind a pair of addresses and that protocol. See rmon_almatrix_sd_get().
 *
 * @param resource|int $connid
 * @param int $hlMatrixControlIndex
 * @param int $alMatrixSDTimeMark
 * @param int $protocolDirLocalIndex
 * @param array $sourceAddress
 * @prefer-ref $sourceAddress
 * @param array $destAddress
 * @prefer-ref $destAddress
 * @param int $protocolDirLocalIndex2
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, alMatrixSDTimeMark: int,
 *     nlMatrixSDSourceAddress: list<int>|int, nlMatrixSDDestAddress: list<int>|int, alMatrixSDPkts: float,
 *     alMatrixSDOctets: float, alMatrixSDCreateTime: float, hlMatrixControlIndex: int,
 *     protocolDirLocalIndex: int, protocolDirLocalIndex2: int}>|false|null the rows; FALSE without a message
 *     when there is none
 */
function rmon_almatrix_sd_getbulk($connid, $hlMatrixControlIndex, $alMatrixSDTimeMark, $protocolDirLocalIndex, $sourceAddress, $destAddress, $protocolDirLocalIndex2, $count) {}

/**
 * The traffic of an application-layer protocol from one host to another, with 64-bit counters; in this table
 * pairs are ordered by destination, then source (RFC 2021, alMatrixDSTable).
 *
 * @param resource|int $connid
 * @param int $hlMatrixControlIndex the control row
 * @param int $alMatrixDSTimeMark only rows that changed since, in hundredths of a second (0: all)
 * @param int $protocolDirLocalIndex the network-layer protocol that the addresses belong to
 * @param array $sourceAddress as in rmon_nlmatrix_sd_get()
 * @prefer-ref $sourceAddress
 * @param array $destAddress
 * @prefer-ref $destAddress
 * @param int $protocolDirLocalIndex2 the application-layer protocol
 * @return array{
 *     0: int,
 *     status: int,
 *     alMatrixDSTimeMark: int,
 *     nlMatrixDSSourceAddress: list<int>|int,
 *     nlMatrixDSDestAddress: list<int>|int,
 *     alMatrixDSPkts: float,
 *     alMatrixDSOctets: float,
 *     alMatrixDSCreateTime: float,
 *     hlMatrixControlIndex: int,
 *     protocolDirLocalIndex: int,
 *     protocolDirLocalIndex2: int
 * }|false|null 0 and status: the agent's result code; an empty address is the integer 0;
 *     alMatrixDSTimeMark and alMatrixDSCreateTime in hundredths of a second. FALSE without a message when
 *     the agent has no such row, after the warning "nlmatrix_get: RPC: ..." when the call failed
 */
function rmon_almatrix_ds_get($connid, $hlMatrixControlIndex, $alMatrixDSTimeMark, $protocolDirLocalIndex, $sourceAddress, $destAddress, $protocolDirLocalIndex2) {}

/**
 * The first pair behind a pair of addresses and that protocol. See
 * rmon_almatrix_ds_get().
 *
 * @param resource|int $connid
 * @param int $hlMatrixControlIndex
 * @param int $alMatrixDSTimeMark
 * @param int $protocolDirLocalIndex
 * @param array $sourceAddress
 * @prefer-ref $sourceAddress
 * @param array $destAddress
 * @prefer-ref $destAddress
 * @param int $protocolDirLocalIndex2
 * @return array{0: int, status: int, alMatrixDSTimeMark: int, nlMatrixDSSourceAddress: list<int>|int,
 *     nlMatrixDSDestAddress: list<int>|int, alMatrixDSPkts: float, alMatrixDSOctets: float,
 *     alMatrixDSCreateTime: float, hlMatrixControlIndex: int, protocolDirLocalIndex: int,
 *     protocolDirLocalIndex2: int}|false|null
 */
function rmon_almatrix_ds_getnext($connid, $hlMatrixControlIndex, $alMatrixDSTimeMark, $protocolDirLocalIndex, $sourceAddress, $destAddress, $protocolDirLocalIndex2) {}

/**
 * Several pairs behind a pair of addresses and that protocol. See rmon_almatrix_ds_get().
 *
 * @param resource|int $connid
 * @param int $hlMatrixControlIndex
 * @param int $alMatrixDSTimeMark
 * @param int $protocolDirLocalIndex
 * @param array $sourceAddress
 * @prefer-ref $sourceAddress
 * @param array $destAddress
 * @prefer-ref $destAddress
 * @param int $protocolDirLocalIndex2
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, alMatrixDSTimeMark: int,
 *     nlMatrixDSSourceAddress: list<int>|int, nlMatrixDSDestAddress: list<int>|int, alMatrixDSPkts: float,
 *     alMatrixDSOctets: float, alMatrixDSCreateTime: float, hlMatrixControlIndex: int,
 *     protocolDirLocalIndex: int, protocolDirLocalIndex2: int}>|false|null the rows; FALSE without a message
 *     when there is none
 */
function rmon_almatrix_ds_getbulk($connid, $hlMatrixControlIndex, $alMatrixDSTimeMark, $protocolDirLocalIndex, $sourceAddress, $destAddress, $protocolDirLocalIndex2, $count) {}

/* ---- alarms, events and log ---------------------------------------------------------- */

/**
 * One alarm: a variable that the agent samples, and its thresholds (RFC 2819, alarmTable).
 *
 * @param resource|int $connid
 * @param int $alarmIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     alarmIndex: int,
 *     alarmInterval: int,
 *     alarmVariable: string,
 *     alarmSampleType: int,
 *     alarmValue: int,
 *     alarmStartupAlarm: int,
 *     alarmRisingThreshold: int,
 *     alarmFallingThreshold: int,
 *     alarmRisingEventIndex: int,
 *     alarmFallingEventIndex: int,
 *     alarmOwner: string,
 *     alarmStatus: int
 * }|false|null 0 and status: the agent's result code. alarmInterval in seconds, alarmVariable an object
 *     identifier as dotted text, alarmSampleType 1 absoluteValue or 2 deltaValue, alarmStartupAlarm 1 rising,
 *     2 falling or 3 either, alarmStatus an EntryStatus. FALSE after the warning "host_ctl_get: RPC: ..."
 */
function rmon_alarm_get($connid, $alarmIndex) {}

/**
 * The first alarm behind an index (0: the first of all). See rmon_alarm_get().
 *
 * @param resource|int $connid
 * @param int $alarmIndex
 * @return array{0: int, status: int, alarmIndex: int, alarmInterval: int, alarmVariable: string,
 *     alarmSampleType: int, alarmValue: int, alarmStartupAlarm: int, alarmRisingThreshold: int,
 *     alarmFallingThreshold: int, alarmRisingEventIndex: int, alarmFallingEventIndex: int,
 *     alarmOwner: string, alarmStatus: int}|false|null
 */
function rmon_alarm_getnext($connid, $alarmIndex) {}

/**
 * Creates or changes an alarm (RFC 2819, alarmTable).
 *
 * @param resource|int $connid
 * @param int $alarmIndex
 * @param int $alarmInterval in seconds
 * @param string $alarmVariable a number of the agent's, of any length: an object identifier as dotted text; the
 *     bundled agent takes names too, such as "etherStatsPkts.1"
 * @param int $alarmSampleType 1 absoluteValue, 2 deltaValue
 * @param int $alarmStartupAlarm 1 rising, 2 falling, 3 either
 * @param int $alarmRisingThreshold
 * @param int $alarmFallingThreshold
 * @param int $alarmRisingEventIndex an event; 0 for none
 * @param int $alarmFallingEventIndex an event; 0 for none
 * @param string $alarmOwner at most 255 bytes
 * @param int $alarmStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_host_ctl_set: RPC: ..."
 */
function rmon_alarm_set($connid, $alarmIndex, $alarmInterval, $alarmVariable, $alarmSampleType, $alarmStartupAlarm, $alarmRisingThreshold, $alarmFallingThreshold, $alarmRisingEventIndex, $alarmFallingEventIndex, $alarmOwner, $alarmStatus) {}

/**
 * One event: what the agent does when an alarm or a channel fires it (RFC 2819, eventTable).
 *
 * @param resource|int $connid
 * @param int $eventIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     eventIndex: int,
 *     eventDescription: string,
 *     eventType: int,
 *     eventCommunity: string,
 *     eventLastTimeSent: int,
 *     eventOwner: string,
 *     eventStatus: int
 * }|false|null 0 and status: the agent's result code. eventType 1 none, 2 log, 3 trap or 4 log and trap,
 *     eventLastTimeSent in hundredths of a second, eventStatus an EntryStatus. FALSE after the warning
 *     "host_ctl_get: RPC: ..."
 */
function rmon_event_get($connid, $eventIndex) {}

/**
 * The first event behind an index (0: the first of all). See rmon_event_get().
 *
 * @param resource|int $connid
 * @param int $eventIndex
 * @return array{0: int, status: int, eventIndex: int, eventDescription: string, eventType: int,
 *     eventCommunity: string, eventLastTimeSent: int, eventOwner: string, eventStatus: int}|false|null
 */
function rmon_event_getnext($connid, $eventIndex) {}

/**
 * Creates or changes an event (RFC 2819, eventTable).
 *
 * @param resource|int $connid
 * @param int $eventIndex
 * @param string $eventDescription at most 255 bytes, like the other texts
 * @param int $eventType 1 none, 2 log, 3 trap, 4 log and trap
 * @param string $eventCommunity to which traps are sent
 * @param string $eventOwner
 * @param int $eventStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_host_ctl_set: RPC: ..."
 */
function rmon_event_set($connid, $eventIndex, $eventDescription, $eventType, $eventCommunity, $eventOwner, $eventStatus) {}

/**
 * One entry of an event's log (RFC 2819, logTable).
 *
 * @param resource|int $connid
 * @param int $logEventIndex the event
 * @param int $logIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     logEventIndex: int,
 *     logIndex: int,
 *     logTime: int,
 *     logDescription: string
 * }|false|null 0 and status: the agent's result code; logTime in hundredths of a second. FALSE after the
 *     warning "host_ctl_get: RPC: ..."
 */
function rmon_log_get($connid, $logEventIndex, $logIndex) {}

/**
 * The first log entry behind an event and an index (0: the first of all). See rmon_log_get().
 *
 * @param resource|int $connid
 * @param int $logEventIndex
 * @param int $logIndex
 * @return array{0: int, status: int, logEventIndex: int, logIndex: int, logTime: int,
 *     logDescription: string}|false|null
 */
function rmon_log_getnext($connid, $logEventIndex, $logIndex) {}

/* ---- trap destinations and MIB variables --------------------------------------------- */

/**
 * One destination of the appliance's SNMP traps.
 *
 * @param resource|int $connid
 * @param int $trapDestIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     trapDestIndex: int,
 *     trapDestCommunity: string,
 *     trapDestProtocol: int,
 *     trapDestAddress: list<int>|int,
 *     trapDestOwner: string,
 *     trapDestStatus: int
 * }|false|null 0 and status: the agent's result code; an empty trapDestAddress is the integer 0;
 *     trapDestStatus is an EntryStatus (1 valid, 2 createRequest, 3 underCreation, 4 invalid). FALSE after
 *     the warning "trapdest_get: RPC: ..."
 */
function rmon_trapdest_get($connid, $trapDestIndex) {}

/**
 * The first trap destination behind an index (0: the first of all). See rmon_trapdest_get().
 *
 * @param resource|int $connid
 * @param int $trapDestIndex
 * @return array{0: int, status: int, trapDestIndex: int, trapDestCommunity: string,
 *     trapDestProtocol: int, trapDestAddress: list<int>|int, trapDestOwner: string,
 *     trapDestStatus: int}|false|null
 */
function rmon_trapdest_getnext($connid, $trapDestIndex) {}

/**
 * Creates or changes a trap destination.
 *
 * @param resource|int $connid
 * @param int $trapDestIndex
 * @param string $trapDestCommunity at most 255 bytes
 * @param int $trapDestProtocol
 * @param array $trapDestAddress one integer for each byte, at most 255 ("too many (...) elements in addr!"
 *     and FALSE); other elements are converted to integers in the caller's array. Anything but an array is an
 *     empty address.
 * @prefer-ref $trapDestAddress
 * @param string $trapDestOwner at most 255 bytes
 * @param int $trapDestStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_trapdest_set: RPC: ..."
 */
function rmon_trapdest_set($connid, $trapDestIndex, $trapDestCommunity, $trapDestProtocol, $trapDestAddress, $trapDestOwner, $trapDestStatus) {}

/**
 * The value of a MIB variable of the agent's.
 *
 * @param resource|int $connid
 * @param string $name as the agent spells it, of any length
 * @return int|false|null the low 32 bits of the value, unsigned; FALSE without a message when the agent has
 *     no such variable or the call failed
 */
function rmon_get_mib_var($connid, $name) {}

/* ---- local host name ----------------------------------------------------------------- */

/**
 * The name of the machine that runs PHP. Arguments are ignored.
 *
 * @return string|false FALSE when the system doesn't tell it
 */
function rmon_gethostname() {}

/* ---- protocol descriptions ----------------------------------------------------------- */

/**
 * What a protocol is, in words: the description in its macro (RFC 2895, PROTOCOL-IDENTIFIER) in the
 * appliance's file of protocols.
 *
 * @param string $name the macro's name, such as "ip"
 * @return string|false|null the text, line breaks left out and runs of spaces shrunk to one, at most 1023
 *     bytes; FALSE without a message when there is none
 */
function rmon_getprotdesc($name) {}

/* ---- network configuration ----------------------------------------------------------- */

/**
 * The appliance's IPv4 configuration.
 *
 * @param resource|int $connid
 * @return array{
 *     0: int,
 *     status: int,
 *     ipAddress: string,
 *     ipNetmask: string,
 *     ipBroadcast: string,
 *     ipGateway: string,
 *     ipInterface: int
 * }|false|null 0 and status: the agent's result code; addresses as "10.1.2.3"; ipInterface is an interface
 *     number. FALSE after the warning "rmon_get_ipconfig: RPC: ..."
 */
function rmon_get_ipconfig($connid) {}

/**
 * Changes the appliance's IPv4 configuration. Once the agent has answered, the appliance's own command writes
 * the settings out.
 *
 * @param resource|int $connid
 * @param string $ipAddress dotted, like the others; the short forms of inet_aton are taken as well
 * @param string $ipNetmask
 * @param string $ipBroadcast
 * @param string $ipGateway
 * @param int $ipInterface an interface number; 0 without it
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after a
 *     warning: "rmon_set_ipconfig: RPC: ...", or the first that applies of "rmon_set_ipconfig: invalid IP
 *     address!", "rmon_set_ipconfig: invalid IP netmask!", "rmon_set_ipconfig: invalid IP broadcast!" and
 *     "rmon_set_ipconfig: invalid IP gateway!", which end with a newline
 */
function rmon_set_ipconfig($connid, $ipAddress, $ipNetmask, $ipBroadcast, $ipGateway, $ipInterface = UNKNOWN) {}

/**
 * The name of the machine that runs PHP, at most 255 bytes. Arguments are ignored.
 *
 * @return string
 */
function rmon_get_hostname() {}

/**
 * Changes the appliance's host name. Once the agent has answered, the appliance's own command writes
 * the settings out.
 *
 * @param resource|int $connid
 * @param string $hostname at most 255 bytes
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_set_hostname: RPC: ..."
 */
function rmon_set_hostname($connid, $hostname) {}

/**
 * The name servers that the appliance asks.
 *
 * @param resource|int $connid
 * @return list<string>|false|null FALSE after the warning "rmon_get_resolvers: RPC: ..."
 */
function rmon_get_resolvers($connid) {}

/**
 * Changes the name servers that the appliance asks. Once the agent has answered, the appliance's own command
 * writes the settings out.
 *
 * @param resource|int $connid
 * @param array $resolvers strings of at most 255 bytes, in their order; nothing is converted
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after a
 *     warning ("Expected array as second parameter", "unexpected error" when an element is no string, "malloc
 *     failed!" with a newline, "rmon_set_resolvers: RPC: ...")
 */
function rmon_set_resolvers($connid, $resolvers) {}

/* ---- DSMON statistics ---------------------------------------------------------------- */

/**
 * The traffic of one aggregation group of a data source (RFC 3287, dsmonStatsTable).
 *
 * @param resource|int $connid
 * @param int $ctlIndex the control row
 * @param int $groupIndex a group of the control row's aggregation profile
 * @return array{
 *     0: int,
 *     status: int,
 *     dsmonStatsControlIndex: int,
 *     dsmonAggGroupIndex: int,
 *     dsmonStatsInHCPkts: float,
 *     dsmonStatsInHCOctets: float,
 *     dsmonStatsOutHCPkts: float,
 *     dsmonStatsOutHCOctets: float
 * }|array{0: -1, status: -1}|false|null 0 and status: the agent's result code, 0. In: received by the data
 *     source, Out: sent by it. [0 => -1, "status" => -1], without a message, when the agent has no such row or
 *     the call failed; FALSE after the warning "... is not a RMON/RPC conn id!"
 */
function dsmon_stats_get($connid, $ctlIndex, $groupIndex) {}

/**
 * The traffic of the first aggregation group behind one. See dsmon_stats_get().
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @param int $groupIndex
 * @return array{0: int, status: int, dsmonStatsControlIndex: int, dsmonAggGroupIndex: int,
 *     dsmonStatsInHCPkts: float, dsmonStatsInHCOctets: float, dsmonStatsOutHCPkts: float,
 *     dsmonStatsOutHCOctets: float}|array{0: -1, status: -1}|false|null
 */
function dsmon_stats_getnext($connid, $ctlIndex, $groupIndex) {}

/**
 * One control row of the statistics of aggregation groups (RFC 3287, dsmonStatsControlTable).
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     dsmonStatsControlIndex: int,
 *     dsmonStatsControlDataSource_ifIndex: int,
 *     dsmonStatsControlAggProfile: int,
 *     dsmonStatsControlDroppedFrames: int,
 *     dsmonStatsControlOwner: string,
 *     dsmonStatsControlStatus: int
 * }|array{0: -1, status: -1}|false|null 0 and status: the agent's result code, 0.
 *     dsmonStatsControlDataSource_ifIndex is an interface index, dsmonStatsControlAggProfile the index of a
 *     control row that dsmon_aggctl_get() reads, dsmonStatsControlDroppedFrames in frames,
 *     dsmonStatsControlStatus an EntryStatus. [0 => -1, "status" => -1], without a message, when the agent
 *     has no such row or the call failed; FALSE after the warning "... is not a RMON/RPC conn id!"
 */
function dsmon_statsctl_get($connid, $ctlIndex) {}

/**
 * The first control row of the statistics behind an index (0: the first of all). See dsmon_statsctl_get().
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @return array{0: int, status: int, dsmonStatsControlIndex: int,
 *     dsmonStatsControlDataSource_ifIndex: int, dsmonStatsControlAggProfile: int,
 *     dsmonStatsControlDroppedFrames: int, dsmonStatsControlOwner: string,
 *     dsmonStatsControlStatus: int}|array{0: -1, status: -1}|false|null
 */
function dsmon_statsctl_getnext($connid, $ctlIndex) {}

/**
 * Creates or changes a control row of the statistics (RFC 3287, dsmonStatsControlTable).
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @param int $dataSource_ifIndex an interface index
 * @param int $aggProfile the index of an aggregation profile's control row
 * @param string $owner at most 255 bytes
 * @param int $rowStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE, without a
 *     message, when the call failed
 */
function dsmon_statsctl_set($connid, $ctlIndex, $dataSource_ifIndex, $aggProfile, $owner, $rowStatus) {}

/* ---- DSMON aggregation --------------------------------------------------------------- */

/**
 * One control row of the aggregation profiles (RFC 3287, dsmonAggControlTable).
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     dsmonAggControlIndex: int,
 *     dsmonAggControlDescr: string,
 *     dsmonAggControlOwner: string,
 *     dsmonAggControlStatus: int
 * }|array{0: -1, status: -1}|false|null 0 and status: the agent's result code, 0. dsmonAggControlStatus is
 *     an EntryStatus. [0 => -1, "status" => -1], without a message, when the agent has no such row or the
 *     call failed; FALSE after the warning "... is not a RMON/RPC conn id!"
 */
function dsmon_aggctl_get($connid, $ctlIndex) {}

/**
 * The first control row of the aggregation profiles behind an index (0: the first of all). See
 * dsmon_aggctl_get().
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @return array{0: int, status: int, dsmonAggControlIndex: int, dsmonAggControlDescr: string,
 *     dsmonAggControlOwner: string, dsmonAggControlStatus: int}|array{0: -1, status: -1}|false|null
 */
function dsmon_aggctl_getnext($connid, $ctlIndex) {}

/**
 * Creates or changes a control row of the aggregation profiles (RFC 3287, dsmonAggControlTable).
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @param string $owner at most 255 bytes
 * @param string $descr at most 64 bytes
 * @param int $rowStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE, without a
 *     message, when the call failed or a text is too long
 */
function dsmon_aggctl_set($connid, $ctlIndex, $owner, $descr, $rowStatus) {}

/**
 * One group of an aggregation profile (RFC 3287, dsmonAggGroupTable).
 *
 * @param resource|int $connid
 * @param int $ctlIndex the profile's control row
 * @param int $groupIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     dsmonAggControlIndex: int,
 *     dsmonAggGroupIndex: int,
 *     dsmonAggGroupDescr: string
 * }|array{0: -1, status: -1}|false|null 0 and status: the agent's result code, 0. [0 => -1, "status" => -1],
 *     without a message, when the agent has no such row or the call failed; FALSE after the warning
 *     "... is not a RMON/RPC conn id!"
 */
function dsmon_aggrp_get($connid, $ctlIndex, $groupIndex) {}

/**
 * The first group of an aggregation profile behind one. See dsmon_aggrp_get().
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @param int $groupIndex
 * @return array{0: int, status: int, dsmonAggControlIndex: int, dsmonAggGroupIndex: int,
 *     dsmonAggGroupDescr: string}|array{0: -1, status: -1}|false|null
 */
function dsmon_aggrp_getnext($connid, $ctlIndex, $groupIndex) {}

/**
 * Creates or changes a group of an aggregation profile (RFC 3287, dsmonAggGroupTable).
 *
 * @param resource|int $connid
 * @param int $ctlIndex the profile's control row
 * @param int $groupIndex
 * @param string $descr at most 64 bytes
 * @param int $groupStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE, without a
 *     message, when the call failed or the text is too long
 */
function dsmon_aggrp_set($connid, $ctlIndex, $groupIndex, $descr, $groupStatus) {}

/**
 * An aggregation profile: the groups to which it maps the DSCP values (RFC 3287, dsmonAggProfileTable).
 * Makes 64 calls, one after another, whatever becomes of each.
 *
 * @param resource|int $connid
 * @param int $ctlIndex the profile's control row
 * @return array<int, int>|false|null group indexes under the DSCP values, 0 to 63, in their order. A value
 *     is left out, without a message, when the agent has no such row or its call failed. FALSE after the
 *     warning "... is not a RMON/RPC conn id!"
 */
function dsmon_aggprofs_get($connid, $ctlIndex) {}

/**
 * Maps a DSCP value to a group of an aggregation profile (RFC 3287, dsmonAggProfileTable).
 *
 * @param resource|int $connid
 * @param int $ctlIndex the profile's control row
 * @param int $dscp 0 to 63
 * @param int $groupIndex
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE, without a
 *     message, when the call failed
 */
function dsmon_aggprof_set($connid, $ctlIndex, $dscp, $groupIndex) {}

/**
 * Whether the aggregation profiles are locked against changes (RFC 3287, dsmonAggControlLocked).
 *
 * @param resource|int $connid
 * @return int|false|null the lock as the agent has it; FALSE, without a message, when the call failed
 */
function dsmon_aggctl_locked($connid) {}

/**
 * Locks the aggregation profiles against changes, or unlocks them (RFC 3287, dsmonAggControlLocked).
 *
 * @param resource|int $connid
 * @param int $lock
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE, without a
 *     message, when the call failed
 */
function dsmon_aggctl_set_lock($connid, $lock) {}

/* ---- DSMON protocol distribution and hosts ------------------------------------------- */

/**
 * One control row of the protocol distribution of aggregation groups (RFC 3287, dsmonPdistCtlTable).
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     dsmonPdistCtlIndex: int,
 *     dsmonPdistCtlDataSource_ifIndex: int,
 *     dsmonPdistAggProfile: int,
 *     dsmonPdistDroppedFrames: int,
 *     dsmonPdistCtlInserts: int,
 *     dsmonPdistCtlDeletes: int,
 *     dsmonPdistCtlOwner: string,
 *     dsmonPdistCtlStatus: int,
 *     dsmonPdistCtlMaxDesiredEntries: int
 * }|array{0: -1, status: -1}|false|null 0 and status: the agent's result code, 0.
 *     dsmonPdistCtlDataSource_ifIndex is an interface index, dsmonPdistAggProfile the index of a control row
 *     that dsmon_aggctl_get() reads; dsmonPdistDroppedFrames in frames, the inserts and deletes in rows of
 *     the table; dsmonPdistCtlStatus an EntryStatus; dsmonPdistCtlMaxDesiredEntries in rows, -1 for no
 *     limit. [0 => -1, "status" => -1], without a message, when the agent has no such row or the call
 *     failed; FALSE after the warning "... is not a RMON/RPC conn id!"
 */
function dsmon_pdistctl_get($connid, $ctlIndex) {}

/**
 * The first control row of the protocol distribution of aggregation groups behind an index (0: the first of
 * all). See dsmon_pdistctl_get().
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @return array{0: int, status: int, dsmonPdistCtlIndex: int, dsmonPdistCtlDataSource_ifIndex: int,
 *     dsmonPdistAggProfile: int, dsmonPdistDroppedFrames: int, dsmonPdistCtlInserts: int,
 *     dsmonPdistCtlDeletes: int, dsmonPdistCtlOwner: string, dsmonPdistCtlStatus: int,
 *     dsmonPdistCtlMaxDesiredEntries: int}|array{0: -1, status: -1}|false|null
 */
function dsmon_pdistctl_getnext($connid, $ctlIndex) {}

/**
 * Creates or changes a control row of the protocol distribution of aggregation groups (RFC 3287,
 * dsmonPdistCtlTable).
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @param int $dataSource_ifIndex an interface index
 * @param int $aggProfile the index of an aggregation profile's control row
 * @param string $owner at most 255 bytes
 * @param int $rowStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @param int $maxDesiredEntries rows wanted at the most, -1 for no limit
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE, without a
 *     message, when the call failed
 */
function dsmon_pdistctl_set($connid, $ctlIndex, $dataSource_ifIndex, $aggProfile, $owner, $rowStatus, $maxDesiredEntries) {}

/**
 * One control row of the hosts of aggregation groups (RFC 3287, dsmonHostCtlTable).
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     dsmonHostCtlIndex: int,
 *     dsmonHostCtlDataSource_ifIndex: int,
 *     dsmonHostAggProfile: int,
 *     dsmonHostDroppedFrames: int,
 *     dsmonHostCtlInserts: int,
 *     dsmonHostCtlDeletes: int,
 *     dsmonHostCtlOwner: string,
 *     dsmonHostCtlStatus: int,
 *     dsmonHostCtlMaxDesiredEntries: int
 * }|array{0: -1, status: -1}|false|null 0 and status: the agent's result code, 0.
 *     dsmonHostCtlDataSource_ifIndex is an interface index, dsmonHostAggProfile the index of a control row
 *     that dsmon_aggctl_get() reads; dsmonHostDroppedFrames in frames, the inserts and deletes in rows of
 *     the table; dsmonHostCtlStatus an EntryStatus; dsmonHostCtlMaxDesiredEntries in rows, -1 for no limit.
 *     [0 => -1, "status" => -1], without a message, when the agent has no such row or the call failed; FALSE
 *     after the warning "... is not a RMON/RPC conn id!"
 */
function dsmon_hostctl_get($connid, $ctlIndex) {}

/**
 * The first control row of the hosts of aggregation groups behind an index (0: the first of all). See
 * dsmon_hostctl_get().
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @return array{0: int, status: int, dsmonHostCtlIndex: int, dsmonHostCtlDataSource_ifIndex: int,
 *     dsmonHostAggProfile: int, dsmonHostDroppedFrames: int, dsmonHostCtlInserts: int,
 *     dsmonHostCtlDeletes: int, dsmonHostCtlOwner: string, dsmonHostCtlStatus: int,
 *     dsmonHostCtlMaxDesiredEntries: int}|array{0: -1, status: -1}|false|null
 */
function dsmon_hostctl_getnext($connid, $ctlIndex) {}

/**
 * Creates or changes a control row of the hosts of aggregation groups (RFC 3287, dsmonHostCtlTable). Hosts
 * are told apart by their whole addresses: the prefix lengths are always 32 and 128.
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @param int $dataSource_ifIndex an interface index
 * @param int $aggProfile the index of an aggregation profile's control row
 * @param string $owner at most 255 bytes
 * @param int $rowStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @param int $maxDesiredEntries rows wanted at the most, -1 for no limit
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE, without a
 *     message, when the call failed
 */
function dsmon_hostctl_set($connid, $ctlIndex, $dataSource_ifIndex, $aggProfile, $owner, $rowStatus, $maxDesiredEntries) {}

/**
 * The traffic of one protocol in an aggregation group (RFC 3287, dsmonPdistStatsTable).
 *
 * @param resource|int $connid
 * @param int $ctlIndex the control row
 * @param int $timeMark a TimeFilter (RFC 2021): rows changed since then, in hundredths of a second; 0 for all
 * @param int $groupIndex a group of the control row's aggregation profile
 * @param int $protocolDirLocalIndex a protocol of the protocol directory
 * @return array{
 *     0: int,
 *     status: int,
 *     dsmonPdistCtlIndex: int,
 *     dsmonAggGroupIndex: int,
 *     protocolDirLocalIndex: int,
 *     dsmonPdistTimeMark: int,
 *     dsmonPdistStatsHCPkts: float,
 *     dsmonPdistStatsHCOctets: float
 * }|array{0: -1, status: -1}|false|null 0 and status: the agent's result code, 0. dsmonPdistTimeMark in
 *     hundredths of a second. [0 => -1, "status" => -1], without a message, when the agent has no such row or
 *     the call failed; FALSE after the warning "... is not a RMON/RPC conn id!"
 */
function dsmon_pdstats_get($connid, $ctlIndex, $timeMark, $groupIndex, $protocolDirLocalIndex) {}

/**
 * The traffic of the first protocol behind one. See dsmon_pdstats_get().
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @param int $timeMark
 * @param int $groupIndex
 * @param int $protocolDirLocalIndex
 * @return array{0: int, status: int, dsmonPdistCtlIndex: int, dsmonAggGroupIndex: int,
 *     protocolDirLocalIndex: int, dsmonPdistTimeMark: int, dsmonPdistStatsHCPkts: float,
 *     dsmonPdistStatsHCOctets: float}|array{0: -1, status: -1}|false|null
 */
function dsmon_pdstats_getnext($connid, $ctlIndex, $timeMark, $groupIndex, $protocolDirLocalIndex) {}

/**
 * The traffic of one host in an aggregation group (RFC 3287, dsmonHostTable).
 *
 * @param resource|int $connid
 * @param int $ctlIndex the control row
 * @param int $timeMark a TimeFilter (RFC 2021): rows changed since then, in hundredths of a second; 0 for all
 * @param int $groupIndex a group of the control row's aggregation profile
 * @param int $protocolDirLocalIndex the network protocol, of the protocol directory, to which the address
 *     belongs
 * @param array $address one integer for each byte; the first 20 are sent. At most 255 ("too many (...)
 *     elements in addr!" and FALSE); other elements are converted to integers in the caller's array. Anything
 *     but an array is an empty address.
 * @prefer-ref $address
 * @return array{
 *     0: int,
 *     status: int,
 *     dsmonHostCtlIndex: int,
 *     dsmonAggGroupIndex: int,
 *     protocolDirLocalIndex: int,
 *     dsmonHostTimeMark: int,
 *     dsmonHostInHCPkts: float,
 *     dsmonHostInHCOctets: float,
 *     dsmonHostOutHCPkts: float,
 *     dsmonHostOutHCOctets: float,
 *     dsmonHostAddress: list<int>|int
 * }|array{0: -1, status: -1}|false|null 0 and status: the agent's result code, 0. dsmonHostTimeMark in
 *     hundredths of a second; In: received by the host, Out: sent by it; an empty dsmonHostAddress is the
 *     integer 0. [0 => -1, "status" => -1], without a message, when the agent has no such row or the call
 *     failed; FALSE after the warning "... is not a RMON/RPC conn id!"
 */
function dsmon_hoststats_get($connid, $ctlIndex, $timeMark, $groupIndex, $protocolDirLocalIndex, $address) {}

/**
 * The traffic of the first host behind one. See dsmon_hoststats_get().
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @param int $timeMark
 * @param int $groupIndex
 * @param int $protocolDirLocalIndex
 * @param array $address
 * @prefer-ref $address
 * @return array{0: int, status: int, dsmonHostCtlIndex: int, dsmonAggGroupIndex: int,
 *     protocolDirLocalIndex: int, dsmonHostTimeMark: int, dsmonHostInHCPkts: float,
 *     dsmonHostInHCOctets: float, dsmonHostOutHCPkts: float, dsmonHostOutHCOctets: float,
 *     dsmonHostAddress: list<int>|int}|array{0: -1, status: -1}|false|null
 */
function dsmon_hoststats_getnext($connid, $ctlIndex, $timeMark, $groupIndex, $protocolDirLocalIndex, $address) {}

/* ---- DSMON matrix -------------------------------------------------------------------- */

/**
 * One control row of the host pairs of aggregation groups (RFC 3287, dsmonMatrixCtlTable).
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     dsmonMatrixCtlIndex: int,
 *     dsmonMatrixCtlDataSource_ifIndex: int,
 *     dsmonMatrixAggProfile: int,
 *     dsmonMatrixDroppedFrames: int,
 *     dsmonMatrixCtlInserts: int,
 *     dsmonMatrixCtlDeletes: int,
 *     dsmonMatrixCtlOwner: string,
 *     dsmonMatrixCtlStatus: int,
 *     dsmonMatrixCtlMaxDesiredEntries: int
 * }|array{0: -1, status: -1}|false|null 0 and status: the agent's result code, 0.
 *     dsmonMatrixCtlDataSource_ifIndex is an interface index, dsmonMatrixAggProfile the index of a control
 *     row that dsmon_aggctl_get() reads; dsmonMatrixDroppedFrames in frames, the inserts and deletes in rows
 *     of the table; dsmonMatrixCtlStatus an EntryStatus; dsmonMatrixCtlMaxDesiredEntries in rows, -1 for no
 *     limit. [0 => -1, "status" => -1], without a message, when the agent has no such row or the call
 *     failed; FALSE after the warning "... is not a RMON/RPC conn id!"
 */
function dsmon_matrixctl_get($connid, $ctlIndex) {}

/**
 * The first control row of the host pairs of aggregation groups behind an index (0: the first of all). See
 * dsmon_matrixctl_get().
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @return array{0: int, status: int, dsmonMatrixCtlIndex: int, dsmonMatrixCtlDataSource_ifIndex: int,
 *     dsmonMatrixAggProfile: int, dsmonMatrixDroppedFrames: int, dsmonMatrixCtlInserts: int,
 *     dsmonMatrixCtlDeletes: int, dsmonMatrixCtlOwner: string, dsmonMatrixCtlStatus: int,
 *     dsmonMatrixCtlMaxDesiredEntries: int}|array{0: -1, status: -1}|false|null
 */
function dsmon_matrixctl_getnext($connid, $ctlIndex) {}

/**
 * Creates or changes a control row of the host pairs of aggregation groups (RFC 3287, dsmonMatrixCtlTable).
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @param int $dataSource_ifIndex an interface index
 * @param int $aggProfile the index of an aggregation profile's control row
 * @param string $owner at most 255 bytes
 * @param int $rowStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @param int $maxDesiredEntries rows wanted at the most, -1 for no limit
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE, without a
 *     message, when the call failed
 */
function dsmon_matrixctl_set($connid, $ctlIndex, $dataSource_ifIndex, $aggProfile, $owner, $rowStatus, $maxDesiredEntries) {}

/**
 * The traffic from one host to another in an aggregation group (RFC 3287, dsmonMatrixSDTable: the view
 * ordered by source).
 *
 * @param resource|int $connid
 * @param int $ctlIndex the control row
 * @param int $timeMark a TimeFilter (RFC 2021): rows changed since then, in hundredths of a second; 0 for all
 * @param int $groupIndex a group of the control row's aggregation profile
 * @param int $nlIndex the network protocol, of the protocol directory, to which the addresses belong
 * @param int $alIndex the application protocol, of the protocol directory
 * @param array $sourceAddress one integer for each byte; the first 20 are sent. At most 255 ("too many (...)
 *     elements in addr!" and FALSE); other elements are converted to integers in the caller's array. Anything
 *     but an array is an empty address.
 * @prefer-ref $sourceAddress
 * @param array $destAddress likewise
 * @prefer-ref $destAddress
 * @return array{
 *     0: int,
 *     status: int,
 *     dsmonMatrixCtlIndex: int,
 *     dsmonAggGroupIndex: int,
 *     dsmonMatrixTimeMark: int,
 *     dsmonMatrixNLIndex: int,
 *     dsmonMatrixALIndex: int,
 *     dsmonMatrixSDHCPkts: float,
 *     dsmonMatrixSDHCOctets: float,
 *     dsmonMatrixSourceAddress: list<int>|int,
 *     dsmonMatrixDestAddress: list<int>|int
 * }|array{0: -1, status: -1}|false|null 0 and status: the agent's result code, 0. dsmonMatrixTimeMark in
 *     hundredths of a second; an empty address is the integer 0. [0 => -1, "status" => -1], without a message,
 *     when the agent has no such row or the call failed; FALSE after the warning
 *     "... is not a RMON/RPC conn id!"
 */
function dsmon_matrixsdstats_get($connid, $ctlIndex, $timeMark, $groupIndex, $nlIndex, $alIndex, $sourceAddress, $destAddress) {}

/**
 * The traffic of the first host pair behind one, ordered by source. See dsmon_matrixsdstats_get().
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @param int $timeMark
 * @param int $groupIndex
 * @param int $nlIndex
 * @param int $alIndex
 * @param array $sourceAddress
 * @prefer-ref $sourceAddress
 * @param array $destAddress
 * @prefer-ref $destAddress
 * @return array{0: int, status: int, dsmonMatrixCtlIndex: int, dsmonAggGroupIndex: int,
 *     dsmonMatrixTimeMark: int, dsmonMatrixNLIndex: int, dsmonMatrixALIndex: int, dsmonMatrixSDHCPkts: float,
 *     dsmonMatrixSDHCOctets: float, dsmonMatrixSourceAddress: list<int>|int,
 *     dsmonMatrixDestAddress: list<int>|int}|array{0: -1, status: -1}|false|null
 */
function dsmon_matrixsdstats_getnext($connid, $ctlIndex, $timeMark, $groupIndex, $nlIndex, $alIndex, $sourceAddress, $destAddress) {}

/**
 * The traffic from one host to another in an aggregation group (RFC 3287, dsmonMatrixDSTable: the view
 * ordered by destination). See dsmon_matrixsdstats_get(), whose keys it has too.
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @param int $timeMark
 * @param int $groupIndex
 * @param int $nlIndex
 * @param int $alIndex
 * @param array $sourceAddress
 * @prefer-ref $sourceAddress
 * @param array $destAddress
 * @prefer-ref $destAddress
 * @return array{0: int, status: int, dsmonMatrixCtlIndex: int, dsmonAggGroupIndex: int,
 *     dsmonMatrixTimeMark: int, dsmonMatrixNLIndex: int, dsmonMatrixALIndex: int, dsmonMatrixSDHCPkts: float,
 *     dsmonMatrixSDHCOctets: float, dsmonMatrixSourceAddress: list<int>|int,
 *     dsmonMatrixDestAddress: list<int>|int}|array{0: -1, status: -1}|false|null
 */
function dsmon_matrixdsstats_get($connid, $ctlIndex, $timeMark, $groupIndex, $nlIndex, $alIndex, $sourceAddress, $destAddress) {}

/**
 * The traffic of the first host pair behind one, ordered by destination. See dsmon_matrixdsstats_get().
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @param int $timeMark
 * @param int $groupIndex
 * @param int $nlIndex
 * @param int $alIndex
 * @param array $sourceAddress
 * @prefer-ref $sourceAddress
 * @param array $destAddress
 * @prefer-ref $destAddress
 * @return array{0: int, status: int, dsmonMatrixCtlIndex: int, dsmonAggGroupIndex: int,
 *     dsmonMatrixTimeMark: int, dsmonMatrixNLIndex: int, dsmonMatrixALIndex: int, dsmonMatrixSDHCPkts: float,
 *     dsmonMatrixSDHCOctets: float, dsmonMatrixSourceAddress: list<int>|int,
 *     dsmonMatrixDestAddress: list<int>|int}|array{0: -1, status: -1}|false|null
 */
function dsmon_matrixdsstats_getnext($connid, $ctlIndex, $timeMark, $groupIndex, $nlIndex, $alIndex, $sourceAddress, $destAddress) {}

/* ---- SMON VLAN and priority statistics ----------------------------------------------- */

/**
 * One control row of the VLAN statistics (RFC 2613, smonVlanStatsControlTable).
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{
 *     0: int,
 *     status: int,
 *     smonVlanStatsControlIndex: int,
 *     smonVlanStatsControlDataSource: int,
 *     smonVlanStatsControlCreateTime: int,
 *     smonVlanStatsControlOwner: string,
 *     smonVlanStatsControlStatus: int
 * }|false|null 0 and status: the agent's result code. smonVlanStatsControlDataSource is an interface index,
 *     smonVlanStatsControlCreateTime in hundredths of a second, smonVlanStatsControlStatus an EntryStatus.
 *     FALSE after the warning "vlan_ctl_get: RPC: ..."
 */
function rmon_vlan_ctl_get($connid, $index) {}

/**
 * The first control row of the VLAN statistics behind an index (0: the first of all). See
 * rmon_vlan_ctl_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{0: int, status: int, smonVlanStatsControlIndex: int, smonVlanStatsControlDataSource: int,
 *     smonVlanStatsControlCreateTime: int, smonVlanStatsControlOwner: string,
 *     smonVlanStatsControlStatus: int}|false|null
 */
function rmon_vlan_ctl_getnext($connid, $index) {}

/**
 * Creates or changes a control row of the VLAN statistics (RFC 2613, smonVlanStatsControlTable).
 *
 * @param resource|int $connid
 * @param int $index
 * @param int $dataSource an interface index
 * @param string $owner at most 255 bytes
 * @param int $status an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_vlan_ctl_set: RPC: ..."
 */
function rmon_vlan_ctl_set($connid, $index, $dataSource, $owner, $status) {}

/**
 * The traffic of one VLAN of a data source (RFC 2613, smonVlanIdStatsTable).
 *
 * @param resource|int $connid
 * @param int $controlIndex the control row
 * @param int $vlanId 1 to 4094
 * @return array{
 *     0: int,
 *     status: int,
 *     smonVlanIdStatsId: int,
 *     smonVlanIdStatsTotalPkts: float,
 *     smonVlanIdStatsTotalOctets: float,
 *     smonVlanIdStatsNUcastPkts: float,
 *     smonVlanIdStatsNUcastOctets: float,
 *     smonVlanIdStatsCreateTime: int,
 *     smonVlanStatsControlIndex: int
 * }|false|null 0 and status: the agent's result code. NUcast: broadcast and multicast packets;
 *     smonVlanIdStatsCreateTime in hundredths of a second. FALSE after the warning "vlan_get: RPC: ..."
 */
function rmon_vlan_get($connid, $controlIndex, $vlanId) {}

/**
 * The traffic of the first VLAN behind one. See rmon_vlan_get().
 *
 * @param resource|int $connid
 * @param int $controlIndex
 * @param int $vlanId
 * @return array{0: int, status: int, smonVlanIdStatsId: int, smonVlanIdStatsTotalPkts: float,
 *     smonVlanIdStatsTotalOctets: float, smonVlanIdStatsNUcastPkts: float,
 *     smonVlanIdStatsNUcastOctets: float, smonVlanIdStatsCreateTime: int,
 *     smonVlanStatsControlIndex: int}|false|null
 */
function rmon_vlan_getnext($connid, $controlIndex, $vlanId) {}

/**
 * One control row of the priority statistics (RFC 2613, smonPrioStatsControlTable).
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{
 *     0: int,
 *     status: int,
 *     smonPrioStatsControlIndex: int,
 *     smonPrioStatsControlDataSource: int,
 *     smonPrioStatsControlCreateTime: int,
 *     smonPrioStatsControlOwner: string,
 *     smonPrioStatsControlStatus: int
 * }|false|null 0 and status: the agent's result code. smonPrioStatsControlDataSource is an interface index,
 *     smonPrioStatsControlCreateTime in hundredths of a second, smonPrioStatsControlStatus an EntryStatus.
 *     FALSE after the warning "prio_ctl_get: RPC: ..."
 */
function rmon_prio_ctl_get($connid, $index) {}

/**
 * The first control row of the priority statistics behind an index (0: the first of all). See
 * rmon_prio_ctl_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{0: int, status: int, smonPrioStatsControlIndex: int, smonPrioStatsControlDataSource: int,
 *     smonPrioStatsControlCreateTime: int, smonPrioStatsControlOwner: string,
 *     smonPrioStatsControlStatus: int}|false|null
 */
function rmon_prio_ctl_getnext($connid, $index) {}

/**
 * Creates or changes a control row of the priority statistics (RFC 2613, smonPrioStatsControlTable).
 *
 * @param resource|int $connid
 * @param int $index
 * @param int $dataSource an interface index
 * @param string $owner at most 255 bytes
 * @param int $status an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_prio_ctl_set: RPC: ..."
 */
function rmon_prio_ctl_set($connid, $index, $dataSource, $owner, $status) {}

/**
 * The traffic of one user priority of a data source (RFC 2613, smonPrioStatsTable).
 *
 * @param resource|int $connid
 * @param int $controlIndex the control row
 * @param int $priority 0 to 7
 * @return array{
 *     0: int,
 *     status: int,
 *     smonPrioStatsId: int,
 *     smonPrioStatsPkts: float,
 *     smonPrioStatsOctets: float,
 *     smonPrioStatsControlIndex: int
 * }|false|null 0 and status: the agent's result code. FALSE after the warning "prio_get: RPC: ..."
 */
function rmon_prio_get($connid, $controlIndex, $priority) {}

/**
 * The traffic of the first user priority behind one. See rmon_prio_get().
 *
 * @param resource|int $connid
 * @param int $controlIndex
 * @param int $priority
 * @return array{0: int, status: int, smonPrioStatsId: int, smonPrioStatsPkts: float,
 *     smonPrioStatsOctets: float, smonPrioStatsControlIndex: int}|false|null
 */
function rmon_prio_getnext($connid, $controlIndex, $priority) {}

/* ---- filters and channels ------------------------------------------------------------ */

/**
 * One filter, by which a channel picks packets (RFC 2819, filterTable, with the protocol indexes of
 * RFC 2021).
 *
 * @param resource|int $connid
 * @param int $filterIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     filterIndex: int,
 *     filterChannelIndex: int,
 *     filterPktDataOffset: int,
 *     filterPktStatus: int,
 *     filterPktStatusMask: int,
 *     filterPktStatusNotMask: int,
 *     filterOwner: string,
 *     filterStatus: int,
 *     filterProtocolDirDataLocalIndex: int,
 *     filterProtocolDirLocalIndex: int,
 *     filterPktData: list<int>,
 *     filterPktDataMask: list<int>,
 *     filterPktDataNotMask: list<int>
 * }|false|null 0 and status: the agent's result code. filterPktDataOffset in bytes; filterPktStatus and its
 *     masks sets of 1 (longer than 1518 bytes), 2 (shorter than 64) and 4 (damaged); filterStatus an
 *     EntryStatus; the byte lists have one integer for each byte. FALSE after the warning
 *     "filter_get: RPC: ..."
 */
function rmon_filter_get($connid, $filterIndex) {}

/**
 * The first filter behind an index (0: the first of all). See rmon_filter_get().
 *
 * @param resource|int $connid
 * @param int $filterIndex
 * @return array{0: int, status: int, filterIndex: int, filterChannelIndex: int, filterPktDataOffset: int,
 *     filterPktStatus: int, filterPktStatusMask: int, filterPktStatusNotMask: int, filterOwner: string,
 *     filterStatus: int, filterProtocolDirDataLocalIndex: int, filterProtocolDirLocalIndex: int,
 *     filterPktData: list<int>, filterPktDataMask: list<int>, filterPktDataNotMask: list<int>}|false|null
 */
function rmon_filter_getnext($connid, $filterIndex) {}

/**
 * Creates or changes a filter (RFC 2819, filterTable, with the protocol indexes of RFC 2021).
 *
 * @param resource|int $connid
 * @param int $filterIndex
 * @param int $filterChannelIndex the channel
 * @param int $filterPktDataOffset in bytes
 * @param array $filterPktData one integer for each byte, any number of them; an element of another type is
 *     refused with "addr element not a LONG (...)!", which shows its type (0 null, 2 float, 3 string,
 *     4 array, 5 object, 6 bool, 7 resource), and FALSE. Anything but an array is an empty list.
 * @param array $filterPktDataMask likewise, with "dataMask element not a LONG (...)!"
 * @param array $filterPktDataNotMask likewise, with "dataNotMask element not a LONG (...)!"
 * @param int $filterPktStatus as in rmon_filter_get(), like its masks
 * @param int $filterPktStatusMask
 * @param int $filterPktStatusNotMask
 * @param string $filterOwner at most 255 bytes
 * @param int $filterStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @param int $filterProtocolDirDataLocalIndex the offset counts from its start; 0: the packet's
 * @param int $filterProtocolDirLocalIndex the protocol that a packet must have; 0 for any
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_filter_set: RPC: ..."
 */
function rmon_filter_set($connid, $filterIndex, $filterChannelIndex, $filterPktDataOffset, $filterPktData, $filterPktDataMask, $filterPktDataNotMask, $filterPktStatus, $filterPktStatusMask, $filterPktStatusNotMask, $filterOwner, $filterStatus, $filterProtocolDirDataLocalIndex, $filterProtocolDirLocalIndex) {}

/**
 * One channel: the packets that its filters let through (RFC 2819, channelTable).
 *
 * @param resource|int $connid
 * @param int $channelIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     channelIndex: int,
 *     channelIfIndex: int,
 *     channelAcceptType: int,
 *     channelDataControl: int,
 *     channelTurnOnEventIndex: int,
 *     channelTurnOffEventIndex: int,
 *     channelEventIndex: int,
 *     channelEventStatus: int,
 *     channelMatches: int,
 *     channelDescription: string,
 *     channelOwner: string,
 *     channelStatus: int,
 *     channelCreateTime: int,
 *     channelDroppedFrames: int
 * }|false|null 0 and status: the agent's result code. channelAcceptType 1 acceptMatched or 2 acceptFailed,
 *     channelDataControl 1 on or 2 off, channelEventStatus 1 ready, 2 fired or 3 always ready, channelStatus
 *     an EntryStatus, channelCreateTime in hundredths of a second. FALSE after the warning
 *     "channel_get: RPC: ..."
 */
function rmon_channel_get($connid, $channelIndex) {}

/**
 * The first channel behind an index (0: the first of all). See rmon_channel_get().
 *
 * @param resource|int $connid
 * @param int $channelIndex
 * @return array{0: int, status: int, channelIndex: int, channelIfIndex: int, channelAcceptType: int,
 *     channelDataControl: int, channelTurnOnEventIndex: int, channelTurnOffEventIndex: int,
 *     channelEventIndex: int, channelEventStatus: int, channelMatches: int, channelDescription: string,
 *     channelOwner: string, channelStatus: int, channelCreateTime: int, channelDroppedFrames: int}|false|null
 */
function rmon_channel_getnext($connid, $channelIndex) {}

/**
 * Creates or changes a channel (RFC 2819, channelTable).
 *
 * @param resource|int $connid
 * @param int $channelIndex
 * @param int $channelIfIndex the interface
 * @param int $channelAcceptType 1 acceptMatched, 2 acceptFailed
 * @param int $channelDataControl 1 on, 2 off
 * @param int $channelTurnOnEventIndex an event; 0 for none, like the others
 * @param int $channelTurnOffEventIndex
 * @param int $channelEventIndex the event fired by a packet that matches
 * @param int $channelEventStatus 1 ready, 2 fired, 3 always ready
 * @param string $channelDescription of any length
 * @param string $channelOwner at most 255 bytes
 * @param int $channelStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_channel_set: RPC: ..."
 */
function rmon_channel_set($connid, $channelIndex, $channelIfIndex, $channelAcceptType, $channelDataControl, $channelTurnOnEventIndex, $channelTurnOffEventIndex, $channelEventIndex, $channelEventStatus, $channelDescription, $channelOwner, $channelStatus) {}

/* ---- packet capture ------------------------------------------------------------------ */

/**
 * One row of the capture buffers' control table (RFC 2819, bufferControlTable).
 *
 * @param resource|int $connid
 * @param int $bufferControlIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     bufferControlIndex: int,
 *     bufferControlChannelIndex: int,
 *     bufferControlFullStatus: int,
 *     bufferControlFullAction: int,
 *     bufferControlCaptureSliceSize: int,
 *     bufferControlDownloadSliceSize: int,
 *     bufferControlDownloadOffset: int,
 *     bufferControlMaxOctetsRequested: int,
 *     bufferControlMaxOctetsGranted: int,
 *     bufferControlCapturedPackets: int,
 *     bufferControlTurnOnTime: int,
 *     bufferControlOwner: string,
 *     bufferControlStatus: int
 * }|false|null 0 and status: the agent's result code. bufferControlFullStatus 1 spaceAvailable or 2 full,
 *     bufferControlFullAction 1 lockWhenFull or 2 wrapWhenFull, sizes and offset in bytes,
 *     bufferControlTurnOnTime in hundredths of a second, bufferControlStatus an EntryStatus. FALSE after
 *     the warning "buffer_ctl_get: RPC: ..."
 */
function rmon_buffer_ctl_get($connid, $bufferControlIndex) {}

/**
 * The first row of the capture buffers' control table behind an index (0: the first of all). See
 * rmon_buffer_ctl_get().
 *
 * @param resource|int $connid
 * @param int $bufferControlIndex
 * @return array{0: int, status: int, bufferControlIndex: int, bufferControlChannelIndex: int,
 *     bufferControlFullStatus: int, bufferControlFullAction: int, bufferControlCaptureSliceSize: int,
 *     bufferControlDownloadSliceSize: int, bufferControlDownloadOffset: int,
 *     bufferControlMaxOctetsRequested: int, bufferControlMaxOctetsGranted: int,
 *     bufferControlCapturedPackets: int, bufferControlTurnOnTime: int, bufferControlOwner: string,
 *     bufferControlStatus: int}|false|null
 */
function rmon_buffer_ctl_getnext($connid, $bufferControlIndex) {}

/**
 * Creates or changes a row of the capture buffers' control table (RFC 2819, bufferControlTable).
 *
 * @param resource|int $connid
 * @param int $bufferControlIndex
 * @param int $bufferControlChannelIndex the channel whose packets are captured
 * @param int $bufferControlFullAction 1 lockWhenFull, 2 wrapWhenFull
 * @param int $bufferControlCaptureSliceSize bytes saved of each packet; 0 for all
 * @param int $bufferControlDownloadSliceSize bytes returned of each packet
 * @param int $bufferControlDownloadOffset the first of them
 * @param int $bufferControlMaxOctetsRequested size of the buffer in bytes; -1 for as many as possible
 * @param string $bufferControlOwner at most 255 bytes
 * @param int $bufferControlStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_buffer_ctl_set: RPC: ..."
 */
function rmon_buffer_ctl_set($connid, $bufferControlIndex, $bufferControlChannelIndex, $bufferControlFullAction, $bufferControlCaptureSliceSize, $bufferControlDownloadSliceSize, $bufferControlDownloadOffset, $bufferControlMaxOctetsRequested, $bufferControlOwner, $bufferControlStatus) {}

/**
 * One captured packet (RFC 2819, captureBufferTable).
 *
 * @param resource|int $connid
 * @param int $captureBufferControlIndex the control row
 * @param int $captureBufferIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     captureBufferControlIndex: int,
 *     captureBufferIndex: int,
 *     captureBufferPacketID: int,
 *     captureBufferPacketTime: int,
 *     captureBufferPacketLength: int,
 *     captureBufferPacketStatus: int,
 *     captureBufferPacketHighCapacityTime: int,
 *     captureBufferPacketData: list<int>
 * }|false|null 0 and status: the agent's result code. captureBufferPacketTime in milliseconds since the
 *     capture was turned on, captureBufferPacketHighCapacityTime what is finer than that, in the agent's
 *     terms; captureBufferPacketLength in bytes of the packet on its network, of which
 *     captureBufferPacketData has those that are returned, one integer each; captureBufferPacketStatus a set
 *     of 1 (longer than 1518 bytes), 2 (shorter than 64), 4 (damaged), 8 (the first after lost ones) and
 *     16 (its place among the others is not certain). FALSE after the warning "capture_buf_get: RPC: ..."
 */
function rmon_capture_buf_get($connid, $captureBufferControlIndex, $captureBufferIndex) {}

/**
 * The first captured packet behind a control row and an index (0: the first of all). See
 * rmon_capture_buf_get().
 *
 * @param resource|int $connid
 * @param int $captureBufferControlIndex
 * @param int $captureBufferIndex
 * @return array{0: int, status: int, captureBufferControlIndex: int, captureBufferIndex: int,
 *     captureBufferPacketID: int, captureBufferPacketTime: int, captureBufferPacketLength: int,
 *     captureBufferPacketStatus: int, captureBufferPacketHighCapacityTime: int,
 *     captureBufferPacketData: list<int>}|false|null
 */
function rmon_capture_buf_getnext($connid, $captureBufferControlIndex, $captureBufferIndex) {}

/**
 * Asks the agent to save captured packets to a file of its own. Waits for up to 60 seconds.
 *
 * @param resource|int $connid
 * @param string $fileName at most 255 bytes
 * @param int $saveValue1 which packets of which buffer, in the agent's terms, like the others
 * @param int $saveValue2
 * @param int $saveValue3
 * @param int $saveOption the file's format, in the agent's terms
 * @return array{
 *     0: int,
 *     totalPktsSaved: int,
 *     1: int,
 *     lastPktIndex: int
 * }|false|null 0 and totalPktsSaved: packets saved; 1 and lastPktIndex: the last of them. FALSE after the
 *     warning "rmon_capture_save_file: RPC: ..."
 */
function rmon_capture_save_file($connid, $fileName, $saveValue1, $saveValue2, $saveValue3, $saveOption) {}

/* ---- application response time ------------------------------------------------------- */

/**
 * One control row of the response time reports.
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @return array{
 *     0: int,
 *     status: int,
 *     artControlIndex: int,
 *     artControlDataSource: int,
 *     artControlTimeRemaining: int,
 *     artControlDuration: int,
 *     artControlRspTime1: int,
 *     artControlRspTime2: int,
 *     artControlRspTime3: int,
 *     artControlRspTime4: int,
 *     artControlRspTime5: int,
 *     artControlRspTime6: int,
 *     artControlRspTimeout: int,
 *     artControlRptStartTime: int,
 *     artControlRequestedSize: int,
 *     artControlGrantedSize: int,
 *     artControlGeneratedRpts: int,
 *     artControlDroppedFrames: int,
 *     artControlOwner: string,
 *     artControlStatus: int
 * }|false|null 0 and status: the agent's result code. artControlDataSource is an interface index;
 *     artControlTimeRemaining (of the running report) and artControlDuration (of each) in seconds;
 *     artControlRspTime1 to 6: the boundaries, ascending, of the seven ranges in which responses are counted;
 *     artControlRptStartTime in hundredths of a second; the sizes in rows; artControlStatus an EntryStatus.
 *     The unit of response times is the agent's. FALSE after the warning "art_ctl_get: RPC: ..."
 */
function rmon_art_ctl_get($connid, $ctlIndex) {}

/**
 * The first control row of the response time reports behind an index (0: the first of all). See
 * rmon_art_ctl_get().
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @return array{0: int, status: int, artControlIndex: int, artControlDataSource: int,
 *     artControlTimeRemaining: int, artControlDuration: int, artControlRspTime1: int,
 *     artControlRspTime2: int, artControlRspTime3: int, artControlRspTime4: int, artControlRspTime5: int,
 *     artControlRspTime6: int, artControlRspTimeout: int, artControlRptStartTime: int,
 *     artControlRequestedSize: int, artControlGrantedSize: int, artControlGeneratedRpts: int,
 *     artControlDroppedFrames: int, artControlOwner: string, artControlStatus: int}|false|null
 */
function rmon_art_ctl_getnext($connid, $ctlIndex) {}

/**
 * Creates or changes a control row of the response time reports. The duration, the start time, the granted
 * size and the counters are the agent's to set.
 *
 * @param resource|int $connid
 * @param int $artControlIndex
 * @param int $artControlDataSource an interface index
 * @param int $artControlTimeRemaining in seconds
 * @param int $artControlRspTime1 the lowest boundary between two ranges of response times
 * @param int $artControlRspTime2
 * @param int $artControlRspTime3
 * @param int $artControlRspTime4
 * @param int $artControlRspTime5
 * @param int $artControlRspTime6 the highest boundary
 * @param int $artControlRspTimeout from when on a response doesn't count any more
 * @param int $artControlRequestedSize rows wanted at the most
 * @param string $artControlOwner at most 255 bytes
 * @param int $artControlStatus an EntryStatus: 1 valid, 2 createRequest, 3 underCreation, 4 invalid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_art_ctl_set: RPC: ..."
 */
function rmon_art_ctl_set($connid, $artControlIndex, $artControlDataSource, $artControlTimeRemaining, $artControlRspTime1, $artControlRspTime2, $artControlRspTime3, $artControlRspTime4, $artControlRspTime5, $artControlRspTime6, $artControlRspTimeout, $artControlRequestedSize, $artControlOwner, $artControlStatus) {}

/**
 * The response times of one server to one client in an application protocol.
 *
 * @param resource|int $connid
 * @param int $ctlIndex the control row
 * @param int $protocolDirLocalIndex the application protocol, of the protocol directory
 * @param array $serverAddress one integer for each byte, at most 255 ("too many (...) elements in addr!"
 *     and FALSE); other elements are converted to integers in the caller's array. Anything but an array is an
 *     empty address.
 * @prefer-ref $serverAddress
 * @param array $clientAddress likewise
 * @prefer-ref $clientAddress
 * @return array{
 *     0: int,
 *     status: int,
 *     artServerAddress: list<int>,
 *     artClientAddress: list<int>,
 *     artAvgRspTime: int,
 *     artMinRspTime: int,
 *     artMaxRspTime: int,
 *     artTotalResponses: int,
 *     artRsps1: int,
 *     artRsps2: int,
 *     artRsps3: int,
 *     artRsps4: int,
 *     artRsps5: int,
 *     artRsps6: int,
 *     artRsps7: int,
 *     artClientOctets: float,
 *     artServerOctets: float,
 *     artRetries: int,
 *     artTimeouts: int,
 *     artControlIndex: int,
 *     protocolDirLocalIndex: int
 * }|array{}|false|null 0 and status: the agent's result code. artRsps1 to artRsps7 are the responses in each
 *     range between the control row's boundaries, artTotalResponses all of them. An empty address is an empty
 *     array. An empty array when the agent has no such row; FALSE after the warning "art_rpt_get: RPC: ..."
 */
function rmon_art_rpt_get($connid, $ctlIndex, $protocolDirLocalIndex, $serverAddress, $clientAddress) {}

/**
 * The first server and client behind a pair of addresses. See rmon_art_rpt_get().
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @param int $protocolDirLocalIndex
 * @param array $serverAddress
 * @prefer-ref $serverAddress
 * @param array $clientAddress
 * @prefer-ref $clientAddress
 * @return array{0: int, status: int, artServerAddress: list<int>, artClientAddress: list<int>,
 *     artAvgRspTime: int, artMinRspTime: int, artMaxRspTime: int, artTotalResponses: int, artRsps1: int,
 *     artRsps2: int, artRsps3: int, artRsps4: int, artRsps5: int, artRsps6: int, artRsps7: int,
 *     artClientOctets: float, artServerOctets: float, artRetries: int, artTimeouts: int,
 *     artControlIndex: int, protocolDirLocalIndex: int}|array{}|false|null
 */
function rmon_art_rpt_getnext($connid, $ctlIndex, $protocolDirLocalIndex, $serverAddress, $clientAddress) {}

/**
 * Several servers and clients behind a pair of addresses, in the order of the table. See rmon_art_rpt_get().
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @param int $protocolDirLocalIndex
 * @param array $serverAddress
 * @prefer-ref $serverAddress
 * @param array $clientAddress
 * @prefer-ref $clientAddress
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, artServerAddress: list<int>, artClientAddress: list<int>,
 *     artAvgRspTime: int, artMinRspTime: int, artMaxRspTime: int, artTotalResponses: int, artRsps1: int,
 *     artRsps2: int, artRsps3: int, artRsps4: int, artRsps5: int, artRsps6: int, artRsps7: int,
 *     artClientOctets: float, artServerOctets: float, artRetries: int, artTimeouts: int,
 *     artControlIndex: int, protocolDirLocalIndex: int}>|false|null the rows, none of them included
 */
function rmon_art_rpt_getbulk($connid, $ctlIndex, $protocolDirLocalIndex, $serverAddress, $clientAddress, $count) {}

/**
 * The response times of one server to all of its clients in an application protocol.
 *
 * @param resource|int $connid
 * @param int $ctlIndex the control row
 * @param int $protocolDirLocalIndex the application protocol, of the protocol directory
 * @param array $serverAddress one integer for each byte, at most 255 ("too many (...) elements in addr!"
 *     and FALSE); other elements are converted to integers in the caller's array. Anything but an array is an
 *     empty address.
 * @prefer-ref $serverAddress
 * @return array{
 *     0: int,
 *     status: int,
 *     artSummaryServerAddress: list<int>,
 *     artSummaryClients: int,
 *     artSummaryAvgRspTime: int,
 *     artSummaryMinRspTime: int,
 *     artSummaryMaxRspTime: int,
 *     artSummaryTotalResponses: int,
 *     artSummaryRsps1: int,
 *     artSummaryRsps2: int,
 *     artSummaryRsps3: int,
 *     artSummaryRsps4: int,
 *     artSummaryRsps5: int,
 *     artSummaryRsps6: int,
 *     artSummaryRsps7: int,
 *     artSummaryClientOctets: float,
 *     artSummaryServerOctets: float,
 *     artSummaryRetries: int,
 *     artSummaryTimeouts: int,
 *     artControlIndex: int,
 *     protocolDirLocalIndex: int
 * }|array{}|false|null 0 and status: the agent's result code. artSummaryClients: how many clients;
 *     artSummaryRsps1 to artSummaryRsps7 are the responses in each range between the control row's boundaries,
 *     artSummaryTotalResponses all of them. An empty address is an empty array. An empty array when the agent
 *     has no such row; FALSE after the warning "art_sum_get: RPC: ..."
 */
function rmon_art_sum_get($connid, $ctlIndex, $protocolDirLocalIndex, $serverAddress) {}

/**
 * The first server behind an address (an empty one: the first of all). See rmon_art_sum_get().
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @param int $protocolDirLocalIndex
 * @param array $serverAddress
 * @prefer-ref $serverAddress
 * @return array{0: int, status: int, artSummaryServerAddress: list<int>, artSummaryClients: int,
 *     artSummaryAvgRspTime: int, artSummaryMinRspTime: int, artSummaryMaxRspTime: int,
 *     artSummaryTotalResponses: int, artSummaryRsps1: int, artSummaryRsps2: int, artSummaryRsps3: int,
 *     artSummaryRsps4: int, artSummaryRsps5: int, artSummaryRsps6: int, artSummaryRsps7: int,
 *     artSummaryClientOctets: float, artSummaryServerOctets: float, artSummaryRetries: int,
 *     artSummaryTimeouts: int, artControlIndex: int, protocolDirLocalIndex: int}|array{}|false|null
 */
function rmon_art_sum_getnext($connid, $ctlIndex, $protocolDirLocalIndex, $serverAddress) {}

/**
 * Several servers behind an address, in the order of the table. See rmon_art_sum_get().
 *
 * @param resource|int $connid
 * @param int $ctlIndex
 * @param int $protocolDirLocalIndex
 * @param array $serverAddress
 * @prefer-ref $serverAddress
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, artSummaryServerAddress: list<int>, artSummaryClients: int,
 *     artSummaryAvgRspTime: int, artSummaryMinRspTime: int, artSummaryMaxRspTime: int,
 *     artSummaryTotalResponses: int, artSummaryRsps1: int, artSummaryRsps2: int, artSummaryRsps3: int,
 *     artSummaryRsps4: int, artSummaryRsps5: int, artSummaryRsps6: int, artSummaryRsps7: int,
 *     artSummaryClientOctets: float, artSummaryServerOctets: float, artSummaryRetries: int,
 *     artSummaryTimeouts: int, artControlIndex: int, protocolDirLocalIndex: int}>|false|null the rows, none
 *     of them included
 */
function rmon_art_sum_getbulk($connid, $ctlIndex, $protocolDirLocalIndex, $serverAddress, $count) {}

/* ---- self-test -------------------------------------------------------------------------- */

/**
 * Tells that the module is loaded.
 *
 * @param string $arg a module's name
 * @return string|null "Congratulations, you have successfully loaded module NAME in PHP"
 */
function confirm_rmon_compiled($arg) {}

/* ---- SCCP voice ---------------------------------------------------------------------- */

/**
 * The settings of the SCCP monitor: collection on or off, rows of each table, and its alarms.
 *
 * @param resource|int $connid
 * @return array{
 *     enable: int,
 *     num_phone_tbl_row: int,
 *     num_call_tbl_row: int,
 *     num_top_jitter_row: int,
 *     num_top_pkt_lost_row: int,
 *     num_top_latency_row: int,
 *     jitter_threshold: int,
 *     pkt_lost_threshold: int,
 *     latency_threshold: int,
 *     jitter_alarm_enable: int,
 *     pkt_lost_alarm_enable: int,
 *     latency_alarm_enable: int
 * }|false|null enable and the alarms: not 0 when on. Integers from 2147483648 on show as negative ones.
 *     FALSE without a message when the call failed
 */
function sccp_config_params_get($connid) {}

/**
 * Figures over all calls that the SCCP monitor saw.
 *
 * @param resource|int $connid
 * @return array{
 *     flag: int,
 *     num_call_mon: int,
 *     avg_pkt_lost: int,
 *     avg_jitter: int,
 *     worst_pkt_lost: int,
 *     worst_jitter: int
 * }|false|null Integers from 2147483648 on show as negative ones. FALSE without a message when the call
 *     failed
 */
function sccp_aggregate_data_get($connid) {}

/**
 * Sets how many rows the tables of the SCCP monitor have. The table of the worst calls by
 * latency is made as long as the one by packet loss.
 *
 * @param resource|int $connid
 * @param int $num_phone_tbl_row
 * @param int $num_call_tbl_row
 * @param int $num_top_jitter_row
 * @param int $num_top_pkt_lost_row
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "sccp_voice_coll_table_sizes_set: RPC: ..."
 */
function sccp_voice_coll_table_sizes_set(
    $connid,
    $num_phone_tbl_row,
    $num_call_tbl_row,
    $num_top_jitter_row,
    $num_top_pkt_lost_row
) {}

/**
 * Sets the thresholds from which the SCCP monitor raises its alarms. Its latency threshold
 * is always set to 1000.
 *
 * @param resource|int $connid
 * @param int $jitter_threshold
 * @param int $pkt_lost_threshold
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "sccp_voice_coll_thresholds_set: RPC: ..."
 */
function sccp_voice_coll_thresholds_set($connid, $jitter_threshold, $pkt_lost_threshold) {}

/**
 * Starts the SCCP monitor.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "sccp_voice_coll_enable: RPC: ..."
 */
function sccp_voice_coll_enable($connid) {}

/**
 * Stops the SCCP monitor.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "sccp_voice_coll_disable: RPC: ..."
 */
function sccp_voice_coll_disable($connid) {}

/**
 * Switches the jitter alarm of the SCCP monitor on.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "sccp_voice_jitter_alarm_enable: RPC: ..."
 */
function sccp_voice_jitter_alarm_enable($connid) {}

/**
 * Switches the jitter alarm of the SCCP monitor off.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "sccp_voice_jitter_alarm_disable: RPC: ..."
 */
function sccp_voice_jitter_alarm_disable($connid) {}

/**
 * Switches the packet loss alarm of the SCCP monitor on.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "sccp_voice_pkt_lost_alarm_enable: RPC: ..."
 */
function sccp_voice_pkt_lost_alarm_enable($connid) {}

/**
 * Switches the packet loss alarm of the SCCP monitor off.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "sccp_voice_pkt_lost_alarm_disable: RPC: ..."
 */
function sccp_voice_pkt_lost_alarm_disable($connid) {}

/**
 * Switches the latency alarm of the SCCP monitor on.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "sccp_voice_latency_alarm_enable: RPC: ..."
 */
function sccp_voice_latency_alarm_enable($connid) {}

/**
 * Switches the latency alarm of the SCCP monitor off.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "sccp_voice_latency_alarm_disable: RPC: ..."
 */
function sccp_voice_latency_alarm_disable($connid) {}

/**
 * Empties the SCCP monitor's phone table.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "sccp_voice_phone_table_clear: RPC: ..."
 */
function sccp_voice_phone_table_clear($connid) {}

/**
 * Empties the SCCP monitor's call table.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "sccp_voice_call_table_clear: RPC: ..."
 */
function sccp_voice_call_table_clear($connid) {}

/**
 * Empties the SCCP monitor's table of the worst calls by jitter.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "sccp_voice_top_jitter_table_clear: RPC: ..."
 */
function sccp_voice_top_jitter_table_clear($connid) {}

/**
 * Empties the SCCP monitor's table of the worst calls by packet loss.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "sccp_voice_top_pkt_lost_table_clear: RPC: ..."
 */
function sccp_voice_top_pkt_lost_table_clear($connid) {}

/**
 * Empties the SCCP monitor's table of the worst calls by latency.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "sccp_voice_top_latency_table_clear: RPC: ..."
 */
function sccp_voice_top_latency_table_clear($connid) {}

/**
 * One phone of the SCCP monitor, with the quality of its last calls.
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{phone_rec: list<array{
 *     vers: int,
 *     index: int,
 *     phone_ipAddr_length: int,
 *     phone_ipAddr: string,
 *     phone_num: string,
 *     phone_model: string,
 *     phone_owner: string,
 *     if_name: string,
 *     flag: int,
 *     num_call_mon: int,
 *     avg_pkt_lost: int,
 *     avg_jitter: int,
 *     worst_pkt_lost: int,
 *     worst_jitter: int,
 *     num_hist_row: int,
 *     history?: list<array{
 *         call_state: int,
 *         call_status: int,
 *         call_direction: int,
 *         peer_ipAddr: string,
 *         peer_num: string,
 *         peer_owner: string,
 *         call_reference: int,
 *         line_instance: int,
 *         conference_id: int,
 *         pass_thru_party_id: int,
 *         local_rtp_port: int,
 *         remote_rtp_port: int,
 *         rtp_sampling_period: int,
 *         payload_type: int,
 *         rtp_pre_value: int,
 *         silence_sup: int,
 *         max_frames_per_pkt: int,
 *         g723_bit_rate: int,
 *         start_time: int,
 *         end_time: int,
 *         pkt_sent: int,
 *         oct_sent: int,
 *         pkt_recv: int,
 *         oct_recv: int,
 *         pkt_lost: int,
 *         jitter: int,
 *         latency: int,
 *         flag: int
 *     }>
 * }>}|false|null addresses as "10.1.200.7"; history holds at most five calls and is absent when
 *     num_hist_row is not positive. Integers from 2147483648 on show as negative ones. FALSE without a
 *     message when the agent has no such row and when the call failed
 */
function sccp_phone_rec_get($connid, $index) {}

/**
 * The first phone behind an index (0: the first of all). See sccp_phone_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{phone_rec: list<array{vers: int, index: int, phone_ipAddr_length: int,
 *     phone_ipAddr: string, phone_num: string, phone_model: string, phone_owner: string, if_name: string,
 *     flag: int, num_call_mon: int, avg_pkt_lost: int, avg_jitter: int, worst_pkt_lost: int,
 *     worst_jitter: int, num_hist_row: int, history?: list<array{call_state: int, call_status: int,
 *     call_direction: int, peer_ipAddr: string, peer_num: string, peer_owner: string, call_reference: int,
 *     line_instance: int, conference_id: int, pass_thru_party_id: int, local_rtp_port: int,
 *     remote_rtp_port: int, rtp_sampling_period: int, payload_type: int, rtp_pre_value: int,
 *     silence_sup: int, max_frames_per_pkt: int, g723_bit_rate: int, start_time: int, end_time: int,
 *     pkt_sent: int, oct_sent: int, pkt_recv: int, oct_recv: int, pkt_lost: int, jitter: int, latency: int,
 *     flag: int}>}>}|false|null
 */
function sccp_phone_rec_getnext($connid, $index) {}

/**
 * Several phones from an index on. See sccp_phone_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @param int $count rows wanted
 * @return array{phone_rec: list<array{vers: int, index: int, phone_ipAddr_length: int,
 *     phone_ipAddr: string, phone_num: string, phone_model: string, phone_owner: string, if_name: string,
 *     flag: int, num_call_mon: int, avg_pkt_lost: int, avg_jitter: int, worst_pkt_lost: int,
 *     worst_jitter: int, num_hist_row: int, history?: list<array{call_state: int, call_status: int,
 *     call_direction: int, peer_ipAddr: string, peer_num: string, peer_owner: string, call_reference: int,
 *     line_instance: int, conference_id: int, pass_thru_party_id: int, local_rtp_port: int,
 *     remote_rtp_port: int, rtp_sampling_period: int, payload_type: int, rtp_pre_value: int,
 *     silence_sup: int, max_frames_per_pkt: int, g723_bit_rate: int, start_time: int, end_time: int,
 *     pkt_sent: int, oct_sent: int, pkt_recv: int, oct_recv: int, pkt_lost: int, jitter: int, latency: int,
 *     flag: int}>}>}|false|null
 */
function sccp_phone_rec_getbulk($connid, $index, $count) {}

/**
 * One call of the SCCP monitor, with the figures of the caller and of the called party ("callee_").
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{call_rec: list<array{
 *     vers: int,
 *     index: int,
 *     phone_ipAddr_length: int,
 *     phone_ipAddr: string,
 *     phone_num: string,
 *     callee_phone_ipAddr_length: int,
 *     callee_phone_ipAddr: string,
 *     callee_phone_num: string,
 *     phone_model: string,
 *     callee_phone_model: string,
 *     phone_owner: string,
 *     callee_phone_owner: string,
 *     if_name: string,
 *     callee_if_name: string,
 *     call_state: int,
 *     callee_call_state: int,
 *     call_status: int,
 *     callee_call_status: int,
 *     call_direction: int,
 *     callee_direction: int,
 *     call_reference: int,
 *     callee_reference: int,
 *     line_instance: int,
 *     callee_line_instance: int,
 *     conference_id: int,
 *     callee_conference_id: int,
 *     pass_thru_party_id: int,
 *     callee_pass_thru_party_id: int,
 *     rtp_port: int,
 *     callee_rtp_port: int,
 *     rtp_sampling_period: int,
 *     callee_rtp_sampling_period: int,
 *     payload_type: int,
 *     callee_payload_type: int,
 *     rtp_pre_value: int,
 *     callee_rtp_pre_value: int,
 *     silence_sup: int,
 *     callee_silence_sup: int,
 *     max_frames_per_pkt: int,
 *     callee_max_frames_per_pkt: int,
 *     g723_bit_rate: int,
 *     callee_g723_bit_rate: int,
 *     start_time: int,
 *     callee_start_time: int,
 *     end_time: int,
 *     callee_end_time: int,
 *     pkt_sent: int,
 *     oct_sent: int,
 *     pkt_recv: int,
 *     oct_recv: int,
 *     pkt_lost: int,
 *     jitter: int,
 *     latency: int,
 *     flag: int,
 *     callee_pkt_sent: int,
 *     callee_oct_sent: int,
 *     callee_pkt_recv: int,
 *     callee_oct_recv: int,
 *     callee_pkt_lost: int,
 *     callee_jitter: int,
 *     callee_latency: int,
 *     callee_flag: int
 * }>}|false|null addresses as "10.1.200.7"; callee_rtp_port is the far end's port as the caller saw it.
 *     Integers from 2147483648 on show as negative ones. FALSE without a message when the agent has no such
 *     row and when the call failed
 */
function sccp_call_rec_get($connid, $index) {}

/**
 * The first call behind an index (0: the first of all). See sccp_call_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{call_rec: list<array{vers: int, index: int, phone_ipAddr_length: int,
 *     phone_ipAddr: string, phone_num: string, callee_phone_ipAddr_length: int, callee_phone_ipAddr: string,
 *     callee_phone_num: string, phone_model: string, callee_phone_model: string, phone_owner: string,
 *     callee_phone_owner: string, if_name: string, callee_if_name: string, call_state: int,
 *     callee_call_state: int, call_status: int, callee_call_status: int, call_direction: int,
 *     callee_direction: int, call_reference: int, callee_reference: int, line_instance: int,
 *     callee_line_instance: int, conference_id: int, callee_conference_id: int, pass_thru_party_id: int,
 *     callee_pass_thru_party_id: int, rtp_port: int, callee_rtp_port: int, rtp_sampling_period: int,
 *     callee_rtp_sampling_period: int, payload_type: int, callee_payload_type: int, rtp_pre_value: int,
 *     callee_rtp_pre_value: int, silence_sup: int, callee_silence_sup: int, max_frames_per_pkt: int,
 *     callee_max_frames_per_pkt: int, g723_bit_rate: int, callee_g723_bit_rate: int, start_time: int,
 *     callee_start_time: int, end_time: int, callee_end_time: int, pkt_sent: int, oct_sent: int,
 *     pkt_recv: int, oct_recv: int, pkt_lost: int, jitter: int, latency: int, flag: int,
 *     callee_pkt_sent: int, callee_oct_sent: int, callee_pkt_recv: int, callee_oct_recv: int,
 *     callee_pkt_lost: int, callee_jitter: int, callee_latency: int, callee_flag: int}>}|false|null
 */
function sccp_call_rec_getnext($connid, $index) {}

/**
 * Several calls from an index on. See sccp_call_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @param int $count rows wanted
 * @return array{call_rec: list<array{vers: int, index: int, phone_ipAddr_length: int,
 *     phone_ipAddr: string, phone_num: string, callee_phone_ipAddr_length: int, callee_phone_ipAddr: string,
 *     callee_phone_num: string, phone_model: string, callee_phone_model: string, phone_owner: string,
 *     callee_phone_owner: string, if_name: string, callee_if_name: string, call_state: int,
 *     callee_call_state: int, call_status: int, callee_call_status: int, call_direction: int,
 *     callee_direction: int, call_reference: int, callee_reference: int, line_instance: int,
 *     callee_line_instance: int, conference_id: int, callee_conference_id: int, pass_thru_party_id: int,
 *     callee_pass_thru_party_id: int, rtp_port: int, callee_rtp_port: int, rtp_sampling_period: int,
 *     callee_rtp_sampling_period: int, payload_type: int, callee_payload_type: int, rtp_pre_value: int,
 *     callee_rtp_pre_value: int, silence_sup: int, callee_silence_sup: int, max_frames_per_pkt: int,
 *     callee_max_frames_per_pkt: int, g723_bit_rate: int, callee_g723_bit_rate: int, start_time: int,
 *     callee_start_time: int, end_time: int, callee_end_time: int, pkt_sent: int, oct_sent: int,
 *     pkt_recv: int, oct_recv: int, pkt_lost: int, jitter: int, latency: int, flag: int,
 *     callee_pkt_sent: int, callee_oct_sent: int, callee_pkt_recv: int, callee_oct_recv: int,
 *     callee_pkt_lost: int, callee_jitter: int, callee_latency: int, callee_flag: int}>}|false|null
 */
function sccp_call_rec_getbulk($connid, $index, $count) {}

/**
 * One of the worst calls by jitter, as one party saw it.
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{top_rec: list<array{
 *     vers: int,
 *     index: int,
 *     phone_ipAddr_length: int,
 *     phone_ipAddr: string,
 *     peer_ipAddr: string,
 *     phone_num: string,
 *     phone_model: string,
 *     phone_owner: string,
 *     if_name: string,
 *     call_state: int,
 *     call_status: int,
 *     call_direction: int,
 *     peer_num: string,
 *     peer_owner: string,
 *     call_reference: int,
 *     line_instance: int,
 *     conference_id: int,
 *     pass_thru_party_id: int,
 *     local_rtp_port: int,
 *     remote_rtp_port: int,
 *     rtp_sampling_period: int,
 *     payload_type: int,
 *     rtp_pre_value: int,
 *     silence_sup: int,
 *     max_frames_per_pkt: int,
 *     g723_bit_rate: int,
 *     start_time: int,
 *     end_time: int,
 *     pkt_sent: int,
 *     oct_sent: int,
 *     pkt_recv: int,
 *     oct_recv: int,
 *     pkt_lost: int,
 *     jitter: int,
 *     latency: int,
 *     flag: int
 * }>}|false|null addresses as "10.1.200.7". Integers from 2147483648 on show as negative ones. FALSE
 *     without a message when the agent has no such row and when the call failed
 */
function sccp_top_jitter_rec_get($connid, $index) {}

/**
 * The first such call behind an index (0: the first of all). See sccp_top_jitter_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{top_rec: list<array{vers: int, index: int, phone_ipAddr_length: int,
 *     phone_ipAddr: string, peer_ipAddr: string, phone_num: string, phone_model: string, phone_owner: string,
 *     if_name: string, call_state: int, call_status: int, call_direction: int, peer_num: string,
 *     peer_owner: string, call_reference: int, line_instance: int, conference_id: int,
 *     pass_thru_party_id: int, local_rtp_port: int, remote_rtp_port: int, rtp_sampling_period: int,
 *     payload_type: int, rtp_pre_value: int, silence_sup: int, max_frames_per_pkt: int, g723_bit_rate: int,
 *     start_time: int, end_time: int, pkt_sent: int, oct_sent: int, pkt_recv: int, oct_recv: int,
 *     pkt_lost: int, jitter: int, latency: int, flag: int}>}|false|null
 */
function sccp_top_jitter_rec_getnext($connid, $index) {}

/**
 * Several such calls from an index on. See sccp_top_jitter_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @param int $count rows wanted
 * @return array{top_rec: list<array{vers: int, index: int, phone_ipAddr_length: int,
 *     phone_ipAddr: string, peer_ipAddr: string, phone_num: string, phone_model: string, phone_owner: string,
 *     if_name: string, call_state: int, call_status: int, call_direction: int, peer_num: string,
 *     peer_owner: string, call_reference: int, line_instance: int, conference_id: int,
 *     pass_thru_party_id: int, local_rtp_port: int, remote_rtp_port: int, rtp_sampling_period: int,
 *     payload_type: int, rtp_pre_value: int, silence_sup: int, max_frames_per_pkt: int, g723_bit_rate: int,
 *     start_time: int, end_time: int, pkt_sent: int, oct_sent: int, pkt_recv: int, oct_recv: int,
 *     pkt_lost: int, jitter: int, latency: int, flag: int}>}|false|null
 */
function sccp_top_jitter_rec_getbulk($connid, $index, $count) {}

/**
 * One of the worst calls by packet loss. See sccp_top_jitter_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{top_rec: list<array{vers: int, index: int, phone_ipAddr_length: int,
 *     phone_ipAddr: string, peer_ipAddr: string, phone_num: string, phone_model: string, phone_owner: string,
 *     if_name: string, call_state: int, call_status: int, call_direction: int, peer_num: string,
 *     peer_owner: string, call_reference: int, line_instance: int, conference_id: int,
 *     pass_thru_party_id: int, local_rtp_port: int, remote_rtp_port: int, rtp_sampling_period: int,
 *     payload_type: int, rtp_pre_value: int, silence_sup: int, max_frames_per_pkt: int, g723_bit_rate: int,
 *     start_time: int, end_time: int, pkt_sent: int, oct_sent: int, pkt_recv: int, oct_recv: int,
 *     pkt_lost: int, jitter: int, latency: int, flag: int}>}|false|null
 */
function sccp_top_pkt_lost_rec_get($connid, $index) {}

/**
 * The first such call behind an index (0: the first of all). See sccp_top_pkt_lost_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{top_rec: list<array{vers: int, index: int, phone_ipAddr_length: int,
 *     phone_ipAddr: string, peer_ipAddr: string, phone_num: string, phone_model: string, phone_owner: string,
 *     if_name: string, call_state: int, call_status: int, call_direction: int, peer_num: string,
 *     peer_owner: string, call_reference: int, line_instance: int, conference_id: int,
 *     pass_thru_party_id: int, local_rtp_port: int, remote_rtp_port: int, rtp_sampling_period: int,
 *     payload_type: int, rtp_pre_value: int, silence_sup: int, max_frames_per_pkt: int, g723_bit_rate: int,
 *     start_time: int, end_time: int, pkt_sent: int, oct_sent: int, pkt_recv: int, oct_recv: int,
 *     pkt_lost: int, jitter: int, latency: int, flag: int}>}|false|null
 */
function sccp_top_pkt_lost_rec_getnext($connid, $index) {}

/**
 * Several such calls from an index on. See sccp_top_pkt_lost_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @param int $count rows wanted
 * @return array{top_rec: list<array{vers: int, index: int, phone_ipAddr_length: int,
 *     phone_ipAddr: string, peer_ipAddr: string, phone_num: string, phone_model: string, phone_owner: string,
 *     if_name: string, call_state: int, call_status: int, call_direction: int, peer_num: string,
 *     peer_owner: string, call_reference: int, line_instance: int, conference_id: int,
 *     pass_thru_party_id: int, local_rtp_port: int, remote_rtp_port: int, rtp_sampling_period: int,
 *     payload_type: int, rtp_pre_value: int, silence_sup: int, max_frames_per_pkt: int, g723_bit_rate: int,
 *     start_time: int, end_time: int, pkt_sent: int, oct_sent: int, pkt_recv: int, oct_recv: int,
 *     pkt_lost: int, jitter: int, latency: int, flag: int}>}|false|null
 */
function sccp_top_pkt_lost_rec_getbulk($connid, $index, $count) {}

/**
 * One of the worst calls by latency. See sccp_top_jitter_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{top_rec: list<array{vers: int, index: int, phone_ipAddr_length: int,
 *     phone_ipAddr: string, peer_ipAddr: string, phone_num: string, phone_model: string, phone_owner: string,
 *     if_name: string, call_state: int, call_status: int, call_direction: int, peer_num: string,
 *     peer_owner: string, call_reference: int, line_instance: int, conference_id: int,
 *     pass_thru_party_id: int, local_rtp_port: int, remote_rtp_port: int, rtp_sampling_period: int,
 *     payload_type: int, rtp_pre_value: int, silence_sup: int, max_frames_per_pkt: int, g723_bit_rate: int,
 *     start_time: int, end_time: int, pkt_sent: int, oct_sent: int, pkt_recv: int, oct_recv: int,
 *     pkt_lost: int, jitter: int, latency: int, flag: int}>}|false|null
 */
function sccp_top_latency_rec_get($connid, $index) {}

/**
 * The first such call behind an index (0: the first of all). See sccp_top_latency_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{top_rec: list<array{vers: int, index: int, phone_ipAddr_length: int,
 *     phone_ipAddr: string, peer_ipAddr: string, phone_num: string, phone_model: string, phone_owner: string,
 *     if_name: string, call_state: int, call_status: int, call_direction: int, peer_num: string,
 *     peer_owner: string, call_reference: int, line_instance: int, conference_id: int,
 *     pass_thru_party_id: int, local_rtp_port: int, remote_rtp_port: int, rtp_sampling_period: int,
 *     payload_type: int, rtp_pre_value: int, silence_sup: int, max_frames_per_pkt: int, g723_bit_rate: int,
 *     start_time: int, end_time: int, pkt_sent: int, oct_sent: int, pkt_recv: int, oct_recv: int,
 *     pkt_lost: int, jitter: int, latency: int, flag: int}>}|false|null
 */
function sccp_top_latency_rec_getnext($connid, $index) {}

/**
 * Several such calls from an index on. See sccp_top_latency_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @param int $count rows wanted
 * @return array{top_rec: list<array{vers: int, index: int, phone_ipAddr_length: int,
 *     phone_ipAddr: string, peer_ipAddr: string, phone_num: string, phone_model: string, phone_owner: string,
 *     if_name: string, call_state: int, call_status: int, call_direction: int, peer_num: string,
 *     peer_owner: string, call_reference: int, line_instance: int, conference_id: int,
 *     pass_thru_party_id: int, local_rtp_port: int, remote_rtp_port: int, rtp_sampling_period: int,
 *     payload_type: int, rtp_pre_value: int, silence_sup: int, max_frames_per_pkt: int, g723_bit_rate: int,
 *     start_time: int, end_time: int, pkt_sent: int, oct_sent: int, pkt_recv: int, oct_recv: int,
 *     pkt_lost: int, jitter: int, latency: int, flag: int}>}|false|null
 */
function sccp_top_latency_rec_getbulk($connid, $index, $count) {}

/* ---- H.323 voice --------------------------------------------------------------------- */

/**
 * The settings of the H.323 monitor: collection on or off, rows of each table, and its alarms.
 *
 * @param resource|int $connid
 * @return array{
 *     enable: int,
 *     num_phone_tbl_row: int,
 *     num_call_tbl_row: int,
 *     num_top_jitter_row: int,
 *     num_top_pkt_lost_row: int,
 *     jitter_threshold: int,
 *     pkt_lost_threshold: int,
 *     jitter_alarm_enable: int,
 *     pkt_lost_alarm_enable: int
 * }|false|null enable and the alarms: not 0 when on. Integers from 2147483648 on show as negative ones.
 *     FALSE without a message when the call failed
 */
function h323_config_params_get($connid) {}

/**
 * Figures over all calls that the H.323 monitor saw. See sccp_aggregate_data_get().
 *
 * @param resource|int $connid
 * @return array{flag: int, num_call_mon: int, avg_pkt_lost: int, avg_jitter: int, worst_pkt_lost: int,
 *     worst_jitter: int}|false|null the averages are over all samples, rounded down, and 0 without samples.
 *     Integers from 2147483648 on show as negative ones. FALSE without a message when the call failed
 */
function h323_aggregate_data_get($connid) {}

/**
 * Sets how many rows the tables of the H.323 monitor have.
 *
 * @param resource|int $connid
 * @param int $num_phone_tbl_row
 * @param int $num_call_tbl_row
 * @param int $num_top_jitter_row
 * @param int $num_top_pkt_lost_row
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "h323_voice_coll_table_sizes_set: RPC: ..."
 */
function h323_voice_coll_table_sizes_set(
    $connid,
    $num_phone_tbl_row,
    $num_call_tbl_row,
    $num_top_jitter_row,
    $num_top_pkt_lost_row
) {}

/**
 * Sets the thresholds from which the H.323 monitor raises its alarms.
 *
 * @param resource|int $connid
 * @param int $jitter_threshold
 * @param int $pkt_lost_threshold
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "h323_voice_coll_thresholds_set: RPC: ..."
 */
function h323_voice_coll_thresholds_set($connid, $jitter_threshold, $pkt_lost_threshold) {}

/**
 * Starts the H.323 monitor.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "h323_voice_coll_enable: RPC: ..."
 */
function h323_voice_coll_enable($connid) {}

/**
 * Stops the H.323 monitor.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "h323_voice_coll_disable: RPC: ..."
 */
function h323_voice_coll_disable($connid) {}

/**
 * Switches the jitter alarm of the H.323 monitor on.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "h323_voice_jitter_alarm_enable: RPC: ..."
 */
function h323_voice_jitter_alarm_enable($connid) {}

/**
 * Switches the jitter alarm of the H.323 monitor off.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "h323_voice_jitter_alarm_disable: RPC: ..."
 */
function h323_voice_jitter_alarm_disable($connid) {}

/**
 * Switches the packet loss alarm of the H.323 monitor on.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "h323_voice_pkt_lost_alarm_enable: RPC: ..."
 */
function h323_voice_pkt_lost_alarm_enable($connid) {}

/**
 * Switches the packet loss alarm of the H.323 monitor off.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "h323_voice_pkt_lost_alarm_disable: RPC: ..."
 */
function h323_voice_pkt_lost_alarm_disable($connid) {}

/**
 * Empties the H.323 monitor's phone table.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "h323_voice_phone_table_clear: RPC: ..."
 */
function h323_voice_phone_table_clear($connid) {}

/**
 * Empties the H.323 monitor's call table.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "h323_voice_call_table_clear: RPC: ..."
 */
function h323_voice_call_table_clear($connid) {}

/**
 * Empties the H.323 monitor's table of the worst calls by jitter.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "h323_voice_top_jitter_table_clear: RPC: ..."
 */
function h323_voice_top_jitter_table_clear($connid) {}

/**
 * Empties the H.323 monitor's table of the worst calls by packet loss.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "h323_voice_top_pkt_lost_table_clear: RPC: ..."
 */
function h323_voice_top_pkt_lost_table_clear($connid) {}

/**
 * One phone of the H.323 monitor, with the quality of its last calls.
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{phone_rec: list<array{
 *     vers: int,
 *     index: int,
 *     forward_q931_ipAddr_length: int,
 *     forward_q931_port: int,
 *     forward_q931_ipAddr: string,
 *     forward_num: string,
 *     forward_alias: string,
 *     flag: int,
 *     num_call_mon: int,
 *     avg_pkt_lost: int,
 *     avg_jitter: int,
 *     worst_pkt_lost: int,
 *     worst_jitter: int,
 *     num_hist_row: int,
 *     history?: list<array{f_q931_ipAddr_length: int, f_q931_port: int, f_q931_ipAddr: string, f_num: string,
 *         f_alias: string, reverse_q931_ipAddr_length: int, reverse_q931_port: int,
 *         reverse_q931_ipAddr: string, reverse_num: string, reverse_alias: string, call_state: int,
 *         call_status: int, call_reference: int, call_id: string, conference_id: string,
 *         conference_goal: int, faststart: int, tunneling: int, call_type: int, forward_product_id: string,
 *         reverse_product_id: string, forward_version_id: string, reverse_version_id: string,
 *         forward_session_id: int, forward_logical_channel_num: int, reverse_session_id: int,
 *         reverse_logical_channel_num: int, forward_h245_ipAddr_length: int, forward_h245_port: int,
 *         forward_h245_ipAddr: string, forward_rtp_ipAddr_length: int, forward_rtp_port: int,
 *         forward_rtp_ipAddr: string, forward_codec: int, forward_rtcp_sr_ipAddr_length: int,
 *         forward_rtcp_sr_port: int, forward_rtcp_sr_ipAddr: string, forward_rtcp_rr_ipAddr_length: int,
 *         forward_rtcp_rr_port: int, forward_rtcp_rr_ipAddr: string, reverse_h245_ipAddr_length: int,
 *         reverse_h245_port: int, reverse_h245_ipAddr: string, reverse_rtp_ipAddr_length: int,
 *         reverse_rtp_port: int, reverse_rtp_ipAddr: string, reverse_codec: int,
 *         reverse_rtcp_sr_ipAddr_length: int, reverse_rtcp_sr_port: int, reverse_rtcp_sr_ipAddr: string,
 *         reverse_rtcp_rr_ipAddr_length: int, reverse_rtcp_rr_port: int, reverse_rtcp_rr_ipAddr: string,
 *         start_time: int, end_time: int, forward_ssrc: float, forward_sr_pkt_sent: int,
 *         forward_sr_oct_sent: int, forward_sr_pkt_lost: int, forward_sr_fraction_lost: int,
 *         forward_sr_jitter: int, reverse_ssrc: float, reverse_sr_pkt_sent: int, reverse_sr_oct_sent: int,
 *         reverse_sr_pkt_lost: int, reverse_sr_fraction_lost: int, reverse_sr_jitter: int, flag: int}>
 * }>}|false|null forward_q931_ipAddr as "10.1.200.7"; history holds at most five calls, each a row of
 *     h323_call_rec_get() from f_q931_ipAddr_length on, and is absent when num_hist_row is not positive.
 *     Integers from 2147483648 on show as negative ones. FALSE without a message when the agent has no such
 *     row and when the call failed
 */
function h323_phone_rec_get($connid, $index) {}

/**
 * The first phone behind an index (0: the first of all). See h323_phone_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{phone_rec: list<array{vers: int, index: int, forward_q931_ipAddr_length: int,
 *     forward_q931_port: int, forward_q931_ipAddr: string, forward_num: string, forward_alias: string,
 *     flag: int, num_call_mon: int, avg_pkt_lost: int, avg_jitter: int, worst_pkt_lost: int,
 *     worst_jitter: int, num_hist_row: int, history?: list<array{f_q931_ipAddr_length: int, f_q931_port: int,
 *     f_q931_ipAddr: string, f_num: string, f_alias: string, reverse_q931_ipAddr_length: int,
 *     reverse_q931_port: int, reverse_q931_ipAddr: string, reverse_num: string, reverse_alias: string,
 *     call_state: int, call_status: int, call_reference: int, call_id: string, conference_id: string,
 *     conference_goal: int, faststart: int, tunneling: int, call_type: int, forward_product_id: string,
 *     reverse_product_id: string, forward_version_id: string, reverse_version_id: string,
 *     forward_session_id: int, forward_logical_channel_num: int, reverse_session_id: int,
 *     reverse_logical_channel_num: int, forward_h245_ipAddr_length: int, forward_h245_port: int,
 *     forward_h245_ipAddr: string, forward_rtp_ipAddr_length: int, forward_rtp_port: int,
 *     forward_rtp_ipAddr: string, forward_codec: int, forward_rtcp_sr_ipAddr_length: int,
 *     forward_rtcp_sr_port: int, forward_rtcp_sr_ipAddr: string, forward_rtcp_rr_ipAddr_length: int,
 *     forward_rtcp_rr_port: int, forward_rtcp_rr_ipAddr: string, reverse_h245_ipAddr_length: int,
 *     reverse_h245_port: int, reverse_h245_ipAddr: string, reverse_rtp_ipAddr_length: int,
 *     reverse_rtp_port: int, reverse_rtp_ipAddr: string, reverse_codec: int,
 *     reverse_rtcp_sr_ipAddr_length: int, reverse_rtcp_sr_port: int, reverse_rtcp_sr_ipAddr: string,
 *     reverse_rtcp_rr_ipAddr_length: int, reverse_rtcp_rr_port: int, reverse_rtcp_rr_ipAddr: string,
 *     start_time: int, end_time: int, forward_ssrc: float, forward_sr_pkt_sent: int,
 *     forward_sr_oct_sent: int, forward_sr_pkt_lost: int, forward_sr_fraction_lost: int,
 *     forward_sr_jitter: int, reverse_ssrc: float, reverse_sr_pkt_sent: int, reverse_sr_oct_sent: int,
 *     reverse_sr_pkt_lost: int, reverse_sr_fraction_lost: int, reverse_sr_jitter: int,
 *     flag: int}>}>}|false|null
 */
function h323_phone_rec_getnext($connid, $index) {}

/**
 * Several phones from an index on. See h323_phone_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @param int $count rows wanted
 * @return array{phone_rec: list<array{vers: int, index: int, forward_q931_ipAddr_length: int,
 *     forward_q931_port: int, forward_q931_ipAddr: string, forward_num: string, forward_alias: string,
 *     flag: int, num_call_mon: int, avg_pkt_lost: int, avg_jitter: int, worst_pkt_lost: int,
 *     worst_jitter: int, num_hist_row: int, history?: list<array{f_q931_ipAddr_length: int, f_q931_port: int,
 *     f_q931_ipAddr: string, f_num: string, f_alias: string, reverse_q931_ipAddr_length: int,
 *     reverse_q931_port: int, reverse_q931_ipAddr: string, reverse_num: string, reverse_alias: string,
 *     call_state: int, call_status: int, call_reference: int, call_id: string, conference_id: string,
 *     conference_goal: int, faststart: int, tunneling: int, call_type: int, forward_product_id: string,
 *     reverse_product_id: string, forward_version_id: string, reverse_version_id: string,
 *     forward_session_id: int, forward_logical_channel_num: int, reverse_session_id: int,
 *     reverse_logical_channel_num: int, forward_h245_ipAddr_length: int, forward_h245_port: int,
 *     forward_h245_ipAddr: string, forward_rtp_ipAddr_length: int, forward_rtp_port: int,
 *     forward_rtp_ipAddr: string, forward_codec: int, forward_rtcp_sr_ipAddr_length: int,
 *     forward_rtcp_sr_port: int, forward_rtcp_sr_ipAddr: string, forward_rtcp_rr_ipAddr_length: int,
 *     forward_rtcp_rr_port: int, forward_rtcp_rr_ipAddr: string, reverse_h245_ipAddr_length: int,
 *     reverse_h245_port: int, reverse_h245_ipAddr: string, reverse_rtp_ipAddr_length: int,
 *     reverse_rtp_port: int, reverse_rtp_ipAddr: string, reverse_codec: int,
 *     reverse_rtcp_sr_ipAddr_length: int, reverse_rtcp_sr_port: int, reverse_rtcp_sr_ipAddr: string,
 *     reverse_rtcp_rr_ipAddr_length: int, reverse_rtcp_rr_port: int, reverse_rtcp_rr_ipAddr: string,
 *     start_time: int, end_time: int, forward_ssrc: float, forward_sr_pkt_sent: int,
 *     forward_sr_oct_sent: int, forward_sr_pkt_lost: int, forward_sr_fraction_lost: int,
 *     forward_sr_jitter: int, reverse_ssrc: float, reverse_sr_pkt_sent: int, reverse_sr_oct_sent: int,
 *     reverse_sr_pkt_lost: int, reverse_sr_fraction_lost: int, reverse_sr_jitter: int,
 *     flag: int}>}>}|false|null
 */
function h323_phone_rec_getbulk($connid, $index, $count) {}

/**
 * One call of the H.323 monitor (RTCP figures as in RFC 3550). "forward" is the direction from the calling
 * endpoint, "reverse" the one back.
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{call_rec: list<array{
 *     vers: int,
 *     index: int,
 *     forward_q931_ipAddr_length: int,
 *     forward_q931_port: int,
 *     forward_q931_ipAddr: string,
 *     forward_num: string,
 *     forward_alias: string,
 *     f_q931_ipAddr_length: int,
 *     f_q931_port: int,
 *     f_q931_ipAddr: string,
 *     f_num: string,
 *     f_alias: string,
 *     reverse_q931_ipAddr_length: int,
 *     reverse_q931_port: int,
 *     reverse_q931_ipAddr: string,
 *     reverse_num: string,
 *     reverse_alias: string,
 *     call_state: int,
 *     call_status: int,
 *     call_reference: int,
 *     call_id: string,
 *     conference_id: string,
 *     conference_goal: int,
 *     faststart: int,
 *     tunneling: int,
 *     call_type: int,
 *     forward_product_id: string,
 *     reverse_product_id: string,
 *     forward_version_id: string,
 *     reverse_version_id: string,
 *     forward_session_id: int,
 *     forward_logical_channel_num: int,
 *     reverse_session_id: int,
 *     reverse_logical_channel_num: int,
 *     forward_h245_ipAddr_length: int,
 *     forward_h245_port: int,
 *     forward_h245_ipAddr: string,
 *     forward_rtp_ipAddr_length: int,
 *     forward_rtp_port: int,
 *     forward_rtp_ipAddr: string,
 *     forward_codec: int,
 *     forward_rtcp_sr_ipAddr_length: int,
 *     forward_rtcp_sr_port: int,
 *     forward_rtcp_sr_ipAddr: string,
 *     forward_rtcp_rr_ipAddr_length: int,
 *     forward_rtcp_rr_port: int,
 *     forward_rtcp_rr_ipAddr: string,
 *     reverse_h245_ipAddr_length: int,
 *     reverse_h245_port: int,
 *     reverse_h245_ipAddr: string,
 *     reverse_rtp_ipAddr_length: int,
 *     reverse_rtp_port: int,
 *     reverse_rtp_ipAddr: string,
 *     reverse_codec: int,
 *     reverse_rtcp_sr_ipAddr_length: int,
 *     reverse_rtcp_sr_port: int,
 *     reverse_rtcp_sr_ipAddr: string,
 *     reverse_rtcp_rr_ipAddr_length: int,
 *     reverse_rtcp_rr_port: int,
 *     reverse_rtcp_rr_ipAddr: string,
 *     start_time: int,
 *     end_time: int,
 *     forward_ssrc: float,
 *     forward_sr_pkt_sent: int,
 *     forward_sr_oct_sent: int,
 *     forward_sr_pkt_lost: int,
 *     forward_sr_fraction_lost: int,
 *     forward_sr_jitter: int,
 *     reverse_ssrc: float,
 *     reverse_sr_pkt_sent: int,
 *     reverse_sr_oct_sent: int,
 *     reverse_sr_pkt_lost: int,
 *     reverse_sr_fraction_lost: int,
 *     reverse_sr_jitter: int,
 *     flag: int
 * }>}|false|null addresses as "10.1.200.7", call_id and conference_id as eight groups of four hexadecimal
 *     digits; fraction_lost and jitter are averages over the call's samples, rounded down, and 0 without
 *     samples. Integers from 2147483648 on show as negative ones, the ssrc alone never. FALSE without a
 *     message when the agent has no such row and when the call failed
 */
function h323_call_rec_get($connid, $index) {}

/**
 * The first call behind an index (0: the first of all). See h323_call_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{call_rec: list<array{vers: int, index: int, forward_q931_ipAddr_length: int,
 *     forward_q931_port: int, forward_q931_ipAddr: string, forward_num: string, forward_alias: string,
 *     f_q931_ipAddr_length: int, f_q931_port: int, f_q931_ipAddr: string, f_num: string, f_alias: string,
 *     reverse_q931_ipAddr_length: int, reverse_q931_port: int, reverse_q931_ipAddr: string,
 *     reverse_num: string, reverse_alias: string, call_state: int, call_status: int, call_reference: int,
 *     call_id: string, conference_id: string, conference_goal: int, faststart: int, tunneling: int,
 *     call_type: int, forward_product_id: string, reverse_product_id: string, forward_version_id: string,
 *     reverse_version_id: string, forward_session_id: int, forward_logical_channel_num: int,
 *     reverse_session_id: int, reverse_logical_channel_num: int, forward_h245_ipAddr_length: int,
 *     forward_h245_port: int, forward_h245_ipAddr: string, forward_rtp_ipAddr_length: int,
 *     forward_rtp_port: int, forward_rtp_ipAddr: string, forward_codec: int,
 *     forward_rtcp_sr_ipAddr_length: int, forward_rtcp_sr_port: int, forward_rtcp_sr_ipAddr: string,
 *     forward_rtcp_rr_ipAddr_length: int, forward_rtcp_rr_port: int, forward_rtcp_rr_ipAddr: string,
 *     reverse_h245_ipAddr_length: int, reverse_h245_port: int, reverse_h245_ipAddr: string,
 *     reverse_rtp_ipAddr_length: int, reverse_rtp_port: int, reverse_rtp_ipAddr: string, reverse_codec: int,
 *     reverse_rtcp_sr_ipAddr_length: int, reverse_rtcp_sr_port: int, reverse_rtcp_sr_ipAddr: string,
 *     reverse_rtcp_rr_ipAddr_length: int, reverse_rtcp_rr_port: int, reverse_rtcp_rr_ipAddr: string,
 *     start_time: int, end_time: int, forward_ssrc: float, forward_sr_pkt_sent: int,
 *     forward_sr_oct_sent: int, forward_sr_pkt_lost: int, forward_sr_fraction_lost: int,
 *     forward_sr_jitter: int, reverse_ssrc: float, reverse_sr_pkt_sent: int, reverse_sr_oct_sent: int,
 *     reverse_sr_pkt_lost: int, reverse_sr_fraction_lost: int, reverse_sr_jitter: int,
 *     flag: int}>}|false|null
 */
function h323_call_rec_getnext($connid, $index) {}

/**
 * Several calls from an index on. See h323_call_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @param int $count rows wanted
 * @return array{call_rec: list<array{vers: int, index: int, forward_q931_ipAddr_length: int,
 *     forward_q931_port: int, forward_q931_ipAddr: string, forward_num: string, forward_alias: string,
 *     f_q931_ipAddr_length: int, f_q931_port: int, f_q931_ipAddr: string, f_num: string, f_alias: string,
 *     reverse_q931_ipAddr_length: int, reverse_q931_port: int, reverse_q931_ipAddr: string,
 *     reverse_num: string, reverse_alias: string, call_state: int, call_status: int, call_reference: int,
 *     call_id: string, conference_id: string, conference_goal: int, faststart: int, tunneling: int,
 *     call_type: int, forward_product_id: string, reverse_product_id: string, forward_version_id: string,
 *     reverse_version_id: string, forward_session_id: int, forward_logical_channel_num: int,
 *     reverse_session_id: int, reverse_logical_channel_num: int, forward_h245_ipAddr_length: int,
 *     forward_h245_port: int, forward_h245_ipAddr: string, forward_rtp_ipAddr_length: int,
 *     forward_rtp_port: int, forward_rtp_ipAddr: string, forward_codec: int,
 *     forward_rtcp_sr_ipAddr_length: int, forward_rtcp_sr_port: int, forward_rtcp_sr_ipAddr: string,
 *     forward_rtcp_rr_ipAddr_length: int, forward_rtcp_rr_port: int, forward_rtcp_rr_ipAddr: string,
 *     reverse_h245_ipAddr_length: int, reverse_h245_port: int, reverse_h245_ipAddr: string,
 *     reverse_rtp_ipAddr_length: int, reverse_rtp_port: int, reverse_rtp_ipAddr: string, reverse_codec: int,
 *     reverse_rtcp_sr_ipAddr_length: int, reverse_rtcp_sr_port: int, reverse_rtcp_sr_ipAddr: string,
 *     reverse_rtcp_rr_ipAddr_length: int, reverse_rtcp_rr_port: int, reverse_rtcp_rr_ipAddr: string,
 *     start_time: int, end_time: int, forward_ssrc: float, forward_sr_pkt_sent: int,
 *     forward_sr_oct_sent: int, forward_sr_pkt_lost: int, forward_sr_fraction_lost: int,
 *     forward_sr_jitter: int, reverse_ssrc: float, reverse_sr_pkt_sent: int, reverse_sr_oct_sent: int,
 *     reverse_sr_pkt_lost: int, reverse_sr_fraction_lost: int, reverse_sr_jitter: int,
 *     flag: int}>}|false|null
 */
function h323_call_rec_getbulk($connid, $index, $count) {}

/**
 * One of the worst calls by jitter. See h323_call_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{call_rec: list<array{vers: int, index: int, forward_q931_ipAddr_length: int,
 *     forward_q931_port: int, forward_q931_ipAddr: string, forward_num: string, forward_alias: string,
 *     f_q931_ipAddr_length: int, f_q931_port: int, f_q931_ipAddr: string, f_num: string, f_alias: string,
 *     reverse_q931_ipAddr_length: int, reverse_q931_port: int, reverse_q931_ipAddr: string,
 *     reverse_num: string, reverse_alias: string, call_state: int, call_status: int, call_reference: int,
 *     call_id: string, conference_id: string, conference_goal: int, faststart: int, tunneling: int,
 *     call_type: int, forward_product_id: string, reverse_product_id: string, forward_version_id: string,
 *     reverse_version_id: string, forward_session_id: int, forward_logical_channel_num: int,
 *     reverse_session_id: int, reverse_logical_channel_num: int, forward_h245_ipAddr_length: int,
 *     forward_h245_port: int, forward_h245_ipAddr: string, forward_rtp_ipAddr_length: int,
 *     forward_rtp_port: int, forward_rtp_ipAddr: string, forward_codec: int,
 *     forward_rtcp_sr_ipAddr_length: int, forward_rtcp_sr_port: int, forward_rtcp_sr_ipAddr: string,
 *     forward_rtcp_rr_ipAddr_length: int, forward_rtcp_rr_port: int, forward_rtcp_rr_ipAddr: string,
 *     reverse_h245_ipAddr_length: int, reverse_h245_port: int, reverse_h245_ipAddr: string,
 *     reverse_rtp_ipAddr_length: int, reverse_rtp_port: int, reverse_rtp_ipAddr: string, reverse_codec: int,
 *     reverse_rtcp_sr_ipAddr_length: int, reverse_rtcp_sr_port: int, reverse_rtcp_sr_ipAddr: string,
 *     reverse_rtcp_rr_ipAddr_length: int, reverse_rtcp_rr_port: int, reverse_rtcp_rr_ipAddr: string,
 *     start_time: int, end_time: int, forward_ssrc: float, forward_sr_pkt_sent: int,
 *     forward_sr_oct_sent: int, forward_sr_pkt_lost: int, forward_sr_fraction_lost: int,
 *     forward_sr_jitter: int, reverse_ssrc: float, reverse_sr_pkt_sent: int, reverse_sr_oct_sent: int,
 *     reverse_sr_pkt_lost: int, reverse_sr_fraction_lost: int, reverse_sr_jitter: int,
 *     flag: int}>}|false|null
 */
function h323_top_jitter_rec_get($connid, $index) {}

/**
 * The first such call behind an index (0: the first of all). See h323_top_jitter_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{call_rec: list<array{vers: int, index: int, forward_q931_ipAddr_length: int,
 *     forward_q931_port: int, forward_q931_ipAddr: string, forward_num: string, forward_alias: string,
 *     f_q931_ipAddr_length: int, f_q931_port: int, f_q931_ipAddr: string, f_num: string, f_alias: string,
 *     reverse_q931_ipAddr_length: int, reverse_q931_port: int, reverse_q931_ipAddr: string,
 *     reverse_num: string, reverse_alias: string, call_state: int, call_status: int, call_reference: int,
 *     call_id: string, conference_id: string, conference_goal: int, faststart: int, tunneling: int,
 *     call_type: int, forward_product_id: string, reverse_product_id: string, forward_version_id: string,
 *     reverse_version_id: string, forward_session_id: int, forward_logical_channel_num: int,
 *     reverse_session_id: int, reverse_logical_channel_num: int, forward_h245_ipAddr_length: int,
 *     forward_h245_port: int, forward_h245_ipAddr: string, forward_rtp_ipAddr_length: int,
 *     forward_rtp_port: int, forward_rtp_ipAddr: string, forward_codec: int,
 *     forward_rtcp_sr_ipAddr_length: int, forward_rtcp_sr_port: int, forward_rtcp_sr_ipAddr: string,
 *     forward_rtcp_rr_ipAddr_length: int, forward_rtcp_rr_port: int, forward_rtcp_rr_ipAddr: string,
 *     reverse_h245_ipAddr_length: int, reverse_h245_port: int, reverse_h245_ipAddr: string,
 *     reverse_rtp_ipAddr_length: int, reverse_rtp_port: int, reverse_rtp_ipAddr: string, reverse_codec: int,
 *     reverse_rtcp_sr_ipAddr_length: int, reverse_rtcp_sr_port: int, reverse_rtcp_sr_ipAddr: string,
 *     reverse_rtcp_rr_ipAddr_length: int, reverse_rtcp_rr_port: int, reverse_rtcp_rr_ipAddr: string,
 *     start_time: int, end_time: int, forward_ssrc: float, forward_sr_pkt_sent: int,
 *     forward_sr_oct_sent: int, forward_sr_pkt_lost: int, forward_sr_fraction_lost: int,
 *     forward_sr_jitter: int, reverse_ssrc: float, reverse_sr_pkt_sent: int, reverse_sr_oct_sent: int,
 *     reverse_sr_pkt_lost: int, reverse_sr_fraction_lost: int, reverse_sr_jitter: int,
 *     flag: int}>}|false|null
 */
function h323_top_jitter_rec_getnext($connid, $index) {}

/**
 * Several such calls from an index on. See h323_top_jitter_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @param int $count rows wanted
 * @return array{call_rec: list<array{vers: int, index: int, forward_q931_ipAddr_length: int,
 *     forward_q931_port: int, forward_q931_ipAddr: string, forward_num: string, forward_alias: string,
 *     f_q931_ipAddr_length: int, f_q931_port: int, f_q931_ipAddr: string, f_num: string, f_alias: string,
 *     reverse_q931_ipAddr_length: int, reverse_q931_port: int, reverse_q931_ipAddr: string,
 *     reverse_num: string, reverse_alias: string, call_state: int, call_status: int, call_reference: int,
 *     call_id: string, conference_id: string, conference_goal: int, faststart: int, tunneling: int,
 *     call_type: int, forward_product_id: string, reverse_product_id: string, forward_version_id: string,
 *     reverse_version_id: string, forward_session_id: int, forward_logical_channel_num: int,
 *     reverse_session_id: int, reverse_logical_channel_num: int, forward_h245_ipAddr_length: int,
 *     forward_h245_port: int, forward_h245_ipAddr: string, forward_rtp_ipAddr_length: int,
 *     forward_rtp_port: int, forward_rtp_ipAddr: string, forward_codec: int,
 *     forward_rtcp_sr_ipAddr_length: int, forward_rtcp_sr_port: int, forward_rtcp_sr_ipAddr: string,
 *     forward_rtcp_rr_ipAddr_length: int, forward_rtcp_rr_port: int, forward_rtcp_rr_ipAddr: string,
 *     reverse_h245_ipAddr_length: int, reverse_h245_port: int, reverse_h245_ipAddr: string,
 *     reverse_rtp_ipAddr_length: int, reverse_rtp_port: int, reverse_rtp_ipAddr: string, reverse_codec: int,
 *     reverse_rtcp_sr_ipAddr_length: int, reverse_rtcp_sr_port: int, reverse_rtcp_sr_ipAddr: string,
 *     reverse_rtcp_rr_ipAddr_length: int, reverse_rtcp_rr_port: int, reverse_rtcp_rr_ipAddr: string,
 *     start_time: int, end_time: int, forward_ssrc: float, forward_sr_pkt_sent: int,
 *     forward_sr_oct_sent: int, forward_sr_pkt_lost: int, forward_sr_fraction_lost: int,
 *     forward_sr_jitter: int, reverse_ssrc: float, reverse_sr_pkt_sent: int, reverse_sr_oct_sent: int,
 *     reverse_sr_pkt_lost: int, reverse_sr_fraction_lost: int, reverse_sr_jitter: int,
 *     flag: int}>}|false|null
 */
function h323_top_jitter_rec_getbulk($connid, $index, $count) {}

/**
 * One of the worst calls by packet loss. See h323_call_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{call_rec: list<array{vers: int, index: int, forward_q931_ipAddr_length: int,
 *     forward_q931_port: int, forward_q931_ipAddr: string, forward_num: string, forward_alias: string,
 *     f_q931_ipAddr_length: int, f_q931_port: int, f_q931_ipAddr: string, f_num: string, f_alias: string,
 *     reverse_q931_ipAddr_length: int, reverse_q931_port: int, reverse_q931_ipAddr: string,
 *     reverse_num: string, reverse_alias: string, call_state: int, call_status: int, call_reference: int,
 *     call_id: string, conference_id: string, conference_goal: int, faststart: int, tunneling: int,
 *     call_type: int, forward_product_id: string, reverse_product_id: string, forward_version_id: string,
 *     reverse_version_id: string, forward_session_id: int, forward_logical_channel_num: int,
 *     reverse_session_id: int, reverse_logical_channel_num: int, forward_h245_ipAddr_length: int,
 *     forward_h245_port: int, forward_h245_ipAddr: string, forward_rtp_ipAddr_length: int,
 *     forward_rtp_port: int, forward_rtp_ipAddr: string, forward_codec: int,
 *     forward_rtcp_sr_ipAddr_length: int, forward_rtcp_sr_port: int, forward_rtcp_sr_ipAddr: string,
 *     forward_rtcp_rr_ipAddr_length: int, forward_rtcp_rr_port: int, forward_rtcp_rr_ipAddr: string,
 *     reverse_h245_ipAddr_length: int, reverse_h245_port: int, reverse_h245_ipAddr: string,
 *     reverse_rtp_ipAddr_length: int, reverse_rtp_port: int, reverse_rtp_ipAddr: string, reverse_codec: int,
 *     reverse_rtcp_sr_ipAddr_length: int, reverse_rtcp_sr_port: int, reverse_rtcp_sr_ipAddr: string,
 *     reverse_rtcp_rr_ipAddr_length: int, reverse_rtcp_rr_port: int, reverse_rtcp_rr_ipAddr: string,
 *     start_time: int, end_time: int, forward_ssrc: float, forward_sr_pkt_sent: int,
 *     forward_sr_oct_sent: int, forward_sr_pkt_lost: int, forward_sr_fraction_lost: int,
 *     forward_sr_jitter: int, reverse_ssrc: float, reverse_sr_pkt_sent: int, reverse_sr_oct_sent: int,
 *     reverse_sr_pkt_lost: int, reverse_sr_fraction_lost: int, reverse_sr_jitter: int,
 *     flag: int}>}|false|null
 */
function h323_top_pkt_lost_rec_get($connid, $index) {}

/**
 * The first such call behind an index (0: the first of all). See h323_top_pkt_lost_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{call_rec: list<array{vers: int, index: int, forward_q931_ipAddr_length: int,
 *     forward_q931_port: int, forward_q931_ipAddr: string, forward_num: string, forward_alias: string,
 *     f_q931_ipAddr_length: int, f_q931_port: int, f_q931_ipAddr: string, f_num: string, f_alias: string,
 *     reverse_q931_ipAddr_length: int, reverse_q931_port: int, reverse_q931_ipAddr: string,
 *     reverse_num: string, reverse_alias: string, call_state: int, call_status: int, call_reference: int,
 *     call_id: string, conference_id: string, conference_goal: int, faststart: int, tunneling: int,
 *     call_type: int, forward_product_id: string, reverse_product_id: string, forward_version_id: string,
 *     reverse_version_id: string, forward_session_id: int, forward_logical_channel_num: int,
 *     reverse_session_id: int, reverse_logical_channel_num: int, forward_h245_ipAddr_length: int,
 *     forward_h245_port: int, forward_h245_ipAddr: string, forward_rtp_ipAddr_length: int,
 *     forward_rtp_port: int, forward_rtp_ipAddr: string, forward_codec: int,
 *     forward_rtcp_sr_ipAddr_length: int, forward_rtcp_sr_port: int, forward_rtcp_sr_ipAddr: string,
 *     forward_rtcp_rr_ipAddr_length: int, forward_rtcp_rr_port: int, forward_rtcp_rr_ipAddr: string,
 *     reverse_h245_ipAddr_length: int, reverse_h245_port: int, reverse_h245_ipAddr: string,
 *     reverse_rtp_ipAddr_length: int, reverse_rtp_port: int, reverse_rtp_ipAddr: string, reverse_codec: int,
 *     reverse_rtcp_sr_ipAddr_length: int, reverse_rtcp_sr_port: int, reverse_rtcp_sr_ipAddr: string,
 *     reverse_rtcp_rr_ipAddr_length: int, reverse_rtcp_rr_port: int, reverse_rtcp_rr_ipAddr: string,
 *     start_time: int, end_time: int, forward_ssrc: float, forward_sr_pkt_sent: int,
 *     forward_sr_oct_sent: int, forward_sr_pkt_lost: int, forward_sr_fraction_lost: int,
 *     forward_sr_jitter: int, reverse_ssrc: float, reverse_sr_pkt_sent: int, reverse_sr_oct_sent: int,
 *     reverse_sr_pkt_lost: int, reverse_sr_fraction_lost: int, reverse_sr_jitter: int,
 *     flag: int}>}|false|null
 */
function h323_top_pkt_lost_rec_getnext($connid, $index) {}

/**
 * Several such calls from an index on. See h323_top_pkt_lost_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @param int $count rows wanted
 * @return array{call_rec: list<array{vers: int, index: int, forward_q931_ipAddr_length: int,
 *     forward_q931_port: int, forward_q931_ipAddr: string, forward_num: string, forward_alias: string,
 *     f_q931_ipAddr_length: int, f_q931_port: int, f_q931_ipAddr: string, f_num: string, f_alias: string,
 *     reverse_q931_ipAddr_length: int, reverse_q931_port: int, reverse_q931_ipAddr: string,
 *     reverse_num: string, reverse_alias: string, call_state: int, call_status: int, call_reference: int,
 *     call_id: string, conference_id: string, conference_goal: int, faststart: int, tunneling: int,
 *     call_type: int, forward_product_id: string, reverse_product_id: string, forward_version_id: string,
 *     reverse_version_id: string, forward_session_id: int, forward_logical_channel_num: int,
 *     reverse_session_id: int, reverse_logical_channel_num: int, forward_h245_ipAddr_length: int,
 *     forward_h245_port: int, forward_h245_ipAddr: string, forward_rtp_ipAddr_length: int,
 *     forward_rtp_port: int, forward_rtp_ipAddr: string, forward_codec: int,
 *     forward_rtcp_sr_ipAddr_length: int, forward_rtcp_sr_port: int, forward_rtcp_sr_ipAddr: string,
 *     forward_rtcp_rr_ipAddr_length: int, forward_rtcp_rr_port: int, forward_rtcp_rr_ipAddr: string,
 *     reverse_h245_ipAddr_length: int, reverse_h245_port: int, reverse_h245_ipAddr: string,
 *     reverse_rtp_ipAddr_length: int, reverse_rtp_port: int, reverse_rtp_ipAddr: string, reverse_codec: int,
 *     reverse_rtcp_sr_ipAddr_length: int, reverse_rtcp_sr_port: int, reverse_rtcp_sr_ipAddr: string,
 *     reverse_rtcp_rr_ipAddr_length: int, reverse_rtcp_rr_port: int, reverse_rtcp_rr_ipAddr: string,
 *     start_time: int, end_time: int, forward_ssrc: float, forward_sr_pkt_sent: int,
 *     forward_sr_oct_sent: int, forward_sr_pkt_lost: int, forward_sr_fraction_lost: int,
 *     forward_sr_jitter: int, reverse_ssrc: float, reverse_sr_pkt_sent: int, reverse_sr_oct_sent: int,
 *     reverse_sr_pkt_lost: int, reverse_sr_fraction_lost: int, reverse_sr_jitter: int,
 *     flag: int}>}|false|null
 */
function h323_top_pkt_lost_rec_getbulk($connid, $index, $count) {}

/* ---- MGCP voice ---------------------------------------------------------------------- */

/**
 * The settings of the MGCP monitor: collection on or off, rows of each table, and its alarms. See
 * h323_config_params_get().
 *
 * @param resource|int $connid
 * @return array{enable: int, num_phone_tbl_row: int, num_call_tbl_row: int, num_top_jitter_row: int,
 *     num_top_pkt_lost_row: int, jitter_threshold: int, pkt_lost_threshold: int, jitter_alarm_enable: int,
 *     pkt_lost_alarm_enable: int}|false|null enable and the alarms: not 0 when on. Integers from 2147483648
 *     on show as negative ones. FALSE without a message when the call failed
 */
function mgcp_config_params_get($connid) {}

/**
 * Figures over all calls that the MGCP monitor saw. See sccp_aggregate_data_get().
 *
 * @param resource|int $connid
 * @return array{flag: int, num_call_mon: int, avg_pkt_lost: int, avg_jitter: int, worst_pkt_lost: int,
 *     worst_jitter: int}|false|null Integers from 2147483648 on show as negative ones. FALSE without a
 *     message when the call failed
 */
function mgcp_aggregate_data_get($connid) {}

/**
 * Sets how many rows the tables of the MGCP monitor have.
 *
 * @param resource|int $connid
 * @param int $num_phone_tbl_row
 * @param int $num_call_tbl_row
 * @param int $num_top_jitter_row
 * @param int $num_top_pkt_lost_row
 * @return int|false|null 0, whatever the agent answers; 0 too after the warning
 *     "mgcp_voice_coll_table_sizes_set: RPC: ..."; FALSE when there is no such link
 */
function mgcp_voice_coll_table_sizes_set(
    $connid,
    $num_phone_tbl_row,
    $num_call_tbl_row,
    $num_top_jitter_row,
    $num_top_pkt_lost_row
) {}

/**
 * Sets the thresholds from which the MGCP monitor raises its alarms.
 *
 * @param resource|int $connid
 * @param int $jitter_threshold
 * @param int $pkt_lost_threshold
 * @return int|false|null 0, whatever the agent answers; 0 too after the warning
 *     "mgcp_voice_coll_thresholds_set: RPC: ..."; FALSE when there is no such link
 */
function mgcp_voice_coll_thresholds_set($connid, $jitter_threshold, $pkt_lost_threshold) {}

/**
 * Starts the MGCP monitor.
 *
 * @param resource|int $connid
 * @return int|false|null 0, whatever the agent answers; 0 too after the warning
 *     "mgcp_voice_coll_enable: RPC: ..."; FALSE when there is no such link
 */
function mgcp_voice_coll_enable($connid) {}

/**
 * Stops the MGCP monitor.
 *
 * @param resource|int $connid
 * @return int|false|null 0, whatever the agent answers; 0 too after the warning
 *     "mgcp_voice_coll_disable: RPC: ..."; FALSE when there is no such link
 */
function mgcp_voice_coll_disable($connid) {}

/**
 * Switches the jitter alarm of the MGCP monitor on.
 *
 * @param resource|int $connid
 * @return int|false|null 0, whatever the agent answers; 0 too after the warning
 *     "mgcp_voice_jitter_alarm_enable: RPC: ..."; FALSE when there is no such link
 */
function mgcp_voice_jitter_alarm_enable($connid) {}

/**
 * Switches the jitter alarm of the MGCP monitor off.
 *
 * @param resource|int $connid
 * @return int|false|null 0, whatever the agent answers; 0 too after the warning
 *     "mgcp_voice_jitter_alarm_disable: RPC: ..."; FALSE when there is no such link
 */
function mgcp_voice_jitter_alarm_disable($connid) {}

/**
 * Switches the packet loss alarm of the MGCP monitor on.
 *
 * @param resource|int $connid
 * @return int|false|null 0, whatever the agent answers; 0 too after the warning
 *     "mgcp_voice_pkt_lost_alarm_enable: RPC: ..."; FALSE when there is no such link
 */
function mgcp_voice_pkt_lost_alarm_enable($connid) {}

/**
 * Switches the packet loss alarm of the MGCP monitor off.
 *
 * @param resource|int $connid
 * @return int|false|null 0, whatever the agent answers; 0 too after the warning
 *     "mgcp_voice_pkt_lost_alarm_disable: RPC: ..."; FALSE when there is no such link
 */
function mgcp_voice_pkt_lost_alarm_disable($connid) {}

/**
 * Asks the agent nothing: its MGCP monitor has no latency alarm to switch on.
 *
 * @param resource|int $connid
 * @return int|false|null 0; FALSE when there is no such link
 */
function mgcp_voice_latency_alarm_enable($connid) {}

/**
 * Asks the agent nothing: its MGCP monitor has no latency alarm to switch off.
 *
 * @param resource|int $connid
 * @return int|false|null 0; FALSE when there is no such link
 */
function mgcp_voice_latency_alarm_disable($connid) {}

/**
 * Empties the MGCP monitor's phone table.
 *
 * @param resource|int $connid
 * @return int|false|null 0, whatever the agent answers; 0 too after the warning
 *     "mgcp_voice_phone_table_clear: RPC: ..."; FALSE when there is no such link
 */
function mgcp_voice_phone_table_clear($connid) {}

/**
 * Empties the MGCP monitor's call table.
 *
 * @param resource|int $connid
 * @return int|false|null 0, whatever the agent answers; 0 too after the warning
 *     "mgcp_voice_call_table_clear: RPC: ..."; FALSE when there is no such link
 */
function mgcp_voice_call_table_clear($connid) {}

/**
 * Empties the MGCP monitor's table of the worst calls by jitter.
 *
 * @param resource|int $connid
 * @return int|false|null 0, whatever the agent answers; 0 too after the warning
 *     "mgcp_voice_top_jitter_table_clear: RPC: ..."; FALSE when there is no such link
 */
function mgcp_voice_top_jitter_table_clear($connid) {}

/**
 * Empties the MGCP monitor's table of the worst calls by packet loss.
 *
 * @param resource|int $connid
 * @return int|false|null 0, whatever the agent answers; 0 too after the warning
 *     "mgcp_voice_top_pkt_lost_table_clear: RPC: ..."; FALSE when there is no such link
 */
function mgcp_voice_top_pkt_lost_table_clear($connid) {}

/**
 * Asks the agent nothing: its MGCP monitor has no table of the worst calls by latency to empty.
 *
 * @param resource|int $connid
 * @return int|false|null 0; FALSE when there is no such link
 */
function mgcp_voice_top_latency_table_clear($connid) {}

/**
 * One phone of the MGCP monitor (RFC 3435), with its last calls.
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{phone_rec: list<array{
 *     index: int,
 *     phone_ipAddr: string,
 *     phone_num: string,
 *     phone_owner: string,
 *     phone_alias: string,
 *     flag: int,
 *     num_call_mon: int,
 *     avg_pkt_lost: int,
 *     avg_jitter: int,
 *     worst_pkt_lost: int,
 *     worst_jitter: int,
 *     num_hist_row: int,
 *     history?: list<array{index: int, caller_phone_num: string, callee_phone_num: string, caller_endpoint_id: string,
 *         callee_endpoint_id: string, caller_alias: string, callee_alias: string, caller_ip_addr: string,
 *         callee_ip_addr: string, pkt_loss: int, jitter: int, start_time: int, end_time: int,
 *         ca_address_1: string, ca_address_2: string, gw_address_1: string, gw_address_2: string,
 *         call_state: int, call_id_1: string, call_id_2: string, conns_id_1: string, conns_id_2: string,
 *         rtp_port_1: int, rtp_port_2: int, audio_codec: string, sampling_period: int, silence_sup: int,
 *         pkt_sent_1: int, pkt_sent_2: int, oct_sent_1: int, oct_sent_2: int, pkt_recv_1: int,
 *         pkt_recv_2: int, oct_recv_1: int, oct_recv_2: int, pkt_loss_1: int, pkt_loss_2: int, jitter_1: int,
 *         jitter_2: int, latency_1: int, latency_2: int, flag: int}>
 * }>}|false|null history holds at most five calls, each a row of mgcp_call_rec_get(), and is absent when
 *     num_hist_row is not positive. Integers from 2147483648 on show as negative ones. FALSE without a
 *     message when the agent has no such row and when the call failed
 */
function mgcp_phone_rec_get($connid, $index) {}

/**
 * The first phone behind an index (0: the first of all). See mgcp_phone_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{phone_rec: list<array{index: int, phone_ipAddr: string, phone_num: string,
 *     phone_owner: string, phone_alias: string, flag: int, num_call_mon: int, avg_pkt_lost: int,
 *     avg_jitter: int, worst_pkt_lost: int, worst_jitter: int, num_hist_row: int,
 *     history?: list<array{index: int, caller_phone_num: string, callee_phone_num: string,
 *     caller_endpoint_id: string, callee_endpoint_id: string, caller_alias: string, callee_alias: string,
 *     caller_ip_addr: string, callee_ip_addr: string, pkt_loss: int, jitter: int, start_time: int,
 *     end_time: int, ca_address_1: string, ca_address_2: string, gw_address_1: string, gw_address_2: string,
 *     call_state: int, call_id_1: string, call_id_2: string, conns_id_1: string, conns_id_2: string,
 *     rtp_port_1: int, rtp_port_2: int, audio_codec: string, sampling_period: int, silence_sup: int,
 *     pkt_sent_1: int, pkt_sent_2: int, oct_sent_1: int, oct_sent_2: int, pkt_recv_1: int, pkt_recv_2: int,
 *     oct_recv_1: int, oct_recv_2: int, pkt_loss_1: int, pkt_loss_2: int, jitter_1: int, jitter_2: int,
 *     latency_1: int, latency_2: int, flag: int}>}>}|false|null
 */
function mgcp_phone_rec_getnext($connid, $index) {}

/**
 * Several phones from an index on. See mgcp_phone_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @param int $count rows wanted
 * @return array{phone_rec: list<array{index: int, phone_ipAddr: string, phone_num: string,
 *     phone_owner: string, phone_alias: string, flag: int, num_call_mon: int, avg_pkt_lost: int,
 *     avg_jitter: int, worst_pkt_lost: int, worst_jitter: int, num_hist_row: int,
 *     history?: list<array{index: int, caller_phone_num: string, callee_phone_num: string,
 *     caller_endpoint_id: string, callee_endpoint_id: string, caller_alias: string, callee_alias: string,
 *     caller_ip_addr: string, callee_ip_addr: string, pkt_loss: int, jitter: int, start_time: int,
 *     end_time: int, ca_address_1: string, ca_address_2: string, gw_address_1: string, gw_address_2: string,
 *     call_state: int, call_id_1: string, call_id_2: string, conns_id_1: string, conns_id_2: string,
 *     rtp_port_1: int, rtp_port_2: int, audio_codec: string, sampling_period: int, silence_sup: int,
 *     pkt_sent_1: int, pkt_sent_2: int, oct_sent_1: int, oct_sent_2: int, pkt_recv_1: int, pkt_recv_2: int,
 *     oct_recv_1: int, oct_recv_2: int, pkt_loss_1: int, pkt_loss_2: int, jitter_1: int, jitter_2: int,
 *     latency_1: int, latency_2: int, flag: int}>}>}|false|null
 */
function mgcp_phone_rec_getbulk($connid, $index, $count) {}

/**
 * One call of the MGCP monitor (RFC 3435). Leg 1 is the calling endpoint, leg 2 the called one, each with its
 * call agent ("ca") and its gateway ("gw").
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{call_rec: list<array{
 *     index: int,
 *     caller_phone_num: string,
 *     callee_phone_num: string,
 *     caller_endpoint_id: string,
 *     callee_endpoint_id: string,
 *     caller_alias: string,
 *     callee_alias: string,
 *     caller_ip_addr: string,
 *     callee_ip_addr: string,
 *     pkt_loss: int,
 *     jitter: int,
 *     start_time: int,
 *     end_time: int,
 *     ca_address_1: string,
 *     ca_address_2: string,
 *     gw_address_1: string,
 *     gw_address_2: string,
 *     call_state: int,
 *     call_id_1: string,
 *     call_id_2: string,
 *     conns_id_1: string,
 *     conns_id_2: string,
 *     rtp_port_1: int,
 *     rtp_port_2: int,
 *     audio_codec: string,
 *     sampling_period: int,
 *     silence_sup: int,
 *     pkt_sent_1: int,
 *     pkt_sent_2: int,
 *     oct_sent_1: int,
 *     oct_sent_2: int,
 *     pkt_recv_1: int,
 *     pkt_recv_2: int,
 *     oct_recv_1: int,
 *     oct_recv_2: int,
 *     pkt_loss_1: int,
 *     pkt_loss_2: int,
 *     jitter_1: int,
 *     jitter_2: int,
 *     latency_1: int,
 *     latency_2: int,
 *     flag: int
 * }>}|false|null pkt_loss and jitter are the larger of the two legs; ca_address and gw_address as
 *     "10.1.200.7", or "-" when the agent gives none. Integers from 2147483648 on show as negative ones.
 *     FALSE without a message when the agent has no such row and when the call failed
 */
function mgcp_call_rec_get($connid, $index) {}

/**
 * The first call behind an index (0: the first of all). See mgcp_call_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{call_rec: list<array{index: int, caller_phone_num: string, callee_phone_num: string,
 *     caller_endpoint_id: string, callee_endpoint_id: string, caller_alias: string, callee_alias: string,
 *     caller_ip_addr: string, callee_ip_addr: string, pkt_loss: int, jitter: int, start_time: int,
 *     end_time: int, ca_address_1: string, ca_address_2: string, gw_address_1: string, gw_address_2: string,
 *     call_state: int, call_id_1: string, call_id_2: string, conns_id_1: string, conns_id_2: string,
 *     rtp_port_1: int, rtp_port_2: int, audio_codec: string, sampling_period: int, silence_sup: int,
 *     pkt_sent_1: int, pkt_sent_2: int, oct_sent_1: int, oct_sent_2: int, pkt_recv_1: int, pkt_recv_2: int,
 *     oct_recv_1: int, oct_recv_2: int, pkt_loss_1: int, pkt_loss_2: int, jitter_1: int, jitter_2: int,
 *     latency_1: int, latency_2: int, flag: int}>}|false|null
 */
function mgcp_call_rec_getnext($connid, $index) {}

/**
 * Several calls from an index on. See mgcp_call_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @param int $count rows wanted
 * @return array{call_rec: list<array{index: int, caller_phone_num: string, callee_phone_num: string,
 *     caller_endpoint_id: string, callee_endpoint_id: string, caller_alias: string, callee_alias: string,
 *     caller_ip_addr: string, callee_ip_addr: string, pkt_loss: int, jitter: int, start_time: int,
 *     end_time: int, ca_address_1: string, ca_address_2: string, gw_address_1: string, gw_address_2: string,
 *     call_state: int, call_id_1: string, call_id_2: string, conns_id_1: string, conns_id_2: string,
 *     rtp_port_1: int, rtp_port_2: int, audio_codec: string, sampling_period: int, silence_sup: int,
 *     pkt_sent_1: int, pkt_sent_2: int, oct_sent_1: int, oct_sent_2: int, pkt_recv_1: int, pkt_recv_2: int,
 *     oct_recv_1: int, oct_recv_2: int, pkt_loss_1: int, pkt_loss_2: int, jitter_1: int, jitter_2: int,
 *     latency_1: int, latency_2: int, flag: int}>}|false|null
 */
function mgcp_call_rec_getbulk($connid, $index, $count) {}

/**
 * One of the worst calls by jitter. See mgcp_call_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{call_rec: list<array{index: int, caller_phone_num: string, callee_phone_num: string,
 *     caller_endpoint_id: string, callee_endpoint_id: string, caller_alias: string, callee_alias: string,
 *     caller_ip_addr: string, callee_ip_addr: string, pkt_loss: int, jitter: int, start_time: int,
 *     end_time: int, ca_address_1: string, ca_address_2: string, gw_address_1: string, gw_address_2: string,
 *     call_state: int, call_id_1: string, call_id_2: string, conns_id_1: string, conns_id_2: string,
 *     rtp_port_1: int, rtp_port_2: int, audio_codec: string, sampling_period: int, silence_sup: int,
 *     pkt_sent_1: int, pkt_sent_2: int, oct_sent_1: int, oct_sent_2: int, pkt_recv_1: int, pkt_recv_2: int,
 *     oct_recv_1: int, oct_recv_2: int, pkt_loss_1: int, pkt_loss_2: int, jitter_1: int, jitter_2: int,
 *     latency_1: int, latency_2: int, flag: int}>}|false|null
 */
function mgcp_top_jitter_rec_get($connid, $index) {}

/**
 * The first such call behind an index (0: the first of all). See mgcp_top_jitter_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{call_rec: list<array{index: int, caller_phone_num: string, callee_phone_num: string,
 *     caller_endpoint_id: string, callee_endpoint_id: string, caller_alias: string, callee_alias: string,
 *     caller_ip_addr: string, callee_ip_addr: string, pkt_loss: int, jitter: int, start_time: int,
 *     end_time: int, ca_address_1: string, ca_address_2: string, gw_address_1: string, gw_address_2: string,
 *     call_state: int, call_id_1: string, call_id_2: string, conns_id_1: string, conns_id_2: string,
 *     rtp_port_1: int, rtp_port_2: int, audio_codec: string, sampling_period: int, silence_sup: int,
 *     pkt_sent_1: int, pkt_sent_2: int, oct_sent_1: int, oct_sent_2: int, pkt_recv_1: int, pkt_recv_2: int,
 *     oct_recv_1: int, oct_recv_2: int, pkt_loss_1: int, pkt_loss_2: int, jitter_1: int, jitter_2: int,
 *     latency_1: int, latency_2: int, flag: int}>}|false|null
 */
function mgcp_top_jitter_rec_getnext($connid, $index) {}

/**
 * Several such calls from an index on. See mgcp_top_jitter_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @param int $count rows wanted
 * @return array{call_rec: list<array{index: int, caller_phone_num: string, callee_phone_num: string,
 *     caller_endpoint_id: string, callee_endpoint_id: string, caller_alias: string, callee_alias: string,
 *     caller_ip_addr: string, callee_ip_addr: string, pkt_loss: int, jitter: int, start_time: int,
 *     end_time: int, ca_address_1: string, ca_address_2: string, gw_address_1: string, gw_address_2: string,
 *     call_state: int, call_id_1: string, call_id_2: string, conns_id_1: string, conns_id_2: string,
 *     rtp_port_1: int, rtp_port_2: int, audio_codec: string, sampling_period: int, silence_sup: int,
 *     pkt_sent_1: int, pkt_sent_2: int, oct_sent_1: int, oct_sent_2: int, pkt_recv_1: int, pkt_recv_2: int,
 *     oct_recv_1: int, oct_recv_2: int, pkt_loss_1: int, pkt_loss_2: int, jitter_1: int, jitter_2: int,
 *     latency_1: int, latency_2: int, flag: int}>}|false|null
 */
function mgcp_top_jitter_rec_getbulk($connid, $index, $count) {}

/**
 * One of the worst calls by packet loss. See mgcp_call_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{call_rec: list<array{index: int, caller_phone_num: string, callee_phone_num: string,
 *     caller_endpoint_id: string, callee_endpoint_id: string, caller_alias: string, callee_alias: string,
 *     caller_ip_addr: string, callee_ip_addr: string, pkt_loss: int, jitter: int, start_time: int,
 *     end_time: int, ca_address_1: string, ca_address_2: string, gw_address_1: string, gw_address_2: string,
 *     call_state: int, call_id_1: string, call_id_2: string, conns_id_1: string, conns_id_2: string,
 *     rtp_port_1: int, rtp_port_2: int, audio_codec: string, sampling_period: int, silence_sup: int,
 *     pkt_sent_1: int, pkt_sent_2: int, oct_sent_1: int, oct_sent_2: int, pkt_recv_1: int, pkt_recv_2: int,
 *     oct_recv_1: int, oct_recv_2: int, pkt_loss_1: int, pkt_loss_2: int, jitter_1: int, jitter_2: int,
 *     latency_1: int, latency_2: int, flag: int}>}|false|null
 */
function mgcp_top_pkt_lost_rec_get($connid, $index) {}

/**
 * The first such call behind an index (0: the first of all). See mgcp_top_pkt_lost_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return array{call_rec: list<array{index: int, caller_phone_num: string, callee_phone_num: string,
 *     caller_endpoint_id: string, callee_endpoint_id: string, caller_alias: string, callee_alias: string,
 *     caller_ip_addr: string, callee_ip_addr: string, pkt_loss: int, jitter: int, start_time: int,
 *     end_time: int, ca_address_1: string, ca_address_2: string, gw_address_1: string, gw_address_2: string,
 *     call_state: int, call_id_1: string, call_id_2: string, conns_id_1: string, conns_id_2: string,
 *     rtp_port_1: int, rtp_port_2: int, audio_codec: string, sampling_period: int, silence_sup: int,
 *     pkt_sent_1: int, pkt_sent_2: int, oct_sent_1: int, oct_sent_2: int, pkt_recv_1: int, pkt_recv_2: int,
 *     oct_recv_1: int, oct_recv_2: int, pkt_loss_1: int, pkt_loss_2: int, jitter_1: int, jitter_2: int,
 *     latency_1: int, latency_2: int, flag: int}>}|false|null
 */
function mgcp_top_pkt_lost_rec_getnext($connid, $index) {}

/**
 * Several such calls from an index on. See mgcp_top_pkt_lost_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @param int $count rows wanted
 * @return array{call_rec: list<array{index: int, caller_phone_num: string, callee_phone_num: string,
 *     caller_endpoint_id: string, callee_endpoint_id: string, caller_alias: string, callee_alias: string,
 *     caller_ip_addr: string, callee_ip_addr: string, pkt_loss: int, jitter: int, start_time: int,
 *     end_time: int, ca_address_1: string, ca_address_2: string, gw_address_1: string, gw_address_2: string,
 *     call_state: int, call_id_1: string, call_id_2: string, conns_id_1: string, conns_id_2: string,
 *     rtp_port_1: int, rtp_port_2: int, audio_codec: string, sampling_period: int, silence_sup: int,
 *     pkt_sent_1: int, pkt_sent_2: int, oct_sent_1: int, oct_sent_2: int, pkt_recv_1: int, pkt_recv_2: int,
 *     oct_recv_1: int, oct_recv_2: int, pkt_loss_1: int, pkt_loss_2: int, jitter_1: int, jitter_2: int,
 *     latency_1: int, latency_2: int, flag: int}>}|false|null
 */
function mgcp_top_pkt_lost_rec_getbulk($connid, $index, $count) {}

/**
 * Asks the agent nothing: its MGCP monitor has no table of the worst calls by latency.
 *
 * @param resource|int $connid
 * @param int $index
 * @return false|null
 */
function mgcp_top_latency_rec_get($connid, $index) {}

/**
 * See mgcp_top_latency_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @return false|null
 */
function mgcp_top_latency_rec_getnext($connid, $index) {}

/**
 * See mgcp_top_latency_rec_get().
 *
 * @param resource|int $connid
 * @param int $index
 * @param int $count
 * @return false|null
 */
function mgcp_top_latency_rec_getbulk($connid, $index, $count) {}

/* ---- SNMP communities ---------------------------------------------------------------- */

/**
 * One community of the appliance's SNMP agent, by its text.
 *
 * @param resource|int $connid
 * @param string $communityString at most 255 bytes
 * @return array{
 *     0: int,
 *     status: int,
 *     communityString: string,
 *     privs: int
 * }|false|null 0 and status: the agent's result code; privs is COMM_RO or COMM_RW. FALSE without a message
 *     when the agent has no such community, after the warning "art_rpt_get: RPC: ..." when the call failed
 */
function rmon_community_get($connid, $communityString) {}

/**
 * The first community behind a text (an empty one: the first of all). See rmon_community_get().
 *
 * @param resource|int $connid
 * @param string $communityString
 * @return array{0: int, status: int, communityString: string, privs: int}|false|null
 */
function rmon_community_getnext($connid, $communityString) {}

/**
 * Several communities behind a text. See rmon_community_get().
 *
 * @param resource|int $connid
 * @param string $communityString
 * @param int $count rows wanted
 * @return list<array{0: int, status: int, communityString: string, privs: int}>|false|null the rows;
 *     FALSE without a message when there is none
 */
function rmon_community_getbulk($connid, $communityString, $count) {}

/**
 * Creates a community or changes its rights.
 *
 * @param resource|int $connid
 * @param string $communityString at most 255 bytes
 * @param int $privs COMM_RO or COMM_RW; with any other value the function is FALSE without a message
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "community_set: RPC: ..."
 */
function rmon_community_set($connid, $communityString, $privs) {}

/**
 * Deletes a community.
 *
 * @param resource|int $connid
 * @param string $communityString at most 255 bytes
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "community_set: RPC: ..."
 */
function rmon_community_delete($connid, $communityString) {}

/* ---- NetFlow devices, data sources and flow paths ------------------------------------ */

/**
 * One of the devices that send their NetFlow data to the agent, by its address.
 *
 * @param resource|int $connid
 * @param array $address one integer for each byte, at most 16 ("too many (...) elements in addr!" and NULL);
 *     other elements are converted to integers in the caller's array. Anything but an array is an empty
 *     address.
 * @prefer-ref $address
 * @return array{devices: list<array{
 *     address: list<int>,
 *     addressLength: int,
 *     deviceName: string,
 *     commString: string,
 *     flag: int
 * }>}|false|null all rows that the agent answered with, none included; commString is the device's SNMP
 *     community, flag the agent's flag word. FALSE without a message when the call failed
 */
function rmon_nde_device_get($connid, $address) {}

/**
 * The first device behind an address (an empty one: the first of all). See rmon_nde_device_get().
 *
 * @param resource|int $connid
 * @param array $address
 * @prefer-ref $address
 * @return array{devices: list<array{address: list<int>, addressLength: int, deviceName: string,
 *     commString: string, flag: int}>}|false|null all rows that the agent answered with, as a list under the
 *     same key
 */
function rmon_nde_device_getnext($connid, $address) {}

/**
 * Several devices behind an address. See rmon_nde_device_get().
 *
 * @param resource|int $connid
 * @param array $address
 * @prefer-ref $address
 * @param int $count rows wanted
 * @return array{devices: list<array{address: list<int>, addressLength: int, deviceName: string,
 *     commString: string, flag: int}>}|false|null the rows, as a list under the same key
 */
function rmon_nde_device_getbulk($connid, $address, $count) {}

/**
 * Adds a device or changes its texts.
 *
 * @param resource|int $connid
 * @param array $address one integer for each byte, at most 16 ("too many (...) elements in addr!" and FALSE);
 *     other elements are converted to integers in the caller's array. It must be an array ("missing device
 *     address!" and FALSE).
 * @prefer-ref $address
 * @param string $commString the device's SNMP community; at most 80 bytes, a longer text is cut
 * @param string $deviceName at most 80 bytes, a longer text is cut
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_nde_device_set: RPC: ..."
 */
function rmon_nde_device_set($connid, $address, $commString, $deviceName) {}

/**
 * Deletes a device.
 *
 * @param resource|int $connid
 * @param array $address as rmon_nde_device_set() takes it
 * @prefer-ref $address
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_nde_device_del: RPC: ..."
 */
function rmon_nde_device_del($connid, $address) {}

/**
 * One of a device's data sources, by its number.
 *
 * @param resource|int $connid
 * @param array $address as rmon_nde_device_get() takes it
 * @prefer-ref $address
 * @param int $datasrcIndex
 * @return array{datasrcs: list<array{
 *     address: list<int>,
 *     addressLength: int,
 *     deviceName: string,
 *     datasrcName: string,
 *     datasrcIndex: int,
 *     flag: int
 * }>}|false|null all rows that the agent answered with, none included; flag is the agent's flag word. FALSE
 *     without a message when the call failed
 */
function rmon_nde_datasrc_get($connid, $address, $datasrcIndex) {}

/**
 * The first data source behind an address and a number (an empty one and 0: the first of all). See
 * rmon_nde_datasrc_get().
 *
 * @param resource|int $connid
 * @param array $address
 * @prefer-ref $address
 * @param int $datasrcIndex
 * @return array{datasrcs: list<array{address: list<int>, addressLength: int, deviceName: string,
 *     datasrcName: string, datasrcIndex: int, flag: int}>}|false|null all rows that the agent answered with,
 *     as a list under the same key
 */
function rmon_nde_datasrc_getnext($connid, $address, $datasrcIndex) {}

/**
 * Several data sources behind an address and a number. See rmon_nde_datasrc_get().
 *
 * @param resource|int $connid
 * @param array $address
 * @prefer-ref $address
 * @param int $datasrcIndex
 * @param int $count rows wanted
 * @return array{datasrcs: list<array{address: list<int>, addressLength: int, deviceName: string,
 *     datasrcName: string, datasrcIndex: int, flag: int}>}|false|null the rows, as a list under the same key
 */
function rmon_nde_datasrc_getbulk($connid, $address, $datasrcIndex, $count) {}

/**
 * Adds a data source to a device; the agent gives it its number.
 *
 * @param resource|int $connid
 * @param array $address as rmon_nde_device_set() takes it
 * @prefer-ref $address
 * @param string $datasrcName at most 80 bytes, a longer text is cut
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_nde_datasrc_set: RPC: ..."
 */
function rmon_nde_datasrc_set($connid, $address, $datasrcName) {}

/**
 * Changes the name of a data source.
 *
 * @param resource|int $connid
 * @param array $address as rmon_nde_device_set() takes it
 * @prefer-ref $address
 * @param int $datasrcIndex
 * @param string $datasrcName at most 80 bytes, a longer text is cut
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_nde_datasrc_del: RPC: ..."
 */
function rmon_nde_datasrc_mod($connid, $address, $datasrcIndex, $datasrcName) {}

/**
 * Deletes a data source.
 *
 * @param resource|int $connid
 * @param array $address as rmon_nde_device_set() takes it
 * @prefer-ref $address
 * @param int $datasrcIndex
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_nde_datasrc_del: RPC: ..."
 */
function rmon_nde_datasrc_del($connid, $address, $datasrcIndex) {}

/**
 * One of a data source's flow paths: a pair of the device's interfaces.
 *
 * @param resource|int $connid
 * @param array $address as rmon_nde_device_get() takes it
 * @prefer-ref $address
 * @param int $datasrcIndex
 * @param int $inputIndex an interface index
 * @param int $outputIndex an interface index
 * @return array{flowPaths: list<array{
 *     address: list<int>,
 *     addressLength: int,
 *     deviceName: string,
 *     datasrcIndex: int,
 *     inputIndex: int,
 *     outputIndex: int
 * }>}|false|null all rows that the agent answered with, none included. FALSE without a message when the call
 *     failed
 */
function rmon_nde_flow_path_get($connid, $address, $datasrcIndex, $inputIndex, $outputIndex) {}

/**
 * The first flow path behind an address and three numbers (an empty one and 0: the first of all). See
 * rmon_nde_flow_path_get().
 *
 * @param resource|int $connid
 * @param array $address
 * @prefer-ref $address
 * @param int $datasrcIndex
 * @param int $inputIndex
 * @param int $outputIndex
 * @return array{flowPaths: list<array{address: list<int>, addressLength: int, deviceName: string,
 *     datasrcIndex: int, inputIndex: int, outputIndex: int}>}|false|null all rows that the agent answered
 *     with, as a list under the same key
 */
function rmon_nde_flow_path_getnext($connid, $address, $datasrcIndex, $inputIndex, $outputIndex) {}

/**
 * Several flow paths behind an address and three numbers. See rmon_nde_flow_path_get().
 *
 * @param resource|int $connid
 * @param array $address
 * @prefer-ref $address
 * @param int $datasrcIndex
 * @param int $inputIndex
 * @param int $outputIndex
 * @param int $count rows wanted
 * @return array{flowPaths: list<array{address: list<int>, addressLength: int, deviceName: string,
 *     datasrcIndex: int, inputIndex: int, outputIndex: int}>}|false|null the rows, as a list under the same
 *     key
 */
function rmon_nde_flow_path_getbulk($connid, $address, $datasrcIndex, $inputIndex, $outputIndex, $count) {}

/**
 * Adds a flow path to a data source.
 *
 * @param resource|int $connid
 * @param array $address as rmon_nde_device_set() takes it
 * @prefer-ref $address
 * @param int $datasrcIndex
 * @param int $inputIndex an interface index
 * @param int $outputIndex an interface index
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_nde_flow_path_set: RPC: ..."
 */
function rmon_nde_flow_path_set($connid, $address, $datasrcIndex, $inputIndex, $outputIndex) {}

/**
 * Deletes a flow path.
 *
 * @param resource|int $connid
 * @param array $address as rmon_nde_device_set() takes it
 * @prefer-ref $address
 * @param int $datasrcIndex
 * @param int $inputIndex an interface index
 * @param int $outputIndex an interface index
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_nde_datasrc_del: RPC: ..."
 */
function rmon_nde_flow_path_del($connid, $address, $datasrcIndex, $inputIndex, $outputIndex) {}

/* ---- NetFlow learned devices --------------------------------------------------------- */

/**
 * One of the devices that the agent learned from the NetFlow data it receives, by its address.
 *
 * @param resource|int $connid
 * @param array $address as rmon_nde_device_get() takes it
 * @prefer-ref $address
 * @return array{devices: list<array{
 *     address: list<int>,
 *     addressLength: int,
 *     timeLastNdePkt: int,
 *     numNdePkts: int
 * }>}|false|null all rows that the agent answered with, none included; timeLastNdePkt in the agent's unit of
 *     time. FALSE without a message when the call failed
 */
function rmon_nde_learned_dev_get($connid, $address) {}

/**
 * The first learned device behind an address (an empty one: the first of all). See
 * rmon_nde_learned_dev_get().
 *
 * @param resource|int $connid
 * @param array $address
 * @prefer-ref $address
 * @return array{devices: list<array{address: list<int>, addressLength: int, timeLastNdePkt: int,
 *     numNdePkts: int}>}|false|null all rows that the agent answered with, as a list under the same key
 */
function rmon_nde_learned_dev_getnext($connid, $address) {}

/**
 * Several learned devices behind an address. See rmon_nde_learned_dev_get().
 *
 * @param resource|int $connid
 * @param array $address
 * @prefer-ref $address
 * @param int $count rows wanted
 * @return array{devices: list<array{address: list<int>, addressLength: int, timeLastNdePkt: int,
 *     numNdePkts: int}>}|false|null the rows, as a list under the same key
 */
function rmon_nde_learned_dev_getbulk($connid, $address, $count) {}

/**
 * Switches the learning of devices on.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_nde_learned_dev_enable: RPC: ..."
 */
function rmon_nde_learned_dev_enable($connid) {}

/**
 * Switches the learning of devices off.
 *
 * @param resource|int $connid
 * @return int|false|null the agent's answer: 0 done, 2 noSuchName, 3 badValue, 5 genErr; FALSE after the
 *     warning "rmon_nde_learned_dev_disable: RPC: ..."
 */
function rmon_nde_learned_dev_disable($connid) {}

/**
 * Whether devices are learned, and since when.
 *
 * @param resource|int $connid
 * @return array{state: int, startTime: int}|false|null startTime in the agent's unit of time; FALSE after the
 *     warning "rmon_nde_learned_dev_status: RPC: ..."
 */
function rmon_nde_learned_dev_status($connid) {}

/**
 * One of a learned device's interfaces.
 *
 * @param resource|int $connid
 * @param array $address as rmon_nde_device_get() takes it
 * @prefer-ref $address
 * @param int $ifIndex
 * @return array{interfaces: list<array{ifIndex: int, dirFlag: int}>}|false|null all rows that the agent
 *     answered with, none included. FALSE without a message when the call failed
 */
function rmon_nde_learned_dev_intf_get($connid, $address, $ifIndex) {}

/**
 * The first interface behind an address and an index (an empty one and 0: the first of all). See
 * rmon_nde_learned_dev_intf_get().
 *
 * @param resource|int $connid
 * @param array $address
 * @prefer-ref $address
 * @param int $ifIndex
 * @return array{interfaces: list<array{ifIndex: int, dirFlag: int}>}|false|null all rows that the agent
 *     answered with, as a list under the same key
 */
function rmon_nde_learned_dev_intf_getnext($connid, $address, $ifIndex) {}

/**
 * Several interfaces behind an address and an index. See rmon_nde_learned_dev_intf_get().
 *
 * @param resource|int $connid
 * @param array $address
 * @prefer-ref $address
 * @param int $ifIndex
 * @param int $count rows wanted
 * @return array{interfaces: list<array{ifIndex: int, dirFlag: int}>}|false|null the rows, as a list under
 *     the same key
 */
function rmon_nde_learned_dev_intf_getbulk($connid, $address, $ifIndex, $count) {}

/* ---- address conversion and target identity ------------------------------------------ */

/**
 * The bytes of an address given as a text.
 *
 * @param int $family AF_INET or AF_INET6
 * @param string $text such as "10.1.2.3" or "fe80::1"
 * @return list<int>|false|null 4 or 16 integers in network order; FALSE after a warning ("rmon_inet_pton:
 *     inet_pton(AF_INET, ...) failed!", "rmon_inet_pton: inet_pton(AF_INET6, ...) failed!", "rmon_inet_pton:
 *     unsupported address family!")
 */
function rmon_inet_pton($family, $text) {}

/**
 * The text of an address given as bytes.
 *
 * @param int $family AF_INET or AF_INET6
 * @param array $bytes at most 16 integers, of which the low bytes are taken; missing ones are 0
 * @return string|false|null NULL after a warning ("rmon_inet_pton: addr is not array!", "rmon_inet_pton: too
 *     many elements in array!", "rmon_inet_pton: arr el not LONG!", "rmon_inet_ntop: inet_pton(AF_INET)
 *     failed!", "rmon_inet_ntop: inet_pton(AF_INET6) failed!"), FALSE after "rmon_inet_pton: unsupported
 *     address family!"
 */
function rmon_inet_ntop($family, $bytes) {}

/**
 * The kind of appliance, one of the NORV_TARGET constants. Arguments are ignored.
 *
 * The appliance's settings file is read until a kind was found in it; the warning "unable to read
 * norv_settings file!" tells that it can't be.
 *
 * @return int -1 when it isn't known
 */
function norv_target_id() {}

/**
 * The description of the product. See norv_target_id() for where it comes from.
 *
 * @return string empty when it isn't known
 */
function norv_prod_descr() {}

/**
 * The number of the product. See norv_target_id() for where it comes from.
 *
 * @return string empty when it isn't known
 */
function norv_prod_no() {}
