<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console\Pages;

use Rmon\Capture\BufferReader;
use Rmon\Capture\FilterExpression;
use Rmon\Capture\FilterRows;
use Rmon\Console\Block\DataTable;
use Rmon\Console\Block\Form;
use Rmon\Console\Form\Changes;
use Rmon\Console\Form\Input;
use Rmon\Console\Form\Plan;
use Rmon\Console\Page;
use Rmon\Console\Refusal;
use Rmon\Console\Response;
use Rmon\Console\Table\Field;
use Rmon\ControlRow;
use Rmon\ControlRows;
use Rmon\Exception\BadArgument;
use Rmon\Format;
use Rmon\NetInterface;

/** Frames that pass a filter: written in usual words, watched while they come, taken along as a capture file. */
final class CapturePage extends Page
{
    public const PATH = '/probe/{probe}/{interface}/capture';
    public const TITLE = 'Filters and capture';
    public const GROUP = 'Interface';

    /** Octets kept of each frame. */
    private const SLICES = [0 => 'all of it', 64 => 'the first 64 octets', 128 => 'the first 128 octets'];

    private const WHEN_FULL = ['lock' => 'stop', 'wrap' => 'drop the oldest frames'];

    /** @var list<array<string, mixed>>|null */
    private ?array $captures = null;

    public function get(): Response
    {
        $buffer = $this->visit->query('download');
        if ($buffer === '') {
            return parent::get();
        }
        $capture = $this->capture($buffer);
        $reader = BufferReader::on($this->visit->probe(), $capture['buffer']);
        return Response::download(
            static function () use ($reader): void {
                foreach ($reader->pcap() as $octets) {
                    echo $octets;
                }
            },
            'application/vnd.tcpdump.pcap',
            $this->visit->interface()->name . "-$buffer.pcap",
        );
    }

    public function blocks(): iterable
    {
        $interface = $this->visit->interface();
        yield 'start' => (new Form('Capture frames', 'start', 'Go on', fn(): array => [
            Input::text('filter', 'Filter', $this->visit->query('filter'), 'such as: host 10.0.1.23 and tcp port 443; '
                . 'empty for every frame'),
            Input::choice('slice', 'Of each frame', self::SLICES),
            Input::choice('full', 'When the buffer is full', self::WHEN_FULL),
        ], 'It goes on while somebody looks at this probe, and is removed some minutes later.'))
            ->open($this->captures($interface) === []);
        $download = fn(array $row): string => $this->visit->address(['download' => $row['buffer']]);
        $frames = fn(array $row): string => $this->visit->address(['frames' => $row['buffer'], 'filter' => null]);
        yield 'captures' => DataTable::ofRows(
            [
                Field::text('capture', 'Capture', static fn(array $row): string => "capture $row[buffer]")
                    ->linked($frames),
                Field::text('words', 'Filter', static fn(array $row): string => $row['words']),
                Field::text('state', 'State', static fn(array $row): string => $row['state']),
                Field::number('frames', 'Frames', static fn(array $row): int => $row['frames'], Format::whole(...)),
                Field::number(
                    'matches',
                    'Passed the filter',
                    static fn(array $row): int|float => $row['matches'],
                    Format::whole(...),
                ),
                Field::number('octets', 'Buffer', static fn(array $row): int => $row['octets'], Format::octets(...)),
                Field::text('owner', 'Owner', static fn(array $row): string => $row['owner']),
                Field::text('file', 'Capture file', static fn(): string => 'download')->linked($download),
            ],
            fn(): array => $this->captures($interface),
            'Nothing is captured on this interface.',
        )->titled('Captures')->sortedBy('-capture')->beside('captures');
        $chosen = $this->visit->query('frames');
        // One that was removed meanwhile is in the list no more, and that is all.
        if (in_array($chosen, array_map(strval(...), array_column($this->captures($interface), 'buffer')), true)) {
            yield 'frames' => $this->frames($chosen);
        }
        if ($this->visit->mayChange() && $this->own($interface) !== []) {
            yield 'remove' => new Form('Remove a capture', 'remove', 'Remove it', fn(): array => [
                Input::choice('buffer', 'Capture', $this->own($interface)),
            ], 'Its frames go with it.');
        }
    }

    public function post(): Response
    {
        return Changes::answer($this->visit, ['start' => $this->planStart(...), 'remove' => $this->planRemoval(...)]);
    }

