"""Says what a screen reader finds in the client: reader.py SECONDS. A line each: role, name, description, value,
whether it is selected. With "set NAME VALUE" behind it, it also sets the slider of that name."""
import sys
import time

import pyatspi


def application(patience):
    until = time.time() + patience
    while time.time() < until:
        for child in pyatspi.Registry.getDesktop(0):
            if child and child.name == "panedeck-client":
                return child
        time.sleep(0.2)
    sys.exit("no client on the bus")


def line_of(node):
    states = node.getState()
    parts = [node.getRoleName(), node.name, node.description]
    try:
        parts.append(str(int(node.queryValue().currentValue)))
    except NotImplementedError:
        parts.append("-")
    parts.append("selected" if states.contains(pyatspi.STATE_SELECTED) else "-")
    return "|".join(parts)


def walk(node, depth=0):
    if node is None or depth > 40:
        return
    yield node
    for child in node:
        yield from walk(child, depth + 1)


found = list(walk(application(float(sys.argv[1]))))
for node in found:
    print(line_of(node))
if len(sys.argv) > 4:
    for node in found:
        if node.getRoleName() == "slider" and node.name == sys.argv[3]:
            node.queryValue().currentValue = float(sys.argv[4])
