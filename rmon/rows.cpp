// SPDX-License-Identifier: MIT
#include "rmon/rows.h"

namespace rmon {

namespace {

constinit row_prototype *declared_rows = nullptr;

constexpr const char *decimal_digits = "0123456789";

/** Texts and lists up to these sizes are made without a look at the script's memory. */
[[maybe_unused]] constexpr size_t max_ordinary_text = 4096;
[[maybe_unused]] constexpr uint32_t max_ordinary_list = 1024;

/** "0" to "255" and their lengths, so that addresses are put together without a formatter. */
struct decimal {
    char text[3];
    uint8_t length;
};

constexpr std::array<decimal, 256> decimals = [] {
    std::array<decimal, 256> table{};
    for (int value = 0; value < 256; value++) {
        decimal &entry = table[value];
        if (value >= 100)
            entry.text[entry.length++] = decimal_digits[value / 100];
        if (value >= 10)
            entry.text[entry.length++] = decimal_digits[value / 10 % 10];
        entry.text[entry.length++] = decimal_digits[value % 10];
    }
    return table;
}();

} // namespace

#if PHP_VERSION_ID >= 80200
/**
 * A packed array of the engine's smallest size, into which most addresses fit:
 * put together here, since the engine's way takes three calls for it.
 */
static zend_array *small_list(const uint8_t *bytes, uint32_t length)
{
    auto *list = static_cast<zend_array *>(emalloc(sizeof(zend_array)));
    void *data = emalloc(smallest_list_bytes);
    GC_SET_REFCOUNT(list, 1);
    GC_TYPE_INFO(list) = GC_ARRAY;
    HT_FLAGS(list) = HASH_FLAG_PACKED | HASH_FLAG_STATIC_KEYS;
    list->nTableMask = HT_MIN_MASK;
    list->nTableSize = HT_MIN_SIZE;
    list->nNumUsed = list->nNumOfElements = length;
    list->nInternalPointer = 0;
    list->nNextFreeElement = length;
    list->pDestructor = ZVAL_PTR_DTOR;
    HT_SET_DATA_ADDR(list, data);
    HT_HASH_RESET_PACKED(list);
    for (uint32_t i = 0; i < length; i++)
        ZVAL_LONG(&list->arPacked[i], bytes[i]);
    return list;
}
#endif

/** Out of line, so that short lists have none of its cost. */
[[gnu::noinline]] static void set_any_bytes(zval *slot, const uint8_t *bytes, uint32_t length)
{
    if (length == 0)
        ZVAL_EMPTY_ARRAY(slot);
    else
        ZVAL_ARR(slot, make_list(length, [=](zval *byte, uint32_t i) { ZVAL_LONG(byte, bytes[i]); }));
}

void set_bytes(zval *slot, const uint8_t *bytes, uint32_t length)
{
#if PHP_VERSION_ID >= 80200
    if (length > 0 && length <= HT_MIN_SIZE) {
        ZVAL_ARR(slot, small_list(bytes, length));
        return;
    }
#endif
    set_any_bytes(slot, bytes, length);
}

void set_text(zval *slot, const char *text, size_t size)
{
    const size_t length = strnlen(text, size);
#ifdef ZEND_HAS_OOM
    if (length > max_ordinary_text) {
        ZVAL_FSTRINGL(slot, text, length);
        return;
    }
#endif
    ZVAL_STR(slot, zend_string_init_fast(text, length));
}

void set_dotted(zval *slot, const uint8_t *bytes)
{
    // A constant size: the engine picks the bin while compiling. The fourth byte of a part is overwritten.
    zend_string *text = zend_string_alloc(sizeof "255.255.255.255" - 1, 0);
    char *end = ZSTR_VAL(text);
    for (int i = 0; i < 4; i++) {
        const decimal &part = decimals[bytes[i]];
        std::memcpy(end, &part, sizeof part);
        end += part.length;
        *end++ = '.';
    }
    *--end = '\0';
    ZSTR_LEN(text) = static_cast<size_t>(end - ZSTR_VAL(text));
    ZVAL_NEW_STR(slot, text);
}

void set_hex(zval *slot, const uint8_t *bytes, uint32_t length, const char *digits, char separator)
{
    zend_string *text = zend_string_alloc(3 * length - 1, 0);
    char *to = ZSTR_VAL(text);
    for (uint32_t i = 0; i < length; i++) {
        if (i)
            *to++ = separator;
        *to++ = digits[bytes[i] >> 4];
        *to++ = digits[bytes[i] & 15];
    }
    *to = '\0';
    ZVAL_NEW_STR(slot, text);
}

zend_array *new_list(uint32_t length)
{
    zend_array *list = zend_new_array(length);
#ifdef ZEND_HAS_OOM
    if (length > max_ordinary_list) {
        if (zend_hash_real_finit_packed(list, true) == SUCCESS)
            return list;
        zend_array_destroy(list);
        list = zend_new_array(0);
    }
#endif
    zend_hash_real_init_packed(list);
    return list;
}

bool declare_row(row_prototype &prototype)
{
    prototype.next = declared_rows;
    declared_rows = &prototype;
    return true;
}

static zend_array *prepare(const row_prototype &prototype)
{
    auto *table = static_cast<zend_array *>(pemalloc(sizeof(zend_array), 1));
    zend_hash_init(table, prototype.count, nullptr, ZVAL_PTR_DTOR, 1);
    zend_hash_real_init_mixed(table);
    zval empty;
    ZVAL_NULL(&empty);
    for (uint32_t i = 0; i < prototype.count; i++) {
        const row_key &key = prototype.keys[i];
        if (key.text)
            zend_hash_add_new(table, zend_string_init_interned(key.text, key.length, 1), &empty);
        else
            zend_hash_index_add_new(table, key.number, &empty);
    }
    // What the copies are: arrays of the request, like any that a script makes.
    GC_TYPE_INFO(table) = GC_ARRAY;
    return table;
}

void prepare_rows()
{
    for (row_prototype *prototype = declared_rows; prototype; prototype = prototype->next)
        prototype->table = prepare(*prototype);
}

void forget_rows()
{
    for (row_prototype *prototype = declared_rows; prototype; prototype = prototype->next) {
        pefree(HT_GET_DATA_ADDR(prototype->table), 1);
        pefree(prototype->table, 1);
        prototype->table = nullptr;
    }
}

void drop_undefined(zend_array *row)
{
    for (uint32_t i = row->nNumUsed; i-- > 0;) {
        Bucket *slot = row->arData + i;
        if (Z_TYPE(slot->val) != IS_UNDEF)
            continue;
        ZVAL_NULL(&slot->val);
        zend_hash_del(row, slot->key);
    }
}

} // namespace rmon
