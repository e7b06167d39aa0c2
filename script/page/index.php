<?php

declare(strict_types=1);

/*
 * One page about the agent on this machine: the system group, the interfaces, Ethernet statistics.
 * Served by script/server; every address leads here.
 */

require __DIR__ . '/tables.php';

function escape(string $text): string
{
    return htmlspecialchars($text, ENT_QUOTES | ENT_SUBSTITUTE, 'UTF-8');
}

/** @param array<string, callable(array): string> $columns */
function html_table(array $rows, array $columns): string
{
    if ($rows === []) {
        return '<p class="none">The agent has no rows here.</p>';
    }
    $titles = array_map(strval(...), array_keys($columns));
    $lines = cells($rows, $columns);
    $class = array_map(fn (string $text) => is_count($text) ? ' class="number"' : '', $lines[0]);
    $html = '<div class="wide"><table><thead><tr>';
    foreach ($titles as $column => $title) {
        $html .= "<th$class[$column]>" . escape($title) . '</th>';
    }
    $html .= "</tr></thead><tbody>\n";
    foreach ($lines as $line) {
        $html .= '<tr>';
        foreach ($line as $column => $text) {
            $html .= "<td$class[$column]>" . escape($text) . '</td>';
        }
        $html .= "</tr>\n";
    }
    return $html . '</tbody></table></div>';
}

$host = '127.0.0.1';
$problems = [];
set_error_handler(function (int $level, string $message) use (&$problems): bool {
    $problems[] = $message;
    return true;
});

$system = $interfaces = $statistics = [];
if ($link = rmon_connect($host)) {
    $system = rmon_system_get($link) ?: [];
    $interfaces = interfaces($link);
    $statistics = ethernet_statistics($link);
}
restore_error_handler();

$facts = $system === [] ? [] : [
    'Name' => $system['sysName'],
    'Description' => $system['sysDescr'],
    'Up for' => duration($system['sysUpTime']),
    'Location' => $system['sysLocation'],
    'Contact' => $system['sysContact'],
    'Object' => $system['sysObjectID'],
];
if ($problems !== []) {
    http_response_code(503);
}
header('Content-Type: text/html; charset=utf-8');
header('Cache-Control: no-store');
?>
<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta http-equiv="refresh" content="5">
<title><?= escape($system['sysName'] ?? $host) ?> - rmon</title>
<style>
  :root { color-scheme: light dark; --line: #8884; --faint: #888; --accent: #2a7ab8; }
  body { font: 15px/1.45 system-ui, sans-serif; margin: 2rem auto; max-width: 78rem; padding: 0 1rem; }
  h1 { font-size: 1.4rem; margin: 0 0 1rem; }
  h2 { font-size: 1.05rem; margin: 2rem 0 .5rem; color: var(--accent); }
  dl { display: grid; grid-template-columns: max-content 1fr; gap: .15rem 1.25rem; margin: 0; }
  dt, .none, footer { color: var(--faint); }
  dd { margin: 0; }
  .wide { overflow-x: auto; }
  table { border-collapse: collapse; font-variant-numeric: tabular-nums; }
  th, td { padding: .3rem .7rem; border-bottom: 1px solid var(--line); text-align: left; white-space: nowrap; }
  th.number, td.number { text-align: right; }
  th { font-weight: 600; font-size: .85rem; }
  .problem { border-left: 4px solid #c33; background: #c332; padding: .6rem 1rem; margin: 0 0 1rem; }
  footer { margin-top: 2rem; font-size: .85rem; }
</style>
</head>
<body>
<h1><?= escape($system['sysName'] ?? $host) ?></h1>
<?php foreach ($problems as $problem): ?>
<p class="problem"><?= escape($problem) ?></p>
<?php endforeach ?>
<?php if ($system !== []): ?>
<dl>
<?php foreach ($facts as $title => $text): ?>
  <dt><?= escape($title) ?></dt><dd><?= $text === '' ? '-' : escape($text) ?></dd>
<?php endforeach ?>
</dl>
<h2>Interfaces</h2>
<?= html_table($interfaces, interface_columns()), "\n" ?>
<h2>Ethernet statistics</h2>
<?= html_table($statistics, ethernet_columns(array_column($interfaces, 'ifDescr', 'ifIndex'))), "\n" ?>
<?php endif ?>
<footer>rmon <?= escape((string) phpversion('rmon')) ?>, agent at <?= escape("$host:" . ini_get('rmon.default_port')) ?>,
  <?= escape(date('H:i:s')) ?></footer>
</body>
</html>
