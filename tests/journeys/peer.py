"""Another program at the other end of a drag."""

import os

from desktop import end, eventually, start

# Beside the program's window, which stands in the middle of the screen.
PLACE = (2400, 900)


class Peer:
    def __init__(self, *arguments):
        self._process, self._said = start(os.environ["JOURNEYS_PEER"], *arguments)
        self.middle = (PLACE[0] + 100, PLACE[1] + 100)

    def __enter__(self):
        self.expect("shown")
        return self

    def __exit__(self, *_):
        end(self._process)

    def expect(self, line):
        def said():
            with open(self._said, encoding="utf-8") as said:
                return line in said.read().split()
        eventually(said, f"the other program says {line}")


def target(folder):
    """Takes copies of what is dropped on it."""
    return Peer("target", *map(str, PLACE), folder)


def source(kind, path):
    """Offers a file's bytes as being of a kind."""
    return Peer("source", *map(str, PLACE), f"{kind}={path}")
