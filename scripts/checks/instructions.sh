#!/usr/bin/env bash
# Counts the instructions of the main paths and compares them with benchmarks/instructions.txt, where a difference of more
# than 5 % fails. With --renew it writes the table instead. Skips where the table doesn't hold. Takes a minute.
set -euo pipefail
cd "$(dirname "$0")/../.."
if [ $# -gt 1 ] || [ "${1:---renew}" != --renew ]; then
  echo "usage: scripts/checks/instructions.sh [--renew]" >&2
  exit 2
fi
table=benchmarks/instructions.txt
build=build/bench
counts=build/instructions

# Another compiler or C library makes other instructions of the same code.
place="debian 12, x86_64, GCC 12"
check_place() {
  if [ "$1" != "${place:0:${#1}}" ]; then
    echo "instructions: skipped, as $table holds for $place, and this is $1"
    exit 0
  fi
}
system=$(test -r /etc/os-release && . /etc/os-release; echo "${ID:-$(uname -s)} ${VERSION_ID:-}, $(uname -m)")
check_place "$system"
source scripts/packages.sh
scripts/install-packages.sh "${instructions_packages[@]}"
check_place "$system, GCC $(g++ -dumpversion)"

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DZEPHYR_CONSOLE_BUILD_TESTS=OFF \
  -DZEPHYR_CONSOLE_BUILD_EXAMPLES=OFF -DZEPHYR_CONSOLE_BUILD_BENCHMARKS=ON >/dev/null
cmake --build "$build" --target instruction_counts

# One file of counts for each path, as the program says which it runs and how often.
rm -rf "$counts"
mkdir -p "$counts"
QT_QPA_PLATFORM=offscreen LD_BIND_NOW=1 valgrind --tool=callgrind --instr-atstart=no --collect-atstart=no \
  --callgrind-out-file="$counts/part" "$build/benchmarks/instruction_counts" >"$counts/paths" 2>"$counts/log" || {
  cat "$counts/log" >&2
  exit 1
}
while read -r path times; do
  part=$(grep -l "^desc: Trigger: Client Request: $path\$" "$counts"/part.* || true)
  if [ ! -e "$part" ]; then
    echo "error: nothing was counted of $path" >&2
    exit 1
  fi
  echo "$path $(($(sed -n 's/^totals: //p' "$part") / times))"
done <"$counts/paths" >"$counts/now"
if [ ! -s "$counts/now" ]; then
  echo "error: nothing was counted" >&2
  exit 1
fi

if [ "${1:-}" = --renew ]; then
  {
    echo "# Instructions of each main path, one repetition, as scripts/checks/instructions.sh counts them."
    echo "# They hold for $place. Its option --renew writes this file."
    cat "$counts/now"
  } >"$table"
  echo "instructions: wrote $table"
  exit 0
fi
awk -v tolerance=5 '
  /^#/ { next }
  NR == FNR { now[$1] = $2; next }
  { known[$1] = 1; change = ($1 in now) ? 100 * (now[$1] - $2) / $2 : -100 }
  change > tolerance || change < -tolerance {
    printf "error: %s: %d instructions, %d in the table (%+.1f %%)\n", $1, now[$1], $2, change; failed = 1
  }
  END {
    for (path in now) if (!(path in known)) { printf "error: %s is not in the table\n", path; failed = 1 }
    exit failed
  }' "$counts/now" "$table" >&2 || {
  echo "If the change is meant, write the table anew: scripts/checks/instructions.sh --renew" >&2
  exit 1
}
echo "instructions: all within 5 % of $table"
