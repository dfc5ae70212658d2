#!/usr/bin/python3
"""Makes the documentation as pages for a browser: docs/README.md, and whatever its links lead to.

usage: make_site.py FOLDER VERSION   (run by "zyn docs"; the folder is made anew)

Sphinx makes the pages. Before, each page goes to its place in the site, where docs/ is the root; files of source that
pages link to become pages with the code, and folders pages with the names of their files. So the site needs nothing
beside it.
"""

import re
import shutil
import subprocess
import sys
from collections.abc import Callable
from pathlib import Path, PurePosixPath

ROOT = Path(__file__).resolve().parents[2]
STARTS = ["docs/README.md", "README.md"]
COPIED = {".png", ".jpg", ".stl"}
LANGUAGES = {
    ".bas": "vb", ".bat": "bat", ".cls": "vb", ".cmake": "cmake", ".cpp": "cpp", ".cs": "csharp", ".h": "cpp",
    ".idl": "cpp", ".js": "js", ".pas": "pascal", ".ps1": "powershell", ".py": "python", ".sh": "sh", ".vbs": "vb",
}  # fmt: skip
SHOWN_FILES = 20  # of a folder that is linked: the files of larger ones are named only
NOT_HERE = re.compile(r"^[a-z]+:|^$")  # links to other places, or within their page
CODE = re.compile(r"^(`{3,}).*?^\1`*$|(`+)(?!`).+?(?<!`)\2(?!`)", re.MULTILINE | re.DOTALL)
LINK = re.compile(r"(?<=\]\()([^()\s#]*)(#[^()\s]*)?(?=\))")


def outside_code(text: str, change: Callable[[str], str]) -> str:
    """The text with everything but its code changed."""
    parts, end = [], 0
    for code in CODE.finditer(text):
        parts += [change(text[end : code.start()]), code.group()]
        end = code.end()
    return "".join(parts) + change(text[end:])


def in_package(source: str) -> str:
    """Where the package has a file or folder of the repository."""
    return re.sub(r"^hosts(?=/|$)", "samples", source)


def place(source: str) -> PurePosixPath:
    """Where the page of a file or folder lies in the site."""
    if source == "README.md":
        return PurePosixPath("overview.md")
    path = PurePosixPath(in_package(source).removeprefix("docs/"))
    if path.name == "README.md":
        return path.with_name("index.md")
    return path if path.suffix in {".md"} | COPIED else path.with_name(path.name + ".md")


def relative(target: PurePosixPath, page: PurePosixPath) -> str:
    up = [".."] * (len(page.parts) - 1)
    return str(PurePosixPath(*up, target))


