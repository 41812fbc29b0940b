#!/usr/bin/env python3
"""Writes data/platform_keys_doc.json: the key documentation the doc service reads.

The file mirrors every key of the platform document, as the library writes it for
the sample platforms (`zr-platform gen-sample`), plus the legacy "hardwarePlatform"
branch; its "documentation_keys" branch holds a short text per key, taken from
TEXTS below (by key relative to the hardware or top level, else by the key's last
name). Every key needs a text: the script fails and lists those without one.

    scripts/gen-keys-doc.py BUILD/tools/zr-platform/zr-platform > data/platform_keys_doc.json
"""
import json
import subprocess
import sys
import tempfile
from collections import OrderedDict

HW_ROOTS = ["hardwarePlatforms.hardwarePlatform", "hardwarePlatforms.reconfigurablePartitions[].hardwarePlatform"]

# Texts by last key name; a full relative key overrides.
TEXTS = {
    # top level
    "vendor": "Vendor of the platform (first field of its VBNV).",
    "name": "Name of the object.",
    "description": "Free text describing the object.",
    "uniqueName": "Path that identifies the platform: its descriptor or lone archive.",
    "version": "Version of the platform as written in its descriptor.",
    "type": "Kind of the object, as text.",
    "unified": "Whether the platform is a unified (hardware and software) platform.",
    "zdf": "Whether the platform was read from a descriptor.",
    "hardware": "Whether the platform has a hardware part.",
    "softwareEmulation": "Whether software emulation is supported.",
    "hardwareEmulation": "Whether hardware emulation is supported.",
    "hardwareEmuPlatform": "Whether emulation metadata is attached.",
    "hidden": "Whether tools hide the platform from listings.",
    "file": "File the platform was read from.",
    "hwFile": "Hardware archive named by the descriptor.",
    "swFile": "Software platform file named by the descriptor.",
    "directory": "Directory that holds the platform.",
    "targetCategories": "Categories of use the platform targets; each element is one category.",
    "defaultRPId": "Identifier of the default reconfigurable partition.",
    "hardwarePlatforms": "The hardware platforms of the platform.",
    "reconfigurablePartitions": "Reconfigurable partitions, each with its own hardware platform.",
    "hardwarePlatforms.reconfigurablePartitions[].id": "Identifier of the partition.",
    "hardwarePlatform": "The hardware platform: device, board, memories, buses, clocks, files.",
    "softwarePlatform": "The software platform: system configurations and boot images.",
    "defaultConfig": "Name of the default system configuration.",
    "systemConfigurations": "System configurations of the software platform.",
    "bootImages": "Boot images of a system configuration.",
    "bif": "Boot image description file.",
    "readMe": "Read-me file of the boot image.",
    "defaultBootImage": "Name of the default boot image.",
    "defaultProcessorGroup": "Name of the default processor group.",
    "prettyName": "Name shown to users.",
    "processorGroups": "Processor groups of a system configuration.",
    "cpuType": "Processor type of the group.",
    "osHypervisorGuest": "Whether the operating system runs as a hypervisor guest.",
    "osName": "Operating system of the group.",
    "osPrettyName": "Operating system name shown to users.",
    "qemu": "Emulator arguments file of the configuration.",
    "runtimes": "Runtimes the configuration supports; each element is one runtime.",
    # hardware platform
    "acceleratorBinaryContent": "What accelerator binaries for the platform contain.",
    "acceleratorBinaryFormat": "Format of accelerator binaries for the platform.",
    "board": "Board the platform is built for.",
    "part": "Part of the board or device.",
    "boardId": "Identifier of the board.",
    "busInterfaces": "Bus interfaces the platform offers to kernels.",
    "addressSegments": "Address segments reachable through the bus interface.",
    "auto": "Whether the segment is assigned automatically.",
    "baseName": "Base name of the address segment.",
    "index": "Index of the address segment.",
    "instRef": "Instance the object belongs to.",
    "interleave": "Interleaving of the address segment.",
    "maxMasters": "Largest number of managers that may use the segment.",
    "memoryInstance": "Memory the segment maps.",
    "readBwUsed": "Read bandwidth already used.",
    "region": "Address region of the segment.",
    "slr": "Super logic region of the segment.",
    "spTag": "Memory tag by which kernels name the segment.",
    "writeBwUsed": "Write bandwidth already used.",
    "category": "Category of the bus interface.",
    "clockRef": "Clock that drives the bus interface.",
    "compRef": "Component the bus interface belongs to.",
    "dataWidth": "Data width in bits.",
    "interfaceRef": "Interface the bus interface implements.",
    "isrId": "Interrupt identifier.",
    "memPort": "Memory port of the bus interface.",
    "mode": "Mode of the bus interface (manager or subordinate).",
    "numIdBits": "Number of ID bits.",
    "typeRef": "Bus type of the interface.",
    "dcpEncrypted": "Whether the design checkpoint is encrypted.",
    "dcpFunctionStripped": "Whether functions were stripped from the design checkpoint.",
    "defaultOutputType": "Output type produced by default.",
    "designIntent": "Design intents of the platform, each with its value and whether it was set explicitly.",
    "dataCenter": "Data-centre design intent.",
    "embedded": "Embedded design intent.",
    "externalHost": "External-host design intent.",
    "serverManaged": "Server-managed design intent.",
    "explicit": "Whether the intent was set explicitly.",
    "value": "Value of the object.",
    "devices": "Devices of the platform.",
    "core": "Core of the device.",
    "instPath": "Instance path of the core.",
    "numComputeUnits": "Number of compute units of the core.",
    "fpgaPart": "FPGA part name.",
    "numSLRs": "Number of super logic regions.",
    "architecture": "Device architecture.",
    "device": "Device name.",
    "package": "Device package.",
    "speedGrade": "Speed grade of the part.",
    "tempGrade": "Temperature grade of the part.",
    "expandablePlatform": "Whether the platform is expandable.",
    "files": "Files the platform archive carries.",
    "usedIn": "Flow that uses the file.",
    "fpgaDevice": "FPGA device of the platform.",
    "generatedChangeList": "Change list of the tool that generated the platform.",
    "generatedName": "Name of the tool that generated the platform.",
    "generatedVersion": "Version of the tool that generated the platform.",
    "hostArchitecture": "Host architecture the platform works with.",
    "hostInterface": "Interface between host and platform.",
    "interfaceDescription": "Description of the platform's interface.",
    "interfaces": "Interfaces of the platform.",
    "id": "Identifier of the object.",
    "ipParameters": "IP parameters of the platform.",
    "valid": "Whether the parameter is valid.",
    "maxAXIMMManagers": "Largest number of memory-mapped managers.",
    "maxAXIMMSubordinates": "Largest number of memory-mapped subordinates.",
    "maxInterrupts": "Largest number of interrupts.",
    "memories": "Memories of the platform.",
    "highAddress": "Highest address of the memory.",
    "lowAddress": "Lowest address of the memory.",
    "size": "Size of the memory, as written in the metadata.",
    "nocConnectivity": "Network-on-chip connectivity of the platform.",
    "platformFile": "Archive the hardware platform was read from.",
    "platformState": "State of the platform (such as pre-synthesis or implemented).",
    "resources": "Resources of the platform.",
    "count": "Number of resources of the type.",
    "systemClocks": "System clocks of the platform.",
    "default": "Whether the clock is the default one.",
    "frequency": "Clock frequency.",
    "period": "Clock period.",
    "status": "Status of the clock (fixed or scalable).",
    "unifiedPlatform": "Whether the hardware platform belongs to a unified platform.",
    "usesNIFD": "Whether the platform uses non-invasive debug.",
    "usesPR": "Whether the platform uses partial reconfiguration.",
    "validAcceleratorBinaryContentValues": "Values the accelerator binary content may take.",
    "versionMajor": "Major version of the hardware platform.",
    "versionMinor": "Minor version of the hardware platform.",
}


