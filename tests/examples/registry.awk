# What a file of the registry without faults holds, counted in another way than the program does:
# lines put together while the number of quotes is odd, fields taken off their front by a pattern.

{
    record = record == "" ? $0 : record "\n" $0
    if (gsub(/"/, "&", record) % 2) {
        next
    }
    blank += record == ""
    if (record != "" && record !~ /^Registry,Assignment,/) {
        count(record)
    }
    record = ""
}

function count(record,    i, field) {
    records += 1
    for (i = 1; i <= 4; ++i) {
        match(record, /^("([^"]|"")*"|[^,]*)/)
        field[i] = substr(record, 1, RLENGTH)
        record = substr(record, RLENGTH + 2)
    }
    warnings += seen[field[2]]++ > 0
    warnings += characters(field[4]) > 128
}

function characters(text) {
    gsub(/^"|"$/, "", text)
    gsub(/""/, "\"", text)
    gsub(/^[ \t\r\n]+|[ \t\r\n]+$/, "", text)
    gsub(/[\200-\277]/, "", text) # all bytes of a character but its first
    return length(text)
}

END {
    print "records: " records "\nerrors: 0\nwarnings: " warnings
    print "lines read: " NR " = 1 heading + " NR - blank - 1 " taken + 0 refused + " blank + 0 " blank"
}
