# The Debian packages that each script needs. Other scripts source this file.
# shellcheck shell=bash disable=SC2034
build_packages=(cmake ninja-build g++ qt6-base-dev libglm-dev libgl-dev libedit-dev fonts-dejavu-core)
# What building and using all of the libraries needs beyond that.
module_packages=(libqt6opengl6-dev qt6-declarative-dev)
qml_packages=(qml6-module-qtquick qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript)
test_packages=("${build_packages[@]}" "${module_packages[@]}" "${qml_packages[@]}" qt6-declarative-dev-tools libxcb1-dev
  libgtest-dev librapidcheck-dev xvfb openbox xdotool x11-utils x11-xkb-utils imagemagick binutils clang pkg-config
  socat expect tmux zsh mandoc desktop-file-utils appstream python3)
# The version that decides what is formatted and what is a finding. Debian 12 and 13 both have it.
clang_tools_version=22
# clang_tool NAME
# Prints what a tool of that version is called here: Debian has the version in the name, and other systems may not.
clang_tool() {
  if ! command -v "$1-$clang_tools_version" >/dev/null && "$1" --version 2>/dev/null | grep -q "version $clang_tools_version\."; then
    echo "$1"
  else
    echo "$1-$clang_tools_version"
  fi
}
format_packages=("clang-format-$clang_tools_version")
lint_packages=("${build_packages[@]}" "${module_packages[@]}" "clang-tidy-$clang_tools_version" cppcheck)
coverage_packages=("${test_packages[@]}" llvm libclang-rt-dev)
docs_packages=(doxygen graphviz fonts-dejavu-core python3-markdown-it python3-mdit-py-plugins)
package_packages=("${docs_packages[@]}" "${build_packages[@]}" "${module_packages[@]}" libgtest-dev build-essential debhelper
  dpkg-dev git binutils file lintian)
abi_packages=(abigail-tools dpkg xz-utils)
bench_packages=("${build_packages[@]}" libqt6opengl6-dev xvfb xauth libbenchmark-dev tcl-dev liblua5.4-dev gnuplot-nox python3)
fuzz_packages=("${build_packages[@]}" clang libclang-rt-dev)
instructions_packages=("${bench_packages[@]}" valgrind)
