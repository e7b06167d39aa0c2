<?php

declare(strict_types=1);

namespace Rmon\Documents;

use RuntimeException;

/** The pages of docs/protocol that say what travels: procedures and records. */
final class Wire
{
    private const HEAD = "\n<!-- Made by script/docs reference: change what it is made from. -->\n";

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
        $text = "# Procedures\n" . self::HEAD . "\nProgram 99999, version 1. [The protocol](index.md) tells the rules, [Records](records.md) the fields.\n"
            . "A type with `<>` behind it is a list: a count, then so many of them.\n\n"
            . "| Number | Name | Argument | Result |\n| --- | --- | --- | --- |\n";
        foreach ($this->records->procedures as $each) {
            $text .= "| $each->number | `$each->name` | {$this->type($each->argument)} | {$this->type($each->result)} |\n";
        }
        return $text;
    }

    private function records(): string
    {
        $text = "# Records\n" . self::HEAD . "\nThe fields of each record in the order in which they travel. "
            . "[The protocol](index.md) tells what the types are.\n";
        $byHeader = [];
        foreach ($this->records->records as $record) {
            $byHeader[$record->header][] = $record;
        }
        foreach ($byHeader as $header => $records) {
            $text .= "\n## " . (self::GROUPS[$header] ?? throw new RuntimeException("no title for $header")) . "\n";
            foreach ($records as $record) {
                $text .= "\n### $record->name\n\n" . ($record->note === '' ? '' : self::escaped(rtrim($record->note, '.')) . ".\n\n");
                $notes = array_filter(array_column($record->fields, 'note')) !== [];
                $text .= $notes ? "| Field | Type | |\n| --- | --- | --- |\n" : "| Field | Type |\n| --- | --- |\n";
                foreach ($record->fields as $field) {
                    $text .= "| `$field->name` | {$this->type($field->type)} |" . ($notes ? ' ' . self::escaped($field->note) . ' |' : '') . "\n";
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
