<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/**
 * Writes values by ASN.1's packed encoding rules, the aligned variant of X.691, as far as H.225 and H.245 need them
 * here. Bits are added at the end; what begins at an octet is filled up to it before.
 */
final class Per
{
    private string $bytes = '';

    /** Bits of the last octet that are used; 0 when it is full. */
    private int $used = 0;

    /** So many bits of a number. */
    public function bits(int $value, int $count): self
    {
        for ($i = $count - 1; $i >= 0; $i--) {
            if ($this->used === 0) {
                $this->bytes .= "\0";
            }
            $last = strlen($this->bytes) - 1;
            $this->bytes[$last] = chr(ord($this->bytes[$last]) | ($value >> $i & 1) << 7 - $this->used);
            $this->used = ($this->used + 1) % 8;
        }
        return $this;
    }

    /** Single bits: whether there are extensions, which optional fields are there, truth values. */
    public function flags(bool|int ...$flags): self
    {
        foreach ($flags as $flag) {
            $this->bits((int) $flag, 1);
        }
        return $this;
    }

    /** An alternative, without an extension, of a choice that can have some and has so many others. */
    public function choice(int $index, int $alternatives): self
    {
        return $this->flags(0)->whole($index, 0, $alternatives - 1);
    }

    /** An alternative that is an extension, with its value. */
    public function extension(int $index, self $value): self
    {
        return $this->flags(1)->bits($index, 7)->open($value);
    }

    public function octets(string $bytes): self
    {
        $this->bytes .= $bytes;
        $this->used = 0;
        return $this;
    }

    /** A number of a known range. */
    public function whole(int $value, int $least, int $most): self
    {
        $value -= $least;
        $most -= $least;
        if ($most < 255) {
            return $this->bits($value, $most === 0 ? 0 : strlen(decbin($most)));
        }
        if ($most < 65_536) {
            return $this->octets($most === 255 ? chr($value) : pack('n', $value));
        }
        $octets = ltrim(pack('N', $value), "\0") ?: "\0";
        $longest = strlen(ltrim(pack('N', $most), "\0"));
        return $this->whole(strlen($octets), 1, $longest)->octets($octets);
    }

    /** How many octets or elements follow, where that has no limit. */
    public function length(int $count): self
    {
        return $this->octets($count < 128 ? chr($count) : pack('n', 0x8000 | $count));
    }

    public function text(string $bytes): self
    {
        return $this->length(strlen($bytes))->octets($bytes);
    }

    /** A value behind its length, as extensions are and what others may not know. */
    public function open(self $value): self
    {
        return $this->text($value->encoding());
    }

    /**
     * The extensions of a sequence, which stand behind its fields.
     *
     * @param list<self|null> $values null where there is none
     */
    public function extensions(?self ...$values): self
    {
        $this->flags(0)->bits(count($values) - 1, 6)->flags(...array_map(fn(?self $value) => $value !== null, $values));
        foreach ($values as $value) {
            if ($value !== null) {
                $this->open($value);
            }
        }
        return $this;
    }

    public function encoding(): string
    {
        return $this->bytes === '' ? "\0" : $this->bytes;
    }
}
