// SPDX-License-Identifier: MIT
/* This is a generated file, edit the .stub.php file instead.
 * Stub hash: 0a401ea48b1c982fd4e5940d760bd703c522281e */

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_connect, 0, 0, 1)
	ZEND_ARG_INFO(0, host)
ZEND_END_ARG_INFO()

#define arginfo_rmon_pconnect arginfo_rmon_connect

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_close, 0, 0, 0)
	ZEND_ARG_INFO(0, link)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_system_get, 0, 0, 1)
	ZEND_ARG_INFO(0, connid)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_system_set, 0, 0, 4)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, sysContact)
	ZEND_ARG_INFO(0, sysName)
	ZEND_ARG_INFO(0, sysLocation)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_ifentry_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, ifIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_ifentry_getnext arginfo_rmon_ifentry_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_etherstats_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, etherStatsIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_etherstats_getnext arginfo_rmon_etherstats_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_etherstats_set, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, etherStatsIndex)
	ZEND_ARG_INFO(0, etherStatsDataSource)
	ZEND_ARG_INFO(0, etherStatsOwner)
	ZEND_ARG_INFO(0, etherStatsStatus)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_history_ctl_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, historyControlIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_history_ctl_getnext arginfo_rmon_history_ctl_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_history_ctl_set, 0, 0, 7)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, historyControlIndex)
	ZEND_ARG_INFO(0, historyControlDataSource)
	ZEND_ARG_INFO(0, historyControlBucketsRequested)
	ZEND_ARG_INFO(0, historyControlInterval)
	ZEND_ARG_INFO(0, historyControlOwner)
	ZEND_ARG_INFO(0, historyControlStatus)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_etherhistory_get, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, etherHistoryIndex)
	ZEND_ARG_INFO(0, etherHistorySampleIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_etherhistory_getnext arginfo_rmon_etherhistory_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_etherhistory_getbulk, 0, 0, 4)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, etherHistoryIndex)
	ZEND_ARG_INFO(0, etherHistorySampleIndex)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_host_ctl_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hostControlIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_host_ctl_getnext arginfo_rmon_host_ctl_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_host_ctl_set, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hostControlIndex)
	ZEND_ARG_INFO(0, hostControlDataSource)
	ZEND_ARG_INFO(0, hostControlOwner)
	ZEND_ARG_INFO(0, hostControlStatus)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_host_get, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hostIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, hostAddress)
ZEND_END_ARG_INFO()

#define arginfo_rmon_host_getnext arginfo_rmon_host_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_host_getbulk, 0, 0, 4)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hostIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, hostAddress)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_hosttime_get, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hostTimeIndex)
	ZEND_ARG_INFO(0, hostTimeCreationOrder)
ZEND_END_ARG_INFO()

#define arginfo_rmon_hosttime_getnext arginfo_rmon_hosttime_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_hosttime_getbulk, 0, 0, 4)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hostTimeIndex)
	ZEND_ARG_INFO(0, hostTimeCreationOrder)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_hosttopn_ctl_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hostTopNControlIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_hosttopn_ctl_getnext arginfo_rmon_hosttopn_ctl_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_hosttopn_ctl_set, 0, 0, 8)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hostTopNControlIndex)
	ZEND_ARG_INFO(0, hostTopNHostIndex)
	ZEND_ARG_INFO(0, hostTopNRateBase)
	ZEND_ARG_INFO(0, hostTopNTimeRemaining)
	ZEND_ARG_INFO(0, hostTopNRequestedSize)
	ZEND_ARG_INFO(0, hostTopNOwner)
	ZEND_ARG_INFO(0, hostTopNStatus)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_hosttopn_get, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hostTopNReport)
	ZEND_ARG_INFO(0, hostTopNIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_hosttopn_getnext arginfo_rmon_hosttopn_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_hosttopn_getbulk, 0, 0, 4)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hostTopNReport)
	ZEND_ARG_INFO(0, hostTopNIndex)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_matrix_ctl_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, matrixControlIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_matrix_ctl_getnext arginfo_rmon_matrix_ctl_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_matrix_ctl_set, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, matrixControlIndex)
	ZEND_ARG_INFO(0, matrixControlDataSource)
	ZEND_ARG_INFO(0, matrixControlOwner)
	ZEND_ARG_INFO(0, matrixControlStatus)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_matrix_sd_get, 0, 0, 4)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, matrixSDIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, matrixSDSourceAddress)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, matrixSDDestAddress)
ZEND_END_ARG_INFO()

#define arginfo_rmon_matrix_sd_getnext arginfo_rmon_matrix_sd_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_matrix_sd_getbulk, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, matrixSDIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, matrixSDSourceAddress)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, matrixSDDestAddress)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_matrix_ds_get, 0, 0, 4)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, matrixDSIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, matrixDSSourceAddress)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, matrixDSDestAddress)
ZEND_END_ARG_INFO()

#define arginfo_rmon_matrix_ds_getnext arginfo_rmon_matrix_ds_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_matrix_ds_getbulk, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, matrixDSIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, matrixDSSourceAddress)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, matrixDSDestAddress)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

#define arginfo_rmon_pdir_lastchange_get arginfo_rmon_system_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_pdir_get, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, protocolDirID)
	ZEND_ARG_INFO(0, protocolDirParameters)
ZEND_END_ARG_INFO()

#define arginfo_rmon_pdir_getnext arginfo_rmon_pdir_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_pdir_getbulk, 0, 0, 4)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, protocolDirID)
	ZEND_ARG_INFO(0, protocolDirParameters)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_pdir_set, 0, 0, 10)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, protocolDirID)
	ZEND_ARG_INFO(0, protocolDirParameters)
	ZEND_ARG_INFO(0, protocolDirDescr)
	ZEND_ARG_INFO(0, protocolDirAddressMapConfig)
	ZEND_ARG_INFO(0, protocolDirHostConfig)
	ZEND_ARG_INFO(0, protocolDirMatrixConfig)
	ZEND_ARG_INFO(0, protocolDirArtConfig)
	ZEND_ARG_INFO(0, protocolDirOwner)
	ZEND_ARG_INFO(0, protocolDirStatus)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_pdir_byidx_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_pdir_byidx_getnext arginfo_rmon_pdir_byidx_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_pdist_ctl_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, protocolDistControlIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_pdist_ctl_getnext arginfo_rmon_pdist_ctl_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_pdist_ctl_set, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, protocolDistControlIndex)
	ZEND_ARG_INFO(0, protocolDistControlDataSource)
	ZEND_ARG_INFO(0, protocolDistControlOwner)
	ZEND_ARG_INFO(0, protocolDistControlStatus)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_pdist_stats_get, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, protocolDistControlIndex)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_pdist_stats_getnext arginfo_rmon_pdist_stats_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_pdist_stats_getbulk, 0, 0, 4)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, protocolDistControlIndex)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

#define arginfo_rmon_pdist_stats_getothers arginfo_rmon_pdist_ctl_get

#define arginfo_rmon_addrmap_scalars_get arginfo_rmon_system_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_addrmap_scalars_set, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, addressMapMaxDesiredEntries)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_addrmap_ctl_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, addressMapControlIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_addrmap_ctl_getnext arginfo_rmon_addrmap_ctl_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_addrmap_ctl_set, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, addressMapControlIndex)
	ZEND_ARG_INFO(0, addressMapControlDataSource)
	ZEND_ARG_INFO(0, addressMapControlOwner)
	ZEND_ARG_INFO(0, addressMapControlStatus)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_addrmap_entry_get, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, addressMapTimeMark)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, addressMapNetworkAddress)
	ZEND_ARG_INFO(0, addressMapSource)
ZEND_END_ARG_INFO()

#define arginfo_rmon_addrmap_entry_getnext arginfo_rmon_addrmap_entry_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_addrmap_entry_getbulk, 0, 0, 6)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, addressMapTimeMark)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, addressMapNetworkAddress)
	ZEND_ARG_INFO(0, addressMapSource)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_hlhost_ctl_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hlHostControlIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_hlhost_ctl_getnext arginfo_rmon_hlhost_ctl_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_hlhost_ctl_set, 0, 0, 7)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hlHostControlIndex)
	ZEND_ARG_INFO(0, hlHostControlDataSource)
	ZEND_ARG_INFO(0, hlHostControlNlMaxDesiredEntries)
	ZEND_ARG_INFO(0, hlHostControlAlMaxDesiredEntries)
	ZEND_ARG_INFO(0, hlHostControlOwner)
	ZEND_ARG_INFO(0, hlHostControlStatus)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nlhost_get, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hlHostControlIndex)
	ZEND_ARG_INFO(0, nlHostTimeMark)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, nlHostAddress)
ZEND_END_ARG_INFO()

#define arginfo_rmon_nlhost_getnext arginfo_rmon_nlhost_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nlhost_getbulk, 0, 0, 6)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hlHostControlIndex)
	ZEND_ARG_INFO(0, nlHostTimeMark)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, nlHostAddress)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_alhost_get, 0, 0, 6)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hlHostControlIndex)
	ZEND_ARG_INFO(0, alHostTimeMark)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, nlHostAddress)
	ZEND_ARG_INFO(0, protocolDirLocalIndex2)
ZEND_END_ARG_INFO()

#define arginfo_rmon_alhost_getnext arginfo_rmon_alhost_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_alhost_getbulk, 0, 0, 7)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hlHostControlIndex)
	ZEND_ARG_INFO(0, alHostTimeMark)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, nlHostAddress)
	ZEND_ARG_INFO(0, protocolDirLocalIndex2)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_hlmatrix_ctl_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hlMatrixControlIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_hlmatrix_ctl_getnext arginfo_rmon_hlmatrix_ctl_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_hlmatrix_ctl_set, 0, 0, 7)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hlMatrixControlIndex)
	ZEND_ARG_INFO(0, hlMatrixControlDataSource)
	ZEND_ARG_INFO(0, hlMatrixControlNlMaxDesiredEntries)
	ZEND_ARG_INFO(0, hlMatrixControlAlMaxDesiredEntries)
	ZEND_ARG_INFO(0, hlMatrixControlOwner)
	ZEND_ARG_INFO(0, hlMatrixControlStatus)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nlmatrix_sd_get, 0, 0, 6)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hlMatrixControlIndex)
	ZEND_ARG_INFO(0, nlMatrixSDTimeMark)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, sourceAddress)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, destAddress)
ZEND_END_ARG_INFO()

#define arginfo_rmon_nlmatrix_sd_getnext arginfo_rmon_nlmatrix_sd_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nlmatrix_sd_getbulk, 0, 0, 7)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hlMatrixControlIndex)
	ZEND_ARG_INFO(0, nlMatrixSDTimeMark)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, sourceAddress)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, destAddress)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nlmatrix_ds_get, 0, 0, 6)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hlMatrixControlIndex)
	ZEND_ARG_INFO(0, nlMatrixDSTimeMark)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, sourceAddress)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, destAddress)
ZEND_END_ARG_INFO()

