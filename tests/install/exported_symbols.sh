#!/usr/bin/env bash
# Compares the symbols that LIBRARY exports with LIST, and prints any difference: exported_symbols.sh LIBRARY LIST
#
# One list holds for every compiler, kind of build and machine. Where the machine decides what a type is, as in
# std::size_t, the list has the type's name.
set -euo pipefail

exported() {
  # __float128 is how the long double of some machines is mangled.
  nm --dynamic --defined-only "$1" | cut -d' ' -f3- | c++filt | sed \
    -e 's/ >/>/g' \
    -e 's/std::__cxx11::basic_string<char32_t, std::char_traits<char32_t>, std::allocator<char32_t>>/std::u32string/g' \
    -e 's/std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char>>/std::string/g' \
    -e 's/std::basic_string_view<char32_t, std::char_traits<char32_t>>/std::u32string_view/g' \
    -e 's/std::basic_string_view<char, std::char_traits<char>>/std::string_view/g' \
    -e 's/std::vector<std::u32string, std::allocator<std::u32string>>/std::vector<std::u32string>/g' \
    -e 's/std::unique_ptr<\([a-zA-Z:]*\), std::default_delete<[a-zA-Z:]*>>/std::unique_ptr<\1>/g' \
    -e 's/std::filesystem::__cxx11::path/std::filesystem::path/g' \
    -e 's/__float128/long double/g' \
    -e 's/\[abi:cxx11\]//g' | LC_ALL=C sort -u
}

# The list with the types of the machine that LIBRARY is for: expected LIBRARY LIST
expected() {
  local size='unsigned long' long=long
  if LC_ALL=C readelf --file-header "$1" | grep -q 'Class:.*ELF32'; then
    size='unsigned int' long='long long'
  fi
  sed -e "s/std::size_t/$size/g" -e "s/std::uint64_t/unsigned $long/g" -e "s/std::int64_t/$long/g" "$2" | LC_ALL=C sort -u
}

diff -u --label "the interface" <(expected "$1" "$2") --label "the library" <(exported "$1")
