// SPDX-License-Identifier: MIT
/* The devices that export NetFlow data, their data sources and the flow paths of those. */

#include "rmon/groups/nde/nde.h"

using namespace rmon;

namespace rmon {

/* ---- shared with the learned devices ------------------------------------------------ */

bool convert_read_address(script_call call, zval *argument, rmonrpc_nde_head_t &head)
{
    ZVAL_DEREF(argument);
    constexpr uint32_t max_elements = sizeof head.address.value;
    if (Z_TYPE_P(argument) == IS_ARRAY && zend_hash_num_elements(Z_ARRVAL_P(argument)) > max_elements) {
        zend_error(
            E_WARNING, "too many (%d) elements in addr!",
            static_cast<int>(zend_hash_num_elements(Z_ARRVAL_P(argument))));
        return false;
    }
    address from;
    if (!convert(call, argument, from))
        return false;
    head.addressLength = from.length;
    std::memcpy(head.address.value, from.bytes, from.length);
    return true;
}

bool convert(script_call call, zval *argument, rmonrpc_nde_head_t &head)
{
    ZVAL_DEREF(argument);
    const bool is_array = Z_TYPE_P(argument) == IS_ARRAY;
    if (!is_array)
        zend_error(E_WARNING, "missing device address!");
    const bool converted = is_array && convert_read_address(call, argument, head);
    if (!converted)
        ZVAL_FALSE(call.return_value);
    return converted;
}

bool convert(script_call call, zval *argument, nde_text &text)
{
    const char *from;
    if (!convert(call, argument, from))
        return false;
    std::memcpy(text.value, from, strnlen(from, sizeof text.value));
    return true;
}

void show_address(zval *slot, const wire::uchars<16> &address, uint32_t length)
{
    set_bytes(slot, address.value, std::min(length, address.size));
}

} // namespace rmon

namespace {

/* ---- devices -------------------------------------------------------------------------- */

using D = rmonrpc_nde_device_t;

using device_row =
    row_shape<device_columns<&D::head>, field<&D::deviceName>, field<&D::commString>, field<&D::flag>>;

using device_rows = row_shape<rows_under<"devices", device_row>>;

void rmon_nde_device_data_get(script_call call, int32_t getType)
{
    D request{};
    read_rows<device_rows>(call, getType, nde_device_get_1, request);
}

/* ---- data sources ---------------------------------------------------------------------- */

using S = rmonrpc_nde_datasrc_t;

using datasrc_row = row_shape<
    device_columns<&S::head>,
    field<&S::deviceName>,
    field<&S::datasrcName>,
    field<&S::datasrcIndex>,
    field<&S::flag>>;

using datasrc_rows = row_shape<rows_under<"datasrcs", datasrc_row>>;

void rmon_nde_datasrc_data_get(script_call call, int32_t getType)
{
    S request{};
    read_rows<datasrc_rows>(call, getType, nde_datasrc_get_1, request, request.datasrcIndex);
}

/* ---- flow paths ------------------------------------------------------------------------- */

using F = rmonrpc_nde_flow_path_t;

using flow_path_row = row_shape<
    device_columns<&F::head>,
    field<&F::deviceName>,
    field<&F::datasrcIndex>,
    field<&F::inputIndex>,
    field<&F::outputIndex>,
    left_out<&F::flag>>;

using flow_path_rows = row_shape<rows_under<"flowPaths", flow_path_row>>;

void rmon_nde_flow_path_data_get(script_call call, int32_t getType)
{
    F request{};
    read_rows<flow_path_rows>(
        call, getType, nde_flow_path_get_1, request, request.datasrcIndex, request.inputIndex,
        request.outputIndex);
}

void flow_path_set(script_call call, int32_t operation, const char *label)
{
    F row{};
    write_row(
        call, operation, label, nde_flow_path_set_1, row, row.datasrcIndex, row.inputIndex, row.outputIndex);
}

} // namespace

PHP_FUNCTION(rmon_nde_device_get) { rmon_nde_device_data_get(CALL, GET); }
PHP_FUNCTION(rmon_nde_device_getnext) { rmon_nde_device_data_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_nde_device_getbulk) { rmon_nde_device_data_get(CALL, GETBULK); }

/** The community comes first, unlike in the record. */
PHP_FUNCTION(rmon_nde_device_set)
{
    const script_call call{execute_data, return_value};
    D row{};
    write_row(call, NDE_SET, "rmon_nde_device_set", nde_device_set_1, row, row.commString, row.deviceName);
}

PHP_FUNCTION(rmon_nde_device_del)
{
    const script_call call{execute_data, return_value};
    D row{};
    write_row(call, NDE_DELETE, "rmon_nde_device_del", nde_device_set_1, row);
}

PHP_FUNCTION(rmon_nde_datasrc_get) { rmon_nde_datasrc_data_get(CALL, GET); }
PHP_FUNCTION(rmon_nde_datasrc_getnext) { rmon_nde_datasrc_data_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_nde_datasrc_getbulk) { rmon_nde_datasrc_data_get(CALL, GETBULK); }

/** A new data source, whose number the agent gives. */
PHP_FUNCTION(rmon_nde_datasrc_set)
{
    const script_call call{execute_data, return_value};
    S row{};
    write_row(call, NDE_SET, "rmon_nde_datasrc_set", nde_datasrc_set_1, row, row.datasrcName);
}

/** Reports under the deletion's label, on purpose. */
PHP_FUNCTION(rmon_nde_datasrc_mod)
{
    const script_call call{execute_data, return_value};
    S row{};
    write_row(
        call, NDE_SET, "rmon_nde_datasrc_del", nde_datasrc_set_1, row, row.datasrcIndex, row.datasrcName);
}

PHP_FUNCTION(rmon_nde_datasrc_del)
{
    const script_call call{execute_data, return_value};
    S row{};
    write_row(call, NDE_DELETE, "rmon_nde_datasrc_del", nde_datasrc_set_1, row, row.datasrcIndex);
}

PHP_FUNCTION(rmon_nde_flow_path_get) { rmon_nde_flow_path_data_get(CALL, GET); }
PHP_FUNCTION(rmon_nde_flow_path_getnext) { rmon_nde_flow_path_data_get(CALL, GETNEXT); }
PHP_FUNCTION(rmon_nde_flow_path_getbulk) { rmon_nde_flow_path_data_get(CALL, GETBULK); }
PHP_FUNCTION(rmon_nde_flow_path_set) { flow_path_set(CALL, NDE_SET, "rmon_nde_flow_path_set"); }

/** Reports under the data source's label, on purpose. */
PHP_FUNCTION(rmon_nde_flow_path_del) { flow_path_set(CALL, NDE_DELETE, "rmon_nde_datasrc_del"); }
