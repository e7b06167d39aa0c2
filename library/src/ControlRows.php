<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

use Rmon\Exception\AgentRefused;
use Rmon\Exception\BadArgument;
use Rmon\Exception\RmonException;
use Rmon\Schema\Catalog;
use Rmon\Schema\TableSchema;

/**
 * Control rows for as long as somebody needs them.
 *
 * A row that does what is wanted and belongs to somebody else is used as it is, and never changed. Otherwise one is
 * made under the owner "NAME until UPTIME": no two users share what they make, so that none takes a row away from
 * another. Who ends without release() leaves rows behind, which others remove once the agent's clock is past that
 * time; who needs them longer renews them.
 *
 *     $probe->withRows('noc', function (ControlRows $rows) use ($probe) {
 *         $hosts = $rows->hosts('eth0');
 *         ...
 *     });
 */
final class ControlRows
{
    /** Seconds that rows last without renew(), when nothing else is said. */
    public const LEASE = 300;

    /** The longest lease, in seconds. What claims more was left over by an agent's earlier life. */
    public const LONGEST_LEASE = 86400;

    /** Where any set begins the row's work anew: these rows have the longest lease from the start, and no other. */
    private const NOT_RENEWED = ['hostTopNControlTable', 'artControlTable'];

    /** How owners begin, which tells rows with a lease from all others. */
    private const MARK = 'rmon:';

    /** Indexes that are tried before giving up, when others take each free one first. */
    private const TRIES = 20;

    private const LAST_INDEX = 65535;

    /** @var array<string, array<int, ControlRow>> by table and index */
    private array $made = [];

    private readonly string $name;

    /**
     * @param string $name who uses the rows: letters, digits, ".", "_", ":" and "-"
     * @param int $lease   seconds that rows last without renew()
     * @param bool $again  whether the name stands for one user who comes again, as a console's session does with each
     *                     page, and finds the rows again. Otherwise each user is another, also under the same name.
     */
    public function __construct(
        private readonly Probe $probe,
        string $name,
        private readonly int $lease = self::LEASE,
        bool $again = false,
    ) {
        if (!preg_match('/^[\w.:-]{1,100}$/D', $name)) {
            throw new BadArgument('A name of an owner is 1 to 100 letters, digits, ".", "_", ":" or "-".');
        }
        if ($lease < 1 || $lease > self::LONGEST_LEASE) {
            throw new BadArgument('A lease is 1 to ' . self::LONGEST_LEASE . ' seconds.');
        }
        $this->name = self::MARK . $name . ($again ? '' : ':' . bin2hex(random_bytes(6)));
    }

    /** Hosts by network address: nlHostTable, alHostTable. */
    public function hosts(int|string $interface): ControlRow
    {
        return $this->on('hlHostControlTable', $interface);
    }

    /** Conversations by network address: nlMatrixSDTable, nlMatrixDSTable, alMatrixSDTable, alMatrixDSTable. */
    public function conversations(int|string $interface): ControlRow
    {
        return $this->on('hlMatrixControlTable', $interface);
    }

    /** Hosts by MAC address: hostTable, hostTimeTable. */
    public function macHosts(int|string $interface): ControlRow
    {
        return $this->on('hostControlTable', $interface);
    }

    /** Conversations by MAC address: matrixSDTable, matrixDSTable. */
    public function macConversations(int|string $interface): ControlRow
    {
        return $this->on('matrixControlTable', $interface);
    }

    /**
     * A report of the hosts by MAC address that have most of something: hostTopNTable, from $seconds later on.
     *
     * @param string $base hostTopNRateBase: "hostTopNOutOctets" and its like
     */
    public function macTopHosts(int|string $interface, string $base, int $seconds, int $size = 10): ControlRow
    {
        $hosts = $this->macHosts($interface);
        $wanted = [
            'hostTopNHostIndex' => $hosts->index,
            'hostTopNRateBase' => $base,
            'hostTopNTimeRemaining' => $seconds,
            'hostTopNRequestedSize' => $size,
        ];
        return $this->own('hostTopNControlTable', $wanted, [
            'hostTopNTimeRemaining' => null,
            'hostTopNDuration' => $seconds,
        ] + $wanted);
    }

    /** Traffic by protocol: protocolDistStatsTable, protocolDistOthers. */
    public function protocols(int|string $interface): ControlRow
    {
        return $this->on('protocolDistControlTable', $interface);
    }

    /** MAC addresses of network addresses: addressMapTable, of which all rows share one table. */
    public function addresses(int|string $interface): ControlRow
    {
        return $this->on('addressMapControlTable', $interface);
    }

