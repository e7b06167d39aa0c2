<?php

// SPDX-License-Identifier: MIT

/*
 * The child process behind agent.inc: an ONC RPC server on a loopback port
 * that answers calls with what the test scripted.
 *
 * It takes commands on its standard input and answers each of them on its
 * standard output (a length, then a serialized array). It ends when the test
 * closes that pipe, or dies, or when TIME_LIMIT has passed.
 *
 * A step, as it arrives here, is a list of actions: ['message', body, ...],
 * ['bytes', string], ['pause', seconds], ['close'], ['reset'], ['refuse'].
 */

declare(strict_types=1);

/** Seconds after which this process ends, whatever happens. */
const TIME_LIMIT = 300.0;

/** Bytes of the longest call that is taken for a call. */
const LONGEST_CALL = 64 << 20;

/** Bytes of a call header whose credentials and verifier are empty. */
const CALL_HEADER = 40;

const LAST_FRAGMENT = 0x80000000;

/** One client: what arrived and was not understood yet, what is to be done. */
final class Connection
{
    public string $received = '';
    public string $record = '';
    public int $sent = 0;
    public ?float $resumeAt = null;

    /** Set once its end is scripted: whatever arrives from then on is ignored. */
    public bool $ending = false;

    public readonly SplQueue $actions;

    /** @param resource $socket */
    public function __construct(public readonly int $number, public readonly mixed $socket)
    {
        $this->actions = new SplQueue();
    }
}

final class Server
{
    /** @var resource|null */
    private mixed $listener = null;

    /** @var array<int, Connection> by number */
    private array $connections = [];

    private int $accepted = 0;
    private SplQueue $steps;
    private ?array $fallback = null;
    private array $calls = [];

    public function __construct()
    {
        $this->steps = new SplQueue();
    }

    /** Serves until the test is gone or the time is up. */
    public function run(): void
    {
        $end = now() + TIME_LIMIT;
        while (($left = $end - now()) > 0) {
            $this->serve($left, true);
        }
        fwrite(STDERR, sprintf("scripted agent: ends after %d seconds\n", TIME_LIMIT));
    }

    /**
     * Waits at most so many seconds for something to do, and does it.
     * Tells whether a client had connected, sent or closed.
     */
    private function serve(float $seconds, bool $withCommands): bool
    {
        $read = $withCommands ? ['commands' => STDIN] : [];
        $write = [];
        $none = [];
        foreach ($this->connections as $number => $connection) {
            $read[$number] = $connection->socket;
            if ($connection->resumeAt !== null) {
                $seconds = min($seconds, max(0.0, $connection->resumeAt - now()));
            } elseif (!$connection->actions->isEmpty()) {
                $write[$number] = $connection->socket;
            }
        }
        if ($this->listener !== null) {
            $read['listener'] = $this->listener;
        }
        if ($read === []) {
            return false;
        }
        stream_select($read, $write, $none, (int) $seconds, (int) (fmod($seconds, 1.0) * 1e6));

        if (isset($read['commands'])) {
            $this->command();
            return true;
        }
        foreach ($this->connections as $number => $connection) {
            if (isset($read[$number])) {
                $this->read($connection);
            }
            if (isset($this->connections[$number])) {
                $this->proceed($connection);
            }
        }
        if (isset($read['listener'])) {
            $this->accept();
        }
        return $read !== [];
    }

    /** Takes in everything that clients have sent so far. */
    private function drain(): void
    {
        for ($round = 0; $round < 10000 && $this->serve(0.0, false); $round++);
    }

    private function accept(): void
    {
        $socket = @stream_socket_accept($this->listener, 0.0);
        if ($socket === false) {
            return;
        }
        stream_set_blocking($socket, false);
        stream_set_chunk_size($socket, 1 << 16);
        $number = ++$this->accepted;
        $this->connections[$number] = new Connection($number, $socket);
    }

    private function read(Connection $connection): void
    {
        $bytes = @fread($connection->socket, 1 << 16);
        if ($bytes !== '' && $bytes !== false) {
            $this->take($connection, $bytes);
        } elseif (feof($connection->socket)) {
            if (!$connection->ending && $connection->received . $connection->record !== '') {
                $begun = $connection->record . substr($connection->received, 4);
                $this->record($connection, $begun, 'the connection closed inside this record');
            }
            $this->close($connection);
        }
    }

