<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

use Rmon\Exception\BadArgument;
use Rmon\Exception\UnknownName;
use Rmon\Schema\Catalog;
use Rmon\Schema\Column;
use Rmon\Schema\TableSchema;
use Rmon\Schema\Type;

/** One of a probe's interfaces, and the questions that people ask about it. */
final class NetInterface
{
    /** The method of ControlRows that makes what a table needs. */
    private const MAKERS = [
        'hlHostControlTable' => 'hosts',
        'hlMatrixControlTable' => 'conversations',
        'hostControlTable' => 'macHosts',
        'matrixControlTable' => 'macConversations',
        'protocolDistControlTable' => 'protocols',
        'smonVlanStatsControlTable' => 'vlans',
        'smonPrioStatsControlTable' => 'priorities',
    ];

    /** @param callable(float): void|null $wait waits so many seconds */
    public function __construct(
        public readonly Probe $probe,
        public readonly int $index,
        public readonly string $name,
        private readonly mixed $wait,
    ) {
    }

    /**
     * Its row of ifTable.
     *
     * @return array<string, mixed>
     * @throws UnknownName when it is gone
     */
    public function row(): array
    {
        return $this->probe->table('ifTable')->get(ifIndex: $this->index)
            ?? throw UnknownName::among('interface', $this->name, $this->probe->interfaces()->names());
    }

    /**
     * Who has most of something, measured now: the rows of a table whose counter grows fastest.
     *
     * @param string $counter a counter of a table of hosts or conversations, such as "nlHostOutOctets"
     * @param float $seconds  how long to measure
     * @param int $limit      how many of them
     * @return list<Talker> the first one first; who counted nothing is left out
     */
    public function top(string $counter, float $seconds = 10, int $limit = 10): array
    {
        [$schema] = self::counterOf($counter);
        return $this->talkers($counter, $this->measure($schema, $seconds), $limit);
    }

    /**
     * Who has most of something, out of rates that are known already.
     *
     * @param array<string, RowRate> $rates of the counter's table, as between two readings of it
     * @return list<Talker> see top()
     */
    public function talkers(string $counter, array $rates, int $limit = 10): array
    {
        [$schema, $column] = self::counterOf($counter);
        $grown = [];
        foreach ($rates as $key => $rate) {
            $value = $rate->grown[$counter];
            if ($value !== null && $value > 0) {
                $grown[$key] = $value;
            }
        }
        if (isset($schema->keys['protocolDirLocalIndex2'])) {
            $grown = $this->withoutAbove($schema, $grown, $rates);
        }
        arsort($grown);
        $sum = array_sum($grown);
        $bits = $column->unit === 'octets' ? 8 : 1;
        $talkers = [];
        foreach (array_slice($grown, 0, $limit, true) as $key => $value) {
            $rate = $rates[$key];
            $talkers[] = $this->talker($schema, $rate->row, $bits * $value / $rate->seconds, $value / $sum, $value);
        }
        return $talkers;
    }

    /**
     * What the traffic consists of, measured now.
     *
     * @return list<ProtocolShare> the largest first; what counted nothing is left out
     */
    public function protocols(float $seconds = 10): array
    {
        return $this->shares($this->measure(Catalog::find('protocolDistStatsTable'), $seconds));
    }

    /**
     * What the traffic consists of, out of rates that are known already.
     *
     * @param array<string, RowRate> $known of protocolDistStatsTable, as between two readings of it
     * @return list<ProtocolShare> see protocols()
     */
    public function shares(array $known): array
    {
        $protocols = $this->probe->protocols();
        $octets = [];
        $rates = [];
        foreach ($known as $rate) {
            $grown = $rate->grown['protocolDistStatsOctets'];
            if ($grown !== null && $grown > 0) {
                $index = $rate->row['protocolDirLocalIndex'];
                $octets[$index] = $grown;
                $rates[$index] = $rate;
            }
        }
        $above = array_fill_keys(array_keys($octets), 0.0);
        $all = 0.0;
        foreach ($octets as $index => $grown) {
            $parent = $protocols->parent($index);
            if ($parent !== null && isset($above[$parent])) {
                $above[$parent] += $grown;
            } else {
                $all += $grown;
            }
        }
        arsort($octets);
        $shares = [];
        foreach ($octets as $index => $grown) {
            $shares[] = new ProtocolShare(
                $protocols->path($index) ?? (string) $index,
                $index,
                (float) $rates[$index]->bitsPerSecond('protocolDistStatsOctets'),
                $grown / $all,
                max(0.0, $grown - $above[$index]) / $all,
                (float) $rates[$index]->perSecond('protocolDistStatsPkts'),
            );
        }
        return $shares;
    }

    /**
     * The rates of a table's rows that belong to this interface, over a time from now on. What the table needs to
     * count is made for as long.
     *
     * @return array<string, RowRate>
     */
    public function measure(TableSchema $schema, float $seconds): array
    {
        if ($seconds <= 0) {
            throw new BadArgument('Measuring takes more than 0 seconds.');
        }
        $maker = self::MAKERS[$schema->control()]
            ?? throw new BadArgument("$schema->name isn't counted by interface.");
        $lease = (int) min(ControlRows::LONGEST_LEASE, ceil($seconds) + ControlRows::LEASE);
        return $this->probe->withRows('top', function (ControlRows $rows) use ($maker, $schema, $seconds): array {
            $table = $this->probe->table($schema->name, control: $rows->$maker($this->index)->index);
            $sampling = Rates::sample($table, $seconds, $this->wait);
            return $sampling->current();
        }, $lease);
    }

    /**
     * Takes off what counts once more in a protocol above: in the application's row and in its transport's.
     *
     * @param array<string, float> $grown
     * @param array<string, RowRate> $rates
     * @return array<string, float>
     */
    private function withoutAbove(TableSchema $schema, array $grown, array $rates): array
    {
        $protocols = $this->probe->protocols();
        $own = $grown;
        foreach ($grown as $key => $value) {
            $row = $rates[$key]->row;
            $parent = $protocols->parent($row['protocolDirLocalIndex2']);
            if ($parent !== null) {
                $below = Reading::key($schema, ['protocolDirLocalIndex2' => $parent] + $row);
                if (isset($own[$below])) {
                    $own[$below] -= $value;
                }
            }
        }
        return array_filter($own, static fn(float $value) => $value > 0);
    }

    /** @return array{TableSchema, Column} */
    private static function counterOf(string $counter): array
    {
        $counters = [];
        foreach (Catalog::all() as $schema) {
            $control = $schema->control();
            if ($control === null || !isset(self::MAKERS[$control])) {
                continue;
            }
            foreach (Rates::counters($schema) as $name => $type) {
                if ($name === $counter) {
                    return [$schema, $schema->columns[$name]];
                }
                $counters[] = $name;
            }
        }
        throw UnknownName::among('counter', $counter, $counters);
    }

    /** @param array<string, mixed> $row */
    private function talker(TableSchema $schema, array $row, float $rate, float $part, float $grown): Talker
    {
        $values = $this->probe->values();
        $addresses = [];
        $protocol = null;
        foreach ($schema->keys as $name => $key) {
            $column = $schema->columns[$name];
            if ($column->type === Type::Protocol && $name !== 'protocolDirLocalIndex') {
                $protocol = $values->text($column, $row[$name]);
            } elseif ($key->of === null && !$key->mark && $column->type !== Type::Protocol) {
                $addresses[] = $values->text($column, $row[$name]);
            }
        }
        return new Talker($addresses[0] ?? '', $addresses[1] ?? null, $protocol, $rate, $part, $grown, $row);
    }
}
