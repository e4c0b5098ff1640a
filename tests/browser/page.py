"""page.py - a page in headless Chromium, as a reader has it: at a size, light or dark, pressed with a real
pointer and real keys, and with no network at all.

    with Page(size=(320, 640), scheme="dark") as page:
        page.open("docs/index.htm")
        page.click("#next")
        assert not page.sideways() and not page.faint_texts()

Sizes are CSS pixels. Everything that waits gives up after WAIT_S seconds with TimeoutException. Needs Debian's
chromium, chromium-driver and python3-selenium (packaging/test-packages.txt).
"""
import json
import pathlib
import tempfile

from selenium import webdriver
from selenium.webdriver import ActionChains
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import WebDriverWait

WAIT_S = 30
SIZES = ((320, 640), (390, 844), (1400, 900))
SCHEMES = ("light", "dark")
LEAST_CONTRAST = 4.5

KEYS = {"Enter": Keys.ENTER, "Escape": Keys.ESCAPE, "Tab": Keys.TAB, "Left": Keys.ARROW_LEFT,
        "Right": Keys.ARROW_RIGHT, "Up": Keys.ARROW_UP, "Down": Keys.ARROW_DOWN, "Home": Keys.HOME,
        "End": Keys.END, "PageUp": Keys.PAGE_UP, "PageDown": Keys.PAGE_DOWN, "Space": Keys.SPACE,
        "Backspace": Keys.BACKSPACE}

OPTIONS = (
    "--headless=new", "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--hide-scrollbars",
    "--force-color-profile=srgb", "--no-first-run", "--disable-extensions", "--disable-sync",
    "--disable-background-networking", "--disable-component-update", "--disable-default-apps",
    "--host-resolver-rules=MAP * ~NOTFOUND, EXCLUDE 127.0.0.1", "--lang=en-GB",
)

# Every visible text with the contrast of its colour to what lies behind it, as WCAG 2 defines it. Backgrounds
# and opacities of all ancestors count; pictures behind a text do not.
CONTRASTS = r"""
const parse = text => {
  const n = (text.match(/[\d.]+/g) || []).map(Number);
  return {r: n[0] || 0, g: n[1] || 0, b: n[2] || 0, a: n.length > 3 ? n[3] : 1};
};
const over = (top, under) => ({
  r: top.r * top.a + under.r * (1 - top.a), g: top.g * top.a + under.g * (1 - top.a),
  b: top.b * top.a + under.b * (1 - top.a), a: 1});
const linear = c => (c /= 255) <= 0.03928 ? c / 12.92 : ((c + 0.055) / 1.055) ** 2.4;
const luminance = c => 0.2126 * linear(c.r) + 0.7152 * linear(c.g) + 0.0722 * linear(c.b);
const dark = matchMedia("(prefers-color-scheme: dark)").matches;
const canvas = /dark/.test(getComputedStyle(document.documentElement).colorScheme) && dark
  ? {r: 18, g: 18, b: 18, a: 1} : {r: 255, g: 255, b: 255, a: 1};
const chain = element => {
  const list = [];
  for (let e = element; e; e = e.parentElement) list.unshift(e);
  return list;
};
const seen = new Set(), found = [];
const walker = document.createTreeWalker(document.body, NodeFilter.SHOW_TEXT);
const pairs = [];
while (walker.nextNode())
  if (walker.currentNode.data.trim() && !/^(SCRIPT|STYLE|NOSCRIPT|OPTION|TEMPLATE)$/.test(walker.currentNode.parentElement.tagName))
    pairs.push([walker.currentNode.parentElement, walker.currentNode.data.trim()]);
for (const input of document.querySelectorAll("input, select, textarea"))
  pairs.push([input, input.value || input.placeholder || ""]);
for (const [element, text] of pairs) {
  if (seen.has(element) || !text || element.closest("[disabled]")) continue;
  seen.add(element);
  const box = element.getBoundingClientRect();
  if (box.width < 1 || box.height < 1 || getComputedStyle(element).visibility !== "visible") continue;
  let under = canvas, opacity = 1;
  for (const e of chain(element)) {
    const style = getComputedStyle(e);
    under = over(parse(style.backgroundColor), under);
    opacity *= Number(style.opacity);
  }
  if (opacity === 0) continue;
  const own = parse(getComputedStyle(element).color);
  const color = over({...own, a: own.a * opacity}, under);
  const [hi, lo] = [luminance(color), luminance(under)].sort((a, b) => b - a);
  const name = element.tagName.toLowerCase() + (element.id ? "#" + element.id : "")
    + (typeof element.className === "string" && element.className ? "." + element.className.trim().replace(/\s+/g, ".") : "");
  found.push({ratio: Math.round((hi + 0.05) / (lo + 0.05) * 100) / 100, element: name, text: text.slice(0, 60)});
}
return found;
"""


