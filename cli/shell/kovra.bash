# Completion of kovra for bash; installed as share/bash-completion/completions/kovra, or sourced.

_kovra() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command="" word choices
  local classes="ClsInvSubject ClsOppSubject ClsOppSubjectST ClsKovra ClsKovraProof ClsPriceJustVou"
  # How a spreadsheet is read.
  local sheet="--class --sheet --header-row --map --encoding --hidden --fix-codes --allow-duplicates"
  COMPREPLY=()
  for word in "${COMP_WORDS[@]:1:$((COMP_CWORD - 1))}"; do
    case $word in
      transact | query | template | request | import | imports | sql | account | login | trace) [ -n "$command" ] || command=$word ;;
      create | backup | restore | check | upgrade | init | list | show | undo) [ -z "$command" ] || command="${command%% *} $word" ;;
    esac
  done

  case $previous in
    --class) choices=$classes ;;
    --format)
      choices="xml table json"
      [ "$command" != sql ] || choices="table json csv"
      ;;
    --lang) choices="zh en" ;;
    --hidden) choices="include skip" ;;
    --login | --trace | --journal | --conditions | --report | --refused | -o | --output)
      mapfile -t COMPREPLY < <(compgen -f -- "$current")
      return
      ;;
    -e | --execute | --timeout | --database | --connection | --account | --year | --user | --name | --sheet | --header-row | --map | --encoding) return ;;
  esac
  if [[ $previous == template && $current != -* ]]; then
    choices=$classes
  fi
  if [ -z "${choices:-}" ]; then
    if [[ $current != -* && ($command == transact || $command == query || $command == request || $command == import || $command == sql || $command == "login init" || $command == "account backup" || $command == "account restore" || $command == "trace show") ]]; then
      mapfile -t COMPREPLY < <(compgen -f -- "$current")
      return
    fi
    case $command in
      "") choices="transact query template request import imports sql account login trace --help --version --lang" ;;
      transact) choices="--class --login --trace --trace-times --journal --format --quiet --lang --help" ;;
      query) choices="--login --conditions --trace --trace-times --lang --help" ;;
      template) choices="--output --login --lang --help" ;;
      request) choices="$sheet --output --login --json --quiet --lang --help" ;;
      import) choices="$sheet --login --commit --strict --report --refused --json --quiet --lang --help" ;;
      imports) choices="list show undo --lang --help" ;;
      "imports list" | "imports show" | "imports undo") choices="--login --lang --help" ;;
      sql) choices="--login --execute --format --timeout --lang --help" ;;
      account) choices="create backup restore check upgrade --lang --help" ;;
      "account create") choices="--login --demo --database --lang --help" ;;
      "account backup" | "account restore") choices="--login --system --lang --help" ;;
      "account check" | "account upgrade") choices="--login --lang --help" ;;
      trace) choices="show --lang --help" ;;
      "trace show") choices="--lang --help" ;;
      login) choices="check init --lang --help" ;;
      "login check") choices="--login --lang --help" ;;
      "login init") choices="--connection --account --year --user --name --lang --help" ;;
    esac
  fi
  mapfile -t COMPREPLY < <(compgen -W "${choices:-}" -- "$current")
}
complete -o filenames -F _kovra kovra
