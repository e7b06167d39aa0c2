// SPDX-License-Identifier: MIT
/*
 * Rows: how a decoded record becomes the array that a script sees.
 *
 * A row shape is a list of columns, declared once beside the worker that
 * returns it, in the order in which scripts see the keys:
 *
 *     using R = rmonrpc_pdist_stats_t;
 *     using pdist_stats_row = row_shape<
 *         status<&R::status>,
 *         indexed<1, &R::protocolDistControlIndex>,
 *         field<&R::pd_flags>,
 *         ...>;
 *
 * At module start-up each shape's keys become permanent interned strings in a
 * prototype of the hash. Making a row copies the prototype and puts the values
 * into its slots.
 */
#pragma once

#include "rmon/platform.h"
#include "rmon/rmon.h"
#include "rmon/rpc/wire.h"

#include <algorithm>
#include <array>
#include <bit>
#include <concepts>
#include <string_view>
#include <utility>

namespace rmon {

/* ---- values --------------------------------------------------------------------- */

/** A packed array of integers, one for each byte; the engine's shared empty array when there are none. */
void set_bytes(zval *slot, const uint8_t *bytes, uint32_t length);

/** The text up to the first zero byte, at most size bytes. */
void set_text(zval *slot, const char *text, size_t size);

/** The first four bytes as "10.1.200.7". */
void set_dotted(zval *slot, const uint8_t *bytes);

/** Bytes in hexadecimal, two digits each from digits, with separator between them. */
void set_hex(zval *slot, const uint8_t *bytes, uint32_t length, const char *digits, char separator);

/**
 * Whether the script has used up its memory. An engine that lets a function
 * come to its end before it stops the script stops the whole process when the
 * function goes on as if nothing had happened, so what makes large values looks
 * here. Other engines leave the function at once.
 */
inline bool out_of_memory()
{
#ifdef ZEND_HAS_OOM
    return ZEND_HAS_OOM();
#else
    return false;
#endif
}

/** An empty list with room for length values, to be filled by ZEND_HASH_FILL_*; without it when
 * out_of_memory(). */
zend_array *new_list(uint32_t length);

/** The list of what put(slot, i) sets for each i below length; shorter when out_of_memory(). */
template <class Put> zend_array *make_list(uint32_t length, Put put)
{
    zend_array *list = new_list(length);
    ZEND_HASH_FILL_PACKED(list) {
        for (uint32_t i = 0; i < length && !out_of_memory(); i++) {
            zval value;
            put(&value, i);
            ZEND_HASH_FILL_ADD(&value);
        }
    }
    ZEND_HASH_FILL_END();
    return list;
}

inline void set(zval *slot, int32_t value)
{
    ZVAL_LONG(slot, value);
}

inline void set(zval *slot, uint32_t value)
{
    ZVAL_LONG(slot, value);
}

/** A counter: the nearest float to the unsigned value. */
inline void set(zval *slot, uint64_t value)
{
    ZVAL_DOUBLE(slot, static_cast<double>(value));
}

inline void set(zval *slot, double value)
{
    ZVAL_DOUBLE(slot, value);
}

template <uint32_t Bound> void set(zval *slot, wire::text<Bound> text)
{
    set_text(slot, text.value ? text.value : "", SIZE_MAX);
}

inline void set(zval *slot, std::string_view text)
{
    ZVAL_STR(slot, zend_string_init_fast(text.data(), text.size()));
}

inline void set(zval *slot, const wire::byte_list &list)
{
    set_bytes(slot, wire::bytes_of(list), list.length);
}

template <uint32_t N> void set(zval *slot, const wire::chars<N> &text)
{
    set_text(slot, text.value, N);
}

template <uint32_t N> void set(zval *slot, const wire::uchars<N> &text)
{
    set_text(slot, reinterpret_cast<const char *>(text.value), N);
}

inline void set(zval *slot, zend_array *array)
{
    ZVAL_ARR(slot, array);
}

/* ---- keys ------------------------------------------------------------------------- */

/** A text key, or an integer key where text is null. */
struct row_key {
    const char *text;
    uint32_t length;
    uint32_t number;
};

/** A key given in a column's template arguments. */
template <uint32_t N> struct key_text {
    char value[N];

    consteval key_text(const char (&text)[N]) { std::copy_n(text, N, value); }
};

template <auto Member> struct member_key {
    static constexpr const auto &text = wire::member_name<Member>;
    static constexpr std::string_view view{text.data(), text.size() - 1};
    static constexpr row_key key{text.data(), static_cast<uint32_t>(view.size()), 0};
};
static_assert(member_key<&script_call::return_value>::view == "return_value");

template <key_text Text> struct text_key {
    static constexpr auto text = Text;
    static constexpr row_key key{text.value, sizeof text.value - 1, 0};
};

template <key_text Prefix, auto Member> struct prefixed_key {
    static constexpr auto text = [] {
        constexpr std::string_view prefix{Prefix.value, sizeof Prefix.value - 1},
            name = member_key<Member>::view;
        std::array<char, prefix.size() + name.size() + 1> joined{};
        std::copy(name.begin(), name.end(), std::copy(prefix.begin(), prefix.end(), joined.begin()));
        return joined;
    }();
    static constexpr row_key key{text.data(), text.size() - 1, 0};
};

template <uint32_t Number> struct number_key {
    static constexpr row_key key{nullptr, 0, Number};
};

/* ---- columns ------------------------------------------------------------------------ *
 *
 * A column has its keys, one or more; put(), which sets their values in the
 * slots of a row; and tell(), which tells the fields of the record that it
 * shows. A field that no column of a row tells is a mistake of the compiler's
 * to report, not of the script's to find.
 */

/** Fields of a record, by where they lie in it. */
struct field_list {
    struct part {
        uint32_t offset;
        uint32_t size;
        constexpr bool operator==(const part &) const = default;
    };
    std::array<part, 256> parts{};
    uint32_t count = 0;

