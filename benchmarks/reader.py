#!/usr/bin/env python3
"""reader.py PROGRAM [ROWS]: how fast the program reads a table of five columns, and what it keeps in memory.

Writes the table (state, site, three measurements) into a temporary folder in every form of a file that the program
reads, runs `vexroc auc` with one, two and three test columns, and prints the seconds of processor time, rows per
second, and bytes per row at the peak of the process. The analysis itself is part of all figures. PostgreSQL, where it
is installed, works beside the program: there the seconds are those that pass.
"""
import gzip
import os
import random
import shutil
import sqlite3
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../tests/support"))
import postgres  # noqa: E402

STATES = ("well", "ill")
TESTS = ("score", "marker", "age")
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


def fill(server, csv):
    """The table in a server's database, and the arguments that name it."""
    server.sql("CREATE TABLE cases (state text, site text, score float8, marker float8, age int)")
    with open(csv, encoding="ascii") as text:
        subprocess.run(["psql", "-Xq", server.connection, "-c", "COPY cases FROM STDIN (FORMAT csv, HEADER)"],
                       stdin=text, check=True)
    return ["--postgres", server.connection, "--query", "SELECT * FROM cases"]


def measure(program, source, tests):
    """Seconds of processor time, seconds that passed, and peak bytes of one run."""
    command = [program, "auc", *source, "--state", "state=ill", "--test", ",".join(tests)]
    start = time.perf_counter()
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE)
    said = process.stderr.read()
    _, status, usage = os.wait4(process.pid, 0)
    if status != 0:
        sys.exit(f"{' '.join(command)}: {said.decode()}")
    return usage.ru_utime + usage.ru_stime, time.perf_counter() - start, usage.ru_maxrss * 1024


def measure_form(program, form, source, count):
    """Prints a line for one, two and three tests: the best of three runs."""
    for used in (1, 2, 3):
        runs = [measure(program, source, TESTS[:used]) for _ in range(3)]
        seconds = min(elapsed if form == "PostgreSQL" else processor for processor, elapsed, _ in runs)
        peak = min(peak for _, _, peak in runs)
        print(f"| {form} | {used} | {seconds:.2f} | {count / seconds:,.0f} | {peak / count:.1f} |", flush=True)


def main(program, count="10000000"):
    count = int(count)
    with tempfile.TemporaryDirectory() as folder:
        print("| form | tests | seconds | rows/s | bytes a row |\n|---|---|---|---|---|")
        forms = write_forms(folder, count)
        for form, source in forms:
            measure_form(program, form, source, count)
        if postgres.programs():
            with postgres.Server(folder) as server:
                measure_form(program, "PostgreSQL", fill(server, forms[0][1][0]), count)


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
