"""What only the program has: --strict, --quiet, its first step, and one question asked by two commands."""
import csv
import io
import shlex

from table import about


def lines_of(ran):
    return [line for line in ran.stderr.splitlines() if line]


@about(lambda case: case.refused is None and not case.shows)
def test_strict_and_quiet(case, door):
    """--strict fails on a caution and on a missing result only, --quiet keeps cautions only; a line for each kind."""
    arguments = door.arguments(case)
    plain, quiet, strict = (door.run(case, *arguments, *more)
                            for more in ((), ("--quiet", "--progress", "always"), ("--strict",)))
    cautions = {*case.cautions, *case.missed}
    assert (plain.returncode, quiet.returncode, strict.returncode) == (0, 0, 1 if cautions else 0), strict.stderr
    assert plain.stdout == quiet.stdout == strict.stdout
    assert strict.stderr == plain.stderr + bool(cautions) * "vexroc: error: --strict: there is a caution\n"
    assert len(lines_of(quiet)) == len(cautions), quiet.stderr
    assert len(lines_of(plain)) >= len(cautions) + len(case.notes), plain.stderr
    if case.clean:
        assert len(lines_of(plain)) <= 1, plain.stderr
    width = max(len(line) for line in plain.stdout.splitlines())
    assert width <= 80 or case.file, plain.stdout


@about(lambda case: case.refused is not None)
def test_ways_on(case, door):
    """The commands that an error shows do work."""
    for line in door.run(case, *door.arguments(case)).stderr.splitlines():
        if line.startswith("  vexroc "):
            words = shlex.split(line)
            ran = door.run(case, words[1], *words[3:])
            assert words[2] == str(door.folder / "data.csv") and ran.returncode == 0, line + ran.stderr


@about(lambda case: case.clean and not (case.negative or case.others))
def test_columns(case, door):
    """The first step ends with a command that works, where a column has two values."""
    first = door.run(case, "columns", *case.options)
    assert (first.returncode, first.stderr) == (0, "")
    command = first.stdout.splitlines()[-1]
    assert command.strip().startswith("vexroc "), first.stdout
    words = shlex.split(command)
    assert words[2] == str(door.folder / "data.csv")
    ran = door.run(case, words[1], *words[3:])
    assert ran.returncode == 0, ran.stderr


@about(lambda case: case.shows)
def test_shown(case, door):
    for word in case.shows:
        assert word in door.run(case, "columns").stdout


@about(lambda case: case.refused is None and (case.compare or case.group) and not case.command)
def test_compare(case, door):
    """analyze and compare answer one question alike, and an area is the one that it is alone."""
    full = door.answer(case)
    options = door.arguments(case)[1:]
    if case.group:
        at = options.index("--group")
        values = options[at + 3]
        options[at:at + 6] = ["--group", f"{case.group[0]}={values}"]
    else:
        at = options.index("--compare")
        del options[at:at + 2]
    document = door.document(case, ["compare", *options])[1]
    for one, other in zip(full.pairs, document["results"]["comparisons"], strict=True):
        for name in ("difference", "z", "p_value", "lower", "upper"):
            assert one[name] == other[name]
    if case.alike:
        alone = door.document(case, ["auc", *options])[1]["results"]["areas"]
        for area, same in zip(full.areas, alone, strict=True):
            assert all(area[name] == same[name] for name in area.keys() & same.keys())


@about(lambda case: case.interpolated)
def test_interpolated_points_have_no_cut_off(case, door):
    points = list(csv.DictReader(io.StringIO(door.run(case, *door.arguments(case), "--format", "csv").stdout)))
    drawn = [point["interpolated"] in ("1", "true", "yes") for point in points]
    assert any(drawn) and [point["cut_off"] == "" for point in points] == drawn, points[:5]
