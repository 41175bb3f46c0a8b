"""The program, as assistive technology sees it."""

import os
import subprocess

from desktop import PATIENCE, Atspi, click, eventually, hands, keys, running, types

STATES = Atspi.StateType


class Part:
    """A place in the program's tree."""

    # The tree tells lengths in pixels of the screen, or before these are scaled: that differs between versions of Qt.
    scale = 1

    def __init__(self, accessible):
        self.accessible = accessible

    @property
    def name(self):
        return self.accessible.get_name()

    @property
    def text(self):
        return Atspi.Text.get_text(self.accessible.get_text_iface(), 0, -1)

    @property
    def area(self):
        """x, y, width and height on the screen."""
        area = self.accessible.get_component_iface().get_extents(Atspi.CoordType.SCREEN)
        return tuple(round(length * Part.scale) for length in (area.x, area.y, area.width, area.height))

    @property
    def middle(self):
        x, y, width, height = self.area
        return x + width // 2, y + height // 2

    @property
    def value(self):
        return self.accessible.get_value_iface().get_current_value()

    def has(self, state):
        return self.accessible.get_state_set().contains(state)

    def click(self, *modifiers, **how):
        click(self.middle, *modifiers, **how)

    def children(self):
        for index in range(self.accessible.get_child_count()):
            if child := self.accessible.get_child_at_index(index):
                yield Part(child)

    def below(self):
        """All that is shown, but not the cells of tables, which may be many."""
        for child in self.children():
            yield child
            if child.accessible.get_role() != Atspi.Role.TABLE:
                yield from child.below()

    def all(self, role, name=None):
        return [part for part in self.below() if part.accessible.get_role() == role
                and (name is None or part.name == name) and part.has(STATES.SHOWING)]

    def find(self, role, name=None):
        return eventually(lambda: self.all(role, name), f"a {role.value_nick} named {name}")[0]

    def field(self, name):
        return self.find(Atspi.Role.TEXT, name)

    def button(self, name):
        return self.find(Atspi.Role.PUSH_BUTTON, name)

    def cell(self, row, column=0):
        return Part(self.accessible.get_table_iface().get_accessible_at(row, column))

    def heading(self, column):
        return Part(self.accessible.get_table_iface().get_column_header(column))

    def column(self, column=0):
        """The texts of a table's column."""
        table = self.accessible.get_table_iface()
        return [table.get_accessible_at(row, column).get_name() for row in range(table.get_n_rows())]


class Program:
    """A started Sonvika, with a home of its own."""

    def __init__(self, home, *files, wrapper=(), **environment):
        for kind in ("config", "cache", "data", "state"):
            os.makedirs(f"{home}/{kind}", exist_ok=True)
            environment[f"XDG_{kind.upper()}_HOME"] = f"{home}/{kind}"
        self.environment = {**os.environ, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "HOME": home, **environment}
        self._said = f"{home}/said"
        with open(self._said, "ab") as said:
            self.process = subprocess.Popen([*wrapper, os.environ["JOURNEYS_PROGRAM"], *files], env=self.environment,
                                            stdout=said, stderr=said)
        running.append(self)
        self.root = Part(eventually(self._application, "the program in the tree"))
        self.window = eventually(lambda: next(self.root.children()), "its window")
        self.in_front()
        Part.scale = 1
        Part.scale = int(hands("getwindowfocus", "getwindowgeometry", "--shell").split("WIDTH=")[1].split()[0]
                         ) / self.window.area[2]

    def _application(self):
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            application = desktop.get_child_at_index(index)
            if application and application.get_process_id() == self.process.pid:
                return application
        return None

    @property
    def said(self):
        with open(self._said, encoding="utf-8", errors="replace") as said:
            return said.read()

    @property
    def table(self):
        return self.window.find(Atspi.Role.TABLE)

    @property
    def rows(self):
        return self.table.column()

    @property
    def well(self):
        return next(part for part in self.window.below() if part.name == "Cover art")

    def in_front(self):
        """Waits until the keyboard is the main window's."""
        self.dialog("Sonvika")

    def dialog(self, name):
        """One of its windows, once it has the keyboard: it knows of it, and the keys go there."""
        def shown():
            part = next(part for part in self.root.children() if part.name == name and part.has(STATES.ACTIVE))
            focused = hands("getwindowfocus", "getwindowname", check=False)
            return part if focused and focused.startswith(name) else None
        return eventually(shown, f"the window {name}")

    def focus_well(self):
        self.well.accessible.get_component_iface().grab_focus()
        eventually(lambda: self.well.has(STATES.FOCUSED), "the keyboard in the art well")

    def status(self):
        return [part.name for part in self.window.all(Atspi.Role.LABEL)]

    def select(self, first, last=None):
        """Some rows, with the mouse."""
        self.table.cell(first).click()
        if last is not None:
            self.table.cell(last).click("shift")

    def edit(self, name, text, end="Return"):
        """Types into a field of the editor."""
        field = self.window.field(name)
        field.click()
        eventually(lambda: field.has(STATES.FOCUSED), f"the keyboard in {name}")
        keys("ctrl+a")
        types(text)
        if end:
            keys(end)

    def command(self, menu, *names):
        """Through the menus; the first is named with its letter."""
        keys(f"alt+{menu}")
        for name in names:
            self.window.find(Atspi.Role.MENU_ITEM, name).click()

    def quit(self):
        """Leaves the program, which says that all went well."""
        self.in_front()
        keys("ctrl+q")
        running.remove(self)
        eventually(lambda: self.process.poll() is not None, "the end of the program")
        assert self.process.returncode == 0, self.said

    def kill(self):
        running.remove(self)
        self.process.kill()
        self.process.wait(PATIENCE)
