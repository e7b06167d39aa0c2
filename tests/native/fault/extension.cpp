// SPDX-License-Identifier: MIT
// An extension with one function, commit_fault(string $kind): bool.

#include <php.h>

#include "tests/native/fault/fault.h"

ZEND_BEGIN_ARG_WITH_RETURN_TYPE_INFO_EX(arginfo_commit_fault, 0, 1, _IS_BOOL, 0)
ZEND_ARG_TYPE_INFO(0, kind, IS_STRING, 0)
ZEND_END_ARG_INFO()

static ZEND_FUNCTION(commit_fault)
{
    zend_string *kind;

    ZEND_PARSE_PARAMETERS_START(1, 1)
    Z_PARAM_STR(kind)
    ZEND_PARSE_PARAMETERS_END();

    RETURN_BOOL(commit_fault(ZSTR_VAL(kind)));
}

static const zend_function_entry functions[] = {ZEND_FE(commit_fault, arginfo_commit_fault) ZEND_FE_END};

static zend_module_entry fault_module_entry = {
    STANDARD_MODULE_HEADER,    "fault", functions, nullptr, nullptr, nullptr, nullptr, nullptr, "0",
    STANDARD_MODULE_PROPERTIES};

extern "C" {
ZEND_GET_MODULE(fault)
}
