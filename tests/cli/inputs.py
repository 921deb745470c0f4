"""inputs.py PROGRAM files|postgres: one table in every form that the program reads gives the same bytes of results.

The forms of `postgres` come from a server of its own, started from Debian's package in a temporary folder as an
unprivileged user and stopped at the end; where there is none, the test says so and is skipped.
"""
import bz2
import contextlib
import csv
import difflib
import gzip
import io
import lzma
import math
import os
import random
import shutil
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "../support"))
import postgres  # noqa: E402

SKIPPED = 77
STRANGE = 'a "b`;\'c'  # a name that must do no harm
NEWLINE = "x\ny"
HEADER = ["state", "site", STRANGE, "count", NEWLINE, "word"]
QUESTIONS = [
    ["auc", "--state", "state=ill", "--test", "count", "--test", '"a ""b`;\'c"'],
    ["auc", "--state", "state=ill", "--test", NEWLINE, "--format", "csv"],
    ["compare", "--state", "state=ill", "--test", "count", "--test", NEWLINE],
    ["compare", "--state", "state=ill", "--test", "count", "--group", "site=2,3"],
    ["curve", "--state", "site=2.0", "--test", "count"],
    ["pr", "--state", "state=ill", "--test", NEWLINE, "--format", "csv"],
    ["analyze", "--state", "state=ill", "--test", "all", "--group", "site", "--cut", "2"],
    ["analyze", "--state", "state=ill", "--test", "count", "--by", "site", "--format", "csv"],
    ["columns"],
    ["columns", "--format", "csv"],
    ["auc", "--state", "state=ill", "--test", "cuont"],
]


def rows():
    draw = random.Random(6)
    for i in range(400):
        ill = draw.random() < 0.4
        yield [None if i % 37 == 0 else "ill" if ill else "well",
               None if i % 41 == 0 else i % 3 + 1,
               None if i % 29 == 0 else math.inf if i % 50 == 0 else draw.gauss(ill, 1.0),
               None if i % 31 == 0 else round(draw.gauss(5 * ill, 4.0)),
               None if i % 23 == 0 else round(draw.gauss(ill / 2, 1.0), 3),
               draw.choice(["one", 'two "2"', "drei\n3"])]


class Check:
    """Runs the program and counts what went wrong."""

    def __init__(self, program):
        self.program, self.done, self.wrong = program, 0, 0

    def run(self, arguments, standard_input=None):
        return subprocess.run([self.program, *arguments], stdin=standard_input, capture_output=True, check=False)

    def answers(self, source, name):
        """All that the questions print, with one name for the source and for places in it."""
        places = {name: "SOURCE", "SOURCE, line 1": "SOURCE", "the query": "it", "table 'cases'": "it",
                  "the header": "it"}
        for question in QUESTIONS:
            with open(source[1:], "rb") if source.startswith("<") else contextlib.nullcontext() as standard_input:
                arguments = ["-"] if standard_input else source.split("|")
                result = self.run([question[0], *arguments, *question[1:]], standard_input)
            text = f"{result.returncode} {result.stdout.decode()} {result.stderr.decode()}"
            for place, word in places.items():
                text = text.replace(place, word)
            yield question, text

    def same(self, reference, forms):
        expected = list(self.answers(*reference))
        for source, name in forms:
            for (question, text), (_, right) in zip(self.answers(source, name), expected):
                differences = [line for line in difflib.unified_diff(right.splitlines(), text.splitlines(), n=0)]
                self.expect(text == right, f"{source} {question}: " + "\n".join(differences[:8]))

    def ends(self, arguments, code, text):
        result = self.run(arguments)
        said = result.stderr.decode()
        self.expect(result.returncode == code and text in said and not result.stdout,
                    f"{arguments}: {result.returncode} {said}, not {code} {text}")

    def expect(self, right, message):
        self.done += 1
        if not right:
            self.wrong += 1
            print(f"FAILED: {message}")

    def code(self):
        print(f"{self.done} checks, {self.wrong} wrong")
        return 1 if self.wrong or not self.done else 0


def write_csv(path):
    with open(path, "w", encoding="utf-8", newline="") as text:
        writer = csv.writer(text)
        writer.writerow(HEADER)
        writer.writerows(rows())
    return path, path


def quoted(name):
    return '"' + name.replace('"', '""') + '"'


def write_sqlite(path, types, value=lambda cell: cell):
    with contextlib.closing(sqlite3.connect(path)) as connection, connection:
        columns = ", ".join(f"{quoted(name)} {kind}" for name, kind in zip(HEADER, types))
        connection.execute(f"CREATE TABLE cases ({columns})")
        connection.executemany("INSERT INTO cases VALUES (?, ?, ?, ?, ?, ?)",
                               ([value(cell) for cell in row] for row in rows()))
    return path


