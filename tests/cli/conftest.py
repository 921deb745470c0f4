"""pytest tests/cli --program build/release/cli/vexroc: the tests of the built program.

A run in which a test was skipped ends with 77, so that ctest shows it; -rs tells why.
"""
import signal

import harness
import pytest

SKIPPED = 77


def pytest_addoption(parser):
    parser.addoption("--program", required=True, help="the built vexroc")
    parser.addoption("--examples", help="the folder of the built examples of hosts")


def pytest_sessionfinish(session, exitstatus):
    skipped = session.config.pluginmanager.get_plugin("terminalreporter").stats.get("skipped")
    if skipped and exitstatus in (pytest.ExitCode.OK, pytest.ExitCode.NO_TESTS_COLLECTED):
        session.exitstatus = SKIPPED


@pytest.fixture(scope="session")
def vexroc(pytestconfig):
    signal.signal(signal.SIGINT, signal.default_int_handler)  # a background job would hand down that it is ignored
    return harness.Program(pytestconfig.getoption("--program"))
