// SPDX-License-Identifier: MIT
/* Host Top-N (RFC 2819, hostTopNControlTable and hostTopNTable). */

#include "rmon/answers.h"

using namespace rmon;

namespace {

using C = rmonrpc_hosttopn_ctl_t;

using hosttopn_ctl_row = row_shape<
    status<&C::status>,
    field<&C::hostTopNControlIndex>,
    field<&C::hostTopNHostIndex>,
    field<&C::hostTopNRateBase>,
    field<&C::hostTopNTimeRemaining>,
    field<&C::hostTopNDuration>,
    field<&C::hostTopNRequestedSize>,
    field<&C::hostTopNGrantedSize>,
    field<&C::hostTopNStartTime>,
    field<&C::hostTopNOwner>,
    field<&C::hostTopNStatus>>;

void hosttopn_ctl_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key2_t key{0, getType};
    if (take(call, link, key.index))
        return_row<hosttopn_ctl_row>(call, ask(call, hosttopn_ctl_get_1, link, key, "hosttopn_ctl_get"));
}

using T = rmonrpc_hosttopn_t;

using hosttopn_row = row_shape<
    status<&T::status>,
    field<&T::hostTopNReport>,
    field<&T::hostTopNIndex>,
    field<&T::hostTopNAddress>,
    field<&T::hostTopNRate>>;

void hosttopn_get(script_call call, int32_t getType)
{
    link_id link;
    rmonrpc_row_key4_t key{0, 0, getType, 0};
    if (take_rows(call, getType, key.count, link, key.index1, key.index2))
        return_rows<hosttopn_row>(
            call, ask(call, hosttopn_get_1, link, key, "rmon_hosttopn_getbulk"), getType);
}

} // namespace

PHP_FUNCTION(rmon_hosttopn_ctl_get) { hosttopn_ctl_get(CALL, GET); }
PHP_FUNCTION(rmon_hosttopn_ctl_getnext) { hosttopn_ctl_get(CALL, GETNEXT); }

PHP_FUNCTION(rmon_hosttopn_ctl_set)
{
    const script_call call{execute_data, return_value};
    link_id link;
    C row{};
    if (take(
            call, link, row.hostTopNControlIndex, row.hostTopNHostIndex, row.hostTopNRateBase,
            row.hostTopNTimeRemaining, row.hostTopNRequestedSize, row.hostTopNOwner, row.hostTopNStatus))
        return_integer(call, ask(call, hosttopn_ctl_set_1, link, row, "rmon_hosttopn_ctl_set"));
}

PHP_FUNCTION(rmon_hosttopn_get) { hosttopn_get(CALL, GET); }
PHP_FUNCTION(rmon_hosttopn_getnext) { hosttopn_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_hosttopn_getbulk) { hosttopn_get(CALL, GETBULK); }
