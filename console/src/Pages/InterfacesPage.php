<?php

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Console\Block\DataTable;
use Rmon\Console\Page;
use Rmon\Console\Table\Field;
use Rmon\Console\Visit;

/** The interfaces of a probe. */
final class InterfacesPage extends Page
{
    public const PATH = '/probe/{probe}/interfaces';
    public const TITLE = 'Interfaces';
    public const GROUP = 'Probe';

    public function blocks(): iterable
    {
        yield 'interfaces' => self::table($this->visit);
    }

    public static function table(Visit $visit): DataTable
    {
        $link = static fn(array $row): string => $visit->to(
            InterfacePage::class,
            ['interface' => $visit->interfaceSegment($row['ifIndex'])],
        );
        return DataTable::of(
            $visit,
            static fn() => $visit->probe()->table('ifTable'),
            [
                'ifDescr', 'ifOperStatus', 'ifSpeed', 'ifInOctets', 'ifOutOctets', 'ifInUcastPkts', 'ifOutUcastPkts',
                'ifInErrors', 'ifOutErrors', 'ifPhysAddress',
            ],
            static fn(array $fields): array => [
                'ifDescr' => $fields['ifDescr']->titled('Interface')->linked($link),
            ],
        );
    }
}
