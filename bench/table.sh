# shellcheck shell=bash disable=SC2154  # which asks for an assignment to what bench/run sets
# What the sections of the benchmark share: measuring commands in alternating rounds, and printing the rows of the
# table. Sourced, never run. bench/run sets 'rounds' to the number of rounds and 'work' to a folder for the figures.

# A command that fails inside $(…) ends the section, too.
shopt -s inherit_errexit

# Sets 'elapsed' to the microseconds that a command takes, or to what it prints if 'printsItsTime' is set.
measure() {
    local start=${EPOCHREALTIME/./}
    if [[ -n ${printsItsTime:-} ]]; then
        elapsed=$("$@") || fail "Failed: $*"
    else
        "$@" || fail "Failed: $*"
        elapsed=$((${EPOCHREALTIME/./} - start))
    fi
}

# Reads numbers, prints their median, least and greatest. Fails without any.
spread() {
    sort -g | awk '{ value[NR] = $1 }
        END {
            if (NR == 0) exit 1
            print (value[int((NR + 1) / 2)] + value[int(NR / 2) + 1]) / 2, value[1], value[NR]
        }'
}

# A row's columns. The last one is the highest ratio that we want.
readonly rowFormat='%-46s %8s %17s %13s %13s %5s\n'

# Prints the heading of a group of rows: its subject, and the unit of the two figures.
groupHead() {
    # shellcheck disable=SC2059  # the format is ours
    printf "\n$rowFormat" "$1" ratio spread "Tolvane $2" "other $2" goal
}

# row LABEL RATIO SPREAD OWN OTHER [GOAL]
row() {
    # shellcheck disable=SC2059
    printf "$rowFormat" "  $1" "$2" "$3" "$4" "$5" "${6:-}"
}

# rowOfFigures LABEL OWN OTHER [GOAL] prints a row of two figures that were found at once.
rowOfFigures() {
    local ratio
    ratio=$(awk -v own="$2" -v other="$3" 'BEGIN { if (own <= 0 || other <= 0) exit 1; printf "%.2f", own / other }') \
        || fail "Could not be measured: $1"
    row "$1" "$ratio" "" "$2" "$3" "${4:-}"
}

# compareInRounds LABEL GOAL OWN OTHERS [ARGUMENT...] prints a row that compares the commands OWN and OTHERS, both
# called with the arguments; below 1 OWN is faster. Both find the number of the round in 'round'; before the first round
# both run once with the number of rounds in it. Every second round runs them in reverse order, so that neither always
# benefits from the other's caches. GOAL may be empty. The commands do their work 'repetitions' times, by default once.
compareInRounds() {
    local label=$1 goal=$2 command=$3 others=$4 round elapsed own other
    local ratios=$work/ratios owns=$work/owns otherTimes=$work/others
    shift 4
    rm -f "$ratios" "$owns" "$otherTimes"
    round=$rounds
    measure "$command" "$@"
    measure "$others" "$@"
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
        awk -v time="$own" -v each="${repetitions:-1}" 'BEGIN { printf "%.3f\n", time / 1000 / each }' >>"$owns"
        awk -v time="$other" -v each="${repetitions:-1}" 'BEGIN { printf "%.3f\n", time / 1000 / each }' >>"$otherTimes"
    done
    local ratio least greatest ownMedian othersMedian
    read -r ratio least greatest < <(spread <"$ratios")
    read -r ownMedian _ < <(spread <"$owns")
    read -r othersMedian _ < <(spread <"$otherTimes")
    row "$label" "$(printf '%.2f' "$ratio")" "$(printf '%.2f to %.2f' "$least" "$greatest")" \
        "$(printf '%.1f' "$ownMedian")" "$(printf '%.1f' "$othersMedian")" "$goal"
}

# Sets 'elapsed' to the microseconds for which a command and what it starts keep processors busy. Other programs on the
# machine matter less to it than to the time that passes.
measureProcessors() {
    local TIMEFORMAT='%3U %3S' errors
    exec {errors}>&2
    { time "$@" 2>&"$errors"; } 2>"$work/processors" || fail "Failed: $*"
    exec {errors}>&-
    elapsed=$(awk '{ printf "%.0f\n", ($1 + $2) * 1000000 }' "$work/processors")
}

# compareLeast LABEL GOAL OWN OTHERS [ARGUMENT...] prints a row that compares the least processor times of the commands
# OWN and OTHERS in alternating rounds, after one round that does not count.
compareLeast() {
    local label=$1 goal=$2 command=$3 others=$4 round elapsed own=0 other=0
    shift 4
    for ((round = 0; round <= rounds; ++round)); do
        measureProcessors "$command" "$@"
        ((round != 1 && own != 0 && own <= elapsed)) || own=$elapsed
        measureProcessors "$others" "$@"
        ((round != 1 && other != 0 && other <= elapsed)) || other=$elapsed
    done
    awk -v own="$own" -v other="$other" 'BEGIN { printf "%.2f %.1f %.1f\n", own / other, own / 1000, other / 1000 }' \
        >"$work/least"
    local ratio ownTime otherTime
    read -r ratio ownTime otherTime <"$work/least"
    row "$label" "$ratio" "least processors" "$ownTime" "$otherTime" "$goal"
}

# Reads pairs of a size and its microseconds, smallest first, and prints the exponent by which the time beyond the first
# pair grows: 1 is linear. Sizes within the noise of starting are left out. Prints "-" if fewer than three remain.
exponent() {
    awk 'NR == 1 { start = $2; next }
        $2 > 1.5 * start { x = log($1); y = log($2 - start); ++n; sx += x; sy += y; sxx += x * x; sxy += x * y }
        END { if (n < 3) print "-"; else printf "%.2f\n", (n * sxy - sx * sy) / (n * sxx - sx * sx) }'
}
