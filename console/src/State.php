<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon\Console;

/** Small files of the console's own, in one directory that nobody else reads. */
final class State
{
    /** @throws ConfigurationError */
    public function __construct(private readonly string $directory)
    {
        if (!is_dir($directory) && !@mkdir($directory, 0700, true) && !is_dir($directory)) {
            throw new ConfigurationError("The directory $directory can't be made.");
        }
        if (!is_writable($directory)) {
            throw new ConfigurationError("The directory $directory can't be written to.");
        }
    }

    /** A directory below, made when it isn't there. */
    public function directory(string $name): string
    {
        $path = "$this->directory/$name";
        if (!is_dir($path) && !@mkdir($path, 0700, true) && !is_dir($path)) {
            throw new ConfigurationError("The directory $path can't be made.");
        }
        return $path;
    }

    /** Writes a file of a directory below anew: who reads it meanwhile sees the one before. */
    public static function replace(string $file, string $bytes): void
    {
        $new = "$file." . bin2hex(random_bytes(4));
        if (file_put_contents($new, $bytes) !== strlen($bytes) || !rename($new, $file)) {
            @unlink($new);
            throw new ConfigurationError("$file can't be written.");
        }
    }

    /**
     * What a file holds; nothing when there is none.
     *
     * @return array<int|string, mixed>
     */
    public function read(string $name): array
    {
        $text = @file_get_contents("$this->directory/$name.json");
        $value = $text === false ? null : json_decode($text, true);
        return is_array($value) ? $value : [];
    }

    /**
     * Changes what a file holds, while no other request does.
     *
     * @template T
     * @param callable(array<int|string, mixed>): array{array<int|string, mixed>, T} $change gives what the file is to
     *                                                                             hold and what to hand back
     * @return T
     */
    public function change(string $name, callable $change): mixed
    {
        $lock = fopen("$this->directory/$name.lock", 'c');
        flock($lock, LOCK_EX);
        try {
            [$value, $result] = $change($this->read($name));
            $text = json_encode($value, JSON_THROW_ON_ERROR | JSON_INVALID_UTF8_SUBSTITUTE);
            self::replace("$this->directory/$name.json", $text);
            return $result;
        } finally {
            fclose($lock);
        }
    }
}