def check_files(check, folder):
    plain = write_csv(os.path.join(folder, "plain.csv"))
    with open(plain[0], "rb") as text:
        data = text.read()
    packed = os.path.join(folder, "packed")  # recognised by its content, not its name
    for module in (gzip, lzma, bz2):
        with open(packed + module.__name__, "wb") as file:
            file.write(module.compress(data[:5000]) + module.compress(data[5000:]))
    numbers = write_sqlite(os.path.join(folder, "numbers.db"), ["TEXT", "INTEGER", "REAL", "INTEGER", "REAL", "TEXT"])
    texts = write_sqlite(os.path.join(folder, "texts.db"), ["TEXT"] * len(HEADER),
                         lambda cell: "" if cell is None else str(cell))
    forms = [(packed + "gzip", packed + "gzip"), (packed + "lzma", packed + "lzma"), (packed + "bz2", packed + "bz2"),
             ("<" + plain[0], "standard input"), ("<" + packed + "gzip", "standard input"),
             (f"--sqlite|{numbers}|--table|cases", numbers), (f"--sqlite|{texts}|--table|cases", texts),
             (f"--sqlite|{numbers}|--query|SELECT * FROM cases; -- all", numbers)]
    if shutil.which("zstd"):
        subprocess.run(["zstd", "-q", plain[0], "-o", packed + ".zst"], check=True)
        forms.append((packed + ".zst", packed + ".zst"))
    else:
        print("zstd is not installed: its form is left out")
    check.same(plain, forms)
    loaded = subprocess.run([check.program], env=os.environ | {"LD_TRACE_LOADED_OBJECTS": "1"}, capture_output=True,
                            check=True).stdout.decode()
    check.expect("libvexrocproc" in loaded and not any(name in loaded for name in ("libpq", "libarchive", "libz")),
                 f"libraries that a run on plain text does not need: {loaded}")
    question = ["--state", "state=ill", "--test", "count"]
    for arguments, code, text in [
            (["--sqlite", numbers, "--table", "Case"], 3, "no table 'Case'; did you mean 'cases'?"),
            (["--sqlite", numbers, "--table", 'x"; DROP TABLE cases; --'], 3, "its tables are 'cases'"),
            (["--sqlite", numbers, "--query", "SELEC 1"], 3, 'not understood: near "SELEC": syntax error'),
            (["--sqlite", numbers, "--query", "SELECT 1; SELECT 2"], 3, "one statement"),
            (["--sqlite", numbers, "--query", "DELETE FROM cases"], 3, "changes nothing"),
            (["--sqlite", numbers, "--query", "SELECT * FROM cases WHERE 0"], 3, "returns no rows"),
            (["--sqlite", numbers, "--query", "SELECT state, word AS count FROM cases"], 3,
             "row 1, column 'count': 'one' is neither"),
            (["--sqlite", numbers, "--query", "SELECT state, 1 AS count, 2 AS count FROM cases"], 3, "more than once"),
            (["--sqlite", plain[0], "--table", "cases"], 3, "not a database"),
            (["--sqlite", folder + "/none.db", "--table", "cases"], 3, "No such file"),
            (["--sqlite", numbers], 2, "needs --table NAME or --query SQL"),
            (["--sqlite", numbers, "--table", "cases", "--query", "SELECT 1"], 2, "give one of them"),
            ([plain[0], "--sqlite", numbers, "--table", "cases"], 2, "name one of them"),
            ([plain[0], "--table", "cases"], 2, "--table names a table of --sqlite"),
            ([plain[0], "--query", "SELECT 1"], 2, "--query asks a database"),
            ([], 2, "FILE is required")]:
        check.ends(["auc", *arguments, *question], code, text)


def fill_postgres(server):
    kinds = ["text", "smallint", "float8", "bigint", "numeric", "varchar(20)"]
    columns = ", ".join(f"{quoted(name)} {kind}" for name, kind in zip(HEADER, kinds))
    data = io.StringIO()
    csv.writer(data, lineterminator="\n").writerows(rows())
    server.sql(f"CREATE TYPE mood AS ENUM ('ill', 'well'); CREATE TABLE cases ({columns}); CREATE SEQUENCE numbers;\n"
               f"COPY cases FROM STDIN (FORMAT csv);\n{data.getvalue()}\\.\n")


