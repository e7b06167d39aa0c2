// SPDX-License-Identifier: MIT
/* The devices that the agent learned from the NetFlow data it receives, and the switch of the learning. */

#include "rmon/groups/nde/nde.h"

using namespace rmon;

namespace {

using L = rmonrpc_nde_learned_dev_t;

using learned_dev_row = row_shape<device_columns<&L::head>, field<&L::timeLastNdePkt>, field<&L::numNdePkts>>;

using learned_dev_rows = row_shape<rows_under<"devices", learned_dev_row>>;

void rmon_nde_learned_dev_data_get(script_call call, int32_t getType)
{
    L request{};
    read_rows<learned_dev_rows>(call, getType, nde_learned_dev_get_1, request);
}

using I = rmonrpc_nde_learned_dev_intf_t;

using learned_dev_intf_row = row_shape<field<&I::ifIndex>, field<&I::dirFlag>, left_out<&I::head>>;

using learned_dev_intf_rows = row_shape<rows_under<"interfaces", learned_dev_intf_row>>;

void rmon_nde_learned_dev_intf_data_get(script_call call, int32_t getType)
{
    I request{};
    read_rows<learned_dev_intf_rows>(call, getType, nde_learned_dev_intf_get_1, request, request.ifIndex);
}

using T = rmonrpc_nde_learned_dev_status_t;

using learned_dev_status_row = row_shape<field<&T::state>, field<&T::startTime>>;

} // namespace

PHP_FUNCTION(rmon_nde_learned_dev_get) { rmon_nde_learned_dev_data_get(CALL, GET); }
PHP_FUNCTION(rmon_nde_learned_dev_getnext) { rmon_nde_learned_dev_data_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_nde_learned_dev_getbulk) { rmon_nde_learned_dev_data_get(CALL, GETBULK); }
PHP_FUNCTION(rmon_nde_learned_dev_intf_get) { rmon_nde_learned_dev_intf_data_get(CALL, GET); }
PHP_FUNCTION(rmon_nde_learned_dev_intf_getnext) { rmon_nde_learned_dev_intf_data_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_nde_learned_dev_intf_getbulk) { rmon_nde_learned_dev_intf_data_get(CALL, GETBULK); }

PHP_FUNCTION(rmon_nde_learned_dev_enable)
{
    const script_call call{execute_data, return_value};
    link_id link;
    if (take(call, link))
        return_integer(call, ask(call, nde_auto_learned_enable_1, link, {}, "rmon_nde_learned_dev_enable"));
}

PHP_FUNCTION(rmon_nde_learned_dev_disable)
{
    const script_call call{execute_data, return_value};
    link_id link;
    if (take(call, link))
        return_integer(call, ask(call, nde_auto_learned_disable_1, link, {}, "rmon_nde_learned_dev_disable"));
}

PHP_FUNCTION(rmon_nde_learned_dev_status)
{
    const script_call call{execute_data, return_value};
    link_id link;
    if (take(call, link))
        return_row<learned_dev_status_row>(
            call, ask(call, nde_learned_dev_status_1, link, {}, "rmon_nde_learned_dev_status"));
}