#define arginfo_rmon_nlmatrix_ds_getnext arginfo_rmon_nlmatrix_ds_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nlmatrix_ds_getbulk, 0, 0, 7)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hlMatrixControlIndex)
	ZEND_ARG_INFO(0, nlMatrixDSTimeMark)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, sourceAddress)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, destAddress)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_almatrix_sd_get, 0, 0, 7)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hlMatrixControlIndex)
	ZEND_ARG_INFO(0, alMatrixSDTimeMark)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, sourceAddress)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, destAddress)
	ZEND_ARG_INFO(0, protocolDirLocalIndex2)
ZEND_END_ARG_INFO()

#define arginfo_rmon_almatrix_sd_getnext arginfo_rmon_almatrix_sd_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_almatrix_sd_getbulk, 0, 0, 8)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hlMatrixControlIndex)
	ZEND_ARG_INFO(0, alMatrixSDTimeMark)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, sourceAddress)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, destAddress)
	ZEND_ARG_INFO(0, protocolDirLocalIndex2)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_almatrix_ds_get, 0, 0, 7)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hlMatrixControlIndex)
	ZEND_ARG_INFO(0, alMatrixDSTimeMark)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, sourceAddress)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, destAddress)
	ZEND_ARG_INFO(0, protocolDirLocalIndex2)
ZEND_END_ARG_INFO()

#define arginfo_rmon_almatrix_ds_getnext arginfo_rmon_almatrix_ds_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_almatrix_ds_getbulk, 0, 0, 8)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hlMatrixControlIndex)
	ZEND_ARG_INFO(0, alMatrixDSTimeMark)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, sourceAddress)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, destAddress)
	ZEND_ARG_INFO(0, protocolDirLocalIndex2)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_alarm_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, alarmIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_alarm_getnext arginfo_rmon_alarm_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_alarm_set, 0, 0, 12)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, alarmIndex)
	ZEND_ARG_INFO(0, alarmInterval)
	ZEND_ARG_INFO(0, alarmVariable)
	ZEND_ARG_INFO(0, alarmSampleType)
	ZEND_ARG_INFO(0, alarmStartupAlarm)
	ZEND_ARG_INFO(0, alarmRisingThreshold)
	ZEND_ARG_INFO(0, alarmFallingThreshold)
	ZEND_ARG_INFO(0, alarmRisingEventIndex)
	ZEND_ARG_INFO(0, alarmFallingEventIndex)
	ZEND_ARG_INFO(0, alarmOwner)
	ZEND_ARG_INFO(0, alarmStatus)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_event_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, eventIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_event_getnext arginfo_rmon_event_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_event_set, 0, 0, 7)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, eventIndex)
	ZEND_ARG_INFO(0, eventDescription)
	ZEND_ARG_INFO(0, eventType)
	ZEND_ARG_INFO(0, eventCommunity)
	ZEND_ARG_INFO(0, eventOwner)
	ZEND_ARG_INFO(0, eventStatus)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_log_get, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, logEventIndex)
	ZEND_ARG_INFO(0, logIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_log_getnext arginfo_rmon_log_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_trapdest_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, trapDestIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_trapdest_getnext arginfo_rmon_trapdest_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_trapdest_set, 0, 0, 7)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, trapDestIndex)
	ZEND_ARG_INFO(0, trapDestCommunity)
	ZEND_ARG_INFO(0, trapDestProtocol)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, trapDestAddress)
	ZEND_ARG_INFO(0, trapDestOwner)
	ZEND_ARG_INFO(0, trapDestStatus)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_get_mib_var, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, name)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_gethostname, 0, 0, 0)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_getprotdesc, 0, 0, 1)
	ZEND_ARG_INFO(0, name)
ZEND_END_ARG_INFO()

#define arginfo_rmon_get_ipconfig arginfo_rmon_system_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_set_ipconfig, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, ipAddress)
	ZEND_ARG_INFO(0, ipNetmask)
	ZEND_ARG_INFO(0, ipBroadcast)
	ZEND_ARG_INFO(0, ipGateway)
	ZEND_ARG_INFO(0, ipInterface)
ZEND_END_ARG_INFO()

#define arginfo_rmon_get_hostname arginfo_rmon_gethostname

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_set_hostname, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, hostname)
ZEND_END_ARG_INFO()

#define arginfo_rmon_get_resolvers arginfo_rmon_system_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_set_resolvers, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, resolvers)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_dsmon_stats_get, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, ctlIndex)
	ZEND_ARG_INFO(0, groupIndex)
ZEND_END_ARG_INFO()

#define arginfo_dsmon_stats_getnext arginfo_dsmon_stats_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_dsmon_statsctl_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, ctlIndex)
ZEND_END_ARG_INFO()

#define arginfo_dsmon_statsctl_getnext arginfo_dsmon_statsctl_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_dsmon_statsctl_set, 0, 0, 6)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, ctlIndex)
	ZEND_ARG_INFO(0, dataSource_ifIndex)
	ZEND_ARG_INFO(0, aggProfile)
	ZEND_ARG_INFO(0, owner)
	ZEND_ARG_INFO(0, rowStatus)
ZEND_END_ARG_INFO()

#define arginfo_dsmon_aggctl_get arginfo_dsmon_statsctl_get

#define arginfo_dsmon_aggctl_getnext arginfo_dsmon_statsctl_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_dsmon_aggctl_set, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, ctlIndex)
	ZEND_ARG_INFO(0, owner)
	ZEND_ARG_INFO(0, descr)
	ZEND_ARG_INFO(0, rowStatus)
ZEND_END_ARG_INFO()

#define arginfo_dsmon_aggrp_get arginfo_dsmon_stats_get

#define arginfo_dsmon_aggrp_getnext arginfo_dsmon_stats_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_dsmon_aggrp_set, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, ctlIndex)
	ZEND_ARG_INFO(0, groupIndex)
	ZEND_ARG_INFO(0, descr)
	ZEND_ARG_INFO(0, groupStatus)
ZEND_END_ARG_INFO()

#define arginfo_dsmon_aggprofs_get arginfo_dsmon_statsctl_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_dsmon_aggprof_set, 0, 0, 4)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, ctlIndex)
	ZEND_ARG_INFO(0, dscp)
	ZEND_ARG_INFO(0, groupIndex)
ZEND_END_ARG_INFO()

#define arginfo_dsmon_aggctl_locked arginfo_rmon_system_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_dsmon_aggctl_set_lock, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, lock)
ZEND_END_ARG_INFO()

#define arginfo_dsmon_pdistctl_get arginfo_dsmon_statsctl_get

#define arginfo_dsmon_pdistctl_getnext arginfo_dsmon_statsctl_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_dsmon_pdistctl_set, 0, 0, 7)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, ctlIndex)
	ZEND_ARG_INFO(0, dataSource_ifIndex)
	ZEND_ARG_INFO(0, aggProfile)
	ZEND_ARG_INFO(0, owner)
	ZEND_ARG_INFO(0, rowStatus)
	ZEND_ARG_INFO(0, maxDesiredEntries)
ZEND_END_ARG_INFO()

#define arginfo_dsmon_hostctl_get arginfo_dsmon_statsctl_get

#define arginfo_dsmon_hostctl_getnext arginfo_dsmon_statsctl_get

#define arginfo_dsmon_hostctl_set arginfo_dsmon_pdistctl_set

ZEND_BEGIN_ARG_INFO_EX(arginfo_dsmon_pdstats_get, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, ctlIndex)
	ZEND_ARG_INFO(0, timeMark)
	ZEND_ARG_INFO(0, groupIndex)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
ZEND_END_ARG_INFO()

#define arginfo_dsmon_pdstats_getnext arginfo_dsmon_pdstats_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_dsmon_hoststats_get, 0, 0, 6)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, ctlIndex)
	ZEND_ARG_INFO(0, timeMark)
	ZEND_ARG_INFO(0, groupIndex)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, address)
ZEND_END_ARG_INFO()

#define arginfo_dsmon_hoststats_getnext arginfo_dsmon_hoststats_get

#define arginfo_dsmon_matrixctl_get arginfo_dsmon_statsctl_get

#define arginfo_dsmon_matrixctl_getnext arginfo_dsmon_statsctl_get

#define arginfo_dsmon_matrixctl_set arginfo_dsmon_pdistctl_set

ZEND_BEGIN_ARG_INFO_EX(arginfo_dsmon_matrixsdstats_get, 0, 0, 8)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, ctlIndex)
	ZEND_ARG_INFO(0, timeMark)
	ZEND_ARG_INFO(0, groupIndex)
	ZEND_ARG_INFO(0, nlIndex)
	ZEND_ARG_INFO(0, alIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, sourceAddress)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, destAddress)
ZEND_END_ARG_INFO()

#define arginfo_dsmon_matrixsdstats_getnext arginfo_dsmon_matrixsdstats_get

#define arginfo_dsmon_matrixdsstats_get arginfo_dsmon_matrixsdstats_get

#define arginfo_dsmon_matrixdsstats_getnext arginfo_dsmon_matrixsdstats_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_vlan_ctl_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, index)
ZEND_END_ARG_INFO()

#define arginfo_rmon_vlan_ctl_getnext arginfo_rmon_vlan_ctl_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_vlan_ctl_set, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, index)
	ZEND_ARG_INFO(0, dataSource)
	ZEND_ARG_INFO(0, owner)
	ZEND_ARG_INFO(0, status)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_vlan_get, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, controlIndex)
	ZEND_ARG_INFO(0, vlanId)
ZEND_END_ARG_INFO()

#define arginfo_rmon_vlan_getnext arginfo_rmon_vlan_get

#define arginfo_rmon_prio_ctl_get arginfo_rmon_vlan_ctl_get

#define arginfo_rmon_prio_ctl_getnext arginfo_rmon_vlan_ctl_get

#define arginfo_rmon_prio_ctl_set arginfo_rmon_vlan_ctl_set

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_prio_get, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, controlIndex)
	ZEND_ARG_INFO(0, priority)
ZEND_END_ARG_INFO()

#define arginfo_rmon_prio_getnext arginfo_rmon_prio_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_filter_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, filterIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_filter_getnext arginfo_rmon_filter_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_filter_set, 0, 0, 14)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, filterIndex)
	ZEND_ARG_INFO(0, filterChannelIndex)
	ZEND_ARG_INFO(0, filterPktDataOffset)
	ZEND_ARG_INFO(0, filterPktData)
	ZEND_ARG_INFO(0, filterPktDataMask)
	ZEND_ARG_INFO(0, filterPktDataNotMask)
	ZEND_ARG_INFO(0, filterPktStatus)
	ZEND_ARG_INFO(0, filterPktStatusMask)
	ZEND_ARG_INFO(0, filterPktStatusNotMask)
	ZEND_ARG_INFO(0, filterOwner)
	ZEND_ARG_INFO(0, filterStatus)
	ZEND_ARG_INFO(0, filterProtocolDirDataLocalIndex)
	ZEND_ARG_INFO(0, filterProtocolDirLocalIndex)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_channel_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, channelIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_channel_getnext arginfo_rmon_channel_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_channel_set, 0, 0, 12)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, channelIndex)
	ZEND_ARG_INFO(0, channelIfIndex)
	ZEND_ARG_INFO(0, channelAcceptType)
	ZEND_ARG_INFO(0, channelDataControl)
	ZEND_ARG_INFO(0, channelTurnOnEventIndex)
	ZEND_ARG_INFO(0, channelTurnOffEventIndex)
	ZEND_ARG_INFO(0, channelEventIndex)
	ZEND_ARG_INFO(0, channelEventStatus)
	ZEND_ARG_INFO(0, channelDescription)
	ZEND_ARG_INFO(0, channelOwner)
	ZEND_ARG_INFO(0, channelStatus)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_buffer_ctl_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, bufferControlIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_buffer_ctl_getnext arginfo_rmon_buffer_ctl_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_buffer_ctl_set, 0, 0, 10)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, bufferControlIndex)
	ZEND_ARG_INFO(0, bufferControlChannelIndex)
	ZEND_ARG_INFO(0, bufferControlFullAction)
	ZEND_ARG_INFO(0, bufferControlCaptureSliceSize)
	ZEND_ARG_INFO(0, bufferControlDownloadSliceSize)
	ZEND_ARG_INFO(0, bufferControlDownloadOffset)
	ZEND_ARG_INFO(0, bufferControlMaxOctetsRequested)
	ZEND_ARG_INFO(0, bufferControlOwner)
	ZEND_ARG_INFO(0, bufferControlStatus)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_capture_buf_get, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, captureBufferControlIndex)
	ZEND_ARG_INFO(0, captureBufferIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_capture_buf_getnext arginfo_rmon_capture_buf_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_capture_save_file, 0, 0, 6)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, fileName)
	ZEND_ARG_INFO(0, saveValue1)
	ZEND_ARG_INFO(0, saveValue2)
	ZEND_ARG_INFO(0, saveValue3)
	ZEND_ARG_INFO(0, saveOption)
