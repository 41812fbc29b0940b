#!/usr/bin/env python3
"""What a user would do without the library, with the standard library only.

  baseline.py dump ARCHIVE          print the archive's JSON member, indented by 4
  baseline.py repo DIR              load every platform two levels below DIR:
                                    parse each .zdf, load its archive's JSON and
                                    parse its .spfm
"""
import json
import os
import sys
import xml.etree.ElementTree as ET
import zipfile

NS = {"teq": "urn:teq:platform"}


def member_json(archive):
    ext = os.path.splitext(archive)[1][1:]
    with zipfile.ZipFile(archive) as z:
        names = set(z.namelist())
        for name in ("alt_" + ext + ".json", ext + ".json"):
            if name in names:
                return json.loads(z.read(name))
    return None


def dump(archive):
    sys.stdout.write(json.dumps(member_json(archive), indent=4))
    sys.stdout.write("\n")


def load_zdf(path):
    root = ET.parse(path).getroot()
    base = os.path.dirname(path)
    q = "{urn:teq:platform}"
    info = {k: root.get(q + k) for k in ("vendor", "name", "version")}
    hw = []
    for el in root.iter(q + "hardwarePlatform"):
        hw.append(member_json(os.path.join(base, el.get(q + "path"), el.get(q + "name"))))
    for el in root.iter(q + "softwarePlatform"):
        ET.parse(os.path.join(base, el.get(q + "path"), el.get(q + "name")))
    return info, hw


def repo(top):
    loaded = 0
    for name in sorted(os.listdir(top)):
        d = os.path.join(top, name)
        if not os.path.isdir(d):
            continue
        for f in sorted(os.listdir(d)):
            p = os.path.join(d, f)
            if f.endswith(".zdf"):
                load_zdf(p)
                loaded += 1
            elif f.endswith(".lfa") or f.endswith(".cfa"):
                member_json(p)
                loaded += 1
    print(loaded, "loaded")


if __name__ == "__main__":
    if len(sys.argv) != 3 or sys.argv[1] not in ("dump", "repo"):
        sys.exit(__doc__)
    (dump if sys.argv[1] == "dump" else repo)(sys.argv[2])
