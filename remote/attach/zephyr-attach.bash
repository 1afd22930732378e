# Completes options of zephyr-attach, and names of programs that are running.
# shellcheck shell=bash
_zephyr_attach() {
  local options='--command --file --follow --help --json --keep-going --last --list --version' names
  local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  COMPREPLY=()
  case $previous in
    -c | --command | -n | --last) return ;;
    -f | --file)
      compopt -o filenames
      mapfile -t COMPREPLY < <(compgen -f -- "$word")
      return
      ;;
  esac
  if [[ $word == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
  else
    names=$("$1" --list 2>/dev/null | cut -d ' ' -f 1)
    mapfile -t COMPREPLY < <(compgen -W "$names" -- "$word")
  fi
}
complete -F _zephyr_attach zephyr-attach
