<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Address;
use Rmon\Console\Block\Chart;
use Rmon\Console\Block\Choices;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Form;
use Rmon\Console\Block\Notice;
use Rmon\Console\Block\Panels;
use Rmon\Console\Form\Changes;
use Rmon\Console\Form\Plan;
use Rmon\Console\Links;
use Rmon\Console\Page;
use Rmon\Console\Response;
use Rmon\Console\Table\Field;
use Rmon\Console\Text;
use Rmon\ControlRows;
use Rmon\Format;
use Rmon\NetInterface;
use Rmon\RowStatus;

/** Differentiated services: traffic by DSCP value or by class, its protocols and its hosts. */
final class ServicesPage extends Page
{
    public const PATH = '/probe/{probe}/{interface}/services';
    public const TITLE = 'Classes of service';
    public const GROUP = 'Classes';

    /** What the values of DSCP are called (RFC 2474, 2597, 3246, 5865, 8622). */
    private const NAMES = [
        0 => 'CS0', 1 => 'LE', 8 => 'CS1', 10 => 'AF11', 12 => 'AF12', 14 => 'AF13', 16 => 'CS2', 18 => 'AF21',
        20 => 'AF22', 22 => 'AF23', 24 => 'CS3', 26 => 'AF31', 28 => 'AF32', 30 => 'AF33', 32 => 'CS4', 34 => 'AF41',
        36 => 'AF42', 38 => 'AF43', 40 => 'CS5', 44 => 'VA', 46 => 'EF', 48 => 'CS6', 56 => 'CS7',
    ];

    /** @var array<int, string>|null what each group of the chosen profile is called */
    private ?array $groups = null;

    /** @var list<array<string, mixed>>|null */
    private ?array $counted = null;

    public function blocks(): iterable
    {
        $interface = $this->visit->interface();
        $profiles = $this->profiles();
        if ($profiles === []) {
            yield 'none' => new Notice(
                'Nothing is counted by class yet.',
                'empty',
                'Counting takes a profile, which says what DSCP values make a class, and the agent\'s lock.',
            );
            yield 'begin' => (new Form('Count by DSCP', 'begin', 'Go on', static fn(): array => [], 'A profile in '
                . 'which each value is a class of its own. It stays, as does the lock.'))->open();
            return;
        }
        $profile = (int) $this->visit->query('profile', (string) array_key_first($profiles));
        $profile = isset($profiles[$profile]) ? $profile : (int) array_key_first($profiles);
        yield 'profiles' => new Choices(fn(): array => ['Classes' => array_map(fn(int $index): array => [
            $profiles[$index],
            $this->visit->address(['profile' => (string) $index]),
            $index === $profile,
        ], array_keys($profiles))]);
        yield 'pictures' => new Panels([
            'over-time' => new Chart(
                'Traffic by class',
                'area',
                'bit/s',
                fn(): array => $this->overTime($interface, $profile),
                true,
                'Measuring: the picture begins in a few seconds.',
            ),
            'all' => new Chart(
                'All since counting began',
                'doughnut',
                'B',
                fn(): array => $this->shares($interface, $profile),
                false,
                'No packet was counted yet.',
            ),
        ]);
        $value = static fn(string $name) => static fn(array $row): int|float => $row[$name];
        yield 'classes' => DataTable::ofRows([
            Field::text('class', 'Class', fn(array $row): string => $this->group($profile, $row['dsmonAggGroupIndex'])),
            Field::number('octets', 'Octets', $value('octets'), Format::octets(...))->bar($value('share')),
            Field::number('packets', 'Packets', $value('packets'), Format::whole(...)),
            Field::number('size', 'Octets a packet', static fn(array $row): float =>
                $row['octets'] / $row['packets'], Format::whole(...)),
        ], fn(): array => $this->counted($interface, $profile), 'No packet was counted yet.')
            ->titled('Classes')->sortedBy('-octets');
        $class = Field::text('class', 'Class', fn(array $row): string =>
            $this->group($profile, $row['dsmonAggGroupIndex']));
        yield 'protocols' => DataTable::of(
            $this->visit,
            fn() => $this->visit->probe()->table('dsmonPdistStatsTable', control: $this->visit->needs(
                static fn(ControlRows $rows) => $rows->groupProtocols($interface->index, $profile),
            )->index),
            ['class', 'protocolDirLocalIndex', 'dsmonPdistStatsHCOctets', 'dsmonPdistStatsHCPkts'],
            static fn(array $fields): array => [
                'class' => $class,
                'protocolDirLocalIndex' => $fields['protocolDirLocalIndex']->titled('Protocol'),
                'dsmonPdistStatsHCOctets' => $fields['dsmonPdistStatsHCOctets']->titled('Octets'),
                'dsmonPdistStatsHCPkts' => $fields['dsmonPdistStatsHCPkts']->titled('Packets'),
            ],
        )->titled('Protocols of each class')->sortedBy('-dsmonPdistStatsHCOctets')->beside('protocols');
        yield 'hosts' => DataTable::of(
            $this->visit,
            fn() => $this->visit->probe()->table('dsmonHostTable', control: $this->visit->needs(
                static fn(ControlRows $rows) => $rows->groupHosts($interface->index, $profile),
            )->index),
            ['class', 'dsmonHostAddress', 'dsmonHostOutHCOctets', 'dsmonHostInHCOctets', 'dsmonHostOutHCPkts'],
            fn(array $fields): array => [
                'class' => $class,
                'dsmonHostAddress' => $fields['dsmonHostAddress']->titled('Host')->linked(fn(array $row): string =>
                    Links::host($this->visit, $interface->index, Address::text($row['dsmonHostAddress']))),
                'dsmonHostOutHCOctets' => $fields['dsmonHostOutHCOctets']->titled('Sent'),
                'dsmonHostInHCOctets' => $fields['dsmonHostInHCOctets']->titled('Received'),
                'dsmonHostOutHCPkts' => $fields['dsmonHostOutHCPkts']->titled('Packets sent'),
            ],
        )->titled('Hosts of each class')->sortedBy('-dsmonHostOutHCOctets')->beside('hosts');
    }

