<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Exporter;

use Closure;
use Rmon\Exporter\Text\Exposition;
use Rmon\Exporter\Text\Family;
use Rmon\Exporter\Text\Labels;
use Rmon\Exporter\Text\MetricType;
use Rmon\Exporter\Text\TextFormat;
use Throwable;

/** The exporter: from a request to what a scraper gets. */
final class Exporter
{
    private const USUAL_MODULE = 'default';

    /** Seconds of Prometheus' own limit that an answer needs on its way. */
    private const WAY = 0.5;

    /** The least that a scrape is tried for, in seconds. */
    private const LEAST = 0.2;

    /** @param Closure(string): void $log */
    public function __construct(private readonly Configuration $configuration, private readonly Closure $log)
    {
    }

    /** Answers the request that PHP runs for. */
    public static function serve(): void
    {
        ini_set('display_errors', '0');
        ini_set('html_errors', '0');
        $log = static fn(string $text) => error_log('rmon exporter: ' . Labels::clean($text));
        $request = Request::now();
        try {
            $file = getenv('RMON_EXPORTER') ?: $request->server('RMON_EXPORTER');
            $networks = getenv('RMON_EXPORTER_NETWORKS') ?: '127.0.0.0/8';
            $ports = getenv('RMON_EXPORTER_PORTS') ?: Configuration::USUAL_PORTS;
            $exporter = new self(Configuration::read($file === '' ? null : $file, $networks, $ports), $log);
            $answer = $exporter->answer($request);
        } catch (ConfigurationError $error) {
            $log($error->getMessage());
            $answer = new Response("The exporter is not set up: its log says why.\n", 500);
        } catch (Throwable $failure) {
            $log("{$failure->getMessage()} ({$failure->getFile()}:{$failure->getLine()})");
            $answer = new Response("Something went wrong in the exporter: its log says what.\n", 500);
        }
        $answer->send($request->method !== 'HEAD');
    }

    /** @throws ConfigurationError */
    public function answer(Request $request): Response
    {
        try {
            if (!in_array($request->method, ['GET', 'HEAD'], true)) {
                throw new Refusal(405, 'The exporter is read, and nothing else.');
            }
            return match ($request->path) {
                '/metrics' => $this->metrics($request),
                '/' => $this->page(),
                default => throw new Refusal(404, 'There is no such page: /metrics?target=HOST[:PORT]&module=NAME'),
            };
        } catch (Refusal $refusal) {
            $headers = ['Content-Type' => 'text/plain; charset=utf-8'];
            $headers += $refusal->status === 405 ? ['Allow' => 'GET, HEAD'] : [];
            return new Response($refusal->getMessage() . "\n", $refusal->status, $headers);
        }
    }

    private function metrics(Request $request): Response
    {
        $target = $request->parameter('target');
        $name = $request->parameter('module') ?? self::USUAL_MODULE;
        if ($target === null) {
            return self::written($request, [$this->own()]);
        }
        $module = $this->configuration->modules->find($name)
            ?? throw new Refusal(404, 'There is no such module: / lists them.');
        $scrape = new Scrape(
            Target::of($target, $this->configuration),
            $module,
            $this->seconds($request),
            $this->configuration->patience,
            $this->configuration->keepLinks,
            $this->log,
        );
        return self::written($request, $scrape->families());
    }

    /** Prometheus says how long it waits; an answer behind that is lost. */
    private function seconds(Request $request): float
    {
        $waits = $request->server('HTTP_X_PROMETHEUS_SCRAPE_TIMEOUT_SECONDS');
        if (!is_numeric($waits) || $waits <= 0) {
            return $this->configuration->seconds;
        }
        return min($this->configuration->seconds, max(self::LEAST, (float) $waits - self::WAY));
    }

    /** What the exporter says of itself, when it is asked for no target. */
    private function own(): Family
    {
        $info = new Family('rmon_exporter', MetricType::Info, 'The exporter, and the module of PHP that it stands on.');
        $info->add(Labels::text(['version' => (string) phpversion('rmon'), 'php' => PHP_VERSION]), 1);
        return $info;
    }

    private function page(): Response
    {
        $text = "The exporter of rmon: /metrics?target=HOST[:PORT]&module=NAME\n\nModules:\n";
        foreach ($this->configuration->modules->titles() as $name => $title) {
            $text .= sprintf("  %-16s %s\n", $name, $title);
        }
        return new Response($text);
    }

    /** @param list<Family> $families */
    private static function written(Request $request, array $families): Response
    {
        $format = TextFormat::wanted($request->server('HTTP_ACCEPT'));
        return new Response(Exposition::text($format, $families), 200, [
            'Content-Type' => $format->contentType(),
            'Vary' => 'Accept',
        ]);
    }
}
