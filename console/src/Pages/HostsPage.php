<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Address;
use Rmon\Console\Block\Choices;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Links;
use Rmon\Console\Page;
use Rmon\Console\Traffic;
use Rmon\ControlRows;

/** What each host of an interface sends and receives, by network address: now, or since counting began. */
final class HostsPage extends Page
{
    public const PATH = '/probe/{probe}/{interface}/hosts';
    public const TITLE = 'Hosts';
    public const GROUP = 'Hosts';

    public function blocks(): iterable
    {
        $interface = $this->visit->interface();
        $since = $this->visit->query('since', 'start', ['start', 'now']);
        $view = fn(string $of): string => $this->visit->to(self::class, [], ['since' => $of === 'start' ? null : $of]);
        yield 'view' => new Choices(static fn(): array => ['Shows' => [
            ['all since counting began', $view('start'), $since === 'start'],
            ['the last seconds', $view('now'), $since === 'now'],
        ]]);
        if ($since === 'now') {
            yield 'hosts' => Traffic::talkers($this->visit, $interface);
            return;
        }
        yield 'hosts' => DataTable::of(
            $this->visit,
            function () use ($interface) {
                $row = $this->visit->needs(static fn(ControlRows $rows) => $rows->hosts($interface->index));
                return $this->visit->probe()->table('nlHostTable', control: $row->index);
            },
            [
                'nlHostAddress', 'nlHostOutOctets', 'nlHostInOctets', 'nlHostOutPkts', 'nlHostInPkts',
                'nlHostOutMacNonUnicastPkts', 'nlHostCreateTime',
            ],
            fn(array $fields): array => [
                'nlHostAddress' => $fields['nlHostAddress']->titled('Host')->linked(
                    fn(array $row): string => Links::host(
                        $this->visit,
                        $interface->index,
                        Address::text($row['nlHostAddress']),
                    ),
                ),
                'nlHostOutOctets' => $fields['nlHostOutOctets']->titled('Sent'),
                'nlHostInOctets' => $fields['nlHostInOctets']->titled('Received'),
                'nlHostOutPkts' => $fields['nlHostOutPkts']->titled('Packets sent'),
                'nlHostInPkts' => $fields['nlHostInPkts']->titled('Packets received'),
                'nlHostOutMacNonUnicastPkts' => $fields['nlHostOutMacNonUnicastPkts']->titled('To groups and all'),
                'nlHostCreateTime' => $fields['nlHostCreateTime']->titled('First seen'),
            ],
        )->sortedBy('-nlHostOutOctets')->emptyBecause(static fn(): string => 'No host was seen yet. If the interface '
            . 'carries traffic, the agent may run without the right to capture frames.');
    }
}
