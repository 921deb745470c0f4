#!/usr/bin/env python3
"""reader.py PROGRAM [ROWS]: how fast the program reads a table of five columns, and what it keeps in memory.

Writes the table (state, site, three measurements) into a temporary folder in every form of a file that the program
reads, runs `vexroc auc` with one, two and three test columns, and prints the seconds of processor time, rows per
second, and bytes per row at the peak of the process. The analysis itself is part of all figures.
"""
import gzip
import os
import random
import shutil
import sqlite3
import subprocess
import sys
import tempfile

STATES = ("well", "ill")
SITES = ("north", "east", "south", "west", "centre")


def rows(count):
    draw = random.Random(20)
    for _ in range(count):
        ill = draw.random() < 0.1
        shift = 1.0 if ill else 0.0
        yield (STATES[ill], SITES[int(draw.random() * 5)], round(draw.gauss(shift, 1.0), 6),
               round(draw.gauss(shift / 2, 1.0), 4), round(draw.gauss(50, 10)))


def write_forms(folder, count):
    """(form, arguments that name it) of one table in every form."""
    csv, database = os.path.join(folder, f"{count}.csv"), os.path.join(folder, f"{count}.db")
    with open(csv, "w", encoding="ascii", buffering=1 << 20) as text:
        text.write("state,site,score,marker,age\n")
        text.writelines(f"{state},{site},{score},{marker},{age}\n" for state, site, score, marker, age in rows(count))
    with open(csv, "rb") as plain, gzip.open(csv + ".gz", "wb", compresslevel=1) as packed:
        shutil.copyfileobj(plain, packed, 1 << 20)
    forms = [("CSV", [csv]), ("CSV, gzip", [csv + ".gz"])]
    if shutil.which("zstd"):
        subprocess.run(["zstd", "-q", "-1", csv], check=True)
        forms.append(("CSV, zstd", [csv + ".zst"]))
    with sqlite3.connect(database) as connection:
        connection.execute("CREATE TABLE cases (state TEXT, site TEXT, score REAL, marker REAL, age INTEGER)")
        connection.executemany("INSERT INTO cases VALUES (?, ?, ?, ?, ?)", rows(count))
    return forms + [("SQLite", ["--sqlite", database, "--table", "cases"])]


def measure(program, source, tests):
    """Seconds of processor time and peak bytes of one run."""
    command = [program, "auc", *source, "--state", "state=ill", "--test", ",".join(tests)]
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    said = process.stderr.read()
    _, status, usage = os.wait4(process.pid, 0)
    if status != 0:
        sys.exit(f"{' '.join(command)}: {said.decode()}")
    return usage.ru_utime + usage.ru_stime, usage.ru_maxrss * 1024


def main(program, count="10000000"):
    count = int(count)
    tests = ("score", "marker", "age")
    with tempfile.TemporaryDirectory() as folder:
        print("| form | tests | seconds | rows/s | bytes a row |\n|---|---|---|---|---|")
        for form, source in write_forms(folder, count):
            for used in (1, 2, 3):
                seconds, peak = min(measure(program, source, tests[:used]) for _ in range(3))
                print(f"| {form} | {used} | {seconds:.2f} | {count / seconds:,.0f} | {peak / count:.1f} |",
                      flush=True)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
