# _orfc_ask PROGRAM ARGUMENT...: what a program prints, for at most some seconds and four megabytes. Nothing of it
# reaches the terminal or a debug log.
_orfc_ask() {
    ORFC_DEBUG_LEVEL=0 timeout -s KILL "${ORFC_COMPLETION_SECONDS:-1}" "$@" </dev/null 2>/dev/null | head -c 4000000
}
