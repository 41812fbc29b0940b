#!/usr/bin/env python3
"""Side-by-side timing of the tool against the standard-library script.

  compare.py [--build DIR] [--work DIR] [--runs N] [--catalog-only] [--repo-scale S]

Generates the workloads with the tool's own generator (deterministic), then
runs each pair of commands alternately N times under /usr/bin/time and prints
a Markdown table: median wall time with min-max, median peak RSS, and the
ratio of the medians. With --catalog-only only the `catalog` rows are run,
with a column of median CPU time (user + system), the steadier figure on a
shared machine. --repo-scale sets the `gen-sample` scale of the repositories
(default 1). Needs a release build with the benchmarks (-DZR_BUILD_BENCH=ON)
in --build.
"""
import argparse
import os
import statistics
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))


def measure(cmd):
    """Wall seconds, peak RSS in MB and CPU seconds of one run, output discarded."""
    result = subprocess.run(["/usr/bin/time", "-f", "%e %M %U %S"] + cmd, stdout=subprocess.DEVNULL,
                            stderr=subprocess.PIPE, text=True, check=False)
    if result.returncode != 0:
        sys.exit("failed: %s\n%s" % (" ".join(cmd), result.stderr))
    wall, rss, user, system = result.stderr.strip().splitlines()[-1].split()
    return float(wall), int(rss) / 1024.0, float(user) + float(system)


def compare(runs, commands):
    """Runs the commands in turn, `runs` rounds; answers the samples of each."""
    samples = [[] for _ in commands]
    for _ in range(runs):
        for i, cmd in enumerate(commands):
            samples[i].append(measure(cmd))
    return samples


def summary(samples):
    walls = [s[0] for s in samples]
    rss = [s[1] for s in samples]
    return statistics.median(walls), min(walls), max(walls), statistics.median(rss)


def cpu(samples):
    return statistics.median([s[2] for s in samples])


def row(name, ours, theirs):
    o, t = summary(ours), summary(theirs)
    return "| %s | %.2f s (%.2f-%.2f) | %.2f s (%.2f-%.2f) | %.2f | %.0f MB | %.0f MB | %.2f |" % (
        name, o[0], o[1], o[2], t[0], t[1], t[2], o[0] / t[0], o[3], t[3], o[3] / t[3])


def cpu_row(name, ours, theirs):
    return row(name, ours, theirs) + " %.2f s | %.2f s | %.2f |" % (cpu(ours), cpu(theirs),
                                                                    cpu(ours) / cpu(theirs))


def generate(tool, directory, count, scale):
    if not os.path.isdir(directory):
        subprocess.run([tool, "gen-sample", directory, "--count", str(count), "--scale", str(scale)],
                       stdout=subprocess.DEVNULL, check=True)
    return directory


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", default="build/bench")
    parser.add_argument("--work", default="/tmp/zr-compare")
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--catalog-only", action="store_true")
    parser.add_argument("--repo-scale", default="1")
    args = parser.parse_args()
    tool = os.path.join(args.build, "tools/zr-platform/zr-platform")
    load_repo = os.path.join(args.build, "bench/zr_load_repo")
    script = [sys.executable, os.path.join(HERE, "baseline.py")]
    os.makedirs(args.work, exist_ok=True)

    if args.catalog_only:
        print("| workload | ours: median (min-max) | script: median (min-max) | time ratio "
              "| our peak RSS | script peak RSS | RSS ratio | our CPU | script CPU | CPU ratio |")
        print("|---|---|---|---|---|---|---|---|---|---|")
        for count in (100, 300, 1000):
            d = generate(tool, os.path.join(args.work, "repo-%d-%s" % (count, args.repo_scale)), count,
                         args.repo_scale)
            ours, theirs = compare(args.runs, [[tool, "catalog", d], script + ["repo", d]])
            print(cpu_row("`catalog` of %d platforms, scale %s" % (count, args.repo_scale), ours, theirs))
        return

    print("| workload | ours: median (min-max) | script: median (min-max) | time ratio "
          "| our peak RSS | script peak RSS | RSS ratio |")
    print("|---|---|---|---|---|---|---|")
    for scale in ("0.25", "1", "4", "24"):
        d = generate(tool, os.path.join(args.work, "scale-" + scale), 1, scale)
        zdf = os.path.join(d, "acme_dc/acme_dc.zdf")
        lfa = os.path.join(d, "acme_dc/hw/acme_dc.lfa")
        size = int(subprocess.run(["unzip", "-Z", "-t", lfa], capture_output=True, text=True).stdout.split()[2])
        ours, theirs, floor = compare(args.runs, [[tool, "json", zdf], script + ["dump", lfa],
                                                  ["unzip", "-p", lfa, "lfa.json"]])
        print(row("`json`, scale %s (%.2f MB member)" % (scale, size / 1e6), ours, theirs) +
              " floor `unzip -p`: %.3f s" % summary(floor)[0])
    for count in (100, 300, 1000):
        d = generate(tool, os.path.join(args.work, "repo-%d" % count), count, args.repo_scale)
        ours, theirs = compare(args.runs, [[load_repo, d], script + ["repo", d]])
        print(row("repository of %d platforms" % count, ours, theirs))
        ours, theirs = compare(args.runs, [[tool, "catalog", d], script + ["repo", d]])
        print(row("`catalog` of %d platforms" % count, ours, theirs))


if __name__ == "__main__":
    main()
