// SPDX-License-Identifier: MIT
/* History (RFC 2819, historyControlTable and etherHistoryTable). */

#include "rmon/answers.h"

using namespace rmon;

namespace {

using C = rmonrpc_history_ctl_t;

using history_ctl_row = row_shape<
    status<&C::status>,
    field<&C::historyControlIndex>,
    field<&C::historyControlDataSource>,
    field<&C::historyControlBucketsRequested>,
    field<&C::historyControlBucketsGranted>,
    field<&C::historyControlInterval>,
    field<&C::historyControlOwner>,
    field<&C::historyControlStatus>>;

/** Reports under the interface table's label, on purpose. */
void history_ctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<history_ctl_row>(call, ask(call, history_ctl_get_1, link, key, "rmon_ifentry_get"));
}

using H = rmonrpc_etherhistory_t;

/** Shows jabbers before fragments, unlike the record. */
using etherhistory_row = row_shape<
    status<&H::status>,
    field<&H::etherHistoryIndex>,
    field<&H::etherHistorySampleIndex>,
    field<&H::etherHistoryIntervalStart>,
    field<&H::etherHistoryDropEvents>,
    field<&H::etherHistoryOctets>,
    field<&H::etherHistoryPkts>,
    field<&H::etherHistoryBroadcastPkts>,
    field<&H::etherHistoryMulticastPkts>,
    field<&H::etherHistoryCRCAlignErrors>,
    field<&H::etherHistoryUndersizePkts>,
    field<&H::etherHistoryOversizePkts>,
    field<&H::etherHistoryJabbers>,
    field<&H::etherHistoryFragments>,
    field<&H::etherHistoryCollisions>,
    field<&H::etherHistoryUtilization>>;

void etherhistory_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key4_t key{0, 0, getType, 0};
    if (take_rows(call, getType, key.count, link, key.index1, key.index2))
        return_rows<etherhistory_row>(
            call, ask(call, etherhistory_get_1, link, key, "rmon_etherhistory_getbulk"), getType);
}

} // namespace

PHP_FUNCTION(rmon_history_ctl_get) { history_ctl_get(CALL, GET); }
PHP_FUNCTION(rmon_history_ctl_getnext) { history_ctl_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_history_ctl_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    C row{};
    // Scripts match on the label's spelling.
    if (take(
            call, link, row.historyControlIndex, row.historyControlDataSource,
            row.historyControlBucketsRequested, row.historyControlInterval, row.historyControlOwner,
            row.historyControlStatus))
        return_integer(call, ask(call, history_ctl_set_1, link, row, "rmon_histroy_ctl_set"));
}

PHP_FUNCTION(rmon_etherhistory_get) { etherhistory_get(CALL, GET); }
PHP_FUNCTION(rmon_etherhistory_getnext) { etherhistory_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_etherhistory_getbulk) { etherhistory_get(CALL, GETBULK); }
