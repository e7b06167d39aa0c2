<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

use Rmon\Exception\BadArgument;
use Rmon\Exception\CallFailed;
use Rmon\Exception\ConnectionFailed;
use Rmon\Exception\UnknownName;
use Rmon\Schema\Catalog;

/** An agent, and what it measures. */
final class Probe
{
    private const PORT = 9911;

    public readonly Link $link;

    private ?Interfaces $interfaces = null;
    private ?Protocols $protocols = null;

    private function __construct(Link $link)
    {
        $this->link = $link;
    }

    /**
     * Makes a link to an agent.
     *
     * @param string $host      a name or a dotted IPv4 address; "host:port" does as well
     * @param int|null $port    its TCP port; that of the module's functions when not given
     * @param bool $persistent  whether the link stays open for later requests of this process
     * @param float $timeout    seconds that connecting may take, name look-ups apart
     * @param float|null $end   the time of hrtime(), in seconds, up to which calls wait; null: 25 seconds each
     * @throws ConnectionFailed|BadArgument
     */
    public static function connect(
        string $host = '127.0.0.1',
        ?int $port = null,
        bool $persistent = false,
        float $timeout = 5.0,
        ?float $end = null,
    ): self {
        if ($port === null && preg_match('/^([^:]+):(\d{1,5})$/D', $host, $parts)) {
            [, $host, $port] = $parts;
        }
        $port ??= self::defaultPort();
        $link = new Link($host, (int) $port, $persistent, $timeout, $end);
        $link->resource();
        return new self($link);
    }

    /** Gives the link up. The next call makes it anew. */
    public function close(): void
    {
        $this->link->close();
        $this->interfaces = null;
        $this->protocols = null;
    }

    /** The module's own rule, which it doesn't tell: the directive, the environment, the service, 9911. */
    private static function defaultPort(): int
    {
        $configured = ini_get('rmon.default_port');
        $environment = getenv('RMONRPC_PORT');
        return (int) match (true) {
            $configured !== '' && $configured !== false => $configured,
            $environment !== false => $environment,
            default => getservbyname('rmonrpc', 'tcp') ?: self::PORT,
        };
    }

    /**
     * The rows of a table, or those that have these keys.
     *
     * @param string $name   see Catalog
     * @param mixed ...$keys values by the names of key columns; "control" stands for the index of the control row
     * @throws UnknownName|BadArgument
     */
    public function table(string $name, mixed ...$keys): Table
    {
        return new Table($this, Catalog::find($name), $keys);
    }

    /** The time since the agent's start, in hundredths of a second. */
    public function uptime(): int
    {
        return $this->system()['sysUpTime'];
    }

    /**
     * The system group.
     *
     * @return array{sysDescr: string, sysUpTime: int, sysContact: string, sysName: string, sysLocation: string,
     *     sysObjectID: string, sysServices: int}
     */
    public function system(): array
    {
        return $this->link->read('rmon_system_get', []);
    }

    /** The interfaces by number and name; read once, and again when a name is asked for that isn't there. */
    public function interfaces(): Interfaces
    {
        return $this->interfaces ??= new Interfaces($this);
    }

    /** The protocols by number and path; read once, and again when the agent's directory has changed. */
    public function protocols(): Protocols
    {
        return $this->protocols ??= new Protocols($this);
    }

    /**
     * One of the interfaces.
     *
     * @param string|int $which     its name or its number
     * @param callable|null $wait   what waits while something is measured; usleep() when not given
     * @throws UnknownName
     */
    public function interface(string|int $which, ?callable $wait = null): NetInterface
    {
        $interfaces = $this->interfaces();
        $index = is_int($which) ? $which : $interfaces->index($which);
        $names = $interfaces->names();
        $name = $names[$index] ?? throw UnknownName::among('interface', (string) $which, $names);
        return new NetInterface($this, $index, $name, $wait);
    }

    /**
     * Control rows for as long as a function runs.
     *
     * @template T
     * @param string $name                who uses them; see ControlRows
     * @param callable(ControlRows): T $do
     * @param int $lease                  seconds after which they go, should this process die
     * @return T
     */
    public function withRows(string $name, callable $do, int $lease = ControlRows::LEASE): mixed
    {
        $rows = new ControlRows($this, $name, $lease);
        try {
            return $do($rows);
        } finally {
            $rows->release();
        }
    }

    /** A voice monitor: "sccp", "h323" or "mgcp". */
    public function voice(string $monitor): VoiceMonitor
    {
        return new VoiceMonitor($this, $monitor);
    }

    /** The agent's host name, resolvers and learning of NetFlow devices; all else that can be set is a table. */
    public function settings(): Settings
    {
        return new Settings($this);
    }

    /**
     * Makes the agent save captured packets to a file of its own, in the format of libpcap. Takes up to a minute.
     *
     * @param string $file  its name; the agent has a directory for such files
     * @param int $buffer   the bufferControlIndex
     * @param int $first    the first captureBufferIndex; 0: that of the first packet
     * @param int $last     the last one; 0: that of the last packet
     * @param int $option   the file's format, in the agent's terms
     * @return array{packets: int, last: int} how many were saved, and the captureBufferIndex of the last of them
     */
    public function saveCapture(string $file, int $buffer, int $first = 0, int $last = 0, int $option = 0): array
    {
        if ($file === '' || strlen($file) > 255) {
            throw new BadArgument('The name of a file has 1 to 255 octets.');
        }
        $saved = $this->link->call('rmon_capture_save_file', [$file, $buffer, $first, $last, $option]);
        return ['packets' => $saved['totalPktsSaved'], 'last' => $saved['lastPktIndex']];
    }

    /** Cells of this probe's rows, with the names of its interfaces and protocols. */
    public function values(): Values
    {
        return new Values($this);
    }

    /**
     * A variable of the agent's MIBs, such as "etherStatsPkts.2".
     *
     * @return int|null its low 32 bits; null when the agent has no such variable
     * @throws ConnectionFailed|CallFailed
     */
    public function variable(string $name): ?int
    {
        $value = $this->link->read('rmon_get_mib_var', [$name], quiet: true);
        return is_int($value) ? $value : null;
    }
}
