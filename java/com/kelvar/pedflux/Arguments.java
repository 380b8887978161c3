package com.kelvar.pedflux;

import java.nio.charset.StandardCharsets;

/** Checks and conversions of arguments and results at the surface of the proxies. */
final class Arguments {
    private static final long LARGEST_NATURAL = 0xFFFF_FFFFL;
    private static final int LARGEST_BYTE = 0xFF;

    private Arguments() {}

    static <T> T notNull(T argument, String name) {
        if (argument == null) throw new NullPointerException(name + " is null");
        return argument;
    }

    static byte[] utf8(String text, String name) {
        notNull(text, name);
        for (int index = 0; index < text.length(); ++index) {
            if (Character.isSurrogate(text.charAt(index))) index = endOfPair(text, index, name);
        }
        return text.getBytes(StandardCharsets.UTF_8);
    }

    static String text(byte[] utf8) {
        return new String(utf8, StandardCharsets.UTF_8);
    }

    static String[] texts(String[] texts, String name) {
        notNull(texts, name);
        for (int index = 0; index < texts.length; ++index) notNull(texts[index], name + "[" + index + "]");
        return texts;
    }

    static long natural(long number, String name) {
        if (number < 0 || number > LARGEST_NATURAL) {
            throw new IllegalArgumentException(name + " is " + number + "; it must be from 0 to " + LARGEST_NATURAL);
        }
        return number;
    }

    static char singleByte(char character, String name) {
        if (character > LARGEST_BYTE) {
            throw new IllegalArgumentException(
                    name + " is '" + character + "'; it must be one of the characters U+0000 to U+00FF");
        }
        return character;
    }

    /** The index of the second half. Half a pair has no UTF-8 form and would be lost. */
    private static int endOfPair(String text, int index, String name) {
        boolean pair = Character.isHighSurrogate(text.charAt(index)) && index + 1 < text.length()
                && Character.isLowSurrogate(text.charAt(index + 1));
        if (!pair) throw new IllegalArgumentException(name + " has half a surrogate pair at index " + index);
        return index + 1;
    }
}
