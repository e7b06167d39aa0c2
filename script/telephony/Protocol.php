<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/** The signalling of one protocol. */
interface Protocol
{
    /** Phones announce themselves. */
    public function register(int $time): void;

    /** Each call in the order of their begins, and in time: what comes later is written later. */
    public function write(Call $call): void;

    /** All is over. */
    public function end(int $time): void;
}