    /** @param array<string, string> $given */
    private function planStart(array $given): Plan
    {
        $interface = $this->visit->interface();
        $words = trim($given['filter'] ?? '');
        $slice = (int) ($given['slice'] ?? 0);
        $wrap = ($given['full'] ?? '') === 'wrap';
        isset(self::SLICES[$slice]) || throw new BadArgument('That is no part of a frame to be kept.');
        $filter = $words === '' ? null : FilterExpression::parse($words);
        $rows = $filter === null ? [] : (new FilterRows($this->visit->probe()))->of($filter);
        $lines = [
            ['Interface', '', $interface->name],
            ['Filter', '', $words === '' ? 'every frame' : $words],
            ['Rows of the filter table', '', (string) count($rows)],
            ['Of each frame', '', self::SLICES[$slice]],
            ['When the buffer is full', '', self::WHEN_FULL[$wrap ? 'wrap' : 'lock']],
        ];
        return new Plan('capture frames', $lines, function () use ($interface, $rows, $slice, $wrap, $filter, $words) {
            $buffer = $this->visit->needs(static fn(ControlRows $made): ControlRow => $made->capture(
                $interface->index,
                $rows,
                slice: $slice,
                wrap: $wrap,
                failed: $filter?->failed ?? false,
            ));
            $row = $this->visit->probe()->table('bufferControlTable')->get(bufferControlIndex: $buffer->index);
            $this->visit->probe()->table('channelTable')->set(
                channelIndex: $row['bufferControlChannelIndex'],
                channelDescription: substr($words, 0, 127),
            );
            return "Capture $buffer->index runs.";
        });
    }

    /** @param array<string, string> $given */
    private function planRemoval(array $given): Plan
    {
        $own = $this->own($this->visit->interface());
        $buffer = (int) ($given['buffer'] ?? 0);
        isset($own[$buffer]) || throw Refusal::notFound('The console has no such capture.');
        $capture = $this->capture((string) $buffer);
        $lines = [[$own[$buffer], number_format($capture['frames']) . ' frames', 'removed']];
        return new Plan('remove a capture', $lines, function () use ($capture): string {
            $probe = $this->visit->probe();
            $probe->table('bufferControlTable')->delete(bufferControlIndex: $capture['buffer']);
            foreach ($probe->table('filterTable') as $row) {
                if ($row['filterChannelIndex'] === $capture['channel']) {
                    $probe->table('filterTable')->delete(filterIndex: $row['filterIndex']);
                }
            }
            $probe->table('channelTable')->delete(channelIndex: $capture['channel']);
            return "Capture $capture[buffer] is removed.";
        }, true);
    }

    private function frames(string $chosen): DataTable
    {
        return DataTable::of(
            $this->visit,
            fn() => $this->visit->probe()->table('captureBufferTable', control: $this->capture($chosen)['buffer']),
            ['captureBufferIndex', 'captureBufferPacketTime', 'captureBufferPacketLength', 'captureBufferPacketData'],
            static fn(array $fields): array => [
                'captureBufferIndex' => $fields['captureBufferIndex']->titled('Frame'),
                'captureBufferPacketTime' => $fields['captureBufferPacketTime']->titled('After ms'),
                'captureBufferPacketLength' => $fields['captureBufferPacketLength']->titled('Length'),
                'captureBufferPacketData' => $fields['captureBufferPacketData']->titled('Octets'),
            ],
        )->titled("Frames of capture $chosen")->beside('frames')
            ->emptyBecause(static fn(): string => 'No frame passed the filter yet.');
    }

    /** @return array<string, mixed> */
    private function capture(string $buffer): array
    {
        foreach ($this->captures($this->visit->interface()) as $capture) {
            if ((string) $capture['buffer'] === $buffer) {
                return $capture;
            }
        }
        throw Refusal::notFound('There is no such capture on this interface.');
    }

    /** @return list<array<string, mixed>> the buffers of the interface, whoever made them */
    private function captures(NetInterface $interface): array
    {
        if ($this->captures !== null) {
            return $this->captures;
        }
        $probe = $this->visit->probe();
        $channels = [];
        foreach ($probe->table('channelTable') as $row) {
            if ($row['channelIfIndex'] === $interface->index) {
                $channels[$row['channelIndex']] = $row;
            }
        }
        $this->captures = [];
        foreach ($channels === [] ? [] : $probe->table('bufferControlTable') as $row) {
            $channel = $channels[$row['bufferControlChannelIndex']] ?? null;
            if ($channel !== null) {
                $this->captures[] = [
                    'buffer' => $row['bufferControlIndex'],
                    'channel' => $channel['channelIndex'],
                    'words' => $channel['channelDescription'] === '' ? 'every frame' : $channel['channelDescription'],
                    'state' => match (true) {
                        $channel['channelDataControl'] !== 1 => 'stopped',
                        $row['bufferControlFullStatus'] === 2 => 'full',
                        default => 'runs',
                    },
                    'frames' => $row['bufferControlCapturedPackets'],
                    'matches' => $channel['channelMatches'],
                    'octets' => $row['bufferControlMaxOctetsGranted'],
                    'owner' => $row['bufferControlOwner'],
                ];
            }
        }
        return $this->captures;
    }

    /** @return array<int, string> the captures that the console made here; who sees them keeps them */
    private function own(NetInterface $interface): array
    {
        $captures = $this->captures($interface);
        if ($captures === []) {
            return [];
        }
        $rows = $this->visit->rows();
        $rows->adopt();
        $own = [];
        foreach ($rows->made() as $row) {
            foreach ($row->table === 'bufferControlTable' ? $captures : [] as $capture) {
                if ($capture['buffer'] === $row->index) {
                    $own[$row->index] = "capture $row->index: $capture[words]";
                }
            }
        }
        if ($own !== []) {
            $this->visit->console->leases()->look($this->visit->configured(), $rows);
        }
        return $own;
    }
}
