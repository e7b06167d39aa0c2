<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

/*
 * Writes a capture of telephone calls: see script/calls, which is how it is called.
 */

require __DIR__ . '/../demo/wire.php';
spl_autoload_register(function (string $class): void {
    require __DIR__ . "/$class.php";
});

const PROTOCOLS = ['sccp', 'mgcp', 'h323'];

/** What can be chosen, with what holds where nothing is. Ranges are FROM-TO, and each stream draws its own. */
const USUAL = [
    'protocol' => 'sccp,mgcp,h323',
    'calls' => '3',
    'phones' => '0',
    'start' => '1770000000',
    'talk' => '10',
    'apart' => '1',
    'codec' => 'PCMU',
    'loss' => '0',
    'jitter' => '0',
    'reordered' => '0',
    'duplicates' => '0',
    'round-trip' => '0',
    'reports' => '5',
    'told' => 'yes',
    'form' => 'slow,fast,tunnel',
    'ip' => '4',
    'seed' => '1',
    'known' => '',
];

function misused(string $why): never
{
    fwrite(STDERR, "script/calls: $why\n");
    exit(2);
}

/** @return array{array<string, string>, string} the options and the file */
function options(array $arguments): array
{
    $options = USUAL;
    $files = [];
    while ($arguments !== []) {
        $word = array_shift($arguments);
        if (!str_starts_with($word, '--')) {
            $files[] = $word;
            continue;
        }
        [$name, $value] = explode('=', substr($word, 2), 2) + [1 => null];
        if (!isset(USUAL[$name])) {
            misused("--$name is no option");
        }
        $options[$name] = $value ?? array_shift($arguments) ?? misused("--$name needs a value");
    }
    if (count($files) !== 1) {
        misused('one file is written');
    }
    return [$options, $files[0]];
}

function whole(array $options, string $name, int $least, int $most): int
{
    $range = ['options' => ['min_range' => $least, 'max_range' => $most]];
    $value = filter_var($options[$name], FILTER_VALIDATE_INT, $range);
    return is_int($value) ? $value : misused("--$name is a number from $least to $most");
}

/** A number or FROM-TO, one of which is drawn, in thousandths. */
function drawn(array $options, string $name, int $most): int
{
    if (!preg_match('/^(\d+(?:\.\d+)?)(?:-(\d+(?:\.\d+)?))?$/D', $options[$name], $parts)) {
        misused("--$name is a number or a range, as 0.5-3");
    }
    [$from, $to] = [(float) $parts[1], (float) ($parts[2] ?? $parts[1])];
    if ($from > $to || $to > $most) {
        misused("--$name is from 0 to $most");
    }
    return mt_rand((int) round(1000 * $from), (int) round(1000 * $to));
}

/** @return list<string> some of the words */
function chosen(array $options, string $name, array $words): array
{
    $chosen = explode(',', $options[$name]);
    return array_diff($chosen, $words) === [] ? $chosen : misused("--$name is of " . implode(', ', $words));
}

/** An address in the network of a protocol. */
function address(array $options, int $network, int $third, int $fourth): string
{
    return chosen($options, 'ip', ['4', '6']) === ['4'] ? "10.$network.$third.$fourth" : sprintf(
        'fd00::%x:%x',
        $network,
        $third << 8 | $fourth,
    );
}

/** @return array<string, Phone> by their addresses */
function phones(array $options, int $network, int $count): array
{
    $names = ['Reception', 'Workshop', 'Office', 'Kitchen', 'Library', 'Depot', 'Archive', 'Studio', 'Yard', 'Lobby'];
    $phones = [];
    for ($i = 0; $i < $count; $i++) {
        $address = address($options, $network, intdiv($i, 250), 1 + $i % 250);
        $name = $names[$i % 10] . ($i < 10 ? '' : ' ' . intdiv($i, 10));
        $number = 1000 * $network + 10_000 * intdiv($i, 1000) + $i % 1000;
        $phones[$address] = new Phone($address, (string) $number, $name);
    }
    return $phones;
}

function quality(array $options, int $packets): Quality
{
    return new Quality(
        lost: (int) round($packets * drawn($options, 'loss', 50) / 100_000),
        reordered: intdiv(drawn($options, 'reordered', 100_000), 1000),
        duplicates: intdiv(drawn($options, 'duplicates', 100_000), 1000),
        jitter: drawn($options, 'jitter', 1000),
    );
}

/**
 * The calls of one protocol.
 *
 * @param list<Phone> $phones
 * @return list<Call> in the order of their begins
 */
