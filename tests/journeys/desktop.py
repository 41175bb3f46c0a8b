"""The desktop that the program is started on: what it finds on the session bus, the window manager, the user's hands."""

import atexit
import contextlib
import os
import subprocess
import threading
import time

import gi
import mutagen

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, Gio, GLib  # noqa: E402

PATIENCE = float(os.environ.get("JOURNEYS_PATIENCE", "60"))

INTERFACES = """<node>
<interface name="org.freedesktop.Notifications">
  <method name="GetCapabilities"><arg type="as" direction="out"/></method>
  <method name="GetServerInformation"><arg type="s" direction="out"/><arg type="s" direction="out"/>
    <arg type="s" direction="out"/><arg type="s" direction="out"/></method>
  <method name="Notify"><arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
    <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/></method>
  <method name="CloseNotification"><arg type="u" direction="in"/></method>
</interface>
<interface name="org.freedesktop.FileManager1">
  <method name="ShowItems"><arg type="as" direction="in"/><arg type="s" direction="in"/></method>
</interface>
<interface name="org.freedesktop.portal.Settings">
  <method name="Read"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
  <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface>
</node>"""

PLACES = {
    "org.freedesktop.Notifications": ("/org/freedesktop/Notifications", "org.freedesktop.Notifications"),
    "org.freedesktop.FileManager1": ("/org/freedesktop/FileManager1", "org.freedesktop.FileManager1"),
    "org.freedesktop.portal.Settings": ("/org/freedesktop/portal/desktop", "org.freedesktop.portal.Desktop"),
}


# The programs that are not to end by themselves.
running = []


def eventually(condition, what="", patience=PATIENCE):
    """What the condition gives as soon as that is true.

    The program's tree may change while it is being read: what has gone raises errors, or has no interfaces. So may a
    file, which is saved in several writes.
    """
    deadline = time.monotonic() + patience
    while True:
        with contextlib.suppress(GLib.Error, StopIteration, AttributeError, mutagen.MutagenError):
            if found := condition():
                return found
        for program in running:
            if program.process.poll() is not None:
                raise RuntimeError(f"A program ended with {program.process.returncode}: {program.said}")
        if time.monotonic() > deadline:
            picture()
            raise AssertionError(f"In vain for {patience:.0f} s: {what or condition}")
        time.sleep(0.02)


class Services:
    """What other programs of a desktop serve on the session bus; each call of them is kept."""

    def __init__(self):
        self.notifications = []
        self.shown_items = []
        self.colour_scheme = 0
        self._ready = threading.Event()
        threading.Thread(target=self._serve, daemon=True).start()
        self._ready.wait(PATIENCE)

    def prefer(self, colour_scheme):
        """1 is dark, 2 is light."""
        self.colour_scheme = colour_scheme
        value = GLib.Variant("v", GLib.Variant("u", colour_scheme))
        place = PLACES["org.freedesktop.portal.Settings"][0]
        arguments = GLib.Variant.new_tuple(
            GLib.Variant("s", "org.freedesktop.appearance"), GLib.Variant("s", "color-scheme"), value)
        self._bus.emit_signal(None, place, "org.freedesktop.portal.Settings", "SettingChanged", arguments)

    def _serve(self):
        context = GLib.MainContext.new()
        context.push_thread_default()
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        address = os.environ["DBUS_SESSION_BUS_ADDRESS"]
        self._bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)
        for interface in Gio.DBusNodeInfo.new_for_xml(INTERFACES).interfaces:
            place, name = PLACES[interface.name]
            self._bus.register_object(place, interface, self._answer, None, None)
            Gio.bus_own_name_on_connection(self._bus, name, Gio.BusNameOwnerFlags.NONE, None, None)
        source = GLib.idle_source_new()
        source.set_callback(lambda *_: self._ready.set())
        source.attach(context)
        GLib.MainLoop.new(context, False).run()

    def _answer(self, _bus, _sender, _path, _interface, method, arguments, invocation):
        answer = None
        if method == "Notify":
            self.notifications.append((arguments[3], arguments[4]))
            answer = GLib.Variant("(u)", (len(self.notifications),))
        elif method == "ShowItems":
            self.shown_items.extend(arguments[0])
        elif method == "Read":
            answer = GLib.Variant("(v)", (GLib.Variant("v", GLib.Variant("u", self.colour_scheme)),))
        elif method == "GetCapabilities":
            answer = GLib.Variant("(as)", (["body"],))
        elif method == "GetServerInformation":
            answer = GLib.Variant("(ssss)", ("journeys", "", "1", "1.2"))
        invocation.return_value(answer)


