<?php

declare(strict_types=1);

namespace Rmon\Console;

/** Which probes take connections, asked of all at the same time. */
final class Reachable
{
    /**
     * Probes that take none, and why; the others are not in it.
     *
     * @param array<string, ConfiguredProbe> $probes by name
     * @param float $seconds                         how long to wait for all of them
     * @return array<string, string> by name
     */
    public static function refused(array $probes, float $seconds): array
    {
        $waiting = [];
        $refused = [];
        foreach ($probes as $name => $probe) {
            $address = gethostbyname($probe->host);
            $port = $probe->port ?? 9911;
            $flags = STREAM_CLIENT_CONNECT | STREAM_CLIENT_ASYNC_CONNECT;
            $socket = @stream_socket_client("tcp://$address:$port", $code, $reason, $seconds, $flags);
            if ($socket === false) {
                $refused[$name] = $reason === '' ? 'no connection' : $reason;
            } else {
                stream_set_blocking($socket, false);
                $waiting[$name] = $socket;
            }
        }
        $end = hrtime(true) / 1e9 + $seconds;
        while ($waiting !== [] && ($left = $end - hrtime(true) / 1e9) > 0) {
            $read = null;
            $except = null;
            $write = $waiting;
            if (@stream_select($read, $write, $except, 0, (int) ($left * 1e6)) < 1) {
                break;
            }
            foreach ($write as $name => $socket) {
                if (stream_socket_get_name($socket, true) === false) {
                    $refused[$name] = 'refuses connections';
                }
                fclose($socket);
                unset($waiting[$name]);
            }
        }
        foreach ($waiting as $name => $socket) {
            $refused[$name] = 'does not answer';
            fclose($socket);
        }
        return $refused;
    }
}