function planned(array $options, array $phones, int $start): array
{
    $codecs = array_map(Codec::from(...), chosen($options, 'codec', array_column(Codec::cases(), 'value')));
    $talk = whole($options, 'talk', 1, 86_400) * 1_000_000;
    $apart = drawn($options, 'apart', 86_400) * 1000;
    $calls = [];
    $free = [];
    for ($i = 0; $i < whole($options, 'calls', 1, 100_000); $i++) {
        $begin = $start + $i * $apart + mt_rand(0, 999);
        $sides = [$phones[2 * $i % count($phones)], $phones[(2 * $i + 1) % count($phones)]];
        foreach ($sides as $phone) {
            if (($free[$phone->address] ?? 0) > $begin) {
                misused('too few phones for calls that are so little apart');
            }
            $free[$phone->address] = $begin + Call::BEFORE + $talk + Call::AFTER;
        }
        $answer = $begin + Call::BEFORE;
        $codec = $codecs[$i % count($codecs)];
        $packets = intdiv($talk, 1000 * $codec->period()) - 1;
        $ports = [16_384 + 4 * $i % 16_000, 16_386 + 4 * $i % 16_000];
        $stream = fn(int $from, int $late) => new Stream(
            $sides[$from]->address,
            $ports[$from],
            $sides[1 - $from]->address,
            $ports[1 - $from],
            $codec,
            $answer + $late + mt_rand(0, 4_000),
            $packets,
            quality($options, $packets),
        );
        $calls[] = new Call(
            $i,
            ...$sides,
            ...[$begin, $answer, $answer + $talk, $stream(0, 0), $stream(1, 8_000)],
            ...[drawn($options, 'round-trip', 10_000)],
        );
    }
    return $calls;
}

/** Whether the codecs have numbers in a protocol, and the addresses room. */
function check_protocol(string $name, array $options): void
{
    if ($name === 'sccp' && $options['ip'] === '6') {
        misused('calls of sccp are made of IPv4');
    }
    foreach (explode(',', $options['codec']) as $codec) {
        $codec = Codec::tryFrom($codec);
        if ($name === 'sccp' && $codec?->sccp() === null || $name === 'h323' && $codec?->h245() === null) {
            misused("not all codecs are there in $name");
        }
    }
}

function protocol(string $name, Line $line, array $phones, array $options): Protocol
{
    $telling = chosen($options, 'told', ['yes', 'no']) === ['yes'];
    $network = array_search($name, PROTOCOLS, true) + 1;
    $server = address($options, $network, 255, 250);
    return match ($name) {
        'sccp' => new SccpProtocol($line, $server, $phones, $telling),
        'mgcp' => new MgcpProtocol($line, $server, $phones, $telling),
        'h323' => new H323Protocol($line, $server, $phones, chosen($options, 'form', H323Protocol::FORMS)),
    };
}

[$options, $file] = options(array_slice($argv, 1));
ini_set('memory_limit', '4G');
mt_srand(whole($options, 'seed', 0, PHP_INT_MAX));
$start = whole($options, 'start', 1, 0xffff_ffff) * 1_000_000;
$line = new CallCapture();
$known = [];
try {
    foreach (chosen($options, 'protocol', PROTOCOLS) as $name) {
        check_protocol($name, $options);
        $network = array_search($name, PROTOCOLS, true) + 1;
        $count = whole($options, 'phones', 0, 60_000) ?: 2 * whole($options, 'calls', 1, 30_000);
        $phones = phones($options, $network, $count);
        $protocol = protocol($name, $line, $phones, $options);
        $protocol->register($start);
        // A phone's registration takes some milliseconds, one after the other.
        $end = $begin = $start + 2_000_000 + 5_000 * count($phones);
        foreach (planned($options, array_values($phones), $begin) as $call) {
            $protocol->write($call);
            $call->writeMedia($line, whole($options, 'reports', 0, 3600) * 1_000_000);
            $known[] = $call->known($name);
            $end = max($end, $call->end());
        }
        $protocol->end($end + 1_000_000);
    }
    $line->write($file);
    if ($options['known'] !== '') {
        $text = json_encode(['frames' => $line->count(), 'calls' => $known], JSON_PRETTY_PRINT | JSON_THROW_ON_ERROR);
        if (file_put_contents($options['known'], "$text\n") === false) {
            throw new RuntimeException("$options[known] can't be written");
        }
    }
} catch (RuntimeException | DomainException $failure) {
    fwrite(STDERR, "script/calls: {$failure->getMessage()}\n");
    exit(1);
}