ZEND_END_ARG_INFO()

#define arginfo_rmon_art_ctl_get arginfo_dsmon_statsctl_get

#define arginfo_rmon_art_ctl_getnext arginfo_dsmon_statsctl_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_art_ctl_set, 0, 0, 14)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, artControlIndex)
	ZEND_ARG_INFO(0, artControlDataSource)
	ZEND_ARG_INFO(0, artControlTimeRemaining)
	ZEND_ARG_INFO(0, artControlRspTime1)
	ZEND_ARG_INFO(0, artControlRspTime2)
	ZEND_ARG_INFO(0, artControlRspTime3)
	ZEND_ARG_INFO(0, artControlRspTime4)
	ZEND_ARG_INFO(0, artControlRspTime5)
	ZEND_ARG_INFO(0, artControlRspTime6)
	ZEND_ARG_INFO(0, artControlRspTimeout)
	ZEND_ARG_INFO(0, artControlRequestedSize)
	ZEND_ARG_INFO(0, artControlOwner)
	ZEND_ARG_INFO(0, artControlStatus)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_art_rpt_get, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, ctlIndex)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, serverAddress)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, clientAddress)
ZEND_END_ARG_INFO()

#define arginfo_rmon_art_rpt_getnext arginfo_rmon_art_rpt_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_art_rpt_getbulk, 0, 0, 6)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, ctlIndex)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, serverAddress)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, clientAddress)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_art_sum_get, 0, 0, 4)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, ctlIndex)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, serverAddress)
ZEND_END_ARG_INFO()

#define arginfo_rmon_art_sum_getnext arginfo_rmon_art_sum_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_art_sum_getbulk, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, ctlIndex)
	ZEND_ARG_INFO(0, protocolDirLocalIndex)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, serverAddress)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_confirm_rmon_compiled, 0, 0, 1)
	ZEND_ARG_INFO(0, arg)
ZEND_END_ARG_INFO()

#define arginfo_sccp_config_params_get arginfo_rmon_system_get

#define arginfo_sccp_aggregate_data_get arginfo_rmon_system_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_sccp_voice_coll_table_sizes_set, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, num_phone_tbl_row)
	ZEND_ARG_INFO(0, num_call_tbl_row)
	ZEND_ARG_INFO(0, num_top_jitter_row)
	ZEND_ARG_INFO(0, num_top_pkt_lost_row)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_sccp_voice_coll_thresholds_set, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, jitter_threshold)
	ZEND_ARG_INFO(0, pkt_lost_threshold)
ZEND_END_ARG_INFO()

#define arginfo_sccp_voice_coll_enable arginfo_rmon_system_get

#define arginfo_sccp_voice_coll_disable arginfo_rmon_system_get

#define arginfo_sccp_voice_jitter_alarm_enable arginfo_rmon_system_get

#define arginfo_sccp_voice_jitter_alarm_disable arginfo_rmon_system_get

#define arginfo_sccp_voice_pkt_lost_alarm_enable arginfo_rmon_system_get

#define arginfo_sccp_voice_pkt_lost_alarm_disable arginfo_rmon_system_get

#define arginfo_sccp_voice_latency_alarm_enable arginfo_rmon_system_get

#define arginfo_sccp_voice_latency_alarm_disable arginfo_rmon_system_get

#define arginfo_sccp_voice_phone_table_clear arginfo_rmon_system_get

#define arginfo_sccp_voice_call_table_clear arginfo_rmon_system_get

#define arginfo_sccp_voice_top_jitter_table_clear arginfo_rmon_system_get

#define arginfo_sccp_voice_top_pkt_lost_table_clear arginfo_rmon_system_get

#define arginfo_sccp_voice_top_latency_table_clear arginfo_rmon_system_get

#define arginfo_sccp_phone_rec_get arginfo_rmon_vlan_ctl_get

#define arginfo_sccp_phone_rec_getnext arginfo_rmon_vlan_ctl_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_sccp_phone_rec_getbulk, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, index)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

#define arginfo_sccp_call_rec_get arginfo_rmon_vlan_ctl_get

#define arginfo_sccp_call_rec_getnext arginfo_rmon_vlan_ctl_get

#define arginfo_sccp_call_rec_getbulk arginfo_sccp_phone_rec_getbulk

#define arginfo_sccp_top_jitter_rec_get arginfo_rmon_vlan_ctl_get

#define arginfo_sccp_top_jitter_rec_getnext arginfo_rmon_vlan_ctl_get

#define arginfo_sccp_top_jitter_rec_getbulk arginfo_sccp_phone_rec_getbulk

#define arginfo_sccp_top_pkt_lost_rec_get arginfo_rmon_vlan_ctl_get

#define arginfo_sccp_top_pkt_lost_rec_getnext arginfo_rmon_vlan_ctl_get

#define arginfo_sccp_top_pkt_lost_rec_getbulk arginfo_sccp_phone_rec_getbulk

#define arginfo_sccp_top_latency_rec_get arginfo_rmon_vlan_ctl_get

#define arginfo_sccp_top_latency_rec_getnext arginfo_rmon_vlan_ctl_get

#define arginfo_sccp_top_latency_rec_getbulk arginfo_sccp_phone_rec_getbulk

#define arginfo_h323_config_params_get arginfo_rmon_system_get

#define arginfo_h323_aggregate_data_get arginfo_rmon_system_get

#define arginfo_h323_voice_coll_table_sizes_set arginfo_sccp_voice_coll_table_sizes_set

#define arginfo_h323_voice_coll_thresholds_set arginfo_sccp_voice_coll_thresholds_set

#define arginfo_h323_voice_coll_enable arginfo_rmon_system_get

#define arginfo_h323_voice_coll_disable arginfo_rmon_system_get

#define arginfo_h323_voice_jitter_alarm_enable arginfo_rmon_system_get

#define arginfo_h323_voice_jitter_alarm_disable arginfo_rmon_system_get

#define arginfo_h323_voice_pkt_lost_alarm_enable arginfo_rmon_system_get

#define arginfo_h323_voice_pkt_lost_alarm_disable arginfo_rmon_system_get

#define arginfo_h323_voice_phone_table_clear arginfo_rmon_system_get

#define arginfo_h323_voice_call_table_clear arginfo_rmon_system_get

#define arginfo_h323_voice_top_jitter_table_clear arginfo_rmon_system_get

#define arginfo_h323_voice_top_pkt_lost_table_clear arginfo_rmon_system_get

#define arginfo_h323_phone_rec_get arginfo_rmon_vlan_ctl_get

#define arginfo_h323_phone_rec_getnext arginfo_rmon_vlan_ctl_get

#define arginfo_h323_phone_rec_getbulk arginfo_sccp_phone_rec_getbulk

#define arginfo_h323_call_rec_get arginfo_rmon_vlan_ctl_get

#define arginfo_h323_call_rec_getnext arginfo_rmon_vlan_ctl_get

#define arginfo_h323_call_rec_getbulk arginfo_sccp_phone_rec_getbulk

#define arginfo_h323_top_jitter_rec_get arginfo_rmon_vlan_ctl_get

#define arginfo_h323_top_jitter_rec_getnext arginfo_rmon_vlan_ctl_get

#define arginfo_h323_top_jitter_rec_getbulk arginfo_sccp_phone_rec_getbulk

#define arginfo_h323_top_pkt_lost_rec_get arginfo_rmon_vlan_ctl_get

#define arginfo_h323_top_pkt_lost_rec_getnext arginfo_rmon_vlan_ctl_get

#define arginfo_h323_top_pkt_lost_rec_getbulk arginfo_sccp_phone_rec_getbulk

#define arginfo_mgcp_config_params_get arginfo_rmon_system_get

#define arginfo_mgcp_aggregate_data_get arginfo_rmon_system_get

#define arginfo_mgcp_voice_coll_table_sizes_set arginfo_sccp_voice_coll_table_sizes_set

#define arginfo_mgcp_voice_coll_thresholds_set arginfo_sccp_voice_coll_thresholds_set

#define arginfo_mgcp_voice_coll_enable arginfo_rmon_system_get

#define arginfo_mgcp_voice_coll_disable arginfo_rmon_system_get

#define arginfo_mgcp_voice_jitter_alarm_enable arginfo_rmon_system_get

#define arginfo_mgcp_voice_jitter_alarm_disable arginfo_rmon_system_get

#define arginfo_mgcp_voice_pkt_lost_alarm_enable arginfo_rmon_system_get

#define arginfo_mgcp_voice_pkt_lost_alarm_disable arginfo_rmon_system_get

#define arginfo_mgcp_voice_latency_alarm_enable arginfo_rmon_system_get

#define arginfo_mgcp_voice_latency_alarm_disable arginfo_rmon_system_get

#define arginfo_mgcp_voice_phone_table_clear arginfo_rmon_system_get

#define arginfo_mgcp_voice_call_table_clear arginfo_rmon_system_get

#define arginfo_mgcp_voice_top_jitter_table_clear arginfo_rmon_system_get

#define arginfo_mgcp_voice_top_pkt_lost_table_clear arginfo_rmon_system_get

#define arginfo_mgcp_voice_top_latency_table_clear arginfo_rmon_system_get

#define arginfo_mgcp_phone_rec_get arginfo_rmon_vlan_ctl_get

#define arginfo_mgcp_phone_rec_getnext arginfo_rmon_vlan_ctl_get

#define arginfo_mgcp_phone_rec_getbulk arginfo_sccp_phone_rec_getbulk

#define arginfo_mgcp_call_rec_get arginfo_rmon_vlan_ctl_get

#define arginfo_mgcp_call_rec_getnext arginfo_rmon_vlan_ctl_get

#define arginfo_mgcp_call_rec_getbulk arginfo_sccp_phone_rec_getbulk

#define arginfo_mgcp_top_jitter_rec_get arginfo_rmon_vlan_ctl_get

