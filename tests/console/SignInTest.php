<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Tests\Console;

/** Who is let in, and to what. */
final class SignInTest extends ConsoleTestCase
{
    private const PASSWORD = 'correct horse';

    private function users(): string
    {
        $hash = password_hash(self::PASSWORD, PASSWORD_BCRYPT, ['cost' => 4]);
        return "[user anna]\nrole = operator\npassword_hash = \"$hash\"\n"
            . "[user ruth]\nrole = read-only\npassword_hash = \"$hash\"\n";
    }

    private static function signIn(
        Served $console,
        string $name,
        string $password = self::PASSWORD,
        string $to = '/',
    ): Answer {
        $form = $console->get('/sign-in');
        $token = $form->attribute('//input[@name="token"]', 'value');
        return $console->post('/sign-in?to=' . rawurlencode($to), [
            'token' => (string) $token,
            'name' => $name,
            'password' => $password,
        ]);
    }

    public function testWithoutSignInNothingIsShown(): void
    {
        $agent = $this->bundled();
        $console = $this->console(['core1' => $agent], $this->users(), '');
        foreach (['/', '/probe/core1', '/probe/core1/table/ifTable?format=csv', '/probe/nothing'] as $path) {
            $answer = $console->get($path);
            self::assertSame(303, $answer->status, $path);
            self::assertSame('/sign-in?to=' . rawurlencode(explode('?', $path)[0]), $answer->headers['location']);
            self::assertSame('', $answer->body);
        }
        // Nor which probes there are.
        self::assertStringNotContainsString('core1', $console->get('/sign-in')->body);
        self::assertStringNotContainsString('core1', $console->get('/no/such/page/at/all')->body);
    }

    public function testSigningInAndOut(): void
    {
        $console = $this->console(['core1' => $this->bundled()], $this->users(), '');
        $console->get('/sign-in');
        $before = $console->cookies['rmon_session'];
        $answer = self::signIn($console, 'anna', self::PASSWORD, '/probe/core1');
        self::assertSame([303, '/probe/core1'], [$answer->status, $answer->headers['location']]);
        self::assertNotSame($before, $console->cookies['rmon_session'], 'another session than before');
        self::assertMatchesRegularExpression('/HttpOnly; SameSite=Lax/i', $answer->headers['set-cookie']);
        $page = $console->get('/probe/core1');
        self::assertSame(200, $page->status);
        $token = $page->attribute('//form[@action="/sign-out"]/input[@name="token"]', 'value');
        self::assertSame(303, $console->post('/sign-out', ['token' => (string) $token])->status);
        self::assertSame(303, $console->get('/probe/core1')->status);
        // What was a session is none any more.
        $console->cookies['rmon_session'] = $before;
        self::assertSame(303, $console->get('/probe/core1')->status);
    }

    public function testTheCookieGoesByHttpsAloneWhereTheConsoleDoes(): void
    {
        $console = $this->console(['core1' => 1], $this->users(), 'secure = on');
        self::assertStringContainsString('secure', strtolower($console->get('/sign-in')->headers['set-cookie']));
    }

    public function testAfterSigningInNobodyIsSentElsewhere(): void
    {
        foreach (['//evil.example/', 'https://evil.example/', '/\\evil.example', "/a\r\nX: y", 'javascript:1'] as $to) {
            $console = $this->console(['core1' => 1], $this->users(), '');
            self::assertSame('/', self::signIn($console, 'anna', self::PASSWORD, $to)->headers['location'], $to);
        }
    }

    public function testAWrongPasswordIsOneOfFew(): void
    {
        $console = $this->console(['core1' => 1], $this->users(), '');
        for ($try = 1; $try <= 5; $try++) {
            $answer = self::signIn($console, 'anna', 'wrong');
            self::assertSame(403, $answer->status);
            self::assertSame(['The name or the password is wrong.'], $answer->texts('//p[@class="wrong"]'));
        }
        self::assertSame(429, self::signIn($console, 'anna')->status, 'the right one comes too late');
        // Others are let in all the same; nobody hears whether a name is one.
        self::assertSame(303, self::signIn($console, 'ruth')->status);
        self::assertSame(
            ['The name or the password is wrong.'],
            self::signIn($console, 'nobody', 'wrong')->texts('//p[@class="wrong"]'),
        );
    }

    public function testAnAddressTriesTwentyNames(): void
    {
        $console = $this->console(['core1' => 1], $this->users(), '');
        for ($try = 1; $try <= 20; $try++) {
            self::assertSame(403, self::signIn($console, "name$try", 'wrong')->status);
        }
        self::assertSame(429, self::signIn($console, 'anna')->status);
    }

