<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Commands;

use Rmon\Capture\BufferReader;
use Rmon\Capture\FilterExpression;
use Rmon\Capture\FilterRows;
use Rmon\Command\Capture\PcapFile;
use Rmon\Command\Listing;
use Rmon\Command\Live;
use Rmon\Command\Options;
use Rmon\Command\ProbeCommand;
use Rmon\Command\UsageError;
use Rmon\ControlRow;
use Rmon\ControlRows;
use Rmon\Probe;
use Symfony\Component\Console\Input\InputArgument;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;

/** rmon capture */
final class CaptureCommand extends ProbeCommand
{
    /** Seconds between two looks into the buffer when it had nothing new. */
    private const PAUSE = 0.1;

    protected function configure(): void
    {
        $this->setName('capture')
            ->setDescription('Frames of an interface into a capture file, or a stream for tshark')
            ->setHelp(
                "rmon capture --on eth0 'host 10.0.1.23 and port 443' --write - | tshark -r -\n\n"
                . "A filter has the words host, net, port, src, dst, ether host, ip, ip6, arp, tcp, udp, sctp, icmp, "
                . "icmp6, vlan, broadcast, multicast, and, or, not, and parentheses. It is made into rows of "
                . "the filter table; what those can't say is refused.\n"
                . 'It goes on until Ctrl-C, --count or --seconds. The rows that it makes on the agent go with it.',
            )
            ->addArgument('filter', InputArgument::IS_ARRAY, 'Which frames; all when left out')
            ->addOption('on', 'i', InputOption::VALUE_REQUIRED, 'The interface')
            ->addOption('write', 'w', InputOption::VALUE_REQUIRED, 'The file; - for standard output')
            ->addOption('count', null, InputOption::VALUE_REQUIRED, 'End after so many frames')
            ->addOption('seconds', null, InputOption::VALUE_REQUIRED, 'End after so many seconds')
            ->addOption('slice', null, InputOption::VALUE_REQUIRED, 'Only so many octets of each frame', '0')
            ->addOption('filters', null, InputOption::VALUE_NONE, 'Only show the rows of the filter table');
    }

    protected function perform(InputInterface $input): int
    {
        $filter = FilterExpression::parse(implode(' ', $input->getArgument('filter')));
        $probe = $this->probe($input);
        $rows = (new FilterRows($probe))->of($filter);
        if ($input->getOption('filters')) {
            return $this->showFilters($rows, $filter->failed);
        }
        $on = $input->getOption('on') ?? throw new UsageError('Which interface? --on NAME; rmon ifTable lists them.');
        $interface = Listing::interfaceIndex($probe, $on);
        $count = Options::whole($input, 'count', 1) ?? PHP_INT_MAX;
        $seconds = Options::seconds($input, 'seconds') ?? INF;
        $slice = Options::whole($input, 'slice', 0, 65535);
        $file = PcapFile::create(
            $input->getOption('write') ?? throw new UsageError('Where to? --write FILE, or - for standard output.'),
        );
        $taken = 0;
        try {
            $make = static fn(ControlRows $made) => $made
                ->capture($interface, $rows, slice: $slice, wrap: true, failed: $filter->failed);
            $fetch = function (ControlRows $made, Live $live) use ($probe, $make, $file, $count, $seconds, &$taken) {
                $this->download($probe, $live, $made, $make($made), $file, $count, $seconds, $taken);
            };
            Live::run($this->screen(), static fn(Live $live) => $probe->withRows(
                'capture',
                static fn(ControlRows $made) => $fetch($made, $live),
            ), false);
        } finally {
            $this->screen()->remark($taken === 1 ? '1 frame' : "$taken frames");
        }
        return self::SUCCESS;
    }

    private function download(
        Probe $probe,
        Live $live,
        ControlRows $made,
        ControlRow $buffer,
        PcapFile $file,
        int $count,
        float $seconds,
        int &$taken,
    ): void {
        $reader = BufferReader::on($probe, $buffer->index);
        $now = hrtime(true) / 1e9;
        $end = $now + $seconds;
        $renewal = $now + ControlRows::LEASE / 3;
        do {
            // Asked before the rows: what came until the end is taken.
            $isOver = hrtime(true) / 1e9 >= $end;
            $packets = $reader->next($count - $taken);
            foreach ($packets as $packet) {
                $file->packet($packet);
                $taken++;
            }
            $file->flush();
            $lost = $reader->lost;
            $this->screen()->progress(static fn() => "$taken frames" . ($lost > 0 ? ", $lost lost" : ''));
            if (hrtime(true) / 1e9 >= $renewal) {
                $made->renew();
                $renewal += ControlRows::LEASE / 3;
            }
            if ($packets === [] && !$isOver) {
                $live->wait(self::PAUSE);
            }
            $live->check();
        } while ($taken < $count && ($packets !== [] || !$isOver));
        if ($lost > 0) {
            $this->screen()->complain("rmon: $lost frames were lost: they came faster than they could be fetched.");
        }
    }

    /** @param list<array<string, mixed>> $rows */
    private function showFilters(array $rows, bool $failed): int
    {
        $this->screen()->line($failed
            ? 'channelAcceptType: acceptFailed, frames that none of these rows lets through'
            : 'channelAcceptType: acceptMatched, frames that one of these rows lets through');
        foreach ($rows as $row) {
            $hexadecimal = static fn(string $column) => bin2hex(pack('C*', ...$row[$column]));
            $this->screen()->line(sprintf(
                'protocol %d, offset %d: %s mask %s not %s',
                $row['filterProtocolDirDataLocalIndex'],
                $row['filterPktDataOffset'],
                $hexadecimal('filterPktData'),
                $hexadecimal('filterPktDataMask'),
                $hexadecimal('filterPktDataNotMask'),
            ));
        }
        return self::SUCCESS;
    }
}