#define arginfo_mgcp_top_jitter_rec_getnext arginfo_rmon_vlan_ctl_get

#define arginfo_mgcp_top_jitter_rec_getbulk arginfo_sccp_phone_rec_getbulk

#define arginfo_mgcp_top_pkt_lost_rec_get arginfo_rmon_vlan_ctl_get

#define arginfo_mgcp_top_pkt_lost_rec_getnext arginfo_rmon_vlan_ctl_get

#define arginfo_mgcp_top_pkt_lost_rec_getbulk arginfo_sccp_phone_rec_getbulk

#define arginfo_mgcp_top_latency_rec_get arginfo_rmon_vlan_ctl_get

#define arginfo_mgcp_top_latency_rec_getnext arginfo_rmon_vlan_ctl_get

#define arginfo_mgcp_top_latency_rec_getbulk arginfo_sccp_phone_rec_getbulk

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_community_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, communityString)
ZEND_END_ARG_INFO()

#define arginfo_rmon_community_getnext arginfo_rmon_community_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_community_getbulk, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, communityString)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_community_set, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(0, communityString)
	ZEND_ARG_INFO(0, privs)
ZEND_END_ARG_INFO()

#define arginfo_rmon_community_delete arginfo_rmon_community_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nde_device_get, 0, 0, 2)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, address)
ZEND_END_ARG_INFO()

#define arginfo_rmon_nde_device_getnext arginfo_rmon_nde_device_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nde_device_getbulk, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, address)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nde_device_set, 0, 0, 4)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, address)
	ZEND_ARG_INFO(0, commString)
	ZEND_ARG_INFO(0, deviceName)
ZEND_END_ARG_INFO()

#define arginfo_rmon_nde_device_del arginfo_rmon_nde_device_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nde_datasrc_get, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, address)
	ZEND_ARG_INFO(0, datasrcIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_nde_datasrc_getnext arginfo_rmon_nde_datasrc_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nde_datasrc_getbulk, 0, 0, 4)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, address)
	ZEND_ARG_INFO(0, datasrcIndex)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nde_datasrc_set, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, address)
	ZEND_ARG_INFO(0, datasrcName)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nde_datasrc_mod, 0, 0, 4)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, address)
	ZEND_ARG_INFO(0, datasrcIndex)
	ZEND_ARG_INFO(0, datasrcName)
ZEND_END_ARG_INFO()

#define arginfo_rmon_nde_datasrc_del arginfo_rmon_nde_datasrc_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nde_flow_path_get, 0, 0, 5)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, address)
	ZEND_ARG_INFO(0, datasrcIndex)
	ZEND_ARG_INFO(0, inputIndex)
	ZEND_ARG_INFO(0, outputIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_nde_flow_path_getnext arginfo_rmon_nde_flow_path_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nde_flow_path_getbulk, 0, 0, 6)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, address)
	ZEND_ARG_INFO(0, datasrcIndex)
	ZEND_ARG_INFO(0, inputIndex)
	ZEND_ARG_INFO(0, outputIndex)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

#define arginfo_rmon_nde_flow_path_set arginfo_rmon_nde_flow_path_get

#define arginfo_rmon_nde_flow_path_del arginfo_rmon_nde_flow_path_get

#define arginfo_rmon_nde_learned_dev_get arginfo_rmon_nde_device_get

#define arginfo_rmon_nde_learned_dev_getnext arginfo_rmon_nde_device_get

#define arginfo_rmon_nde_learned_dev_getbulk arginfo_rmon_nde_device_getbulk

#define arginfo_rmon_nde_learned_dev_enable arginfo_rmon_system_get

#define arginfo_rmon_nde_learned_dev_disable arginfo_rmon_system_get

#define arginfo_rmon_nde_learned_dev_status arginfo_rmon_system_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nde_learned_dev_intf_get, 0, 0, 3)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, address)
	ZEND_ARG_INFO(0, ifIndex)
ZEND_END_ARG_INFO()

#define arginfo_rmon_nde_learned_dev_intf_getnext arginfo_rmon_nde_learned_dev_intf_get

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_nde_learned_dev_intf_getbulk, 0, 0, 4)
	ZEND_ARG_INFO(0, connid)
	ZEND_ARG_INFO(ZEND_SEND_PREFER_REF, address)
	ZEND_ARG_INFO(0, ifIndex)
	ZEND_ARG_INFO(0, count)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_inet_pton, 0, 0, 2)
	ZEND_ARG_INFO(0, family)
	ZEND_ARG_INFO(0, text)
ZEND_END_ARG_INFO()

ZEND_BEGIN_ARG_INFO_EX(arginfo_rmon_inet_ntop, 0, 0, 2)
	ZEND_ARG_INFO(0, family)
	ZEND_ARG_INFO(0, bytes)
ZEND_END_ARG_INFO()

#define arginfo_norv_target_id arginfo_rmon_gethostname

#define arginfo_norv_prod_descr arginfo_rmon_gethostname

#define arginfo_norv_prod_no arginfo_rmon_gethostname


