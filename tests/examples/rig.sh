#!/usr/bin/env bash
# Does what docs/rig.md says, and compares what comes with what the page shows.
#   rig.sh TREE DEVICE DESK   with the build folders of the device's program and of module and tools
set -euo pipefail
if [[ $(id -u) -eq 0 && -z ${RIG_SH:-} ]]; then # root, but for writing what it may not write
    RIG_SH=1 exec setpriv --bounding-set -dac_override --inh-caps -dac_override "$0" "$@"
fi
page=$1/docs/rig.md
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/build" && ln -s "$1/examples" "$work"
ln -s "$2" "$work/build/arm" && ln -s "$3" "$work/build/desk"
lines() { awk -v fence="\`\`\`$1" '/^```/ { on = $0 == fence; next } on' "$page"; }
lines console >"$work/expected"
cd "$work"
eval "$(lines bash)"
[[ $2 != "$3" ]] || qemu-arm() { shift 2 && "$@"; } # the device's program is the desk's
sed -n 's/^\$ //p' "$work/expected" | while read -r line; do
    printf '$ %s\n' "$line"
    eval "$line" </dev/null 2>&1 || true
done | diff -u "$work/expected" -
