"""Cover art on its ways in and out."""

import glob
import os
import subprocess

import mutagen

from desktop import clipboard, drag, eventually, hands, keys, types
from journey import DATA, Journey, contents
from peer import source, target
from program import STATES


def art(path):
    """The first picture, as mutagen reads it."""
    found = mutagen.File(path).tags
    pictures = found.get("covr") or [picture.data for picture in found.values() if hasattr(picture, "data")]
    return bytes(pictures[0]) if pictures else None


def size(picture):
    """None while it is no picture yet."""
    found = subprocess.run(["ffprobe", "-v", "error", "-show_entries", "stream=width,height", "-of", "csv", picture],
                           check=False, capture_output=True, text=True)
    return found.stdout if found.returncode == 0 else None


class Artwork(Journey):
    def setUp(self):
        super().setUp()
        self.program = self.with_album()

    def size_of_art(self, index):
        picture = f"{self.home}/picture"
        with open(picture, "wb") as file:
            file.write(art(self.files[index]))
        return size(picture)

    def expect_art(self, expected, *indices):
        for index in indices:
            self.expect(expected, lambda: art(self.files[index]))

    def test_pasted(self):
        clipboard(f"{DATA}/cover.png", "image/png")
        before = art(self.files[2])
        self.program.select(0, 1)
        self.program.focus_well()
        keys("ctrl+v")
        self.expect_art(contents(f"{DATA}/cover.png"), 0, 1)
        self.expect_art(before, 2)
        self.end(self.program)

    def test_dropped(self):
        self.program.select(1, 2)
        with source("image/jpeg", f"{DATA}/cover.jpg") as picture:
            drag(picture.middle, self.program.well.middle)
            picture.expect("taken")
            self.expect_art(contents(f"{DATA}/cover.jpg"), 1, 2)
        self.end(self.program)

    def test_dragged_out(self):
        self.program.select(0)
        # It can be dragged when it has been decoded.
        eventually(lambda: "pixels" in self.program.well.accessible.get_description())
        received = f"{self.home}/received"
        os.mkdir(received)
        with target(received) as folder:
            drag(self.program.well.middle, folder.middle)
            folder.expect("copied")
        (name,) = os.listdir(received)
        self.assertEqual("Low Tide", name.rpartition(".")[0])
        self.assertEqual(size(f"{received}/{name}"), self.size_of_art(0))
        self.end(self.program)

    def test_panel_keeps_its_row(self):
        before = art(self.files[2])
        self.program.select(0)
        for _ in range(2):
            keys("ctrl+shift+i")
            self.program.dialog("Change Image")
            hands("getactivewindow", "windowmove", "1800", "1200")
            self.program.select(0)
            self.program.in_front()
        self.program.select(2)
        names = [part.name for part in self.program.root.children() if part.has(STATES.SHOWING)]
        self.assertEqual(["Change Image", "Sonvika"], sorted(names))
        hands("search", "--name", "Change Image", "windowactivate")
        self.program.dialog("Change Image")
        types(f"{DATA}/cover.png")
        keys("Return")
        self.expect_art(contents(f"{DATA}/cover.png"), 0)
        self.expect_art(before, 2)
        self.end(self.program)

    def test_saved_and_deleted(self):
        self.program.select(0, 1)
        self.program.focus_well()
        keys("ctrl+shift+s")
        self.program.dialog("Save Image")
        keys("ctrl+a")
        types(f'{self.home}/The "Best" Song')
        keys("Return")
        saved = eventually(lambda: next(file for file in glob.glob(f'{self.home}/The "Best" Song.*') if size(file)))
        self.assertEqual(size(saved), self.size_of_art(0))
        self.program.in_front()
        self.program.focus_well()
        keys("Delete")
        self.expect_art(None, 0, 1)
        self.expect(True, lambda: "5 files, 2 selected · Album art deleted in 2 files" in self.program.status())
        self.assertIsNotNone(art(self.files[2]))
        self.end(self.program)
