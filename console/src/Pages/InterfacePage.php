<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Console\Block\Facts;
use Rmon\Console\Page;
use Rmon\Console\Traffic;

/** One interface: what it carries, and who fills it. */
final class InterfacePage extends Page
{
    public const PATH = '/probe/{probe}/{interface}';
    public const TITLE = 'Interface';
    public const GROUP = 'Interface';

    public function title(): string
    {
        return $this->visit->interface()->name;
    }

    public function blocks(): iterable
    {
        $interface = $this->visit->interface();
        yield 'traffic' => HistoryPage::chart($this->visit, InterfacesPage::SECONDS, InterfacesPage::SAMPLES);
        yield 'panels' => Traffic::panels($this->visit, $interface);
        yield 'facts' => new Facts(function () use ($interface): array {
            $table = $this->visit->probe()->table('ifTable');
            $row = $interface->row();
            $cells = $table->readable($row);
            return [
                'State' => $cells['ifOperStatus'],
                'Speed' => InterfacesPage::speed($row['ifSpeed']),
                'Kind' => $cells['ifType'],
                'MTU' => $cells['ifMtu'],
                'Address' => $cells['ifPhysAddress'],
                'Octets in' => $cells['ifInOctets'],
                'Octets out' => $cells['ifOutOctets'],
                'Errors in' => $cells['ifInErrors'],
                'Errors out' => $cells['ifOutErrors'],
            ];
        });
    }
}
