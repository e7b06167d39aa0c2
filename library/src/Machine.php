<?php

// SPDX-License-Identifier: MIT

declare(strict_types=1);

namespace Rmon;

use Rmon\Exception\ExtensionMissing;

/** This machine, as the module sees it: where PHP runs, which on an appliance is where the agent runs too. */
final class Machine
{
    private const KINDS = [
        'NORV_TARGET_ORN_AP', 'NORV_TARGET_NORV2_AP', 'NORV_TARGET_NORV1_AP', 'NORV_TARGET_DESK', 'NORV_TARGET_TAMBO',
        'NORV_TARGET_VELDRIN',
    ];

    /** Whether the module is loaded; all else here needs it. */
    public static function hasModule(): bool
    {
        return function_exists('confirm_rmon_compiled');
    }

    /** The module's version. */
    public static function moduleVersion(): string
    {
        return phpversion('rmon') ?: throw new ExtensionMissing('The PHP module rmon is not loaded.');
    }

    /** What the module says of itself. */
    public static function greeting(): string
    {
        return (string) self::call('confirm_rmon_compiled', 'rmon');
    }

    /** The host's name; null when the system doesn't tell it. */
    public static function hostName(): ?string
    {
        $name = self::call('rmon_gethostname');
        return is_string($name) ? $name : null;
    }

    /** The appliance's host name: the same, as the module's settings functions read it. */
    public static function applianceName(): string
    {
        return (string) self::call('rmon_get_hostname');
    }

    /** The kind of appliance, the name of a constant; null when this machine is not an appliance. */
    public static function kind(): ?string
    {
        $id = self::call('norv_target_id');
        foreach (self::KINDS as $kind) {
            if (defined($kind) && constant($kind) === $id) {
                return $kind;
            }
        }
        return null;
    }

    /** What the product is, in words; null when it isn't known. */
    public static function product(): ?string
    {
        return self::call('norv_prod_descr') ?: null;
    }

    /** The product's number; null when it isn't known. */
    public static function productNumber(): ?string
    {
        return self::call('norv_prod_no') ?: null;
    }

    /** What a protocol is, in words, from the appliance's file of protocols; null when the file has no such name. */
    public static function describeProtocol(string $name): ?string
    {
        $text = self::call('rmon_getprotdesc', $name);
        return is_string($text) ? $text : null;
    }

    /** A function without a link. That the appliance's files aren't there, which it reports, is no failure here. */
    private static function call(string $function, mixed ...$arguments): mixed
    {
        if (!self::hasModule()) {
            throw new ExtensionMissing('The PHP module rmon is not loaded.');
        }
        set_error_handler(static fn(): bool => true);
        try {
            return $function(...$arguments);
        } finally {
            restore_error_handler();
        }
    }
}
