# What a transcript has at hand; its first line sources this file.
export VEXAPI_SIM_STATE=$PWD/state VEXAPI_SIM_JOURNAL=$PWD/journal

# host NAME: from here on the host that tests/data/NAME.json describes, as it was made.
host() {
    export VEXAPI_SIM_HOST=$TESTDIR/../data/$1.json
    rm -f state journal
}

# calls [--all]: the calls of the library since the last look. Without --all only those for a port.
calls() {
    "$TESTDIR/calls" "$@" <journal
    rm -f journal
}

# traces FILE: a debug log, its times and process ids in words. Lines of another form stay as they are.
traces() {
    sed -E 's/^[0-9]{1,2}\/[0-9]{1,2}\/[0-9]{4} [0-9]{2}:[0-9]{2}:[0-9]{2}\.[0-9]{3} (CIM Provider .{11}) [0-9]+: /TIME \1 PID: /' "$1"
}

# refuse_log N COMMAND...: a run whose N-th opening of the library's log, counted from 1, and all later
# ones fail.
refuse_log() {
    REFUSE_LOG_FROM=$1 LD_PRELOAD=$BUILD/tests/transcripts/librefuse_log.so "${@:2}"
}
