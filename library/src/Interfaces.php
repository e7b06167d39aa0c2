<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

use Rmon\Exception\UnknownName;

/** An agent's interfaces by number and name. */
final class Interfaces
{
    /** @var array<int, string>|null names by ifIndex */
    private ?array $names = null;

    /** @var array<int, true> numbers that were looked for in vain; 0 stands for none in many tables */
    private array $missing = [0 => true];

    private int $link = 0;

    public function __construct(private readonly Probe $probe)
    {
    }

    /** @return array<int, string> names by ifIndex */
    public function names(): array
    {
        if ($this->names === null || $this->link !== $this->probe->link->made) {
            $this->names = $this->read();
        }
        return $this->names;
    }

    /** The name of an interface; null when there is no interface of this number. */
    public function name(int $index): ?string
    {
        $name = $this->names()[$index] ?? null;
        if ($name === null && !isset($this->missing[$index])) {
            $this->names = $this->read();
            $name = $this->names[$index] ?? null;
            if ($name === null) {
                $this->missing[$index] = true;
            }
        }
        return $name;
    }

    /**
     * The number of an interface.
     *
     * @throws UnknownName
     */
    public function index(string $name): int
    {
        $index = array_search($name, $this->names(), true);
        if ($index === false) {
            $this->names = $this->read();
            $index = array_search($name, $this->names, true);
        }
        return $index === false ? throw UnknownName::among('interface', $name, $this->names) : $index;
    }

    /** @return array<int, string> */
    private function read(): array
    {
        $names = [];
        foreach ($this->probe->table('ifTable') as $row) {
            $names[$row['ifIndex']] = $row['ifDescr'];
        }
        $this->link = $this->probe->link->made;
        return $names;
    }
}