    /** Counters by kind and size of frames: the row of etherStatsTable itself. */
    public function etherStats(int|string $interface): ControlRow
    {
        return $this->on('etherStatsTable', $interface);
    }

    /** Samples of the Ethernet counters: etherHistoryTable. */
    public function history(int|string $interface, int $seconds, int $samples = 50): ControlRow
    {
        return $this->on('historyControlTable', $interface, [
            'historyControlInterval' => $seconds,
            'historyControlBucketsRequested' => $samples,
        ]);
    }

    /** Traffic by VLAN: smonVlanIdStatsTable. */
    public function vlans(int|string $interface): ControlRow
    {
        return $this->on('smonVlanStatsControlTable', $interface);
    }

    /** Traffic by user priority: smonPrioStatsTable. */
    public function priorities(int|string $interface): ControlRow
    {
        return $this->on('smonPrioStatsControlTable', $interface);
    }

    /** Response times: artReportTable, artSummaryTable. A report without an end unless $seconds are given. */
    public function responseTimes(int|string $interface, int $seconds = 0): ControlRow
    {
        $wanted = ['artControlDataSource' => $interface, 'artControlTimeRemaining' => $seconds];
        // Of a report with an end what remains counts down, of one without the duration counts up.
        return $this->own('artControlTable', $wanted, $seconds === 0 ? $wanted : [
            'artControlTimeRemaining' => null,
            'artControlDuration' => $seconds,
        ] + $wanted);
    }

    /** Traffic by aggregation group: dsmonStatsTable. See profile() for $profile. */
    public function groups(int|string $interface, int $profile): ControlRow
    {
        return $this->on('dsmonStatsControlTable', $interface, ['dsmonStatsControlAggProfile' => $profile]);
    }

    /** Traffic by aggregation group and protocol: dsmonPdistStatsTable. */
    public function groupProtocols(int|string $interface, int $profile): ControlRow
    {
        return $this->on('dsmonPdistCtlTable', $interface, ['dsmonPdistAggProfile' => $profile]);
    }

    /** Traffic by aggregation group and host: dsmonHostTable. */
    public function groupHosts(int|string $interface, int $profile): ControlRow
    {
        return $this->on('dsmonHostCtlTable', $interface, ['dsmonHostAggProfile' => $profile]);
    }

    /** Traffic by aggregation group and conversation: dsmonMatrixSDTable, dsmonMatrixDSTable. */
    public function groupConversations(int|string $interface, int $profile): ControlRow
    {
        return $this->on('dsmonMatrixCtlTable', $interface, ['dsmonMatrixAggProfile' => $profile]);
    }

    /**
     * A channel that takes the frames which one of the filters lets through, or those that none does, and a buffer that
     * keeps them: captureBufferTable.
     *
     * @param list<array<string, mixed>> $filters columns of filterTable; none: every frame
     * @param int $octets                         the buffer's size; -1: as much as the agent gives
     * @param int $slice                          octets kept of each frame; 0: all
     * @param bool $wrap                          whether new frames take the place of old ones when it is full
     * @param bool $failed                        whether frames are wanted that no filter lets through
     */
    public function capture(
        int|string $interface,
        array $filters = [],
        int $octets = -1,
        int $slice = 0,
        bool $wrap = false,
        bool $failed = false,
    ): ControlRow {
        $channel = $this->make(Catalog::find('channelTable'), [
            'channelIfIndex' => $interface,
            // Without filters, what none of them lets through is everything.
            'channelAcceptType' => $failed || $filters === [] ? 'acceptFailed' : 'acceptMatched',
            'channelDataControl' => 'off',
        ]);
        foreach ($filters as $filter) {
            $this->make(Catalog::find('filterTable'), ['filterChannelIndex' => $channel->index] + $filter);
        }
        $buffer = $this->make(Catalog::find('bufferControlTable'), [
            'bufferControlChannelIndex' => $channel->index,
            'bufferControlFullAction' => $wrap ? 'wrapWhenFull' : 'lockWhenFull',
            'bufferControlCaptureSliceSize' => $slice,
            'bufferControlDownloadSliceSize' => $slice === 0 ? 65535 : $slice,
            'bufferControlMaxOctetsRequested' => $octets,
        ]);
        $this->probe->table('channelTable')->set(channelIndex: $channel->index, channelDataControl: 'on');
        return $buffer;
    }