    template <class Record, class Field> static consteval uint32_t size_of(Field Record::*)
    {
        return sizeof(Field);
    }

    template <auto Member> constexpr void add(uint32_t base)
    {
        parts[count++] = {base + wire::member_offset<Member>, size_of(Member)};
    }

    constexpr bool has(uint32_t offset, uint32_t size) const
    {
        return std::find(parts.begin(), parts.begin() + count, part{offset, size}) != parts.begin() + count;
    }
};

/*
 * What is made of a byte list or of a vector of bytes takes memory, and stands
 * beside an equal one more often than not: tables are ordered by address, phones
 * of one make have the same texts. One value serves both rows then, until a
 * script writes to it.
 */

/** One key, under which Value::put() sets what becomes of these fields; of none, of the whole record. */
template <class Key, class Value, auto... Member> struct column {
    static constexpr std::array keys{Key::key};

    template <class Record> static void put(Bucket *slot, const Record &record)
    {
        Value::put(&slot->val, record.*Member...);
    }

    /** In a row made after its neighbour, which lends it what is the same. */
    template <class Record>
    static void put(Bucket *slot, const Record &record, const Bucket *slot_before, const Record &before)
    {
        if constexpr (requires { wire::same_bytes(record.*Member..., before.*Member...); }) {
            if (wire::same_bytes(record.*Member..., before.*Member...)) {
                ZVAL_COPY(&slot->val, &slot_before->val);
                return;
            }
        }
        put(slot, record);
    }

    static constexpr void tell([[maybe_unused]] field_list &fields, [[maybe_unused]] uint32_t base)
    {
        (fields.add<Member>(base), ...);
    }
};

/** A field as it is. */
struct as_it_is {
    template <class Field> static void put(zval *slot, const Field &value) { set(slot, value); }
};

/** What Function returns of the fields. */
template <auto Function> struct made_by {
    template <class... Field> static void put(zval *slot, const Field &...field)
    {
        set(slot, Function(field...));
    }
};

/** What Function sets of the fields. */
template <auto Function> struct set_by {
    template <class... Field> static void put(zval *slot, const Field &...field) { Function(slot, field...); }
};

/** An address in one of the tables that show an empty one as the integer 0. */
struct or_zero {
    static void put(zval *slot, const wire::byte_list &address)
    {
        if (address.length)
            set(slot, address);
        else
            ZVAL_LONG(slot, 0);
    }
};

/** A field under its own name; under another one; under an integer key. */
template <auto Member> using field = column<member_key<Member>, as_it_is, Member>;
template <key_text Key, auto Member> using named = column<text_key<Key>, as_it_is, Member>;
template <uint32_t Number, auto Member> using indexed = column<number_key<Number>, as_it_is, Member>;

template <auto Member> using address_or_zero = column<member_key<Member>, or_zero, Member>;
template <key_text Key, auto Member> using named_address_or_zero = column<text_key<Key>, or_zero, Member>;

/** A value that Function returns, or sets, of these fields. */
template <key_text Key, auto Function, auto... Member> using computed =
    column<text_key<Key>, made_by<Function>, Member...>;
template <key_text Key, auto Function, auto... Member> using converted =
    column<text_key<Key>, set_by<Function>, Member...>;

/** Fields that scripts don't see. */
template <auto... Member> struct left_out {
    static constexpr std::array<row_key, 0> keys{};
    template <class Record> static void put(Bucket *, const Record &) {}
    static constexpr void tell([[maybe_unused]] field_list &fields, [[maybe_unused]] uint32_t base)
    {
        (fields.add<Member>(base), ...);
    }
};

/** Puts a column into a row made after its neighbour, which may lend it values. */
template <class Column, class Record>
void put_beside(Bucket *slot, const Record &record, const Bucket *slot_before, const Record &before)
{
    if constexpr (requires { Column::put(slot, record, slot_before, before); })
        Column::put(slot, record, slot_before, before);
    else
        Column::put(slot, record);
}

/** Several columns in a row; itself a column. */
template <class... Column> struct columns {
    static constexpr auto keys = [] {
        std::array<row_key, (Column::keys.size() + ...)> all{};
        auto next = all.begin();
        ((next = std::copy(Column::keys.begin(), Column::keys.end(), next)), ...);
        return all;
    }();
    template <class Record> static void put(Bucket *slot, const Record &record)
    {
        ((Column::put(slot, record), slot += Column::keys.size()), ...);
    }
    template <class Record>
    static void put(Bucket *slot, const Record &record, const Bucket *slot_before, const Record &before)
    {
        const auto one = [&]<class Each>() {
            put_beside<Each>(slot, record, slot_before, before);
            slot += Each::keys.size();
            slot_before += Each::keys.size();
        };
        (one.template operator()<Column>(), ...);
    }
    static constexpr void tell(field_list &fields, uint32_t base) { (Column::tell(fields, base), ...); }
};

/** The agent's result code, shown twice: under the integer key 0 and under "status". */
template <auto Member> struct status : columns<indexed<0, Member>, named<"status", Member>> {
};

/** Columns of a nested record. */
template <auto Member, class... Column> struct within {
    static constexpr auto keys = columns<Column...>::keys;
    template <class Record> static void put(Bucket *slot, const Record &record)
    {
        columns<Column...>::put(slot, record.*Member);
    }
    template <class Record>
    static void put(Bucket *slot, const Record &record, const Bucket *slot_before, const Record &before)
    {
        columns<Column...>::put(slot, record.*Member, slot_before, before.*Member);
    }
    static constexpr void tell(field_list &fields, uint32_t base)
    {
        columns<Column...>::tell(fields, base + wire::member_offset<Member>);
    }
};

/** Columns that a row has only where Condition holds; elsewhere their keys are absent. */
template <auto Condition, class... Column> struct only_if {
    static constexpr auto keys = columns<Column...>::keys;
    template <class Record> static void put(Bucket *slot, const Record &record)
    {
        if (Condition(record)) {
            columns<Column...>::put(slot, record);
            return;
        }
        for (uint32_t i = 0; i < keys.size(); i++)
            ZVAL_UNDEF(&slot[i].val);
    }
    static constexpr void tell(field_list &fields, uint32_t base) { columns<Column...>::tell(fields, base); }
};

/* ---- rows ----------------------------------------------------------------------------- */

/** The hash that a shape's rows are copied from. */
struct row_prototype {
    const row_key *keys;
    uint32_t count;
    zend_array *table; // null until module start-up
    row_prototype *next;
};

/** Enters a shape's prototype for prepare_rows(); runs while the module is loaded. */
bool declare_row(row_prototype &prototype);

/** Makes the prototypes of all shapes. For module start-up, where strings can be interned for good. */
void prepare_rows();

/** Frees them. For module shutdown. */
void forget_rows();

/** The part of a table's data block that holds anything: the hash and the buckets in use. */
constexpr size_t used_bytes(uint32_t count)
{
    return hash_bytes(count) + count * sizeof(Bucket);
}

/**
 * Copies a table's data block, in steps of a cache line: for the sizes that
 * most rows have, that takes less time than the string instruction that
 * compilers make of a memcpy() of a known size. The steps of the narrow rows
 * stand one after another.
 */
template <uint32_t count> void copy_table(void *to, const void *from)
{
    constexpr size_t line = 64;
    constexpr size_t size = used_bytes(count), whole = size / line * line;
    constexpr size_t max_unrolled = 1024, max_in_steps = 2048;
    auto *out = static_cast<std::byte *>(to);
    const auto *in = static_cast<const std::byte *>(from);
    if constexpr (whole > max_in_steps) {
        std::memcpy(out, in, size);
        return;
    }
    const auto copy_line = [=](size_t i) { std::memcpy(out + i, in + i, line); };
    if constexpr (whole <= max_unrolled) {
        [=]<size_t... Line>(std::index_sequence<Line...>)
        {
            (copy_line(Line * line), ...);
        }
        (std::make_index_sequence<whole / line>{});
    } else {
        for (size_t i = 0; i < whole; i += line)
            copy_line(i);
    }
    std::memcpy(out + whole, in + whole, size - whole);
}

/** Takes the keys off a row whose slots were left undefined. */
void drop_undefined(zend_array *row);

template <class... Column> struct row_shape : columns<Column...> {
    static constinit inline row_prototype prototype{
        row_shape::keys.data(), row_shape::keys.size(), nullptr, nullptr};
    static inline const bool declared = declare_row(prototype);
};

/** Whether a column's keys may be absent. */
template <class Column> inline constexpr bool may_be_absent = false;
template <auto Condition, class... Column>
inline constexpr bool may_be_absent<only_if<Condition, Column...>> = true;
template <class... Column>
inline constexpr bool may_be_absent<columns<Column...>> = (may_be_absent<Column> || ...);
template <auto Member, class... Column>
inline constexpr bool may_be_absent<within<Member, Column...>> = (may_be_absent<Column> || ...);
template <class... Column>
inline constexpr bool may_be_absent<row_shape<Column...>> = (may_be_absent<Column> || ...);

/** A row with the keys of a shape, and no values yet. */
template <class Shape> [[gnu::always_inline]] inline zend_array *blank_row()
{
    constexpr auto count = static_cast<uint32_t>(Shape::keys.size());
    (void)Shape::declared;
    const zend_array *prototype = Shape::prototype.table;
    auto *row = static_cast<zend_array *>(emalloc(sizeof(zend_array)));
    *row = *prototype;
    constexpr size_t size =
        table_bytes(count); // a constant of its own: the engine picks the bin while compiling
    void *data = emalloc(size);
    copy_table<count>(data, HT_GET_DATA_ADDR(prototype));
    HT_SET_DATA_ADDR(row, data);
    return row;
}

/* Each field of a record is in a column, or left out by name: what follows finds the others. */

/** Whether the fields of a field are looked at in its place; the vocabulary of the records is shown as a
 * whole. */
template <class Field> inline constexpr bool is_nested = std::is_class_v<Field>;
template <uint32_t Bound> inline constexpr bool is_nested<wire::text<Bound>> = false;
template <> inline constexpr bool is_nested<wire::byte_list> = false;
template <uint32_t N> inline constexpr bool is_nested<wire::uchars<N>> = false;
template <uint32_t N> inline constexpr bool is_nested<wire::chars<N>> = false;
template <class Row> inline constexpr bool is_nested<wire::rows<Row>> = false;
template <class Record, uint32_t N> inline constexpr bool is_nested<wire::repeated<Record, N>> = N == 1;

template <class Field> struct nested {
    using type = Field;
};
template <class Record> struct nested<wire::repeated<Record, 1>> {
    using type = Record;
};

inline constexpr uint32_t no_offset = UINT32_MAX;

template <class Field> consteval uint32_t first_not_in(const field_list &fields, uint32_t offset);

template <class... Member> consteval uint32_t
first_of_members(const field_list &fields, const uint32_t *offsets, uint32_t base, wire::type_list<Member...>)
{
    uint32_t first = no_offset;
    ((first = std::min(first, first_not_in<Member>(fields, base + *offsets++))), ...);
    return first;
}

/** The offset of the first part of a field that is in no column; no_offset when all of it is in one. */
template <class Field> consteval uint32_t first_not_in(const field_list &fields, uint32_t offset)
{
    if (fields.has(offset, sizeof(Field)))
        return no_offset;
    if constexpr (is_nested<Field>) {
        using record = typename nested<Field>::type;
        return first_of_members(
            fields, wire::member_offsets<record>.data(), offset, wire::member_types<record>{});
    } else {
        return offset;
    }
}

template <class Shape, class Record> consteval uint32_t first_field_missed()
{
    field_list fields;
    Shape::tell(fields, 0);
    return is_nested<Record> ? first_not_in<Record>(fields, 0) : no_offset;
}

/** The array of one record; neighbour: the row made before it and its record, or neither. */
template <class Shape, class Record, class... Neighbour>
zend_array *make_row(const Record &record, const Neighbour &...neighbour)
{
    static_assert(
        first_field_missed<Shape, Record>() == no_offset,
        "the field at this offset of the record is in no column: show it, or name it in left_out<>");
    zend_array *row = blank_row<Shape>();
    Shape::put(row->arData, record, neighbour...);
    if constexpr (may_be_absent<Shape>)
        drop_undefined(row);
    return row;
}

/**
 * The list of all rows, under 0, 1, 2 in their order. They are made from the
 * last to the first: the engine frees them from the first to the last, and hands
 * out first what was freed last. So either way begins with what the other left
 * in the cache, which all rows of a large reply don't fit.
 */
template <class Shape, class Record> zend_array *make_rows(const Record *records, uint32_t length)
{
    zend_array *list = make_list(length, [](zval *slot, uint32_t) { ZVAL_EMPTY_ARRAY(slot); });
    const zend_array *before = nullptr;
    for (uint32_t i = list->nNumUsed; i-- > 0 && !out_of_memory();) {
        zend_array *row = before ? make_row<Shape>(records[i], before->arData, records[i + 1])
                                 : make_row<Shape>(records[i]);
        before = row;
        ZVAL_ARR(list_slot(list, i), row);
    }
    return list;
}

template <class Shape, class Record> zend_array *make_rows(const wire::rows<Record> &rows)
{
    return make_rows<Shape>(rows.value, rows.length);
}

} // namespace rmon
