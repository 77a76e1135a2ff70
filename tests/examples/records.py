"""Writes records in each of the ways that Python knows, and reads them back with the program given
as arguments and with Python: both have to see the same."""

import csv
import io
import json
import random
import subprocess
import sys


def written(chance, separator, line_end, quoting):
    text = io.StringIO()
    writer = csv.writer(text, delimiter=separator, lineterminator=line_end, quoting=quoting)
    for _ in range(400):
        pieces = ["a", "bc", " ", '"', '""', ",", ";", "\t", "\n", "\r\n", "\r", "\u00e9", "\U0001f600"]
        fields = ["".join(chance.choices(pieces, k=chance.randrange(7))) for _ in range(chance.randrange(1, 6))]
        writer.writerow(fields)
        text.write(line_end * chance.choice([0, 0, 0, 1, 2]))
    text = text.getvalue()
    return text if chance.random() < 0.5 else text.rstrip("\r\n")


def main():
    chance = random.Random(3)
    for separator in ",;\t":
        for line_end in ("\n", "\r\n", "\r"):
            for quoting in (csv.QUOTE_MINIMAL, csv.QUOTE_ALL, csv.QUOTE_NONNUMERIC):
                text = written(chance, separator, line_end, quoting)
                expected = [r for r in csv.reader(io.StringIO(text, newline=""), delimiter=separator) if r]
                run = subprocess.run(sys.argv[1:] + [separator], input=text.encode(), capture_output=True)
                actual = [json.loads(line) for line in run.stdout.decode().split("\n")[:-1]]
                if actual != expected or run.returncode != 0:
                    row = next((i for i, pair in enumerate(zip(actual, expected)) if pair[0] != pair[1]), -1)
                    sys.exit(f"{separator!r} {line_end!r} {quoting}: record {row} of {len(expected)} differs: "
                             f"{actual[row:row + 1]} not {expected[row:row + 1]}\n{run.stderr.decode()}")


main()
