# bash completion for pagescan. Made by pagescan_documents: do not edit.

_pagescan_files() {
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -f -- "$current")
}

_pagescan() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local command=${COMP_WORDS[1]} words=

  if ((COMP_CWORD == 1)); then words='links css encode decode flavour entities utf8 scrub help --help --version'; fi
  if ((COMP_CWORD == 2)) && [[ $command == help ]]; then words='links css encode decode flavour entities utf8 scrub'; fi
  case "$command $previous" in
    'links --base') return ;;
    'links --format') words='table jsonl urls' ;;
    'links --files-from') _pagescan_files && return ;;
    'css --base') return ;;
    'css --format') words='table jsonl urls' ;;
    'css --files-from') _pagescan_files && return ;;
    'encode --flavour') words='none browser escape uri uri-component browser-sign chrome chrome94 siebel' ;;
    'decode --flavour') words='none browser escape uri uri-component browser-sign chrome chrome94 siebel' ;;
    'flavour --format') words='text jsonl' ;;
    'entities --files-from') _pagescan_files && return ;;
    'utf8 --to') words='utf8 ansi' ;;
    'utf8 --code-page') words=$(iconv -l 2>/dev/null | sed 's,//.*,,') ;;
    'utf8 --files-from') _pagescan_files && return ;;
    'scrub --tag') return ;;
    'scrub --files-from') _pagescan_files && return ;;
  esac
  if [[ -z $words && $current == -* ]]; then
    case $command in
      links) words='-h --help --no-rel --base --format --files-from -0 --null' ;;
      css) words='-h --help --declarations --base --format --files-from -0 --null' ;;
      encode) words='-h --help --flavour --lines' ;;
      decode) words='-h --help --flavour --lines' ;;
      flavour) words='-h --help --lines --format' ;;
      entities) words='-h --help --utf8 --files-from -0 --null' ;;
      utf8) words='-h --help --to --code-page --check --files-from -0 --null' ;;
      scrub) words='-h --help --scripts --comments --handlers --tag --files-from -0 --null' ;;
    esac
  fi
  if [[ -n $words ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    return
  fi
  case $command in
    links | css | entities | utf8 | scrub) _pagescan_files ;;
  esac
}

complete -F _pagescan pagescan
