<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Address;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Links;
use Rmon\Console\Page;
use Rmon\ControlRows;

/** Which MAC address a network address was last seen with, and since when. */
final class AddressMapPage extends Page
{
    public const PATH = '/probe/{probe}/{interface}/addresses';
    public const TITLE = 'Address map';
    public const GROUP = 'Hosts';

    public function blocks(): iterable
    {
        $interface = $this->visit->interface();
        yield 'addresses' => DataTable::of(
            $this->visit,
            function () use ($interface) {
                $this->visit->needs(static fn(ControlRows $rows) => $rows->addresses($interface->index));
                return $this->visit->probe()->table('addressMapTable', addressMapSource: $interface->index);
            },
            ['addressMapNetworkAddress', 'addressMapPhysicalAddress', 'protocolDirLocalIndex', 'addressMapLastChange'],
            fn(array $fields): array => [
                'addressMapNetworkAddress' => $fields['addressMapNetworkAddress']->titled('Network address')->linked(
                    fn(array $row): string => Links::host(
                        $this->visit,
                        $interface->index,
                        Address::text($row['addressMapNetworkAddress']),
                    ),
                ),
                'addressMapPhysicalAddress' => $fields['addressMapPhysicalAddress']->titled('MAC address')->linked(
                    fn(array $row): string => $this->visit->to(MacHostsPage::class, [], [
                        'filter' => Address::text($row['addressMapPhysicalAddress']),
                    ]),
                ),
                'protocolDirLocalIndex' => $fields['protocolDirLocalIndex']->titled('Protocol'),
                'addressMapLastChange' => $fields['addressMapLastChange']->titled('With it since'),
            ],
        )->emptyBecause(static fn(): string => 'No address was learned yet. They are learned from ARP, neighbour '
            . 'advertisements and the senders of packets; behind a router, the MAC address is the router\'s.');
    }
}
