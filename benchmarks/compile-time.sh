#!/usr/bin/env bash
# Measures what a command made of a function costs to compile: the processor time for a host with 50 commands, less that
# for one with none, divided by 50. benchmarks/compile-time.sh COMPILER BUILD-FOLDER [FLAG...]
set -euo pipefail
cd "$(dirname "$0")/.."
compiler=$1 build=$2
flags=(-std=c++17 -fPIC "${@:3}")
for room in common commands; do
  flags+=(-I "$room/include" -I "$build/$room/include")
done
flags+=(-I include -I "$build/src/include")
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT

# host NUMBER: a host with so many commands, each with a function of its own and parameters of various types.
host() {
  local types=("double a, std::optional<int> b" "bool a" "std::u32string a, bool b" "std::chrono::milliseconds a"
    "std::vector<std::string> a" "int a, int b, zephyr::console::commands::Answer& answer")
  local details=(', argument(U"a").between(0, 60), option(U"b")' '' ', argument(U"a"), flag(U"b")' '' '' '')
  echo '#include <zephyr/console/Console.h>'
  echo '#include <zephyr/console/commands/Command.h>'
  echo 'void addAll(zephyr::console::Console& console, int& sum) {'
  echo '  using namespace zephyr::console::commands;'
  for ((i = 0; i < $1; ++i)); do
    echo "  add(console, U\"command$i\", U\"Does it.\", [&sum](${types[i % 6]}) { sum += $i; (void)a; }${details[i % 6]});"
  done
  echo '}'
}

# seconds NUMBER: the least processor time of five compilations.
seconds() {
  host "$1" >"$folder/host.cpp"
  TIMEFORMAT='%U %S'
  for _ in 1 2 3 4 5; do
    { time "$compiler" "${flags[@]}" -c -o "$folder/host.o" "$folder/host.cpp" 2>"$folder/errors"; } 2>&1 |
      awk '{ print $1 + $2 }'
  done | sort -n | head -1
}

none=$(seconds 0)
fifty=$(seconds 50)
awk -v none="$none" -v fifty="$fifty" 'BEGIN {
  printf "no command: %.2f s, 50 commands: %.2f s, a command: %.3f s\n", none, fifty, (fifty - none) / 50 }'