class Page:
    """One browser with one page; a context manager, which ends the browser."""

    def __init__(self, size=(1400, 900), scheme="light", pixel_ratio=1):
        self._home = tempfile.TemporaryDirectory(prefix="quillon-browser-")
        options = webdriver.ChromeOptions()
        for option in OPTIONS + ("--user-data-dir=" + self._home.name,):
            options.add_argument(option)
        options.binary_location = "/usr/bin/chromium"
        options.set_capability("goog:loggingPrefs", {"browser": "ALL", "performance": "ALL"})
        self.driver = webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)
        self.driver.set_page_load_timeout(WAIT_S)
        self.driver.set_script_timeout(WAIT_S)
        self._ratio = pixel_ratio
        self._asked = []  # every address that was asked for
        self.scheme(scheme)
        self.resize(size)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.driver.quit()
        self._home.cleanup()

    # ---- the reader's circumstances

    def resize(self, size):
        self.driver.execute_cdp_cmd("Emulation.setDeviceMetricsOverride", {
            "width": size[0], "height": size[1], "deviceScaleFactor": self._ratio, "mobile": False})

    def scheme(self, name):
        """light or dark"""
        self.driver.execute_cdp_cmd("Emulation.setEmulatedMedia", {
            "features": [{"name": "prefers-color-scheme", "value": name}]})

    def open(self, file, fragment=""):
        """A file, as from disk."""
        self.driver.get(pathlib.Path(file).resolve().as_uri() + fragment)

    # ---- doing

    def run(self, script, *arguments):
        """What the script returns; a promise is awaited. What it throws is an AssertionError here."""
        good, value = self.driver.execute_async_script(
            "const done = arguments[arguments.length - 1];"
            "const given = Array.from(arguments).slice(0, -1);"
            "Promise.resolve().then(() => (function () {" + script + "}).apply(null, given))"
            ".then(value => done([true, value]), why => done([false, String(why)]));", *arguments)
        assert good, value
        return value

    def find(self, css):
        """The first element; NoSuchElementException without one."""
        return self.driver.find_element(By.CSS_SELECTOR, css)

    def count(self, css):
        return len(self.driver.find_elements(By.CSS_SELECTOR, css))

    def texts(self, css):
        return [each.text for each in self.driver.find_elements(By.CSS_SELECTOR, css)]

    def text(self, css):
        return self.find(css).text

    def click(self, css):
        """Presses and releases in the middle of the element, brought into view; fails when something else lies
        there."""
        element = css if not isinstance(css, str) else self.find(css)
        hit = self.run(
            "const e = arguments[0]; e.scrollIntoView({block: 'nearest', inline: 'nearest'});"
            "const b = e.getBoundingClientRect();"
            "const top = document.elementFromPoint(b.x + b.width / 2, b.y + b.height / 2);"
            "return top && (e.contains(top) || top.contains(e)) ? '' : String(top && top.outerHTML).slice(0, 200);",
            element)
        assert hit == "", "%s is covered by %s" % (css, hit)
        ActionChains(self.driver, duration=0).move_to_element(element).click().perform()

    def press(self, *keys):
        """Keys to what has the focus: names of KEYS, or text."""
        chain = ActionChains(self.driver, duration=0)
        for key in keys:
            chain.send_keys(KEYS.get(key, key))
        chain.perform()

    def wait(self, script, *arguments):
        """Until the script returns something true, which is returned."""
        return WebDriverWait(self.driver, WAIT_S, 0.02).until(lambda _: self.run(script, *arguments))

    def screenshot(self, file):
        self.driver.save_screenshot(str(file))

    # ---- what is wrong with the page; each is empty when nothing is

    def sideways(self):
        """By how many pixels the page scrolls sideways."""
        return self.run("const e = document.scrollingElement; return Math.max(0, e.scrollWidth - e.clientWidth);")

    def contrasts(self):
        return self.run(CONTRASTS)

    def faint_texts(self, least=LEAST_CONTRAST):
        return [each for each in self.contrasts() if each["ratio"] < least]

    def broken_pictures(self):
        """Addresses of pictures that did not load. Those that wait to be scrolled to, or have no address, do not
        count."""
        return self.wait(
            "const all = [...document.images].filter(i => i.getAttribute('src') && (i.loading !== 'lazy' || i.complete));"
            "return all.every(i => i.complete) && {broken: all.filter(i => !i.naturalWidth).map(i => i.src)};")["broken"]

    def errors(self):
        """Of the page's scripts and of what could not be loaded, since the last call."""
        return [each["message"] for each in self.driver.get_log("browser") if each["level"] == "SEVERE"]

    def remote_requests(self):
        """Addresses beyond the disk that were asked for, since the start."""
        for each in self.driver.get_log("performance"):
            message = json.loads(each["message"])["message"]
            if message["method"] == "Network.requestWillBeSent":
                self._asked.append(message["params"]["request"]["url"])
        return [url for url in self._asked if not url.startswith(("file:", "data:", "blob:", "about:", "chrome"))]
