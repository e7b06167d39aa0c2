<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

use Rmon\Exception\BadArgument;
use Rmon\Console\Block\Waiting;
use Rmon\Exception\ConnectionFailed;
use Rmon\Exception\RmonException;
use Rmon\Exception\UnknownName;
use Rmon\Presence;
use Rmon\Probe;
use Throwable;

/** The console: from a request to what a browser gets. */
final class Console
{
    public readonly State $state;
    private ?Templates $templates = null;

    public function __construct(public readonly Configuration $configuration)
    {
        $this->state = new State($configuration->state);
    }

    /**
     * Answers the request that PHP runs for.
     *
     * @param string $root the folder of the console
     */
    public static function serve(string $root): void
    {
        ini_set('display_errors', '0');
        ini_set('html_errors', '0');
        $request = Request::now();
        $asset = Assets::find($root, $request);
        if ($asset !== null) {
            $asset->send();
            return;
        }
        try {
            $file = getenv('RMON_CONSOLE') ?: $request->server('RMON_CONSOLE');
            if ($file === '') {
                throw new ConfigurationError('RMON_CONSOLE, the name of the configuration file, is not set.');
            }
            $console = new self(Configuration::read($file));
        } catch (ConfigurationError $error) {
            error_log("rmon console: {$error->getMessage()}");
            Response::text("The console is not set up: its log says why.\n", 500)->send();
            return;
        }
        $answer = $console->answer($request);
        $spent = 1e3 * (microtime(true) - (float) $request->server('REQUEST_TIME_FLOAT'));
        header(sprintf('Server-Timing: page;dur=%.1f, memory;desc="%d kB"', $spent, memory_get_peak_usage() / 1024));
        $answer->send();
        if (function_exists('fastcgi_finish_request')) {
            fastcgi_finish_request();
        }
        $console->leases()->sweep();
    }

    public function answer(Request $request): Response
    {
        $session = new Session($this->state->directory('sessions'), $request, $this->configuration->secure);
        $visit = new Visit($this, $request, $session);
        try {
            Guard::admit($this->configuration, $visit);
            [$class, $parameters] = Pages::find($request->path);
            $visit = $visit->on($class, $parameters);
            Guard::permit($this->configuration, $visit, $class);
            $page = new $class($visit);
            return $request->isPost() ? $page->post() : $page->get();
        } catch (Throwable $failure) {
            return $this->failed($visit, $failure);
        }
    }

    public function templates(): Templates
    {
        return $this->templates ??= new Templates($this->state->directory('templates'));
    }

    /**
     * A link to a probe that answers: one that doesn't is told of at once.
     *
     * @throws ConnectionFailed
     */
    public function connect(ConfiguredProbe $probe): Probe
    {
        $missing = Presence::missing([[$probe->host, $probe->port]], $this->configuration->patience);
        if ($missing !== []) {
            throw new ConnectionFailed("No agent can be reached: $missing[0].", $probe->host, $probe->port);
        }
        return $this->link($probe);
    }

    /** A link to a probe that is known to answer. It stays open for later requests of this process. */
    public function link(ConfiguredProbe $probe): Probe
    {
        return Probe::connect($probe->host, $probe->port, true, $this->configuration->patience);
    }

    public function sampler(): Sampler
    {
        return new Sampler($this->state->directory('readings'));
    }

    public function trend(): Trend
    {
        return new Trend($this->state->directory('readings'));
    }

    public function leases(): Leases
    {
        return new Leases($this->configuration, $this->state, $this->connect(...));
    }

    /** What somebody sees in the place of a page. */
    private function failed(Visit $visit, Throwable $failure): Response
    {
        if ($failure instanceof Waiting) {
            // Of a download: a page says so in the place of the block.
            return new Response("{$failure->getMessage()}\n", 503, [
                'Content-Type' => 'text/plain; charset=utf-8',
                'Retry-After' => '2',
            ]);
        }
        if ($failure instanceof Refusal && $failure->status === 401) {
            return Response::seeOther('/sign-in?to=' . rawurlencode($visit->address()));
        }
        $status = match (true) {
            $failure instanceof Refusal => $failure->status,
            $failure instanceof UnknownName => 404,
            $failure instanceof BadArgument => 400,
            $failure instanceof ConnectionFailed => 503,
            $failure instanceof RmonException => 502,
            default => 500,
        };
        $problem = Problem::of($failure);
        if ($status === 500) {
            error_log("rmon console: $failure");
        }
        if (isset($visit->request->query['format'])) {
            return Response::text("$problem->title $problem->text\n", $status);
        }
        try {
            return Layout::page($visit, $problem->title, 'problem.twig', ['problem' => $problem], $status);
        } catch (Throwable $again) {
            error_log("rmon console: $again");
            return Response::text("$problem->title\n", $status);
        }
    }
}
