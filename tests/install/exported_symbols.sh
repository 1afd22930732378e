#!/usr/bin/env bash
# Compares the symbols that LIBRARY exports with LIST, and prints any difference: exported_symbols.sh LIBRARY LIST
set -euo pipefail

exported() {
  nm --dynamic --defined-only "$1" | cut -d' ' -f3- | c++filt | sed \
    -e 's/ >/>/g' \
    -e 's/std::__cxx11::basic_string<char32_t, std::char_traits<char32_t>, std::allocator<char32_t>>/std::u32string/g' \
    -e 's/std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char>>/std::string/g' \
    -e 's/std::basic_string_view<char32_t, std::char_traits<char32_t>>/std::u32string_view/g' \
    -e 's/std::basic_string_view<char, std::char_traits<char>>/std::string_view/g' \
    -e 's/std::vector<std::u32string, std::allocator<std::u32string>>/std::vector<std::u32string>/g' \
    -e 's/std::unique_ptr<\([a-zA-Z:]*\), std::default_delete<[a-zA-Z:]*>>/std::unique_ptr<\1>/g' \
    -e 's/std::filesystem::__cxx11::path/std::filesystem::path/g' \
    -e 's/\[abi:cxx11\]//g' | LC_ALL=C sort -u
}

diff -u --label "the interface" "$2" --label "the library" <(exported "$1")
