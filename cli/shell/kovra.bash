# Completion of kovra for bash; installed as share/bash-completion/completions/kovra, or sourced. It asks the program: the
# help of a command names its commands, its options with their values, its arguments and the classes.

# The help of the command that the words are.
_kovra_help() {
  LC_ALL=C "${COMP_WORDS[0]/#\~/$HOME}" "$@" --help 2> /dev/null
}

# The commands that a help names.
_kovra_commands() {
  sed -n '/^Commands:/,/^$/s/^  \([a-z]\{1,\}\) .*/\1/p'
}

# The kind of value that a help tells for an option; nothing where it takes none.
_kovra_value() {
  awk -F '  +' -v option="$1" '/^  -/ {
    count = split($2, words, /[, ]/)
    for (i = 1; i < count; ++i) if (words[i] == option && words[count] !~ /^-/) print words[count]
  }'
}

_kovra() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} help word wanted choices=""
  local -a command=()
  COMPREPLY=()
  help=$(_kovra_help)
  for word in "${COMP_WORDS[@]:1:$((COMP_CWORD - 1))}"; do
    if _kovra_commands <<< "$help" | grep -qx -- "$word"; then
      command+=("$word")
      help=$(_kovra_help "${command[@]}")
    fi
  done

  wanted=$(_kovra_value "$previous" <<< "$help")
  if [ -z "$wanted" ] && [[ $current != -* ]]; then
    wanted=$(sed -n '/^Arguments:/{n;s/^  \([A-Z]*\).*/\1/p;}' <<< "$help")
    # Numbers are nobody's to guess.
    [ "$wanted" != NUMBER ] || wanted=""
    [[ $wanted != REQUEST && $wanted != ENVELOPE ]] || wanted=FILE
  fi
  case $wanted in
    "") choices="$(_kovra_commands <<< "$help") $(sed -n 's/^  \(-.,\)\{0,1\}\(--[a-z-]*\).*/\2/p' <<< "$help")" ;;
    FILE)
      mapfile -t COMPREPLY < <(compgen -f -- "$current")
      return
      ;;
    CLASS) choices=$(grep -o 'Cls[A-Za-z]*' <<< "$help") ;;
    *"|"*) choices=${wanted//|/ } ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$choices" -- "$current")
}
complete -o filenames -F _kovra kovra
