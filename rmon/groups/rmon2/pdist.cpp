// SPDX-License-Identifier: MIT
/* Protocol distribution (RFC 2021, protocolDistControlTable and protocolDistStatsTable). */

#include "rmon/answers.h"

using namespace rmon;

namespace {

using C = rmonrpc_pdist_ctl_t;

using pdist_ctl_row = row_shape<
    status<&C::status>,
    field<&C::protocolDistControlIndex>,
    field<&C::protocolDistControlDataSource>,
    field<&C::protocolDistControlDroppedFrames>,
    field<&C::protocolDistControlCreateTime>,
    field<&C::protocolDistControlOwner>,
    field<&C::protocolDistControlStatus>>;

void php_pdist_ctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (!take(call, link, key.index))
        return;
    C *reply = ask(call, pdist_ctl_get_1, link, key, "rmon_pdist_ctl_get");
    const bool ownerless = reply && !reply->protocolDistControlOwner.value;
    return_row<pdist_ctl_row>(call, reply);
    if (ownerless)
        zend_error(E_USER_NOTICE, "owner ptr is NULL!");
}

using S = rmonrpc_pdist_stats_t;

using pdist_stats_row = row_shape<
    status<&S::status>,
    indexed<1, &S::protocolDistControlIndex>,
    field<&S::pd_flags>,
    field<&S::protocolDistControlIndex>,
    field<&S::protocolDirLocalIndex>,
    field<&S::protocolDistStatsPkts>,
    field<&S::protocolDistStatsOctets>>;

/** Reports under the control table's label, on purpose. */
void pdist_stats_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key4_t key{0, 0, getType, 0};
    if (take_rows(call, getType, key.count, link, key.index1, key.index2))
        return_rows<pdist_stats_row>(
            call, ask(call, pdist_stats_get_1, link, key, "rmon_pdist_ctl_get"), getType);
}

using O = rmonrpc_others_counters_t;

using others_row = row_shape<status<&O::status>, field<&O::packets>, field<&O::octets>>;

} // namespace

PHP_FUNCTION(rmon_pdist_ctl_get) { php_pdist_ctl_get(CALL, GET); }
PHP_FUNCTION(rmon_pdist_ctl_getnext) { php_pdist_ctl_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_pdist_ctl_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    C row{};
    if (take(
            call, link, row.protocolDistControlIndex, row.protocolDistControlDataSource,
            row.protocolDistControlOwner, row.protocolDistControlStatus))
        return_integer(call, ask(call, pdist_ctl_set_1, link, row, "rmon_pdist_ctl_set"));
}

PHP_FUNCTION(rmon_pdist_stats_get) { pdist_stats_get(CALL, GET); }
PHP_FUNCTION(rmon_pdist_stats_getnext) { pdist_stats_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_pdist_stats_getbulk) { pdist_stats_get(CALL, GETBULK); }

/** An answer whose status is not zero counts as a failed call, and is reported in the words of one. */
PHP_FUNCTION(rmon_pdist_stats_getothers)
{
    constexpr const char *label = "rmon_pdist_stats_getothers";
    const script_call call{execute_data, return_value};
    link_id link;
    rmonrpc_row_key1_t key;
    if (!take(call, link, key.index))
        return;
    O *reply = ask(call, pdist_get_others_1, link, key, label);
    if (reply && reply->status != 0)
        report_failure(client_of(link), label);
    else
        return_row<others_row>(call, reply);
}
