--TEST--
Any order of connect, pconnect, copy, unset, close, use, agent kill and agent restart
--FILE--
<?php // SPDX-License-Identifier: MIT
require __DIR__ . '/../agent.inc';
require __DIR__ . '/../process.inc';

/*
 * Random sequences of steps beside a small model of who holds what: what each
 * call returns, the module's counts, this process's sockets and the agent's
 * connections are compared all the way. Each sequence ends with nothing open,
 * so that a failure needs only its own seed:
 *
 *     RMON_SEED=... RMON_SEQUENCES=1 script/test plain tests/core/link_orders.phpt
 */

const HOSTS = ['127.0.0.1', '127.1', '0x7f.1', '2130706433'];
const VARIABLES = 6;

/** What the module should hold. */
final class Model
{
    /** @var array<int, array{host: string, references: int, held: bool, lasting: bool}> links by id */
    public array $links = [];

    /** @var array<string, int> the agent's generation to which the connection of a link goes, by host */
    public array $normal = [];

    /** @var array<string, int> the same of persistent connections */
    public array $persistent = [];

    /** @var array<string, int> ids of the normal links */
    public array $by_host = [];

    /** The agent that runs now; 0 while there is none. */
    public int $agent = 1;
    public int $agents = 1;
    public ?int $default = null;

    public function is_alive(int $id): bool
    {
        ['host' => $host, 'lasting' => $lasting] = $this->links[$id];
        return ($lasting ? $this->persistent : $this->normal)[$host] === $this->agent;
    }

    public function end(int $id): void
    {
        if (!$this->links[$id]['lasting']) {
            unset($this->normal[$this->links[$id]['host']]);
        }
        unset($this->links[$id]);
    }

    /** Ends the links that are named by no variable and not held by the module. */
    public function sweep(array $variables): void
    {
        $named = array_flip(array_map(get_resource_id(...), $variables));
        foreach ($this->links as $id => $link) {
            if ($link['references'] === 0 || (!$link['held'] && !isset($named[$id]))) {
                $this->end($id);
            }
        }
    }

    /** The id of the link that a connect should find; null when it should make one. */
    public function found(string $host): ?int
    {
        return isset($this->normal[$host]) ? $this->by_host[$host] : null;
    }

    /** A pconnect looks whether its connection is alive; a dead one ends with all links over it. */
    public function drop_dead(string $host): bool
    {
        if (($this->persistent[$host] ?? $this->agent) === $this->agent) {
            return false;
        }
        foreach ($this->links as $id => $link) {
            if ($link['lasting'] && $link['host'] === $host) {
                $this->end($id);
            }
        }
        unset($this->persistent[$host]);
        return true;
    }

    public function connections(): int
    {
        return count($this->normal) + count($this->persistent);
    }

    /** Connections that the agent that runs now should see. */
    public function seen(): int
    {
        return count(array_keys(
            [...array_values($this->normal), ...array_values($this->persistent)],
            $this->agent,
            true,
        ));
    }
}

/** One sequence, with the script's variables. */
final class Sequence
{
    private readonly Model $model;
    private array $variables = [];
    private array $steps = [];
    private readonly int $other_descriptors;
    public bool $failed = false;

    public function __construct(private readonly ScriptedAgent $agent, private readonly int $seed)
    {
        mt_srand($seed);
        $this->model = new Model();
        $this->other_descriptors = count(scandir('/proc/self/fd'));
    }

    public function run(): void
    {
        for ($left = mt_rand(1, 16); $left > 0 && !$this->failed; $left--) {
            match (mt_rand(0, 15)) {
                0, 1, 2 => $this->connect(HOSTS[mt_rand(0, 3)]),
                3, 4, 5 => $this->pconnect(HOSTS[mt_rand(0, 3)]),
                6 => $this->copy(),
                7 => $this->unset(),
                8 => $this->close_default(),
                9, 10, 11 => $this->close(),
                12, 13 => $this->use(),
                14 => $this->kill(),
                15 => $this->restart(),
            };
            $this->compare();
        }
        $this->finish();
    }

    private function expect(mixed $expected, mixed $got, string $what): void
    {
        if ($expected !== $got && !$this->failed) {
            $this->failed = true;
            $steps = implode(', ', $this->steps);
            fail("seed $this->seed: $what: expected " . describe($expected) . ', got ' . describe($got) . " after $steps");
        }
    }

    /** Puts a link into a variable, or nothing. */
    private function keep(mixed $link): void
    {
        if (is_resource($link)) {
            $this->variables[mt_rand(1, VARIABLES)] = $link;
        }
    }

    private function any_variable(): ?int
    {
        return $this->variables ? array_rand($this->variables) : null;
    }

    private function made(mixed $link, string $host, bool $lasting): void
    {
        $this->expect('resource', gettype($link), 'a new link');
        if (is_resource($link)) {
            $id = get_resource_id($link);
            $this->expect(false, isset($this->model->links[$id]), "whether the id $id is in use");
            $this->model->links[$id] = ['host' => $host, 'references' => 2, 'held' => true, 'lasting' => $lasting];
            $this->model->default = $id;
            if ($lasting) {
                $this->model->persistent[$host] = $this->model->agent;
            } else {
                $this->model->normal[$host] = $this->model->agent;
                $this->model->by_host[$host] = $id;
            }
        }
    }