    public function testReadersChangeNothing(): void
    {
        $agent = $this->bundled();
        $console = $this->console(['core1' => $agent], $this->users(), '');
        self::signIn($console, 'ruth');
        $page = $console->get('/probe/core1/settings');
        $token = (string) $page->attribute('//form[@action="/sign-out"]/input[@name="token"]', 'value');
        self::assertSame([], $page->texts('//form[@class="inputs"]'));
        $form = ['token' => $token, 'do' => 'system', 'sysContact' => 'ruth', 'sysName' => 'n', 'sysLocation' => 'l'];
        self::assertSame(403, $console->post('/probe/core1/settings', $form + ['sure' => '1'])->status);
        self::assertSame('', $this->probe($agent)->system()['sysContact']);
    }

    public function testAChangeTakesATokenAndIsShownFirst(): void
    {
        $agent = $this->bundled();
        $console = $this->console(['core1' => $agent], $this->users(), '');
        self::signIn($console, 'anna');
        $page = $console->get('/probe/core1/settings');
        $token = (string) $page->attribute('//form[@class="inputs"]/input[@name="token"]', 'value');
        self::assertMatchesRegularExpression('/^[0-9a-f]{64}$/D', $token);
        $form = ['do' => 'system', 'sysContact' => 'anna', 'sysName' => 'n', 'sysLocation' => 'here', 'sure' => '1'];
        $other = ['token' => str_repeat('0', 64)];
        foreach (['none' => [], 'empty' => ['token' => ''], 'other' => $other] as $why => $bad) {
            self::assertSame(403, $console->post('/probe/core1/settings', $form + $bad)->status, $why);
        }
        self::assertSame('', $this->probe($agent)->system()['sysContact']);

        $asked = $console->post('/probe/core1/settings', ['token' => $token, 'sure' => '0'] + $form);
        self::assertSame(200, $asked->status);
        self::assertContains('anna', $asked->texts('//table//td'));
        self::assertSame('', $this->probe($agent)->system()['sysContact'], 'not before it was seen');

        $done = $console->post('/probe/core1/settings', ['token' => $token] + $form);
        self::assertSame(303, $done->status, $done->body);
        self::assertSame('anna', $this->probe($agent)->system()['sysContact']);
        self::assertCount(1, $console->get($done->headers['location'])->texts('//p[@class="message"]'));
        self::assertCount(0, $console->get($done->headers['location'])->texts('//p[@class="message"]'), 'once');
    }

    public function testAnotherBrowsersTokenIsNone(): void
    {
        $agent = $this->bundled();
        $console = $this->console(['core1' => $agent]);
        $token = (string) $console->get('/probe/core1/settings')->attribute('//input[@name="token"]', 'value');
        $console->cookies = [];
        $console->get('/probe/core1/settings');
        $form = ['token' => $token, 'do' => 'system', 'sysContact' => 'x', 'sysName' => '', 'sysLocation' => ''];
        self::assertSame(403, $console->post('/probe/core1/settings', $form + ['sure' => '1'])->status);
    }

    public function testWithoutSignInOnlyThisMachineIsAnswered(): void
    {
        $console = $this->console(['core1' => 1]);
        self::assertSame(200, $console->get('/')->status);
        // Something stands between, and the browser is elsewhere.
        self::assertSame(403, $console->get('/', ['X-Forwarded-For' => '192.0.2.1'])->status);
        self::assertSame(403, $console->get('/', ['Forwarded' => 'for=192.0.2.1'])->status);
    }

    public function testOnlyByItsOwnNames(): void
    {
        $console = $this->console(['core1' => 1], '', "sign_in = off\nnames = console.example.net");
        self::assertSame(200, $console->get('/', ['Host' => "localhost:$console->port"])->status);
        self::assertSame(200, $console->get('/', ['Host' => 'Console.Example.NET'])->status);
        foreach (['evil.example', "127.0.0.1.evil.example:$console->port", ''] as $host) {
            self::assertSame(403, $console->get('/', ['Host' => $host])->status, $host);
        }
    }

    public function testOtherMethods(): void
    {
        $console = $this->console(['core1' => 1]);
        $context = stream_context_create(['http' => ['method' => 'DELETE', 'ignore_errors' => true]]);
        file_get_contents("http://127.0.0.1:$console->port/", false, $context);
        self::assertStringContainsString(' 405 ', $http_response_header[0]);
    }

    public function testNoProbeButThoseOfTheConfiguration(): void
    {
        $console = $this->console(['core1' => 1]);
        foreach (['/probe/127.0.0.1', '/probe/core2', '/probe/core1%2f..', '/probe/', '/probe/core1/'] as $path) {
            self::assertSame(404, $console->get($path)->status, $path);
        }
    }
}
