#!/bin/bash
# Looks for words that have no place in the files of the project: left-over notes, paths of somebody's
# machine, references to papers that a reader doesn't have, and tests that sleep or skip.
# Each pattern has a bracket in it, so that it doesn't find itself.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

found=0

# Arguments: what it is, the pattern, and further options of grep; the files come on the input.
look_for()
{
    local what=$1 pattern=$2
    shift 2
    if xargs -d '\n' grep -InHE "$@" -e "$pattern"; then
        printf '%s: %s\n' "$command_name" "$what" >&2
        found=1
    fi
}

cd "$project_dir"
files=$(project_files)
tests=$(grep '^tests/' <<<"$files" || true)

look_for "a reference to a paper that isn't here" '[s]pecification|\b[s]pec\b|\bPart [0-9]+\.[0-9]' -i <<<"$files"
look_for "a path of one machine" '(^|[^[:alnum:]_.}-])/([w]ork|[r]oot|[t]mp)/' <<<"$files"
look_for "a left-over note" '\b([T]ODO|[F]IXME|[X]XX)\b' <<<"$files"
[ -z "$tests" ] || look_for "a test that sleeps, polls or skips" \
    '\b([Q]SKIP|[q]Wait|[q]Sleep|[s]leep_for|[Q]EXPECT_FAIL)\b' <<<"$tests"

[ "$found" -eq 0 ] || die "words out of place, see above"
