<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Command\Commands;

use Rmon\Command\ExitCode;
use Rmon\Command\Live;
use Rmon\Command\Options;
use Rmon\Command\ProbeCommand;
use Rmon\Command\UsageError;
use Rmon\Exporter\Configuration;
use Rmon\Exporter\ConfigurationError;
use RuntimeException;
use Symfony\Component\Console\Input\InputInterface;
use Symfony\Component\Console\Input\InputOption;

/** rmon serve-metrics: the exporter by PHP's own server, for trying out. */
final class ServeMetricsCommand extends ProbeCommand
{
    private const EXPORTER = __DIR__ . '/../../../exporter';

    private const LISTEN = '127.0.0.1:9912';

    private const NETWORKS = '127.0.0.0/8';
    private const PORTS = '9911';

    /** Seconds within which PHP's server listens, or won't. */
    private const PATIENCE = 10;

    /** Microseconds between two looks at it. */
    private const REST = 50_000;

    protected function configure(): void
    {
        $this->setName('serve-metrics')
            ->setDescription('Metrics of agents for Prometheus, for trying out: php-fpm serves them for good')
            ->addOption('listen', null, InputOption::VALUE_REQUIRED, 'Where to listen, ADDRESS:PORT', self::LISTEN)
            ->addOption('config', null, InputOption::VALUE_REQUIRED, 'Its configuration file')
            ->addOption('networks', null, InputOption::VALUE_REQUIRED, 'Where agents may be', self::NETWORKS)
            ->addOption('ports', null, InputOption::VALUE_REQUIRED, 'Which ports they may have', self::PORTS)
            ->addOption('workers', null, InputOption::VALUE_REQUIRED, 'How many are asked at the same time', '8');
    }

    protected function perform(InputInterface $input): int
    {
        if (!is_file(self::EXPORTER . '/autoload.php')) {
            throw new RuntimeException('The exporter is not installed: it comes in the package rmon-exporter.');
        }
        $listen = (string) $input->getOption('listen');
        if (!preg_match('/^(\d{1,3}(?:\.\d{1,3}){3}|\[[0-9a-f:]+\]):\d{1,5}$/Di', $listen)) {
            throw new UsageError("--listen is an address and a port such as 127.0.0.1:9912, not \"$listen\".");
        }
        $environment = $this->environment($input);
        $environment['PHP_CLI_SERVER_WORKERS'] = (string) Options::whole($input, 'workers', 1, 256);
        $free = @stream_socket_server("tcp://$listen", $code, $reason);
        if ($free === false) {
            throw new RuntimeException("Nothing can listen on $listen: $reason.");
        }
        fclose($free);
        return Live::run($this->screen(), fn(Live $live) => $this->serve($live, $listen, $environment), false);
    }

    /** @return array<string, string> what the exporter finds its configuration by */
    private function environment(InputInterface $input): array
    {
        require_once self::EXPORTER . '/autoload.php';
        $file = $input->getOption('config');
        $networks = (string) $input->getOption('networks');
        $ports = (string) $input->getOption('ports');
        if ($file !== null && [$networks, $ports] !== [self::NETWORKS, self::PORTS]) {
            throw new UsageError(
                'With --config, the file says which networks and ports: --networks and --ports can\'t.',
            );
        }
        $file = $file === null ? null : (realpath($file) ?: $file);
        try {
            Configuration::read($file, $networks, $ports)->modules->check();
        } catch (ConfigurationError $error) {
            throw new UsageError($error->getMessage());
        }
        return [
            'RMON_EXPORTER' => $file ?? '',
            'RMON_EXPORTER_NETWORKS' => $networks,
            'RMON_EXPORTER_PORTS' => $ports,
        ];
    }

    /** @param array<string, string> $environment */
    private function serve(Live $live, string $listen, array $environment): int
    {
        $pid = pcntl_fork();
        if ($pid === 0) {
            // A group of its own: PHP's server ends without its workers.
            posix_setsid();
            foreach ([SIGINT, SIGTERM, SIGHUP] as $signal) {
                pcntl_signal($signal, SIG_DFL);
            }
            $arguments = [...self::settings(), '-S', $listen, self::EXPORTER . '/public/index.php'];
            pcntl_exec(PHP_BINARY, $arguments, $environment + getenv());
            exit(ExitCode::FAILED);
        }
        try {
            $this->awaitServer($live, $listen, $pid);
            $this->screen()->line("http://$listen/metrics?target=127.0.0.1:9911&module=default");
            $this->screen()->line("http://$listen/ lists the modules. Ctrl-C ends it.");
            $this->screen()->flush();
            while (pcntl_waitpid($pid, $status, WNOHANG) === 0) {
                $live->check();
                usleep(self::REST);
            }
            throw new RuntimeException('PHP\'s server has ended.');
        } finally {
            posix_kill(-$pid, SIGKILL);
            pcntl_waitpid($pid, $status);
        }
    }

    private function awaitServer(Live $live, string $listen, int $pid): void
    {
        $end = hrtime(true) / 1e9 + self::PATIENCE;
        while (($socket = @stream_socket_client("tcp://$listen", $code, $text, 1.0)) === false) {
            $live->check();
            if (pcntl_waitpid($pid, $status, WNOHANG) !== 0 || hrtime(true) / 1e9 > $end) {
                throw new RuntimeException("PHP's server doesn't listen on $listen.");
            }
            usleep(self::REST);
        }
        fclose($socket);
    }

    /** @return list<string> the settings that this PHP was started with, the module among them */
    private static function settings(): array
    {
        $settings = [];
        $words = explode("\0", (string) file_get_contents('/proc/self/cmdline'));
        for ($at = 1; ($words[$at] ?? '') === '-d' && isset($words[$at + 1]); $at += 2) {
            array_push($settings, '-d', $words[$at + 1]);
        }
        return $settings;
    }
}
