/*
 * What the tables of the three voice monitors have in common: how a field is
 * shown, the aggregate figures, the calls of a phone, and the answer of a
 * table read.
 */
#pragma once

#include "rmon/answers.h"

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

/** A field under its own name. */
template <auto Member> struct shown {
    static constexpr std::array keys{member_key<Member>::key};
    template <class Record> static void put(Bucket *slot, const Record &record)
    {
        show(&slot->val, record.*Member);
    }
};

/** A field under another name. */
template <key_text Key, auto Member> struct shown_as {
    static constexpr std::array keys{text_key<Key>::key};
    template <class Record> static void put(Bucket *slot, const Record &record)
    {
        show(&slot->val, record.*Member);
    }
};

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
template <key_text Key, auto Sum, auto Samples, uint32_t Unit = 1> struct mean {
    static constexpr std::array keys{text_key<Key>::key};
    template <class Record> static void put(Bucket *slot, const Record &record)
    {
        const uint32_t divisor = record.*Samples * Unit;
        show(&slot->val, divisor ? record.*Sum / divisor : 0);
    }
};

template <auto Member> struct in_hundredths {
    static constexpr std::array keys{member_key<Member>::key};
    template <class Record> static void put(Bucket *slot, const Record &record)
    {
        show(&slot->val, record.*Member / hundredths);
    }
};

template <class R> using summed_aggregate_columns = columns<
    shown<&R::flag>,
    shown<&R::num_call_mon>,
    mean<"avg_pkt_lost", &R::sum_pkt_lost, &R::num_samples>,
    mean<"avg_jitter", &R::sum_jitter, &R::num_samples, hundredths>,
    shown<&R::worst_pkt_lost>,
    in_hundredths<&R::worst_jitter>>;

/* ---- a phone's last calls ---------------------------------------------------------- */

template <class Phone> bool has_history(const Phone &phone) { return phone.num_hist_row > 0; }

/** The calls that a phone's record holds: at most as many as fit it, whatever their count claims. */
template <class Call> struct history {
    static constexpr std::array keys{text_key<"history">::key};
    template <class Phone> static void put(Bucket *slot, const Phone &phone)
    {
        const auto claimed = static_cast<uint32_t>(phone.num_hist_row);
        set(&slot->val, make_rows<Call>(phone.history.value, std::min(claimed, phone.history.size)));
    }
};

/* ---- table reads -------------------------------------------------------------------- */

/** All rows of a reply, as a list. */
template <key_text Key, class Row> struct listed {
    static constexpr std::array keys{text_key<Key>::key};
    template <class Reply> static void put(Bucket *slot, const Reply &reply)
    {
        set(&slot->val, make_rows<Row>(reply));
    }
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
