"""What only a real process shows: its streams, and what an interrupt leaves behind."""
import os
import signal
import subprocess
import time

import pytest
from harness import CANCER, Ran

AUC = ["auc", *CANCER, "radius_mean"]


def test_output_that_cannot_be_written_is_an_error(vexroc):
    if os.path.exists("/dev/full"):
        with open("/dev/full", "wb") as full:
            vexroc.fails(4, "cannot write", *AUC, stdout=full)
    vexroc.fails(4, "cannot write", "--version", stdout=None, preexec_fn=lambda: os.close(1))


@pytest.fixture(scope="module")
def long_run(vexroc, tmp_path_factory):
    """A long run with files; its folder, and what a run gives that is interrupted after some seconds."""
    folder = tmp_path_factory.mktemp("interrupted")
    made = folder / "made"
    made.mkdir()
    with open(folder / "data.csv", "w", encoding="ascii") as text:
        text.write("state,a,b\n")
        text.writelines(f"{i * 7919 % 3 % 2},{i * 7919 % 100003},{i * 104729 % 9973}\n" for i in range(200_000))
    command = vexroc.command("analyze", "../data.csv", "--state", "state=1", "--test", "a,b", "--compare", "paired",
                             "--interval", "bca", "--replicates", "39", "--curve", "curve.csv", "--pr-curve", "pr.csv")

    def run(delay=None):
        for file in made.iterdir():
            file.unlink()
        with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, cwd=made, text=True) as process:
            if delay is not None:
                time.sleep(delay)
                process.send_signal(signal.SIGINT)
            printed, said = process.communicate()
        return Ran(process.returncode, printed, said), {file.name: file.stat().st_size for file in made.iterdir()}
    return run


def test_an_interrupted_run_leaves_no_part_of_its_files(long_run):
    """It ends by the signal and says so. One that says it was cancelled has written nothing; while the data are read,
    and when all is written, there are no files, or all."""
    start = time.monotonic()
    whole, every_file = long_run()
    seconds = time.monotonic() - start
    assert whole.code == 0 and len(every_file) == 2
    interrupted, moments = 0, 24
    for moment in range(moments):
        ran, files = long_run(seconds * moment / moments)
        interrupted += ran.code != 0
        if ran.code == 0:
            right = files == every_file and ran.out == whole.out
        elif "error: cancelled; nothing was written" in ran.err:
            right = not files and not ran.out
        elif "error: interrupted" in ran.err:
            right = files in ({}, every_file)
        else:  # before the program itself began
            right = not files and not ran.err
        assert right and ran.code in (0, -signal.SIGINT), f"after {moment}/{moments} of a run: {ran}, left {files}"
    assert interrupted
