"""What all journeys share."""

import functools
import json
import os
import shutil
import subprocess
import tempfile
import unittest

from desktop import Desktop, eventually, running
from program import Program

DATA = os.environ["JOURNEYS_DATA"]
ALBUM = ["01 Low Tide.mp3", "02 Lantern Road.m4a", "03 Salt and Glass.mp3", "04 Home by Ferry.m4a",
         "05 Low Tide (Night Version).mp3"]


@functools.cache
def desktop():
    return Desktop()


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def tags(path):
    """As ffprobe reads them, under its names for both formats."""
    return json.loads(run("ffprobe", "-v", "error", "-show_entries", "format_tags", "-of", "json", path))[
        "format"].get("tags", {})


def sound(path):
    """A digest of the encoded sound."""
    return run("ffmpeg", "-v", "error", "-i", path, "-map", "0:a", "-c", "copy", "-f", "md5", "-")


def contents(path):
    with open(path, "rb") as file:
        return file.read()


class Journey(unittest.TestCase):
    def setUp(self):
        self.home = tempfile.mkdtemp(dir=os.environ["JOURNEYS_SCRATCH"])
        self.music = f"{self.home}/Music"
        os.mkdir(self.music)
        self.addCleanup(self.clear)
        self.services = desktop().services
        self.services.notifications.clear()
        self.services.shown_items.clear()

    def clear(self):
        for program in list(running):
            program.kill()
        shutil.rmtree(self.home)

    def start(self, *files, **how):
        program = Program(self.home, *files, **how)
        self.addCleanup(lambda: self.assertNotRegex(program.said, "Sanitizer|runtime error"))
        return program

    def copy(self, source, name=None):
        return shutil.copy(source if "/" in source else f"{DATA}/{source}", f"{self.music}/{name or os.path.basename(source)}")

    def album(self):
        return [self.copy(f"{DATA}/../../samples/album/{name}") for name in ALBUM]

    def with_album(self, *options, **how):
        """The program, with the five tracks of the sample album in the list."""
        self.files = self.album()
        self.sounds = [sound(file) for file in self.files]
        program = self.start(*options, self.music, **how)
        eventually(lambda: program.rows == ALBUM, "the album in the list")
        return program

    def end(self, program):
        """Leaves the program, which takes nothing from the sound of the album."""
        program.quit()
        self.assertEqual([sound(file) for file in self.files], self.sounds)

    def expect(self, expected, actual):
        """That the value of a function is, or becomes, what is expected."""
        try:
            eventually(lambda: actual() == expected)
        except AssertionError:
            self.assertEqual(actual(), expected)
