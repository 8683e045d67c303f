#!/usr/bin/env bash
# Builds the same topics with quillbook and with hugo, in interleaved rounds, whole processes, each into a new folder.
#
#     bench/peers.sh [TOPICS] [ROUNDS]
#
# Prints the medians. Installs hugo if it is missing; builds the program if it has not been built for benchmarks.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
topics=${1:-10000}
rounds=${2:-5}
program=${QUILLBOOK:-$root/build/bench/bin/quillbook}

command -v hugo >/dev/null || { apt-get update -qq && apt-get install -y -qq --no-install-recommends hugo; }
if [ ! -x "$program" ]; then
  cmake --preset bench -S "$root" >/dev/null
  cmake --build "$root/build/bench" --target quillbook
fi

work=$(mktemp -d "${TMPDIR:-/tmp}/quillbook-peers.XXXXXX")
trap 'rm -rf "$work"' EXIT
python3 "$root/bench/make_corpus.py" "$topics" "$work/corpus.qbp"
python3 "$root/bench/hugo_site.py" "$work/corpus.qbp" "$work/site"

# timed LIST COMMAND...: appends the seconds and the peak memory in KB of a command to a list.
timed() {
  local list=$1
  shift
  /usr/bin/env python3 - "$list" "$@" <<'PYTHON'
import resource, subprocess, sys, time
start = time.perf_counter()
subprocess.run(sys.argv[2:], check=True, stdout=subprocess.DEVNULL)
seconds = time.perf_counter() - start
peak = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss
with open(sys.argv[1], "a") as file:
    print("%.4f %d" % (seconds, peak), file=file)
PYTHON
}

for round in $(seq "$rounds"); do
  timed "$work/quillbook.times" "$program" build "$work/corpus.qbp" --template "Quillbook Web" \
    --output "$work/quillbook-$round" --yes --quiet
  timed "$work/hugo.times" hugo --quiet --source "$work/site" --destination "$work/hugo-$round"
done

pages() { find "$1" -name '*.html' | wc -l; }
python3 - "$work" "$topics" "$rounds" "$(pages "$work/quillbook-1")" "$(pages "$work/hugo-1")" <<'PYTHON'
import statistics, sys
work, topics, rounds, own, other = sys.argv[1], *map(int, sys.argv[2:])
if own < topics or other < topics:
    sys.exit("a page is missing: quillbook wrote %d, hugo %d" % (own, other))
medians = {}
for name, pages in (("quillbook", own), ("hugo", other)):
    rows = [line.split() for line in open("%s/%s.times" % (work, name))]
    medians[name] = statistics.median(float(row[0]) for row in rows)
    peak = max(int(row[1]) for row in rows) / 1024
    print("%-10s %6d pages  %.3f s  %6.0f pages a second  %4.0f MB" %
          (name, pages, medians[name], pages / medians[name], peak))
print("hugo takes %.1f times as long (%d rounds, medians)" % (medians["hugo"] / medians["quillbook"], rounds))
PYTHON
