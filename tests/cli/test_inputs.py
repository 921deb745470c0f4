"""One table in every form that the program reads gives the same bytes of results.

The PostgreSQL server is one of the tests' own, started from Debian's package and stopped at the end.
"""
import bz2
import contextlib
import gzip
import math
import os
import random
import re
import signal
import sqlite3
import subprocess
import sys
import tempfile
import time

import pytest
from harness import ROOT, as_csv

sys.path.insert(0, str(ROOT / "tests/support"))
import postgres  # noqa: E402

STRANGE = 'a "b`;\'c'  # a name that must do no harm
NEWLINE = "x\ny"
HEADER = ["state", "site", STRANGE, "count", NEWLINE, "word"]
QUESTIONS = [
    ["auc", "--state", "state=ill", "--test", "count", "--test", '"a ""b`;\'c"'],
    ["auc", "--state", "state=ill", "--test", NEWLINE, "--format", "csv"],
    ["compare", "--state", "state=ill", "--test", "count", "--test", NEWLINE],
    ["compare", "--state", "state=ill", "--test", "count", "--group", "site=2,3"],
    ["curve", "--state", "site=2.0", "--negative", "others", "--test", "count"],
    ["pr", "--state", "state=ill", "--test", NEWLINE, "--format", "csv"],
    ["analyze", "--state", "state=ill", "--test", "all", "--group", "site", "--cut", "2"],
    ["analyze", "--state", "state=ill", "--test", "count", "--by", "site", "--format", "csv"],
    ["columns"],
    ["columns", "--format", "csv"],
    ["auc", "--state", "state=ill", "--test", "cuont"],
]
QUESTION = ["--state", "state=ill", "--test", "count"]


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


def quoted(name):
    return '"' + name.replace('"', '""') + '"'


def write_sqlite(path, types, value=lambda cell: cell):
    with contextlib.closing(sqlite3.connect(path)) as connection, connection:
        columns = ", ".join(f"{quoted(name)} {kind}" for name, kind in zip(HEADER, types))
        connection.execute(f"CREATE TABLE cases ({columns})")
        connection.executemany("INSERT INTO cases VALUES (?, ?, ?, ?, ?, ?)",
                               ([value(cell) for cell in row] for row in rows()))
    return path


def answers(vexroc, source, name, data=None):
    """All that the questions print, with one name for the source and for places in it."""
    places = {str(name): "SOURCE", "SOURCE, line 1": "SOURCE", "the query": "it", "table 'cases'": "it",
              "the header": "it"}
    said = []
    for question in QUESTIONS:
        ran = vexroc(question[0], *source, *question[1:], data=data)
        text = f"{question}: {ran.code} {ran.out} {ran.err}"
        text = re.sub("vexroc auc .* --state", "vexroc auc SOURCE --state", text)
        for place, word in places.items():
            text = text.replace(place, word)
        said.append(text)
    return said


@pytest.fixture(scope="module")
def plain(tmp_path_factory):
    file = tmp_path_factory.mktemp("inputs") / "plain.csv"
    file.write_bytes(as_csv(HEADER, *rows()))
    return file


@pytest.fixture(scope="module")
def expected(vexroc, plain):
    return answers(vexroc, [plain], plain)


@pytest.fixture(scope="module")
def numbers(plain):
    return write_sqlite(plain.with_name("numbers.db"), ["TEXT", "INTEGER", "REAL", "INTEGER", "REAL", "TEXT"])


def test_text_may_be_packed_and_come_on_standard_input(vexroc, plain, expected):
    data = plain.read_bytes()
    packed = plain.with_name("packed")
    packed.write_bytes(bz2.compress(data[:5000]) + bz2.compress(data[5000:]))
    assert answers(vexroc, [packed], packed) == expected
    for content in (data, gzip.compress(data)):
        assert answers(vexroc, ["-"], "standard input", content) == expected