class Site:
    """Pages by the file or folder of the repository that they show, in the order in which links lead to them."""

    def __init__(self, version: str) -> None:
        self.version = version
        self.pages: dict[str, str] = {}
        waiting = list(STARTS)
        while waiting:
            source = waiting.pop(0)
            if source not in self.pages:
                waiting += self.add(source)

    def add(self, source: str) -> list[str]:
        """Makes the text of a page; what it leads to."""
        path = ROOT / source
        if path.suffix in COPIED:
            self.pages[source] = ""
            return []
        if path.is_dir():
            return self.add_folder(source, path)
        if path.suffix == ".md":
            return self.add_text(source, path)
        self.pages[source] = self.code_page(source, path.read_text(encoding="utf-8-sig"))
        return []

    def add_text(self, source: str, path: Path) -> list[str]:
        found: list[str] = []
        page = place(source)

        def lead_on(link: re.Match[str]) -> str:
            if NOT_HERE.match(link[1]):
                return link[0]
            target = str((path.parent / link[1]).resolve().relative_to(ROOT))
            found.append(target)
            return relative(place(target), page) + (link[2] or "")

        text = path.read_text(encoding="utf-8").replace("@PROJECT_VERSION@", self.version)
        self.pages[source] = outside_code(text, lambda part: LINK.sub(lead_on, part))
        return found

    def add_folder(self, source: str, path: Path) -> list[str]:
        listed = subprocess.run(
            ["git", "ls-files", "--deduplicate", "--cached", "--others", "--exclude-standard", "."],
            cwd=path, check=True, capture_output=True, text=True,
        ).stdout.splitlines()  # fmt: skip
        names = sorted({name.split("/")[0] for name in listed})
        shown = [name for name in names if PurePosixPath(name).suffix in LANGUAGES] if len(names) <= SHOWN_FILES else []
        lines = []
        for name in names:
            target = relative(place(f"{source}/{name}"), place(source))
            lines.append(f"- [{name}]({target})" if name in shown else f"- `{name}`")
        self.pages[source] = self.heading(source) + "\n".join(lines) + "\n"
        return [f"{source}/{name}" for name in shown]

    @staticmethod
    def heading(source: str) -> str:
        name = in_package(source)
        if name == source:
            return f"# {name}\n\n"
        return f"# {name.removeprefix('samples/')}\n\nIn the package: `{name}`.\n\n"

    def code_page(self, source: str, code: str) -> str:
        language = LANGUAGES.get(PurePosixPath(source).suffix, "text")
        return self.heading(source) + f"~~~~~~~~{language}\n{code.rstrip()}\n~~~~~~~~\n"

    def list_contents(self) -> None:
        """Gives each page its place in the table of contents."""
        texts = [source for source in self.pages if PurePosixPath(source).suffix not in COPIED]
        samples = sorted(source for source in texts if source.startswith("hosts"))
        classes = sorted(source for source in texts if re.match(r"docs/reference/(?!README)", source))
        guides = [source for source in texts if re.match(r"docs/(reference/README|[^/]*)\.md$", source)]
        others = [source for source in texts if source not in {*samples, *classes, *guides}]
        self.pages["docs/hosts.md"] += contents("Programs", samples)
        self.pages["docs/reference/README.md"] += contents("Classes", classes)
        self.pages["docs/README.md"] += contents("Guides", guides[1:])
        self.pages["docs/README.md"] += contents("The library", others)

    def write(self, folder: Path) -> None:
        for source, text in self.pages.items():
            file = folder / place(source)
            file.parent.mkdir(parents=True, exist_ok=True)
            if text:
                file.write_text(text, encoding="utf-8")
            else:
                shutil.copyfile(ROOT / source, file)


def contents(caption: str, sources: list[str]) -> str:
    entries = "\n".join("/" + str(place(source).with_suffix("")) for source in sources)
    return f"\n```{{toctree}}\n:hidden:\n:caption: {caption}\n\n{entries}\n```\n"


def settle_theme(static: Path) -> None:
    """Debian's form of the theme wants a server, for a module of JavaScript and for a style that another package has."""
    script = static / "scripts" / "furo.js"
    module = static / "scripts" / "gumshoe-patched.js"
    importing = 'import Gumshoe from "./gumshoe-patched.js";'
    script.write_text(module.read_text() + script.read_text().replace(importing, ""))
    module.unlink()
    styles = static / "styles" / "furo.css"
    shared = "/javascript/normalize.css/normalize.css"
    styles.write_text(styles.read_text().replace(shared, "normalize.css"))
    shutil.copyfile("/usr/share" + shared, styles.with_name("normalize.css"))


def main() -> None:
    folder, version = Path(sys.argv[1]).resolve(), sys.argv[2]
    work = folder.with_name(folder.name + "-source")
    for old in (folder, work):
        shutil.rmtree(old, ignore_errors=True)
    site = Site(version)
    site.list_contents()
    site.write(work)
    # Sphinx fails at the first sign of a dead link.
    subprocess.run(
        ["/usr/bin/sphinx-build", "-q", "-W", "--keep-going", "-b", "html", "-c", str(Path(__file__).parent),
         "-d", str(work / ".doctrees"), "-D", f"release={version}", str(work), str(folder)],
        check=True, env={"PATH": "/usr/bin:/bin", "PYTHONHASHSEED": "0", "LC_ALL": "C.UTF-8", "SOURCE_DATE_EPOCH": "0"},
    )  # fmt: skip
    settle_theme(folder / "_static")
    for left in (".buildinfo", "objects.inv"):
        (folder / left).unlink()
    shutil.rmtree(work)


if __name__ == "__main__":
    main()
