<?php

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Facts;
use Rmon\Console\Page;
use Rmon\Console\Table\Field;
use Rmon\Format;

/** A probe at a glance. */
final class OverviewPage extends Page
{
    public const PATH = '/probe/{probe}';
    public const TITLE = 'Overview';
    public const GROUP = 'Probe';

    public function blocks(): iterable
    {
        yield 'state' => new Facts(function (): array {
            $system = $this->visit->probe()->system();
            return [
                'Name' => $system['sysName'],
                'Up for' => Format::ticks($system['sysUpTime']),
                'Description' => $system['sysDescr'],
                'Location' => $system['sysLocation'] === '' ? '-' : $system['sysLocation'],
                'Contact' => $system['sysContact'] === '' ? '-' : $system['sysContact'],
            ];
        });
        yield 'interfaces' => InterfacesPage::table($this->visit)->titled('Interfaces');
    }
}
