# Completion of kovra for bash; installed as share/bash-completion/completions/kovra, or sourced.

_kovra() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command="" word choices
  COMPREPLY=()
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    case $word in
      transact | query | sql | account | login) [ -n "$command" ] || command=$word ;;
      create | backup | restore | check | upgrade | init) [ -z "$command" ] || command="${command%% *} $word" ;;
    esac
  done

  case $previous in
    --class) choices="ClsInvSubject ClsOppSubject ClsOppSubjectST ClsKovra ClsKovraProof ClsPriceJustVou" ;;
    --format)
      choices="xml table json"
      [ "$command" != sql ] || choices="table json csv"
      ;;
    --lang) choices="zh en" ;;
    --login | --trace | --journal | --conditions)
      mapfile -t COMPREPLY < <(compgen -f -- "$current")
      return
      ;;
    -e | --execute | --timeout | --database | --connection | --account | --year | --user | --name) return ;;
  esac
  if [ -z "${choices:-}" ]; then
    if [[ $current != -* && ($command == transact || $command == query || $command == sql || $command == "login init" || $command == "account backup" || $command == "account restore") ]]; then
      mapfile -t COMPREPLY < <(compgen -f -- "$current")
      return
    fi
    case $command in
      "") choices="transact query sql account login --help --version --lang" ;;
      transact) choices="--class --login --trace --journal --format --quiet --lang --help" ;;
      query) choices="--login --conditions --trace --lang --help" ;;
      sql) choices="--login --execute --format --timeout --lang --help" ;;
      account) choices="create backup restore check upgrade --lang --help" ;;
      "account create") choices="--login --demo --database --lang --help" ;;
      "account backup" | "account restore") choices="--login --system --lang --help" ;;
      "account check" | "account upgrade") choices="--login --lang --help" ;;
      login) choices="check init --lang --help" ;;
      "login check") choices="--login --lang --help" ;;
      "login init") choices="--connection --account --year --user --name --lang --help" ;;
    esac
  fi
  mapfile -t COMPREPLY < <(compgen -W "${choices:-}" -- "$current")
}
complete -o filenames -F _kovra kovra
