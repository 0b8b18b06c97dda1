"""Says what a screen reader finds in the client: reader.py SECONDS. A line each: role, name, description, value,
whether it is selected. With "set NAME VALUE" behind it, it also sets the slider of that name
and fails where none takes the value."""
import sys
import time

import pyatspi
from gi.repository import GLib


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
    """Lists come and go while they are read."""
    if node is None or depth > 40:
        return
    yield node
    try:
        children = list(node)
    except GLib.GError:
        return
    for child in children:
        yield from walk(child, depth + 1)


def is_there(node):
    try:
        print(line_of(node))
    except GLib.GError:
        return False
    return True


def set_to(node, value):
    """Whether it took the value; what is gone meanwhile takes none."""
    try:
        node.queryValue().currentValue = value
    except GLib.GError:
        return False
    return True


def is_slider(node, name):
    try:
        return node.getRoleName() == "slider" and node.name == name
    except GLib.GError:
        return False


found = [node for node in walk(application(float(sys.argv[1]))) if is_there(node)]
if len(sys.argv) > 4:
    sliders = [node for node in found if is_slider(node, sys.argv[3])]
    taken = [set_to(node, float(sys.argv[4])) for node in sliders]
    sys.exit(0 if any(taken) else f"no slider named {sys.argv[3]} took a value")
