"""The program among other programs: preferences, preview, a second start, its looks."""

import itertools
import subprocess

from desktop import PATIENCE, Atspi, drag, eventually, hands, keys, pixel
from journey import ALBUM, Journey
from program import STATES


class Shell(Journey):
    def test_preferences_last(self):
        shown = []
        for _ in range(2):
            program = self.start()
            keys("ctrl+comma")
            window = program.dialog("General")
            notifications = window.find(Atspi.Role.CHECK_BOX, "Show notifications")
            formats = window.find(Atspi.Role.COMBO_BOX)
            if not shown:
                notifications.click()
                self.expect(True, lambda: notifications.has(STATES.CHECKED))
                before = formats.name
                formats.click()
                eventually(lambda: formats.has(STATES.EXPANDED))
                keys("Down", "Return")
                eventually(lambda: formats.name != before)
            shown.append((notifications.has(STATES.CHECKED), formats.name))
            keys("Escape")
            program.quit()
        self.assertEqual(shown[0], shown[1])

    def test_preview_and_playback(self):
        program = self.with_album()
        program.select(0)
        keys("space")
        window = program.dialog("01 Low Tide.mp3")
        self.assertTrue(window.find(Atspi.Role.LABEL, "Low Tide"))
        keys("p")
        window.button("Pause")
        position = window.find(Atspi.Role.SLIDER, "Position")
        eventually(lambda: position.value > 0, "sound that goes on")
        keys("Escape")
        program.in_front()
        self.end(program)

    def test_a_second_start_hands_over(self):
        program = self.with_album()
        program.select(0, 1)
        keys("F2")
        window = program.dialog("Rename Files")
        plan = window.find(Atspi.Role.TABLE, "Plan")
        keys("ctrl+a", "x", "Return")
        self.expect(["x.mp3", "x.m4a"], lambda: plan.column(1))
        self.assertFalse(program.window.button("Remove").has(STATES.ENABLED))
        other = self.copy("v24.mp3", "another one.mp3")
        subprocess.run([program.process.args[0], other], env=program.environment, timeout=PATIENCE, check=True)
        self.expect(ALBUM + ["another one.mp3"], lambda: program.rows)
        self.assertEqual(plan.column(1), ["x.mp3", "x.m4a"])
        window.button("Cancel").click()
        self.end(program)

    def test_shown_in_the_file_manager(self):
        program = self.with_album()
        program.select(0, 1)
        keys("ctrl+shift+e")
        self.expect([f"file://{file.replace(' ', '%20')}" for file in self.files[:2]],
                    lambda: self.services.shown_items)
        self.end(program)

    def test_light_and_dark_follow_the_desktop(self):
        self.services.prefer(1)
        self.addCleanup(self.services.prefer, 0)
        program = self.start()
        x, y, width, height = program.table.area
        background = lambda: sum(pixel(x + width // 2, y + height - 40))
        eventually(lambda: background() < 200, "a dark list")
        self.services.prefer(2)
        eventually(lambda: background() > 600, "a light list")
        program.quit()

    def test_moved_by_its_background(self):
        program = self.start()
        place = lambda: hands("getactivewindow", "getwindowgeometry", "--shell").split()[1:3]
        before = place()
        status = next(part for part in program.window.below() if part.accessible.get_role() == Atspi.Role.STATUS_BAR)
        x, y = status.middle
        drag((x, y), (x + 80, y + 60))
        eventually(lambda: place() != before, "the window at another place")
        program.quit()

    def test_plain(self):
        self.look()

    def test_doubled(self):
        self.look(scale=2, QT_SCALE_FACTOR="2")

    def test_german(self):
        self.look(title="Titel", LC_ALL="de_DE.UTF-8")

    def test_right_to_left(self):
        self.look("-reverse", mirrored=True, LC_ALL="ar_EG.UTF-8")

    def look(self, *options, scale=1, mirrored=False, title="Title", **environment):
        """Everything has its place: inside the window, and nothing on top of something else."""
        program = self.with_album(*options, **environment)
        program.window.field(title)
        window, table = program.window.area, program.table.area
        self.assertEqual(window[2:], (1100 * scale, 700 * scale))
        parts = [part for role in ROLES for part in program.window.all(role)]
        self.assertGreater(len(parts), 20)
        for part in parts:
            self.assertTrue(is_inside(part.area, window), part.name)
        for part, other in itertools.combinations(parts, 2):
            self.assertFalse(overlap(part.area, other.area), (part.name, other.name))
        editor = program.window.find(Atspi.Role.CHECK_BOX).area
        self.assertEqual(editor[0] < table[0], mirrored)
        self.end(program)


ROLES = (Atspi.Role.LABEL, Atspi.Role.TEXT, Atspi.Role.CHECK_BOX, Atspi.Role.TABLE)


def is_inside(area, whole):
    # The splitter places a mirrored part one pixel too far.
    return all(area[i] >= whole[i] and area[i] + area[i + 2] <= whole[i] + whole[i + 2] + 1 for i in (0, 1))


def overlap(one, other):
    return all(one[i] < other[i] + other[i + 2] and other[i] < one[i] + one[i + 2] for i in (0, 1))
