"""pytest tests/misleading --door=program --binary=build/release/cli/vexroc: the table, asked at one door.

For --door=c the binary is the library; for python and r it is not needed, as the installed package is asked.
"""
import pytest
import table


def pytest_addoption(parser):
    parser.addoption("--door", required=True, choices=table.DOORS)
    parser.addoption("--binary", help="the program or the library")


def pytest_generate_tests(metafunc):
    door = metafunc.config.getoption("--door")
    if "case" in metafunc.fixturenames:
        wanted = getattr(metafunc.function, "wanted", lambda case: True)
        cases = [case for case in table.cases_of(door) if wanted(case)]
        metafunc.parametrize("case", cases, ids=lambda case: case.name)


@pytest.fixture(scope="session")
def door(pytestconfig, tmp_path_factory):
    name, binary = pytestconfig.getoption("--door"), pytestconfig.getoption("--binary")
    folder = tmp_path_factory.mktemp(name)
    if name == "program":
        from program import Program
        return Program(binary, folder)
    if name == "c":
        from c_handle import Handle
        return Handle(binary)
    if name == "python":
        from python import Python
        return Python()
    from r import R
    return R(folder, list(table.cases_of("r")))
