#!/usr/bin/env python3
"""Reads the demo's window as a screen reader does, through AT-SPI, and checks that the
references and their status can be found there.

Usage: atspi_tree.py APP_NAME OUTPUT_FILE
Writes the accessible tree (role, name, states of interest) to OUTPUT_FILE and exits 0 when the
reference list is a table holding the sample's references with their status texts.
"""
import sys
import time

import pyatspi

app_name, output = sys.argv[1], sys.argv[2]
MAX_NODES = 20000


def find_app():
    desktop = pyatspi.Registry.getDesktop(0)
    for app in desktop:
        if app is not None and app.name == app_name:
            return app
    return None


def walk(node, depth, lines, found):
    if node is None or len(lines) >= MAX_NODES:
        return
    try:
        role = node.getRoleName()
        name = node.name or ""
        states = node.getState()
        selected = states.contains(pyatspi.STATE_SELECTED)
    except Exception:  # a node that went away while it was read
        return
    lines.append("%s%s %r%s" % ("  " * depth, role, name, " [selected]" if selected else ""))
    if role == "table" and name.endswith(" list"):
        found["table"] = node
    for child in node:
        walk(child, depth + 1, lines, found)


deadline = time.time() + 30
app = None
while time.time() < deadline and app is None:
    app = find_app()
    if app is None:
        time.sleep(0.5)
if app is None:
    print("no accessible application named %r on the bus" % app_name, file=sys.stderr)
    sys.exit(1)

# The window fills its panel a moment after it appears.
rows = None
while time.time() < deadline:
    lines, found = [], {}
    walk(app, 0, lines, found)
    table = found.get("table")
    if table is not None:
        cells = table.queryTable()
        names = {}
        for row in range(cells.nRows):
            texts = [cells.getAccessibleAt(row, column).name for column in range(cells.nColumns)]
            names[texts[2]] = texts
        if "Grid" in names and "Title block A1" in names:
            rows = names
            break
    time.sleep(0.5)

with open(output, "w", encoding="utf-8") as out:
    out.write("\n".join(lines) + "\n")
if rows is None:
    print("the reference table with Grid and Title block A1 was not found; see %s" % output,
          file=sys.stderr)
    sys.exit(1)

problems = []
if rows["Title block A1"][3] != "Not Found":
    problems.append("Title block A1 reads %r, not 'Not Found'" % rows["Title block A1"][3])
if rows["Grid"][3] != "Loaded":
    problems.append("Grid reads %r, not 'Loaded'" % rows["Grid"][3])
header = table.queryTable().getColumnDescription(3)
if header != "Status":
    problems.append("column 3 is described as %r" % header)
for problem in problems:
    print(problem, file=sys.stderr)
print("%d references read through AT-SPI" % len(rows))
sys.exit(1 if problems else 0)
