#!/bin/bash
# On a real disk with ever more room: whole visits, and the laying out of a data root.
#
#   unshare --mount [--map-root-user] small_disk.sh BUILD
#
# Needs mounts of its own, as `unshare` gives them.
set -euo pipefail
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
build=$1
disk=$(mktemp -d)
whole=$(mktemp -d)
trap 'umount "$disk" 2>/dev/null || true; rm -rf "$disk" "$whole"' EXIT

small_disk()
{
    umount "$disk" 2>/dev/null || true
    mount -t tmpfs -o "size=$1k" tmpfs "$disk"
}

fail()
{
    printf '%s KB: %s\n' "$room" "$*"
    exit 1
}

lay_out()
{
    "$project/scripts/lay-out-root.sh" "$1" "$build" de >"$whole/told" 2>&1
}

# Refused in one line, and every file that is there is a whole one of this installation: NAMES...
is_told()
{
    local file
    [ "$(wc -l <"$whole/told")" -eq 1 ] || fail "not one line: $(<"$whole/told")"
    [[ $(<"$whole/told") == "lay-out-root.sh: can't "* ]] || fail "$(<"$whole/told")"
    while IFS= read -r -d '' file; do
        cmp -s "$disk/data/$file" "$whole/data/$file" || fail "$file isn't whole"
    done < <(cd "$disk/data" && find . -type f -print0)
}

lay_out "$whole/data"
needed=$(du -sk --apparent-size "$whole/data" | cut -f1)
refused=0
for ((room = 0; ; room += 1 + needed / 32)); do
    small_disk $((room < 4 ? 4 : room))
    if lay_out "$disk/data"; then
        break
    fi
    is_told
    refused=$((refused + 1))
    mount -o "remount,size=$((4 * needed))k" "$disk"
    lay_out "$disk/data" || fail "not made up for: $(<"$whole/told")"
    diff -r "$disk/data" "$whole/data" >"$whole/told" || fail "made up for otherwise: $(<"$whole/told")"
done
[ "$refused" -gt 8 ] || fail "refused $refused times only"

# An upgrade, for which there is no room: what was there stays.
upgraded=0
for ((room = 0; room <= needed; room += 1 + needed / 16)); do
    small_disk $((4 * needed))
    lay_out "$disk/data"
    echo "of another installation" >"$disk/data/Languages/installed.txt"
    used=$(df -k --output=used "$disk" | tail -n 1)
    mount -o "remount,size=$((used + room))k" "$disk"
    if ! lay_out "$disk/data"; then
        rm "$disk/data/Languages/installed.txt"
        is_told
        upgraded=$((upgraded + 1))
    fi
done
[ "$upgraded" -gt 0 ] || fail "every upgrade found room"
printf 'laid out on a disk that is full: %d refused and made up for, %d upgrades refused\n' \
    "$refused" "$upgraded"

small_disk 1024
"$build/tests/disk/faulty_disk" --small-disk "$disk"
