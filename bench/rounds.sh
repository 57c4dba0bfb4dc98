# shellcheck shell=bash disable=SC2154  # which asks for an assignment to what the caller sets
# Two commands measured side by side in alternating rounds. Sourced, never run. The caller sets 'rounds' to their
# number and 'work' to a folder for the figures.

# Sets 'elapsed' to the microseconds that a command takes.
measure() {
    local start=${EPOCHREALTIME/./}
    "$@"
    elapsed=$((${EPOCHREALTIME/./} - start))
}

# Reads numbers, prints their median, least and greatest.
spread() {
    sort -g | awk '{ value[NR] = $1 }
        END { print (value[int((NR + 1) / 2)] + value[int(NR / 2) + 1]) / 2, value[1], value[NR] }'
}

# Prints the head of a table, for rows of compareInRounds.
compareHead() {
    printf '%-26s %10s  %16s %12s %12s\n' "$1" ratio spread program others
}

# compareInRounds LABEL OWN OTHERS [ARGUMENT...] prints one row: the command OWN against the command OTHERS, both with
# the arguments; below 1 OWN is faster. Both find the number of the round in 'round'. Every second round goes the
# other way about, so that neither always finds what the one before it left in the caches. Leaves the median
# milliseconds of OWN in 'ownMedian'.
compareInRounds() {
    local label=$1 command=$2 others=$3 round elapsed own other
    local ratios=$work/ratios owns=$work/owns otherTimes=$work/others
    shift 3
    rm -f "$ratios" "$owns" "$otherTimes"
    round=0
    "$command" "$@"
    "$others" "$@"
    for ((round = 0; round < rounds; ++round)); do
        if ((round % 2 == 0)); then
            measure "$command" "$@"
            own=$elapsed
            measure "$others" "$@"
            other=$elapsed
        else
            measure "$others" "$@"
            other=$elapsed
            measure "$command" "$@"
            own=$elapsed
        fi
        awk -v own="$own" -v other="$other" 'BEGIN { printf "%.4f\n", own / other }' >>"$ratios"
        awk -v time="$own" 'BEGIN { printf "%.2f\n", time / 1000 }' >>"$owns"
        awk -v time="$other" 'BEGIN { printf "%.2f\n", time / 1000 }' >>"$otherTimes"
    done
    local ratio least greatest othersMedian
    read -r ratio least greatest < <(spread <"$ratios")
    read -r ownMedian _ < <(spread <"$owns")
    read -r othersMedian _ < <(spread <"$otherTimes")
    printf '%-26s %10.3f  %6.3f to %6.3f %12.1f %12.1f\n' \
        "$label" "$ratio" "$least" "$greatest" "$ownMedian" "$othersMedian"
}
