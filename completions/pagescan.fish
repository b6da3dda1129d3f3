# fish completion for pagescan. Made by pagescan_documents: do not edit.

complete -c pagescan -f
complete -c pagescan -n __fish_use_subcommand -s h -l help -d 'Print this help and exit'
complete -c pagescan -n __fish_use_subcommand -l version -d 'Print the version and exit'
complete -c pagescan -n __fish_use_subcommand -a help -d 'Prints the help of a command'
complete -c pagescan -n '__fish_seen_subcommand_from help' -a 'inventory links css resolve encode decode flavour entities utf8 scrub'

complete -c pagescan -n __fish_use_subcommand -a inventory -d 'Lists every URL that pages carry, as browsers read them'
complete -c pagescan -n '__fish_seen_subcommand_from inventory' -F
complete -c pagescan -n '__fish_seen_subcommand_from inventory' -s h -l help -d 'Print this help and exit'
complete -c pagescan -n '__fish_seen_subcommand_from inventory' -l url -x -d 'Where the pages come from'
complete -c pagescan -n '__fish_seen_subcommand_from inventory' -l charset -x -d 'Their character set by the word of a server'
complete -c pagescan -n '__fish_seen_subcommand_from inventory' -l scripting -x -a 'on off' -d 'Whether scripts run, on by default'
complete -c pagescan -n '__fish_seen_subcommand_from inventory' -l profile -x -a 'standard lazy meta data' -d 'Look at further places'
complete -c pagescan -n '__fish_seen_subcommand_from inventory' -l places -r -F -d 'Read a table of further places from FILE'
complete -c pagescan -n '__fish_seen_subcommand_from inventory' -l css -d 'The inputs are style sheets'
complete -c pagescan -n '__fish_seen_subcommand_from inventory' -l kind -x -a 'load navigation form ping connection base metadata identifier fragment script dead' -d 'List this kind alone'
complete -c pagescan -n '__fish_seen_subcommand_from inventory' -l format -x -a 'table jsonl urls' -d 'How the list is written'
complete -c pagescan -n '__fish_seen_subcommand_from inventory' -l jobs -x -d 'Read N inputs at a time'
complete -c pagescan -n '__fish_seen_subcommand_from inventory' -l files-from -r -F -d 'Read the files named in FILE too, a name a line'
complete -c pagescan -n '__fish_seen_subcommand_from inventory' -s 0 -l null -d 'The names in that FILE end with NUL bytes, as find -print0 writes them'

complete -c pagescan -n __fish_use_subcommand -a links -d 'Lists the URL-bearing attributes of pages, one a line'
complete -c pagescan -n '__fish_seen_subcommand_from links' -F
complete -c pagescan -n '__fish_seen_subcommand_from links' -s h -l help -d 'Print this help and exit'
complete -c pagescan -n '__fish_seen_subcommand_from links' -l no-rel -d 'Leave out the attribute rel of LINK, which holds no URL'
complete -c pagescan -n '__fish_seen_subcommand_from links' -l base -x -d 'The URL that the text came from, against which values are resolved'
complete -c pagescan -n '__fish_seen_subcommand_from links' -l format -x -a 'table jsonl urls' -d 'How the list is written'
complete -c pagescan -n '__fish_seen_subcommand_from links' -l files-from -r -F -d 'Read the files named in FILE too, a name a line'
complete -c pagescan -n '__fish_seen_subcommand_from links' -s 0 -l null -d 'The names in that FILE end with NUL bytes, as find -print0 writes them'

complete -c pagescan -n __fish_use_subcommand -a css -d 'Lists the URLs of style text, url(...) and @import, in the form of links, each as the src of an IMG'
complete -c pagescan -n '__fish_seen_subcommand_from css' -F
complete -c pagescan -n '__fish_seen_subcommand_from css' -s h -l help -d 'Print this help and exit'
complete -c pagescan -n '__fish_seen_subcommand_from css' -l declarations -d 'The text is bare declarations, as in a style attribute'
complete -c pagescan -n '__fish_seen_subcommand_from css' -l base -x -d 'The URL that the text came from, against which values are resolved'
complete -c pagescan -n '__fish_seen_subcommand_from css' -l format -x -a 'table jsonl urls' -d 'How the list is written'
complete -c pagescan -n '__fish_seen_subcommand_from css' -l files-from -r -F -d 'Read the files named in FILE too, a name a line'
complete -c pagescan -n '__fish_seen_subcommand_from css' -s 0 -l null -d 'The names in that FILE end with NUL bytes, as find -print0 writes them'

complete -c pagescan -n __fish_use_subcommand -a resolve -d 'Resolves URLs as browsers do, by the URL Standard'
complete -c pagescan -n '__fish_seen_subcommand_from resolve' -s h -l help -d 'Print this help and exit'
complete -c pagescan -n '__fish_seen_subcommand_from resolve' -l base -x -d 'What they are resolved against'
complete -c pagescan -n '__fish_seen_subcommand_from resolve' -l encoding -x -d 'The encoding of the page that they stand in, in which queries are written'
complete -c pagescan -n '__fish_seen_subcommand_from resolve' -l format -x -a 'url jsonl' -d 'How the result is written'

