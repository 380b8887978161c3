package com.kelvar.pedflux;

import static org.junit.jupiter.api.Assertions.assertEquals;
import static org.junit.jupiter.api.Assertions.assertTrue;

import java.util.ArrayList;
import java.util.List;
import org.junit.jupiter.api.AfterEach;
import org.junit.jupiter.api.Test;

/** What every export promises, tried on every export with a library that stands in for the SDK. */
class ContractTest {
    private static final List<Export> EXPORTS = Export.all();

    private final List<String> failures = new ArrayList<>();
    private int tried;

    /** A rule that no export came under would prove nothing. */
    @AfterEach
    void nothingFailed() {
        assertTrue(tried > 0);
        assertEquals("", String.join("\n", failures.subList(0, Math.min(failures.size(), 40))),
                failures.size() + " of " + tried + " fail");
    }

    private void expect(Export export, Object expected, Object found) {
        if (!expected.equals(found)) failures.add(export.name() + ": expected " + expected + " but was " + found);
    }

    private static String[] recordOf(Export export) {
        for (String[] record : StandIn.records()) {
            if (record[0].equals(export.operation())) return record;
        }
        return null;
    }

    private static boolean sameText(String expected, String found) {
        if (expected.equals(found)) return true;
        try {
            return Double.parseDouble(expected) == Double.parseDouble(found);
        } catch (NumberFormatException notNumbers) {
            return expected.replace(".0", "").equals(found.replace(".0", ""));
        }
    }

    private interface Check {
        void of(Export export) throws ReflectiveOperationException;
    }

    private interface ArgumentCheck {
        void of(Export export, int argument, String type) throws ReflectiveOperationException;
    }

    private void forEach(Check check) throws ReflectiveOperationException {
        for (Export export : EXPORTS) check.of(export);
    }

    private void forEachArgument(ArgumentCheck check) throws ReflectiveOperationException {
        for (Export export : EXPORTS) {
            if (!export.reachesTheSdk()) continue;
            for (int i = 0; i < export.arguments().size(); ++i) {
                if (i > 0 || !export.hasObject()) check.of(export, i, export.arguments().get(i));
            }
        }
    }

    @Test
    void reachesTheOperationThatItNamesWithItsArgumentsInOrderAndReturnsItsResult() throws Throwable {
        forEach(export -> {
            if (!export.reachesTheSdk()) return;
            ++tried;
            try (Call call = new Call(export)) {
                Throwable thrown = call.run();
                if (thrown != null) {
                    expect(export, "nothing thrown", thrown);
                    return;
                }
                String[] record = recordOf(export);
                if (record == null) {
                    // The compiler's copy constructor; the copy itself shows that it ran.
                    if (!export.copies()) failures.add(export.name() + ": did not reach " + export.operation());
                    return;
                }
                if (export.hasObject()) expect(export, call.object, record[1]);
                for (int i = 0; i < call.expected.size(); ++i) {
                    if (!sameText(call.expected.get(i), record[2 + i])) expect(export, call.expected.get(i), record[2 + i]);
                }
                int arrow = 2 + call.expected.size();
                if (arrow < record.length) {
                    String result = call.describedResult();
                    if (!sameText(record[arrow + 1], result)) expect(export, record[arrow + 1], result);
                } else if (export.constructs()) {
                    expect(export, true, (long) call.result() != 0);
                }
            }
        });
    }

    @Test
    void aMissingValueIsRefusedWithItsMessageBeforeTheSdkIsReached() throws Throwable {
        forEachArgument((export, argument, type) -> {
            String declared = export.parameter(argument);
            boolean byReference = declared.endsWith("&");
            boolean shared = declared.contains("std::shared_ptr");
            if (!Export.isClass(type) || shared) return;
            ++tried;
            String message;
            if (!byReference) {
                message = "Attempt to dereference null pedflux::" + type;
                if (declared.startsWith("const ") || declared.endsWith(" const")) message += " const";
            } else if (!declared.contains(" const &")) {
                message = "pedflux::" + type + " & is null";
            } else {
                message = "pedflux::" + type + (StandIn.isValue(type) ? " const & is null" : " const & reference is null");
            }
            try (Call call = new Call(export, argument, Call.Given.ABSENT)) {
                Throwable thrown = call.run();
                expect(export, new NullPointerException(message).toString(), String.valueOf(thrown));
                expect(export, false, recordOf(export) != null);
            }
        });
    }