def test_plain_text_loads_no_library_that_it_does_not_need(vexroc):
    loaded = vexroc.done(env={**os.environ, "LD_TRACE_LOADED_OBJECTS": "1"})
    assert "libvexrocproc" in loaded and not re.search("libpq|libarchive|libz", loaded)


def test_a_sqlite_database_answers_like_the_text(vexroc, plain, numbers, expected):
    texts = write_sqlite(plain.with_name("texts.db"), ["TEXT"] * len(HEADER),
                         lambda cell: "" if cell is None else str(cell))
    for database in (numbers, texts):
        assert answers(vexroc, ["--sqlite", database, "--table", "cases"], database) == expected
    query = ["--sqlite", numbers, "--query", "SELECT * FROM cases; -- all"]
    assert answers(vexroc, query, numbers) == expected


def test_a_wrong_source_or_query_is_told(vexroc, plain, numbers):
    for choice, code, message in [
            (["--table", "Case"], 3, "no table 'Case'; did you mean 'cases'?"),
            (["--table", 'x"; DROP TABLE cases; --'], 3, "its tables are 'cases'"),
            (["--query", "SELEC 1"], 3, 'not understood: near "SELEC": syntax error'),
            (["--query", "SELECT 1; SELECT 2"], 3, "one statement"),
            (["--query", "DELETE FROM cases"], 3, "changes nothing"),
            (["--query", "SELECT * FROM cases WHERE 0"], 3, "returns no rows"),
            (["--query", "SELECT state, word AS count FROM cases"], 3, "row 1, column 'count': 'one' is neither"),
            (["--query", "SELECT state, 1 AS count, 2 AS count FROM cases"], 3, "more than once"),
            ([], 2, "needs --table NAME or --query SQL"),
            (["--table", "cases", "--query", "SELECT 1"], 2, "give one of them"),
            ([plain, "--table", "cases"], 2, "name one of them")]:
        vexroc.fails(code, message, "auc", "--sqlite", numbers, *choice, *QUESTION)
    for source, code, message in [
            (["--sqlite", plain, "--table", "cases"], 3, "not a database"),
            (["--sqlite", plain.with_name("none.db"), "--table", "cases"], 3, "No such file"),
            ([plain, "--table", "cases"], 2, "--table names a table of --sqlite"),
            ([plain, "--query", "SELECT 1"], 2, "--query asks a database"),
            ([], 2, "FILE is required")]:
        vexroc.fails(code, message, "auc", *source, *QUESTION)


@pytest.fixture(scope="module")
def server():
    """A server with the table; in a folder that an unprivileged user may enter."""
    if postgres.programs() is None:
        pytest.skip("there is no PostgreSQL server to start (Debian package postgresql)")
    for variable in [name for name in os.environ if name.startswith("PG")]:
        del os.environ[variable]
    with tempfile.TemporaryDirectory() as folder, postgres.Server(folder) as running:
        kinds = ["text", "smallint", "float8", "bigint", "numeric", "varchar(20)"]
        columns = ", ".join(f"{quoted(name)} {kind}" for name, kind in zip(HEADER, kinds))
        running.sql(f"CREATE TYPE mood AS ENUM ('ill', 'well'); CREATE TABLE cases ({columns});"
                    f"CREATE SEQUENCE numbers;\nCOPY cases FROM STDIN (FORMAT csv);\n"
                    + as_csv(*rows()).decode().replace("\r\n", "\n") + "\\.\n")
        yield running


@pytest.mark.parametrize("query", ["SELECT * FROM cases", "TABLE cases ;\n"])
def test_postgres_answers_like_the_text(vexroc, server, expected, query):
    source = ["--postgres", server.connection, "--query", query]
    assert answers(vexroc, source, "PostgreSQL database postgres") == expected


