"""The program as the tests run it."""
import csv
import io
import json
import pathlib
import subprocess
from typing import NamedTuple

import jsonschema

ROOT = pathlib.Path(__file__).resolve().parents[2]
DATA = ROOT / "examples/data"
CANCER = [DATA / "breast_cancer.csv", "--state", "diagnosis=malignant", "--test"]
SCHEMA = jsonschema.Draft202012Validator(json.loads((ROOT / "docs/vexroc.schema.json").read_text(encoding="utf-8")))


class Ran(NamedTuple):
    """How a run ended and what it printed; bytes that are no UTF-8 stand as lone surrogates."""
    code: int
    out: str
    err: str


def as_csv(*rows):
    """The rows as bytes of CSV."""
    text = io.StringIO()
    csv.writer(text).writerows(rows)
    return text.getvalue().encode()


def no_number(word):
    raise AssertionError(f"{word} is not JSON")


class Program:
    """The built program; called with arguments, it runs."""

    def __init__(self, path):
        self.path = pathlib.Path(path).resolve()

    def command(self, *args):
        return [str(part) for part in (self.path, *args)]

    def __call__(self, *args, data=None, **options):
        streams = {} if "stdin" in options else {"input": data}
        result = subprocess.run(self.command(*args), **{"stdout": subprocess.PIPE, **streams, **options},
                                stderr=subprocess.PIPE, check=False)
        return Ran(result.returncode, *((text or b"").decode(errors="surrogateescape")
                                        for text in (result.stdout, result.stderr)))

    def done(self, *args, **options):
        """What a run printed that went well."""
        ran = self(*args, **options)
        assert ran.code == 0, ran.err
        return ran.out

    def json(self, *args, **options):
        """The document that a run printed, in UTF-8 and as the documented schema has it."""
        document = json.loads(self.done(*args, "--format", "json", **options).encode(), parse_constant=no_number)
        SCHEMA.validate(document)
        return document

    def fails(self, code, message, *args, **options):
        """A run that ends with this exit code, says this, and prints no result."""
        ran = self(*args, **options)
        assert (ran.code, ran.out) == (code, "") and message in ran.err, ran