    /**
     * A valid aggregation profile in which each DSCP value is a group of its own, and the lock that makes its groups
     * count. Both stay: while the lock is on no profile can be removed, and taking it off would make the agent forget
     * what it counted for others.
     *
     * @throws AgentRefused when the lock is on and there is no such profile
     */
    public function profile(): int
    {
        $profile = $this->plainProfile() ?? $this->makeProfile();
        $lock = $this->probe->table('dsmonAggControlLocked');
        if ($lock->get()['dsmonAggControlLocked'] !== 1) {
            $lock->set(dsmonAggControlLocked: 'true');
        }
        return $profile;
    }

    /**
     * A row of any control table that has these values and works: one that is there, or one that is made.
     *
     * @param array<string, mixed> $wanted by the names of columns
     */
    public function row(string $table, array $wanted): ControlRow
    {
        $schema = Catalog::find($table);
        return $this->find($schema, $this->parsed($schema, $wanted), true) ?? $this->make($schema, $wanted);
    }

    /** @return list<ControlRow> the rows that were made and not removed yet */
    public function made(): array
    {
        return array_merge(...array_map(array_values(...), array_values($this->made)));
    }

    /** Takes in the rows of this name that are there already, of a user who comes again. */
    public function adopt(): void
    {
        foreach (Catalog::all() as $schema) {
            if ($schema->owner === null || $schema->status === null || count($schema->keys) !== 1) {
                continue;
            }
            $key = $this->key($schema);
            foreach ($this->probe->table($schema->name) as $row) {
                if ($this->isMine($row[$schema->owner])) {
                    $this->made[$schema->name][$row[$key]] ??= new ControlRow($schema->name, $row[$key], true);
                }
            }
        }
    }

    /** Renews the lease of all rows. */
    public function renew(): void
    {
        foreach ($this->made() as $row) {
            $table = $this->probe->table($row->table);
            if (!in_array($row->table, self::NOT_RENEWED, true) && $this->isOwn($table, $row->index)) {
                $owner = $this->owner($row->table);
                $table->set(...[$this->key($table->schema) => $row->index, $table->schema->owner => $owner]);
            }
        }
    }

    /** Removes what was made, the last row first. What is gone already, or somebody else's by now, is left alone. */
    public function release(): void
    {
        $failure = null;
        foreach (array_reverse($this->made()) as $row) {
            try {
                $table = $this->probe->table($row->table);
                if ($this->isOwn($table, $row->index)) {
                    $table->delete(...[$this->key($table->schema) => $row->index]);
                }
            } catch (RmonException $exception) {
                $failure ??= $exception;
            }
        }
        $this->made = [];
        if ($failure !== null) {
            throw $failure;
        }
    }

    /**
     * Removes rows that others left behind: those whose lease is over.
     *
     * @return int how many
     */
    public function sweep(): int
    {
        $swept = 0;
        $now = intdiv($this->probe->uptime(), 100);
        foreach (Catalog::all() as $schema) {
            if ($schema->owner === null || $schema->status === null || count($schema->keys) !== 1) {
                continue;
            }
            $table = $this->probe->table($schema->name);
            $key = $this->key($schema);
            foreach ($table as $row) {
                if ($this->isOver($row[$schema->owner], $now)) {
                    $table->delete(...[$key => $row[$key]]);
                    $swept++;
                }
            }
        }
        return $swept;
    }

    /**
     * A row that nobody else may use, as a set on it begins its work anew.
     *
     * @param array<string, mixed> $wanted by the names of columns
     * @param array<string, mixed> $seen   the columns that tell one which does the same; null: not this one
     */
    private function own(string $table, array $wanted, array $seen): ControlRow
    {
        $schema = Catalog::find($table);
        $seen = array_filter($seen, static fn(mixed $value) => $value !== null);
        return $this->find($schema, $this->parsed($schema, $seen), false) ?? $this->make($schema, $wanted);
    }

    /** @param array<string, mixed> $also further columns that matter */
    private function on(string $table, int|string $interface, array $also = []): ControlRow
    {
        $schema = Catalog::find($table);
        foreach ($schema->columns as $name => $column) {
            if ($column->type === Schema\Type::NetInterface) {
                return $this->row($table, [$name => $interface] + $also);
            }
        }
        throw new BadArgument("$table has no data source.");
    }

    /** @param array<string, mixed> $wanted */
    private function find(TableSchema $schema, array $wanted, bool $others): ?ControlRow
    {
        $key = $this->key($schema);
        foreach ($this->probe->table($schema->name) as $row) {
            foreach ([$schema->status => RowStatus::valid->value] + $wanted as $name => $value) {
                if ($row[$name] !== $value) {
                    continue 2;
                }
            }
            $lease = $this->leaseOf($row[$schema->owner]);
            if ($lease === null && $others) {
                return new ControlRow($schema->name, $row[$key], false);
            }
            if ($this->isMine($row[$schema->owner])) {
                $found = new ControlRow($schema->name, $row[$key], true);
                return $this->made[$schema->name][$row[$key]] = $found;
            }
        }
        return null;
    }