    /** Splits what arrived into fragments, and joins fragments to records. */
    private function take(Connection $connection, string $bytes): void
    {
        $connection->received .= $bytes;
        while (!$connection->ending && strlen($connection->received) >= 4) {
            $mark = unpack('N', $connection->received)[1];
            $length = $mark & ~LAST_FRAGMENT;
            if (strlen($connection->record) + $length > LONGEST_CALL) {
                $this->record($connection, $connection->record, "a fragment of $length bytes is announced");
                break;
            }
            if (strlen($connection->received) < 4 + $length) {
                break;
            }
            $connection->record .= substr($connection->received, 4, $length);
            $connection->received = substr($connection->received, 4 + $length);
            if ($mark & LAST_FRAGMENT) {
                $record = $connection->record;
                $connection->record = '';
                $this->record($connection, $record, fault($record));
            }
        }
    }

    /** Notes a record that arrived, and makes its answer the connection's next actions. */
    private function record(Connection $connection, string $record, ?string $fault): void
    {
        $actions = null;
        if ($fault === null) {
            $actions = $this->steps->isEmpty() ? $this->fallback : $this->steps->dequeue();
        }
        $this->calls[] = [
            'procedure' => number($record, 20) ?? -1,
            'arguments' => substr($record, CALL_HEADER),
            'connection' => $connection->number,
            'xid' => number($record, 0) ?? 0,
            'malformed' => $fault,
            'unexpected' => $fault === null && $actions === null,
        ];
        foreach ($actions ?? [['close']] as $action) {
            foreach ($action[0] === 'message' ? message($record, ...$action[1]) : [$action] as $each) {
                $connection->actions->enqueue($each);
                $connection->ending = $connection->ending || $each[0] === 'close' || $each[0] === 'reset';
            }
        }
    }

    /** Does what is next on a connection, as far as it goes without waiting. */
    private function proceed(Connection $connection): void
    {
        while (!$connection->actions->isEmpty()) {
            [$what, $detail] = $connection->actions->bottom() + [1 => null];
            $finished = match ($what) {
                'bytes' => $this->send($connection, $detail),
                'pause' => $this->pause($connection, $detail),
                'refuse' => $this->refuse(),
                'close' => $this->close($connection),
                'reset' => $this->reset($connection),
            };
            if (!$finished) {
                return;
            }
            $connection->actions->dequeue();
        }
    }

    /** Sends what the socket takes; tells whether that was all. */
    private function send(Connection $connection, string $bytes): bool
    {
        while ($connection->sent < strlen($bytes)) {
            $sent = @fwrite($connection->socket, substr($bytes, $connection->sent, 1 << 18));
            if ($sent === false) {
                return $this->close($connection);
            }
            if ($sent === 0) {
                return false;
            }
            $connection->sent += $sent;
        }
        $connection->sent = 0;
        return true;
    }

    private function pause(Connection $connection, float $seconds): bool
    {
        $connection->resumeAt ??= now() + $seconds;
        if (now() < $connection->resumeAt) {
            return false;
        }
        $connection->resumeAt = null;
        return true;
    }

    /** Stops listening, after those who already connected were let in. */
    private function refuse(): bool
    {
        while ($this->listener !== null) {
            $waiting = [$this->listener];
            $none = [];
            if (stream_select($waiting, $none, $none, 0) > 0) {
                $this->accept();
            } else {
                fclose($this->listener);
                $this->listener = null;
            }
        }
        return true;
    }

    /** Ends a connection. Nothing follows on it, so its actions are not finished but gone. */
    private function close(Connection $connection): bool
    {
        fclose($connection->socket);
        unset($this->connections[$connection->number]);
        return false;
    }

    /** Ends a connection with RST instead of FIN. */
    private function reset(Connection $connection): bool
    {
        if (!extension_loaded('sockets')) {
            dl('sockets');
        }
        $socket = socket_import_stream($connection->socket);
        socket_set_option($socket, SOL_SOCKET, SO_LINGER, ['l_onoff' => 1, 'l_linger' => 0]);
        return $this->close($connection);
    }

    private function listen(int $port): void
    {
        $this->refuse();
        $options = stream_context_create(['socket' => ['tcp_nodelay' => true, 'backlog' => 128]]);
        $address = "tcp://127.0.0.1:$port";
        $flags = STREAM_SERVER_BIND | STREAM_SERVER_LISTEN;
        $listener = @stream_socket_server($address, $code, $reason, $flags, $options);
        if ($listener === false) {
            throw new RuntimeException("cannot listen on $address: $reason");
        }
        $this->listener = $listener;
    }

