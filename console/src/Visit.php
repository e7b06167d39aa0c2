<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

use Rmon\ControlRow;
use Rmon\ControlRows;
use Rmon\Exception\UnknownName;
use Rmon\NetInterface;
use Rmon\Probe;

/** One request on its way through the console: who asks, for which page, of which probe and interface. */
final class Visit
{
    private ?Probe $probe = null;

    /** @var array<string, ControlRow> the control rows that the page stands on */
    private array $used = [];

    /** @var array{int, float}|null the agent's clock and this machine's when it was asked */
    private ?array $clock = null;

    /**
     * @param class-string<Page>|null $page       null: none was found yet
     * @param array<string, string> $parameters   of the page's address
     */
    public function __construct(
        public readonly Console $console,
        public readonly Request $request,
        public readonly Session $session,
        public readonly ?string $page = null,
        public readonly array $parameters = [],
    ) {
    }

    /**
     * The same visit, once its page is known.
     *
     * @param class-string<Page> $page
     * @param array<string, string> $parameters
     */
    public function on(string $page, array $parameters): self
    {
        return new self($this->console, $this->request, $this->session, $page, $parameters);
    }

    /** Who signed in; null for nobody. */
    public function user(): ?User
    {
        $name = $this->session->user();
        return $name === null ? null : $this->console->configuration->users[$name] ?? null;
    }

    public function mayChange(): bool
    {
        return $this->console->configuration->signIn ? $this->user()?->role->mayChange() ?? false : true;
    }

    /**
     * A parameter of the query.
     *
     * @param list<string> $of the values that it may have; others count as the default
     */
    public function query(string $name, string $default = '', array $of = []): string
    {
        $value = $this->request->query[$name] ?? $default;
        return $of === [] || in_array($value, $of, true) ? $value : $default;
    }

    /** The probe of the page's address; null where the page has none. */
    public function configured(): ?ConfiguredProbe
    {
        $name = $this->parameters['probe'] ?? null;
        return $name === null ? null : $this->console->configuration->probes[$name]
            ?? throw Refusal::notFound("No probe named \"$name\" is configured.");
    }

    /** A link to the probe of the page's address. */
    public function probe(): Probe
    {
        return $this->probe ??= $this->console->connect(
            $this->configured() ?? throw Refusal::notFound('The page is about no probe.'),
        );
    }

    /**
     * The interface of the page's address: its name, or its number where the name can't stand in an address.
     *
     * @throws UnknownName
     */
    public function interface(): NetInterface
    {
        $given = $this->parameters['interface'] ?? throw Refusal::notFound('The page is about no interface.');
        $names = $this->probe()->interfaces()->names();
        $index = array_search($given, $names, true);
        if ($index === false && ctype_digit($given) && isset($names[(int) $given])) {
            $index = (int) $given;
        }
        return $index === false
            ? throw UnknownName::among('interface', $given, $names)
            : $this->probe()->interface($index);
    }

    /** What an interface is called in addresses. */
    public function interfaceSegment(int $index): string
    {
        $names = $this->probe()->interfaces()->names();
        $name = $names[$index] ?? '';
        $plain = preg_match('/^[A-Za-z_][\w.@-]*$/D', $name) && !in_array($name, Pages::reserved(), true);
        return $plain && array_search($name, $names, true) === $index ? $name : (string) $index;
    }

    /**
     * The address of a page.
     *
     * @param class-string<Page> $page
     * @param array<string, string|int> $parameters of its address; those of this page serve where none are given
     * @param array<string, string|int|null> $query
     */
    public function to(string $page, array $parameters = [], array $query = []): string
    {
        $all = array_map(strval(...), $parameters) + $this->parameters;
        $path = preg_replace_callback(
            '/\{(\w+)\}/',
            static fn(array $match) => rawurlencode($all[$match[1]] ?? ''),
            $page::PATH,
        );
        return $path . self::queryText($query);
    }

    /**
     * The address of this page with some of its query changed; null takes a parameter away.
     *
     * @param array<string, string|int|null> $query
     */
    public function address(array $query = []): string
    {
        $kept = array_diff_key($this->request->query, ['part' => 0, 'format' => 0]);
        return $this->request->path . self::queryText($query + $kept);
    }

    /** The control rows that the console makes on this probe: all its users share them. */
    public function rows(): ControlRows
    {
        return $this->console->leases()->rows($this->probe());
    }

    /**
     * A control row that this page needs, for as long as somebody looks at it.
     *
     * @param callable(ControlRows): ControlRow $make
     */
    public function needs(callable $make): ControlRow
    {
        $row = $this->console->leases()->take($this->configured(), $this->probe(), $make);
        return $this->used["$row->table $row->index"] = $row;
    }

    /** @return list<ControlRow> the control rows that the page stands on, as far as it was made */
    public function used(): array
    {
        return array_values($this->used);
    }

    /** The time of day, in seconds, at which the agent's clock shows this. */
    public function timeOf(int|float $ticks): float
    {
        $this->clock ??= [$this->probe()->uptime(), microtime(true)];
        return $this->clock[1] - ($this->clock[0] - $ticks) / 100;
    }

    /** @param array<string, string|int|null> $query */
    private static function queryText(array $query): string
    {
        $query = array_filter($query, static fn(string|int|null $value) => $value !== null && $value !== '');
        return $query === [] ? '' : '?' . http_build_query($query, '', '&', PHP_QUERY_RFC3986);
    }
}
