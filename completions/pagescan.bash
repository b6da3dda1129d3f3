# bash completion for pagescan. Made by pagescan_documents: do not edit.

_pagescan_files() {
  compopt -o filenames 2>/dev/null
  mapfile -t COMPREPLY < <(compgen -f -- "$current")
}

_pagescan() {
  local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
  local command=${COMP_WORDS[1]} words=

  if ((COMP_CWORD == 1)); then words='inventory rewrite save links css resolve encode decode flavour entities utf8 scrub help --help --version'; fi
  if ((COMP_CWORD == 2)) && [[ $command == help ]]; then words='inventory rewrite save links css resolve encode decode flavour entities utf8 scrub'; fi
  case "$command $previous" in
    'inventory --url') return ;;
    'inventory --charset') return ;;
    'inventory --scripting') words='on off' ;;
    'inventory --profile') words='standard lazy meta data' ;;
    'inventory --places') _pagescan_files && return ;;
    'inventory --kind') words='load navigation form ping connection base metadata identifier fragment script dead' ;;
    'inventory --format') words='table jsonl urls' ;;
    'inventory --jobs') return ;;
    'inventory --files-from') _pagescan_files && return ;;
    'rewrite --map') return ;;
    'rewrite --template') return ;;
    'rewrite --edits') _pagescan_files && return ;;
    'rewrite --kind') words='load navigation form ping connection base metadata identifier fragment script dead' ;;
    'rewrite --url') return ;;
    'rewrite --charset') return ;;
    'rewrite --scripting') words='on off' ;;
    'rewrite --profile') words='standard lazy meta data' ;;
    'rewrite --places') _pagescan_files && return ;;
    'rewrite --base-url-from-path') return ;;
    'rewrite --output') _pagescan_files && return ;;
    'rewrite --jobs') return ;;
    'rewrite --files-from') _pagescan_files && return ;;
    'save --url') return ;;
    'save --user-agent') return ;;
    'save --header') return ;;
    'save --ca-file') _pagescan_files && return ;;
    'save --timeout') return ;;
    'save --max-time') return ;;
    'save --max-size') return ;;
    'save --max-total') return ;;
    'save --max-count') return ;;
    'links --base') return ;;
    'links --format') words='table jsonl urls' ;;
    'links --files-from') _pagescan_files && return ;;
    'css --base') return ;;
    'css --format') words='table jsonl urls' ;;
    'css --files-from') _pagescan_files && return ;;
    'resolve --base') return ;;
    'resolve --encoding') return ;;
    'resolve --format') words='url jsonl' ;;
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
      inventory) words='-h --help --url --charset --scripting --profile --places --css --kind --format --jobs --files-from -0 --null' ;;
      rewrite) words='-h --help --absolute --relative --map --template --edits --kind --url --charset --scripting --profile --places --css --base-url-from-path --dry-run --in-place -o --output --jobs --files-from -0 --null' ;;
      save) words='-h --help --url --single-file --continue --user-agent --header --ca-file --allow-private --timeout --max-time --max-size --max-total --max-count' ;;
      links) words='-h --help --no-rel --base --format --files-from -0 --null' ;;
      css) words='-h --help --declarations --base --format --files-from -0 --null' ;;
      resolve) words='-h --help --base --encoding --format' ;;
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
    inventory | rewrite | save | links | css | entities | utf8 | scrub) _pagescan_files ;;
  esac
}

complete -F _pagescan pagescan
