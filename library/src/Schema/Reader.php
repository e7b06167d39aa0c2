<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Schema;

/** The functions that read a table. They take the link, the table's keys in their order and, for getbulk, a count. */
final class Reader
{
    private function __construct(
        public readonly string $get,
        public readonly ?string $getNext = null,
        public readonly ?string $getBulk = null,
        public readonly Shape $shape = Shape::Row,
        public readonly string $envelope = '',
        public readonly bool $quiet = false,
        public readonly bool $answersNone = true,
    ) {
    }

    /** Single rows: get alone. */
    public static function one(string $get, Shape $shape = Shape::Row): self
    {
        return new self($get, shape: $shape);
    }

    /** get and getnext. */
    public static function rows(string $family): self
    {
        return new self("{$family}_get", "{$family}_getnext");
    }

    /** get, getnext and getbulk. */
    public static function pages(string $family): self
    {
        return new self("{$family}_get", "{$family}_getnext", "{$family}_getbulk");
    }

    /** get, getnext and getbulk, whose rows are a list under a key. */
    public static function wrapped(string $family, string $envelope): self
    {
        return new self("{$family}_get", "{$family}_getnext", "{$family}_getbulk", Shape::Envelope, $envelope);
    }

    /**
     * The same functions, which keep silent when a call fails.
     *
     * @param bool $answersNone whether they answer the same when there is no such row
     */
    public function quiet(bool $answersNone = true): self
    {
        return new self(
            $this->get,
            $this->getNext,
            $this->getBulk,
            $this->shape,
            $this->envelope,
            true,
            $answersNone,
        );
    }

    /** @return list<string> */
    public function functions(): array
    {
        return array_values(array_filter([$this->get, $this->getNext, $this->getBulk], is_string(...)));
    }
}