def check_types(check, server):
    """(SQL, smallest or the text itself as the program sees it)"""
    cells = [("1.50::numeric", "1.5"), ("-12345678901234567890.000100::numeric", "-12345678901234567168"),
             ("1e-20::numeric", "1e-20"), ("40000::numeric", "40000"), ("0.00012::numeric", "0.00012"),
             ("'Infinity'::numeric", "inf"), ("'-Infinity'::float4", "-inf"), ("(-7)::int2", "-7"),
             ("(-70000)::int4", "-70000"), ("9007199254740993::int8", "9007199254740992"),
             ("0.1::float4", "0.10000000149011612"), ("0.1::float8", "0.1"), ("true", "1")]
    for missing in ("NULL::int4", "'NaN'::numeric", "'NaN'::float8", "'NA'::text", "''"):
        cells.append((missing, "NA"))
    query = "SELECT " + ", ".join(f"{sql} AS c{i}" for i, (sql, _) in enumerate(cells))
    lines = check.run(["columns", "--postgres", server.connection, "--query", query, "--format", "csv"])
    seen = [line.split(",")[5] for line in lines.stdout.decode().splitlines()[1:]]
    check.expect(seen == [value for _, value in cells], f"types: {seen} {lines.stderr.decode()}")
    for sql, label in [("'ill'::mood", "ill"), ("'ill'::char(9)", "ill"), ("date '2026-01-02'", "2026-01-02"),
                       ("true", "true"), ("12345678901234567890.10::numeric", "12345678901234567890.10"),
                       ("9007199254740993", "9007199254740993"), ("2.5::float4", "2.5")]:
        result = check.run(["auc", "--postgres", server.connection, "--state", f"s={label}", "--test", "t", "--query",
                            f"SELECT {sql} AS s, 1 AS t"])
        check.expect(result.returncode == 0, f"label {sql}: {result.stderr.decode()}")


def check_interrupt(check, server):
    with subprocess.Popen([check.program, "columns", "--postgres", server.connection, "--query",
                           "SELECT pg_sleep(600)::text"], stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
        sleeping = "SELECT count(*) FROM pg_stat_activity WHERE state = 'active' AND query LIKE 'COPY%'"
        for _ in range(200):
            if server.sql(sleeping) == "1":
                break
            time.sleep(0.05)
        process.send_signal(signal.SIGINT)
        said = process.communicate(timeout=30)[1].decode()
    check.expect(process.returncode == -signal.SIGINT and "cancelled" in said, f"interrupt: {process.returncode} {said}")
    time.sleep(0.2)
    check.expect(server.sql(sleeping) == "0", "the query is still active after an interrupt")


def check_postgres(check, folder):
    plain = write_csv(os.path.join(folder, "plain.csv"))
    with postgres.Server(folder) as server:
        fill_postgres(server)
        source = "PostgreSQL database postgres"
        check.same(plain, [(f"--postgres|{server.connection}|--query|{query}", source)
                           for query in ("SELECT * FROM cases", "TABLE cases ;\n")])
        check_types(check, server)
        check_interrupt(check, server)
        for connection, query, code, text in [
                (server.connection + " password=secret", "SELECT 1", 2, "PGPASSWORD"),
                ("postgresql://me:secret@db/study", "SELECT 1", 2, "~/.pgpass"),
                ("host=db password = very secret", "SELECT 1", 2, "expected the name of a database"),
                (f"host={folder}/none dbname=x", "SELECT 1", 3, "cannot connect to PostgreSQL"),
                (server.connection, "SELEC 1", 3, 'syntax error at or near "SELEC"'),
                (server.connection, "SELECT 1; SELECT 2", 3, "multiple commands"),
                (server.connection, "DELETE FROM cases", 3, "changes nothing"),
                (server.connection, "DELETE FROM cases RETURNING state, count", 3, "syntax error"),
                (server.connection, "SELECT state, nextval('numbers') AS count FROM cases", 3, "read-only"),
                (server.connection, "SELECT state, 1 / (count - count) AS count FROM cases", 3, "division by zero"),
                (server.connection, "SELECT * FROM cases WHERE false", 3, "returns no rows"),
                (server.connection, "SELECT state, date '2026-01-02' AS count FROM cases", 3,
                 "row 1, column 'count': '2026-01-02' is neither a number nor missing; its type is date")]:
            check.ends(["auc", "--postgres", connection, "--query", query, "--state", "state=ill", "--test", "count"],
                       code, text)
        check.expect(server.sql("SELECT count(*) FROM cases") == "400", "the table has changed")
        check.ends(["auc", "--postgres", server.connection, "--state", "a=1", "--test", "b"], 2, "needs --query SQL")


def main(program, forms):
    for variable in [name for name in os.environ if name.startswith("PG")]:
        del os.environ[variable]
    check = Check(program)
    with tempfile.TemporaryDirectory() as folder:
        if forms == "files":
            check_files(check, folder)
            return check.code()
        if postgres.programs() is None:
            print("skipped: there is no PostgreSQL server to start (Debian package postgresql)")
            return SKIPPED
        check_postgres(check, folder)
    return check.code()


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
