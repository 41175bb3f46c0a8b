"""What goes wrong must not harm a file."""

import os
import subprocess

import mutagen
from desktop import Atspi, clipboard, eventually, keys, types
from journey import DATA, Journey, contents, sound
from program import STATES

# Mounts a small file system for one program alone and puts a file there.
OWN_DISK = """
set -e
disk=$1 file=$2 trouble=$3 user=$4 group=$5
shift 5
mount -t tmpfs -o size=64k none "$disk"
cp "$file" "$disk"
case $trouble in
full) cat /dev/zero >"$disk/filler" 2>/dev/null || true ;;
read-only) mount -o remount,bind,ro "$disk" ;;
esac
exec unshare --user --map-user="$user" --map-group="$group" -- "$@"
"""
LONG = "A title that is longer than the room in its tag. " * 80


def title(path):
    return str(mutagen.File(path).tags["TIT2"])


class Trouble(Journey):
    def test_a_full_disk(self):
        path = self.fails_to_edit("full")
        self.expect([("Sonvika", f"Unable to update tags for: {path}")], lambda: self.services.notifications)

    def test_a_disk_that_is_only_to_be_read(self):
        self.fails_to_edit("read-only")
        self.expect([("Sonvika", "File is not writable, please fix permissions")],
                    lambda: self.services.notifications)

    def fails_to_edit(self, trouble):
        if subprocess.run(["unshare", "--map-root-user", "--mount", "true"], check=False).returncode != 0:
            self.skipTest("This system lets nobody mount a disk of one's own")
        disk = f"{self.home}/disk"
        os.mkdir(disk)
        path = f"{disk}/v24.mp3"
        program = self.start(path, wrapper=[
            "unshare", "--map-root-user", "--mount", "sh", "-c", OWN_DISK, "sh", disk, f"{DATA}/v24.mp3", trouble,
            str(os.getuid()), str(os.getgid())])
        keys("ctrl+comma")
        program.dialog("General").find(Atspi.Role.CHECK_BOX, "Show notifications").click()
        keys("Escape")
        program.in_front()
        program.select(0)
        # What fits into the padding needs no room on the disk.
        self.copy_text(LONG)
        keys("Return")
        eventually(lambda: program.window.field("Title").has(STATES.FOCUSED))
        keys("ctrl+a", "ctrl+v")
        self.expect(LONG, lambda: program.window.field("Title").text)
        keys("Return")
        program.window.button("1 message")
        self.assertEqual(contents(f"/proc/{program.process.pid}/root{path}"), contents(f"{DATA}/v24.mp3"))
        self.assertEqual(program.table.column(1), ["Blue Window"])
        program.quit()
        return path

    def copy_text(self, text):
        with open(f"{self.home}/text", "w", encoding="ascii") as file:
            file.write(text)
        clipboard(file.name, "UTF8_STRING")

    def test_ones_own_file_that_is_only_to_be_read(self):
        path = self.copy("v24.mp3")
        os.chmod(path, 0o444)
        program = self.start(path)
        program.select(0)
        program.edit("Title", "Mended")
        self.expect("Mended", lambda: title(path))
        self.assertEqual(os.stat(path).st_mode & 0o777, 0o644)
        program.quit()

    def many(self, count):
        """So many files in the list, all selected, and the keyboard in the title."""
        files = [self.copy("v24.mp3", f"{number:04}.mp3") for number in range(count)]
        program = self.start(self.music)
        eventually(lambda: f"{count:,} files" in program.status(), "all files in the list")
        keys("ctrl+a", "Return")
        eventually(lambda: program.window.field("Title").has(STATES.FOCUSED))
        keys("ctrl+a")
        return files, program

    def test_cancel_in_the_middle_of_5000_files(self):
        files, program = self.many(5000)
        types("Changed")
        keys("Return")
        eventually(lambda: title(files[1000]) == "Changed")
        keys("Escape")
        stopped = eventually(lambda: next(text for text in program.status() if text.startswith("Stopped after")))
        titles = [title(file) for file in files]
        done = titles.count("Changed")
        self.assertEqual(stopped, f"Stopped after {done:,} of 5,000 files")
        self.assertEqual(titles, ["Changed"] * done + ["Blue Window"] * (5000 - done))
        self.assertTrue(0 < done < 5000)
        program.quit()

    def test_killed_in_the_middle_of_500_saves(self):
        files, program = self.many(500)
        digest = sound(files[0])
        self.copy_text(LONG)
        keys("ctrl+v")
        self.expect(LONG, lambda: program.window.field("Title").text)
        size = os.stat(files[100]).st_size
        keys("Return")
        eventually(lambda: os.stat(files[100]).st_size != size)
        program.kill()
        titles = [title(file) for file in files]
        done = titles.count(LONG)
        self.assertTrue(100 <= done < 500, done)
        self.assertEqual(titles, [LONG] * done + ["Blue Window"] * (500 - done))
        for file in [*files[::50], *files[done - 1:done + 2]]:
            self.assertEqual(sound(file), digest)

        program = self.start(self.music)
        eventually(lambda: "500 files" in program.status())
        program.select(0)
        program.edit("Title", "Afterwards")
        self.expect("Afterwards", lambda: title(files[0]))
        program.quit()
        self.assertEqual(sorted(os.listdir(self.music)), [os.path.basename(file) for file in files])
        self.assertEqual([name for _, _, names in os.walk(f"{self.home}/state") for name in names], [])