def merge(into, node):
    """Merges the shape of a JSON value into `into` (dict, list or None for a leaf)."""
    if isinstance(node, dict):
        if not isinstance(into, OrderedDict):
            into = OrderedDict()
        for k, v in node.items():
            into[k] = merge(into.get(k), v)
        return into
    if isinstance(node, list):
        if not node:
            return into if into is not None else None
        elem = into[0] if isinstance(into, list) else None
        for v in node:
            elem = merge(elem, v)
        return [elem]
    return into if into is not None else None


def mirror(shape):
    if isinstance(shape, OrderedDict):
        return OrderedDict((k, mirror(v)) for k, v in shape.items())
    if isinstance(shape, list):
        return [mirror(shape[0])]
    return ""


def documented(shape, rel, missing):
    """The documentation branch: leaves hold their text, objects an "_about" text."""
    name = rel.replace("[]", "").split(".")[-1]
    text = TEXTS.get(rel.replace("[]", ""), TEXTS.get(rel, TEXTS.get(name)))
    if text is None and rel:
        missing.append(rel)
    if isinstance(shape, OrderedDict):
        out = OrderedDict([("_about", text or "")])
        for k, v in shape.items():
            out[k] = documented(v, (rel + "." if rel else "") + k, missing)
        return out
    if isinstance(shape, list):
        return [documented(shape[0], rel + "[]", missing) if isinstance(shape[0], (OrderedDict, list)) else text or ""]
    return text or ""


