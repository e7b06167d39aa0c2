/* This is a generated file, edit the .stub.php file instead.
 * Stub hash: 64f63d74bca40c892483ba98bfea3333bed5853f */

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

ZEND_BEGIN_ARG_INFO_EX(arginfo_confirm_rmon_compiled, 0, 0, 1)
ZEND_ARG_INFO(0, arg)
ZEND_END_ARG_INFO()

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
ZEND_FUNCTION(rmon_host_ctl_get);
ZEND_FUNCTION(rmon_host_ctl_getnext);
ZEND_FUNCTION(rmon_host_ctl_set);
ZEND_FUNCTION(rmon_host_get);
ZEND_FUNCTION(rmon_host_getnext);
ZEND_FUNCTION(rmon_host_getbulk);
ZEND_FUNCTION(rmon_hosttime_get);
ZEND_FUNCTION(rmon_hosttime_getnext);
ZEND_FUNCTION(rmon_hosttime_getbulk);
ZEND_FUNCTION(rmon_hlhost_ctl_get);
ZEND_FUNCTION(rmon_hlhost_ctl_getnext);
ZEND_FUNCTION(rmon_hlhost_ctl_set);
ZEND_FUNCTION(rmon_nlhost_get);
ZEND_FUNCTION(rmon_nlhost_getnext);
ZEND_FUNCTION(rmon_nlhost_getbulk);
ZEND_FUNCTION(rmon_alhost_get);
ZEND_FUNCTION(rmon_alhost_getnext);
ZEND_FUNCTION(rmon_alhost_getbulk);
ZEND_FUNCTION(confirm_rmon_compiled);

static const zend_function_entry ext_functions[] = {
    ZEND_FE(rmon_connect, arginfo_rmon_connect) ZEND_FE(rmon_pconnect, arginfo_rmon_pconnect)
        ZEND_FE(rmon_close, arginfo_rmon_close) ZEND_FE(rmon_system_get, arginfo_rmon_system_get) ZEND_FE(
            rmon_system_set, arginfo_rmon_system_set) ZEND_FE(rmon_ifentry_get, arginfo_rmon_ifentry_get)
            ZEND_FE(rmon_ifentry_getnext, arginfo_rmon_ifentry_getnext) ZEND_FE(
                rmon_etherstats_get,
                arginfo_rmon_etherstats_get) ZEND_FE(rmon_etherstats_getnext, arginfo_rmon_etherstats_getnext)
                ZEND_FE(rmon_etherstats_set, arginfo_rmon_etherstats_set) ZEND_FE(
                    rmon_host_ctl_get,
                    arginfo_rmon_host_ctl_get) ZEND_FE(rmon_host_ctl_getnext, arginfo_rmon_host_ctl_getnext)
                    ZEND_FE(rmon_host_ctl_set, arginfo_rmon_host_ctl_set) ZEND_FE(
                        rmon_host_get,
                        arginfo_rmon_host_get) ZEND_FE(rmon_host_getnext, arginfo_rmon_host_getnext)
                        ZEND_FE(rmon_host_getbulk, arginfo_rmon_host_getbulk)
                            ZEND_FE(rmon_hosttime_get, arginfo_rmon_hosttime_get)
                                ZEND_FE(rmon_hosttime_getnext, arginfo_rmon_hosttime_getnext) ZEND_FE(
                                    rmon_hosttime_getbulk, arginfo_rmon_hosttime_getbulk)
                                    ZEND_FE(rmon_hlhost_ctl_get, arginfo_rmon_hlhost_ctl_get) ZEND_FE(
                                        rmon_hlhost_ctl_getnext, arginfo_rmon_hlhost_ctl_getnext)
                                        ZEND_FE(rmon_hlhost_ctl_set, arginfo_rmon_hlhost_ctl_set) ZEND_FE(
                                            rmon_nlhost_get, arginfo_rmon_nlhost_get)
                                            ZEND_FE(rmon_nlhost_getnext, arginfo_rmon_nlhost_getnext) ZEND_FE(
                                                rmon_nlhost_getbulk, arginfo_rmon_nlhost_getbulk)
                                                ZEND_FE(rmon_alhost_get, arginfo_rmon_alhost_get) ZEND_FE(
                                                    rmon_alhost_getnext, arginfo_rmon_alhost_getnext)
                                                    ZEND_FE(rmon_alhost_getbulk, arginfo_rmon_alhost_getbulk)
                                                        ZEND_FE(
                                                            confirm_rmon_compiled,
                                                            arginfo_confirm_rmon_compiled) ZEND_FE_END};
