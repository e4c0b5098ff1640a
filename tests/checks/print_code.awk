# print_code.awk - follows strip.awk: every line's code behind its file name and line number.
{ print FILENAME ":" FNR ":" code($0) }