    /** Obeys one command of the test, after everything that had arrived before it. */
    private function command(): void
    {
        $length = stream_get_contents(STDIN, 4);
        if (strlen($length) < 4) {
            exit(0);
        }
        [$name, $port, $steps, $known] = unserialize(stream_get_contents(STDIN, unpack('N', $length)[1]));
        $this->drain();
        try {
            match ($name) {
                'listen' => $this->listen($port),
                'refuse' => $this->refuse(),
                'stop' => $this->stop(),
                'add', 'report', 'calls' => null,
            };
            $this->add($steps);
            $answer = $name === 'calls' ? array_slice($this->calls, $known) : $this->report();
        } catch (RuntimeException $failure) {
            $answer = ['failure' => $failure->getMessage()];
        }
        $answer = serialize($answer);
        fwrite(STDOUT, pack('N', strlen($answer)) . $answer);
    }

    /** @param list<array{bool, array}> $steps whether it is the fallback, and its actions */
    private function add(array $steps): void
    {
        foreach ($steps as [$always, $actions]) {
            if ($always) {
                $this->fallback = $actions;
            } else {
                $this->steps->enqueue($actions);
            }
        }
    }

    /** Stops listening, closes every connection and forgets the steps that are left. */
    private function stop(): void
    {
        $this->refuse();
        $this->drain();
        array_map($this->close(...), $this->connections);
        $this->steps = new SplQueue();
        $this->fallback = null;
    }

    private function report(): array
    {
        return [
            'calls' => count($this->calls),
            'accepted' => $this->accepted,
            'open' => count($this->connections),
            'steps' => count($this->steps),
        ];
    }
}

/** Seconds of a clock that never jumps. */
function now(): float
{
    return hrtime(true) / 1e9;
}

/** The unsigned number in the four-byte unit at an offset; null beyond the end. */
function number(string $record, int $offset): ?int
{
    return strlen($record) < $offset + 4 ? null : unpack('N', $record, $offset)[1];
}

/** Why this record is no call that the agent serves; null when it is one. */
function fault(string $record): ?string
{
    $length = strlen($record);
    if ($length % 4 !== 0) {
        return "its $length bytes are no whole number of four-byte units";
    }
    $header = [
        'message type' => [4, 0],
        'RPC version' => [8, 2],
        'program' => [12, 99999],
        'program version' => [16, 1],
        'credentials flavor' => [24, 0],
        'credentials length' => [28, 0],
        'verifier flavor' => [32, 0],
        'verifier length' => [36, 0],
    ];
    foreach ($header as $field => [$offset, $right]) {
        $value = number($record, $offset);
        if ($value !== null && $value !== $right) {
            return "$field is $value, not $right";
        }
    }
    return $length < CALL_HEADER ? "it ends after $length bytes, inside the call header" : null;
}

/**
 * The actions that send one RPC message in answer to a call.
 *
 * @param int $xidMask        bits of the call's transaction id to turn over
 * @param list<int>|int $cuts bytes of each fragment; what is left makes the last one
 * @param float $pause        seconds between fragments
 * @param int|null $sent      send only so many bytes of the message, however much the mark announces
 */
function message(string $call, string $body, int $xidMask, array|int $cuts, float $pause, ?int $sent): array
{
    $message = pack('N', number($call, 0) ^ $xidMask) . $body;
    $fragments = fragments($message, $cuts);
    $actions = [];
    foreach ($fragments as $i => $fragment) {
        if ($i > 0 && $pause > 0) {
            $actions[] = ['pause', $pause];
        }
        $mark = strlen($fragment) | ($i === count($fragments) - 1 ? LAST_FRAGMENT : 0);
        $actions[] = ['bytes', pack('N', $mark) . substr($fragment, 0, $sent)];
    }
    return $actions;
}

/** @return non-empty-list<string> */
function fragments(string $message, array|int $cuts): array
{
    if (is_int($cuts)) {
        return str_split($message, $cuts);
    }
    $fragments = [];
    $offset = 0;
    foreach ($cuts as $size) {
        if ($offset + $size >= strlen($message)) {
            break;
        }
        $fragments[] = substr($message, $offset, $size);
        $offset += $size;
    }
    $fragments[] = substr($message, $offset);
    return $fragments;
}

(new Server())->run();
