// SPDX-License-Identifier: MIT
/* Application response time: how long servers take to answer their clients. */

#include "rmon/answers.h"

using namespace rmon;

namespace {

using C = rmonrpc_art_ctl_t;

using art_ctl_row = row_shape<
    status<&C::status>,
    field<&C::artControlIndex>,
    field<&C::artControlDataSource>,
    field<&C::artControlTimeRemaining>,
    field<&C::artControlDuration>,
    field<&C::artControlRspTime1>,
    field<&C::artControlRspTime2>,
    field<&C::artControlRspTime3>,
    field<&C::artControlRspTime4>,
    field<&C::artControlRspTime5>,
    field<&C::artControlRspTime6>,
    field<&C::artControlRspTimeout>,
    field<&C::artControlRptStartTime>,
    field<&C::artControlRequestedSize>,
    field<&C::artControlGrantedSize>,
    field<&C::artControlGeneratedRpts>,
    field<&C::artControlDroppedFrames>,
    field<&C::artControlOwner>,
    field<&C::artControlStatus>>;

void art_ctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<art_ctl_row>(call, ask(call, art_ctl_get_1, link, key, "art_ctl_get"));
}

/** Here a reply without rows is no failure but an empty array, for get and getnext too. */
template <class Shape, class Record>
void return_reports(script_call call, wire::rows<Record> *reply, int32_t getType)
{
    if (reply && reply->length == 0)
        ZVAL_EMPTY_ARRAY(call.return_value);
    return_rows<Shape>(call, reply, getType);
}

using R = rmonrpc_art_rpt_t;

using art_rpt_row = row_shape<
    status<&R::status>,
    field<&R::artServerAddress>,
    field<&R::artClientAddress>,
    field<&R::artAvgRspTime>,
    field<&R::artMinRspTime>,
    field<&R::artMaxRspTime>,
    field<&R::artTotalResponses>,
    field<&R::artRsps1>,
    field<&R::artRsps2>,
    field<&R::artRsps3>,
    field<&R::artRsps4>,
    field<&R::artRsps5>,
    field<&R::artRsps6>,
    field<&R::artRsps7>,
    field<&R::artClientOctets>,
    field<&R::artServerOctets>,
    field<&R::artRetries>,
    field<&R::artTimeouts>,
    field<&R::artControlIndex>,
    field<&R::protocolDirLocalIndex>>;

void art_rpt_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_art_rpt_key_t key{};
    key.getType = getType;
    zval *from, *to;
    address server, client;
    if (!take_rows_linked(
            call, getType, key.count, link, key.artControlIndex, key.protocolDirLocalIndex, from, to)
        || !convert(call, from, server, to, client))
        return;
    key.artServerAddress = list_of(server);
    key.artClientAddress = list_of(client);
    return_reports<art_rpt_row>(call, ask(call, art_rpt_get_1, link, key, "art_rpt_get"), getType);
}

using S = rmonrpc_art_sum_t;

using art_sum_row = row_shape<
    status<&S::status>,
    field<&S::artSummaryServerAddress>,
    field<&S::artSummaryClients>,
    field<&S::artSummaryAvgRspTime>,
    field<&S::artSummaryMinRspTime>,
    field<&S::artSummaryMaxRspTime>,
    field<&S::artSummaryTotalResponses>,
    field<&S::artSummaryRsps1>,
    field<&S::artSummaryRsps2>,
    field<&S::artSummaryRsps3>,
    field<&S::artSummaryRsps4>,
    field<&S::artSummaryRsps5>,
    field<&S::artSummaryRsps6>,
    field<&S::artSummaryRsps7>,
    field<&S::artSummaryClientOctets>,
    field<&S::artSummaryServerOctets>,
    field<&S::artSummaryRetries>,
    field<&S::artSummaryTimeouts>,
    field<&S::artControlIndex>,
    field<&S::protocolDirLocalIndex>>;

void art_sum_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_art_sum_key_t key{};
    key.getType = getType;
    address server;
    if (!take_rows_linked(
            call, getType, key.count, link, key.artControlIndex, key.protocolDirLocalIndex, server))
        return;
    key.artSummaryServerAddress = list_of(server);
    return_reports<art_sum_row>(call, ask(call, art_sum_get_1, link, key, "art_sum_get"), getType);
}

} // namespace

PHP_FUNCTION(rmon_art_ctl_get) { art_ctl_get(CALL, GET); }
PHP_FUNCTION(rmon_art_ctl_getnext) { art_ctl_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_art_ctl_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    C row{};
    if (take_linked(
            call, link, row.artControlIndex, row.artControlDataSource, row.artControlTimeRemaining,
            row.artControlRspTime1, row.artControlRspTime2, row.artControlRspTime3, row.artControlRspTime4,
            row.artControlRspTime5, row.artControlRspTime6, row.artControlRspTimeout,
            row.artControlRequestedSize, row.artControlOwner, row.artControlStatus))
        return_integer(call, ask(call, art_ctl_set_1, link, row, "rmon_art_ctl_set"));
}

PHP_FUNCTION(rmon_art_rpt_get) { art_rpt_get(CALL, GET); }
PHP_FUNCTION(rmon_art_rpt_getnext) { art_rpt_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_art_rpt_getbulk) { art_rpt_get(CALL, GETBULK); }
PHP_FUNCTION(rmon_art_sum_get) { art_sum_get(CALL, GET); }
PHP_FUNCTION(rmon_art_sum_getnext) { art_sum_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_art_sum_getbulk) { art_sum_get(CALL, GETBULK); }
