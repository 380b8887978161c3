/** A plan that cannot be walked. The message is one sentence for the person who drew it. */
final class PlanException extends RuntimeException {
    private static final long serialVersionUID = 1L;

    PlanException(String format, Object... arguments) {
        super(String.format(java.util.Locale.ROOT, format, arguments));
    }
}
