# For the scripts that test commands; sourced by them with the program (and its emulator) as "$@".
set -uo pipefail

program=("$@")
failures=0
error_file=$(mktemp)
clean_up() { :; }   # a script may have its own
finish() {
    local status=$?   # not 0: the script broke off
    clean_up
    rm -f "$error_file"
    exit $((status != 0 ? status : failures > 0))
}
trap finish EXIT

complain() {
    echo "$*"
    failures=$((failures + 1))
}

# expect STATUS OUTPUT ERROR ARGUMENT...: runs the program and compares; ERROR is a part of its message, empty
# for none at all.
expect() {
    local status=$1 output=$2 error=$3
    shift 3
    local actual_output actual_error actual_status=0
    actual_output=$("${program[@]}" "$@" 2>"$error_file" | tr -d '\r'; exit "${PIPESTATUS[0]}") || actual_status=$?
    actual_error=$(sed '/^wine client error/d' "$error_file")   # of Wine itself, at the end of some processes
    if [ "$actual_status" != "$status" ] || [ "$actual_output" != "$output" ] ||
        [[ $actual_error != *"$error"* || ( -z $error && -n $actual_error ) ]]; then
        complain "$*: status $actual_status, output \"$actual_output\", message \"$actual_error\""
    fi
}