class Desktop:
    """One for all journeys, so that each pays for its program only."""

    def __init__(self):
        self._start_display()
        start("openbox")
        start("pulseaudio", "-n", "--use-pid-file=no", "--exit-idle-time=-1",
              "--load=module-null-sink", "--load=module-native-protocol-unix")
        self.services = Services()
        Atspi.init()
        Atspi.set_timeout(int(PATIENCE * 1000), int(PATIENCE * 1000))
        # What is kept of the tree would have to be brought up to date by events.
        Atspi.get_desktop(0).set_cache_mask(Atspi.Cache.NONE)
        eventually(lambda: hands("get_num_desktops", check=False) is not None, "a window manager")

    @staticmethod
    def _start_display():
        reading, writing = os.pipe()
        start("Xvfb", "-screen", "0", "3200x2000x24", "-noreset", "-nolisten", "tcp", "-displayfd", str(writing),
              pass_fds=[writing])
        os.close(writing)
        with open(reading, encoding="ascii") as number:
            os.environ["DISPLAY"] = ":" + number.readline().strip()


def start(*command, **how):
    """Another program of the desktop, until the journeys end. @return its process, and the file that it writes to"""
    said = f"{os.environ['JOURNEYS_SCRATCH']}/{os.path.basename(command[0])}.log"
    with open(said, "wb") as log:
        process = subprocess.Popen(command, stdout=log, stderr=log, **how)
    atexit.register(end, process)
    return process, said


def end(process):
    process.terminate()
    process.wait(PATIENCE)


def hands(*actions, check=True):
    """The user's keyboard and mouse."""
    done = subprocess.run(["xdotool", *map(str, actions)], check=check, capture_output=True, text=True)
    return done.stdout.strip() if done.returncode == 0 else None


def keys(*names):
    hands("key", "--delay", 4, *names)


def types(text):
    hands("type", "--delay", 4, text)


def click(place, *modifiers, button=1, repeat=1):
    held = [part for modifier in modifiers for part in ("keydown", modifier)]
    freed = [part for modifier in modifiers for part in ("keyup", modifier)]
    hands(*held, "mousemove", *place, "click", "--repeat", repeat, button, *freed)


def drag(start, end):
    """Slowly enough for both sides to see what is under the pointer."""
    hands("mousemove", *start, "mousedown", 1)
    steps = 12
    for step in range(1, steps + 1):
        at = [round(a + (b - a) * step / steps) for a, b in zip(start, end)]
        hands("mousemove", *at, "sleep", 0.02)
    hands("mousemove", end[0] + 2, end[1], "sleep", 0.1, "mouseup", 1)


def clipboard(path, kind):
    """Puts a file's bytes on the clipboard, as another program does."""
    with open(path, "rb") as content:
        subprocess.run(["xclip", "-selection", "clipboard", "-t", kind], stdin=content, check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def grab(size, place, *how):
    screen = ["ffmpeg", "-v", "error", "-f", "x11grab", "-draw_mouse", "0", "-video_size", size,
              "-i", f"{os.environ['DISPLAY']}+{place}", "-frames:v", "1", *how]
    return subprocess.run(screen, check=True, capture_output=True).stdout


def pixel(x, y):
    """The colour on the screen."""
    return tuple(grab("2x2", f"{x},{y}", "-f", "rawvideo", "-pix_fmt", "rgb24", "-")[:3])


def picture():
    """What the screen shows when something fails, for whoever looks into it."""
    if folder := os.environ.get("JOURNEYS_PICTURES"):
        grab("3200x2000", "0,0", "-y", f"{folder}/{time.strftime('%H%M%S')}.png")