def test_postgres_types_become_numbers(vexroc, server):
    cells = [("1.50::numeric", "1.5"), ("-12345678901234567890.000100::numeric", "-12345678901234567168"),
             ("1e-20::numeric", "1e-20"), ("40000::numeric", "40000"), ("0.00012::numeric", "0.00012"),
             ("'Infinity'::numeric", "inf"), ("'-Infinity'::float4", "-inf"), ("(-7)::int2", "-7"),
             ("(-70000)::int4", "-70000"), ("9007199254740993::int8", "9007199254740992"),
             ("0.1::float4", "0.10000000149011612"), ("0.1::float8", "0.1"), ("true", "1"), ("false", "0")]
    cells += [(missing, "NA")
              for missing in ("NULL::int4", "'NaN'::numeric", "'NaN'::float8", "'NA'::text", "''")]
    query = "SELECT " + ", ".join(f"{sql} AS c{i}" for i, (sql, _) in enumerate(cells))
    printed = vexroc.done("columns", "--postgres", server.connection, "--query", query, "--format", "csv")
    assert [line.split(",")[5] for line in printed.splitlines()[1:]] == [value for _, value in cells]


def test_postgres_types_become_labels(vexroc, server):
    for sql, label in [("'ill'::mood", "ill"), ("'ill'::char(9)", "ill"), ("date '2026-01-02'", "2026-01-02"),
                       ("true", "true"), ("12345678901234567890.10::numeric", "12345678901234567890.10"),
                       ("9007199254740993", "9007199254740993"), ("2.5::float4", "2.5")]:
        vexroc.done("auc", "--postgres", server.connection, "--state", f"s={label}", "--test", "t", "--query",
                    f"SELECT {sql} AS s, 1 AS t")


def test_an_interrupt_ends_the_query(vexroc, server):
    sleeping = "SELECT count(*) FROM pg_stat_activity WHERE state = 'active' AND query LIKE 'COPY%'"

    def wait_for(count):
        end = time.monotonic() + 10
        while server.sql(sleeping) != count:
            assert time.monotonic() < end
            time.sleep(0.05)
    command = vexroc.command("columns", "--postgres", server.connection, "--query", "SELECT pg_sleep(600)::text")
    with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
        wait_for("1")
        process.send_signal(signal.SIGINT)
        said = process.communicate(timeout=30)[1].decode()
    assert process.returncode == -signal.SIGINT and "cancelled" in said
    wait_for("0")


def test_postgres_says_what_is_wrong_and_changes_nothing(vexroc, server):
    for query, message in [
            ("SELEC 1", 'syntax error at or near "SELEC"'),
            ("SELECT 1; SELECT 2", "multiple commands"),
            ("DELETE FROM cases", "changes nothing"),
            ("DELETE FROM cases RETURNING state, count", "syntax error"),
            ("SELECT state, nextval('numbers') AS count FROM cases", "read-only"),
            ("SELECT state, 1 / (count - count) AS count FROM cases", "division by zero"),
            ("SELECT * FROM cases WHERE false", "returns no rows"),
            ("SELECT state, date '2026-01-02' AS count FROM cases",
             "row 1, column 'count': '2026-01-02' is neither a number nor missing; its type is date")]:
        vexroc.fails(3, message, "auc", "--postgres", server.connection, "--query", query, *QUESTION)
    assert server.sql("SELECT count(*) FROM cases") == "400"


def test_a_connection_that_cannot_be_is_an_error(vexroc, server):
    query = ["--query", "SELECT 1"]
    for connection, choice, code, message in [
            (server.connection + " password=secret", query, 2, "PGPASSWORD"),
            ("postgresql://me:secret@db/study", query, 2, "~/.pgpass"),
            ("host=db password = very secret", query, 2, "expected the name of a database"),
            (f"host={server.folder}/none dbname=x", query, 3, "cannot connect to PostgreSQL"),
            (server.connection, [], 2, "needs --query SQL")]:
        vexroc.fails(code, message, "auc", "--postgres", connection, *choice, *QUESTION)
