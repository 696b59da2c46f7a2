#compdef kovra
# Completion of kovra for zsh: the one for bash, through zsh's own bridge to it. Installed as share/zsh/site-functions/_kovra,
# beside share/bash-completion.

autoload -Uz bashcompinit && bashcompinit
source "${funcsourcetrace[1]%/*:*}/../../bash-completion/completions/kovra" || return

_kovra_zsh() {
  # bash's own command, as far as the completion uses it.
  mapfile() {
    emulate -L zsh
    COMPREPLY=("${(@f)$(cat)}")
  }
  {
    _bash_complete -o filenames -F _kovra
  } always {
    unfunction mapfile
  }
}
compdef _kovra_zsh kovra
_kovra_zsh "$@"
