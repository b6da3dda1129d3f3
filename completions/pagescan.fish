# fish completion for pagescan

set -l flavours none browser escape uri uri-component browser-sign chrome chrome94 siebel

complete -c pagescan -f
complete -c pagescan -l help -s h -d 'Print help and exit'
complete -c pagescan -n __fish_use_subcommand -l version -d 'Print the version and exit'

complete -c pagescan -n __fish_use_subcommand -a links -d 'List the URL-bearing attributes of pages'
complete -c pagescan -n __fish_use_subcommand -a css -d 'List the URLs of style text'
complete -c pagescan -n __fish_use_subcommand -a encode -d 'Percent-encode text'
complete -c pagescan -n __fish_use_subcommand -a decode -d 'Decode percent-encoded text'
complete -c pagescan -n __fish_use_subcommand -a flavour -d 'Name the flavours of a query string'
complete -c pagescan -n __fish_use_subcommand -a entities -d 'Decode character references'
complete -c pagescan -n __fish_use_subcommand -a utf8 -d 'Convert to or from UTF-8'
complete -c pagescan -n __fish_use_subcommand -a scrub -d 'Blank scripts and comments, empty handlers and elements'

complete -c pagescan -n '__fish_seen_subcommand_from links css entities utf8 scrub' -F
complete -c pagescan -n '__fish_seen_subcommand_from links css' -l base -x -d 'The URL that the text came from'
complete -c pagescan -n '__fish_seen_subcommand_from links css' -l format -x -a 'table jsonl' -d 'How records are written'
complete -c pagescan -n '__fish_seen_subcommand_from css' -l declarations -d 'The text is bare declarations'
complete -c pagescan -n '__fish_seen_subcommand_from encode decode' -l flavour -x -a "$flavours" -d 'Whose way of encoding it is'
complete -c pagescan -n '__fish_seen_subcommand_from utf8' -l to -x -a 'utf8 ansi' -d 'Where to'
complete -c pagescan -n '__fish_seen_subcommand_from utf8' -l code-page -x -a "(iconv -l 2>/dev/null | string replace -r '//.*' '')" -d 'The other character set'
complete -c pagescan -n '__fish_seen_subcommand_from scrub' -l scripts -d 'Blank the bodies of scripts'
complete -c pagescan -n '__fish_seen_subcommand_from scrub' -l comments -d 'Blank comments'
complete -c pagescan -n '__fish_seen_subcommand_from scrub' -l handlers -d 'Empty event handlers'
complete -c pagescan -n '__fish_seen_subcommand_from scrub' -l tag -x -d 'Empty these elements'
