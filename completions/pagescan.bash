# bash completion for pagescan

_pagescan() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local command=${COMP_WORDS[1]} words=
  local commands='links css encode decode flavour entities utf8 scrub'
  local flavours='none browser escape uri uri-component browser-sign chrome chrome94 siebel'

  if ((COMP_CWORD == 1)); then
    mapfile -t COMPREPLY < <(compgen -W "$commands --help --version" -- "$current")
    return
  fi

  case $previous in
    --format) words='table jsonl' ;;
    --flavour) words=$flavours ;;
    --to) words='utf8 ansi' ;;
    --code-page) words=$(iconv -l 2>/dev/null | sed 's,//.*,,') ;;
    --base | --tag) return ;;
  esac
  if [[ -n $words ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    return
  fi

  if [[ $current == -* ]]; then
    case $command in
      links) words='--base --format' ;;
      css) words='--base --format --declarations' ;;
      encode | decode) words='--flavour' ;;
      utf8) words='--to --code-page' ;;
      scrub) words='--scripts --comments --handlers --tag' ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$words --help" -- "$current")
    return
  fi

  case $command in
    links | css | entities | utf8 | scrub)
      compopt -o filenames 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -f -- "$current")
      ;;
  esac
}

complete -F _pagescan pagescan