    public function post(): Response
    {
        return Changes::answer($this->visit, ['begin' => fn(): Plan => new Plan('count by DSCP', [
            ['Profile', '', 'each DSCP value by itself'],
            ['Lock of the aggregation', 'off', 'on'],
        ], function (): string {
            $this->visit->rows()->profile();
            return 'Counting by DSCP is on.';
        })]);
    }

    /** @return array<int, string> the profiles that count, by their index */
    private function profiles(): array
    {
        $probe = $this->visit->probe();
        if ($probe->table('dsmonAggControlLocked')->get()['dsmonAggControlLocked'] !== 1) {
            return [];
        }
        $profiles = [];
        foreach ($probe->table('dsmonAggControlTable') as $row) {
            if ($row['dsmonAggControlStatus'] === RowStatus::valid->value) {
                $profiles[$row['dsmonAggControlIndex']] = Text::shown($row['dsmonAggControlDescr'], 60)
                    ?: "profile $row[dsmonAggControlIndex]";
            }
        }
        return $profiles;
    }

    /** What a class is called: by the profile, or by the one DSCP value that it consists of. */
    private function group(int $profile, int $group): string
    {
        if ($this->groups === null) {
            $probe = $this->visit->probe();
            $values = [];
            foreach ($probe->table('dsmonAggProfileTable', control: $profile) as $row) {
                $values[$row['dsmonAggGroupIndex']][] = $row['dsmonAggProfileDSCP'];
            }
            $this->groups = [];
            foreach ($values as $index => $dscps) {
                $name = self::NAMES[$dscps[0]] ?? '';
                $this->groups[$index] = count($dscps) > 1 ? "group $index"
                    : "DSCP $dscps[0]" . ($name === '' ? '' : ", $name");
            }
            foreach ($probe->table('dsmonAggGroupTable', control: $profile) as $row) {
                if ($row['dsmonAggGroupDescr'] !== '') {
                    $this->groups[$row['dsmonAggGroupIndex']] = $row['dsmonAggGroupDescr'];
                }
            }
        }
        return $this->groups[$group] ?? "group $group";
    }

    /** @return list<array<string, mixed>> rows of dsmonStatsTable that counted something, with both ways as one */
    private function counted(NetInterface $interface, int $profile): array
    {
        if ($this->counted === null) {
            $row = $this->visit->needs(static fn(ControlRows $rows) => $rows->groups($interface->index, $profile));
            $this->counted = [];
            foreach ($this->visit->probe()->table('dsmonStatsTable', control: $row->index) as $each) {
                $packets = $each['dsmonStatsInHCPkts'] + $each['dsmonStatsOutHCPkts'];
                if ($packets > 0) {
                    $octets = $each['dsmonStatsInHCOctets'] + $each['dsmonStatsOutHCOctets'];
                    $this->counted[] = ['octets' => $octets, 'packets' => $packets] + $each;
                }
            }
            $all = array_sum(array_column($this->counted, 'octets'));
            foreach ($this->counted as &$each) {
                $each['share'] = $each['octets'] / $all;
            }
        }
        return $this->counted;
    }

    /** @return array{x: list<string>, series: array<string, list<int|float>>} */
    private function shares(NetInterface $interface, int $profile): array
    {
        $octets = [];
        foreach ($this->counted($interface, $profile) as $row) {
            $octets[$this->group($profile, $row['dsmonAggGroupIndex'])] = $row['octets'];
        }
        arsort($octets);
        return ['x' => array_map(strval(...), array_keys($octets)), 'series' => ['octets' => array_values($octets)]];
    }

    /** @return array{x: list<float>, series: array<string, list<float|null>>} */
    private function overTime(NetInterface $interface, int $profile): array
    {
        $bits = [];
        foreach ($this->counted($interface, $profile) as $row) {
            $bits[$this->group($profile, $row['dsmonAggGroupIndex'])] = 8 * $row['octets'];
        }
        $link = $this->visit->probe()->link;
        return $bits === [] ? ['x' => [], 'series' => []] : $this->visit->console->trend()->look(
            [$link->host, $link->port, $interface->index, 'classes', $profile, ...array_keys($bits)],
            $bits,
        );
    }
}
