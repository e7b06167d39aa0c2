<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Console\Block\DataTable;
use Rmon\Console\ConfiguredProbe;
use Rmon\Console\Page;
use Rmon\Console\Problem;
use Rmon\Console\Table\Field;
use Rmon\Exception\RmonException;
use Rmon\Format;
use Rmon\Presence;
use Rmon\Reading;

/** All probes: whether each is up, since when, and what its busiest interface carries. */
final class ProbesPage extends Page
{
    public const PATH = '/';
    public const TITLE = 'Probes';

    public function blocks(): iterable
    {
        $link = fn(array $row) => $this->visit->to(OverviewPage::class, ['probe' => $row['probe']->name]);
        $fields = [
            Field::text('probe', 'Probe', static fn(array $row): string => $row['probe']->name)->linked($link),
            Field::text('title', 'What', static fn(array $row): string => $row['probe']->title),
            Field::text('address', 'Address', static fn(array $row): string => $row['probe']->address()),
            Field::text('state', 'State', static fn(array $row): string => $row['state'])
                ->marked(static fn(array $row): string => $row['state'] === 'up' ? 'up' : 'down'),
            Field::number('uptime', 'Up for', static fn(array $row) => $row['uptime'], Format::ticks(...)),
            Field::text('name', 'Name', static fn(array $row): string => $row['name']),
            Field::text('busiest', 'Busiest interface', static fn(array $row): string => $row['busiest']),
            Field::number('rate', 'Traffic there', static fn(array $row) => $row['rate'], Format::bitsPerSecond(...)),
            Field::number('octets', 'Octets in all', static fn(array $row) => $row['octets'], Format::octets(...)),
        ];
        yield 'probes' => DataTable::ofRows($fields, $this->rows(...));
    }

    /** @return list<array<string, mixed>> */
    private function rows(): array
    {
        $probes = $this->visit->console->configuration->probes;
        $missing = Presence::missing(
            array_map(static fn(ConfiguredProbe $probe): array => [$probe->host, $probe->port], $probes),
            $this->visit->console->configuration->patience,
        );
        $rows = [];
        foreach ($probes as $name => $probe) {
            $rows[] = ['probe' => $probe] + (isset($missing[$name]) ? self::down($missing[$name]) : $this->row($probe));
        }
        return $rows;
    }

    /** @return array<string, mixed> */
    private function row(ConfiguredProbe $configured): array
    {
        try {
            $probe = $this->visit->console->link($configured);
            $system = $probe->system();
            $table = $probe->table('ifTable');
            $measured = $this->visit->console->sampler()->measure($table, 'ifInOctets');
            $busiest = null;
            foreach ($table as $row) {
                $rate = $measured?->rates[Reading::key($table->schema, $row)] ?? null;
                $bits = $rate === null ? null
                    : ($rate->bitsPerSecond('ifInOctets') ?? 0) + ($rate->bitsPerSecond('ifOutOctets') ?? 0);
                // By what it carries now, and by what it has carried until that is known.
                $load = [$bits, $row['ifInOctets'] + $row['ifOutOctets']];
                if ($busiest === null || $load > $busiest['load']) {
                    $busiest = ['load' => $load, 'name' => $row['ifDescr']];
                }
            }
            return [
                'state' => 'up',
                'uptime' => $system['sysUpTime'],
                'name' => $system['sysName'],
                'busiest' => $busiest['name'] ?? '',
                'rate' => $busiest['load'][0] ?? null,
                'octets' => $busiest['load'][1] ?? null,
            ];
        } catch (RmonException $failure) {
            return self::down(Problem::of($failure)->title);
        }
    }

    /** @return array<string, mixed> */
    private static function down(string $why): array
    {
        return ['state' => "down: $why", 'uptime' => null, 'name' => '', 'busiest' => '']
            + ['rate' => null, 'octets' => null];
    }
}
