<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Capture;

use Generator;
use Rmon\Exception\BadArgument;
use Rmon\Probe;
use Rmon\Table;

/**
 * Takes the frames out of a capture buffer, each once, in the order in which they came; also while it fills.
 *
 *     foreach (BufferReader::on($probe, $buffer)->pcap() as $octets) {
 *         echo $octets;
 *     }
 */
final class BufferReader
{
    /** Rows that are asked for at a time. */
    private const PAGE = 200;

    /** A frame's length counts its check sequence, which isn't captured. */
    private const CHECK_SEQUENCE = 4;

    /** The agent's clock (sysUpTime) goes on from 0 here. */
    private const CLOCK = 2 ** 32;

    /** Frames that the buffer no longer had when they were asked for. */
    public int $lost = 0;

    /** @var array<string, mixed>|null the keys of the last frame that was taken */
    private ?array $behind = null;

    private function __construct(private readonly Table $table, private readonly int $start)
    {
    }

    /**
     * @param int $buffer bufferControlIndex
     * @throws BadArgument when there is no such buffer
     */
    public static function on(Probe $probe, int $buffer): self
    {
        $row = $probe->table('bufferControlTable')->get(bufferControlIndex: $buffer)
            ?? throw new BadArgument("There is no capture buffer $buffer.");
        $now = (int) (microtime(true) * 1000000);
        $age = (int) fmod($probe->uptime() - $row['bufferControlTurnOnTime'] + self::CLOCK, self::CLOCK);
        $table = $probe->table('captureBufferTable', control: $buffer);
        return new self($table, ($now - 10000 * $age) * 1000);
    }

    /**
     * The next frames.
     *
     * @return list<Packet> none when there are no new ones yet
     */
    public function next(int $most = self::PAGE): array
    {
        $packets = [];
        foreach ($this->table->page(min(self::PAGE, $most), $this->behind) as $row) {
            $index = $row['captureBufferIndex'];
            $this->lost += $index - ($this->behind['captureBufferIndex'] ?? 0) - 1;
            $this->behind = $this->table->keysOf($row);
            $packets[] = new Packet(
                $index,
                $this->start + 1000000 * (int) $row['captureBufferPacketTime']
                    + (int) $row['captureBufferPacketHighCapacityTime'],
                pack('C*', ...$row['captureBufferPacketData']),
                max(0, $row['captureBufferPacketLength'] - self::CHECK_SEQUENCE),
            );
        }
        return $packets;
    }

    /**
     * All that the buffer has, as a capture file in pieces.
     *
     * @return Generator<int, string>
     */
    public function pcap(): Generator
    {
        yield Pcap::header();
        while (($packets = $this->next()) !== []) {
            yield implode('', array_map(Pcap::record(...), $packets));
        }
    }
}
