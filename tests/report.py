#!/usr/bin/env python3
"""Reads the bench's reports in a browser, as somebody would. Usage: report.py BENCH SOURCES FOLDER

Pictures of the reports on a desktop and a phone, light and dark, are left in FOLDER.
"""

import base64
import math
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

from browser import Browser

FAILING = """scenario "Titles <script>fail()</script> & <b>tags</b> are texts"
0 expect page 80
0.5 page 82
expect page 82
1 touch key_rear
expect page 81
"""

SCREENS = {"desktop": (1100, 1500), "phone": (360, 780)}


def check(is_so, what):
    if not is_so:
        sys.exit(f"report: {what}")


def bench(program, *arguments, code=0):
    result = subprocess.run([program, *arguments], capture_output=True, text=True, cwd=FOLDER)
    check(result.returncode == code, f"{arguments}: exit code {result.returncode}: {result.stderr}")


def make_reports(program, sources):
    """A drive with actions and faults, the shipped scenarios, and one that fails."""
    library = f"{sources}/bench/scenario/library"
    failing = FOLDER / "failing.scenario"
    failing.write_text(FAILING)
    bench(program, "--headless", "--fault", "silence:0.1", "--report", "drive")
    bench(program, "--script", library, "--report", "shipped")
    bench(program, "--script", str(failing), "--report", "failing", code=1)
    return [f"{FOLDER}/{name}/report.html" for name in ("drive", "shipped", "failing")]


def check_page(browser, page, width):
    """What holds for every report on every screen."""
    browser.problems.clear()
    browser.requests.clear()
    browser.open(f"file://{page}")
    browser.value("document.querySelectorAll('details').forEach(d => d.open = true)")
    broken = browser.value("""(async () => {
        const images = [...document.images];
        await Promise.allSettled(images.map(image => image.decode()));
        return images.filter(image => image.naturalWidth === 0).map(image => image.alt); })()""")
    check(broken == [], f"{page}: pictures do not load: {broken}")
    outside = [url for url in browser.requests if not url.startswith(("file://", "data:", "about:"))]
    check(outside == [], f"{page}: asks for {outside}")
    check(browser.problems == [], f"{page}: {browser.problems}")
    # A phone's browser would widen its own window to what sticks out.
    wide = browser.value("document.documentElement.scrollWidth") - width
    check(wide <= 0, f"{page}: scrolls sideways by {wide} pixels")


def check_axis(browser, page):
    """A moment in the address and one under the pointer lie where the axis has them."""
    browser.open(f"file://{page}#t=120")
    labels = browser.value("""[...document.querySelector('.chart').querySelectorAll('.time')].map(
        label => [Number(label.dataset.seconds), label.getAttribute('x')])""")
    places = dict(labels)
    check(len(labels) >= 3 and places.get(120), f"{page}: no label at 120 s among {labels}")
    cursor = browser.value("document.querySelector('.chart .cursor').getAttribute('x1')")
    check(cursor == places[120], f"{page}: 120 s is at {places[120]} and its cursor at {cursor}")
    shown = browser.value("document.querySelector('.chart output').textContent")
    check(shown.endswith("at 2:00.0") and "unknown" not in shown, f"{page}: shows '{shown}'")

    # The curve passes the grid where the axis has its value.
    value, expected, seen = browser.value("""(() => {
        const chart = document.querySelector('.chart');
        const value = Number(chart.querySelector('output').textContent.split(' ')[0]);
        const [low, high] = ((ticks) => [ticks[0], ticks[ticks.length - 1]])(
            [...chart.querySelectorAll('.value')].map(
                tick => [Number(tick.textContent), Number(tick.getAttribute('y'))]));
        const share = (value - low[0]) / (high[0] - low[0]);
        const path = chart.querySelector('path');
        const top = chart.querySelector('svg').getBoundingClientRect().top;
        const at = new DOMPoint(120, value).matrixTransform(path.getScreenCTM());
        return [value, low[1] + share * (high[1] - low[1]), at.y - top]; })()""")
    check(math.isclose(expected, seen, abs_tol=1), f"{page}: {value} is at {seen}, not {expected}")

    left, top, width = browser.value("""(() => {
        const drawing = document.querySelector('.chart svg');
        const place = drawing.getBoundingClientRect();
        return [place.left, place.top, place.width]; })()""")
    browser.call("Input.dispatchMouseEvent", type="mouseMoved", x=left + width / 2, y=top + 40)
    shown = browser.value("document.querySelector('.chart output').textContent")
    check(shown.endswith("at 5:00.0"), f"{page}: the middle shows '{shown}', not 5:00.0")


def check_failure(browser, page):
    browser.open(f"file://{page}")
    title = browser.value("document.querySelector('h3').textContent")
    check(title == "Titles <script>fail()</script> & <b>tags</b> are texts", f"{page}: '{title}'")
    boxes = browser.value("""[...document.querySelectorAll('.pair .shot')].map(
        shot => [shot.getBoundingClientRect().left, shot.getBoundingClientRect().top])""")
    check(len(boxes) == 2, f"{page}: {len(boxes)} pictures of one failure")
    check(boxes[0][1] == boxes[1][1] and boxes[0][0] < boxes[1][0],
          f"{page}: the pictures are not side by side: {boxes}")


def check_print(browser, page):
    """What is not on the screen yet is printed too."""
    browser.open(f"file://{page}")
    pictures = browser.value("new Set([...document.images].map(image => image.src)).size")
    paper = base64.b64decode(browser.call("Page.printToPDF")["data"])
    printed = paper.count(b"/Subtype /Image")
    check(printed >= pictures, f"{page}: {printed} of {pictures} pictures are printed")


def main(program, sources):
    pages = make_reports(program, sources)
    browser_program = shutil.which("chromium") or "chromium"
    # A helper of the browser may outlive it for a moment, and write.
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as profile:
        os.environ["HOME"] = profile
        browser = Browser(browser_program, profile)
        try:
            for screen, (width, height) in SCREENS.items():
                for scheme in ("light", "dark"):
                    browser.set_screen(width, height, scheme)
                    for page in pages:
                        check_page(browser, page, width)
                        name = pathlib.Path(page).parent.name
                        browser.picture(FOLDER / f"{name}-{screen}-{scheme}.png")
            browser.set_screen(*SCREENS["desktop"])
            check_axis(browser, pages[0])
            browser.picture(FOLDER / "drive-cursor.png")
            check_failure(browser, pages[2])
            check_print(browser, pages[0])
            check_print(browser, pages[2])
        finally:
            browser.close()
    print(f"Reports read on {len(SCREENS)} screens, light and dark; pictures in {FOLDER}")


if __name__ == "__main__":
    FOLDER = pathlib.Path(sys.argv[3]).absolute()
    FOLDER.mkdir(parents=True, exist_ok=True)
    main(os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2]))