ZEND_FUNCTION(rmon_connect);
ZEND_FUNCTION(rmon_pconnect);
ZEND_FUNCTION(rmon_close);
ZEND_FUNCTION(rmon_system_get);
ZEND_FUNCTION(rmon_system_set);
ZEND_FUNCTION(rmon_ifentry_get);
ZEND_FUNCTION(rmon_ifentry_getnext);
ZEND_FUNCTION(rmon_etherstats_get);
ZEND_FUNCTION(rmon_etherstats_getnext);
ZEND_FUNCTION(rmon_etherstats_set);
ZEND_FUNCTION(rmon_history_ctl_get);
ZEND_FUNCTION(rmon_history_ctl_getnext);
ZEND_FUNCTION(rmon_history_ctl_set);
ZEND_FUNCTION(rmon_etherhistory_get);
ZEND_FUNCTION(rmon_etherhistory_getnext);
ZEND_FUNCTION(rmon_etherhistory_getbulk);
ZEND_FUNCTION(rmon_host_ctl_get);
ZEND_FUNCTION(rmon_host_ctl_getnext);
ZEND_FUNCTION(rmon_host_ctl_set);
ZEND_FUNCTION(rmon_host_get);
ZEND_FUNCTION(rmon_host_getnext);
ZEND_FUNCTION(rmon_host_getbulk);
ZEND_FUNCTION(rmon_hosttime_get);
ZEND_FUNCTION(rmon_hosttime_getnext);
ZEND_FUNCTION(rmon_hosttime_getbulk);
ZEND_FUNCTION(rmon_hosttopn_ctl_get);
ZEND_FUNCTION(rmon_hosttopn_ctl_getnext);
ZEND_FUNCTION(rmon_hosttopn_ctl_set);
ZEND_FUNCTION(rmon_hosttopn_get);
ZEND_FUNCTION(rmon_hosttopn_getnext);
ZEND_FUNCTION(rmon_hosttopn_getbulk);
ZEND_FUNCTION(rmon_matrix_ctl_get);
ZEND_FUNCTION(rmon_matrix_ctl_getnext);
ZEND_FUNCTION(rmon_matrix_ctl_set);
ZEND_FUNCTION(rmon_matrix_sd_get);
ZEND_FUNCTION(rmon_matrix_sd_getnext);
ZEND_FUNCTION(rmon_matrix_sd_getbulk);
ZEND_FUNCTION(rmon_matrix_ds_get);
ZEND_FUNCTION(rmon_matrix_ds_getnext);
ZEND_FUNCTION(rmon_matrix_ds_getbulk);
ZEND_FUNCTION(rmon_pdir_lastchange_get);
ZEND_FUNCTION(rmon_pdir_get);
ZEND_FUNCTION(rmon_pdir_getnext);
ZEND_FUNCTION(rmon_pdir_getbulk);
ZEND_FUNCTION(rmon_pdir_set);
ZEND_FUNCTION(rmon_pdir_byidx_get);
ZEND_FUNCTION(rmon_pdir_byidx_getnext);
ZEND_FUNCTION(rmon_pdist_ctl_get);
ZEND_FUNCTION(rmon_pdist_ctl_getnext);
ZEND_FUNCTION(rmon_pdist_ctl_set);
ZEND_FUNCTION(rmon_pdist_stats_get);
ZEND_FUNCTION(rmon_pdist_stats_getnext);
ZEND_FUNCTION(rmon_pdist_stats_getbulk);
ZEND_FUNCTION(rmon_pdist_stats_getothers);
ZEND_FUNCTION(rmon_addrmap_scalars_get);
ZEND_FUNCTION(rmon_addrmap_scalars_set);
ZEND_FUNCTION(rmon_addrmap_ctl_get);
ZEND_FUNCTION(rmon_addrmap_ctl_getnext);
ZEND_FUNCTION(rmon_addrmap_ctl_set);
ZEND_FUNCTION(rmon_addrmap_entry_get);
ZEND_FUNCTION(rmon_addrmap_entry_getnext);
ZEND_FUNCTION(rmon_addrmap_entry_getbulk);
ZEND_FUNCTION(rmon_hlhost_ctl_get);
ZEND_FUNCTION(rmon_hlhost_ctl_getnext);
ZEND_FUNCTION(rmon_hlhost_ctl_set);
ZEND_FUNCTION(rmon_nlhost_get);
ZEND_FUNCTION(rmon_nlhost_getnext);
ZEND_FUNCTION(rmon_nlhost_getbulk);
ZEND_FUNCTION(rmon_alhost_get);
ZEND_FUNCTION(rmon_alhost_getnext);
ZEND_FUNCTION(rmon_alhost_getbulk);
ZEND_FUNCTION(rmon_hlmatrix_ctl_get);
ZEND_FUNCTION(rmon_hlmatrix_ctl_getnext);
ZEND_FUNCTION(rmon_hlmatrix_ctl_set);
ZEND_FUNCTION(rmon_nlmatrix_sd_get);
ZEND_FUNCTION(rmon_nlmatrix_sd_getnext);
ZEND_FUNCTION(rmon_nlmatrix_sd_getbulk);
ZEND_FUNCTION(rmon_nlmatrix_ds_get);
ZEND_FUNCTION(rmon_nlmatrix_ds_getnext);
ZEND_FUNCTION(rmon_nlmatrix_ds_getbulk);
ZEND_FUNCTION(rmon_almatrix_sd_get);
ZEND_FUNCTION(rmon_almatrix_sd_getnext);
ZEND_FUNCTION(rmon_almatrix_sd_getbulk);
ZEND_FUNCTION(rmon_almatrix_ds_get);
ZEND_FUNCTION(rmon_almatrix_ds_getnext);
ZEND_FUNCTION(rmon_almatrix_ds_getbulk);
ZEND_FUNCTION(rmon_alarm_get);
ZEND_FUNCTION(rmon_alarm_getnext);
ZEND_FUNCTION(rmon_alarm_set);
ZEND_FUNCTION(rmon_event_get);
ZEND_FUNCTION(rmon_event_getnext);
ZEND_FUNCTION(rmon_event_set);
ZEND_FUNCTION(rmon_log_get);
ZEND_FUNCTION(rmon_log_getnext);
ZEND_FUNCTION(rmon_trapdest_get);
ZEND_FUNCTION(rmon_trapdest_getnext);
ZEND_FUNCTION(rmon_trapdest_set);
ZEND_FUNCTION(rmon_get_mib_var);
ZEND_FUNCTION(rmon_gethostname);
ZEND_FUNCTION(rmon_getprotdesc);
ZEND_FUNCTION(rmon_get_ipconfig);
ZEND_FUNCTION(rmon_set_ipconfig);
ZEND_FUNCTION(rmon_get_hostname);
ZEND_FUNCTION(rmon_set_hostname);
ZEND_FUNCTION(rmon_get_resolvers);
ZEND_FUNCTION(rmon_set_resolvers);
ZEND_FUNCTION(dsmon_stats_get);
ZEND_FUNCTION(dsmon_stats_getnext);
ZEND_FUNCTION(dsmon_statsctl_get);
ZEND_FUNCTION(dsmon_statsctl_getnext);
ZEND_FUNCTION(dsmon_statsctl_set);
ZEND_FUNCTION(dsmon_aggctl_get);
ZEND_FUNCTION(dsmon_aggctl_getnext);
ZEND_FUNCTION(dsmon_aggctl_set);
ZEND_FUNCTION(dsmon_aggrp_get);
ZEND_FUNCTION(dsmon_aggrp_getnext);
ZEND_FUNCTION(dsmon_aggrp_set);
ZEND_FUNCTION(dsmon_aggprofs_get);
ZEND_FUNCTION(dsmon_aggprof_set);
ZEND_FUNCTION(dsmon_aggctl_locked);
ZEND_FUNCTION(dsmon_aggctl_set_lock);
ZEND_FUNCTION(dsmon_pdistctl_get);
ZEND_FUNCTION(dsmon_pdistctl_getnext);
ZEND_FUNCTION(dsmon_pdistctl_set);
ZEND_FUNCTION(dsmon_hostctl_get);
ZEND_FUNCTION(dsmon_hostctl_getnext);
ZEND_FUNCTION(dsmon_hostctl_set);
ZEND_FUNCTION(dsmon_pdstats_get);
ZEND_FUNCTION(dsmon_pdstats_getnext);
ZEND_FUNCTION(dsmon_hoststats_get);
ZEND_FUNCTION(dsmon_hoststats_getnext);
ZEND_FUNCTION(dsmon_matrixctl_get);
ZEND_FUNCTION(dsmon_matrixctl_getnext);
ZEND_FUNCTION(dsmon_matrixctl_set);
ZEND_FUNCTION(dsmon_matrixsdstats_get);
ZEND_FUNCTION(dsmon_matrixsdstats_getnext);
ZEND_FUNCTION(dsmon_matrixdsstats_get);
ZEND_FUNCTION(dsmon_matrixdsstats_getnext);
ZEND_FUNCTION(rmon_vlan_ctl_get);
ZEND_FUNCTION(rmon_vlan_ctl_getnext);
ZEND_FUNCTION(rmon_vlan_ctl_set);
ZEND_FUNCTION(rmon_vlan_get);
ZEND_FUNCTION(rmon_vlan_getnext);
ZEND_FUNCTION(rmon_prio_ctl_get);
ZEND_FUNCTION(rmon_prio_ctl_getnext);
ZEND_FUNCTION(rmon_prio_ctl_set);
ZEND_FUNCTION(rmon_prio_get);
ZEND_FUNCTION(rmon_prio_getnext);
ZEND_FUNCTION(rmon_filter_get);
ZEND_FUNCTION(rmon_filter_getnext);
ZEND_FUNCTION(rmon_filter_set);
ZEND_FUNCTION(rmon_channel_get);
ZEND_FUNCTION(rmon_channel_getnext);
ZEND_FUNCTION(rmon_channel_set);
ZEND_FUNCTION(rmon_buffer_ctl_get);
ZEND_FUNCTION(rmon_buffer_ctl_getnext);
ZEND_FUNCTION(rmon_buffer_ctl_set);
ZEND_FUNCTION(rmon_capture_buf_get);
ZEND_FUNCTION(rmon_capture_buf_getnext);
ZEND_FUNCTION(rmon_capture_save_file);
ZEND_FUNCTION(rmon_art_ctl_get);
ZEND_FUNCTION(rmon_art_ctl_getnext);
ZEND_FUNCTION(rmon_art_ctl_set);
ZEND_FUNCTION(rmon_art_rpt_get);
ZEND_FUNCTION(rmon_art_rpt_getnext);
ZEND_FUNCTION(rmon_art_rpt_getbulk);
ZEND_FUNCTION(rmon_art_sum_get);
ZEND_FUNCTION(rmon_art_sum_getnext);
ZEND_FUNCTION(rmon_art_sum_getbulk);
ZEND_FUNCTION(confirm_rmon_compiled);
ZEND_FUNCTION(sccp_config_params_get);
ZEND_FUNCTION(sccp_aggregate_data_get);
ZEND_FUNCTION(sccp_voice_coll_table_sizes_set);
ZEND_FUNCTION(sccp_voice_coll_thresholds_set);
ZEND_FUNCTION(sccp_voice_coll_enable);
ZEND_FUNCTION(sccp_voice_coll_disable);
ZEND_FUNCTION(sccp_voice_jitter_alarm_enable);
ZEND_FUNCTION(sccp_voice_jitter_alarm_disable);
ZEND_FUNCTION(sccp_voice_pkt_lost_alarm_enable);
ZEND_FUNCTION(sccp_voice_pkt_lost_alarm_disable);
ZEND_FUNCTION(sccp_voice_latency_alarm_enable);
ZEND_FUNCTION(sccp_voice_latency_alarm_disable);
ZEND_FUNCTION(sccp_voice_phone_table_clear);
ZEND_FUNCTION(sccp_voice_call_table_clear);
ZEND_FUNCTION(sccp_voice_top_jitter_table_clear);
ZEND_FUNCTION(sccp_voice_top_pkt_lost_table_clear);
ZEND_FUNCTION(sccp_voice_top_latency_table_clear);
ZEND_FUNCTION(sccp_phone_rec_get);
ZEND_FUNCTION(sccp_phone_rec_getnext);
ZEND_FUNCTION(sccp_phone_rec_getbulk);
ZEND_FUNCTION(sccp_call_rec_get);
ZEND_FUNCTION(sccp_call_rec_getnext);
ZEND_FUNCTION(sccp_call_rec_getbulk);
ZEND_FUNCTION(sccp_top_jitter_rec_get);
ZEND_FUNCTION(sccp_top_jitter_rec_getnext);
ZEND_FUNCTION(sccp_top_jitter_rec_getbulk);
ZEND_FUNCTION(sccp_top_pkt_lost_rec_get);
ZEND_FUNCTION(sccp_top_pkt_lost_rec_getnext);
ZEND_FUNCTION(sccp_top_pkt_lost_rec_getbulk);
ZEND_FUNCTION(sccp_top_latency_rec_get);
ZEND_FUNCTION(sccp_top_latency_rec_getnext);
ZEND_FUNCTION(sccp_top_latency_rec_getbulk);
ZEND_FUNCTION(h323_config_params_get);
ZEND_FUNCTION(h323_aggregate_data_get);
ZEND_FUNCTION(h323_voice_coll_table_sizes_set);
ZEND_FUNCTION(h323_voice_coll_thresholds_set);
ZEND_FUNCTION(h323_voice_coll_enable);
ZEND_FUNCTION(h323_voice_coll_disable);
ZEND_FUNCTION(h323_voice_jitter_alarm_enable);
ZEND_FUNCTION(h323_voice_jitter_alarm_disable);
ZEND_FUNCTION(h323_voice_pkt_lost_alarm_enable);
ZEND_FUNCTION(h323_voice_pkt_lost_alarm_disable);
ZEND_FUNCTION(h323_voice_phone_table_clear);
ZEND_FUNCTION(h323_voice_call_table_clear);
ZEND_FUNCTION(h323_voice_top_jitter_table_clear);
ZEND_FUNCTION(h323_voice_top_pkt_lost_table_clear);
ZEND_FUNCTION(h323_phone_rec_get);
ZEND_FUNCTION(h323_phone_rec_getnext);
ZEND_FUNCTION(h323_phone_rec_getbulk);
ZEND_FUNCTION(h323_call_rec_get);
ZEND_FUNCTION(h323_call_rec_getnext);
ZEND_FUNCTION(h323_call_rec_getbulk);
ZEND_FUNCTION(h323_top_jitter_rec_get);
ZEND_FUNCTION(h323_top_jitter_rec_getnext);
ZEND_FUNCTION(h323_top_jitter_rec_getbulk);
ZEND_FUNCTION(h323_top_pkt_lost_rec_get);
ZEND_FUNCTION(h323_top_pkt_lost_rec_getnext);
ZEND_FUNCTION(h323_top_pkt_lost_rec_getbulk);
ZEND_FUNCTION(mgcp_config_params_get);
ZEND_FUNCTION(mgcp_aggregate_data_get);
ZEND_FUNCTION(mgcp_voice_coll_table_sizes_set);
ZEND_FUNCTION(mgcp_voice_coll_thresholds_set);
ZEND_FUNCTION(mgcp_voice_coll_enable);
ZEND_FUNCTION(mgcp_voice_coll_disable);
ZEND_FUNCTION(mgcp_voice_jitter_alarm_enable);
ZEND_FUNCTION(mgcp_voice_jitter_alarm_disable);
ZEND_FUNCTION(mgcp_voice_pkt_lost_alarm_enable);
ZEND_FUNCTION(mgcp_voice_pkt_lost_alarm_disable);
ZEND_FUNCTION(mgcp_voice_latency_alarm_enable);
ZEND_FUNCTION(mgcp_voice_latency_alarm_disable);
ZEND_FUNCTION(mgcp_voice_phone_table_clear);
ZEND_FUNCTION(mgcp_voice_call_table_clear);
ZEND_FUNCTION(mgcp_voice_top_jitter_table_clear);
ZEND_FUNCTION(mgcp_voice_top_pkt_lost_table_clear);
ZEND_FUNCTION(mgcp_voice_top_latency_table_clear);
ZEND_FUNCTION(mgcp_phone_rec_get);
ZEND_FUNCTION(mgcp_phone_rec_getnext);
ZEND_FUNCTION(mgcp_phone_rec_getbulk);
ZEND_FUNCTION(mgcp_call_rec_get);
ZEND_FUNCTION(mgcp_call_rec_getnext);
ZEND_FUNCTION(mgcp_call_rec_getbulk);
ZEND_FUNCTION(mgcp_top_jitter_rec_get);
ZEND_FUNCTION(mgcp_top_jitter_rec_getnext);
ZEND_FUNCTION(mgcp_top_jitter_rec_getbulk);
ZEND_FUNCTION(mgcp_top_pkt_lost_rec_get);
ZEND_FUNCTION(mgcp_top_pkt_lost_rec_getnext);
ZEND_FUNCTION(mgcp_top_pkt_lost_rec_getbulk);
ZEND_FUNCTION(mgcp_top_latency_rec_get);
ZEND_FUNCTION(mgcp_top_latency_rec_getnext);
ZEND_FUNCTION(mgcp_top_latency_rec_getbulk);
ZEND_FUNCTION(rmon_community_get);
ZEND_FUNCTION(rmon_community_getnext);
ZEND_FUNCTION(rmon_community_getbulk);
ZEND_FUNCTION(rmon_community_set);
ZEND_FUNCTION(rmon_community_delete);
ZEND_FUNCTION(rmon_nde_device_get);
ZEND_FUNCTION(rmon_nde_device_getnext);
ZEND_FUNCTION(rmon_nde_device_getbulk);
ZEND_FUNCTION(rmon_nde_device_set);
ZEND_FUNCTION(rmon_nde_device_del);
ZEND_FUNCTION(rmon_nde_datasrc_get);
ZEND_FUNCTION(rmon_nde_datasrc_getnext);
ZEND_FUNCTION(rmon_nde_datasrc_getbulk);
ZEND_FUNCTION(rmon_nde_datasrc_set);
ZEND_FUNCTION(rmon_nde_datasrc_mod);
ZEND_FUNCTION(rmon_nde_datasrc_del);
ZEND_FUNCTION(rmon_nde_flow_path_get);
ZEND_FUNCTION(rmon_nde_flow_path_getnext);
ZEND_FUNCTION(rmon_nde_flow_path_getbulk);
ZEND_FUNCTION(rmon_nde_flow_path_set);
ZEND_FUNCTION(rmon_nde_flow_path_del);
ZEND_FUNCTION(rmon_nde_learned_dev_get);
ZEND_FUNCTION(rmon_nde_learned_dev_getnext);
ZEND_FUNCTION(rmon_nde_learned_dev_getbulk);
ZEND_FUNCTION(rmon_nde_learned_dev_enable);
ZEND_FUNCTION(rmon_nde_learned_dev_disable);
ZEND_FUNCTION(rmon_nde_learned_dev_status);
ZEND_FUNCTION(rmon_nde_learned_dev_intf_get);
ZEND_FUNCTION(rmon_nde_learned_dev_intf_getnext);
ZEND_FUNCTION(rmon_nde_learned_dev_intf_getbulk);
ZEND_FUNCTION(rmon_inet_pton);
ZEND_FUNCTION(rmon_inet_ntop);
ZEND_FUNCTION(norv_target_id);
ZEND_FUNCTION(norv_prod_descr);
ZEND_FUNCTION(norv_prod_no);