    /** @param array<string, mixed> $wanted */
    private function make(TableSchema $schema, array $wanted): ControlRow
    {
        $table = $this->probe->table($schema->name);
        $key = $this->key($schema);
        $taken = [];
        foreach ($table as $row) {
            $taken[$row[$key]] = true;
        }
        $index = 0;
        for ($try = 1;; $try++) {
            do {
                $index++;
            } while (isset($taken[$index]));
            if ($index > self::LAST_INDEX) {
                throw new BadArgument("$schema->name has no free index.");
            }
            try {
                $table->create(...[$key => $index, $schema->owner => $this->owner($schema->name)] + $wanted);
                return $this->made[$schema->name][$index] = new ControlRow($schema->name, $index, true);
            } catch (AgentRefused $refused) {
                if ($refused->error() === ErrorStatus::genErr && $this->sweep() > 0) {
                    // The table was full of what others left behind.
                    $index--;
                    continue;
                }
                $row = $table->get(...[$key => $index]);
                if ($try === self::TRIES || $row === null || $this->isMine($row[$schema->owner])) {
                    throw $refused;
                }
                // Somebody else took this index meanwhile.
            }
        }
    }

    /** @param array<string, mixed> $wanted */
    private function parsed(TableSchema $schema, array $wanted): array
    {
        $values = $this->probe->values();
        $parsed = [];
        foreach ($wanted as $name => $value) {
            $parsed[$name] = $values->parse($schema->column($name), $value);
        }
        return $parsed;
    }

    private function plainProfile(): ?int
    {
        foreach ($this->probe->table('dsmonAggControlTable') as $row) {
            $index = $row['dsmonAggControlIndex'];
            if ($row['dsmonAggControlStatus'] !== RowStatus::valid->value) {
                continue;
            }
            $plain = 0;
            foreach ($this->probe->table('dsmonAggProfileTable', control: $index) as $map) {
                $plain += (int) ($map['dsmonAggProfileDSCP'] === $map['dsmonAggGroupIndex']);
            }
            if ($plain === 64) {
                return $index;
            }
        }
        return null;
    }

    private function makeProfile(): int
    {
        $table = $this->probe->table('dsmonAggControlTable');
        $index = 1;
        foreach ($table as $row) {
            $index = max($index, $row['dsmonAggControlIndex'] + 1);
        }
        $row = [
            'dsmonAggControlIndex' => $index,
            'dsmonAggControlDescr' => 'each DSCP value by itself',
            'dsmonAggControlOwner' => 'rmon',
        ];
        $table->set(...$row, dsmonAggControlStatus: RowStatus::createRequest);
        $map = $this->probe->table('dsmonAggProfileTable', control: $index);
        for ($dscp = 0; $dscp < 64; $dscp++) {
            $map->set(dsmonAggProfileDSCP: $dscp, dsmonAggGroupIndex: $dscp);
        }
        $table->set(...$row, dsmonAggControlStatus: RowStatus::valid);
        return $index;
    }

    private function owner(string $table): string
    {
        $lease = in_array($table, self::NOT_RENEWED, true) ? self::LONGEST_LEASE : $this->lease;
        return "$this->name until " . (intdiv($this->probe->uptime(), 100) + $lease);
    }

    /** @return array{string, int}|null the name and the end of a lease; null for an owner that has none */
    private function leaseOf(string $owner): ?array
    {
        return str_starts_with($owner, self::MARK) && preg_match('/^(\S+) until (\d{1,9})$/D', $owner, $parts)
            ? [$parts[1], (int) $parts[2]]
            : null;
    }

    private function isMine(string $owner): bool
    {
        return ($this->leaseOf($owner)[0] ?? null) === $this->name;
    }

    private function isOver(string $owner, int $now): bool
    {
        $lease = $this->leaseOf($owner);
        return $lease !== null && ($lease[1] < $now || $lease[1] > $now + self::LONGEST_LEASE);
    }

    private function isOwn(Table $table, int $index): bool
    {
        $row = $table->get(...[$this->key($table->schema) => $index]);
        return $row !== null && $this->isMine($row[$table->schema->owner]);
    }

    private function key(TableSchema $schema): string
    {
        return (string) array_key_first($schema->keys);
    }
}
