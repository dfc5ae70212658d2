#!/usr/bin/env python3
"""make_wheel.py STAGE VERSION FOLDER: makes the Python package from python/ and from what is staged for the zip.

The same commit always gives the same bytes: times are that of SOURCE_DATE_EPOCH, orders are sorted, modes are fixed.
"""

import base64
import hashlib
import os
import pathlib
import sys
import time
import zipfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
COMPONENTS = ("ZYNVue.dll", "ZYNModeleGeom.dll", "ZYNVue.Components.manifest")
TAG = "py3-none-win_amd64"


def contents(stage, version):
    """What is in the wheel, by name; RECORD comes when the rest is known."""
    info = f"zynvue-{version}.dist-info/"
    package = ROOT / "python" / "zynvue"
    files = {f"zynvue/{path.name}": path.read_bytes() for path in package.iterdir() if path.suffix == ".py"}
    files["zynvue/py.typed"] = b""
    files.update({f"zynvue/bin/{name}": (stage / "bin" / name).read_bytes() for name in COMPONENTS})
    files.update(
        {f"{info}licenses/{name}": (stage / name).read_bytes() for name in ("LICENSE.txt", "NOTICE.txt")}
    )
    header = (ROOT / "python" / "METADATA").read_text("utf-8").replace("@VERSION@", version)
    description = (ROOT / "python" / "README.md").read_text("utf-8")
    files[info + "METADATA"] = f"{header}\n{description}".encode()
    files[info + "WHEEL"] = (
        f"Wheel-Version: 1.0\nGenerator: zynvue {version}\nRoot-Is-Purelib: false\nTag: {TAG}\n".encode()
    )
    return files, info + "RECORD"


def record(files, name):
    lines = []
    for path, data in sorted(files.items()):
        digest = base64.urlsafe_b64encode(hashlib.sha256(data).digest()).rstrip(b"=").decode()
        lines.append(f"{path},sha256={digest},{len(data)}\n")
    return ("".join(lines) + f"{name},,\n").encode()


def write(wheel, files, record_name):
    moment = time.gmtime(int(os.environ["SOURCE_DATE_EPOCH"]))[:6]
    with zipfile.ZipFile(wheel, "w") as archive:
        for path, data in [*sorted(files.items()), (record_name, record(files, record_name))]:
            entry = zipfile.ZipInfo(path, moment)
            entry.external_attr = 0o100644 << 16
            entry.create_system = 3
            archive.writestr(entry, data, zipfile.ZIP_DEFLATED, 9)


def main():
    stage, version, folder = pathlib.Path(sys.argv[1]), sys.argv[2], pathlib.Path(sys.argv[3])
    files, record_name = contents(stage, version)
    write(folder / f"zynvue-{version}-{TAG}.whl", files, record_name)


main()