    private function connect(string $host): void
    {
        $this->steps[] = "connect $host";
        [$link, $reports] = warnings(fn() => rmon_connect($host));
        $id = $this->model->found($host);
        $fails = $id === null && $this->model->agent === 0;
        $this->expect($fails ? [[E_WARNING, 'RMON: RPC connection failed!']] : [], $reports, 'reports');
        if ($id !== null) {
            $this->model->links[$id]['references']++;
            $this->expect($id, is_resource($link) ? get_resource_id($link) : $link, 'the link in use');
        } elseif ($fails) {
            $this->expect(false, $link, 'a connect without an agent');
        } else {
            $this->made($link, $host, false);
        }
        $this->keep($link);
    }

    private function pconnect(string $host): void
    {
        $this->steps[] = "pconnect $host";
        [$link, $reports] = warnings(fn() => rmon_pconnect($host));
        $lost = $this->model->drop_dead($host);
        $this->expect($lost ? 1 : 0, count($reports), 'number of reports');
        $this->expect(
            $lost,
            str_starts_with($reports[0][1] ?? '', 'PHP/RMON link lost (: RPC: Unable to '),
            'the report',
        );
        if ($this->model->agent === 0) {
            $this->expect(false, $link, 'a pconnect without an agent');
        } else {
            $this->made($link, $host, true);
        }
        $this->keep($link);
    }

    private function copy(): void
    {
        $from = $this->any_variable();
        if ($from !== null) {
            $this->steps[] = "copy $from";
            $this->keep($this->variables[$from]);
        }
    }

    private function unset(): void
    {
        $which = $this->any_variable();
        $this->steps[] = "unset $which";
        unset($this->variables[$which]);
    }

    private function closed(?int $id, mixed $result, array $reports): void
    {
        $open = isset($this->model->links[$id]);
        $this->expect($open ? true : null, $result, "close of $id");
        $this->expect($open ? 0 : 1, count($reports), 'number of reports');
        if ($open) {
            $this->model->links[$id]['references']--;
            $this->model->links[$id]['held'] = false;
        }
    }

    private function close_default(): void
    {
        // Before a sequence's first link it is one of the sequence before.
        if ($this->model->default !== null) {
            $this->steps[] = "close {$this->model->default} as the default";
            $this->closed($this->model->default, ...warnings(fn() => rmon_close()));
        }
    }

    private function close(): void
    {
        $which = $this->any_variable();
        if ($which !== null) {
            $id = get_resource_id($this->variables[$which]);
            $this->steps[] = "close $id";
            $this->closed($id, ...warnings(fn() => rmon_close($this->variables[$which])));
        }
    }

    /** By a variable or, as any link that the module has, by its number. */
    private function use(): void
    {
        $which = $this->any_variable();
        if ($which === null || mt_rand(0, 1)) {
            $link = $id = $this->model->links ? array_rand($this->model->links) : 1 << 30;
        } else {
            $link = $this->variables[$which];
            $id = get_resource_id($link);
        }
        $this->steps[] = "use $id";
        $open = isset($this->model->links[$id]);
        [$answer, $reports] = warnings(fn() => rmon_etherstats_set($link, 1, 2, 'x', 1));
        $this->expect($open && $this->model->is_alive($id) ? 7 : false, $answer, "use of $id");
        $this->expect($answer === false ? 1 : 0, count($reports), 'number of reports');
        $this->expect(
            $open || $answer === 7,
            !str_ends_with($reports[0][1] ?? '', ' is not a RMON/RPC conn id!'),
            'the report',
        );
    }

    private function kill(): void
    {
        $this->steps[] = 'kill';
        $this->agent->stop();
        $this->model->agent = 0;
    }

    private function restart(): void
    {
        $this->steps[] = 'restart';
        $this->agent->restart(always(reply(i32(7))));
        $this->model->agent = ++$this->model->agents;
    }

    private function compare(): void
    {
        $model = $this->model;
        $model->sweep($this->variables);
        $this->expect([$model->connections(), count($model->persistent)], link_counts(), 'counts');
        $this->expect($model->connections(), count(scandir('/proc/self/fd')) - $this->other_descriptors, 'descriptors');
        if ($this->agent->open_connections() !== $model->seen()) {
            $this->agent->wait_open_connections($model->seen());
            $this->expect($model->seen(), $this->agent->open_connections(), 'connections at the agent');
        }
    }

    /** Closes all normal links as often as they are open, and loses the persistent ones. */
    private function finish(): void
    {
        while (!$this->failed && $this->model->normal) {
            $this->connect($host = array_key_first($this->model->normal));
            $id = $this->model->by_host[$host];
            for ($left = $this->model->links[$id]['references']; $left > 0; $left--) {
                $which = array_key_first(array_filter($this->variables, fn($link) => get_resource_id($link) === $id));
                $this->closed($id, ...warnings(fn() => rmon_close($this->variables[$which])));
            }
            $this->compare();
        }
        $this->kill();
        foreach (array_keys($this->model->persistent) as $host) {
            $this->pconnect($host);
            $this->compare();
        }
        $this->variables = [];
        $this->compare();
        $this->expect([0, 0], link_counts(), 'counts at the end');
    }
}

$first = (int) (getenv('RMON_SEED') ?: random_int(1, 1 << 30));
$sequences = (int) (getenv('RMON_SEQUENCES') ?: (getenv('SKIP_ASAN') ? 1500 : 10000));
$agent = scripted_agent();
for ($seed = $first; $seed < $first + $sequences; $seed++) {
    $agent->restart(always(reply(i32(7))));
    $sequence = new Sequence($agent, $seed);
    $sequence->run();
    if ($sequence->failed) {
        break;
    }
}
done();
?>
--EXPECT--
OK
