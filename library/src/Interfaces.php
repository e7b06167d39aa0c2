<?php

declare(strict_types=1);

namespace Rmon;

use Rmon\Exception\UnknownName;

/** An agent's interfaces by number and name. */
final class Interfaces
{
    /** @var array<int, string>|null names by ifIndex */
    private ?array $names = null;

    public function __construct(private readonly Probe $probe)
    {
    }

    /** @return array<int, string> names by ifIndex */
    public function names(): array
    {
        return $this->names ??= $this->read();
    }

    /** The name of an interface; null when there is none of this number. */
    public function name(int $index): ?string
    {
        $fresh = $this->names === null;
        $name = $this->names()[$index] ?? null;
        if ($name === null && !$fresh && $index !== 0) {
            $this->names = $this->read();
            $name = $this->names[$index] ?? null;
            // Asked once: a number without an interface stays without one.
            $this->names[$index] = $name ?? (string) $index;
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
        return $names;
    }
}
