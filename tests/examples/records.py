"""Has texts read by the program given as arguments, by Python's module for such files, and by the
rules for damaged ones: all have to see the same."""

import csv
import io
import json
import random
import re
import subprocess
import sys

LINE_END = re.compile(r"\r\n|\r|\n")


def place(text, at):
    """The line of a position and where that begins."""
    ends = [match.end() for match in LINE_END.finditer(text, 0, at)]
    return len(ends) + 1, ends[-1] if ends else 0


def read(text, separator):
    """The records, and the faults as the program reports them."""
    field = re.compile(r'"((?:[^"]|"")*)"(?!")|([^"\r\n%s]*)' % re.escape(separator))
    records, faults, at = [], [], 0
    while at < len(text):
        first, fields, fault = at, [], None
        while fault is None:
            opening, match = at, field.match(text, at)
            at, is_quoted = match.end(), match.group(1) is not None
            fields.append(match.group(1).replace('""', '"') if is_quoted else match.group(2))
            behind = text[at:at + 1]
            if behind == separator:
                at += 1
            elif behind in ("", "\r", "\n"):
                break
            elif is_quoted and place(text, opening)[0] == place(text, at)[0]:
                fault, at = "a quote where none may stand", at - 1
            elif is_quoted or at == opening:
                fault, at = "a quote that nothing closes", opening
            else:
                fault = "a quote where none may stand"
        if fault:
            line, begin = place(text, at)
            skipped = line - place(text, first)[0] + 1
            faults.append(f"line {line}, byte {at - begin + 1}: {fault}, lines skipped: {skipped}")
        elif at != first:
            records.append(fields)
        match = LINE_END.search(text, at)
        at = match.end() if match else len(text)
    return records, faults


def check(text, separator, records, faults):
    run = subprocess.run(sys.argv[1:] + [separator], input=text.encode(), capture_output=True)
    actual = [json.loads(line) for line in run.stdout.decode().split("\n")[:-1]]
    reported = run.stderr.decode().splitlines()
    if (actual, reported, run.returncode) != (records, faults, 1 if faults else 0):
        sys.exit(f"{text!r}\ngave {actual[:9]} {reported[:9]}\nnot  {records[:9]} {faults[:9]}")


def main():
    chance = random.Random(3)
    pieces = ["a", "bc", " ", '"', '""', ",", ";", "\t", "\n", "\r\n", "\r", "\u00e9", "\U0001f600"]
    for separator in ",;\t":
        for line_end in ("\n", "\r\n", "\r"):
            for quoting in (csv.QUOTE_MINIMAL, csv.QUOTE_ALL):
                out = io.StringIO()
                writer = csv.writer(out, delimiter=separator, lineterminator=line_end, quoting=quoting)
                for _ in range(400):
                    writer.writerow("".join(chance.choices(pieces, k=chance.randrange(7)))
                                    for _ in range(chance.randrange(1, 6)))
                    out.write(line_end * chance.choice([0, 0, 0, 1, 2]))
                text = out.getvalue()
                reader = csv.reader(io.StringIO(text, newline=""), delimiter=separator)
                check(text, separator, [row for row in reader if row], [])
        for _ in range(100):
            text = "".join(chance.choices(["a", '"', separator, "\n", "\r\n", "\r"], [4, 3, 3, 1, 1, 1], k=60))
            check(text, separator, *read(text, separator))


main()