    @Test
    void aMissingSharedObjectReachesTheSdkAsAnEmptyPointer() throws Throwable {
        forEachArgument((export, argument, type) -> {
            if (!Export.isClass(type) || !export.parameter(argument).contains("std::shared_ptr")) return;
            ++tried;
            try (Call call = new Call(export, argument, Call.Given.ABSENT)) {
                expect(export, "null", String.valueOf(call.run()));
                String[] record = recordOf(export);
                expect(export, "0", record == null ? "not reached" : record[argument + (export.hasObject() ? 1 : 2)]);
            }
        });
    }

    @Test
    void aMissingElementIsReportedAndTheListReachesTheSdkWithADefaultInItsPlace() throws Throwable {
        forEachArgument((export, argument, type) -> {
            if (!type.endsWith("[]") || !Character.isUpperCase(type.charAt(0)) || type.equals("String[]")) return;
            ++tried;
            try (Call call = new Call(export, argument, Call.Given.WITH_NULL_IN_THE_MIDDLE)) {
                String element = type.substring(0, type.length() - 2);
                expect(export, new Exception("Null element in " + element + " list").toString(), String.valueOf(call.run()));
                String[] record = recordOf(export);
                int place = argument + (export.hasObject() ? 1 : 2);
                expect(export, call.expected.get(place - 2), record == null ? "not reached" : record[place]);
            }
        });
    }

    @Test
    void anEmptyListReachesTheSdk() throws Throwable {
        forEachArgument((export, argument, type) -> {
            if (!type.endsWith("[]") || !Character.isUpperCase(type.charAt(0)) || type.equals("String[]")) return;
            ++tried;
            try (Call call = new Call(export, argument, Call.Given.ABSENT)) {
                expect(export, "null", String.valueOf(call.run()));
                String[] record = recordOf(export);
                expect(export, "[]", record == null ? "not reached" : record[argument + (export.hasObject() ? 1 : 2)]);
            }
        });
    }

    @Test
    void whatTheSdkThrowsArrivesWithItsMessage() throws Throwable {
        forEach(export -> {
            if (!export.reachesTheSdk() || export.copies()) return;
            ++tried;
            try (Call call = new Call(export)) {
                StandIn.fail(export.operation(), "the " + export.name() + " failed");
                Throwable thrown = call.run();
                expect(export, new Exception("the " + export.name() + " failed").toString(), String.valueOf(thrown));
            }
        });
    }

    @Test
    void handlesShareTheirObjectsAndGiveThemBack() throws Throwable {
        forEach(export -> {
            boolean deletes = export.operation().equals("delete");
            if (export.className().equals("Exception") || !(deletes || export.operation().equals("upcast"))) return;
            ++tried;
            String type = export.arguments().get(0);
            try (Call call = new Call(export)) {
                long other = StandIn.copy(type, call.handle());
                String object = StandIn.describe(type, other);
                expect(export, "null", String.valueOf(call.run()));
                if (deletes) {
                    call.forgetArguments();
                    expect(export, 1L, StandIn.owners(type, other));
                } else {
                    expect(export, 3L, StandIn.owners(type, other));
                    expect(export, object, StandIn.describe(export.result(), (long) call.result()));
                }
                pedfluxJNI.class.getDeclaredMethod("delete_" + type, long.class).invoke(null, other);
                Object nothing = export.method().invoke(null, 0L);
                if (!deletes) expect(export, 0L, nothing);
            }
        });
    }

    /** Texts and lists of numbers that are passed in stay, as in every bridge of this kind; nothing else does. */
    @Test
    void everyCallGivesBackTheMemoryThatItTook() {
        List<Export> exports = EXPORTS.stream()
                .filter(export -> export.arguments().stream().noneMatch(type -> type.matches("byte\\[]|int\\[]|double\\[]|String\\[]")))
                .filter(export -> !export.className().equals("Exception"))
                .toList();
        tried = exports.size();
        Runnable all = () -> {
            for (Export export : exports) {
                try (Call call = new Call(export)) {
                    call.run();
                    if (export.operation().equals("delete")) call.forgetArguments();
                    StandIn.records();
                } catch (ReflectiveOperationException failure) {
                    throw new AssertionError(failure);
                }
            }
        };
        all.run();
        assertEquals(new Allocations(0, 0), Allocations.leftBy(all));
    }
}
