#!/usr/bin/env bash
# Compiles the same help project with quillbook and with chmcmd of Free Pascal, in interleaved rounds, whole processes.
#
#     bench/compile_peers.sh [PAGES] [ROUNDS]
#
# Prints the medians of time, with the part of it that the processor worked, and of peak memory, and the sizes. Installs
# fp-utils if it is missing; builds the program if it has not been built for benchmarks.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
pages=${1:-2000}
rounds=${2:-3}
program=${QUILLBOOK:-$root/build/bench/bin/quillbook}

command -v chmcmd >/dev/null || { apt-get update -qq && apt-get install -y -qq --no-install-recommends fp-utils; }
if [ ! -x "$program" ]; then
  cmake --preset bench -S "$root" >/dev/null
  cmake --build "$root/build/bench" --target quillbook
fi

work=$(mktemp -d "${TMPDIR:-/tmp}/quillbook-compile.XXXXXX")
trap 'rm -rf "$work"' EXIT
python3 "$root/bench/make_help.py" "$pages" "$work/help"
sed 's/^Compiled file=.*/Compiled file=peer.chm/' "$work/help/p.hhp" >"$work/help/peer.hhp"
cd "$work/help"

# timed LIST COMMAND...: appends seconds, seconds of the processor and peak memory in MB of a command to a list.
timed() {
  python3 - "$@" <<'PYTHON'
import resource, subprocess, sys, time
start = time.perf_counter()
subprocess.run(sys.argv[2:], check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
seconds = time.perf_counter() - start
usage = resource.getrusage(resource.RUSAGE_CHILDREN)
with open(sys.argv[1], "a") as file:
    print(f"{seconds:.3f} {usage.ru_utime + usage.ru_stime:.3f} {usage.ru_maxrss / 1024:.0f}", file=file)
PYTHON
}

for _ in $(seq "$rounds"); do
  timed "$work/quillbook.times" "$program" compile p.hhp --quiet
  timed "$work/chmcmd.times" chmcmd peer.hhp
done
median() { sort -n "$1" | sed -n "$(((rounds + 1) / 2))p"; }
echo "$pages pages, median of $rounds rounds: seconds, of the processor, peak MB; bytes"
echo "quillbook  $(median "$work/quillbook.times")  $(stat -c %s out.chm)"
echo "chmcmd     $(median "$work/chmcmd.times")  $(stat -c %s peer.chm)"
