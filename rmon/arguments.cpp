// SPDX-License-Identifier: MIT
#include "rmon/arguments.h"

namespace rmon {

int type_number(const zval *value)
{
    switch (Z_TYPE_P(value)) {
    case IS_LONG:
        return 1;
    case IS_DOUBLE:
        return 2;
    case IS_STRING:
        return 3;
    case IS_ARRAY:
        return 4;
    case IS_OBJECT:
        return 5;
    case IS_FALSE:
    case IS_TRUE:
        return 6;
    case IS_RESOURCE:
        return 7;
    default:
        return 0;
    }
}

void wrong_parameter_count()
{
    zend_error(E_WARNING, "Wrong parameter count for %s()", get_active_function_name());
}

bool convert(script_call, zval *argument, zend_long &integer)
{
    ZVAL_DEREF(argument);
    if (EXPECTED(Z_TYPE_P(argument) == IS_LONG)) {
        integer = Z_LVAL_P(argument);
        return true;
    }
    // The argument keeps its type: a resource in the frame stays alive until the call ends.
    integer = zval_get_long(argument);
    return !EG(exception);
}

/** An object that can't be a text is refused with a warning, where the engine's own conversion throws. */
static bool object_to_string(zval *argument)
{
    zval text;
    if (Z_OBJ_HT_P(argument)->cast_object(Z_OBJ_P(argument), &text, IS_STRING) != SUCCESS) {
        if (!EG(exception))
            zend_error(
                E_WARNING, "Object of class %s could not be converted to string",
                ZSTR_VAL(Z_OBJCE_P(argument)->name));
        return false;
    }
    zval object;
    ZVAL_COPY_VALUE(&object, argument);
    ZVAL_COPY_VALUE(argument, &text);
    zval_ptr_dtor(&object);
    return true;
}

bool convert(script_call, zval *argument, const char *&text)
{
    ZVAL_DEREF(argument);
    if (Z_TYPE_P(argument) == IS_OBJECT) {
        if (!object_to_string(argument))
            return false;
    } else {
        convert_to_string(argument);
    }
    text = Z_STRVAL_P(argument);
    return !EG(exception);
}

bool convert(script_call call, zval *argument, std::string_view &text)
{
    const char *start;
    if (!convert(call, argument, start))
        return false;
    ZVAL_DEREF(argument);
    text = {start, Z_STRLEN_P(argument)};
    return true;
}

/* ---- addresses ---------------------------------------------------------------- */

/** Reads an array of integers alone; false when there is anything else in it. */
static bool read_integers(HashTable *elements, address &to)
{
    zval *element;
    to.length = 0;
    ZEND_HASH_FOREACH_VAL(elements, element) {
        ZVAL_DEREF(element);
        if (Z_TYPE_P(element) != IS_LONG)
            return false;
        to.bytes[to.length++] = static_cast<uint8_t>(Z_LVAL_P(element));
    }
    ZEND_HASH_FOREACH_END();
    return true;
}

/** Puts an integer in the place of an element of an array of our own, through a reference where there is one.
 */
static zend_long convert_element(zval *element)
{
    zval value;
    ZVAL_COPY_DEREF(&value, element);
    const zend_long integer = zval_get_long(&value);
    zval_ptr_dtor(&value);

    // A typed property behind the reference keeps its value: no conversion may break its type.
    if (Z_ISREF_P(element) && ZEND_REF_HAS_TYPE_SOURCES(Z_REF_P(element)))
        return integer;
    ZVAL_DEREF(element);
    zval old;
    ZVAL_COPY_VALUE(&old, element);
    ZVAL_LONG(element, integer);
    zval_ptr_dtor(&old);
    return integer;
}

static zval *value_of(zval *argument)
{
    ZVAL_DEREF(argument);
    return argument;
}

/** Whether an array in the place of what a variable holds would break a typed property that shares it. */
static bool refuses_arrays(zval *variable)
{
    return Z_ISREF_P(variable) && ZEND_REF_HAS_TYPE_SOURCES(Z_REF_P(variable))
           && Z_TYPE_P(Z_REFVAL_P(variable)) != IS_ARRAY;
}

/**
 * Converts the elements in a copy of the array, which takes the array's place
 * when all is done: whatever user code a conversion runs, it can't reach the
 * array that is walked here.
 */
static bool convert_elements(zval *argument, address &to)
{
    HashTable *converted = zend_array_dup(Z_ARRVAL_P(value_of(argument)));
    zval *element;
    to.length = 0;
    ZEND_HASH_FOREACH_VAL(converted, element) {
        to.bytes[to.length++] = static_cast<uint8_t>(convert_element(element));
    }
    ZEND_HASH_FOREACH_END();

    zval unused;
    ZVAL_ARR(&unused, converted);
    if (!refuses_arrays(argument)) {
        zval *array = value_of(argument);
        ZVAL_COPY_VALUE(&unused, array);
        ZVAL_ARR(array, converted);
    }
    zval_ptr_dtor(&unused);
    return !EG(exception);
}

/** Refuses an array of more elements than an address may have. */
static bool short_enough(script_call call, zval *argument)
{
    const zval *value = value_of(argument);
    if (Z_TYPE_P(value) != IS_ARRAY)
        return true;
    const uint32_t count = zend_hash_num_elements(Z_ARRVAL_P(value));
    if (count <= max_address_bytes)
        return true;
    zend_error(E_WARNING, "too many (%d) elements in addr!", static_cast<int>(count));
    ZVAL_FALSE(call.return_value);
    return false;
}

bool convert(script_call call, zval *argument, address &to)
{
    to.length = 0;
    if (!short_enough(call, argument))
        return false;
    const zval *value = value_of(argument);
    return Z_TYPE_P(value) != IS_ARRAY || read_integers(Z_ARRVAL_P(value), to)
           || convert_elements(argument, to);
}

bool convert(script_call call, zval *first, address &one, zval *second, address &two)
{
    return short_enough(call, first) && short_enough(call, second) && convert(call, first, one)
           && convert(call, second, two);
}

bool convert(script_call call, zval *argument, integer_or_address &to)
{
    zend_long integer;
    if (Z_TYPE_P(value_of(argument)) != IS_ARRAY && !convert(call, argument, integer))
        return false;
    return convert(call, argument, static_cast<address &>(to));
}

} // namespace rmon
