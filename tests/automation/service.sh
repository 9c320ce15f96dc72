# What the bus starts: the program, with a short wait before it ends, and a note of how it ended.
"$1" --automation --linger 1
echo $? >> "$TD_EXIT_CODES"
