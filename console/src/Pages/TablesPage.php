<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Console\Block\DataTable;
use Rmon\Console\Page;
use Rmon\Console\Table\Field;
use Rmon\Schema\Catalog;

/** Every table of the agent, by name. */
final class TablesPage extends Page
{
    public const PATH = '/probe/{probe}/tables';
    public const TITLE = 'All tables';
    public const GROUP = 'Tables';

    public function blocks(): iterable
    {
        $link = fn(array $row): string => $this->visit->to(TablePage::class, ['table' => $row['name']]);
        $column = static fn(string $name, string $heading): Field => Field::text(
            $name,
            $heading,
            static fn(array $row): string => (string) $row[$name],
        );
        yield 'tables' => DataTable::ofRows(
            [
                $column('name', 'Table')->linked($link),
                $column('title', 'What it holds'),
                $column('group', 'Group'),
                $column('rfc', 'MIB'),
            ],
            static fn(): array => array_map(
                static fn($schema): array => [
                    'name' => $schema->name,
                    'title' => $schema->title,
                    'group' => $schema->group,
                    'rfc' => $schema->rfc ?? 'the agent\'s own',
                ],
                array_values(Catalog::all()),
            ),
        );
    }
}
