"""pytest tests/truth --door=c --library=build/release/libvexrocproc920r.so [--binary=...] [--rounds=N --first=M]

The C door is compared with the reference, every other one with that of C, to the bit. A long run by hand: --rounds=500.
"""
import pytest
import tables
from compare import Worst

DOORS = ("c", "program", "python", "r")


def pytest_addoption(parser):
    parser.addoption("--door", required=True, choices=DOORS)
    parser.addoption("--library", required=True)
    parser.addoption("--binary", help="the program")
    parser.addoption("--rounds", type=int, default=20, help="random tables")
    parser.addoption("--first", type=int, default=0, help="number of the first one")


def pytest_generate_tests(metafunc):
    if "case" in metafunc.fixturenames:
        option = metafunc.config.getoption
        metafunc.parametrize("case", [tables.random_case(option("--first") + i) for i in range(option("--rounds"))],
                             ids=str)


@pytest.fixture(scope="session")
def library(pytestconfig):
    from doors import C
    return C(pytestconfig.getoption("--library"))


@pytest.fixture(scope="session")
def door(request, pytestconfig, library, tmp_path_factory):
    name = pytestconfig.getoption("--door")
    if name == "c":
        return library
    if name == "program":
        from doors import Program
        return Program(pytestconfig.getoption("--binary"), tmp_path_factory.mktemp(name))
    if name == "python":
        from doors import Python
        return Python()
    from doors import R
    return R(tmp_path_factory.mktemp(name), [item.callspec.params["case"] for item in request.session.items
                                             if hasattr(item, "callspec")])


@pytest.fixture(scope="session")
def worst(pytestconfig):
    pytestconfig.worst = Worst()
    return pytestconfig.worst


def pytest_terminal_summary(terminalreporter, config):
    if hasattr(config, "worst"):
        terminalreporter.write_line(config.worst.report())


@pytest.fixture
def c_only():
    """Of what is asked of the library once."""


def pytest_collection_modifyitems(config, items):
    if config.getoption("--door") != "c":
        items[:] = [item for item in items if "c_only" not in item.fixturenames]
