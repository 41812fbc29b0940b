#!/usr/bin/env python3
"""Counts the native entry points of the JVM binding per Java class.

Reads the generated wrapper (platform_wrap.cxx) or the list of exported
symbols (`nm -D --defined-only libzr_platform.so`) and prints, per class, the
number of functions next to the number the IDE's binding table expects.
"""
import re
import sys

PREFIX = "Java_ui_data_platform_platform_"

# The IDE's table of wrapped classes; each vector has 6 functions, each iterator 3.
EXPECTED = {
    "TEQHardwarePlatform": 238, "TEQPlatformEngineHelper": 83, "TEQPlatform": 73,
    "TEQPlatformUtils": 41, "TEQProcessorGroup": 33, "TEQSystemConfig": 28, "TEQBootImg": 27,
    "TEQPlatformMgr": 24, "TEQSystemClock": 24, "HTEQTilHardware": 22, "TEQSoftwarePlatform": 19,
    "NativeObjectService": 14, "HTEQReconfigurablePartition": 14, "HDFToCFAConverter": 11,
    "NativeCatalogService": 7, "JSONObjectWriter": 7, "JSONListWriter": 5,
    "TEQSoftwarePlatformUtils": 5, "CatalogService": 4, "JSONWriter": 2, "JSONSerializable": 2,
}
for vector, iterator in [
    ("StringVector", "StringIter"), ("TEQPlatformVector", "TEQPlatformIter"),
    ("TEQHardwarePlatformVector", "TEQHardwarePlatformIter"),
    ("TEQSoftwarePlatformVector", "TEQSoftwarePlatformIter"),
    ("TEQSystemConfigVec", "TEQSystemConfigIter"), ("TEQSystemClockVec", "TEQSystemClockIter"),
    ("TEQProcessorGroupVec", "TEQProcessorGroupIter"), ("TEQBootImgVec", "TEQBootImgIter"),
    ("TEQReconfigurablePartitionVec", "TEQReconfigurablePartitionIter"),
]:
    EXPECTED[vector] = 6
    EXPECTED[iterator] = 3


def class_of(entry):
    """The Java class of an entry point name such as new_1StringVector or TEQPlatform_1getName."""
    for kind in ("new_1", "delete_1"):
        if entry.startswith(kind):
            return re.split(r"_1|__SWIG", entry[len(kind):])[0]
    return entry.split("_1", 1)[0]


def main():
    if len(sys.argv) != 2:
        sys.exit("usage: jni-entry-counts.py platform_wrap.cxx|symbols.txt")
    text = open(sys.argv[1], encoding="utf-8", errors="replace").read()
    entries = sorted(set(re.findall(PREFIX + r"(\w+)", text)))
    counts = {}
    for entry in entries:
        counts[class_of(entry)] = counts.get(class_of(entry), 0) + 1
    names = sorted(set(counts) | set(EXPECTED), key=lambda n: (-EXPECTED.get(n, 0), n))
    print(f"{'class':32} {'generated':>9} {'expected':>9} {'diff':>6}")
    for name in names:
        got, want = counts.get(name, 0), EXPECTED.get(name, 0)
        print(f"{name:32} {got:9} {want:9} {got - want:+6}")
    total_got, total_want = sum(counts.values()), sum(EXPECTED.values())
    print(f"{'total':32} {total_got:9} {total_want:9} {total_got - total_want:+6}")
    kinds = {
        "new_": sum(e.startswith("new_1") for e in entries),
        "delete_": sum(e.startswith("delete_1") for e in entries),
        "__SWIG_n": sum("_1_1SWIG_1" in e for e in entries),
        "SWIGUpcast": sum(e.endswith("SWIGUpcast") for e in entries),
    }
    print("kinds: " + ", ".join(f"{k} {v}" for k, v in kinds.items()))


if __name__ == "__main__":
    main()
