<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Documents;

use RuntimeException;

/** The pages of docs/protocol that say what travels: procedures and records. */
final class Wire
{
    private const GROUPS = [
        'rmonrpc.h' => 'Keys of many procedures',
        'rmonrpc_rmon1.h' => 'System, interfaces and RMON (RFC 1213, RFC 2819)',
        'rmonrpc_rmon2.h' => 'RMON2 (RFC 2021)',
        'rmonrpc_dsmon.h' => 'Differentiated services (RFC 3287)',
        'rmonrpc_smon_art.h' => 'VLANs and priorities (RFC 2613), response times',
        'rmonrpc_voice.h' => 'Voice',
        'rmonrpc_nde.h' => 'NetFlow',
        'rmonrpc_admin.h' => 'Settings of the appliance',
    ];

    public function __construct(private readonly Records $records)
    {
    }

    /** @return array<string, string> texts by file name */
    public function pages(): array
    {
        return ['procedures.md' => $this->procedures(), 'records.md' => $this->records()];
    }

    private function procedures(): string
    {
        $text = Markdown::title('Procedures') . "\nProgram 99999, version 1. [The protocol](index.md) tells the rules, "
            . "[Records](records.md) the fields.\n"
            . "A type with `<>` behind it is a list: a count, then so many of them.\n\n"
            . Markdown::head('Number', 'Name', 'Argument', 'Result');
        foreach ($this->records->procedures as $each) {
            $types = [$this->type($each->argument), $this->type($each->result)];
            $text .= Markdown::row((string) $each->number, "`$each->name`", ...$types);
        }
        return $text;
    }

    private function records(): string
    {
        $text = Markdown::title('Records') . "\nThe fields of each record in the order in which they travel. "
            . "[The protocol](index.md) tells what the types are.\n";
        $byHeader = [];
        foreach ($this->records->records as $record) {
            $byHeader[$record->header][] = $record;
        }
        foreach ($byHeader as $header => $records) {
            $text .= "\n## " . (self::GROUPS[$header] ?? throw new RuntimeException("no title for $header")) . "\n";
            foreach ($records as $record) {
                $note = self::escaped(rtrim($record->note, '.'));
                $text .= "\n### $record->name\n\n" . ($note === '' ? '' : "$note.\n\n");
                $notes = array_filter(array_column($record->fields, 'note')) !== [];
                $text .= Markdown::head('Field', 'Type', ...($notes ? [''] : []));
                foreach ($record->fields as $field) {
                    $note = $notes ? [self::escaped($field->note)] : [];
                    $text .= Markdown::row("`$field->name`", $this->type($field->type), ...$note);
                }
            }
        }
        return $text;
    }

    /** A type's words; those of a record are a link to it. */
    private function type(string $type): string
    {
        $words = $this->records->words($type);
        if (preg_match('/^(rmonrpc_\w+|\w+_t)(.*)$/D', $words, $found) && isset($this->records->records[$found[1]])) {
            return "[`$words`](records.md#$found[1])";
        }
        return "`$words`";
    }

    private static function escaped(string $text): string
    {
        return strtr($text, ['*' => '\\*', '_' => '\\_', '<' => '&lt;', '|' => '\\|']);
    }
}
