"""interrupt.py PROGRAM: interrupts long runs at many moments; none may leave a part of its files.

Every interrupted run ends by the signal and says so. A run that says it was cancelled has written nothing; while the data
are read, and when all is written, there are no files, or all.
"""
import os
import signal
import subprocess
import sys
import tempfile
import time


def run(command, delay):
    with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
        if delay is not None:
            time.sleep(delay)
            process.send_signal(signal.SIGINT)
        printed, said = process.communicate()
        return process.returncode, printed, said


def main(program):
    signal.signal(signal.SIGINT, signal.default_int_handler)  # a background job would hand down that it is ignored
    wrong = cancelled = 0
    with tempfile.TemporaryDirectory() as folder:
        data = os.path.join(folder, "data.csv")
        curves = [os.path.join(folder, name) for name in ("curve.csv", "pr.csv")]
        with open(data, "w", encoding="ascii") as text:
            text.write("state,a,b\n")
            text.writelines(f"{i * 7919 % 3 % 2},{i * 7919 % 100003},{i * 104729 % 9973}\n" for i in range(200_000))
        command = [program, "analyze", data, "--state", "state=1", "--test", "a,b", "--compare", "paired",
                   "--curve", curves[0], "--pr-curve", curves[1]]
        start = time.monotonic()
        whole = run(command, None)
        seconds = time.monotonic() - start
        complete = [os.path.getsize(curve) for curve in curves]
        moments = 24
        for moment in range(moments):
            for curve in curves:
                if os.path.exists(curve):
                    os.remove(curve)
            code, printed, said = run(command, seconds * moment / moments)
            left = sorted(os.listdir(folder))
            cancelled += code != 0
            none = left == ["data.csv"]
            everything = len(left) == 3 and [os.path.getsize(curve) for curve in curves] == complete
            says_cancelled = b"error: cancelled; nothing was written" in said
            right = {0: everything and printed == whole[1],
                     -signal.SIGINT: (none and printed == b"") if says_cancelled
                     else (none or everything) and b"error: interrupted" in said
                     or none and said == b""}  # before the program itself began
            if not right.get(code, False):
                wrong += 1
                print(f"interrupted after {moment}/{moments} of a run: exit code {code}, left {left}, {said}")
    print(f"{moments} moments, {cancelled} cancelled, {wrong} wrong")
    return 1 if wrong or not cancelled else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