def main():
    tool = sys.argv[1]
    shape = None
    with tempfile.TemporaryDirectory() as d:
        files = subprocess.run([tool, "gen-sample", d, "--scale", "0.05"], check=True, capture_output=True,
                               text=True).stdout.split()
        extra = subprocess.run(["find", d, "-name", "*.lfa", "-o", "-name", "*.cfa", "-o", "-name", "*.spfm"],
                               check=True, capture_output=True, text=True).stdout.split()
        for f in sorted(set(files + extra)):
            text = subprocess.run([tool, "json", f], check=True, capture_output=True, text=True).stdout
            shape = merge(shape, json.loads(text, object_pairs_hook=OrderedDict))
    hw = None
    for root in HW_ROOTS:
        node = shape
        for seg in root.split("."):
            node = node.get(seg[:-2])[0] if seg.endswith("[]") else node.get(seg)
            if node is None:
                break
        if node is not None:
            hw = merge(hw, node)
    out = mirror(shape)
    out["hardwarePlatform"] = mirror(hw)
    top = OrderedDict((k, v) for k, v in shape.items() if k != "hardwarePlatforms")
    top["hardwarePlatforms"] = OrderedDict()
    top["hardwarePlatforms"]["hardwarePlatform"] = OrderedDict()
    top["hardwarePlatforms"]["reconfigurablePartitions"] = [OrderedDict([("id", None), ("hardwarePlatform", OrderedDict())])]
    top["hardwarePlatform"] = hw
    missing = []
    docs = documented(top, "", missing)
    docs["_about"] = ("Texts of the platform document's keys. Keys of the hardware platform are documented once, "
                      "under hardwarePlatform, wherever the document keeps it.")
    docs["hardwarePlatforms"]["hardwarePlatform"]["_about"] = "The hardware platform; see hardwarePlatform."
    docs["hardwarePlatforms"]["reconfigurablePartitions"][0]["_about"] = "One partition: its id and hardwarePlatform."
    docs["hardwarePlatforms"]["reconfigurablePartitions"][0]["hardwarePlatform"]["_about"] = (
        "The partition's hardware platform; see hardwarePlatform.")
    if missing:
        sys.exit("keys without a text: " + ", ".join(missing))
    out["documentation_keys"] = docs
    json.dump(out, sys.stdout, indent=4)
    sys.stdout.write("\n")


if __name__ == "__main__":
    main()
