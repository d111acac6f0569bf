#!/usr/bin/env python3
"""Line and branch coverage per subsystem folder from gcovr's JSON summary.

A public header (core/include/WQGeneral/<folder>/...) counts for its folder.
With a baseline file, prints the change and exits 1 when a folder falls by
more than one point; with --record, writes the figures as the new baseline.
"""
import json
import sys
from collections import defaultdict

ALLOWED_FALL = 1.0


def folder_of(path):
    parts = path.split("/")
    if len(parts) > 3 and parts[1] == "include" and parts[2] == "WQGeneral":
        parts = [parts[0]] + parts[3:]
    return "/".join(parts[:2]) if len(parts) > 2 else parts[0]


def percent(covered, total):
    return 100.0 * covered / total if total else 100.0


def read_baseline(path):
    figures = {}
    try:
        with open(path, encoding="utf-8") as f:
            for line in f:
                fields = line.split()
                if len(fields) == 3 and not line.startswith("#"):
                    figures[fields[0]] = (float(fields[1]), float(fields[2]))
    except FileNotFoundError:
        pass
    return figures


def main(argv):
    summary_path, baseline_path = argv[1], argv[2]
    record = "--record" in argv[3:]
    with open(summary_path, encoding="utf-8") as f:
        summary = json.load(f)
    counts = defaultdict(lambda: [0, 0, 0, 0])
    for entry in summary["files"]:
        c = counts[folder_of(entry["filename"])]
        c[0] += entry["line_covered"]
        c[1] += entry["line_total"]
        c[2] += entry["branch_covered"]
        c[3] += entry["branch_total"]
    figures = {name: (round(percent(c[0], c[1]), 1), round(percent(c[2], c[3]), 1))
               for name, c in counts.items()}
    baseline = read_baseline(baseline_path)

    fallen = []
    print(f"{'folder':<22}{'lines':>16}{'branches':>18}   change (lines, branches)")
    for name in sorted(figures):
        c = counts[name]
        lines, branches = figures[name]
        change = ""
        if name in baseline:
            dl, db = lines - baseline[name][0], branches - baseline[name][1]
            change = f"{dl:+.1f} {db:+.1f}"
            if dl < -ALLOWED_FALL or db < -ALLOWED_FALL:
                fallen.append(name)
                change += "  FELL"
        print(f"{name:<22}{lines:>6.1f}% {c[0]:>4}/{c[1]:<5}{branches:>6.1f}% {c[2]:>5}/{c[3]:<6} {change}")
    total = [sum(c[i] for c in counts.values()) for i in range(4)]
    print(f"{'all':<22}{percent(total[0], total[1]):>6.1f}% {total[0]:>4}/{total[1]:<5}"
          f"{percent(total[2], total[3]):>6.1f}% {total[2]:>5}/{total[3]:<6}")

    if record:
        with open(baseline_path, "w", encoding="utf-8") as f:
            f.write("# Line and branch coverage (percent) per folder, as `make coverage` measures it.\n")
            f.write("# No folder may fall by more than one point below these figures.\n")
            for name in sorted(figures):
                f.write(f"{name} {figures[name][0]:.1f} {figures[name][1]:.1f}\n")
        print(f"recorded in {baseline_path}")
        return 0
    if fallen:
        print("coverage fell by more than one point in: " + ", ".join(fallen))
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
