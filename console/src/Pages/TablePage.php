<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Notice;
use Rmon\Console\Page;
use Rmon\Schema\Catalog;

/** Any table, as it is. */
final class TablePage extends Page
{
    public const PATH = '/probe/{probe}/table/{table}';
    public const TITLE = 'Table';

    public function title(): string
    {
        return Catalog::find($this->visit->parameters['table'])->name;
    }

    public function blocks(): iterable
    {
        $schema = Catalog::find($this->visit->parameters['table']);
        yield 'what' => new Notice(
            ucfirst($schema->title) . '.',
            'answer',
            $schema->rfc === null ? 'A table of the agent\'s own.' : "$schema->rfc, group $schema->group.",
        );
        yield 'rows' => DataTable::of($this->visit, fn() => $this->visit->probe()->table($schema->name));
    }
}
