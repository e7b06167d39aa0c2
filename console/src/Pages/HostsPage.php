<?php

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Console\Block\DataTable;
use Rmon\Console\Page;
use Rmon\ControlRows;

/** What each host of an interface sent and received, by network address. */
final class HostsPage extends Page
{
    public const PATH = '/probe/{probe}/{interface}/hosts';
    public const TITLE = 'Hosts';
    public const GROUP = 'Hosts';

    public function blocks(): iterable
    {
        $interface = $this->visit->interface();
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
            static fn(array $fields): array => ['nlHostAddress' => $fields['nlHostAddress']->titled('Host')],
        )->sortedBy('-nlHostOutOctets');
    }
}
