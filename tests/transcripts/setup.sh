# Helpers for transcripts; the first line of a transcript sources this file.
export VEXAPI_SIM_STATE=$PWD/state VEXAPI_SIM_JOURNAL=$PWD/journal

# host NAME: selects the host described by tests/data/NAME.json, in its initial state.
host() {
    export VEXAPI_SIM_HOST=$TESTDIR/../data/$1.json
    rm -f state journal
}

# calls [--all]: the library calls since the last use. Without --all, only those for a port.
calls() {
    "$TESTDIR/calls" "$@" <journal
    rm -f journal
}

# Log files of the programs in these tests.
log_files=(/var/tmp/{orfc-esxcli,tool,vexapi-output,viplugin}.log)

# logs: lists those that exist. forget_logs: removes them.
logs() {
    ls "${log_files[@]}" 2>/dev/null || true
}
forget_logs() {
    rm -f "${log_files[@]}"
}

# traces FILE: a debug log with times and process ids replaced by words. Other lines are unchanged.
traces() {
    sed -E 's/^[0-9]{1,2}\/[0-9]{1,2}\/[0-9]{4} [0-9]{2}:[0-9]{2}:[0-9]{2}\.[0-9]{3} (CIM Provider .{11}) [0-9]+: /TIME \1 PID: /' "$1"
}

# messages FILE: the texts of a debug log alone; removes the file.
messages() {
    traces "$1" | sed 's/^TIME CIM Provider .\{11\} PID: //'
    rm -f "$1"
}

# code WORDS...: the result code of a run, which only the debug log shows.
code() {
    ORFC_DEBUG_LEVEL=1 orfc-esxcli "$@" >/dev/null
    messages /var/tmp/viplugin.log | sed -n 's/^main: Program Exit Code: (\(.*\))$/\1/p'
}

# read_only COMMAND...: a run that can't create anything in /var/tmp. If no file system can be mounted read-only,
# only the library's log can't be created: a folder has its name.
read_only() {
    if bwrap --dev-bind / / --ro-bind /var/tmp /var/tmp true 2>/dev/null; then
        bwrap --dev-bind / / --ro-bind /var/tmp /var/tmp "$@"
    else
        mkdir /var/tmp/vexapi-output.log
        "$@"
        rmdir /var/tmp/vexapi-output.log
    fi
}

# full COMMAND...: a run in which no file has room for a single byte.
full() {
    (
        trap '' XFSZ
        ulimit -f 0
        "$@"
    )
}

# refuse_log N COMMAND...: a run in which the N-th opening of the library's log, counted from 1, and all later ones
# fail.
refuse_log() {
    REFUSE_LOG_FROM=$1 LD_PRELOAD=$BUILD/tests/transcripts/librefuse_log.so "${@:2}"
}

# linux [TREE]: selects a Linux host: the sysfs tree of tests/data/sysfs/TREE.tree, newly created as ./tree, or the
# existing ./tree.
linux() {
    export LD_LIBRARY_PATH=$BUILD/linux VEXAPI_SYSFS_ROOT=$PWD/tree
    [[ $# == 0 ]] || { rm -rf tree && "$TESTDIR/../hosts/tree" unpack "$TESTDIR/../data/sysfs/$1.tree" tree; }
    sys=tree/sys
    rm -f /var/tmp/vexapi-output.log
}

# told: output of the Linux library since the last use.
told() {
    sed -n 's/^vexapi linux: //p' /var/tmp/vexapi-output.log
    rm -f /var/tmp/vexapi-output.log
}