static const zend_function_entry ext_functions[] = {
	ZEND_FE(rmon_connect, arginfo_rmon_connect)
	ZEND_FE(rmon_pconnect, arginfo_rmon_pconnect)
	ZEND_FE(rmon_close, arginfo_rmon_close)
	ZEND_FE(rmon_system_get, arginfo_rmon_system_get)
	ZEND_FE(rmon_system_set, arginfo_rmon_system_set)
	ZEND_FE(rmon_ifentry_get, arginfo_rmon_ifentry_get)
	ZEND_FE(rmon_ifentry_getnext, arginfo_rmon_ifentry_getnext)
	ZEND_FE(rmon_etherstats_get, arginfo_rmon_etherstats_get)
	ZEND_FE(rmon_etherstats_getnext, arginfo_rmon_etherstats_getnext)
	ZEND_FE(rmon_etherstats_set, arginfo_rmon_etherstats_set)
	ZEND_FE(rmon_history_ctl_get, arginfo_rmon_history_ctl_get)
	ZEND_FE(rmon_history_ctl_getnext, arginfo_rmon_history_ctl_getnext)
	ZEND_FE(rmon_history_ctl_set, arginfo_rmon_history_ctl_set)
	ZEND_FE(rmon_etherhistory_get, arginfo_rmon_etherhistory_get)
	ZEND_FE(rmon_etherhistory_getnext, arginfo_rmon_etherhistory_getnext)
	ZEND_FE(rmon_etherhistory_getbulk, arginfo_rmon_etherhistory_getbulk)
	ZEND_FE(rmon_host_ctl_get, arginfo_rmon_host_ctl_get)
	ZEND_FE(rmon_host_ctl_getnext, arginfo_rmon_host_ctl_getnext)
	ZEND_FE(rmon_host_ctl_set, arginfo_rmon_host_ctl_set)
	ZEND_FE(rmon_host_get, arginfo_rmon_host_get)
	ZEND_FE(rmon_host_getnext, arginfo_rmon_host_getnext)
	ZEND_FE(rmon_host_getbulk, arginfo_rmon_host_getbulk)
	ZEND_FE(rmon_hosttime_get, arginfo_rmon_hosttime_get)
	ZEND_FE(rmon_hosttime_getnext, arginfo_rmon_hosttime_getnext)
	ZEND_FE(rmon_hosttime_getbulk, arginfo_rmon_hosttime_getbulk)
	ZEND_FE(rmon_hosttopn_ctl_get, arginfo_rmon_hosttopn_ctl_get)
	ZEND_FE(rmon_hosttopn_ctl_getnext, arginfo_rmon_hosttopn_ctl_getnext)
	ZEND_FE(rmon_hosttopn_ctl_set, arginfo_rmon_hosttopn_ctl_set)
	ZEND_FE(rmon_hosttopn_get, arginfo_rmon_hosttopn_get)
	ZEND_FE(rmon_hosttopn_getnext, arginfo_rmon_hosttopn_getnext)
	ZEND_FE(rmon_hosttopn_getbulk, arginfo_rmon_hosttopn_getbulk)
	ZEND_FE(rmon_matrix_ctl_get, arginfo_rmon_matrix_ctl_get)
	ZEND_FE(rmon_matrix_ctl_getnext, arginfo_rmon_matrix_ctl_getnext)
	ZEND_FE(rmon_matrix_ctl_set, arginfo_rmon_matrix_ctl_set)
	ZEND_FE(rmon_matrix_sd_get, arginfo_rmon_matrix_sd_get)
	ZEND_FE(rmon_matrix_sd_getnext, arginfo_rmon_matrix_sd_getnext)
	ZEND_FE(rmon_matrix_sd_getbulk, arginfo_rmon_matrix_sd_getbulk)
	ZEND_FE(rmon_matrix_ds_get, arginfo_rmon_matrix_ds_get)
	ZEND_FE(rmon_matrix_ds_getnext, arginfo_rmon_matrix_ds_getnext)
	ZEND_FE(rmon_matrix_ds_getbulk, arginfo_rmon_matrix_ds_getbulk)
	ZEND_FE(rmon_pdir_lastchange_get, arginfo_rmon_pdir_lastchange_get)
	ZEND_FE(rmon_pdir_get, arginfo_rmon_pdir_get)
	ZEND_FE(rmon_pdir_getnext, arginfo_rmon_pdir_getnext)
	ZEND_FE(rmon_pdir_getbulk, arginfo_rmon_pdir_getbulk)
	ZEND_FE(rmon_pdir_set, arginfo_rmon_pdir_set)
	ZEND_FE(rmon_pdir_byidx_get, arginfo_rmon_pdir_byidx_get)
	ZEND_FE(rmon_pdir_byidx_getnext, arginfo_rmon_pdir_byidx_getnext)
	ZEND_FE(rmon_pdist_ctl_get, arginfo_rmon_pdist_ctl_get)
	ZEND_FE(rmon_pdist_ctl_getnext, arginfo_rmon_pdist_ctl_getnext)
	ZEND_FE(rmon_pdist_ctl_set, arginfo_rmon_pdist_ctl_set)
	ZEND_FE(rmon_pdist_stats_get, arginfo_rmon_pdist_stats_get)
	ZEND_FE(rmon_pdist_stats_getnext, arginfo_rmon_pdist_stats_getnext)
	ZEND_FE(rmon_pdist_stats_getbulk, arginfo_rmon_pdist_stats_getbulk)
	ZEND_FE(rmon_pdist_stats_getothers, arginfo_rmon_pdist_stats_getothers)
	ZEND_FE(rmon_addrmap_scalars_get, arginfo_rmon_addrmap_scalars_get)
	ZEND_FE(rmon_addrmap_scalars_set, arginfo_rmon_addrmap_scalars_set)
	ZEND_FE(rmon_addrmap_ctl_get, arginfo_rmon_addrmap_ctl_get)
	ZEND_FE(rmon_addrmap_ctl_getnext, arginfo_rmon_addrmap_ctl_getnext)
	ZEND_FE(rmon_addrmap_ctl_set, arginfo_rmon_addrmap_ctl_set)
	ZEND_FE(rmon_addrmap_entry_get, arginfo_rmon_addrmap_entry_get)
	ZEND_FE(rmon_addrmap_entry_getnext, arginfo_rmon_addrmap_entry_getnext)
	ZEND_FE(rmon_addrmap_entry_getbulk, arginfo_rmon_addrmap_entry_getbulk)
	ZEND_FE(rmon_hlhost_ctl_get, arginfo_rmon_hlhost_ctl_get)
	ZEND_FE(rmon_hlhost_ctl_getnext, arginfo_rmon_hlhost_ctl_getnext)
	ZEND_FE(rmon_hlhost_ctl_set, arginfo_rmon_hlhost_ctl_set)
	ZEND_FE(rmon_nlhost_get, arginfo_rmon_nlhost_get)
	ZEND_FE(rmon_nlhost_getnext, arginfo_rmon_nlhost_getnext)
	ZEND_FE(rmon_nlhost_getbulk, arginfo_rmon_nlhost_getbulk)
	ZEND_FE(rmon_alhost_get, arginfo_rmon_alhost_get)
	ZEND_FE(rmon_alhost_getnext, arginfo_rmon_alhost_getnext)
	ZEND_FE(rmon_alhost_getbulk, arginfo_rmon_alhost_getbulk)
	ZEND_FE(rmon_hlmatrix_ctl_get, arginfo_rmon_hlmatrix_ctl_get)
	ZEND_FE(rmon_hlmatrix_ctl_getnext, arginfo_rmon_hlmatrix_ctl_getnext)
	ZEND_FE(rmon_hlmatrix_ctl_set, arginfo_rmon_hlmatrix_ctl_set)
	ZEND_FE(rmon_nlmatrix_sd_get, arginfo_rmon_nlmatrix_sd_get)
	ZEND_FE(rmon_nlmatrix_sd_getnext, arginfo_rmon_nlmatrix_sd_getnext)
	ZEND_FE(rmon_nlmatrix_sd_getbulk, arginfo_rmon_nlmatrix_sd_getbulk)
	ZEND_FE(rmon_nlmatrix_ds_get, arginfo_rmon_nlmatrix_ds_get)
	ZEND_FE(rmon_nlmatrix_ds_getnext, arginfo_rmon_nlmatrix_ds_getnext)
	ZEND_FE(rmon_nlmatrix_ds_getbulk, arginfo_rmon_nlmatrix_ds_getbulk)
	ZEND_FE(rmon_almatrix_sd_get, arginfo_rmon_almatrix_sd_get)
	ZEND_FE(rmon_almatrix_sd_getnext, arginfo_rmon_almatrix_sd_getnext)
	ZEND_FE(rmon_almatrix_sd_getbulk, arginfo_rmon_almatrix_sd_getbulk)
	ZEND_FE(rmon_almatrix_ds_get, arginfo_rmon_almatrix_ds_get)
	ZEND_FE(rmon_almatrix_ds_getnext, arginfo_rmon_almatrix_ds_getnext)
	ZEND_FE(rmon_almatrix_ds_getbulk, arginfo_rmon_almatrix_ds_getbulk)
	ZEND_FE(rmon_alarm_get, arginfo_rmon_alarm_get)
	ZEND_FE(rmon_alarm_getnext, arginfo_rmon_alarm_getnext)
	ZEND_FE(rmon_alarm_set, arginfo_rmon_alarm_set)
	ZEND_FE(rmon_event_get, arginfo_rmon_event_get)
	ZEND_FE(rmon_event_getnext, arginfo_rmon_event_getnext)
	ZEND_FE(rmon_event_set, arginfo_rmon_event_set)
	ZEND_FE(rmon_log_get, arginfo_rmon_log_get)
	ZEND_FE(rmon_log_getnext, arginfo_rmon_log_getnext)
	ZEND_FE(rmon_trapdest_get, arginfo_rmon_trapdest_get)
	ZEND_FE(rmon_trapdest_getnext, arginfo_rmon_trapdest_getnext)
	ZEND_FE(rmon_trapdest_set, arginfo_rmon_trapdest_set)
	ZEND_FE(rmon_get_mib_var, arginfo_rmon_get_mib_var)
	ZEND_FE(rmon_gethostname, arginfo_rmon_gethostname)
	ZEND_FE(rmon_getprotdesc, arginfo_rmon_getprotdesc)
	ZEND_FE(rmon_get_ipconfig, arginfo_rmon_get_ipconfig)
	ZEND_FE(rmon_set_ipconfig, arginfo_rmon_set_ipconfig)
	ZEND_FE(rmon_get_hostname, arginfo_rmon_get_hostname)
	ZEND_FE(rmon_set_hostname, arginfo_rmon_set_hostname)
	ZEND_FE(rmon_get_resolvers, arginfo_rmon_get_resolvers)
	ZEND_FE(rmon_set_resolvers, arginfo_rmon_set_resolvers)
	ZEND_FE(dsmon_stats_get, arginfo_dsmon_stats_get)
	ZEND_FE(dsmon_stats_getnext, arginfo_dsmon_stats_getnext)
	ZEND_FE(dsmon_statsctl_get, arginfo_dsmon_statsctl_get)
	ZEND_FE(dsmon_statsctl_getnext, arginfo_dsmon_statsctl_getnext)
	ZEND_FE(dsmon_statsctl_set, arginfo_dsmon_statsctl_set)
	ZEND_FE(dsmon_aggctl_get, arginfo_dsmon_aggctl_get)
	ZEND_FE(dsmon_aggctl_getnext, arginfo_dsmon_aggctl_getnext)
	ZEND_FE(dsmon_aggctl_set, arginfo_dsmon_aggctl_set)
	ZEND_FE(dsmon_aggrp_get, arginfo_dsmon_aggrp_get)
	ZEND_FE(dsmon_aggrp_getnext, arginfo_dsmon_aggrp_getnext)
	ZEND_FE(dsmon_aggrp_set, arginfo_dsmon_aggrp_set)
	ZEND_FE(dsmon_aggprofs_get, arginfo_dsmon_aggprofs_get)
	ZEND_FE(dsmon_aggprof_set, arginfo_dsmon_aggprof_set)
	ZEND_FE(dsmon_aggctl_locked, arginfo_dsmon_aggctl_locked)
	ZEND_FE(dsmon_aggctl_set_lock, arginfo_dsmon_aggctl_set_lock)
	ZEND_FE(dsmon_pdistctl_get, arginfo_dsmon_pdistctl_get)
	ZEND_FE(dsmon_pdistctl_getnext, arginfo_dsmon_pdistctl_getnext)
	ZEND_FE(dsmon_pdistctl_set, arginfo_dsmon_pdistctl_set)
	ZEND_FE(dsmon_hostctl_get, arginfo_dsmon_hostctl_get)
	ZEND_FE(dsmon_hostctl_getnext, arginfo_dsmon_hostctl_getnext)
	ZEND_FE(dsmon_hostctl_set, arginfo_dsmon_hostctl_set)
	ZEND_FE(dsmon_pdstats_get, arginfo_dsmon_pdstats_get)
	ZEND_FE(dsmon_pdstats_getnext, arginfo_dsmon_pdstats_getnext)
	ZEND_FE(dsmon_hoststats_get, arginfo_dsmon_hoststats_get)
	ZEND_FE(dsmon_hoststats_getnext, arginfo_dsmon_hoststats_getnext)
	ZEND_FE(dsmon_matrixctl_get, arginfo_dsmon_matrixctl_get)
	ZEND_FE(dsmon_matrixctl_getnext, arginfo_dsmon_matrixctl_getnext)
	ZEND_FE(dsmon_matrixctl_set, arginfo_dsmon_matrixctl_set)
	ZEND_FE(dsmon_matrixsdstats_get, arginfo_dsmon_matrixsdstats_get)
	ZEND_FE(dsmon_matrixsdstats_getnext, arginfo_dsmon_matrixsdstats_getnext)
	ZEND_FE(dsmon_matrixdsstats_get, arginfo_dsmon_matrixdsstats_get)
	ZEND_FE(dsmon_matrixdsstats_getnext, arginfo_dsmon_matrixdsstats_getnext)
	ZEND_FE(rmon_vlan_ctl_get, arginfo_rmon_vlan_ctl_get)
	ZEND_FE(rmon_vlan_ctl_getnext, arginfo_rmon_vlan_ctl_getnext)
	ZEND_FE(rmon_vlan_ctl_set, arginfo_rmon_vlan_ctl_set)
	ZEND_FE(rmon_vlan_get, arginfo_rmon_vlan_get)
	ZEND_FE(rmon_vlan_getnext, arginfo_rmon_vlan_getnext)
	ZEND_FE(rmon_prio_ctl_get, arginfo_rmon_prio_ctl_get)
	ZEND_FE(rmon_prio_ctl_getnext, arginfo_rmon_prio_ctl_getnext)
	ZEND_FE(rmon_prio_ctl_set, arginfo_rmon_prio_ctl_set)
	ZEND_FE(rmon_prio_get, arginfo_rmon_prio_get)
	ZEND_FE(rmon_prio_getnext, arginfo_rmon_prio_getnext)
	ZEND_FE(rmon_filter_get, arginfo_rmon_filter_get)
	ZEND_FE(rmon_filter_getnext, arginfo_rmon_filter_getnext)
	ZEND_FE(rmon_filter_set, arginfo_rmon_filter_set)
	ZEND_FE(rmon_channel_get, arginfo_rmon_channel_get)
	ZEND_FE(rmon_channel_getnext, arginfo_rmon_channel_getnext)
	ZEND_FE(rmon_channel_set, arginfo_rmon_channel_set)
	ZEND_FE(rmon_buffer_ctl_get, arginfo_rmon_buffer_ctl_get)
	ZEND_FE(rmon_buffer_ctl_getnext, arginfo_rmon_buffer_ctl_getnext)
	ZEND_FE(rmon_buffer_ctl_set, arginfo_rmon_buffer_ctl_set)
	ZEND_FE(rmon_capture_buf_get, arginfo_rmon_capture_buf_get)
	ZEND_FE(rmon_capture_buf_getnext, arginfo_rmon_capture_buf_getnext)
	ZEND_FE(rmon_capture_save_file, arginfo_rmon_capture_save_file)
	ZEND_FE(rmon_art_ctl_get, arginfo_rmon_art_ctl_get)
	ZEND_FE(rmon_art_ctl_getnext, arginfo_rmon_art_ctl_getnext)
	ZEND_FE(rmon_art_ctl_set, arginfo_rmon_art_ctl_set)
	ZEND_FE(rmon_art_rpt_get, arginfo_rmon_art_rpt_get)
	ZEND_FE(rmon_art_rpt_getnext, arginfo_rmon_art_rpt_getnext)
	ZEND_FE(rmon_art_rpt_getbulk, arginfo_rmon_art_rpt_getbulk)
	ZEND_FE(rmon_art_sum_get, arginfo_rmon_art_sum_get)
	ZEND_FE(rmon_art_sum_getnext, arginfo_rmon_art_sum_getnext)
	ZEND_FE(rmon_art_sum_getbulk, arginfo_rmon_art_sum_getbulk)
	ZEND_FE(confirm_rmon_compiled, arginfo_confirm_rmon_compiled)
	ZEND_FE(sccp_config_params_get, arginfo_sccp_config_params_get)
	ZEND_FE(sccp_aggregate_data_get, arginfo_sccp_aggregate_data_get)
	ZEND_FE(sccp_voice_coll_table_sizes_set, arginfo_sccp_voice_coll_table_sizes_set)
	ZEND_FE(sccp_voice_coll_thresholds_set, arginfo_sccp_voice_coll_thresholds_set)
	ZEND_FE(sccp_voice_coll_enable, arginfo_sccp_voice_coll_enable)
	ZEND_FE(sccp_voice_coll_disable, arginfo_sccp_voice_coll_disable)
	ZEND_FE(sccp_voice_jitter_alarm_enable, arginfo_sccp_voice_jitter_alarm_enable)
	ZEND_FE(sccp_voice_jitter_alarm_disable, arginfo_sccp_voice_jitter_alarm_disable)
	ZEND_FE(sccp_voice_pkt_lost_alarm_enable, arginfo_sccp_voice_pkt_lost_alarm_enable)
	ZEND_FE(sccp_voice_pkt_lost_alarm_disable, arginfo_sccp_voice_pkt_lost_alarm_disable)
	ZEND_FE(sccp_voice_latency_alarm_enable, arginfo_sccp_voice_latency_alarm_enable)
	ZEND_FE(sccp_voice_latency_alarm_disable, arginfo_sccp_voice_latency_alarm_disable)
	ZEND_FE(sccp_voice_phone_table_clear, arginfo_sccp_voice_phone_table_clear)
	ZEND_FE(sccp_voice_call_table_clear, arginfo_sccp_voice_call_table_clear)
	ZEND_FE(sccp_voice_top_jitter_table_clear, arginfo_sccp_voice_top_jitter_table_clear)
	ZEND_FE(sccp_voice_top_pkt_lost_table_clear, arginfo_sccp_voice_top_pkt_lost_table_clear)
	ZEND_FE(sccp_voice_top_latency_table_clear, arginfo_sccp_voice_top_latency_table_clear)
	ZEND_FE(sccp_phone_rec_get, arginfo_sccp_phone_rec_get)
	ZEND_FE(sccp_phone_rec_getnext, arginfo_sccp_phone_rec_getnext)
	ZEND_FE(sccp_phone_rec_getbulk, arginfo_sccp_phone_rec_getbulk)
	ZEND_FE(sccp_call_rec_get, arginfo_sccp_call_rec_get)
	ZEND_FE(sccp_call_rec_getnext, arginfo_sccp_call_rec_getnext)
	ZEND_FE(sccp_call_rec_getbulk, arginfo_sccp_call_rec_getbulk)
	ZEND_FE(sccp_top_jitter_rec_get, arginfo_sccp_top_jitter_rec_get)
	ZEND_FE(sccp_top_jitter_rec_getnext, arginfo_sccp_top_jitter_rec_getnext)
	ZEND_FE(sccp_top_jitter_rec_getbulk, arginfo_sccp_top_jitter_rec_getbulk)
	ZEND_FE(sccp_top_pkt_lost_rec_get, arginfo_sccp_top_pkt_lost_rec_get)
	ZEND_FE(sccp_top_pkt_lost_rec_getnext, arginfo_sccp_top_pkt_lost_rec_getnext)
	ZEND_FE(sccp_top_pkt_lost_rec_getbulk, arginfo_sccp_top_pkt_lost_rec_getbulk)
	ZEND_FE(sccp_top_latency_rec_get, arginfo_sccp_top_latency_rec_get)
	ZEND_FE(sccp_top_latency_rec_getnext, arginfo_sccp_top_latency_rec_getnext)
	ZEND_FE(sccp_top_latency_rec_getbulk, arginfo_sccp_top_latency_rec_getbulk)
	ZEND_FE(h323_config_params_get, arginfo_h323_config_params_get)
	ZEND_FE(h323_aggregate_data_get, arginfo_h323_aggregate_data_get)
	ZEND_FE(h323_voice_coll_table_sizes_set, arginfo_h323_voice_coll_table_sizes_set)
	ZEND_FE(h323_voice_coll_thresholds_set, arginfo_h323_voice_coll_thresholds_set)
	ZEND_FE(h323_voice_coll_enable, arginfo_h323_voice_coll_enable)
	ZEND_FE(h323_voice_coll_disable, arginfo_h323_voice_coll_disable)
	ZEND_FE(h323_voice_jitter_alarm_enable, arginfo_h323_voice_jitter_alarm_enable)
	ZEND_FE(h323_voice_jitter_alarm_disable, arginfo_h323_voice_jitter_alarm_disable)
	ZEND_FE(h323_voice_pkt_lost_alarm_enable, arginfo_h323_voice_pkt_lost_alarm_enable)
	ZEND_FE(h323_voice_pkt_lost_alarm_disable, arginfo_h323_voice_pkt_lost_alarm_disable)
	ZEND_FE(h323_voice_phone_table_clear, arginfo_h323_voice_phone_table_clear)
	ZEND_FE(h323_voice_call_table_clear, arginfo_h323_voice_call_table_clear)
	ZEND_FE(h323_voice_top_jitter_table_clear, arginfo_h323_voice_top_jitter_table_clear)
	ZEND_FE(h323_voice_top_pkt_lost_table_clear, arginfo_h323_voice_top_pkt_lost_table_clear)
	ZEND_FE(h323_phone_rec_get, arginfo_h323_phone_rec_get)
	ZEND_FE(h323_phone_rec_getnext, arginfo_h323_phone_rec_getnext)
	ZEND_FE(h323_phone_rec_getbulk, arginfo_h323_phone_rec_getbulk)
	ZEND_FE(h323_call_rec_get, arginfo_h323_call_rec_get)
	ZEND_FE(h323_call_rec_getnext, arginfo_h323_call_rec_getnext)
	ZEND_FE(h323_call_rec_getbulk, arginfo_h323_call_rec_getbulk)
	ZEND_FE(h323_top_jitter_rec_get, arginfo_h323_top_jitter_rec_get)
	ZEND_FE(h323_top_jitter_rec_getnext, arginfo_h323_top_jitter_rec_getnext)
	ZEND_FE(h323_top_jitter_rec_getbulk, arginfo_h323_top_jitter_rec_getbulk)
	ZEND_FE(h323_top_pkt_lost_rec_get, arginfo_h323_top_pkt_lost_rec_get)
	ZEND_FE(h323_top_pkt_lost_rec_getnext, arginfo_h323_top_pkt_lost_rec_getnext)
	ZEND_FE(h323_top_pkt_lost_rec_getbulk, arginfo_h323_top_pkt_lost_rec_getbulk)
	ZEND_FE(mgcp_config_params_get, arginfo_mgcp_config_params_get)
	ZEND_FE(mgcp_aggregate_data_get, arginfo_mgcp_aggregate_data_get)
	ZEND_FE(mgcp_voice_coll_table_sizes_set, arginfo_mgcp_voice_coll_table_sizes_set)
	ZEND_FE(mgcp_voice_coll_thresholds_set, arginfo_mgcp_voice_coll_thresholds_set)
	ZEND_FE(mgcp_voice_coll_enable, arginfo_mgcp_voice_coll_enable)
	ZEND_FE(mgcp_voice_coll_disable, arginfo_mgcp_voice_coll_disable)
	ZEND_FE(mgcp_voice_jitter_alarm_enable, arginfo_mgcp_voice_jitter_alarm_enable)
	ZEND_FE(mgcp_voice_jitter_alarm_disable, arginfo_mgcp_voice_jitter_alarm_disable)
	ZEND_FE(mgcp_voice_pkt_lost_alarm_enable, arginfo_mgcp_voice_pkt_lost_alarm_enable)
	ZEND_FE(mgcp_voice_pkt_lost_alarm_disable, arginfo_mgcp_voice_pkt_lost_alarm_disable)
	ZEND_FE(mgcp_voice_latency_alarm_enable, arginfo_mgcp_voice_latency_alarm_enable)
	ZEND_FE(mgcp_voice_latency_alarm_disable, arginfo_mgcp_voice_latency_alarm_disable)
	ZEND_FE(mgcp_voice_phone_table_clear, arginfo_mgcp_voice_phone_table_clear)
	ZEND_FE(mgcp_voice_call_table_clear, arginfo_mgcp_voice_call_table_clear)
	ZEND_FE(mgcp_voice_top_jitter_table_clear, arginfo_mgcp_voice_top_jitter_table_clear)
	ZEND_FE(mgcp_voice_top_pkt_lost_table_clear, arginfo_mgcp_voice_top_pkt_lost_table_clear)
	ZEND_FE(mgcp_voice_top_latency_table_clear, arginfo_mgcp_voice_top_latency_table_clear)
	ZEND_FE(mgcp_phone_rec_get, arginfo_mgcp_phone_rec_get)
	ZEND_FE(mgcp_phone_rec_getnext, arginfo_mgcp_phone_rec_getnext)
	ZEND_FE(mgcp_phone_rec_getbulk, arginfo_mgcp_phone_rec_getbulk)
	ZEND_FE(mgcp_call_rec_get, arginfo_mgcp_call_rec_get)
	ZEND_FE(mgcp_call_rec_getnext, arginfo_mgcp_call_rec_getnext)
	ZEND_FE(mgcp_call_rec_getbulk, arginfo_mgcp_call_rec_getbulk)
	ZEND_FE(mgcp_top_jitter_rec_get, arginfo_mgcp_top_jitter_rec_get)
	ZEND_FE(mgcp_top_jitter_rec_getnext, arginfo_mgcp_top_jitter_rec_getnext)
	ZEND_FE(mgcp_top_jitter_rec_getbulk, arginfo_mgcp_top_jitter_rec_getbulk)
	ZEND_FE(mgcp_top_pkt_lost_rec_get, arginfo_mgcp_top_pkt_lost_rec_get)
	ZEND_FE(mgcp_top_pkt_lost_rec_getnext, arginfo_mgcp_top_pkt_lost_rec_getnext)
	ZEND_FE(mgcp_top_pkt_lost_rec_getbulk, arginfo_mgcp_top_pkt_lost_rec_getbulk)
	ZEND_FE(mgcp_top_latency_rec_get, arginfo_mgcp_top_latency_rec_get)
	ZEND_FE(mgcp_top_latency_rec_getnext, arginfo_mgcp_top_latency_rec_getnext)
	ZEND_FE(mgcp_top_latency_rec_getbulk, arginfo_mgcp_top_latency_rec_getbulk)
	ZEND_FE(rmon_community_get, arginfo_rmon_community_get)
	ZEND_FE(rmon_community_getnext, arginfo_rmon_community_getnext)
	ZEND_FE(rmon_community_getbulk, arginfo_rmon_community_getbulk)
	ZEND_FE(rmon_community_set, arginfo_rmon_community_set)
	ZEND_FE(rmon_community_delete, arginfo_rmon_community_delete)
	ZEND_FE(rmon_nde_device_get, arginfo_rmon_nde_device_get)
	ZEND_FE(rmon_nde_device_getnext, arginfo_rmon_nde_device_getnext)
	ZEND_FE(rmon_nde_device_getbulk, arginfo_rmon_nde_device_getbulk)
	ZEND_FE(rmon_nde_device_set, arginfo_rmon_nde_device_set)
	ZEND_FE(rmon_nde_device_del, arginfo_rmon_nde_device_del)
	ZEND_FE(rmon_nde_datasrc_get, arginfo_rmon_nde_datasrc_get)
	ZEND_FE(rmon_nde_datasrc_getnext, arginfo_rmon_nde_datasrc_getnext)
	ZEND_FE(rmon_nde_datasrc_getbulk, arginfo_rmon_nde_datasrc_getbulk)
	ZEND_FE(rmon_nde_datasrc_set, arginfo_rmon_nde_datasrc_set)
	ZEND_FE(rmon_nde_datasrc_mod, arginfo_rmon_nde_datasrc_mod)
	ZEND_FE(rmon_nde_datasrc_del, arginfo_rmon_nde_datasrc_del)
	ZEND_FE(rmon_nde_flow_path_get, arginfo_rmon_nde_flow_path_get)
	ZEND_FE(rmon_nde_flow_path_getnext, arginfo_rmon_nde_flow_path_getnext)
	ZEND_FE(rmon_nde_flow_path_getbulk, arginfo_rmon_nde_flow_path_getbulk)
	ZEND_FE(rmon_nde_flow_path_set, arginfo_rmon_nde_flow_path_set)
	ZEND_FE(rmon_nde_flow_path_del, arginfo_rmon_nde_flow_path_del)
	ZEND_FE(rmon_nde_learned_dev_get, arginfo_rmon_nde_learned_dev_get)
	ZEND_FE(rmon_nde_learned_dev_getnext, arginfo_rmon_nde_learned_dev_getnext)
	ZEND_FE(rmon_nde_learned_dev_getbulk, arginfo_rmon_nde_learned_dev_getbulk)
	ZEND_FE(rmon_nde_learned_dev_enable, arginfo_rmon_nde_learned_dev_enable)
	ZEND_FE(rmon_nde_learned_dev_disable, arginfo_rmon_nde_learned_dev_disable)
	ZEND_FE(rmon_nde_learned_dev_status, arginfo_rmon_nde_learned_dev_status)
	ZEND_FE(rmon_nde_learned_dev_intf_get, arginfo_rmon_nde_learned_dev_intf_get)
	ZEND_FE(rmon_nde_learned_dev_intf_getnext, arginfo_rmon_nde_learned_dev_intf_getnext)
	ZEND_FE(rmon_nde_learned_dev_intf_getbulk, arginfo_rmon_nde_learned_dev_intf_getbulk)
	ZEND_FE(rmon_inet_pton, arginfo_rmon_inet_pton)
	ZEND_FE(rmon_inet_ntop, arginfo_rmon_inet_ntop)
	ZEND_FE(norv_target_id, arginfo_norv_target_id)
	ZEND_FE(norv_prod_descr, arginfo_norv_prod_descr)
	ZEND_FE(norv_prod_no, arginfo_norv_prod_no)
	ZEND_FE_END
};
