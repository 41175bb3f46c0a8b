"""From the first start to edited tags."""

import os
import subprocess

from desktop import PATIENCE, Atspi, clipboard, drag, eventually, keys, types
from journey import ALBUM, Journey, contents, tags
from peer import source
from program import STATES


class Editing(Journey):
    def test_first_start(self):
        program = self.start()
        self.assertTrue(program.window.find(Atspi.Role.LABEL, "Drop MP3 or M4A files or folders here"))
        program.window.button("Open music files").click()
        program.dialog("Open Music Files")
        keys("Escape")
        program.in_front()
        for name in ("Remove", "Rename…", "Preview"):
            self.assertFalse(program.window.button(name).has(STATES.ENABLED), name)
        self.assertFalse(program.window.field("Title").has(STATES.ENABLED))
        program.quit()

    def test_a_folder_of_50_files_dropped(self):
        names = [f"{number:02} {name}.{kind}" for number, (name, kind) in enumerate(
            [("a & b", "mp3"), ("100 %41", "m4a"), ("Ünïcode ♫", "mp3"), ("#hash?", "m4a"), ("it's", "mp3")] * 10)]
        for name in names:
            self.copy("v24.mp3" if name.endswith("mp3") else "tagged.m4a", name)
        self.copy("cover.jpg")
        program = self.start()
        with open(f"{self.home}/address", "w", encoding="ascii") as address:
            address.write(f"file://{self.music}\r\n")
        with source("text/uri-list", address.name) as folder:
            drag(folder.middle, program.table.middle)
            folder.expect("taken")
            self.expect(names, lambda: program.rows)
        self.assertIn("50 files", program.status())
        program.quit()

    def test_a_selection_edited_field_by_field(self):
        program = self.with_album()
        before = [tags(file) for file in self.files]
        program.select(1, 3)
        entries = {"Title": "Harbour", "Artist": "A. Nyhamn", "Album": "Quays", "Album Artist": "Various Artists",
                   "Year": "1998", "Genre": "Soul", "Comment": "Once more"}
        for name, text in entries.items():
            program.edit(name, text)
        program.window.find(Atspi.Role.CHECK_BOX, "Compilation").click()
        names = {"Album Artist": "album_artist", "Year": "date"}
        expected = {names.get(name, name.lower()): text for name, text in entries.items()}
        expected["compilation"] = "1"
        for index in (1, 2, 3):
            self.expect({**before[index], **expected}, lambda: tags(self.files[index]))
        self.assertEqual([tags(self.files[index]) for index in (0, 4)], [before[0], before[4]])
        self.end(program)

    def test_text_from_elsewhere_and_the_keyboard_alone(self):
        program = self.with_album()
        with open(f"{self.home}/text", "w", encoding="utf-8") as file:
            file.write("Ålesund – 夜 🎧")
        clipboard(f"{self.home}/text", "UTF8_STRING")
        keys("Home", "shift+Down", "Return")
        title = program.window.field("Title")
        eventually(lambda: title.has(STATES.FOCUSED))
        keys("ctrl+a", "ctrl+v", "Tab")
        eventually(lambda: program.window.field("Artist").has(STATES.FOCUSED))
        for file in self.files[:2]:
            self.expect("Ålesund – 夜 🎧", lambda: tags(file)["title"])
        self.assertEqual(tags(self.files[2])["title"], "Salt and Glass")
        self.end(program)

    def test_arrows_between_rows_while_editing(self):
        program = self.with_album()
        program.select(3)
        program.edit("Title", "Fourth", end="Down")
        title = program.window.field("Title")
        self.expect("Low Tide (Night Version)", lambda: title.text)
        self.assertTrue(title.has(STATES.FOCUSED))
        self.assertEqual(tags(self.files[3])["title"], "Fourth")
        keys("ctrl+a")
        types("Never")
        keys("Down")
        self.expect("Never", lambda: title.text)
        self.assertEqual(tags(self.files[4])["title"], "Low Tide (Night Version)")
        keys("Escape")
        self.expect("Low Tide (Night Version)", lambda: title.text)
        keys("Up")
        self.expect("Fourth", lambda: title.text)
        self.end(program)
        self.assertEqual(tags(self.files[4])["title"], "Low Tide (Night Version)")

    def test_only_what_is_meant_is_written(self):
        program = self.with_album()
        program.table.heading(1).click()
        self.expect([ALBUM[index] for index in (3, 1, 0, 4, 2)], lambda: program.rows)
        program.select(0, 1)
        before = [tags(file) for file in self.files]
        program.edit("Title", "New")
        keys("ctrl+z", "Tab")
        artist = program.window.field("Artist")
        eventually(lambda: artist.has(STATES.FOCUSED))
        keys("ctrl+a", "alt+x", "ctrl+alt+x")
        # Files that are handed over find their places in the sorted list; the typing goes on.
        types("Half")
        other = self.copy("v24.mp3", "another one.mp3")
        subprocess.run([program.process.args[0], other], env=program.environment, timeout=PATIENCE, check=True)
        eventually(lambda: len(program.rows) == 6)
        self.assertEqual(tags(self.files[1])["artist"], before[1]["artist"])
        types(" typed")
        keys("Tab")
        for index, old in enumerate(before):
            new = {"title": "New", "artist": "Half typed"} if index in (1, 3) else {}
            self.expect({**old, **new}, lambda: tags(self.files[index]))
        self.end(program)

    def test_totals_and_numbering(self):
        program = self.with_album()
        keys("ctrl+a")
        program.edit("Track total", "12")
        program.edit("Disc", "2")
        for number, file in enumerate(self.files, 1):
            self.expect((f"{number}/12", "2/1"), lambda: (tags(file)["track"], tags(file)["disc"]))
        # A column's heading sorts; the numbers follow the list as it is shown.
        by_title = (3, 1, 0, 4, 2)
        program.table.heading(1).click()
        self.expect([ALBUM[index] for index in by_title], lambda: program.rows)
        keys("ctrl+a", "ctrl+shift+n")
        for number, index in enumerate(by_title, 1):
            self.expect(f"{number}/12", lambda: tags(self.files[index])["track"])
        self.end(program)

    def test_strippings(self):
        program = self.with_album()
        unsupported = self.copy("unsupported.mp3")
        program.quit()
        program = self.start(self.music)
        eventually(lambda: len(program.rows) == 6)
        program.select(5)
        before = tags(unsupported)
        program.command("t", "Remove Unsupported Tags")
        eventually(lambda: tags(unsupported) != before)
        self.assertEqual(tags(unsupported)["title"], before["title"])
        program.select(0, 1)
        program.command("t", "Remove All Tags")
        for file in self.files[:2]:
            self.expect(set(), lambda: {"title", "artist", "album", "track", "comment"} & set(tags(file)))
        self.assertEqual(tags(self.files[2])["title"], "Salt and Glass")
        self.end(program)

    def test_renaming_with_a_collision(self):
        program = self.with_album()
        taken = self.copy("untagged.mp3", "Harbour.mp3")
        before = contents(taken)
        for row, title in ((0, "Harbour"), (1, "Quay"), (3, "Quay")):
            program.select(row)
            program.edit("Title", title)
        program.select(0, 3)
        keys("F2")
        window = program.dialog("Rename Files")
        field = window.field("Format")
        eventually(lambda: field.has(STATES.FOCUSED))
        keys("ctrl+a", "Delete")
        self.expect("", lambda: field.text)
        window.button("Title").click(repeat=2)
        plan = window.find(Atspi.Role.TABLE, "Plan")
        self.expect(["Harbour.mp3", "Quay.m4a", "Salt and Glass.mp3", "Quay.m4a"], lambda: plan.column(1))
        self.assertEqual([bool(remark) for remark in plan.column(2)], [True, False, False, True])
        self.assertTrue(window.find(Atspi.Role.LABEL, "2 files will be renamed, 2 can't be"))
        window.button("Rename").click()
        renamed = [ALBUM[0], "Quay.m4a", "Salt and Glass.mp3", ALBUM[3], ALBUM[4]]
        self.expect(renamed, lambda: program.rows)
        self.assertEqual(sorted(os.listdir(self.music)), sorted([*renamed, "Harbour.mp3"]))
        self.assertEqual(contents(taken), before)
        self.files = [f"{self.music}/{name}" for name in renamed]
        self.end(program)
