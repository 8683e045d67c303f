#!/usr/bin/env bash
# Compresses the same HTML with Quillbook's encoder of LZX and with that of chmcmd of Free Pascal.
#
#     bench/lzx_peers.sh [FOLDER...]
#
# All pages of a folder, one behind the other, are one input; without folders, made pages are. Prints speed and size of
# the encoder alone, and the size of the peer's compressed stream. Installs fp-utils if it is missing; builds the program
# if it has not been built for benchmarks.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
program=$root/build/bench/bench/lzx_speed

command -v chmcmd >/dev/null || { apt-get update -qq && apt-get install -y -qq --no-install-recommends fp-utils; }
if [ ! -x "$program" ]; then
  cmake --preset bench -S "$root" >/dev/null
  cmake --build "$root/build/bench" --target lzx_speed
fi

work=$(mktemp -d "${TMPDIR:-/tmp}/quillbook-lzx.XXXXXX")
trap 'rm -rf "$work"' EXIT
cd "$work"
if [ $# -eq 0 ]; then
  python3 "$root/bench/make_help.py" 2000 "$work/help"
  set -- "$work/help/html"
fi

# content_size FILE: the length of the compressed stream, as the directory of a .chm has it.
content_size() {
  python3 - "$1" <<'PYTHON'
import sys
data = open(sys.argv[1], "rb").read()
name = b"::DataSpace/Storage/MSCompressed/Content"
at = data.index(name) + len(name)
values = []
while len(values) < 3:  # section, offset, length
    value = 0
    while data[at] & 128:
        value, at = value << 7 | data[at] & 127, at + 1
    values, at = values + [value << 7 | data[at]], at + 1
print(values[2])
PYTHON
}

printf '[OPTIONS]\nCompiled file=peer.chm\nDefault topic=data.txt\n[FILES]\ndata.txt\n' >peer.hhp
for folder in "$@"; do
  find "$folder" -name '*.htm*' -print0 | LC_ALL=C sort -z | xargs -0 cat >data.txt
  chmcmd --no-html-scan peer.hhp >/dev/null 2>&1
  echo "$folder"
  "$program" data.txt
  echo "    chmcmd's stream: $(content_size peer.chm) bytes"
done
