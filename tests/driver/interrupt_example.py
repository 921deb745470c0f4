"""interrupt_example.py PROGRAM: sends the example an interrupt in the middle of a run and checks how it ends."""
import signal
import subprocess
import sys

# Announces its progress in more text than a pipe holds, so that it cannot end while nobody reads.
CASES = "20000000"


def main(program):
    with subprocess.Popen([program, CASES], stdout=subprocess.PIPE, text=True) as run:
        first = run.stdout.readline()
        run.send_signal(signal.SIGINT)
        last = first
        for last in run.stdout:
            pass
    if (run.returncode, last) != (130, "cancelled, no results\n"):
        print(f"ended with {run.returncode}, last line: {last}")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
