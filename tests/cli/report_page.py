"""report_page.py PROGRAM DATA: opens report pages in headless Chromium, driven by chromedriver, as a reader would.

Ends with 77, and says why, where the browser is absent or the program was built without the page.
"""
import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import urllib.request

PROGRAM, DATA = sys.argv[1], pathlib.Path(sys.argv[2])
FLAGS = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-sync",
         "--disable-background-networking", "--disable-component-update", "--window-size=1200,1400"]
# How many points the lines of the curves have, by the colour of the curve.
LINE_POINTS = """
const counts = {};
for (const path of document.querySelectorAll('#curves .mark-line path'))
  counts[path.getAttribute('stroke')] = (counts[path.getAttribute('stroke')] ?? 0)
    + path.getAttribute('d').split('L').length;
return counts;
"""
PANELS = """
return [...document.querySelectorAll('#curves svg')].map((svg) => {
  const {x, y, width, height} = svg.getBoundingClientRect();
  return [x, y, width, height];
});
"""
LEGEND = """
return [...document.querySelectorAll('#legend tbody tr')].map(
  (row) => [row.innerText, row.className, row.querySelector('button').getAttribute('aria-pressed')]);
"""


def skip(reason):
    print(f"skipped: {reason}")
    sys.exit(77)


class Browser:
    def __init__(self, profile):
        self.driver = subprocess.Popen(["chromedriver", "--port=0"], stdout=subprocess.PIPE, text=True)
        try:
            self.start(profile)
        except BaseException:
            self.driver.kill()
            raise

    def start(self, profile):
        started = (re.search(r"successfully on port (\d+)", line) for line in self.driver.stdout)
        port = next(found for found in started if found).group(1)
        self.base = f"http://127.0.0.1:{port}/session"
        options = {"binary": shutil.which("chromium"), "args": [*FLAGS, f"--user-data-dir={profile}"]}
        session = self.call("", {"capabilities": {"alwaysMatch": {
            "goog:chromeOptions": options, "goog:loggingPrefs": {"browser": "ALL"}}}})
        self.base += "/" + session["sessionId"]

    def call(self, path, body=None, method="POST"):
        request = urllib.request.Request(self.base + path, json.dumps(body or {}).encode(), method=method,
                                         headers={"Content-Type": "application/json"})
        with urllib.request.urlopen(request, timeout=60) as answer:
            return json.load(answer)["value"]

    def evaluate(self, script):
        return self.call("/execute/sync", {"script": script, "args": []})

    def open(self, file):
        self.call("/url", {"url": file.as_uri()})
        self.wait("return document.getElementById('curves').dataset.drawn")

    def wait(self, script):
        end = time.monotonic() + 20
        while not (answer := self.evaluate(script)):
            assert time.monotonic() < end, f"still not so after 20 seconds: {script}"
            time.sleep(0.05)
        return answer

    def pointer(self, x, y, *more):
        steps = [{"type": "pointerMove", "x": round(x), "y": round(y)}, {"type": "pause", "duration": 100}, *more]
        self.call("/actions", {"actions": [{"type": "pointer", "id": "mouse", "actions": steps}]})

    def complaints(self):
        return self.call("/se/log", {"type": "browser"})

    def close(self):
        self.call("", method="DELETE")
        self.driver.terminate()
        self.driver.wait()


def make_page(file, *arguments):
    result = subprocess.run([PROGRAM, "analyze", *map(str, arguments), "--report", file], capture_output=True,
                            text=True, check=False)
    if "built without" in result.stderr:
        skip("the program was built without npm")
    assert result.returncode == 0, result.stderr
    return file


def a_reader_explores_two_curves(browser, folder):
    file = make_page(folder / "page.html", DATA / "breast_cancer.csv", "--state", "diagnosis=malignant", "--test",
                     "radius_mean,texture_mean", "--pr")
    browser.open(file)
    counts = browser.evaluate(LINE_POINTS)
    assert min(counts["#0072B2"], counts["#D55E00"]) > 400, counts
    panels = browser.evaluate(PANELS)
    for (left, top, *_), (first, second) in zip(panels, [("sensitivity", "specificity"), ("precision", "recall")]):
        browser.pointer(left + 250, top + 60)
        tip = browser.wait("return document.getElementById('tip').innerText")
        shown = dict(line.split(": ") for line in tip.splitlines())
        tp, fp, tn, fn = (int(shown[f"{truth} {state}s"]) for truth, state in (
            ("true", "positive"), ("false", "positive"), ("true", "negative"), ("false", "negative")))
        assert (tp + fn, tn + fp) == (212, 357) and shown["cut-off"], tip
        rates = {"sensitivity": tp / 212, "specificity": tn / 357, "precision": tp / (tp + fp), "recall": tp / 212}
        assert all(abs(float(shown[rate]) - rates[rate]) < 1e-4 for rate in (first, second)), tip
    legend = browser.evaluate(LEGEND)
    assert "0.9375 [0.9170, 0.9580]" in legend[0][0] and [row[1:] for row in legend] == 2 * [["", "true"]], legend
    click = "document.querySelectorAll('#legend button')[1].click()"
    browser.evaluate(click)
    browser.wait(f"const counts = (() => {{{LINE_POINTS}}})(); return !counts['#D55E00'] && counts['#0072B2'] > 400;")
    assert [row[1:] for row in browser.evaluate(LEGEND)] == [["", "true"], ["hidden", "false"]]
    browser.evaluate(click)
    browser.wait(f"const counts = (() => {{{LINE_POINTS}}})(); return counts['#D55E00'] > 400;")
    browser.call("/window/rect", {"width": 520, "height": 1400})
    browser.open(file)
    (_, top, _, height), (left, below, width, _) = browser.evaluate(PANELS)
    assert below >= top + height and left + width <= 520, "a narrow window shows one panel below the other"
    assert not browser.complaints()


def nothing_from_outside_gets_in(browser, folder):
    """What a careless copy of the page might gain is stopped by its policy."""
    file = make_page(folder / "page.html", DATA / "fawcett_2006.csv", "--state", "class=1", "--test", "score")
    text = file.read_text(encoding="utf-8")
    assert not re.search(r"<(?:link|img|iframe|object)\b|\bsrc=", re.sub(r"(?s)<script>.*?</script>", "", text))
    injected = "<script>document.title = 'injected'</script><img src='https://example.org/x.png'>"
    file.write_text(text.replace("</h1>", "</h1>" + injected, 1), encoding="utf-8")
    browser.open(file)
    assert browser.evaluate("return document.title") == "ROC analysis"
    assert len([entry for entry in browser.complaints() if "Content Security Policy" in entry["message"]]) == 2


def main():
    for program in ("chromium", "chromedriver"):
        if not shutil.which(program):
            skip(f"{program} is not installed")
    with tempfile.TemporaryDirectory() as folder, tempfile.TemporaryDirectory() as profile:
        browser = Browser(profile)
        try:
            for test in (a_reader_explores_two_curves, nothing_from_outside_gets_in):
                test(browser, pathlib.Path(folder))
        finally:
            browser.close()


main()
