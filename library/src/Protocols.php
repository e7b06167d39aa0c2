<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

use Rmon\Exception\UnknownName;

/**
 * An agent's protocol directory: paths such as "ip.tcp.https" for the numbers that other tables give protocols. Base
 * layers are left out of a path unless they are all of it, or another one than Ethernet's.
 */
final class Protocols
{
    /** How long a directory is taken for unchanged, in seconds. */
    private const FRESH = 1.0;

    private const ETHERNET = 'ether2';

    /** @var array<int, string> */
    private array $paths = [];

    /** @var array<int, array<string, mixed>> */
    private array $rows = [];

    private int $lastChange = -1;
    private int $link = 0;
    private float $asked = -INF;

    public function __construct(private readonly Probe $probe)
    {
    }

    /** @return array<int, string> paths by protocolDirLocalIndex */
    public function paths(): array
    {
        if (hrtime(true) / 1e9 - $this->asked >= self::FRESH || $this->link !== $this->probe->link->made) {
            $this->keepUp();
        }
        return $this->paths;
    }

    /** The path of a protocol; null when the directory has no such number. */
    public function path(int $localIndex): ?string
    {
        return $this->paths()[$localIndex] ?? null;
    }

    /**
     * The number of a protocol.
     *
     * @throws UnknownName
     */
    public function index(string $path): int
    {
        $index = $this->search($path);
        if ($index === null) {
            $this->keepUp();
            $index = $this->search($path);
        }
        return $index ?? throw UnknownName::among('protocol', $path, $this->paths);
    }

    /**
     * The directory's row of a protocol; null when there is no such row.
     *
     * @return array<string, mixed>|null
     */
    public function row(int $localIndex): ?array
    {
        $this->paths();
        return $this->rows[$localIndex] ?? null;
    }

    /** The protocol below one, by number: tcp's for https; null for base layers. */
    public function parent(int $localIndex): ?int
    {
        $row = $this->row($localIndex);
        if ($row === null || count($row['protocolDirID']) <= 4) {
            return null;
        }
        $below = array_slice($row['protocolDirID'], 0, -4);
        foreach ($this->rows as $index => $other) {
            if ($other['protocolDirID'] === $below) {
                return $index;
            }
        }
        return null;
    }

    private function search(string $path): ?int
    {
        $index = array_search(strtolower($path), array_map(strtolower(...), $this->paths()), true);
        return $index === false ? null : $index;
    }

    /** Reads the directory, unless it is known and the agent says that nothing changed. */
    private function keepUp(): void
    {
        $lastChange = $this->probe->table('protocolDirLastChange')->get()['protocolDirLastChange'];
        // Another agent, or the same one restarted, has other numbers and may have the same time.
        if ($lastChange !== $this->lastChange || $this->link !== $this->probe->link->made) {
            $this->link = $this->probe->link->made;
            $this->lastChange = $lastChange;
            $this->read();
        }
        $this->asked = hrtime(true) / 1e9;
    }

    private function read(): void
    {
        $rows = [];
        $descriptions = [];
        foreach ($this->probe->table('protocolDirTable') as $row) {
            $rows[$row['protocolDirLocalIndex']] = $row;
            $descriptions[pack('C*', ...$row['protocolDirID'])] = $row['protocolDirDescr'];
        }
        $this->rows = $rows;
        $this->paths = array_map(
            static fn(array $row) => self::pathOf(pack('C*', ...$row['protocolDirID']), $descriptions),
            $rows,
        );
    }

    /** @param array<string, string> $descriptions by identifier; agents give a name or the names of all layers */
    private static function pathOf(string $id, array $descriptions): string
    {
        $path = [];
        $below = '';
        for ($length = 4; $length <= strlen($id); $length += 4) {
            $part = substr($id, 0, $length);
            $description = $descriptions[$part] ?? (string) unpack('N', substr($part, -4))[1];
            $path[] = str_starts_with($description, $below) ? substr($description, strlen($below)) : $description;
            $below = "$description.";
        }
        if (count($path) > 1 && $path[0] === self::ETHERNET) {
            array_shift($path);
        }
        return implode('.', $path);
    }
}
