<?php

/** @generate-function-entries */

/* ---- connections ------------------------------------------------------------------------ */

/**
 * Opens a link to the agent on a host, over TCP. It lives until it is closed,
 * at the latest until the request ends. A second call with the same host text
 * in one request returns the same link.
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
 * @return int|false|null the agent's answer; FALSE after the warning "rmon_system_set: RPC: ..."
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
 * @return array|false|null
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
 * @return array|false|null
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
 * @return int|false|null the agent's answer; FALSE after the warning "rmon_etherstats_set: RPC: ..."
 */
function rmon_etherstats_set($connid, $etherStatsIndex, $etherStatsDataSource, $etherStatsOwner, $etherStatsStatus) {}

/* ---- history ------------------------------------------------------------------------- */

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
 * @return array|false|null
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
 * @return int|false|null the agent's answer; FALSE after the warning "rmon_host_ctl_set: RPC: ..."
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
 * @return array|false|null
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
 * @return list<array>|false|null the rows; FALSE without a message when there is none
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
 * @return array|false|null
 */
function rmon_hosttime_getnext($connid, $hostTimeIndex, $hostTimeCreationOrder) {}

/**
 * Several hosts behind a creation order. See rmon_hosttime_get().
 *
 * @param resource|int $connid
 * @param int $hostTimeIndex
 * @param int $hostTimeCreationOrder
 * @param int $count rows wanted
 * @return list<array>|false|null the rows; FALSE without a message when there is none
 */
function rmon_hosttime_getbulk($connid, $hostTimeIndex, $hostTimeCreationOrder, $count) {}

/* ---- host Top-N ---------------------------------------------------------------------- */

/* ---- matrix -------------------------------------------------------------------------- */

/* ---- protocol directory -------------------------------------------------------------- */

/* ---- protocol distribution ----------------------------------------------------------- */

/* ---- address map --------------------------------------------------------------------- */

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
 *     largest table sizes are rows (-1: as many as the agent can keep); hlHostControlStatus a RowStatus
 *     (1 active, 2 notInService, 3 notReady). FALSE after the warning "hlhost_ctl_get: RPC: ..."
 */
function rmon_hlhost_ctl_get($connid, $hlHostControlIndex) {}

/**
 * The first row of the higher-layer hosts' control table behind an index (0: the first of all). See
 * rmon_hlhost_ctl_get().
 *
 * @param resource|int $connid
 * @param int $hlHostControlIndex
 * @return array|false|null
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
 * @param int $hlHostControlStatus a RowStatus: 1 active, 2 notInService, 4 createAndGo, 5 createAndWait,
 *     6 destroy
 * @return int|false|null the agent's answer; FALSE after the warning "rmon_hlhost_ctl_set: RPC: ..."
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
 * @return array|false|null
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
 * @return list<array>|false|null the rows; FALSE without a message when there is none
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
 * @return array|false|null
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
 * @return list<array>|false|null the rows; FALSE without a message when there is none
 */
function rmon_alhost_getbulk($connid, $hlHostControlIndex, $alHostTimeMark, $protocolDirLocalIndex, $nlHostAddress, $protocolDirLocalIndex2, $count) {}

/* ---- higher-layer matrix ------------------------------------------------------------- */

/* ---- alarms, events and log ---------------------------------------------------------- */

/* ---- trap destinations and MIB variables --------------------------------------------- */

/* ---- local host name ----------------------------------------------------------------- */

/* ---- protocol descriptions ----------------------------------------------------------- */

/* ---- network configuration ----------------------------------------------------------- */

/* ---- DSMON statistics ---------------------------------------------------------------- */

/* ---- DSMON aggregation --------------------------------------------------------------- */

/* ---- DSMON protocol distribution and hosts ------------------------------------------- */

/* ---- DSMON matrix -------------------------------------------------------------------- */

/* ---- SMON VLAN and priority statistics ----------------------------------------------- */

/* ---- filters and channels ------------------------------------------------------------ */

/* ---- packet capture ------------------------------------------------------------------ */

/* ---- application response time ------------------------------------------------------- */

/* ---- self-test -------------------------------------------------------------------------- */

/**
 * Tells that the module is loaded.
 *
 * @param string $arg a module's name
 * @return string|null "Congratulations, you have successfully loaded module NAME in PHP"
 */
function confirm_rmon_compiled($arg) {}

/* ---- SCCP voice ---------------------------------------------------------------------- */

/* ---- H.323 voice --------------------------------------------------------------------- */

/* ---- MGCP voice ---------------------------------------------------------------------- */

/* ---- SNMP communities ---------------------------------------------------------------- */

/* ---- NetFlow devices, data sources and flow paths ------------------------------------ */

/* ---- NetFlow learned devices --------------------------------------------------------- */

/* ---- address conversion and target identity ------------------------------------------ */
