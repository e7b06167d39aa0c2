<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Commands;

use Generator;
use Rmon\Command\Conditions;
use Rmon\Command\Listing;
use Rmon\Command\Live;
use Rmon\Command\Output\Field;
use Rmon\Command\OutputOptions;
use Rmon\Command\ProbeCommand;
use Rmon\Command\Refreshing;
use Rmon\Command\UsageError;
use Rmon\Format;
use Rmon\Probe;
use Rmon\Rates;
use Rmon\RowRate;
use Rmon\Schema\Catalog;
use Rmon\Schema\TableSchema;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;

/** rmon watch */
final class WatchCommand extends ProbeCommand
{
    protected function configure(): void
    {
        $this->setName('watch')
            ->setDescription('How fast a table\'s counters grow')
            ->setHelp(
                'Octets are shown as bits in each second, other counters as so many in each second. Only rows that '
                . "grew show.\nOn a terminal it goes on until q is pressed; elsewhere it measures once. With --on, "
                . 'what the table needs to count is made on the agent for as long, and removed.',
            )
            ->addArgument('table', InputArgument::REQUIRED, 'Its name; see rmon list');
        TableCommand::addFilters($this);
        Refreshing::define($this);
    }

    protected function perform(InputInterface $input): int
    {
        $options = OutputOptions::from($input);
        $schema = Catalog::find($input->getArgument('table'));
        $counters = Rates::counters($schema);
        if ($counters === []) {
            throw new UsageError("$schema->name has no counters: nothing of it grows.");
        }
        $refreshing = Refreshing::from($input, $options, $this->screen());
        $probe = $this->probe($input);
        $conditions = Conditions::on($probe->table($schema->name), $input->getArgument('filters'));
        $on = $input->getOption('on');
        $measure = $on !== null && Listing::interfaceColumn($schema) === null
            ? static fn(Live $live) => $probe
                ->interface(Listing::interfaceIndex($probe, $on), $live->wait(...))
                ->measure($schema, $refreshing->interval)
            : self::sampling($conditions, $refreshing->interval);
        $index = $on === null ? null : Listing::interfaceIndex($probe, $on);
        $column = Listing::interfaceColumn($schema);
        $rows = static function (Live $live) use ($measure, $conditions, $schema, $index, $column): Generator {
            foreach ($measure($live) as $rate) {
                $own = $index === null || $column === null || $rate->row[$column] === $index;
                if ($own && $conditions->hold($rate->row) && self::grew($rate)) {
                    yield self::row($rate, $schema);
                }
            }
        };
        $title = "$schema->name of {$probe->link->host}:{$probe->link->port}";
        return $refreshing->run(
            $title,
            $rows,
            self::fields($probe, $schema, $options->exact),
            Listing::resolver($schema),
        );
    }

    /** Readings one after the other, each held against the one before. */
    private static function sampling(Conditions $conditions, float $interval): callable
    {
        $sampling = null;
        $live = null;
        return static function (Live $current) use (&$sampling, &$live, $conditions, $interval): array {
            $live = $current;
            if ($sampling === null || !$sampling->valid()) {
                $sampling = Rates::sample($conditions->table, $interval, static function (float $seconds) use (&$live) {
                    $live->wait($seconds);
                });
                return $sampling->current();
            }
            $sampling->next();
            return $sampling->current() ?? [];
        };
    }

    private static function grew(RowRate $rate): bool
    {
        foreach ($rate->grown as $grown) {
            if ($grown !== null && $grown > 0) {
                return true;
            }
        }
        return false;
    }

    /** @return array<string, mixed> */
    private static function row(RowRate $rate, TableSchema $schema): array
    {
        $row = $rate->row;
        foreach ($rate->grown as $name => $grown) {
            $perSecond = $schema->columns[$name]->unit === 'octets'
                ? $rate->bitsPerSecond($name)
                : $rate->perSecond($name);
            $row[$name] = $perSecond === null ? null : round($perSecond, 1);
        }
        return $row;
    }

    /** @return list<Field> the keys and what names rows, then the counters as rates */
    private static function fields(Probe $probe, TableSchema $schema, bool $exact): array
    {
        $first = [];
        $rates = [];
        foreach (Listing::fields($probe, $schema, $exact) as $field) {
            $column = $schema->columns[$field->name];
            if ($column->type->isCounter()) {
                $text = match (true) {
                    $exact => Format::whole(...),
                    $column->unit === 'octets' => Format::bitsPerSecond(...),
                    default => static fn(float $rate) => Format::scaled($rate, '/s'),
                };
                $rates[] = Field::number($field->name, $text, $schema->heading($field->name));
            } elseif (
                isset($schema->keys[$field->name]) || Listing::interfaceColumn($schema) === $field->name
                || str_ends_with($field->name, 'Descr')
            ) {
                $first[] = $field;
            }
        }
        return [...$first, ...$rates];
    }
}
