#!/usr/bin/python3
"""Opens every page of the documentation in a browser: no dead link or anchor, no missing picture, nothing from outside,
no message of a script, and the search finds a class.

usage: check_site.py FOLDER   (run by the test docs.site)
"""

import sys
from collections import defaultdict
from pathlib import Path
from urllib.parse import unquote, urldefrag

from selenium import webdriver
from selenium.webdriver.chrome.service import Service
from selenium.webdriver.common.by import By
from selenium.webdriver.common.keys import Keys
from selenium.webdriver.support.ui import WebDriverWait

LOOK = """
return {
  links: Array.from(document.links, link => link.href),
  anchors: Array.from(document.querySelectorAll('[id]'), element => element.id),
  loads: performance.getEntriesByType('resource').map(entry => entry.name),
  missing: Array.from(document.images).filter(image => !image.complete || !image.naturalWidth).map(image => image.src),
};
"""
FOUND_CLASS = "ZYNGLMaillage"


def start_browser() -> webdriver.Chrome:
    options = webdriver.ChromeOptions()
    options.binary_location = "/usr/bin/chromium"
    for argument in (
        "--headless=new",
        "--no-sandbox",  # it runs as root as well
        "--disable-gpu",
        "--disable-dev-shm-usage",
        "--disable-background-networking",
        "--host-resolver-rules=MAP * ~NOTFOUND",
        "--window-size=1400,1000",
    ):
        options.add_argument(argument)
    options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
    return webdriver.Chrome(service=Service("/usr/bin/chromedriver"), options=options)


class Check:
    def __init__(self, folder: Path, browser: webdriver.Chrome) -> None:
        self.folder = folder
        self.browser = browser
        self.failures: list[str] = []
        self.anchors: dict[str, set[str]] = {}
        self.wanted: dict[str, dict[str, str]] = defaultdict(dict)  # anchors of pages, and who links to them

    def fail(self, text: str) -> None:
        self.failures.append(text)

    def messages(self, page: str) -> None:
        for entry in self.browser.get_log("browser"):
            self.fail(f"{page}: {entry['message']}")

    def look_at(self, file: Path) -> None:
        page = file.as_uri()
        self.browser.get(page)
        seen = self.browser.execute_script(LOOK)
        self.anchors[page] = set(seen["anchors"])
        for picture in seen["missing"]:
            self.fail(f"{page}: no picture {picture}")
        for load in seen["loads"]:
            if not load.startswith(self.folder.as_uri()):
                self.fail(f"{page}: loads {load}")
        for link in seen["links"]:
            target, anchor = urldefrag(link)
            if target.startswith("file:"):
                self.wanted[target].setdefault(unquote(anchor), page)
        self.messages(page)

    def look_at_links(self) -> None:
        for target, anchors in self.wanted.items():
            if not target.startswith(self.folder.as_uri()) or not Path(unquote(target.removeprefix("file://"))).is_file():
                self.fail(f"{next(iter(anchors.values()))}: no {target}")
                continue
            for anchor, page in anchors.items():
                if anchor and anchor not in self.anchors.get(target, ()):
                    self.fail(f"{page}: no {target}#{anchor}")

    def search(self) -> None:
        """As a reader does it: a word into the field, the first answer."""
        self.browser.get((self.folder / "index.html").as_uri())
        self.browser.find_element(By.CSS_SELECTOR, "input.sidebar-search").send_keys(FOUND_CLASS, Keys.ENTER)
        wait = WebDriverWait(self.browser, 30)
        wait.until(lambda browser: browser.find_elements(By.CSS_SELECTOR, "#search-results li a"))[0].click()
        wait.until(lambda browser: browser.find_elements(By.CSS_SELECTOR, "article h1"))
        title = self.browser.find_element(By.CSS_SELECTOR, "article h1").text
        if FOUND_CLASS not in title:
            self.fail(f"the search for {FOUND_CLASS} leads to {title}")
        self.messages("search")


def main() -> int:
    folder = Path(sys.argv[1]).resolve()
    pages = sorted(folder.rglob("*.html"))
    browser = start_browser()
    try:
        check = Check(folder, browser)
        for page in pages:
            check.look_at(page)
        check.look_at_links()
        check.search()
    finally:
        browser.quit()
    print(*check.failures, sep="\n")
    print(f"{len(pages)} pages, {sum(map(len, check.wanted.values()))} links to different places, {len(check.failures)} failures")
    return 1 if check.failures or not pages else 0


if __name__ == "__main__":
    sys.exit(main())