complete -c pagescan -n __fish_use_subcommand -a encode -d 'Percent-encodes text'
complete -c pagescan -n '__fish_seen_subcommand_from encode' -s h -l help -d 'Print this help and exit'
complete -c pagescan -n '__fish_seen_subcommand_from encode' -l flavour -x -a 'none browser escape uri uri-component browser-sign chrome chrome94 siebel' -d 'Whose way of encoding it is'
complete -c pagescan -n '__fish_seen_subcommand_from encode' -l lines -d 'Each line of standard input is a text of its own, with a result a line'

complete -c pagescan -n __fish_use_subcommand -a decode -d 'Decodes percent-encoded text'
complete -c pagescan -n '__fish_seen_subcommand_from decode' -s h -l help -d 'Print this help and exit'
complete -c pagescan -n '__fish_seen_subcommand_from decode' -l flavour -x -a 'none browser escape uri uri-component browser-sign chrome chrome94 siebel' -d 'Whose way of encoding it is'
complete -c pagescan -n '__fish_seen_subcommand_from decode' -l lines -d 'Each line of standard input is a text of its own, with a result a line'

complete -c pagescan -n __fish_use_subcommand -a flavour -d 'Names the flavours of which a query string is the canonical form'
complete -c pagescan -n '__fish_seen_subcommand_from flavour' -s h -l help -d 'Print this help and exit'
complete -c pagescan -n '__fish_seen_subcommand_from flavour' -l lines -d 'Each line of standard input is a text of its own, with a result a line'
complete -c pagescan -n '__fish_seen_subcommand_from flavour' -l format -x -a 'text jsonl' -d 'How the answer is written'

complete -c pagescan -n __fish_use_subcommand -a entities -d 'Decodes character references to ISO-8859-1 bytes'
complete -c pagescan -n '__fish_seen_subcommand_from entities' -F
complete -c pagescan -n '__fish_seen_subcommand_from entities' -s h -l help -d 'Print this help and exit'
complete -c pagescan -n '__fish_seen_subcommand_from entities' -l utf8 -d 'Write what is decoded in UTF-8'
complete -c pagescan -n '__fish_seen_subcommand_from entities' -l files-from -r -F -d 'Read the files named in FILE too, a name a line'
complete -c pagescan -n '__fish_seen_subcommand_from entities' -s 0 -l null -d 'The names in that FILE end with NUL bytes, as find -print0 writes them'

complete -c pagescan -n __fish_use_subcommand -a utf8 -d 'Converts to or from UTF-8, where the text needs it'
complete -c pagescan -n '__fish_seen_subcommand_from utf8' -F
complete -c pagescan -n '__fish_seen_subcommand_from utf8' -s h -l help -d 'Print this help and exit'
complete -c pagescan -n '__fish_seen_subcommand_from utf8' -l to -x -a 'utf8 ansi' -d 'Where to'
complete -c pagescan -n '__fish_seen_subcommand_from utf8' -l code-page -x -a "(iconv -l 2>/dev/null | sed 's,//.*,,')" -d 'The other character set, ISO-8859-1 by default'
complete -c pagescan -n '__fish_seen_subcommand_from utf8' -l check -d 'Only tell what each input is'
complete -c pagescan -n '__fish_seen_subcommand_from utf8' -l files-from -r -F -d 'Read the files named in FILE too, a name a line'
complete -c pagescan -n '__fish_seen_subcommand_from utf8' -s 0 -l null -d 'The names in that FILE end with NUL bytes, as find -print0 writes them'

complete -c pagescan -n __fish_use_subcommand -a scrub -d 'Blanks scripts and comments, empties event handlers and elements'
complete -c pagescan -n '__fish_seen_subcommand_from scrub' -F
complete -c pagescan -n '__fish_seen_subcommand_from scrub' -s h -l help -d 'Print this help and exit'
complete -c pagescan -n '__fish_seen_subcommand_from scrub' -l scripts -d 'Script bodies become blanks'
complete -c pagescan -n '__fish_seen_subcommand_from scrub' -l comments -d 'Comments become <p>, blanks, </p>, up to the first stray -->'
complete -c pagescan -n '__fish_seen_subcommand_from scrub' -l handlers -d 'onload, onmouseover and onmouseout lose their values'
complete -c pagescan -n '__fish_seen_subcommand_from scrub' -l tag -x -d 'Elements whose name begins with NAME become <NAME></NAME>'
complete -c pagescan -n '__fish_seen_subcommand_from scrub' -l files-from -r -F -d 'Read the files named in FILE too, a name a line'
complete -c pagescan -n '__fish_seen_subcommand_from scrub' -s 0 -l null -d 'The names in that FILE end with NUL bytes, as find -print0 writes them'
