// SPDX-License-Identifier: MIT
/*
 * What the tables of the three voice monitors have in common: how a field is
 * shown, the aggregate figures, the calls of a phone, and the answer of a
 * table read.
 */
#pragma once

#include "rmon/answers.h"

namespace rmon {

/* ---- fields -------------------------------------------------------------------- */

/* How a field is shown follows from its type. */

inline void show(zval *slot, int32_t value) { ZVAL_LONG(slot, value); }

/** The signed view: scripts of these tables know 4294967295 as -1. */
inline void show(zval *slot, uint32_t value) { ZVAL_LONG(slot, static_cast<int32_t>(value)); }

template <uint32_t N> void show(zval *slot, const wire::chars<N> &text) { set(slot, text); }

template <uint32_t N> void show(zval *slot, const wire::uchars<N> &text) { set(slot, text); }

/* Vectors of sixteen are addresses, of which four bytes are shown. */

inline void show(zval *slot, const wire::uchars<16> &address) { set_dotted(slot, address.value); }

inline void show(zval *slot, const wire::chars<16> &address)
{
    set_dotted(slot, reinterpret_cast<const uint8_t *>(address.value));
}

struct as_shown {
    template <class Field> static void put(zval *slot, const Field &value) { show(slot, value); }
};

/** A field under its own name; under its name behind a prefix; under another name. */
template <auto Member> using shown = column<member_key<Member>, as_shown, Member>;
template <key_text Prefix, auto Member> using shown_with =
    column<prefixed_key<Prefix, Member>, as_shown, Member>;
template <key_text Key, auto Member> using shown_as = column<text_key<Key>, as_shown, Member>;

/* ---- aggregate figures ----------------------------------------------------------- */

/** The figures as the agent worked them out, for a record that has them. */
template <class R> using aggregate_columns = columns<
    shown<&R::flag>,
    shown<&R::num_call_mon>,
    shown<&R::avg_pkt_lost>,
    shown<&R::avg_jitter>,
    shown<&R::worst_pkt_lost>,
    shown<&R::worst_jitter>>;

/* The same where the agent sends sums, and jitter in hundredths of what scripts see. */

inline constexpr uint32_t hundredths = 100;

/** A sum by its samples, in units of Unit each; 0 where the product of samples and unit, in 32 bits, is 0. */
template <uint32_t Unit = 1> uint32_t mean(uint32_t sum, uint32_t samples)
{
    const uint32_t divisor = samples * Unit;
    return divisor ? sum / divisor : 0;
}

/** What Function returns of the fields, shown as a field of its type. */
template <auto Function> struct shown_made_by {
    template <class... Field> static void put(zval *slot, const Field &...field)
    {
        show(slot, Function(field...));
    }
};

template <key_text Key, auto Function, auto... Member> using shown_mean =
    column<text_key<Key>, shown_made_by<Function>, Member...>;

inline uint32_t by_hundred(uint32_t value) { return value / hundredths; }

template <class R> using summed_aggregate_columns = columns<
    shown<&R::flag>,
    shown<&R::num_call_mon>,
    shown_mean<"avg_pkt_lost", mean<>, &R::sum_pkt_lost, &R::num_samples>,
    shown_mean<"avg_jitter", mean<hundredths>, &R::sum_jitter, &R::num_samples>,
    shown<&R::worst_pkt_lost>,
    column<member_key<&R::worst_jitter>, shown_made_by<by_hundred>, &R::worst_jitter>>;

/* ---- a phone's last calls ---------------------------------------------------------- */

template <class Phone> bool has_history(const Phone &phone) { return phone.num_hist_row > 0; }

/** The calls that a phone's record holds: at most as many as fit it, whatever their count claims. */
template <class Shape> struct calls_of {
    template <class Calls> static void put(zval *slot, int32_t claimed, const Calls &calls)
    {
        set(slot, make_rows<Shape>(calls.value, std::min(static_cast<uint32_t>(claimed), calls.size)));
    }
};

template <class Phone, class Shape> using history =
    column<text_key<"history">, calls_of<Shape>, &Phone::num_hist_row, &Phone::history>;

/* ---- table reads -------------------------------------------------------------------- */

/** All rows of a reply, as a list. */
template <key_text Key, class Row> struct listed {
    static constexpr std::array keys{text_key<Key>::key};
    template <class Reply> static void put(Bucket *slot, const Reply &reply)
    {
        set(&slot->val, make_rows<Row>(reply));
    }
    static constexpr void tell(field_list &, uint32_t) {}
};

/**
 * Reads a table by its one index; Answer lists the rows. FALSE, without a
 * message, when there are none and when the call fails.
 */
template <class Answer, class Procedure>
void voice_rec_get(script_call call, int32_t getType, const Procedure &procedure)
{
    link_id link;
    int32_t index, count;
    if (!take_rows(call, getType, count, link, index))
        return;
    // In these tables the key's three fields carry index, mode and count.
    const rmonrpc_row_key3_t key{index, getType, count};
    auto *reply = ask(call, procedure, link, key, unreported);
    if (!reply)
        return;
    if (reply->length)
        ZVAL_ARR(call.return_value, make_row<Answer>(*reply));
    release(reply);
}

} // namespace rmon
