<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests;

use PHPUnit\Framework\TestCase;
use Rmon\Machine;

/** What the module says of this machine, which is no appliance. */
final class MachineTest extends TestCase
{
    public function testTheModule(): void
    {
        self::assertTrue(Machine::hasModule());
        self::assertSame(phpversion('rmon'), Machine::moduleVersion());
        self::assertStringContainsString('loaded module rmon', Machine::greeting());
    }

    public function testTheHost(): void
    {
        self::assertSame(gethostname(), Machine::hostName());
        self::assertSame(gethostname(), Machine::applianceName());
    }

    public function testNoAppliance(): void
    {
        self::assertNull(Machine::kind());
        self::assertNull(Machine::product());
        self::assertNull(Machine::productNumber());
        self::assertNull(Machine::describeProtocol('ip'));
    }
}
