<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Console\Block\DataTable;
use Rmon\Console\Page;
use Rmon\ControlRows;

/** What each host of an interface sent and received, by MAC address. */
final class MacHostsPage extends Page
{
    public const PATH = '/probe/{probe}/{interface}/mac-hosts';
    public const TITLE = 'Hosts by MAC address';
    public const GROUP = 'Hosts';

    public function blocks(): iterable
    {
        $interface = $this->visit->interface();
        yield 'hosts' => DataTable::of(
            $this->visit,
            function () use ($interface) {
                $row = $this->visit->needs(static fn(ControlRows $rows) => $rows->macHosts($interface->index));
                return $this->visit->probe()->table('hostTable', control: $row->index);
            },
            [
                'hostAddress', 'hostOutOctets', 'hostInOctets', 'hostOutPkts', 'hostInPkts', 'hostOutErrors',
                'hostOutBroadcastPkts', 'hostOutMulticastPkts',
            ],
            static fn(array $fields): array => ['hostAddress' => $fields['hostAddress']->titled('Host')],
        )->sortedBy('-hostOutOctets');
    }
}
