"""Report pages in headless Chromium, driven by chromedriver, as a reader sees them."""
import json
import re
import shutil
import subprocess
import time
import urllib.request

import pytest
from harness import CANCER, DATA

FLAGS = ["--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-sync",
         "--disable-background-networking", "--disable-component-update", "--window-size=1200,1400"]
PANELS = """
return [...document.querySelectorAll('#curves svg')].map((svg) => {
  const {x, y, width, height} = svg.getBoundingClientRect();
  return [x, y, width, height];
});
"""
LEGEND = """
return [...document.querySelectorAll('#legend tbody tr')].map((row, c) => [row.innerText, row.className,
  row.querySelector('button').getAttribute('aria-pressed'),
  [...document.querySelectorAll(`[data-curve="${c}"]`)].every(
    (part) => part.getBoundingClientRect().width > 0)]);
"""
# Labels whose text leaves the box for which a place was found, in this browser's font.
LABELS_TOO_WIDE = """
return [...document.querySelectorAll('.label')].filter((label) => {
  const [text, box] = ['text', 'rect'].map((tag) => label.querySelector(tag).getBBox());
  return text.x < box.x || text.x + text.width > box.x + box.width;
}).length;
"""
TIP = "return document.getElementById('tip').innerText;"
ENTER, RIGHT = "\ue007", "\ue014"
OVERFLOW = "return document.documentElement.scrollWidth - document.documentElement.clientWidth;"


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

    def wait(self, script):
        end = time.monotonic() + 20
        while not (answer := self.evaluate(script)):
            assert time.monotonic() < end, f"still not so after 20 seconds: {script}"
            time.sleep(0.05)
        return answer

    def pointer(self, x, y, *more):
        steps = [{"type": "pointerMove", "x": round(x), "y": round(y)}, {"type": "pause", "duration": 100}, *more]
        self.call("/actions", {"actions": [{"type": "pointer", "id": "mouse", "actions": steps}]})

    def press(self, key):
        keys = [{"type": kind, "value": key} for kind in ("keyDown", "keyUp")]
        self.call("/actions", {"actions": [{"type": "key", "id": "keyboard", "actions": keys}]})

    def complaints(self):
        return self.call("/se/log", {"type": "browser"})

    def close(self):
        self.call("", method="DELETE")
        self.driver.terminate()
        self.driver.wait()


@pytest.fixture(scope="module")
def browser(tmp_path_factory):
    for program in ("chromium", "chromedriver"):
        if not shutil.which(program):
            pytest.skip(f"{program} is not installed")
    started = Browser(tmp_path_factory.mktemp("profile"))
    yield started
    started.close()


def make_page(vexroc, folder, *question):
    file = folder / "page.html"
    vexroc.done("analyze", *question, "--report", file)
    return file


def test_a_reader_explores_two_curves(vexroc, browser, tmp_path):
    file = make_page(vexroc, tmp_path, *CANCER, "radius_mean,texture_mean", "--pr")
    assert "<td>0.9375 [0.9121, 0.9556]</td><td>15.045</td>" in file.read_text(encoding="utf-8")  # also without script
    browser.open(file)
    assert browser.evaluate("return document.querySelectorAll('.label').length") == 3
    assert browser.evaluate(LABELS_TOO_WIDE) == 0
    panels = browser.evaluate(PANELS)
    for (left, top, *_), (first, second) in zip(panels, [("sensitivity", "specificity"), ("precision", "recall")]):
        browser.pointer(left + 250, top + 60)
        tip = browser.wait(TIP)
        shown = dict(line.split(": ") for line in tip.splitlines())
        tp, fp, tn, fn = (int(shown[f"{truth} {state}s"]) for truth, state in (
            ("true", "positive"), ("false", "positive"), ("true", "negative"), ("false", "negative")))
        assert (tp + fn, tn + fp) == (212, 357) and shown["cut-off"], tip
        rates = {"sensitivity": tp / 212, "specificity": tn / 357, "precision": tp / (tp + fp), "recall": tp / 212}
        assert all(abs(float(shown[rate]) - rates[rate]) < 1e-4 for rate in (first, second)), tip
    browser.evaluate("document.querySelector('#curves svg').focus()")
    browser.press(RIGHT)
    before, after = [browser.evaluate(TIP), browser.press(RIGHT) or browser.evaluate(TIP)]
    assert "specificity" in before and before != after, "arrow keys walk along the curve"
    shown, hidden = ["", "true", True], ["hidden", "false", False]
    legend = browser.evaluate(LEGEND)
    assert "0.9375 [0.9121, 0.9556]" in legend[0][0] and [row[1:] for row in legend] == [shown, shown], legend
    browser.evaluate("document.querySelectorAll('#legend button')[1].focus()")
    for expected in (hidden, shown):
        browser.press(ENTER)
        assert [row[1:] for row in browser.evaluate(LEGEND)] == [shown, expected]
    browser.call("/window/rect", {"width": 400, "height": 1400})
    (_, top, _, height), (left, below, width, _) = browser.evaluate(PANELS)
    assert below >= top + height and left + width <= 400, "a narrow window shows one panel below the other"
    assert browser.evaluate(OVERFLOW) <= 0
    assert not browser.complaints()


def test_nothing_from_outside_gets_in(vexroc, browser, tmp_path):
    """What a careless copy of the page might gain is stopped by its policy."""
    file = make_page(vexroc, tmp_path, DATA / "fawcett_2006.csv", "--state", "class=1", "--test", "score")
    text = file.read_text(encoding="utf-8")
    assert not re.search(r"<(?:link|img|iframe|object)\b|\bsrc=", text)
    injected = "<script>document.title = 'injected'</script><img src='https://example.org/x.png'>"
    file.write_text(text.replace("</h1>", "</h1>" + injected, 1), encoding="utf-8")
    browser.open(file)
    assert browser.evaluate("return document.title") == "ROC analysis"
    assert len([entry for entry in browser.complaints() if "Content Security Policy" in entry["message"]]) == 2
